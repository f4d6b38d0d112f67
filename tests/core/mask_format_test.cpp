// Tests of the PRINT USING masks of the sheets and listings. Every expected string is worked
// by hand from the rules: digits right-aligned, rounding half away from zero, "%" on overflow.
#include "core/mask_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvak::core {
namespace {

struct NumberCase {
    const char* mask;
    double value;
    const char* expected;
    const char* why;
};

void expectNumbers(std::initializer_list<NumberCase> cases) {
    for (const auto& c : cases) {
        EXPECT_EQ(formatUsing(c.mask, c.value), c.expected)
            << "mask \"" << c.mask << "\" value " << c.value << ": " << c.why;
    }
}

TEST(MaskFormat, DigitsRoundAndAlign) {
    expectNumbers({
        {"##.##", 0.5, " 0.50", "a free digit position gets the zero before the point"},
        {"##.##", 1.25, " 1.25", ""},
        {"##.##", 12.345, "12.35", "12.345 rounds up, though its binary value is 12.3449999"},
        {"#.##", 1.005, "1.01", "1.005 is the decimal 1.005, not 1.00499999999999989"},
        {"#.##", 0.125, "0.13", "an exact tie goes away from zero, not to even"},
        {"#####", 2.5, "    3", "half away from zero"},
        {"#####", 0.4, "    0", "a field without point always prints a digit"},
        {"#####", 0, "    0", ""},
        {"###", 0.5, "  1", ""},
        {"##.#", 9.95, "10.0", "the carry fills the free position"},
        {"##.##", 0.004, " 0.00", ""},
        {".##", 0.5, ".50", "no position before the point: no zero"},
        {"##.", 5, " 5.", "a point without decimals still prints"},
        {"    ####.#", 3.14159, "       3.1", "leading blanks of the mask are text"},
        {" ####.## ", 1234.5, " 1234.50 ", ""},
        {"   #######.# ", 1234567.25, "   1234567.3 ", ".25 is exact, so .3 away from zero"},
        {"##.## cm", 3, " 3.00 cm", ""},
    });
}

TEST(MaskFormat, MinusSignTakesADigitPosition) {
    expectNumbers({
        {"##.##", -1.5, "-1.50", ""},
        {"##.##", -0.5, "-0.50", "sign and zero share the two positions"},
        {"#.##", -0.5, "-.50", "the sign takes the zero's position"},
        {"#.##", -0.125, "-.13", "ties of negatives go away from zero too"},
        {"#####", -2.5, "   -3", ""},
        {"##", -5, "-5", ""},
        {"##.##", -0.004, " 0.00", "a value that rounds to zero shows no minus"},
    });
}

TEST(MaskFormat, TooWideForTheFieldIsMarkedWithPercent) {
    expectNumbers({
        {"##.##", 123.456, "%123.46", "printed whole behind %"},
        {"##.##", 99.996, "%100.00", "rounding pushes it over"},
        {"##.##", -12.5, "%-12.50", "the sign is one character too many"},
        {"##", -10, "%-10", ""},
        {".##", 1.5, "%1.50", ""},
        {".##", -0.5, "%-.50", "no position for the sign"},
        {"#####", 1e20, "%100000000000000000000", ""},
    });
}

TEST(MaskFormat, SignsLeadersCommasAndExponents) {
    expectNumbers({
        {"+##.#", 5, " +5.0", "a leading + prints the sign of either kind"},
        {"+##.#", -5, " -5.0", ""},
        {"##.#-", -5, " 5.0-", "trailing minus"},
        {"##.#-", 5, " 5.0 ", "trailing minus leaves a blank for a positive value"},
        {"##.#+", 5, " 5.0+", ""},
        {"**##.#", 5, "***5.0", "asterisks fill the free positions"},
        {"**##", -12, "*-12", ""},
        {"$$##.##", 12.5, " $12.50", "the dollar floats next to the digits"},
        {"**$##.##", 12.5, "**$12.50", ""},
        {"#,###", 1234, "1,234", ""},
        {"###,###", 1234, "  1,234", ""},
        {"##,###.##", 1234567.891, "%1,234,567.89", "six positions, nine characters"},
        {"##.##^^^^", 234.56, " 2.35E+02", "one position is kept for the sign"},
        {"##.##^^^^", -0.000123, "-1.23E-04", ""},
        {"##.##^^^^", 0, " 0.00E+00", ""},
        {"###.##^^^^", 234.56, " 23.46E+01", ""},
        {"##.##^^^^", 9.996, " 1.00E+01", "the carry moves the exponent"},
        {".##^^^^", 234.56, ".23E+03", ""},
        {"+#.##^^^^^", 234.56, "+2.35E+002", "five carets: three exponent digits"},
    });
}

TEST(MaskFormat, NonFiniteNumbersAreMarked) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(formatUsing("####.##", std::nan("")), "   %NaN");
    EXPECT_EQ(formatUsing("######", -inf), " %-Inf");
    EXPECT_EQ(formatUsing("##", inf), "%Inf");
}

