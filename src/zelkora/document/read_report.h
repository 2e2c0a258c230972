/// The lines of a report in the suite's markup read into a Document
/// (report_document.h).
/// @code{.unparsed}
///   Document doc = read_report(chr.Txt(), {.program = u"梁配筋计算"});
/// @endcode
/// Lines end with CR LF, LF or the continuation tConEnter1 (an ideographic
/// space before CR LF; the space goes with the line end). What a line becomes:
/// @code{.unparsed}
///   the calculation header   (tCalHead: the centred bold title, the lines
///                            down to the rule "────") a kTitle paragraph,
///                            its lines, the rule as kRule; 工程名称 and
///                            计算日期 give the page header's project and the
///                            signature's date unless the options give them
///   "_bb(一、)bb_…"           a kHeading of level 1; "（一）" 2, "(1)" 3
///   two or more lines whose blanks line up in columns at least two cells
///   apart, each column with text in two lines (the padded rows of
///   ListOut_TextAddRow)
///                            a Table: the columns where every line is blank,
///                            each column's alignment from where its texts
///                            stand (all flush left: left, all flush right:
///                            right, else centred)
///   a line that starts with blanks after a line of an equation
///                            a kEquation paragraph with its indent
///   anything else            a kText paragraph: nothing is ever dropped
/// @endcode
/// Empty lines are kept as empty paragraphs. Markup runs become Runs: "_bb("
/// bold, "_ub(" subscript, "_up(" superscript (runs do not nest; an end
/// marker without its start and "|" field separators are dropped, as in
/// markup_to_html), and the characters U+E000-U+E003 runs of their own with
/// `grade_symbol` set. @file
#pragma once

#include <string_view>

#include "zelkora/document/report_document.h"

namespace zelkora::document {
/// What the report's markup does not carry: the page header and signatures.
struct ReadOptions {
  Text program;         ///< the page header's program name
  Text project;         ///< the page header's project; empty: the header's 工程名称
  Signature signature;  ///< empty date: the header's 计算日期
};
/// The report's markup (a Txt of clsCharacter) as a document.
Document read_report(TextView markup, const ReadOptions& options = {});

/// One line of markup as runs; the markers go, the text between them stays.
std::vector<Run> read_runs(TextView line);

/// The text of a report file: UTF-8 (with or without its byte order mark; a
/// few damaged bytes become U+FFFD), UTF-16 with its byte order mark, else
/// code page 936.
Text report_text_from_bytes(std::string_view bytes);

/// The document as plain text: the runs' text with the steel-grade symbols
/// as the letters A to D, tables padded to their widths, CR LF line ends.
Text plain_text(const Document& document);

}  // namespace zelkora::document
