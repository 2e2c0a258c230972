// The load-case table of a foundation program's form; see the header.
#include "program/load_cases.h"

#include <algorithm>

namespace zelkora::desk {

const std::array<TextView, kCaseColumns>& case_captions() {
  static const std::array<TextView, kCaseColumns> kCaptions = {
      u"工况名称", u"类别", u"N (kN)", u"Mx (kN·m)", u"My (kN·m)", u"Vx (kN)", u"Vy (kN)"};
  return kCaptions;
}

CaseRows case_rows(const platform::ListView& table) {
  CaseRows rows;
  const int32_t count = table.ListItemsCount();
  rows.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (int32_t item = 1; item <= count; ++item) {
    std::vector<Text> row(kCaseColumns);
    row[0] = table.ItemText(item);
    for (int32_t sub = 1; sub < kCaseColumns; ++sub)
      row[static_cast<std::size_t>(sub)] = table.SubItem(item, sub);
    rows.push_back(std::move(row));
  }
  return rows;
}

void set_case_rows(platform::ListView& table, const CaseRows& rows) {
  table.ListItemsClear();
  for (const std::vector<Text>& row : rows) {
    const int32_t item = table.ListItemsAdd(row.empty() ? TextView() : TextView(row[0]));
    const auto cells = std::min<std::size_t>(row.size(), kCaseColumns);
    for (std::size_t sub = 1; sub < cells; ++sub) {
      table.SubItem(item, static_cast<int32_t>(sub), row[sub]);
    }
  }
}

std::vector<Text> new_case_row(const CaseRows& rows) {
  int number = 1;
  const auto taken = [&](const Text& name) {
    return std::any_of(rows.begin(), rows.end(), [&](const std::vector<Text>& row) {
      return !row.empty() && row[0] == name;
    });
  };
  Text name;
  do {
    name = u"工况" + from_utf8(std::to_string(number++));
  } while (taken(name));
  return {name, rows.empty() ? u"永久" : u"可变", u"0", u"0", u"0", u"0", u"0"};
}

CaseRows default_case_rows() {
  return {{u"恒载", u"永久", u"1000", u"0", u"0", u"0", u"0"},
          {u"活载", u"可变", u"300", u"0", u"0", u"0", u"0"}};
}

}  // namespace zelkora::desk
