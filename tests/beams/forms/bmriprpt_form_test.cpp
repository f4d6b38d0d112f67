// The beam reports form on the demo project: the message when there is no report, the
// listings once the floor is designed, a report document shown as text, the notes saved.
#include "beams/forms/bmriprpt_form.h"

#include <QComboBox>
#include <QPlainTextEdit>

#include "bars/bar_tables.h"
#include "core/codepage.h"
#include "jobs/beam_design_job.h"
#include "ui/shell_fixture.h"
#include "ui/text_viewer.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

QString shownText(QWidget* viewer) {
    auto* text = viewer ? viewer->findChild<QPlainTextEdit*>() : nullptr;
    return text ? text->toPlainText() : QString();
}

class BmRipRptTest : public test::FormFixture {};

TEST_F(BmRipRptTest, ListingsReportAndNotes) {
    // The form asks nothing: only its messages are recorded.
    auto form = std::make_unique<BmRipRpt>(m_shell);
    form->setMessageHook([this](const QString& m) { m_messages << m; });
    ASSERT_EQ(form->floorCombo()->count(), 2);
    ASSERT_EQ(form->beamCombo()->count(), 4); // the first floor's beams
    EXPECT_EQ(form->beamFile(".Analy2").filename(), "F1-B1-A_1.Analy2");

    // Nothing designed yet: the listing and the report say so, and nothing opens.
    EXPECT_EQ(form->showReport(), nullptr);
    EXPECT_EQ(form->showListing(), nullptr);
    ASSERT_EQ(m_messages.size(), 2);
    EXPECT_EQ(m_messages[0], "Sorry, no file is prepared yet !");

    const fs::path project = m_shell.projectPath();
    jobs::designBeams(project, jobs::chooseBeams(project, {1, 0}, core::CodePage::Windows1252),
                      bars::builtInBarProperties(), 3);
    form->listingCombo()->setCurrentIndex(2);
    EXPECT_TRUE(shownText(form->showListing()).startsWith("FLEXURAL DESIGN"));

    // A report document written by a word processor reads as its text.
    test::writeBytes(form->beamFile(".rtf"),
                     "{\\rtf1\\ansi{\\fonttbl{\\f0 Courier New;}}\\f0  ==========  B1-A  "
                     "========== \\par Fc =   250   (kg/cm^2)\\par}");
    EXPECT_EQ(shownText(form->showReport()),
              " ==========  B1-A  ========== \nFc =   250   (kg/cm^2)\n");

    // The notes are saved with CR LF lines, crash-safely.
    QPlainTextEdit* notes = form->editNotes();
    ASSERT_NE(notes, nullptr);
    notes->setPlainText("Checked by A.\nSpans verified.");
    ASSERT_TRUE(form->saveNotes());
    EXPECT_EQ(test::readBytes(project / "Report.txt"), "Checked by A.\r\nSpans verified.");
}

} // namespace
} // namespace orvak::beams::forms
