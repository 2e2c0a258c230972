// clsGridCell: building the grid, the title box, expanding and collapsing,
// and the row/item mapping.
#include <algorithm>
#include <exception>
#include <limits>
#include <string>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/group_value.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

namespace {

constexpr int32_t kMinimised = 1;
// Placements in twips: the grid under the form's toolbar, the title box
// under the grid.
constexpr int32_t kGridTop = 750;
constexpr int32_t kGridHeightLess = 1860;
constexpr int32_t kTitleTopLess = 1080;
constexpr int32_t kTitleHeight = 840;
constexpr float kTitleFontSize = 9;
constexpr TextView kMemberIndent = u"  ";
constexpr int32_t kIndentedKinds = 1000;  // member rows and any kind above

int16_t cell_type(int32_t type) {
  return static_cast<int16_t>(std::clamp<int32_t>(type, std::numeric_limits<int16_t>::min(),
                                                  std::numeric_limits<int16_t>::max()));
}

// Moves a control unless the placement does not fit 32 bits or the control
// refuses it.
void place(platform::WindowControl* control, int64_t left, int64_t top, int64_t width,
           int64_t height) {
  constexpr int64_t lo = std::numeric_limits<int32_t>::min();
  constexpr int64_t hi = std::numeric_limits<int32_t>::max();
  if (!control) return;
  for (int64_t v : {left, top, width, height}) {
    if (v < lo || v > hi) return;
  }
  control->Move(static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(width),
                static_cast<int32_t>(height));
}

}  // namespace

// ---- Loading flag --------------------------------------------------------------

clsGridCell::LoadingScope::LoadingScope(clsGridCell& cell)
    : cell_(cell), faults_(std::uncaught_exceptions()) {
  cell_.loading_ = true;
}

clsGridCell::LoadingScope::~LoadingScope() {
  cell_.loading_ = false;
  if (std::uncaught_exceptions() > faults_ && cell_.grid_) cell_.grid_->AutoRedraw(true);
}

// ---- Rows ------------------------------------------------------------------------

int32_t clsGridCell::kind_of(int32_t row) const {
  const int32_t kind = rows_.kind[static_cast<std::size_t>(row)];
  return kind < 0 ? -kind : kind;
}

int32_t clsGridCell::item_of(int32_t row) const {
  return rows_.item[static_cast<std::size_t>(row)];
}

int32_t clsGridCell::value_item(int32_t row) const {
  const int32_t item = item_of(row);
  return item >= 0 && static_cast<std::size_t>(item) < items_.current.size() ? item : -1;
}

int32_t clsGridCell::caption_of(int32_t row) const {
  if (!rows_.indexed_by_item) return rows_.caption[static_cast<std::size_t>(row)];
  const int32_t item = value_item(row);
  return item < 0 ? 0 : rows_.caption[static_cast<std::size_t>(item)];
}

int32_t clsGridCell::list_of(int32_t row) const {
  if (!rows_.indexed_by_item) return rows_.list[static_cast<std::size_t>(row)];
  const int32_t item = value_item(row);
  return item < 0 ? 0 : rows_.list[static_cast<std::size_t>(item)];
}

Text clsGridCell::check_of(int32_t row) const {
  if (!rows_.indexed_by_item) return rows_.check[static_cast<std::size_t>(row)];
  const int32_t item = value_item(row);
  return item < 0 ? Text(u"0") : rows_.check[static_cast<std::size_t>(item)];
}

bool clsGridCell::item_hidden(int32_t row) const {
  const int32_t item = value_item(row);
  return item >= 0 && items_.hidden[static_cast<std::size_t>(item)];
}

bool clsGridCell::folded_away(int32_t row) const {
  const auto r = static_cast<std::size_t>(row);
  return r < collapsed_.size() && collapsed_[r] && !(r < revealed_.size() && revealed_[r]);
}

int32_t clsGridCell::shown_height(int32_t row) const {
  return collapsed_[static_cast<std::size_t>(row)] || item_hidden(row) ? 0 : row_height_;
}

std::pair<int32_t, int32_t> clsGridCell::members_of(int32_t group_row) const {
  int32_t last = group_row;
  while (last < rows_.rows && kind_of(last + 1) == grid::kKindMember) ++last;
  return {group_row + 1, last};
}

int32_t clsGridCell::group_of(int32_t member_row) const {
  int32_t row = member_row - 1;
  while (row >= 1 && kind_of(row) == grid::kKindMember) --row;
  return row >= 1 && kind_of(row) == grid::kKindGroup ? row : 0;
}

// ---- Building ----------------------------------------------------------------------

