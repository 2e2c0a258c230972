// Tests of the shipped font of the steel-grade symbols: the compiled-in file is
// read table by table as TrueType, as a PDF or DOCX reader would take it.
#include "zelkora/platform/grade_font.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace zelkora::platform {
namespace {

using Tables = std::map<std::string, std::string_view>;

// A big-endian number of `n` bytes at `at`; 0 past the end, so a damaged
// file fails the checks rather than the reading.
uint32_t be(std::string_view b, std::size_t at, int n) {
  if (at > b.size() || b.size() - at < static_cast<std::size_t>(n)) return 0;
  uint32_t v = 0;
  for (int i = 0; i < n; ++i) v = v << 8 | static_cast<unsigned char>(b[at + i]);
  return v;
}

Tables sfnt_tables(std::string_view ttf) {
  Tables tables;
  for (uint32_t i = 0, count = be(ttf, 4, 2); i < count; ++i) {
    const std::size_t entry = 12 + 16 * i;
    const uint32_t offset = be(ttf, entry + 8, 4), length = be(ttf, entry + 12, 4);
    if (offset > ttf.size() || ttf.size() - offset < length) continue;
    tables[std::string(ttf.substr(entry, 4))] = ttf.substr(offset, length);
  }
  return tables;
}

// The glyph of `c` in the Windows Unicode (3, 1) subtable of format 4; 0 for none.
uint32_t glyph_of(std::string_view cmap, uint32_t c) {
  for (uint32_t i = 0, count = be(cmap, 2, 2); i < count; ++i) {
    const std::size_t record = 4 + 8 * i;
    const std::string_view sub =
        cmap.substr(std::min<std::size_t>(be(cmap, record + 4, 4), cmap.size()));
    if (be(cmap, record, 2) != 3 || be(cmap, record + 2, 2) != 1 || be(sub, 0, 2) != 4) continue;
    const uint32_t segments = be(sub, 6, 2) / 2;
    for (uint32_t s = 0; s < segments; ++s) {
      const std::size_t end = 14 + 2 * s, start = end + 2 * segments + 2;
      const std::size_t delta = start + 2 * segments, range = delta + 2 * segments;
      if (c > be(sub, end, 2) || c < be(sub, start, 2)) continue;
      const uint32_t range_offset = be(sub, range, 2);
      const uint32_t g =
          range_offset == 0 ? c : be(sub, range + range_offset + 2 * (c - be(sub, start, 2)), 2);
      return g == 0 ? 0 : (g + be(sub, delta, 2)) & 0xFFFF;
    }
  }
  return 0;
}

// The number of contours of glyph `g` (through 'loca'), 0 for an empty glyph.
int contours_of(const Tables& t, uint32_t g) {
  const bool long_loca = be(t.at("head"), 50, 2) == 1;
  const auto at = [&](uint32_t i) {
    return long_loca ? be(t.at("loca"), 4 * i, 4) : 2 * be(t.at("loca"), 2 * i, 2);
  };
  if (g >= be(t.at("maxp"), 4, 2) || at(g + 1) <= at(g)) return 0;
  return static_cast<int16_t>(be(t.at("glyf"), at(g), 2));
}

// Name `id` of the Windows Unicode names (UTF-16BE), as ASCII.
std::string name_of(std::string_view name, uint32_t id) {
  const std::string_view strings = name.substr(std::min<std::size_t>(be(name, 4, 2), name.size()));
  for (uint32_t i = 0, count = be(name, 2, 2); i < count; ++i) {
    const std::size_t r = 6 + 12 * i;
    if (be(name, r, 2) != 3 || be(name, r + 6, 2) != id) continue;
    std::string text;
    for (uint32_t k = 0; k < be(name, r + 8, 2); k += 2)
      text += static_cast<char>(be(strings, be(name, r + 10, 2) + k, 2));
    return text;
  }
  return {};
}

class GradeFont : public ::testing::Test {
 protected:
  std::string_view ttf = grade_font_ttf();
  Tables t = sfnt_tables(ttf);
};

TEST_F(GradeFont, IsTrueTypeWithTheTablesReadersNeed) {
  EXPECT_EQ(be(ttf, 0, 4), 0x00010000u);
  for (const char* tag :
       {"cmap", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "name", "OS/2", "post"}) {
    EXPECT_TRUE(t.contains(tag)) << tag;
  }
}

TEST_F(GradeFont, MapsTheFourGradesToDistinctOutlinesAndNothingElse) {
  ASSERT_TRUE(t.contains("cmap") && t.contains("loca") && t.contains("glyf") &&
              t.contains("head") && t.contains("maxp"));
  std::set<uint32_t> glyphs;
  for (uint32_t c : {0xE000u, 0xE001u, 0xE002u, 0xE003u}) {
    const uint32_t g = glyph_of(t["cmap"], c);
    EXPECT_NE(g, 0u) << std::hex << c;
    EXPECT_GT(contours_of(t, g), 0) << std::hex << c;
    glyphs.insert(g);
  }
  EXPECT_EQ(glyphs.size(), 4u);
  for (uint32_t c : {0x30u, 0x41u, 0x3A6u, 0xE004u})
    EXPECT_EQ(glyph_of(t["cmap"], c), 0u) << std::hex << c;
}

TEST_F(GradeFont, NamesItsFamilyAndAllowsEmbedding) {
  ASSERT_TRUE(t.contains("name") && t.contains("OS/2"));
  EXPECT_EQ(name_of(t["name"], 1), kGradeFontFamily);
  EXPECT_EQ(be(t["OS/2"], 8, 2), 0u) << "fsType: installable embedding";
}

}  // namespace
}  // namespace zelkora::platform
