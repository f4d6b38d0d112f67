// FtGroups: the groups in a list by record number, the chosen group's fields by kind, the
// result of its last design beneath. A group is stored on its own, in place at its number.
#include "footings/forms/ftgroups_form.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <map>

#include "beams/beam_job.h"
#include "core/codepage.h"
#include "core/error.h"
#include "jobs/design_job.h"
#include "jobs/footing_design_job.h"
#include "ui/design_run.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::footings::forms {

namespace {

constexpr std::string_view kPromptKey = "FTGROUPS";
// Prompts of FTGROUPS<letter>.TXT (prompt n on line n + 1).
constexpr std::size_t kCaption = 1;
constexpr std::size_t kFirstBox = 2; // groups, footing, column 1, column 2, piles, result
constexpr std::size_t kKindLabel = 8;
constexpr std::size_t kFirstKind = 9; // isolated, combined, pile
constexpr std::size_t kColumnGroupLabel = 12;
constexpr std::size_t kFirstFieldLabel = 13;
constexpr std::size_t kCombinedCx = 22;
constexpr std::size_t kIsolatedNote = 23;
constexpr std::size_t kCombinedNote = 24;
constexpr std::size_t kPileNote = 25;
constexpr std::size_t kFirstButton = 26; // new ... exit
constexpr std::size_t kNotYet = 34;
constexpr std::size_t kDesigned = 35;
constexpr std::size_t kChecksFailed = 36;
constexpr std::size_t kNotDesigned = 37;
constexpr std::size_t kResultLine = 38;
constexpr std::size_t kBarsLine = 39;
constexpr std::size_t kSettingsLine = 40;
constexpr std::size_t kAskDelete = 41;
constexpr std::size_t kSavedText = 42;
constexpr std::size_t kNotANumber = 43;
constexpr std::size_t kChooseGroup = 44;
constexpr std::size_t kNoSheet = 45;
constexpr std::size_t kDesigning = 46;
constexpr std::size_t kAllDesigned = 47;
constexpr std::size_t kSomeFailed = 48;
constexpr std::size_t kCancelled = 49;
constexpr std::size_t kStopped = 50;
constexpr std::size_t kProblems = 51;
constexpr std::size_t kTookSettings = 52;
constexpr std::size_t kNoColumnGroups = 53;
constexpr std::size_t kNoGroup = 54;
constexpr std::size_t kNameNotKept = 55;
constexpr std::size_t kUnsaved = 56;
constexpr std::size_t kDeleted = 57;
constexpr std::size_t kPromptCount = 57;

enum Field {
    NameField,
    Cx1Field,
    Cy1Field,
    Cx2Field,
    PilesField,
    PileDiameterField,
    PileLengthField,
    FrictionField,
    EndBearingField,
    kFieldCount
};

struct FieldSpec {
    std::string_view objectName;
    std::string_view english;
    bool whole; ///< takes "0123456789", else ".0123456789"
    int width;
};
constexpr std::array<FieldSpec, kFieldCount> kFields = {{
    {"GrpNameTxt", "Name", false, static_cast<int>(kFootingNameWidth)},
    {"Cx1Txt", "Cx: left edge to its face (cm; 0: centred)", false, 7},
    {"Cy1Txt", "Cy: bottom edge to its face (cm; 0: centred)", false, 7},
    {"Cx2Txt", "Cx2: its centre from the left edge (cm)", false, 7},
    {"PilesTxt", "Number of piles", true, 3},
    {"PileDiamTxt", "Pile diameter (cm)", false, 7},
    {"PileLenTxt", "Pile length (cm)", false, 7},
    {"SurfFricTxt", "Surface friction (t/m2)", false, 7},
    {"EndBearTxt", "End bearing (t/m2)", false, 7},
}};
constexpr std::array<std::string_view, 6> kBoxes = {"Groups",        "Footing", "Column",
                                                    "Second column", "Piles",   "Last design"};
constexpr std::array<std::string_view, 3> kKinds = {"Isolated footing", "Combined footing",
                                                    "Pile footing"};
constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kButtons = {{
    {"CmdNew", "New group"},
    {"CmdDelete", "Delete group"},
    {"CmdSettings", "Take the current settings"},
    {"CmdSave", "Save"},
    {"CmdDesign", "Design the group"},
    {"CmdDesignAll", "Design all groups"},
    {"CmdSheet", "Sheet"},
    {"CmdExit", "Exit"},
}};

} // namespace

