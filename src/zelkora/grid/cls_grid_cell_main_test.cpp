// Tests of the program menu grid.
#include "zelkora/grid/cls_grid_cell_main.h"

#include <gtest/gtest.h>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/embedded.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/headless/memory_ini_files.h"

namespace zelkora {
namespace {

struct Menu {
  std::shared_ptr<platform::headless::MemoryIniFiles> ini =
      std::make_shared<platform::headless::MemoryIniFiles>();
  platform::headless::MemoryGrid grid;
  std::unique_ptr<clsGridCellMain> menu;

  explicit Menu(TextView content) {
    auto p = platform::Platform::headless();
    p->ini = ini;
    if (!content.empty()) ini->put(u"menu.ini", content);
    menu = std::make_unique<clsGridCellMain>(p);
    menu->GridCell(&grid);
    menu->tProMenuIniFile(u"menu.ini");
    menu->GridCell_Initialize();
  }
  std::vector<Text> shown() const {
    std::vector<Text> texts;
    for (const auto& line : menu->menu_lines()) {
      if (!line.text.empty()) texts.push_back(line.caption);
    }
    return texts;
  }
};

TEST(ProgramMenu, ReadsGroupsUpToAGapAndOthersAlways) {
  struct Case {
    TextView content;
    std::vector<Text> captions;
  };
  const Case cases[] = {
      // [3] missing: [4] is never read; [Others] follows.
      {u"[1]\r\n0=甲\r\n1=甲|一\r\n[2]\r\n0=乙\r\n1=乙|二\r\n[4]\r\n0=丁\r\n1=丁|四\r\n"
       u"[Others]\r\n0=杂项\r\n1=杂项|关于\r\n",
       {u"甲", u"一", u"乙", u"二", u"杂项", u"关于"}},
      // A key gap ends the group; three parts show the third.
      {u"[1]\r\n0=基本构件\r\n1=基本构件|弯矩\r\n2=基本构件|柱正截面承载力计算|正截面承载力\r\n"
       u"4=基本构件|剪力\r\n",
       {u"基本构件", u"弯矩", u"正截面承载力", u""}},
      // A missing file: only the [Others] line, empty.
      {u"", {u""}},
  };
  for (const Case& c : cases) {
    Menu m(c.content);
    std::vector<Text> captions;
    for (std::size_t i = 1; i < m.menu->menu_lines().size(); ++i) {
      captions.push_back(m.menu->menu_lines()[i].caption);
    }
    EXPECT_EQ(captions, c.captions) << to_utf8(c.content);
    EXPECT_EQ(m.grid.Rows(), static_cast<int32_t>(c.captions.size()) + 1);
  }
}

TEST(ProgramMenu, ClicksKeysAndTheShippedMenu) {
  const platform::EmbeddedFile* shipped = platform::embedded_file("ZK_PROMENU.INI");
  ASSERT_NE(shipped, nullptr);
  Menu m(codepage::from_ansi(shipped->bytes()));
  // Groups of 20, 9, 15, 20 and 3 programs, then [Others].
  std::vector<std::size_t> sizes;
  for (const auto& line : m.menu->menu_lines()) {
    if (line.kind == clsGridCellMain::kGroupLine) sizes.push_back(0);
    if (line.kind == clsGridCellMain::kEntryLine && !sizes.empty()) ++sizes.back();
  }
  EXPECT_EQ(sizes, (std::vector<std::size_t>{20, 9, 15, 20, 3, 10}));
  EXPECT_EQ(m.menu->menu_lines()[17].caption, u"正截面承载力");

  // Groups start folded; a click on one unfolds it and selects nothing.
  Text page, key;
  EXPECT_EQ(m.grid.RowHeight(2), 0);
  m.grid.ActiveCell(1, 2);
  EXPECT_FALSE(m.menu->GridCell_Click(page, key));
  EXPECT_GT(m.grid.RowHeight(2), 0);
  EXPECT_EQ(m.grid.ImageKey(1, 1), u"-");
  m.grid.ActiveCell(17, 2);
  EXPECT_TRUE(m.menu->GridCell_Click(page, key));
  EXPECT_EQ(page, u"基本构件");
  EXPECT_EQ(key, u"柱正截面承载力计算");
  m.grid.ActiveCell(0, 2);
  EXPECT_FALSE(m.menu->GridCell_Click(page, key));
  int16_t space = 32;
  m.grid.ActiveCell(1, 2);
  EXPECT_FALSE(m.menu->GridCell_KeyDown(space, 0, page, key));
  EXPECT_EQ(m.grid.RowHeight(2), 0);

  // Enter on the lowest shown row (the last group, folded) sends the focus
  // to row 0; on another row it does nothing.
  const int32_t last = m.grid.Rows() - 1;
  int32_t last_group = last;
  while (m.menu->menu_lines()[static_cast<std::size_t>(last_group)].kind !=
         clsGridCellMain::kGroupLine) {
    --last_group;
  }
  int16_t enter = 13;
  m.grid.ActiveCell(1, 2);
  m.menu->GridCell_EnterRow();
  const std::size_t calls = m.grid.calls.size();
  m.menu->GridCell_KeyDown(enter, 0, page, key);
  EXPECT_EQ(m.grid.calls.size(), calls);
  m.grid.ActiveCell(last_group, 2);
  m.menu->GridCell_EnterRow();
  EXPECT_FALSE(m.menu->GridCell_KeyDown(enter, 0, page, key));
  EXPECT_EQ(m.grid.calls.back(), "SetFocus 0 2");
}

}  // namespace
}  // namespace zelkora
