// The shared input grid: its model (cell texts under the descriptor and limit rules), the
// line-edit delegate with the number-cell key filter, and the view's cell navigation.
#include "ui/input_grid.h"

#include "core/error.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <QValidator>

#include <algorithm>
#include <limits>

namespace orvak::ui {

namespace {

constexpr int kMaxHeadingLines = 3;
constexpr int kRowsInSizeHint = 20;
constexpr int kDefaultColumnChars = 8;
constexpr const char* kKindProperty = "orvakCellKind";
constexpr const char* kMaxLengthProperty = "orvakCellMaxLength";

std::string toStd(const QString& text) {
    return text.toUtf8().toStdString();
}

/// Reads a cell's text as a number under the shell's rules; a blank or unreadable text is 0.
bool readNumber(const QString& text, double& value) {
    constexpr double kHuge = std::numeric_limits<double>::max();
    const auto result = shell::checkCell(toStd(text), 1, shell::Limits{-kHuge, kHuge});
    value = result.value;
    return result.status != shell::CellCheck::NotANumber;
}

QString limitText(double value) {
    return QString::number(value, 'g', 12);
}

/// The character code a key event types, or 0 for keys that only edit or move (arrows,
/// Delete, shortcuts), which never pass through the number filter.
int typedCode(const QKeyEvent* key) {
    switch (key->key()) {
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    default:
        break;
    }
    const auto mods = key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (mods != Qt::NoModifier || key->text().size() != 1) {
        return 0;
    }
    const char16_t c = key->text().at(0).unicode();
    return (c >= 32 && c != 127) ? c : 0;
}

/// The editor's text as it will stand before a typed character lands: a selection is
/// replaced by what is typed, so it no longer counts.
QString textBeforeTyping(const QLineEdit* edit) {
    QString text = edit->text();
    if (edit->hasSelectedText()) {
        text.remove(edit->selectionStart(), edit->selectedText().size());
    }
    return text;
}

/// Text that reaches a number cell by other ways than typing (paste, drag and drop) must be
/// text the key filter would have let the user type, character by character.
class NumberCellValidator : public QValidator {
public:
    NumberCellValidator(int maxLength, QObject* parent)
        : QValidator(parent), m_maxLength(maxLength) {}

    State validate(QString& input, int& /*pos*/) const override {
        std::string soFar;
        for (const QChar c : input) {
            const int code = c.unicode();
            bool changed = false;
            if (code >= 128 || shell::filterNumberKey(code, soFar, m_maxLength, changed) != code) {
                return Invalid;
            }
            soFar.push_back(static_cast<char>(code));
        }
        return Acceptable;
    }

private:
    int m_maxLength;
};

/// Greedy word wrap of a heading into lines no wider than `maxWidth`, widened step by step
/// when the heading would take more than kMaxHeadingLines lines.
QString wrapHeading(const QString& heading, const QFontMetrics& fm, int maxWidth) {
    const QStringList paragraphs = heading.split(QLatin1Char('\n'));
    const int step = std::max(1, fm.horizontalAdvance(QLatin1Char('0')));
    for (int width = std::max(maxWidth, step);; width += step) {
        QStringList lines;
        for (const QString& paragraph : paragraphs) {
            QString line;
            for (const QString& word : paragraph.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                const QString candidate = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
                if (line.isEmpty() || fm.horizontalAdvance(candidate) <= width) {
                    line = candidate;
                } else {
                    lines << line;
                    line = word;
                }
            }
            lines << line;
        }
        if (lines.size() <= std::max<qsizetype>(kMaxHeadingLines, paragraphs.size()) ||
            width > fm.horizontalAdvance(heading)) {
            return lines.join(QLatin1Char('\n'));
        }
    }
}

/// The table view with the grid's navigation: Enter and Tab go to the next input cell,
/// Delete clears a cell, typing on a cell starts editing it.
class GridView final : public QTableView {
public:
    using QTableView::QTableView;

