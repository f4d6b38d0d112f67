// libFuzzer target: the PRJNO reader on arbitrary bytes (quotes left open, commas, NULs, huge
// numbers). Reading must not fail, and what it read must write and read back unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shell/software_config.h"

using orvak::shell::formatLastProjectState;
using orvak::shell::parseLastProjectState;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto state = parseLastProjectState(bytes);
    const std::string written = formatLastProjectState(state);
    const std::string rewritten = formatLastProjectState(parseLastProjectState(written));
    if (formatLastProjectState(parseLastProjectState(rewritten)) != rewritten) {
        std::abort();
    }
    return 0;
}
