// ClGroups: the groups of a level in a list, the chosen group's fields, and the level's columns
// with a tick for each member of the chosen group. Edits stay in the form until saved; a design
// saves first, so that what is designed is what the files hold.
#include "columns/forms/clgroups_form.h"

#include <QCheckBox>
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
#include <algorithm>
#include <map>
#include <set>

#include "beams/beam_job.h"
#include "columns/forms/column_chart_view.h"
#include "core/codepage.h"
#include "core/error.h"
#include "floors/floors.h"
#include "jobs/column_design_job.h"
#include "ui/design_run.h"
#include "ui/general_prompts.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::columns::forms {

namespace {

constexpr std::string_view kPromptKey = "CLGROUPS";
// Prompts of CLGROUPS<letter>.TXT (prompt n on line n + 1).
constexpr std::size_t kCaption = 1;
constexpr std::size_t kLevelLabel = 2;
constexpr std::size_t kFloorItem = 3;
constexpr std::size_t kFootingItem = 4;
constexpr std::size_t kFirstTitle = 5; // groups, columns, group, settings
constexpr std::size_t kFirstFieldLabel = 9;
constexpr std::size_t kTypeLabel = 23;
constexpr std::size_t kSustainedLabel = 24;
constexpr std::size_t kFirstButton = 25; // new ... exit
constexpr std::size_t kMemberCount = 34;
constexpr std::size_t kNotYet = 35;
constexpr std::size_t kDesigned = 36;
constexpr std::size_t kChecksFailed = 37;
constexpr std::size_t kNotDesigned = 38;
constexpr std::size_t kSettingsLine = 39;
constexpr std::size_t kBraced = 40;
constexpr std::size_t kUnbraced = 41;
constexpr std::size_t kWithMembers = 42;
constexpr std::size_t kWithoutMembers = 43;
constexpr std::size_t kAskDelete = 44;
constexpr std::size_t kSavedText = 45;
constexpr std::size_t kNotANumber = 46;
constexpr std::size_t kChooseGroup = 47;
constexpr std::size_t kNoSheet = 48;
constexpr std::size_t kNoChart = 49;
constexpr std::size_t kDesigning = 50;
constexpr std::size_t kAllDesigned = 51;
constexpr std::size_t kSomeFailed = 52;
constexpr std::size_t kCancelled = 53;
constexpr std::size_t kStopped = 54;
constexpr std::size_t kProblems = 55;
constexpr std::size_t kTookSettings = 56;
constexpr std::size_t kInGroup = 57;
constexpr std::size_t kNoColumns = 58;
constexpr std::size_t kStateLine = 59;
constexpr std::size_t kNoGroup = 60;
constexpr std::size_t kNameNotKept = 61;
constexpr std::size_t kBarsLine = 62;
constexpr std::size_t kPromptCount = 62;

struct FieldSpec {
    std::string_view objectName;
    std::string_view english;
    bool text;     ///< a text field, else a number
    bool negative; ///< a number that may be negative (an end moment)
    int width;     ///< characters
};

enum Field {
    NameField,
    TextField,
    FirstDimField,
    CoverField = FirstDimField + 5,
    HeightField,
    LoadField,
    M2Field,
    M1Field,
    M2yField,
    M1yField,
    kFieldCount
};

constexpr std::array<FieldSpec, kFieldCount> kFields = {{
    {"GrpNameTxt", "Name", true, false, static_cast<int>(kGroupNameWidth)},
    {"GrpTextTxt", "Description", true, false, 30},
    {"DimATxt", "a (cm)", false, false, 6},
    {"DimBTxt", "b (cm)", false, false, 6},
    {"DimCTxt", "c (cm)", false, false, 6},
    {"DimDTxt", "d (cm)", false, false, 6},
    {"DimETxt", "e (cm)", false, false, 6},
    {"CoverTxt", "Cover (cm; 0: the settings')", false, false, 5},
    {"HeightTxt", "Height ColLen (cm)", false, false, 7},
    {"PuTxt", "Factored load Pu (t)", false, false, 9},
    {"M2Txt", "M2 about x, over a (t.m)", false, true, 8},
    {"M1Txt", "M1 about x, over a (t.m)", false, true, 8},
    {"M2yTxt", "M2 about y, over b (t.m)", false, true, 8},
    {"M1yTxt", "M1 about y, over b (t.m)", false, true, 8},
}};

constexpr std::array<std::string_view, 4> kTitles = {"Groups", "Columns of the level", "Group",
                                                     "Settings of the group"};
constexpr std::array<std::pair<std::string_view, std::string_view>, 9> kButtons = {{
    {"CmdNew", "New group"},
    {"CmdDelete", "Delete group"},
    {"CmdSettings", "Take the current settings"},
    {"CmdSave", "Save"},
    {"CmdDesign", "Design the group"},
    {"CmdDesignAll", "Design all groups"},
    {"CmdSheet", "Sheet"},
    {"CmdChart", "Chart"},
    {"CmdExit", "Exit"},
}};

} // namespace