    void keyboardSearch(const QString& /*search*/) override {
        // Typing on a cell edits it; it never jumps to a cell that starts with the letter.
    }

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
        if (action == MoveNext || action == MovePrevious) {
            return nextInputCell(currentIndex(), action == MoveNext);
        }
        return QTableView::moveCursor(action, modifiers);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const QModelIndex current = currentIndex();
        if (state() != EditingState && current.isValid()) {
            switch (event->key()) {
            case Qt::Key_Return:
            case Qt::Key_Enter: {
                const QModelIndex next = nextInputCell(current, true);
                if (next.isValid()) {
                    setCurrentIndex(next);
                }
                event->accept();
                return;
            }
            case Qt::Key_Delete:
            case Qt::Key_Backspace:
                if (current.flags() & Qt::ItemIsEditable) {
                    model()->setData(current, QString(), Qt::EditRole);
                }
                event->accept();
                return;
            default:
                break;
            }
        }
        QTableView::keyPressEvent(event);
    }

    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override {
        auto* grid = qobject_cast<InputGridModel*>(model());
        if (trigger == AnyKeyPressed && grid && index.isValid() && event &&
            event->type() == QEvent::KeyPress && grid->kindAt(index.row(), index.column()) == 1) {
            // A key that a number cell would swallow does not open its editor.
            const int code = typedCode(static_cast<QKeyEvent*>(event));
            bool changed = false;
            if (code >= 32 && shell::filterNumberKey(code, std::string_view(),
                                                     grid->maxLengthAt(index.row(), index.column()),
                                                     changed) == 0) {
                return false;
            }
        }
        const bool opened = QTableView::edit(index, trigger, event);
        if (opened && (trigger == EditKeyPressed || trigger == DoubleClicked)) {
            // F2 and a double click edit the text in place, caret at its end.
            if (auto* lineEdit = qobject_cast<QLineEdit*>(indexWidget(index))) {
                lineEdit->deselect();
                lineEdit->end(false);
            }
        }
        return opened;
    }

private:
    /// The next (or previous) cell that takes input in reading order, wrapping at the end of
    /// the table; the cell itself when it is the only one.
    QModelIndex nextInputCell(const QModelIndex& from, bool forward) const {
        const int rows = model()->rowCount();
        const int columns = model()->columnCount();
        const int total = rows * columns;
        if (total == 0) {
            return {};
        }
        const int start = from.isValid() ? from.row() * columns + from.column() : -1;
        for (int step = 1; step <= total; ++step) {
            int cell = forward ? start + step : start - step;
            cell = ((cell % total) + total) % total;
            const QModelIndex index = model()->index(cell / columns, cell % columns);
            if ((index.flags() & Qt::ItemIsEditable) && !isRowHidden(index.row()) &&
                !isColumnHidden(index.column())) {
                return index;
            }
        }
        return from;
    }
};

} // namespace

// ---------------------------------------------------------------------------------------------
// Model

InputGridModel::InputGridModel(QObject* parent) : QAbstractTableModel(parent) {}

void InputGridModel::setup(const InputGridSetup& setup) {
    ORVAK_ASSERT(setup.rows >= 0 && setup.columns >= 0);
    ORVAK_ASSERT(setup.descriptors.size() <= 1 ||
                 setup.descriptors.size() == static_cast<std::size_t>(setup.rows));
    ORVAK_ASSERT(setup.limitStrings.size() <= 1 ||
                 setup.limitStrings.size() == static_cast<std::size_t>(setup.rows));
    beginResetModel();
    m_setup = setup;
    // An absent string reads like an empty one: every flag 1, limits 0 and no upper limit.
    if (m_setup.descriptors.empty()) {
        m_setup.descriptors.emplace_back();
    }
    if (m_setup.limitStrings.empty()) {
        m_setup.limitStrings.emplace_back();
    }
    m_cells.assign(static_cast<std::size_t>(m_setup.rows), QStringList());
    for (QStringList& row : m_cells) {
        row.resize(m_setup.columns);
    }
    m_headerTexts = m_setup.columnHeadings;
    m_refusedText.clear();
    m_changed = false;
    endResetModel();
}

int InputGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_setup.rows;
}

int InputGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_setup.columns;
}

bool InputGridModel::isValidCell(int row, int column) const {
    return row >= 0 && row < m_setup.rows && column >= 0 && column < m_setup.columns;
}

std::pair<int, int> InputGridModel::ruleRow(std::size_t count, int row) const {
    // One string serves the whole table; one per row is read for that row.
    if (count <= 1) {
        return {1, 1};
    }
    return {m_setup.rows, row + 1};
}

int InputGridModel::accessAt(int row, int column) const {
    const auto [rows, r] = ruleRow(m_setup.descriptors.size(), row);
    return shell::accessFlag(rows, r, m_setup.descriptors, column + 1);
}

int InputGridModel::kindAt(int row, int column) const {
    const auto [rows, r] = ruleRow(m_setup.descriptors.size(), row);
    return shell::kindFlag(rows, r, m_setup.columns, column + 1, m_setup.descriptors);
}

shell::ColumnDigits InputGridModel::digitsAt(int row, int column) const {
    const auto [rows, r] = ruleRow(m_setup.descriptors.size(), row);
    return shell::columnDigits(rows, r, m_setup.columns, column + 1, m_setup.descriptors);
}

shell::Limits InputGridModel::limitsAt(int row, int column) const {
    const auto [rows, r] = ruleRow(m_setup.limitStrings.size(), row);
    return shell::columnLimits(rows, r, m_setup.limitStrings, column + 1);
}

int InputGridModel::maxLengthAt(int row, int column) const {
    const shell::ColumnDigits digits = digitsAt(row, column);
    if (digits.integerDigits <= 0) {
        return 0;
    }
    if (kindAt(row, column) == 1) {
        return digits.integerDigits + digits.decimals + 2; // sign and decimal point
    }
    return digits.integerDigits;
}

int InputGridModel::columnChars(int column) const {
    if (column >= 0 && static_cast<std::size_t>(column) < m_setup.columnWidths.size() &&
        m_setup.columnWidths[static_cast<std::size_t>(column)] > 0) {
        return m_setup.columnWidths[static_cast<std::size_t>(column)];
    }
    // Per-row descriptors may give one column different widths: the widest row sets it.
    const int rowsToRead = m_setup.descriptors.size() > 1 ? m_setup.rows : 1;
    int chars = 0;
    for (int row = 0; row < rowsToRead; ++row) {
        const shell::ColumnDigits digits = digitsAt(row, column);
        int width = digits.integerDigits;
        if (kindAt(row, column) == 1) {
            width += digits.decimals > 0 ? digits.decimals + 1 : 0;
            if (limitsAt(row, column).minimum < 0.0) {
                width += 1; // room for a minus sign beyond the integer digits
            }
        }
        chars = std::max(chars, width);
    }
    return chars > 0 ? chars : kDefaultColumnChars;
}

QVariant InputGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !isValidCell(index.row(), index.column())) {
        return {};
    }
    const QString& text = m_cells[static_cast<std::size_t>(index.row())][index.column()];
    switch (role) {
    case Qt::DisplayRole: {
        // A blank cell stays blank on screen (empty rows of a table are not filled with
        // zeros); it still counts as 0 wherever its number is read.
        if (text.trimmed().isEmpty()) {
            return QString();
        }
        const shell::ColumnDigits digits = digitsAt(index.row(), index.column());
        const std::string shown = shell::formatNumberForDisplay(
            accessAt(index.row(), index.column()), kindAt(index.row(), index.column()),
            digits.integerDigits, toStd(text), digits.decimals);
        return QString::fromUtf8(shown.data(), static_cast<qsizetype>(shown.size()));
    }
    case Qt::EditRole:
        return text;
    case Qt::TextAlignmentRole:
        // Numbers line up on their right edge also in a right-to-left table.
        if (kindAt(index.row(), index.column()) == 1) {
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        }
        return QVariant::fromValue(Qt::AlignLeading | Qt::AlignVCenter);
    default:
        return {};
    }
}

