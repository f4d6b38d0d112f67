// End-to-end tests of orvak-cli's project commands: the built program is run as a user runs
// it, with its own program folder, and its exit code, output and files are checked.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/cli_runner.h"
#include "shell/project_record.h"
#include "support/temp_dir.h"

namespace orvak::cli {
namespace {

namespace fs = std::filesystem;

using testing::CliRun;

class Cli : public ::testing::Test {
protected:
    test::TempDir m_dir;

    CliRun run(const std::vector<std::string>& args) const {
        return testing::runCli(m_dir / "home", m_dir.path(), args);
    }

    // A failure: exit code 1, one line on standard error, nothing on standard output.
    void expectFailure(const CliRun& r, const std::string& mentions) const {
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.out, "");
        ASSERT_FALSE(r.err.empty());
        EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
        EXPECT_NE(r.err.find(mentions), std::string::npos) << r.err;
        EXPECT_EQ(r.err.find("Unexpected"), std::string::npos) << r.err;
    }
};

TEST_F(Cli, ProjectNewCreatesTheRecordAndRefusesToCreateItTwice) {
    const fs::path projects = m_dir / "p";
    const CliRun first = run({"project", "new", projects.string(), "job"});
    EXPECT_EQ(first.code, 0) << first.err;
    const fs::path gen = projects / "job.prj" / "GEN.CST";
    const std::string bytes = test::readBytes(gen);
    ASSERT_EQ(bytes.size(), 611u);
    const auto stamp = fs::last_write_time(gen);

    const CliRun second = run({"project", "new", projects.string(), "job"});
    expectFailure(second, "already exists");
    EXPECT_EQ(test::readBytes(gen), bytes);
    EXPECT_EQ(fs::last_write_time(gen), stamp);
    EXPECT_FALSE(fs::exists(m_dir / "home")); // the program folder is not touched
}

TEST_F(Cli, ProjectInfoPrintsEveryFieldAsLabelAndValue) {
    ASSERT_EQ(run({"project", "new", (m_dir / "p").string(), "office"}).code, 0);
    const fs::path project = m_dir / "p" / "office.prj";
    shell::ProjectRecord r = shell::readProjectRecord(project);
    r.titleLines[0] = "Demo office building";
    r.count = 2;
    r.values[1] = 2.5f;
    shell::writeProjectRecord(project, r);

    const CliRun info = run({"project", "info", project.string()});
    EXPECT_EQ(info.code, 0) << info.err;
    // 35 fields in GEN.CST, one line each.
    EXPECT_EQ(std::count(info.out.begin(), info.out.end(), '\n'), 35);
    for (const char* line : {"Marker: 1\n", "Title line 1: Demo office building\n", "Count: 2\n",
                             "Project value 2: 2.5\n", "Sheet name: Sheet1\n", "Choice: 1\n"}) {
        EXPECT_NE(info.out.find(line), std::string::npos) << line;
    }
}

TEST_F(Cli, ProjectListPrintsTheProjectFolders) {
    ASSERT_EQ(run({"project", "new", (m_dir / "p").string(), "b"}).code, 0);
    ASSERT_EQ(run({"project", "new", (m_dir / "p").string(), "a"}).code, 0);
    fs::create_directories(m_dir / "p" / "not a project");
    const CliRun list = run({"project", "list", (m_dir / "p").string()});
    EXPECT_EQ(list.code, 0);
    EXPECT_EQ(list.out, "a.prj\nb.prj\n");
}

TEST_F(Cli, ProjectDemoInstallsTheDemoBuildingOnceAndItDesigns) {
    fs::create_directories(m_dir / "p");
    const CliRun demo = run({"project", "demo", (m_dir / "p").string()});
    ASSERT_EQ(demo.code, 0) << demo.err;
    EXPECT_NE(demo.out.find("Created the demo project"), std::string::npos) << demo.out;
    EXPECT_TRUE(fs::exists(m_dir / "p" / "Demo.prj" / "BEAMS.1"));
    const CliRun again = run({"project", "demo", (m_dir / "p").string()});
    EXPECT_NE(again.out.find("Left as it is"), std::string::npos) << again.out;
    const CliRun design = run({"design", (m_dir / "p" / "Demo.prj").string()});
    EXPECT_EQ(design.code, 0) << design.out << design.err;
    EXPECT_NE(design.out.find("6 beams designed, 0 with failures."), std::string::npos)
        << design.out;
}

TEST_F(Cli, BadInputFailsWithOneSentenceAndChangesNothing) {
    const fs::path p = m_dir / "p";
    expectFailure(run({"project", "new", p.string(), "../escape"}), "cannot be used");
    expectFailure(run({"project", "new", p.string(), "a/b"}), "cannot be used");
    EXPECT_FALSE(fs::exists(p));

    test::writeBytes(m_dir / "file", "x");
    expectFailure(run({"project", "new", (m_dir / "file" / "p").string(), "job"}), "cannot");

    expectFailure(run({"project", "info", (m_dir / "none.prj").string()}), "no project folder");
    expectFailure(run({"project", "list", (m_dir / "none").string()}), "no projects folder");

    fs::create_directories(m_dir / "t.prj");
    expectFailure(run({"project", "info", (m_dir / "t.prj").string()}), "no GEN.CST");
    test::writeBytes(m_dir / "t.prj" / "GEN.CST", std::string(100, '1'));
    expectFailure(run({"project", "info", (m_dir / "t.prj").string()}), "shorter");
    const std::string garbage(700, '\x7f');
    test::writeBytes(m_dir / "t.prj" / "GEN.CST", garbage);
    expectFailure(run({"project", "info", (m_dir / "t.prj").string()}), "holds no data");
    EXPECT_EQ(test::readBytes(m_dir / "t.prj" / "GEN.CST"), garbage);
}

TEST_F(Cli, HelpVersionAndUsageErrors) {
    const CliRun help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("project"), std::string::npos);
    const CliRun subHelp = run({"project", "new", "--help"});
    EXPECT_EQ(subHelp.code, 0);
    EXPECT_NE(subHelp.out.find("projects-folder"), std::string::npos);
    const CliRun version = run({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out.rfind("orvak-cli ", 0), 0u) << version.out;
    EXPECT_EQ(run({"project", "new"}).code, 1);
    EXPECT_EQ(run({"nonsense"}).code, 1);
}

} // namespace
} // namespace orvak::cli
