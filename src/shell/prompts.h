// The prompt table: every caption and message of a form is a line of a text file of the
// current language, read at run time. Text stays single-byte here; Qt converts it for display.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orvak::shell {

/// Prompts of one form, numbered from 1 as the form uses them.
class PromptList {
public:
    PromptList() = default;
    explicit PromptList(std::vector<std::string> lines) : m_lines(std::move(lines)) {}

    /// Number of prompts actually read.
    std::size_t count() const { return m_lines.size(); }
    bool empty() const { return m_lines.empty(); }
    /// Prompt n (1-based); a prompt that was not read is empty.
    const std::string& operator()(std::size_t n) const;
    /// Prompt n, or `fallback` when it was not read or is blank (the form's stored default).
    std::string get(std::size_t n, std::string_view fallback) const;
    const std::vector<std::string>& lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

/// Language names of LANGUAGE.DAT, one per line, right-trimmed, empty lines skipped; an
/// absent file gives none.
std::vector<std::string> readLanguageList(const std::filesystem::path& driversFolder);

/// The letter of a language's prompt files: 'E' for English, 'H' for Hebrew, 'A' for Arabic
/// (trimmed, any case); '\0' for any other language.
char promptFileLetter(std::string_view language);

/// Program folder / language / key & letter & ".TXT", the language trimmed and the folder and
/// file found case-blind; an empty path for a language with no letter.
std::filesystem::path promptFilePath(const std::filesystem::path& programFolder,
                                     std::string_view language, std::string_view key);

/// Reads `count` prompts of `key` from line `firstLine` on, falling back to the English file
/// when the language's file is missing; an unknown language or no file at all gives an empty
/// list. Lines lose their CR/LF; bytes above 127 are kept as they are.
PromptList readPrompts(const std::filesystem::path& programFolder, std::string_view language,
                       std::string_view key, std::size_t firstLine, std::size_t count);

/// The prompts of a prompt file's bytes: lines firstLine .. firstLine + count - 1 (1-based; a
/// first line of 0 counts as 1), as many as the text holds.
PromptList parsePrompts(std::string content, std::size_t firstLine, std::size_t count);

/// Headings placed in a prompt through "@k:" markers: the text behind "@k:" up to the next
/// "@" or the end of the line, right-trimmed; empty when the line has no such marker.
std::string placeholderText(std::string_view line, int k);

/// Keys and line ranges of the shell's own prompts.
/// kGeneralPromptLines prompts from line 2.
inline constexpr std::string_view kGeneralPromptKey = "GNRL";
inline constexpr std::size_t kGeneralPromptLines = 31;
/// 36 prompts from line 2, and 120 from line 49.
inline constexpr std::string_view kGlobalPromptKey = "GLBLPRM";
/// Captions of the main frame.
inline constexpr std::string_view kMainFramePromptKey = "MdiMain";

} // namespace orvak::shell
