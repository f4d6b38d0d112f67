// Tests of what the design modules ship, installed by a first start as the program runs it:
// the bar tables and the demo building, and neither brought back into a used installation.
#include "model/shipped_data.h"

#include <gtest/gtest.h>

#include "bars/bar_tables.h"
#include "model/project_model.h"
#include "shell/startup.h"
#include "support/temp_dir.h"

namespace orvak::model {
namespace {

namespace fs = std::filesystem;

class ShippedDataStart : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path home() const { return m_dir / "home"; }
    fs::path general() const { return home() / "GENERAL"; }

    shell::ShellState start() {
        shell::StartupOptions options;
        options.programFolder = home();
        options.dataFolder = fs::path(ORVAK_SOURCE_DATA_DIR);
        options.installShippedData = installShippedData;
        return shell::runStartup(options);
    }
};

TEST_F(ShippedDataStart, FirstStartInstallsTheTablesAndTheDemoBuildingAndOpensIt) {
    const shell::ShellState shell = start();
    const fs::path demo = home() / "Projects" / "Demo.prj";
    EXPECT_EQ(shell.last.projectPath, demo.string());
    EXPECT_EQ(shell.projectName, "Demo.prj");
    EXPECT_TRUE(shell.project.valid);
    EXPECT_EQ(shell.project.titleLines[0], "Demo office building");
    EXPECT_TRUE(fs::is_directory(demo / "TMPDIR"));
    EXPECT_TRUE(shell.warnings.empty()) << shell.warnings.front();
    const ProjectModel model = readProjectModel(demo);
    ASSERT_EQ(model.floors.size(), 2u);
    // Columns and their groups on both floors and at the footing level.
    for (const FloorModel& f : model.floors) {
        EXPECT_FALSE(f.columns.empty()) << f.floor.number;
        EXPECT_FALSE(f.groups.empty()) << f.floor.number;
    }
    EXPECT_FALSE(model.footingColumns.empty());
    EXPECT_FALSE(model.footingGroups.empty());
    // An isolated and a combined footing group over the footing level's column groups.
    ASSERT_EQ(model.footingDesignGroups.size(), 2u);
    EXPECT_EQ(model.footingDesignGroups[0].kind, footings::FootingKind::Isolated);
    EXPECT_EQ(model.footingDesignGroups[1].kind, footings::FootingKind::Combined);

    // The built-in tables become files: 16 bars of 45 bytes, 27 spacings of 85; no mesh.
    EXPECT_EQ(fs::file_size(general() / "ROUNDBAR.DAT"), 16u * 45u);
    EXPECT_EQ(fs::file_size(general() / "SPACING.DAT"), 27u * 85u);
    EXPECT_FALSE(fs::exists(general() / "NETIRON.DAT"));
    const auto bars = bars::LoadBarProperties(general());
    const auto twelve = bars::FindBarProperties(12.0f, bars.rows);
    ASSERT_TRUE(twelve.has_value());
    EXPECT_FLOAT_EQ(twelve->weightKgPerM, 0.89f); // the built-in row 12 mm, 0.89 kg/m, 1.13 cm²
    EXPECT_FLOAT_EQ(twelve->areaCm2, 1.13f);
}

TEST_F(ShippedDataStart, AUsedInstallationGetsNoTablesNorDemoBack) {
    // The user deleted the bar tables and the demo project: a later start must not bring
    // them back.
    fs::create_directories(general());
    fs::create_directories(home() / "Projects");
    const shell::ShellState shell = start();
    EXPECT_FALSE(fs::exists(general() / "ROUNDBAR.DAT"));
    EXPECT_FALSE(fs::exists(general() / "SPACING.DAT"));
    EXPECT_FALSE(fs::exists(home() / "Projects" / "Demo.prj"));
    EXPECT_FALSE(shell.hasProject());
}

} // namespace
} // namespace orvak::model
