// The analysis form on the demo project: the diagrams of a case against the closed forms of a
// two-span beam, an unstable beam shown with the engine's sentence only, and "Finish all
// cases" writing the listings the command line writes.
#include "beams/forms/bmanalysis_form.h"

#include <QComboBox>
#include <QTableWidget>

#include "beams/beam_job.h"
#include "beams/forms/beam_diagram.h"
#include "jobs/beam_design_job.h"
#include "ui/shell_fixture.h"

namespace orvak::beams::forms {
namespace {

namespace fs = std::filesystem;

class BmAnalysisTest : public test::FormFixture {
protected:
    /// Appends to floor 1 a beam of two 6 m spans of 30 × 60 under 3 t/m of dead load only,
    /// Fc 250, dead-load factor 1.4, with the given support codes; returns its number.
    int addTwoSpanBeam(std::array<std::int16_t, 3> codes) {
        const fs::path project = m_shell.projectPath();
        std::vector<BeamRecord> beams = readBeamFile(project, 1);
        BeamRecord b = beams.front();
        b.name = "TWO";
        b.number = static_cast<std::int16_t>(beams.size() + 1);
        b.fc = 250.0f;
        b.caseScheme = 0;
        b.settings.FACDEADL = {1.4f, 1.4f};
        StoredSpan span;
        span.sectionKind = 2;
        span.dims = {0, 0, 30, 0, 60};
        span.lengthM = 6.0f;
        span.loads[loadIndex(LoadKind::Uniform)] = {true, 3.0f, 0.0f, 0.0f, 0.0f, 0.0f};
        b.spans = {span, span};
        b.supports.assign(3, StoredSupport{});
        for (std::size_t j = 0; j < 3; ++j) {
            b.supports[j].code = codes[j];
        }
        beams.push_back(b);
        writeBeamFile(project, 1, beams);
        return b.number;
    }

    static const DiagramLabel* labelAt(const BeamDiagram& d, double xCm) {
        for (const DiagramLabel& l : d.curves().front().labels) {
            if (std::abs(l.xCm - xCm) < 1e-6) {
                return &l;
            }
        }
        return nullptr;
    }
};

TEST_F(BmAnalysisTest, ACaseShowsTheMomentsAndShearsOfTheClosedFormsAndTheElasticLine) {
    const int number = addTwoSpanBeam({2, 2, 2});
    BmAnalysis form(m_shell, 1, number);
    form.setMessageHook([this](const QString& m) { m_messages << m; });
    // No scheme stored yet: the full live-load pattern.
    EXPECT_EQ(form.schemeCombo()->currentData().toInt(), kDefaultCaseScheme);
    ASSERT_EQ(form.currentCase(), 0) << form.messageText().toStdString();
    EXPECT_TRUE(form.caseText().startsWith("Case 1 of")) << form.caseText().toStdString();

    // Case 1, every span under w = 1.4 × 3 = 4.2 t/m, L = 6 m:
    // middle support  -wL²/8     = -4.2 × 36 / 8       = -18.90 t·m,
    // span maximum    9wL²/128   =  4.2 × 36 × 9 / 128 =  10.63 t·m at 3L/8 = 2.25 m,
    // shears          3wL/8      =  9.45 t at the outer ends, 5wL/8 = 15.75 t at the middle.
    const BeamDiagram& moment = *form.momentDiagram();
    ASSERT_EQ(moment.curves().size(), 1u);
    const DiagramLabel* support = labelAt(moment, 600.0);
    ASSERT_NE(support, nullptr);
    EXPECT_EQ(support->text, "-18.90");
    const DiagramLabel* field = labelAt(moment, 225.0);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text, "10.63");
    const BeamDiagram& shear = *form.shearDiagram();
    ASSERT_EQ(shear.curves().size(), 1u);
    QStringList shears;
    for (const DiagramLabel& l : shear.curves().front().labels) {
        shears << l.text;
    }
    EXPECT_EQ(shears, QStringList({"9.45", "-15.75", "15.75", "-9.45"}));

