// Tests of the markup stripping and the display width.
#include "zelkora/typeset/markup.h"

#include <gtest/gtest.h>

#include <random>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/codepage.h"

namespace zelkora::typeset {
namespace {

// The stripper as the suite has always written it: seven whole-text
// replacements in their order.
Text reference_strip(TextView text) {
  Text out(text);
  for (TextView marker : {u"_bb(", u"_bb(", u")bb_", u"_up(", u")up_", u"_ub(", u")ub_"}) {
    out = replace_all(out, marker, u"");
  }
  return out;
}

TEST(StripMarkup, RemovesTheMarkersInTheirOrder) {
  struct Case {
    TextView text, stripped;
  };
  const Case cases[] = {
      {u"f_ub(a)ub_", u"fa"},
      {u"mm_up(2)up_", u"mm2"},
      {u"_bb(1.2)bb_ 荷载", u"1.2 荷载"},
      {u"", u""},
      {u"a_b(c)d_|e", u"a_b(c)d_|e"},  // no marker, and "|" is no markup
      {u"_UB(a)UB_", u"_UB(a)UB_"},    // markers are matched exactly
      {u")up_x_ub(", u"x"},            // stray markers go too
      // The second bold pass removes a start marker formed by the first.
      {u"_b_bb(b(x)bb_", u"x"},
      // The other kinds have one pass: a marker formed by a removal stays.
      {u"_u_ub(b(x", u"_ub(x"},
      {u"_up_up((", u"_up("},
      {u")b)bb_b_", u")bb_"},
      // Bold goes first: a bold marker formed by a later pass stays, a
      // superscript marker formed by the bold passes goes.
      {u"_b_up(b(", u"_bb("},
      {u"_u_bb(p(", u""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(to_utf8(strip_markup(c.text)), to_utf8(c.stripped)) << to_utf8(c.text);
  }
}

TEST(StripMarkup, FieldSeparatorsGoFirst) {
  clsCharacter chr(platform::Platform::headless());
  const Text field = chr.tString(60030);
  ASSERT_EQ(field, u"工程名称：|");
  EXPECT_EQ(chr.tDelSuperSubSplitSign(field), u"工程名称：");
  EXPECT_EQ(chr.tDelSuperSubSign(field), field);
  // A marker is whole only once its separators are gone.
  EXPECT_EQ(chr.tDelSuperSubSplitSign(u"_u|b(x)u|b_"), u"x");
  EXPECT_EQ(chr.tDelSuperSubSign(u"_u|b(x)u|b_"), u"_u|b(x)u|b_");
}

TEST(MarkupDisplayWidth, CountsTheStrippedTextInCodePageBytes) {
  struct Case {
    TextView text;
    std::size_t width;
  };
  const Case cases[] = {
      {u"f_ub(a)ub_ ＝ 1.0", 9}, {u"荷载 ab", 7},   {u"", 0},
      {u"_bb()bb_", 0},          {u"_u_ub(b(x", 5},  // what stays after stripping counts
  };
  for (const Case& c : cases) EXPECT_EQ(markup_display_width(c.text), c.width) << to_utf8(c.text);
}

TEST(MarkupDisplayWidth, LongTextsAgreeWithStrippingFirst) {
  // Around the size of the stack buffer, and a long text after a longer one,
  // which reuses the buffer kept for long texts.
  const TextView unit = u"钢筋_ub(s)ub_a";  // 12 units, 5 cells as shown
  for (std::size_t units : {504u, 516u, 1200u, 600u, 36u}) {
    Text text;
    while (text.size() + unit.size() <= units) text.append(unit);
    while (text.size() < units) text.push_back(u'x');
    EXPECT_EQ(markup_display_width(text), codepage::display_width(strip_markup(text))) << units;
  }
  // A marker across the 512-unit mark.
  const Text across = Text(510, u'a') + u"_up(2)up_";
  EXPECT_EQ(markup_display_width(across), 511u);
}

TEST(StripMarkup, AgreesWithTheReplacementsOnMarkerSoup) {
  // Pieces 1 on have no "_" outside whole markers, which the width counts
  // without stripping; with piece 0 it strips first.
  const TextView pieces[] = {u"_",    u"b",    u"u",    u"p",    u"(",    u")",
                             u"a",    u"甲",   u"_bb(", u")bb_", u"_ub(", u")ub_",
                             u"_up(", u")up_", u"bb(",  u")u",   u"ub(",  u"p)"};
  std::mt19937 rng(2024);
  for (int round = 0; round < 6000; ++round) {
    const std::size_t first = round % 2 == 0 ? 0 : 1;
    Text text;
    const int n = static_cast<int>(rng() % 24);
    for (int i = 0; i < n; ++i) {
      text.append(pieces[first + rng() % (std::size(pieces) - first)]);
    }
    const Text expected = reference_strip(text);
    ASSERT_EQ(to_utf8(strip_markup(text)), to_utf8(expected)) << to_utf8(text);
    ASSERT_EQ(markup_display_width(text), codepage::display_width(expected)) << to_utf8(text);
  }
}

// Report views show markup as rich text: tags that always nest, text escaped.
TEST(MarkupToHtml, TagsNestAndTextIsEscaped) {
  const std::pair<TextView, TextView> cases[] = {
      {u"A_ub(s)ub_ ＝ 942mm_up(2)up_", u"A<sub>s</sub> ＝ 942mm<sup>2</sup>"},
      {u"_bb(一、设计资料)bb_", u"<b>一、设计资料</b>"},
      {u"_bb(h_ub(0)ub_)bb_", u"<b>h<sub>0</sub></b>"},
      {u"_bb(a_ub(b)bb_c", u"<b>a<sub>b</sub></b>c"},  // an end closes the runs inside it
      {u"x)up_y_up(2", u"xy<sup>2</sup>"},             // a stray end goes, an open run is closed
      {u"a<b & \"c\"|d", u"a&lt;b &amp; &quot;c&quot;d"},
      {u"一\r\n二\n三", u"一<br>二<br>三"},
  };
  for (const auto& [markup, html] : cases) {
    EXPECT_EQ(to_utf8(markup_to_html(markup)), to_utf8(html)) << to_utf8(markup);
  }
}

}  // namespace
}  // namespace zelkora::typeset