ClGroups::ClGroups(shell::ShellState& shell, bool footingLevel, QWidget* parent)
    : QWidget(parent),
      m_shell(shell), m_level{footingLevel || shell.currentFloor <= 0 ? 0 : shell.currentFloor},
      m_levelCombo(new QComboBox(this)), m_groupList(new QListWidget(this)),
      m_columnList(new QListWidget(this)), m_type(new QComboBox(this)),
      m_sustained(new QCheckBox(this)), m_settingsText(new QLabel(this)),
      m_stateText(new QLabel(this)), m_membersNote(new QLabel(this)), m_new(new QPushButton(this)),
      m_delete(new QPushButton(this)), m_settings(new QPushButton(this)),
      m_save(new QPushButton(this)), m_design(new QPushButton(this)),
      m_designAll(new QPushButton(this)), m_sheet(new QPushButton(this)),
      m_chart(new QPushButton(this)), m_exit(new QPushButton(this)),
      m_run(new ui::DesignRun(shell, this)) {
    setObjectName(footingLevel ? QStringLiteral("FtClGroups") : QStringLiteral("ClGroups"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_levelCombo->setObjectName(QStringLiteral("LevelCombo"));
    m_groupList->setObjectName(QStringLiteral("GrpList"));
    m_columnList->setObjectName(QStringLiteral("ColsList"));
    m_type->setObjectName(QStringLiteral("TypeCombo"));
    m_sustained->setObjectName(QStringLiteral("SustainedChk"));
    m_stateText->setObjectName(QStringLiteral("StateLbl"));
    m_stateText->setWordWrap(true);
    m_membersNote->setWordWrap(true);
    m_settingsText->setWordWrap(true);
    const std::array buttons{m_new,       m_delete, m_settings, m_save, m_design,
                             m_designAll, m_sheet,  m_chart,    m_exit};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setObjectName(QString::fromLatin1(kButtons[i].first.data(),
                                                      static_cast<int>(kButtons[i].first.size())));
    }

    // The group's fields: numbers take digits and a point, end moments a sign as well.
    const QRegularExpression number(QStringLiteral("[0-9]{0,6}(\\.[0-9]{0,3})?"));
    const QRegularExpression moment(QStringLiteral("-?[0-9]{0,4}(\\.[0-9]{0,3})?"));
    auto* fieldGrid = new QGridLayout;
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        const FieldSpec& f = kFields[i];
        auto* edit = new QLineEdit(this);
        edit->setObjectName(
            QString::fromLatin1(f.objectName.data(), static_cast<int>(f.objectName.size())));
        if (f.text) {
            edit->setMaxLength(f.width);
        } else {
            edit->setValidator(new QRegularExpressionValidator(f.negative ? moment : number, edit));
        }
        ui::fitToChars(edit, f.width + 1);
        auto* label = new QLabel(this);
        label->setBuddy(edit);
        m_fields.push_back(edit);
        m_fieldLabels.push_back(label);
        connect(edit, &QLineEdit::textEdited, this, [this] { fieldEdited(); });
    }
    // Name and text on top, the section beside the loads.
    int row = 0;
    for (int i : {NameField, TextField}) {
        fieldGrid->addWidget(m_fieldLabels[i], row, 0);
        fieldGrid->addWidget(m_fields[i], row, 1, 1, 3);
        ++row;
    }
    auto* typeLabel = new QLabel(this);
    typeLabel->setObjectName(QStringLiteral("TypeLbl"));
    typeLabel->setBuddy(m_type);
    fieldGrid->addWidget(typeLabel, row, 0);
    fieldGrid->addWidget(m_type, row, 1, 1, 3);
    ++row;
    const int sectionTop = row;
    for (int i = FirstDimField; i <= CoverField; ++i) {
        fieldGrid->addWidget(m_fieldLabels[i], row, 0);
        fieldGrid->addWidget(m_fields[i], row, 1);
        ++row;
    }
    row = sectionTop;
    for (int i = HeightField; i <= M1yField; ++i) {
        fieldGrid->addWidget(m_fieldLabels[i], row, 2);
        fieldGrid->addWidget(m_fields[i], row, 3);
        ++row;
    }
    row = std::max(row, sectionTop + 6);
    fieldGrid->addWidget(m_sustained, row++, 0, 1, 4);
    fieldGrid->addWidget(m_membersNote, row++, 0, 1, 4);
    connect(m_type, &QComboBox::activated, this, [this] { fieldEdited(); });
    connect(m_sustained, &QCheckBox::clicked, this, [this] { fieldEdited(); });

    auto* groupsBox = new QGroupBox(this);
    auto* groupsLayout = new QVBoxLayout(groupsBox);
    groupsLayout->addWidget(m_groupList);
    auto* groupButtons = new QHBoxLayout;
    groupButtons->addWidget(m_new);
    groupButtons->addWidget(m_delete);
    groupsLayout->addLayout(groupButtons);
    auto* groupBox = new QGroupBox(this);
    auto* groupLayout = new QVBoxLayout(groupBox);
    groupLayout->addLayout(fieldGrid);
    groupLayout->addWidget(m_stateText);
    groupLayout->addStretch();
    auto* settingsBox = new QGroupBox(this);
    auto* settingsLayout = new QVBoxLayout(settingsBox);
    settingsLayout->addWidget(m_settingsText);
    settingsLayout->addWidget(m_settings);
    groupLayout->addWidget(settingsBox);
    auto* columnsBox = new QGroupBox(this);
    auto* columnsLayout = new QVBoxLayout(columnsBox);
    columnsLayout->addWidget(m_columnList);
    groupsBox->setObjectName(QStringLiteral("GroupsBox"));
    columnsBox->setObjectName(QStringLiteral("ColumnsBox"));
    groupBox->setObjectName(QStringLiteral("GroupBox"));
    settingsBox->setObjectName(QStringLiteral("SettingsBox"));

    auto* levelRow = new QHBoxLayout;
    auto* levelLabel = new QLabel(this);
    levelLabel->setObjectName(QStringLiteral("LevelLbl"));
    levelLabel->setBuddy(m_levelCombo);
    levelRow->addWidget(levelLabel);
    levelRow->addWidget(m_levelCombo);
    levelRow->addStretch();
    auto* body = new QHBoxLayout;
    body->addWidget(groupsBox, 3);
    body->addWidget(groupBox, 5);
    body->addWidget(columnsBox, 2);
    auto* commands = new QHBoxLayout;
    for (QPushButton* b : {m_save, m_design, m_designAll, m_sheet, m_chart}) {
        commands->addWidget(b);
    }
    commands->addStretch();
    commands->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(levelRow);
    layout->addLayout(body, 1);
    layout->addLayout(commands);

    connect(m_levelCombo, &QComboBox::activated, this, [this](int index) {
        const int floor = m_levelCombo->itemData(index).toInt();
        if (!showLevel(ColumnLevel{floor})) {
            fillLevels();
        }
    });
    connect(m_groupList, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_showing || row == m_current) {
            return;
        }
        // The fields of the group left go back into it first; a bad value keeps it chosen.
        if (m_current >= 0 && !takeFields()) {
            m_showing = true;
            m_groupList->setCurrentRow(m_current);
            m_showing = false;
            return;
        }
        m_current = row;
        showGroup();
        showColumns();
    });
    connect(m_columnList, &QListWidget::itemChanged, this,
            [this](QListWidgetItem* item) { memberToggled(item); });
    connect(m_new, &QPushButton::clicked, this, [this] { newGroup(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { deleteGroup(); });
    connect(m_settings, &QPushButton::clicked, this, [this] { takeSettings(); });
    connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    connect(m_design, &QPushButton::clicked, this, [this] { designGroup(); });
    connect(m_designAll, &QPushButton::clicked, this, [this] { designAll(); });
    connect(m_sheet, &QPushButton::clicked, this, [this] { showSheet(); });
    connect(m_chart, &QPushButton::clicked, this, [this] { showChart(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });
    connect(m_run, &ui::DesignRun::finished, this, [this] {
        // The run wrote each group's result into the file: read the groups again (a run
        // starts from saved groups, and the form waits for it).
        const int current = m_current;
        load();
        m_current = std::min(current, static_cast<int>(m_groups.size()) - 1);
        showGroupList();
        showGroup();
        showColumns();
        emit saved(m_run->summary().section(QLatin1Char('\n'), 0, 0));
    });

    readPrompts();
    load();
}

ClGroups::~ClGroups() = default;

void ClGroups::setMessageHook(ui::MessageHook hook) {
    m_messageHook = hook;
    m_run->setMessageHook(std::move(hook));
}

QString ClGroups::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

QLineEdit* ClGroups::field(std::string_view objectName) const {
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (kFields[i].objectName == objectName) {
            return m_fields[i];
        }
    }
    return nullptr;
}

void ClGroups::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
    setWindowTitle(prompt(kCaption, "Column groups"));
    findChild<QLabel*>(QStringLiteral("LevelLbl"))->setText(prompt(kLevelLabel, "Level"));
    const std::array<QString, 4> boxes = {QStringLiteral("GroupsBox"), QStringLiteral("ColumnsBox"),
                                          QStringLiteral("GroupBox"),
                                          QStringLiteral("SettingsBox")};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        findChild<QGroupBox*>(boxes[i])->setTitle(prompt(kFirstTitle + i, kTitles[i]));
    }
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        m_fieldLabels[i]->setText(prompt(kFirstFieldLabel + i, kFields[i].english));
    }
    findChild<QLabel*>(QStringLiteral("TypeLbl"))->setText(prompt(kTypeLabel, "Section type"));
    m_sustained->setText(prompt(kSustainedLabel, "Load largely sustained (the creep ratio "
                                                 "applies; kl/r over a is checked against 100)"));
    const std::array buttons{m_new,       m_delete, m_settings, m_save, m_design,
                             m_designAll, m_sheet,  m_chart,    m_exit};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setText(prompt(kFirstButton + i, kButtons[i].second));
    }
    fillLevels();
    if (!m_groups.empty() || !m_columns.empty()) {
        showGroupList();
        showGroup();
        showColumns();
    }
}

