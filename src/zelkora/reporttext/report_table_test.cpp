// Tests of the report tables.
#include "zelkora/reporttext/report_table.h"
#include "zelkora/frame/character_internals.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault_test_support.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/recording_progress.h"

namespace zelkora {
namespace {

using test_support::fault_of;
const std::string kIndex = fault_kind_name(FaultKind::IndexOutOfRange);
const std::string kDivision = fault_kind_name(FaultKind::DivisionByZero);

std::shared_ptr<platform::Platform> platform_with_decimal(const Text& decimal) {
  auto p = platform::Platform::headless();
  p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
      decimal, decimal == u"," ? u"." : u",");
  return p;
}

TEST(ReportTable, CellIsFittedAndPadded) {
  struct Case {
    TextView decimal;
    TextView text;
    int32_t width, extra, align;
    TextView cell;
  };
  const Case cases[] = {
      // Text that fits: the room goes to the side away from the alignment.
      {u".", u"abc", 10, 1, zkRightJustify, u"      abc "},
      {u".", u"abc", 10, 1, zkLeftJustify, u" abc      "},
      {u".", u"abc", 10, 1, zkCenter, u"   abc    "},
      {u".", u"abc", 10, 1, 7, u"abc"},
      {u".", u"钢筋混凝", 10, 1, zkRightJustify, u" 钢筋混凝 "},  // 8 cells
      {u".", u"钢筋混凝", 9, 1, zkLeftJustify, u" 钢筋混凝"},
      {u".", u"f_ub(a)ub_", 5, 0, zkRightJustify, u"   f_ub(a)ub_"},  // markup not counted
      // A decimal number loses two characters at a time and then fits.
      {u".", u"3.14159265", 10, 1, zkRightJustify, u" 3.141592 "},
      {u".", u"-1234.5678", 8, 1, zkRightJustify, u" -1234. "},
      {u",", u"3,14159265", 10, 1, zkRightJustify, u" 3,141592 "},
      // Without the decimal symbol, or no longer a number: cut with "...".
      {u",", u"3.14159265", 10, 1, zkRightJustify, u"3.1415... "},
      {u".", u"3,14159265", 10, 1, zkRightJustify, u"3,1415... "},
      {u".", u"1234567.5", 6, 1, zkRightJustify, u"12... "},
      {u".", u"1.2345678E+20", 10, 1, zkRightJustify, u"1.2345... "},
      // Shortened texts take only the extra blanks as padding.
      {u".", u"abcdefgh", 6, 1, zkRightJustify, u"ab... "},
      {u".", u"abcdefgh", 7, 2, zkLeftJustify, u"  ab..."},
      {u".", u"abcdefgh", 8, 3, zkCenter, u" ab...  "},
      {u".", u"钢筋混凝", 8, 1, zkRightJustify, u"钢筋混凝... "},  // characters, not cells
      {u".", u"f_ub(abcdefg)ub_", 7, 0, zkRightJustify, u"f_ub..."},
      {u".", u"abcd", 4, 1, zkRightJustify, u"*** "},
      {u".", u"12.5", 4, 1, zkCenter, u"*** "},
      {u".", u"ab", 2, 5, zkRightJustify, u"     "},     // no room at all
      {u".", u"ab", 5, -2, zkRightJustify, u"     ab"},  // negative padding: no blanks
      // A column that is off.
      {u".", u"abc", 0, 1, zkRightJustify, u""},
      {u".", u"abc", -3, 0, zkLeftJustify, u""},
  };
  for (const Case& c : cases) {
    clsCharacter chr(platform_with_decimal(Text(c.decimal)));
    EXPECT_EQ(chr.tFormatByLen(c.text, c.width, static_cast<eAlignment>(c.align), c.extra), c.cell)
        << to_utf8(c.text) << " width " << c.width << " extra " << c.extra << " align " << c.align;
  }
}

class ReportLayout : public ::testing::Test {
 protected:
  clsCharacter chr{platform::Platform::headless()};
};

TEST_F(ReportLayout, InitializeMakesColumnsToTheUpperIndexSetBefore) {
  EXPECT_EQ(fault_of([&] { chr.tFormatByLenA(u"x", 0); }), kIndex);  // no columns yet
  chr.ListOut_Ubound(3);
  chr.ListOut_Initialize(2, 10, zkLeftJustify, 2);
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width,
            (std::vector<int32_t>{0, 0, 10, 10}));
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).alignment,
            (std::vector<int32_t>{0, 0, -1, -1}));
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).extra_blanks,
            (std::vector<int32_t>{0, 0, 2, 2}));
  EXPECT_EQ(chr.tFormatByLenA(u"abc", 1), u"");
  EXPECT_EQ(chr.tFormatByLenA(u"abc", 2), u"  abc     ");
  chr.ListOut_Initialize(0, 6);  // right, one extra blank
  EXPECT_EQ(chr.tFormatByLenA(u"abc", 3), u"  abc ");

  // The upper index waits for the next initialize; a negative one gives none.
  chr.ListOut_Ubound(5);
  EXPECT_EQ(fault_of([&] { chr.ListOut_Index_Width(4, 1); }), kIndex);
  chr.ListOut_Ubound(-1);
  chr.ListOut_Initialize(0, 6);
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).upper(), -1);
}

