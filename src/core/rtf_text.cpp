// Plain text of an RTF document: a walk over its groups and control words.
#include "core/rtf_text.h"

#include <cctype>
#include <vector>

namespace orvak::core {

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

bool letter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

} // namespace

std::string rtfPlainText(std::string_view rtf) {
    std::string text;
    // For each open group: whether its text is left out.
    std::vector<bool> skipped{false};
    std::size_t i = 0;
    const auto skipping = [&] { return skipped.back(); };
    while (i < rtf.size()) {
        const char c = rtf[i];
        if (c == '{') {
            skipped.push_back(skipping());
            ++i;
            continue;
        }
        if (c == '}') {
            if (skipped.size() == 1) {
                break;
            }
            skipped.pop_back();
            ++i;
            continue;
        }
        if (c == '\r' || c == '\n') {
            ++i;
            continue;
        }
        if (c != '\\') {
            if (!skipping()) {
                text += c;
            }
            ++i;
            continue;
        }
        // A control symbol or a control word.
        if (i + 1 >= rtf.size()) {
            break;
        }
        const char next = rtf[i + 1];
        if (next == '\\' || next == '{' || next == '}') {
            if (!skipping()) {
                text += next;
            }
            i += 2;
            continue;
        }
        if (next == '\'') {
            if (i + 3 < rtf.size() && hexValue(rtf[i + 2]) >= 0 && hexValue(rtf[i + 3]) >= 0) {
                if (!skipping()) {
                    text += static_cast<char>(hexValue(rtf[i + 2]) * 16 + hexValue(rtf[i + 3]));
                }
                i += 4;
            } else {
                i += 2;
            }
            continue;
        }
        if (next == '*') {
            skipped.back() = true;
            i += 2;
            continue;
        }
        if (!letter(next)) {
            i += 2; // another control symbol (\~, \-, \_ ...): nothing printable here
            continue;
        }
        std::size_t j = i + 1;
        while (j < rtf.size() && letter(rtf[j])) {
            ++j;
        }
        const std::string_view word = rtf.substr(i + 1, j - i - 1);
        if (j < rtf.size() && (rtf[j] == '-' || std::isdigit(static_cast<unsigned char>(rtf[j])))) {
            ++j;
            while (j < rtf.size() && std::isdigit(static_cast<unsigned char>(rtf[j]))) {
                ++j;
            }
        }
        if (j < rtf.size() && rtf[j] == ' ') {
            ++j; // the delimiter belongs to the word
        }
        if (word == "fonttbl" || word == "colortbl" || word == "stylesheet" || word == "info") {
            skipped.back() = true;
        } else if (!skipping()) {
            if (word == "par" || word == "line") {
                text += '\n';
            } else if (word == "tab") {
                text += '\t';
            }
        }
        i = j;
    }
    return text;
}

} // namespace orvak::core
