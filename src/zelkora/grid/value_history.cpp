// Undo and redo of the values of a property grid.
#include "zelkora/grid/value_history.h"

#include <algorithm>

#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/grid/group_value.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"

namespace zelkora::grid {

ValueHistory::ValueHistory(clsGridCell& cell) : cell_(cell) { clear(); }

void ValueHistory::clear() {
  done_.clear();
  undone_.clear();
  take_values();
}

void ValueHistory::take_values() {
  values_.clear();
  cell_.GetCurrentText(values_);
  marks_ = value_marks(cell_);
}

bool ValueHistory::record() {
  std::vector<Text> now;
  cell_.GetCurrentText(now);
  std::vector<bool> marks = value_marks(cell_);
  const auto mark = [](const std::vector<bool>& of, std::size_t i) {
    return i < of.size() && of[i];
  };
  Step step;
  const std::size_t count = std::max(now.size(), values_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const Text before = i < values_.size() ? values_[i] : Text();
    const Text after = i < now.size() ? now[i] : Text();
    if (before != after) {
      step.push_back({static_cast<int32_t>(i), before, after, mark(marks_, i), mark(marks, i)});
    }
  }
  values_ = std::move(now);
  marks_ = std::move(marks);
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
  const std::vector<bool> marks = value_marks(cell_);
  std::vector<Text> before;
  cell_.GetCurrentText(before);
  write_values(cell_, values);
  if (platform::GridControl* grid = cell_.GridCell()) {
    // An item the step's group kept in step without a change of its text
    // keeps its mark.
    std::vector<Text> now;
    cell_.GetCurrentText(now);
    for (std::size_t i = 0; i < now.size() && i < before.size() && i < marks.size(); ++i) {
      const int32_t row = cell_.lGetRowByIndex(static_cast<int32_t>(i));
      if (row > 0 && now[i] == before[i]) grid->FontBold(row, kValueCol, marks[i]);
    }
    // The marks as they were at that point: a group edit marks the group
    // alone, and so does its redo.
    for (const Change& change : step) {
      const int32_t row = cell_.lGetRowByIndex(change.item);
      if (row > 0) grid->FontBold(row, kValueCol, forward ? change.bold_after : change.bold_before);
    }
  }
  take_values();
}

namespace {

using Cell = clsGridCell::Internals;

// A group row's item and its members' items, in order.
struct GroupItems {
  int32_t group = -1;
  std::vector<int32_t> members;
};

std::vector<GroupItems> groups_of(const clsGridCell& cell) {
  std::vector<GroupItems> groups;
  const int32_t rows = Cell::row_tables(cell).rows;
  for (int32_t r = 1; r <= rows; ++r) {
    const int32_t kind = Cell::kind(cell, r);
    if (kind == kKindGroup) {
      groups.push_back({Cell::item(cell, r), {}});
    } else if (kind == kKindMember && !groups.empty()) {
      groups.back().members.push_back(Cell::item(cell, r));
    } else if (kind != kKindMember && !groups.empty() && !groups.back().members.empty()) {
      groups.push_back({});  // members follow their group directly
    }
  }
  return groups;
}

bool in_range(int32_t item, const std::vector<Text>& texts) {
  return item >= 0 && static_cast<std::size_t>(item) < texts.size();
}

// Keeps every group and its members in step after `written` items took new
// texts: a member written without its group rejoins the group; a group
// written without its members is split into them. Answers the items it
// rewrote.
std::vector<int32_t> keep_groups_in_step(const clsGridCell& cell, const std::vector<bool>& written,
                                         std::vector<Text>& current) {
  std::vector<int32_t> rewritten;
  const auto was_written = [&](int32_t item) {
    return in_range(item, current) && static_cast<std::size_t>(item) < written.size() &&
           written[static_cast<std::size_t>(item)];
  };
  for (const GroupItems& g : groups_of(cell)) {
    if (!in_range(g.group, current) || g.members.empty()) continue;
    const bool any_member = std::any_of(g.members.begin(), g.members.end(), was_written);
    if (was_written(g.group) == any_member) continue;
    if (any_member) {
      std::vector<Text> parts;
      for (const int32_t m : g.members)
        parts.push_back(in_range(m, current) ? current[static_cast<std::size_t>(m)] : Text());
      current[static_cast<std::size_t>(g.group)] = join_group_value(parts);
      rewritten.push_back(g.group);
    } else {
      Text& group = current[static_cast<std::size_t>(g.group)];
      std::vector<Text> parts = split_group_value(group);
      group = join_group_value(parts);
      parts.resize(g.members.size());
      for (std::size_t k = 0; k < g.members.size(); ++k) {
        if (!in_range(g.members[k], current)) continue;
        current[static_cast<std::size_t>(g.members[k])] = parts[k];
        rewritten.push_back(g.members[k]);
      }
    }
  }
  return rewritten;
}

}  // namespace

void write_values(clsGridCell& cell, const std::vector<ItemValue>& values) {
  std::vector<Text> current;
  cell.GetCurrentText(current);
  std::vector<bool> written(current.size(), false);
  std::vector<int32_t> items;
  for (const ItemValue& value : values) {
    if (!in_range(value.item, current)) continue;
    current[static_cast<std::size_t>(value.item)] = value.text;
    written[static_cast<std::size_t>(value.item)] = true;
    items.push_back(value.item);
  }
  for (const int32_t item : keep_groups_in_step(cell, written, current)) items.push_back(item);
  cell.LetCurrentText(current);
  platform::GridControl* grid = cell.GridCell();
  const std::vector<Text>& defaults = Cell::item_tables(cell).defaults;
  for (const int32_t item : items) {
    const auto i = static_cast<std::size_t>(item);
    cell.CellText(item, current[i]);
    const int32_t row = cell.lGetRowByIndex(item);
    if (grid && row > 0 && i < defaults.size()) {
      grid->FontBold(row, kValueCol, differs_from_default(current[i], defaults[i]));
    }
  }
  cell.ControlEnableA(0);
}

std::vector<bool> value_marks(clsGridCell& cell) {
  std::vector<bool> marks(Cell::item_tables(cell).current.size(), false);
  const platform::GridControl* grid = cell.GridCell();
  if (!grid) return marks;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const int32_t row = cell.lGetRowByIndex(static_cast<int32_t>(i));
    marks[i] = row > 0 && grid->FontBold(row, kValueCol);
  }
  return marks;
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
