// Tests of layouts and descriptors, and checks of the shipped layouts.
#include "zelkora/grid/layout.h"
#include "zelkora/frame/character_internals.h"
#include "zelkora/grid/grid_cell_internals.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <tuple>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/layout_lint.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/embedded.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora::grid {
namespace {

using test_support::fault_of;

const std::string kIndex = fault_kind_name(FaultKind::IndexOutOfRange);

// The fault kind and message an action throws.
template <class F>
std::pair<std::string, std::string> fault_and_message(F&& f) {
  try {
    f();
  } catch (const Fault& fault) {
    return {fault_kind_name(fault.kind()), fault.what()};
  }
  return {"none", ""};
}

class Layouts : public ::testing::Test {
 protected:
  std::shared_ptr<platform::Platform> p = platform::Platform::headless();
  platform::ScopedPlatform scope{p};
  clsCharacter chr{p};
  const frame::Catalogue& cat = clsCharacter::Internals::catalogue(chr);
  const frame::NumberSymbols dot{};
};

TEST_F(Layouts, LineFieldsAreReadAsTheGridReadsThem) {
  const struct {
    const char16_t* line;
    int32_t item;
    const char16_t* descriptor;
    bool event;
  } cases[] = {
      {u"3,25800,          '''显示实配纵筋的等效面积", 3, u"100|1382|1|1050|-1|1|", false},
      {u"8,25909,1,          '''1386,  \"自动计算多层纵筋折减系数\"    ", 8,
       u"100|1386|1|1050|0|1|", true},
      {u"6,25803, 1 ", 6, u"100|1384|1|1050|0|1|", true},
      {u"6,25803,11", 6, u"100|1384|1|1050|0|1|", false},
      {u"6,25803,1.0", 6, u"100|1384|1|1050|0|1|", false},
      {u"10,25502    '''9046,  \"迎风面一侧坡体的水平投影长度 d1\"", 10, u"100|1002|1|9000||0|",
       false},
      {u"-1,-25001,    '''选项", -1, u"-10|1348|1|||0|", false},
      {u"  2.5xyz ,  25503", 2, u"100|1010|1|5300|-3|1|", false},
  };
  for (const auto& c : cases) {
    const RowTables t = read_layout(Text(c.line) + u"\r\n", "T", cat);
    ASSERT_EQ(t.rows, 1) << to_utf8(c.line);
    EXPECT_EQ(t.item[1], c.item) << to_utf8(c.line);
    EXPECT_EQ(t.descriptor[1], c.descriptor) << to_utf8(c.line);
    EXPECT_EQ(t.event[1], c.event) << to_utf8(c.line);
  }
}

TEST_F(Layouts, SizesComeFromRowsAndHeadingsNotFromIndexes) {
  // Lines end in CR LF, in bare LF (a layout edited on Linux), or in both.
  for (const TextView eol : {u"\r\n", u"\n"}) {
    Text text;
    for (int i = 0; i < 40; ++i) {
      const Text end(eol);
      text += i % 7 == 0 ? u"-1,25000" + end + u"   " + end + (i == 7 ? u"\r\n" : end)
                         : u"99,25502" + end;  // 6 headings
    }
    const RowTables t = read_layout(text, "T", cat);
    EXPECT_EQ(t.rows, 40) << to_utf8(eol).size();
    EXPECT_EQ(t.headings, 6);
    EXPECT_EQ(t.max_item, 33);
    EXPECT_EQ(t.line[2], 4);  // blank lines still count as lines
    EXPECT_EQ(t.line[40], 52);
  }
  EXPECT_EQ(read_layout(u"", "T", cat).max_item, -1);
}

TEST_F(Layouts, DamagedLayoutsAreFaultsNamingLayoutAndLine) {
  const struct {
    const char16_t* text;
    std::string kind;
    const char* message;
  } cases[] = {
      {u"-1,25000\r\n1,99999", test_support::kMissingResource,
       "layout \"T\", line 2: descriptor 99999"},
      {u"-1,25000\r\n\r\n7   '''no comma", kIndex, "line 3"},
      {u"1,1e300", test_support::kOverflow, "line 1: the descriptor id"},
      {u"1,-2147483648", test_support::kOverflow, "line 1"},
      {u"1,0", test_support::kMissingResource, "descriptor 0"},
  };
  for (const auto& c : cases) {
    const auto [kind, message] = fault_and_message([&] { read_layout(c.text, "T", cat); });
    EXPECT_EQ(kind, c.kind) << to_utf8(c.text);
    EXPECT_NE(message.find(c.message), std::string::npos) << message;
  }
}

TEST_F(Layouts, DescriptorFieldsAreConvertedOrFault) {
  const struct {
    const char16_t* text;
    int fields;
    std::string fault;
    RowDescriptor d;
  } cases[] = {
      {u"10|1346|1|||0|", 6, "none", {10, 1346, 1, 0, u"", u"0", 0}},
      {u"-110|1370|1|5752|_2, 16|0|", 6, "none", {-110, 1370, 1, 5752, u"_2, 16", u"0", 0}},
      {u"100|1002|2.5| 9000abc| |xS>0_Lx", 6, "none", {100, 1002, 2, 9000, u" ", u"xS>0_Lx", 0}},
      {u"100|1002|1|abc||0|", 6, "none", {100, 1002, 1, 0, u"", u"0", 0}},
      {u"100|1002|1|9000||0|1", 7, "none", {100, 1002, 1, 9000, u"", u"0", 1}},
      {u"abc|1002|1|9000||0|", 6, test_support::kConversion, {}},
      {u"100||1|9000||0|", 6, test_support::kConversion, {}},
      {u"100|1002|1|9000||0|", 7, test_support::kConversion, {}},
      {u"100|1002|1|9000|", 6, kIndex, {}},
      {u"100|1002|1|9000||0", 7, kIndex, {}},
      {u"100|1e10|1|||0|", 6, test_support::kOverflow, {}},
      {u"100|1002|1|1e10||0|", 6, test_support::kOverflow, {}},
  };
  for (const auto& c : cases) {
    RowDescriptor d;
    const auto [kind, message] =
        fault_and_message([&] { d = split_descriptor(c.text, c.fields, dot, "here"); });
    EXPECT_EQ(kind, c.fault) << to_utf8(c.text);
    if (kind != "none") {
      EXPECT_EQ(message.rfind("here: ", 0), 0u) << message;
      continue;
    }
    EXPECT_EQ(
        std::tie(d.kind, d.caption, d.cell, d.list, d.default_field, d.check, d.item),
        std::tie(c.d.kind, c.d.caption, c.d.cell, c.d.list, c.d.default_field, c.d.check, c.d.item))
        << to_utf8(c.text);
  }
}

TEST_F(Layouts, DefaultTextFollowsTheFourCases) {
  const std::vector<Text> yes_no = chr.ComboBoxList(1050);  // 是|否
  const struct {
    const char16_t* field;
    const char16_t* current;
    const char16_t* expected;
  } cases[] = {
      {u"0", u"", u"是"},      {u"-1", u"x", u"否"},    {u"-2", u"", u""},
      {u"0.4", u"", u"是"},    {u"500", u"", u"自动"},  {u" 500 ", u"", u"自动"},
      {u"7", u"", u""},        {u"_628", u"x", u"628"}, {u"_2, 16", u"", u"2, 16"},
      {u"x", u"", u""},        {u" ", u"x", u""},       {u"", u"", u"是"},
      {u"", u"已有", u"已有"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(default_text(c.field, yes_no, c.current, chr), c.expected) << to_utf8(c.field);
  }
  EXPECT_EQ(default_text(u"", {}, u"", chr), u"");
  EXPECT_EQ(fault_of([&] { default_text(u"1e20", yes_no, u"", chr); }), test_support::kOverflow);
}

TEST_F(Layouts, ListsZeroHundredAndTwoHundredComeFromTheNamedIniFiles) {
  auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
  p->ini = ini;
  const Text app = clsCharacter::Internals::settings_application(chr);
  ini->put(u"tuli.ini", u"[list]\r\n1=甲\r\n2= 乙 \r\n4=丁\r\n");
  ini->put(u"scheme.ini", u"[List]\r\n1=方案一\r\n2=\r\n3=方案三\r\n");
  EXPECT_TRUE(clsCharacter(p).ComboBoxList(0).empty());  // no setting
  p->settings->set(app, u"Settings", u"TuLiIniFile", u"tuli.ini");
  p->settings->set(app, u"Settings", u"BanPjFaIniFile", u"missing.ini");
  clsCharacter reader(p);
  EXPECT_EQ(reader.ComboBoxList(0), (std::vector<Text>{u"甲", u"乙"}));
  EXPECT_EQ(reader.ComboBoxList(100), (std::vector<Text>{u"甲", u"乙"}));
  EXPECT_TRUE(reader.ComboBoxList(200).empty());
  p->settings->set(app, u"Settings", u"BanPjFaIniFile", u"scheme.ini");
  EXPECT_EQ(reader.ComboBoxList(200), std::vector<Text>{u"方案一"});
  EXPECT_EQ(reader.ComboBoxList(1050), (std::vector<Text>{u"是", u"否"}));
}

// ---- clsGridCell -------------------------------------------------------------

TEST_F(Layouts, FormRowsFillTheTablesAndSwapToItemsWithoutALayout) {
  clsGridCell grid(p);
  const std::vector<Text> texts = {u"", u"10|1346|1|||0|-1", u"100|1002|1|9000||S>0|1",
                                   u"-110|1370|1|5752|_2, 16|0|0", u"1100|1372|1|5754|_2|I>=1|2"};
  const std::vector<bool> events = {false, false, true, false, false};
  grid.LetGridCellText(texts, events, 4, 2);
  std::vector<bool> ev;
  std::vector<int32_t> captions, lists;
  std::vector<Text> checks;
  grid.GetEventRow(ev);
  grid.GetResID(captions);
  EXPECT_EQ(ev, events);
  EXPECT_EQ(captions, (std::vector<int32_t>{0, 1346, 1002, 1370, 1372}));
  EXPECT_EQ(clsGridCell::Internals::row_tables(grid).kind[3], -110);
  EXPECT_EQ(grid.lMaxTextIndex(), 2);
  EXPECT_EQ(grid.tDefaultText(3), u"2, 16");

  grid.GetTextResID();  // no layout id: the form's rows stand
  grid.GetResID(captions);
  grid.GetListRes(lists);
  grid.GetCheckSign(checks);
  EXPECT_EQ(captions, (std::vector<int32_t>{1370, 1002, 1372}));
  EXPECT_EQ(lists, (std::vector<int32_t>{5752, 9000, 5754}));
  EXPECT_EQ(checks, (std::vector<Text>{u"0", u"S>0", u"I>=1"}));

  clsGridCell bad(p);
  EXPECT_EQ(fault_of([&] { bad.LetGridCellText(texts, events, 5, 2); }), kIndex);
  EXPECT_EQ(fault_of([&] { bad.LetGridCellText(texts, {false}, 4, 2); }), kIndex);
  EXPECT_EQ(fault_of([&] { bad.LetGridCellText(texts, events, 4, kMaxItems + 1); }), kIndex);
  EXPECT_EQ(fault_of([&] { bad.LetGridCellText(texts, events, -1, 2); }), kIndex);
  EXPECT_EQ(fault_of([&] {
              bad.LetGridCellText(texts, events, 4, 0);
              bad.GetTextResID();
            }),
            kIndex);  // item 2 beyond lMax 0
  EXPECT_EQ(fault_of([&] { bad.tDefaultText(9); }), kIndex);

  // A default that does not fit names the row it is in.
  clsGridCell too_big(p);
  too_big.LetGridCellText({u"", u"100|1002|1|0|99999999999|S>0|0"}, {false, false}, 1, 0);
  const auto [kind, message] = fault_and_message([&] { too_big.tDefaultText(1); });
  EXPECT_EQ(kind, test_support::kOverflow);
  EXPECT_EQ(message.rfind("the form's row 1: default 99999999999: ", 0), 0u) << message;
}

TEST_F(Layouts, BeamLayoutReadsIntoRowAndItemTables) {
  clsGridCell grid(p);
  grid.lInterfaceResID(63706);
  grid.ReadLayoutResource();
  grid.SplitRowDescriptors();
  const RowTables& t = clsGridCell::Internals::row_tables(grid);
  EXPECT_EQ(t.rows, 31);
  EXPECT_EQ(grid.lMaxTextIndex(), 25);
  ASSERT_EQ(clsGridCell::Internals::item_tables(grid).current.size(), 26u);
  // Row 17 is the collapsed group of items 16 and 17; the options heading is collapsed.
  EXPECT_EQ(t.item[17], 15);
  EXPECT_EQ(t.kind[17], -110);
  EXPECT_EQ(t.kind[18], 1100);
  EXPECT_EQ(t.kind[26], -10);
  EXPECT_TRUE(t.event[29]);   // 6, 显示配筋率
  EXPECT_FALSE(t.event[28]);  // 3, comment in field 3
  clsGridCell::Internals::item_tables(grid).current[1] = u"L-9";
  clsGridCell::Internals::derive_default_texts(grid);
  const std::vector<Text>& d = clsGridCell::Internals::item_tables(grid).defaults;
  EXPECT_EQ(d[15], u"2, 16");
  EXPECT_EQ(d[2], u"30");
  EXPECT_EQ(d[3], u"否");
  EXPECT_EQ(d[9], u"二级");
  EXPECT_EQ(d[18], u"35");  // empty default, empty text: list item 0
  EXPECT_EQ(d[1], u"L-9");  // empty default keeps the row's text
  EXPECT_EQ(d[0], u"");

  grid.GetTextResID();
  std::vector<int32_t> captions;
  grid.GetResID(captions);
  ASSERT_EQ(captions.size(), 26u);
  EXPECT_EQ(captions[0], 1000);
  EXPECT_EQ(captions[15], 1370);
  EXPECT_EQ(captions[6], 1384);
}

TEST_F(Layouts, ResourceFolderOverridesByNameAndTheLayoutIsReadOnce) {
  test_support::ScratchFolder dir("zk-layout");
  dir.put("layouts/CLSBEAMSTEEL.TXT", codepage::to_ansi(u"-1,25000\r\n0,25501,'''工程名称\r\n"));
  auto folder = platform::Platform::headless();
  folder->resources = platform::standard_resources(dir.path());
  clsGridCell grid(folder);
  grid.lInterfaceResID(63706);
  grid.GetTextResID();
  EXPECT_EQ(grid.lMaxTextIndex(), 0);
  std::filesystem::remove(dir / "layouts/CLSBEAMSTEEL.TXT");
  grid.GetTextResID();  // read once: the file is no longer needed
  EXPECT_EQ(grid.lMaxTextIndex(), 0);
  clsGridCell fresh(folder);
  fresh.lInterfaceResID(63706);
  fresh.GetTextResID();
  EXPECT_EQ(fresh.lMaxTextIndex(), 25);  // the compiled-in layout

  clsGridCell none(p);
  for (int32_t id : {99999, 63700}) {  // no name text; a name without a layout
    none.lInterfaceResID(id);
    const auto [kind, message] = fault_and_message([&] { none.GetTextResID(); });
    EXPECT_EQ(kind, test_support::kMissingResource) << id;
    EXPECT_NE(message.find(id == 63700 ? "clsFormZhRq12" : "99999"), std::string::npos);
  }
}

// ---- The shipped layouts -------------------------------------------------------

std::string described(const std::vector<LayoutProblem>& problems) {
  std::string text;
  for (const LayoutProblem& problem : problems) text += problem.describe() + "\n";
  return text;
}

// Every shipped layout keeps every rule of the lint (the example program's
// layout is linted by the tool's tests); the chapter shows the example file
// as it is.
TEST_F(Layouts, ShippedLayoutsLintCleanAndTheChapterShowsTheExample) {
  int layouts = 0;
  for (const platform::EmbeddedFile& file : platform::embedded_files()) {
    std::string_view path = file.name;
    if (!path.starts_with("layouts/") || !path.ends_with(".txt")) continue;
    ++layouts;
    const Text name = from_utf8(path.substr(8, path.size() - 8 - 4));
    EXPECT_EQ(described(lint_named_layout(name, p)), "") << to_utf8(name);
  }
  EXPECT_GE(layouts, 3);

  const std::filesystem::path source(ZK_SOURCE_DIR);
  std::ifstream file(source / "tools/zelkora/testdata/program/layouts/clsRetainingWall.txt",
                     std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_FALSE(bytes.empty());

  std::ifstream chapter(source / "docs/layouts.md", std::ios::binary);
  const std::string doc{std::istreambuf_iterator<char>(chapter), {}};
  const std::string shown = to_utf8(replace_all(codepage::from_ansi(bytes), u"\r\n", u"\n"));
  EXPECT_NE(doc.find("```text\n" + shown + "```\n"), std::string::npos)
      << "docs/layouts.md does not show the example layout as the file has it";
}

// The names: the suite's block and a program's own; the library ships no text
// in the program's block.
TEST_F(Layouts, LayoutNamesComeFromTwoBlocks) {
  for (int32_t id = text_id::kFirstProgramText; id <= text_id::kLastProgramText; ++id) {
    ASSERT_FALSE(cat.contains(id)) << id;
  }
  EXPECT_EQ(layout_name_id(u"CLSBEAMSTEEL", cat), 63706);
  EXPECT_EQ(form_layout_id(u"clsBeamSteel", cat, p->resources), 63706);
  EXPECT_EQ(fault_and_message([&] { form_layout_id(u"clsFormZhRq12", cat, p->resources); }).first,
            test_support::kMissingResource);  // named, but without a layout file

  // A program's own form: its name and layout come from its resource folder.
  auto own = std::make_shared<platform::Platform>(*p);
  own->resources = platform::standard_resources(std::filesystem::path(ZK_SOURCE_DIR) /
                                                "tools/zelkora/testdata/program");
  const frame::Catalogue& its = *frame::catalogue_for(*own);
  EXPECT_EQ(form_layout_id(u"clsretainingwall", its, own->resources), 70000);
  clsGridCell form(own);
  form.lInterfaceResID(70000);
  form.GetTextResID();
  EXPECT_EQ(form.lMaxTextIndex(), 7);
  form.lInterfaceResID(1000);  // a text, but none of the layout names
  const auto [kind, message] = fault_and_message([&] { form.ReadLayoutResource(); });
  EXPECT_EQ(kind, test_support::kMissingResource);
  EXPECT_NE(message.find("outside the layout names"), std::string::npos) << message;
}

}  // namespace
}  // namespace zelkora::grid
