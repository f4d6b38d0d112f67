// Tests of SWC and PRJNO: item order, defaults for what a file lacks or garbles, the clamp of
// setting C, the language's text direction, and the exact bytes written.
#include "shell/software_config.h"

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

TEST(SoftwareConfig, ReadsEveryItemInOrder) {
    const auto c = parseSoftwareConfig("first\r\nsecond\r\nthird\r\nHebrew\r\n3\r\n4\r\n2\r\n"
                                       "\"fourth, quoted\"\r\n");
    EXPECT_EQ(c.text1, "first");
    EXPECT_EQ(c.text2, "second");
    EXPECT_EQ(c.text3, "third");
    EXPECT_EQ(c.language, "Hebrew");
    EXPECT_EQ(c.settingA, 3);
    EXPECT_EQ(c.settingB, 4);
    EXPECT_EQ(c.settingC, 2);
    EXPECT_EQ(c.text4, "fourth, quoted");
}

TEST(SoftwareConfig, SettingCIsClampedToOneOrTwo) {
    const std::pair<const char*, int> cases[] = {{"0", 1}, {"5", 2}, {"-3", 1}, {"1", 1}, {"2", 2}};
    for (const auto& [item7, expected] : cases) {
        const auto c = parseSoftwareConfig(std::string("a\nb\nc\nEnglish\n2\n0\n") + item7 + "\n");
        EXPECT_EQ(c.settingC, expected) << "item 7 = " << item7;
    }
}

TEST(SoftwareConfig, OnlyEnglishInAnyCaseIsLeftToRight) {
    const std::pair<const char*, bool> cases[] = {{"english", false},   {"ENGLISH", false},
                                                  {" English ", false}, {"Hebrew", true},
                                                  {"hebrew ", true},    {"Arabic", true}};
    for (const auto& [language, rtl] : cases) {
        const auto c = parseSoftwareConfig(std::string("\n\n\n") + language + "\n");
        EXPECT_EQ(c.rightToLeft(), rtl) << language;
    }
}

TEST(SoftwareConfig, ShortEmptyGarbledAndOversizedFilesKeepDefaultsForWhatTheyLack) {
    const SoftwareConfig defaults;
    const auto shortFile = parseSoftwareConfig("only one line");
    EXPECT_EQ(shortFile.text1, "only one line");
    EXPECT_EQ(shortFile.language, "English");
    EXPECT_EQ(shortFile.settingA, 2);
    EXPECT_EQ(shortFile.settingC, 1);

    const auto empty = parseSoftwareConfig("");
    EXPECT_EQ(empty.language, defaults.language);
    EXPECT_FALSE(empty.rightToLeft());

    // Items 5 and 7 hold no number and keep their defaults; a blank language line names none.
    const auto garbled =
        parseSoftwareConfig(std::string("\x01\xff\0x", 4) + "\n\n\n   \nabc\n7\n?\n");
    EXPECT_EQ(garbled.text1, std::string("\x01\xff\0x", 4));
    EXPECT_EQ(garbled.language, "English");
    EXPECT_EQ(garbled.settingA, 2);
    EXPECT_EQ(garbled.settingB, 7);
    EXPECT_EQ(garbled.settingC, 1);

    std::string big = "a\nb\nc\nEnglish\n1\n1\n1\n\"d\"\n";
    big += std::string(100000, 'x');
    EXPECT_EQ(parseSoftwareConfig(big).text4, "d");
}

TEST(SoftwareConfig, WritesTheFileItReads) {
    test::TempDir dir;
    SoftwareConfig c;
    c.text1 = "t1";
    c.language = "Hebrew";
    c.settingA = 5;
    c.text4 = "x\"y";
    writeSoftwareConfig(dir / "SWC", c);
    EXPECT_EQ(test::readBytes(dir / "SWC"), "t1\r\n\r\n\r\nHebrew\r\n5\r\n0\r\n1\r\n\"x'y\"\r\n");
    const auto back = readSoftwareConfig(dir / "SWC");
    EXPECT_EQ(back.language, "Hebrew");
    EXPECT_EQ(back.settingA, 5);
    EXPECT_EQ(back.text4, "x'y"); // a double quote cannot be stored in a quoted string
}

TEST(LastProjectState, WritesFourLinesAndReadsThemBack) {
    LastProjectState s;
    s.projectsFolder = "/home/dana/Projects/";
    s.projectPath = "/home/dana/Projects/tower.prj";
    s.projectSetting2 = 7;
    s.projectText1 = "a, b";
    s.userName = "Dana";
    s.projectSetting4 = -3;
    s.projectValue = 2.5f;
    s.projectSetting5 = 9;
    EXPECT_EQ(formatLastProjectState(s),
              "\"/home/dana/Projects/\",\"/home/dana/Projects/tower.prj\"\r\n"
              "1,7,1,\"a, b\",\"\"\r\n"
              "\"Dana\",1,2\r\n"
              "-3,2.5,9\r\n");
    const auto back = parseLastProjectState(formatLastProjectState(s));
    EXPECT_EQ(back.projectPath, s.projectPath);
    EXPECT_EQ(back.projectText1, "a, b");
    EXPECT_EQ(back.projectValue, 2.5f);
}

TEST(LastProjectState, ShortUnbalancedAndGarbledFilesKeepDefaults) {
    const auto shortFile = parseLastProjectState("\"/p/\",\"/p/a.prj\"\r\n");
    EXPECT_EQ(shortFile.projectPath, "/p/a.prj");
    EXPECT_EQ(shortFile.userName, "USER");
    EXPECT_EQ(shortFile.userSetting2, 2);

    // The unbalanced quote of line 1 ends with its line; line 2 starts the next item.
    const auto unbalanced = parseLastProjectState("\"/p/, still folder\r\n\"/p/b.prj\"\r\n");
    EXPECT_EQ(unbalanced.projectsFolder, "/p/, still folder");
    EXPECT_EQ(unbalanced.projectPath, "/p/b.prj");
    EXPECT_EQ(unbalanced.projectSetting1, 1);

    // Number items that hold no number keep their defaults; the line structure holds.
    const auto garbled =
        parseLastProjectState("\"a\",\"b\"\r\nx,y,z,,\r\n\"u\",q,w\r\n1,big,2\r\n");
    EXPECT_EQ(garbled.projectSetting1, 1);
    EXPECT_EQ(garbled.projectSetting3, 1);
    EXPECT_EQ(garbled.userName, "u");
    EXPECT_EQ(garbled.userSetting1, 1);
    EXPECT_EQ(garbled.userSetting2, 2);
    EXPECT_EQ(garbled.projectSetting4, 1);
    EXPECT_EQ(garbled.projectValue, 0.0f);
    EXPECT_EQ(garbled.projectSetting5, 2);

    // Lines after the thirteenth item are never read.
    const auto oversized = parseLastProjectState("\"/p/\",\"/p/a.prj\"\r\n1,1,1,\"\",\"\"\r\n"
                                                 "\"USER\",1,2\r\n4,0.5,6\r\n" +
                                                 std::string(200000, '9') + "\r\n\"x\"\r\n");
    EXPECT_EQ(oversized.projectSetting5, 6);
    EXPECT_EQ(oversized.projectValue, 0.5f);

    std::string binary(4096, '\0');
    for (std::size_t i = 0; i < binary.size(); ++i) {
        binary[i] = static_cast<char>((i * 131) % 256);
    }
    const auto junk = parseLastProjectState(binary); // must not crash; values are whatever
    EXPECT_LE(junk.projectPath.size(), binary.size());
}

} // namespace
} // namespace orvak::shell
