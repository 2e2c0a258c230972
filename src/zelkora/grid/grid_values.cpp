// clsGridCell: the grid's values in a project data file.
#include <optional>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/grid_appearance.h"

namespace zelkora {

namespace {

constexpr int32_t kErrorLoad = 2002;  // lLoadSaveMode of "Load", "InPut", "Default"
constexpr int32_t kErrorSave = 2003;  // of "Save", "SaveAsNewVersion", "OutPut"
constexpr int32_t kOutputMode = 35150;
constexpr int32_t kInputMode = 35152;
constexpr int32_t kEofName = 32031;
constexpr int32_t kDisplayTuLiName = 37000;
constexpr int32_t kAddDataName = 37006;
constexpr int32_t kCellTextName = 37007;
constexpr int32_t kNameRecord = 100;     // the name record of a value or an array
constexpr int32_t kProgramRecord = 198;  // WriteFile_TempStrA
// Records read at most before a file counts as damaged: the grid's part is a
// few records and one per item.
constexpr int32_t kMostRecords = 1 << 20;

}  // namespace

bool clsGridCell::bLoadOrSaveData(TextView tMode, TextView tDataSaveName, TextView tPro1,
                                  TextView tPro2, Text& tAddData) {
  const int32_t mode = load_save_->lLoadSaveMode(tMode);
  if (mode == kErrorSave) return save_values(tDataSaveName, tPro1, tAddData);
  if (mode == kErrorLoad) return load_values(tDataSaveName, tPro1, tPro2, tAddData);
  return false;
}

bool clsGridCell::save_values(TextView tDataSaveName, TextView tPro1, TextView tAddData) {
  clsLoadSave& ls = *load_save_;
  if (!ls.OpenFileA(tDataSaveName, character_->tResStr(kOutputMode))) return false;
  bool ok = ls.WriteFile_RevisionA();
  if (!tPro1.empty()) ok = ls.WriteFile_TempStrA(tPro1) && ok;
  ok = ls.WriteFile_100_StrA(character_->tResStr(kDisplayTuLiName), display_tu_li_) && ok;
  ok = ls.WriteFile_100_StrA(character_->tResStr(kAddDataName), tAddData) && ok;
  ok = ls.WriteFile_Array_Str_1A(items_.current, character_->tResStr(kCellTextName)) && ok;
  return ls.WriteFileEofAndCloseFileA() && ok;
}

bool clsGridCell::load_values(TextView tDataSaveName, TextView tPro1, TextView tPro2,
                              Text& tAddData) {
  clsLoadSave& ls = *load_save_;
  if (!ls.OpenFileA(tDataSaveName, character_->tResStr(kInputMode))) return false;
  const Text eof = character_->tResStr(kEofName);
  const Text flag_name = character_->tResStr(kDisplayTuLiName);
  const Text add_name = character_->tResStr(kAddDataName);
  const Text cells_name = character_->tResStr(kCellTextName);
  std::optional<bool> flag;
  std::optional<Text> add;
  std::optional<std::vector<Text>> texts;

  // Read the whole file first; the values change only when it is complete.
  const auto read_all = [&]() {
    if (!ls.ReadFileOneW() || ls.ID() != 0) return false;  // the revision
    if (!tPro1.empty()) {
      if (!ls.ReadFileOneW() || ls.ID() != kProgramRecord) return false;
      if (ls.Member() != tPro1 && (tPro2.empty() || ls.Member() != tPro2)) return false;
    }
    int32_t count = 0;
    for (;;) {
      if (!ls.ReadFileOneW() || ls.bReadMsgError(count, kMostRecords)) return false;
      if (ls.ID() == 0 && ls.Member() == eof) return true;
      if (ls.ID() != kNameRecord) continue;
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
      }
    }
  };
  const bool ok = read_all();
  ls.CloseFileA();
  if (!ok) return false;

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
  grid::finish_grid(*grid_);
}

}  // namespace zelkora