bool InputGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid() || !isValidCell(index.row(), index.column()) ||
        accessAt(index.row(), index.column()) == 0) {
        return false;
    }
    const int row = index.row();
    const int column = index.column();
    QString& stored = m_cells[static_cast<std::size_t>(row)][column];
    const QString text = value.toString();
    // Passing through a cell without changing it is no edit: a blank cell whose range
    // excludes 0 must not trap the user.
    if (text == stored) {
        return true;
    }
    const shell::Limits limits = limitsAt(row, column);
    const shell::CellCheckResult check = shell::checkCell(toStd(text), kindAt(row, column), limits);
    if (check.status != shell::CellCheck::Ok) {
        m_refusedText = text;
        const QString shown = text.trimmed();
        const QString message = check.status == shell::CellCheck::NotANumber
                                    ? m_setup.notANumberMessage.arg(shown)
                                    : m_setup.rangeMessage.arg(shown, limitText(limits.minimum),
                                                               limitText(limits.maximum));
        emit valueRefused(row, column, message);
        return false;
    }
    stored = text;
    m_changed = true;
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    emit cellCommitted(row, column);
    return true;
}

Qt::ItemFlags InputGridModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (accessAt(index.row(), index.column()) != 0) {
        result |= Qt::ItemIsEditable;
    }
    return result;
}

QVariant InputGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal) {
        if (role == Qt::DisplayRole) {
            if (section >= 0 && section < m_headerTexts.size()) {
                return m_headerTexts.at(section);
            }
            return QString::number(section + 1);
        }
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const bool named = !m_setup.rowHeadings.isEmpty();
    if (role == Qt::DisplayRole) {
        if (section >= 0 && section < m_setup.rowHeadings.size()) {
            return m_setup.rowHeadings.at(section);
        }
        return named ? QString() : QString::number(section + 1);
    }
    if (role == Qt::TextAlignmentRole && named) {
        return QVariant::fromValue(Qt::AlignLeading | Qt::AlignVCenter);
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool InputGridModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                                   int role) {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= m_setup.columns) {
        return false;
    }
    if (m_headerTexts.size() < m_setup.columns) {
        m_headerTexts.resize(m_setup.columns);
    }
    m_headerTexts[section] = value.toString();
    emit headerDataChanged(orientation, section, section);
    return true;
}

QString InputGridModel::cellText(int row, int column) const {
    ORVAK_ASSERT(isValidCell(row, column));
    return m_cells[static_cast<std::size_t>(row)][column];
}

void InputGridModel::setCellText(int row, int column, const QString& text) {
    ORVAK_ASSERT(isValidCell(row, column));
    m_cells[static_cast<std::size_t>(row)][column] = text;
    const QModelIndex cell = index(row, column);
    emit dataChanged(cell, cell, {Qt::DisplayRole, Qt::EditRole});
}

double InputGridModel::cellNumber(int row, int column) const {
    double value = 0.0;
    return readNumber(cellText(row, column), value) ? value : 0.0;
}

// ---------------------------------------------------------------------------------------------
// Delegate

QWidget* InputGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    auto* edit = new QLineEdit(parent);
    edit->setFrame(false);
    edit->setFont(option.font);
    const auto* model = qobject_cast<const InputGridModel*>(index.model());
    if (!model) {
        return edit;
    }
    const int kind = model->kindAt(index.row(), index.column());
    const int maxLength = model->maxLengthAt(index.row(), index.column());
    edit->setProperty(kKindProperty, kind);
    edit->setProperty(kMaxLengthProperty, maxLength);
    if (maxLength > 0) {
        edit->setMaxLength(maxLength);
    }
    if (kind == 1) {
        // A number reads left to right with its sign in front, also inside a Hebrew form.
        edit->setLayoutDirection(Qt::LeftToRight);
        edit->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        edit->setValidator(new NumberCellValidator(maxLength, edit));
    }
    return edit;
}

void InputGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
        edit->setText(index.data(Qt::EditRole).toString());
    }
}

void InputGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
        m_lastRefused = !model->setData(index, edit->text(), Qt::EditRole);
    }
}

void InputGridDelegate::initStyleOption(QStyleOptionViewItem* option,
                                        const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto* model = qobject_cast<const InputGridModel*>(index.model());
    if (!model) {
        return;
    }
    if (model->kindAt(index.row(), index.column()) == 1) {
        option->direction = Qt::LeftToRight;
    }
    if (model->accessAt(index.row(), index.column()) == 0) {
        // Cells shown only are greyed: disabled text on the window colour.
        option->state &= ~QStyle::State_Enabled;
        option->backgroundBrush = option->palette.brush(QPalette::Disabled, QPalette::Window);
    }
}

bool InputGridDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* edit = qobject_cast<QLineEdit*>(object);
    if (!edit || event->type() != QEvent::KeyPress) {
        return QStyledItemDelegate::eventFilter(object, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
        m_lastRefused = false;
        emit commitData(edit);
        if (m_lastRefused) {
            // The grid shows the message and reopens this cell with the refused text.
            emit closeEditor(edit, NoHint);
            return true;
        }
        const bool backwards =
            key->key() == Qt::Key_Backtab ||
            (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier));
        emit closeEditor(edit, backwards ? EditPreviousItem : EditNextItem);
        return true;
    }
    default:
        break;
    }
    if (edit->property(kKindProperty).toInt() != 1) {
        return QStyledItemDelegate::eventFilter(object, event);
    }
    const int maxLength = edit->property(kMaxLengthProperty).toInt();
    if (key->matches(QKeySequence::Paste)) {
        // A paste lands only when the cell then reads as a number.
        QString result = textBeforeTyping(edit);
        const int at = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
        result.insert(std::min<qsizetype>(at, result.size()),
                      QGuiApplication::clipboard()->text().trimmed());
        int pos = 0;
        double value = 0.0;
        if (result.trimmed().isEmpty() || !readNumber(result, value) ||
            (maxLength > 0 && result.size() > maxLength) ||
            edit->validator()->validate(result, pos) != QValidator::Acceptable) {
            return true;
        }
        edit->setText(result);
        return true;
    }
    const int code = typedCode(key);
    if (code >= 32) {
        bool changed = false;
        const int passed =
            shell::filterNumberKey(code, toStd(textBeforeTyping(edit)), maxLength, changed);
        if (passed == 0) {
            return true;
        }
        if (passed != code) {
            edit->insert(QString(QChar(passed)));
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

// ---------------------------------------------------------------------------------------------
// Grid widget

InputGrid::InputGrid(QWidget* parent)
    : QWidget(parent), m_view(new GridView(this)), m_model(new InputGridModel(this)),
      m_delegate(new InputGridDelegate(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);

    m_view->setModel(m_model);
    m_view->setItemDelegate(m_delegate);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    m_view->setTabKeyNavigation(true);
    m_view->setWordWrap(false);
    m_view->setTextElideMode(Qt::ElideNone);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);

    // Cells in a fixed-width face so that digits of one column line up; headings keep the
    // application's face, which reads better.
    QFont cellFont(QStringLiteral("DejaVu Sans Mono"));
    cellFont.setStyleHint(QFont::Monospace);
    cellFont.setFixedPitch(true);
    cellFont.setPointSizeF(QApplication::font().pointSizeF());
    if (!QFontInfo(cellFont).fixedPitch()) {
        cellFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    }
    m_view->setFont(cellFont);
    m_view->horizontalHeader()->setFont(QApplication::font());
    m_view->verticalHeader()->setFont(QApplication::font());
    m_view->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    m_view->horizontalHeader()->setHighlightSections(false);

    connect(m_model, &InputGridModel::valueRefused, this, &InputGrid::onValueRefused);
}

void InputGrid::setup(const InputGridSetup& setup) {
    m_model->setup(setup);
    layoutColumns();
    // The focus starts on the first cell that takes input.
    for (int row = 0; row < m_model->rowCount(); ++row) {
        for (int column = 0; column < m_model->columnCount(); ++column) {
            if (m_model->accessAt(row, column) != 0) {
                m_view->setCurrentIndex(m_model->index(row, column));
                return;
            }
        }
    }
}

void InputGrid::layoutColumns() {
    const QFontMetrics cellMetrics(m_view->font());
    QHeaderView* header = m_view->horizontalHeader();
    const QFontMetrics headerMetrics(header->font());
    QStyle* style = m_view->style();
    const int charWidth = cellMetrics.horizontalAdvance(QLatin1Char('0'));
    const int cellPadding =
        2 * (style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_view) + 1) + 6;
    const int headerPadding = 2 * style->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header) + 6;
    const QStringList& headings = m_model->gridSetup().columnHeadings;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const int cellWidth = m_model->columnChars(column) * charWidth + cellPadding;
        int width = cellWidth;
        if (column < headings.size() && !headings.at(column).isEmpty()) {
            // A heading wider than its cells is wrapped into a few lines; a single word
            // longer than the cells widens the column.
            const QString wrapped =
                wrapHeading(headings.at(column), headerMetrics, cellWidth - headerPadding);
            m_model->setHeaderData(column, Qt::Horizontal, wrapped, Qt::DisplayRole);
            for (const QString& line : wrapped.split(QLatin1Char('\n'))) {
                width = std::max(width, headerMetrics.horizontalAdvance(line) + headerPadding);
            }
        }
        m_view->setColumnWidth(column, width);
    }
    QHeaderView* rows = m_view->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(
        std::max(cellMetrics.height(), QFontMetrics(rows->font()).height()) + 8);
}

