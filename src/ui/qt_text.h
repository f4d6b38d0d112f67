// The boundary where single-byte text of the engines becomes Qt text and back, in the code
// page of the current language.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace orvak::ui {

/// Single-byte text of a language's files (prompts, records) as a QString.
QString toQString(std::string_view bytes, std::string_view language);
/// A QString typed by the user as single-byte text of the language's code page.
std::string fromQString(const QString& text, std::string_view language);
/// The same, only when every character has its own byte in the language's code page; empty
/// when one does not (a Hebrew name under English), so that the form can refuse it.
std::optional<std::string> fromQStringExact(const QString& text, std::string_view language);

/// The shortest plain decimal (no exponent, which the input fields refuse) that reads back as
/// the same single: a value shown in a field and saved again unchanged keeps every bit.
QString plainDecimal(float v);

} // namespace orvak::ui
