// BmDesign: the beams of a floor entered on a drawing, each change stored at once.
#include "beams/forms/bmdesign_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "beams/beam_edit.h"
#include "beams/forms/beam_choice.h"
#include "beams/forms/beam_form_links.h"
#include "beams/forms/bmanalysis_form.h"
#include "beams/forms/bmriprpt_form.h"
#include "beams/forms/bmseting_form.h"
#include "core/error.h"
#include "jobs/beam_design_job.h"
#include "shell/field_table.h"
#include "ui/general_prompts.h"
#include "ui/grid_form.h"
#include "ui/qt_text.h"

namespace orvak::beams::forms {

namespace {

constexpr std::string_view kPromptKey = "BMDESIGN";

// The form's prompts (line n + 1 of BMDESIGN<letter>.TXT) with their English texts.
constexpr ui::FormText kCaption{1, "Beam design"};
constexpr ui::FormText kFloor{2, "Floor"};
constexpr ui::FormText kBeam{3, "Beam"};
constexpr ui::FormText kNew{4, "New"};
constexpr ui::FormText kCopy{5, "Copy"};
constexpr ui::FormText kDelete{6, "Delete"};
constexpr ui::FormText kUndo{7, "Undo"};
constexpr ui::FormText kSettings{8, "Settings"};
constexpr ui::FormText kAnalysis{9, "Analysis and design"};
constexpr ui::FormText kListings{10, "Listings"};
constexpr ui::FormText kExit{11, "Exit"};
constexpr ui::FormText kSpans{12, "Spans"};
constexpr ui::FormText kSupports{13, "Supports"};
constexpr ui::FormText kLoads{14, "Loads"};
constexpr ui::FormText kName{15, "Name"};
constexpr ui::FormText kFc{16, "Fc (kg/cm²)"};
constexpr ui::FormText kFy{17, "FY bars (kg/cm²)"};
constexpr ui::FormText kFyStirrups{18, "FY stirrups (kg/cm²)"};
constexpr ui::FormText kCoverTop{19, "Cover top (cm)"};
constexpr ui::FormText kCoverBottom{20, "Cover bottom (cm)"};
constexpr ui::FormText kCoverSide{21, "Cover side (cm)"};
constexpr ui::FormText kChange{22, "Change"};
constexpr ui::FormText kAllSpans{23, "Apply to all spans"};
constexpr ui::FormText kAllSupports{24, "Apply to all supports"};
constexpr ui::FormText kAllLoads{25, "Apply to all spans"};
constexpr ui::FormText kSection{26, "Section"};
constexpr ui::FormText kSpanLength{27, "Span length (m)"};
constexpr ui::FormText kWidth{28, "Width b (cm)"};
constexpr ui::FormText kHeight{29, "Height h (cm)"};
constexpr ui::FormText kFlangeWidth{30, "Flange width B (cm)"};
constexpr ui::FormText kWebWidth{31, "Web width bw (cm)"};
constexpr ui::FormText kTotalHeight{32, "Total height H (cm)"};
constexpr ui::FormText kFlangeThickness{33, "Flange thickness T (cm)"};
constexpr ui::FormText kAddSpan{34, "Add span"};
constexpr ui::FormText kRemoveSpan{35, "Remove span"};
constexpr ui::FormText kSupport{36, "Support"};
constexpr ui::FormText kFree{37, "Free (no support)"};
constexpr ui::FormText kPinned{38, "Supported (pinned)"};
constexpr ui::FormText kFixed{39, "Fixed (rotation held)"};
constexpr ui::FormText kSupportWidth{40, "Support width (cm)"};
constexpr ui::FormText kLoad{41, "Load"};
constexpr ui::FormText kUniform{42, "Uniform load (t/m)"};
constexpr ui::FormText kTriangular{43, "Triangular load (t/m at the peak)"};
constexpr ui::FormText kPartial{44, "Partial uniform load (t/m)"};
constexpr ui::FormText kPoint{45, "Point load (t)"};
constexpr ui::FormText kLoadOn{46, "The span carries this load"};
constexpr ui::FormText kDead{47, "Dead load"};
constexpr ui::FormText kLive{48, "Live load"};
constexpr ui::FormText kStart{49, "From the left support (m)"};
constexpr ui::FormText kLength{50, "Loaded length (m)"};
constexpr ui::FormText kPeakLeft{51, "Peak at the left support"};
constexpr ui::FormText kMode{52, "Mouse"};
constexpr ui::FormText kSelectMode{53, "Choose"};
constexpr ui::FormText kPlaceMode{54, "Place the load"};
constexpr ui::FormText kSnap{55, "Snap (cm)"};
constexpr ui::FormText kSpanOf{56, "Span %1 of %2"};
constexpr ui::FormText kSupportOf{57, "Support %1 of %2"};
constexpr ui::FormText kLoadsOf{58, "Loads of span %1 of %2"};
constexpr ui::FormText kSpanWord{59, "span"};
constexpr ui::FormText kFreeWord{60, "free"};
constexpr ui::FormText kStored{61, "Beam %1 was stored."};
constexpr ui::FormText kUndone{62, "The last change of beam %1 was undone."};
constexpr ui::FormText kNothingToUndo{63, "There is no change of this beam to undo."};
constexpr ui::FormText kAskDelete{
    64, "Delete beam %1 \"%2\" with its steel quantities? This cannot be undone."};
constexpr ui::FormText kDeleted{65, "Beam %1 was deleted."};
constexpr ui::FormText kAdded{66, "Beam %1 was added."};
constexpr ui::FormText kFloorFull{67, "Every beam number from 1 to 999 of this floor is taken."};
constexpr ui::FormText kMostSpans{68, "A beam has at most 30 spans."};
constexpr ui::FormText kOneSpan{69, "A beam keeps at least one span."};
constexpr ui::FormText kRefused{70, "Nothing was stored: %1"};
constexpr ui::FormText kNoFloor{71, "Choose a floor first: Cielling > New or Select."};
constexpr ui::FormText kBadName{
    72, "The name holds a character that the project's language cannot keep in its files."};
constexpr ui::FormText kFirstKind{73, "Wide rectangle (band beam)"};
// 73..79: the seven section kinds.
constexpr std::array<std::string_view, 7> kKindNames = {
    "Wide rectangle (band beam)", "Rectangle", "T section", "L section", "Inverted T",
    "Inverted L", "Rib of a ribbed slab"};
constexpr ui::FormText kBeamData{80, "Beam data"};
constexpr ui::FormText kNoBeam{81, "The floor has no beam yet: add one with New."};
constexpr std::size_t kPromptCount = 81;

// The characters each kind of field takes.
constexpr const char* kDimensionKeys = "[0-9]*\\.?[0-9]*";
constexpr const char* kLoadKeys = "-?[0-9]*\\.?[0-9]*";
constexpr const char* kWholeKeys = "[0-9]*";

// Ranges of the fields, in the limit-string form of the input tables (minimum @1, maximum @2).
// They keep a stored beam within what the analysis and the listings can take.
constexpr std::string_view kLengthLimits = "@1:0.1@2:50";
constexpr std::string_view kSectionLimits = "@1:1@2:500";
constexpr std::string_view kFlangeLimits = "@1:0@2:500";
constexpr std::string_view kSupportWidthLimits = "@1:0@2:500";
constexpr std::string_view kLineLoadLimits = "@1:-500@2:500";
constexpr std::string_view kPointLoadLimits = "@1:-5000@2:5000";
constexpr std::string_view kPlaceLimits = "@1:0@2:50";
constexpr std::string_view kFcLimits = "@1:50@2:1000";
constexpr std::string_view kFyLimits = "@1:1000@2:10000";
constexpr std::string_view kCoverLimits = "@1:0@2:20";

shell::Limits limitsOf(std::string_view limitString) {
    return shell::columnLimits(1, 1, {std::string(limitString)}, 1);
}

// Panels of the section kinds, in the order of the section stack.
enum SectionPanel { HRect, VRect, TPanel, LPanel };

SectionPanel panelOf(int kind) {
    switch (static_cast<SectionKind>(kind)) {
    case SectionKind::WideRectangle:
        return HRect;
    case SectionKind::DeepRectangle:
        return VRect;
    case SectionKind::LSection:
    case SectionKind::InvertedL:
        return LPanel;
    default:
        return TPanel;
    }
}

QString number(float value) {
    return QString::number(static_cast<double>(value), 'g', 7);
}

} // namespace

BmDesign::BmDesign(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_choice(new BeamChoice(shell, this, &m_messageHook)),
      m_drawing(new BeamDrawing), m_scroll(new QScrollArea(this)), m_modeCombo(new QComboBox(this)),
      m_spank(new QRadioButton(this)), m_jointk(new QRadioButton(this)),
      m_loadk(new QRadioButton(this)), m_moveLeft(new QPushButton(QStringLiteral("<"), this)),
      m_moveRight(new QPushButton(QStringLiteral(">"), this)), m_where(new QLabel(this)),
      m_panels(new QStackedWidget(this)) {
    setObjectName(QStringLiteral("BmDesign"));
    m_scroll->setWidget(m_drawing);
    m_scroll->setWidgetResizable(false);
    m_scroll->setMinimumHeight(240);
    m_scroll->setObjectName(QStringLiteral("BeamScroll"));
    m_modeCombo->setObjectName(QStringLiteral("MODECombo"));
    m_modeCombo->addItems({QString(), QString()});
    m_snap = numberField("SNPXTXT", kWholeKeys, 4);
    m_snap->setText(QStringLiteral("5"));
    m_spank->setObjectName(QStringLiteral("spank"));
    m_jointk->setObjectName(QStringLiteral("jointk"));
    m_loadk->setObjectName(QStringLiteral("loadk"));
    m_moveLeft->setObjectName(QStringLiteral("CmdmoveLft"));
    m_moveRight->setObjectName(QStringLiteral("CmdmoveRt"));
    m_spank->setChecked(true);
    auto* modes = new QButtonGroup(this);
    modes->addButton(m_spank);
    modes->addButton(m_jointk);
    modes->addButton(m_loadk);

    const auto button = [this](const char* name) {
        auto* b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    m_new = button("CmdNew");
    m_copy = button("CmdCopy");
    m_delete = button("CmdDelete");
    m_undoButton = button("CmdUndo");
    m_settings = button("CmdSetting");
    m_analysis = button("CmdAnalysis");
    m_listings = button("CmdListings");
    m_zoomIn = button("CmdZoomIn");
    m_zoomOut = button("CmdZoomOut");
    m_zoomIn->setText(QStringLiteral("+"));
    m_zoomOut->setText(QStringLiteral("−"));
    m_exit = button("exit");

    buildPanels();

    auto* top = new QHBoxLayout;
    const auto caption = [this](ui::FormText text, QWidget* buddy = nullptr) {
        auto* label = new QLabel(this);
        label->setBuddy(buddy);
        m_captions.emplace_back(label, text.prompt);
        return label;
    };
    top->addWidget(caption(kFloor));
    top->addWidget(m_choice->floors());
    top->addWidget(caption(kBeam));
    top->addWidget(m_choice->beams(), 1);
    for (QPushButton* b : {m_new, m_copy, m_delete, m_undoButton}) {
        top->addWidget(b);
    }

    auto* view = new QHBoxLayout;
    view->addWidget(caption(kMode, m_modeCombo));
    view->addWidget(m_modeCombo);
    view->addWidget(caption(kSnap, m_snap));
    view->addWidget(m_snap);
    view->addWidget(m_zoomOut);
    view->addWidget(m_zoomIn);
    view->addStretch(1);
    view->addWidget(m_spank);
    view->addWidget(m_jointk);
    view->addWidget(m_loadk);
    view->addSpacing(12);
    view->addWidget(m_moveLeft);
    view->addWidget(m_where);
    view->addWidget(m_moveRight);
    for (QPushButton* b : {m_zoomIn, m_zoomOut, m_moveLeft, m_moveRight}) {
        b->setFixedWidth(b->fontMetrics().height() * 2);
    }

    // What leads on from the beam, beside its panels.
    auto* onward = new QVBoxLayout;
    for (QPushButton* b : {m_settings, m_analysis, m_listings}) {
        onward->addWidget(b);
    }
    onward->addStretch(1);
    onward->addWidget(m_exit);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(view);
    layout->addWidget(m_scroll, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_panels, 1);
    bottom->addWidget(m_data);
    bottom->addLayout(onward);
    layout->addLayout(bottom);

    connect(m_choice, &BeamChoice::beamChanged, this, [this] {
        m_undo.clear();
        m_selected = 0;
        m_fitted = true;
        showBeam();
        fitDrawing();
    });
    connect(m_drawing, &BeamDrawing::clicked, this, &BmDesign::drawingClicked);
    connect(m_spank, &QRadioButton::toggled, this, [this](bool on) { if (on) setMode(Mode::Span); });
    connect(m_jointk, &QRadioButton::toggled, this, [this](bool on) { if (on) setMode(Mode::Joint); });
    connect(m_loadk, &QRadioButton::toggled, this, [this](bool on) { if (on) setMode(Mode::Load); });
    connect(m_moveLeft, &QPushButton::clicked, this, [this] { select(m_selected - 1); });
    connect(m_moveRight, &QPushButton::clicked, this, [this] { select(m_selected + 1); });
    connect(m_zoomIn, &QPushButton::clicked, this, [this] {
        m_fitted = false;
        m_drawing->setZoom(m_drawing->zoom() * 1.25);
    });
    connect(m_zoomOut, &QPushButton::clicked, this, [this] {
        m_fitted = false;
        m_drawing->setZoom(m_drawing->zoom() * 0.8);
    });
    connect(m_drawing, &BeamDrawing::zoomedByUser, this, [this] { m_fitted = false; });
    m_scroll->viewport()->installEventFilter(this);
    connect(m_new, &QPushButton::clicked, this, [this] { newBeam(); });
    connect(m_copy, &QPushButton::clicked, this, [this] { copyBeam(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { deleteBeam(); });
    connect(m_undoButton, &QPushButton::clicked, this, [this] { undo(); });
    connect(m_settings, &QPushButton::clicked, this, [this] { openSettings(); });
    connect(m_analysis, &QPushButton::clicked, this, [this] { openAnalysis(); });
    connect(m_listings, &QPushButton::clicked, this, [this] { openListings(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });
    auto* undoKey = new QShortcut(QKeySequence::Undo, this);
    undoKey->setContext(Qt::WidgetWithChildrenShortcut);
    connect(undoKey, &QShortcut::activated, this, [this] { undo(); });

    readPrompts();
    m_choice->load();
}

void BmDesign::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    fitDrawing();
}

bool BmDesign::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_scroll->viewport() && event->type() == QEvent::Resize && m_fitted) {
        fitDrawing();
    }
    return QWidget::eventFilter(watched, event);
}

void BmDesign::fitDrawing() {
    if (m_beam && isVisible() && m_fitted) {
        // A little less than the view, so that no scroll bar is needed for the whole beam.
        m_drawing->fitWidth(m_scroll->viewport()->width() - 4);
    }
}

QLineEdit* BmDesign::numberField(const char* name, const char* allowed, int maxLength) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QString::fromLatin1(allowed)), edit));
    edit->setMaxLength(maxLength);
    ui::fitToChars(edit, maxLength + 1);
    return edit;
}

