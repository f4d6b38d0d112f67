// Sequential text files read and written the way the original configuration files were:
// whole lines, and comma-separated fields with strings in double quotes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvak::core {

/// The number a text starts with, as BASIC's Val reads it: leading blanks and tabs skipped, an
/// optional sign, digits with an optional point and decimals, an optional exponent (E or D).
/// Empty when the text starts with no number; infinite when the number overflows a double.
std::optional<double> leadingNumber(std::string_view text);

/// Reads a single-byte text file item by item. Lines end in LF, CR LF or a lone CR; the end
/// of the file ends the last line. Every read at the end of the file returns an empty item and
/// leaves eof() true, so a caller that guards each read with eof() stops without error.
class SequentialReader {
public:
    explicit SequentialReader(std::string content);
    /// The reader of an existing file; empty when the file does not exist. Throws FileError
    /// when it exists but cannot be read.
    static std::optional<SequentialReader> open(const std::filesystem::path& path);

    bool eof() const;

    /// A whole line, without its line end.
    std::string lineInput();

    /// One comma-separated field, as text. Leading blanks and tabs are skipped; a field that
    /// starts with a double quote runs to the closing quote (commas inside are kept), and the
    /// rest up to the next comma or line end is dropped; an unbalanced quote runs to the end of
    /// the line. An unquoted field runs to the next comma or line end, trailing blanks cut.
    /// A comma ends the field and is consumed; so is a line end.
    std::string inputString();

    /// One field read as a 16-bit integer: the field's leading number, rounded to the nearest
    /// whole (halves to even). Empty when the field holds no number or the number lies outside
    /// -32768..32767.
    std::optional<std::int16_t> inputInteger();

    /// One field read as a single; empty when the field holds no finite number.
    std::optional<float> inputSingle();

private:
    std::string rawField();

    std::string m_text;
    std::size_t m_pos = 0;
};

/// Builds a sequential text file: Print-style whole lines and Write-style field lines.
/// Lines end in CR LF, as the files of Windows installations do.
class SequentialWriter {
public:
    /// A whole line, written as given, except that a CR or LF inside it, which would split
    /// the line, is written as a blank.
    SequentialWriter& printLine(std::string_view line);

    /// One line of fields: strings in double quotes (a quote inside a string cannot be
    /// represented and is written as an apostrophe, a CR or LF as a blank), integers as digits,
    /// singles in their shortest form that reads back to the same single (a NaN or infinity as 0),
    /// separated by commas.
    struct Field {
        enum class Kind { String, Integer, Single } kind;
        std::string text;
        std::int64_t integer = 0;
        float single = 0.0f;
    };
    static Field str(std::string_view s) { return {Field::Kind::String, std::string(s)}; }
    static Field integer(std::int64_t v) { return {Field::Kind::Integer, {}, v}; }
    static Field single(float v) { return {Field::Kind::Single, {}, 0, v}; }
    SequentialWriter& writeLine(const std::vector<Field>& fields);

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

} // namespace orvak::core