void ClGroups::fillLevels() {
    m_levelCombo->clear();
    std::vector<floors::Floor> floorList;
    if (m_shell.hasProject()) {
        try {
            floorList = floors::readFloors(m_shell.projectPath());
        } catch (const FileError&) {
            // The floors' own forms say what is wrong with the file.
        }
    }
    for (const floors::Floor& f : floorList) {
        QString caption = prompt(kFloorItem, "Floor %1").arg(f.number);
        if (!f.name.empty()) {
            caption += QStringLiteral(" - ") + ui::toQString(f.name, m_shell.language());
        }
        m_levelCombo->addItem(caption, static_cast<int>(f.number));
    }
    m_levelCombo->addItem(prompt(kFootingItem, "Footing level"), 0);
    m_levelCombo->setCurrentIndex(std::max(0, m_levelCombo->findData(m_level.floor)));
}

bool ClGroups::mayLeave() {
    if (!m_dirty) {
        return true;
    }
    return ui::mayLeaveForm(this, m_shell, m_askHook, [this] { return save(); });
}

bool ClGroups::showLevel(ColumnLevel level) {
    if (level.floor == m_level.floor) {
        return true;
    }
    if (m_run->running() || !mayLeave()) {
        return false;
    }
    m_level = level;
    load();
    fillLevels();
    return true;
}

