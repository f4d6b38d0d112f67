// End-to-end tests of "orvak-cli steel": items added to a project's store and the steel
// report in text and JSON, with weights checked against hand calculations.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "bars/steel_store.h"
#include "cli/cli_runner.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

// ROUNDBAR.DAT records: 12 mm 0.89 kg/m 1.13 cm², and 8 mm 0.40 kg/m 0.50 cm².
std::string barTableBytes() {
    const std::string tail(32, '\0');
    return std::string("1") + std::string("\x00\x00\x40\x41", 4) + "\x0A\xD7\x63\x3F" +
           "\xD7\xA3\x90\x3F" + tail + std::string("1") + std::string("\x00\x00\x00\x41", 4) +
           "\xCD\xCC\xCC\x3E" + std::string("\x00\x00\x00\x3F", 4) + tail;
}

class CliSteel : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(home() / "GENERAL");
        fs::create_directories(project());
        test::writeBytes(home() / "GENERAL" / "ROUNDBAR.DAT", barTableBytes());
    }
    fs::path home() const { return m_dir / "home"; }
    fs::path project() const { return m_dir / "job.prj"; }
    testing::CliRun run(std::vector<std::string> args) const {
        return testing::runCli(home(), m_dir.path(), args);
    }
    testing::CliRun add(const std::string& element, const std::string& mark,
                        const std::string& quantity, const std::string& diameter,
                        const std::string& length, std::vector<std::string> more = {}) const {
        std::vector<std::string> args{
            "steel",      "add",    project().string(), "--element", element,    "--mark", mark,
            "--quantity", quantity, "--diameter",       diameter,    "--length", length};
        args.insert(args.end(), more.begin(), more.end());
        return run(args);
    }
    test::TempDir m_dir;
};

TEST_F(CliSteel, ReportWeighsBarsFromTheTableInTextAndJson) {
    ASSERT_EQ(add("B1", "1", "4", "12.5", "300").code, 0);
    ASSERT_EQ(add("B1", "2", "10", "12", "500", {"--description", "bottom"}).code, 0);
    ASSERT_EQ(add("B1", "3", "20", "8", "120").code, 0);
    const auto r = run({"steel", "report", project().string()});
    ASSERT_EQ(r.code, 0) << r.err;
    // 10 x 500 cm x 0.89 kg/m / 100 = 44.5 kg; 20 x 120 x 0.40 / 100 = 9.6 kg; 12.5 mm is not
    // in the table and weighs 0; the element: 44.5 + 9.6 = 54.1 kg.
    EXPECT_NE(r.out.find("    2 bottom            12          10    500.0    50.0   44.5\n"),
              std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("Grand total                                               54.1 \n"),
              std::string::npos)
        << r.out;

    const auto json = run({"steel", "report", project().string(), "--element", "B1", "--json"});
    ASSERT_EQ(json.code, 0) << json.err;
    const auto doc = nlohmann::json::parse(json.out);
    const auto& items = doc["elements"][0]["items"];
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0]["diameterMm"], 8.0);
    EXPECT_NEAR(items[1]["weightKg"].get<double>(), 44.5, 1e-4);
    EXPECT_EQ(items[2]["weightKg"], 0.0);
    EXPECT_FALSE(items[2]["weightFound"].get<bool>());
    EXPECT_NEAR(doc["grandTotalKg"].get<double>(), 54.1, 1e-4);
}

TEST_F(CliSteel, AddKeepsOddNamesAndChangesTheItemOfTheSameKey) {
    const auto first = add("O'Brien-Beam-7", "4", "2", "10", "100");
    ASSERT_EQ(first.code, 0) << first.err;
    EXPECT_EQ(first.out, "Added item 03.000.000.0004.000 of O'Brien-Be.\n");
    const auto again = add("O'Brien-Be", "4", "3", "10", "100", {"--kind", "extra"});
    EXPECT_EQ(again.out, "Changed item 03.000.000.0004.000 of O'Brien-Be.\n");
    const auto slab = add("S1", "4", "1", "10", "100", {"--kind", "slab", "--slab", "2"});
    EXPECT_EQ(slab.out, "Added item 01.002.000.0004.000 of S1.\n");
    // A Hebrew name under the English setting would be stored as "??": refused, and 1e30
    // bars too; nothing is stored.
    const auto hebrew = add("\xD7\xA7\xD7\x95\xD7\xA8\xD7\x94", "5", "1", "10", "100");
    EXPECT_EQ(hebrew.code, 1);
    EXPECT_NE(hebrew.err.find("cannot keep"), std::string::npos) << hebrew.err;
    const auto huge = add("B9", "5", "1e30", "10", "100");
    EXPECT_EQ(huge.code, 1);
    EXPECT_NE(huge.err.find("quantity"), std::string::npos) << huge.err;
    EXPECT_EQ(bars::OpenIronDatabase(project()).itemCount(), 2u);
}

TEST_F(CliSteel, BadStoresAndAMissingBarTableStopWithOneSentence) {
    const std::string garbage(512, '\x5A');
    test::writeBytes(project() / "Iron.db", garbage);
    const auto corrupt = run({"steel", "report", project().string()});
    EXPECT_EQ(corrupt.code, 1);
    EXPECT_EQ(corrupt.out, "");
    EXPECT_EQ(std::count(corrupt.err.begin(), corrupt.err.end(), '\n'), 1) << corrupt.err;
    EXPECT_NE(corrupt.err.find("damaged or is not a database"), std::string::npos);
    EXPECT_EQ(test::readBytes(project() / "Iron.db"), garbage);

    fs::remove(project() / "Iron.db");
    test::writeBytes(project() / "Iron.MDB", "old");
    const auto legacy = add("B1", "1", "1", "10", "100");
    EXPECT_EQ(legacy.code, 1);
    EXPECT_NE(legacy.err.find("steel import"), std::string::npos) << legacy.err;
    EXPECT_FALSE(fs::exists(project() / "Iron.db"));
    // The import it asks for keeps the unreadable file aside, and steel entry goes on.
    const auto setAside = run({"steel", "import", project().string()});
    EXPECT_EQ(setAside.code, 0) << setAside.err;
    EXPECT_NE(setAside.out.find("kept as Iron.MDB.unreadable"), std::string::npos);
    EXPECT_EQ(add("B1", "1", "1", "10", "100").code, 0);
    fs::remove(project() / "Iron.db");

    // A table file whose only record is not in use holds no bars: the user's table is asked
    // for. No table file at all: the built-in one, with a note.
    test::writeBytes(home() / "GENERAL" / "ROUNDBAR.DAT", std::string(45, ' '));
    const auto noBars = run({"steel", "report", project().string()});
    EXPECT_EQ(noBars.code, 1);
    EXPECT_NE(noBars.err.find("holds no bars"), std::string::npos) << noBars.err;
    fs::remove(home() / "GENERAL" / "ROUNDBAR.DAT");
    const auto builtIn = run({"steel", "report", project().string()});
    EXPECT_EQ(builtIn.code, 0) << builtIn.err;
    EXPECT_NE(builtIn.err.find("built-in table is used"), std::string::npos) << builtIn.err;
}

} // namespace
} // namespace orvak::cli
