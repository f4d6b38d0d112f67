// sheardsn: the stirrups of one stored beam as its design places them: per span and point the
// factored shear, the shares of concrete and steel, legs, diameter and spacing, and the
// stirrup zones drawn under the beam. The beam's first stirrup diameter, its largest spacing
// and its least top bars (which hold the stirrups' top corners) are entered here; OK stores
// them in the beam and designs it again. It leads on to the long-term deflection and back to
// the analysis.
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "beams/beam_record.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace orvak::beams::forms {

class StirrupDrawing;

class sheardsn : public QWidget {
    Q_OBJECT
public:
    /// The columns of the table of shear points.
    enum Column { Span, Point, Vu, Vc, Vs, Legs, Diameter, Spacing, kColumnCount };

    sheardsn(shell::ShellState& shell, int floor, int beamNumber, QWidget* parent = nullptr);

    int floor() const { return m_floor; }
    int beamNumber() const { return m_beamNumber; }

    QLineEdit* stirrupDiameterField() const { return m_stirrupDiameter; }
    QLineEdit* stirrupSpacingField() const { return m_stirrupSpacing; }
    QLineEdit* barDiameterField() const { return m_barDiameter; }
    QLineEdit* barCountField() const { return m_barCount; }
    QTableWidget* points() const { return m_points; }
    StirrupDrawing* drawing() const { return m_drawing; }
    QString messageText() const;

    /// Reads the beam again and shows its stirrups as designed (nothing written).
    void refresh();
    /// `CmdOK`: stores the four fields in the beam and designs it again through the job
    /// runner. False, after telling why, when a value is refused (nothing is written then) or
    /// the beam cannot be designed.
    bool store();
    /// `CmdLtDef`: the long-term deflection form on the same beam, beside this one.
    QWidget* openLongTermDeflection();
    /// `Cmdbackopt`: the analysis of the same beam (the one open, else a new one); this form
    /// closes.
    QWidget* backToAnalysis();
    /// `CmdExt2`: the beam's shear listing in the viewer; nullptr, after telling why, when the
    /// beam has none yet.
    QWidget* showListing();

    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    void saved(const QString& message);

private:
    QString prompt(std::size_t n, std::string_view english) const;
    void showFields();
    void showDesign();

    shell::ShellState& m_shell;
    int m_floor;
    int m_beamNumber;
    std::optional<BeamRecord> m_record;
    shell::PromptList m_prompts;

    QLabel* m_beamLabel;
    std::array<QLabel*, 4> m_labels{};
    QLineEdit* m_stirrupDiameter;
    QLineEdit* m_stirrupSpacing;
    QLineEdit* m_barDiameter;
    QLineEdit* m_barCount;
    QTableWidget* m_points;
    QLabel* m_drawingCaption;
    StirrupDrawing* m_drawing;
    QLabel* m_message;
    QPushButton* m_ok;
    QPushButton* m_deflection;
    QPushButton* m_back;
    QPushButton* m_listing;
    QPushButton* m_exit;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
