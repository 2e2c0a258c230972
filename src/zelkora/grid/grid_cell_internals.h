// The library's own access to the state of a clsGridCell, for the tool and
// the tests. Not installed: forms see only the class's properties and
// methods.
#pragma once

#include <vector>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/layout.h"

namespace zelkora {

struct clsGridCell::Internals {
  // The objects the grid holds, and the platform bundle it was made with.
  static const std::shared_ptr<const platform::Platform>& platform(const clsGridCell& g) {
    return g.platform_;
  }
  static clsCharacter& character(clsGridCell& g) { return *g.character_; }
  static clsErrChr& errors(clsGridCell& g) { return *g.errors_; }
  static clsLoadSave& load_save(clsGridCell& g) { return *g.load_save_; }
  // The tables by row (1..R) and by item (0..lMax).
  static const grid::RowTables& row_tables(const clsGridCell& g) { return g.rows_; }
  static grid::ItemTables& item_tables(clsGridCell& g) { return g.items_; }
  // The row height in use, the per-row collapsed flags (1..R), whether the
  // grid has been built.
  static int32_t row_height(const clsGridCell& g) { return g.row_height_; }
  static const std::vector<bool>& collapsed_rows(const clsGridCell& g) { return g.collapsed_; }
  static bool built(const clsGridCell& g) { return g.built_; }
  // The rows a host's filter shows (indexed by row 0..R; empty: none). A
  // collapsed row among them is edited, checked and marked like any other.
  static void reveal_rows(clsGridCell& g, std::vector<bool> rows) {
    g.revealed_ = std::move(rows);
  }
  // A row's kind (absolute), its item (-1 when it has none within 0..lMax),
  // the catalogue id of its caption, its check expression and its list.
  static int32_t kind(const clsGridCell& g, int32_t row) { return g.kind_of(row); }
  static int32_t item(const clsGridCell& g, int32_t row) { return g.value_item(row); }
  static int32_t caption(const clsGridCell& g, int32_t row) { return g.caption_of(row); }
  static Text check(const clsGridCell& g, int32_t row) { return g.check_of(row); }
  static int32_t list(const clsGridCell& g, int32_t row) { return g.list_of(row); }
  // Derives the default texts of the items from the tables again.
  static void derive_default_texts(clsGridCell& g) { g.derive_default_texts(); }
};

}  // namespace zelkora
