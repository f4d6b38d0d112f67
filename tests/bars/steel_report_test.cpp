// Tests of the steel report: item weights from the bar table, the sums per diameter and per
// element, the report text, and the lines of the item form's list.
#include <gtest/gtest.h>

#include "bars/steel_report.h"
#include "support/temp_dir.h"

namespace orvak::bars {
namespace {

SteelItem item(std::string key, std::string element, std::int16_t mark, std::string description,
               float quantity, float diameter, float length) {
    SteelItem it;
    it.mainKey = std::move(key);
    it.element = std::move(element);
    it.mark = mark;
    it.description = std::move(description);
    it.quantity = quantity;
    it.diameterMm = diameter;
    it.lengthCm = length;
    return it;
}

// Bar table of the test: 8 mm 0.40 kg/m, 12 mm 0.89 kg/m (areas 0.50 and 1.13 cm²).
BarPropertyTable barTable() {
    return {{{8.0f, 0.50f, 0.40f}, {12.0f, 1.13f, 0.89f}}, true};
}

class SteelReportTest : public ::testing::Test {
protected:
    test::TempDir m_dir;
    IronDatabase m_db = IronDatabase::open(m_dir.path());
};

TEST(SteelReportWeight, WeightIsBarsTimesLengthTimesKgPerMetreOver100OrZero) {
    const BarPropertyTable bars = barTable();
    bool found = false;
    // 10 bars x 500 cm x 0.89 kg/m / 100 = 44.5 kg.
    EXPECT_FLOAT_EQ(itemWeightKg(item("K", "B", 1, "", 10, 12.0f, 500), bars.rows, &found), 44.5f);
    EXPECT_TRUE(found);
    // 12.5 mm is not in a table of 8 and 12 mm: weightless, no rounding to 12.
    EXPECT_EQ(itemWeightKg(item("K", "B", 1, "", 10, 12.5f, 500), bars.rows, &found), 0.0f);
    EXPECT_FALSE(found);
}

TEST_F(SteelReportTest, ReportListsItemsByDiameterWithSumsPerDiameterElementAndInAll) {
    m_db.saveItem(item("A1", "B1", 1, "bottom", 10, 12.0f, 500));  // 44.5 kg
    m_db.saveItem(item("A2", "B1", 2, "top", 4, 12.5f, 300));      // not in the table: 0
    m_db.saveItem(item("A3", "B1", 3, "stirrups", 20, 8.0f, 120)); // 20 x 120 x 0.40 / 100 = 9.6
    m_db.saveItem(item("C1", "C1", 1, "hooks", 5, 12.0f, 200));    // 5 x 200 x 0.89 / 100 = 8.9
    const std::vector<std::string> elements{"B1", "C1"};
    const SteelReport report = buildSteelReport(m_db, elements, barTable());
    ASSERT_EQ(report.status, SteelReportStatus::Ok);
    // B1: 44.5 + 0 + 9.6 = 54.1; all: 54.1 + 8.9 = 63.0; 12 mm in all: 44.5 + 8.9 = 53.4.
    EXPECT_NEAR(report.elements[0].totalKg, 54.1, 1e-4);
    EXPECT_NEAR(report.grandTotalKg, 63.0, 1e-4);

    // Item lines: " #### ", 18 characters, "\    \  ", "######  ", "#####.# " twice (one bar in
    // cm, all bars in m), "####.#". Sums end under the weights: "   #######.# " behind a
    // 50-character caption, "            #######.# " behind a 41-character one.
    EXPECT_EQ(formatSteelReport(report),
              "Steel quantities\n"
              "Mark  Description       Diam.   Bars    Len.cm  Total m kg\n"
              "--------------------------------------------------------------\n"
              "Element B1\n"
              "    3 stirrups          8           20    120.0    24.0    9.6\n"
              "Total diameter 8 mm                                        9.6 \n"
              "    1 bottom            12          10    500.0    50.0   44.5\n"
              "Total diameter 12 mm                                      44.5 \n"
              "    2 top               12.5         4    300.0    12.0    0.0\n"
              "Total diameter 12.5 mm                                     0.0 \n"
              "Total element B1                                          54.1 \n"
              "\n"
              "Element C1\n"
              "    1 hooks             12           5    200.0    10.0    8.9\n"
              "Total diameter 12 mm                                       8.9 \n"
              "Total element C1                                           8.9 \n"
              "\n"
              "Totals by diameter\n"
              "Total diameter 8 mm                                        9.6 \n"
              "Total diameter 12 mm                                      53.4 \n"
              "Total diameter 12.5 mm                                     0.0 \n"
              "Grand total                                               63.0 \n");

    const SteelReportTexts texts = SteelReportTexts::fromPrompt("@0:Bar list@7:Kilo");
    const std::string own = formatSteelReport(report, texts);
    EXPECT_EQ(own.substr(0, own.find('\n')), "Bar list");
    EXPECT_NE(own.find("Total m Kilo\n"), std::string::npos);
}

TEST_F(SteelReportTest, ARoundingStepRoundsEverySumUpButNoItem) {
    m_db.saveItem(item("A1", "B1", 1, "bottom", 10, 12.0f, 500));  // 44.5 kg
    m_db.saveItem(item("A3", "B1", 3, "stirrups", 20, 8.0f, 120)); // 9.6 kg
    m_db.saveItem(item("C1", "C1", 1, "hooks", 5, 12.0f, 200));    // 8.9 kg
    const std::vector<std::string> elements{"B1", "C1"};
    const SteelReport report = buildSteelReport(m_db, elements, barTable(), 5.0);
    // Step 5 kg, each sum from its exact value: B1 54.1 -> 55; C1 8.9 -> 10; 12 mm over all
    // 53.4 -> 55; 8 mm 9.6 -> 10; grand total 63.0 -> 65.
    EXPECT_DOUBLE_EQ(report.elements[0].totalKg, 55.0);
    EXPECT_DOUBLE_EQ(report.elements[1].totalKg, 10.0);
    ASSERT_EQ(report.diameterTotals.size(), 2u);
    EXPECT_DOUBLE_EQ(report.diameterTotals[0].weightKg, 10.0);
    EXPECT_DOUBLE_EQ(report.diameterTotals[1].weightKg, 55.0);
    EXPECT_DOUBLE_EQ(report.grandTotalKg, 65.0);
    EXPECT_FLOAT_EQ(report.elements[0].items[1].weightKg, 44.5f) << "items stay exact";
    // A sum already on a multiple of the step stays: 10 bars x 500 x 0.40 / 100 = 20 kg.
    m_db.saveItem(item("D1", "D1", 1, "ties", 10, 8.0f, 500));
    const std::vector<std::string> d1{"D1"};
    EXPECT_DOUBLE_EQ(buildSteelReport(m_db, d1, barTable(), 5.0).grandTotalKg, 20.0);
}

TEST_F(SteelReportTest, AnEmptyBarTableStopsTheReport) {
    m_db.saveItem(item("A1", "B1", 1, "bottom", 10, 12.0f, 500));
    const std::vector<std::string> elements{"B1"};
    const SteelReport report = buildSteelReport(m_db, elements, BarPropertyTable{});
    EXPECT_EQ(report.status, SteelReportStatus::NoBarTable);
    EXPECT_TRUE(report.elements.empty());
}

TEST(SteelReportItemList, ListLineUsesTheMasksOfTheItemFormAndNamesTheBarKind) {
    SteelItem it = item("K", "B1", 12, "stirrups", 20, 8.0f, 120);
    it.ironType = 1;
    it.shape = 3;
    const std::vector<std::string> kinds = {"Main bar", "Stirrup", "Other"};
    // "#### ", "\23456789012345678\ " (19 wide: both backslashes and the 17 between, then a
    // blank), the kind "\       \ " (9 wide, then a blank), " ##### ", "  ##.## ",
    // " ####.## ", " # ".
    const std::string head = "  12 stirrups            ";
    const std::string tail = "    20    8.00   120.00  3 ";
    EXPECT_EQ(itemListLine(it, kinds), head + "Stirrup   " + tail);
    // A kind the names do not cover (an imported item) shows its number.
    it.ironType = 7;
    EXPECT_EQ(itemListLine(it, kinds), head + "7         " + tail);
}

} // namespace
} // namespace orvak::bars