FtGroups::FtGroups(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_groupList(new QListWidget(this)),
      m_kind(new QComboBox(this)), m_secondBox(new QGroupBox(this)), m_pileBox(new QGroupBox(this)),
      m_settingsText(new QLabel(this)), m_result(new QLabel(this)), m_convention(new QLabel(this)),
      m_new(new QPushButton(this)), m_delete(new QPushButton(this)),
      m_settings(new QPushButton(this)), m_save(new QPushButton(this)),
      m_design(new QPushButton(this)), m_designAll(new QPushButton(this)),
      m_sheet(new QPushButton(this)), m_exit(new QPushButton(this)),
      m_run(new ui::DesignRun(shell, this)) {
    setObjectName(QStringLiteral("FtGroups"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_groupList->setObjectName(QStringLiteral("GrpList"));
    m_kind->setObjectName(QStringLiteral("KindCombo"));
    m_result->setObjectName(QStringLiteral("ResultLbl"));
    m_result->setWordWrap(true);
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_convention->setWordWrap(true);
    m_settingsText->setWordWrap(true);
    const std::array buttons{m_new,    m_delete,    m_settings, m_save,
                             m_design, m_designAll, m_sheet,    m_exit};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setObjectName(QString::fromLatin1(kButtons[i].first.data(),
                                                      static_cast<int>(kButtons[i].first.size())));
    }
    for (int k = 0; k < 2; ++k) {
        auto* combo = new QComboBox(this);
        combo->setObjectName(QStringLiteral("ColGrp%1Combo").arg(k + 1));
        combo->setMinimumContentsLength(16);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        m_columnGroup[static_cast<std::size_t>(k)] = combo;
        connect(combo, &QComboBox::activated, this, [this] { edited(); });
    }

    // Whole numbers take digits only, the others digits and one point.
    static const QRegularExpression whole(QStringLiteral("[0-9]{0,4}"));
    static const QRegularExpression decimal(QStringLiteral("[0-9]{0,6}(\\.[0-9]{0,3})?"));
    for (const FieldSpec& f : kFields) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(
            QString::fromLatin1(f.objectName.data(), static_cast<int>(f.objectName.size())));
        if (f.objectName == "GrpNameTxt") {
            edit->setMaxLength(f.width);
        } else {
            edit->setValidator(new QRegularExpressionValidator(f.whole ? whole : decimal, edit));
        }
        ui::fitToChars(edit, f.width + 1);
        auto* label = new QLabel(this);
        label->setBuddy(edit);
        m_fields.push_back(edit);
        m_fieldLabels.push_back(label);
        connect(edit, &QLineEdit::textEdited, this, [this] { edited(); });
    }
    std::array<QGroupBox*, 6> boxes{};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        boxes[i] = i == 3 ? m_secondBox : i == 4 ? m_pileBox : new QGroupBox(this);
        boxes[i]->setObjectName(QStringLiteral("Box%1").arg(i + 1));
    }

    auto* groupsLayout = new QVBoxLayout(boxes[0]);
    groupsLayout->addWidget(m_groupList);
    auto* groupButtons = new QHBoxLayout;
    groupButtons->addWidget(m_new);
    groupButtons->addWidget(m_delete);
    groupsLayout->addLayout(groupButtons);

    auto* kindLabel = new QLabel(this);
    kindLabel->setObjectName(QStringLiteral("KindLbl"));
    kindLabel->setBuddy(m_kind);
    auto* footing = new QFormLayout(boxes[1]);
    footing->addRow(m_fieldLabels[NameField], m_fields[NameField]);
    footing->addRow(kindLabel, m_kind);
    footing->addRow(m_settingsText);
    footing->addRow(m_settings);

    const auto columnBox = [&](QGroupBox* box, int k, std::initializer_list<int> fields) {
        auto* form = new QFormLayout(box);
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("ColGrp%1Lbl").arg(k + 1));
        label->setBuddy(m_columnGroup[static_cast<std::size_t>(k)]);
        form->addRow(label, m_columnGroup[static_cast<std::size_t>(k)]);
        for (int f : fields) {
            form->addRow(m_fieldLabels[static_cast<std::size_t>(f)],
                         m_fields[static_cast<std::size_t>(f)]);
        }
    };
    columnBox(boxes[2], 0, {Cx1Field, Cy1Field});
    columnBox(m_secondBox, 1, {Cx2Field});
    auto* piles = new QFormLayout(m_pileBox);
    for (int f = PilesField; f <= EndBearingField; ++f) {
        piles->addRow(m_fieldLabels[static_cast<std::size_t>(f)],
                      m_fields[static_cast<std::size_t>(f)]);
    }
    auto* resultLayout = new QVBoxLayout(boxes[5]);
    resultLayout->addWidget(m_result);

    auto* middle = new QVBoxLayout;
    middle->addWidget(boxes[1]);
    middle->addWidget(boxes[2]);
    middle->addWidget(m_secondBox);
    middle->addWidget(m_convention);
    middle->addWidget(m_pileBox);
    middle->addWidget(boxes[5]);
    middle->addStretch(1);
    auto* body = new QHBoxLayout;
    body->addWidget(boxes[0], 2);
    body->addLayout(middle, 3);
    auto* commands = new QHBoxLayout;
    for (QPushButton* b : {m_save, m_design, m_designAll, m_sheet}) {
        commands->addWidget(b);
    }
    commands->addStretch(1);
    commands->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(commands);

    connect(m_kind, &QComboBox::activated, this, [this] {
        edited();
        showKind();
    });
    connect(m_groupList, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_showing) {
            return;
        }
        if (!mayLeave()) {
            // The edits stay: the list goes back to the group being edited.
            m_showing = true;
            m_groupList->setCurrentRow(m_fresh ? m_groupList->count() - 1 : m_current);
            m_showing = false;
            return;
        }
        if (m_fresh && row == m_groupList->count() - 1) {
            return;
        }
        m_fresh.reset();
        m_current = row;
        showGroupList();
        showGroup();
    });
    connect(m_new, &QPushButton::clicked, this, [this] { newGroup(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { deleteGroup(); });
    connect(m_settings, &QPushButton::clicked, this, [this] { takeSettings(); });
    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_design, &QPushButton::clicked, this, [this] { designGroup(); });
    connect(m_designAll, &QPushButton::clicked, this, [this] { designAll(); });
    connect(m_sheet, &QPushButton::clicked, this, [this] { showSheet(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });
    connect(m_run, &ui::DesignRun::finished, this, [this] {
        const int number = currentGroup();
        load();
        chooseGroup(number);
        emit saved(m_run->summary().section(QLatin1Char('\n'), 0, 0));
    });

    readPrompts();
    load();
}

FtGroups::~FtGroups() = default;

void FtGroups::setMessageHook(ui::MessageHook hook) {
    m_messageHook = hook;
    m_run->setMessageHook(std::move(hook));
}

QString FtGroups::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

QLineEdit* FtGroups::field(std::string_view objectName) const {
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (kFields[i].objectName == objectName) {
            return m_fields[i];
        }
    }
    return nullptr;
}

