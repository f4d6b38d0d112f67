// The floor forms: a new floor, the choice of the current floor, and the names, levels and
// slab thicknesses of the floors, each written to CIELS.DAT at once.
#include "floors/forms/floor_forms.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "bars/steel_store.h"
#include "beams/beam_record.h"
#include "core/error.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"

namespace orvak::floors::forms {

namespace {

// Prompts of CIEL<letter>.TXT (prompt n on line n + 1).
constexpr ui::FormText kNewCaption{1, "New floor"};
constexpr ui::FormText kChooseCaption{2, "Choose the floor"};
constexpr ui::FormText kDataCaption{3, "Floor data"};
constexpr ui::FormText kThicknessCaption{4, "Slab thickness"};
constexpr std::size_t kFirstToolPrompt = 5;    // Save, Exit
constexpr std::size_t kFirstHeadingPrompt = 7; // No., Name, Level, Thickness
constexpr ui::FormText kAdded{11, "Floor %1 was added; it is the current floor."};
constexpr ui::FormText kSaved{12, "The floors were saved: %1 floors."};
constexpr ui::FormText kSaving{13, "Saving the floors..."};
constexpr ui::FormText kNoneSaved{14, "There is no floor to save."};
constexpr ui::FormText kFloorLabel{15, "Floor:"};
constexpr ui::FormText kNoFloor{16, "(none)"};
constexpr ui::FormText kChoose{17, "Choose"};
constexpr ui::FormText kDelete{18, "Delete"};
constexpr ui::FormText kAskDelete{19, "Delete floor %1 \"%2\" with its %3 beams and their steel "
                                      "quantities? This cannot be undone."};
constexpr ui::FormText kNoneSelected{20, "Choose a floor in the list first."};
constexpr ui::FormText kChosen{21, "Floor %1 is the current floor."};
constexpr ui::FormText kDeleted{22, "Floor %1 was deleted."};
constexpr ui::FormText kNumbersTaken{23, "Every floor number from 1 to 999 is taken."};
constexpr ui::FormText kBeamsHeading{24, "Beams"};
constexpr ui::FormText kNoFloorYet{25,
                                   "The project has no floor yet: add one with Cielling > New."};
constexpr ui::FormText kNameNotKept{26, "The name holds a character that the project's language "
                                        "cannot keep in its files."};
constexpr std::size_t kPromptCount = 26;

constexpr ui::GridTool kTools[] = {{"save", "Save"}, {"exit", "Exit"}};
constexpr std::string_view kHeadings[] = {"No.", "Name", "Level of the slab top (m)",
                                          "Slab thickness (cm)"};
enum Column { NumberColumn, NameColumn, LevelColumn, ThicknessColumn, kColumnCount };

// Number 1..999, name of 20 characters, level -200..1000 m, thickness 0..300 cm; which of
// them take input depends on the form.
constexpr std::string_view kNewDescriptor = "1111101103.0,20.0,04.2,03.1,";
constexpr std::string_view kDataDescriptor = "0111101103.0,20.0,04.2,03.1,";
constexpr std::string_view kThicknessDescriptor = "0001101103.0,20.0,04.2,03.1,";
constexpr std::string_view kLimits = "@1:1@2:999@3:0@4:0@5:-200@6:1000@7:0@8:300@9:";

shell::PromptList floorPrompts(const shell::ShellState& shell) {
    return shell::readPrompts(shell.programFolder, shell.language(), kFloorPromptKey, 2,
                              kPromptCount);
}

QString text(const shell::PromptList& prompts, const ui::FormText& t,
             const shell::ShellState& shell) {
    return ui::formPrompt(prompts, t.prompt, t.english, shell.language());
}

std::vector<Floor> floorsOrNone(const shell::ShellState& shell) {
    try {
        return readFloors(shell.projectPath());
    } catch (const FileError&) {
        return {};
    }
}

ui::GridFormSetup setupFor(FloorGridForm::Kind kind, std::size_t floorCount) {
    ui::GridFormSetup setup;
    setup.promptKey = kFloorPromptKey;
    setup.tools = kTools;
    setup.firstToolPrompt = kFirstToolPrompt;
    setup.headings = kHeadings;
    setup.firstHeadingPrompt = kFirstHeadingPrompt;
    setup.saving = kSaving;
    setup.emptySaved = kNoneSaved;
    setup.columns = static_cast<int>(std::size(kHeadings));
    setup.limits = kLimits;
    // A form without floors shows one blank row that belongs to nothing.
    setup.rows = std::max<int>(1, static_cast<int>(floorCount));
    switch (kind) {
    case FloorGridForm::Kind::New:
        setup.objectName = "NewCiel";
        setup.caption = kNewCaption;
        setup.saved = kAdded;
        setup.descriptor = kNewDescriptor;
        setup.rows = 1;
        break;
    case FloorGridForm::Kind::Data:
        setup.objectName = "CielData";
        setup.caption = kDataCaption;
        setup.saved = kSaved;
        setup.descriptor = kDataDescriptor;
        break;
    case FloorGridForm::Kind::Thickness:
        setup.objectName = "CielThick";
        setup.caption = kThicknessCaption;
        setup.saved = kSaved;
        setup.descriptor = kThicknessDescriptor;
        break;
    }
    return setup;
}

QString number(double value, int decimals) {
    return QString::number(value, 'f', decimals);
}

} // namespace

QString floorCaption(const Floor& floor, std::string_view language) {
    QString caption = QString::number(floor.number);
    if (!floor.name.empty()) {
        caption += QStringLiteral(" - ") + ui::toQString(floor.name, language);
    }
    return caption;
}

QString currentFloorText(const shell::ShellState& shell) {
    const shell::PromptList prompts = floorPrompts(shell);
    QString floor = text(prompts, kNoFloor, shell);
    if (shell.hasProject() && shell.currentFloor != 0) {
        for (const Floor& f : floorsOrNone(shell)) {
            if (f.number == shell.currentFloor) {
                floor = floorCaption(f, shell.language());
            }
        }
    }
    return text(prompts, kFloorLabel, shell) + QLatin1Char(' ') + floor;
}

void chooseDefaultFloor(shell::ShellState& shell) {
    if (!shell.hasProject()) {
        shell.currentFloor = 0;
        return;
    }
    const std::vector<Floor> floors = floorsOrNone(shell);
    const bool known = std::any_of(floors.begin(), floors.end(),
                                   [&](const Floor& f) { return f.number == shell.currentFloor; });
    if (!known) {
        shell.currentFloor = floors.empty() ? std::int16_t{0} : floors.front().number;
    }
}

FloorGridForm::FloorGridForm(Kind kind, shell::ShellState& shell, QWidget* parent)
    : ui::GridForm(shell, setupFor(kind, floorsOrNone(shell).size()), parent), m_kind(kind) {
    load();
}

void FloorGridForm::load() {
    bool readOk = true;
    try {
        m_floors = readFloors(shell().projectPath());
    } catch (const FileError& e) {
        // Nothing was read: the form will not write over the file it could not read.
        tell(QString::fromUtf8(e.what()));
        readOk = false;
    }
    if (m_kind == Kind::New) {
        showNewRow();
    } else {
        const auto& language = shell().language();
        for (std::size_t i = 0; i < m_floors.size(); ++i) {
            const Floor& f = m_floors[i];
            const int row = static_cast<int>(i);
            grid()->setCellText(row, NumberColumn, QString::number(f.number));
            grid()->setCellText(row, NameColumn, ui::toQString(f.name, language));
            grid()->setCellText(row, LevelColumn, number(f.levelM, 2));
            grid()->setCellText(row, ThicknessColumn, number(f.thicknessCm, 1));
            m_shown.push_back({});
            for (int column = 0; column < kColumnCount; ++column) {
                m_shown.back()[static_cast<std::size_t>(column)] = grid()->cellText(row, column);
            }
        }
        if (m_floors.empty() && readOk) {
            setStatus(prompt(kNoFloorYet));
        }
    }
    finishLoad(readOk);
}

void FloorGridForm::showNewRow() {
    const int next = nextFloorNumber(m_floors);
    grid()->setCellText(0, NumberColumn, next == 0 ? QString() : QString::number(next));
    grid()->setCellText(0, NameColumn, QString());
    // A new floor starts one storey above the last, with the slab of the last.
    const Floor* last = m_floors.empty() ? nullptr : &m_floors.back();
    grid()->setCellText(0, LevelColumn, last ? number(last->levelM + 3.0, 2) : number(0.0, 2));
    grid()->setCellText(0, ThicknessColumn, last ? number(last->thicknessCm, 1) : number(15.0, 1));
    if (next == 0) {
        setStatus(prompt(kNumbersTaken));
    }
}

bool FloorGridForm::rowInUse(int row) const {
    return m_kind == Kind::New || static_cast<std::size_t>(row) < m_floors.size();
}

std::size_t FloorGridForm::writeTable(const ui::GridProgress& progress) {
    const auto& language = shell().language();
    std::vector<Floor> floors = m_floors;
    const int rows = m_kind == Kind::New ? 1 : static_cast<int>(floors.size());
    for (int row = 0; row < rows; ++row) {
        const auto name = ui::fromQStringExact(grid()->cellText(row, NameColumn), language);
        if (!name) {
            throw InputError(prompt(kNameNotKept).toStdString());
        }
        // A cell keeps its floor's stored value unless it was typed over: the grid shows a
        // level to the centimetre, and a level of 3.125 m must not become 3.12 on a save
        // that only renamed the floor.
        Floor f;
        if (m_kind != Kind::New) {
            f = floors[static_cast<std::size_t>(row)];
        } else {
            f.number =
                static_cast<std::int16_t>(std::lround(grid()->cellNumber(row, NumberColumn)));
        }
        const auto typed = [&](int column) {
            return m_kind == Kind::New ||
                   grid()->cellText(row, column) !=
                       m_shown[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
        };
        if (typed(NameColumn)) {
            f.name = *name;
        }
        if (typed(LevelColumn)) {
            f.levelM = static_cast<float>(grid()->cellNumber(row, LevelColumn));
        }
        if (typed(ThicknessColumn)) {
            f.thicknessCm = static_cast<float>(grid()->cellNumber(row, ThicknessColumn));
        }
        if (m_kind == Kind::New) {
            if (std::any_of(floors.begin(), floors.end(),
                            [&](const Floor& g) { return g.number == f.number; })) {
                throw InputError(
                    fmt::format("Floor {} exists already: choose another number.", f.number));
            }
            saveFloor(shell().projectPath(), f);
            m_floors = readFloors(shell().projectPath());
            shell().currentFloor = f.number;
            progress(0, 1);
            showNewRow();
            return static_cast<std::size_t>(f.number);
        }
        floors[static_cast<std::size_t>(row)] = f;
        progress(row + 1, rows);
    }
    saveFloors(shell().projectPath(), floors);
    m_floors = floors;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumnCount; ++column) {
            m_shown[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] =
                grid()->cellText(row, column);
        }
    }
    progress(0, rows);
    return floors.size();
}

