// The calculation sheet: lines of text in which a code formula is printed as it stands and
// followed by its value through a number mask, table rows through one mask, and headings.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/codepage.h"
#include "core/mask_format.h"

namespace orvak::core {

/// A sheet under construction. Its text is single-byte in the project's code page, as every
/// text file of a project is: the engines' texts are held as bytes, and what comes as UTF-8
/// (a unit with "²", a sentence) is converted with label(). Lines end with "\n" inside and
/// with CR LF in the file (bytes()).
class Sheet {
public:
    /// How a formula's value stands behind its text.
    enum class Value {
        Masked,  ///< the mask's whole field, right-aligned as PRINT USING gives it
        Compact, ///< the masked value with its leading blanks cut to one
    };

    explicit Sheet(CodePage page = CodePage::Windows1252) : m_page(page) {}

    CodePage codePage() const { return m_page; }

    /// Appends text (bytes of the code page) to the current line.
    Sheet& text(std::string_view bytes);
    /// Appends a UTF-8 text to the current line, converted to the code page.
    Sheet& label(std::string_view utf8);
    /// Appends a value through a PRINT USING mask to the current line.
    Sheet& value(std::string_view mask, double v, Value style = Value::Masked);
    /// Ends the current line.
    Sheet& end();

    /// A whole line of text.
    Sheet& line(std::string_view bytes = {});
    /// A section heading; with `underline` a second line of that character as long as the
    /// heading.
    Sheet& heading(std::string_view bytes, char underline = '\0');
    /// A formula line: the formula's printed text as it stands, its value through `mask`, then
    /// the unit (its own blanks and brackets included, e.g. " (kg/cm2)").
    Sheet& formula(std::string_view formulaText, std::string_view mask, double v,
                   std::string_view unit = {}, Value style = Value::Masked);
    /// A table row: the values through one mask (its literal characters copied as they stand).
    Sheet& row(std::string_view mask, std::initializer_list<UsingValue> values);

    /// The lines, each ending with "\n" (a line still open is included without one).
    const std::string& str() const { return m_text; }
    /// The file content: every "\n" written as CR LF.
    std::string bytes() const;

private:
    CodePage m_page;
    std::string m_text;
};

/// The value of `v` through `mask` with its leading blanks cut to one: " 12.50" for
/// "#####.##". A value wider than the mask keeps its overflow mark.
std::string compactValue(std::string_view mask, double v);

/// The base name of a sheet file made from names the user typed (a floor's, a beam's, a
/// group's): the parts joined as given, with every character that cannot stand in a file name
/// on the machines projects travel between (controls, / \ : * ? " < > |) replaced by "_", and
/// a name of dots only made "_". The result is one plain name that can never reach outside
/// the project folder; an empty result is "_".
std::string sheetBaseName(std::string_view name);

} // namespace orvak::core
