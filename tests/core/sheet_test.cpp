// The sheet writer: formula lines, rows and headings, CR LF in the project's code page, safe
// base names, and sets of files saved together.
#include "core/sheet.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "core/output_batch.h"
#include "support/temp_dir.h"

namespace orvak::core {
namespace {

namespace fs = std::filesystem;

TEST(Sheet, FormulaRowsAndHeadingsInTheCodePage) {
    Sheet s(CodePage::Windows1252);
    s.heading("COLUMN DESIGN", '=');
    // The formula text as it stands (its own "^" and "*" are not mask characters), the value
    // through its mask, the unit; a compact value keeps one blank. 15100 × 15.8113883 =
    // 237,170.82 + 1,581.14 = 238,751.96.
    s.formula("Ec  = 15100 * Sqr(Fc)=", "#########.##", 15100.0 * 15.811388300841896, " (kg/cm2)");
    s.formula("Ig =(1 / 12) * B * H ^ 3 =", "##############.##", 540000.0, {},
              Sheet::Value::Compact);
    s.row("### ####.## ####.##", {1.0, 12.345, -0.004});
    s.text("Fc = ").value("####", 250.0).label(" kg/cm²").end();
    EXPECT_EQ(s.str(), "COLUMN DESIGN\n"
                       "=============\n"
                       "Ec  = 15100 * Sqr(Fc)=   238751.96 (kg/cm2)\n"
                       "Ig =(1 / 12) * B * H ^ 3 = 540000.00\n"
                       "  1   12.35    0.00\n"
                       "Fc =  250 kg/cm\xB2\n");
    EXPECT_EQ(s.bytes().substr(0, 15), "COLUMN DESIGN\r\n");
    EXPECT_EQ(s.bytes().size(), s.str().size() + 6); // six lines, six CR
    // Hebrew projects keep their single-byte page: alef is 0xE0 in Windows-1255.
    Sheet h(CodePage::Windows1255);
    h.label("\xD7\x90").end();
    EXPECT_EQ(h.bytes(), "\xE0\r\n");
}

TEST(Sheet, BaseNamesStayInsideTheProjectFolder) {
    EXPECT_EQ(sheetBaseName("ClGrp_Gr-C1"), "ClGrp_Gr-C1");
    EXPECT_EQ(sheetBaseName("FtGrp_../../etc/x"), "FtGrp_.._.._etc_x");
    EXPECT_EQ(sheetBaseName("a\\b:c*d?e\"f<g>h|i\tj"), "a_b_c_d_e_f_g_h_i_j");
    EXPECT_EQ(sheetBaseName(".."), "_");
    EXPECT_EQ(sheetBaseName(""), "_");
    for (const char* name : {"..", "../..", "/abs", "C:\\x", "..\\up"}) {
        const fs::path p = fs::path("/p/job.prj") / sheetBaseName(name);
        EXPECT_EQ(p.parent_path(), fs::path("/p/job.prj")) << name;
    }
}

TEST(OutputSets, NothingChangesUnlessEveryFileOfTheSetCanBeWritten) {
    test::TempDir dir;
    test::writeBytes(dir.path() / "A.Analy", "old A");
    fs::create_directory(dir.path() / "B.Analy"); // a folder where a sheet goes
    const OutputFile set[] = {{dir.path() / "A.Analy", "new A"}, {dir.path() / "B.Analy", "B"}};
    EXPECT_THROW(saveTogether(set), FileError);
    EXPECT_EQ(test::readBytes(dir.path() / "A.Analy"), "old A");

    // A batch of a run: nothing is in place before commit(), everything after it; a batch
    // dropped without commit() leaves no temporary behind.
    {
        OutputBatch batch;
        const OutputFile first[] = {{dir.path() / "A.Analy", "run A"}};
        batch.stage(first);
        EXPECT_EQ(test::readBytes(dir.path() / "A.Analy"), "old A");
        const OutputFile second[] = {{dir.path() / "C.Analy", "run C"}};
        batch.stage(second);
        EXPECT_EQ(batch.commit(),
                  (std::vector<fs::path>{dir.path() / "A.Analy", dir.path() / "C.Analy"}));
    }
    EXPECT_EQ(test::readBytes(dir.path() / "A.Analy"), "run A");
    {
        OutputBatch dropped;
        const OutputFile files[] = {{dir.path() / "D.Analy", "D"}};
        dropped.stage(files);
    }
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir.path())) {
        ++entries;
    }
    EXPECT_EQ(entries, 3u); // A, B (the folder) and C: no D, no temporary
}

} // namespace
} // namespace orvak::core
