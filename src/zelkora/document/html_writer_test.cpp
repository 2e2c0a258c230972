// Tests of the HTML writer: escaped texts, a body whose tags nest whatever
// the texts hold, and what tables, figures, grade symbols and the page become.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zelkora/document/writers.h"
#include "zelkora/platform/grade_font.h"

namespace zelkora::document {
namespace {

Paragraph paragraph(std::vector<Run> runs, Paragraph::Kind kind = Paragraph::Kind::kText) {
  Paragraph p;
  p.kind = kind;
  p.runs = std::move(runs);
  return p;
}

Shape shape(Shape::Kind kind, std::vector<double> points) {
  Shape s;
  s.kind = kind;
  s.points = std::move(points);
  return s;
}

std::string body_of(const std::string& html) {
  const std::size_t start = html.find("<body>");
  return html.substr(start, html.find("</body>") - start + 7);
}

// Whether every tag of the body is closed in order (void elements written
// "<x/>"), so no "<" of a text was left as it was.
bool tags_nest(const std::string& body) {
  std::vector<std::string> open;
  for (std::size_t at = body.find('<'); at != std::string::npos; at = body.find('<', at + 1)) {
    const std::size_t end = body.find('>', at);
    if (end == std::string::npos) return false;
    const std::string tag = body.substr(at + 1, end - at - 1);
    if (tag.empty()) return false;
    const std::string name =
        tag.substr(tag[0] == '/', tag.find_first_of(" />", 1) - (tag[0] == '/'));
    if (name.empty() ||
        name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789") != std::string::npos)
      return false;
    if (tag.back() == '/') continue;
    if (tag[0] != '/') {
      open.push_back(name);
    } else if (open.empty() || open.back() != name) {
      return false;
    } else {
      open.pop_back();
    }
  }
  return open.empty();
}

TEST(WriteHtml, TextsAreEscapedAndCleaned) {
  struct Case {
    Text text;
    std::string written;
  };
  // Every text of the file goes through the escaper (its cases are in
  // docx_writer_test.cpp).
  const Case cases[] = {
      {u"<a href=\"x\">&'\x01\xD800", "&lt;a href=&quot;x&quot;&gt;&amp;&apos;\xEF\xBF\xBD"},
  };
  for (const Case& c : cases) {
    Document doc;
    doc.title = c.text;
    doc.program = c.text;
    Figure figure;
    figure.caption = c.text;
    doc.blocks.insert(doc.blocks.end(), {paragraph({{c.text}}), figure});
    const std::string html = write_html(doc);
    EXPECT_NE(html.find("<title>" + c.written + "</title>"), std::string::npos) << c.written;
    EXPECT_NE(html.find("<p>" + c.written + "</p>"), std::string::npos) << c.written;
    EXPECT_NE(html.find("<figcaption>" + c.written), std::string::npos) << c.written;
    EXPECT_TRUE(tags_nest(body_of(html))) << c.written;
  }
}

TEST(WriteHtml, ReportPartsBecomeTheirElements) {
  Document doc;
  doc.program = u"梁配筋计算";
  doc.signature.date = u"2026-11-26";
  Paragraph heading = paragraph({{u"(1)"}}, Paragraph::Kind::kHeading);
  heading.level = 3;
  heading.indent = 4;
  const std::vector<document::Run> runs = {{u"A"},
                                           {u"s", true, Script::kSubscript},
                                           {u"2", false, Script::kSuperscript},
                                           {u"\uE002", false, Script::kNormal, true}};
  Table table;
  table.align = {Align::kLeft, Align::kRight};
  table.header = true;
  table.rows = {{{{u"名称"}}, {{u"值"}}}, {{{u"a"}}, {{u"1"}}}};
  Figure figure;
  figure.width_mm = 100;
  figure.height_mm = 50;
  figure.caption = u"图 1";
  figure.shapes = {
      shape(Shape::Kind::kLine, {0, 0, 100, 50}), shape(Shape::Kind::kRect, {80, 40, 20, 10}),
      shape(Shape::Kind::kPolygon, {0, 0, 1, 1, 2}), shape(Shape::Kind::kText, {5, 6})};
  figure.shapes[0].stroke = 0xFF0000;
  figure.shapes[1].fill = 0x00FF80;
  figure.shapes[3].text = u"<b>";
  figure.shapes[3].text_align = Align::kRight;
  doc.blocks = {paragraph({{u"计算书"}}, Paragraph::Kind::kTitle),
                paragraph({}, Paragraph::Kind::kRule),
                heading,
                paragraph(runs),
                Paragraph{},
                table,
                figure};
  const std::string html = write_html(doc);
  const bool have_font = !platform::grade_font_ttf().empty();

  const std::string parts[] = {
      "<html lang=\"zh-CN\">",
      "<meta charset=\"utf-8\"/>",
      "@page{size:210mm 297mm;margin:25mm 20mm 20mm 25mm;",
      "\"宋体\",SimSun,\"Noto Serif CJK SC\",serif",
      "<header class=\"page\"><span>梁配筋计算</span> <span></span></header>",
      "<h1 class=\"title\">计算书</h1>\n<hr/>\n<p class=\"signature\">计算：<u "
      "class=\"blank\">&#160;&#160;",
      "日期：2026-11-26</p>\n<h3 style=\"margin-left:21pt\">(1)</h3>",
      have_font ? "<sup>2</sup><span class=\"g\">\xEE\x80\x82</span></p>" : "<sup>2</sup>C</p>",
      "A<b><sub>s</sub></b>",
      "<p><br/></p>",
      "<thead><tr><th class=\"l\">名称</th><th class=\"r\">值</th></tr>",
      "<td class=\"r\">1</td>",
      "viewBox=\"0 0 100 50\"",
      "<line x1=\"0\" y1=\"0\" x2=\"100\" y2=\"50\" fill=\"none\" stroke=\"#ff0000\" "
      "stroke-width=\"0.25\"/>",
      "<rect x=\"20\" y=\"10\" width=\"60\" height=\"30\" fill=\"#00ff80\"",
      "<polygon points=\"0,0 1,1\"",
      "text-anchor=\"end\" fill=\"#000000\" stroke=\"none\">&lt;b&gt;</text>",
      "<figcaption>图 1</figcaption>",
  };
  for (const std::string& part : parts) EXPECT_NE(html.find(part), std::string::npos) << part;
  EXPECT_EQ(html.find("@font-face") != std::string::npos, have_font);
  EXPECT_TRUE(tags_nest(body_of(html)));
  EXPECT_TRUE(tags_nest(body_of(write_html(Document{}))));
}

}  // namespace
}  // namespace zelkora::document