SlcCiel::SlcCiel(shell::ShellState& shell, QWidget* parent)
    : QWidget(parent), m_shell(shell), m_list(new QTableWidget(this)),
      m_choose(new QPushButton(this)), m_delete(new QPushButton(this)),
      m_exit(new QPushButton(this)) {
    setObjectName(QStringLiteral("SlcCiel"));
    m_list->setObjectName(QStringLiteral("ciel_List"));
    m_list->setColumnCount(5);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_choose->setObjectName(QStringLiteral("CmdChoose"));
    m_delete->setObjectName(QStringLiteral("CmdDelete"));
    m_exit->setObjectName(QStringLiteral("exit"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_choose);
    buttons->addWidget(m_delete);
    buttons->addStretch(1);
    buttons->addWidget(m_exit);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    connect(m_choose, &QPushButton::clicked, this, [this] { chooseSelected(); });
    connect(m_list, &QTableWidget::cellDoubleClicked, this, [this] { chooseSelected(); });
    connect(m_delete, &QPushButton::clicked, this, [this] { deleteSelected(); });
    connect(m_exit, &QPushButton::clicked, this, [this] { ui::closeForm(this); });

    readPrompts();
}

QString SlcCiel::prompt(std::size_t n, std::string_view english) const {
    return ui::formPrompt(m_prompts, n, english, m_shell.language());
}

void SlcCiel::readPrompts() {
    m_prompts = floorPrompts(m_shell);
    setWindowTitle(prompt(kChooseCaption.prompt, kChooseCaption.english));
    m_choose->setText(prompt(kChoose.prompt, kChoose.english));
    m_delete->setText(prompt(kDelete.prompt, kDelete.english));
    m_exit->setText(prompt(kFirstToolPrompt + 1, "Exit"));
    QStringList headings;
    for (std::size_t k = 0; k < std::size(kHeadings); ++k) {
        headings << prompt(kFirstHeadingPrompt + k, kHeadings[k]);
    }
    headings << prompt(kBeamsHeading.prompt, kBeamsHeading.english);
    m_list->setHorizontalHeaderLabels(headings);
    load();
}

void SlcCiel::load() {
    m_list->clearContents();
    m_list->setRowCount(0);
    try {
        m_floors = readFloors(m_shell.projectPath());
    } catch (const FileError& e) {
        m_floors.clear();
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
    }
    const auto& language = m_shell.language();
    m_list->setRowCount(static_cast<int>(m_floors.size()));
    for (std::size_t i = 0; i < m_floors.size(); ++i) {
        const Floor& f = m_floors[i];
        const int row = static_cast<int>(i);
        std::size_t beams = 0;
        try {
            beams = beams::readBeamFile(m_shell.projectPath(), f.number).size();
        } catch (const FileError&) {
        }
        const auto cell = [&](int column, const QString& text, bool number) {
            auto* item = new QTableWidgetItem(text);
            if (number) {
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            }
            item->setData(Qt::UserRole, static_cast<int>(f.number));
            item->setData(Qt::UserRole + 1, static_cast<qulonglong>(beams));
            m_list->setItem(row, column, item);
        };
        cell(0, QString::number(f.number), true);
        cell(1, ui::toQString(f.name, language), false);
        cell(2, number(f.levelM, 2), true);
        cell(3, number(f.thicknessCm, 1), true);
        cell(4, QString::number(beams), true);
        if (f.number == m_shell.currentFloor) {
            m_list->selectRow(row);
        }
    }
    m_list->resizeColumnsToContents();
    m_list->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    if (m_floors.empty()) {
        ui::tellUser(this, m_messageHook, prompt(kNoFloorYet.prompt, kNoFloorYet.english));
    }
}

bool SlcCiel::chooseSelected() {
    const QTableWidgetItem* item = m_list->currentItem();
    if (item == nullptr || !item->isSelected()) {
        ui::tellUser(this, m_messageHook, prompt(kNoneSelected.prompt, kNoneSelected.english));
        return false;
    }
    m_shell.currentFloor = static_cast<std::int16_t>(item->data(Qt::UserRole).toInt());
    emit saved(prompt(kChosen.prompt, kChosen.english).arg(m_shell.currentFloor));
    return true;
}

bool SlcCiel::deleteSelected() {
    const QTableWidgetItem* item = m_list->currentItem();
    if (item == nullptr || !item->isSelected()) {
        ui::tellUser(this, m_messageHook, prompt(kNoneSelected.prompt, kNoneSelected.english));
        return false;
    }
    const int number = item->data(Qt::UserRole).toInt();
    const auto floor = std::find_if(m_floors.begin(), m_floors.end(),
                                    [&](const Floor& f) { return f.number == number; });
    const QString name =
        floor == m_floors.end() ? QString() : ui::toQString(floor->name, m_shell.language());
    const QString question = prompt(kAskDelete.prompt, kAskDelete.english)
                                 .arg(number)
                                 .arg(name)
                                 .arg(item->data(Qt::UserRole + 1).toULongLong());
    if (!ui::askYesNo(this, m_askHook, question, windowTitle())) {
        return false;
    }
    try {
        // The steel items first: a floor whose items are gone still shows and can be designed
        // again, while items left behind would be counted under a floor that no longer exists.
        bars::DeleteSlabQuantities(m_shell.projectPath(), static_cast<std::int16_t>(number));
        removeFloor(m_shell.projectPath(), number);
    } catch (const FileError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        load();
        return false;
    } catch (const InputError& e) {
        ui::tellUser(this, m_messageHook, QString::fromUtf8(e.what()));
        load();
        return false;
    }
    if (m_shell.currentFloor == number) {
        m_shell.currentFloor = 0;
    }
    chooseDefaultFloor(m_shell);
    load();
    emit saved(prompt(kDeleted.prompt, kDeleted.english).arg(number));
    return true;
}

} // namespace orvak::floors::forms
