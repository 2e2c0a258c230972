// The cell editing cycle on the headless grid: the group rule, bold marks,
// ignored changes, hidden marks, keys, default values, the leave check and
// the grid's values in a data file.
#include <gtest/gtest.h>
#include "zelkora/checking/err_chr_internals.h"
#include "zelkora/grid/grid_cell_internals.h"

#include <algorithm>
#include <functional>
#include <memory>

#include "zelkora/grid/grid_test_support.h"
#include "zelkora/grid/row_filter.h"
#include "zelkora/platform/headless/memory_files.h"

namespace zelkora::grid {
namespace {

using namespace test_support;

constexpr int32_t kRowSeismic = 3;  // [9] 抗震等级, event row

TEST(GridEditing, GroupValuesSplitIntoMembersAndJoinBack) {
  const struct {
    int32_t row;
    bool open_group;
    const char16_t* typed;
    bool cancel;
    const char16_t* group;       // the group's cell
    const char16_t* group_item;  // its item's current text
    const char16_t* count;
    const char16_t* diameter;
    bool filter_shows_it = false;
  } cases[] = {
      {kRowBars, false, u"2,16", false, u"2, 16", u"2, 16", u"2", u"16"},
      {kRowBars, false, u" 3 , 20 ", false, u"3, 20", u"3, 20", u"3", u"20"},
      {kRowBars, false, u"3", false, u"3", u"3", u"3", u""},
      // Refused: the cell and the item get the entered text back.
      {kRowBars, false, u"2,16,3", true, u"2, 16", u"2, 16", u"2", u"16"},
      {kRowCount, true, u" 4", false, u"4, 16", u"4, 16", u" 4", u"16"},
      // A member row of a folded group is not processed when it is left...
      {kRowCount, false, u"4", false, u"2, 16", u"2, 16", u"4", u"16"},
      // ... unless a filter shows it: then the user sees and edits it.
      {kRowCount, false, u"4", false, u"4, 16", u"4, 16", u"4", u"16", true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.typed));
    TestForm f;
    clsGridCell& cell = f.build();
    if (c.open_group) cell.ExpandGroupMembers(kRowBars, true);
    if (c.filter_shows_it) {
      std::vector<bool> kept(kBeamSteelRows + 1, false);
      kept[kRowRebar] = kept[kRowBars] = kept[kRowCount] = true;
      show_kept_rows(cell, kept);
    }
    EXPECT_EQ(f.enter_type_leave(c.row, c.typed), c.cancel);
    EXPECT_EQ(f.value(kRowBars), c.group);
    EXPECT_EQ(cell.tGetText(15), c.group_item);
    EXPECT_EQ(f.value(kRowCount), c.count);
    EXPECT_EQ(cell.tGetText(16), c.count);
    EXPECT_EQ(cell.tGetText(17), c.diameter);
    EXPECT_EQ(f.value(kRowDiameter), c.diameter);
    ASSERT_EQ(f.messages->shown.size(), c.cancel ? 1u : 0u);
    if (c.cancel) {
      EXPECT_EQ(clsGridCell::Internals::errors(cell).lError_ID(), 200);
      EXPECT_EQ(clsErrChr::Internals::caption1(clsGridCell::Internals::errors(cell)),
                u"通长纵向钢筋");
      EXPECT_EQ(clsErrChr::Internals::value1(clsGridCell::Internals::errors(cell)), u"2,16,3");
      EXPECT_NE(f.messages->shown[0].text.find(u"2,16,3"), Text::npos);
      EXPECT_FALSE(f.leave());  // what the cell shows is what is checked
      EXPECT_EQ(f.messages->shown.size(), 1u);
    }
  }
}

TEST(GridEditing, BoldMarksValuesThatDifferFromTheirDefault) {
  TestForm f;
  f.build();
  const struct {
    int32_t row;
    const char16_t* typed;
    bool bold;
  } steps[] = {
      {kRowWidth, u"300", true},    {kRowWidth, u" 250 ", false}, {kRowGrade, u"hrb400", false},
      {kRowGrade, u"HRB335", true}, {kRowBars, u"3,20", true},    {kRowBars, u"2,16", false},
  };
  for (const auto& s : steps) {
    EXPECT_FALSE(f.enter_type_leave(s.row, s.typed));
    EXPECT_EQ(f.bold(s.row), s.bold) << to_utf8(s.typed);
  }
  // Only the edited row is marked: the members the group rule rewrote keep
  // their marks, and leaving a row that was not edited changes none.
  f.enter_type_leave(kRowBars, u"2,20");
  EXPECT_TRUE(f.bold(kRowBars));
  EXPECT_FALSE(f.bold(kRowDiameter));
  f.enter_type_leave(kRowWidth, u"300");
  std::vector<Text> texts;
  f.cell->GetCurrentText(texts);
  texts[15] = u"2, 16";
  f.cell->LetCurrentText(texts);
  f.enter(kRowBars);
  EXPECT_FALSE(f.leave());
  EXPECT_EQ(f.value(kRowDiameter), u"16");
  EXPECT_TRUE(f.bold(kRowBars));
}

TEST(GridEditing, ChangesOutsideAnItemsValueCellAreIgnored) {
  const struct {
    int32_t row, col;
  } cases[] = {{kRowWidth, 2}, {kRowWidth, 1}, {kRowSizes, 3}, {kRowRebar, 2}};
  for (const auto& c : cases) {
    TestForm f;
    clsGridCell& cell = f.build();
    std::vector<Text> before, after;
    cell.GetCurrentText(before);
    f.enter(c.row, c.col);
    f.type(u"999");
    EXPECT_FALSE(f.leave());
    cell.GetCurrentText(after);
    EXPECT_EQ(after, before) << c.row << "," << c.col;
    for (int32_t r = 1; r <= kBeamSteelRows; ++r) EXPECT_FALSE(f.bold(r)) << r;
  }
}

TEST(GridEditing, HiddenItemsTakeTheirHeadingAlongWhenAllAreHidden) {
  TestForm f;
  clsGridCell& cell = f.build();
  std::vector<bool> hidden(26, false);
  hidden[4] = hidden[5] = true;  // two of the three rows under 内力设计值
  cell.LetTextInvalid(hidden);
  cell.ControlEnable();
  EXPECT_TRUE(f.shown(kRowForces));
  EXPECT_FALSE(f.shown(13) || f.shown(14));
  EXPECT_TRUE(f.shown(kRowTorsion));

  // The form hides the torsion row when the member is not seismic; the event
  // row 抗震等级 asks it, the plain row b does not.
  f.form.on_control_enable = [](const std::vector<Text>& texts, std::vector<bool>& marks) {
    marks[19] = texts[9] == u"非抗震";
  };
  f.form.calls.clear();
  f.enter_type_leave(kRowWidth, u"300");
  EXPECT_TRUE(f.form.calls.empty());
  f.enter_type_leave(kRowSeismic, u"非抗震");
  EXPECT_EQ(f.form.call_names(), (std::vector<std::string>{"Let_Text", "ControlEnable(hidden)"}));
  EXPECT_EQ(f.form.calls[0].texts[9], u"非抗震");
  EXPECT_FALSE(f.shown(kRowTorsion));
  EXPECT_FALSE(f.shown(kRowForces));  // nothing under it applies
  EXPECT_TRUE(f.shown(kRowOptions));  // folded, but its items apply
  EXPECT_FALSE(f.shown(kRowOptions + 1));

  f.form.calls.clear();
  bool cancel = false;
  f.enter(kRowSeismic);
  f.type(u"二级");
  cell.GridCell_LeaveCellB(kRowSeismic, 3, cancel);
  EXPECT_EQ(f.form.call_names(), std::vector<std::string>{"ControlEnable(texts, hidden)"});
  EXPECT_TRUE(f.shown(kRowForces) && f.shown(kRowTorsion));
}

TEST(GridEditing, EnterOnTheLowestShownRowSendsTheFocusToRowZero) {
  const struct {
    int32_t bottom_row;  // -1: every row in view
    int32_t row, col;
    bool to_row_zero;
  } cases[] = {
      {-1, kRowOptions, 3, true},  // the rows below the folded heading do not count
      {-1, kRowOptions, 2, true}, {-1, kRowRatio, 3, false},
      {10, 10, 3, true},          {10, kRowOptions, 3, false},
  };
  for (const auto& c : cases) {
    TestForm f;
    clsGridCell& cell = f.build();
    f.grid.bottom_row = c.bottom_row;
    f.grid.ActiveCell(c.row, c.col);
    int16_t enter = 13;
    cell.GridCell_KeyDown(enter, 0);
    const std::string focus = "SetFocus 0 " + std::to_string(c.col);
    EXPECT_EQ(std::count(f.grid.calls.begin(), f.grid.calls.end(), focus), c.to_row_zero ? 1 : 0)
        << c.row;
  }
}

TEST(GridEditing, LoadingDefaultsAsksAndCancelChangesNothing) {
  TestForm f;
  clsGridCell& cell = f.build();
  f.enter_type_leave(kRowWidth, u"300");
  f.enter_type_leave(kRowBars, u"3,20");
  f.messages->answer = platform::MessageBox::kCancel;
  cell.LoadDefaultEnter(true);
  EXPECT_EQ(f.messages->asked.size(), 1u);
  EXPECT_EQ(cell.tGetText(10), u"300");
  EXPECT_TRUE(f.bold(kRowWidth) && f.bold(kRowBars));

  f.messages->answer = platform::MessageBox::kYes;
  cell.LoadDefaultEnter(true);
  EXPECT_EQ(f.messages->asked.size(), 2u);
  EXPECT_EQ(cell.tGetText(10), u"250");
  EXPECT_EQ(f.value(kRowWidth), u"250");
  EXPECT_EQ(f.value(kRowCount), u"2");
  for (int32_t r = 1; r <= kBeamSteelRows; ++r) EXPECT_FALSE(f.bold(r)) << r;
}

TEST(GridEditing, LeaveCheckAppliesTheRowsCheckExpression) {
  const struct {
    int32_t row;
    const char16_t* typed;
    bool cancel;
    const char16_t* after;
  } cases[] = {
      {kRowWidth, u"-5", true, u"250"},
      {kRowWidth, u"300", false, u"300"},
      {kRowLegs, u"1", true, u"2"},
      {kRowLegs, u"4", false, u"4"},
      {kRowGrade, u"HRB999", true, u"HRB400"},
      {kRowBars, u"2,16,3", true, u"2, 16"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.typed));
    TestForm f;
    clsGridCell& cell = f.build();
    f.enter(c.row);
    f.type(c.typed);
    EXPECT_EQ(cell.bLeaveCellCanCelA(), c.cancel);
    EXPECT_EQ(f.value(c.row), c.after);
    EXPECT_EQ(cell.tGetText(cell.lGetIndexByRow(c.row)), c.after);
    EXPECT_EQ(f.messages->shown.size(), c.cancel ? 1u : 0u);
    EXPECT_FALSE(cell.bLeaveCellCanCelA());  // the restored value passes
  }
}

