// Building the property grid: appearance, collapsed layout states, the title
// box, the row/item mapping and the placement on resize.
#include <gtest/gtest.h>
#include "zelkora/grid/grid_cell_internals.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "zelkora/grid/grid_test_support.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::grid {
namespace {

using namespace test_support;

TEST(GridBuild, SetsUpTheGridFromTheLayout) {
  TestForm f;
  f.build();
  const auto& g = f.grid;
  EXPECT_EQ(f.form.call_names().front(), "LabelColWidth");
  EXPECT_EQ(g.Rows(), kBeamSteelRows + 1);
  EXPECT_EQ(g.Cols(), 4);
  EXPECT_EQ(g.RowHeight(0), 0);
  EXPECT_EQ(g.ColWidth(0), 0);
  EXPECT_EQ(g.ColWidth(2), 150 + 15);
  EXPECT_EQ(g.default_font_name, u"宋体");
  EXPECT_EQ(g.cell_border_color_fixed, platform::rgb(80, 80, 80));
  ASSERT_GE(g.calls.size(), 2u);
  EXPECT_EQ(g.calls.front(), "AutoRedraw=0");
  EXPECT_EQ(g.calls.back(), "Refresh");

  // Headings merged, bold and locked; member captions two blanks in; the
  // value cell's type from the descriptor.
  const struct {
    int32_t row;
    const char16_t* caption;
    bool heading;
    int16_t cell_type;
  } rows[] = {
      {kRowBasics, u"基本信息", true, 0},    {kRowWidth, u"梁的截面宽度 b", false, 1},
      {kRowBars, u"通长纵向钢筋", false, 1}, {kRowCount, u"  根数 n", false, 1},
      {kRowDiameter, u"  直径 d", false, 1}, {kRowName, u"工程名称", false, 0},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.row);
    EXPECT_EQ(g.Text(r.row, 2), r.caption);
    EXPECT_EQ(g.merged(r.row), r.heading ? std::make_pair(1, 3) : std::make_pair(0, -1));
    EXPECT_EQ(g.Locked(r.row), r.heading);
    EXPECT_EQ(g.FontBold(r.row, 2), r.heading);
    if (!r.heading) {
      EXPECT_EQ(g.CellType(r.row, 3), r.cell_type);
    }
  }
}

TEST(GridBuild, SavedRowHeightIsUsedAsItStands) {
  const struct {
    const char16_t* saved;  // "cboOpt11", or none
    int32_t height;
  } cases[] = {{nullptr, 19}, {u"5", 5}, {u"50", 50}};
  for (const auto& c : cases) {
    TestForm f;
    if (c.saved) {
      f.platform->settings = std::make_shared<platform::headless::MemorySettingsStore>(
          Text(u"[Zelkora 结构快速设计/Options]\ncboOpt11=") + c.saved + u"\n");
    }
    f.build();
    EXPECT_EQ(clsGridCell::Internals::row_height(*f.cell), c.height);
    EXPECT_EQ(f.grid.DefaultRowHeight(), c.height);
    EXPECT_EQ(f.grid.RowHeight(kRowWidth), c.height);
    EXPECT_EQ(f.grid.RowHeight(kRowOptions + 1), 0);
  }
}

// The rows shown (height above 0) between two rows, and the picture keys.
std::vector<int32_t> shown_rows(const TestForm& f, int32_t first, int32_t last) {
  std::vector<int32_t> rows;
  for (int32_t r = first; r <= last; ++r) {
    if (f.shown(r)) rows.push_back(r);
  }
  return rows;
}

