// Number and text masks of the calculation sheets and listings, applied with the rules of
// BASIC's PRINT USING: the mask is cut into literal runs and fields, each value fills one field.
#include "core/mask_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "core/error.h"

namespace orvak::core {

namespace {

enum class SignMode : std::uint8_t { None, LeadPlus, TrailPlus, TrailMinus };

// The shape of one number field as read from the mask.
struct NumberShape {
    int intWidth = 0;  // mask characters before the point: '#', ',', "**", "$$", a leading '+'
    int decimals = 0;  // '#' behind the point
    int expDigits = 0; // 0 for fixed notation, else the digits of the exponent (2 or 3)
    bool point = false;
    bool thousands = false;
    bool asterisks = false;
    bool dollar = false;
    SignMode sign = SignMode::None;
};

enum class SegmentKind : std::uint8_t { Literal, Number, TextFixed, TextFirst, TextAll };

struct Segment {
    SegmentKind kind;
    std::string literal; // Literal only, escapes already resolved
    int width = 0;       // mask characters the field occupies
    NumberShape number;
};

bool at(std::string_view s, std::size_t i, char c) {
    return i < s.size() && s[i] == c;
}

bool startsWith(std::string_view s, std::size_t i, std::string_view what) {
    return s.substr(std::min(i, s.size())).starts_with(what);
}

// True when a number body ('#', ".#", "**" or "$$") begins at i.
bool numberBodyAt(std::string_view s, std::size_t i) {
    return at(s, i, '#') || (at(s, i, '.') && at(s, i + 1, '#')) || startsWith(s, i, "**") ||
           startsWith(s, i, "$$");
}

// Reads a number field beginning at i; returns the index behind it, or i when none begins.
std::size_t readNumberField(std::string_view s, std::size_t i, NumberShape& f) {
    std::size_t j = i;
    f = NumberShape{};
    if (at(s, j, '+')) {
        if (!numberBodyAt(s, j + 1)) {
            return i;
        }
        f.sign = SignMode::LeadPlus;
        f.intWidth = 1;
        ++j;
    } else if (!numberBodyAt(s, j)) {
        return i;
    }
    if (startsWith(s, j, "**")) {
        f.asterisks = true;
        f.intWidth += 2;
        j += 2;
        if (at(s, j, '$')) {
            f.dollar = true;
            f.intWidth += 1;
            ++j;
        }
    } else if (startsWith(s, j, "$$")) {
        f.dollar = true;
        f.intWidth += 2;
        j += 2;
    }
    // Digit positions and thousands commas up to the point. A comma that does not stand
    // inside the integer digits is ordinary text behind the field.
    while (j < s.size()) {
        if (s[j] == '#') {
            ++f.intWidth;
            ++j;
        } else if (s[j] == ',' && (at(s, j + 1, '#') || at(s, j + 1, ',') || at(s, j + 1, '.'))) {
            f.thousands = true;
            ++f.intWidth;
            ++j;
        } else {
            break;
        }
    }
    if (at(s, j, '.')) {
        f.point = true;
        ++j;
        while (at(s, j, '#')) {
            ++f.decimals;
            ++j;
        }
    }
    if (startsWith(s, j, "^^^^^")) {
        f.expDigits = 3;
        j += 5;
    } else if (startsWith(s, j, "^^^^")) {
        f.expDigits = 2;
        j += 4;
    }
    if (f.sign == SignMode::None && (at(s, j, '+') || at(s, j, '-'))) {
        f.sign = s[j] == '+' ? SignMode::TrailPlus : SignMode::TrailMinus;
        ++j;
    }
    return j;
}

std::vector<Segment> parseMask(std::string_view s) {
    std::vector<Segment> segments;
    std::string literal;
    auto flushLiteral = [&] {
        if (!literal.empty()) {
            segments.push_back(Segment{SegmentKind::Literal, std::move(literal), 0, {}});
            literal.clear();
        }
    };
    auto addField = [&](SegmentKind kind, std::size_t width) {
        flushLiteral();
        segments.push_back(Segment{kind, {}, static_cast<int>(width), {}});
    };
    std::size_t i = 0;
    while (i < s.size()) {
        const char c = s[i];
        if (c == '_') {
            // The next character stands for itself; a lone '_' at the end prints as it is.
            literal += (i + 1 < s.size()) ? s[i + 1] : '_';
            i += 2;
            continue;
        }
        if (c == '!') {
            addField(SegmentKind::TextFirst, 1);
            ++i;
            continue;
        }
        if (c == '&') {
            addField(SegmentKind::TextAll, 1);
            ++i;
            continue;
        }
        if (c == '\\') {
            // A text field runs to the next backslash; what lies between only sets the width,
            // so a ruler of digits ("\23456789\") is as good as blanks.
            const std::size_t close = s.find('\\', i + 1);
            if (close != std::string_view::npos) {
                addField(SegmentKind::TextFixed, close - i + 1);
                i = close + 1;
                continue;
            }
        }
        NumberShape shape;
        const std::size_t end = readNumberField(s, i, shape);
        if (end > i) {
            addField(SegmentKind::Number, end - i);
            segments.back().number = shape;
            i = end;
            continue;
        }
        literal += c;
        ++i;
    }
    flushLiteral();
    return segments;
}

// A finite, non-negative value as decimal digits: value = 0.d1 d2 d3 ... × 10^point. Only the
// first 15 significant digits are kept, the precision a double holds for certain, so that
// 1.005 is the decimal number 1.005 and not its binary neighbour 1.00499999999999989...
struct Decimal {
    std::array<char, 32> digits{};
    int count = 0;
    int point = 0;

