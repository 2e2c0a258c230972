// Report tables: cells fitted to their columns, rows, widths, the progress display.
#include "zelkora/reporttext/report_table.h"
#include "zelkora/frame/catalogue_ids.h"

#include <algorithm>
#include <limits>
#include <string>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/typeset/markup.h"

namespace zelkora::reporttext {

namespace {

[[noreturn]] void overflow(const char* what) {
  throw Fault(FaultKind::Overflow, std::string("report table: ") + what + " beyond 32 bits");
}

int32_t add_checked(int32_t a, int32_t b, const char* what) {
  int32_t sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) overflow(what);
  return sum;
}

int32_t sub_checked(int32_t a, int32_t b, const char* what) {
  int32_t difference = 0;
  if (__builtin_sub_overflow(a, b, &difference)) overflow(what);
  return difference;
}

[[noreturn]] void index_fault(const char* what, int64_t index, int64_t upper) {
  throw Fault(FaultKind::IndexOutOfRange, std::string("report table: ") + what + " " +
                                              std::to_string(index) + " is outside 0 to " +
                                              std::to_string(upper));
}

void append_blanks(Text& out, int32_t count) {
  if (count > 0) out.append(static_cast<std::size_t>(count), u' ');
}

}  // namespace

// ---- Cells ----------------------------------------------------------------------

int32_t text_width(TextView text) {
  const std::size_t width = typeset::markup_display_width(text);
  if (width > static_cast<std::size_t>(std::numeric_limits<int32_t>::max())) {
    overflow("text width");
  }
  return static_cast<int32_t>(width);
}

FittedText fit_text(TextView text, int32_t avail, const Notation& notation) {
  Text current(text);
  for (;;) {
    const int32_t width = text_width(current);
    if (width <= avail) return {std::move(current), false, width};
    if (avail < 4) {
      const int32_t stars = std::max(avail, 0);
      return {Text(static_cast<std::size_t>(stars), u'*'), true, stars};
    }
    if (!frame::is_numeric(current, notation.symbols) ||
        !contains_text(current, notation.decimal_symbol)) {
      Text cut = current.substr(0, static_cast<std::size_t>(avail - 3)) + u"...";
      const int32_t cut_width = text_width(cut);
      return {std::move(cut), true, cut_width};
    }
    // A decimal number loses two digits at a time. It ends as soon as it fits
    // (the empty text fits here) or stops being such a number.
    current.resize(current.size() - std::min<std::size_t>(2, current.size()));
  }
}

Paddings cell_paddings(int32_t alignment, int32_t extra, int32_t avail, int32_t width,
                       bool shortened) {
  const int32_t half = extra / 2;
  const int32_t rest = sub_checked(extra, half, "padding");
  if (shortened) {
    switch (alignment) {
      case zkLeftJustify:
        return {extra, 0};
      case zkCenter:
        return {half, rest};
      case zkRightJustify:
        return {0, extra};
      default:
        return {};
    }
  }
  const int32_t room = sub_checked(avail, width, "padding");
  switch (alignment) {
    case zkLeftJustify:
      return {extra, room};
    case zkCenter:
      return {add_checked(half, room / 2, "padding"),
              add_checked(rest, room - room / 2, "padding")};
    case zkRightJustify:
      return {room, extra};
    default:
      return {};
  }
}

Text format_cell(const ColumnLayout& layout, int32_t index, TextView text,
                 const Notation& notation) {
  layout.check(index);
  const int32_t width = layout.width[index];
  if (width <= 0) return {};
  const int32_t extra = layout.extra_blanks[index];
  const int32_t avail = sub_checked(width, extra, "column width");
  const FittedText fitted = fit_text(text, avail, notation);
  const Paddings pad =
      cell_paddings(layout.alignment[index], extra, avail, fitted.width, fitted.shortened);
  Text out;
  append_blanks(out, pad.left);
  out += fitted.text;
  append_blanks(out, pad.right);
  return out;
}

Text format_row(const ColumnLayout& layout, const std::vector<Text>& cells, int32_t first,
                int32_t last, const Notation& notation) {
  Text row;
  for (int64_t i = first; i <= last; ++i) {
    if (i < 0 || i >= static_cast<int64_t>(cells.size())) {
      index_fault("cell", i, static_cast<int64_t>(cells.size()) - 1);
    }
    row +=
        format_cell(layout, static_cast<int32_t>(i), cells[static_cast<std::size_t>(i)], notation);
  }
  return row;
}

// ---- Width adjustment -------------------------------------------------------------

int32_t adjust_widths(ColumnLayout& layout, int32_t line_width, int32_t adjust_start, int32_t add,
                      int32_t adjust) {
  const int32_t upper = layout.upper();
  int32_t total = add_checked(add, 2, "table width");
  int32_t count = 0;
  for (int32_t i = 0; i <= upper; ++i) {
    if (layout.width[i] <= 0) continue;
    total = add_checked(total, layout.width[i], "table width");
    if (i >= adjust_start) ++count;
  }
  int32_t extra = 0;
  if (total < line_width) {
    if (count == 0 || adjust == 0) {
      throw Fault(FaultKind::DivisionByZero,
                  count == 0 ? "report table: no column to widen from column " +
                                   std::to_string(adjust_start)
                             : std::string("report table: width adjustment divisor 0"));
    }
    extra = sub_checked(line_width, total, "table width") / count / adjust;
  }
  if (adjust_start <= upper) layout.check(adjust_start);
  // Widened in a copy, so that an overflow half way leaves the layout as it was.
  std::vector<int32_t> widened = layout.width;
  for (int32_t i = std::max(adjust_start, 0); i <= upper; ++i) {
    if (widened[i] > 0) widened[i] = add_checked(widened[i], extra, "column width");
  }
  layout.width = std::move(widened);
  return total;
}