void ClGroups::load() {
    m_groups.clear();
    m_columns.clear();
    m_memberOf.clear();
    m_current = -1;
    m_dirty = false;
    m_readOk = m_shell.hasProject();
    if (m_readOk) {
        const std::filesystem::path project = m_shell.projectPath();
        try {
            m_columns = readColumns(project, m_level);
            const std::vector<ColumnGroup> stored = readGroups(project, m_level);
            for (std::size_t i = 0; i < stored.size(); ++i) {
                m_groups.push_back({stored[i], static_cast<int>(i + 1), false});
            }
        } catch (const FileError& e) {
            // A damaged file is shown, never overwritten: nothing can be saved from here.
            m_readOk = false;
            m_columns.clear();
            m_groups.clear();
            ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        }
    }
    m_storedCount = static_cast<int>(m_groups.size());
    for (const Column& c : m_columns) {
        const bool known = c.group >= 1 && c.group <= static_cast<int>(m_groups.size());
        m_memberOf.push_back(known ? c.group - 1 : -1);
    }
    m_current = m_groups.empty() ? -1 : 0;
    for (QWidget* w : std::initializer_list<QWidget*>{m_new, m_save, m_design, m_designAll}) {
        w->setEnabled(m_readOk);
    }
    showGroupList();
    showGroup();
    showColumns();
}

void ClGroups::showGroupList() {
    m_showing = true;
    m_groupList->clear();
    std::map<int, bars::DesignState> states;
    if (m_shell.hasProject()) {
        for (bars::DesignState& s : jobs::recordedDesignStates(m_shell.projectPath())) {
            if (s.kind == jobs::kColumnGroupKind && s.floor == m_level.floor) {
                states[s.number] = std::move(s);
            }
        }
    }
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        const auto members = std::count(m_memberOf.begin(), m_memberOf.end(), static_cast<int>(i));
        QString state = prompt(kNotYet, "not designed yet");
        // A group saved at another number, or not saved yet, has no state of its own.
        const auto s = states.find(static_cast<int>(i + 1));
        if (m_groups[i].origin == static_cast<int>(i + 1) && s != states.end()) {
            switch (s->second.status) {
            case bars::DesignState::Status::Designed:
                state = prompt(kDesigned, "designed");
                break;
            case bars::DesignState::Status::ChecksFailed:
                state = prompt(kChecksFailed, "checks failed");
                break;
            case bars::DesignState::Status::NotDesigned:
                state = prompt(kNotDesigned, "not designed");
                break;
            }
        }
        auto* item =
            new QListWidgetItem(QStringLiteral("%1  %2  (%3) - %4")
                                    .arg(i + 1)
                                    .arg(ui::toQString(m_groups[i].group.name, m_shell.language()))
                                    .arg(prompt(kMemberCount, "%1 col.").arg(members))
                                    .arg(state),
                                m_groupList);
        if (s != states.end() && !s->second.failures.empty()) {
            item->setToolTip(ui::toQString(s->second.failures, m_shell.language()));
        }
    }
    m_groupList->setCurrentRow(m_current);
    m_showing = false;
    m_delete->setEnabled(m_current >= 0);
}

