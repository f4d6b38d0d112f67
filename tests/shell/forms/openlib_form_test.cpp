// The project commands behind their dialogs: the answers are given through the hooks, and
// each command's effect on the projects folder and the shell is checked on disk.
#include "shell/forms/openlib_form.h"

#include <deque>

#include "shell/projects.h"
#include "ui/shell_fixture.h"

namespace orvak::shell::forms {
namespace {

namespace fs = std::filesystem;

class OpenlibTest : public test::ShellFixture {
protected:
    OpenlibTest() : m_shell(startShell()), m_openlib(m_shell, nullptr) {
        OpenlibHooks hooks;
        hooks.chooseFolder = [this](const QString&, const QString&) -> std::optional<QString> {
            return m_folder;
        };
        hooks.askText = [this](const QString& label, const QString&) -> std::optional<QString> {
            m_asked << label;
            if (m_names.empty()) {
                return std::nullopt;
            }
            auto name = m_names.front();
            m_names.pop_front();
            return name;
        };
        hooks.chooseProject = [this](const QString&, const QString&, const QStringList& list,
                                     const QString&) -> std::optional<QString> {
            m_listed = list;
            return m_choice;
        };
        hooks.confirm = [this](const QString& question) {
            m_questions << question;
            return m_yes;
        };
        hooks.inform = [this](const QString& m) { m_told << m; };
        hooks.fail = [this](const QString& m) { m_failures << m; };
        m_openlib.setHooks(hooks);
    }

    fs::path projects() const { return home() / "Projects"; }
    std::vector<fs::path> archived() const {
        std::vector<fs::path> found;
        if (fs::exists(projects() / "Archive")) {
            for (const auto& entry : fs::directory_iterator(projects() / "Archive")) {
                found.push_back(entry.path());
            }
        }
        return found;
    }

    shell::ShellState m_shell;
    Openlib m_openlib;
    std::optional<QString> m_folder;
    std::deque<std::optional<QString>> m_names;
    std::optional<QString> m_choice;
    bool m_yes = false;
    QStringList m_asked, m_listed, m_questions, m_told, m_failures;
};

TEST_F(OpenlibTest, NewAsksAgainWhileTheNameIsBlankAndChangesNothingWhenRefused) {
    m_names = {QString("   "), QString(""), QString("job")};
    ASSERT_TRUE(m_openlib.newProject());
    EXPECT_EQ(m_asked.size(), 3);
    EXPECT_TRUE(fs::is_directory(projects() / "job.prj"));
    EXPECT_EQ(m_shell.projectPath(), projects() / "job.prj");
    EXPECT_EQ(m_shell.projectName, "job.prj");
    EXPECT_TRUE(m_openlib.projects().contains("job.prj"));

    const fs::path current = m_shell.projectPath();
    m_names = {std::nullopt};
    EXPECT_FALSE(m_openlib.newProject());
    EXPECT_TRUE(m_failures.isEmpty());

    // A name that reaches outside the projects folder, and one that exists already.
    for (const QString& name : {QString("../outside"), QString("Demo")}) {
        m_failures.clear();
        m_names = {name};
        EXPECT_FALSE(m_openlib.newProject()) << name.toStdString();
        EXPECT_EQ(m_failures.size(), 1) << name.toStdString();
    }
    EXPECT_FALSE(fs::exists(home() / "outside.prj"));
    EXPECT_EQ(m_shell.projectPath(), current);
}

TEST_F(OpenlibTest, OpenChoosesFromTheProjectsOfTheFolder) {
    fs::create_directories(projects() / "Bridge.prj");
    fs::create_directories(projects() / "notes"); // not a project
    m_choice = QString("Bridge.prj");
    ASSERT_TRUE(m_openlib.openProject());
    QStringList listed = m_listed;
    listed.sort();
    EXPECT_EQ(listed, (QStringList{"Bridge.prj", "Demo.prj"}));
    EXPECT_EQ(m_shell.projectPath(), projects() / "Bridge.prj");

    m_choice = std::nullopt; // cancelled
    EXPECT_FALSE(m_openlib.openProject());
    EXPECT_EQ(m_shell.projectPath(), projects() / "Bridge.prj");
}

TEST_F(OpenlibTest, ProjectsDirRebuildsTheList) {
    test::TempDir other;
    fs::create_directories(other / "Silo.prj");
    m_folder = QString::fromStdString(other.path().string());
    ASSERT_TRUE(m_openlib.chooseProjectsFolder());
    EXPECT_EQ(m_openlib.projects(), QStringList{"Silo.prj"});
    EXPECT_EQ(m_shell.last.projectsFolder, other.path().string() + "/");
    EXPECT_TRUE(m_openlib.projectListSummary().contains("1"));

    m_folder = std::nullopt;
    EXPECT_FALSE(m_openlib.chooseProjectsFolder());
    EXPECT_EQ(m_shell.last.projectsFolder, other.path().string() + "/");
}

TEST_F(OpenlibTest, DeleteMovesToTheArchiveOnlyWhenConfirmed) {
    fs::create_directories(projects() / "Old.prj");
    test::writeBytes(projects() / "Old.prj" / "GEN.CST", "1");
    m_choice = QString("Old.prj");

    m_yes = false; // the default answer
    EXPECT_FALSE(m_openlib.deleteProject());
    ASSERT_EQ(m_questions.size(), 1);
    EXPECT_TRUE(m_questions[0].contains("Old.prj") && m_questions[0].contains("Archive"));
    EXPECT_TRUE(fs::exists(projects() / "Old.prj"));

    m_yes = true;
    ASSERT_TRUE(m_openlib.deleteProject());
    EXPECT_FALSE(fs::exists(projects() / "Old.prj"));
    const auto moved = archived();
    ASSERT_EQ(moved.size(), 1u);
    EXPECT_EQ(test::readBytes(moved[0] / "GEN.CST"), "1");
    ASSERT_EQ(m_told.size(), 1);
    EXPECT_TRUE(m_told[0].contains(QString::fromStdString(moved[0].string())));

    // The open project is refused with the engine's sentence, and stays.
    m_choice = QString("Demo.prj");
    EXPECT_FALSE(m_openlib.deleteProject());
    EXPECT_EQ(m_failures.size(), 1);
    EXPECT_TRUE(fs::exists(projects() / "Demo.prj"));
}

TEST_F(OpenlibTest, ArchiveAndCopyKeepTheProjectAndNeedOne) {
    const std::string record = test::readBytes(m_shell.projectPath() / "GEN.CST");
    ASSERT_TRUE(m_openlib.archiveProject());
    const auto copies = archived();
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(test::readBytes(copies[0] / "GEN.CST"), record);
    EXPECT_TRUE(m_told.last().contains(QString::fromStdString(copies[0].string())));

    m_names = {QString("Demo copy")};
    ASSERT_TRUE(m_openlib.copyProject());
    EXPECT_EQ(test::readBytes(projects() / "Demo copy.prj" / "GEN.CST"), record);
    EXPECT_EQ(m_shell.projectPath(), projects() / "Demo.prj");
    EXPECT_TRUE(m_failures.isEmpty());

    // Without an open project both refuse before asking anything.
    m_asked.clear();
    m_shell.last.projectPath.clear();
    EXPECT_FALSE(m_openlib.archiveProject());
    EXPECT_FALSE(m_openlib.copyProject());
    EXPECT_EQ(m_failures.size(), 2);
    EXPECT_TRUE(m_asked.isEmpty());
}

} // namespace
} // namespace orvak::shell::forms
