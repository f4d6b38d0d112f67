// The beam settings form: every field reaches BMSETING.DAT and comes back, a value no design
// can use writes nothing, and the defaults come back with DefCmd.
#include "beams/forms/bmseting_form.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTabWidget>

#include "beams/beam_record.h"
#include "ui/shell_fixture.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

class BmsetingTest : public test::FormFixture {
protected:
    fs::path file() const { return m_shell.generalFolder() / "BMSETING.DAT"; }
};

TEST_F(BmsetingTest, EveryFieldIsSavedAndReadBack) {
    auto form = open<Bmseting>();
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(form->shownSettings(), defaultBeamSettings());
    for (const char* page : {"GNRLFrm", "DsgnFrm", "BarSetFrm", "FrmMAINSTL"}) {
        EXPECT_NE(form->tabs()->findChild<QWidget*>(page), nullptr) << page;
    }

    // A value of its own in every field (within what a design accepts), so that two fields
    // swapped on the way would show.
    BeamSettings s = defaultBeamSettings();
    s.MINUPSQ = 3;
    s.MINUPSD = 14;
    s.MINDNSQ = 4;
    s.MINDNSD = 16;
    s.MINDNSQC = 5;
    s.MINDNSDC = 18;
    s.MINDIST = 2.75f;
    s.MINAREA = 0.6f;
    s.CutNgtvBarsChk = 0;
    s.MINLNGTV = 0.35f;
    s.MINDCALCNGTV = 11.0f;
    s.LIRONENDBL = 0.2f;
    s.LIRONENDBR = 0.15f;
    s.MINDCALC = 9.0f;
    s.MAXDCALC = 28.0f;
    s.SDIAMTXT = 10.0f;
    s.SSPCTXT = 22.5f;
    s.MinSSPCTXT = 6.5f;
    s.WIDTHLNK = 45.0f;
    s.angleheight = {40.0f, 12.5f, 13.5f};
    for (std::size_t i = 0; i < s.DSTXT.size(); ++i) {
        s.DSTXT[i] = 8.0f + 2.0f * static_cast<float>(i);
        s.THIKTXT[i] = 10.0f + static_cast<float>(i) / 3.0f; // not short decimals
    }
    s.CONTBSTLCHK = 1;
    s.FACDEADL = {1.3f, 1.1f};
    s.FACDAYNL = {1.6f, 0.4f};
    s.DeflTxt = 480.0f;
    s.FacRmaxTxt = 0.6f;
    s.FacRminTxt = 15.0f;
    s.EsupBmFacTxt = 0.25f;
    s.VsMinTxt = 4.0f;
    s.MomFiTxt = 0.85f;
    s.ShearFiTxt = 0.75f;
    s.DevLenTxt = 1.2f;
    s.RedMomChk = 1;
    s.RedShrChk = 0;
    s.LdfactTxt = 0.8f;
    s.ShrContDpthTxt = 1.5f;
    s.MaxLenTxt = 12.0f;
    s.MinthicknessChk = 1;
    s.LFacTxt = 1.1f;
    ASSERT_TRUE(validateBeamSettings(s).empty()) << validateBeamSettings(s);
    form->showSettings(s);
    EXPECT_TRUE(form->isChanged());
    ASSERT_TRUE(form->save()) << m_messages.join('\n').toStdString();
    EXPECT_FALSE(form->isChanged());
    EXPECT_EQ(readBeamSettingsFile(m_shell.generalFolder()), s);
    // A second form shows what was saved, to the last bit.
    EXPECT_EQ(open<Bmseting>()->shownSettings(), s);

    // Typed into the fields under their control names, as the user does.
    form->field("SDIAMTXT")->setText("12");
    form->field("DSTXT", 11)->setText("36");
    form->flag("RedShrChk")->setChecked(true);
    form->flag("CONTBSTLCHK")->setChecked(false);
    ASSERT_TRUE(form->save());
    const BeamSettings typed = readBeamSettingsFile(m_shell.generalFolder());
    EXPECT_EQ(typed.SDIAMTXT, 12.0f);
    EXPECT_EQ(typed.DSTXT[11], 36.0f);
    EXPECT_EQ(typed.RedShrChk, 1);
    EXPECT_EQ(typed.CONTBSTLCHK, 0);
}

TEST_F(BmsetingTest, ARefusedValueWritesNothingAndDefaultsComeBack) {
    auto form = open<Bmseting>();
    ASSERT_TRUE(form->save());
    const std::string before = test::readBytes(file());

    // The keys a settings field takes: digits and one point; the divisor only digits.
    QLineEdit* phi = form->field("MomFiTxt");
    int at = 0;
    QString text = "-0,9x";
    EXPECT_NE(phi->validator()->validate(text, at), QValidator::Acceptable);
    text = "2.5";
    EXPECT_NE(form->field("DeflTxt")->validator()->validate(text, at), QValidator::Acceptable);

    phi->setText("9"); // 0.9 typed without its point
    EXPECT_FALSE(form->save());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("MomFiTxt")) << m_messages[0].toStdString();
    EXPECT_EQ(test::readBytes(file()), before);

    form->restoreDefaults();
    EXPECT_EQ(form->shownSettings(), defaultBeamSettings());
}

TEST_F(BmsetingTest, OpenedFromABeamItEditsThatBeamsCopyOnly) {
    const fs::path project = m_shell.projectPath();
    const std::string defaults = test::readBytes(file());
    const BeamRecord other = readBeamFile(project, 1)[0];
    Bmseting form(m_shell, 1, 2);
    form.setMessageHook([this](const QString& m) { m_messages << m; });
    EXPECT_EQ(form.shownSettings(), readBeamFile(project, 1)[1].settings);

    form.field("MomFiTxt")->setText("0.85");
    form.field("FACDEADL", 1)->setText("1.1");
    ASSERT_TRUE(form.save()) << m_messages.join('\n').toStdString();
    const BeamRecord beam = readBeamFile(project, 1)[1];
    EXPECT_EQ(beam.number, 2);
    EXPECT_EQ(beam.settings.MomFiTxt, 0.85f);
    EXPECT_EQ(beam.settings.FACDEADL[1], 1.1f);
    EXPECT_EQ(readBeamFile(project, 1)[0], other);
    EXPECT_EQ(test::readBytes(file()), defaults);
}

} // namespace
} // namespace orvak::beams::forms
