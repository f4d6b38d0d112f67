// Tests of start-up: where the program folder is, what a first start installs and creates,
// how SWC and PRJNO steer it, and that a vanished or garbled remembered project is forgotten.
#include "shell/startup.h"

#include <gtest/gtest.h>

#include <map>

#include "core/error.h"
#include "shell/project_record.h"
#include "shell/projects.h"
#include "support/temp_dir.h"

namespace orvak::shell {
namespace {

namespace fs = std::filesystem;

std::function<const char*(const char*)> envOf(const std::map<std::string, std::string>& vars) {
    return [vars](const char* name) -> const char* {
        const auto it = vars.find(name);
        return it == vars.end() ? nullptr : it->second.c_str();
    };
}

TEST(Startup, ProgramAndDataFoldersComeFromTheEnvironmentFirst) {
    EXPECT_EQ(resolveProgramFolder(envOf({{"ORVAK_HOME", "/opt/o"}, {"XDG_DATA_HOME", "/x"}})),
              fs::path("/opt/o"));
    EXPECT_EQ(resolveProgramFolder(envOf({{"ORVAK_HOME", ""}, {"XDG_DATA_HOME", "/x"}})),
              fs::path("/x/orvak"));
    EXPECT_EQ(resolveProgramFolder(envOf({{"XDG_DATA_HOME", "rel"}, {"HOME", "/home/d"}})),
              fs::path("/home/d/.local/share/orvak"));

    test::TempDir dir;
    fs::create_directories(dir / "bin" / "data");
    test::writeBytes(dir / "bin" / "data" / "LANGUAGE.DAT", "English\n");
    EXPECT_EQ(resolveDataFolder(dir / "bin" / "orvak", envOf({{"ORVAK_DATA", "/d"}})),
              fs::path("/d"));
    EXPECT_EQ(resolveDataFolder(dir / "bin" / "orvak", envOf({})), dir / "bin" / "data");
}

class StartupRun : public ::testing::Test {
protected:
    test::TempDir m_dir;
    fs::path home() const { return m_dir / "home"; }
    fs::path general() const { return home() / "GENERAL"; }
    decltype(StartupOptions::installShippedData) m_installShipped;

