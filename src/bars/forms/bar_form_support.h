// What the steel forms share: the project's steel store, opened with the offer to import the
// Access store of an older installation.
#pragma once

#include <QString>
#include <optional>

#include "bars/steel_store.h"
#include "ui/form_support.h"

class QWidget;

namespace orvak::shell {
struct ShellState;
}

namespace orvak::bars::forms {

/// The project's steel store as the steel forms need it. When the project holds an old
/// Iron.MDB and no Iron.db, the user is first asked whether to import it (`importQuestion`;
/// an empty question offers nothing); the outcome of an import is told. Without a store the result
/// is empty unless `create` is set, which makes an empty store. Every failure is told; the result
/// is then empty.
std::optional<bars::IronDatabase> openSteelStore(QWidget* form, const shell::ShellState& shell,
                                                 bool create, const QString& importQuestion,
                                                 const ui::AskHook& ask,
                                                 const ui::MessageHook& tell);

} // namespace orvak::bars::forms