void ClGroups::showColumns() {
    m_showing = true;
    m_columnList->clear();
    const std::string& language = m_shell.language();
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column& c = m_columns[i];
        QString text = QStringLiteral("%1  %2 t")
                           .arg(ui::toQString(c.name, language))
                           .arg(static_cast<double>(c.puT), 0, 'f', 1);
        const int owner = m_memberOf[i];
        if (owner >= 0 && owner != m_current) {
            text += QStringLiteral("  ") +
                    prompt(kInGroup, "(in %1)")
                        .arg(ui::toQString(m_groups[static_cast<std::size_t>(owner)].group.name,
                                           language));
        }
        auto* item = new QListWidgetItem(text, m_columnList);
        item->setToolTip(QStringLiteral("Pu=%1 t  M2=%2 t.m  M1=%3 t.m  H=%4 cm")
                             .arg(static_cast<double>(c.puT), 0, 'f', 2)
                             .arg(static_cast<double>(c.x.m2), 0, 'f', 2)
                             .arg(static_cast<double>(c.x.m1), 0, 'f', 2)
                             .arg(static_cast<double>(c.heightCm), 0, 'f', 1));
        item->setFlags(m_current >= 0 ? Qt::ItemIsEnabled | Qt::ItemIsUserCheckable
                                      : Qt::ItemIsEnabled);
        item->setCheckState(owner >= 0 && owner == m_current ? Qt::Checked : Qt::Unchecked);
    }
    if (m_columns.empty()) {
        auto* none = new QListWidgetItem(
            prompt(kNoColumns, "The level has no columns: enter them with Columns > Columns data."),
            m_columnList);
        none->setFlags(Qt::ItemIsEnabled);
    }
    m_showing = false;
}

void ClGroups::showGroup() {
    m_showing = true;
    const bool any = m_current >= 0;
    for (QLineEdit* e : m_fields) {
        e->setEnabled(any);
        if (!any) {
            e->clear();
        }
    }
    m_type->setEnabled(any);
    m_sustained->setEnabled(any);
    m_settings->setEnabled(any && m_readOk);
    m_delete->setEnabled(any && m_readOk);
    m_design->setEnabled(any && m_readOk);
    m_sheet->setEnabled(any);
    m_chart->setEnabled(any);
    m_type->clear();
    if (!any) {
        m_settingsText->clear();
        m_stateText->clear();
        m_membersNote->clear();
        m_showing = false;
        return;
    }
    const std::string& language = m_shell.language();
    const ColumnGroup& g = m_groups[static_cast<std::size_t>(m_current)].group;
    m_fields[NameField]->setText(ui::toQString(g.name, language));
    m_fields[TextField]->setText(ui::toQString(g.text, language));
    for (int i = 0; i < 5; ++i) {
        m_fields[FirstDimField + i]->setText(ui::plainDecimal(g.dims[static_cast<std::size_t>(i)]));
    }
    m_fields[CoverField]->setText(ui::plainDecimal(g.coverCm));
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        m_type->addItem(QStringLiteral("%1  %2").arg(t + 1).arg(
                            ui::toQString(g.settings.TypeNames[t], language)),
                        static_cast<int>(t + 1));
    }
    m_type->setCurrentIndex(std::clamp<int>(g.type, 1, kSectionTypes) - 1);
    m_sustained->setChecked(g.secondAxis == 1);

    // A group with members is designed for their governing values: those are shown, and its
    // own are not edited.
    ColumnGroup gathered = g;
    const int members =
        static_cast<int>(std::count(m_memberOf.begin(), m_memberOf.end(), m_current));
    std::vector<Column> memberColumns;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_memberOf[i] == m_current) {
            Column c = m_columns[i];
            c.group = 1;
            memberColumns.push_back(c);
        }
    }
    gatherMembers(gathered, 1, memberColumns);
    const std::array values{gathered.colLenCm, gathered.puT,  gathered.x.m2,
                            gathered.x.m1,     gathered.y.m2, gathered.y.m1};
    for (int i = 0; i < 6; ++i) {
        // Gathered values are shown as the sheet prints them; a group's own are kept exactly.
        const float v = values[static_cast<std::size_t>(i)];
        m_fields[HeightField + i]->setText(
            members == 0 ? ui::plainDecimal(v) : QString::number(static_cast<double>(v), 'f', 2));
        m_fields[HeightField + i]->setEnabled(members == 0);
    }
    m_membersNote->setText(
        members > 0
            ? prompt(kWithMembers, "The group has %1 members: its height, load and moments are "
                                   "theirs (the largest of each).")
                  .arg(members)
            : prompt(kWithoutMembers,
                     "The group has no members: its own height, load and moments are designed."));
    const ColumnSettings& s = g.settings;
    m_settingsText->setText(
        prompt(kSettingsLine, "Fc=%1 kg/cm2, FY=%2 kg/cm2, k=%3, beta d=%4, %5")
            .arg(s.Fc)
            .arg(s.FY)
            .arg(static_cast<double>(s.KFactor))
            .arg(static_cast<double>(s.BdFactor))
            .arg(s.Braced == 1 ? prompt(kBraced, "braced") : prompt(kUnbraced, "unbraced")));
    m_showing = false;
    showState();
}

