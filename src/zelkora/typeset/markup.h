// Formula markup: the six markers that set off subscripts, superscripts and
// bold runs in the texts the library produces, the stripper that removes
// them, and the display width that rests on stripping.
//
//   "f_ub(a)ub_"      subscript  -> shown "fa"
//   "mm_up(2)up_"     superscript -> "mm2"
//   "_bb(1.2)bb_ 荷载" bold        -> "1.2 荷载"
//
// Stripping applies seven whole-text removals in a fixed order: the bold start
// marker twice (the second pass removes a bold start marker formed by the
// first, as in "_b_bb(b("), then the bold end, the superscript start and end,
// the subscript start and end once each. So "_u_ub(b(x" strips to "_ub(x":
// a subscript marker formed by a removal stays. The contents of the runs are
// kept; stray and unbalanced markers are removed like any other.
#pragma once

#include <cstddef>

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

// The text with its markers removed.
Text strip_markup(TextView text);

// Strips `length` units at `data` in place and returns the new length.
std::size_t strip_markup_in_place(char16_t* data, std::size_t length);

// The width of the text as shown: its stripped form in code page 936, in
// bytes (ASCII 1, a Chinese character 2). Allocates nothing.
std::size_t markup_display_width(TextView text);

// The text with every "|" field separator removed, then stripped: the plain
// form of a catalogue text or caption.
Text strip_fields_and_markup(TextView text);

// The text as rich text of the kind GUI toolkits show (HTML: <b>, <sub>,
// <sup>, <br>), for report views: the markers become their tags, "|" field
// separators go, line breaks (CR LF, LF) become <br>, and "&", "<", ">", '"'
// are escaped. The tags always nest: an end marker without its start is
// dropped, and runs still open at the end are closed.
//   markup_to_html(u"A_ub(s)ub_ ＝ 942mm_up(2)up_")  // "A<sub>s</sub> ＝ 942mm<sup>2</sup>"
Text markup_to_html(TextView text);

}  // namespace zelkora::typeset