void BmDesign::buildPanels() {
    const auto caption = [this](ui::FormText text) {
        auto* label = new QLabel(this);
        m_captions.emplace_back(label, text.prompt);
        return label;
    };
    const auto group = [this](const char* name, ui::FormText title) {
        auto* box = new QGroupBox(this);
        box->setObjectName(QString::fromLatin1(name));
        m_captions.emplace_back(box, title.prompt);
        return box;
    };
    const auto check = [this](const char* name, ui::FormText text) {
        auto* box = new QCheckBox(this);
        box->setObjectName(QString::fromLatin1(name));
        m_captions.emplace_back(box, text.prompt);
        return box;
    };
    const auto push = [this](const char* name, ui::FormText text) {
        auto* b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(name));
        m_captions.emplace_back(b, text.prompt);
        return b;
    };

    // The beam's own data, beside every panel.
    QGroupBox* data = group("BeamDataFrm", kBeamData);
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("NameTxt"));
    m_name->setMaxLength(20);
    ui::fitToChars(m_name, 14);
    m_fc = numberField("FcTxt", kDimensionKeys, 6);
    m_fy = numberField("FyTxt", kDimensionKeys, 6);
    m_fyStirrups = numberField("FysTxt", kDimensionKeys, 6);
    m_coverTop = numberField("CovTopTxt", kDimensionKeys, 5);
    m_coverBottom = numberField("CovBotTxt", kDimensionKeys, 5);
    m_coverSide = numberField("CovSideTxt", kDimensionKeys, 5);
    m_beamChange = push("CmdBchange", kChange);
    auto* dataForm = new QFormLayout(data);
    dataForm->addRow(caption(kName), m_name);
    dataForm->addRow(caption(kFc), m_fc);
    dataForm->addRow(caption(kFy), m_fy);
    dataForm->addRow(caption(kFyStirrups), m_fyStirrups);
    dataForm->addRow(caption(kCoverTop), m_coverTop);
    dataForm->addRow(caption(kCoverBottom), m_coverBottom);
    dataForm->addRow(caption(kCoverSide), m_coverSide);
    dataForm->addRow(m_beamChange);

    // Spans: the kind, the length and the section panel of the kind.
    QGroupBox* span = group("span_panel", kSpans);
    m_sectionKind = new QComboBox(this);
    m_sectionKind->setObjectName(QStringLiteral("SecKindCombo"));
    for (std::size_t k = 0; k < kKindNames.size(); ++k) {
        m_sectionKind->addItem(QString(), static_cast<int>(k + 1));
    }
    m_spanLength = numberField("Spnltxt", kDimensionKeys, 6);
    m_sectionPanels = new QStackedWidget(this);
    const auto sectionPanel = [&](const char* name, std::vector<std::pair<ui::FormText, QLineEdit*>> fields) {
        auto* panel = new QWidget(this);
        panel->setObjectName(QString::fromLatin1(name));
        auto* form = new QFormLayout(panel);
        form->setContentsMargins(0, 0, 0, 0);
        for (auto& [text, edit] : fields) {
            form->addRow(caption(text), edit);
        }
        m_sectionPanels->addWidget(panel);
    };
    m_hrectB = numberField("hrctbtxt", kDimensionKeys, 6);
    m_hrectH = numberField("hrcthtxt", kDimensionKeys, 6);
    m_vrectB = numberField("vrctbtxt", kDimensionKeys, 6);
    m_vrectH = numberField("vrcthtxt", kDimensionKeys, 6);
    m_tBig = numberField("TBBIGTXT", kDimensionKeys, 6);
    m_tSmall = numberField("TBSMALTXT", kDimensionKeys, 6);
    m_tHBig = numberField("THBIGTXT", kDimensionKeys, 6);
    m_tHSmall = numberField("THSMALTxt", kDimensionKeys, 6);
    m_lBig = numberField("LBBIGTXT", kDimensionKeys, 6);
    m_lSmall = numberField("LBSMALTXT", kDimensionKeys, 6);
    m_lHBig = numberField("LHBIGTXT", kDimensionKeys, 6);
    m_lHSmall = numberField("LHSMALTXT", kDimensionKeys, 6);
    sectionPanel("HRECT_PANEL", {{kWidth, m_hrectB}, {kHeight, m_hrectH}});
    sectionPanel("VRECT_PANEL", {{kWidth, m_vrectB}, {kHeight, m_vrectH}});
    sectionPanel("T_PANEL", {{kFlangeWidth, m_tBig}, {kWebWidth, m_tSmall},
                             {kTotalHeight, m_tHBig}, {kFlangeThickness, m_tHSmall}});
    sectionPanel("L_PANEL", {{kFlangeWidth, m_lBig}, {kWebWidth, m_lSmall},
                             {kTotalHeight, m_lHBig}, {kFlangeThickness, m_lHSmall}});
    m_spanAll = check("ChkSALL", kAllSpans);
    m_spanChange = push("cmdSchange", kChange);
    m_addSpan = push("CmdAddSpan", kAddSpan);
    m_removeSpan = push("CmdDelSpan", kRemoveSpan);
    auto* spanLayout = new QVBoxLayout(span);
    auto* spanFields = new QHBoxLayout;
    auto* spanForm = new QFormLayout;
    spanForm->addRow(caption(kSection), m_sectionKind);
    spanForm->addRow(caption(kSpanLength), m_spanLength);
    spanFields->addLayout(spanForm);
    spanFields->addWidget(m_sectionPanels, 1);
    spanLayout->addLayout(spanFields);
    spanLayout->addStretch(1);
    auto* spanButtons = new QHBoxLayout;
    spanButtons->addWidget(m_spanAll);
    spanButtons->addStretch(1);
    spanButtons->addWidget(m_spanChange);
    spanButtons->addWidget(m_addSpan);
    spanButtons->addWidget(m_removeSpan);
    spanLayout->addLayout(spanButtons);
    connect(m_sectionKind, &QComboBox::currentIndexChanged, this, [this] {
        m_sectionPanels->setCurrentIndex(panelOf(m_sectionKind->currentData().toInt()));
    });

    // Supports.
    QGroupBox* joint = group("joint_panel", kSupports);
    auto* supPanel = new QWidget(this);
    supPanel->setObjectName(QStringLiteral("sup_Panel"));
    m_supportKind = new QComboBox(this);
    m_supportKind->setObjectName(QStringLiteral("SupCombo"));
    m_supportKind->addItems({QString(), QString(), QString()});
    m_supportWidth = numberField("SupWTxt", kDimensionKeys, 6);
    auto* supForm = new QFormLayout(supPanel);
    supForm->setContentsMargins(0, 0, 0, 0);
    supForm->addRow(caption(kSupport), m_supportKind);
    supForm->addRow(caption(kSupportWidth), m_supportWidth);
    m_jointAll = check("ChkJALL", kAllSupports);
    m_jointChange = push("cmdjchange", kChange);
    auto* jointLayout = new QVBoxLayout(joint);
    jointLayout->addWidget(supPanel);
    jointLayout->addStretch(1);
    auto* jointButtons = new QHBoxLayout;
    jointButtons->addWidget(m_jointAll);
    jointButtons->addStretch(1);
    jointButtons->addWidget(m_jointChange);
    jointLayout->addLayout(jointButtons);

    // Loads: the kind, whether the span carries it, and its values.
    QGroupBox* load = group("load_panel", kLoads);
    m_loadKind = new QComboBox(this);
    m_loadKind->setObjectName(QStringLiteral("LdKindCombo"));
    for (int k = 1; k <= static_cast<int>(kLoadKindCount); ++k) {
        m_loadKind->addItem(QString(), k);
    }
    m_loadOn = check("LdOnChk", kLoadOn);
    auto* lvPanel = new QWidget(this);
    lvPanel->setObjectName(QStringLiteral("LV_PANEL"));
    m_dead = numberField("lvtxt", kLoadKeys, 8);
    m_live = numberField("LLvTxt", kLoadKeys, 8);
    m_loadStart = numberField("LdStartTxt", kLoadKeys, 7);
    m_loadLength = numberField("lbllen", kLoadKeys, 7);
    m_peakLeft = check("TriLeftChk", kPeakLeft);
    auto* lvForm = new QFormLayout(lvPanel);
    lvForm->setContentsMargins(0, 0, 0, 0);
    lvForm->addRow(caption(kDead), m_dead);
    lvForm->addRow(caption(kLive), m_live);
    lvForm->addRow(caption(kStart), m_loadStart);
    lvForm->addRow(caption(kLength), m_loadLength);
    m_loadAll = check("ChkLall", kAllLoads);
    m_loadChange = push("CmdLchange", kChange);
    auto* loadLayout = new QVBoxLayout(load);
    auto* loadFields = new QHBoxLayout;
    auto* kindForm = new QFormLayout;
    kindForm->addRow(caption(kLoad), m_loadKind);
    kindForm->addRow(m_loadOn);
    kindForm->addRow(m_peakLeft);
    loadFields->addLayout(kindForm);
    loadFields->addWidget(lvPanel, 1);
    loadLayout->addLayout(loadFields);
    loadLayout->addStretch(1);
    auto* loadButtons = new QHBoxLayout;
    loadButtons->addWidget(m_loadAll);
    loadButtons->addStretch(1);
    loadButtons->addWidget(m_loadChange);
    loadLayout->addLayout(loadButtons);
    connect(m_loadKind, &QComboBox::currentIndexChanged, this, [this] { showLoadPanel(); });

    // The panel of the mode, the beam's data beside it.
    for (QGroupBox* panel : {span, joint, load}) {
        m_panels->addWidget(panel);
    }
    m_data = data;

    connect(m_beamChange, &QPushButton::clicked, this, [this] { changeBeamData(); });
    connect(m_spanChange, &QPushButton::clicked, this, [this] { changeSpan(); });
    connect(m_addSpan, &QPushButton::clicked, this, [this] { addSpan(); });
    connect(m_removeSpan, &QPushButton::clicked, this, [this] { removeSpan(); });
    connect(m_jointChange, &QPushButton::clicked, this, [this] { changeJoint(); });
    connect(m_loadChange, &QPushButton::clicked, this, [this] { changeLoads(); });
}

