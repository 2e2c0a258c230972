// Tests of reading a report's markup lines into a document.
#include "zelkora/document/read_report.h"

#include <gtest/gtest.h>

#include <random>

#include "zelkora/frame/cls_character.h"

namespace zelkora::document {
namespace {

using Kind = Paragraph::Kind;
using Piece = document::Run;  // (gtest has a Run of its own)

// A report as a program writes it: header, headings, a broken equation, a
// padded table.
Text sample_report(clsCharacter& chr) {
  chr.bSuperSub(true);
  chr.CalHead(u"钢筋混凝土梁配筋计算", u"三号楼 KL-3", {59899}, u"2026-11-25");
  chr.Txt(chr.tChrSerial(1) + u"设计资料" + chr.tConEnter1());
  chr.Txt(u"纵筋 4\uE00220，A_ub(s)ub_ ＝ 1256mm_up(2)up_" + chr.tConEnter1());
  chr.Txt(chr.tChrSerial2(1) + u"受弯" + chr.tConEnter1());
  chr.SplitLineCalEQ(
      u"A_ub(s)ub_ ＝ f_ub(c)ub_·b·ξ·h_ub(0)ub_ / f_ub(y)ub_ ＝ 14.3 × 250 × 0.1792 × 465 / 360"
      u" ＝ 827mm_up(2)up_ ＞ A_ub(s,min)ub_ ＝ 0.2% × 250 × 500 ＝ 250mm_up(2)up_");
  chr.Txt(chr.tChrSl(1) + u"验算" + chr.tConEnter1());
  chr.ListOut_Ubound(2);
  chr.ListOut_Initialize(0, 16, zkRightJustify, 1);
  chr.ListOut_Index_Align(0, zkLeftJustify);
  chr.ListOut_TextAddRow({u"项目", u"计算值", u"限值"}, 0, u"    ");
  chr.ListOut_TextAddRow({u"配筋率 ρ", u"0.68%", u"0.20%"}, 0, u"    ");
  chr.ListOut_TextAddRow({u"受压区高度 ξ", u"0.172", u"0.518"}, 0, u"    ");
  chr.Txt(u"各项验算均满足。" + chr.tConEnter1());
  return chr.Txt();
}

const Paragraph& para(const Document& doc, std::size_t i) {
  return std::get<Paragraph>(doc.blocks.at(i));
}

TEST(ReadReport, ABeamReportsParts) {
  clsCharacter chr(platform::Platform::headless());
  ReadOptions options;
  options.program = u"梁配筋计算";
  const Document doc = read_report(sample_report(chr), options);
  EXPECT_EQ(doc.title, u"钢筋混凝土梁配筋计算");
  EXPECT_EQ(doc.project, u"三号楼 KL-3");
  EXPECT_EQ(doc.program, u"梁配筋计算");
  EXPECT_EQ(doc.signature.date, u"2026-11-25");
  // title, 工程名称, 设计依据, standard, date, rule, heading 1, text, heading 2,
  // equation (2 lines), heading 3, table, conclusion
  const struct {
    std::size_t block;
    Kind kind;
    int level;
    const char16_t* text;
  } expected[] = {
      {0, Kind::kTitle, 0, u"钢筋混凝土梁配筋计算"},
      {1, Kind::kText, 0, u"工程名称：三号楼 KL-3"},
      {5, Kind::kRule, 0, u""},
      {6, Kind::kHeading, 1, u"一、设计资料"},
      {8, Kind::kHeading, 2, u"（一）受弯"},
      {9, Kind::kText, 0, nullptr},
      {10, Kind::kEquation, 0, nullptr},
      {11, Kind::kHeading, 3, u"(1)验算"},
      {13, Kind::kText, 0, u"各项验算均满足。"},
  };
  ASSERT_EQ(doc.blocks.size(), 14u);
  for (const auto& e : expected) {
    SCOPED_TRACE(e.block);
    const Paragraph& p = para(doc, e.block);
    EXPECT_EQ(p.kind, e.kind);
    EXPECT_EQ(p.level, e.level);
    if (e.text) {
      Text text;
      for (const Piece& run : p.runs) text += run.text;
      EXPECT_EQ(text, e.text);
    }
  }
  EXPECT_GT(para(doc, 10).indent, 0);
  EXPECT_EQ(para(doc, 7).runs, (std::vector<Piece>{{u"纵筋 4"},
                                                   {u"\uE002", false, Script::kNormal, true},
                                                   {u"20，A"},
                                                   {u"s", false, Script::kSubscript},
                                                   {u" ＝ 1256mm"},
                                                   {u"2", false, Script::kSuperscript}}));
  const Table& table = std::get<Table>(doc.blocks.at(12));
  EXPECT_TRUE(table.header);
  EXPECT_EQ(table.indent, 5);  // the prefix and the left column's blank
  EXPECT_EQ(table.align, (std::vector<Align>{Align::kLeft, Align::kRight, Align::kRight}));
  ASSERT_EQ(table.rows.size(), 3u);
  EXPECT_EQ(table.rows[2][0], (std::vector<Piece>{{u"受压区高度 ξ"}}));
  EXPECT_EQ(table.rows[1][2], (std::vector<Piece>{{u"0.20%"}}));
}

TEST(ReadReport, RunsOfMarkup) {
  const struct {
    const char16_t* line;
    std::vector<Piece> runs;
  } cases[] = {
      {u"mm_up(2)up_", {{u"mm"}, {u"2", false, Script::kSuperscript}}},
      {u"_bb(A_ub(s)ub_)bb_", {{u"A", true}, {u"s", true, Script::kSubscript}}},
      {u"x)ub_y|z", {{u"xyz"}}},  // a stray end marker and "|" go
      {u"_up(a_ub(b)up_c",
       {{u"a", false, Script::kSuperscript}, {u"bc", false, Script::kSubscript}}},
      {u"\uE000\uE003", {{u"\uE000\uE003", false, Script::kNormal, true}}},
      {u"_bb(", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(read_runs(c.line), c.runs) << to_utf8(c.line);
}

// Lines that look alike but are not tables stay paragraphs.
TEST(ReadReport, TablesOnlyWhereColumnsLineUp) {
  const struct {
    const char16_t* text;
    bool table;
  } cases[] = {
      {u"1.fc ＝ 14.3MPa\r\n2.fy ＝ 360MPa\r\n", false},  // one blank apart
      {u"a  b\r\n", false},                               // one line
      {u"b     h     A\r\n250   500   1.25E5\r\n", true},
      {u"b     h\r\n250\r\n", false},      // one row with two cells
      {u"x  1\r\n      y  2\r\n", false},  // the columns do not line up
  };
  for (const auto& c : cases) {
    const Document doc = read_report(c.text);
    const bool has_table = std::any_of(doc.blocks.begin(), doc.blocks.end(), [](const Block& b) {
      return std::holds_alternative<Table>(b);
    });
    EXPECT_EQ(has_table, c.table) << to_utf8(c.text);
  }
}

// Every character that is not a blank, a marker or a field separator comes
// out, in order, whatever the lines are.
TEST(ReadReport, NothingIsDropped) {
  const std::u16string alphabet = u" _()bupu|\r\n　一、（）12.＝─\uE002x";
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    Text text;
    const int length = static_cast<int>(random() % 60);
    for (int i = 0; i < length; ++i) text.push_back(alphabet[random() % alphabet.size()]);
    const auto visible = [](TextView t) {
      Text out;
      for (char16_t c : t) {
        if (c != u' ' && c != u'　' && c != u'\r' && c != u'\n' && c != u'─') out.push_back(c);
      }
      return out;
    };
    Text expected;
    for (const Piece& run : read_runs(text)) expected += run.text;
    Text got;
    for (const Block& block : read_report(text).blocks) {
      if (const auto* p = std::get_if<Paragraph>(&block)) {
        for (const Piece& run : p->runs) got += run.text;
      } else {
        for (const auto& row : std::get<Table>(block).rows) {
          for (const auto& cell : row) {
            for (const Piece& run : cell) got += run.text;
          }
        }
      }
    }
    ASSERT_EQ(visible(got), visible(expected)) << to_utf8(text);
  }
}

// Where a table begins and ends, its captions and its columns' alignment.
TEST(ReadReport, TablesKeepToTheirRows) {
  const struct {
    const char16_t* text;
    std::size_t rows;
    bool header;
    std::vector<Align> align;
  } cases[] = {
      // a heading over the table and a note under it whose words cross its gaps
      {u"_bb((1))bb_截面  尺寸\r\n    项目      弯矩      轴力\r\n    柱1      120.5     850.0\r\n"
       u"    柱2       12.0      85.5\r\n    注：  轴力以受压为正。\r\n",
       3,
       true,
       {Align::kLeft, Align::kRight, Align::kRight}},
      // a caption with a unit's superscript; a centred caption over numbers
      // flush right; numbers of one width
      {u"A_ub(s)ub_(mm_up(2)up_)     剪力(kN)        N\r\n    1256          85.3     120\r\n"
       u"     942         112.6     130\r\n",
       3,
       true,
       {Align::kRight, Align::kRight, Align::kRight}},
      // CR CR LF line ends
      {u"a    b\r\r\n1    2\r\r\n3    4\r\r\n", 3, true, {Align::kRight, Align::kRight}},
  };
  for (const auto& c : cases) {
    const Document doc = read_report(c.text);
    const auto table = std::find_if(doc.blocks.begin(), doc.blocks.end(), [](const Block& b) {
      return std::holds_alternative<Table>(b);
    });
    ASSERT_NE(table, doc.blocks.end()) << to_utf8(c.text);
    const Table& t = std::get<Table>(*table);
    EXPECT_EQ(t.rows.size(), c.rows) << to_utf8(c.text);
    EXPECT_EQ(t.header, c.header) << to_utf8(c.text);
    EXPECT_EQ(t.align, c.align) << to_utf8(c.text);
  }
}

// What a line becomes beside its neighbours.
TEST(ReadReport, KindsOfLines) {
  const struct {
    const char16_t* text;
    std::vector<Kind> kinds;
  } cases[] = {
      {u"x ＝ 1 + 2\r\n    ＋ 3\r\n    － 4\r\n", {Kind::kText, Kind::kEquation, Kind::kEquation}},
      // a bold line over a rule is no title unless centred
      {u"_bb(一、)bb_设计资料\r\n────────\r\n", {Kind::kHeading, Kind::kRule}},
      {u"   _bb(基础计算)bb_\r\n────────\r\n", {Kind::kTitle, Kind::kRule}},
  };
  for (const auto& c : cases) {
    std::vector<Kind> kinds;
    for (const Block& b : read_report(c.text).blocks) kinds.push_back(std::get<Paragraph>(b).kind);
    EXPECT_EQ(kinds, c.kinds) << to_utf8(c.text);
  }
}

TEST(ReadReport, FileBytesInEveryEncodingASuiteProgramWrites) {
  const struct {
    std::string bytes;
    const char16_t* text;
  } cases[] = {
      {"\xEF\xBB\xBF"
       "4\xEE\x80\x82"
       "20",
       u"4\uE00220"},                                        // UTF-8 with its mark
      {"A\xE2\x82\x9B", u"A\u209B"},                         // UTF-8 without
      {std::string("\xFF\xFE\x00\x4E\x41\x00", 6), u"一A"},  // UTF-16 LE
      {std::string("\xFE\xFF\x4E\x00\x00\x41", 6), u"一A"},  // UTF-16 BE
      {"\xE4\xB8\x80\xE4\xBA\x8C\xA9", u"一二\uFFFD"},       // UTF-8 with a damaged byte
      {"\xD2\xBB\xAA\xA3", u"一\uE002"},                     // code page 936
  };
  for (const auto& c : cases) EXPECT_EQ(report_text_from_bytes(c.bytes), c.text) << c.bytes;
}

TEST(ReadReport, PlainTextKeepsTheLinesWithLettersForSymbols) {
  clsCharacter chr(platform::Platform::headless());
  ReadOptions options;
  options.signature.checked_by = u"李工";
  const Text plain = plain_text(read_report(sample_report(chr), options));
  for (const char16_t* line : {u"工程名称：三号楼 KL-3\r\n",
                               u"计算：________  校对：李工  审核：________  日期：2026-11-25\r\n",
                               u"纵筋 4C20，As ＝ 1256mm2\r\n", u"一、设计资料\r\n"}) {
    EXPECT_NE(plain.find(line), Text::npos) << to_utf8(line);
  }
  EXPECT_NE(plain.find(u"受压区高度 ξ"), Text::npos);
  EXPECT_EQ(plain.find(u'\uE002'), Text::npos);
}

}  // namespace
}  // namespace zelkora::document
