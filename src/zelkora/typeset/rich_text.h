/// The library's texts with formula markup as rich text, for the text widgets
/// of a GUI toolkit (Qt's QTextBrowser, QTextEdit and QLabel take it as HTML).
///
/// The texts the library writes (clsCharacter::tExpStr, the catalogue, the
/// messages of clsErrChr) mark subscripts, superscripts and bold runs with
/// "_ub(", "_up(" and "_bb(" and their ends. As rich text the runs become
/// `<sub>`, `<sup>` and `<b>`, CR LF and LF `<br>`, "|" field separators go,
/// and \&, \<, \> and \" are escaped, so a value an engineer typed is
/// shown as typed and never read as a tag. The tags always nest: an end
/// marker without its start is dropped, and runs still open at the end are
/// closed.
/// @code{.unparsed}
///   report->setHtml(to_qstring(typeset::markup_to_rich_text(u"A_ub(s)ub_ ＝ 942mm_up(2)up_")));
///   // "A<sub>s</sub> ＝ 942mm<sup>2</sup>" @endcode @file
#pragma once

#include "zelkora/platform/text.h"

namespace zelkora::typeset {

Text markup_to_rich_text(TextView text);  ///< `text` as rich text (HTML), as above.

}  // namespace zelkora::typeset