QString BmDesign::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void BmDesign::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    const auto text = [this](ui::FormText t) { return prompt(t.prompt, t.english); };
    // Every caption of the form from its prompt number.
    static const std::array kAll = {
        kCaption, kFloor, kBeam, kNew, kCopy, kDelete, kUndo, kSettings, kAnalysis, kListings,
        kExit, kSpans, kSupports, kLoads, kName, kFc, kFy, kFyStirrups, kCoverTop, kCoverBottom,
        kCoverSide, kChange, kAllSpans, kAllSupports, kAllLoads, kSection, kSpanLength, kWidth,
        kHeight, kFlangeWidth, kWebWidth, kTotalHeight, kFlangeThickness, kAddSpan, kRemoveSpan,
        kSupport, kFree, kPinned, kFixed, kSupportWidth, kLoad, kUniform, kTriangular, kPartial,
        kPoint, kLoadOn, kDead, kLive, kStart, kLength, kPeakLeft, kMode, kSelectMode,
        kPlaceMode, kSnap, kBeamData};
    const auto english = [&](std::size_t n) -> std::string_view {
        for (const ui::FormText& t : kAll) {
            if (t.prompt == n) {
                return t.english;
            }
        }
        return {};
    };
    for (auto& [widget, n] : m_captions) {
        const QString caption = prompt(n, english(n));
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            label->setText(caption);
        } else if (auto* box = qobject_cast<QGroupBox*>(widget)) {
            box->setTitle(caption);
        } else if (auto* b = qobject_cast<QAbstractButton*>(widget)) {
            b->setText(caption);
        }
    }
    setWindowTitle(text(kCaption));
    m_new->setText(text(kNew));
    m_copy->setText(text(kCopy));
    m_delete->setText(text(kDelete));
    m_undoButton->setText(text(kUndo));
    m_undoButton->setToolTip(QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText));
    m_settings->setText(text(kSettings));
    m_analysis->setText(text(kAnalysis));
    m_listings->setText(text(kListings));
    m_exit->setText(text(kExit));
    m_spank->setText(text(kSpans));
    m_jointk->setText(text(kSupports));
    m_loadk->setText(text(kLoads));
    m_modeCombo->setItemText(0, text(kSelectMode));
    m_modeCombo->setItemText(1, text(kPlaceMode));
    for (std::size_t k = 0; k < kKindNames.size(); ++k) {
        m_sectionKind->setItemText(
            static_cast<int>(k),
            QStringLiteral("%1 %2").arg(k + 1).arg(prompt(kFirstKind.prompt + k, kKindNames[k])));
    }
    m_supportKind->setItemText(0, text(kFree));
    m_supportKind->setItemText(1, text(kPinned));
    m_supportKind->setItemText(2, text(kFixed));
    const std::array loadNames = {kUniform, kTriangular, kPartial, kPoint};
    for (std::size_t k = 0; k < loadNames.size(); ++k) {
        m_loadKind->setItemText(static_cast<int>(k), text(loadNames[k]));
    }
    m_drawing->setTexts(text(kSpanWord), text(kFreeWord));
    showSelection();
}

