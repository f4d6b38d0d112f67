// Tests of the project commands: new, open, exit, list, copy, archive and delete, and the
// refusals that leave the disk as it was (bad names, existing projects, unwritable places).
#include "shell/projects.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "core/error.h"
#include "support/temp_dir.h"
#include "support/unprivileged.h"

namespace orvak::shell {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> entries(const fs::path& folder) {
    std::vector<std::string> names;
    if (fs::exists(folder)) {
        for (const auto& e : fs::directory_iterator(folder)) {
            names.push_back(e.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Projects : public ::testing::Test {
protected:
    test::TempDir m_dir;
    ShellState m_shell;
    fs::path projects() const { return m_dir / "Projects"; }
};

TEST_F(Projects, NewCreatesTheFolderItsRecordAndScratchFolderAndMakesItCurrent) {
    const fs::path job = newProject(m_shell, projects(), "  job ");
    EXPECT_EQ(job, projects() / "job.prj");
    const std::string gen = test::readBytes(job / "GEN.CST");
    ASSERT_EQ(gen.size(), 611u);
    EXPECT_EQ(gen[0], '1');
    EXPECT_EQ(gen.substr(601), "Sheet1    ");
    EXPECT_TRUE(fs::is_directory(job / "TMPDIR"));
    EXPECT_EQ(m_shell.last.projectsFolder, projects().string() + "/");
    EXPECT_EQ(m_shell.last.projectPath, job.string());
    EXPECT_EQ(m_shell.projectName, "job.prj");
    EXPECT_EQ(m_shell.sheetName, "Sheet1");

    // ".prj" is appended without a test.
    EXPECT_EQ(newProject(m_shell, projects(), "job.prj"), projects() / "job.prj.prj");
}

TEST_F(Projects, NewRefusesAnExistingProjectAndChangesNothing) {
    const fs::path job = newProject(m_shell, projects(), "job");
    test::writeBytes(job / "BEAMS.1", "beam data");
    const std::string gen = test::readBytes(job / "GEN.CST");
    ShellState other;
    EXPECT_THROW(newProject(other, projects(), "job"), InputError);
    EXPECT_THROW(newProject(other, projects(), "JOB"), InputError); // Windows names are case-blind
    EXPECT_EQ(test::readBytes(job / "GEN.CST"), gen);
    EXPECT_EQ(entries(job), (std::vector<std::string>{"BEAMS.1", "GEN.CST", "TMPDIR"}));
    EXPECT_FALSE(other.hasProject());
}

TEST_F(Projects, BadNamesAndPlacesThatCannotHoldFoldersAreRefused) {
    for (const char* name : {"", "   ", "a/b", "..", "../up", "a..b", "x\\y", "c:", "tab\tin"}) {
        EXPECT_THROW(projectFolderName(name), InputError) << name;
        EXPECT_THROW(newProject(m_shell, projects(), name), InputError) << name;
    }
    EXPECT_FALSE(fs::exists(projects()));

    // A projects folder whose parent is a regular file fails for every user, root included.
    test::writeBytes(m_dir / "file", "x");
    EXPECT_THROW(newProject(m_shell, m_dir / "file" / "Projects", "job"), FileError);
    EXPECT_THROW(newProject(m_shell, m_dir / "file", "job"), InputError);
    EXPECT_EQ(entries(m_dir.path()), (std::vector<std::string>{"file"}));
    EXPECT_FALSE(m_shell.hasProject());
}

TEST_F(Projects, NewInAReadOnlyFolderFailsAndLeavesNothing) {
    fs::create_directory(projects());
    // Read and pass for everyone, write for nobody; the attempt runs without root's rights.
    fs::permissions(m_dir.path(), fs::perms::others_exec, fs::perm_options::add);
    fs::permissions(projects(), fs::perms::owner_read | fs::perms::owner_exec |
                                    fs::perms::others_read | fs::perms::others_exec);
    // 0: FileError as it should be; 1: the project was made; 2: another exception.
    const int outcome = test::runUnprivileged([&] {
        try {
            newProject(m_shell, projects(), "job");
        } catch (const FileError&) {
            return 0;
        } catch (...) {
            return 2;
        }
        return 1;
    });
    EXPECT_EQ(outcome, 0);
    EXPECT_TRUE(entries(projects()).empty());
}

TEST_F(Projects, OpenReadsTheRecordCleansScratchAndEmptyFiles) {
    const fs::path job = newProject(m_shell, projects(), "job");
    test::writeBytes(job / "BEAMS.1", "beam");
    test::writeBytes(job / "EMPTY.DAT", "");
    test::writeBytes(job / "DRAW.BMP", "picture");
    test::writeBytes(job / "DRAW.DAT", "the project's drawing");
    test::writeBytes(job / "TMPDIR" / "DRAW.DAT", "scratch drawing");
    // Two saves killed an hour ago: one of BEAMS.1, which is whole, and the first save of
    // CIELS.DAT, which never came to be; only the second is worth a word.
    const auto hourAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* temp : {".BEAMS.1.tmp123456", ".CIELS.DAT.tmp99"}) {
        test::writeBytes(job / temp, "half");
        fs::last_write_time(job / temp, hourAgo);
    }

    ShellState shell;
    openProject(shell, job);
    ASSERT_EQ(shell.warnings.size(), 1u);
    EXPECT_NE(shell.warnings[0].find("CIELS.DAT"), std::string::npos) << shell.warnings[0];
    EXPECT_EQ(shell.last.projectPath, job.string());
    EXPECT_EQ(shell.projectName, "job.prj");
    EXPECT_TRUE(shell.project.valid);
    EXPECT_EQ(entries(job), (std::vector<std::string>{"BEAMS.1", "DRAW.DAT", "GEN.CST", "TMPDIR"}));
    EXPECT_TRUE(entries(job / "TMPDIR").empty());

    ShellState untouched = shell;
    EXPECT_THROW(openProject(shell, projects() / "gone.prj"), InputError);
    EXPECT_EQ(shell.last.projectPath, untouched.last.projectPath);
}

TEST_F(Projects, ExitRemovesOnlyZeroLengthFilesOfTheProjectFolder) {
    const fs::path job = newProject(m_shell, projects(), "job");
    test::writeBytes(job / "a.dat", "");
    test::writeBytes(job / "b.dat", "kept");
    test::writeBytes(job / "TMPDIR" / "c.dat", "");
    closeProject(m_shell);
    EXPECT_EQ(entries(job), (std::vector<std::string>{"GEN.CST", "TMPDIR", "b.dat"}));
    EXPECT_EQ(entries(job / "TMPDIR"), (std::vector<std::string>{"c.dat"}));
}

TEST_F(Projects, ListGivesProjectFoldersOnly) {
    fs::create_directories(projects() / "b.prj");
    fs::create_directories(projects() / "A.PRJ");
    fs::create_directories(projects() / "Archive");
    fs::create_directories(projects() / "notes");
    test::writeBytes(projects() / "c.prj", "a file, not a project");
    EXPECT_EQ(listProjects(projects()), (std::vector<std::string>{"A.PRJ", "b.prj"}));
    EXPECT_TRUE(listProjects(m_dir / "missing").empty());
}

TEST_F(Projects, CopyMakesAWholeNewProjectAndRefusesAnExistingName) {
    const fs::path job = newProject(m_shell, projects(), "job");
    test::writeBytes(job / "BEAMS.1", "beam");
    const fs::path copy = copyProject(job, projects(), "job2");
    EXPECT_EQ(copy, projects() / "job2.prj");
    EXPECT_EQ(test::readBytes(copy / "BEAMS.1"), "beam");
    EXPECT_EQ(test::readBytes(copy / "GEN.CST"), test::readBytes(job / "GEN.CST"));

    test::writeBytes(copy / "BEAMS.1", "changed");
    EXPECT_THROW(copyProject(job, projects(), "job2"), InputError);
    EXPECT_EQ(test::readBytes(copy / "BEAMS.1"), "changed");
    EXPECT_EQ(entries(projects()), (std::vector<std::string>{"job.prj", "job2.prj"}));
}

TEST_F(Projects, ArchiveCopiesAndDeleteMovesIntoTheArchive) {
    const fs::path job = newProject(m_shell, projects(), "job");
    const fs::path first = archiveProject(job, projects());
    const fs::path second = archiveProject(job, projects());
    EXPECT_EQ(first.parent_path(), projects() / "Archive");
    EXPECT_NE(first, second); // two archives in the same second get different names
    // "job-" + yyyymmdd-hhmmss + ".prj" is 4 + 15 + 4 characters.
    EXPECT_EQ(first.filename().string().size(), 23u);
    EXPECT_TRUE(fs::exists(first / "GEN.CST"));
    EXPECT_TRUE(fs::exists(job / "GEN.CST"));

    // Delete moves into the archive, but never the open or the default project.
    const fs::path old = newProject(m_shell, projects(), "old");
    const fs::path current = newProject(m_shell, projects(), "current");
    const fs::path moved = deleteProject(m_shell, old, projects());
    EXPECT_FALSE(fs::exists(old));
    EXPECT_TRUE(fs::exists(moved / "GEN.CST"));
    EXPECT_EQ(moved.parent_path(), projects() / "Archive");
    EXPECT_EQ(moved.filename().string().rfind("old-deleted-", 0), 0u);

    EXPECT_THROW(deleteProject(m_shell, current, projects()), InputError);
    fs::create_directories(projects() / "DEFAULT.prj");
    EXPECT_THROW(deleteProject(m_shell, projects() / "DEFAULT.prj", projects()), InputError);
    fs::create_directories(projects() / "notes");
    EXPECT_THROW(deleteProject(m_shell, projects() / "notes", projects()), InputError);
    EXPECT_TRUE(fs::exists(current / "GEN.CST"));
    EXPECT_TRUE(fs::exists(projects() / "notes"));
}

} // namespace
} // namespace orvak::shell
