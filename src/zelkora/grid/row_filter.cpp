// The filter over a property grid's rows.
#include "zelkora/grid/row_filter.h"

#include <algorithm>

#include "zelkora/grid/grid_cell_internals.h"
#include "zelkora/grid/layout.h"

namespace zelkora::grid {

namespace {

// A Latin letter, half- or full-width (as an input method in full-width
// mode types it), as the small half-width one.
char16_t fold_case(char16_t c) {
  if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c - u'A' + u'a');
  if (c >= u'\uFF21' && c <= u'\uFF3A') return static_cast<char16_t>(c - u'\uFF21' + u'a');
  if (c >= u'\uFF41' && c <= u'\uFF5A') return static_cast<char16_t>(c - u'\uFF41' + u'a');
  return c;
}

Text folded(TextView text) {
  Text out(text);
  std::transform(out.begin(), out.end(), out.begin(), fold_case);
  return out;
}

bool matches(const RowFacts& row, TextView part) {
  return contains_text(row.caption, part) || contains_text(row.help, part) ||
         contains_text(row.value, part);
}

}  // namespace

bool RowFilter::active() const { return !trim(text).empty() || changed || refused; }

bool contains_text(TextView text, TextView part) {
  if (part.empty()) return true;
  const Text haystack = folded(text);
  const Text needle = folded(part);
  return haystack.find(needle) != Text::npos;
}

std::vector<bool> rows_kept(const std::vector<RowFacts>& rows, const RowFilter& filter,
                            const std::vector<bool>& refused) {
  std::vector<bool> kept(rows.size() + 1, false);
  kept[0] = true;
  const Text part(trim(filter.text));
  // Whether a heading or group row's own text matches, by row.
  std::vector<bool> row_matches(rows.size() + 1, false);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const RowFacts& row = rows[i];
    const auto at = static_cast<std::size_t>(row.row);
    if (at >= kept.size()) continue;
    row_matches[at] = matches(row, part);
    if (row.kind == kKindHeading || row.hidden) continue;
    const auto context = [&](int32_t r) {
      return r > 0 && static_cast<std::size_t>(r) < row_matches.size() &&
             row_matches[static_cast<std::size_t>(r)];
    };
    const bool text_ok = row_matches[at] || context(row.heading) || context(row.group);
    const bool changed_ok = !filter.changed || differs_from_default(row.value, row.default_value);
    const bool refused_ok = !filter.refused || (i < refused.size() && refused[i]);
    if (!(text_ok && changed_ok && refused_ok) && row.row != filter.held_row) continue;
    kept[at] = true;
    for (const int32_t above : {row.heading, row.group}) {
      if (above > 0 && static_cast<std::size_t>(above) < kept.size()) {
        kept[static_cast<std::size_t>(above)] = true;
      }
    }
  }
  return kept;
}

void show_kept_rows(clsGridCell& cell, std::vector<bool> kept) {
  clsGridCell::Internals::reveal_rows(cell, std::move(kept));
}

}  // namespace zelkora::grid
