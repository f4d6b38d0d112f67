// What the steel forms share: the project's steel store, and the offer to import an old one
// before it is opened.
#include "bars/forms/bar_form_support.h"

#include <QWidget>

#include "core/error.h"
#include "core/file_util.h"
#include "shell/shell_state.h"

namespace orvak::bars::forms {

std::optional<bars::IronDatabase> openSteelStore(QWidget* form, const shell::ShellState& shell,
                                                 bool create, const QString& importQuestion,
                                                 const ui::AskHook& ask,
                                                 const ui::MessageHook& tell) {
    const std::filesystem::path project = shell.projectPath();
    try {
        if (!importQuestion.isEmpty() && bars::legacyImportOffered(project) &&
            ui::askYesNo(form, ask, importQuestion, form->windowTitle())) {
            const bars::LegacyImportResult result = bars::importLegacyIronDatabase(project);
            ui::tellUser(form, tell, QString::fromUtf8(result.message.c_str()));
        }
        if (!create && !core::findFileNoCase(project, bars::kIronDatabaseFile)) {
            return std::nullopt;
        }
        return bars::OpenIronDatabase(project);
    } catch (const FileError& e) {
        // A failed import leaves no Iron.db; none is made either, so the offer stands.
        ui::tellUser(form, tell, QString::fromUtf8(e.what()));
    } catch (const InputError& e) {
        ui::tellUser(form, tell, QString::fromUtf8(e.what()));
    }
    return std::nullopt;
}

} // namespace orvak::bars::forms