void clsGridCell::GridCell_InitializeA(platform::GridControl* GcX, platform::RichTextBox* GtX,
                                       platform::Panel* pnlX, platform::GridForm* cX) {
  grid_ = GcX;
  title_ = GtX;
  panel_ = pnlX;
  form_ = cX;
  GridCell_Initialize();
}

void clsGridCell::GridCell_Initialize() {
  if (!grid_) throw Fault(FaultKind::MissingResource, "the property grid has no grid control");
  if (form_) label_col_width_ = form_->LabelColWidth();
  if (interface_res_id_ != 0) {
    ReadLayoutResource();
    SplitRowDescriptors();
  } else if (!rows_loaded_ || !rows_.split) {
    throw Fault(FaultKind::MissingResource,
                "the property grid has no rows: no layout (lInterfaceResID) and no rows of the "
                "form (LetGridCellText)");
  }
  derive_default_texts();

  platform::GridControl& g = *grid_;
  LoadingScope loading(*this);
  built_ = false;
  const int32_t rows = rows_.rows;
  grid::prepare_grid(g, rows, row_height_, label_col_width_);
  collapsed_.assign(static_cast<std::size_t>(rows) + 1, false);
  for (int32_t r = 1; r <= rows; ++r) {
    const int32_t kind = kind_of(r);
    const Text caption = character_->tString(caption_of(r));
    if (kind == grid::kKindHeading) {
      grid::format_heading_row(g, r, caption);
      continue;
    }
    g.Text(r, grid::kCaptionCol, kind >= kIndentedKinds ? Text(kMemberIndent) + caption : caption);
    g.CellType(r, grid::kValueCol, cell_type(rows_.cell[static_cast<std::size_t>(r)]));
    const int32_t item = value_item(r);
    g.Text(r, grid::kValueCol, item < 0 ? Text() : items_.current[static_cast<std::size_t>(item)]);
    if (kind == grid::kKindGroup) {
      const bool open = rows_.kind[static_cast<std::size_t>(r)] > 0;
      g.SetImage(r, grid::kPictureCol, open ? grid::kExpandedKey : grid::kCollapsedKey);
    }
  }
  // Each heading opens or folds the rows up to the next one as its layout
  // id says; rows above the first heading are shown.
  bool shown = true;
  int32_t first = 1;
  for (int32_t r = 1; r <= rows + 1; ++r) {
    if (r <= rows && kind_of(r) != grid::kKindHeading) continue;
    if (r > first) show_rows(first, r - 1, shown);
    if (r <= rows) {
      shown = rows_.kind[static_cast<std::size_t>(r)] > 0;
      g.SetImage(r, grid::kPictureCol, shown ? grid::kExpandedKey : grid::kCollapsedKey);
      first = r + 1;
    }
  }
  edited_row_ = 0;
  built_ = true;
  grid::finish_grid(g);
}

void clsGridCell::GridTitle_Initialize() {
  if (title_) title_->FontSize(kTitleFontSize);
}

void clsGridCell::Form_Resize(int32_t lWinState, int32_t lScaleWidth, int32_t lScaleHeight) {
  if (lWinState == kMinimised) return;
  const int64_t height = lScaleHeight;
  place(grid_, 0, kGridTop, lScaleWidth, height - kGridHeightLess);
  place(title_, 0, height - kTitleTopLess, lScaleWidth, kTitleHeight);
}

// ---- Expanding and collapsing --------------------------------------------------------

void clsGridCell::show_rows(int32_t first, int32_t last, bool shown) {
  bool group_open = true;
  for (int32_t r = first; r <= last; ++r) {
    const int32_t kind = kind_of(r);
    bool collapsed = !shown;
    if (kind == grid::kKindGroup) {
      group_open = rows_.kind[static_cast<std::size_t>(r)] > 0;
      if (shown) {
        grid_->SetImage(r, grid::kPictureCol,
                        group_open ? grid::kExpandedKey : grid::kCollapsedKey);
      }
    } else if (kind == grid::kKindMember) {
      collapsed = collapsed || !group_open;
    } else {
      group_open = true;
    }
    collapsed_[static_cast<std::size_t>(r)] = collapsed;
    grid_->RowHeight(r, shown_height(r));
  }
}

void clsGridCell::ExpandHeadingGroup(int32_t lRow, bool bExpand) {
  if (!valid_row(lRow)) {
    throw Fault(FaultKind::IndexOutOfRange, "heading row " + std::to_string(lRow) + " outside 1.." +
                                                std::to_string(rows_.rows));
  }
  if (!ready()) return;
  grid_->SetImage(lRow, grid::kPictureCol, bExpand ? grid::kExpandedKey : grid::kCollapsedKey);
  int32_t last = lRow;
  while (last < rows_.rows && kind_of(last + 1) != grid::kKindHeading) ++last;
  show_rows(lRow + 1, last, bExpand);
  grid_->Refresh();
}

