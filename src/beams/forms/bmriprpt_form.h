// BmRipRpt (Reports > Beam/Rip): choose a floor (`CielCombo`) and one of its beams
// (`BeamCombo`); `CmdAnaly` shows the chosen listing of the beam in the text viewer,
// `CmdViewRtfFile` its report document, `CmdNotes` the project's notes (Report.txt), which
// the engineer may edit and save.
#pragma once

#include <QWidget>
#include <array>
#include <filesystem>
#include <vector>

#include "beams/beam_record.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace orvak::beams::forms {

class BeamChoice;

class BmRipRpt : public QWidget {
    Q_OBJECT
public:
    explicit BmRipRpt(shell::ShellState& shell, QWidget* parent = nullptr);

    QComboBox* floorCombo() const;
    /// Chooses beam `number` of floor `floor`; false when there is no such beam.
    bool chooseBeam(int floor, int number);
    QComboBox* beamCombo() const;
    QComboBox* listingCombo() const { return m_listing; }

    /// The file of the chosen beam with `extension` (".Analy2", ".rtf"); empty when no beam is
    /// chosen.
    std::filesystem::path beamFile(std::string_view extension) const;

    /// `CmdAnaly`: the chosen listing in the viewer; nullptr (after telling why) when no beam
    /// is chosen or the beam has no such listing yet.
    QWidget* showListing();
    /// `CmdViewRtfFile`: the report document in the viewer; "Sorry, no file is prepared yet !"
    /// when there is none.
    QWidget* showReport();
    /// `CmdNotes`: Report.txt of the project in an editor; its Save writes it safely.
    QPlainTextEdit* editNotes();
    /// Writes the notes editor's text to Report.txt (crash-safely). False after telling why.
    bool saveNotes();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

private:
    QString prompt(std::size_t n, std::string_view english) const;
    QWidget* showFile(const std::filesystem::path& file, const QString& missing);

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::array<QLabel*, 3> m_labels{};
    BeamChoice* m_choice;
    QComboBox* m_listing;
    QPushButton* m_analy;
    QPushButton* m_report;
    QPushButton* m_notes;
    QPushButton* m_exit;
    QPlainTextEdit* m_notesEditor = nullptr;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
