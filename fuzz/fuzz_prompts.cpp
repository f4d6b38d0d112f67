// libFuzzer target: the prompt loader, the "@k:" headings and the Hebrew run reversal on
// arbitrary bytes. The first two bytes choose the line range; nothing may fail, the count read
// never exceeds the count asked, and a reversal keeps the text's length and its bytes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shell/prompts.h"
#include "shell/text_direction.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::size_t firstLine = data[0];
    const std::size_t count = data[1];
    const std::string bytes(reinterpret_cast<const char*>(data + 2), size - 2);
    const auto prompts = orvak::shell::parsePrompts(bytes, firstLine, count);
    if (prompts.count() > count) {
        std::abort();
    }
    for (const auto& line : prompts.lines()) {
        if (line.find_first_of("\r\n") != std::string::npos) {
            std::abort();
        }
        for (int k = 1; k <= 3; ++k) {
            if (orvak::shell::placeholderText(line, k).size() > line.size()) {
                std::abort();
            }
        }
        for (const std::string path : {"", "50", "/home/user/Projects/job.prj"}) {
            std::string reversed = orvak::shell::ReverseHebInStrng(line, path);
            std::string sortedLine = line;
            std::sort(reversed.begin(), reversed.end());
            std::sort(sortedLine.begin(), sortedLine.end());
            if (reversed != sortedLine) {
                std::abort();
            }
        }
    }
    return 0;
}
