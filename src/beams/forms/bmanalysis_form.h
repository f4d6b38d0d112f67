// BmAnalysis: the analysis of one stored beam under the engineer's control. The load-case
// scheme is chosen first; then each case shows its moment and shear diagrams, one after the
// other ("&Next case"), a case can be designed alone as a preview ("&Design this case"), and
// "&Finish all cases" shows the envelope of all the cases and designs the beam as the command
// line does, its listings, report and steel written. A page shows the elastic deflections of
// the service loads. The shear design of the same beam follows.
#pragma once

#include <QWidget>
#include <optional>

#include "beams/beam_analysis.h"
#include "beams/beam_record.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTabWidget;
class QTableWidget;

namespace orvak::beams::forms {

class BeamDiagram;

class BmAnalysis : public QWidget {
    Q_OBJECT
public:
    /// The columns of the table of one case's design.
    enum Column {
        Span,
        Point,
        TopMoment,
        TopArea,
        TopBars,
        BottomMoment,
        BottomArea,
        BottomBars,
        Shear,
        Stirrups,
        kColumnCount
    };

    BmAnalysis(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent = nullptr);

    int floor() const { return m_floor; }
    int beamNumber() const { return m_beamNumber; }

    QComboBox* schemeCombo() const { return m_scheme; }
    BeamDiagram* momentDiagram() const { return m_moment; }
    BeamDiagram* shearDiagram() const { return m_shear; }
    BeamDiagram* deflectionDiagram() const { return m_deflection; }
    QTableWidget* deflectionTable() const { return m_deflectionTable; }
    QTableWidget* caseDesignTable() const { return m_caseDesign; }
    /// The case shown (0-based); -1 when the envelope or nothing is shown.
    int currentCase() const { return m_case; }
    int caseCount() const;
    /// The case's number and description, or the envelope's heading.
    QString caseText() const;
    /// What the last step told the engineer (the engine's message when the beam cannot be
    /// analysed).
    QString messageText() const;

    /// Analyses the beam under the chosen scheme and shows its first case.
    void start();
    /// Shows the next case; false at the last one.
    bool nextCase();
    /// Designs the beam for the case shown alone and lists what it asks for; nothing written.
    bool designThisCase();
    /// Shows the envelope of all the cases, stores the scheme in the beam and designs it
    /// through the job runner. False, after telling why, when the beam was not designed.
    bool finishAllCases();
    /// Opens the shear design of the beam beside the form (or brings it forward).
    QWidget* openShearDesign();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    void saved(const QString& message);

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void showCase(int index);
    void showEnvelope();
    void showDeflections();
    void showMessage(const QString& text);
    void enableSteps();

    shell::ShellState& m_shell;
    int m_floor;
    int m_beamNumber;
    std::optional<BeamRecord> m_record;
    BeamAnalysisResult m_analysis;
    int m_case = -1;
    bool m_finished = false;
    shell::PromptList m_prompts;

    QLabel* m_beamLabel;
    QLabel* m_schemeLabel;
    QComboBox* m_scheme;
    QLabel* m_caseLabel;
    QTabWidget* m_tabs;
    BeamDiagram* m_moment;
    BeamDiagram* m_shear;
    BeamDiagram* m_deflection;
    QLabel* m_deflectionCaption;
    QTableWidget* m_deflectionTable;
    QTableWidget* m_caseDesign;
    QLabel* m_message;
    QPushButton* m_next;
    QPushButton* m_design;
    QPushButton* m_finish;
    QPushButton* m_shearButton;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
