// The project-data form: what Save writes into GEN.CST (fields, date stamp, the fields the form
// does not show or hides), the values it refuses, its labels, and the question on leaving.
#include "shell/forms/projdata_form.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTableView>
#include <ctime>

#include "shell/project_record.h"
#include "ui/input_grid.h"
#include "ui/shell_fixture.h"

namespace orvak::shell::forms {
namespace {

namespace fs = std::filesystem;

/// Today as "dd-mm-yyyy", from the C library rather than Qt.
std::string today() {
    const std::time_t now = std::time(nullptr);
    char text[16];
    std::strftime(text, sizeof text, "%d-%m-%Y", std::localtime(&now));
    return text;
}

class ProjdataTest : public test::ShellFixture {
protected:
    ProjdataTest() : m_shell(startShell()) {
        m_form = std::make_unique<Projdata>(m_shell);
        m_form->setMessageHook([this](const QString& m) { m_messages << m; });
    }

    bool type(int row, const QString& text) {
        return test::typeInto(*m_form->grid(), row, 0, text);
    }

    fs::path genCst() const { return m_shell.projectPath() / "GEN.CST"; }

    shell::ShellState m_shell;
    std::unique_ptr<Projdata> m_form;
    QStringList m_messages;
};

TEST_F(ProjdataTest, SaveWritesTheFieldsAndStampsTodayAndKeepsTheHiddenOnes) {
    // The choice, the count and the value are read by nothing: hidden, and kept as the file
    // holds them, even a count of 0 that the field's range 1 to 199 would refuse.
    shell::ProjectRecord stored = shell::readProjectRecord(m_shell.projectPath());
    ASSERT_TRUE(stored.valid);
    stored.choice = 2;
    stored.count = 0;
    stored.value = 12.5f; // exact in a single
    shell::writeProjectRecord(m_shell.projectPath(), stored);
    m_shell.project = shell::readProjectRecord(m_shell.projectPath());
    m_form = std::make_unique<Projdata>(m_shell);
    m_form->setMessageHook([this](const QString& m) { m_messages << m; });
    for (const int row : Projdata::kHiddenRows) {
        EXPECT_TRUE(m_form->grid()->view()->isRowHidden(row)) << row;
    }

    ASSERT_TRUE(type(0, "Harbour tower"));
    ASSERT_TRUE(type(9, "Rev. B"));
    ASSERT_TRUE(type(Projdata::kWorkFolderRow, "  work/tower "));
    EXPECT_TRUE(m_form->isChanged());
    ASSERT_TRUE(m_form->save()) << m_messages.join('\n').toStdString();
    EXPECT_FALSE(m_form->isChanged());

    const shell::ProjectRecord after = shell::readProjectRecord(m_shell.projectPath());
    EXPECT_EQ(after.titleLines[0], "Harbour tower");
    EXPECT_EQ(after.titleLines[1], stored.titleLines[1]);
    EXPECT_EQ(after.shortTexts[1], "Rev. B");
    // The work folder is kept trimmed and upper-cased.
    EXPECT_EQ(after.workFolder, "WORK/TOWER");
    EXPECT_EQ(after.dateText, today());
    // Fields the form does not show are kept as they were.
    EXPECT_EQ(after.choice, 2);
    EXPECT_EQ(after.count, 0);
    EXPECT_EQ(after.value, 12.5f);
    EXPECT_EQ(after.projectCode, stored.projectCode);
    EXPECT_EQ(after.unitsText, stored.unitsText);
    EXPECT_EQ(after.values, stored.values);
    EXPECT_EQ(after.sheetName, stored.sheetName);
    // The shell and the form show what was saved.
    EXPECT_EQ(m_shell.project.dateText, today());
    EXPECT_EQ(m_shell.workFolder, "WORK/TOWER");
    EXPECT_EQ(m_form->grid()->cellText(Projdata::kDateRow, 0).toStdString(), today());
    EXPECT_TRUE(m_messages.isEmpty());
}

TEST_F(ProjdataTest, RefusedValuesSaveNothing) {
    const std::string bytes = test::readBytes(genCst());
    // The date is stamped, never typed.
    EXPECT_FALSE(type(Projdata::kDateRow, "01-01-2000"));

    // Reached the cell some other way: Save checks every shown field again and writes nothing.
    m_form->grid()->setCellText(9, 0, "eleven chrs"); // the revision holds 10 characters
    m_messages.clear();
    EXPECT_FALSE(m_form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("10")) << m_messages[0].toStdString();
    EXPECT_EQ(test::readBytes(genCst()), bytes);
}

TEST_F(ProjdataTest, ShownRowsAreNamedByTheirUseInBothLanguages) {
    // The record's own names ("Short text 1", "Text 9", "Choice (1 or 2)" ...) and their
    // Hebrew counterparts tell the engineer nothing about what to enter.
    const QRegularExpression placeholder(QString::fromUtf8(
        "Short text|Text \\d|Code \\d|Choice|Count|Value|טקסט|קוד \\d|בחירה|ערך"));
    for (const char* language : {"English", "Hebrew"}) {
        m_shell.software.language = language;
        m_form->readPrompts();
        int shown = 0;
        for (int row = 0; row < Projdata::kFieldCount; ++row) {
            if (m_form->grid()->view()->isRowHidden(row)) {
                continue;
            }
            ++shown;
            const QString label =
                m_form->grid()->model()->headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
            EXPECT_FALSE(label.isEmpty() || label.contains(placeholder))
                << language << " row " << row << ": " << label.toStdString();
        }
        EXPECT_EQ(shown, Projdata::kFieldCount - 3) << language;
    }
}

TEST_F(ProjdataTest, LeavingWithChangesAsks) {
    const std::string bytes = test::readBytes(genCst());
    QStringList questions;
    QMessageBox::StandardButton answer = QMessageBox::Cancel;
    m_form->setAskHook([&](const QString& q) {
        questions << q;
        return answer;
    });

    // Nothing changed: no question.
    m_form->show();
    EXPECT_TRUE(m_form->close());
    EXPECT_TRUE(questions.isEmpty());

    m_form->show();
    ASSERT_TRUE(type(0, "Changed title"));
    EXPECT_FALSE(m_form->close()); // Cancel stays
    EXPECT_EQ(questions, QStringList{"Save changes?"});
    answer = QMessageBox::No;
    EXPECT_TRUE(m_form->close()); // No leaves without saving
    EXPECT_EQ(test::readBytes(genCst()), bytes);

    Projdata again(m_shell);
    again.setAskHook([](const QString&) { return QMessageBox::Yes; });
    again.show();
    ASSERT_TRUE(again.grid()->model()->setData(again.grid()->model()->index(0, 0),
                                               "Saved on leaving", Qt::EditRole));
    EXPECT_TRUE(again.close());
    EXPECT_EQ(shell::readProjectRecord(m_shell.projectPath()).titleLines[0], "Saved on leaving");
}

TEST_F(ProjdataTest, RelabellingKeepsWhatWasTyped) {
    ASSERT_TRUE(type(0, "Typed before"));
    m_shell.software.language = "Hebrew";
    m_form->readPrompts();
    EXPECT_EQ(m_form->grid()->cellText(0, 0), "Typed before");
    EXPECT_TRUE(m_form->isChanged());
    const auto hebrew = test::shippedLines("Hebrew", "ProjdataH.TXT");
    EXPECT_EQ(m_form->grid()->model()->headerData(0, Qt::Vertical, Qt::DisplayRole).toString(),
              test::hebrewText(hebrew[1]));
}

} // namespace
} // namespace orvak::shell::forms
