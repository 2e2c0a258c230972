// Tests of the foundation data: the table readers and the records of the
// project data file.
#include "zelkora/datafile/foundation_data.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/headless/memory_files.h"

namespace zelkora {
namespace {

using platform::headless::MemoryListView;
using Rows = std::vector<std::vector<Text>>;
using Records = std::vector<std::pair<int32_t, Text>>;

// A headless platform over in-memory files, in a notation with a decimal
// comma and "." grouping, so that the numbers show which rules read them.
struct Memory {
  std::shared_ptr<platform::Platform> platform = platform::Platform::headless();
  std::shared_ptr<platform::headless::MemoryFileService> files =
      std::make_shared<platform::headless::MemoryFileService>();
  Memory() {
    platform->files = files;
    platform->locale = std::make_shared<platform::headless::FixedNumberLocale>(u",", u".");
  }
};

MemoryListView table(const Rows& rows, int32_t columns = 7) {
  MemoryListView view;
  view.columns = columns;
  for (const auto& row : rows) {
    const int32_t item = view.ListItemsAdd(row.at(0));
    for (std::size_t j = 1; j < row.size(); ++j)
      view.SubItem(item, static_cast<int32_t>(j), row[j]);
  }
  return view;
}

const Rows kLoads = {
    {u"恒载", u"永久", u"1.250,5", u"-12,5", u"0", u"3", u"-4"},
    {u" 活载 ", u"活", u"300", u"1E2", u"+2,5", u"0", u"0"},
    {u"地震X", u" 地震 ", u"0", u"80", u"0", u"25", u"0"},
    {u"", u"", u"", u"", u"", u"", u"  "},  // a new-row line: not a load case
};

// The first three cases of kLoads and wind cases up to `n`.
Rows with_cases(int n) {
  Rows rows(kLoads.begin(), kLoads.begin() + 3);
  for (int i = 3; i < n; ++i) {
    rows.push_back({u"L" + from_utf8(std::to_string(i)), u"风", u"0", u"0", u"0", u"0", u"0"});
  }
  return rows;
}

Array2<Text> cells_of(const Rows& rows) {
  Array2<Text> cells(static_cast<int32_t>(rows.size()) - 1, 6);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < 7; ++j)
      cells(static_cast<int32_t>(i), static_cast<int32_t>(j)) = rows[i][j];
  }
  return cells;
}

TEST(FoundationTables, ReadTheCasesTheFootingsAndAnyColumns) {
  Memory m;
  clsLoadSave ls(m.platform);
  const MemoryListView loads = table(kLoads);
  Array2<Text> cells;
  Array2<double> forces;
  std::vector<int16_t> kinds;
  ASSERT_TRUE(ls.ReadCellToArray_Gk_Nl_Text(loads, cells, forces, kinds));
  EXPECT_EQ(cells, cells_of({kLoads[0], kLoads[1], kLoads[2]}));
  EXPECT_EQ(forces.U1, 2);
  EXPECT_EQ(forces.Values,
            (std::vector<double>{1250.5, -12.5, 0, 3, -4, 300, 100, 2.5, 0, 0, 0, 80, 0, 25, 0}));
  EXPECT_EQ(kinds, (std::vector<int16_t>{1, 2, 4}));
  ASSERT_TRUE(ls.ReadCellToArray_Gk_Nl_Text(table(with_cases(50)), cells, forces, kinds));
  EXPECT_EQ(kinds.size(), 50u);

  const MemoryListView footings = table({{u"J-1", u"WDCNL.OUT"}, {u"Z3", u""}, {u"", u""}}, 2);
  std::vector<Text> numbers, files;
  ASSERT_TRUE(ls.ReadCellToArray_Gk_ZhuBh_Text(footings, numbers));
  ASSERT_TRUE(ls.ReadCellToArray_Gk_FileInfo_Text(footings, files));
  EXPECT_EQ(numbers, (std::vector<Text>{u"J-1", u"Z3"}));
  EXPECT_EQ(files, (std::vector<Text>{u"WDCNL.OUT", u""}));

  Array2<Text> some;
  ASSERT_TRUE(ls.ReadCellToArray_Com_Text(loads, 3, 4, some, 3));
  EXPECT_EQ(some.U1, 2);
  EXPECT_EQ(some(1, 0), u"1E2");
  EXPECT_EQ(ls.last_error(), 0);
  EXPECT_THROW(ls.ReadCellToArray_Com_Text(loads, 5, 7, some), Fault);
  EXPECT_THROW(ls.ReadCellToArray_Gk_FileInfo_Text(footings, files, 2), Fault);
}

