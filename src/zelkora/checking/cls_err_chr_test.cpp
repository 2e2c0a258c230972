// Tests of the message compositions and their display.
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/checking/err_chr_internals.h"

#include <gtest/gtest.h>

#include <set>

#include "zelkora/checking/message_table.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora {
namespace {

using platform::headless::RecordingMessageBox;

// Every error number that has a message of its own: the suite's, and the
// library's own 39997 (a point outside a table of values).
std::vector<int32_t> all_error_numbers() {
  std::vector<int32_t> numbers = {
      101,     102,     103,     104,     105,     106,     120,     121,     122,      123,
      143,     153,     154,     155,     166,     168,     169,     200,     202,      203,
      204,     205,     333,     450,     501,     502,     503,     530,     531,      532,
      533,     550,     551,     560,     561,     562,     563,     564,     999,      1999,
      2001,    2002,    2003,    3009,    3010,    3011,    3013,    3015,    3020,     3039,
      3049,    3210,    3211,    3213,    3219,    3220,    3221,    3310,    3320,     3322,
      3339,    3500,    3501,    3502,    3503,    4000,    4001,    4100,    4102,     4103,
      5000,    6000,    6010,    6020,    6030,    8999,    39990,   39997,   39998,    39999,
      3600810, 3600820, 3600830, 3600840, 3600900, 3600910, 3600920, 3600930, 3600931,  3600932,
      3600933, 3600940, 4600103, 4600104, 4600203, 4600204, 4600303, 4600304, 4600305,  4600900,
      4600930, 4600940, 4600950, 4601000, 4601100, 4601110, 4602001, 4603001, 4603002,  4603003,
      4701001, 4701002, 4701003, 5101000, 5101001, 5101002, 9005003, 9005104, 120313001};
  for (int32_t n = 3600101; n <= 3600114; ++n) numbers.push_back(n);
  for (int32_t n = 3601000; n <= 3601007; ++n) numbers.push_back(n);
  for (int32_t n = 3601010; n <= 3601012; ++n) numbers.push_back(n);
  for (int32_t n = 3000100; n <= 3000150; n += 10) numbers.push_back(n);
  return numbers;
}

struct Fixture {
  std::shared_ptr<platform::Platform> platform = platform::Platform::headless();
  std::shared_ptr<RecordingMessageBox> box = std::make_shared<RecordingMessageBox>();
  std::unique_ptr<clsErrChr> err;

