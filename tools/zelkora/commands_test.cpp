// The wiring of the subsystem commands: output lines, numbers written with
// "." whatever the user's decimal symbol, and the exit codes of bad usage and
// faults.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/platform/headless/headless.h"

namespace zelkora::cli {
namespace {

struct Case {
  std::vector<std::string> args;
  int code;
  std::string out;  // stdout, or a piece of stderr for a failure
  Text decimal = u".";
};

void expect_commands(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    auto p = platform::Platform::headless();
    p->locale = std::make_shared<platform::headless::FixedNumberLocale>(
        c.decimal, c.decimal == u"," ? u"." : u",");
    platform::ScopedPlatform scope(p);
    std::ostringstream out, err;
    EXPECT_EQ(run(c.args, out, err), c.code) << c.args[1 % c.args.size()] << " " << err.str();
    if (c.code == kExitOk) {
      EXPECT_EQ(out.str(), c.out) << c.args[0] << " " << c.args[1 % c.args.size()];
    } else {
      EXPECT_EQ(out.str(), "");
      EXPECT_NE(err.str().find(c.out), std::string::npos) << err.str();
    }
  }
}

TEST(SubsystemCommands, MessagesAndChecks) {
  expect_commands({
      {{"message", "121", "--c1", "b", "--v1", "2e10"},
       kExitOk,
       "错误：b ＝ 2e10 ＞ 1000000000，b 不应大于 1000000000。\n"},
      {{"message", "2001", "--c1", "a.zks", "--show"},
       kExitOk,
       "原始数据文件格式错误！\n无法打开原始数据文件“a.zks”，  \n\n"
       "该文件不是 Zelkora 原始数据文件或者数据格式已被破坏。  \n\n"
       "无法打开原始数据文件“a.zks”，  \\r\\n\\r\\n"
       "该文件不是 Zelkora 原始数据文件或者数据格式已被破坏。  \\r\\n\\r\\n\n"},
      {{"check", "(0~1.0", "ψ", "0"},
       kExitOk,
       "error=333\nmessage=错误：ψ 为 0，ψ 有效数值应在 (大于 0、且不大于 1) 的范围内。\n"},
      {{"check", "S>=0", "b", "1,5"}, kExitOk, "error=0\nmessage=\n", u","},
      {{"check", "1", "抗震", "是", "--list", "1050"}, kExitOk, "error=0\nmessage=\n"},
      {{"compare", "=", "0.5", "0.25", "--c1", "a", "--c2", "b"},
       kExitOk,
       "error=168\nmessage=错误：a ＝ 0.5 ≠ 0.25，a 应等于 b。\n"},
      {{"listcheck", "5300", "C", "3 0"}, kExitOk, "error=0\nmessage=\n"},
      {{"gradecheck", "C30"},
       kExitOk,
       "error=104\nmessage=错误：混凝土的强度等级 为 C30，砼强度等级应从列表框项目中选取。\n"},
      {{"message", "x"}, kExitUsage, "error number"},
      {{"compare", ">", "1"}, kExitUsage, "expected 3"},
  });
}

TEST(SubsystemCommands, ProgramMenu) {
  const std::string script = testing::TempDir() + "zk_menu_script.txt";
  std::ofstream(script) << "click 1\n# unfold, then choose\nenter 17\nclick 17\nkey 32\n";
  const std::string bad = testing::TempDir() + "zk_menu_bad.txt";
  std::ofstream(bad) << "click\n";
  std::ostringstream out, err;
  ASSERT_EQ(run({"menu", "--script", script}, out, err), kExitOk) << err.str();
  EXPECT_EQ(out.str().substr(0, out.str().find("\n- ")),
            "selected=基本构件|柱正截面承载力计算\nselected=基本构件|柱正截面承载力计算");
  EXPECT_NE(out.str().find("\n  正截面承载力\n"), std::string::npos);
  EXPECT_NE(out.str().find("\n+ 杂项"), std::string::npos);
  expect_commands({
      {{"menu", "--script", bad}, kExitUsage, "zk_menu_bad.txt:1"},
      {{"menu", "a.ini", "b.ini"}, kExitUsage, "expected 1"},
  });
}

TEST(SubsystemCommands, DemoSession) {
  std::ostringstream out, err;
  ASSERT_EQ(run({"demo"}, out, err), kExitOk) << err.str();
  for (const char* expected :
       {"selected=基本构件|梁配筋计算", "错误：梁的截面宽度 b ＝ -250 ≤ 0，", "-> refused",
        "the group reads \"3, 20\", its members \"3\" and \"20\"",
        "梁的截面高度 h                     500\n", "26 values, 0 refused", "values identical",
        "一、截面与荷载", "《混凝土结构设计规范》", "fc ＝ 14.3MPa", "＝ 942mm2"}) {
    EXPECT_NE(out.str().find(expected), std::string::npos) << expected << "\n" << out.str();
  }
}

TEST(SubsystemCommands, Section) {
  const std::string rectangle =
      "code=30261\nA=0.1\nY=0.25\nI=0.00208333333333333\nW=0.00833333333333333\n";
  expect_commands({
      {{"section", "30261", "--B", "200", "--H", "500"}, kExitOk, rectangle},
      {{"section", "矩形截面", "--h", "500", "--b", "200"}, kExitOk, rectangle},
      {{"section", "环形截面", "--B", "400", "--h", "300"},
       kExitOk,
       "code=30268\nA=0.0549778714378214\nY=0.15\nI=0.000859029241215959\n"
       "W=0.00572686160810639\n"},
      {{"section", "30276", "--B", "2000", "--H", "700", "--Bf", "1000", "--Hf", "300", "--H1",
        "400", "--steps", "2"},
       kExitOk,
       "code=30276\nA=1.1\nY=0.295454545454545\nI=0.0396439393939394\nW=0.134179487179487\n"},
      {{"section", "T形截面", "--B", "250", "--H", "600", "--Bf1", "800", "--Hf1", "120"},
       kExitOk,
       "code=30264\nA=0.216\nY=0.373333333333333\nI=0.0072192\nW=0.0193371428571429\n"},
      {{"section", "30270", "--h", "500"}, kExitOk, "code=30270\nA=0\nY=0.25\nI=0\nW=0\n"},
      {{"section", "30267"}, kExitFault, "division by zero"},
      {{"section", "30262", "--H", "500"}, kExitFault, "division by zero"},
      {{"section", "30261", "--B", "x"}, kExitUsage, "B must be a number"},
      {{"section", "30261", "--B", "1", "--b", "2"}, kExitUsage, "not both"},
      {{"section"}, kExitUsage, "expected 1"},
  });
}

TEST(SubsystemCommands, SplitAndWrap) {
  const std::string a = std::string(50, 'a'), b = std::string(50, 'b');
  expect_commands({
      {{"split", a + " " + b, " ", "--indent", "1", "--indent-add", "2"},
       kExitOk,
       " " + a + "\n   " + b + "\n"},
      {{"split", "   ", ","}, kExitOk, ""},
      {{"split", "x\\uE002", ","}, kExitOk, "x\\uE002\n"},
      {{"wrap", "甲乙丙，丁戊", "--width", "7", "--following", "2"},
       kExitOk,
       "甲乙\n  丙，\n  丁戊\n"},
      {{"wrap", ""}, kExitOk, ""},
      {{"split", "a b", " ", "--width", "8O"}, kExitUsage, "whole number"},
      {{"split", "a b", " ", "--width", "40000"}, kExitUsage, "-32768 to 32767"},
      {{"wrap", "a", "--first"}, kExitUsage, "needs a value"},
      {{"wrap", "a", "b"}, kExitUsage, "expected 1"},
      {{"split", "a b", " ", "--indent", "30000", "--indent-add", "30000"}, kExitFault, "overflow"},
  });
}

TEST(SubsystemCommands, ReportLabelsEquationsTablesAndHeaders) {
  const std::string ones(36, '1'), twos(37, '2');
  std::string rule;
  for (int i = 0; i < 40; ++i) rule += "─";
  expect_commands({
      {{"label", "serial", "101"}, kExitOk, "_bb(一百零一、)bb_\n"},
      {{"label", "serial2", "1000"}, kExitOk, "_bb(（1000）)bb_\n"},
      {{"label", "sl", "3"}, kExitOk, "_bb((3))bb_\n"},
      {{"label", "list", "4", "--dot", "、"}, kExitOk, "4、\n"},
      {{"label", "roman", "13"}, kExitOk, "XIII\n"},
      {{"label", "bold", "1"}, kExitUsage, "serial, serial2, sl, list or roman"},
      {{"label", "roman", "x"}, kExitUsage, "whole number"},
      {{"equation", "A ＝ " + ones + " + " + twos},
       kExitOk,
       "A ＝ " + ones + "\n     + " + twos + "\n"},
      {{"equation", "A ＝ " + ones + " + " + twos, "--width", "81"},
       kExitOk,
       "A ＝ " + ones + " + " + twos + "\n"},
      {{"equation", " "}, kExitOk, ""},
      {{"interpolate", "20|25|30;9.6|11.9|14.3", "27.5"}, kExitOk, "value=13.1\nerror=0\n"},
      {{"interpolate", "|1|2;100|0.5|0.6;200|0.8|0.9", "150", "1.5"},
       kExitOk,
       "value=0.7\nerror=0\n"},
      {{"interpolate", "20|25|30;9.6|11.9|14.3", "31"}, kExitOk, "value=0\nerror=39997\n"},
      {{"interpolate", "20|20;1|2", "20"}, kExitOk, "value=0\nerror=39999\n"},
      {{"interpolate", "20|25;1|2"}, kExitUsage, "TABLE X [Y]"},
      {{"header", "梁", "--project", "三号楼", "--standards", "59899", "--date", "2026-11-25",
        "--plain"},
       kExitOk,
       std::string(39, ' ') +
           "梁\n工程名称：三号楼\n设计依据：\n    1.《混凝土结构设计规范》（GB "
           "50010－2010）\n计算日期：2026-11-25\n" +
           rule + "\n"},
      {{"header", "梁", "--standards", "59899,x"}, kExitUsage, "whole number"},
  });
}

TEST(SubsystemCommands, RebarAndDiametersInBothNotations) {
  expect_commands({
      {{"rebar", "4Φ20"}, kExitOk, "count=4\ndiameter=20\nerror=0\n", u"."},
      {{"rebar", "a-20"}, kExitOk, "count=0\ndiameter=20\nerror=3000150\n", u"."},
      {{"rebar", "3Φ2.5"}, kExitOk, "count=3\ndiameter=2.5\nerror=0\n", u","},
      {{"slabbar", "10@200"}, kExitOk, "diameter=10\nspacing=200\nerror=0\n", u"."},
      {{"slabbar", "8@12,5"}, kExitOk, "diameter=8\nspacing=12.5\nerror=0\n", u","},
      {{"arith", "*1.2"}, kExitOk, "value=1.2\nsign=1\n", u"."},
      {{"arith", "10/4"}, kExitOk, "value=2,5\nsign=2\n", u","},
      {{"arith", ""}, kExitOk, "value=0\nsign=0\n", u"."},
      {{"grade", "400"}, kExitOk, "\\uE003\n", u"."},
      {{"grade", "300*1.2"}, kExitOk, "\\uE002\n", u"."},
      {{"steelfy", "HRB 400"}, kExitOk, "known=true\nfy=360\n", u"."},
      {{"steelfy", "hrb400"}, kExitOk, "known=false\nfy=0\n", u"."},
      {{"diameter", "--area", "314"}, kExitOk, "20\n", u"."},
      {{"diameter", "--area", "1257", "--bars", "4"}, kExitOk, "22\n", u","},
      {{"diameter", "--round", "21"}, kExitOk, "22\n", u"."},
      {{"diameter", "--step", "8", "-3"}, kExitOk, "4\n", u"."},
      {{"diameter", "--step", "22", "1"}, kExitOk, "25\n", u"."},
      {{"diameter", "--round", "20", "--area", "314"}, kExitUsage, "give one of"},
      {{"diameter", "--bars", "2", "--round", "20"}, kExitUsage, "--bars goes with --area"},
      {{"diameter", "--step", "8"}, kExitUsage, "a diameter and a step count"},
      {{"barlist", "L%%KZ12"}, kExitOk, "number=12\nrest=L\n", u"."},
      {{"barlist", "KZ", "--first", "自动"}, kExitOk, "number=1\nrest=KZ\n", u"."},
      {{"barlist", "A12", "--first", "7"}, kExitOk, "number=7\nrest=A12\n", u"."},
  });
}

}  // namespace
}  // namespace zelkora::cli