TEST_F(ReportLayout, IndexOutsideTheColumnsIsAFaultAndChangesNothing) {
  chr.ListOut_Ubound(1);
  chr.ListOut_Initialize(0, 8);
  const reporttext::ColumnLayout before = clsCharacter::Internals::column_layout(chr);
  const std::function<void()> actions[] = {
      [&] { chr.ListOut_Index_Width(2, 1); },
      [&] { chr.ListOut_Index_Align(-1, zkCenter); },
      [&] { chr.ListOut_Index_SpcAdd(2, 1); },
      [&] { chr.tFormatByLenA(u"x", 2); },
      [&] { chr.ListOut_Initialize(-1, 3); },
      [&] { chr.ListOut_ConCaptionListCap_Text(); },  // needs columns 0 to 2
  };
  for (std::size_t i = 0; i < std::size(actions); ++i) {
    EXPECT_EQ(fault_of(actions[i]), kIndex) << i;
    EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width, before.width) << i;
    EXPECT_EQ(clsCharacter::Internals::column_layout(chr).alignment, before.alignment) << i;
  }
}

TEST_F(ReportLayout, RowsAreAppendedWithTheirEnds) {
  chr.ListOut_Ubound(2);
  chr.ListOut_Initialize(0, 4, zkRightJustify, 0);
  chr.ListOut_Index_Align(0, zkLeftJustify);
  const std::vector<Text> cells = {u"a", u"b", u"c"};
  chr.Txt(u"T:");
  chr.ListOut_TextAddRow(cells, 0, u">>", u"|");
  chr.ListOut_TextAddRow(cells, 1, u">>");  // the prefix only with column 0
  EXPECT_EQ(chr.Txt(), u"T:>>a      b   c|\u3000\r\n   b   c\u3000\r\n");

  Text text = u"x";
  chr.TextAddRowA(text, cells, 1, 0, u"-");
  EXPECT_EQ(text, u"x-a      b\u3000\r\n");

  // A row that cannot be made appends nothing.
  const Text kept = chr.Txt();
  EXPECT_EQ(fault_of([&] { chr.ListOut_TextAddRow({u"a", u"b"}, 0); }), kIndex);
  EXPECT_EQ(fault_of([&] { chr.TextAddRowA(text, cells, 3); }), kIndex);
  EXPECT_EQ(fault_of([&] { chr.ListOut_TextAddRow(cells, -1); }), kIndex);
  EXPECT_EQ(chr.Txt(), kept);
  EXPECT_EQ(text, u"x-a      b\u3000\r\n");

  chr.ListOut_Ubound(-1);
  chr.ListOut_Initialize(0, 4);
  chr.TxtClear();
  chr.ListOut_TextAddRow({}, 0, u"<", u">");
  EXPECT_EQ(chr.Txt(), u"<>\u3000\r\n");
}

