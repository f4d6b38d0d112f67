// libFuzzer target: the language list LANGUAGE.DAT of any bytes. Every name read is one line
// of the file, trimmed on the right and never empty, so that no name carries a line end or
// trailing blank into the prompt file names built from it; each name gets a prompt letter.
#include <cstddef>
#include <cstdint>

#include "core/error.h"
#include "fuzz_support.h"
#include "shell/prompts.h"

using namespace orvak;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFolder scratch("language");
    fuzz::writeFile(scratch.path() / "LANGUAGE.DAT", data, size);
    std::vector<std::string> names;
    try {
        names = shell::readLanguageList(scratch.path());
    } catch (const FileError&) {
        return 0;
    }
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    for (const std::string& name : names) {
        if (name.empty() || name.back() == ' ' || name.find_first_of("\r\n") != std::string::npos) {
            fuzz::fail("a language name is empty, ends in a blank or holds a line end");
        }
        if (file.find(name) == std::string_view::npos) {
            fuzz::fail("a language name is not a text of the file");
        }
        (void)shell::promptFileLetter(name);
    }
    return 0;
}
