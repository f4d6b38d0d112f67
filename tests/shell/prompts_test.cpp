// Tests of the prompt table: the language list, the choice of prompt file and its English
// fallback, the line range read, and the "@k:" headings of a prompt line.
#include "shell/prompts.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

namespace fs = std::filesystem;

std::string numberedLines(int count, const char* end) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += "line " + std::to_string(i) + end;
    }
    return text;
}

class Prompts : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(m_dir / "English");
        fs::create_directories(m_dir / "Hebrew");
    }
    test::TempDir m_dir;
};

TEST_F(Prompts, ReadsTheLinesFromFirstLineAsFarAsTheFileGoes) {
    test::writeBytes(m_dir / "English" / "GLBLPRME.TXT", numberedLines(100, "\r\n"));
    const PromptList p = readPrompts(m_dir.path(), "English", "GLBLPRM", 49, 120);
    ASSERT_EQ(p.count(), 52u); // lines 49..100
    EXPECT_EQ(p(1), "line 49");
    EXPECT_EQ(p(52), "line 100");
    EXPECT_EQ(p(53), "");

    const PromptList first = readPrompts(m_dir.path(), "English", "GLBLPRM", 2, 3);
    EXPECT_EQ(first.lines(), (std::vector<std::string>{"line 2", "line 3", "line 4"}));
}

TEST_F(Prompts, LanguageIsTrimmedAndCaseBlindAndPicksTheFileLetter) {
    test::writeBytes(m_dir / "Hebrew" / "GNRLH.TXT", "head\n\xE0\xE1\xE2 \xF9\xEC\xE5\xED\n");
    const PromptList p = readPrompts(m_dir.path(), "hebrew ", "GNRL", 2, 30);
    ASSERT_EQ(p.count(), 1u);
    EXPECT_EQ(p(1), "\xE0\xE1\xE2 \xF9\xEC\xE5\xED"); // bytes above 127 kept as they are
    EXPECT_EQ(promptFileLetter(" ARABIC"), 'A');
    EXPECT_EQ(promptFileLetter("French"), '\0');
}

TEST_F(Prompts, MissingLanguageFileFallsBackToEnglishAndUnknownLanguagesReadNothing) {
    test::writeBytes(m_dir / "English" / "ProjdataE.TXT", "Project data\r\nTitle\r\n");
    EXPECT_EQ(readPrompts(m_dir.path(), "Hebrew", "Projdata", 1, 5).lines(),
              (std::vector<std::string>{"Project data", "Title"}));
    EXPECT_TRUE(readPrompts(m_dir.path(), "French", "Projdata", 1, 5).empty());
    EXPECT_TRUE(readPrompts(m_dir.path(), "Hebrew", "NoSuchForm", 1, 5).empty());
}

TEST_F(Prompts, GetFallsBackToTheFormsOwnTextForMissingOrBlankPrompts) {
    const PromptList p({"Save", "   "});
    EXPECT_EQ(p.get(1, "x"), "Save");
    EXPECT_EQ(p.get(2, "Cancel"), "Cancel");
    EXPECT_EQ(p.get(9, "Help"), "Help");
}

TEST_F(Prompts, LanguageListIsRightTrimmedAndSkipsEmptyLines) {
    fs::create_directory(m_dir / "DRIVERS");
    EXPECT_TRUE(readLanguageList(m_dir / "DRIVERS").empty());
    test::writeBytes(m_dir / "DRIVERS" / "language.dat", "English  \r\n\r\n  \r\nHebrew\r\n");
    EXPECT_EQ(readLanguageList(m_dir / "DRIVERS"), (std::vector<std::string>{"English", "Hebrew"}));
}

TEST_F(Prompts, KeysAreMatchedWithTheirColon) {
    const std::string line = "@1:Span  @2:Load@12:Twelve@3:";
    EXPECT_EQ(placeholderText(line, 1), "Span");
    EXPECT_EQ(placeholderText(line, 2), "Load");
    EXPECT_EQ(placeholderText(line, 12), "Twelve");
    EXPECT_EQ(placeholderText(line, 3), "");
    EXPECT_EQ(placeholderText(line, 4), "");
}

} // namespace
} // namespace orvak::shell