bool BmDesign::chooseBeam(int floor, int number) {
    return m_choice->chooseBeam(floor, number);
}

const BeamRecord* BmDesign::beam() const {
    return m_beam ? &*m_beam : nullptr;
}

int BmDesign::floor() const {
    return m_choice->floor();
}

void BmDesign::showBeam() {
    const BeamRecord* chosen = m_choice->beam();
    if (chosen == nullptr) {
        m_beam.reset();
        m_drawing->clear();
    } else {
        m_beam = *chosen;
        m_drawing->setBeam(*m_beam);
        m_name->setText(ui::toQString(m_beam->name, m_shell.language()));
        m_fc->setText(number(m_beam->fc));
        m_fy->setText(number(m_beam->fyMain));
        m_fyStirrups->setText(number(m_beam->fyStirrups));
        m_coverTop->setText(number(m_beam->coverTopCm));
        m_coverBottom->setText(number(m_beam->coverBottomCm));
        m_coverSide->setText(number(m_beam->coverSideCm));
    }
    const bool open = m_beam.has_value();
    for (QWidget* w : std::initializer_list<QWidget*>{m_copy, m_delete, m_undoButton, m_settings,
                                                      m_analysis, m_listings, m_panels, m_data}) {
        w->setEnabled(open);
    }
    m_new->setEnabled(m_choice->floor() > 0);
    showSelection();
}

