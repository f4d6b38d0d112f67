// Tests of the sequential text reader and writer: line ends, quoted fields, number fields
// and the end-of-file guard that lets a short file leave items at their defaults.
#include "core/text_reader.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "support/temp_dir.h"

namespace orvak::core {
namespace {

TEST(SequentialReader, LinesEndInCrLfLfOrLoneCrAndTheLastNeedsNone) {
    SequentialReader in("one\r\ntwo\nthree\rfour");
    EXPECT_EQ(in.lineInput(), "one");
    EXPECT_EQ(in.lineInput(), "two");
    EXPECT_EQ(in.lineInput(), "three");
    EXPECT_FALSE(in.eof());
    EXPECT_EQ(in.lineInput(), "four");
    EXPECT_TRUE(in.eof());
    // Reads past the end give empty items and keep eof, never an error.
    EXPECT_EQ(in.lineInput(), "");
    EXPECT_EQ(in.inputString(), "");
    EXPECT_FALSE(in.inputInteger().has_value());
    EXPECT_TRUE(in.eof());
}

TEST(SequentialReader, QuotedAndPlainFields) {
    SequentialReader in("\"C:\\Jobs, old\" ,  plain text  ,\"x\"junk,\"open quote, runs on\r\n"
                        "\"\",next\r\n");
    EXPECT_EQ(in.inputString(), "C:\\Jobs, old");       // a comma inside quotes is kept
    EXPECT_EQ(in.inputString(), "plain text");          // blanks around a plain field are cut
    EXPECT_EQ(in.inputString(), "x");                   // text behind the closing quote is dropped
    EXPECT_EQ(in.inputString(), "open quote, runs on"); // unbalanced: to the end of the line
    EXPECT_EQ(in.inputString(), "");
    EXPECT_EQ(in.inputString(), "next");
    EXPECT_TRUE(in.eof());
}

TEST(SequentialReader, IntegerFieldsRoundHalvesToEvenAndRefuseWhatIsNoInt16) {
    SequentialReader in("2.5,3.5,-2.5,12abc,1E3,1D2,abc,32767,32768,-32769,\"7\"");
    const std::optional<std::int16_t> expected[] = {
        2, 4, -2, 12, 1000, 100, std::nullopt, 32767, std::nullopt, std::nullopt, 7};
    for (const auto& e : expected) {
        EXPECT_EQ(in.inputInteger(), e);
    }
    EXPECT_TRUE(in.eof());
}

TEST(SequentialReader, SingleFields) {
    SequentialReader in("0.1, -1.5E+2, 1e39, nan, .5");
    EXPECT_EQ(in.inputSingle(), 0.1f);
    EXPECT_EQ(in.inputSingle(), -150.0f);
    EXPECT_FALSE(in.inputSingle().has_value()); // beyond the range of a single
    EXPECT_FALSE(in.inputSingle().has_value()); // "nan" is no number
    EXPECT_EQ(in.inputSingle(), 0.5f);
}

TEST(SequentialReader, MissingFileHasNoReaderAndAFolderIsAFileError) {
    test::TempDir dir;
    EXPECT_FALSE(SequentialReader::open(dir / "none").has_value());
    EXPECT_THROW(SequentialReader::open(dir.path()), FileError);
}

TEST(SequentialWriter, WritesCrLfLinesThatReadBack) {
    using W = SequentialWriter;
    W out;
    out.printLine("whole \"line\"\nwith LF");
    out.writeLine(
        {W::str("say \"hi\", \r\nok"), W::integer(-12), W::single(0.1f), W::single(1e36f)});
    // Expected text written out by hand: quotes become apostrophes and line ends blanks, so
    // that the file keeps its line structure; singles in their shortest exact form.
    EXPECT_EQ(out.text(), "whole \"line\" with LF\r\n\"say 'hi',   ok\",-12,0.1,1e+36\r\n");

    SequentialReader in(out.text());
    EXPECT_EQ(in.lineInput(), "whole \"line\" with LF");
    EXPECT_EQ(in.inputString(), "say 'hi',   ok");
    EXPECT_EQ(in.inputInteger(), -12);
    EXPECT_EQ(in.inputSingle(), 0.1f);
    EXPECT_EQ(in.inputSingle(), 1e36f);
    EXPECT_TRUE(in.eof());
}

} // namespace
} // namespace orvak::core
