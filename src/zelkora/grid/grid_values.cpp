// clsGridCell: the grid's values in a project data file.
#include <optional>

#include "zelkora/datafile/form_file.h"
#include "zelkora/datafile/record_numbers.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/error_numbers.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/layout.h"

namespace zelkora {

bool clsGridCell::bLoadOrSaveData(TextView tMode, TextView tDataSaveName, TextView tPro1,
                                  TextView tPro2, Text& tAddData) {
  const int32_t mode = load_save_->lLoadSaveMode(tMode);
  if (mode == error_id::kDataFileNotSaved) return save_values(tDataSaveName, tPro1, tAddData);
  if (mode == error_id::kDataFileNotOpened) {
    return load_values(tDataSaveName, tPro1, tPro2, tAddData);
  }
  return false;
}

bool clsGridCell::save_values(TextView tDataSaveName, TextView tPro1, TextView tAddData) {
  clsLoadSave& ls = *load_save_;
  return datafile::FormFile::save(ls, tDataSaveName, tPro1, [&] {
    bool ok = ls.WriteFile_100_StrA(character_->tResStr(text_id::kDisplayTuLiName), display_tu_li_);
    ok = ls.WriteFile_100_StrA(character_->tResStr(text_id::kAddDataName), tAddData) && ok;
    ok = ls.WriteFile_Array_Str_1A(items_.current, character_->tResStr(text_id::kCellTextName)) &&
         ok;
    return (!form_groups_.save || form_groups_.save(ls)) && ok;
  });
}

bool clsGridCell::load_values(TextView tDataSaveName, TextView tPro1, TextView tPro2,
                              Text& tAddData) {
  clsLoadSave& ls = *load_save_;
  const Text flag_name = character_->tResStr(text_id::kDisplayTuLiName);
  const Text add_name = character_->tResStr(text_id::kAddDataName);
  const Text cells_name = character_->tResStr(text_id::kCellTextName);
  std::optional<bool> flag;
  std::optional<Text> add;
  std::optional<std::vector<Text>> texts;

  // The values change only once the whole file has been read.
  const bool loaded = datafile::FormFile::load(ls, tDataSaveName, tPro1, tPro2, [&] {
    if (ls.ID() != record_id::kName) return true;
    if (ls.Member() == flag_name) {
      bool value = false;
      if (!ls.ReadFile_BooleanW(value)) return false;
      flag = value;
    } else if (ls.Member() == add_name) {
      Text value;
      if (!ls.ReadFile_TextW(value)) return false;
      add = std::move(value);
    } else if (ls.Member() == cells_name) {
      std::vector<Text> values;
      if (!ls.ReadFile_Array_Str_1W(values)) return false;
      texts = std::move(values);
    } else if (form_groups_.load) {
      UseBinRecord record{ls.ID(), ls.Member()};
      return form_groups_.load(ls, record);
    }
    return true;
  });
  if (!loaded) return false;

  if (flag) display_tu_li_ = *flag;
  if (add) tAddData = std::move(*add);
  if (texts) {
    const std::size_t n = std::min(texts->size(), items_.current.size());
    for (std::size_t i = 0; i < n; ++i) items_.current[i] = std::move((*texts)[i]);
  }
  refill_cells();
  return true;
}

void clsGridCell::refill_cells() {
  if (!ready()) return;
  LoadingScope loading(*this);
  grid_->AutoRedraw(false);
  for (int32_t r = 1; r <= rows_.rows; ++r) {
    const int32_t item = value_item(r);
    if (item < 0 || kind_of(r) == grid::kKindHeading) continue;
    grid_->Text(r, grid::kValueCol, items_.current[static_cast<std::size_t>(item)]);
    update_bold(r);
  }
  keep_entered_text();
  grid::finish_grid(*grid_);
}

}  // namespace zelkora