// A refused table: the error, the cell, and every output as it was.
TEST(FoundationTables, RefuseTheFirstBadCell) {
  struct Case {
    const char* what;
    std::function<void(Rows&)> change;
    int32_t error, row, column;
    Text cell;
  };
  const auto set = [](std::size_t i, std::size_t j, Text text) {
    return [=](Rows& rows) { rows.at(i).at(j) = text; };
  };
  const Case cases[] = {
      {"no case", [](Rows& r) { r.clear(); }, 3601000, 0, 0, u""},
      {"51 cases", [](Rows& r) { r = with_cases(51); }, 3601001, 0, 0, u"51"},
      {"blank name amid cases", set(1, 0, u"  "), 3601002, 2, 1, u"  "},
      {"name twice, blanks aside", set(2, 0, u"恒载 "), 3601003, 3, 1, u"恒载 "},
      {"unknown kind", set(1, 1, u"雪"), 3601004, 2, 2, u"雪"},
      {"not a number", set(0, 3, u"1E"), 3601005, 1, 4, u"1E"},
      {"decimal point of another notation", set(2, 6, u"1,2,3"), 3601005, 3, 7, u"1,2,3"},
      {"empty force", set(1, 4, u""), 3601005, 2, 5, u""},
      {"beyond 3E14", set(1, 2, u"-3,1E14"), 3601006, 2, 3, u"-3,1E14"},
      {"first in row order",
       [](Rows& r) {
         r[0][6] = u"x";
         r[1][0] = u"";
       },
       3601005, 1, 7, u"x"},
      {"no permanent case", set(0, 1, u"可变"), 3601007, 0, 0, u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Memory m;
    clsLoadSave ls(m.platform);
    Rows rows = kLoads;
    c.change(rows);
    Array2<Text> cells(0, 0);
    Array2<double> forces(0, 0);
    std::vector<int16_t> kinds{9};
    EXPECT_FALSE(ls.ReadCellToArray_Gk_Nl_Text(table(rows), cells, forces, kinds));
    EXPECT_EQ(ls.last_error(), c.error);
    EXPECT_EQ(ls.error_row(), c.row);
    EXPECT_EQ(ls.error_column(), c.column);
    EXPECT_EQ(ls.error_cell(), c.cell);
    EXPECT_EQ(cells, Array2<Text>(0, 0));
    EXPECT_EQ(forces, Array2<double>(0, 0));
    EXPECT_EQ(kinds, std::vector<int16_t>{9});
    if (c.row > 0) {
      EXPECT_EQ(ls.error_place(), u"第 " + from_utf8(std::to_string(c.row)) + u" 行第 " +
                                      from_utf8(std::to_string(c.column)) + u" 列");
    }
  }

  const struct {
    Rows rows;
    int32_t error, row;
  } footing_cases[] = {
      {{}, 3601010, 0},
      {{{u"J-1", u"a"}, {u" ", u"b"}}, 3601011, 2},
      {{{u"J-1", u"a"}, {u"J-2", u""}, {u" J-1", u""}}, 3601012, 3},
  };
  for (const auto& c : footing_cases) {
    Memory m;
    clsLoadSave ls(m.platform);
    std::vector<Text> numbers{u"kept"};
    EXPECT_FALSE(ls.ReadCellToArray_Gk_ZhuBh_Text(table(c.rows, 2), numbers));
    EXPECT_EQ(ls.last_error(), c.error);
    EXPECT_EQ(ls.error_row(), c.row);
    EXPECT_EQ(numbers, std::vector<Text>{u"kept"});
  }
}

// ---- The project data file ---------------------------------------------------------

struct Foundation {
  std::vector<Text> numbers{u"J-1", u"Z3"};
  std::vector<Text> files{u"WDCNL.OUT", u""};
  std::vector<Array2<Text>> loads{cells_of({kLoads[0], kLoads[1], kLoads[2]}),
                                  cells_of({kLoads[1], kLoads[0]})};
};

// A program's file: its own records around the foundation data.
std::string save_project(Memory& m, const Foundation& f) {
  clsLoadSave ls(m.platform);
  EXPECT_TRUE(ls.OpenFileA(u"p.zks", u"OutPut"));
  ls.WriteFile_RevisionA();
  ls.WriteFile_100A(u"dB", 2.5);
  EXPECT_TRUE(ls.SaveDataFoundation(f.numbers, f.files, f.loads));
  ls.WriteFile_Array_Str_1A({u"C30"}, u"tCell");
  EXPECT_TRUE(ls.WriteFileEofAndCloseFileA());
  return m.files->bytes(u"p.zks").value_or("");
}

// The program's reading loop; false when a reader fails (error in *error).
bool load_project(Memory& m, Foundation& f, platform::ControlArray<platform::ListView>* views,
                  int32_t* error = nullptr) {
  clsLoadSave ls(m.platform);
  if (!ls.OpenFileA(u"p.zks", u"InPut")) return false;
  UseBinRecord rec;
  int32_t count = 0;
  bool ok = true;
  while (ok && ls.ReadFileOneA(rec) && !(rec.ID == 0 && rec.Member == u"EOF")) {
    if (ls.bReadMsgError(count, 1000)) ok = false;
    if (ok && rec.ID == 100 && rec.Member == u"Gk_ZhuBh") {
      ok = ls.bLoadDataFoundation(f.numbers, f.files, f.loads, rec, views);
    }
  }
  if (error) *error = ls.last_error();
  ls.CloseFileA();
  return ok && rec.Member == u"EOF";
}

TEST(FoundationFile, RoundTripsByteForByteInsideAProject) {
  Memory m;
  const Foundation saved;
  const std::string first = save_project(m, saved);
  MemoryListView view0, view1;
  view0.columns = view1.columns = 7;
  platform::ControlArray<platform::ListView> views;
  views.set(0, &view0);
  views.set(1, &view1);
  Foundation loaded{{}, {}, {}};
  ASSERT_TRUE(load_project(m, loaded, &views));
  EXPECT_EQ(loaded.numbers, saved.numbers);
  EXPECT_EQ(loaded.files, saved.files);
  EXPECT_EQ(loaded.loads, saved.loads);
  ASSERT_EQ(view1.ListItemsCount(), 2);  // the shorter footing: no padding rows
  EXPECT_EQ(view1.ItemText(2), u"恒载");
  EXPECT_EQ(view1.SubItem(1, 2), u"300");

  // The tables read back give the same data, and saving again the same bytes.
  clsLoadSave ls(m.platform);
  Array2<double> forces;
  std::vector<int16_t> kinds;
  Foundation again = loaded;
  ASSERT_TRUE(ls.ReadCellToArray_Gk_Nl_Text(view0, again.loads[0], forces, kinds));
  EXPECT_EQ(again.loads, saved.loads);
  EXPECT_EQ(save_project(m, again), first);
}

TEST(FoundationFile, DamagedDataLeavesTheFormUntouched) {
  Memory m;
  const std::string good = save_project(m, Foundation{});
  Records saved;  // the good file's records, changed one way or another
  {
    clsLoadSave ls(m.platform);
    ls.OpenFileA(u"p.zks", u"InPut");
    for (UseBinRecord rec; ls.ReadFileOneA(rec);) saved.emplace_back(rec.ID, rec.Member);
  }
  const std::size_t zhubh = 3, files = zhubh + 4, nl = files + 4, cell = nl + 4;
  ASSERT_EQ(saved[zhubh].second, u"Gk_ZhuBh");
  ASSERT_EQ(saved[nl].second, u"Gk_Nl");
  const auto set = [](std::size_t i, Text text) { return [=](Records& r) { r[i].second = text; }; };
  const struct {
    const char* what;
    std::function<void(Records&)> change;
  } cases[] = {
      {"a count beyond the records left", set(zhubh + 1, u"100000")},
      {"more footings than numbers", set(nl + 1, u"2")},
      {"five cells a case", set(nl + 3, u"5")},
      {"a force that is no number", set(cell + 2, u"N")},
      {"an unknown kind", set(cell + 1, u"雪")},
      {"a footing number twice", set(zhubh + 3, u"J-1")},
      {"the files' group missing", [&](Records& r) { r.erase(r.begin() + files, r.begin() + nl); }},
      {"the groups out of order", [&](Records& r) { std::swap(r[files], r[nl]); }},
      {"a blank row before a case",
       [&](Records& r) {
         for (std::size_t j = 0; j < 7; ++j) r[cell + 21 + j].second.clear();
       }},
  };
  const auto untouched = [&](const std::string& bytes) {
    m.files->put(u"p.zks", bytes);
    MemoryListView view = table({{u"kept"}});
    platform::ControlArray<platform::ListView> views;
    views.set(0, &view);
    Foundation f{{u"kept"}, {u"kept"}, {}};
    int32_t error = 0;
    EXPECT_FALSE(load_project(m, f, &views, &error));
    EXPECT_EQ(error, 2001);
    EXPECT_EQ(f.numbers, std::vector<Text>{u"kept"});
    EXPECT_EQ(f.files, std::vector<Text>{u"kept"});
    EXPECT_TRUE(f.loads.empty());
    EXPECT_EQ(view.ListItemsCount(), 1);
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Records records = saved;
    c.change(records);
    std::string bytes;
    for (const auto& [id, member] : records) datafile::append_record(bytes, id, member);
    untouched(bytes);
  }
  // The file cut anywhere inside the foundation's records (the rest is 36 bytes).
  std::string before;
  for (std::size_t i = 0; i < zhubh; ++i)
    datafile::append_record(before, saved[i].first, saved[i].second);
  for (std::size_t cut = before.size() + 1; cut < good.size() - 36; cut += 5) {
    SCOPED_TRACE(cut);
    untouched(good.substr(0, cut));
  }
}

// Data that would not load again: a bad number, and two names that code page
// 936 gives back as one ("?").
TEST(FoundationFile, RefusesToSaveDataTheReadersWouldRefuse) {
  for (const auto& [cell, name] : {std::pair<Text, Text>{u"abc", u"活载"}, {u"0", u"\U0001F600"}}) {
    Memory m;
    m.files->put(u"p.zks", "old");
    Foundation f;
    f.loads[1](0, 3) = cell;
    f.loads[1](0, 0) = u"\U0001F601";
    f.loads[1](1, 0) = name;
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(u"p.zks", u"OutPut"));
    EXPECT_FALSE(ls.SaveDataFoundation(f.numbers, f.files, f.loads));
    EXPECT_EQ(ls.last_error(), 2003);
    EXPECT_FALSE(ls.WriteFileEofAndCloseFileA());
    EXPECT_EQ(m.files->bytes(u"p.zks").value_or(""), "old");
  }
}

}  // namespace
}  // namespace zelkora
