// Tests of the in-memory grid controls and their drawing.
#include "zelkora/platform/headless/headless_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "zelkora/platform/fault.h"

namespace zelkora::platform::headless {
namespace {

// A property grid as the library builds it: row 0 hidden, column 1 the
// picture, 2 the caption, 3 the value; rows 1 and 4 are headings.
void build(MemoryGrid& grid) {
  grid.AddPicture(expander_picture(false), u"+");
  grid.AddPicture(expander_picture(true), u"-");
  grid.Rows(6);
  grid.Cols(4);
  grid.RowHeight(0, 0);
  const char16_t* rows[6][2] = {{u"", u""},
                                {u"基本参数", nullptr},
                                {u"混凝土强度等级", u"C30"},
                                {u"  纵筋直径 d", u"20"},
                                {u"荷载", nullptr},
                                {u"弯矩值 Mk", u"120"}};
  for (int32_t r = 1; r < 6; ++r) {
    grid.Text(r, 2, rows[r][0]);
    if (rows[r][1]) {
      grid.Text(r, 3, rows[r][1]);
    } else {
      grid.Merge(r, 1, 3);
      grid.SetImage(r, 1, u"-");
    }
  }
}

TEST(MemoryGridTest, Render) {
  struct Case {
    const char* name;
    std::function<void(MemoryGrid&)> change;
    const char* expected;
  };
  const Case cases[] = {
      {"as built", [](MemoryGrid&) {},
       "- 基本参数\n"
       "  混凝土强度等级  C30\n"
       "    纵筋直径 d    20\n"
       "- 荷载\n"
       "  弯矩值 Mk       120\n"},
      {"collapsed heading, bold value, hidden row",
       [](MemoryGrid& g) {
         g.SetImage(4, 1, u"+");
         g.RowHeight(5, 0);
         g.FontBold(3, 3, true);
         g.RowHeight(2, -3);
       },
       "- 基本参数\n"
       "    纵筋直径 d    *20*\n"
       "+ 荷载\n"},
      {"bold empty value, control characters, row 0 shown",
       [](MemoryGrid& g) {
         g.RowHeight(0, 19);
         g.Text(2, 3, u"");
         g.FontBold(2, 3, true);
         g.Text(5, 3, u"1\t2\r\n");
       },
       "\n"
       "- 基本参数\n"
       "  混凝土强度等级\n"
       "    纵筋直径 d    20\n"
       "- 荷载\n"
       "  弯矩值 Mk       1 2\n"},
      {"merge 2..3 keeps the picture; a heading's text may sit in column 1 and is not padded",
       [](MemoryGrid& g) {
         g.Merge(1, 2, 3);
         g.Text(1, 2, u"基本参数与材料强度等级");
         g.Text(4, 1, u"荷载组合");
       },
       "- 基本参数与材料强度等级\n"
       "  混凝土强度等级  C30\n"
       "    纵筋直径 d    20\n"
       "- 荷载组合\n"
       "  弯矩值 Mk       120\n"},
      {"the caption column is as wide as the widest caption, shown or not",
       [](MemoryGrid& g) {
         g.Merge(1, 1, 1);  // no longer a heading
         g.Text(1, 2, u"一个很长很长的标题");
         g.RowHeight(1, 0);
       },
       "  混凝土强度等级      C30\n"
       "    纵筋直径 d        20\n"
       "- 荷载\n"
       "  弯矩值 Mk           120\n"},
  };
  for (const Case& c : cases) {
    MemoryGrid grid;
    build(grid);
    c.change(grid);
    EXPECT_EQ(grid.render(), c.expected) << c.name;
  }
}

TEST(MemoryGridTest, RenderWithTitleBox) {
  MemoryGrid grid;
  build(grid);
  grid.RowHeight(2, 0);
  grid.RowHeight(3, 0);
  MemoryRichTextBox title;
  title.TextRTF(u"{\\rtf1 \\b 弯矩值 Mk\\b0 \\par Mk——弯矩值。}");
  EXPECT_EQ(grid.render(&title),
            "- 基本参数\n"
            "- 荷载\n"
            "  弯矩值 Mk       120\n"
            "--------\n"
            "*弯矩值 Mk*\n"
            "Mk——弯矩值。\n");
}

TEST(MemoryGridTest, ResizingKeepsCells) {
  struct Case {
    int32_t rows, cols;
  };
  for (const Case c : {Case{5, 6}, Case{2, 4}, Case{3, 2}, Case{1, 1}, Case{0, 3}, Case{4, 0}}) {
    MemoryGrid grid;
    grid.DefaultRowHeight(19);
    grid.Rows(3);
    grid.Cols(4);
    for (int32_t r = 0; r < 3; ++r) {
      grid.RowHeight(r, 30 + r);
      for (int32_t col = 0; col < 4; ++col) {
        grid.Text(r, col, from_utf8(std::to_string(r * 10 + col)));
      }
    }
    grid.Merge(1, 1, 3);
    grid.ActiveCell(2, 3);
    grid.Rows(c.rows);
    grid.Cols(c.cols);
    const std::string name = std::to_string(c.rows) + "x" + std::to_string(c.cols);
    ASSERT_EQ(grid.Rows(), c.rows) << name;
    ASSERT_EQ(grid.Cols(), c.cols) << name;
    for (int32_t r = 0; r < c.rows; ++r) {
      EXPECT_EQ(grid.RowHeight(r), r < 3 ? 30 + r : 19) << name;
      for (int32_t col = 0; col < c.cols; ++col) {
        EXPECT_EQ(grid.Text(r, col),
                  r < 3 && col < 4 ? from_utf8(std::to_string(r * 10 + col)) : Text())
            << name << " cell " << r << "," << col;
      }
    }
    if (c.rows > 1) {
      const auto expected = c.cols > 2 ? std::pair{1, std::min(3, c.cols - 1)} : std::pair{0, -1};
      EXPECT_EQ(grid.merged(1), expected) << name;
    }
    EXPECT_EQ(grid.ActiveCell(), (CellRef{std::clamp(2, 0, std::max(c.rows - 1, 0)),
                                          std::clamp(3, 0, std::max(c.cols - 1, 0))}))
        << name;
  }
}

TEST(MemoryGridTest, SubscriptAndPictureErrors) {
  struct Case {
    const char* name;
    std::function<void(MemoryGrid&)> call;
    FaultKind kind;
  };
  const Case cases[] = {
      {"row past the end", [](MemoryGrid& g) { g.Text(6, 3, u"x"); }, FaultKind::IndexOutOfRange},
      {"negative column", [](MemoryGrid& g) { (void)g.FontBold(1, -1); },
       FaultKind::IndexOutOfRange},
      {"column past the end", [](MemoryGrid& g) { g.ColWidth(4, 1); }, FaultKind::IndexOutOfRange},
      {"row height", [](MemoryGrid& g) { (void)g.RowHeight(-1); }, FaultKind::IndexOutOfRange},
      {"merge", [](MemoryGrid& g) { g.Merge(1, 1, 4); }, FaultKind::IndexOutOfRange},
      {"focus", [](MemoryGrid& g) { g.SetFocus(0, 4); }, FaultKind::IndexOutOfRange},
      {"negative rows", [](MemoryGrid& g) { g.Rows(-1); }, FaultKind::IndexOutOfRange},
      {"unknown picture", [](MemoryGrid& g) { g.SetImage(1, 1, u"*"); },
       FaultKind::MissingResource},
  };
  for (const Case& c : cases) {
    MemoryGrid grid;
    build(grid);
    try {
      c.call(grid);
      ADD_FAILURE() << c.name << ": no fault";
    } catch (const Fault& fault) {
      EXPECT_EQ(fault.kind(), c.kind) << c.name;
    }
  }
}

TEST(MemoryGridTest, RecordsCallsInOrder) {
  MemoryGrid grid;
  grid.AutoRedraw(false);
  build(grid);
  grid.RowHeight(3, 0);  // not recorded
  grid.AutoRedraw(true);
  grid.Refresh();
  grid.SetFocus(0, 3);
  EXPECT_EQ(grid.calls, (std::vector<std::string>{"AutoRedraw=0", "AddPicture +", "AddPicture -",
                                                  "Rows=6", "Cols=4", "Merge 1 1 3", "Merge 4 1 3",
                                                  "AutoRedraw=1", "Refresh", "SetFocus 0 3"}));
  EXPECT_EQ(grid.ActiveCell(), (CellRef{0, 3}));
  EXPECT_TRUE(grid.focused);
  EXPECT_EQ(grid.ImageKey(4, 1), u"-");
  grid.SetImage(4, 1, u"");
  EXPECT_EQ(grid.ImageKey(4, 1), u"");
}

TEST(MemoryGridTest, BottomRow) {
  MemoryGrid grid;
  EXPECT_EQ(grid.BottomRow(), -1);
  build(grid);
  for (auto [set, expected] : {std::pair{-1, 5}, {3, 3}, {0, 0}, {9, 5}}) {
    grid.bottom_row = set;
    EXPECT_EQ(grid.BottomRow(), expected) << set;
  }
}

TEST(MemoryWindowTest, MoveRefusesNegativeSize) {
  MemoryPanel panel;
  EXPECT_TRUE(panel.Move(0, 750, 9000, 3000));
  EXPECT_FALSE(panel.Move(0, 750, 9000, -60));
  EXPECT_FALSE(panel.Move(0, 750, -1, 60));
  EXPECT_EQ(std::vector<int32_t>({panel.left, panel.top, panel.width, panel.height}),
            std::vector<int32_t>({0, 750, 9000, 3000}));
}

// ---- Rich text -----------------------------------------------------------------

TEST(MemoryRichTextBoxTest, BoldMarkersThroughTheRichText) {
  // What the grid does when a row is entered.
  MemoryRichTextBox box;
  box.Text(u"old");
  box.SelStart(99);
  box.SelColor(kColourButtonText);
  box.SelText(u"_bb(弯矩值 Mk)bb_\r\nMk——弯矩值。");
  const Text rtf = replace_all(replace_all(box.TextRTF(), u"_bb(", u"\\b "), u")bb_", u"\\b0 ");
  box.TextRTF(rtf);
  box.SelStart(0);
  EXPECT_EQ(box.Text(), u"old弯矩值 Mk\r\nMk——弯矩值。");
  EXPECT_EQ(box.render(), "old*弯矩值 Mk*\nMk——弯矩值。\n");
  EXPECT_EQ(box.formats()[0].colour, kColourWindowText);
  EXPECT_EQ(box.formats()[3].colour, rgb(0, 0, 0));
}

TEST(MemoryRichTextBoxTest, ReadsRichText) {
  struct Case {
    const char16_t* rtf;
    const char* render;
  };
  const Case cases[] = {
      {u"{\\rtf1\\ansi{\\fonttbl{\\f0 SimSun;}}\\f0 a\\b b\\b0 c}", "a*b*c\n"},
      {u"{\\rtf1 \\b x\\plain y}", "*x*y\n"},
      {u"{\\rtf1 \\b bold\\par\r\nstill\\b0  no}", "*bold*\n*still* no\n"},
      {u"{\\rtf1 \\'cd\\'e4\\'be\\'d8=1}", "弯矩=1\n"},
      {u"{\\rtf1 \\u24367?\\u30697\\'3f x}", "弯矩 x\n"},
      {u"{\\rtf1\\uc2 \\u24367\\'cd\\'e4!}", "弯!\n"},
      {u"{\\rtf1 a\\\\b\\{c\\}d\\tab e}", "a\\b{c}d e\n"},
      {u"{\\rtf1 {\\*\\generator Msftedit;}{\\b x}y\\line z}", "*x*y\nz\n"},
      {u"{\\rtf1 a\\'zz b\\u-3? c}", "azz b\uFFFD c\n"},
      {u"plain \\b text", "plain \\b text\n"},
      {u"{\\rtf1 a\\", "a\n"},
  };
  for (const Case& c : cases) {
    MemoryRichTextBox box;
    box.TextRTF(c.rtf);
    EXPECT_EQ(box.render(), c.render) << to_utf8(c.rtf);
    EXPECT_EQ(box.formats().size(), box.Text().size());
  }
}

TEST(MemoryRichTextBoxTest, RichTextRoundTrip) {
  MemoryRichTextBox box;
  box.Text(u"a{b}\\c 弯\t\r\nz");
  box.SelStart(1);
  box.SelLength(4);
  EXPECT_EQ(box.SelText(), u"{b}\\");
  box.SelColor(rgb(200, 10, 20));
  box.SelStart(6);
  box.SelText(u"x\U0001D400");
  const Text text = box.Text();
  auto formats = box.formats();
  formats[7].bold = true;  // through the rich text: "\b" around one character
  Text rtf = box.TextRTF();
  rtf.replace(rtf.find(u"\\u-10187?"), 0, u"\\b ");
  rtf.replace(rtf.find(u"\\u-9216?"), 0, u"\\b0 ");
  box.TextRTF(rtf);
  EXPECT_EQ(box.Text(), text);
  EXPECT_EQ(box.formats(), formats);
  EXPECT_EQ(box.TextRTF(), rtf);  // the writer puts the codes where they were
  EXPECT_EQ(box.SelStart(), 0);
}

// ---- Form object -------------------------------------------------------------

TEST(MemoryGridFormTest, AnswersAndRecords) {
  MemoryGridForm form;
  form.label_col_width = 150;
  form.hidden = {false, true};
  std::vector<Text> texts = {u"工程", u"C30", u"否"};
  std::vector<bool> marks(3, true);
  EXPECT_EQ(form.LabelColWidth(), 150);
  form.Let_Text(texts);
  form.ControlEnable(marks);
  EXPECT_EQ(marks, (std::vector<bool>{false, true, true}));

  form.on_control_enable = [](const std::vector<Text>& t, std::vector<bool>& m) {
    m[1] = t[2] == u"否";
  };
  marks.assign(3, false);
  form.ControlEnable(marks);  // the texts of the last Let_Text
  EXPECT_EQ(marks, (std::vector<bool>{false, true, false}));
  texts[2] = u"是";
  form.ControlEnable(texts, marks);
  EXPECT_EQ(marks, (std::vector<bool>{false, false, false}));

  EXPECT_EQ(form.call_names(),
            (std::vector<std::string>{"LabelColWidth", "Let_Text", "ControlEnable(hidden)",
                                      "ControlEnable(hidden)", "ControlEnable(texts, hidden)"}));
  EXPECT_EQ(form.calls[2].hidden, (std::vector<bool>{true, true, true}));
  EXPECT_EQ(form.calls[4].texts, texts);
}

}  // namespace
}  // namespace zelkora::platform::headless