void FtGroups::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Footing groups"));
    for (std::size_t i = 0; i < kBoxes.size(); ++i) {
        findChild<QGroupBox*>(QStringLiteral("Box%1").arg(i + 1))
            ->setTitle(prompt(kFirstBox + i, kBoxes[i]));
    }
    findChild<QLabel*>(QStringLiteral("KindLbl"))->setText(prompt(kKindLabel, "Kind"));
    const int kind = m_kind->currentIndex();
    m_kind->clear();
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        m_kind->addItem(prompt(kFirstKind + i, kKinds[i]), static_cast<int>(i + 1));
    }
    m_kind->setCurrentIndex(std::max(0, kind));
    for (int k = 0; k < 2; ++k) {
        findChild<QLabel*>(QStringLiteral("ColGrp%1Lbl").arg(k + 1))
            ->setText(prompt(kColumnGroupLabel, "Column group"));
    }
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        m_fieldLabels[i]->setText(prompt(kFirstFieldLabel + i, kFields[i].english));
    }
    const std::array buttons{m_new,    m_delete,    m_settings, m_save,
                             m_design, m_designAll, m_sheet,    m_exit};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setText(prompt(kFirstButton + i, kButtons[i].second));
    }
    showKind();
    showResult();
}

void FtGroups::load() {
    m_groups.clear();
    m_columnGroups.clear();
    m_fresh.reset();
    m_dirty = false;
    m_readOk = m_shell.hasProject();
    if (m_readOk) {
        try {
            m_columnGroups = columns::readGroups(m_shell.projectPath(), columns::ColumnLevel{0});
            m_groups = readFootingGroups(m_shell.projectPath());
        } catch (const FileError& e) {
            // A damaged file is shown, never overwritten: nothing can be saved from here.
            m_readOk = false;
            m_groups.clear();
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
    }
    m_current =
        m_groups.empty() ? -1 : std::clamp(m_current, 0, static_cast<int>(m_groups.size()) - 1);
    for (QComboBox* combo : m_columnGroup) {
        combo->clear();
        for (std::size_t i = 0; i < m_columnGroups.size(); ++i) {
            combo->addItem(QStringLiteral("%1  %2").arg(i + 1).arg(
                               ui::toQString(m_columnGroups[i].name, m_shell.language())),
                           static_cast<int>(i + 1));
        }
    }
    for (QWidget* w : std::initializer_list<QWidget*>{m_new, m_designAll}) {
        w->setEnabled(m_readOk);
    }
    showGroupList();
    showGroup();
}

int FtGroups::currentGroup() const {
    if (m_fresh) {
        return 0;
    }
    return m_current < 0 ? -1 : m_groups[static_cast<std::size_t>(m_current)].number;
}

void FtGroups::showGroupList() {
    m_showing = true;
    m_groupList->clear();
    std::map<int, bars::DesignState> states;
    if (m_shell.hasProject()) {
        for (bars::DesignState& s : jobs::recordedDesignStates(m_shell.projectPath())) {
            if (s.kind == jobs::kFootingGroupKind) {
                states[s.number] = std::move(s);
            }
        }
    }
    for (const StoredFootingGroup& g : m_groups) {
        QString state = prompt(kNotYet, "not designed yet");
        const auto s = states.find(g.number);
        if (s != states.end()) {
            state = s->second.status == bars::DesignState::Status::Designed
                        ? prompt(kDesigned, "designed")
                    : s->second.status == bars::DesignState::Status::ChecksFailed
                        ? prompt(kChecksFailed, "checks failed")
                        : prompt(kNotDesigned, "not designed");
        }
        const auto kind = static_cast<std::size_t>(g.group.kind) - 1;
        auto* item = new QListWidgetItem(QStringLiteral("%1  %2  (%3)  %4")
                                             .arg(g.number)
                                             .arg(ui::toQString(g.group.name, m_shell.language()))
                                             .arg(prompt(kFirstKind + kind, kKinds[kind]))
                                             .arg(state),
                                         m_groupList);
        if (s != states.end() && !s->second.failures.empty()) {
            item->setToolTip(ui::toQString(s->second.failures, m_shell.language()));
        }
    }
    if (m_fresh) {
        new QListWidgetItem(
            QStringLiteral("*  ") + ui::toQString(m_fresh->name, m_shell.language()), m_groupList);
        m_groupList->setCurrentRow(m_groupList->count() - 1);
    } else {
        m_groupList->setCurrentRow(m_current);
    }
    m_showing = false;
}

void FtGroups::showKind() {
    const auto kind = static_cast<FootingKind>(m_kind->currentIndex() + 1);
    m_secondBox->setVisible(kind == FootingKind::Combined);
    m_pileBox->setVisible(kind == FootingKind::Pile);
    m_fields[Cy1Field]->setVisible(kind != FootingKind::Combined);
    m_fieldLabels[Cy1Field]->setVisible(kind != FootingKind::Combined);
    // Where a column stands: an isolated or pile footing's column from the edges to its faces,
    // a combined footing's columns by their centres from the left edge.
    const bool combined = kind == FootingKind::Combined;
    m_fieldLabels[Cx1Field]->setText(
        combined ? prompt(kCombinedCx, "Cx1: its centre from the left edge (cm)")
                 : prompt(kFirstFieldLabel + Cx1Field, kFields[Cx1Field].english));
    if (m_readOk && m_shell.hasProject() && m_columnGroups.empty()) {
        // Nothing to stand a footing on yet: say where the column groups are made.
        m_convention->setText(prompt(kNoColumnGroups,
                                     "The footing level has no column groups: make them with "
                                     "Foundation > Columns necks Groups data first."));
        return;
    }
    m_convention->setText(
        kind == FootingKind::Isolated
            ? prompt(kIsolatedNote, "A is the side along the column's a, B along its b. Cx and "
                                    "Cy place an off-centre column: 0 puts it in the middle.")
        : combined ? prompt(kCombinedNote, "The columns stand on one line along x, the first on "
                                           "the left: Cx1 < Cx2. The footing is as long as puts "
                                           "their resultant in its middle.")
                   : prompt(kPileNote, "The pile design itself is not part of this version: "
                                       "the sheet lists the footing's inputs."));
}

void FtGroups::showGroup() {
    m_showing = true;
    const FootingGroup* g = m_fresh          ? &*m_fresh
                            : m_current >= 0 ? &m_groups[static_cast<std::size_t>(m_current)].group
                                             : nullptr;
    const bool any = g != nullptr;
    for (QLineEdit* e : m_fields) {
        e->setEnabled(any && m_readOk);
        if (!any) {
            e->clear();
        }
    }
    for (QWidget* w : std::initializer_list<QWidget*>{m_kind, m_columnGroup[0], m_columnGroup[1],
                                                      m_settings, m_save, m_design, m_delete}) {
        w->setEnabled(any && m_readOk);
    }
    m_sheet->setEnabled(any && !m_fresh);
    if (any) {
        m_fields[NameField]->setText(ui::toQString(g->name, m_shell.language()));
        m_kind->setCurrentIndex(static_cast<int>(g->kind) - 1);
        for (int k = 0; k < 2; ++k) {
            const FootingPlacement& p = g->columns[static_cast<std::size_t>(k)];
            QComboBox* combo = m_columnGroup[static_cast<std::size_t>(k)];
            combo->setCurrentIndex(combo->findData(static_cast<int>(p.group)));
        }
        m_fields[Cx1Field]->setText(ui::plainDecimal(g->columns[0].cxCm));
        m_fields[Cy1Field]->setText(ui::plainDecimal(g->columns[0].cyCm));
        m_fields[Cx2Field]->setText(ui::plainDecimal(g->columns[1].cxCm));
        m_fields[PilesField]->setText(QString::number(g->piles));
        m_fields[PileDiameterField]->setText(ui::plainDecimal(g->pileDiameterCm));
        m_fields[PileLengthField]->setText(ui::plainDecimal(g->pileLengthCm));
        m_fields[FrictionField]->setText(ui::plainDecimal(g->surfaceFriction));
        m_fields[EndBearingField]->setText(ui::plainDecimal(g->endBearing));
        const FootingSettings& s = g->settings;
        m_settingsText->setText(
            prompt(kSettingsLine,
                   "Fc=%1, FY=%2 kg/cm2, soil %3 kg/cm2, cover %4 cm, LF=%5, MinDepth %6 cm")
                .arg(s.Fc)
                .arg(s.FY)
                .arg(ui::plainDecimal(s.soilCapacity), ui::plainDecimal(s.coverCm),
                     ui::plainDecimal(s.LF), ui::plainDecimal(s.minDepthCm)));
    } else {
        m_settingsText->clear();
    }
    m_showing = false;
    m_dirty = false;
    showKind();
    showResult();
}

void FtGroups::showResult() {
    if (m_fresh || m_current < 0) {
        m_result->setText(m_fresh ? prompt(kUnsaved, "Not saved yet.") : QString());
        return;
    }
    const FootingGroup& g = m_groups[static_cast<std::size_t>(m_current)].group;
    if (g.status != FootingStatus::Designed && g.status != FootingStatus::ChecksFailed) {
        m_result->setText(prompt(kNotYet, "not designed yet"));
        return;
    }
    QString text =
        prompt(kResultLine, "%1: A=%2 cm, B=%3 cm, H=%4 cm")
            .arg(g.status == FootingStatus::Designed ? prompt(kDesigned, "designed")
                                                     : prompt(kChecksFailed, "checks failed"))
            .arg(ui::plainDecimal(g.aCm), ui::plainDecimal(g.bCm), ui::plainDecimal(g.hCm));
    for (const StoredFootingBars* bars : {&g.barsY, &g.barsX}) {
        if (bars->count > 0) {
            text += QStringLiteral("\n") +
                    prompt(kBarsLine, "%1: %2 bars of %3 mm, %4 cm long")
                        .arg(bars == &g.barsY ? QStringLiteral("Y") : QStringLiteral("X"))
                        .arg(bars->count)
                        .arg(ui::plainDecimal(bars->diameterMm), ui::plainDecimal(bars->lengthCm));
        }
    }
    m_result->setText(text);
}

void FtGroups::edited() {
    if (!m_showing) {
        m_dirty = true;
    }
}

bool FtGroups::mayLeave() {
    if (!m_dirty && !m_fresh) {
        return true;
    }
    return ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); });
}

