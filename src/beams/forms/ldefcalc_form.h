// LDefCalc (Beam\Rip > Long time deflection calculation): the long-term deflection of a
// beam of the project. The engineer chooses the beam, enters the sustained part of the live
// load, how long it acts and the allowed deflection L / n; "Calculate" stores them in the
// beam, designs it again (its deflection listing included) and shows, span by span, the
// immediate and long-term deflections against the allowed one.
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "beams/beam_record.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace orvak::beams::forms {

class BeamChoice;

class LDefCalc : public QWidget {
    Q_OBJECT
public:
    /// The result table's columns.
    enum Column { Member, InitDef, Igr, Mcr, Icr, DlDef, LlDef, TotDef, Allowed, kColumnCount };

    explicit LDefCalc(shell::ShellState& shell, QWidget* parent = nullptr);

    QComboBox* floorCombo() const;
    QComboBox* beamCombo() const;
    QLineEdit* sustainedField() const { return m_sustained; }
    QLineEdit* monthsField() const { return m_months; }
    QLineEdit* divisorField() const { return m_divisor; }
    QTableWidget* results() const { return m_results; }
    /// "L/" and the divisor, with the time factor, after a calculation.
    QString allowedText() const;

    /// Chooses the beam (e.g. the one the shear form shows); false when there is none such.
    bool chooseBeam(int floor, int beamNumber);

    /// Stores the three values in the chosen beam, designs it through the job runner and
    /// shows its members. False, after telling why, when a value is refused (nothing is
    /// written then) or the beam cannot be designed.
    bool calculate();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    void saved(const QString& message);

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void showBeam();

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    std::array<QLabel*, 5> m_labels{};
    BeamChoice* m_choice;
    QLineEdit* m_sustained;
    QLineEdit* m_months;
    QLineEdit* m_divisor;
    QLabel* m_allowed;
    QTableWidget* m_results;
    QPushButton* m_calculate;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