TEST(MaskFormat, TextFields) {
    EXPECT_EQ(formatUsing("\\    \\", "ABCDEFGH"), "ABCDEF");
    EXPECT_EQ(formatUsing("\\    \\  ", "AB"), "AB      ");
    EXPECT_EQ(formatUsing("\\\\", "ABC"), "AB");
    // A ruler of digits between the backslashes sets the width as blanks would: 19 characters.
    EXPECT_EQ(formatUsing("\\23456789012345678\\ ", "Column C1"), "Column C1           ");
    EXPECT_EQ(formatUsing("\\23456789012345678\\ ", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"),
              "ABCDEFGHIJKLMNOPQRS ");
    EXPECT_EQ(formatUsing("!", "Hello"), "H");
    EXPECT_EQ(formatUsing("!", ""), " ");
    EXPECT_EQ(formatUsing("[&]", "Hello"), "[Hello]");
    EXPECT_EQ(formatUsing("a\\b", "x"), "a\\b") << "a backslash without partner is text";
}

TEST(MaskFormat, LiteralsEscapesAndReuse) {
    EXPECT_EQ(formatUsing("L/###", 240), "L/240");
    EXPECT_EQ(formatUsing("_###", 5), "# 5") << "the escaped # is text, two positions remain";
    EXPECT_EQ(formatUsing("_\\ _!_&_", "x"), "\\ !&_") << "escapes only; no field takes the text";
    EXPECT_EQ(formatUsing("Fc= ###.# kg/cm^2", 250), "Fc= 250.0 kg/cm^2");
    EXPECT_EQ(formatUsing("##.##,", 1), " 1.00,") << "a comma behind the point is text";
    EXPECT_EQ(formatUsing("Ast%= #.##", 0.5), "Ast%= 0.50");

    // Several values through one mask, one field each.
    EXPECT_EQ(formatUsing("\\  \\ ##.## ####", {"C1", 1.25, 300.0}), "C1    1.25  300");
    // More values than fields: the mask starts again.
    EXPECT_EQ(formatUsing("## ", {1.0, 2.0, 3.0}), " 1  2  3 ");
    // Fewer values than fields: the text up to the next field still prints.
    EXPECT_EQ(formatUsing("## and ##", 5), " 5 and ");
    EXPECT_EQ(formatUsing("Total: ##", {}), "Total: ");
}

TEST(MaskFormat, ValueOfTheWrongKindPrintsQuestionMarks) {
    EXPECT_EQ(formatUsing("###.#", "x"), "?????");
    EXPECT_EQ(formatUsing("\\  \\|", 5.0), "????|");
    EXPECT_EQ(formatUsing("## \\  \\", {"a", 2.0}), "?? ????");
}

} // namespace
} // namespace orvak::core
