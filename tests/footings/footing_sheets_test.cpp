// The sheets of an isolated, a combined and a pile footing compared as text with frozen golden
// files. The golden files were generated once, read line by line and their numbers checked
// against the hand calculations noted here (and in footing_design_test.cpp), then frozen; set
// ORVAK_WRITE_GOLDEN=1 to write them again after a deliberate change of layout.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "footings/combined_footing.h"
#include "footings/isolated_footing.h"
#include "footings/pile_footing.h"

namespace orvak::footings {
namespace {

const std::vector<bars::BarProperties> kBars = {
    {12.0f, 1.131f, 0.888f}, {14.0f, 1.539f, 1.21f}, {16.0f, 2.011f, 1.58f},
    {20.0f, 3.142f, 2.47f},  {25.0f, 4.909f, 3.85f}, {32.0f, 8.042f, 6.31f},
};

void expectGolden(const std::string& name, const core::Sheet& sheet) {
    const std::string& text = sheet.str();
    const std::filesystem::path path =
        std::filesystem::path(ORVAK_TEST_DATA_DIR) / "footings" / name;
    if (std::getenv("ORVAK_WRITE_GOLDEN") != nullptr) {
        std::ofstream(path, std::ios::binary) << text;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "missing golden file " << path;
    std::stringstream golden;
    golden << in.rdbuf();
    std::istringstream want(golden.str());
    std::istringstream got(text);
    std::string a;
    std::string b;
    for (int line = 1;; ++line) {
        const bool moreWant = static_cast<bool>(std::getline(want, a));
        const bool moreGot = static_cast<bool>(std::getline(got, b));
        if (!moreWant && !moreGot) {
            break;
        }
        ASSERT_EQ(moreWant, moreGot) << name << ": the texts differ in length at line " << line;
        ASSERT_EQ(a, b) << name << " line " << line;
    }
}

TEST(FootingSheets, IsolatedFootingOfA40x40ColumnUnder140t) {
    // Checked by hand: Area 50 000 cm², A = B = 225, Q = 1.98 at every corner, Vu = 7.12,
    // beam-shear D = 25.87, Vc 21.37 capped to 14.25, punching D = 33.45 → d 35, H = 42.5,
    // Ps = 300·35·14.246 = 149.58 t; Mu = 2.765·92.5²/2·225 = 26.62 t·m, ROW = 0.00262,
    // AST = 20.62 cm², 8 bars of 20 mm each way.
    IsolatedFootingInput in;
    in.column.dims = {40, 40, 0, 0, 0};
    in.column.puT = 140;
    expectGolden("isolated_sheet.txt", isolatedFootingSheet(in, designIsolatedFooting(in, kBars)));
}

TEST(FootingSheets, CombinedFootingOfTwoEqualColumns) {
    // Checked by hand: Ex1 = 150, B = 400, A = 125, Q = 2.00, Qu = 2.80; V1LT 10.5, V1RT
    // −45.5, V2LT 45.5, V2RT −10.5 t; under columns 5.43 t·m, zero shear at 200 cm, 35 t·m
    // between; D = 36.68 → 40; Ps1 = Ps2 = 164.43 t at D 40; H = 47.5; long steel ROW 0.00485,
    // 24.27 cm², 5 bars of 25; strips Muy 5.06 t·m, ROW min 0.0018, 7.20 cm², 5 bars of 14.
    CombinedFootingInput in;
    in.column1.dims = {40, 40, 0, 0, 0};
    in.column1.puT = 70;
    in.column1.cxCm = 50;
    in.column2 = in.column1;
    in.column2.cxCm = 350;
    expectGolden("combined_sheet.txt", combinedFootingSheet(in, designCombinedFooting(in, kBars)));
}

TEST(FootingSheets, PileFootingPrintsItsInputsOnly) {
    PileFootingInput in;
    in.column.type = 2;
    in.column.dims = {50, 0, 0, 0, 0};
    in.column.puT = 180;
    in.surfaceFriction = 4.5f;
    in.endBearing = 120;
    expectGolden("pile_sheet.txt", pileFootingSheet(in));
    EXPECT_EQ(pileFootingSummary(in).status, FootingStatus::NotDesigned);
}

} // namespace
} // namespace orvak::footings
