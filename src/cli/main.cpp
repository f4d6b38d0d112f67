// orvak-cli: the command-line front end of Orvak for scripting and checks without the GUI.
// Every failure ends with one plain sentence on standard error and exit code 1.
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

#include "cli/commands.h"
#include "core/error.h"

int main(int argc, char** argv) {
    // A reader that stops early (`orvak-cli design p | head`) must not kill a design run half
    // way: with SIGPIPE ignored the run goes on to its end and only the printing fails.
    std::signal(SIGPIPE, SIG_IGN);
    CLI::App app{"Orvak: reinforced-concrete element design to the ACI code (metric units).",
                 "orvak-cli"};
    app.set_version_flag("--version", std::string("orvak-cli ") + ORVAK_VERSION);
    app.require_subcommand(1);

    orvak::cli::CommandContext context;
    orvak::cli::addProjectCommands(app, context);
    orvak::cli::addBarsCommands(app, context);
    orvak::cli::addSteelCommands(app, context);
    orvak::cli::addModelCommands(app, context);
    orvak::cli::addBeamCommands(app, context);
    orvak::cli::addDesignCommands(app, context);
    orvak::cli::addColumnCommands(app, context);
    orvak::cli::addFootingCommands(app, context);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        // --help and --version end here with 0; a usage error prints CLI11's one-line reason.
        return app.exit(e) == 0 ? 0 : 1;
    }
    if (!context.action) {
        std::cerr << "No command was given; try --help.\n";
        return 1;
    }
    try {
        return context.action();
    } catch (const orvak::FileError& e) {
        std::cerr << e.what() << "\n";
    } catch (const orvak::InputError& e) {
        std::cerr << e.what() << "\n";
    } catch (const std::exception& e) {
        std::cerr << "Unexpected failure: " << e.what() << "\n";
    }
    return 1;
}
