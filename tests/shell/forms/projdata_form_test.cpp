// The project-data form: what Save writes into GEN.CST (fields, date stamp, the fields the form
// does not show), the values it refuses, and the question on leaving with changes.
#include "shell/forms/projdata_form.h"

#include <QCoreApplication>
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

TEST_F(ProjdataTest, SaveWritesTheFieldsAndStampsToday) {
    const shell::ProjectRecord before = shell::readProjectRecord(m_shell.projectPath());
    ASSERT_TRUE(before.valid);

    ASSERT_TRUE(type(0, "Harbour tower"));
    ASSERT_TRUE(type(9, "Rev. B"));
    ASSERT_TRUE(type(Projdata::kWorkFolderRow, "  work/tower "));
    ASSERT_TRUE(type(Projdata::kChoiceRow, "2"));
    ASSERT_TRUE(type(Projdata::kCountRow, "12"));
    ASSERT_TRUE(type(Projdata::kValueRow, "12.5"));
    EXPECT_TRUE(m_form->isChanged());
    ASSERT_TRUE(m_form->save());
    EXPECT_FALSE(m_form->isChanged());

    const shell::ProjectRecord after = shell::readProjectRecord(m_shell.projectPath());
    EXPECT_EQ(after.titleLines[0], "Harbour tower");
    EXPECT_EQ(after.titleLines[1], before.titleLines[1]);
    EXPECT_EQ(after.shortTexts[1], "Rev. B");
    // The work folder is kept trimmed and upper-cased.
    EXPECT_EQ(after.workFolder, "WORK/TOWER");
    EXPECT_EQ(after.choice, 2);
    EXPECT_EQ(after.count, 12);
    EXPECT_FLOAT_EQ(after.value, 12.5f); // 12.5 is exact in a single
    EXPECT_EQ(after.dateText, today());
    // Fields the form does not show are kept as they were.
    EXPECT_EQ(after.projectCode, before.projectCode);
    EXPECT_EQ(after.unitsText, before.unitsText);
    EXPECT_EQ(after.values, before.values);
    EXPECT_EQ(after.sheetName, before.sheetName);
    // The shell and the form show what was saved.
    EXPECT_EQ(m_shell.project.dateText, today());
    EXPECT_EQ(m_shell.workFolder, "WORK/TOWER");
    EXPECT_EQ(m_form->grid()->cellText(Projdata::kDateRow, 0).toStdString(), today());
    EXPECT_TRUE(m_messages.isEmpty());
}

TEST_F(ProjdataTest, RefusedValuesSaveNothing) {
    const std::string bytes = test::readBytes(genCst());

    // Typed: the count keeps its value and the user reads the range.
    const QString count = m_form->grid()->cellText(Projdata::kCountRow, 0);
    EXPECT_FALSE(type(Projdata::kCountRow, "200"));
    EXPECT_EQ(m_form->grid()->cellText(Projdata::kCountRow, 0), count);
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("200") && m_messages[0].contains("199"))
        << m_messages[0].toStdString();
    EXPECT_FALSE(type(Projdata::kChoiceRow, "3"));
    EXPECT_FALSE(type(Projdata::kValueRow, "1000"));
    // The date is stamped, never typed.
    EXPECT_FALSE(type(Projdata::kDateRow, "01-01-2000"));

    // Reached the cells some other way: Save checks every field again and writes nothing.
    const std::vector<std::pair<int, QString>> refused = {
        {Projdata::kCountRow, "200"},
        {Projdata::kCountRow, "0"},
        {Projdata::kValueRow, "-0.5"},
        {9, "eleven chrs"}, // short text 2 holds 10 characters
    };
    for (const auto& [row, text] : refused) {
        const QString old = m_form->grid()->cellText(row, 0);
        m_form->grid()->setCellText(row, 0, text);
        m_messages.clear();
        EXPECT_FALSE(m_form->save()) << text.toStdString();
        EXPECT_EQ(m_messages.size(), 1) << text.toStdString();
        m_form->grid()->setCellText(row, 0, old);
    }
    EXPECT_EQ(test::readBytes(genCst()), bytes);
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
