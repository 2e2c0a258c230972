// Tests of interpolation in tables held in texts, and of its errors.
#include "zelkora/frame/value_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora::frame {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr TextView kConcrete = u"20|25|30|35;9.6|11.9|14.3|16.7";
// Rows by the depth ratio, columns by the width ratio.
constexpr TextView kTwo = u"b/h|1|2|3\r\n100|0.5|0.6|0.7\r\n200|0.8|0.9|1.0\r\n";

struct Case {
  const char* what;
  TextView table;
  double x;
  double value;  // when there is no fault
  TableFault fault;
};

TEST(Interpolation, OneDimension) {
  const Case cases[] = {
      {"the first key", kConcrete, 20, 9.6, TableFault::kNone},
      {"the last key", kConcrete, 35, 16.7, TableFault::kNone},
      {"a key inside", kConcrete, 30, 14.3, TableFault::kNone},
      {"half-way", kConcrete, 27.5, 13.1, TableFault::kNone},
      {"just below the first key", kConcrete, 19.999, 0, TableFault::kOutsideRows},
      {"just above the last key", kConcrete, 35.001, 0, TableFault::kOutsideRows},
      {"NaN", kConcrete, kNaN, 0, TableFault::kOutsideRows},
      {"infinity", kConcrete, kInf, 0, TableFault::kOutsideRows},
      {"keys falling", u"35|30|25|20;16.7|14.3|11.9|9.6", 22.5, 10.75, TableFault::kNone},
      {"a single key", u"5;7", 5, 7, TableFault::kNone},
      {"a single key, another point", u"5;7", 6, 0, TableFault::kOutsideRows},
      {"rows end in \"|\", blanks and units", u" 20MPa | 30MPa |;\n 1kN| 3kN|", 25, 2,
       TableFault::kNone},
      {"repeated keys", u"20|25|25|30;1|2|3|4", 22, 0, TableFault::kDamaged},
      {"unsorted keys", u"20|30|25;1|2|3", 22, 0, TableFault::kDamaged},
      {"a key that is no number", u"C20|C25;1|2", 22, 0, TableFault::kDamaged},
      {"an empty value", u"20|25|30;1||3", 22, 0, TableFault::kDamaged},
      {"fewer values than keys", u"20|25|30;1|2", 22, 0, TableFault::kDamaged},
      {"one row only", u"20|25|30", 22, 0, TableFault::kDamaged},
      {"a third row", u"20|25;1|2;3|4", 22, 0, TableFault::kDamaged},
      {"an empty table", u"", 22, 0, TableFault::kDamaged},
      {"a key beyond double", u"1e400|2;1|2", 1.5, 0, TableFault::kDamaged},
      {"keys at the ends of double", u"-1e308|1e308;0|1", 0, 0.5, TableFault::kNone},
      {"values at the ends of double", u"0|1;-1e308|1e308", 0.5, 0, TableFault::kNone},
      {"empty rows and a row of \"|\" are skipped", u"20|25;|;\r\n  ;1|2", 22.5, 1.5,
       TableFault::kNone},
  };
  for (const Case& c : cases) {
    const TableValue found = interpolate(c.table, c.x);
    EXPECT_EQ(found.fault, c.fault) << c.what;
    EXPECT_NEAR(found.value, c.value, 1e-12) << c.what;
  }
}

TEST(Interpolation, TwoDimensions) {
  const struct {
    const char* what;
    TextView table;
    double x, y, value;
    TableFault fault;
  } cases[] = {
      {"a corner", kTwo, 100, 1, 0.5, TableFault::kNone},
      {"the far corner", kTwo, 200, 3, 1.0, TableFault::kNone},
      {"along a row", kTwo, 100, 2.5, 0.65, TableFault::kNone},
      {"along a column", kTwo, 150, 3, 0.85, TableFault::kNone},
      {"inside", kTwo, 150, 1.5, 0.7, TableFault::kNone},
      {"a row key outside", kTwo, 99, 2, 0, TableFault::kOutsideRows},
      {"a column key outside", kTwo, 150, 3.5, 0, TableFault::kOutsideColumns},
      {"both outside: the row is named", kTwo, 300, 0, 0, TableFault::kOutsideRows},
      {"a row too short", u"|1|2;100|0.5", 100, 1, 0, TableFault::kDamaged},
      {"row keys repeated", u"|1|2;100|1|2;100|3|4", 100, 1, 0, TableFault::kDamaged},
      {"column keys unsorted", u"|2|1|3;100|1|2|3", 100, 1, 0, TableFault::kDamaged},
      {"column keys falling", u"|3|1;100|1|2", 100, 2, 1.5, TableFault::kNone},
      {"no rows under the keys", u"|1|2", 100, 1, 0, TableFault::kDamaged},
      {"no column keys", u"corner;100", 100, 1, 0, TableFault::kDamaged},
  };
  for (const auto& c : cases) {
    const TableValue found = interpolate(c.table, c.x, c.y);
    EXPECT_EQ(found.fault, c.fault) << c.what;
    EXPECT_NEAR(found.value, c.value, 1e-12) << c.what;
  }
}

