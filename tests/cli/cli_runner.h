// Test support for the bars and steel command tests: runs the built orvak-cli with its own
// program folder (ORVAK_HOME) and captures its exit code, standard output and error.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace orvak::cli::testing {

struct CliRun {
    int code = -1;
    std::string out;
    std::string err;
};

inline std::string shellQuoted(const std::string& arg) {
    std::string q = "'";
    for (const char c : arg) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

/// Runs orvak-cli with `home` as its program folder; output goes through files in `scratch`.
inline CliRun runCli(const std::filesystem::path& home, const std::filesystem::path& scratch,
                     const std::vector<std::string>& args) {
    const auto out = scratch / "cli-stdout.txt";
    const auto err = scratch / "cli-stderr.txt";
    std::string command =
        "ORVAK_HOME=" + shellQuoted(home.string()) + " " + shellQuoted(ORVAK_CLI_PATH);
    for (const auto& a : args) {
        command += " " + shellQuoted(a);
    }
    command += " >" + shellQuoted(out.string()) + " 2>" + shellQuoted(err.string()) + " </dev/null";
    const int status = std::system(command.c_str());
    CliRun r;
    r.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.out = test::readBytes(out);
    r.err = test::readBytes(err);
    return r;
}

} // namespace orvak::cli::testing
