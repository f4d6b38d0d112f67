// The beam form on the demo project: edits through the panels reach the record on disk (one
// span, or every span), a refused value writes nothing, undo brings back the stored beam, and
// beams and spans are added, copied and deleted.
#include "beams/forms/bmdesign_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "ui/shell_fixture.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

class BmDesignTest : public test::FormFixture {
protected:
    void set(const BmDesign& form, const char* field, const char* text) {
        auto* edit = form.findChild<QLineEdit*>(QString::fromLatin1(field));
        ASSERT_NE(edit, nullptr) << field;
        edit->setText(QString::fromLatin1(text));
    }
    BeamRecord stored(int number) const {
        for (const BeamRecord& b : readBeamFile(m_shell.projectPath(), 1)) {
            if (b.number == number) {
                return b;
            }
        }
        ADD_FAILURE() << "no beam " << number;
        return {};
    }
    fs::path beamFile() const { return m_shell.projectPath() / "BEAMS.1"; }
};

TEST_F(BmDesignTest, PanelEditsReachTheRecordAndUndoBringsBackTheStoredBeam) {
    auto form = open<BmDesign>();
    ASSERT_TRUE(form->chooseBeam(1, 1));
    const std::string original = test::readBytes(beamFile());
    const BeamRecord before = stored(1);
    ASSERT_EQ(before.spans.size(), 3u); // the demo's B1-A: three T spans, 100/15 30/60

    // Span 2 alone: a wider flange and web and a longer span.
    form->setMode(BmDesign::Mode::Span);
    form->select(1);
    set(*form, "TBBIGTXT", "120");
    set(*form, "TBSMALTXT", "35");
    set(*form, "Spnltxt", "6.5");
    ASSERT_TRUE(form->changeSpan()) << m_messages.join('\n').toStdString();
    BeamRecord now = stored(1);
    EXPECT_EQ(now.spans[1].dims[0], 120.0f);
    EXPECT_EQ(now.spans[1].dims[2], 35.0f);
    EXPECT_EQ(now.spans[1].lengthM, 6.5f);
    EXPECT_EQ(now.spans[0], before.spans[0]);
    EXPECT_EQ(now.spans[2], before.spans[2]);

    // Applied to all: the section reaches every span, the lengths stay their own.
    form->findChild<QCheckBox*>("ChkSALL")->setChecked(true);
    set(*form, "THBIGTXT", "70");
    ASSERT_TRUE(form->changeSpan());
    now = stored(1);
    for (const StoredSpan& s : now.spans) {
        EXPECT_EQ(s.dims[4], 70.0f);
        EXPECT_EQ(s.dims[0], 120.0f);
    }
    EXPECT_EQ(now.spans[0].lengthM, 5.0f);
    EXPECT_EQ(now.spans[1].lengthM, 6.5f);
    EXPECT_EQ(now.spans[2].lengthM, 5.0f);

    // A span of 60 m is beyond the field's range: told, and the file keeps every byte.
    form->findChild<QCheckBox*>("ChkSALL")->setChecked(false);
    const std::string kept = test::readBytes(beamFile());
    set(*form, "Spnltxt", "60");
    m_messages.clear();
    EXPECT_FALSE(form->changeSpan());
    ASSERT_EQ(m_messages.size(), 1);
    EXPECT_TRUE(m_messages[0].contains("60")) << m_messages[0].toStdString();
    EXPECT_EQ(test::readBytes(beamFile()), kept);

    // An upward point load on span 1, and the first support fixed.
    form->setMode(BmDesign::Mode::Load);
    form->select(0);
    form->findChild<QComboBox*>("LdKindCombo")->setCurrentIndex(3);
    form->findChild<QCheckBox*>("LdOnChk")->setChecked(true);
    set(*form, "lvtxt", "-2");
    set(*form, "LLvTxt", "0");
    set(*form, "LdStartTxt", "1.5");
    ASSERT_TRUE(form->changeLoads()) << m_messages.join('\n').toStdString();
    form->setMode(BmDesign::Mode::Joint);
    form->select(0);
    form->findChild<QComboBox*>("SupCombo")->setCurrentIndex(2);
    ASSERT_TRUE(form->changeJoint());
    now = stored(1);
    const StoredLoad& point = now.spans[0].loads[loadIndex(LoadKind::Concentrated)];
    EXPECT_TRUE(point.present);
    EXPECT_EQ(point.dead, -2.0f);
    EXPECT_EQ(point.startM, 1.5f);
    EXPECT_EQ(now.supports[0].code, 2);
    EXPECT_EQ(now.supports[0].second, 1);

    // Four edits, four undos: the file as it was, byte for byte; a fifth has nothing to undo.
    EXPECT_EQ(form->undoCount(), 4u);
    for (int k = 0; k < 4; ++k) {
        ASSERT_TRUE(form->undo());
    }
    EXPECT_EQ(test::readBytes(beamFile()), original);
    EXPECT_FALSE(form->undo());

    // At least the last twenty edits are kept.
    form->setMode(BmDesign::Mode::Span);
    for (int k = 0; k < 25; ++k) {
        set(*form, "Spnltxt", std::to_string(4 + k * 0.1).c_str());
        ASSERT_TRUE(form->changeSpan());
    }
    EXPECT_GE(form->undoCount(), 20u);
}

TEST_F(BmDesignTest, BeamsAndSpansAreAddedCopiedAndDeleted) {
    auto form = open<BmDesign>();
    ASSERT_TRUE(form->chooseBeam(1, 4));
    const std::size_t beamsBefore = readBeamFile(m_shell.projectPath(), 1).size();

    ASSERT_TRUE(form->newBeam()) << m_messages.join('\n').toStdString();
    const int fresh = form->beam()->number;
    EXPECT_EQ(readBeamFile(m_shell.projectPath(), 1).size(), beamsBefore + 1);
    EXPECT_EQ(stored(fresh).spans.size(), 1u);
    EXPECT_EQ(stored(fresh).fc, stored(4).fc); // cast of the floor's concrete

    ASSERT_TRUE(form->addSpan());
    ASSERT_TRUE(form->addSpan());
    EXPECT_EQ(stored(fresh).spans.size(), 3u);
    EXPECT_EQ(stored(fresh).supports.size(), 4u);
    form->select(0);
    ASSERT_TRUE(form->removeSpan());
    EXPECT_EQ(stored(fresh).spans.size(), 2u);

    ASSERT_TRUE(form->copyBeam());
    const int copy = form->beam()->number;
    EXPECT_NE(copy, fresh);
    EXPECT_EQ(stored(copy).spans, stored(fresh).spans);

    // Deleting asks first; No keeps the beam, Yes takes it out and the others keep their numbers.
    m_answer = QMessageBox::No;
    EXPECT_FALSE(form->deleteBeam());
    EXPECT_EQ(readBeamFile(m_shell.projectPath(), 1).size(), beamsBefore + 2);
    m_answer = QMessageBox::Yes;
    ASSERT_TRUE(form->chooseBeam(1, fresh));
    ASSERT_TRUE(form->deleteBeam());
    EXPECT_EQ(m_questions.size(), 2);
    const std::vector<BeamRecord> left = readBeamFile(m_shell.projectPath(), 1);
    ASSERT_EQ(left.size(), beamsBefore + 1);
    EXPECT_EQ(left.back().number, copy);
}

} // namespace
} // namespace orvak::beams::forms