TEST_F(ReportLayout, AdjustWidthFillsTheLine) {
  struct Case {
    int32_t start, add, adjust;
    int16_t line;
    int32_t total;
    std::vector<int32_t> widths;
  };
  // Widths 5, 10, 0, 8, 6: 29 cells in use, plus add + 2.
  const Case cases[] = {
      {3, 4, 1, 80, 35, {5, 10, 0, 30, 28}},   // (80 - 35) \ 2 columns
      {0, 4, 2, 80, 35, {10, 15, 0, 13, 11}},  // (45 \ 4) \ 2; the column that is off stays
      {3, 4, -1, 80, 35, {5, 10, 0, -14, -16}}, {4, 0, 1, 40, 31, {5, 10, 0, 8, 15}},
      {3, 4, 1, 35, 35, {5, 10, 0, 8, 6}},  // no room
      {3, 4, 0, 30, 35, {5, 10, 0, 8, 6}},  // no room, so no division
      {9, 4, 1, 20, 35, {5, 10, 0, 8, 6}},
  };
  for (const Case& c : cases) {
    chr.ListOut_Ubound(4);
    chr.ListOut_Initialize(0, 0);
    const int32_t widths[] = {5, 10, 0, 8, 6};
    for (int32_t i = 0; i < 5; ++i) chr.ListOut_Index_Width(i, widths[i]);
    chr.iMaxChrNow(c.line);
    int32_t total = -1;
    int32_t adjust = c.adjust;
    chr.ListOUt_AdjustWidth(total, c.start, c.add, adjust);
    EXPECT_EQ(total, c.total) << c.start << " " << c.add << " " << c.adjust;
    EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width, c.widths)
        << c.start << " " << c.add << " " << c.adjust;
  }

  // The shorter forms use start 3, add 4 and adjust 1.
  chr.iMaxChrNow(80);
  chr.ListOut_Ubound(3);
  chr.ListOut_Initialize(0, 10);
  int32_t total = 0;
  chr.ListOUt_AdjustWidth(total);
  EXPECT_EQ(total, 46);
  EXPECT_EQ(chr.ListOUt_AdjustWidthW(), 80);
  chr.ListOUt_AdjustWidth();
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width,
            (std::vector<int32_t>{10, 10, 10, 44}));
}

TEST_F(ReportLayout, AdjustWidthFaultsLeaveTheLayout) {
  struct Case {
    int32_t start, add, adjust;
    int32_t last_width;
    std::string fault;
  };
  const Case cases[] = {
      {4, 4, 1, 10, kDivision},  // no column from 4 on
      {1, 4, 0, 10, kDivision},
      {-1, 4, 1, 10, kIndex},
      {1, INT32_MAX, 1, 10, test_support::kOverflow},
      {1, 4, 1, INT32_MAX, test_support::kOverflow},
      {1, -INT32_MAX, 1, 10, test_support::kOverflow},  // the room does not fit
  };
  for (const Case& c : cases) {
    chr.ListOut_Ubound(3);
    chr.ListOut_Initialize(0, 0);
    chr.ListOut_Index_Width(0, 10);
    chr.ListOut_Index_Width(3, c.last_width);
    const std::vector<int32_t> before = clsCharacter::Internals::column_layout(chr).width;
    EXPECT_EQ(fault_of([&] { chr.ListOUt_AdjustWidthW(c.start, c.add, c.adjust); }), c.fault)
        << c.start << " " << c.add;
    EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width, before);
  }
  // Widening past 32 bits in the last column, after the first was widened.
  reporttext::ColumnLayout layout;
  layout.ubound = 1;
  layout.initialize(0, 1, zkRightJustify, 0);
  layout.set_width(1, INT32_MAX - 30);
  EXPECT_EQ(fault_of([&] { reporttext::adjust_widths(layout, INT16_MAX, 0, INT32_MIN + 40, 1); }),
            test_support::kOverflow);
  EXPECT_EQ(layout.width, (std::vector<int32_t>{1, INT32_MAX - 30}));
}