  explicit Fixture(TextView decimal = u".") {
    platform->messages = box;
    platform->locale = std::make_shared<platform::headless::FixedNumberLocale>(
        Text(decimal), decimal == u"," ? u"." : u",");
    err = std::make_unique<clsErrChr>(platform);
  }
};

TEST(Messages, EveryErrorNumberComposesAFilledMessage) {
  Fixture f;
  const std::vector<int32_t> numbers = all_error_numbers();
  std::set<int32_t> listed(numbers.begin(), numbers.end());
  for (auto table : {checking::general_compositions(), checking::program_compositions()}) {
    for (const checking::Composition& c : table) {
      EXPECT_TRUE(listed.count(c.error)) << c.error << " is not a known error number";
    }
  }
  for (int32_t number : numbers) {
    f.box->shown.clear();
    f.err->GenMsgErrorW(number, u"«C1»", u"«V1»", u"«C2»", u"«V2»");
    const Text& text = f.err->tError_Txt();
    ASSERT_EQ(f.box->shown.size(), 1u) << number;
    const auto& shown = f.box->shown.front();
    EXPECT_EQ(text.find(u"%%"), Text::npos) << number << ": " << to_utf8(text);
    EXPECT_EQ(shown.title.find(u"%%"), Text::npos) << number;
    EXPECT_FALSE(shown.title.empty()) << number;
    // Each text of the composition is in the catalogue, so no two
    // separators meet and the message does not start with one.
    EXPECT_FALSE(text.starts_with(u"  \r\n")) << number;
    EXPECT_EQ(text.find(u"  \r\n\r\n  \r\n\r\n"), Text::npos) << number << ": " << to_utf8(text);
    EXPECT_GT(text.size(), 10u) << number;
    EXPECT_TRUE(text.ends_with(u"  \r\n\r\n")) << number;
  }
}

TEST(Messages, CompositionsFillTheirFields) {
  struct Case {
    int32_t error;
    TextView c1, v1, c2, v2;
    TextView text;  // with messages ignored
  };
  const Case cases[] = {
      {121, u"b", u"2e10", u"", u"", u"错误：b ＝ 2e10 ＞ 1000000000，b 不应大于 1000000000。"},
      {123, u"M", u"-1e15", u"", u"",
       u"错误：M ＝ -1e15 ＜ -300000000000000，M 不应小于 -300000000000000。"},
      {155, u"h", u"0", u"b", u"200", u"错误：h ＝ 0 ≤ 200，h 应大于 b。"},
      {143, u"", u"", u"梁高 h", u"",
       u"错误：翼缘高度 h_ub(f)ub_＋h_ub(f)ub_' ≥ 梁高 h，翼缘高度 h_ub(f)ub_＋h_ub(f)ub_' 应小于 "
       u"梁高 h。"},
      {203, u"箍筋", u"无", u"抗震等级", u"一级",
       u"错误：箍筋 为 无，当抗震等级为“一级”时，“箍筋” 不应输入“无”。"},
      {1999, u"a.dat", u"", u"", u"", u"找不到文件“a.dat”，请确认指定文件是否已经被删除或移走。"},
      {39998, u"", u"", u"", u"", u"错误：输入有误导致溢出，或不可知错误。错误号：39998"},
      {3601001, u"", u"51", u"", u"",
       u"“各工况下荷载的标准值”表格中输入了 51 个工况，多于 50 个，请删除多余的工况。"},
      {3601003, u"第 3 行第 1 列", u"恒载", u"", u"",
       u"错误：“各工况下荷载的标准值”表格第 3 行第 1 列的工况“恒载”重复输入，"
       u"每个工况只能输入一次，请删除重复的工况。"},
  };
  Fixture f;
  for (const Case& c : cases) {
    f.err->GenMsgErrorW(c.error, c.c1, c.v1, c.c2, c.v2, true);
    EXPECT_EQ(f.err->tError_Txt(), c.text) << c.error;
  }
  EXPECT_TRUE(f.box->shown.empty());
}

TEST(Messages, ShownMessageIsSeparatedTitledAndCleaned) {
  Fixture f;
  f.err->GenMsgErrorW(121, u"b_ub(f)ub_|", u"2e10");
  const Text stored =
      u"错误：b_ub(f)ub_| ＝ 2e10 ＞ 1000000000，  \r\n\r\nb_ub(f)ub_| 不应大于 1000000000。  "
      u"\r\n\r\n";
  EXPECT_EQ(f.err->tError_Txt(), stored);
  ASSERT_EQ(f.box->shown.size(), 1u);
  EXPECT_EQ(f.box->shown[0].title, u"输入错误！");
  EXPECT_EQ(f.box->shown[0].text,
            u"错误：bf ＝ 2e10 ＞ 1000000000，  \r\n\r\nbf 不应大于 1000000000。  \r\n\r\n");

  // A composition with a title of its own, and an entry split into title
  // and lines.
  f.err->GenMsgErrorW(106, u"类别", u"X", u"列表");
  EXPECT_EQ(f.box->shown.back().title, u"无效输入！");
  f.err->GenMsgErrorW(4601110, u"A", u"B", u"C", u"D");
  const Text entry = clsErrChr::Internals::character(*f.err).tString(61000);
  EXPECT_EQ(f.box->shown.back().title, entry.substr(0, entry.find(u'|')));
  EXPECT_EQ(f.err->tError_Txt().find(f.box->shown.back().title), Text::npos);
}

TEST(Messages, ErrorZeroUnknownNumbersAndTheIgnoreFlag) {
  Fixture f;
  f.err->GenMsgErrorW(101, u"b", u"x", {}, {}, true);
  const Text previous = f.err->tError_Txt();
  // An unknown number repeats the previous message, separator appended.
  f.err->GenMsgErrorA(77);
  EXPECT_EQ(f.err->tError_Txt(), previous);
  f.err->bMessageIgnore(false);
  f.err->GenMsgErrorA(77);
  EXPECT_EQ(f.err->tError_Txt(), previous + u"  \r\n\r\n");
  EXPECT_EQ(f.box->shown.size(), 1u);
  // Error 0: nothing, whatever the fields hold.
  f.err->GenMsgErrorW(0, u"b", u"x");
  EXPECT_TRUE(f.err->tError_Txt().empty());
  EXPECT_EQ(f.box->shown.size(), 1u);

  // The argument sets the flag for later calls; Temp and Restore keep one
  // level.
  f.err->GenMsgErrorW(101, u"b", u"x", {}, {}, true);
  EXPECT_TRUE(f.err->bMessageIgnore());
  f.err->bMessageIgnoreTemp(false);
  f.err->bMessageIgnoreTemp(false);
  f.err->bMessageIgnoreRestore();
  EXPECT_FALSE(f.err->bMessageIgnore());
  f.err->bMessageIgnore(true);
  f.err->bMessageIgnoreTemp(false);
  f.err->bMessageIgnoreRestore();
  EXPECT_TRUE(f.err->bMessageIgnore());

  // A Variant value is written as text; the tErr form returns the message.
  Text out;
  f.err->GenMsgError(101, u"n", frame::Variant(2.5), {}, {}, true, out);
  EXPECT_EQ(out, u"错误：n 为 2.5，n 应输入有效数值。");
}

TEST(Messages, ErrorAddConAndColumnCount) {
  Fixture f;
  std::vector<int32_t> numbers(1);
  std::vector<Text> texts(1);
  f.err->ErrorAddCon(101, u"one", numbers, texts);
  f.err->ErrorAddCon(102, u"two", numbers, texts);
  EXPECT_EQ(numbers, (std::vector<int32_t>{0, 101, 102}));
  EXPECT_EQ(texts, (std::vector<Text>{u"", u"one", u"two"}));

  struct Case {
    int32_t error, count;
    TextView caption1, caption2;
  };
  const Case cases[] = {
      {4603002, 3, u"多于", u"删除"},     {4603002, 1, u"少于", u"添加"},
      {4603003, 3, u"少于", u"添加"},     {4603003, 4, u"多于", u"删除"},
      {4603001, 9, u"kept", u"kept too"},
  };
  for (const Case& c : cases) {
    f.err->tCaption1(u"kept");
    f.err->tCaption2(u"kept too");
    f.err->bMessageIgnore(true);
    f.err->ColumnNumberCheck(c.error, c.count);
    EXPECT_EQ(f.err->lError_ID(), c.error);
    EXPECT_EQ(clsErrChr::Internals::caption1(*f.err), c.caption1) << c.error << " " << c.count;
    EXPECT_EQ(clsErrChr::Internals::caption2(*f.err), c.caption2) << c.error << " " << c.count;
    if (c.error != 4603001) {
      EXPECT_NE(f.err->tError_Txt().find(c.caption1), Text::npos);
    }
  }
}

}  // namespace
}  // namespace zelkora
