// The text of a rich-text (RTF) document, for the plain-text viewer: paragraphs and tabs kept,
// formatting dropped. Enough for the report documents of the program and of its older
// versions, which are text in a fixed-width face.
#pragma once

#include <string>
#include <string_view>

namespace orvak::core {

/// The document's text in its single-byte code page: "\par" and "\line" end a line, "\tab"
/// is a tab, "\'hh" is the byte hh, "\\", "\{" and "\}" are themselves; every other control
/// word, and every group that starts with "\*" or names the font table, colour table,
/// stylesheet or document information, is left out. Unbalanced braces end the text there.
std::string rtfPlainText(std::string_view rtf);

} // namespace orvak::core
