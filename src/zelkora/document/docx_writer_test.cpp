#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "zelkora/document/figure_emf.h"
#include "zelkora/document/writers.h"
#include "zelkora/document/xml_text.h"
#include "zelkora/document/zip_container.h"

namespace zelkora::document {
namespace {

std::uint32_t le(std::string_view s, std::size_t at, int bytes) {
  std::uint32_t v = 0;
  for (int k = bytes - 1; k >= 0; --k) v = (v << 8) | static_cast<unsigned char>(s[at + k]);
  return v;
}

std::string inflate_raw(std::string_view data, std::size_t size) {
  std::string out(size, '\0');
  z_stream z{};
  inflateInit2(&z, -15);
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  z.avail_in = static_cast<uInt>(data.size());
  z.next_out = reinterpret_cast<Bytef*>(out.data());
  z.avail_out = static_cast<uInt>(out.size());
  const int result = inflate(&z, Z_FINISH);
  inflateEnd(&z);
  EXPECT_EQ(result, Z_STREAM_END);
  return out;
}

// The entries of an archive, read as readers do: from the central directory
// to each local header, every CRC checked.
std::map<std::string, std::string> unzip(std::string_view zip) {
  std::map<std::string, std::string> entries;
  const std::size_t end = zip.size() - 22;
  EXPECT_EQ(le(zip, end, 4), 0x06054b50u);
  std::size_t at = le(zip, end + 16, 4);
  for (std::uint32_t n = le(zip, end + 10, 2); n > 0; --n) {
    EXPECT_EQ(le(zip, at, 4), 0x02014b50u);
    const std::uint32_t method = le(zip, at + 10, 2), crc = le(zip, at + 16, 4);
    const std::uint32_t packed = le(zip, at + 20, 4), size = le(zip, at + 24, 4);
    const std::uint32_t name_size = le(zip, at + 28, 2), local = le(zip, at + 42, 4);
    const std::string name(zip.substr(at + 46, name_size));
    EXPECT_EQ(le(zip, local, 4), 0x04034b50u);
    const std::string_view data = zip.substr(local + 30 + le(zip, local + 26, 2), packed);
    std::string content = method == 8 ? inflate_raw(data, size) : std::string(data);
    EXPECT_EQ(crc32_of(content), crc) << name;
    entries[name] = std::move(content);
    at += 46 + name_size;
  }
  return entries;
}

TEST(ZipWriter, EntriesComeBackThroughTheCentralDirectory) {
  std::string noise;
  for (std::uint32_t x = 1; noise.size() < 5000;)
    noise += static_cast<char>((x = x * 1103515245 + 12345) >> 24);
  const std::map<std::string, std::string> entries = {
      {"empty", ""},
      {"a/small.xml", "<a/>"},
      {"noise.bin", noise},
      {"word/big.xml", std::string(300000, 'x') + "end"}};
  ZipWriter zip;
  for (const auto& [name, data] : entries) zip.add(name, data);
  const std::string bytes = std::move(zip).finish();
  EXPECT_EQ(unzip(bytes), entries);
  ZipWriter again;
  for (const auto& [name, data] : entries) again.add(name, data);
  EXPECT_EQ(std::move(again).finish(), bytes) << "the same entries give the same bytes";
  // Written in pieces, deflated as they come: the same entries come back.
  ZipWriter pieces;
  for (const auto& [name, data] : entries) {
    pieces.begin_entry(name);
    for (std::size_t at = 0; at < data.size(); at += 7001)
      pieces.write(std::string_view(data).substr(at, 7001));
    pieces.end_entry();
  }
  EXPECT_EQ(unzip(std::move(pieces).finish()), entries);
}

// Whether `xml` is well-formed as far as a writer can get it wrong: UTF-8
// of characters XML allows, tags that nest, quoted attributes, known entities.
::testing::AssertionResult well_formed(const std::string& xml) {
  std::size_t bad = 0;
  Text text;
  if (!zelkora::append_utf8(xml, text, &bad))
    return ::testing::AssertionFailure() << "UTF-8 at " << bad;
  for (char16_t c : text) {
    if ((c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c >= 0xFFFE) {
      return ::testing::AssertionFailure() << "character " << int(c);
    }
  }
  std::vector<std::string> open;
  std::size_t i = xml.starts_with("<?xml") ? xml.find("?>") + 2 : 0;
  const auto fail = [&](const char* what) {
    return ::testing::AssertionFailure() << what << " at " << i;
  };
  while (i < xml.size()) {
    if (xml[i] == '&') {
      const std::size_t semi = xml.find(';', i);
      const std::string entity = xml.substr(i, semi - i + 1);
      if (entity != "&amp;" && entity != "&lt;" && entity != "&gt;" && entity != "&quot;" &&
          entity != "&apos;") {
        return fail("entity");
      }
    } else if (xml[i] == '<') {
      const bool closing = xml[i + 1] == '/';
      const std::size_t name_end = xml.find_first_of(" />", i + 1 + closing);
      const std::string name = xml.substr(i + 1 + closing, name_end - i - 1 - closing);
      std::size_t j = name_end;
      while (xml[j] == ' ') {  // attributes: name="value"
        const std::size_t eq = xml.find('=', j);
        if (xml[eq + 1] != '"') return fail("attribute");
        const std::size_t close = xml.find('"', eq + 2);
        if (xml.substr(eq + 2, close - eq - 2).find('<') != std::string::npos) return fail("<");
        j = close + 1;
      }
      if (closing) {
        if (open.empty() || open.back() != name) return fail("end tag");
        open.pop_back();
      } else if (xml[j] != '/') {
        open.push_back(name);
      }
      i = xml.find('>', j);
    }
    ++i;
  }
  return open.empty() ? ::testing::AssertionSuccess() : fail("unclosed");
}

document::Run run(Text text, bool bold = false, Script script = Script::kNormal) {
  return document::Run{.text = std::move(text), .bold = bold, .script = script};
}

Paragraph text(std::vector<document::Run> runs, Paragraph::Kind kind = Paragraph::Kind::kText) {
  return Paragraph{.kind = kind, .level = 2, .indent = 4, .runs = std::move(runs)};
}

Shape shape(Shape::Kind kind, std::vector<double> points) {
  Shape s;
  s.kind = kind;
  s.points = std::move(points);
  s.fill = 0x112233;
  s.text = Text(u"\xD800截面 250×500");  // a lone surrogate first
  return s;
}

TEST(WriteDocx, PartsAreWellFormedAndCarryTheDocument) {
  Table table;
  table.align = {Align::kLeft, Align::kRight};
  table.widths = {10, 6};
  table.header = true;
  table.rows = {{{run(u"项目")}, {run(u"数值")}},
                {{run(u"A"), run(u"s", false, Script::kSubscript)}, {run(u"1.5")}}};
  Figure figure;
  figure.width_mm = 40;
  figure.height_mm = 30;
  figure.caption = u"图 1";
  figure.shapes = {shape(Shape::Kind::kRect, {1, 1, 39, 29}), shape(Shape::Kind::kText, {20, 15})};
  const Text hostile = Text(u"a<&>\"b\x01\t") + char16_t(0xD800) + u"c" + char16_t(0xFFFF);
  struct Case {
    const char* name;
    std::vector<Block> blocks;
    std::vector<std::string> in_body;  // in this order
  } cases[] = {
      {"empty", {}, {"计算：", "<w:u w:val=\"single\"/>", "</w:tbl><w:p/><w:sectPr>"}},
      {"runs",
       {text({run(u"A"), run(u"s", false, Script::kSubscript), run(u"mm"),
              run(u"2", false, Script::kSuperscript), run(u"粗", true)}),
        text({document::Run{.text = u"\uE002", .grade_symbol = true}})},
       {"<w:vertAlign w:val=\"subscript\"/>", "<w:vertAlign w:val=\"superscript\"/>", "<w:b/>",
        "w:eastAsia=\"Zelkora Grade\"", "\uE002"}},
      {"signature after the rule",
       {text({run(u"标题")}, Paragraph::Kind::kTitle), text({run(u"──")}, Paragraph::Kind::kRule),
        text({run(u"正文")}, Paragraph::Kind::kHeading)},
       {"Title", "标题", "Rule", "计算：", "校对：", "审核：", "日期：", "Heading2", "正文"}},
      {"table and figure",
       {table, figure},
       {"<w:tblHeader/>", "<w:b/>", "项目", "<w:b/>", "数值", "<w:tc>", "<w:jc w:val=\"right\"/>",
        "1.5", "r:embed", "cx=\"1440000\" cy=\"1080000\"", "图 1"}},
      {"hostile text",
       {text({run(hostile)})},
       {"a&lt;&amp;&gt;&quot;b</w:t><w:tab/>", "\uFFFDc\uFFFD"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Document document;
    document.title = hostile;
    document.blocks = c.blocks;
    const auto parts = unzip(write_docx(document));
    for (const auto& [name, data] : parts) {
      if (name.ends_with(".xml") || name.ends_with(".rels")) {
        EXPECT_TRUE(well_formed(data)) << name;
      }
    }
    const std::string& body = parts.at("word/document.xml");
    std::size_t at = 0;
    for (const std::string& expected : c.in_body) {
      at = body.find(expected, at);
      ASSERT_NE(at, std::string::npos) << expected;
    }
    const auto figures = std::count_if(c.blocks.begin(), c.blocks.end(), [](const Block& b) {
      return std::holds_alternative<Figure>(b);
    });
    EXPECT_EQ(static_cast<long>(parts.count("word/media/figure1.emf")), figures);
    EXPECT_NE(parts.at("word/footer1.xml").find(" PAGE </w:instrText>"), std::string::npos);
    EXPECT_NE(parts.at("word/footer1.xml").find(" NUMPAGES </w:instrText>"), std::string::npos);
  }
}

TEST(XmlText, EscapesAndKeepsToTheCharactersXmlAndHtmlAllow) {
  const struct {
    Text text;
    std::string xml;
  } cases[] = {
      {u"a<b>&\"c'", "a&lt;b&gt;&amp;&quot;c&apos;"},
      {u"\t\x01\n\r\x1F\x7F\x85", "\t"},            // controls, C1 too (HTML refuses them)
      {u"截面\U0001D400", "截面\xF0\x9D\x90\x80"},  // a pair: one code point
      {Text(1, char16_t(0xDC00)) + u"x" + char16_t(0xD800), "\uFFFDx\uFFFD"},
      {Text(1, char16_t(0xFFFE)) + char16_t(0xFFFF) + u"\uFDD0\uE002", "\uFFFD\uFFFD\uFFFD\uE002"},
  };
  for (const auto& c : cases) {
    std::string out;
    append_xml_text(out, c.text);
    EXPECT_EQ(out, c.xml);
  }
}

TEST(WriteDocx, SizesThatAreNoSizesStillGiveAPage) {
  Document document;
  document.page = {.width_mm = std::nan(""),
                   .height_mm = -5,
                   .top_mm = 1e300,
                   .left_mm = -1,
                   .font_pt = std::numeric_limits<double>::infinity()};
  Table wide;
  wide.widths = {-3};
  wide.rows = {{{run(u"a")}, {run(u"b")}, {run(u"c")}}};
  Paragraph indented = text({run(u"x")});
  indented.indent = 1 << 30;
  document.blocks = {wide, Table{}, indented};
  const auto parts = unzip(write_docx(document));
  const std::string& body = parts.at("word/document.xml");
  EXPECT_TRUE(well_formed(body));
  EXPECT_EQ(body.find("nan"), std::string::npos);
  EXPECT_NE(body.find("<w:pgSz w:w=\"11906\" w:h=\"2835\"/>"), std::string::npos);
  EXPECT_NE(body.find("w:top=\"945\" w:right=\"1134\" w:bottom=\"945\" w:left=\"0\""),
            std::string::npos);
  std::size_t columns = 0;
  for (std::size_t at = 0; (at = body.find("<w:gridCol ", at)) != std::string::npos; ++at) {
    ++columns;
  }
  EXPECT_EQ(columns, 4u + 3u) << "the signature's four and the wide table's three";
}

// The records of a metafile: type and size each, in order.
std::vector<std::uint32_t> emf_records(const std::string& emf) {
  std::vector<std::uint32_t> types;
  for (std::size_t at = 0; at + 8 <= emf.size();) {
    const std::uint32_t size = le(emf, at + 4, 4);
    if (size < 8 || size % 4 != 0) return {};
    types.push_back(le(emf, at, 4));
    at += size;
  }
  return types;
}

TEST(FigureEmf, RecordsChainFromHeaderToEnd) {
  const Shape::Kind kinds[] = {Shape::Kind::kLine,     Shape::Kind::kRect,    Shape::Kind::kEllipse,
                               Shape::Kind::kPolyline, Shape::Kind::kPolygon, Shape::Kind::kText};
  const std::uint32_t drawn_by[] = {54, 43, 42, 4, 3, 84};  // LineTo, Rectangle, ... ExtTextOutW
  for (int k = 0; k < 6; ++k) {
    Figure figure;
    figure.width_mm = 50;
    figure.height_mm = 1e300;
    figure.shapes = {shape(kinds[k], {1, 2, 3, 4, 5, 6}), shape(kinds[k], {1})};  // {1}: nothing
    const std::string emf = figure_emf(figure);
    const auto types = emf_records(emf);
    ASSERT_GE(types.size(), 3u);
    EXPECT_EQ(types.front(), 1u);
    EXPECT_EQ(types.back(), 14u);
    EXPECT_EQ(le(emf, 48, 4), emf.size());
    EXPECT_EQ(le(emf, 52, 4), types.size());
    EXPECT_EQ(le(emf, 32, 4), 5000u);    // frame: 0.01 mm
    EXPECT_EQ(le(emf, 36, 4), 100000u);  // the height kept to 1 m
    EXPECT_EQ(std::count(types.begin(), types.end(), drawn_by[k]), 1) << k;
  }
}

}  // namespace
}  // namespace zelkora::document
