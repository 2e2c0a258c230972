/// Text of the library: UTF-16 strings, one element per character as the
/// suite's programs count them (positions and lengths are UTF-16 units).
///
/// This unit holds the one UTF-8 <-> UTF-16 conversion used at the edges
/// (files, command line, tests) and the small text operations that the whole
/// library shares: trimming of blanks, the two comparison modes (binary and
/// text, i.e. case-insensitive), searching, replacing and splitting. @file
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zelkora {

/// Comparison modes of the text operations: exact, or without regard to case.
/// (Declared before the type Text, so that its enumerator shadows nothing.)
enum class Compare { Binary = 0, Text = 1 };

using Text = std::u16string;           ///< The library's text: UTF-16, one element per unit.
using TextView = std::u16string_view;  ///< A view of a Text.

// ---- UTF-8 <-> UTF-16 ------------------------------------------------------

/// Converts UTF-8 to UTF-16. An invalid sequence becomes U+FFFD.
Text from_utf8(std::string_view utf8);

/// Strict conversion, appending to `out`. Returns false at the first invalid
/// sequence (overlong forms, surrogates, values above U+10FFFF, truncated
/// sequences) and stores its byte offset in `*bad_offset`; `out` then holds
/// what was converted before it.
bool append_utf8(std::string_view utf8, Text& out, std::size_t* bad_offset = nullptr);

/// Converts UTF-16 to UTF-8. A lone surrogate becomes U+FFFD.
std::string to_utf8(TextView text);

/// Whether every surrogate of the text is half of a pair, so that it goes to
/// UTF-8 and back unchanged.
bool is_well_formed(TextView text);

// ---- Blanks ----------------------------------------------------------------
// A blank is the space character U+0020 only, as in the suite's trimming.

TextView trim(TextView text);        ///< Without leading and trailing blanks.
TextView trim_left(TextView text);   ///< Without leading blanks.
TextView trim_right(TextView text);  ///< Without trailing blanks.

// ---- Comparison ------------------------------------------------------------

/// The character with its case folded (ASCII, Latin-1, Greek, Cyrillic and the
/// full-width Latin letters); any other character unchanged.
char16_t fold_case(char16_t c);
/// Whether the texts are equal (as `mode` says).
bool equal_text(TextView a, TextView b, Compare mode = Compare::Binary);

/// Position of the first occurrence of `needle` in `haystack` at or after
/// `from`, or npos. An empty needle is found at `from` (when from <= size).
std::size_t find_text(TextView haystack, TextView needle, std::size_t from = 0,
                      Compare mode = Compare::Binary);

inline bool contains_text(TextView haystack, TextView needle, Compare mode = Compare::Binary) {
  return find_text(haystack, needle, 0, mode) != TextView::npos;
}  ///< Whether `needle` occurs in `haystack`.

/// Every occurrence of `find`, scanning from the first character, replaced by
/// `replacement`. An empty `find` leaves the text as it is.
Text replace_all(TextView text, TextView find, TextView replacement,
                 Compare mode = Compare::Binary);

/// Splits at every occurrence of `delimiter`. An empty text gives no parts at
/// all; an empty delimiter gives the whole text as the only part; a delimiter
/// at the end gives an empty last part ("a|" gives "a" and "").
std::vector<Text> split_text(TextView text, TextView delimiter, Compare mode = Compare::Binary);

}  // namespace zelkora
