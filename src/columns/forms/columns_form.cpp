// Columns: the rows of the grid stand for the columns of the current floor; the values without
// a grid column ride along with their row, and the whole list is written at once.
#include "columns/forms/columns_form.h"

#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <set>

#include "core/error.h"
#include "floors/floors.h"
#include "floors/forms/floor_forms.h"
#include "jobs/column_groups_store.h"
#include "ui/general_prompts.h"
#include "ui/input_grid.h"
#include "ui/qt_text.h"
#include "ui/text_viewer.h"

namespace orvak::columns::forms {

namespace {

constexpr std::string_view kPromptKey = "COLUMNS";
// Prompts of COLUMNS<letter>.TXT (prompt n on line n + 1).
// The caption names no floor: the main window's status bar shows the current one.
constexpr ui::FormText kCaption{1, "Columns"};
constexpr std::size_t kFirstToolPrompt = 2;
constexpr std::size_t kFirstHeadingPrompt = 8;
constexpr ui::FormText kSaving{18, "Saving the columns..."};
constexpr ui::FormText kSaved{19, "The columns were saved: %1 columns."};
constexpr ui::FormText kEmptySaved{20, "No row is in use: the floor's column file was removed."};
constexpr ui::FormText kSameFloor{21, "Copying from same slab not allowed"};
constexpr ui::FormText kCopyCaption{22, "Copy columns"};
constexpr ui::FormText kFloorLabel{23, "Floor"};
constexpr ui::FormText kColumnsLabel{24, "Columns"};
constexpr ui::FormText kCopied{25, "%1 columns were copied; save to keep them."};
constexpr ui::FormText kNoName{26, "Row %1 has no name."};
constexpr ui::FormText kAskFooting{27, "Take the columns and groups of floor %1 down to the "
                                       "footing level? Its files there are replaced."};
constexpr ui::FormText kTakenDown{28, "The footing level holds the columns of floor %1."};
constexpr ui::FormText kNothingToTake{29, "Floor %1 has no columns or groups to take down."};
constexpr ui::FormText kNoFloor{30, "No floor is chosen: choose one with Cielling > Select."};
constexpr ui::FormText kNoRoom{31, "%1 columns do not fit in the %2 free rows."};
constexpr ui::FormText kChooseRows{32, "Choose the rows to delete first."};
constexpr ui::FormText kNameNotKept{33, "The name in row %1 holds a character that the "
                                        "project's language cannot keep in its files."};
constexpr ui::FormText kFootingCaption{34, "Columns necks of the footing level"};
constexpr std::size_t kPromptCount = 34;

constexpr ui::GridTool kTools[] = {
    {"save", "Save"},
    {"cprint", "Print"},
    {"copy", "Copy"},
    {"cdelete", "Delete"},
    {"tofooting", "To the footing level"},
    {"exit", "Exit"},
};
constexpr std::string_view kHeadings[] = {
    "Name",   "Type (1-5)", "Height (cm)", "Pu (t)", "M2 (t.m)",
    "a (cm)", "b (cm)",     "c (cm)",      "d (cm)", "e (cm)",
};
enum GridColumn {
    NameColumn,
    TypeColumn,
    HeightColumn,
    LoadColumn,
    MomentColumn,
    FirstDimColumn,
    kColumnCount = FirstDimColumn + 5
};

constexpr std::string_view kDescriptor =
    "1111111111011111111106.0,01.0,04.1,05.2,03.2,03.1,03.1,03.1,03.1,03.1";
constexpr std::string_view kLimits =
    "@1:0@2:0@3:1@4:5@5:0@6:9999.9@7:0@8:99999.99@9:0@10:999.99@11:0@12:999.9@13:0@14:999.9@15:"
    "0@16:999.9@17:0@18:999.9@19:0@20:999.9@21:";

ui::GridFormSetup formSetup(bool footingLevel) {
    ui::GridFormSetup setup;
    setup.objectName = footingLevel ? "FtColumns" : "Columns";
    setup.promptKey = kPromptKey;
    setup.caption = footingLevel ? kFootingCaption : kCaption;
    setup.tools = kTools;
    setup.firstToolPrompt = kFirstToolPrompt;
    setup.headings = kHeadings;
    setup.firstHeadingPrompt = kFirstHeadingPrompt;
    setup.saving = kSaving;
    setup.saved = kSaved;
    setup.emptySaved = kEmptySaved;
    setup.rows = kColumnRows;
    setup.columns = kColumnCount;
    setup.descriptor = kDescriptor;
    setup.limits = kLimits;
    return setup;
}

QString formText(const shell::ShellState& shell, const ui::FormText& t) {
    const shell::PromptList prompts =
        shell::readPrompts(shell.programFolder, shell.language(), kPromptKey, 2, kPromptCount);
    return ui::formPrompt(prompts, t.prompt, t.english, shell.language());
}

} // namespace

Columns::Columns(shell::ShellState& shell, bool footingLevel, QWidget* parent)
    : ui::GridForm(shell, formSetup(footingLevel), parent),
      m_floor(footingLevel ? 0 : shell.currentFloor), m_footingLevel(footingLevel),
      m_rows(kColumnRows) {
    // The footing level's necks are copied from a floor, not taken down again.
    if (QAction* down = action("tofooting"); down != nullptr && footingLevel) {
        down->setVisible(false);
    }
    load();
    // The descriptor's width of 6 is what may be typed; a name from a file may hold 10.
    const QFontMetrics metrics(grid()->view()->font());
    grid()->view()->setColumnWidth(
        NameColumn, metrics.horizontalAdvance(
                        QString(static_cast<int>(kColumnNameWidth) + 1, QLatin1Char('0'))));
}

QString Columns::text(std::size_t prompt, std::string_view english) const {
    return formText(shell(), {prompt, english});
}

void Columns::load() {
    bool readOk = m_footingLevel || m_floor > 0;
    if (!readOk) {
        tell(formText(shell(), kNoFloor));
    } else {
        try {
            m_stored = readColumns(shell().projectPath(), ColumnLevel{m_floor});
        } catch (const FileError& e) {
            // Nothing was read: the form will not write over the file it could not read.
            tell(QString::fromUtf8(e.what()));
            readOk = false;
        }
    }
    if (m_stored.size() > static_cast<std::size_t>(kColumnRows)) {
        // Saving what fits would drop the rest.
        tell(formText(shell(), kNoRoom).arg(m_stored.size()).arg(kColumnRows));
        m_stored.resize(kColumnRows);
        readOk = false;
    }
    for (std::size_t i = 0; i < m_stored.size(); ++i) {
        // The grid holds M2 as a size; a pair stored with a negative M2 (an import, say) is
        // shown from the other side, its curvature kept.
        m_rows[i] = m_stored[i];
        m_rows[i].x = m_rows[i].x.withPositiveM2();
        showColumn(static_cast<int>(i), m_rows[i]);
    }
    finishLoad(readOk);
}

void Columns::showColumn(int row, const Column& c) {
    ui::InputGrid& g = *grid();
    g.setCellText(row, NameColumn, ui::toQString(c.name, shell().language()));
    g.setCellText(row, TypeColumn, QString::number(c.type));
    g.setCellText(row, HeightColumn, ui::plainDecimal(c.heightCm));
    g.setCellText(row, LoadColumn, ui::plainDecimal(c.puT));
    g.setCellText(row, MomentColumn, ui::plainDecimal(c.x.m2));
    for (int d = 0; d < 5; ++d) {
        g.setCellText(row, FirstDimColumn + d,
                      ui::plainDecimal(c.dims[static_cast<std::size_t>(d)]));
    }
}

bool Columns::rowInUse(int row) const {
    for (int c = 0; c < kColumnCount; ++c) {
        if (!grid()->cellText(row, c).trimmed().isEmpty()) {
            return true;
        }
    }
    return false;
}

void Columns::syncData() {}

bool Columns::dataChanged() const {
    return m_rowsChanged || ui::GridForm::dataChanged();
}

std::size_t Columns::writeTable(const ui::GridProgress& progress) {
    const ui::InputGrid& g = *grid();
    std::vector<Column> columns;
    for (int row = 0; row < kColumnRows; ++row) {
        if (!rowInUse(row)) {
            continue;
        }
        Column c = m_rows[static_cast<std::size_t>(row)];
        const auto name =
            ui::fromQStringExact(g.cellText(row, NameColumn).trimmed(), shell().language());
        if (!name) {
            throw InputError(formText(shell(), kNameNotKept).arg(row + 1).toStdString());
        }
        if (name->empty()) {
            throw InputError(formText(shell(), kNoName).arg(row + 1).toStdString());
        }
        c.name = name->substr(0, kColumnNameWidth);
        // The grid has checked every number against its column's range.
        c.type = static_cast<std::int16_t>(std::lround(g.model()->cellNumber(row, TypeColumn)));
        c.heightCm = static_cast<float>(g.model()->cellNumber(row, HeightColumn));
        c.puT = static_cast<float>(g.model()->cellNumber(row, LoadColumn));
        c.x.m2 = static_cast<float>(g.model()->cellNumber(row, MomentColumn));
        for (int d = 0; d < 5; ++d) {
            c.dims[static_cast<std::size_t>(d)] =
                static_cast<float>(g.model()->cellNumber(row, FirstDimColumn + d));
        }
        columns.push_back(c);
        progress(row + 1, kColumnRows);
    }
    writeColumns(shell().projectPath(), ColumnLevel{m_floor}, columns);
    // A group whose members changed no longer stands as designed.
    jobs::markGroupsOfChangedColumns(shell().projectPath(), ColumnLevel{m_floor}, m_stored,
                                     columns);
    progress(0, kColumnRows);
    // The rows show what was written: names cut to their width, no gaps.
    m_stored = columns;
    m_rows.assign(kColumnRows, Column{});
    for (int row = 0; row < kColumnRows; ++row) {
        if (static_cast<std::size_t>(row) < columns.size()) {
            m_rows[static_cast<std::size_t>(row)] = columns[static_cast<std::size_t>(row)];
            showColumn(row, columns[static_cast<std::size_t>(row)]);
        } else {
            for (int c = 0; c < kColumnCount; ++c) {
                grid()->setCellText(row, c, QString());
            }
        }
    }
    m_rowsChanged = false;
    return columns.size();
}

bool Columns::copyColumns(int fromFloor, const std::vector<std::size_t>& which) {
    if (fromFloor == 0 || which.empty()) {
        return false;
    }
    if (fromFloor == m_floor) {
        // The system's own sentence, as it stands: without the full stop tell() adds.
        ui::tellUserAsIs(this, messageHook(), formText(shell(), kSameFloor));
        return false;
    }
    std::vector<Column> source;
    try {
        source = readColumns(shell().projectPath(), ColumnLevel{fromFloor});
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    std::vector<int> free;
    for (int row = 0; row < kColumnRows; ++row) {
        if (!rowInUse(row)) {
            free.push_back(row);
        }
    }
    if (free.size() < which.size()) {
        tell(formText(shell(), kNoRoom).arg(which.size()).arg(free.size()));
        return false;
    }
    std::size_t copied = 0;
    for (const std::size_t i : which) {
        if (i >= source.size()) {
            continue;
        }
        Column c = source[i];
        c.group = 0; // the groups of the other floor are not this floor's
        m_rows[static_cast<std::size_t>(free[copied])] = c;
        showColumn(free[copied], c);
        ++copied;
    }
    if (copied > 0) {
        m_rowsChanged = true;
        setStatus(formText(shell(), kCopied).arg(copied));
    }
    return copied > 0;
}

bool Columns::deleteSelectedRows() {
    std::set<int> chosen;
    for (const QModelIndex& index : grid()->view()->selectionModel()->selectedIndexes()) {
        chosen.insert(index.row());
    }
    if (chosen.empty()) {
        tell(formText(shell(), kChooseRows));
        return false;
    }
    if (!ui::askYesNo(this, askHook(), ui::generalPrompt(shell(), ui::General::DeleteSelectedRows),
                      windowTitle())) {
        return false;
    }
    // The rows below move up over the gap, each with its hidden values.
    int to = 0;
    for (int from = 0; from < kColumnRows; ++from) {
        if (chosen.count(from) > 0) {
            continue;
        }
        if (from != to) {
            for (int c = 0; c < kColumnCount; ++c) {
                grid()->setCellText(to, c, grid()->cellText(from, c));
            }
            m_rows[static_cast<std::size_t>(to)] = m_rows[static_cast<std::size_t>(from)];
        }
        ++to;
    }
    for (; to < kColumnRows; ++to) {
        for (int c = 0; c < kColumnCount; ++c) {
            grid()->setCellText(to, c, QString());
        }
        m_rows[static_cast<std::size_t>(to)] = Column{};
    }
    grid()->view()->clearSelection();
    m_rowsChanged = true;
    return true;
}

ui::EditAsc* Columns::printList() {
    if (refuseBadCell()) {
        return nullptr;
    }
    // One line per row in use, each cell as the grid shows it, under the headings.
    const ui::InputGridModel& model = *grid()->model();
    QString listing = windowTitle() + QStringLiteral("\n\n");
    QStringList heading;
    for (int c = 0; c < kColumnCount; ++c) {
        const int width = std::max(model.columnChars(c), 10);
        heading << model.headerData(c, Qt::Horizontal, Qt::DisplayRole)
                       .toString()
                       .leftJustified(width, QLatin1Char(' '), true);
    }
    listing += heading.join(QLatin1Char(' ')).trimmed() + QLatin1Char('\n');
    for (int row = 0; row < kColumnRows; ++row) {
        if (!rowInUse(row)) {
            continue;
        }
        QStringList cells;
        for (int c = 0; c < kColumnCount; ++c) {
            const int width = std::max(model.columnChars(c), 10);
            const QString cell = model.data(model.index(row, c), Qt::DisplayRole).toString();
            cells << (c == NameColumn ? cell.leftJustified(width) : cell.rightJustified(width));
        }
        listing += cells.join(QLatin1Char(' ')) + QLatin1Char('\n');
    }
    return ui::openReportViewer(this, shell(), windowTitle(), listing, messageHook());
}

bool Columns::takeToFootingLevel() {
    if (m_footingLevel || m_floor == 0) {
        return false;
    }
    if (isChanged() && !save()) {
        return false;
    }
    if (!ui::askYesNo(this, askHook(), formText(shell(), kAskFooting).arg(m_floor),
                      windowTitle())) {
        return false;
    }
    int copied = 0;
    try {
        copied = takeFloorToFootingLevel(shell().projectPath(), m_floor);
    } catch (const FileError& e) {
        tell(QString::fromUtf8(e.what()));
        return false;
    }
    if (copied == 0) {
        tell(formText(shell(), kNothingToTake).arg(m_floor));
        return false;
    }
    setStatus(formText(shell(), kTakenDown).arg(m_floor));
    return true;
}

void Columns::chooseAndCopy() {
    CopyColumnsDialog dialog(
        shell(),
        shell::readPrompts(shell().programFolder, shell().language(), kPromptKey, 2, kPromptCount),
        this);
    if (dialog.exec() == QDialog::Accepted) {
        copyColumns(dialog.chosenFloor(), dialog.chosenColumns());
    }
}

void Columns::runCommand(std::string_view key) {
    if (key == "copy") {
        chooseAndCopy();
    } else if (key == "cdelete") {
        deleteSelectedRows();
    } else if (key == "cprint") {
        printList();
    } else if (key == "tofooting") {
        takeToFootingLevel();
    }
}

CopyColumnsDialog::CopyColumnsDialog(shell::ShellState& shell, const shell::PromptList& prompts,
                                     QWidget* parent)
    : QDialog(parent), m_shell(shell), m_floors(new QListWidget(this)),
      m_columns(new QListWidget(this)) {
    const auto text = [&](const ui::FormText& t) {
        return ui::formPrompt(prompts, t.prompt, t.english, shell.language());
    };
    setObjectName(QStringLiteral("CopyCols"));
    setWindowTitle(text(kCopyCaption));
    m_floors->setObjectName(QStringLiteral("ciel_List"));
    m_columns->setObjectName(QStringLiteral("ColsList"));
    m_columns->setSelectionMode(QAbstractItemView::ExtendedSelection);

    std::vector<floors::Floor> known;
    try {
        known = floors::readFloors(shell.projectPath());
    } catch (const FileError&) {
        // No floor to choose; the form was told when it opened.
    }
    for (const floors::Floor& f : known) {
        auto* item = new QListWidgetItem(floors::forms::floorCaption(f, shell.language()));
        item->setData(Qt::UserRole, static_cast<int>(f.number));
        m_floors->addItem(item);
    }
    connect(m_floors, &QListWidget::currentRowChanged, this,
            [this] { showColumnsOf(chosenFloor()); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(ui::generalPrompt(shell, ui::General::Ok));
    buttons->button(QDialogButtonBox::Cancel)
        ->setText(ui::generalPrompt(shell, ui::General::Cancel));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* lists = new QHBoxLayout;
    for (auto [label, list] :
         {std::pair{text(kFloorLabel), m_floors}, std::pair{text(kColumnsLabel), m_columns}}) {
        auto* column = new QVBoxLayout;
        column->addWidget(new QLabel(label, this));
        column->addWidget(list, 1);
        lists->addLayout(column);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists, 1);
    layout->addWidget(buttons);
}

int CopyColumnsDialog::chosenFloor() const {
    const QListWidgetItem* item = m_floors->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

std::vector<std::size_t> CopyColumnsDialog::chosenColumns() const {
    std::vector<std::size_t> chosen;
    for (int i = 0; i < m_columns->count(); ++i) {
        if (m_columns->item(i)->isSelected()) {
            chosen.push_back(static_cast<std::size_t>(i));
        }
    }
    return chosen;
}

void CopyColumnsDialog::showColumnsOf(int floor) {
    m_columns->clear();
    if (floor == 0) {
        return;
    }
    try {
        for (const Column& c : readColumns(m_shell.projectPath(), ColumnLevel{floor})) {
            m_columns->addItem(ui::toQString(c.name, m_shell.language()));
        }
    } catch (const FileError& e) {
        m_columns->addItem(QString::fromUtf8(e.what()));
        m_columns->setEnabled(false);
        return;
    }
    m_columns->setEnabled(true);
}

} // namespace orvak::columns::forms
