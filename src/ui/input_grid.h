// The shared input grid of every data-entry form: a table of cells whose columns are
// described by field descriptor and limit strings (which cells take input, numbers, ranges).
#pragma once

#include "shell/field_table.h"

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QStringList>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QWidget>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvak::ui {

/// What a form tells the grid about its table.
struct InputGridSetup {
    int rows = 1;
    int columns = 1;
    /// One field descriptor per row, or one for the whole table (see shell/field_table.h).
    std::vector<std::string> descriptors;
    /// One limit string per row, or one for the whole table.
    std::vector<std::string> limitStrings;
    QStringList columnHeadings; ///< already converted from the prompt table
    QStringList rowHeadings;    ///< empty: rows are numbered 1, 2, ...
    /// Visible width of each column in characters (0: from the descriptor's digits).
    std::vector<int> columnWidths;
    /// Text of the message shown when a value is out of range; "%1" is replaced by the value,
    /// "%2" by the minimum and "%3" by the maximum.
    QString rangeMessage = QStringLiteral("The value %1 is outside the range %2 to %3.");
    QString notANumberMessage = QStringLiteral("\"%1\" is not a number.");
};

/// The cells' texts and the rules of the descriptor and limit strings.
class InputGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit InputGridModel(QObject* parent = nullptr);

    void setup(const InputGridSetup& setup);
    const InputGridSetup& gridSetup() const { return m_setup; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Replaces the shown text of a column heading (the grid wraps long headings).
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value,
                       int role) override;

    /// The text of a cell as typed (not formatted); 0-based row and column.
    QString cellText(int row, int column) const;
    /// Sets a cell without a range check (loading a record).
    void setCellText(int row, int column, const QString& text);
    /// The number of a cell; a blank or unreadable cell is 0.
    double cellNumber(int row, int column) const;

    bool isChanged() const { return m_changed; }
    void clearChanged() { m_changed = false; }

    /// Rules of the column at a 0-based cell (flags as in the descriptor: access 1 input,
    /// 0 shown only; kind 0 text, 1 number, 2 text never formatted).
    int accessAt(int row, int column) const;
    int kindAt(int row, int column) const;
    shell::ColumnDigits digitsAt(int row, int column) const;
    shell::Limits limitsAt(int row, int column) const;
    /// Characters the editor of a cell takes: for numbers integer digits + decimals + sign +
    /// point, for text its width; 0 means no limit.
    int maxLengthAt(int row, int column) const;
    /// Visible width of a column in characters: the set width, else the widest of its rows.
    int columnChars(int column) const;

    /// The text of the last value refused by setData (what the user typed).
    const QString& refusedText() const { return m_refusedText; }

signals:
    /// A value passed its check and was stored (0-based).
    void cellCommitted(int row, int column);
    /// A value was refused; the message is ready for the user.
    void valueRefused(int row, int column, const QString& message);

private:
    bool isValidCell(int row, int column) const;
    /// Row count and 1-based row to hand to the rules for a table of `count` strings.
    std::pair<int, int> ruleRow(std::size_t count, int row) const;

    InputGridSetup m_setup;
    std::vector<QStringList> m_cells;
    QStringList m_headerTexts;
    QString m_refusedText;
    bool m_changed = false;
};

/// The editor of one cell: a line edit whose keys pass the number-cell filter.
class InputGridDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    bool eventFilter(QObject* object, QEvent* event) override;

    /// True when the last setModelData was refused by the model's check.
    bool lastCommitRefused() const { return m_lastRefused; }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    mutable bool m_lastRefused = false;
};

/// The grid widget that forms place: a table view, its model and delegate. A refused value
/// shows the range message (through the message hook, a message box by default) and puts the
/// focus back on the cell with the typed text selected.
class InputGrid : public QWidget {
    Q_OBJECT
public:
    explicit InputGrid(QWidget* parent = nullptr);

    void setup(const InputGridSetup& setup);
    InputGridModel* model() const { return m_model; }
    QTableView* view() const { return m_view; }

    QString cellText(int row, int column) const { return m_model->cellText(row, column); }
    void setCellText(int row, int column, const QString& text) {
        m_model->setCellText(row, column, text);
    }
    double cellNumber(int row, int column) const { return m_model->cellNumber(row, column); }
    bool isChanged() const { return m_model->isChanged(); }
    void clearChanged() { m_model->clearChanged(); }

    /// Replaces the message box (tests record the message instead).
    void setMessageHook(std::function<void(const QString&)> hook) {
        m_messageHook = std::move(hook);
    }
    /// Moves the focus to a cell and opens its editor.
    void focusCell(int row, int column);
    /// The open editor of the current cell, or nullptr when no cell is being edited.
    QLineEdit* currentEditor() const;

    /// Room for every column and up to 20 rows.
    QSize sizeHint() const override;

private:
    void onValueRefused(int row, int column, const QString& message);
    void reopenCell(int row, int column, const QString& text);
    void layoutColumns();

    QTableView* m_view;
    InputGridModel* m_model;
    InputGridDelegate* m_delegate;
    std::function<void(const QString&)> m_messageHook;
    bool m_refusalPending = false;
};

} // namespace orvak::ui