void BmDesign::setMode(Mode mode) {
    m_mode = mode;
    QRadioButton* option = mode == Mode::Span ? m_spank : mode == Mode::Joint ? m_jointk : m_loadk;
    if (!option->isChecked()) {
        option->setChecked(true);
    }
    m_panels->setCurrentIndex(static_cast<int>(mode));
    select(m_selected);
}

void BmDesign::select(int index) {
    const int spans = m_beam ? static_cast<int>(m_beam->spans.size()) : 0;
    const int last = m_mode == Mode::Joint ? spans : spans - 1;
    m_selected = std::clamp(index, 0, std::max(last, 0));
    showSelection();
}

void BmDesign::showSelection() {
    if (!m_beam) {
        m_where->setText(m_choice->floor() > 0 ? prompt(kNoBeam.prompt, kNoBeam.english)
                                              : prompt(kNoFloor.prompt, kNoFloor.english));
        return;
    }
    const int spans = static_cast<int>(m_beam->spans.size());
    m_selected = std::clamp(m_selected, 0, m_mode == Mode::Joint ? spans : spans - 1);
    const BeamDrawing::Part part = m_mode == Mode::Span    ? BeamDrawing::Part::Span
                                   : m_mode == Mode::Joint ? BeamDrawing::Part::Joint
                                                           : BeamDrawing::Part::Load;
    m_drawing->setSelection(part, m_selected);
    const ui::FormText where = m_mode == Mode::Span    ? kSpanOf
                               : m_mode == Mode::Joint ? kSupportOf
                                                       : kLoadsOf;
    m_where->setText(prompt(where.prompt, where.english)
                         .arg(m_selected + 1)
                         .arg(m_mode == Mode::Joint ? spans + 1 : spans));
    m_moveLeft->setEnabled(m_selected > 0);
    m_moveRight->setEnabled(m_selected < (m_mode == Mode::Joint ? spans : spans - 1));
    m_addSpan->setEnabled(spans < kMaxSpans);
    m_removeSpan->setEnabled(spans > 1);
    switch (m_mode) {
    case Mode::Span:
        showSpanPanel();
        break;
    case Mode::Joint:
        showJointPanel();
        break;
    case Mode::Load:
        showLoadPanel();
        break;
    }
}

