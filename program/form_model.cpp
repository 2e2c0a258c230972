// What a calculation form should hold, stated apart from the code that holds it.
#include "program/form_model.h"

#include <algorithm>

#include "zelkora/grid/layout.h"

namespace zelkora::desk {

namespace {

constexpr int32_t kPictureCol = 1;
constexpr int32_t kValueCol = 3;
constexpr int16_t kSpace = 32;

// Latin letters, also the full-width ones, in one case.
char16_t folded_letter(char16_t c) {
  if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c - u'A' + u'a');
  if (c >= u'\uFF21' && c <= u'\uFF3A') return static_cast<char16_t>(c - u'\uFF21' + u'a');
  if (c >= u'\uFF41' && c <= u'\uFF5A') return static_cast<char16_t>(c - u'\uFF41' + u'a');
  return c;
}

bool contains(TextView text, TextView part) {
  Text a(text), b(part);
  std::transform(a.begin(), a.end(), a.begin(), folded_letter);
  std::transform(b.begin(), b.end(), b.begin(), folded_letter);
  return a.find(b) != Text::npos;
}

// A group's value in its parts, each trimmed; none for an empty value.
std::vector<Text> parts_of(TextView value) {
  std::vector<Text> parts;
  if (value.empty()) return parts;
  std::size_t from = 0;
  for (;;) {
    const std::size_t comma = value.find(u',', from);
    parts.emplace_back(
        trim(value.substr(from, comma == TextView::npos ? TextView::npos : comma - from)));
    if (comma == TextView::npos) return parts;
    from = comma + 1;
  }
}

Text joined(const std::vector<Text>& parts) {
  Text text;
  for (std::size_t i = 0; i < parts.size(); ++i)
    text += (i > 0 ? u", " : u"") + Text(trim(parts[i]));
  return text;
}

bool differs(TextView value, TextView default_value) {
  return !equal_text(trim(value), trim(default_value), Compare::Text);
}

}  // namespace

FormModel::FormModel(std::shared_ptr<const platform::Platform> platform, const Program& program,
                     std::vector<ModelRow> rows, ModelState opened)
    : platform_(platform),
      program_(program),
      chr_(platform),
      rows_(std::move(rows)),
      state_(std::move(opened)) {
  defaults_.resize(state_.values.size());
  for (const ModelRow& row : rows_) {
    if (row.facts.item >= 0)
      defaults_[static_cast<std::size_t>(row.facts.item)] = row.facts.default_value;
  }
  base_defaults_ = defaults_;
  saved_ = state_.values;
  take_history();
  refilter();
}

// ---- Rows ------------------------------------------------------------------------------

const ModelRow* FormModel::row_at(int32_t row) const {
  return row >= 1 && static_cast<std::size_t>(row) <= rows_.size()
             ? &rows_[static_cast<std::size_t>(row - 1)]
             : nullptr;
}

int32_t FormModel::item_of(int32_t row) const {
  const ModelRow* r = row_at(row);
  return r ? r->facts.item : -1;
}

bool FormModel::folded(int32_t row) const {
  const ModelRow* r = row_at(row);
  if (!r || r->facts.kind == grid::kKindHeading) return false;
  const auto unfolded = [this](int32_t at) {
    return at <= 0 || state_.unfolded[static_cast<std::size_t>(at)];
  };
  return !unfolded(r->facts.heading) || !unfolded(r->facts.group);
}

bool FormModel::row_shown(int32_t row) const {
  const ModelRow* r = row_at(row);
  if (!r) return false;
  if (filtered())
    return static_cast<std::size_t>(row) < kept_.size() && kept_[static_cast<std::size_t>(row)];
  if (r->facts.kind == grid::kKindHeading) {
    for (const ModelRow& under : rows_) {
      if (under.facts.heading == row && under.facts.item >= 0 &&
          !state_.hidden[static_cast<std::size_t>(under.facts.item)]) {
        return true;
      }
    }
    return false;
  }
  return !state_.hidden[static_cast<std::size_t>(r->facts.item)] && !folded(row);
}

