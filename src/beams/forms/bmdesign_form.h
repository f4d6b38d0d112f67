// BmDesign (Beam\Rip > Analysis and Design): the beams of the current floor entered and seen.
// The chosen beam is drawn to scale; the engineer edits one span, one support or one span's
// loads at a time (or all of them at once) in the panel of the chosen input mode, and every
// change is written at once to the beam's record and read back from it, so that the file is
// what the analysis and the design read. The last edits of the open beam can be undone.
// Beams are created, copied and deleted here; the settings, the analysis run and the
// listings are one button away.
#pragma once

#include <QWidget>
#include <array>
#include <deque>
#include <functional>
#include <optional>

#include "beams/beam_record.h"
#include "beams/forms/beam_drawing.h"
#include "shell/prompts.h"
#include "shell/shell_state.h"
#include "ui/form_support.h"

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollArea;
class QStackedWidget;

namespace orvak::beams::forms {

class BeamChoice;

class BmDesign : public QWidget {
    Q_OBJECT
public:
    /// Edits kept for undo, per open beam.
    static constexpr std::size_t kUndoDepth = 50;

    /// The panel of the input mode: spans, supports (joints) or loads.
    enum class Mode { Span, Joint, Load };

    explicit BmDesign(shell::ShellState& shell, QWidget* parent = nullptr);

    /// Opens beam `number` of floor `floor`; false when there is no such beam.
    bool chooseBeam(int floor, int number);
    /// The open beam as last read from its file; nullptr when none.
    const BeamRecord* beam() const;
    int floor() const;
    Mode mode() const { return m_mode; }
    /// The span or joint chosen, 0-based.
    int selected() const { return m_selected; }
    void setMode(Mode mode);
    void select(int index);
    std::size_t undoCount() const { return m_undo.size(); }
    BeamDrawing* drawing() const { return m_drawing; }

    /// The change buttons: the panel applied to the chosen element, or with its apply-to-all
    /// box set to every span, support or span's loads; written and read back at once. False
    /// when a value is refused (the user is told; nothing is written).
    bool changeSpan();
    bool changeJoint();
    bool changeLoads();
    /// The beam's name, materials and covers.
    bool changeBeamData();
    /// A span added after the chosen one (a copy of it), or the chosen span taken out.
    bool addSpan();
    bool removeSpan();
    /// The last edit of the open beam undone (Ctrl+Z); false when there is none.
    bool undo();
    /// A new beam of the floor (the settings of BMSETING.DAT, the materials of the floor's
    /// last beam), a copy of the open one, or the open one deleted with its steel after a
    /// question.
    bool newBeam();
    bool copyBeam();
    bool deleteBeam();

    void setAskHook(ui::AskHook hook) { m_askHook = std::move(hook); }
    void setMessageHook(ui::MessageHook hook) { m_messageHook = std::move(hook); }

public slots:
    void readPrompts();

signals:
    void saved(const QString& message);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitDrawing();
    QString prompt(std::size_t n, std::string_view english) const;
    QLineEdit* numberField(const char* name, const char* allowed, int maxLength);
    void buildPanels();
    void showBeam();
    void showSelection();
    void showSpanPanel();
    void showJointPanel();
    void showLoadPanel();
    void drawingClicked(QPointF at);
    /// Reads a field against its limits; the user is told and nothing is kept when refused.
    std::optional<double> readField(QLineEdit* field, const QString& label, double minimum,
                                    double maximum);
    /// Stores `changed` as the open beam (undo keeps the beam as it was); false when refused.
    bool store(const BeamRecord& changed, const QString& done, bool undoable = true);
    /// Stores the beam `make` gives for the floor's first free number and opens it.
    bool addBeam(const std::function<BeamRecord(int number)>& make);
    void openSettings();
    void openAnalysis();
    void openListings();

    shell::ShellState& m_shell;
    shell::PromptList m_prompts;
    BeamChoice* m_choice;
    std::optional<BeamRecord> m_beam;
    std::deque<BeamRecord> m_undo;
    Mode m_mode = Mode::Span;
    int m_selected = 0;
    bool m_fitted = true; ///< the drawing follows the view's width until the engineer zooms

    BeamDrawing* m_drawing;
    QScrollArea* m_scroll;
    QComboBox* m_modeCombo;
    QLineEdit* m_snap;
    QRadioButton* m_spank;
    QRadioButton* m_jointk;
    QRadioButton* m_loadk;
    QPushButton* m_moveLeft;
    QPushButton* m_moveRight;
    QLabel* m_where;
    QStackedWidget* m_panels;

    // Beam data.
    QGroupBox* m_data = nullptr;
    QLineEdit* m_name;
    QLineEdit* m_fc;
    QLineEdit* m_fy;
    QLineEdit* m_fyStirrups;
    QLineEdit* m_coverTop;
    QLineEdit* m_coverBottom;
    QLineEdit* m_coverSide;
    QPushButton* m_beamChange;

    // Span panel and the section panels.
    QComboBox* m_sectionKind;
    QLineEdit* m_spanLength;
    QStackedWidget* m_sectionPanels;
    QLineEdit* m_hrectB;
    QLineEdit* m_hrectH;
    QLineEdit* m_vrectB;
    QLineEdit* m_vrectH;
    QLineEdit* m_tBig;
    QLineEdit* m_tSmall;
    QLineEdit* m_tHBig;
    QLineEdit* m_tHSmall;
    QLineEdit* m_lBig;
    QLineEdit* m_lSmall;
    QLineEdit* m_lHBig;
    QLineEdit* m_lHSmall;
    QCheckBox* m_spanAll;
    QPushButton* m_spanChange;
    QPushButton* m_addSpan;
    QPushButton* m_removeSpan;

    // Support panel.
    QComboBox* m_supportKind;
    QLineEdit* m_supportWidth;
    QCheckBox* m_jointAll;
    QPushButton* m_jointChange;

    // Load panel.
    QComboBox* m_loadKind;
    QCheckBox* m_loadOn;
    QLineEdit* m_dead;
    QLineEdit* m_live;
    QLineEdit* m_loadStart;
    QLineEdit* m_loadLength;
    QCheckBox* m_peakLeft;
    QCheckBox* m_loadAll;
    QPushButton* m_loadChange;

    QPushButton* m_new;
    QPushButton* m_copy;
    QPushButton* m_delete;
    QPushButton* m_undoButton;
    QPushButton* m_settings;
    QPushButton* m_analysis;
    QPushButton* m_listings;
    QPushButton* m_zoomIn;
    QPushButton* m_zoomOut;
    QPushButton* m_exit;
    std::vector<std::pair<QWidget*, std::size_t>> m_captions; ///< labels and their prompts

    ui::AskHook m_askHook;
    ui::MessageHook m_messageHook;
};

} // namespace orvak::beams::forms
