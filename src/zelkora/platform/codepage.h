/// Code page 936, the ANSI code page of the suite's systems, and the display
/// width of text in it.
///
/// The mapping is GBK with the euro sign at byte 0x80, plus the private-use
/// characters U+E000-U+E765 in the user-defined areas (U+E000-U+E233 at
/// AAA1-AFFE, U+E234-U+E4C5 at F8A1-FEFE, U+E4C6-U+E765 at A140-A7A0), so the
/// steel-grade symbols U+E000-U+E003 survive a data file. The tables are
/// computed at build time; nothing here sets up a converter at run time.
///
/// Width is counted the way the suite's fixed-pitch reports count it: the
/// number of bytes the text takes in code page 936. ASCII is one cell, a
/// double-byte character two, and a character with no form one (it is written
/// as "?").
///
///   std::string bytes = codepage::to_ansi(u"4\uE00220");  // "4\xAA\xA3" "20"
///   Text back = codepage::from_ansi(bytes);                // u"4\uE00220"
///   std::size_t cells = codepage::display_width(u"f = 1.0"); @file
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "zelkora/platform/text.h"

namespace zelkora::codepage {

/// Encoding. Every UTF-16 unit that has a form in code page 936 becomes its one
/// or two bytes. Any other character becomes one "?": a character with no
/// form, a lone surrogate, and a surrogate pair (a character outside the BMP)
/// as a whole.
std::string to_ansi(TextView text);
void append_ansi(std::string& out, TextView text);  ///< The same, appended to `out`.

/// Decoding. Valid input gives exactly the characters that `to_ansi` encodes
/// to it. Damaged input never stops the decoding and never reads past the end:
///  - a byte that cannot start a character (0xFF) gives U+FFFD;
///  - a lead byte (0x81-0xFE) at the very end, or followed by a byte that can
///    never be a trail byte (below 0x40, 0x7F, 0xFF), gives U+FFFD, and
///    decoding goes on with that next byte, so a line break or "=" after a
///    damaged lead byte is kept;
///  - a well-formed pair that has no character gives one U+FFFD for both
///    bytes.
Text from_ansi(std::string_view bytes);

/// The bytes `to_ansi` would give for one UTF-16 unit: 1 or 2. A surrogate
/// counts 1 (a lone one is written as "?"; see `display_width` for pairs).
int char_width(char16_t c);

/// The number of bytes `to_ansi(text)` gives, without converting: the text's
/// width in the cells of a fixed-pitch report. A surrogate pair counts 1.
std::size_t display_width(TextView text);

/// The number of UTF-16 units at the start of `text` that take at most
/// `max_bytes` bytes in code page 936: the longest prefix that fits a buffer of
/// that many bytes without splitting a double-byte character or a surrogate
/// pair.
std::size_t prefix_fitting(TextView text, std::size_t max_bytes);

/// Whether the character has a form in code page 936 (surrogates have none).
bool has_ansi_form(char16_t c);

}  // namespace zelkora::codepage
