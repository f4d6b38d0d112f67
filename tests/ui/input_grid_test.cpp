// Input grid driven through its real widgets: keys typed into the cells, Enter, Delete, and
// what the user then sees (texts, messages, where the focus goes).
#include "ui/input_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace orvak::ui {
namespace {

// Four columns: text of width 6, a number 5.2 in 1..5000, a number shown only, a number 3.0
// in -50..50.
const std::string kDescriptor = "1101011106.0,05.2,03.0,03.0,";
const std::string kLimits = "@1:0@2:0@3:1@4:5000@5:0@6:999@7:-50@8:50";

class InputGridTest : public ::testing::Test {
protected:
    void SetUp() override { makeGrid(tableSetup()); }

    static InputGridSetup tableSetup() {
        InputGridSetup setup;
        setup.rows = 3;
        setup.columns = 4;
        setup.descriptors = {kDescriptor};
        setup.limitStrings = {kLimits};
        setup.columnHeadings = {"Name", "Area", "Count", "Angle"};
        return setup;
    }

    void makeGrid(const InputGridSetup& setup) {
        m_grid = std::make_unique<InputGrid>();
        m_grid->setup(setup);
        m_grid->setMessageHook([this](const QString& message) { m_messages << message; });
        m_grid->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_grid.get()));
        m_grid->activateWindow();
        m_grid->setFocus();
    }

    void select(int row, int column) {
        m_grid->view()->setCurrentIndex(m_grid->model()->index(row, column));
    }

    /// Types into a cell as a user would: on a selected cell the first key opens the editor;
    /// a cell already open (Enter opens the next one) takes the keys directly.
    QLineEdit* typeOnCell(int row, int column, const QString& text) {
        select(row, column);
        if (QLineEdit* open = m_grid->currentEditor()) {
            QTest::keyClicks(open, text);
            return open;
        }
        QTest::keyClick(m_grid->view(), text.at(0).toLatin1());
        QLineEdit* editor = m_grid->currentEditor();
        if (editor && text.size() > 1) {
            QTest::keyClicks(editor, text.mid(1));
        }
        return editor;
    }

    void enterValue(int row, int column, const QString& text) {
        QLineEdit* editor = typeOnCell(row, column, text);
        ASSERT_NE(editor, nullptr);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the refusal message and reopening are queued
    }

    QModelIndex current() const { return m_grid->view()->currentIndex(); }
    QString shown(int row, int column) const {
        return m_grid->model()->index(row, column).data(Qt::DisplayRole).toString();
    }

    std::unique_ptr<InputGrid> m_grid;
    QStringList m_messages;
};

TEST_F(InputGridTest, CellsTakeOnlyTheKeysOfTheirKind) {
    QLineEdit* editor = typeOnCell(0, 1, "1.5");
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, ".x+A");
    EXPECT_EQ(editor->text(), "1.5+") << "a second point and letters are swallowed";

    // Maximum length of a 5.2 column: 5 digits + 2 decimals + sign + point = 9.
    editor->clear();
    QTest::keyClicks(editor, "1234567890123");
    EXPECT_EQ(editor->text(), "123456789");

    // A paste must read as a number; letters never get in, a number does.
    editor->clear();
    QGuiApplication::clipboard()->setText("12abc");
    QTest::keySequence(editor, QKeySequence::Paste);
    EXPECT_EQ(editor->text(), "");
    QGuiApplication::clipboard()->setText("-2.5");
    QTest::keySequence(editor, QKeySequence::Paste);
    EXPECT_EQ(editor->text(), "-2.5");
    QGuiApplication::clipboard()->setText(".5");
    QTest::keySequence(editor, QKeySequence::Paste);
    EXPECT_EQ(editor->text(), "-2.5") << "a paste that makes a second point is refused";
    QTest::keyClick(editor, Qt::Key_Escape);

    // A letter on a number cell opens no editor; a text cell takes anything up to its width.
    select(1, 1);
    QTest::keyClick(m_grid->view(), 'q');
    EXPECT_EQ(m_grid->currentEditor(), nullptr);
    editor = typeOnCell(0, 0, "Beam B-12x");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "Beam B");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(m_grid->cellText(0, 0), "Beam B");
}