TEST(GridEditing, ListsFillOnDropDownAndAPickAppliesTheGroupRule) {
  TestForm f;
  clsGridCell& cell = f.build();
  cell.ExpandGroupMembers(kRowBars, true);
  f.grid.ActiveCell(kRowBars, 3);
  cell.GridCell_ComboDropDown();
  EXPECT_EQ(f.grid.ComboList(kRowBars, 3),
            clsGridCell::Internals::character(cell).ComboBoxList(5752));
  f.grid.Text(kRowBars, 3, u"3, 20");
  cell.GridCell_ComboClickA();
  EXPECT_EQ(f.value(kRowCount), u"3");
  EXPECT_EQ(f.value(kRowDiameter), u"20");
  EXPECT_TRUE(f.bold(kRowBars));
  EXPECT_FALSE(f.bold(kRowDiameter));  // rewritten, not picked

  f.grid.ActiveCell(kRowDiameter, 3);
  f.grid.Text(kRowDiameter, 3, u"16");
  cell.GridCell_ComboClick();
  EXPECT_EQ(cell.tGetText(15), u"3, 16");
  EXPECT_EQ(f.value(kRowBars), u"3, 16");
}

TEST(GridEditing, ValuesRoundTripThroughADataFile) {
  TestForm saved;
  clsGridCell& a = saved.build();
  saved.enter_type_leave(kRowWidth, u"300");
  saved.enter_type_leave(kRowBars, u"3,20");
  saved.enter_type_leave(kRowName, u"某办公楼");
  a.bDisplayTuLi(true);
  Text add = u"附加数据";
  ASSERT_TRUE(a.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add));
  std::vector<Text> values;
  a.GetCurrentText(values);

  const struct {
    const char16_t* mode;
    const char16_t* file;
    const char16_t* pro1;
    const char16_t* pro2;
    bool loads;
  } cases[] = {
      {u"Load", u"beam.zks", u"clsBeamSteel", u"", true},
      {u"input", u"beam.zks", u"", u"", true},  // no program check
      {u"Default", u"beam.zks", u"clsBeamSteel2", u"clsBeamSteel", true},
      {u"Load", u"beam.zks", u"clsFoundationSpread", u"", false},
      {u"Load", u"none.zks", u"", u"", false},
      {u"Open", u"beam.zks", u"", u"", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.pro1));
    TestForm f;
    f.platform->files = saved.platform->files;
    clsGridCell& b = f.build();
    std::vector<Text> defaults;
    b.GetCurrentText(defaults);
    Text got = u"-";
    EXPECT_EQ(b.bLoadOrSaveData(c.mode, c.file, c.pro1, c.pro2, got), c.loads);
    std::vector<Text> now;
    b.GetCurrentText(now);
    EXPECT_EQ(now, c.loads ? values : defaults);
    EXPECT_EQ(got, c.loads ? add : Text(u"-"));
    EXPECT_EQ(b.bDisplayTuLi(), c.loads);
    EXPECT_EQ(f.value(kRowWidth), c.loads ? u"300" : u"250");
    EXPECT_EQ(f.bold(kRowWidth), c.loads);
    EXPECT_EQ(f.value(kRowDiameter), c.loads ? u"20" : u"16");
    EXPECT_EQ(f.bold(kRowCount), c.loads);
  }
}

