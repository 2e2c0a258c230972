/// A calculation report as a document: what the lines of a report in the
/// suite's markup (the texts of clsCharacter's reports: "_ub(…)ub_" subscripts,
/// "_up(…)up_" superscripts, bold runs) become once they leave the program as
/// Word, RTF, HTML, PDF or plain text. A plain value type without a toolkit;
/// the writers (writers.h), plain_text (read_report.h) and the desktop
/// program's view and printer all take the same Document.
/// @code{.unparsed}
///   Document doc = read_report(chr.Txt(), {.program = u"梁配筋计算"});
///   std::string docx = write_docx(doc);
/// @endcode
/// The shape:
/// @code{.unparsed}
///   Document
///     page        PageSetup: A4, margins, header (program, project), footer
///                 "第 N 页 共 M 页"
///     signature   Signature: 计算 / 校对 / 审核 and the date, shown under
///                 the calculation header
///     blocks      in report order, each one of
///       Paragraph  runs of text; kind kTitle (the header's centred title),
///                  kHeading (a serial-label heading, level 1 "一、",
///                  2 "（一）", 3 "(1)"), kText, kEquation (a broken
///                  equation's further line), kRule (the header's rule);
///                  `indent` in display cells (a Chinese character is two)
///       Table      rows of cells, each cell runs; a column alignment
///                  (eAlignment's values) and width in display cells
///       Figure     a vector drawing in millimetres with its caption
/// @endcode
/// A Run is one stretch of text in one style: bold or not, normal, subscript
/// or superscript, and `grade_symbol` for the steel-grade symbols of the
/// suite's symbol font (U+E000 to U+E003: HPB300, HRB335, HRB400, HRB500),
/// which the writers set in the project's own font (grade_font.h). @file
#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::document {
/// The vertical position of a run.
enum class Script : std::uint8_t { kNormal, kSubscript, kSuperscript };
/// One stretch of text in one style.
struct Run {
  Text text;                                    ///< The text.
  bool bold = false;                            ///< Bold.
  Script script = Script::kNormal;              ///< Normal, subscript or superscript.
  bool grade_symbol = false;                    ///< text of U+E000-U+E003 only
  bool operator==(const Run&) const = default;  ///< Member-wise equality.
};

/// The alignment of a table column or a paragraph: eAlignment's values.
enum class Align : std::int8_t { kLeft = -1, kCenter = 0, kRight = 1 };
/// A paragraph of runs.
struct Paragraph {  /// What the paragraph is in the report.
  enum class Kind : std::uint8_t { kText, kTitle, kHeading, kEquation, kRule };
  Kind kind = Kind::kText;                            ///< What it is.
  int level = 0;                                      ///< 1 to 3 for a heading, else 0
  int indent = 0;                                     ///< leading blanks, in display cells
  Align align = Align::kLeft;                         ///< The paragraph's alignment.
  std::vector<Run> runs;                              ///< The text, run by run.
  bool operator==(const Paragraph&) const = default;  ///< Member-wise equality.
};
/// A fixed-pitch table of the report.
struct Table {
  int indent = 0;                                   ///< display cells before the first column
  std::vector<Align> align;                         ///< one per column
  std::vector<int> widths;                          ///< display cells, one per column
  bool header = false;                              ///< the first row is the columns' captions
  std::vector<std::vector<std::vector<Run>>> rows;  ///< rows × columns × runs
  bool operator==(const Table&) const = default;    ///< Member-wise equality.
};

/// A colour as 0xRRGGBB.
using Colour = std::uint32_t;

/// One element of a drawing. Coordinates in millimetres from the drawing's
/// top left corner, y down.
struct Shape {  /// What the shape is.
  enum class Kind : std::uint8_t { kLine, kRect, kEllipse, kPolyline, kPolygon, kText };
  Kind kind = Kind::kLine;            ///< What it is.
  std::vector<double> points;         ///< x0, y0, x1, y1, ...: a line's ends, a rect's or
                                      ///< an ellipse's corners, a polyline's vertices,
                                      ///< the text's anchor
  double stroke_mm = 0.25;            ///< 0: not stroked
  Colour stroke = 0x000000;           ///< The line colour.
  std::optional<Colour> fill;         ///< none: not filled
  Text text;                          ///< kText: the text, anchored at its baseline
  double text_mm = 3.5;               ///< kText: the height of the font
  Align text_align = Align::kCenter;  ///< kText: where the anchor is
  bool operator==(const Shape&) const = default;  ///< Member-wise equality.
};
/// A vector drawing with its caption.
struct Figure {
  double width_mm = 0;                             ///< The drawing's width.
  double height_mm = 0;                            ///< The drawing's height.
  std::vector<Shape> shapes;                       ///< The elements, drawn in order.
  Text caption;                                    ///< The caption under it.
  bool operator==(const Figure&) const = default;  ///< Member-wise equality.
};
/// One block of the report: a paragraph, a table or a figure.
using Block = std::variant<Paragraph, Table, Figure>;
/// The page: size, margins and body font.
struct PageSetup {
  double width_mm = 210;                                                                   ///< A4
  double height_mm = 297;                                                                  ///< A4
  /** @{ The margins. */ double top_mm = 25, bottom_mm = 20, left_mm = 25, right_mm = 20;  /// @}
  double font_pt = 10.5;                              ///< the body text (五号)
  bool operator==(const PageSetup&) const = default;  ///< Member-wise equality.
};
/// The signature block under the calculation header.
struct Signature {
  /** @{ Empty: a line to sign on. */ Text calculated_by, checked_by, approved_by;  /// @}
  Text date;  ///< The date; empty: the header's 计算日期.
  bool operator==(const Signature&) const = default;  ///< Member-wise equality.
};
/// A calculation report, block by block.
struct Document {
  PageSetup page;             ///< The page setup.
  Text program;               ///< the page header's left side
  Text project;               ///< its right side
  Text title;                 ///< the report's title (the calculation header's)
  Signature signature;        ///< The signature block.
  std::vector<Block> blocks;  ///< The report's blocks, in order.
  bool operator==(const Document&) const = default;  ///< Member-wise equality.
};

/// The page footer, "第 N 页 共 M 页", split around the two page numbers.
inline constexpr char16_t kFooterPage[] = u"第 ";
inline constexpr char16_t kFooterOf[] = u" 页 共 ";  ///< Between the page number and the count.
inline constexpr char16_t kFooterEnd[] = u" 页";     ///< After the count.

/// The signature block's captions.
inline constexpr char16_t kCalculatedBy[] = u"计算：";
inline constexpr char16_t kCheckedBy[] = u"校对：";    ///< 校对 (checked by).
inline constexpr char16_t kApprovedBy[] = u"审核：";   ///< 审核 (approved by).
inline constexpr char16_t kDateCaption[] = u"日期：";  ///< 日期 (date).

/// The letter that stands for a steel-grade symbol in plain text (A to D), or
/// 0 for any other character.
constexpr char16_t grade_letter(char16_t c) {
  return c >= u'\uE000' && c <= u'\uE003' ? static_cast<char16_t>(u'A' + (c - u'\uE000')) : 0;
}

/// `text` with each steel-grade symbol as its letter (A to D), for plain text
/// where the symbols' font is missing: a terminal, a text file, a log.
///   grade_symbols_as_letters(u"4\uE00220")  // u"4C20"
inline Text grade_symbols_as_letters(TextView text) {
  Text plain(text);
  for (char16_t& c : plain) {
    if (const char16_t letter = grade_letter(c)) c = letter;
  }
  return plain;
}

}  // namespace zelkora::document