// ---- Keystroke filter -------------------------------------------------------------

bool is_edit_key(int16_t key) {
  constexpr int16_t kCopy = 3, kPaste = 22, kCut = 24, kUndo = 26;
  return key == kCopy || key == kPaste || key == kCut || key == kUndo;
}

int16_t filter_key(int16_t key, TextView allowed) {
  constexpr char16_t kBackspace = 8;
  if (is_edit_key(key)) return key;
  const char16_t c = static_cast<char16_t>(static_cast<uint16_t>(key));
  if (c == kBackspace || contains_text(allowed, TextView(&c, 1), Compare::Text)) return key;
  return 0;
}

}  // namespace zelkora::reporttext

// ---- clsCharacter ---------------------------------------------------------------

namespace zelkora {

namespace {

reporttext::Notation notation_of(const clsCharacter& chr) {
  return {chr.number_symbols(), chr.tDecimalSymbol()};
}

}  // namespace

void clsCharacter::ListOut_Ubound(int32_t ubound) { columns_->ubound = ubound; }

void clsCharacter::ListOut_Initialize(int32_t lStart, int32_t lWidth, eAlignment lAlign,
                                      int32_t lSpcAdd) {
  columns_->initialize(lStart, lWidth, lAlign, lSpcAdd);
}

void clsCharacter::ListOut_Index_Width(int32_t Index, int32_t lWidth) {
  columns_->set_width(Index, lWidth);
}

void clsCharacter::ListOut_Index_Align(int32_t Index, eAlignment lAlign) {
  columns_->set_alignment(Index, lAlign);
}

void clsCharacter::ListOut_Index_SpcAdd(int32_t Index, int32_t lSpcAdd) {
  columns_->set_extra_blanks(Index, lSpcAdd);
}

Text clsCharacter::tFormatByLenA(TextView tCell, int32_t Index) const {
  return reporttext::format_cell(*columns_, Index, tCell, notation_of(*this));
}

Text clsCharacter::tFormatByLen(TextView tCell, int32_t lWidth, eAlignment lAlign,
                                int32_t lSpcAdd) const {
  // Column 0 of a layout of our own: the object's layout is never touched, so
  // it is the same afterwards even when formatting throws.
  reporttext::ColumnLayout one_off;
  one_off.initialize(0, lWidth, lAlign, lSpcAdd);
  return reporttext::format_cell(one_off, 0, tCell, notation_of(*this));
}

void clsCharacter::ListOut_TextAddRow(const std::vector<Text>& cells, int32_t lStart,
                                      TextView tPreSpc, TextView tEnd) {
  // The row is built whole before it is appended: a fault appends nothing.
  Text row;
  TextAddRowA(row, cells, columns_->upper(), lStart, tPreSpc, tEnd);
  Txt(row);
}

void clsCharacter::TextAddRowA(Text& tText, const std::vector<Text>& cells, int32_t lU,
                               int32_t lStart, TextView tPreSpc, TextView tEnd) const {
  Text row;
  if (lStart == 0) row += tPreSpc;
  row += reporttext::format_row(*columns_, cells, lStart, lU, notation_of(*this));
  row += tEnd;
  row += tConEnter1();
  tText += row;
}

void clsCharacter::ListOUt_AdjustWidth(int32_t& lAllWidth, int32_t lAdjustStart, int32_t lAdd) {
  lAllWidth = ListOUt_AdjustWidthW(lAdjustStart, lAdd, 1);
}

void clsCharacter::ListOUt_AdjustWidth(int32_t& lAllWidth, int32_t lAdjustStart, int32_t lAdd,
                                       int32_t& lAdjust) {
  lAllWidth = ListOUt_AdjustWidthW(lAdjustStart, lAdd, lAdjust);
}

int32_t clsCharacter::ListOUt_AdjustWidthW(int32_t lAdjustStart, int32_t lAdd, int32_t lAdjust) {
  return reporttext::adjust_widths(*columns_, iMaxChrNow(), lAdjustStart, lAdd, lAdjust);
}

Text clsCharacter::ListOut_ConCaptionListCap_Text() {
  columns_->check(2);  // columns 0 to 2 exist, or nothing is set
  columns_->set_width(0, 5);
  columns_->set_width(1, 10);
  columns_->set_alignment(1, zkLeftJustify);
  columns_->set_extra_blanks(1, 1);
  columns_->set_width(2, 5);
  columns_->set_alignment(2, zkCenter);
  columns_->set_extra_blanks(2, 1);
  return u"    " + tFormatByLenA(tString(text_id::kColumnNumber), 0) +
         tFormatByLenA(tString(text_id::kControl), 1) +
         tFormatByLenA(tString(text_id::kSeismic), 2);
}

int16_t clsCharacter::iValiTextEnter(int16_t KeyIn, int32_t lResStr) const {
  // The edit keys pass without a look at the catalogue. The character sets
  // are language-neutral: no offset, and a missing id is the caller's fault
  // as in tResStr.
  if (reporttext::is_edit_key(KeyIn)) return KeyIn;
  return reporttext::filter_key(KeyIn, tResStr(lResStr));
}

void clsCharacter::DisplayProcess(int32_t L, int32_t N, platform::Control* panelM,
                                  int16_t iSign) const {
  if (platform_->progress) platform_->progress->show(iSign, panelM, N, L);
}

}  // namespace zelkora
