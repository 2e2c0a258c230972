// clsGridCell: the property grid of a calculation form.
//
// The object holds one clsCharacter, one clsErrChr and one clsLoadSave, made
// when it is made and released, in that same order, when it ends.
#pragma once

#include <memory>
#include <vector>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/grid/layout.h"

namespace zelkora {

class clsGridCell {
 public:
  clsGridCell();
  explicit clsGridCell(std::shared_ptr<const platform::Platform> platform);
  ~clsGridCell();
  clsGridCell(const clsGridCell&) = delete;
  clsGridCell& operator=(const clsGridCell&) = delete;

  // For the library's own subsystems.
  clsCharacter& character() { return *character_; }
  clsErrChr& errors() { return *errors_; }
  clsLoadSave& load_save() { return *load_save_; }

  // ---- Descriptors and layouts ----
  //
  // The rows come from a layout (grid/layout.h), named by the catalogue text
  // lInterfaceResID, or from the form itself (LetGridCellText). Row tables are
  // indexed 1..R, item tables 0..lMax; faults name the layout and the line.
  //
  //   grid.lInterfaceResID(63706);   // "clsBeamSteel"
  //   grid.GetTextResID();           // reads the layout once
  //   std::vector<Text> checks;
  //   grid.GetCheckSign(checks);     // checks[item]

  int32_t lInterfaceResID() const { return interface_res_id_; }
  void lInterfaceResID(int32_t id) { interface_res_id_ = id; }

  // Reads the layout named by catalogue text lInterfaceResID into the row
  // tables (item index, descriptor text, event flag), R and lMax. A missing
  // name text or layout throws Fault(MissingResource).
  void ReadLayoutResource();
  // Splits the descriptor of every row into kind, caption, cell, list,
  // default and check, and sizes the item tables to 0..lMax (empty texts,
  // clear hidden marks).
  void SplitRowDescriptors();
  // The form's own rows instead of a layout: texts[1..lU] are descriptors
  // with a seventh field, the item index; bEvent[1..lU] the event flags.
  // Sets R = lU and lMax, splits the rows and sizes the item tables.
  void LetGridCellText(const std::vector<Text>& texts, const std::vector<bool>& bEvent, int32_t lU,
                       int32_t lMax);
  // Reads the layout unless rows are already there (once per object), then
  // replaces the caption, list and check tables by tables indexed by item.
  void GetTextResID();

  // Copies of the tables: by row (1..R), or by item (0..lMax) for the caption,
  // list and check tables after GetTextResID.
  void GetEventRow(std::vector<bool>& X) const { X = rows_.event; }
  void GetResID(std::vector<int32_t>& X) const { X = rows_.caption; }
  void GetListRes(std::vector<int32_t>& X) const { X = rows_.list; }
  void GetCheckSign(std::vector<Text>& X) const { X = rows_.check; }
  int32_t lMaxTextIndex() const { return rows_.max_item; }

  // The text row lRow (1..R) starts with (grid::default_text, with the row's
  // list and its item's current text). Fault(IndexOutOfRange) for a row
  // outside 1..R or before the descriptors are split.
  Text tDefaultText(int32_t lRow) const;

  // For the library's own subsystems: the tables, and the item defaults
  // derived from them (every non-heading row; a layout whose item index
  // exceeds lMax throws Fault(IndexOutOfRange)).
  const grid::RowTables& row_tables() const { return rows_; }
  grid::ItemTables& item_tables() { return items_; }
  const grid::ItemTables& item_tables() const { return items_; }
  void derive_default_texts();

 private:
  std::unique_ptr<clsCharacter> character_;
  std::unique_ptr<clsErrChr> errors_;
  std::unique_ptr<clsLoadSave> load_save_;

  // Descriptors and layouts.
  int32_t interface_res_id_ = 0;
  bool rows_loaded_ = false;  // a layout was read, or the form gave its rows
  grid::RowTables rows_;
  grid::ItemTables items_;
};

}  // namespace zelkora