void BmDesign::showSpanPanel() {
    const StoredSpan& s = m_beam->spans[static_cast<std::size_t>(m_selected)];
    m_sectionKind->setCurrentIndex(std::clamp<int>(s.sectionKind, 1, 7) - 1);
    m_sectionPanels->setCurrentIndex(panelOf(s.sectionKind));
    m_spanLength->setText(number(s.lengthM));
    m_hrectB->setText(number(s.dims[2]));
    m_hrectH->setText(number(s.dims[4]));
    m_vrectB->setText(number(s.dims[2]));
    m_vrectH->setText(number(s.dims[4]));
    m_tBig->setText(number(s.dims[0]));
    m_tSmall->setText(number(s.dims[2]));
    m_tHBig->setText(number(s.dims[4]));
    m_tHSmall->setText(number(s.dims[1]));
    m_lBig->setText(number(s.dims[0]));
    m_lSmall->setText(number(s.dims[2]));
    m_lHBig->setText(number(s.dims[4]));
    m_lHSmall->setText(number(s.dims[1]));
}

void BmDesign::showJointPanel() {
    const StoredSupport& j = m_beam->supports[static_cast<std::size_t>(m_selected)];
    const BeamSupport held = supportFromCodes(j.code, j.second);
    m_supportKind->setCurrentIndex(held.restrainsRotation ? 2 : held.restrainsDisplacement ? 1 : 0);
    m_supportWidth->setText(number(j.widthCm));
}

void BmDesign::showLoadPanel() {
    if (!m_beam || m_mode != Mode::Load) {
        return;
    }
    const StoredSpan& s = m_beam->spans[static_cast<std::size_t>(m_selected)];
    const int kind = std::max(m_loadKind->currentIndex(), 0);
    const StoredLoad& l = s.loads[static_cast<std::size_t>(kind)];
    m_loadOn->setChecked(l.present);
    m_dead->setText(number(l.dead));
    m_live->setText(number(l.live));
    const auto loadKind = static_cast<LoadKind>(kind + 1);
    const bool placed = loadKind == LoadKind::PartialUniform || loadKind == LoadKind::Concentrated;
    m_loadStart->setEnabled(placed);
    m_loadLength->setEnabled(loadKind == LoadKind::PartialUniform);
    m_peakLeft->setEnabled(loadKind == LoadKind::Triangular);
    m_loadStart->setText(number(l.startM));
    m_loadLength->setText(number(l.lengthM));
    m_peakLeft->setChecked(s.trianglePeakLeft);
}

void BmDesign::drawingClicked(QPointF at) {
    const std::optional<BeamDrawing::Hit> hit = m_drawing->hitAt(at);
    if (!hit || !m_beam) {
        return;
    }
    // "Place the load": a click on a span puts the chosen load there (snapped), ready to be
    // stored with Change.
    if (m_modeCombo->currentIndex() == 1 && hit->part != BeamDrawing::Part::Joint) {
        setMode(Mode::Load);
        select(hit->index);
        const double snapCm = std::max(1.0, m_snap->text().toDouble());
        const double metres = m_drawing->metresAlong(hit->index, at);
        const double snapped = std::round(metres * 100.0 / snapCm) * snapCm / 100.0;
        m_loadStart->setText(QString::number(snapped, 'f', 2));
        return;
    }
    const Mode mode = hit->part == BeamDrawing::Part::Joint  ? Mode::Joint
                      : hit->part == BeamDrawing::Part::Load ? Mode::Load
                                                             : Mode::Span;
    m_selected = hit->index;
    setMode(mode);
}

std::optional<double> BmDesign::readField(QLineEdit* field, const QString& label, double minimum,
                                          double maximum) {
    shell::Limits limits;
    limits.minimum = minimum;
    limits.maximum = maximum;
    const shell::CellCheckResult check = shell::checkCell(field->text().toStdString(), 1, limits);
    if (check.status == shell::CellCheck::Ok) {
        return check.value;
    }
    const QString why =
        check.status == shell::CellCheck::NotANumber
            ? ui::generalPrompt(m_shell, ui::General::NotANumber).arg(field->text())
            : ui::generalPrompt(m_shell, ui::General::RangeMessage)
                  .arg(field->text())
                  .arg(minimum)
                  .arg(maximum);
    field->setFocus();
    field->selectAll();
    ui::tellUser(this, m_messageHook, QStringLiteral("%1: %2").arg(label, why));
    return std::nullopt;
}

bool BmDesign::store(const BeamRecord& changed, const QString& done, bool undoable) {
    if (!m_beam) {
        return false;
    }
    const std::filesystem::path project = m_shell.projectPath();
    const std::size_t spansBefore = m_beam->spans.size();
    try {
        const BeamRecord back = storeBeam(project, m_choice->floor(), changed);
        if (undoable) {
            m_undo.push_back(*m_beam);
            while (m_undo.size() > kUndoDepth) {
                m_undo.pop_front();
            }
        }
        m_beam = back;
        m_choice->replaceBeam(back);
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefused.prompt, kRefused.english).arg(QString::fromUtf8(e.what())));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    m_drawing->setBeam(*m_beam);
    // A beam that grew or shrank is seen whole again.
    if (m_beam->spans.size() != spansBefore) {
        fitDrawing();
    }
    showSelection();
    markChanged(this, m_messageHook, project, m_choice->floor(), m_beam->number);
    emit saved(done);
    return true;
}