void ClGroups::showState() {
    if (m_current < 0) {
        m_stateText->clear();
        return;
    }
    const int number = m_current + 1;
    if (m_groups[static_cast<std::size_t>(m_current)].origin != number) {
        m_stateText->setText(prompt(kNotYet, "not designed yet"));
        return;
    }
    for (const bars::DesignState& s : jobs::recordedDesignStates(m_shell.projectPath())) {
        if (s.kind == jobs::kColumnGroupKind && s.floor == m_level.floor && s.number == number) {
            QString state = s.status == bars::DesignState::Status::Designed
                                ? prompt(kDesigned, "designed")
                            : s.status == bars::DesignState::Status::ChecksFailed
                                ? prompt(kChecksFailed, "checks failed")
                                : prompt(kNotDesigned, "not designed");
            // A date reads left to right in a right-to-left window too.
            state = prompt(kStateLine, "Last design: %1 (%2)")
                        .arg(state)
                        .arg(QChar(0x200E) + QString::fromStdString(s.when));
            if (!s.failures.empty()) {
                state += QStringLiteral("\n") + ui::toQString(s.failures, m_shell.language());
            }
            // The bars its last design chose, as the group's record keeps them.
            const ColumnGroup& g = m_groups[static_cast<std::size_t>(m_current)].group;
            if (g.barCount > 0) {
                state +=
                    QStringLiteral("\n") + prompt(kBarsLine, "%1 bars of %2 mm, %3 cm2")
                                               .arg(g.barCount)
                                               .arg(g.barDiameterMm)
                                               .arg(static_cast<double>(g.steelAreaCm2), 0, 'f', 2);
            }
            m_stateText->setText(state);
            return;
        }
    }
    m_stateText->setText(prompt(kNotYet, "not designed yet"));
}

void ClGroups::fieldEdited() {
    if (m_showing || m_current < 0) {
        return;
    }
    m_dirty = true;
    m_groups[static_cast<std::size_t>(m_current)].changed = true;
}

bool ClGroups::takeFields() {
    if (m_current < 0) {
        return true;
    }
    jobs::EditedGroup& edited = m_groups[static_cast<std::size_t>(m_current)];
    ColumnGroup g = edited.group;
    const std::string& language = m_shell.language();
    const std::optional<std::string> name =
        ui::fromQStringExact(m_fields[NameField]->text().trimmed(), language);
    const std::optional<std::string> text =
        ui::fromQStringExact(m_fields[TextField]->text(), language);
    if (!name || !text) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNameNotKept, "The name or text holds a character that the "
                                          "project's language cannot keep in its files."));
        return false;
    }
    g.name = *name;
    g.text = *text;
    std::array<float, kFieldCount> v{};
    for (int i = FirstDimField; i < kFieldCount; ++i) {
        const QString t = m_fields[i]->text().trimmed();
        bool ok = true;
        v[static_cast<std::size_t>(i)] =
            t.isEmpty() || t == QLatin1String("-") ? 0.0f : t.toFloat(&ok);
        if (!ok) {
            ui::tellUser(this, m_messageHook,
                         prompt(kNotANumber, "The value of %1 is not a number.")
                             .arg(m_fieldLabels[static_cast<std::size_t>(i)]->text()));
            m_fields[i]->setFocus();
            return false;
        }
    }
    for (int i = 0; i < 5; ++i) {
        g.dims[static_cast<std::size_t>(i)] = v[static_cast<std::size_t>(FirstDimField + i)];
    }
    g.coverCm = v[CoverField];
    g.type = static_cast<std::int16_t>(m_type->currentIndex() + 1);
    g.secondAxis = m_sustained->isChecked() ? 1 : 0;
    // The values of a group with members are theirs and gathered again at each design.
    if (m_fields[HeightField]->isEnabled()) {
        g.colLenCm = v[HeightField];
        g.puT = v[LoadField];
        g.x = {v[M2Field], v[M1Field]};
        g.y = {v[M2yField], v[M1yField]};
    }
    if (g.name.empty()) {
        g.name = defaultGroupName(m_current + 1);
    }
    const std::string problem = validateGroup(g);
    if (!problem.empty()) {
        ui::tellUser(this, m_messageHook,
                     QStringLiteral("%1: %2.")
                         .arg(ui::toQString(g.name, language))
                         .arg(QString::fromUtf8(problem.c_str())));
        return false;
    }
    if (!(g == edited.group)) {
        edited.group = g;
        edited.changed = true;
        m_dirty = true;
    }
    return true;
}

