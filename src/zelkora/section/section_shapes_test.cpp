// Tests of the shape names and pictures.
#include <gtest/gtest.h>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora {
namespace {

TEST(SectionShapes, NamesToCodesAndPictures) {
  struct Case {
    const char16_t* name;
    int32_t code, picture;
  };
  const Case cases[] = {
      {u"矩形截面", 30261, 3240},
      {u"倒T形截面", 30262, 3238},
      {u"倒L形截面", 30263, 3237},
      {u"T形截面", 30264, 3241},
      {u"工形截面（对称）", 30265, 3239},
      {u"工形截面（不对称）", 30266, 3239},
      {u"圆形截面", 30267, 3240},
      {u"环形截面", 30268, 3240},
      {u"工形截面", 30269, 3240},
      {u"方形截面", 30270, 3240},
      {u"倒锥形基础横截面", 30273, 3240},
      {u"锥形基础横截面", 30274, 3240},
      {u"倒阶梯形截面", 30275, 3240},
      {u"阶梯形截面", 30276, 3240},
      {u"箱形截面", 30277, 3240},
      {u"倒T形", 30262, 3240},
      {u"倒L形", 30263, 3240},
      {u"T形", 30264, 3240},
      {u"工形", 30266, 3240},  // the asymmetric I, not 30269
      {u"梁式梯板", 30261, 3240},
      {u"惯性矩", 30261, 3240},
      {u"", 30261, 3240},
      {u" T形截面", 30261, 3240},  // exact: not trimmed
      {u"t形", 30261, 3240},
  };
  clsCharacter chr(platform::Platform::headless());
  for (const Case& c : cases) {
    Text name = c.name;
    EXPECT_EQ(chr.Get_Section_Shape(name), c.code) << to_utf8(c.name);
    EXPECT_EQ(name, c.name);
    EXPECT_EQ(chr.lSectionPicture(c.name), c.picture) << to_utf8(c.name);
  }
}

TEST(SectionShapes, NamesFollowTheLanguageOffset) {
  test_support::ScratchFolder dir("zk-shapes");
  dir.put("catalogue/second.tsv", "130264\tT section\n130283\tT\n130265\tI section (symmetric)\n");
  auto p = platform::Platform::headless();
  p->resources = platform::standard_resources(dir.path());
  clsCharacter chr(p);
  chr.lLanguage(100000);
  for (auto [name, code] : {std::pair<Text, int32_t>{u"T section", 30264},
                            {u"T", 30264},
                            {u"T形截面", 30261},
                            {u"T形", 30261}}) {
    EXPECT_EQ(chr.Get_Section_Shape(name), code) << to_utf8(name);
  }
  EXPECT_EQ(chr.lSectionPicture(u"I section (symmetric)"), 3239);
  EXPECT_EQ(chr.lSectionPicture(u"工形截面（对称）"), 3240);
}

}  // namespace
}  // namespace zelkora
