// Tests of the input-grid field tables: descriptor flags and digit groups, limit strings,
// number display, the key filter of number cells and the range check on leaving a cell.
#include "shell/field_table.h"

#include <gtest/gtest.h>

namespace orvak::shell {
namespace {

// The column table of ten columns: text of width 6, then numbers.
const std::vector<std::string> kColumns{
    "1111111111011111111106.0,01.0,04.1,05.2,03.2,03.1,03.1,03.1,03.1,03.1"};

TEST(FieldTable, DescriptorGivesFlagsDigitsAndDecimalsPerColumn) {
    // Digits and decimals as the table's own description lists them.
    const int digits[] = {6, 1, 4, 5, 3, 3, 3, 3, 3, 3};
    const int decimals[] = {0, 0, 1, 2, 2, 1, 1, 1, 1, 1};
    for (int k = 1; k <= 10; ++k) {
        EXPECT_EQ(accessFlag(1, 1, kColumns, k), 1) << k;
        EXPECT_EQ(kindFlag(1, 1, 10, k, kColumns), k == 1 ? 0 : 1) << k;
        const ColumnDigits d = columnDigits(1, 1, 10, k, kColumns);
        EXPECT_EQ(d.integerDigits, digits[k - 1]) << k;
        EXPECT_EQ(d.decimals, decimals[k - 1]) << k;
    }
    // Nine columns, the first shown only, all numbers; the last comma may be there or not.
    const std::vector<std::string> nine{
        "01111111111111111101.0,03.0,02.2,01.0,01.0,03.0,02.2,01.2,01.2,"};
    EXPECT_EQ(accessFlag(1, 1, nine, 1), 0);
    EXPECT_EQ(accessFlag(1, 1, nine, 2), 1);
    EXPECT_EQ(kindFlag(1, 1, 9, 1, nine), 1);
    EXPECT_EQ(columnDigits(1, 1, 9, 9, nine).integerDigits, 1);
    EXPECT_EQ(columnDigits(1, 1, 9, 9, nine).decimals, 2);
}

TEST(FieldTable, OneFieldFormsAndMissingPartsFallBackToDefaults) {
    EXPECT_EQ(kindFlag(1, 1, 1, 1, {"1030.0,"}), 0);
    EXPECT_EQ(columnDigits(1, 1, 1, 1, {"1030.0,"}).integerDigits, 30);
    EXPECT_EQ(columnDigits(1, 1, 1, 1, {"1103.2"}).decimals, 2);
    // Empty or short descriptors: flags 1, digits 0.
    EXPECT_EQ(accessFlag(1, 1, {""}, 3), 1);
    EXPECT_EQ(kindFlag(1, 1, 3, 2, {"10"}), 1);
    EXPECT_EQ(accessFlag(1, 1, {}, 1), 1);
    EXPECT_EQ(columnDigits(1, 1, 10, 11, kColumns).integerDigits, 0);
    // The row counts only when there is more than one.
    const std::vector<std::string> rows{"10", "01"};
    EXPECT_EQ(accessFlag(2, 2, rows, 1), 0);
    EXPECT_EQ(accessFlag(1, 2, rows, 1), 1);
    EXPECT_EQ(accessFlag(3, 3, rows, 1), 1); // a row without a string
}

TEST(FieldTable, LimitsComeFromNumberedEntriesMatchedWithTheirColon) {
    const std::vector<std::string> limits{
        "@1:0@2:0@3:1@4:5@5:0@6:9999.9@7:0@8:99999.99@9:0@10:999.99@11:0@12:999.9@13:0@14:"
        "999.9@15:0@16:999.9@17:0@18:999.9@19:0@20:999.9@21:"};
    const std::pair<double, double> expected[] = {
        {0, 0},     {1, 5},     {0, 9999.9}, {0, 99999.99}, {0, 999.99},
        {0, 999.9}, {0, 999.9}, {0, 999.9},  {0, 999.9},    {0, 999.9}};
    for (int k = 1; k <= 10; ++k) {
        const Limits l = columnLimits(1, 1, limits, k);
        EXPECT_EQ(l.minimum, expected[k - 1].first) << k;
        EXPECT_EQ(l.maximum, expected[k - 1].second) << k;
    }
    // "@21:" has no partner: column 11 keeps the defaults.
    EXPECT_EQ(columnLimits(1, 1, limits, 11).maximum, kNoUpperLimit);

    EXPECT_EQ(columnLimits(1, 1, {"@1:@2:"}, 1).maximum, kNoUpperLimit);
    EXPECT_EQ(columnLimits(1, 1, {"@1:@2:"}, 1).minimum, 0.0);
    EXPECT_EQ(columnLimits(1, 1, {"@3:1"}, 2).minimum, 0.0);
    const Limits eleven = columnLimits(1, 1, {"@1:5@2:6@21:7@22:8"}, 11);
    EXPECT_EQ(eleven.minimum, 7.0);
    EXPECT_EQ(eleven.maximum, 8.0);
}

TEST(FieldTable, NumbersAreShownWithTheirDecimalsCutNotRounded) {
    const std::pair<const char*, const char*> twoDecimals[] = {
        {"12.3", "  12.30"}, {"7", "   7.00"}, {"1.239", "   1.23"}, {"-1.5", "  -1.50"}};
    for (const auto& [typed, shown] : twoDecimals) {
        EXPECT_EQ(formatNumberForDisplay(1, 1, 4, typed, 2), shown) << typed;
    }
    EXPECT_EQ(formatNumberForDisplay(1, 1, 3, "12.7", 0), " 12");
    EXPECT_EQ(formatNumberForDisplay(1, 1, 2, "12345", 0), "12345"); // never cut to another number
    EXPECT_EQ(formatNumberForDisplay(1, 0, 6, "B-12.5", 2), "B-12.5");
    EXPECT_EQ(formatNumberForDisplay(1, 2, 6, "007", 2), "007");
}

TEST(FieldTable, NumberCellsTakeOnlyNumberKeys) {
    bool changed = false;
    EXPECT_EQ(filterNumberKey('.', "1.5", 0, changed), 0);
    EXPECT_EQ(filterNumberKey('-', "-1", 0, changed), 0);
    EXPECT_EQ(filterNumberKey('+', "+1", 0, changed), 0);
    EXPECT_EQ(filterNumberKey('a', "1", 0, changed), 0);
    EXPECT_EQ(filterNumberKey('5', "123", 3, changed), 0); // the box is full
    EXPECT_FALSE(changed);
    EXPECT_EQ(filterNumberKey(13, "1", 0, changed), 13);
    EXPECT_FALSE(changed); // Enter does not change the cell
    EXPECT_EQ(filterNumberKey(8, "123", 3, changed), 8);
    EXPECT_TRUE(changed);
    changed = false;
    EXPECT_EQ(filterNumberKey('.', "15", 0, changed), '.');
    EXPECT_TRUE(changed);
}

TEST(FieldTable, LeavingACellChecksItsRange) {
    const Limits oneToFive{1.0, 5.0};
    EXPECT_EQ(checkCell("3.5", 1, oneToFive).status, CellCheck::Ok);
    EXPECT_EQ(checkCell("3.5", 1, oneToFive).value, 3.5);
    EXPECT_EQ(checkCell("5.01", 1, oneToFive).status, CellCheck::OutOfRange);
    EXPECT_EQ(checkCell("", 1, oneToFive).status, CellCheck::OutOfRange); // blank is 0
    EXPECT_EQ(checkCell("", 1, Limits{}).status, CellCheck::Ok);
    EXPECT_EQ(checkCell("1.2.3", 1, oneToFive).status, CellCheck::NotANumber);
    EXPECT_EQ(checkCell("-", 1, Limits{}).status, CellCheck::NotANumber);
    EXPECT_EQ(checkCell("anything", 0, oneToFive).status, CellCheck::Ok);
}

} // namespace
} // namespace orvak::shell
