// The view of a property grid kept between sessions.
#include "zelkora/grid/view_state.h"

#include <charconv>

#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/grid_cell_internals.h"

namespace zelkora::grid {

namespace {

using Cell = clsGridCell::Internals;

// The most names a list keeps and the largest pane size read back: more is
// damage.
constexpr std::size_t kMaxNames = 4096;
constexpr int32_t kMaxPane = 100000;

Text joined(const std::vector<Text>& names) {
  Text out;
  for (const Text& name : names) {
    if (!out.empty()) out += u',';
    out += name;
  }
  return out;
}

// A name as written: digits, after an optional "h".
bool valid_name(TextView name) {
  if (!name.empty() && name.front() == u'h') name.remove_prefix(1);
  if (name.empty() || name.size() > 9) return false;
  for (const char16_t c : name) {
    if (c < u'0' || c > u'9') return false;
  }
  return true;
}

std::vector<Text> names_of(TextView list) {
  std::vector<Text> names;
  for (const Text& part : split_text(list, u",")) {
    const Text name(trim(part));
    if (valid_name(name) && names.size() < kMaxNames) names.push_back(name);
  }
  return names;
}

std::vector<int32_t> sizes_of(TextView list) {
  std::vector<int32_t> sizes;
  for (const Text& part : split_text(list, u",")) {
    const std::string digits = to_utf8(trim(part));
    int32_t size = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    if (error != std::errc() || end != digits.data() + digits.size() || size < 0 ||
        size > kMaxPane || sizes.size() >= kMaxNames) {
      return {};
    }
    sizes.push_back(size);
  }
  return sizes;
}

bool foldable(clsGridCell& cell, int32_t row) {
  const int32_t kind = Cell::kind(cell, row);
  return kind == kKindHeading || kind == kKindGroup;
}

bool unfolded(clsGridCell& cell, int32_t row) {
  return cell.GridCell()->ImageKey(row, kPictureCol) == kExpandedKey;
}

}  // namespace

Text view_state_text(const ViewState& view) {
  Text panes;
  for (const int32_t size : view.panes) {
    if (!panes.empty()) panes += u',';
    panes += from_utf8(std::to_string(size));
  }
  Text text = u"open=" + joined(view.open) + u";closed=" + joined(view.closed) + u";row=" +
              view.current + u";top=" + view.top + u";panes=" + panes;
  if (view.caption > 0) text += u";caption=" + from_utf8(std::to_string(view.caption));
  return text;
}

ViewState parse_view_state(TextView text) {
  ViewState view;
  for (const Text& field : split_text(text, u";")) {
    const std::size_t eq = field.find(u'=');
    if (eq == Text::npos) continue;
    const Text name(trim(TextView(field).substr(0, eq)));
    const TextView value = TextView(field).substr(eq + 1);
    if (name == u"open") {
      view.open = names_of(value);
    } else if (name == u"closed") {
      view.closed = names_of(value);
    } else if (name == u"row" && valid_name(trim(value))) {
      view.current = Text(trim(value));
    } else if (name == u"top" && valid_name(trim(value))) {
      view.top = Text(trim(value));
    } else if (name == u"panes") {
      view.panes = sizes_of(value);
    } else if (name == u"caption") {
      const std::vector<int32_t> width = sizes_of(value);
      view.caption = width.size() == 1 ? width.front() : 0;
    }
  }
  return view;
}

Text row_key(clsGridCell& cell, int32_t row) {
  const int32_t rows = Cell::built(cell) ? Cell::row_tables(cell).rows : 0;
  if (row < 1 || row > rows) return {};
  if (Cell::kind(cell, row) != kKindHeading) {
    const int32_t item = Cell::item(cell, row);
    return item < 0 ? Text() : from_utf8(std::to_string(item));
  }
  for (int32_t r = row + 1; r <= rows && Cell::kind(cell, r) != kKindHeading; ++r) {
    const int32_t item = Cell::item(cell, r);
    if (item >= 0) return u"h" + from_utf8(std::to_string(item));
  }
  return {};
}

int32_t key_row(clsGridCell& cell, TextView key) {
  if (!valid_name(key)) return 0;
  const bool heading = key.front() == u'h';
  int32_t item = 0;
  const std::string digits = to_utf8(heading ? key.substr(1) : key);
  std::from_chars(digits.data(), digits.data() + digits.size(), item);
  const int32_t row = cell.lGetRowByIndex(item);
  if (row <= 0 || !heading) return row;
  for (int32_t r = row - 1; r >= 1; --r) {
    if (Cell::kind(cell, r) == kKindHeading) return row_key(cell, r) == key ? r : 0;
  }
  return 0;
}

ViewState capture_view(clsGridCell& cell, int32_t current_row, int32_t top_row) {
  ViewState view;
  if (!Cell::built(cell) || !cell.GridCell()) return view;
  for (int32_t row = 1; row <= Cell::row_tables(cell).rows; ++row) {
    if (!foldable(cell, row)) continue;
    Text key = row_key(cell, row);
    if (key.empty()) continue;
    (unfolded(cell, row) ? view.open : view.closed).push_back(std::move(key));
  }
  view.current = row_key(cell, current_row);
  view.top = row_key(cell, top_row);
  return view;
}

void restore_view(clsGridCell& cell, const ViewState& view) {
  if (!Cell::built(cell) || !cell.GridCell()) return;
  // Headings first: unfolding one puts its groups back to their layout state.
  for (const int32_t kind : {kKindHeading, kKindGroup}) {
    for (const bool open : {true, false}) {
      for (const Text& key : open ? view.open : view.closed) {
        const int32_t row = key_row(cell, key);
        if (row <= 0 || Cell::kind(cell, row) != kind || unfolded(cell, row) == open) continue;
        if (kind == kKindHeading) {
          cell.ExpandHeadingGroup(row, open);
        } else {
          cell.ExpandGroupMembers(row, open);
        }
      }
    }
  }
}

}  // namespace zelkora::grid