TEST_F(InputGridTest, StoredTextIsRawAndShownWithTheColumnsDecimals) {
    m_grid->setCellText(0, 1, "99");
    enterValue(0, 1, "12.3"); // typing replaces the old text
    EXPECT_TRUE(m_messages.isEmpty());
    EXPECT_EQ(m_grid->cellText(0, 1), "12.3");
    EXPECT_TRUE(m_grid->isChanged());
    // 5 integer places: "12" right-aligned in 5 blanks, then 2 decimals.
    EXPECT_EQ(shown(0, 1), "   12.30");

    m_grid->setCellText(1, 1, "1.239");
    EXPECT_EQ(shown(1, 1), "    1.23") << "decimals are cut, not rounded";
    EXPECT_DOUBLE_EQ(m_grid->cellNumber(1, 1), 1.239);

    const auto alignment =
        m_grid->model()->index(0, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    EXPECT_TRUE(alignment & Qt::AlignRight);
    EXPECT_TRUE(alignment & Qt::AlignAbsolute) << "numbers stay right-aligned in Hebrew";
    EXPECT_EQ(m_grid->view()->font().family(), "DejaVu Sans Mono");
}

TEST_F(InputGridTest, OutOfRangeValueIsRefusedAndTheCellReopened) {
    m_grid->setCellText(1, 1, "3");
    QSignalSpy committed(m_grid->model(), &InputGridModel::cellCommitted);

    enterValue(1, 1, "6000");
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("6000")) << m_messages[0].toStdString();
    EXPECT_TRUE(m_messages[0].contains(" 1 ")) << m_messages[0].toStdString();
    EXPECT_TRUE(m_messages[0].contains("5000")) << m_messages[0].toStdString();
    EXPECT_EQ(m_grid->cellText(1, 1), "3") << "the old value is kept";
    EXPECT_FALSE(m_grid->isChanged());
    EXPECT_EQ(committed.count(), 0);

    // The editor is back on the same cell, the refused text selected for retyping.
    EXPECT_EQ(current(), m_grid->model()->index(1, 1));
    QLineEdit* editor = m_grid->currentEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "6000");
    EXPECT_EQ(editor->selectedText(), "6000");

    // Leaving the cell with an arrow key checks the value just as Enter does.
    QTest::keyClick(editor, Qt::Key_Down);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_messages.size(), 2);
    EXPECT_EQ(current(), m_grid->model()->index(1, 1));
    editor = m_grid->currentEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->selectedText(), "6000");

    QTest::keyClicks(editor, "4500");
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_messages.size(), 2);
    EXPECT_EQ(m_grid->cellText(1, 1), "4500");
    EXPECT_TRUE(m_grid->isChanged());
    EXPECT_EQ(committed.count(), 1);

    // The lower bound may be negative; a text that is no number is refused as such.
    enterValue(0, 3, "-50");
    EXPECT_EQ(m_grid->cellText(0, 3), "-50");
    enterValue(2, 3, "5-");
    ASSERT_EQ(m_messages.size(), 3);
    EXPECT_TRUE(m_messages[2].contains("\"5-\" is not a number")) << m_messages[2].toStdString();
    EXPECT_EQ(m_grid->cellText(2, 3), "");
}

TEST_F(InputGridTest, ReadOnlyCellsAreNotEditedAndEnterSkipsThem) {
    m_grid->setCellText(0, 2, "9");
    EXPECT_FALSE(m_grid->model()->index(0, 2).flags() & Qt::ItemIsEditable);
    select(0, 2);
    QTest::keyClick(m_grid->view(), '5');
    QTest::keyClick(m_grid->view(), Qt::Key_F2);
    EXPECT_EQ(m_grid->currentEditor(), nullptr);
    QTest::keyClick(m_grid->view(), Qt::Key_Delete);
    EXPECT_EQ(m_grid->cellText(0, 2), "9");

    // Enter on column 1 goes past the read-only column 2 to column 3, then to the next row.
    enterValue(0, 1, "10");
    EXPECT_EQ(current(), m_grid->model()->index(0, 3));
    QLineEdit* editor = m_grid->currentEditor();
    ASSERT_NE(editor, nullptr) << "Enter opens the next input cell for typing";
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(current(), m_grid->model()->index(1, 0));

    // Without an open editor Enter moves too, and wraps from the last cell to the first.
    select(2, 3);
    QTest::keyClick(m_grid->view(), Qt::Key_Return);
    EXPECT_EQ(current(), m_grid->model()->index(0, 0));
    QTest::keyClick(m_grid->view(), Qt::Key_Tab);
    EXPECT_EQ(current(), m_grid->model()->index(0, 1));
}