QSize InputGrid::sizeHint() const {
    const int frame = 2 * m_view->frameWidth();
    int width = frame + m_view->verticalHeader()->sizeHint().width();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        width += m_view->columnWidth(column);
    }
    const int rows = m_model->rowCount();
    int height = frame + m_view->horizontalHeader()->sizeHint().height() +
                 std::min(rows, kRowsInSizeHint) * m_view->verticalHeader()->defaultSectionSize();
    if (rows > kRowsInSizeHint) {
        width += m_view->verticalScrollBar()->sizeHint().width();
    }
    return {width, height};
}

void InputGrid::focusCell(int row, int column) {
    const QModelIndex index = m_model->index(row, column);
    if (!index.isValid()) {
        return;
    }
    m_view->setFocus();
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
    m_view->edit(index);
}

QLineEdit* InputGrid::currentEditor() const {
    return qobject_cast<QLineEdit*>(m_view->indexWidget(m_view->currentIndex()));
}

void InputGrid::onValueRefused(int row, int column, const QString& message) {
    if (m_refusalPending) {
        return; // one message at a time; the value was not stored either way
    }
    m_refusalPending = true;
    const QString text = m_model->refusedText();
    // The editor that held the value is closing right now: show the message and reopen the
    // cell once that has finished, so the two focus changes do not fight.
    QMetaObject::invokeMethod(
        this,
        [this, row, column, message, text]() {
            if (m_messageHook) {
                m_messageHook(message);
            } else {
                QMessageBox::warning(this, window()->windowTitle(), message);
            }
            m_refusalPending = false;
            reopenCell(row, column, text);
        },
        Qt::QueuedConnection);
}

void InputGrid::reopenCell(int row, int column, const QString& text) {
    const QModelIndex index = m_model->index(row, column);
    if (!index.isValid() || !isVisible()) {
        return; // a form closed with a refused value keeps the old one
    }
    m_view->setFocus();
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
    if (!m_view->indexWidget(index)) {
        m_view->edit(index);
    }
    if (auto* edit = qobject_cast<QLineEdit*>(m_view->indexWidget(index))) {
        edit->setText(text);
        edit->selectAll();
        edit->setFocus();
    }
}

} // namespace orvak::ui