// An item row is kept when its text matches (or its heading's or group's
// does) and it meets the toggles; a heading or group when a row under it
// is kept; an item that does not apply never.
bool FormModel::kept_by_filter(int32_t row) const {
  const ModelRow* r = row_at(row);
  if (!r) return false;
  const auto passes = [this](const ModelRow& m) {
    if (m.facts.item < 0) return false;
    const auto i = static_cast<std::size_t>(m.facts.item);
    if (state_.hidden[i]) return false;
    if (m.facts.row == held_row_) return true;
    const auto matches = [this](int32_t at) {
      const ModelRow* x = row_at(at);
      return x &&
             (contains(x->facts.caption, filter_text_) || contains(x->facts.help, filter_text_) ||
              (x->facts.item >= 0 &&
               contains(state_.values[static_cast<std::size_t>(x->facts.item)], filter_text_)));
    };
    if (!matches(m.facts.row) && !matches(m.facts.heading) && !matches(m.facts.group)) return false;
    if (filter_changed_ && !differs(state_.values[i], defaults_[i])) return false;
    if (filter_refused_ && refusal(m.facts.row, state_.values[i]).empty()) return false;
    return true;
  };
  if (r->facts.item >= 0 && state_.hidden[static_cast<std::size_t>(r->facts.item)]) return false;
  if (passes(*r)) return true;
  if (r->facts.kind != grid::kKindHeading && r->facts.kind != grid::kKindGroup) return false;
  for (const ModelRow& under : rows_) {
    if ((under.facts.heading == row || under.facts.group == row) && passes(under)) return true;
  }
  return false;
}

Text FormModel::refusal(int32_t row, TextView value) const {
  const ModelRow* r = row_at(row);
  if (!r || r->facts.item < 0) return {};
  // A checker of its own for each value: nothing of an earlier check counts.
  clsErrChr checker(platform_);
  checker.bMessageIgnore(true);
  checker.tCheckNumberSign(r->check);
  checker.tCaption1(chr_.tString(r->caption_id));
  checker.TextValue1(value);
  checker.lListRes(r->list);
  return checker.GenCheckCboEnterNumErrX() != 0 ? checker.tError_Txt() : Text();
}

std::vector<int32_t> FormModel::refused_rows() const {
  std::vector<int32_t> rows;
  for (const ModelRow& r : rows_) {
    if (r.facts.item < 0 || state_.hidden[static_cast<std::size_t>(r.facts.item)]) continue;
    if (!refusal(r.facts.row, state_.values[static_cast<std::size_t>(r.facts.item)]).empty()) {
      rows.push_back(r.facts.row);
    }
  }
  return rows;
}

void FormModel::set_value(int32_t item, Text text) {
  if (item >= 0) state_.values[static_cast<std::size_t>(item)] = std::move(text);
}

// ---- The grid's events -------------------------------------------------------------------

void FormModel::enter_row(int32_t row) {
  current_row_ = row;
  held_row_ = 0;
  const int32_t item = item_of(row);
  entered_ = item >= 0 ? state_.values[static_cast<std::size_t>(item)] : Text();
}

void FormModel::cell_changing(int32_t row, int32_t col, TextView text, bool editing) {
  current_row_ = row;
  const ModelRow* r = row_at(row);
  if (!r || col != kValueCol || r->facts.item < 0) return;
  set_value(r->facts.item, Text(text));
  edited_row_ = row;
  if (editing) return;
  held_row_ = 0;  // the editor closed (Escape)
  refilter();
}

void FormModel::refilter() {
  kept_.assign(rows_.size() + 1, false);
  for (const ModelRow& r : rows_)
    kept_[static_cast<std::size_t>(r.facts.row)] = kept_by_filter(r.facts.row);
}

bool FormModel::apply_group_rule(int32_t row) {
  const ModelRow* r = row_at(row);
  if (r->facts.kind == grid::kKindGroup) {
    std::vector<int32_t> members;
    for (const ModelRow& m : rows_) {
      if (m.facts.group == row && m.facts.kind == grid::kKindMember) members.push_back(m.facts.row);
    }
    std::vector<Text> parts = parts_of(state_.values[static_cast<std::size_t>(r->facts.item)]);
    if (parts.size() > members.size()) {
      ++refusals_;
      set_value(r->facts.item, entered_);
      return false;
    }
    set_value(r->facts.item, joined(parts));
    parts.resize(members.size());
    for (std::size_t m = 0; m < members.size(); ++m) set_value(item_of(members[m]), parts[m]);
  } else if (r->facts.kind == grid::kKindMember && r->facts.group > 0) {
    std::vector<Text> parts;
    for (const ModelRow& m : rows_) {
      if (m.facts.group == r->facts.group && m.facts.kind == grid::kKindMember) {
        parts.push_back(state_.values[static_cast<std::size_t>(m.facts.item)]);
      }
    }
    set_value(item_of(r->facts.group), joined(parts));
  }
  return true;
}