    char digit(int pos) const { return (pos >= 0 && pos < count) ? digits[pos] : '0'; }
    bool isZero() const {
        for (int k = 0; k < count; ++k) {
            if (digits[k] != '0') {
                return false;
            }
        }
        return true;
    }
};

constexpr int kSignificantDigits = 15;

Decimal toDecimal(double magnitude) {
    Decimal d;
    if (magnitude == 0.0) {
        d.digits[0] = '0';
        d.count = 1;
        d.point = 1;
        return d;
    }
    char buf[40];
    const auto res = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific,
                                   kSignificantDigits - 1);
    ORVAK_ASSERT(res.ec == std::errc());
    const std::string_view text(buf, static_cast<std::size_t>(res.ptr - buf));
    const std::size_t e = text.find('e');
    for (std::size_t k = 0; k < e; ++k) {
        if (text[k] != '.') {
            d.digits[d.count++] = text[k];
        }
    }
    int exponent = 0;
    const char* expBegin = text.data() + e + 1;
    if (*expBegin == '+') {
        ++expBegin;
    }
    std::from_chars(expBegin, text.data() + text.size(), exponent);
    d.point = exponent + 1;
    return d;
}

// Keeps the first `keep` digits, rounding half away from zero (the magnitude rounds up on 5).
void roundToDigits(Decimal& d, int keep) {
    if (keep >= d.count) {
        return;
    }
    if (keep < 0) {
        d.digits[0] = '0';
        d.count = 1;
        d.point = 1;
        return;
    }
    const bool up = d.digits[keep] >= '5';
    d.count = keep;
    if (!up) {
        if (d.count == 0) {
            d.digits[0] = '0';
            d.count = 1;
            d.point = 1;
        }
        return;
    }
    int k = keep - 1;
    while (k >= 0 && d.digits[k] == '9') {
        d.digits[k] = '0';
        --k;
    }
    if (k >= 0) {
        ++d.digits[k];
        return;
    }
    // Carried out of the first digit: 9.99 becomes 10.0.
    for (int m = d.count; m > 0; --m) {
        d.digits[m] = d.digits[m - 1];
    }
    d.digits[0] = '1';
    ++d.count;
    ++d.point;
}

void appendGrouped(std::string& out, std::string_view digits, bool thousands) {
    if (!thousands) {
        out += digits;
        return;
    }
    for (std::size_t k = 0; k < digits.size(); ++k) {
        if (k > 0 && (digits.size() - k) % 3 == 0) {
            out += ',';
        }
        out += digits[k];
    }
}

void appendNonFinite(std::string& out, double value, int width) {
    const std::string_view text = std::isnan(value) ? "%NaN" : (value < 0 ? "%-Inf" : "%Inf");
    if (static_cast<int>(text.size()) < width) {
        out.append(static_cast<std::size_t>(width) - text.size(), ' ');
    }
    out += text;
}

// Puts the integer side of a number (sign, dollar, digits) right-aligned into its positions,
// with a leading "%" when it does not fit.
void appendNumber(std::string& out, const NumberShape& f, bool negative, std::string_view intText,
                  bool leadZero, std::string_view fraction, std::string_view exponent,
                  bool exponentOverflow) {
    std::string left;
    if (f.sign == SignMode::LeadPlus) {
        left += negative ? '-' : '+';
    } else if (f.sign == SignMode::None && negative) {
        left += '-';
    }
    if (f.dollar) {
        left += '$';
    }
    if (intText.empty()) {
        // A zero integer part prints its "0" only where a digit position is free for it, and
        // always when the field has no point.
        if (leadZero || !f.point) {
            left += '0';
        }
    } else {
        appendGrouped(left, intText, f.thousands);
    }
    const bool overflow = static_cast<int>(left.size()) > f.intWidth || exponentOverflow;
    if (overflow) {
        out += '%';
    }
    if (static_cast<int>(left.size()) < f.intWidth) {
        out.append(static_cast<std::size_t>(f.intWidth) - left.size(), f.asterisks ? '*' : ' ');
    }
    out += left;
    if (f.point) {
        out += '.';
        out += fraction;
    }
    out += exponent;
    if (f.sign == SignMode::TrailMinus) {
        out += negative ? '-' : ' ';
    } else if (f.sign == SignMode::TrailPlus) {
        out += negative ? '-' : '+';
    }
}

void appendFixed(std::string& out, const NumberShape& f, double value) {
    Decimal d = toDecimal(std::fabs(value));
    roundToDigits(d, d.point + f.decimals);
    // A value that rounds to zero prints without a minus sign: "-0.00" would mislead.
    const bool negative = value < 0 && !d.isZero();

    std::string intText;
    for (int pos = 0; pos < d.point; ++pos) {
        const char c = d.digit(pos);
        if (intText.empty() && c == '0') {
            continue;
        }
        intText += c;
    }
    std::string fraction;
    for (int k = 0; k < f.decimals; ++k) {
        fraction += d.digit(d.point + k);
    }
    const bool signInFront = f.sign == SignMode::LeadPlus || (f.sign == SignMode::None && negative);
    const int reserved = (signInFront ? 1 : 0) + (f.dollar ? 1 : 0);
    appendNumber(out, f, negative, intText, f.intWidth - reserved >= 1, fraction, {}, false);
}

void appendExponential(std::string& out, const NumberShape& f, double value) {
    // Without a "+" or trailing sign one position before the point is kept for the sign.
    const int signPositions = (f.sign == SignMode::None || f.sign == SignMode::LeadPlus) ? 1 : 0;
    int before = std::max(0, f.intWidth - signPositions - (f.dollar ? 1 : 0));
    if (before + f.decimals == 0) {
        before = 1; // no digit position at all: print one digit, marked as not fitting
    }
    const int significant = before + f.decimals;

    Decimal d = toDecimal(std::fabs(value));
    int exponent = 0;
    if (!d.isZero()) {
        roundToDigits(d, significant);
        exponent = d.point - (before > 0 ? before : 0);
    }
    const bool negative = value < 0 && !d.isZero();

    std::string intText;
    if (d.isZero()) {
        intText = before > 0 ? "0" : "";
    } else {
        for (int k = 0; k < before; ++k) {
            intText += d.digit(k);
        }
    }
    std::string fraction;
    for (int k = 0; k < f.decimals; ++k) {
        fraction += d.digit(before + k);
    }
    std::string expText = "E";
    expText += exponent < 0 ? '-' : '+';
    char buf[16];
    const auto res = std::to_chars(buf, buf + sizeof buf, std::abs(exponent));
    const int len = static_cast<int>(res.ptr - buf);
    if (len < f.expDigits) {
        expText.append(static_cast<std::size_t>(f.expDigits - len), '0');
    }
    expText.append(buf, res.ptr);
    appendNumber(out, f, negative, intText, false, fraction, expText, len > f.expDigits);
}

void appendNumberField(std::string& out, const Segment& seg, double value) {
    if (!std::isfinite(value)) {
        appendNonFinite(out, value, seg.width);
    } else if (seg.number.expDigits > 0) {
        appendExponential(out, seg.number, value);
    } else {
        appendFixed(out, seg.number, value);
    }
}

void appendTextField(std::string& out, const Segment& seg, std::string_view text) {
    switch (seg.kind) {
    case SegmentKind::TextFirst:
        out += text.empty() ? ' ' : text.front();
        break;
    case SegmentKind::TextAll:
        out += text;
        break;
    default: {
        const auto width = static_cast<std::size_t>(seg.width);
        const std::size_t n = std::min(width, text.size());
        out.append(text.substr(0, n));
        out.append(width - n, ' ');
        break;
    }
    }
}

void appendField(std::string& out, const Segment& seg, const UsingValue& value) {
    const bool numberField = seg.kind == SegmentKind::Number;
    if (const auto* number = std::get_if<double>(&value)) {
        if (numberField) {
            appendNumberField(out, seg, *number);
            return;
        }
    } else if (!numberField) {
        appendTextField(out, seg, std::get<std::string_view>(value));
        return;
    }
    out.append(static_cast<std::size_t>(seg.width), '?');
}

std::string formatValues(std::string_view mask, const UsingValue* values, std::size_t count) {
    const std::vector<Segment> segments = parseMask(mask);
    std::string out;
    out.reserve(mask.size() + 16);
    bool hasField = false;
    for (const auto& seg : segments) {
        hasField = hasField || seg.kind != SegmentKind::Literal;
    }
    if (!hasField) {
        for (const auto& seg : segments) {
            out += seg.literal;
        }
        return out;
    }
    // The mask is used again from its start while values remain; after the last value the
    // literal text up to the next field (or the end of the mask) still prints.
    std::size_t next = 0;
    for (;;) {
        for (const auto& seg : segments) {
            if (seg.kind == SegmentKind::Literal) {
                out += seg.literal;
            } else if (next == count) {
                return out;
            } else {
                appendField(out, seg, values[next++]);
            }
        }
        if (next == count) {
            return out;
        }
    }
}

} // namespace

std::string formatUsing(std::string_view mask, std::initializer_list<UsingValue> values) {
    return formatValues(mask, values.begin(), values.size());
}

std::string formatUsing(std::string_view mask, double value) {
    const UsingValue v = value;
    return formatValues(mask, &v, 1);
}

std::string formatUsing(std::string_view mask, std::string_view text) {
    const UsingValue v = text;
    return formatValues(mask, &v, 1);
}

} // namespace orvak::core
