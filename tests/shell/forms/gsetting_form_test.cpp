// The software settings form: SWC written by Save reads back item for item, a new language is
// announced once, and a refused setting writes nothing.
#include "shell/forms/gsetting_form.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QSignalSpy>

#include "shell/software_config.h"
#include "ui/input_grid.h"
#include "ui/shell_fixture.h"

namespace orvak::shell::forms {
namespace {

namespace fs = std::filesystem;

class GsettingTest : public test::ShellFixture {
protected:
    GsettingTest() : m_shell(startShell()) {
        m_form = std::make_unique<Gsetting>(m_shell);
        m_form->setMessageHook([this](const QString& m) { m_messages << m; });
    }

    bool type(int row, const QString& text) {
        return test::typeInto(*m_form->grid(), row, 0, text);
    }

    fs::path swc() const { return home() / "GENERAL" / "SWC"; }

    shell::ShellState m_shell;
    std::unique_ptr<Gsetting> m_form;
    QStringList m_messages;
};

TEST_F(GsettingTest, SaveWritesSwcThatReadsBack) {
    // The languages offered are those of LANGUAGE.DAT.
    QStringList offered;
    for (int i = 0; i < m_form->languageBox()->count(); ++i) {
        offered << m_form->languageBox()->itemText(i);
    }
    EXPECT_EQ(offered, (QStringList{"English", "Hebrew"}));
    QSignalSpy languageChanged(m_form.get(), &Gsetting::languageChanged);
    ASSERT_TRUE(type(Gsetting::kText1Row, "Harbour Engineering"));
    ASSERT_TRUE(type(Gsetting::kText3Row, "Licence 1234"));
    ASSERT_TRUE(type(Gsetting::kSettingARow, "5"));
    ASSERT_TRUE(type(Gsetting::kSettingBRow, "-7"));
    ASSERT_TRUE(type(Gsetting::kSettingCRow, "2"));
    ASSERT_TRUE(type(Gsetting::kText4Row, "A4"));
    ASSERT_TRUE(m_form->save());
    EXPECT_EQ(languageChanged.count(), 0); // still English

    const shell::SoftwareConfig read = shell::readSoftwareConfig(swc());
    EXPECT_EQ(read.text1, "Harbour Engineering");
    EXPECT_EQ(read.text3, "Licence 1234");
    EXPECT_EQ(read.language, "English");
    EXPECT_EQ(read.settingA, 5);
    EXPECT_EQ(read.settingB, -7);
    EXPECT_EQ(read.settingC, 2);
    EXPECT_EQ(read.text4, "A4");
    EXPECT_FALSE(m_form->isChanged());

    m_form->languageBox()->setCurrentText("Hebrew");
    EXPECT_TRUE(m_form->isChanged());
    ASSERT_TRUE(m_form->save());
    EXPECT_EQ(languageChanged.count(), 1);
    EXPECT_EQ(shell::readSoftwareConfig(swc()).language, "Hebrew");
    EXPECT_TRUE(m_shell.rightToLeft());
    EXPECT_TRUE(m_messages.isEmpty());
}

TEST_F(GsettingTest, RefusedSettingWritesNothing) {
    EXPECT_FALSE(type(Gsetting::kSettingCRow, "3"));
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("3") && m_messages[0].contains("2"));

    // A 16-bit setting cannot hold 40000, however it reached the cell.
    m_form->grid()->setCellText(Gsetting::kSettingARow, 0, "40000");
    EXPECT_FALSE(m_form->save());
    EXPECT_FALSE(fs::exists(swc()));
    EXPECT_EQ(m_shell.software.settingA, 2);
}

} // namespace
} // namespace orvak::shell::forms
