// Openlib: the projects folder and the project commands of the Project menu (new, open, copy,
// delete, archive), each a short exchange of dialogs around one call of the project engine.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "shell/prompts.h"
#include "shell/shell_state.h"

class QWidget;

namespace orvak::shell::forms {

/// The dialogs of the project commands. Each has a default (file dialog, input box, list,
/// message box); tests replace them with recorded answers.
struct OpenlibHooks {
    /// A folder chosen under a caption, starting at a folder; nothing when cancelled.
    std::function<std::optional<QString>(const QString& caption, const QString& start)>
        chooseFolder;
    /// A text typed into an input box under the program title; nothing when cancelled.
    std::function<std::optional<QString>(const QString& label, const QString& initial)> askText;
    /// A project chosen from a list, accepted with a button of the given text; nothing when
    /// cancelled.
    std::function<std::optional<QString>(const QString& caption, const QString& label,
                                         const QStringList& projects, const QString& accept)>
        chooseProject;
    /// A question answered Yes (true) or No (false), No being the default.
    std::function<bool(const QString& question)> confirm;
    /// A message that reports an outcome.
    std::function<void(const QString& message)> inform;
    /// A message that reports a failure: the operation did nothing.
    std::function<void(const QString& message)> fail;
};

class Openlib {
public:
    /// `dialogParent` owns the default dialogs; `shell` must outlive the object.
    Openlib(shell::ShellState& shell, QWidget* dialogParent);

    void setHooks(OpenlibHooks hooks);
    /// Asked after the dialogs of "new" and "open" and before the current project changes
    /// (the main window closes the forms of the old project); false abandons the command.
    void setLeaveProjectCheck(std::function<bool()> check) { m_leaveProject = std::move(check); }
    const OpenlibHooks& hooks() const { return m_hooks; }
    /// Reloads the prompts of the commands in the current language.
    void readPrompts();

    /// "Projects Dir": the user chooses the projects folder; when one is chosen it becomes the
    /// projects folder and the list of projects is rebuilt. True when the folder changed.
    bool chooseProjectsFolder();
    /// "new": asks for a name (again while it is blank) and creates the project, which becomes
    /// current. True when a project was made.
    bool newProject();
    /// "open": the user picks a project of the projects folder, which becomes current.
    bool openProject();
    /// "copy": copies the current project under a name the user types.
    bool copyProject();
    /// "delete": the user picks a project and confirms; it is moved to the Archive folder.
    bool deleteProject();
    /// "Archeive of projects": a time-stamped copy of the current project in the Archive folder.
    bool archiveProject();

    /// The projects folder in use: the shell's, or the installation's default when none is set.
    std::filesystem::path projectsFolder() const;
    /// The projects of the projects folder, as last listed.
    const QStringList& projects() const { return m_projects; }
    /// Lists the projects folder again.
    void rebuildProjectList();
    /// "Projects found in <folder>: <count>." for the status bar.
    QString projectListSummary() const;

private:
    QString prompt(std::size_t n, std::string_view fallback) const;
    /// Runs a project-engine call; an InputError or FileError becomes one failure message.
    bool guarded(const std::function<void()>& command) const;
    bool needProject() const;
    OpenlibHooks defaultHooks();

    shell::ShellState& m_shell;
    QWidget* m_dialogParent;
    OpenlibHooks m_hooks;
    shell::PromptList m_prompts;
    QStringList m_projects;
    std::function<bool()> m_leaveProject;
};

/// A file-system path as shown to the user (file names are UTF-8 on the host).
QString pathText(const std::filesystem::path& path);

} // namespace orvak::shell::forms