// A form's own group travels with the values; a group its reader calls
// damaged, or a save of it that fails, leaves the form and the file alone.
TEST(GridEditing, FormGroupsTravelWithTheValues) {
  TestForm saved;
  clsGridCell& a = saved.build();
  saved.enter_type_leave(kRowWidth, u"300");
  a.form_groups({[](clsLoadSave& ls) {
                   return ls.WriteFile_Array_Str_1A({u"恒载", u"活载"}, u"Cases");
                 },
                 nullptr});
  Text add;
  ASSERT_TRUE(a.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add));
  const struct {
    const char* name;
    bool reader_accepts;
    bool loads;
  } cases[] = {{"read", true, true}, {"damaged", false, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TestForm f;
    f.platform->files = saved.platform->files;
    clsGridCell& b = f.build();
    std::vector<Text> read;
    b.form_groups({nullptr, [&](clsLoadSave& ls, UseBinRecord& record) {
                     if (record.Member != u"Cases") return true;
                     return ls.ReadFile_Array_Str_1W(read) && c.reader_accepts;
                   }});
    EXPECT_EQ(b.bLoadOrSaveData(u"Load", u"beam.zks", u"clsBeamSteel", {}, add), c.loads);
    EXPECT_EQ(read, (std::vector<Text>{u"恒载", u"活载"}));
    EXPECT_EQ(f.value(kRowWidth), c.loads ? u"300" : u"250");
  }
  a.form_groups({[](clsLoadSave&) { return false; }, nullptr});
  saved.enter_type_leave(kRowWidth, u"400");
  EXPECT_FALSE(a.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add));
  TestForm f;
  f.platform->files = saved.platform->files;
  clsGridCell& b = f.build();
  ASSERT_TRUE(b.bLoadOrSaveData(u"Load", u"beam.zks", u"clsBeamSteel", {}, add));
  EXPECT_EQ(f.value(kRowWidth), u"300");
}

