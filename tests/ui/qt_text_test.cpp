// The Qt text boundary: single-byte text of each language's code page to QString and back.
#include "ui/qt_text.h"

#include <gtest/gtest.h>

namespace orvak::ui {
namespace {

TEST(QtTextTest, HebrewAndEnglishCodePages) {
    // Byte 0xE0 is alef (U+05D0) in Windows-1255 and a-grave (U+00E0) in Windows-1252.
    const std::string bytes = std::string(1, '\xE0') + "B1";
    EXPECT_EQ(toQString(bytes, "Hebrew "), QString::fromUtf8("\u05D0B1"));
    EXPECT_EQ(toQString(bytes, "English"), QString::fromUtf8("\u00E0B1"));
    EXPECT_EQ(fromQString(QString::fromUtf8("\u05D0B1"), "HEBREW"), bytes);
    // A Hebrew letter has no place in the English code page.
    EXPECT_EQ(fromQString(QString::fromUtf8("\u05D0B1"), "English"), "?B1");
}

} // namespace
} // namespace orvak::ui
