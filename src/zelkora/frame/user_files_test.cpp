// Tests of ReadOneString, the defaults question and the help.
#include <gtest/gtest.h>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_ini_files.h"

namespace zelkora {
namespace {

TEST(UserFiles, ReadOneStringAndTheLoadDefaultsQuestion) {
  auto p = platform::Platform::headless();
  auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
  ini->put(u"menu.ini", u"[1]\r\n0=基本构件\r\n1=基本构件|弯矩\r\n");
  p->ini = ini;
  auto box = std::make_shared<platform::headless::RecordingMessageBox>();
  p->messages = box;
  clsCharacter chr(p);
  EXPECT_EQ(chr.ReadOneString(u"1", u"1", u"menu.ini"), u"基本构件|弯矩");
  EXPECT_EQ(chr.ReadOneString(u"3", u"0", u"menu.ini"), u"");
  EXPECT_EQ(chr.ReadOneString(u"1", u"9", u"none.ini", u"x"), u"x");

  EXPECT_EQ(chr.vbLoadDefaultData(false), platform::MessageBox::kYes);
  EXPECT_TRUE(box->asked.empty());
  box->answer = platform::MessageBox::kCancel;
  EXPECT_EQ(chr.vbLoadDefaultData(true), platform::MessageBox::kCancel);
  ASSERT_EQ(box->asked.size(), 1u);
  EXPECT_EQ(box->asked[0].title, u"恢复默认值");
}

// The help file is found by the suite services; without one, or without a
// viewer, nothing is shown and the answer is false.
TEST(UserFiles, ShowHelpOpensTheSuiteHelpFileAtATopic) {
  auto p = platform::Platform::headless();
  auto suite = std::make_shared<platform::headless::MemorySuiteServices>();
  auto viewer = std::make_shared<platform::headless::RecordingHelpViewer>();
  p->suite = suite;
  p->help = viewer;
  EXPECT_FALSE(clsCharacter(p).bShowHelp(u"beam.htm"));
  EXPECT_TRUE(viewer->requests.empty());

  suite->suite_files[u"Zelkora.chm"] = u"C:\\Zelkora\\Zelkora.chm";
  clsCharacter chr(p);
  EXPECT_TRUE(chr.bShowHelp(u"beam.htm"));
  EXPECT_TRUE(chr.bShowHelp());
  viewer->available = false;
  EXPECT_FALSE(chr.bShowHelp());
  ASSERT_EQ(viewer->requests.size(), 3u);
  EXPECT_EQ(viewer->requests[0].file, u"C:\\Zelkora\\Zelkora.chm");
  EXPECT_EQ(viewer->requests[0].topic, u"beam.htm");
  EXPECT_EQ(viewer->requests[1].topic, u"");

  p->help = nullptr;
  EXPECT_FALSE(clsCharacter(p).bShowHelp());
}

}  // namespace
}  // namespace zelkora
