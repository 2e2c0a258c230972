// Undo and redo of the values of a property grid.
#include "zelkora/grid/value_history.h"

#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/grid/row_facts.h"

namespace zelkora::grid {

ValueHistory::ValueHistory(clsGridCell& cell) : cell_(cell) { clear(); }

void ValueHistory::clear() {
  done_.clear();
  undone_.clear();
  values_.clear();
  cell_.GetCurrentText(values_);
}

bool ValueHistory::record() {
  std::vector<Text> now;
  cell_.GetCurrentText(now);
  Step step;
  const std::size_t count = std::max(now.size(), values_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const Text before = i < values_.size() ? values_[i] : Text();
    const Text after = i < now.size() ? now[i] : Text();
    if (before != after) step.push_back({static_cast<int32_t>(i), before, after});
  }
  values_ = std::move(now);
  if (step.empty()) return false;
  if (done_.size() == kMaxSteps) done_.erase(done_.begin());
  done_.push_back(std::move(step));
  undone_.clear();
  return true;
}

bool ValueHistory::undo() { return move_step(done_, undone_, false); }

bool ValueHistory::redo() { return move_step(undone_, done_, true); }

bool ValueHistory::move_step(std::vector<Step>& from, std::vector<Step>& to, bool forward) {
  if (from.empty()) return false;
  Step step = std::move(from.back());
  from.pop_back();
  apply(step, forward);
  to.push_back(std::move(step));
  return true;
}

int32_t ValueHistory::undo_item() const { return done_.empty() ? -1 : done_.back().front().item; }

int32_t ValueHistory::redo_item() const {
  return undone_.empty() ? -1 : undone_.back().front().item;
}

void ValueHistory::apply(const Step& step, bool forward) {
  std::vector<ItemValue> values;
  values.reserve(step.size());
  for (const Change& change : step) {
    values.push_back({change.item, forward ? change.after : change.before});
  }
  write_values(cell_, values);
  values_.clear();
  cell_.GetCurrentText(values_);
}

void write_values(clsGridCell& cell, const std::vector<ItemValue>& values) {
  std::vector<Text> current;
  cell.GetCurrentText(current);
  for (const ItemValue& value : values) {
    if (value.item >= 0 && static_cast<std::size_t>(value.item) < current.size()) {
      current[static_cast<std::size_t>(value.item)] = value.text;
    }
  }
  cell.LetCurrentText(current);
  platform::GridControl* grid = cell.GridCell();
  const std::vector<Text>& defaults = clsGridCell::Internals::item_tables(cell).defaults;
  for (const ItemValue& value : values) {
    const auto i = static_cast<std::size_t>(value.item);
    if (value.item < 0 || i >= current.size()) continue;
    cell.CellText(value.item, current[i]);
    const int32_t row = cell.lGetRowByIndex(value.item);
    if (grid && row > 0 && i < defaults.size()) {
      grid->FontBold(row, kValueCol, differs_from_default(current[i], defaults[i]));
    }
  }
  cell.ControlEnableA(0);
}

std::vector<ItemValue> defaults_of(clsGridCell& cell, int32_t row) {
  std::vector<ItemValue> values;
  if (row < 1) return values;
  for (const RowFacts& facts : row_facts(cell)) {
    const bool under = facts.row == row || facts.heading == row || facts.group == row;
    if (!under || facts.item < 0 || facts.hidden || facts.value == facts.default_value) continue;
    values.push_back({facts.item, facts.default_value});
  }
  return values;
}

}  // namespace zelkora::grid
