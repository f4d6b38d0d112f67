// Windows-1252 and Windows-1255 tables and their conversion to and from UTF-8.
// Bytes 0x00..0x7F are ASCII in both pages; the tables give the upper half.
#include "core/codepage.h"

#include <array>
#include <cstdint>

namespace orvak::core {

namespace {

constexpr char32_t kUndefined = 0xFFFD;
constexpr char32_t U = kUndefined;

using UpperHalf = std::array<char32_t, 128>;

// Windows-1252, 0x80..0xFF. 0x81, 0x8D, 0x8F, 0x90 and 0x9D are undefined; 0xA0..0xFF are the
// Latin-1 characters of the same code.
constexpr UpperHalf kWindows1252 = [] {
    UpperHalf t{};
    const char32_t c1[32] = {
        0x20AC, U,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 80
        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, U,      0x017D, U,      // 88
        U,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90
        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, U,      0x017E, 0x0178, // 98
    };
    for (int i = 0; i < 32; ++i) {
        t[i] = c1[i];
    }
    for (int i = 32; i < 128; ++i) {
        t[i] = static_cast<char32_t>(0x80 + i);
    }
    return t;
}();

// Windows-1255 (Hebrew), 0x80..0xFF: punctuation as in 1252 where Hebrew needs it, the new
// sheqel sign, × and ÷, the points (niqqud) 0xC0..0xD3, the Yiddish ligatures and geresh /
// gershayim 0xD4..0xD8, the letters alef..tav 0xE0..0xFA and the direction marks LRM / RLM.
constexpr UpperHalf kWindows1255 = {
    0x20AC, U,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 80
    0x02C6, 0x2030, U,      0x2039, U,      U,      U,      U,      // 88
    U,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90
    0x02DC, 0x2122, U,      0x203A, U,      U,      U,      U,      // 98
    0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x20AA, 0x00A5, 0x00A6, 0x00A7, // A0
    0x00A8, 0x00A9, 0x00D7, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF, // A8
    0x00B0, 0x00B1, 0x00B2, 0x00B3, 0x00B4, 0x00B5, 0x00B6, 0x00B7, // B0
    0x00B8, 0x00B9, 0x00F7, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF, // B8
    0x05B0, 0x05B1, 0x05B2, 0x05B3, 0x05B4, 0x05B5, 0x05B6, 0x05B7, // C0
    0x05B8, 0x05B9, 0x05BA, 0x05BB, 0x05BC, 0x05BD, 0x05BE, 0x05BF, // C8
    0x05C0, 0x05C1, 0x05C2, 0x05C3, 0x05F0, 0x05F1, 0x05F2, 0x05F3, // D0
    0x05F4, U,      U,      U,      U,      U,      U,      U,      // D8
    0x05D0, 0x05D1, 0x05D2, 0x05D3, 0x05D4, 0x05D5, 0x05D6, 0x05D7, // E0
    0x05D8, 0x05D9, 0x05DA, 0x05DB, 0x05DC, 0x05DD, 0x05DE, 0x05DF, // E8
    0x05E0, 0x05E1, 0x05E2, 0x05E3, 0x05E4, 0x05E5, 0x05E6, 0x05E7, // F0
    0x05E8, 0x05E9, 0x05EA, U,      U,      0x200E, 0x200F, U,      // F8
};

const UpperHalf& tableOf(CodePage page) {
    return page == CodePage::Windows1255 ? kWindows1255 : kWindows1252;
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        // Every character of both pages lies in the Basic Multilingual Plane.
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Decodes one UTF-8 character at `pos`, advancing it. A malformed sequence (a stray
// continuation byte, a truncated sequence, an overlong form, a surrogate, a value above
// U+10FFFF) yields kUndefined and skips the lead byte and the continuation bytes that belong to
// it, so that one bad character costs one replacement.
char32_t decodeUtf8(std::string_view s, std::size_t& pos) {
    const auto lead = static_cast<unsigned char>(s[pos++]);
    if (lead < 0x80) {
        return lead;
    }
    int more = 0;
    char32_t c = 0;
    char32_t minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        more = 1;
        c = lead & 0x1F;
        minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        more = 2;
        c = lead & 0x0F;
        minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        more = 3;
        c = lead & 0x07;
        minimum = 0x10000;
    } else {
        return kUndefined;
    }
    for (int k = 0; k < more; ++k) {
        if (pos >= s.size() || (static_cast<unsigned char>(s[pos]) & 0xC0) != 0x80) {
            return kUndefined;
        }
        c = (c << 6) | (static_cast<unsigned char>(s[pos++]) & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
        return kUndefined;
    }
    return c;
}

// The byte of a character in the page; 0 when the page does not hold it.
unsigned char encode(char32_t c, const UpperHalf& table) {
    if (c < 0x80) {
        return static_cast<unsigned char>(c);
    }
    if (c == kUndefined) {
        return 0;
    }
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i] == c) {
            return static_cast<unsigned char>(0x80 + i);
        }
    }
    return 0;
}

} // namespace

CodePage codePageForLanguage(std::string_view language) {
    const auto first = language.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return CodePage::Windows1252;
    }
    const auto last = language.find_last_not_of(" \t");
    const std::string_view name = language.substr(first, last - first + 1);
    constexpr std::string_view kHebrew = "HEBREW";
    if (name.size() != kHebrew.size()) {
        return CodePage::Windows1252;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const char upper = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
        if (upper != kHebrew[i]) {
            return CodePage::Windows1252;
        }
    }
    return CodePage::Windows1255;
}

std::string toUtf8(std::string_view bytes, CodePage page) {
    const UpperHalf& table = tableOf(page);
    std::string out;
    out.reserve(bytes.size() * 2);
    for (const char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        appendUtf8(out, b < 0x80 ? static_cast<char32_t>(b) : table[b - 0x80]);
    }
    return out;
}

std::string fromUtf8(std::string_view utf8, CodePage page, char replacement) {
    const UpperHalf& table = tableOf(page);
    std::string out;
    out.reserve(utf8.size());
    std::size_t pos = 0;
    while (pos < utf8.size()) {
        const char32_t c = decodeUtf8(utf8, pos);
        const unsigned char b = encode(c, table);
        // NUL is the only character that encodes to byte 0, and it is ASCII.
        out += (b != 0 || c == 0) ? static_cast<char>(b) : replacement;
    }
    return out;
}

std::optional<std::string> fromUtf8Exact(std::string_view utf8, CodePage page) {
    const UpperHalf& table = tableOf(page);
    std::string out;
    out.reserve(utf8.size());
    std::size_t pos = 0;
    while (pos < utf8.size()) {
        // A malformed sequence decodes to U+FFFD, which no single-byte page holds.
        const unsigned char b = encode(decodeUtf8(utf8, pos), table);
        if (b == 0) {
            return std::nullopt;
        }
        out += static_cast<char>(b);
    }
    return out;
}

} // namespace orvak::core