void ClGroups::memberToggled(QListWidgetItem* item) {
    if (m_showing || m_current < 0) {
        return;
    }
    const int row = m_columnList->row(item);
    if (row < 0 || row >= static_cast<int>(m_memberOf.size())) {
        return;
    }
    if (!takeFields()) {
        showColumns();
        return;
    }
    int& owner = m_memberOf[static_cast<std::size_t>(row)];
    const int before = owner;
    // An empty group takes the section of its first member, as the columns were entered.
    if (item->checkState() == Qt::Checked &&
        std::count(m_memberOf.begin(), m_memberOf.end(), m_current) == 0) {
        const Column& first = m_columns[static_cast<std::size_t>(row)];
        ColumnGroup& g = m_groups[static_cast<std::size_t>(m_current)].group;
        g.type = first.type;
        g.dims = first.dims;
    }
    owner = item->checkState() == Qt::Checked ? m_current : (owner == m_current ? -1 : owner);
    if (owner == before) {
        return;
    }
    // A column moves between groups: both are designed for other members now.
    for (int g : {before, owner}) {
        if (g >= 0) {
            m_groups[static_cast<std::size_t>(g)].changed = true;
        }
    }
    m_dirty = true;
    showGroupList();
    showGroup();
    showColumns();
}

std::vector<ColumnGroup> ClGroups::groups() const {
    std::vector<ColumnGroup> out;
    for (const jobs::EditedGroup& e : m_groups) {
        out.push_back(e.group);
    }
    return out;
}

bool ClGroups::chooseGroup(int number) {
    if (number < 1 || number > static_cast<int>(m_groups.size())) {
        return false;
    }
    m_groupList->setCurrentRow(number - 1);
    return m_current == number - 1;
}

void ClGroups::newGroup() {
    if (!m_readOk || !takeFields()) {
        return;
    }
    // "Gr-C" and the first number no group of the level is named by.
    std::set<std::string> names;
    for (const jobs::EditedGroup& e : m_groups) {
        names.insert(e.group.name);
    }
    int n = static_cast<int>(m_groups.size()) + 1;
    for (int k = 1; k <= static_cast<int>(m_groups.size()) + 1; ++k) {
        if (!names.contains(defaultGroupName(k))) {
            n = k;
            break;
        }
    }
    jobs::EditedGroup fresh;
    fresh.group.name = defaultGroupName(n);
    try {
        fresh.group.settings = readColumnSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
    }
    // A new group starts as the chosen one's section, or a 30 x 30 rectangle.
    if (m_current >= 0) {
        const ColumnGroup& like = m_groups[static_cast<std::size_t>(m_current)].group;
        fresh.group.type = like.type;
        fresh.group.dims = like.dims;
    } else {
        fresh.group.dims = {30.0f, 30.0f, 0.0f, 0.0f, 0.0f};
    }
    fresh.changed = true;
    m_groups.push_back(fresh);
    m_current = static_cast<int>(m_groups.size()) - 1;
    m_dirty = true;
    showGroupList();
    showGroup();
    showColumns();
    m_fields[NameField]->setFocus();
    m_fields[NameField]->selectAll();
}

bool ClGroups::deleteGroup() {
    if (m_current < 0 || !m_readOk) {
        return false;
    }
    const QString name =
        ui::toQString(m_groups[static_cast<std::size_t>(m_current)].group.name, m_shell.language());
    if (!ui::askYesNo(
            this, m_askHook,
            prompt(kAskDelete, "Delete group %1? Its columns will belong to no group.").arg(name),
            windowTitle())) {
        return false;
    }
    const int gone = m_current;
    m_groups.erase(m_groups.begin() + gone);
    for (int& owner : m_memberOf) {
        owner = owner == gone ? -1 : owner > gone ? owner - 1 : owner;
    }
    m_current = m_groups.empty() ? -1 : std::min(gone, static_cast<int>(m_groups.size()) - 1);
    m_dirty = true;
    showGroupList();
    showGroup();
    showColumns();
    return true;
}