TEST_F(ReportLayout, StandardHeader) {
  chr.ListOut_Ubound(3);
  chr.ListOut_Initialize(0, 8, zkRightJustify, 0);
  // Column 0 keeps its alignment and extra blanks; 1 and 2 get their own.
  const Text header = u"     柱号 控制     地震 ";
  EXPECT_EQ(chr.ListOut_ConCaptionListCap_Text(), header);
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).width, (std::vector<int32_t>{5, 10, 5, 8}));
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).alignment,
            (std::vector<int32_t>{1, -1, 0, 1}));
  EXPECT_EQ(clsCharacter::Internals::column_layout(chr).extra_blanks,
            (std::vector<int32_t>{0, 1, 1, 0}));
  chr.Txt(u"#");
  chr.ListOut_ConCaptionListCap();
  EXPECT_EQ(chr.Txt(), u"#" + header);
  // The captions follow the language offset.
  chr.lLanguage(100000);
  EXPECT_EQ(chr.ListOut_ConCaptionListCap_Text(), Text(24, u' '));
}

TEST_F(ReportLayout, KeystrokeFilter) {
  struct Case {
    int16_t key;
    int32_t id;
    int16_t result;
  };
  const Case cases[] =
      {
          {3, 35000, 3},     {22, 35000, 22},   {24, 35000, 24},   {26, 35000, 26},
          {8, 35000, 8},     {'5', 35000, '5'}, {' ', 35000, ' '}, {'a', 35000, 0},
          {'Z', 35168, 'Z'}, {'z', 35168, 'z'}, {'a', 35168, 0},   {0, 35000, 0},
          {-1, 35000, 0},    {3, 99999, 3},  // edit keys need no text
      };
  chr.lLanguage(100000);  // the character sets ignore the offset
  for (const Case& c : cases) EXPECT_EQ(chr.iValiTextEnter(c.key, c.id), c.result) << c.key;
  EXPECT_EQ(fault_of([&] { chr.iValiTextEnter('a', 99999); }), test_support::kMissingResource);

  for (int16_t key : {int16_t{3}, int16_t{'5'}, int16_t{'a'}}) {
    EXPECT_EQ(chr.ValiTextEnter(key, u"0123456789", true), 0);
  }
  std::vector<int16_t> a = {1, 2}, b = {3}, c;
  chr.FormatByLenSet(a, b, c);
  EXPECT_EQ(a, (std::vector<int16_t>{1, 2}));
  EXPECT_EQ(b, (std::vector<int16_t>{3}));
  EXPECT_TRUE(c.empty());
}

TEST(ReportProgress, DisplayProcessHandsItsArgumentsOnInOrder) {
  auto p = platform::Platform::headless();
  auto display = std::make_shared<platform::headless::RecordingProgressDisplay>();
  p->progress = display;
  clsCharacter chr(p);
  platform::Control panel;
  chr.DisplayProcess(100, 7, &panel, 2);
  chr.DisplayProcess(-1, 0, nullptr);
  using Call = platform::headless::RecordingProgressDisplay::Call;
  EXPECT_EQ(display->calls, (std::vector<Call>{{2, &panel, 7, 100}, {0, nullptr, 0, -1}}));

  p->progress = nullptr;
  clsCharacter without(p);
  without.DisplayProcess(1, 2, &panel);  // nothing to show it on
  EXPECT_EQ(display->calls.size(), 2u);
}

TEST(ReportCli, CellCommand) {
  struct Case {
    std::vector<std::string> args;
    int code;
    std::string out;
  };
  const Case cases[] = {
      {{"cell", "abc", "6"}, cli::kExitOk, "[   abc]\n"},
      {{"cell", "abc", "10", "--align", "center", "--spaces", "1"}, cli::kExitOk, "[   abc    ]\n"},
      {{"cell", "3.14159265", "9", "--align", "left"}, cli::kExitOk, "[3.141592 ]\n"},
      {{"cell", "abcdefgh", "0"}, cli::kExitOk, "[]\n"},
      {{"cell", "abc", "6", "--align", "middle"}, cli::kExitUsage, ""},
      {{"cell", "abc", "2000000"}, cli::kExitUsage, ""},
      {{"cell", "abc"}, cli::kExitUsage, ""},
  };
  platform::ScopedPlatform scope(platform::Platform::headless());
  for (const Case& c : cases) {
    std::ostringstream out, err;
    EXPECT_EQ(cli::run(c.args, out, err), c.code) << c.args.size() << " " << err.str();
    EXPECT_EQ(out.str(), c.out);
  }
}

}  // namespace
}  // namespace zelkora