// Every way the save of a form can fail (the N-th write for every N, the
// commit, the open) leaves the previous file byte for byte, with 2003.
TEST(GridEditing, FailedSavesLeaveThePreviousFile) {
  TestForm f;
  auto files = std::make_shared<platform::headless::MemoryFileService>();
  f.platform->files = files;
  clsGridCell& cell = f.build();
  Text add;
  ASSERT_TRUE(cell.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add));
  const std::optional<std::string> previous = files->bytes(u"beam.zks");
  f.enter_type_leave(kRowWidth, u"300");
  const int before = files->write_count();
  ASSERT_TRUE(cell.bLoadOrSaveData(u"Save", u"probe.zks", u"clsBeamSteel", {}, add));
  const int writes = files->write_count() - before;
  ASSERT_GT(writes, 1);
  std::vector<std::function<void()>> failures;
  for (int n = 1; n <= writes; ++n) failures.emplace_back([&files, n] { files->fail_write_at(n); });
  failures.emplace_back([&files] { files->fail_commit(true); });
  failures.emplace_back([&files] { files->fail_open(true); });
  for (std::size_t i = 0; i < failures.size(); ++i) {
    failures[i]();
    EXPECT_FALSE(cell.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add)) << i;
    EXPECT_EQ(clsGridCell::Internals::load_save(cell).last_error(), 2003) << i;
    EXPECT_EQ(files->bytes(u"beam.zks"), previous) << i;
    files->fail_write_at(0);
    files->fail_commit(false);
    files->fail_open(false);
  }
  ASSERT_TRUE(cell.bLoadOrSaveData(u"Save", u"beam.zks", u"clsBeamSteel", {}, add));
  EXPECT_NE(files->bytes(u"beam.zks"), previous);
}

}  // namespace
}  // namespace zelkora::grid
