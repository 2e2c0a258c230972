// clsGridCellMain: the program menu read from its INI file into a grid.
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/frame/catalogue_ids.h"

#include <string>

#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

namespace {

constexpr int kMostSections = 99;
constexpr int kMostKeys = 99;
// The caption column of the menu, in the units of the grid's widths.
constexpr int32_t kMenuCaptionWidth = 160;
constexpr int16_t kSpaceKey = 32;
constexpr int16_t kEnterKey = 13;
constexpr uint32_t kHighlight = platform::system_colour(13);
constexpr uint32_t kHighlightText = platform::system_colour(14);

Text number_text(int n) {
  const std::string digits = std::to_string(n);
  return Text(digits.begin(), digits.end());
}

}  // namespace

clsGridCellMain::clsGridCellMain() : clsGridCellMain(platform::Platform::current()) {}

clsGridCellMain::clsGridCellMain(std::shared_ptr<const platform::Platform> platform)
    : character_(std::make_unique<clsCharacter>(std::move(platform))) {}

clsGridCellMain::~clsGridCellMain() = default;

bool clsGridCellMain::bAddMenuLine(TextView text, int32_t kind) {
  if (text.empty()) return true;
  MenuLine line;
  line.text = text;
  line.kind = kind;
  if (kind == kGroupLine) {
    line.page_key = text;
    line.caption = text;
  } else {
    line.selectable = true;
    const std::vector<Text> parts = split_text(text, u"|");
    line.page_key = parts.empty() ? Text() : parts[0];
    if (parts.size() > 1) line.key = parts[1];
    line.caption = parts.size() > 2 ? parts[2] : line.key;
  }
  lines_.push_back(std::move(line));
  return false;
}

void clsGridCellMain::read_menu() {
  lines_.assign(1, MenuLine{});
  const auto read = [&](TextView section, int key) {
    return character_->ReadOneString(section, number_text(key), menu_file_, {});
  };
  const auto read_entries = [&](TextView section) {
    for (int key = 1; key <= kMostKeys; ++key) {
      if (bAddMenuLine(read(section, key), kEntryLine)) break;
    }
  };
  for (int s = 1; s <= kMostSections; ++s) {
    const Text section = number_text(s);
    if (bAddMenuLine(read(section, 0), kGroupLine)) break;
    read_entries(section);
  }
  // [Others] is added even when its caption is empty.
  const Text others = character_->tResStr(text_id::kOthersSection);
  const Text caption = read(others, 0);
  if (bAddMenuLine(caption, kGroupLine)) {
    lines_.push_back(MenuLine{caption, kGroupLine, false, caption, {}, caption});
  }
  read_entries(others);
}

void clsGridCellMain::GridCell_Initialize() {
  if (!grid_) throw Fault(FaultKind::MissingResource, "the menu grid has no grid control");
  read_menu();
  platform::GridControl& grid = *grid_;
  row_height_ = grid::saved_row_height(*character_);
  const int32_t rows = static_cast<int32_t>(lines_.size()) - 1;
  grid::prepare_grid(grid, rows, row_height_, kMenuCaptionWidth);
  bool shown = true;
  for (int32_t row = 1; row <= rows; ++row) {
    const MenuLine& line = lines_[static_cast<std::size_t>(row)];
    grid.Tag(row, 0, line.page_key);
    grid.Tag(row, 1, line.key);
    if (line.kind == kGroupLine) {
      grid::format_heading_row(grid, row, line.caption);
      const bool expanded = line.kind > 0;
      grid.SetImage(row, grid::kPictureCol, expanded ? grid::kExpandedKey : grid::kCollapsedKey);
      shown = expanded;
      grid.RowHeight(row, row_height_);
    } else {
      grid.Text(row, grid::kCaptionCol, line.caption);
      grid.RowHeight(row, shown ? row_height_ : 0);
    }
  }
  highlighted_row_ = 0;
  grid::finish_grid(grid);
}

void clsGridCellMain::toggle_group(int32_t row, bool expand) {
  platform::GridControl& grid = *grid_;
  grid.SetImage(row, grid::kPictureCol, expand ? grid::kExpandedKey : grid::kCollapsedKey);
  const int32_t rows = static_cast<int32_t>(lines_.size()) - 1;
  for (int32_t r = row + 1; r <= rows && lines_[static_cast<std::size_t>(r)].kind != kGroupLine;
       ++r) {
    grid.RowHeight(r, expand ? row_height_ : 0);
  }
  grid.Refresh();
}

bool clsGridCellMain::GridCell_Click(Text& tPageKey, Text& tKey) {
  if (!grid_) return false;
  const int32_t row = grid_->ActiveCell().row;
  if (row < 1 || row >= static_cast<int32_t>(lines_.size())) return false;
  if (lines_[static_cast<std::size_t>(row)].kind == kGroupLine) {
    toggle_group(row, grid_->ImageKey(row, grid::kPictureCol) == grid::kCollapsedKey);
    return false;
  }
  tPageKey = grid_->Tag(row, 0);
  tKey = grid_->Tag(row, 1);
  return true;
}

bool clsGridCellMain::GridCell_KeyDown(int16_t& KeyCode, int16_t /*Shift*/, Text& tPageKey,
                                       Text& tKey) {
  if (!grid_) return false;
  if (KeyCode == kSpaceKey) return GridCell_Click(tPageKey, tKey);
  if (KeyCode == kEnterKey && current_row_ > 0) {
    const int32_t lowest = grid::lowest_shown_row(*grid_);
    const platform::CellRef active = grid_->ActiveCell();
    // Row 0 is the hidden header row: the focus leaves the last entry there.
    if (lowest > 0 && active.row == lowest) grid_->SetFocus(0, active.col);
  }
  return false;
}

void clsGridCellMain::highlight(int32_t row, bool on) {
  if (!grid_ || row < 1 || row >= static_cast<int32_t>(lines_.size()) ||
      lines_[static_cast<std::size_t>(row)].kind == kGroupLine) {
    return;
  }
  grid_->BackColor(row, grid::kCaptionCol, on ? kHighlight : platform::kColourWindow);
  grid_->ForeColor(row, grid::kCaptionCol, on ? kHighlightText : platform::kColourWindowText);
}

void clsGridCellMain::GridCell_EnterRow() {
  if (!grid_) return;
  highlight(highlighted_row_, false);
  current_row_ = grid_->ActiveCell().row;
  highlight(current_row_, true);
  highlighted_row_ = current_row_;
}

void clsGridCellMain::GridCell_LostFocus() {
  highlight(highlighted_row_, false);
  highlighted_row_ = 0;
}

}  // namespace zelkora
