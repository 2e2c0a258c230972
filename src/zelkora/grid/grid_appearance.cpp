// The look both grids share: fonts, colours, columns, pictures, row height.
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/frame/numbers.h"

#include <cmath>

#include "zelkora/platform/fault.h"

namespace zelkora::grid {

namespace {

constexpr int32_t kFallbackRowHeight = 19;

constexpr int32_t kPictureColWidth = 17;
constexpr int32_t kCaptionColExtra = 15;

std::optional<int32_t> whole_number(TextView text, const frame::NumberSymbols& symbols) {
  const std::optional<double> value = frame::parse_number(text, symbols);
  if (!value || !std::isfinite(*value) || std::fabs(*value) > 2147483647.0) return std::nullopt;
  return frame::rounded_int32(*value);
}

}  // namespace

int32_t saved_row_height(const clsCharacter& chr) {
  const frame::NumberSymbols symbols = chr.number_symbols();
  const Text key = chr.tString(text_id::kComboKeySuffix) + u"11";
  const std::optional<Text> saved = clsCharacter::Internals::platform(chr).settings
                                        ? clsCharacter::Internals::platform(chr).settings->get(
                                              clsCharacter::Internals::settings_application(chr),
                                              chr.tString(text_id::kOptionsSection), key)
                                        : std::nullopt;
  if (saved) {
    if (auto height = whole_number(*saved, symbols)) return *height;
  }
  return whole_number(chr.tString(text_id::kDefaultRowHeight), symbols)
      .value_or(kFallbackRowHeight);
}

void prepare_grid(platform::GridControl& grid, int32_t rows, int32_t row_height,
                  int32_t label_col_width) {
  using namespace platform;
  int32_t all_rows = 0;
  int32_t caption_width = 0;
  if (__builtin_add_overflow(rows, 1, &all_rows) ||
      __builtin_add_overflow(label_col_width, kCaptionColExtra, &caption_width)) {
    throw Fault(FaultKind::Overflow, "the grid's row count or caption width overflows");
  }
  grid.AutoRedraw(false);
  grid.DefaultFontName(u"宋体");
  grid.DefaultFontSize(9);
  grid.BackColorBkg(kColourButtonFace);
  grid.GridColor(kColourInactiveBorder);
  grid.CellBorderColorFixed(rgb(80, 80, 80));
  grid.DefaultRowHeight(row_height);
  grid.Appearance(0);
  grid.EnterKeyMoveTo(1);
  grid.ExtendLastCol(true);
  grid.DisplayFocusRect(false);
  grid.ReadOnlyFocusRect(0);
  grid.DisplayClientBorder(false);
  grid.SelectionMode(3);
  grid.CellBorderColor(kColourGrayText);

  grid.AddPicture(expander_picture(false), kCollapsedKey);
  grid.AddPicture(expander_picture(true), kExpandedKey);

  grid.Rows(all_rows);
  grid.Cols(4);
  grid.RowHeight(0, 0);
  grid.ColWidth(0, 0);
  grid.ColWidth(kPictureCol, kPictureColWidth);
  grid.ColWidth(kCaptionCol, caption_width);
  for (int32_t row = 1; row <= rows; ++row) {
    grid.BackColor(row, kPictureCol, kColourInactiveBorder);
    grid.Alignment(row, kValueCol, GridControl::kAlignLeft);
  }
}

void format_heading_row(platform::GridControl& grid, int32_t row, TextView caption) {
  using namespace platform;
  grid.Merge(row, kPictureCol, kValueCol);
  grid.Text(row, kCaptionCol, caption);
  grid.FontBold(row, kCaptionCol, true);
  grid.ForeColor(row, kCaptionCol, kColourGrayText);
  grid.Locked(row, true);
  for (int32_t col = kPictureCol; col <= kValueCol; ++col) {
    grid.BackColor(row, col, kColourInactiveBorder);
  }
}

void finish_grid(platform::GridControl& grid) {
  grid.AutoRedraw(true);
  grid.Refresh();
}

int32_t lowest_shown_row(const platform::GridControl& grid) {
  for (int32_t row = grid.BottomRow(); row >= 1; --row) {
    if (grid.RowHeight(row) > 0) return row;
  }
  return 0;
}

}  // namespace zelkora::grid