TEST(GridBuild, HeadingsAndGroupsKeepTheirLayoutStates) {
  TestForm f;
  f.build();
  clsGridCell& cell = *f.cell;
  const auto key = [&](int32_t row) { return to_utf8(f.grid.ImageKey(row, 1)); };
  // The layout folds "选项" (negative id) and both groups.
  EXPECT_EQ(key(kRowRebar), "-");
  EXPECT_EQ(key(kRowOptions), "+");
  EXPECT_EQ(shown_rows(f, kRowOptions, kBeamSteelRows), std::vector<int32_t>{kRowOptions});
  EXPECT_EQ(key(kRowBars), "+");
  EXPECT_EQ(key(kRowRange), "+");
  EXPECT_EQ(shown_rows(f, kRowRebar, kRowOptions - 1),
            (std::vector<int32_t>{16, kRowBars, kRowRange, 23, 24, 25}));

  // Space on the group's caption opens it; in its value column it does not.
  int16_t space = 32;
  f.grid.ActiveCell(kRowBars, 3);
  cell.GridCell_KeyDown(space, 0);
  EXPECT_FALSE(f.shown(kRowCount));
  f.grid.ActiveCell(kRowBars, 2);
  cell.GridCell_KeyDown(space, 0);
  EXPECT_EQ(key(kRowBars), "-");
  EXPECT_TRUE(f.shown(kRowCount) && f.shown(kRowDiameter));

  // A hidden item stays hidden when its heading opens; the opened group is
  // back in its layout state.
  std::vector<bool> hidden(26, false);
  hidden[22] = true;  // kRowLegs
  cell.LetTextInvalid(hidden);
  f.grid.ActiveCell(kRowRebar, 1);
  cell.GridCell_Click();
  EXPECT_EQ(key(kRowRebar), "+");
  EXPECT_TRUE(shown_rows(f, kRowRebar + 1, kRowOptions - 1).empty());
  cell.GridCell_Click();
  EXPECT_EQ(key(kRowBars), "+");
  EXPECT_EQ(shown_rows(f, kRowRebar, kRowOptions - 1),
            (std::vector<int32_t>{16, kRowBars, kRowRange, 24, 25}));

  // A click on "选项" opens it; its rows all show.
  cell.GridCell_ClickA(kRowOptions, 1);
  EXPECT_EQ(shown_rows(f, kRowOptions, kBeamSteelRows),
            (std::vector<int32_t>{26, 27, 28, 29, 30, 31}));
  EXPECT_THROW(cell.ExpandHeadingGroup(kBeamSteelRows + 1, true), Fault);
}