TEST_F(InputGridTest, DeleteClearsACellUnlessZeroIsOutOfItsRange) {
    m_grid->setCellText(0, 3, "12");
    select(0, 3);
    QTest::keyClick(m_grid->view(), Qt::Key_Delete);
    EXPECT_EQ(m_grid->cellText(0, 3), "");
    EXPECT_DOUBLE_EQ(m_grid->cellNumber(0, 3), 0.0);
    EXPECT_TRUE(m_grid->isChanged());

    // Column 2 runs from 1: a blank (0) is refused like any other value below the range.
    m_grid->setCellText(0, 1, "12");
    select(0, 1);
    QTest::keyClick(m_grid->view(), Qt::Key_Backspace);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_grid->cellText(0, 1), "12");
    EXPECT_EQ(m_messages.size(), 1);
}

TEST_F(InputGridTest, OneColumnFormWithARuleForEachRow) {
    InputGridSetup setup;
    setup.rows = 3;
    setup.columns = 1;
    setup.descriptors = {"1030.0,", "1103.2,", "0101.0,"};
    setup.limitStrings = {"", "@1:0@2:100", ""};
    setup.rowHeadings = {"Project name", "Slab load", "Floors"};
    makeGrid(setup);

    EXPECT_EQ(current(), m_grid->model()->index(0, 0)) << "focus starts on the first input";
    enterValue(0, 0, "Tower A");
    EXPECT_EQ(m_grid->cellText(0, 0), "Tower A");
    EXPECT_EQ(current(), m_grid->model()->index(1, 0));

    QLineEdit* editor = typeOnCell(1, 0, "2x5");
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "25");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(shown(1, 0), " 25.00");
    EXPECT_EQ(current(), m_grid->model()->index(0, 0)) << "row 3 is shown only";

    enterValue(1, 0, "150");
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("100"));
    EXPECT_FALSE(m_grid->model()->index(2, 0).flags() & Qt::ItemIsEditable);
    EXPECT_GE(m_grid->model()->columnChars(0), 30) << "the 30-character text row sets the width";
}

TEST_F(InputGridTest, LongHeadingIsWrappedOverANarrowColumn) {
    InputGridSetup setup = tableSetup();
    setup.columnHeadings[3] = "Angle of the bent-up bars";
    makeGrid(setup);
    const QString heading =
        m_grid->model()->headerData(3, Qt::Horizontal, Qt::DisplayRole).toString();
    EXPECT_TRUE(heading.contains('\n')) << heading.toStdString();
    const QFontMetrics fm(m_grid->view()->horizontalHeader()->font());
    EXPECT_LT(m_grid->view()->columnWidth(3), fm.horizontalAdvance(setup.columnHeadings[3]));
    for (const QString& line : heading.split('\n')) {
        EXPECT_LE(fm.horizontalAdvance(line), m_grid->view()->columnWidth(3)) << line.toStdString();
    }
}

TEST_F(InputGridTest, RightToLeftApplicationMirrorsTheGrid) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    makeGrid(tableSetup());
    const bool mirrored = m_grid->view()->isRightToLeft();
    const int first = m_grid->view()->columnViewportPosition(0);
    const int second = m_grid->view()->columnViewportPosition(1);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    EXPECT_TRUE(mirrored);
    EXPECT_GT(first, second) << "column 1 stands at the right";
}

} // namespace
} // namespace orvak::ui
