// clsGridCell: start and end, and the descriptors and layouts of its rows.
#include "zelkora/grid/cls_grid_cell.h"

#include <string>

#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/layout.h"
#include "zelkora/platform/fault.h"

namespace zelkora {

clsGridCell::clsGridCell() : clsGridCell(platform::Platform::current()) {}

clsGridCell::clsGridCell(std::shared_ptr<const platform::Platform> platform)
    : platform_(platform),
      character_(std::make_unique<clsCharacter>(platform)),
      errors_(std::make_unique<clsErrChr>(platform)),
      load_save_(std::make_unique<clsLoadSave>(platform)),
      tables_(std::make_unique<grid::Tables>()),
      rows_(tables_->rows),
      items_(tables_->items),
      row_height_(grid::saved_row_height(*character_)) {}

clsGridCell::~clsGridCell() {
  character_.reset();
  errors_.reset();
  load_save_.reset();
}

// ---- Descriptors and layouts ----

void clsGridCell::GetEventRow(std::vector<bool>& X) const { X = rows_.event; }
void clsGridCell::GetResID(std::vector<int32_t>& X) const { X = rows_.caption; }
void clsGridCell::GetListRes(std::vector<int32_t>& X) const { X = rows_.list; }
void clsGridCell::GetCheckSign(std::vector<Text>& X) const { X = rows_.check; }
int32_t clsGridCell::lMaxTextIndex() const { return rows_.max_item; }
int32_t clsGridCell::lRowCount() const { return rows_.rows; }
void clsGridCell::GetCurrentText(std::vector<Text>& X) const { X = items_.current; }
bool clsGridCell::valid_row(int32_t row) const { return row >= 1 && row <= rows_.rows; }
bool clsGridCell::is_heading(int32_t row) const { return kind_of(row) == grid::kKindHeading; }

void clsGridCell::ReadLayoutResource() {
  if (!grid::is_layout_name_id(interface_res_id_)) {
    throw Fault(FaultKind::MissingResource,
                "layout name: catalogue id " + std::to_string(interface_res_id_) +
                    " is outside the layout names (" + std::to_string(text_id::kFirstLayoutName) +
                    "-" + std::to_string(text_id::kLastLayoutName) + ", " +
                    std::to_string(text_id::kFirstProgramText) + "-" +
                    std::to_string(text_id::kLastProgramText) + ")");
  }
  const std::optional<TextView> name =
      clsCharacter::Internals::catalogue_text(*character_, interface_res_id_);
  if (!name) {
    throw Fault(
        FaultKind::MissingResource,
        "layout name: catalogue text " + std::to_string(interface_res_id_) + " does not exist");
  }
  const Text text =
      grid::load_layout_text(*name, clsCharacter::Internals::platform(*character_).resources);
  rows_ = grid::read_layout(text, to_utf8(*name), clsCharacter::Internals::catalogue(*character_));
  rows_loaded_ = true;
}

void clsGridCell::SplitRowDescriptors() {
  grid::split_row_descriptors(rows_, character_->number_symbols());
  items_.resize(rows_.max_item);
}

void clsGridCell::LetGridCellText(const std::vector<Text>& texts, const std::vector<bool>& bEvent,
                                  int32_t lU, int32_t lMax) {
  rows_ = grid::rows_from_descriptors(texts, bEvent, lU, lMax, character_->number_symbols());
  items_.resize(rows_.max_item);
  rows_loaded_ = true;
}

void clsGridCell::GetTextResID() {
  if (!rows_loaded_) ReadLayoutResource();
  grid::index_by_item(rows_, character_->number_symbols());
}

Text clsGridCell::tDefaultText(int32_t lRow) const {
  if (lRow < 1 || lRow > rows_.rows || !rows_.split) {
    throw Fault(FaultKind::IndexOutOfRange, "row " + std::to_string(lRow) +
                                                " has no split descriptor (rows 1 to " +
                                                std::to_string(rows_.split ? rows_.rows : 0) + ")");
  }
  const auto row = static_cast<std::size_t>(lRow);
  const int32_t item = rows_.item[row];
  const bool has_item = item >= 0 && static_cast<std::size_t>(item) < items_.current.size();
  int32_t list = rows_.list[row];
  if (rows_.indexed_by_item) {
    list = item >= 0 && static_cast<std::size_t>(item) < rows_.list.size()
               ? rows_.list[static_cast<std::size_t>(item)]
               : 0;
  }
  const TextView current =
      has_item ? TextView(items_.current[static_cast<std::size_t>(item)]) : TextView();
  try {
    return grid::default_text(rows_.default_field[row], character_->ComboBoxList(list), current,
                              *character_);
  } catch (const Fault& fault) {
    // A default that cannot be read names its layout and line, as every
    // other damage of a layout does.
    throw Fault(fault.kind(), rows_.place(lRow) + ": default " + to_utf8(rows_.default_field[row]) +
                                  ": " + fault.what());
  }
}

void clsGridCell::derive_default_texts() {
  for (int32_t r = 1; r <= rows_.rows; ++r) {
    const int32_t item = rows_.item[static_cast<std::size_t>(r)];
    if (item < 0) continue;
    if (static_cast<std::size_t>(item) >= items_.defaults.size()) {
      throw Fault(FaultKind::IndexOutOfRange, rows_.place(r) + ": item index " +
                                                  std::to_string(item) + " is beyond lMax " +
                                                  std::to_string(rows_.max_item));
    }
    items_.defaults[static_cast<std::size_t>(item)] = tDefaultText(r);
  }
}

}  // namespace zelkora
