// Undo and redo of the values of a property grid, and the edits of values
// that are no typing (defaults of a row, a group or a heading): one step per committed
// change, holding every item the change rewrote (a group's members with
// their group). Undoing or redoing a step writes those items back, refreshes
// their cells, puts their bold marks back as they were at that point, and
// lets the form hide or show its rows again (ControlEnableA), as the change
// itself did.
//
//   grid::ValueHistory history(cell);   // the values as they are: no steps
//   ... a value is typed and its cell left ...
//   history.record();                   // one step, if a value changed
//   history.undo();                     // the values before it
//   history.redo();
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"

namespace zelkora::grid {

// An item and the text it takes.
struct ItemValue {
  int32_t item;
  Text text;
};

// Writes the items' texts, their cells and bold marks, keeps groups and
// their members in step (a member written without its group rejoins the
// group, a group written without its members is split into them, and the
// rows so rewritten are marked by the same rule), then lets the form hide or
// show its rows again (ControlEnableA(0)). Items outside 0..lMax are passed
// over.
void write_values(clsGridCell& cell, const std::vector<ItemValue>& values);

// The bold mark of each item's value cell (0..lMax; false without a grid).
std::vector<bool> value_marks(clsGridCell& cell);

// The items of row `row` back at their defaults: the row's item, a group's
// with its members', or a heading's items under it (items that do not apply
// left as they are). Empty when they are all at their defaults already.
std::vector<ItemValue> defaults_of(clsGridCell& cell, int32_t row);

class ValueHistory {
 public:
  // The most steps kept; the oldest go first.
  static constexpr std::size_t kMaxSteps = 1000;

  explicit ValueHistory(clsGridCell& cell);

  // Forgets every step and takes the values as they are now (after a
  // project is opened or a new one begun).
  void clear();
  // Makes a step of the items whose text differs from the last step's (or
  // the cleared) values; true when there was a change.
  bool record();
  bool can_undo() const { return !done_.empty(); }
  bool can_redo() const { return !undone_.empty(); }
  std::size_t steps() const { return done_.size(); }
  // The values before the last step (after the last undone one); false
  // when there is none.
  bool undo();
  bool redo();
  // The item the last step (the step redo would make) changed first, or -1.
  int32_t undo_item() const;
  int32_t redo_item() const;

 private:
  struct Change {
    int32_t item;
    Text before;
    Text after;
    bool bold_before;
    bool bold_after;
  };
  using Step = std::vector<Change>;

  void apply(const Step& step, bool forward);
  // The values and marks as they are now become the last step's.
  void take_values();
  // The last step of `from` applied (forward: its after-texts) and moved
  // to `to`; false when `from` is empty.
  bool move_step(std::vector<Step>& from, std::vector<Step>& to, bool forward);

  clsGridCell& cell_;
  std::vector<Text> values_;  // the values after the last step
  std::vector<bool> marks_;   // ... and their cells' bold marks
  std::vector<Step> done_;
  std::vector<Step> undone_;
};

}  // namespace zelkora::grid