TEST(GridBuild, FormsOwnRowsStartFoldedUnderANegativeHeading) {
  TestForm f;
  clsGridCell& cell = f.make();
  // A row above any heading, a folded heading with a group of two members,
  // then an open heading.
  const std::vector<Text> rows = {u"",
                                  u"100|1000|0|1008| |0|0",
                                  u"-10|1346|1|||0|-1",
                                  u"100|1002|1|9000||0|1",
                                  u"110|1370|1|5752|_2, 16|0|2",
                                  u"1100|1372|1|5754|_2|I>=1|3",
                                  u"1100|1374|1|5753|_16|1|4",
                                  u"10|1348|1|||0|-1",
                                  u"100|1382|1|1050|-1|1|5"};
  cell.LetGridCellText(rows, std::vector<bool>(rows.size(), false), 8, 5);
  cell.GridCell_InitializeA(&f.grid, &f.title, &f.panel, &f.form);
  EXPECT_EQ(f.grid.ImageKey(2, 1), u"+");
  EXPECT_EQ(f.grid.ImageKey(4, 1), u"-");  // the group's own state: open
  EXPECT_EQ(shown_rows(f, 1, 8), (std::vector<int32_t>{1, 2, 7, 8}));
  cell.ExpandHeadingGroup(2, true);
  EXPECT_EQ(shown_rows(f, 1, 8), (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(f.grid.Text(5, 2), u"  根数 n");
}

TEST(GridBuild, TitleBoxShowsTheCaptionInBoldAndItsHelp) {
  // Captions of a form of our own: one "name symbol" and one single word,
  // both without an explanation at the next id.
  zelkora::test_support::ScratchFolder dir("zk-grid");
  dir.put("catalogue/title.tsv", "1990\t弯矩值 Mk\n1992\t配筋率\n");
  TestForm f;
  f.platform->resources = platform::standard_resources(dir.path());
  clsGridCell& cell = f.make();
  const std::vector<Text> rows = {u"", u"10|1346|1|||0|-1", u"100|1372|1|5754|_2|I>=1|0",
                                  u"100|1990|0|1008|_0|S|1", u"100|1992|0|1008|_0|S|2"};
  cell.LetGridCellText(rows, std::vector<bool>(rows.size(), false), 4, 2);
  cell.GridCell_InitializeA(&f.grid, &f.title, &f.panel, &f.form);

  const struct {
    int32_t row;
    std::vector<Text> lines;
  } cases[] = {
      {1, {u"*基本信息*", u"基本信息——构件的编号与材料。"}},
      {2, {u"*根数 n*", u"n——通长纵筋的根数。"}},
      {3, {u"*弯矩值 Mk*", u"Mk——弯矩值。"}},
      {4, {u"*配筋率*", u"。"}},
  };
  for (const auto& c : cases) {
    f.enter(c.row);
    EXPECT_EQ(f.title.render_lines(), c.lines) << c.row;
    EXPECT_EQ(f.title.ToolTipText(), c.lines[1]);
    EXPECT_EQ(f.title.SelStart(), 0);
    EXPECT_EQ(f.title.formats().back().colour, platform::rgb(0, 0, 0));  // system colour 18
  }
  const Text rtf = f.title.TextRTF();
  EXPECT_NE(rtf.find(u"\\b "), Text::npos);
  EXPECT_EQ(rtf.find(u"_bb("), Text::npos);
}

TEST(GridBuild, RowsAndItemsMapToEachOther) {
  TestForm f;
  clsGridCell& cell = f.build();
  const struct {
    int32_t item;
    int32_t row;
    const char16_t* caption;
    const char16_t* text;
  } cases[] = {
      {0, kRowName, u"工程名称", u""},
      {10, kRowWidth, u"梁的截面宽度 b", u"250"},
      {15, kRowBars, u"通长纵向钢筋", u"2, 16"},
      {16, kRowCount, u"根数 n", u"2"},
      {99, 0, u"", nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.item);
    EXPECT_EQ(cell.lGetRowByIndex(c.item), c.row);
    EXPECT_EQ(cell.tGetCaption(c.item), c.caption);
    if (c.row > 0) {
      EXPECT_EQ(cell.lGetIndexByRow(c.row), c.item);
    }
    if (c.text) {
      EXPECT_EQ(cell.tGetText(c.item), c.text);
    } else {
      EXPECT_THROW(cell.tGetText(c.item), Fault);
    }
  }
  EXPECT_EQ(cell.lGetIndexByRow(kRowRebar), -1);
  EXPECT_THROW(cell.lGetIndexByRow(0), Fault);

  // CellText writes the cell only; LetCurrentText the items only.
  cell.CellText(10, u"300");
  EXPECT_EQ(f.value(kRowWidth), u"300");
  EXPECT_EQ(cell.tGetText(10), u"250");
  cell.LetCurrentText({u"梁 KL-1"});
  EXPECT_EQ(cell.tEngineeringName(), u"梁 KL-1");
  EXPECT_EQ(cell.tGetText(10), u"");

  std::vector<Text> parts;
  EXPECT_EQ(cell.SplitText110A(u" 2 ,16, 3", parts), 3);
  EXPECT_EQ(parts, (std::vector<Text>{u"2", u"16", u"3"}));
  EXPECT_EQ(cell.SplitText110(15, 2, parts), 0);  // item 15 is empty now
  EXPECT_EQ(parts, (std::vector<Text>{u"", u""}));
}

TEST(GridBuild, ResizePlacesGridAndTitleBox) {
  const struct {
    int32_t state, width, height;
    std::array<int32_t, 4> grid, title;
  } cases[] = {
      {0, 9000, 6000, {0, 750, 9000, 4140}, {0, 4920, 9000, 840}},
      {2, 9000, 6000, {0, 750, 9000, 4140}, {0, 4920, 9000, 840}},
      {1, 9000, 6000, {0, 0, 0, 0}, {0, 0, 0, 0}},         // minimised
      {0, 9000, 1000, {0, 0, 0, 0}, {0, -80, 9000, 840}},  // the grid cannot shrink below 0
  };
  for (const auto& c : cases) {
    TestForm f;
    f.build().Form_Resize(c.state, c.width, c.height);
    EXPECT_EQ((std::array<int32_t, 4>{f.grid.left, f.grid.top, f.grid.width, f.grid.height}),
              c.grid);
    EXPECT_EQ((std::array<int32_t, 4>{f.title.left, f.title.top, f.title.width, f.title.height}),
              c.title);
  }
  TestForm f;
  f.build().GridTitle_Initialize();
  EXPECT_EQ(f.title.FontSize(), 9);
}

}  // namespace
}  // namespace zelkora::grid
