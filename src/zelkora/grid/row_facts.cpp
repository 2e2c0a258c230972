// The rows of a property grid as a desktop host sees them.
#include "zelkora/grid/row_facts.h"

#include "zelkora/grid/form_check.h"

#include <limits>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/grid/grid_cell_internals.h"

namespace zelkora::grid {

namespace {

using Cell = clsGridCell::Internals;

}  // namespace

bool differs_from_default(TextView value, TextView default_value) {
  return !equal_text(trim(value), trim(default_value), Compare::Text);
}

Text help_text(const clsCharacter& chr, int32_t caption_id, TextView caption) {
  Text help =
      caption_id < std::numeric_limits<int32_t>::max() ? chr.tString(caption_id + 1) : Text();
  if (help.empty()) {
    const std::vector<Text> parts = split_text(caption, u" ");
    if (parts.size() == 2) help = parts[1] + u"——" + parts[0];
  }
  return help + u"。";
}

std::vector<RowFacts> row_facts(clsGridCell& cell) {
  if (!Cell::built(cell) || !cell.GridCell()) return {};
  const RowTables& rows = Cell::row_tables(cell);
  const ItemTables& items = Cell::item_tables(cell);
  const std::vector<bool>& collapsed = Cell::collapsed_rows(cell);
  const clsCharacter& chr = Cell::character(cell);
  const platform::GridControl& grid = *cell.GridCell();
  std::vector<RowFacts> facts;
  facts.reserve(static_cast<std::size_t>(rows.rows));
  int32_t heading = 0;
  int32_t group = 0;
  for (int32_t row = 1; row <= rows.rows; ++row) {
    RowFacts f;
    f.row = row;
    f.kind = Cell::kind(cell, row);
    f.caption = Text(trim(grid.Text(row, kCaptionCol)));
    f.folded = static_cast<std::size_t>(row) < collapsed.size() &&
               collapsed[static_cast<std::size_t>(row)];
    if (f.kind == kKindHeading) {
      heading = row;
      group = 0;
      f.help = f.caption;
      facts.push_back(std::move(f));
      continue;
    }
    f.heading = heading;
    if (f.kind == kKindGroup) group = row;
    if (f.kind == kKindMember) f.group = group;
    f.item = Cell::item(cell, row);
    f.help = help_text(chr, Cell::caption(cell, row), chr.tString(Cell::caption(cell, row)));
    if (f.item >= 0) {
      const auto i = static_cast<std::size_t>(f.item);
      f.value = items.current[i];
      f.default_value = items.defaults[i];
      f.hidden = items.hidden[i];
    }
    facts.push_back(std::move(f));
  }
  return facts;
}

namespace {

// A checker that shows nothing, reading the catalogue as the grid does.
std::unique_ptr<clsErrChr> quiet_checker(clsGridCell& cell) {
  auto checker = std::make_unique<clsErrChr>(Cell::platform(cell));
  checker->lLanguage(Cell::character(cell).lLanguage());
  checker->bMessageIgnore(true);
  return checker;
}

// The check of row `row`'s value on `checker`: its error number, 0 when
// the value is accepted or the row has no item.
int32_t check_row(clsGridCell& cell, int32_t row, clsErrChr& checker) {
  const int32_t item = Cell::item(cell, row);
  if (item < 0) return 0;
  return check_entry(checker, Cell::character(cell), Cell::check(cell, row),
                     Cell::caption(cell, row), Cell::list(cell, row),
                     Cell::item_tables(cell).current[static_cast<std::size_t>(item)]);
}

Text refusal_of(clsGridCell& cell, int32_t row, clsErrChr& checker) {
  return check_row(cell, row, checker) != 0 ? checker.tError_Txt() : Text();
}

}  // namespace

int32_t check_entry(clsErrChr& checker, const clsCharacter& chr, TextView check, int32_t caption,
                    int32_t list, TextView value) {
  checker.tCheckNumberSign(check);
  checker.tCaption1(chr.tString(caption));
  checker.TextValue1(value);
  checker.lListRes(list);
  return checker.GenCheckCboEnterNumErrX();
}

Text refusal(clsGridCell& cell, int32_t row) {
  if (!Cell::built(cell) || row < 1 || row > Cell::row_tables(cell).rows) return {};
  return refusal_of(cell, row, *quiet_checker(cell));
}

std::vector<Text> refusals(clsGridCell& cell) {
  if (!Cell::built(cell)) return {};
  const std::unique_ptr<clsErrChr> checker = quiet_checker(cell);
  const int32_t rows = Cell::row_tables(cell).rows;
  std::vector<Text> found(static_cast<std::size_t>(rows));
  for (int32_t row = 1; row <= rows; ++row) {
    found[static_cast<std::size_t>(row - 1)] = refusal_of(cell, row, *checker);
  }
  return found;
}

std::vector<ValueRefusal> check_form_values(clsGridCell& cell) {
  std::vector<ValueRefusal> found;
  const std::unique_ptr<clsErrChr> checker = quiet_checker(cell);
  const ItemTables& items = Cell::item_tables(cell);
  std::vector<bool> checked(items.current.size());
  for (int32_t row = 1; row <= cell.lRowCount(); ++row) {
    const int32_t item = Cell::item(cell, row);
    if (item < 0 || static_cast<std::size_t>(item) >= checked.size() ||
        checked[static_cast<std::size_t>(item)]) {
      continue;
    }
    checked[static_cast<std::size_t>(item)] = true;
    if (const int32_t error = check_row(cell, row, *checker); error != 0) {
      found.push_back({row, item, error, Cell::character(cell).tString(Cell::caption(cell, row)),
                       items.current[static_cast<std::size_t>(item)], checker->tError_Txt()});
    }
  }
  return found;
}

}  // namespace zelkora::grid
