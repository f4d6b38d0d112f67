// The plain text of RTF documents: what a word processor shows, without the formatting.
#include <gtest/gtest.h>

#include "core/rtf_text.h"

namespace orvak::core {
namespace {

TEST(RtfPlainText, KeepsTheTextAndLinesOfAReportDocument) {
    // A document as a word processor saves it: header tables, a framed heading, a material
    // line with an escaped brace, a Hebrew letter as \'e0, an ignorable destination.
    const std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern Courier New;}}"
        "{\\colortbl;\\red0\\green0\\blue0;}{\\*\\generator Writer;}"
        "\\f0\\fs20  ==========  FLEXURE  ========== \\par\n"
        "Fc\\tab =   250   (kg/cm^2)\\par\r\n"
        "\\{As\\} = 6.16 \\'e0\\line end}";
    EXPECT_EQ(rtfPlainText(rtf),
              " ==========  FLEXURE  ========== \nFc\t=   250   (kg/cm^2)\n{As} = 6.16 \xe0\nend");
    // A cut-off document gives what stands before the cut.
    EXPECT_EQ(rtfPlainText("{\\rtf1 abc\\par de"), "abc\nde");
    EXPECT_EQ(rtfPlainText("{\\rtf1 x}} trailing"), "x");
}

} // namespace
} // namespace orvak::core
