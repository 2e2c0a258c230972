// Linear interpolation in tables held in texts.
#include "zelkora/frame/value_table.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/numbers.h"

namespace zelkora::frame {

namespace {

using Row = std::vector<Text>;

bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

// The rows of the text, each split into its items; a "|" at the end of a row
// closes its last item and makes none, so a row of "|" alone is empty.
std::vector<Row> table_rows(TextView table) {
  std::vector<Row> rows;
  std::size_t start = 0;
  while (start <= table.size()) {
    std::size_t end = table.find_first_of(u";\r\n", start);
    if (end == TextView::npos) end = table.size();
    TextView line = trim(table.substr(start, end - start));
    if (line.ends_with(u'|')) line = trim(line.substr(0, line.size() - 1));
    if (!line.empty()) rows.push_back(split_text(line, u"|"));
    start = end + 1;
  }
  return rows;
}

// The leading number of an item that begins with one (after blanks: a sign,
// then a digit or "." and a digit); nothing for any other item.
std::optional<double> item_number(TextView item) {
  item = trim(item);
  std::size_t at = (!item.empty() && (item[0] == u'+' || item[0] == u'-')) ? 1 : 0;
  if (at < item.size() && item[at] == u'.') ++at;
  if (at >= item.size() || !is_digit(item[at])) return std::nullopt;
  std::optional<double> value = leading_value(item);
  if (value && !std::isfinite(*value)) value.reset();
  return value;
}

std::optional<std::vector<double>> numbers_of(const Row& row, std::size_t from = 0) {
  std::vector<double> numbers;
  for (std::size_t i = from; i < row.size(); ++i) {
    const std::optional<double> number = item_number(row[i]);
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  return numbers;
}

// Keys strictly increasing or strictly decreasing, at least one.
bool keys_in_order(const std::vector<double>& keys) {
  if (keys.empty()) return false;
  const bool rising = keys.size() < 2 || keys[1] > keys[0];
  for (std::size_t i = 1; i < keys.size(); ++i) {
    if (rising ? !(keys[i] > keys[i - 1]) : !(keys[i] < keys[i - 1])) return false;
  }
  return true;
}

// Where `x` lies among the keys: the index of the key at or before it and
// the fraction of the way to the next; nothing outside.
struct Place {
  std::size_t index = 0;
  double fraction = 0;
};

// The least and the greatest of keys in order.
std::pair<double, double> range_of(const std::vector<double>& keys) {
  return std::minmax(keys.front(), keys.back());
}

std::optional<Place> place_of(const std::vector<double>& keys, double x) {
  const auto [low, high] = range_of(keys);
  if (!(x >= low && x <= high)) return std::nullopt;
  const bool rising = keys.size() < 2 || keys[1] > keys[0];
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i] == x) return Place{i, 0};
    if (i + 1 < keys.size() && (rising ? x < keys[i + 1] : x > keys[i + 1])) {
      // Halved, so that keys at the ends of the range of double do not
      // overflow their difference.
      return Place{i, (x / 2 - keys[i] / 2) / (keys[i + 1] / 2 - keys[i] / 2)};
    }
  }
  return std::nullopt;
}

// The straight line from a to b at fraction f (0 <= f < 1), without forming
// b - a, which may overflow.
double between(double a, double b, double f) { return f == 0 ? a : a * (1 - f) + b * f; }

double along(const std::vector<double>& values, const Place& place) {
  if (place.fraction == 0) return values[place.index];
  return between(values[place.index], values[place.index + 1], place.fraction);
}

TableValue fault(TableFault kind) { return TableValue{0, kind}; }

// A point outside the keys of one coordinate.
TableValue outside(TableFault kind, const std::vector<double>& keys) {
  const auto [low, high] = range_of(keys);
  return TableValue{0, kind, low, high};
}

}  // namespace

TableValue interpolate(TextView table, double x) {
  const std::vector<Row> rows = table_rows(table);
  if (rows.size() != 2 || rows[0].size() != rows[1].size()) return fault(TableFault::kDamaged);
  const auto keys = numbers_of(rows[0]);
  const auto values = numbers_of(rows[1]);
  if (!keys || !values || !keys_in_order(*keys)) return fault(TableFault::kDamaged);
  const std::optional<Place> place = place_of(*keys, x);
  if (!place) return outside(TableFault::kOutsideRows, *keys);
  return TableValue{along(*values, *place)};
}

TableValue interpolate(TextView table, double x, double y) {
  const std::vector<Row> rows = table_rows(table);
  if (rows.size() < 2 || rows[0].size() < 2) return fault(TableFault::kDamaged);
  const auto column_keys = numbers_of(rows[0], 1);
  if (!column_keys || !keys_in_order(*column_keys)) return fault(TableFault::kDamaged);
  std::vector<double> row_keys;
  std::vector<std::vector<double>> values;
  for (std::size_t r = 1; r < rows.size(); ++r) {
    if (rows[r].size() != rows[0].size()) return fault(TableFault::kDamaged);
    const auto numbers = numbers_of(rows[r]);
    if (!numbers) return fault(TableFault::kDamaged);
    row_keys.push_back(numbers->front());
    values.emplace_back(numbers->begin() + 1, numbers->end());
  }
  if (!keys_in_order(row_keys)) return fault(TableFault::kDamaged);
  const std::optional<Place> row = place_of(row_keys, x);
  if (!row) return outside(TableFault::kOutsideRows, row_keys);
  const std::optional<Place> column = place_of(*column_keys, y);
  if (!column) return outside(TableFault::kOutsideColumns, *column_keys);
  const double first = along(values[row->index], *column);
  if (row->fraction == 0) return TableValue{first};
  const double second = along(values[row->index + 1], *column);
  return TableValue{between(first, second, row->fraction)};
}

int32_t error_number(TableFault fault) {
  switch (fault) {
    case TableFault::kNone:
      return 0;
    case TableFault::kDamaged:
      return error_id::kInternal;
    case TableFault::kOutsideRows:
    case TableFault::kOutsideColumns:
      return error_id::kOutsideTable;
  }
  return error_id::kInternal;
}

}  // namespace zelkora::frame
