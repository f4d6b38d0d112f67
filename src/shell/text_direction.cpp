// Hebrew text for left-to-right devices: runs of Hebrew letters reversed into visual order, and
// text files moved from the Windows Hebrew code page (224..250) to the DOS one (128..154).
#include "shell/text_direction.h"

#include <algorithm>

#include "core/error.h"
#include "core/file_util.h"
#include "core/text_reader.h"

namespace fs = std::filesystem;

namespace orvak::shell {

namespace {

// The test that decides whether a character other than a Hebrew letter or a blank ends a run.
// It compares a text, in binary order, with the decimal codes of "+".."?" ("43".."62"),
// "A".."Z" and "a".."z"; the text tested is the project path, as the routine always did, so
// the outcome is the same for every character of one call. An absolute path ("/...") or an
// empty one lies in none of the ranges, and a run then spans from its first to its last letter.
bool textEndsRun(std::string_view tested) {
    const auto between = [&](std::string_view low, std::string_view high) {
        return tested >= low && tested <= high;
    };
    return between("43", "62") || between("65", "90") || between("97", "122");
}

void reverseSpan(std::string& s, std::ptrdiff_t first, std::ptrdiff_t last) {
    std::reverse(s.begin() + first, s.begin() + last + 1);
}

// Windows-1255 letters 224..250 to DOS code page 862 letters 128..154.
void toDosCodes(std::string& line) {
    for (char& ch : line) {
        const auto c = static_cast<unsigned char>(ch);
        if (isHebrewLetter(c)) {
            ch = static_cast<char>(c - 96);
        }
    }
}

// A line with "@" markers holds headings placed by key ("@3:text"). Each segment between two
// markers is put in visual order on its own, so the keys stay where they are and no heading
// runs into its neighbour.
std::string reverseSegments(std::string_view line, std::string_view projectPath) {
    std::string out;
    std::size_t start = 0;
    while (true) {
        const auto at = line.find('@', start);
        const auto end = at == std::string_view::npos ? line.size() : at;
        out += ReverseHebInStrng(line.substr(start, end - start), projectPath);
        if (at == std::string_view::npos) {
            break;
        }
        out += '@';
        start = at + 1;
    }
    return out;
}

} // namespace

std::string ReverseHebInStrng(std::string_view text, std::string_view projectPath) {
    std::string s(text);
    if (s.empty()) {
        return s;
    }
    const bool othersEndRuns = textEndsRun(projectPath);
    std::ptrdiff_t first = -1;
    std::ptrdiff_t last = -1;
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(s.size()); ++i) {
        const auto c = static_cast<unsigned char>(s[static_cast<std::size_t>(i)]);
        if (isHebrewLetter(c)) {
            if (first < 0) {
                first = i;
            }
            last = i;
        } else if (c != ' ' && othersEndRuns && first >= 0) {
            reverseSpan(s, first, last);
            first = -1;
            last = -1;
        }
    }
    if (first >= 0) {
        reverseSpan(s, first, last);
    }
    return s;
}

void ConvWinCharToDos(const fs::path& file, const fs::path& projectFolder,
                      std::string_view projectPath) {
    std::string name = file.string();
    const auto firstChar = name.find_first_not_of(' ');
    if (firstChar == std::string::npos) {
        return;
    }
    name = name.substr(firstChar, name.find_last_not_of(' ') - firstChar + 1);
    const fs::path source(name);
    std::error_code ec;
    if (!fs::is_regular_file(source, ec)) {
        return;
    }

    const fs::path scratchFolder = projectFolder.empty() ? source.parent_path() : projectFolder;
    const fs::path scratch = core::resolveNoCase(scratchFolder, "TMP1");
    fs::remove(scratch, ec);

    auto reader = core::SequentialReader::open(source);
    if (!reader) {
        return;
    }
    std::string converted;
    while (!reader->eof()) {
        std::string line = reader->lineInput();
        if (line.find('@') != std::string::npos) {
            line = reverseSegments(line, projectPath);
        }
        toDosCodes(line);
        converted += line;
        converted += "\r\n";
    }

    core::saveFileAtomically(scratch, converted);
    // The scratch file takes the source's place. A scratch folder on another file system
    // cannot be renamed across; the source is then saved in place and the scratch removed.
    fs::rename(scratch, source, ec);
    if (ec) {
        try {
            core::saveFileAtomically(source, converted);
        } catch (...) {
            fs::remove(scratch, ec);
            throw;
        }
        fs::remove(scratch, ec);
    }
}

} // namespace orvak::shell