bool BmDesign::changeBeamData() {
    if (!m_beam) {
        return false;
    }
    const auto label = [this](ui::FormText t) { return prompt(t.prompt, t.english); };
    const auto name = ui::fromQStringExact(m_name->text().trimmed(), m_shell.language());
    if (!name) {
        ui::tellUser(this, m_messageHook, label(kBadName));
        return false;
    }
    const shell::Limits fcL = limitsOf(kFcLimits);
    const shell::Limits fyL = limitsOf(kFyLimits);
    const shell::Limits cvL = limitsOf(kCoverLimits);
    const auto fc = readField(m_fc, label(kFc), fcL.minimum, fcL.maximum);
    const auto fy = fc ? readField(m_fy, label(kFy), fyL.minimum, fyL.maximum) : std::nullopt;
    const auto fys = fy ? readField(m_fyStirrups, label(kFyStirrups), fyL.minimum, fyL.maximum)
                        : std::nullopt;
    const auto top = fys ? readField(m_coverTop, label(kCoverTop), cvL.minimum, cvL.maximum)
                         : std::nullopt;
    const auto bottom =
        top ? readField(m_coverBottom, label(kCoverBottom), cvL.minimum, cvL.maximum) : std::nullopt;
    const auto side =
        bottom ? readField(m_coverSide, label(kCoverSide), cvL.minimum, cvL.maximum) : std::nullopt;
    if (!side) {
        return false;
    }
    BeamRecord b = *m_beam;
    b.name = *name;
    b.fc = static_cast<float>(*fc);
    b.fyMain = static_cast<float>(*fy);
    b.fyStirrups = static_cast<float>(*fys);
    b.coverTopCm = static_cast<float>(*top);
    b.coverBottomCm = static_cast<float>(*bottom);
    b.coverSideCm = static_cast<float>(*side);
    return store(b, label(kStored).arg(b.number));
}

bool BmDesign::changeSpan() {
    if (!m_beam) {
        return false;
    }
    const auto label = [this](ui::FormText t) { return prompt(t.prompt, t.english); };
    const int kind = m_sectionKind->currentData().toInt();
    const shell::Limits lengthL = limitsOf(kLengthLimits);
    const shell::Limits sectionL = limitsOf(kSectionLimits);
    const shell::Limits flangeL = limitsOf(kFlangeLimits);
    const auto length = readField(m_spanLength, label(kSpanLength), lengthL.minimum, lengthL.maximum);
    if (!length) {
        return false;
    }
    // The section's dimensions in stored order: [0] B, [1] T, [2] bw, [4] H.
    const StoredSpan& chosen = m_beam->spans[static_cast<std::size_t>(m_selected)];
    SectionDims dims = chosen.dims;
    const auto read = [&](QLineEdit* field, ui::FormText text, const shell::Limits& l,
                          std::size_t at) {
        const auto v = readField(field, label(text), l.minimum, l.maximum);
        if (v) {
            dims[at] = static_cast<float>(*v);
        }
        return v.has_value();
    };
    bool ok = true;
    switch (panelOf(kind)) {
    case HRect:
        ok = read(m_hrectB, kWidth, sectionL, 2) && read(m_hrectH, kHeight, sectionL, 4);
        break;
    case VRect:
        ok = read(m_vrectB, kWidth, sectionL, 2) && read(m_vrectH, kHeight, sectionL, 4);
        break;
    case TPanel:
        ok = read(m_tBig, kFlangeWidth, sectionL, 0) && read(m_tSmall, kWebWidth, sectionL, 2) &&
             read(m_tHBig, kTotalHeight, sectionL, 4) &&
             read(m_tHSmall, kFlangeThickness, flangeL, 1);
        break;
    case LPanel:
        ok = read(m_lBig, kFlangeWidth, sectionL, 0) && read(m_lSmall, kWebWidth, sectionL, 2) &&
             read(m_lHBig, kTotalHeight, sectionL, 4) &&
             read(m_lHSmall, kFlangeThickness, flangeL, 1);
        break;
    }
    if (!ok) {
        return false;
    }
    BeamRecord b = *m_beam;
    const auto newLength = static_cast<float>(*length);
    // Applied to all, the section goes to every span; the length only when it was typed
    // anew, since spans of one section rarely share one length.
    const bool allLengths = m_spanAll->isChecked() && newLength != chosen.lengthM;
    for (std::size_t s = 0; s < b.spans.size(); ++s) {
        const bool isChosen = static_cast<int>(s) == m_selected;
        if (!isChosen && !m_spanAll->isChecked()) {
            continue;
        }
        b.spans[s].sectionKind = static_cast<std::int16_t>(kind);
        b.spans[s].dims = dims;
        if (isChosen || allLengths) {
            b.spans[s].lengthM = newLength;
        }
    }
    return store(b, label(kStored).arg(b.number));
}

bool BmDesign::changeJoint() {
    if (!m_beam) {
        return false;
    }
    const auto label = [this](ui::FormText t) { return prompt(t.prompt, t.english); };
    const shell::Limits widthL = limitsOf(kSupportWidthLimits);
    const auto width = readField(m_supportWidth, label(kSupportWidth), widthL.minimum, widthL.maximum);
    if (!width) {
        return false;
    }
    BeamRecord b = *m_beam;
    const int kind = m_supportKind->currentIndex();
    for (std::size_t j = 0; j < b.supports.size(); ++j) {
        if (static_cast<int>(j) != m_selected && !m_jointAll->isChecked()) {
            continue;
        }
        StoredSupport& s = b.supports[j];
        const BeamSupport was = supportFromCodes(s.code, s.second);
        const int wasKind = was.restrainsRotation ? 2 : was.restrainsDisplacement ? 1 : 0;
        // A code the form does not offer (a free joint stored as 1, say) stays as stored
        // unless the engineer chose another kind of support.
        if (kind != wasKind) {
            s.code = static_cast<std::int16_t>(kind == 0 ? 0 : 2);
            s.second = static_cast<std::int16_t>(kind == 2 ? 1 : 0);
        }
        s.widthCm = static_cast<float>(*width);
    }
    return store(b, label(kStored).arg(b.number));
}

bool BmDesign::changeLoads() {
    if (!m_beam) {
        return false;
    }
    const auto label = [this](ui::FormText t) { return prompt(t.prompt, t.english); };
    const int kind = std::max(m_loadKind->currentIndex(), 0);
    const auto loadKind = static_cast<LoadKind>(kind + 1);
    const shell::Limits valueL =
        limitsOf(loadKind == LoadKind::Concentrated ? kPointLoadLimits : kLineLoadLimits);
    const shell::Limits placeL = limitsOf(kPlaceLimits);
    const auto dead = readField(m_dead, label(kDead), valueL.minimum, valueL.maximum);
    const auto live = dead ? readField(m_live, label(kLive), valueL.minimum, valueL.maximum)
                           : std::nullopt;
    if (!live) {
        return false;
    }
    StoredLoad load;
    load.present = m_loadOn->isChecked();
    load.dead = static_cast<float>(*dead);
    load.live = static_cast<float>(*live);
    if (loadKind == LoadKind::PartialUniform || loadKind == LoadKind::Concentrated) {
        const auto start = readField(m_loadStart, label(kStart), placeL.minimum, placeL.maximum);
        if (!start) {
            return false;
        }
        load.startM = static_cast<float>(*start);
    }
    if (loadKind == LoadKind::PartialUniform) {
        const auto length = readField(m_loadLength, label(kLength), placeL.minimum, placeL.maximum);
        if (!length) {
            return false;
        }
        load.lengthM = static_cast<float>(*length);
    }
    BeamRecord b = *m_beam;
    for (std::size_t s = 0; s < b.spans.size(); ++s) {
        if (static_cast<int>(s) != m_selected && !m_loadAll->isChecked()) {
            continue;
        }
        StoredLoad& stored = b.spans[s].loads[static_cast<std::size_t>(kind)];
        load.spare = stored.spare; // kept as stored
        stored = load;
        if (loadKind == LoadKind::Triangular) {
            b.spans[s].trianglePeakLeft = m_peakLeft->isChecked();
        }
    }
    return store(b, label(kStored).arg(b.number));
}

