// The choice of a beam of the project that the beam forms share: `CielCombo` lists the
// floors (the current one chosen), `BeamCombo` the beams of the chosen floor.
#pragma once

#include <QObject>
#include <vector>

#include "beams/beam_record.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QWidget;

namespace orvak::beams::forms {

class BeamChoice : public QObject {
    Q_OBJECT
public:
    /// Makes the two combo boxes as children of `form`; `tell` reports a file that cannot be
    /// read. Call load() once the form is ready.
    BeamChoice(const shell::ShellState& shell, QWidget* form, ui::MessageHook* tell);

    QComboBox* floors() const { return m_floors; }
    QComboBox* beams() const { return m_beams; }

    /// Reads the floors, then the beams of the chosen floor.
    void load();
    /// The floor chosen (0 when none).
    int floor() const;
    /// The beam chosen; nullptr when none.
    const BeamRecord* beam() const;
    /// Chooses floor `floor` and its beam `beamNumber`; false (the choice as it was) when the
    /// project has no such floor or beam.
    bool choose(int floor, int beamNumber);
    /// Replaces the chosen beam's record as read (after the form stored a change).
    void replaceBeam(const BeamRecord& record);

signals:
    /// Another floor or beam was chosen (also after load()).
    void beamChanged();

private:
    void loadBeams();

    const shell::ShellState& m_shell;
    QWidget* m_form;
    ui::MessageHook* m_tell;
    QComboBox* m_floors;
    QComboBox* m_beams;
    std::vector<BeamRecord> m_records;
};

} // namespace orvak::beams::forms