TEST(Interpolation, ErrorsAreNumberedAndReportedByTheChecker) {
  auto p = platform::Platform::headless();
  auto box = std::make_shared<platform::headless::RecordingMessageBox>();
  p->messages = box;
  int32_t error = -1;
  clsCharacter chr(p);
  EXPECT_DOUBLE_EQ(chr.dInterpolate(kConcrete, 25, error), 11.9);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(chr.dInterpolate(kConcrete, 40, error), 0);
  EXPECT_EQ(error, 39997);
  EXPECT_EQ(chr.dInterpolate2(kTwo, 150, 4, error), 0);
  EXPECT_EQ(error, 39997);
  EXPECT_EQ(chr.dInterpolate2(u"|1;1", 1, 1, error), 0);
  EXPECT_EQ(error, 39999);
  EXPECT_TRUE(box->shown.empty()) << "clsCharacter shows nothing";

  // The message names the coordinate that is outside, its value and the
  // range of its keys, least first, in the library's number text.
  const struct {
    const char* what;
    TextView table;
    double x, y;  // y NaN: a one-dimensional table
    int32_t error;
    TextView message;
  } cases[] = {
      {"above the keys", kConcrete, 45, kNaN, 39997,
       u"错误：混凝土强度等级 ＝ 45，超出了表中的范围（20～35）。"},
      {"keys falling", u"80|50|15;35.9|23.1|7.2", 85, kNaN, 39997,
       u"错误：混凝土强度等级 ＝ 85，超出了表中的范围（15～80）。"},
      {"fractions", u"0.5|1.5;1|2", 0.25, kNaN, 39997,
       u"错误：混凝土强度等级 ＝ 0.25，超出了表中的范围（0.5～1.5）。"},
      {"a row key outside", kTwo, 250, 2, 39997, u"错误：h ＝ 250，超出了表中的范围（100～200）。"},
      {"a column key outside", kTwo, 150, 4, 39997, u"错误：b/h ＝ 4，超出了表中的范围（1～3）。"},
      {"a damaged table", u"b/h|1;x|2", 1, 1, 39999, u""},
  };
  clsErrChr err(p);
  for (const auto& c : cases) {
    double value = -1;
    const int32_t found =
        std::isnan(c.y)
            ? err.GenCheckInterpolateErrW(c.table, u"混凝土强度等级", c.x, value, true)
            : err.GenCheckInterpolate2ErrW(c.table, u"h", c.x, u"b/h", c.y, value, true);
    EXPECT_EQ(found, c.error) << c.what;
    EXPECT_EQ(value, -1) << c.what << ": the value is left as it was";
    if (!c.message.empty()) {
      EXPECT_EQ(err.tError_Txt(), c.message) << c.what;
    }
  }
  EXPECT_TRUE(err.tError_Txt().ends_with(u"39999")) << "a damaged table is the program's mistake";
  EXPECT_TRUE(box->shown.empty()) << "ignored messages are not shown";

  double value = -1;
  EXPECT_EQ(err.GenCheckInterpolateErrW(kConcrete, u"混凝土强度等级", 27.5, value), 0);
  EXPECT_DOUBLE_EQ(value, 13.1);
  EXPECT_EQ(err.GenCheckInterpolateErrW(kConcrete, u"混凝土强度等级", 45, value), 39997);
  ASSERT_EQ(box->shown.size(), 1u);
  EXPECT_EQ(box->shown[0].title, u"错误：内插值超出范围。");
  EXPECT_EQ(box->shown[0].text,
            u"错误：混凝土强度等级 ＝ 45，超出了表中的范围（20～35）。  \r\n\r\n");
}

}  // namespace
}  // namespace zelkora::frame
