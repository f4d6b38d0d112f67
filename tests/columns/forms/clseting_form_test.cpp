// The column settings form: every field reaches COLSSET.DAT and comes back, a value no design
// can use (or a name the code page cannot hold) writes nothing, and DefCmd restores the defaults.
#include "columns/forms/clseting_form.h"

#include <QCheckBox>
#include <QLineEdit>

#include "ui/shell_fixture.h"

namespace orvak::columns::forms {
namespace {

namespace fs = std::filesystem;

class ClsetingTest : public test::FormFixture {
protected:
    fs::path file() const { return m_shell.generalFolder() / "COLSSET.DAT"; }
};

TEST_F(ClsetingTest, EveryFieldIsSavedAndReadBack) {
    auto form = open<Clseting>();
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(form->shownSettings(), defaultColumnSettings());

    // A value of its own in every field, so that two fields swapped on the way would show.
    ColumnSettings s;
    s.Fc = 300;
    s.FY = 4000;
    s.FYties = 2800;
    s.Cover = 4.5f;
    s.KFactor = 1.2f;
    s.BdFactor = 0.6f;
    s.Braced = 0;
    for (std::size_t t = 0; t < kSectionTypes; ++t) {
        const float k = static_cast<float>(t);
        s.PhiPercent[t] = 60.0f + k + k / 3.0f; // not short decimals
        s.EccPercent[t] = 10.0f + k;
        s.MinSteelPercent[t] = 0.5f + k / 4.0f;
        s.TypeNames[t] = "Type name " + std::to_string(t + 1);
    }
    s.TypeNames[6] = "Fifteen chars.."; // the full width
    s.Tolerance = 0.0005f;
    ASSERT_TRUE(validateColumnSettings(s).empty()) << validateColumnSettings(s);
    form->showSettings(s);
    EXPECT_TRUE(form->isChanged());
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    EXPECT_FALSE(form->isChanged());
    EXPECT_EQ(readColumnSettingsFile(m_shell.generalFolder()), s);
    EXPECT_EQ(open<Clseting>()->shownSettings(), s);

    // Typed into the fields under their control names, as the user does.
    form->field("KFactor")->setText("2");
    form->field("EccPercent", 6)->setText("25");
    form->field("TypeNames", 0)->setText("  Square  ");
    form->braced()->setChecked(true);
    ASSERT_TRUE(form->save());
    const ColumnSettings typed = readColumnSettingsFile(m_shell.generalFolder());
    EXPECT_EQ(typed.KFactor, 2.0f);
    EXPECT_EQ(typed.EccPercent[6], 25.0f);
    EXPECT_EQ(typed.TypeNames[0], "Square");
    EXPECT_EQ(typed.Braced, 1);
}

TEST_F(ClsetingTest, ARefusedValueWritesNothingAndDefaultsComeBack) {
    auto form = open<Clseting>();
    ASSERT_TRUE(form->save());
    const std::string before = test::readBytes(file());

    // Strengths take digits only, the rest one point at most.
    int at = 0;
    QString text = "250.5";
    EXPECT_NE(form->field("Fc")->validator()->validate(text, at), QValidator::Acceptable);
    text = "1.2.3";
    EXPECT_NE(form->field("KFactor")->validator()->validate(text, at), QValidator::Acceptable);

    struct Case {
        const char* name;
        std::size_t index;
        const char* typed;
        const char* named; // what the refusal names
    };
    for (const Case& c : {Case{"MinSteelPercent", 2, "8", "type 3"},
                          Case{"Fc", 0, "99999", "Fc"}, // beyond an int16
                          Case{"Tolerance", 0, "0", "tolerance"},
                          // A Hebrew word, which English files cannot hold.
                          Case{"TypeNames", 4, "\xd7\xa2\xd7\x9e\xd7\x95\xd7\x93", "type 5"}}) {
        SCOPED_TRACE(c.name);
        form->restoreDefaults();
        form->field(c.name, c.index)->setText(QString::fromUtf8(c.typed));
        m_messages.clear();
        EXPECT_FALSE(form->save());
        ASSERT_EQ(m_messages.size(), 1);
        EXPECT_TRUE(m_messages[0].contains(c.named)) << m_messages[0].toStdString();
        EXPECT_EQ(test::readBytes(file()), before);
    }

    form->restoreDefaults();
    EXPECT_EQ(form->shownSettings(), defaultColumnSettings());
}

} // namespace
} // namespace orvak::columns::forms
