// Sequential text files: whole lines, and comma-separated fields with quoted strings, read
// item by item so that a short file simply leaves the items it lacks at their defaults.
#include "core/text_reader.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "core/file_util.h"

namespace orvak::core {

namespace {

bool isLineEnd(char c) {
    return c == '\r' || c == '\n';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::optional<double> leadingNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        negative = text[i] == '-';
        ++i;
    }
    // Gather the number into a plain "digits.digitsEexp" text that from_chars reads the same
    // way under any locale.
    std::string number;
    std::size_t digits = 0;
    while (i < text.size() && isDigit(text[i])) {
        number += text[i++];
        ++digits;
    }
    if (i < text.size() && text[i] == '.') {
        number += text[i++];
        while (i < text.size() && isDigit(text[i])) {
            number += text[i++];
            ++digits;
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
        std::size_t j = i + 1;
        std::string exponent = "e";
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
            exponent += text[j++];
        }
        if (j < text.size() && isDigit(text[j])) {
            while (j < text.size() && isDigit(text[j])) {
                exponent += text[j++];
            }
            number += exponent;
        }
    }
    double value = 0.0;
    const auto [end, ec] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (ec == std::errc::result_out_of_range) {
        // Either too large (an overflow reads as infinity) or too small (reads as zero).
        const auto e = number.find('e');
        const bool tiny = e != std::string::npos && number.size() > e + 1 && number[e + 1] == '-';
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    } else if (ec != std::errc()) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

SequentialReader::SequentialReader(std::string content) : m_text(std::move(content)) {}

std::optional<SequentialReader> SequentialReader::open(const std::filesystem::path& path) {
    auto bytes = readWholeFile(path);
    if (!bytes) {
        return std::nullopt;
    }
    return SequentialReader(std::string(bytes->begin(), bytes->end()));
}

bool SequentialReader::eof() const {
    return m_pos >= m_text.size();
}

std::string SequentialReader::lineInput() {
    const std::size_t start = m_pos;
    while (m_pos < m_text.size() && !isLineEnd(m_text[m_pos])) {
        ++m_pos;
    }
    std::string line = m_text.substr(start, m_pos - start);
    if (m_pos < m_text.size()) {
        // CR LF is one line end; a lone CR or LF is one too.
        if (m_text[m_pos] == '\r' && m_pos + 1 < m_text.size() && m_text[m_pos + 1] == '\n') {
            ++m_pos;
        }
        ++m_pos;
    }
    return line;
}

std::string SequentialReader::rawField() {
    while (m_pos < m_text.size() && (m_text[m_pos] == ' ' || m_text[m_pos] == '\t')) {
        ++m_pos;
    }
    if (eof()) {
        return {};
    }
    std::string field;
    if (m_text[m_pos] == '"') {
        ++m_pos;
        const std::size_t start = m_pos;
        while (m_pos < m_text.size() && m_text[m_pos] != '"' && !isLineEnd(m_text[m_pos])) {
            ++m_pos;
        }
        field = m_text.substr(start, m_pos - start);
        if (m_pos < m_text.size() && m_text[m_pos] == '"') {
            ++m_pos;
            // Whatever follows the closing quote up to the separator is not part of the field.
            while (m_pos < m_text.size() && m_text[m_pos] != ',' && !isLineEnd(m_text[m_pos])) {
                ++m_pos;
            }
        }
    } else {
        const std::size_t start = m_pos;
        while (m_pos < m_text.size() && m_text[m_pos] != ',' && !isLineEnd(m_text[m_pos])) {
            ++m_pos;
        }
        field = m_text.substr(start, m_pos - start);
        const auto last = field.find_last_not_of(" \t");
        field.erase(last == std::string::npos ? 0 : last + 1);
    }
    if (m_pos < m_text.size()) {
        if (m_text[m_pos] == ',') {
            ++m_pos;
        } else {
            if (m_text[m_pos] == '\r' && m_pos + 1 < m_text.size() && m_text[m_pos + 1] == '\n') {
                ++m_pos;
            }
            ++m_pos;
        }
    }
    return field;
}

std::string SequentialReader::inputString() {
    return rawField();
}

std::optional<std::int16_t> SequentialReader::inputInteger() {
    const auto number = leadingNumber(rawField());
    if (!number || !std::isfinite(*number)) {
        return std::nullopt;
    }
    // BASIC rounds a number read into an integer to the nearest whole, halves to even, which
    // is what nearbyint does under the default rounding mode.
    const double whole = std::nearbyint(*number);
    if (whole < -32768.0 || whole > 32767.0) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(whole);
}

std::optional<float> SequentialReader::inputSingle() {
    const auto number = leadingNumber(rawField());
    if (!number || !std::isfinite(*number)) {
        return std::nullopt;
    }
    if (std::fabs(*number) > static_cast<double>(std::numeric_limits<float>::max())) {
        return std::nullopt;
    }
    return static_cast<float>(*number);
}

namespace {

std::string withoutLineEnds(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (isLineEnd(c)) {
            c = ' ';
        }
    }
    return out;
}

} // namespace

SequentialWriter& SequentialWriter::printLine(std::string_view line) {
    m_text += withoutLineEnds(line);
    m_text += "\r\n";
    return *this;
}

SequentialWriter& SequentialWriter::writeLine(const std::vector<Field>& fields) {
    bool first = true;
    for (const auto& f : fields) {
        if (!first) {
            m_text += ',';
        }
        first = false;
        switch (f.kind) {
        case Field::Kind::String: {
            std::string s = withoutLineEnds(f.text);
            for (char& c : s) {
                if (c == '"') {
                    c = '\'';
                }
            }
            m_text += '"';
            m_text += s;
            m_text += '"';
            break;
        }
        case Field::Kind::Integer:
            m_text += std::to_string(f.integer);
            break;
        case Field::Kind::Single: {
            if (!std::isfinite(f.single)) {
                // A single that is no number could not be read back; 0 can.
                m_text += '0';
                break;
            }
            char buf[64];
            const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, f.single);
            m_text.append(buf, ec == std::errc() ? end : buf);
            break;
        }
        }
    }
    m_text += "\r\n";
    return *this;
}

} // namespace orvak::core
