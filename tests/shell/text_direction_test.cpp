// Tests of the Hebrew text operations: run reversal for left-to-right devices and the
// Windows-to-DOS code page conversion of a text file, including its "@" headings.
#include "shell/text_direction.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

namespace fs = std::filesystem;

// Windows-1255 letters alef, bet, gimel, dalet (224..227).
const std::string kX = "\xE0", kY = "\xE1", kZ = "\xE2", kW = "\xE3";

TEST(TextDirection, TextWithoutHebrewLettersIsUnchanged) {
    for (const std::string text : {"", "plain 123, (x)", "\xDF\xFB boundaries 223 and 251"}) {
        EXPECT_EQ(ReverseHebInStrng(text, ""), text);
    }
}

TEST(TextDirection, OneRunSpansFromTheFirstToTheLastHebrewLetter) {
    // "abc" & x y z & " 12" & w: the span x..w is reversed whole, "abc" stays in front.
    const std::string text = "abc" + kX + kY + kZ + " 12" + kW;
    const std::string expected = "abc" + kW + "21 " + kZ + kY + kX;
    EXPECT_EQ(ReverseHebInStrng(text, ""), expected);
    // A Linux project path lies in none of the tested ranges either.
    EXPECT_EQ(ReverseHebInStrng(text, "/home/dana/Projects/tower.prj"), expected);
    // Characters after the last letter never move; 223 and 251 are no letters.
    EXPECT_EQ(ReverseHebInStrng("\xDF" + kX + kY + "\xFB", ""), "\xDF" + kY + kX + "\xFB");
}

TEST(TextDirection, APathInATestedRangeMakesEveryOtherNonBlankEndARun) {
    // "50" lies between "43" and "62" in text order, so "a" ends the run x y, a blank does not.
    EXPECT_EQ(ReverseHebInStrng(kX + kY + "a" + kZ + " " + kW, "50"),
              kY + kX + "a" + kW + " " + kZ);
}

class TextDirectionConversion : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path project() const { return m_dir / "job.prj"; }
    void SetUp() override { fs::create_directory(project()); }
};

TEST_F(TextDirectionConversion, MovesHebrewLettersToDosCodesAndReversesHeadingsSegmentBySegment) {
    const fs::path file = project() / "Report.txt";
    test::writeBytes(file, "\xE0\xFA\xDF\xFB abc\r\n"
                           "@1:" +
                               kX + " 2 " + kY + "@2:" + kZ +
                               " x\n"
                               "last");
    test::writeBytes(project() / "TMP1", "stale scratch");
    ConvWinCharToDos(file, project(), project().string());
    // 224 -> 128, 250 -> 154, 223 and 251 unchanged. In the "@" line each segment is put in
    // visual order on its own ("@1:" and "@2:" stay), then its letters are converted.
    EXPECT_EQ(test::readBytes(file), "\x80\x9A\xDF\xFB abc\r\n"
                                     "@1:\x81 2 \x80@2:\x82 x\r\n"
                                     "last\r\n");
    EXPECT_FALSE(fs::exists(project() / "TMP1"));
}

TEST_F(TextDirectionConversion, BlankOrMissingFileNamesDoNothing) {
    test::writeBytes(project() / "TMP1", "kept");
    ConvWinCharToDos("   ", project(), "");
    ConvWinCharToDos(project() / "none.txt", project(), "");
    EXPECT_EQ(test::readBytes(project() / "TMP1"), "kept");
    EXPECT_FALSE(fs::exists(project() / "none.txt"));
}

} // namespace
} // namespace orvak::shell