std::optional<FootingGroup> FtGroups::takeFields() {
    FootingGroup g = m_fresh ? *m_fresh : m_groups[static_cast<std::size_t>(m_current)].group;
    const std::optional<std::string> name =
        ui::fromQStringExact(m_fields[NameField]->text().trimmed(), m_shell.language());
    if (!name) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNameNotKept, "The name holds a character that the project's "
                                          "language cannot keep in its files."));
        return std::nullopt;
    }
    g.name = *name;
    g.kind = static_cast<FootingKind>(m_kind->currentIndex() + 1);
    std::array<float, kFieldCount> v{};
    for (int i = Cx1Field; i < kFieldCount; ++i) {
        const QString t = m_fields[static_cast<std::size_t>(i)]->text().trimmed();
        bool ok = true;
        v[static_cast<std::size_t>(i)] = t.isEmpty() ? 0.0f : t.toFloat(&ok);
        if (!ok) {
            ui::tellUser(this, m_messageHook,
                         prompt(kNotANumber, "The value of %1 is not a number.")
                             .arg(m_fieldLabels[static_cast<std::size_t>(i)]->text()));
            return std::nullopt;
        }
    }
    for (int k = 0; k < 2; ++k) {
        FootingPlacement& p = g.columns[static_cast<std::size_t>(k)];
        const QVariant chosen = m_columnGroup[static_cast<std::size_t>(k)]->currentData();
        p.group = static_cast<std::int16_t>(chosen.isValid() ? chosen.toInt() : 0);
        p.groupName = p.group > 0 ? m_columnGroups[static_cast<std::size_t>(p.group - 1)].name
                                  : std::string();
    }
    g.columns[0].cxCm = v[Cx1Field];
    g.columns[0].cyCm = v[Cy1Field];
    g.columns[1].cxCm = v[Cx2Field];
    g.piles = static_cast<std::int16_t>(v[PilesField]);
    g.pileDiameterCm = v[PileDiameterField];
    g.pileLengthCm = v[PileLengthField];
    g.surfaceFriction = v[FrictionField];
    g.endBearing = v[EndBearingField];
    return g;
}

