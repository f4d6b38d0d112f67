// libFuzzer target: the SWC reader on arbitrary bytes. Whatever it reads must stay within the
// rules of the items (setting C 1..2) and must write a file that reads back to the same items.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shell/software_config.h"

using orvak::shell::formatSoftwareConfig;
using orvak::shell::parseSoftwareConfig;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto config = parseSoftwareConfig(bytes);
    if (config.settingC < 1 || config.settingC > 2) {
        std::abort();
    }
    // One write normalises what cannot be stored (quotes, line ends); from then on the file
    // must be a fixed point of read and write.
    const std::string written = formatSoftwareConfig(config);
    const std::string rewritten = formatSoftwareConfig(parseSoftwareConfig(written));
    if (formatSoftwareConfig(parseSoftwareConfig(rewritten)) != rewritten) {
        std::abort();
    }
    return 0;
}
