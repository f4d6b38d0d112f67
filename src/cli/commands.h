// orvak-cli: each command family registers its sub-commands on the application here.
// A command reports failure by throwing; main turns that into one sentence and exit code 1.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace orvak::cli {

/// Where a command's outcome goes: the action to run once parsing succeeded, and the process
/// exit code it sets (0 success, 1 failure, 2 an element that fails a design check).
struct CommandContext {
    std::function<int()> action;
};

/// Each family adds its sub-commands; the chosen one stores its action in the context.
void addProjectCommands(CLI::App& app, CommandContext& context);
void addBarsCommands(CLI::App& app, CommandContext& context);
void addSteelCommands(CLI::App& app, CommandContext& context);
void addModelCommands(CLI::App& app, CommandContext& context);
void addBeamCommands(CLI::App& app, CommandContext& context);
void addDesignCommands(CLI::App& app, CommandContext& context);
void addColumnCommands(CLI::App& app, CommandContext& context);
void addFootingCommands(CLI::App& app, CommandContext& context);

} // namespace orvak::cli
