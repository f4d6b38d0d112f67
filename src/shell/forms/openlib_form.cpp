// Openlib: the projects folder and the project commands. Every command asks its questions
// first, then makes one call of the project engine; a refusal of the engine is shown as one
// message and leaves everything as it was.
#include "shell/forms/openlib_form.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QWidget>
#include <exception>

#include "core/error.h"
#include "shell/forms/project_choice_dialog.h"
#include "shell/projects.h"
#include "shell/startup.h"
#include "ui/general_prompts.h"

namespace fs = std::filesystem;

namespace orvak::shell::forms {

namespace {

constexpr std::string_view kPromptKey = "Openlib";
constexpr std::size_t kPromptCount = 14;

// Prompt numbers of the form's file (prompt n is line n + 1).
enum Prompt : std::size_t {
    kChooseFolder = 1,
    kNewName = 2,
    kOpenCaption = 3,
    kProjectsIn = 4,
    kCopyName = 5,
    kDeleteQuestion = 6,
    kArchived = 7,
    kCopied = 8,
    kMoved = 9,
    kNoProjects = 10,
    kOpenButton = 11,
    kCancelButton = 12,
    kDeleteCaption = 13,
    kProjectsFound = 14,
};

QString fromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

QString pathText(const fs::path& path) {
    return fromUtf8(path.string());
}

Openlib::Openlib(shell::ShellState& shell, QWidget* dialogParent)
    : m_shell(shell), m_dialogParent(dialogParent), m_hooks(defaultHooks()) {
    readPrompts();
}

void Openlib::setHooks(OpenlibHooks hooks) {
    const OpenlibHooks defaults = defaultHooks();
    if (!hooks.chooseFolder) {
        hooks.chooseFolder = defaults.chooseFolder;
    }
    if (!hooks.askText) {
        hooks.askText = defaults.askText;
    }
    if (!hooks.chooseProject) {
        hooks.chooseProject = defaults.chooseProject;
    }
    if (!hooks.confirm) {
        hooks.confirm = defaults.confirm;
    }
    if (!hooks.inform) {
        hooks.inform = defaults.inform;
    }
    if (!hooks.fail) {
        hooks.fail = defaults.fail;
    }
    m_hooks = std::move(hooks);
}

void Openlib::readPrompts() {
    m_prompts =
        shell::readPrompts(m_shell.programFolder, m_shell.language(), kPromptKey, 2, kPromptCount);
}

QString Openlib::prompt(std::size_t n, std::string_view fallback) const {
    return ui::formPrompt(m_prompts, n, fallback, m_shell.language());
}

fs::path Openlib::projectsFolder() const {
    if (m_shell.last.projectsFolder.empty()) {
        return shell::defaultProjectsFolder(m_shell.programFolder);
    }
    return fs::path(m_shell.last.projectsFolder);
}

void Openlib::rebuildProjectList() {
    m_projects.clear();
    for (const auto& name : shell::listProjects(projectsFolder())) {
        m_projects.append(fromUtf8(name));
    }
}

QString Openlib::projectListSummary() const {
    return prompt(kProjectsFound, "Projects found in %2: %1.")
        .arg(m_projects.size())
        .arg(pathText(projectsFolder()));
}

bool Openlib::guarded(const std::function<void()>& command) const {
    try {
        command();
        return true;
    } catch (const InputError& e) {
        m_hooks.fail(QString::fromUtf8(e.what()));
    } catch (const FileError& e) {
        m_hooks.fail(QString::fromUtf8(e.what()));
    } catch (const std::exception& e) {
        // A file-system refusal the engine did not word itself still reaches the user whole.
        m_hooks.fail(QString::fromUtf8(e.what()));
    }
    return false;
}

bool Openlib::needProject() const {
    if (m_shell.hasProject()) {
        return true;
    }
    m_hooks.fail(ui::generalPrompt(m_shell, ui::General::NoProject));
    return false;
}

bool Openlib::chooseProjectsFolder() {
    const auto chosen = m_hooks.chooseFolder(prompt(kChooseFolder, "Choose the projects folder"),
                                             pathText(projectsFolder()));
    if (!chosen || chosen->trimmed().isEmpty()) {
        return false;
    }
    const fs::path folder(chosen->toStdString());
    if (!guarded([&] { shell::listProjects(folder); })) {
        return false;
    }
    m_shell.last.projectsFolder = shell::withTrailingSeparator(folder.string());
    rebuildProjectList();
    return true;
}

bool Openlib::newProject() {
    std::optional<QString> name;
    do {
        name = m_hooks.askText(prompt(kNewName, "Name of the new project:"), QString());
        if (!name) {
            return false;
        }
    } while (name->trimmed().isEmpty());
    if (m_leaveProject && !m_leaveProject()) {
        return false;
    }
    const bool made =
        guarded([&] { shell::newProject(m_shell, projectsFolder(), name->toStdString()); });
    if (made) {
        rebuildProjectList();
    }
    return made;
}

bool Openlib::openProject() {
    if (!guarded([&] { rebuildProjectList(); })) {
        return false;
    }
    const QString folder = pathText(projectsFolder());
    if (m_projects.isEmpty()) {
        m_hooks.inform(prompt(kNoProjects, "There are no projects in %1.").arg(folder));
        return false;
    }
    const auto chosen = m_hooks.chooseProject(prompt(kOpenCaption, "Open project"),
                                              prompt(kProjectsIn, "Projects in %1:").arg(folder),
                                              m_projects, prompt(kOpenButton, "Open"));
    if (!chosen || chosen->isEmpty()) {
        return false;
    }
    const fs::path path = projectsFolder() / chosen->toStdString();
    if (m_leaveProject && !m_leaveProject()) {
        return false;
    }
    return guarded([&] { shell::openProject(m_shell, path); });
}

bool Openlib::copyProject() {
    if (!needProject()) {
        return false;
    }
    const QString current = fromUtf8(m_shell.projectName);
    std::optional<QString> name;
    do {
        name =
            m_hooks.askText(prompt(kCopyName, "Name of the copy of %1:").arg(current), QString());
        if (!name) {
            return false;
        }
    } while (name->trimmed().isEmpty());
    fs::path target;
    if (!guarded([&] {
            target =
                shell::copyProject(m_shell.projectPath(), projectsFolder(), name->toStdString());
        })) {
        return false;
    }
    rebuildProjectList();
    m_hooks.inform(
        prompt(kCopied, "The project %1 was copied to %2.").arg(current, pathText(target)));
    return true;
}

bool Openlib::deleteProject() {
    if (!guarded([&] { rebuildProjectList(); })) {
        return false;
    }
    const fs::path folder = projectsFolder();
    if (m_projects.isEmpty()) {
        m_hooks.inform(prompt(kNoProjects, "There are no projects in %1.").arg(pathText(folder)));
        return false;
    }
    const auto chosen =
        m_hooks.chooseProject(prompt(kDeleteCaption, "Delete project"),
                              prompt(kProjectsIn, "Projects in %1:").arg(pathText(folder)),
                              m_projects, ui::generalPrompt(m_shell, ui::General::Delete));
    if (!chosen || chosen->isEmpty()) {
        return false;
    }
    const QString question =
        prompt(kDeleteQuestion, "Delete the project %1? It will be moved to the Archive folder %2.")
            .arg(*chosen, pathText(shell::archiveFolder(folder)));
    if (!m_hooks.confirm(question)) {
        return false;
    }
    fs::path target;
    if (!guarded([&] {
            target = shell::deleteProject(m_shell, folder / chosen->toStdString(), folder);
        })) {
        return false;
    }
    rebuildProjectList();
    m_hooks.inform(
        prompt(kMoved, "The project %1 was moved to %2.").arg(*chosen, pathText(target)));
    return true;
}

bool Openlib::archiveProject() {
    if (!needProject()) {
        return false;
    }
    fs::path target;
    if (!guarded(
            [&] { target = shell::archiveProject(m_shell.projectPath(), projectsFolder()); })) {
        return false;
    }
    m_hooks.inform(prompt(kArchived, "The project %1 was archived as %2.")
                       .arg(fromUtf8(m_shell.projectName), pathText(target)));
    return true;
}

OpenlibHooks Openlib::defaultHooks() {
    OpenlibHooks hooks;
    QWidget* parent = m_dialogParent;
    const QString title = fromUtf8(m_shell.title);
    hooks.chooseFolder = [parent](const QString& caption,
                                  const QString& start) -> std::optional<QString> {
        const QString folder = QFileDialog::getExistingDirectory(parent, caption, start);
        if (folder.isEmpty()) {
            return std::nullopt;
        }
        return folder;
    };
    hooks.askText = [parent, title](const QString& label,
                                    const QString& initial) -> std::optional<QString> {
        bool ok = false;
        const QString text =
            QInputDialog::getText(parent, title, label, QLineEdit::Normal, initial, &ok);
        if (!ok) {
            return std::nullopt;
        }
        return text;
    };
    hooks.chooseProject = [this, parent](const QString& caption, const QString& label,
                                         const QStringList& projects,
                                         const QString& accept) -> std::optional<QString> {
        ProjectChoiceDialog dialog(caption, label, projects, parent);
        dialog.setButtonTexts(accept, prompt(kCancelButton, "Cancel"));
        dialog.select(fromUtf8(m_shell.projectName));
        if (dialog.exec() != QDialog::Accepted || dialog.chosen().isEmpty()) {
            return std::nullopt;
        }
        return dialog.chosen();
    };
    hooks.confirm = [parent, title](const QString& question) {
        return QMessageBox::question(parent, title, question, QMessageBox::Yes | QMessageBox::No,
                                     QMessageBox::No) == QMessageBox::Yes;
    };
    hooks.inform = [parent, title](const QString& message) {
        QMessageBox::information(parent, title, message);
    };
    hooks.fail = [parent, title](const QString& message) {
        QMessageBox::warning(parent, title, message);
    };
    return hooks;
}

} // namespace orvak::shell::forms