bool FormModel::leave_cell(int32_t row, int32_t col) {
  current_row_ = row;
  held_row_ = 0;
  const ModelRow* r = row_at(row);
  // Any cell left takes a value picked before (a step), whatever the cell;
  // only a shown value cell is checked. A folded row is passed over, unless
  // the filter shows it.
  if (!r || col != kValueCol || r->facts.item < 0 ||
      (folded(row) && !(filtered() && row_shown(row)))) {
    if (!pasting_) record();
    return false;
  }
  const auto item = static_cast<std::size_t>(r->facts.item);
  // Only a value changed since the row was entered is checked.
  if (state_.values[item] != entered_ && !refusal(row, state_.values[item]).empty()) {
    ++refusals_;
    set_value(r->facts.item, entered_);
    refilter();
    return true;
  }
  if (!apply_group_rule(row)) {
    refilter();
    return true;
  }
  if (row == edited_row_) state_.bold[item] = differs(state_.values[item], defaults_[item]);
  form_rules(row);
  if (!pasting_) record();
  refilter();
  return false;
}

void FormModel::combo_click(int32_t row, TextView text) {
  current_row_ = row;
  const ModelRow* r = row_at(row);
  if (!r || r->facts.item < 0) return;
  const auto item = static_cast<std::size_t>(r->facts.item);
  set_value(r->facts.item, Text(text));
  edited_row_ = row;
  apply_group_rule(row);
  state_.bold[item] = differs(state_.values[item], defaults_[item]);
  form_rules(row);
  held_row_ = row;
  refilter();
}

void FormModel::click(int32_t row, int32_t col) {
  current_row_ = row;
  if (col == kPictureCol) key_down(row, col, kSpace);
}

void FormModel::key_down(int32_t row, int32_t col, int16_t key) {
  current_row_ = row;
  const ModelRow* r = row_at(row);
  if (!r || key != kSpace) return;
  auto unfolded = state_.unfolded[static_cast<std::size_t>(row)];
  if (r->facts.kind == grid::kKindHeading) {
    unfold_heading(row, !unfolded);
  } else if (r->facts.kind == grid::kKindGroup && col != kValueCol) {
    unfolded = !unfolded;
  }
}

void FormModel::double_click(int32_t row, int32_t col) {
  key_down(row, col, kSpace);
  form_rules(row);
}

// Unfolding a heading puts its groups back as the layout has them.
void FormModel::unfold_heading(int32_t heading, bool unfold) {
  state_.unfolded[static_cast<std::size_t>(heading)] = unfold;
  if (!unfold) return;
  for (const ModelRow& r : rows_) {
    if (r.facts.heading == heading && r.facts.kind == grid::kKindGroup) {
      state_.unfolded[static_cast<std::size_t>(r.facts.row)] = !r.starts_folded;
    }
  }
}

void FormModel::form_rules(int32_t row) {
  const ModelRow* r = row_at(row);
  if (row > 0 && (!r || !r->event)) return;
  apply_rules(program_, state_.values, state_.hidden, chr_);
}

// ---- History --------------------------------------------------------------------------------

void FormModel::take_history() {
  history_.assign(1, state_);
  marks_left_.assign(1, state_.bold);
  at_ = 0;
}

void FormModel::record() {
  if (state_.values == history_[at_].values) {
    marks_left_[at_] = state_.bold;
    return;
  }
  history_.resize(at_ + 1);
  marks_left_.resize(at_ + 1);
  history_.push_back(state_);
  marks_left_.push_back(state_.bold);
  ++at_;
  constexpr std::size_t kMostSteps = 1000;
  if (history_.size() > kMostSteps + 1) {
    history_.erase(history_.begin());
    marks_left_.erase(marks_left_.begin());
    --at_;
  }
}

// The items that differ between the two points take the values and marks of
// `to`; the form applies its rules again.
void FormModel::move_history(std::size_t from, std::size_t to) {
  const ModelState& a = history_[from];
  const ModelState& b = history_[to];
  // Back: the marks the point had when the step was taken; on: those the
  // step made.
  const std::vector<bool>& marks = to < from ? marks_left_[to] : b.bold;
  const int32_t current = item_of(current_row_);
  bool current_written = false;
  for (std::size_t i = 0; i < state_.values.size(); ++i) {
    if (a.values[i] == b.values[i]) continue;
    state_.values[i] = b.values[i];
    state_.bold[i] = marks[i];
    current_written = current_written || static_cast<int32_t>(i) == current;
  }
  at_ = to;
  form_rules(0);
  if (current_written) entered_from_current();
  refilter();
}

void FormModel::undo() {
  record();
  if (at_ > 0) move_history(at_, at_ - 1);
}

void FormModel::redo() {
  record();
  if (at_ + 1 < history_.size()) move_history(at_, at_ + 1);
}

void FormModel::paste_ends() {
  pasting_ = false;
  record();
  refilter();
}