bool FtGroups::chooseGroup(int number) {
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        if (m_groups[i].number == number) {
            m_groupList->setCurrentRow(static_cast<int>(i));
            return currentGroup() == number;
        }
    }
    return false;
}

void FtGroups::newGroup() {
    if (!m_readOk || !mayLeave()) {
        return;
    }
    FootingGroup g;
    g.name = newFootingGroupName(m_groups);
    try {
        g.settings = readFootingSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
    }
    if (!m_columnGroups.empty()) {
        g.columns[0].group = 1;
        g.columns[0].groupName = m_columnGroups[0].name;
    }
    m_fresh = g;
    showGroupList();
    showGroup();
    m_dirty = true;
    m_fields[NameField]->setFocus();
    m_fields[NameField]->selectAll();
}

bool FtGroups::deleteGroup() {
    if (m_fresh) {
        m_fresh.reset();
        m_dirty = false;
        showGroupList();
        showGroup();
        return true;
    }
    if (m_current < 0 || !m_readOk) {
        return false;
    }
    const StoredFootingGroup& g = m_groups[static_cast<std::size_t>(m_current)];
    if (!ui::askYesNo(this, m_askHook,
                      prompt(kAskDelete, "Delete group %1? Its steel and its design state go too.")
                          .arg(ui::toQString(g.group.name, m_shell.language())),
                      windowTitle())) {
        return false;
    }
    try {
        jobs::removeFootingGroupWithDesign(m_shell.projectPath(), g.number);
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    const QString name = ui::toQString(g.group.name, m_shell.language());
    load();
    emit saved(prompt(kDeleted, "The footing group %1 was deleted.").arg(name));
    return true;
}

bool FtGroups::takeSettings() {
    std::optional<FootingGroup> g = takeFields();
    if (!g) {
        return false;
    }
    try {
        g->settings = readFootingSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    if (m_fresh) {
        m_fresh = g;
    } else {
        m_groups[static_cast<std::size_t>(m_current)].group = *g;
    }
    showGroup();
    m_dirty = true;
    ui::tellUser(this, m_messageHook,
                 prompt(kTookSettings, "The group took the current settings; save it to keep "
                                       "them."));
    return true;
}

bool FtGroups::save() {
    if (!m_readOk || (!m_fresh && m_current < 0)) {
        return false;
    }
    const std::optional<FootingGroup> g = takeFields();
    if (!g) {
        return false;
    }
    int number = 0;
    try {
        number = jobs::storeFootingGroup(m_shell.projectPath(), currentGroup(), *g);
    } catch (const InputError& e) {
        // The system's own refusals stand as they are, without a full stop.
        const std::string_view why = e.what();
        if (why == kNotSuitableMessage || why == kCx1NotLeftMessage) {
            ui::tellUserAsIs(this, m_messageHook, QString::fromUtf8(e.what()));
        } else {
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    m_fresh.reset();
    load();
    chooseGroup(number);
    emit saved(prompt(kSavedText, "The footing group %1 was saved.")
                   .arg(ui::toQString(g->name, m_shell.language())));
    return true;
}

bool FtGroups::designGroup() {
    if (!m_fresh && m_current < 0) {
        ui::tellUser(this, m_messageHook, prompt(kChooseGroup, "Choose a group first."));
        return false;
    }
    return startRun(false);
}

bool FtGroups::designAll() {
    if (m_groups.empty() && !m_fresh) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoGroup, "There is no footing group: make one with New group."));
        return false;
    }
    return startRun(true);
}

bool FtGroups::startRun(bool all) {
    if (m_run->running() || ((m_dirty || m_fresh) && !save())) {
        return false;
    }
    const std::filesystem::path project = m_shell.projectPath();
    const core::CodePage page = core::codePageForLanguage(m_shell.language());
    jobs::FootingGroupSelection selection;
    if (!all) {
        selection.group = m_groups[static_cast<std::size_t>(m_current)].group.name;
    }
    std::vector<jobs::ChosenFooting> chosen;
    bars::BarPropertyTable table;
    try {
        chosen = jobs::chooseFootingGroups(project, selection, page);
        table = beams::designBarTable(m_shell.generalFolder());
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    ui::DesignRunTexts texts;
    texts.designing = prompt(kDesigning, "Designing footing group %1 of %2: %3");
    texts.allDone = prompt(kAllDesigned, "All %1 footing groups were designed.");
    texts.someFailed = prompt(kSomeFailed, "%1 of %2 footing groups did not pass:");
    texts.cancelled = prompt(kCancelled, "The run was cancelled after %1 footing groups.");
    texts.stopped = prompt(kStopped, "The run stopped: %1");
    texts.notes = prompt(kProblems, "Problems:");
    const std::size_t count = chosen.size();
    return m_run->start(
        count,
        [project, chosen = std::move(chosen), rows = table.rows,
         page](const jobs::JobObserver& observer) {
            return jobs::designFootingGroups(project, chosen, rows, observer, page);
        },
        std::move(texts));
}

ui::EditAsc* FtGroups::showSheet() {
    if (m_fresh || m_current < 0) {
        ui::tellUser(this, m_messageHook, prompt(kChooseGroup, "Choose a group first."));
        return nullptr;
    }
    const FootingGroup& g = m_groups[static_cast<std::size_t>(m_current)].group;
    ui::EditAsc* viewer = ui::openSheetViewer(
        this, m_shell, m_shell.projectPath() / jobs::footingSheetFileName(g), m_messageHook);
    if (viewer == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoSheet, "The group has no sheet yet: design it first."));
    }
    return viewer;
}

void FtGroups::closeEvent(QCloseEvent* event) {
    if (m_run->running()) {
        event->ignore();
        return;
    }
    if (!m_readOk || mayLeave()) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::footings::forms
