// A user's own defaults in ZK_Form.INI: good entries are taken, foreign and
// damaged ones leave the layout's default in force, item by item.
#include "zelkora/grid/user_defaults.h"

#include <gtest/gtest.h>

#include "zelkora/grid/grid_test_support.h"
#include "zelkora/platform/headless/memory_ini_files.h"

namespace zelkora::grid {
namespace {

using namespace test_support;
using platform::headless::MemoryIniFiles;

MemoryIniFiles& ini_of(TestForm& f) { return static_cast<MemoryIniFiles&>(*f.platform->ini); }

TEST(UserDefaults, EntriesAreTakenItemByItem) {
  const Text overlong = u"0=" + Text(511, u'x');
  const struct {
    const char* what;
    Text content;                                             // ZK_Form.INI
    std::vector<std::pair<int32_t, const char16_t*>> values;  // null: the layout's default
  } cases[] = {
      {"good",
       u"[clsBeamSteel]\r\n10=300\r\n12=HRB500\r\n22=4\r\n0=三号楼\r\n",
       {{10, u"300"}, {12, u"HRB500"}, {22, u"4"}, {0, u"三号楼"}}},
      {"section named without regard to case, blanks and an empty value",
       u"[CLSBEAMSTEEL]\r\n10= 300 \r\n0=\r\n",
       {{10, u"300"}, {0, u""}}},
      {"refused by the check",
       u"[clsBeamSteel]\r\n10=-5\r\n22=1\r\n11=600\r\n",
       {{10, nullptr}, {22, nullptr}, {11, u"600"}}},
      {"not an item of the list",
       u"[clsBeamSteel]\r\n12=HRB999\r\n17=19\r\n",
       {{12, nullptr}, {17, nullptr}}},
      {"bytes that are not code page 936",
       u"[clsBeamSteel]\r\n10=3\uFFFD0\r\n11=600\r\n",
       {{10, nullptr}, {11, u"600"}}},
      {"an overlong line",
       u"[clsBeamSteel]\r\n" + overlong + u"\r\n10=300\r\n",
       {{0, nullptr}, {10, u"300"}}},
      {"keys of no item", u"[clsBeamSteel]\r\n99=5\r\n-1=5\r\nabc=5\r\n10=300\r\n", {{10, u"300"}}},
      {"another layout's section",
       u"[clsFoundationSpread]\r\n10=777\r\n12=HRB500\r\n",
       {{10, nullptr}, {12, nullptr}}},
      {"members make their group",
       u"[clsBeamSteel]\r\n16=3\r\n17=20\r\n15=9, 9\r\n",
       {{15, u"3, 20"}, {16, u"3"}, {17, u"20"}}},
      {"a group alone is split",
       u"[clsBeamSteel]\r\n15=4,25\r\n",
       {{15, u"4, 25"}, {16, u"4"}, {17, u"25"}}},
      {"a group of too many parts",
       u"[clsBeamSteel]\r\n15=4, 25, 3\r\n",
       {{15, nullptr}, {16, nullptr}, {17, nullptr}}},
  };
  TestForm plain;
  clsGridCell& layout_defaults = plain.build();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TestForm f;
    clsGridCell& cell = f.build();
    ini_of(f).put(kUserDefaultsFileName, c.content);
    write_values(cell, load_user_defaults(cell, u"clsBeamSteel"));
    for (const auto& [item, value] : c.values) {
      EXPECT_EQ(cell.tGetText(item), value ? Text(value) : layout_defaults.tGetText(item)) << item;
    }
    EXPECT_TRUE(f.messages->shown.empty());
  }
}

TEST(UserDefaults, SavedValuesReadBackAndUnkeepableOnesAreLeftOut) {
  TestForm f;
  clsGridCell& cell = f.build();
  ini_of(f).put(kUserDefaultsFileName, u"[clsBeamSteel]\r\n1=旧的\r\n[Other]\r\n1=x\r\n");
  write_values(cell, {{10, u" 300 "}, {0, u"\"引号\""}, {1, u"A\U0001F600"}, {12, u"HRB500"}});
  const SavedUserDefaults saved = save_user_defaults(cell, u"clsBeamSteel");
  EXPECT_TRUE(saved.written);
  EXPECT_EQ(saved.left_out, (std::vector<int32_t>{0, 1}));  // quoted; no form in code page 936
  EXPECT_EQ(f.platform->ini->read(u"Other", u"1", {}, kUserDefaultsFileName), u"x");

  TestForm plain, g;
  clsGridCell& layout_defaults = plain.build();
  clsGridCell& again = g.build();
  ini_of(g).put(kUserDefaultsFileName, *ini_of(f).content(kUserDefaultsFileName));
  write_values(again, load_user_defaults(again, u"clsBeamSteel"));
  for (int32_t item = 0; item <= cell.lMaxTextIndex(); ++item) {
    const bool left_out = item == 0 || item == 1;
    EXPECT_EQ(again.tGetText(item),
              left_out ? layout_defaults.tGetText(item) : Text(trim(cell.tGetText(item))))
        << item;
  }
}

}  // namespace
}  // namespace zelkora::grid
