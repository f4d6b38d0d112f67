// The shear form on the demo project: its fields reach the beam record and the design, a
// refused value writes nothing, and the deflection form opens on the same beam.
#include "beams/forms/sheardsn_form.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include "beams/forms/ldefcalc_form.h"
#include "ui/shell_fixture.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

class SheardsnTest : public test::FormFixture {
protected:
    ~SheardsnTest() override {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->testAttribute(Qt::WA_DeleteOnClose)) {
                w->close();
            }
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(SheardsnTest, TheFieldsReachTheBeamAndItsStirrupsAndARefusalWritesNothing) {
    const fs::path project = m_shell.projectPath();
    sheardsn form(m_shell, 1, 2);
    form.setMessageHook([this](const QString& m) { m_messages << m; });
    const BeamRecord before = readBeamFile(project, 1)[1];
    // Three points (left end, middle, right end) per span.
    ASSERT_EQ(form.points()->rowCount(), 3 * static_cast<int>(before.spans.size()));

    // 50 mm is no stirrup: refused by the beam's own checks, naming the setting.
    const std::string bytes = test::readBytes(project / "BEAMS.1");
    form.stirrupDiameterField()->setText("50");
    EXPECT_FALSE(form.store());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("SDIAMTXT")) << m_messages[0].toStdString();
    // A largest spacing under the beam's least one (7.5 cm in the demo) can never be met.
    form.stirrupDiameterField()->setText("10");
    form.stirrupSpacingField()->setText("5");
    EXPECT_FALSE(form.store());
    EXPECT_EQ(m_messages.size(), 2);
    EXPECT_EQ(test::readBytes(project / "BEAMS.1"), bytes);

    form.stirrupSpacingField()->setText("12.5");
    form.barDiameterField()->setText("14");
    form.barCountField()->setText("3");
    ASSERT_TRUE(form.store()) << m_messages.join('\n').toStdString();
    const BeamRecord stored = readBeamFile(project, 1)[1];
    EXPECT_EQ(stored.settings.SDIAMTXT, 10.0f);
    EXPECT_EQ(stored.settings.SSPCTXT, 12.5f);
    EXPECT_EQ(stored.settings.MINUPSD, 14);
    EXPECT_EQ(stored.settings.MINUPSQ, 3);
    // Designed again: no stirrup thinner than the first diameter tried, none farther apart
    // than the largest spacing.
    for (int row = 0; row < form.points()->rowCount(); ++row) {
        SCOPED_TRACE(row);
        EXPECT_GE(form.points()->item(row, sheardsn::Diameter)->text().toDouble(), 10.0);
        EXPECT_LE(form.points()->item(row, sheardsn::Spacing)->text().toDouble(), 12.5);
    }
    const std::string listing = test::readBytes(project / "F1-B1-B_2.Analy0");
    EXPECT_FALSE(listing.empty());
}

TEST_F(SheardsnTest, TheDeflectionFormOpensOnTheSameBeam) {
    sheardsn form(m_shell, 1, 2);
    form.findChild<QPushButton*>("CmdLtDef")->click();
    LDefCalc* deflection = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* f = qobject_cast<LDefCalc*>(w)) {
            deflection = f;
        }
    }
    ASSERT_NE(deflection, nullptr);
    EXPECT_EQ(deflection->floorCombo()->currentData().toInt(), 1);
    EXPECT_EQ(deflection->beamCombo()->currentIndex(), 1);
    EXPECT_TRUE(deflection->beamCombo()->currentText().startsWith("2 "));
}

} // namespace
} // namespace orvak::beams::forms
