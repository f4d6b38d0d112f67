// Tests of the Windows-1252 and Windows-1255 conversions: known characters of the published
// tables, byte-exact round trips, and what becomes of text a page cannot hold.
#include "core/codepage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace orvak::core {
namespace {

std::string byte(int b) {
    return std::string(1, static_cast<char>(b));
}

TEST(CodePage, KnownCharacters) {
    struct Case {
        CodePage page;
        int byte;
        const char* utf8;
        const char* name;
    };
    const CodePage w1252 = CodePage::Windows1252;
    const CodePage w1255 = CodePage::Windows1255;
    for (const Case c : {
             Case{w1252, 0x41, "A", "ASCII"},
             Case{w1252, 0x80, "\xE2\x82\xAC", "euro sign U+20AC"},
             Case{w1252, 0x8A, "\xC5\xA0", "S with caron U+0160"},
             Case{w1252, 0x9F, "\xC5\xB8", "Y with diaeresis U+0178"},
             Case{w1252, 0xB2, "\xC2\xB2", "superscript two U+00B2 (kg/cm²)"},
             Case{w1252, 0xE9, "\xC3\xA9", "e acute U+00E9"},
             Case{w1255, 0x80, "\xE2\x82\xAC", "euro sign U+20AC"},
             Case{w1255, 0xA4, "\xE2\x82\xAA", "new sheqel sign U+20AA"},
             Case{w1255, 0xAA, "\xC3\x97", "multiplication sign U+00D7"},
             Case{w1255, 0xC0, "\xD6\xB0", "sheva U+05B0"},
             Case{w1255, 0xD4, "\xD7\xB0", "double vav U+05F0"},
             Case{w1255, 0xE0, "\xD7\x90", "alef U+05D0"},
             Case{w1255, 0xFA, "\xD7\xAA", "tav U+05EA"},
             Case{w1255, 0xFE, "\xE2\x80\x8F", "right-to-left mark U+200F"},
         }) {
        EXPECT_EQ(toUtf8(byte(c.byte), c.page), c.utf8) << c.name;
        EXPECT_EQ(fromUtf8(c.utf8, c.page), byte(c.byte)) << c.name;
    }
    // "שלום": shin F9, lamed EC, vav E5, final mem ED.
    EXPECT_EQ(fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D", w1255), "\xF9\xEC\xE5\xED");
}

TEST(CodePage, EveryDefinedByteRoundTrips) {
    const std::set<int> undefined1252 = {0x81, 0x8D, 0x8F, 0x90, 0x9D};
    std::set<int> undefined1255 = {0x81, 0x8A, 0x8C, 0x8D, 0x8E, 0x8F, 0x90, 0x9A,
                                   0x9C, 0x9D, 0x9E, 0x9F, 0xFB, 0xFC, 0xFF};
    for (int b = 0xD9; b <= 0xDF; ++b) {
        undefined1255.insert(b);
    }
    const std::string replacementUtf8 = "\xEF\xBF\xBD"; // U+FFFD

    for (const auto& [page, undefined] : {std::pair{CodePage::Windows1252, undefined1252},
                                          std::pair{CodePage::Windows1255, undefined1255}}) {
        std::string all;
        std::set<std::string> seen;
        for (int b = 0; b < 256; ++b) {
            const std::string utf8 = toUtf8(byte(b), page);
            if (undefined.count(b) != 0) {
                EXPECT_EQ(utf8, replacementUtf8) << "byte " << b;
                EXPECT_EQ(fromUtf8(utf8, page), "?");
                continue;
            }
            EXPECT_NE(utf8, replacementUtf8) << "byte " << b;
            EXPECT_TRUE(seen.insert(utf8).second) << "byte " << b << " shares its character";
            all += byte(b);
        }
        // The whole run at once, so that multi-byte sequences follow each other.
        EXPECT_EQ(fromUtf8(toUtf8(all, page), page), all);
    }
}

TEST(CodePage, CharactersThePageCannotHold) {
    const CodePage w1252 = CodePage::Windows1252;
    const CodePage w1255 = CodePage::Windows1255;
    EXPECT_EQ(fromUtf8("\xD7\x90", w1252), "?") << "alef has no place in 1252";
    EXPECT_EQ(fromUtf8("caf\xC3\xA9", w1255), "caf?") << "e acute has no place in 1255";
    EXPECT_EQ(fromUtf8("\xCE\xA9", w1252, '_'), "_") << "omega, with the caller's replacement";
    EXPECT_EQ(fromUtf8("\xF0\x9F\x98\x80", w1252), "?") << "one replacement for four bytes";
    EXPECT_EQ(fromUtf8(std::string("a\0b", 3), w1252), std::string("a\0b", 3));

    // What the user types into a name: refused rather than stored as "?".
    EXPECT_FALSE(fromUtf8Exact("\xD7\x90", w1252)) << "alef under 1252";
    EXPECT_EQ(fromUtf8Exact("\xD7\x90", w1255), "\xE0") << "alef under 1255";
    EXPECT_EQ(fromUtf8Exact("caf\xC3\xA9", w1252), "caf\xE9");
    EXPECT_FALSE(fromUtf8Exact(std::string("a\0b", 3), w1252)) << "an embedded NUL";
    EXPECT_FALSE(fromUtf8Exact("a\xC3", w1252)) << "malformed UTF-8";
    EXPECT_EQ(fromUtf8Exact("", w1252), "");
}

TEST(CodePage, MalformedUtf8BecomesReplacement) {
    const CodePage w1252 = CodePage::Windows1252;
    EXPECT_EQ(fromUtf8("\x80", w1252), "?") << "stray continuation byte";
    EXPECT_EQ(fromUtf8("a\xC3", w1252), "a?") << "truncated at the end";
    EXPECT_EQ(fromUtf8("\xC3(", w1252), "?(") << "truncated before ASCII";
    EXPECT_EQ(fromUtf8("\xE2\x82(", w1252), "?(") << "truncated three-byte sequence";
    EXPECT_EQ(fromUtf8("\xC0\xAF", w1252), "??") << "overlong '/' must not pass as '/'";
    EXPECT_EQ(fromUtf8("\xE0\x80\xAF", w1252), "?") << "overlong three-byte '/'";
    EXPECT_EQ(fromUtf8("\xED\xA0\x80", w1252), "?") << "UTF-16 surrogate";
    EXPECT_EQ(fromUtf8("\xF5\x80\x80\x80", w1252), "????") << "beyond U+10FFFF";
}

TEST(CodePage, LanguageChoosesThePage) {
    for (const char* hebrew : {"Hebrew", "HEBREW", "hebrew", "  Hebrew  "}) {
        EXPECT_EQ(codePageForLanguage(hebrew), CodePage::Windows1255) << hebrew;
    }
    for (const char* other : {"English", "Arabic", "", "Hebrew2", "Heb"}) {
        EXPECT_EQ(codePageForLanguage(other), CodePage::Windows1252) << other;
    }
}

} // namespace
} // namespace orvak::core
