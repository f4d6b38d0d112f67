// Number and text masks of the calculation sheets and listings ("##.##", " ####.## ",
// "\    \  "), applied with the rules of BASIC's PRINT USING so that columns line up.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace orvak::core {

using UsingValue = std::variant<double, std::string_view>;

/// Formats values through a mask, field by field, the literal characters of the mask copied
/// as they stand. Number fields: "#" digit positions, one optional ".", "," before the point
/// for thousands groups, a leading "+" or trailing "-" for the sign, "**" and "$$" leaders,
/// "^^^^" for an exponent; the number is rounded half away from zero to the field's decimals
/// and right-aligned; a minus sign takes a digit position; a number too wide for its field is
/// printed whole behind a "%". Text fields: "\  \" (two plus the blanks between characters
/// wide, the text cut or blank-padded), "!" (first character), "&" (the whole text). "_"
/// prints the next mask character literally. When the values outnumber the fields the mask
/// is used again from its start; when a value's kind does not fit its field, the field prints
/// as "?" characters of its width. NaN and infinities print as "%" followed by "NaN" or
/// "Inf" ("-Inf"): a listing shows that something went wrong, never a misleading number.
/// Rounding works on the number's first 15 significant digits (1.005 prints "1.01" with
/// "#.##"); a value that rounds to zero prints without a minus sign. A text field runs from
/// one "\" to the next whatever lies between ("\2345\" is six wide); a mask without any field
/// prints as text and ignores the values.
std::string formatUsing(std::string_view mask, std::initializer_list<UsingValue> values);
std::string formatUsing(std::string_view mask, double value);
std::string formatUsing(std::string_view mask, std::string_view text);

} // namespace orvak::core