    ShellState start(std::optional<fs::path> data = std::nullopt,
                     std::optional<fs::path> project = std::nullopt) {
        StartupOptions options;
        options.programFolder = home();
        options.dataFolder = std::move(data);
        options.project = std::move(project);
        options.installShippedData = m_installShipped;
        return runStartup(options);
    }
};

TEST_F(StartupRun, FirstStartInstallsTheShippedDataAndOpensTheDemoProject) {
    // The design modules' part of the shipped data stands in here: it runs once, after the
    // shell's own part and while the program folder is still fresh (no GENERAL, no Projects),
    // and the demo project it leaves is the one opened.
    int calls = 0;
    m_installShipped = [&](const fs::path& data, const fs::path& program) {
        ++calls;
        EXPECT_EQ(data, fs::path(ORVAK_SOURCE_DATA_DIR));
        EXPECT_EQ(program, home());
        EXPECT_TRUE(fs::exists(home() / "DRIVERS" / "LANGUAGE.DAT"));
        EXPECT_FALSE(fs::exists(general()));
        EXPECT_FALSE(fs::exists(home() / "Projects"));
        ProjectRecord demo;
        demo.titleLines[0] = "Demo office building";
        fs::create_directories(program / "Projects" / "Demo.prj");
        writeProjectRecord(program / "Projects" / "Demo.prj", demo);
    };
    const ShellState shell = start(fs::path(ORVAK_SOURCE_DATA_DIR));
    EXPECT_EQ(calls, 1);
    for (const char* folder :
         {"DRIVERS", "GENERAL", "DEFAULT.prj", "Symbols", "English", "Hebrew"}) {
        EXPECT_TRUE(fs::is_directory(home() / folder)) << folder;
    }
    EXPECT_EQ(test::readBytes(home() / "DRIVERS" / "LANGUAGE.DAT"),
              test::readBytes(fs::path(ORVAK_SOURCE_DATA_DIR) / "LANGUAGE.DAT"));
    // The demo the stand-in left is the project opened.
    EXPECT_EQ(shell.last.projectPath, (home() / "Projects" / "Demo.prj").string());
    EXPECT_EQ(shell.last.projectsFolder, (home() / "Projects").string() + "/");
    EXPECT_EQ(shell.project.titleLines[0], "Demo office building");
    EXPECT_TRUE(shell.warnings.empty()) << shell.warnings.front();
}

TEST_F(StartupRun, ShippedDataThatCannotBeInstalledIsAWarning) {
    m_installShipped = [](const fs::path&, const fs::path& program) {
        throw FileError(program / "GENERAL" / "ROUNDBAR.DAT", "The file cannot be written");
    };
    const ShellState shell = start(fs::path(ORVAK_SOURCE_DATA_DIR));
    ASSERT_EQ(shell.warnings.size(), 1u);
    EXPECT_NE(shell.warnings[0].find("ROUNDBAR.DAT"), std::string::npos) << shell.warnings[0];
    EXPECT_TRUE(fs::is_directory(general())); // start-up went on
    EXPECT_FALSE(shell.hasProject());
}

TEST_F(StartupRun, InstallingNeverOverwritesTheUsersFiles) {
    test::TempDir data;
    fs::create_directories(data / "English");
    test::writeBytes(data / "LANGUAGE.DAT", "English\n");
    test::writeBytes(data / "English" / "GNRLE.TXT", "shipped\nshipped prompt\n");
    test::writeBytes(data / "English" / "NEWE.TXT", "new file\n");

    fs::create_directories(home() / "English");
    fs::create_directories(home() / "DRIVERS");
    fs::create_directories(home() / "Projects");
    test::writeBytes(home() / "DRIVERS" / "LANGUAGE.DAT", "English\nArabic\n");
    test::writeBytes(home() / "English" / "gnrle.txt", "mine\nmy prompt\n");

    const ShellState shell = start(data.path());
    EXPECT_EQ(test::readBytes(home() / "DRIVERS" / "LANGUAGE.DAT"), "English\nArabic\n");
    EXPECT_EQ(test::readBytes(home() / "English" / "gnrle.txt"), "mine\nmy prompt\n");
    EXPECT_FALSE(fs::exists(home() / "English" / "GNRLE.TXT"));
    EXPECT_EQ(test::readBytes(home() / "English" / "NEWE.TXT"), "new file\n");
    // A first start without the demo keeps its projects folder, with no project open.
    EXPECT_FALSE(shell.hasProject());
    EXPECT_EQ(shell.last.projectsFolder, (home() / "Projects").string() + "/");
    EXPECT_TRUE(fs::is_directory(home() / "Arabic"));
    EXPECT_EQ(shell.generalPrompts.lines(), (std::vector<std::string>{"my prompt"}));
}

TEST_F(StartupRun, OnlyTheFirstFiftyLanguagesGetFoldersAndUnsafeNamesNone) {
    std::string list = "../escape\n";
    for (int i = 1; i <= 55; ++i) {
        list += "Lang" + std::to_string(i) + "\n";
    }
    fs::create_directories(home() / "DRIVERS");
    test::writeBytes(home() / "DRIVERS" / "LANGUAGE.DAT", list);
    const ShellState shell = start();
    EXPECT_TRUE(fs::is_directory(home() / "Lang49"));
    EXPECT_FALSE(fs::exists(home() / "Lang50")); // the 50th name is "../escape"
    EXPECT_FALSE(fs::exists(m_dir / "escape"));
    EXPECT_TRUE(fs::is_directory(home() / "English"));
    EXPECT_EQ(shell.warnings.size(), 1u);
}

TEST_F(StartupRun, SwcChoosesTheLanguageAndAnUnreadableOneLeavesDefaults) {
    fs::create_directories(general());
    fs::create_directories(home() / "Hebrew");
    test::writeBytes(general() / "SWC", "\r\n\r\n\r\nHebrew\r\n2\r\n0\r\n5\r\n\"\"\r\n");
    test::writeBytes(home() / "Hebrew" / "GLBLPRMH.TXT", "0\n\xE0\xE1\n");
    const ShellState shell = start();
    EXPECT_TRUE(shell.rightToLeft());
    EXPECT_EQ(shell.software.settingC, 2);
    EXPECT_EQ(shell.globalPrompts1(1), "\xE0\xE1");
    EXPECT_FALSE(shell.hasProject());

    fs::remove(general() / "SWC");
    fs::create_directories(general() / "SWC");
    const ShellState unread = start();
    EXPECT_EQ(unread.language(), "English");
    EXPECT_EQ(unread.warnings.size(), 1u);
}

TEST_F(StartupRun, TheRememberedProjectReopensUnlessGoneOrReplacedAtStart) {
    ShellState first = start();
    newProject(first, m_dir / "Projects", "tower");
    first.last.userName = "Dana";
    saveLastProjectState(first);

    const ShellState again = start();
    EXPECT_EQ(again.last.projectPath, (m_dir / "Projects" / "tower.prj").string());
    EXPECT_EQ(again.projectName, "tower.prj");
    EXPECT_EQ(again.last.userName, "Dana");
    EXPECT_TRUE(again.project.valid);

    fs::remove_all(m_dir / "Projects" / "tower.prj");
    const ShellState gone = start();
    EXPECT_FALSE(gone.hasProject());
    EXPECT_EQ(gone.last.projectsFolder, "");
    EXPECT_EQ(gone.projectName, "");
    EXPECT_EQ(gone.last.userName, "Dana");

    // A project given at start replaces the remembered one.
    fs::create_directories(m_dir / "elsewhere" / "bridge.prj");
    const ShellState given = start(std::nullopt, m_dir / "elsewhere" / "bridge.prj");
    EXPECT_EQ(given.last.projectPath, (m_dir / "elsewhere" / "bridge.prj").string());
    EXPECT_EQ(given.last.projectsFolder, (m_dir / "elsewhere").string() + "/");
    EXPECT_EQ(given.projectName, "bridge.prj");
}

TEST_F(StartupRun, GarbledOrMisplacedPrjnoStartsWithoutAProject) {
    fs::create_directories(general());
    fs::create_directories(m_dir / "real.prj");
    const std::string cases[] = {std::string("\"") + m_dir.path().string() +
                                     std::string("\0/junk\"", 7), // NUL cuts it
                                 "\"\",\"real.prj\"",             // a relative path
                                 "\"/p/\",\"   \"",               // a blank path
                                 std::string("\xff\xfe\x00\x01,,,\"", 8)};
    for (const auto& content : cases) {
        test::writeBytes(general() / "PRJNO", content);
        const ShellState shell = start();
        EXPECT_FALSE(shell.hasProject()) << content;
        EXPECT_EQ(shell.last.projectsFolder, "");
    }
}

} // namespace
} // namespace orvak::shell