bool ClGroups::takeSettings() {
    if (m_current < 0 || !takeFields()) {
        return false;
    }
    ColumnSettings settings;
    try {
        settings = readColumnSettingsFile(m_shell.generalFolder());
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    jobs::EditedGroup& edited = m_groups[static_cast<std::size_t>(m_current)];
    if (!(edited.group.settings == settings)) {
        edited.group.settings = settings;
        edited.changed = true;
        m_dirty = true;
    }
    showGroup();
    ui::tellUser(this, m_messageHook,
                 prompt(kTookSettings, "The group took the current settings: Fc=%1, FY=%2.")
                     .arg(settings.Fc)
                     .arg(settings.FY));
    return true;
}

bool ClGroups::save() {
    if (!m_readOk || !takeFields()) {
        return false;
    }
    if (!m_dirty) {
        return true;
    }
    std::vector<Column> columnList = m_columns;
    for (std::size_t i = 0; i < columnList.size(); ++i) {
        columnList[i].group = static_cast<std::int16_t>(m_memberOf[i] + 1);
    }
    // A group's members are its number's: the group gathered in the file is what a run designs.
    std::vector<jobs::EditedGroup> edited = m_groups;
    for (std::size_t k = 0; k < edited.size(); ++k) {
        edited[k].group.members = static_cast<std::int16_t>(
            std::count(m_memberOf.begin(), m_memberOf.end(), static_cast<int>(k)));
    }
    try {
        jobs::storeColumnGroups(m_shell.projectPath(), m_level, edited, columnList, m_storedCount);
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    const int current = m_current;
    load();
    m_current = std::min(current, static_cast<int>(m_groups.size()) - 1);
    showGroupList();
    showGroup();
    showColumns();
    emit saved(prompt(kSavedText, "The groups were saved: %1 groups.").arg(m_groups.size()));
    return true;
}

bool ClGroups::designGroup() {
    if (m_current < 0) {
        ui::tellUser(this, m_messageHook, prompt(kChooseGroup, "Choose a group first."));
        return false;
    }
    return startRun(false);
}

bool ClGroups::designAll() {
    if (m_groups.empty()) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoGroup, "The level has no group: make one with New group."));
        return false;
    }
    return startRun(true);
}

bool ClGroups::startRun(bool all) {
    if (m_run->running() || !save()) {
        return false;
    }
    const std::filesystem::path project = m_shell.projectPath();
    const core::CodePage page = core::codePageForLanguage(m_shell.language());
    jobs::ColumnGroupSelection selection;
    selection.footingLevel = m_level.footing();
    selection.floor = m_level.floor;
    if (!all) {
        selection.group = m_groups[static_cast<std::size_t>(m_current)].group.name;
    }
    std::vector<jobs::ChosenGroup> chosen;
    bars::BarPropertyTable table;
    try {
        chosen = jobs::chooseColumnGroups(project, selection, page);
        table = beams::designBarTable(m_shell.generalFolder());
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        return false;
    }
    ui::DesignRunTexts texts;
    texts.designing = prompt(kDesigning, "Designing group %1 of %2: %3");
    texts.allDone = prompt(kAllDesigned, "All %1 groups were designed.");
    texts.someFailed = prompt(kSomeFailed, "%1 of %2 groups did not pass:");
    texts.cancelled = prompt(kCancelled, "The run was cancelled after %1 groups.");
    texts.stopped = prompt(kStopped, "The run stopped: %1");
    texts.notes = prompt(kProblems, "Problems:");
    const std::size_t count = chosen.size();
    return m_run->start(
        count,
        [project, chosen = std::move(chosen), rows = table.rows,
         page](const jobs::JobObserver& observer) {
            return jobs::designColumnGroups(project, chosen, rows, observer, page);
        },
        std::move(texts));
}

std::filesystem::path ClGroups::sheetPath(int number) const {
    if (number < 1 || number > static_cast<int>(m_groups.size())) {
        return {};
    }
    const jobs::ChosenGroup chosen{
        m_level, number, m_groups[static_cast<std::size_t>(number - 1)].group, {}};
    return m_shell.projectPath() / jobs::columnSheetFileName(chosen);
}

ui::EditAsc* ClGroups::showSheet() {
    if (m_current < 0) {
        ui::tellUser(this, m_messageHook, prompt(kChooseGroup, "Choose a group first."));
        return nullptr;
    }
    ui::EditAsc* viewer =
        ui::openSheetViewer(this, m_shell, sheetPath(m_current + 1), m_messageHook);
    if (viewer == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoSheet, "The group has no sheet yet: design it first."));
    }
    return viewer;
}

QWidget* ClGroups::showChart() {
    if (m_current < 0) {
        ui::tellUser(this, m_messageHook, prompt(kChooseGroup, "Choose a group first."));
        return nullptr;
    }
    const jobs::ChosenGroup chosen{
        m_level, m_current + 1, m_groups[static_cast<std::size_t>(m_current)].group, {}};
    QWidget* chart =
        openColumnChart(this, m_shell.projectPath() / jobs::columnChartFileName(chosen));
    if (chart == nullptr) {
        ui::tellUser(this, m_messageHook,
                     prompt(kNoChart, "The group has no chart yet: design it first."));
    }
    return chart;
}

void ClGroups::closeEvent(QCloseEvent* event) {
    if (m_run->running()) {
        event->ignore();
        return;
    }
    if (!m_dirty || !m_readOk || mayLeave()) {
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace orvak::columns::forms
