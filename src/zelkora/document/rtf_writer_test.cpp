// Tests of the RTF writer: texts read back as an RTF reader reads them, the
// words a report's parts become, and a valid file from hostile documents.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "zelkora/document/writers.h"

namespace zelkora::document {
namespace {

Paragraph paragraph(std::vector<Run> runs, Paragraph::Kind kind = Paragraph::Kind::kText) {
  Paragraph p;
  p.kind = kind;
  p.runs = std::move(runs);
  return p;
}

std::size_t count(const std::string& text, const std::string& word) {
  std::size_t n = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++n;
  return n;
}

// Whether every group is closed and none closes before it opens.
bool balanced(const std::string& rtf) {
  int depth = 0;
  for (std::size_t i = 0; i < rtf.size(); ++i) {
    if (rtf[i] == '\\') {
      ++i;  // an escaped brace or backslash, or a control word's first letter
    } else if (rtf[i] == '{') {
      ++depth;
    } else if (rtf[i] == '}' && --depth < 0) {
      return false;
    }
  }
  return depth == 0;
}

// The text of an RTF fragment as a reader takes it: \uN with its \ucN
// fallback characters skipped, \'xx as a byte, control words dropped, the
// groups' \uc restored at their end.
Text read_text(const std::string& rtf) {
  Text text;
  std::vector<int> skips{1};
  int pending = 0;  // fallback characters still to skip
  for (std::size_t i = 0; i < rtf.size(); ++i) {
    const char c = rtf[i];
    if (c == '{' || c == '}') {
      c == '{' ? skips.push_back(skips.back()) : skips.pop_back();
      continue;
    }
    if (c == '\n' || c == '\r') continue;
    if (c != '\\') {
      pending > 0 ? --pending : (text += static_cast<char16_t>(c), 0);
      continue;
    }
    const char next = rtf[++i];
    if (next == '\'') {
      i += 2;
      pending > 0 ? --pending : (text += u'?', 0);
      continue;
    }
    if (!std::isalpha(static_cast<unsigned char>(next))) {
      text += next == '~' ? u'\u00A0' : static_cast<char16_t>(next);
      continue;
    }
    std::size_t end = i;
    while (std::isalpha(static_cast<unsigned char>(rtf[end]))) ++end;
    const std::string word = rtf.substr(i, end - i);
    std::size_t digits = end;
    if (rtf[digits] == '-') ++digits;
    while (std::isdigit(static_cast<unsigned char>(rtf[digits]))) ++digits;
    const int value = digits > end ? std::stoi(rtf.substr(end, digits - end)) : 0;
    i = (rtf[digits] == ' ' ? digits : digits - 1);
    if (word == "u") {
      text += static_cast<char16_t>(value);
      pending = skips.back();
    } else if (word == "uc") {
      skips.back() = value;
    } else if (word == "tab") {
      text += u'\t';
    } else if (word == "line") {
      text += u'\n';
    }
  }
  return text;
}

// The last paragraph of the file (the signature comes first).
std::string last_paragraph(const std::string& rtf) {
  const std::size_t start = rtf.rfind("\\pard");
  return rtf.substr(start, rtf.rfind("\\par\n") - start);
}

TEST(WriteRtf, TextsReadBackAsTheyWereWritten) {
  struct Case {
    Text text;
    bool grade;
    Text read;
    std::string written;  // a part of the file
  };
  const Case cases[] = {
      {u"a\\b{c}d", false, u"a\\b{c}d", "a\\\\b\\{c\\}d"},
      {u"混凝土", false, u"混凝土", "\\uc2\\u28151\\'bb\\'ec"},
      {u"中\u20AC1", false, u"中\u20AC1", "\\uc1\\u8364\\'80\\f1 1"},  // a byte in code page 936
      {u"\u0E01", false, u"\u0E01", "\\u3585?"},                       // none
      {u"\uE000\uE003", true, u"\uE000\uE003", "\\f2 \\u-8192A\\u-8189D"},
      {u"\uE001", false, u"\uE001", "\\u-8191\\'aa\\'a2"},      // not a grade run
      {u"x\xD800y\xDC00", false, u"x\uFFFDy\uFFFD", "\\u-3?"},  // lone surrogates
      {u"\U0001F600", false, u"\U0001F600", "\\u-10179?\\u-8704?"},
      {u"a\x01\x1F\x7F\tb\nc", false, u"a\tb\nc", "\\tab "},
  };
  for (const Case& c : cases) {
    Document doc;
    doc.blocks.emplace_back(paragraph({{c.text, false, Script::kNormal, c.grade}}));
    const std::string rtf = write_rtf(doc);
    EXPECT_TRUE(balanced(rtf));
    EXPECT_NE(rtf.find(c.written), std::string::npos) << c.written;
    EXPECT_EQ(read_text(last_paragraph(rtf)), c.read) << c.written;
  }
}

TEST(WriteRtf, ReportPartsBecomeTheirWords) {
  Document doc;
  doc.program = u"梁配筋计算";
  doc.project = u"某工程";
  doc.signature.calculated_by = u"张三";
  doc.blocks.push_back(paragraph({{u"标题"}}, Paragraph::Kind::kTitle));
  doc.blocks.push_back(paragraph({}, Paragraph::Kind::kRule));
  Paragraph heading = paragraph({{u"（一）"}}, Paragraph::Kind::kHeading);
  heading.level = 2;
  heading.indent = 4;
  doc.blocks.push_back(heading);
  document::Run super{u"2"};
  super.script = Script::kSuperscript;
  document::Run sub{u"s"};
  sub.script = Script::kSubscript;
  sub.bold = true;
  doc.blocks.push_back(paragraph({{u"A"}, sub, {u"mm"}, super}));
  Table table;
  table.header = true;
  table.align = {Align::kLeft, Align::kCenter, Align::kRight};
  table.rows = {{{{u"a"}}, {{u"b"}}, {{u"c"}}}, {{{u"1"}}, {{u"2"}}}};  // a short row
  doc.blocks.push_back(table);
  const std::string rtf = write_rtf(doc);

  struct Part {
    std::string word;
    std::size_t times;
  };
  const Part parts[] = {
      {"{\\rtf1\\ansi\\ansicpg936\\deff0", 1},
      {"{\\f0\\fnil\\fcharset134\\fprq2 \\'cb\\'ce\\'cc\\'e5", 1},
      {"\\fcharset0\\fprq2 Zelkora Grade;", 1},
      {"\\paperw11906\\paperh16838\\margl1417\\margr1134\\margt1417\\margb1134", 1},
      {"{\\header", 1},
      {"{\\footer", 1},
      {"{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}", 1},
      {"{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}", 1},
      {"\\pard\\plain\\qc\\b", 1},  // the title
      {"\\s2\\ql\\keepn\\outlinelevel1\\li420\\b", 1},
      {"{\\super ", 1},
      {"{\\b\\sub ", 1},
      {"\\cellx", 6},
      {"\\trhdr", 1},
      {"\\cell\\", 6},  // every cell, the short row filled up
      {"\\row", 2},
      {"\\intbl\\qr", 2},
      {"{\\ul \\~", 3},  // the blanks of 校对, 审核 and the date
  };
  for (const Part& part : parts) EXPECT_EQ(count(rtf, part.word), part.times) << part.word;

  // The signature follows the rule.
  const std::size_t rule = rtf.find("\\ql\\brdrb");
  const std::size_t signature = rtf.find("\\u-29791\\'bc\\'c6\\u31639\\'cb\\'e3\\u-230");  // 计算：
  EXPECT_LT(rule, signature);
  EXPECT_LT(signature, rtf.find("\\outlinelevel1\\li"));
  EXPECT_NE(rtf.find("\\u24352\\'d5\\'c5"), std::string::npos);  // 张
}

TEST(WriteRtf, HostileDocumentsGiveValidFiles) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Document doc;
  doc.page = {nan, -5, 1e300, nan, 0, 0, nan};
  doc.title = u"}{\\";
  Table empty_row;
  empty_row.indent = -3;
  empty_row.rows.emplace_back();  // a row without cells
  Figure figure;
  figure.width_mm = nan;
  figure.caption = u"图{1}";
  doc.blocks.insert(doc.blocks.end(), {Table{}, empty_row, figure});
  Paragraph odd = paragraph({{u"x"}}, Paragraph::Kind::kHeading);
  odd.level = 99;
  odd.indent = 1 << 30;
  odd.align = static_cast<Align>(7);
  doc.blocks.push_back(odd);
  const std::string rtf = write_rtf(doc);
  EXPECT_TRUE(balanced(rtf));
  EXPECT_NE(rtf.find("\\paperw11906\\paperh2835"), std::string::npos);
  EXPECT_EQ(count(rtf, "\\trowd"), 0u);
  EXPECT_NE(rtf.find("\\s3\\ql"), std::string::npos);
  EXPECT_TRUE(balanced(write_rtf(Document{})));
}

}  // namespace
}  // namespace zelkora::document
