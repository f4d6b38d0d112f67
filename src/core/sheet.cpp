// The calculation sheet: formula lines, table rows and headings, written with CR LF.
#include "core/sheet.h"

namespace orvak::core {

Sheet& Sheet::text(std::string_view bytes) {
    m_text += bytes;
    return *this;
}

Sheet& Sheet::label(std::string_view utf8) {
    m_text += fromUtf8(utf8, m_page);
    return *this;
}

Sheet& Sheet::value(std::string_view mask, double v, Value style) {
    m_text += style == Value::Compact ? compactValue(mask, v) : formatUsing(mask, v);
    return *this;
}

Sheet& Sheet::end() {
    m_text += '\n';
    return *this;
}

Sheet& Sheet::line(std::string_view bytes) {
    return text(bytes).end();
}

Sheet& Sheet::heading(std::string_view bytes, char underline) {
    line(bytes);
    if (underline != '\0') {
        line(std::string(bytes.size(), underline));
    }
    return *this;
}

Sheet& Sheet::formula(std::string_view formulaText, std::string_view mask, double v,
                      std::string_view unit, Value style) {
    return text(formulaText).value(mask, v, style).text(unit).end();
}

Sheet& Sheet::row(std::string_view mask, std::initializer_list<UsingValue> values) {
    return text(formatUsing(mask, values)).end();
}

std::string Sheet::bytes() const {
    std::string out;
    out.reserve(m_text.size() + m_text.size() / 32);
    for (const char c : m_text) {
        if (c == '\n') {
            out += '\r';
        }
        out += c;
    }
    return out;
}

std::string compactValue(std::string_view mask, double v) {
    const std::string s = formatUsing(mask, v);
    const std::size_t first = s.find_first_not_of(' ');
    std::string out(1, ' ');
    out.append(s, first == std::string::npos ? 0 : first);
    return out;
}

std::string sheetBaseName(std::string_view name) {
    std::string base(name);
    for (char& c : base) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x20 || u == 0x7F || std::string_view("/\\:*?\"<>|").find(c) != std::string::npos) {
            c = '_';
        }
    }
    if (base.find_first_not_of('.') == std::string::npos) {
        base.assign(1, '_');
    }
    return base;
}

} // namespace orvak::core