// ---- The form's actions ----------------------------------------------------------------------

void FormModel::entered_from_current() {
  const int32_t item = item_of(current_row_);
  if (item >= 0) entered_ = state_.values[static_cast<std::size_t>(item)];
}

bool FormModel::keeps_text(int32_t item) const {
  for (const ModelRow& r : rows_) {
    if (r.facts.item == item) return r.keeps_text;
  }
  return false;
}

void FormModel::defaults() {
  // A row without a default of its own keeps the text it holds.
  for (std::size_t i = 0; i < defaults_.size(); ++i) {
    if (keeps_text(static_cast<int32_t>(i))) {
      defaults_[i] = state_.values[i].empty() ? base_defaults_[i] : state_.values[i];
    }
  }
  state_.values = defaults_;
  std::fill(state_.bold.begin(), state_.bold.end(), false);
  entered_from_current();
  form_rules(0);
  record();
  refilter();
}

void FormModel::reset_row(int32_t row) {
  if (row < 1) return;  // the header row (Enter from the last row goes there)
  std::vector<bool> written(state_.values.size(), false);
  bool any = false;
  for (const ModelRow& r : rows_) {
    const bool under = r.facts.row == row || r.facts.heading == row || r.facts.group == row;
    if (!under || r.facts.item < 0) continue;
    const auto i = static_cast<std::size_t>(r.facts.item);
    if (state_.hidden[i] || state_.values[i] == defaults_[i]) continue;
    state_.values[i] = defaults_[i];
    written[i] = any = true;
  }
  if (!any) return;
  // Groups and members written apart are brought back in step.
  for (const ModelRow& g : rows_) {
    if (g.facts.kind != grid::kKindGroup) continue;
    const auto gi = static_cast<std::size_t>(g.facts.item);
    std::vector<std::size_t> members;
    bool member_written = false;
    for (const ModelRow& m : rows_) {
      if (m.facts.group != g.facts.row || m.facts.kind != grid::kKindMember) continue;
      members.push_back(static_cast<std::size_t>(m.facts.item));
      member_written = member_written || written[members.back()];
    }
    if (member_written && !written[gi]) {
      std::vector<Text> parts;
      for (const std::size_t m : members) parts.push_back(state_.values[m]);
      state_.values[gi] = joined(parts);
      written[gi] = true;
    } else if (written[gi] && !member_written) {
      std::vector<Text> parts = parts_of(state_.values[gi]);
      parts.resize(members.size());
      for (std::size_t k = 0; k < members.size(); ++k) {
        state_.values[members[k]] = parts[k];
        written[members[k]] = true;
      }
    }
  }
  for (std::size_t i = 0; i < written.size(); ++i) {
    if (written[i]) state_.bold[i] = differs(state_.values[i], defaults_[i]);
  }
  if (const int32_t current = item_of(current_row_);
      current >= 0 && written[static_cast<std::size_t>(current)]) {
    entered_from_current();
  }
  form_rules(0);
  record();
  refilter();
}

void FormModel::new_project() {
  defaults();
  take_history();
  saved_ = state_.values;
  file_.clear();
}

void FormModel::opened(TextView file, const std::vector<Text>& values) {
  state_.values = values;
  for (std::size_t i = 0; i < state_.values.size(); ++i) {
    state_.bold[i] = differs(state_.values[i], defaults_[i]);
  }
  form_rules(0);
  entered_from_current();
  take_history();
  saved_ = state_.values;
  file_ = Text(file);
  refilter();
}

void FormModel::saved_to(TextView file) {
  saved_ = state_.values;
  file_ = Text(file);
}

void FormModel::filter(TextView text, bool changed, bool refused) {
  if (Text(trim(text)) == filter_text_ && changed == filter_changed_ &&
      refused == filter_refused_) {
    return;
  }
  held_row_ = 0;
  filter_text_ = Text(trim(text));
  filter_changed_ = changed;
  filter_refused_ = refused;
  refilter();
}

int32_t FormModel::next_refused(int32_t after) {
  const std::vector<int32_t> refused = refused_rows();
  if (refused.empty()) return 0;
  int32_t row = refused.front();
  for (const int32_t r : refused) {
    if (r > after) {
      row = r;
      break;
    }
  }
  const ModelRow* r = row_at(row);
  if (folded(row)) {
    if (r->facts.heading > 0) unfold_heading(r->facts.heading, true);
    if (r->facts.group > 0) state_.unfolded[static_cast<std::size_t>(r->facts.group)] = true;
  }
  if (filtered() && !row_shown(row)) filter({}, false, false);
  return row;
}

}  // namespace zelkora::desk
