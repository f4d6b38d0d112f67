// The footing settings form: every field reaches FOOTSSET.DAT in its place and comes back, a
// value a design cannot use is refused with nothing written, and leaving with changes asks.
#include "footings/forms/ftseting_form.h"

#include <QLineEdit>

#include "support/temp_dir.h"
#include "ui/shell_fixture.h"

namespace orvak::footings::forms {
namespace {

namespace fs = std::filesystem;

class FtSetingTest : public test::FormFixture {
protected:
    fs::path file() const { return m_shell.generalFolder() / "FOOTSSET.DAT"; }
};

TEST_F(FtSetingTest, EveryFieldIsSavedAndReadBackAndABadValueWritesNothing) {
    auto form = open<FtSeting>();
    EXPECT_EQ(form->shownSettings(), defaultFootingSettings());
    EXPECT_FALSE(form->isChanged());

    // A value of its own in every field, so that two fields swapped on the way would show.
    const std::pair<const char*, const char*> typed[] = {
        {"Fc", "300"},      {"FY", "4000"},      {"SoilCapacity", "2.5"},
        {"Cover", "7"},     {"LF", "1.45"},      {"MinSteelPercent", "0.2"},
        {"MinDepth", "35"}, {"FacRowmax", "0.6"}};
    for (const auto& [name, text] : typed) {
        form->field(name)->setText(text);
    }
    EXPECT_TRUE(form->isChanged());
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    const FootingSettings read = readFootingSettingsFile(m_shell.generalFolder());
    EXPECT_EQ(read.Fc, 300);
    EXPECT_EQ(read.FY, 4000);
    EXPECT_FLOAT_EQ(read.soilCapacity, 2.5f);
    EXPECT_FLOAT_EQ(read.coverCm, 7.0f);
    EXPECT_FLOAT_EQ(read.LF, 1.45f);
    EXPECT_FLOAT_EQ(read.minSteelPercent, 0.2f);
    EXPECT_FLOAT_EQ(read.minDepthCm, 35.0f);
    EXPECT_FLOAT_EQ(read.facRowmax, 0.6f);
    EXPECT_FALSE(form->isChanged());

    // A load factor below 1 and an empty field: told, and the file stays as it was.
    const std::string before = test::readBytes(file());
    form->field("LF")->setText("0.9");
    m_messages.clear();
    EXPECT_FALSE(form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("load factor")) << m_messages[0].toStdString();
    form->field("LF")->setText("");
    EXPECT_FALSE(form->save());
    EXPECT_EQ(test::readBytes(file()), before);

    // Leaving with the change asks; No drops it.
    m_answer = QMessageBox::No;
    EXPECT_TRUE(form->close());
    EXPECT_EQ(m_questions.size(), 1);
    EXPECT_EQ(test::readBytes(file()), before);
}

} // namespace
} // namespace orvak::footings::forms
