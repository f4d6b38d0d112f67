// The long-term deflection form on the demo project: the values reach the beam record and
// its deflection listing, a refused value stores nothing.
#include "beams/forms/ldefcalc_form.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTableWidget>

#include "ui/shell_fixture.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

class LDefCalcTest : public test::FormFixture {};

TEST_F(LDefCalcTest, StoresTheDataInTheBeamAndShowsItsMembers) {
    auto form = std::make_unique<LDefCalc>(m_shell);
    form->setMessageHook([this](const QString& m) { m_messages << m; });
    const fs::path project = m_shell.projectPath();
    ASSERT_EQ(form->beamCombo()->count(), 4);
    form->beamCombo()->setCurrentIndex(0);

    // A divisor of 10 (L/10) is no deflection limit: refused, the beam file untouched.
    const std::string before = test::readBytes(project / "BEAMS.1");
    form->divisorField()->setText("10");
    EXPECT_FALSE(form->calculate());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("DeflTxt")) << m_messages[0].toStdString();
    EXPECT_EQ(test::readBytes(project / "BEAMS.1"), before);

    form->sustainedField()->setText("50");
    form->monthsField()->setText("12");
    form->divisorField()->setText("480");
    ASSERT_TRUE(form->calculate()) << m_messages.join('\n').toStdString();
    const BeamRecord stored = readBeamFile(project, 1).front();
    EXPECT_EQ(stored.sustainedLivePercent, 50.0f);
    EXPECT_EQ(stored.liveLoadMonths, 12.0f);
    EXPECT_EQ(stored.settings.DeflTxt, 480.0f);

    // TF = 0.305 ln 12 + 0.654 = 0.305 × 2.4849 + 0.654 = 1.412, in the listing and the form.
    const std::string listing = test::readBytes(project / "F1-B1-A_1.Analy3");
    EXPECT_NE(listing.find("Time factor               =    1.412"), std::string::npos);
    EXPECT_TRUE(form->allowedText().startsWith("L/480")) << form->allowedText().toStdString();
    EXPECT_TRUE(form->allowedText().contains("1.412"));
    // One row per span (the demo's B1-A has three); the allowed deflection is L / 480.
    ASSERT_EQ(form->results()->rowCount(), static_cast<int>(stored.spans.size()));
    const double spanCm = stored.spans[0].lengthM * 100.0;
    EXPECT_NEAR(form->results()->item(0, LDefCalc::Allowed)->text().toDouble(), spanCm / 480.0,
                0.0005);
}

} // namespace
} // namespace orvak::beams::forms