void clsGridCell::ExpandGroupMembers(int32_t lRow, bool bExpand) {
  if (!valid_row(lRow)) {
    throw Fault(FaultKind::IndexOutOfRange,
                "group row " + std::to_string(lRow) + " outside 1.." + std::to_string(rows_.rows));
  }
  if (!ready()) return;
  grid_->SetImage(lRow, grid::kPictureCol, bExpand ? grid::kExpandedKey : grid::kCollapsedKey);
  const auto [first, last] = members_of(lRow);
  const bool group_collapsed = collapsed_[static_cast<std::size_t>(lRow)];
  for (int32_t r = first; r <= last; ++r) {
    collapsed_[static_cast<std::size_t>(r)] = !bExpand || group_collapsed;
    grid_->RowHeight(r, shown_height(r));
  }
  grid_->Refresh();
}

void clsGridCell::toggle(int32_t row, int32_t col) {
  const bool expand = grid_->ImageKey(row, grid::kPictureCol) == grid::kCollapsedKey;
  const int32_t kind = kind_of(row);
  if (kind == grid::kKindHeading) {
    ExpandHeadingGroup(row, expand);
  } else if (kind == grid::kKindGroup && col != grid::kValueCol) {
    ExpandGroupMembers(row, expand);
  }
}

// ---- The title box -------------------------------------------------------------------

void clsGridCell::tShowRowTitle() {
  if (!title_ || !rows_.split || !valid_row(current_row_)) return;
  const int32_t id = caption_of(current_row_);
  const Text caption = character_->tString(id);
  const Text help = grid::help_text(*character_, id, caption);
  platform::RichTextBox& box = *title_;
  box.Text(u"");
  box.SelColor(platform::kColourButtonText);
  box.SelText(u"_bb(" + caption + u")bb_\r\n" + help);
  box.TextRTF(replace_all(replace_all(box.TextRTF(), u"_bb(", u"\\b "), u")bb_", u"\\b0 "));
  box.SelStart(0);
  box.ToolTipText(help);
}

// ---- Rows and items --------------------------------------------------------------------

void clsGridCell::CellText(int32_t Index, TextView text) {
  const int32_t row = lGetRowByIndex(Index);
  if (row > 0 && ready()) grid_->Text(row, grid::kValueCol, text);
  if (row == current_row_) keep_entered_text();
}

Text clsGridCell::tGetText(int32_t Index) const {
  if (Index < 0 || static_cast<std::size_t>(Index) >= items_.current.size()) {
    throw Fault(FaultKind::IndexOutOfRange, "item index " + std::to_string(Index) + " outside 0.." +
                                                std::to_string(rows_.max_item));
  }
  return items_.current[static_cast<std::size_t>(Index)];
}

Text clsGridCell::tGetCaption(int32_t Index) const {
  const int32_t row = lGetRowByIndex(Index);
  return row > 0 && rows_.split ? character_->tString(caption_of(row)) : Text();
}

int32_t clsGridCell::lGetIndexByRow(int32_t Row) const {
  if (!valid_row(Row)) {
    throw Fault(FaultKind::IndexOutOfRange,
                "row " + std::to_string(Row) + " outside 1.." + std::to_string(rows_.rows));
  }
  return item_of(Row);
}

int32_t clsGridCell::lGetRowByIndex(int32_t Index) const {
  for (int32_t r = 1; r <= rows_.rows; ++r) {
    if (item_of(r) == Index) return r;
  }
  return 0;
}

Text clsGridCell::tEngineeringName() const {
  return items_.current.empty() ? Text() : items_.current.front();
}

bool clsGridCell::bDisplayPicture() { return form_ ? form_->bDisplayPicture() : false; }

int32_t clsGridCell::SplitText110(int32_t Index, int32_t N, std::vector<Text>& texts) const {
  std::vector<Text> parts = grid::split_group_value(tGetText(Index));
  const auto count = static_cast<int32_t>(parts.size());
  parts.resize(static_cast<std::size_t>(std::clamp(N, 0, grid::kMaxItems)));
  texts = std::move(parts);
  return count;
}

int32_t clsGridCell::SplitText110A(TextView tIndex, std::vector<Text>& texts) const {
  texts = grid::split_group_value(tIndex);
  return static_cast<int32_t>(texts.size());
}

}  // namespace zelkora
