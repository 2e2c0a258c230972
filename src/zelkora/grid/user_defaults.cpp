// A user's own default values of a form, in ZK_Form.INI.
#include "zelkora/grid/user_defaults.h"

#include <algorithm>
#include <string>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/grid/group_value.h"
#include "zelkora/grid/layout.h"
#include "zelkora/grid/row_facts.h"
#include "zelkora/platform/codepage.h"

namespace zelkora::grid {

namespace {

using Cell = clsGridCell::Internals;

// Read for a missing key: no value read from a file can be it (a control
// character is refused anyway).
constexpr TextView kMissing = u"\u0001";

Text key_of(int32_t item) {
  const std::string digits = std::to_string(item);
  return Text(digits.begin(), digits.end());
}

bool has_bad_character(TextView text) {
  return std::any_of(text.begin(), text.end(),
                     [](char16_t c) { return c == u'\uFFFD' || c < u' ' || c == u'\u007F'; });
}

// Whether `text`, written as a value, reads back as it is.
bool keepable(TextView text) {
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == u'"' || text.front() == u'\'');
  return !quoted && !has_bad_character(text) &&
         std::all_of(text.begin(), text.end(), codepage::has_ansi_form) &&
         codepage::display_width(text) <= kLongestUserDefault;
}

// The members' items of group row `row`: the member rows that follow it.
std::vector<int32_t> members_of(const clsGridCell& cell, int32_t row) {
  std::vector<int32_t> members;
  const int32_t rows = Cell::row_tables(cell).rows;
  for (int32_t r = row + 1; r <= rows && Cell::kind(cell, r) == kKindMember; ++r) {
    members.push_back(Cell::item(cell, r));
  }
  return members;
}

bool refused_by_check(clsGridCell& cell, int32_t row, TextView text) {
  clsErrChr checker(Cell::platform(cell));
  checker.lLanguage(Cell::character(cell).lLanguage());
  checker.bMessageIgnore(true);
  return check_entry(checker, Cell::character(cell), Cell::check(cell, row),
                     Cell::caption(cell, row), Cell::list(cell, row), text) != 0;
}

}  // namespace

Text user_defaults_file(const platform::Platform& platform) {
  return platform.suite ? platform.suite->user_file(kUserDefaultsFileName) : Text();
}

std::vector<ItemValue> read_user_default_entries(const platform::IniFiles& ini, TextView file,
                                                 TextView layout, int32_t max_item) {
  std::vector<ItemValue> entries;
  if (file.empty() || trim(layout).empty()) return entries;
  for (int32_t item = 0; item <= max_item; ++item) {
    Text value = ini.read(layout, key_of(item), kMissing, file);
    if (value != kMissing) entries.push_back({item, std::move(value)});
  }
  return entries;
}

EntryFault entry_fault(clsGridCell& cell, const ItemValue& entry) {
  const int32_t row = Cell::built(cell) ? cell.lGetRowByIndex(entry.item) : 0;
  if (entry.item < 0 || row < 1 || Cell::item(cell, row) != entry.item) {
    return EntryFault::kNoSuchItem;
  }
  if (has_bad_character(entry.text)) return EntryFault::kBadBytes;
  if (codepage::display_width(entry.text) > kLongestUserDefault) return EntryFault::kOverlong;
  if (Cell::kind(cell, row) == kKindGroup &&
      split_group_value(entry.text).size() > members_of(cell, row).size()) {
    return EntryFault::kRefused;
  }
  return refused_by_check(cell, row, entry.text) ? EntryFault::kRefused : EntryFault::kNone;
}

std::vector<ItemValue> accepted_user_defaults(clsGridCell& cell,
                                              const std::vector<ItemValue>& entries) {
  std::vector<ItemValue> taken;
  for (const ItemValue& entry : entries) {
    if (entry_fault(cell, entry) == EntryFault::kNone) taken.push_back(entry);
  }
  // A group joins its members' values: its own entry goes when one of them
  // is taken, so that the two cannot disagree.
  std::vector<int32_t> dropped;
  for (const ItemValue& entry : taken) {
    const int32_t row = cell.lGetRowByIndex(entry.item);
    if (Cell::kind(cell, row) != kKindGroup) continue;
    const std::vector<int32_t> members = members_of(cell, row);
    const bool member_taken = std::any_of(taken.begin(), taken.end(), [&](const ItemValue& e) {
      return std::find(members.begin(), members.end(), e.item) != members.end();
    });
    if (member_taken) dropped.push_back(entry.item);
  }
  std::erase_if(taken, [&](const ItemValue& e) {
    return std::find(dropped.begin(), dropped.end(), e.item) != dropped.end();
  });
  return taken;
}

std::vector<ItemValue> load_user_defaults(clsGridCell& cell, TextView layout) {
  const std::shared_ptr<const platform::Platform>& platform = Cell::platform(cell);
  if (!platform || !platform->ini || !Cell::built(cell)) return {};
  const Text file = user_defaults_file(*platform);
  return accepted_user_defaults(
      cell, read_user_default_entries(*platform->ini, file, layout, cell.lMaxTextIndex()));
}

SavedUserDefaults save_user_defaults(clsGridCell& cell, TextView layout) {
  SavedUserDefaults saved;
  const std::shared_ptr<const platform::Platform>& platform = Cell::platform(cell);
  if (!platform || !platform->ini || !Cell::built(cell) || trim(layout).empty()) return saved;
  const Text file = user_defaults_file(*platform);
  if (file.empty()) return saved;
  std::vector<Text> values;
  cell.GetCurrentText(values);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const auto item = static_cast<int32_t>(i);
    const TextView value = trim(values[i]);
    const bool kept = keepable(value);
    if (!kept) saved.left_out.push_back(item);
    const std::optional<TextView> written = kept ? std::optional<TextView>(value) : std::nullopt;
    if (!platform->ini->write(layout, key_of(item), written, file)) return saved;
  }
  saved.written = true;
  return saved;
}

}  // namespace zelkora::grid
