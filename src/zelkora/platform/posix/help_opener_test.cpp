// Tests of help through the desktop's opener.
#include "zelkora/platform/posix/help_opener.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/scratch_folder_test_support.h"
#include "zelkora/platform/shared_services.h"

namespace zelkora::platform::posix {
namespace {

TEST(HelpOpener, HandsTheSuiteHelpFileToTheOpener) {
  test_support::ScratchFolder dir("zk-help");
  const std::string record = (dir / "opened").string();
  dir.put("opener", "#!/bin/sh\nprintf '%s' \"$1\" > '" + record + ".part' && mv '" + record +
                        ".part' '" + record + "'\n");
  ::chmod((dir / "opener").c_str(), 0755);
  dir.put("Zelkora.chm", "ITSF");

  auto p = Platform::headless();
  p->suite = std::make_shared<FolderSuiteServices>(std::vector{dir.path()});
  p->help = std::make_shared<OpenerHelpViewer>((dir / "opener").string());
  ASSERT_TRUE(clsCharacter(p).bShowHelp(u"beam.htm"));
  for (int i = 0; i < 500 && !std::filesystem::exists(record); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(dir.content("opened"), (dir / "Zelkora.chm").string());

  const struct {
    const char* what;
    std::string opener;
    Text file;
  } refused[] = {
      {"no such opener", (dir / "missing-opener").string(), dir.text("Zelkora.chm")},
      {"no opener on the PATH", "zelkora-no-such-opener", dir.text("Zelkora.chm")},
      {"no help file", (dir / "opener").string(), dir.text("missing.chm")},
      {"no file named", (dir / "opener").string(), u""},
  };
  for (const auto& c : refused) {
    EXPECT_FALSE(OpenerHelpViewer(c.opener).show(c.file, u"")) << c.what;
  }
  p->suite = std::make_shared<FolderSuiteServices>(std::vector{dir.path() / "empty"});
  EXPECT_FALSE(clsCharacter(p).bShowHelp()) << "a suite without a help file";
}

}  // namespace
}  // namespace zelkora::platform::posix
