// The prompt table: the language list of LANGUAGE.DAT and the loader that reads a range of
// lines of a form's prompt file, falling back to the English file when a language lacks it.
#include "shell/prompts.h"

#include "core/file_util.h"
#include "core/text_reader.h"
#include "shell/shell_state.h"

namespace fs = std::filesystem;

namespace orvak::shell {

namespace {

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

std::string upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

bool isRegularFile(const fs::path& path) {
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

} // namespace

const std::string& PromptList::operator()(std::size_t n) const {
    static const std::string kNone;
    if (n < 1 || n > m_lines.size()) {
        return kNone;
    }
    return m_lines[n - 1];
}

std::string PromptList::get(std::size_t n, std::string_view fallback) const {
    const std::string& prompt = (*this)(n);
    if (prompt.find_first_not_of(" \t") == std::string::npos) {
        return std::string(fallback);
    }
    return prompt;
}

std::vector<std::string> readLanguageList(const fs::path& driversFolder) {
    std::vector<std::string> names;
    const auto file = core::findFileNoCase(driversFolder, kLanguageFile);
    if (!file || !isRegularFile(*file)) {
        return names;
    }
    auto reader = core::SequentialReader::open(*file);
    if (!reader) {
        return names;
    }
    while (!reader->eof()) {
        std::string name = reader->lineInput();
        const auto last = name.find_last_not_of(" \t");
        if (last == std::string::npos) {
            continue;
        }
        name.erase(last + 1);
        names.push_back(std::move(name));
    }
    return names;
}

char promptFileLetter(std::string_view language) {
    const std::string key = upper(trimmed(language));
    if (key == "ENGLISH") {
        return 'E';
    }
    if (key == "HEBREW") {
        return 'H';
    }
    if (key == "ARABIC") {
        return 'A';
    }
    return '\0';
}

fs::path promptFilePath(const fs::path& programFolder, std::string_view language,
                        std::string_view key) {
    const char letter = promptFileLetter(language);
    if (letter == '\0') {
        return {};
    }
    // Windows ignores case and trailing blanks in a folder name; find the folder the same way.
    const fs::path folder = core::resolveNoCase(programFolder, trimmed(language));
    return core::resolveNoCase(folder, std::string(key) + letter + ".TXT");
}

PromptList parsePrompts(std::string content, std::size_t firstLine, std::size_t count) {
    core::SequentialReader in(std::move(content));
    for (std::size_t skipped = 1; skipped < firstLine && !in.eof(); ++skipped) {
        in.lineInput();
    }
    std::vector<std::string> lines;
    while (lines.size() < count && !in.eof()) {
        lines.push_back(in.lineInput());
    }
    return PromptList(std::move(lines));
}

PromptList readPrompts(const fs::path& programFolder, std::string_view language,
                       std::string_view key, std::size_t firstLine, std::size_t count) {
    fs::path file = promptFilePath(programFolder, language, key);
    if (file.empty()) {
        return {};
    }
    if (!isRegularFile(file)) {
        file = promptFilePath(programFolder, "ENGLISH", key);
        if (!isRegularFile(file)) {
            return {};
        }
    }
    auto bytes = core::readWholeFile(file);
    if (!bytes) {
        return {};
    }
    return parsePrompts(std::string(bytes->begin(), bytes->end()), firstLine, count);
}

std::string placeholderText(std::string_view line, int k) {
    const std::string key = "@" + std::to_string(k) + ":";
    const auto at = line.find(key);
    if (at == std::string_view::npos) {
        return {};
    }
    const auto start = at + key.size();
    const auto end = line.find('@', start);
    std::string text(line.substr(start, end == std::string_view::npos ? line.npos : end - start));
    const auto last = text.find_last_not_of(" \t");
    text.erase(last == std::string::npos ? 0 : last + 1);
    return text;
}

} // namespace orvak::shell
