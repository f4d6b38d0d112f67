// Tests of GEN.CST: every field at its byte offset, blank padding and the marker, the sheet
// name rule, and records that are missing, short, unmarked, garbled or longer than one record.
#include "shell/project_record.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

namespace fs = std::filesystem;

// Offsets summed by hand from the field widths in order: 1, 2, 3, 8x30, 2x10, 3x30, 2x12,
// 8x4, 99, 2, 30, 2, 30, 4, 20, 2, 10.
constexpr std::size_t kCode = 1, kUnits = 3, kTitle1 = 6, kTitle8 = 216, kShort1 = 246,
                      kShort2 = 256, kText9 = 266, kText11 = 326, kCode1 = 356, kCode2 = 368,
                      kValue1 = 380, kValue8 = 408, kWork = 412, kChoice = 511, kText12 = 513,
                      kCount = 543, kDate = 545, kValue = 575, kOutName = 579, kOutNumber = 599,
                      kSheet = 601;

std::string at(const std::string& bytes, std::size_t offset, std::size_t width) {
    return bytes.substr(offset, width);
}

std::string padded(const std::string& text, std::size_t width) {
    return text + std::string(width - text.size(), ' ');
}

float singleAt(const std::string& bytes, std::size_t offset) {
    float v;
    std::memcpy(&v, bytes.data() + offset, 4); // the test host is little-endian like the file
    return v;
}

int int16At(const std::string& bytes, std::size_t offset) {
    return static_cast<std::int16_t>(static_cast<unsigned char>(bytes[offset]) |
                                     (static_cast<unsigned char>(bytes[offset + 1]) << 8));
}

ProjectRecord sampleRecord() {
    ProjectRecord r;
    r.projectCode = -2;
    r.unitsText = "cm";
    r.titleLines[0] = "Demo office building";
    r.titleLines[7] = "last title";
    r.shortTexts = {"S1", "S2"};
    r.texts9to11[0] = "text nine";
    r.texts9to11[2] = "text eleven";
    r.codes = {"CODE-A", "CODE-B"};
    r.values[0] = 1.5f;
    r.values[7] = -8.25f;
    r.workFolder = "  c:\\work\\Job ";
    r.choice = 2;
    r.text12 = "twelve";
    r.count = 199;
    r.dateText = "15-03-2024";
    r.value = 999.99f;
    r.outputName = "Printer";
    r.outputNumber = 3;
    r.sheetName = "Sheet2";
    return r;
}

class ProjectRecordFile : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path genCst() const { return m_dir / "GEN.CST"; }
};

TEST_F(ProjectRecordFile, WritesEveryFieldAtItsOffset) {
    writeProjectRecord(m_dir.path(), sampleRecord());
    const std::string b = test::readBytes(genCst());
    ASSERT_EQ(b.size(), 611u);
    EXPECT_EQ(b[0], '1');
    EXPECT_EQ(int16At(b, kCode), -2);
    EXPECT_EQ(at(b, kUnits, 3), "cm ");
    EXPECT_EQ(at(b, kTitle1, 30), padded("Demo office building", 30));
    EXPECT_EQ(at(b, kTitle1 + 30, 30), std::string(30, ' '));
    EXPECT_EQ(at(b, kTitle8, 30), padded("last title", 30));
    EXPECT_EQ(at(b, kShort1, 10), padded("S1", 10));
    EXPECT_EQ(at(b, kShort2, 10), padded("S2", 10));
    EXPECT_EQ(at(b, kText9, 30), padded("text nine", 30));
    EXPECT_EQ(at(b, kText11, 30), padded("text eleven", 30));
    EXPECT_EQ(at(b, kCode1, 12), padded("CODE-A", 12));
    EXPECT_EQ(at(b, kCode2, 12), padded("CODE-B", 12));
    EXPECT_EQ(singleAt(b, kValue1), 1.5f);
    EXPECT_EQ(singleAt(b, kValue8), -8.25f);
    EXPECT_EQ(at(b, kWork, 99), padded("C:\\WORK\\JOB", 99)); // trimmed and upper-cased
    EXPECT_EQ(int16At(b, kChoice), 2);
    EXPECT_EQ(at(b, kText12, 30), padded("twelve", 30));
    EXPECT_EQ(int16At(b, kCount), 199);
    EXPECT_EQ(at(b, kDate, 30), padded("15-03-2024", 30));
    EXPECT_EQ(singleAt(b, kValue), 999.99f);
    EXPECT_EQ(at(b, kOutName, 20), padded("Printer", 20));
    EXPECT_EQ(int16At(b, kOutNumber), 3);
    EXPECT_EQ(at(b, kSheet, 10), padded("Sheet2", 10));

    const ProjectRecord back = readProjectRecord(m_dir.path());
    EXPECT_TRUE(back.valid);
    EXPECT_EQ(back.workFolder, "C:\\WORK\\JOB");
    EXPECT_EQ(back.values[7], -8.25f);
}

TEST_F(ProjectRecordFile, MissingShortUnmarkedOrGarbledFilesGiveABlankRecordAndStayAsTheyWere) {
    EXPECT_FALSE(readProjectRecord(m_dir.path()).valid);
    EXPECT_FALSE(fs::exists(genCst())); // reading never creates the file

    std::string full(611, ' ');
    full[0] = '1';
    const std::string shortFile = full.substr(0, 610);
    std::string unmarked = full;
    unmarked[0] = ' ';
    std::string garbage(611, '\0');
    for (std::size_t i = 0; i < garbage.size(); ++i) {
        garbage[i] = static_cast<char>((i * 37 + 11) % 256);
    }
    garbage[0] = 'X';
    for (const std::string& content : {std::string(), shortFile, unmarked, garbage}) {
        test::writeBytes(genCst(), content);
        const ProjectRecord r = readProjectRecord(m_dir.path());
        EXPECT_FALSE(r.valid);
        EXPECT_TRUE(r.titleLines[0].empty());
        EXPECT_EQ(r.sheetName, "Sheet1");
        EXPECT_EQ(test::readBytes(genCst()), content) << "size " << content.size();
    }
}

TEST_F(ProjectRecordFile, ABlankSheetNameIsWrittenBackAsSheet1AndBytesAfterRecordOneStay) {
    ProjectRecord r = sampleRecord();
    r.sheetName.clear();
    writeProjectRecord(m_dir.path(), r);
    const std::string tail(100, 'Z');
    test::writeBytes(genCst(), test::readBytes(genCst()) + tail);

    const ProjectRecord back = readProjectRecord(m_dir.path());
    EXPECT_TRUE(back.valid);
    EXPECT_EQ(back.sheetName, "Sheet1");
    EXPECT_EQ(back.titleLines[0], "Demo office building");
    const std::string b = test::readBytes(genCst());
    ASSERT_EQ(b.size(), 711u);
    EXPECT_EQ(at(b, kSheet, 10), "Sheet1    ");
    EXPECT_EQ(b.substr(611), tail);
}

} // namespace
} // namespace orvak::shell