    // The elastic line of the dead load: two equal spans, wL⁴ / (185 EI) at 0.42 L, with
    // w = 30 kg/cm, E = 15100 √250 = 238,752 kg/cm², I = 30 × 60³ / 12 = 540,000 cm⁴:
    // 30 × 600⁴ / (185 × 238,752 × 540,000) = 0.1630 cm = 1.63 mm; no live load.
    const BeamDiagram& elastic = *form.deflectionDiagram();
    EXPECT_EQ(elastic.heading(), "Elastic");
    EXPECT_EQ(elastic.axisCaption(), "D.F(mm)");
    ASSERT_EQ(elastic.curves().size(), 3u);
    EXPECT_EQ(elastic.curves()[0].name, "D.L");
    EXPECT_EQ(elastic.curves()[1].name, "L.L");
    EXPECT_EQ(elastic.curves()[2].name, "D.L+L.L");
    ASSERT_EQ(form.deflectionTable()->rowCount(), 2);
    EXPECT_NEAR(form.deflectionTable()->item(0, 1)->text().toDouble(), 1.63, 0.011);
    EXPECT_EQ(form.deflectionTable()->item(1, 2)->text(), "0.00");

    ASSERT_TRUE(form.nextCase());
    EXPECT_TRUE(form.caseText().startsWith("Case 2 of")) << form.caseText().toStdString();
    // The case alone as a preview: a row per point of each span, nothing written.
    const fs::path listing = m_shell.projectPath() / "F1-TWO_5.Analy2";
    ASSERT_TRUE(form.designThisCase());
    EXPECT_EQ(form.caseDesignTable()->rowCount(), 6);
    EXPECT_FALSE(fs::exists(listing));
    EXPECT_TRUE(m_messages.isEmpty()) << m_messages.join('\n').toStdString();
}

TEST_F(BmAnalysisTest, AnUnstableBeamShowsTheEnginesSentenceAndNoDiagrams) {
    // One pinned support holds nothing against turning.
    const int number = addTwoSpanBeam({2, 0, 0});
    BmAnalysis form(m_shell, 1, number);
    form.setMessageHook([this](const QString& m) { m_messages << m; });
    // The stored beam's checks already name it, in a clause the form makes a sentence.
    const BeamRecord record = readBeamFile(m_shell.projectPath(), 1).back();
    const std::string problem = validateBeam(record);
    ASSERT_FALSE(problem.empty());
    EXPECT_EQ(form.messageText().toLower().toStdString(), problem + ".");
    EXPECT_EQ(form.currentCase(), -1);
    EXPECT_TRUE(form.momentDiagram()->curves().empty());
    EXPECT_TRUE(form.deflectionDiagram()->curves().empty());
    EXPECT_FALSE(form.nextCase());
    EXPECT_FALSE(form.finishAllCases());
}

TEST_F(BmAnalysisTest, FinishingAllCasesWritesWhatTheCommandLineWrites) {
    const fs::path project = m_shell.projectPath();
    BmAnalysis form(m_shell, 1, 1);
    form.setMessageHook([this](const QString& m) { m_messages << m; });
    form.schemeCombo()->setCurrentIndex(1); // scheme 2
    ASSERT_TRUE(form.finishAllCases()) << m_messages.join('\n').toStdString();
    EXPECT_EQ(form.currentCase(), -1);
    EXPECT_EQ(form.momentDiagram()->curves().size(), 2u); // the envelope: max and min
    EXPECT_EQ(readBeamFile(project, 1).front().caseScheme, 2);

    const BeamRecord beam = readBeamFile(project, 1).front();
    std::vector<std::string> written;
    for (const std::string_view ext :
         {kShearListingExt, kAnalysisListingExt, kFlexureListingExt, kDeflectionListingExt}) {
        written.push_back(test::readBytes(project / (listingBaseName(beam) + std::string(ext))));
        EXPECT_FALSE(written.back().empty()) << ext;
    }
    EXPECT_NE(written[1].find(std::string(caseSchemeName(2))), std::string::npos);

    // The same beam designed again as `orvak-cli design` does it, under the same scheme.
    jobs::designStoredBeam(project, m_shell.generalFolder(), 1, 1, 2);
    std::size_t k = 0;
    for (const std::string_view ext :
         {kShearListingExt, kAnalysisListingExt, kFlexureListingExt, kDeflectionListingExt}) {
        EXPECT_EQ(test::readBytes(project / (listingBaseName(beam) + std::string(ext))),
                  written[k++])
            << ext;
    }
}

} // namespace
} // namespace orvak::beams::forms