bool BmDesign::addSpan() {
    if (!m_beam) {
        return false;
    }
    BeamRecord b = *m_beam;
    const int after = m_mode == Mode::Joint ? std::max(m_selected - 1, 0) : m_selected;
    if (!insertSpan(b, after)) {
        ui::tellUser(this, m_messageHook, prompt(kMostSpans.prompt, kMostSpans.english));
        return false;
    }
    if (!store(b, prompt(kStored.prompt, kStored.english).arg(b.number))) {
        return false;
    }
    m_selected = after + 1;
    setMode(Mode::Span);
    return true;
}

bool BmDesign::removeSpan() {
    if (!m_beam) {
        return false;
    }
    BeamRecord b = *m_beam;
    const int span = std::min(m_selected, static_cast<int>(b.spans.size()) - 1);
    if (!beams::removeSpan(b, span)) {
        ui::tellUser(this, m_messageHook, prompt(kOneSpan.prompt, kOneSpan.english));
        return false;
    }
    return store(b, prompt(kStored.prompt, kStored.english).arg(b.number));
}

bool BmDesign::undo() {
    if (!m_beam || m_undo.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNothingToUndo.prompt, kNothingToUndo.english));
        return false;
    }
    const BeamRecord previous = m_undo.back();
    if (!store(previous, prompt(kUndone.prompt, kUndone.english).arg(previous.number), false)) {
        return false;
    }
    m_undo.pop_back();
    return true;
}

bool BmDesign::addBeam(const std::function<BeamRecord(int number)>& make) {
    const int floor = m_choice->floor();
    const std::filesystem::path project = m_shell.projectPath();
    try {
        const int number = freeBeamNumber(project, floor);
        if (number == 0) {
            ui::tellUser(this, m_messageHook, prompt(kFloorFull.prompt, kFloorFull.english));
            return false;
        }
        storeBeam(project, floor, make(number));
        m_choice->reloadBeams(number);
        emit saved(prompt(kAdded.prompt, kAdded.english).arg(number));
        return true;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook,
                     prompt(kRefused.prompt, kRefused.english).arg(QString::fromUtf8(e.what())));
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
    }
    return false;
}

bool BmDesign::newBeam() {
    const int floor = m_choice->floor();
    if (floor <= 0) {
        ui::tellUser(this, m_messageHook, prompt(kNoFloor.prompt, kNoFloor.english));
        return false;
    }
    return addBeam([this, floor](int number) {
        const std::vector<BeamRecord> existing = readBeamFile(m_shell.projectPath(), floor);
        BeamSettings defaults = defaultBeamSettings();
        try {
            defaults = readBeamSettingsFile(m_shell.generalFolder());
        } catch (const FileError& e) {
            // A damaged defaults file is named; the beam takes the built-in settings.
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
        return beams::newBeam(floor, number, defaults,
                              existing.empty() ? nullptr : &existing.back());
    });
}

bool BmDesign::copyBeam() {
    if (!m_beam) {
        return false;
    }
    return addBeam([this](int number) {
        BeamRecord copy = *m_beam;
        copy.number = static_cast<std::int16_t>(number);
        // The copy's name says whose copy it is; the engineer renames it in Name.
        const std::string suffix = "-" + std::to_string(number);
        copy.name = copy.name.substr(0, 20 - suffix.size()) + suffix;
        return copy;
    });
}

bool BmDesign::deleteBeam() {
    if (!m_beam) {
        return false;
    }
    const int floor = m_choice->floor();
    const int number = m_beam->number;
    const QString question = prompt(kAskDelete.prompt, kAskDelete.english)
                                 .arg(number)
                                 .arg(ui::toQString(m_beam->name, m_shell.language()));
    if (!ui::askYesNo(this, m_askHook, question, windowTitle())) {
        return false;
    }
    try {
        // The steel first: a beam that is gone must not leave bars in the quantities.
        jobs::forgetBeam(m_shell.projectPath(), floor, number);
        removeBeam(m_shell.projectPath(), floor, number);
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    m_choice->reloadBeams(0);
    emit saved(prompt(kDeleted.prompt, kDeleted.english).arg(number));
    return true;
}

void BmDesign::openSettings() {
    if (!m_beam) {
        return;
    }
    auto* settings = new Bmseting(m_shell, m_choice->floor(), m_beam->number);
    // The copy saved there is an edit of this beam like any other, undone the same way.
    connect(settings, &Bmseting::saved, this, [this, settings](const QString& message) {
        if (!m_beam || settings->beamNumber() != m_beam->number) {
            return;
        }
        try {
            if (auto b = readStoredBeam(m_shell.projectPath(), m_choice->floor(), m_beam->number)) {
                m_undo.push_back(*m_beam);
                m_beam = *b;
                m_choice->replaceBeam(*b);
            }
        } catch (const FileError& e) {
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
        emit saved(message);
    });
    ui::showBeside(this, settings, settings->sizeHint());
}

void BmDesign::openAnalysis() {
    if (!m_beam) {
        return;
    }
    // One analysis window per beam: an open one comes forward, reading the beam again.
    if (raiseOpenForm<BmAnalysis>(m_choice->floor(), m_beam->number) != nullptr) {
        return;
    }
    auto* analysis = new BmAnalysis(m_shell, m_choice->floor(), m_beam->number);
    ui::showBeside(this, analysis, analysis->sizeHint());
}

void BmDesign::openListings() {
    if (!m_beam) {
        return;
    }
    auto* report = new BmRipRpt(m_shell);
    report->chooseBeam(m_choice->floor(), m_beam->number);
    ui::showBeside(this, report, report->sizeHint());
}

} // namespace orvak::beams::forms
