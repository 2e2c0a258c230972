// Text into XML 1.0 and HTML: escaped for element content and attribute
// values alike, converted to UTF-8, and kept to the characters both allow,
// so that any UTF-16 text (lone surrogates, control characters) gives a
// document that every reader parses.
//
//   std::string xml = "<dc:title>";
//   append_xml_text(xml, doc.title);
//   xml += "</dc:title>";
//
// What a character becomes: & < > " ' their entities; a tab itself; the
// other controls (below U+0020, U+007F-U+009F) nothing; a lone surrogate and
// a noncharacter (U+FDD0-U+FDEF, U+xxFFFE, U+xxFFFF) U+FFFD; a surrogate
// pair its code point.
#pragma once

#include <string>

#include "zelkora/platform/text.h"

namespace zelkora::document {

void append_xml_text(std::string& out, TextView text);

// Appends the code point as UTF-8.
void append_utf8(std::string& out, char32_t c);

}  // namespace zelkora::document
