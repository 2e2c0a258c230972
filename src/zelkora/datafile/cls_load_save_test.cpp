// Tests of the record layer of clsLoadSave: bytes, backup, safe replace, file numbers.
#include "zelkora/datafile/cls_load_save.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/scratch_folder_test_support.h"

namespace zelkora {
namespace {

using platform::headless::MemoryFileService;

constexpr TextView kApp = u"Zelkora 结构快速设计";
constexpr TextView kOptions = u"Options";

std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out.push_back(static_cast<char>(v));
  return out;
}

std::string record(int32_t id, TextView member) {
  std::string out;
  datafile::append_record(out, id, member);
  return out;
}

// A headless platform over in-memory files.
struct Memory {
  std::shared_ptr<platform::Platform> platform = platform::Platform::headless();
  std::shared_ptr<MemoryFileService> files = std::make_shared<MemoryFileService>();
  Memory() { platform->files = files; }
  void option(TextView key, TextView value) { platform->settings->set(kApp, kOptions, key, value); }
};

// Writes a small project file and returns whether the save succeeded.
bool save_project(clsLoadSave& ls, TextView name) {
  if (!ls.OpenFileA(name, u"OutPut")) return false;
  ls.WriteFile_RevisionA();
  ls.WriteFile_100A(u"dB", 250.5);
  ls.WriteFile_TempStrA(u"注释");
  ls.WriteFileOneA(7, u"");
  return ls.WriteFileEofAndCloseFileA();
}

TEST(LoadSave, SavedProjectHasTheDocumentedBytesAndReadsBack) {
  Memory m;
  m.option(u"Revision", u"Zelkora_Beam_V2011.1966");
  m.platform->locale = std::make_shared<platform::headless::FixedNumberLocale>(u",", u".");
  clsLoadSave ls(m.platform);
  ASSERT_TRUE(save_project(ls, u"p.zel"));
  EXPECT_EQ(ls.VariableKey(), u"dB");
  EXPECT_EQ(ls.VariableValue(), frame::Variant(250.5));
  EXPECT_EQ(ls.last_error(), 0);
  EXPECT_EQ(m.files->bytes(u"p.zel"), record(0, u"Zelkora_Beam_V2011.1966") + record(100, u"dB") +
                                          record(2000, u"250,5") + record(198, u"注释") +
                                          record(7, u"") + record(0, u"EOF"));

  ASSERT_TRUE(ls.OpenFileA(u"p.zel", u"InPut"));
  UseBinRecord rec;
  ASSERT_TRUE(ls.ReadFileOneA(rec));
  EXPECT_EQ(ls.RevisionLoad(), u"Zelkora_Beam_V2011.1966");
  frame::Variant value;
  ASSERT_TRUE(ls.ReadFileOneW());
  EXPECT_EQ(ls.Member(), u"dB");
  ASSERT_TRUE(ls.ReadFile_VariableA(value, rec));
  EXPECT_EQ(rec.ID, 2000);
  EXPECT_EQ(value, frame::Variant(u"250,5"));
  EXPECT_EQ(ls.VariableValue(), value);
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(ls.ReadFileOneW());
  EXPECT_EQ(ls.ID(), 0);
  EXPECT_EQ(ls.Member(), u"EOF");
  // The first record 0 stays the revision.
  EXPECT_EQ(ls.RevisionLoad(), u"Zelkora_Beam_V2011.1966");
  EXPECT_TRUE(ls.at_end_of_file());
  EXPECT_TRUE(ls.CloseFileA());

  ASSERT_TRUE(ls.OpenFileA(u"t", u"OutPut"));
  ls.WriteFileOneStringA(u"甲");
  ls.WriteFileOneStringA(u"");
  ASSERT_TRUE(ls.CloseFileA());
  ASSERT_TRUE(ls.OpenFileA(u"t", u"InPut"));
  EXPECT_EQ(ls.tReadFileOneStringA(), u"甲");
  EXPECT_EQ(ls.tReadFileOneStringA(), u"");
  EXPECT_EQ(ls.tReadFileOneStringA(), u"");  // past the end: the buffer as it was
  EXPECT_EQ(ls.last_error(), 2001);
}

TEST(LoadSave, BackupBeforeOutput) {
  struct Case {
    Text name;
    std::optional<Text> chk_opt2;
    Text backup;  // empty: none
  };
  const Case cases[] = {
      {u"a.zks", std::nullopt, u"a.zk$"},
      {u"a.zel", std::nullopt, u"a.zk$"},
      {u"d/Beam.ZKS", std::nullopt, u"d/Beam.zk$"},
      {u"a.txt", std::nullopt, u""},
      {u"a.zks.txt", std::nullopt, u""},
      {u"zks", std::nullopt, u""},
      {u"a.zks", u"1", u"a.zk$"},
      {u"a.zks", u"-2.5", u"a.zk$"},
      {u"a.zks", u"yes", u"a.zk$"},
      {u"a.zks", u"", u"a.zk$"},
      {u"a.zks", u"0", u""},
      {u"a.zks", u" 0.0 ", u""},
  };
  for (const Case& c : cases) {
    Memory m;
    if (c.chk_opt2) m.option(u"chkOpt2", *c.chk_opt2);
    m.files->put(c.name, "old");
    m.files->put(u"a.zk$", "older copy");
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(c.name, u"OutPut"));
    EXPECT_EQ(ls.backup_name(), c.backup) << to_utf8(c.name);
    if (!c.backup.empty()) {
      EXPECT_EQ(m.files->bytes(c.backup), "old") << to_utf8(c.name);
    } else {
      EXPECT_EQ(m.files->bytes(u"a.zk$"), "older copy") << to_utf8(c.name);
    }
    EXPECT_TRUE(ls.CloseFileA());
    EXPECT_EQ(m.files->bytes(c.name), "");
  }

  // No file, no copy; a copy that cannot be made stops the save.
  Memory m;
  clsLoadSave ls(m.platform);
  ASSERT_TRUE(ls.OpenFileA(u"new.zks", u"OutPut"));
  EXPECT_EQ(ls.backup_name(), u"");
  EXPECT_FALSE(m.files->exists(u"new.zk$"));
  ls.WriteFileOneA(1, u"");
  ls.CloseFileA();
  m.files->fail_write_at(1);
  EXPECT_FALSE(ls.OpenFileA(u"new.zks", u"OutPut"));
  EXPECT_EQ(ls.last_error(), 2003);
  EXPECT_EQ(ls.FileOpenID(), 0);
}

// Whatever fails while saving, the previous file stays as it was and the
// failure is reported as 2003.
TEST(LoadSave, FailedSavesLeaveThePreviousFile) {
  const std::string previous = record(0, u"old") + record(0, u"EOF");
  int writes = 0;
  {
    Memory m;
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(save_project(ls, u"p.dat"));
    writes = m.files->write_count();
  }
  ASSERT_EQ(writes, 6);
  for (int n = 1; n <= writes; ++n) {
    Memory m;
    m.files->put(u"p.dat", previous);
    m.files->fail_write_at(n);
    clsLoadSave ls(m.platform);
    EXPECT_FALSE(save_project(ls, u"p.dat")) << n;
    EXPECT_EQ(ls.last_error(), 2003) << n;
    EXPECT_EQ(m.files->bytes(u"p.dat"), previous) << n;
    EXPECT_EQ(m.files->write_count(), n) << "writes after the failure";
  }

  struct Case {
    const char* what;
    void (*arrange)(Memory&);
    void (*write)(clsLoadSave&);
  };
  const Case cases[] = {
      {"the final replacement fails", [](Memory& m) { m.files->fail_commit(true); },
       [](clsLoadSave&) {}},
      {"a member too long", [](Memory&) {},
       [](clsLoadSave& ls) { EXPECT_FALSE(ls.WriteFileOneA(1, Text(65536, u'x'))); }},
      {"a one-text record too long", [](Memory&) {},
       [](clsLoadSave& ls) { EXPECT_FALSE(ls.WriteFileOneStringA(Text(32768, u'中'))); }},
  };
  for (const Case& c : cases) {
    Memory m;
    m.files->put(u"p.dat", previous);
    c.arrange(m);
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(u"p.dat", u"OutPut")) << c.what;
    ls.WriteFile_RevisionA();
    c.write(ls);
    EXPECT_FALSE(ls.WriteFileEofAndCloseFileA()) << c.what;
    EXPECT_EQ(ls.last_error(), 2003) << c.what;
    EXPECT_EQ(m.files->bytes(u"p.dat"), previous) << c.what;
  }

  // No permission: the open fails, for writing with 2003, for reading 2002.
  Memory m;
  m.files->put(u"p.dat", previous);
  m.files->fail_open(true);
  clsLoadSave ls(m.platform);
  EXPECT_FALSE(ls.OpenFileA(u"p.dat", u"OutPut"));
  EXPECT_EQ(ls.last_error(), 2003);
  EXPECT_FALSE(ls.OpenFileA(u"p.dat", u"InPut"));
  EXPECT_EQ(ls.last_error(), 2002);
  m.files->fail_open(false);
  EXPECT_FALSE(ls.OpenFileA(u"missing.dat", u"InPut"));
  EXPECT_EQ(ls.last_error(), 2002);
}

TEST(LoadSave, OtherModesReadAndWriteACopyThatReplacesTheFileOnClose) {
  Memory m;
  const std::string original = record(0, u"r") + record(5, u"a");
  m.files->put(u"p.dat", original);
  clsLoadSave ls(m.platform);
  for (const TextView mode : {TextView(u"Binary"), TextView(u"")}) {
    ASSERT_TRUE(ls.OpenFileA(u"p.dat", mode));
    ASSERT_TRUE(ls.ReadFileOneW());
    EXPECT_EQ(ls.RevisionLoad(), u"r");
    EXPECT_TRUE(ls.CloseFileA());  // read, never written: left alone
    EXPECT_EQ(m.files->bytes(u"p.dat"), original);
  }
  ASSERT_TRUE(ls.OpenFileA(u"p.dat"));
  ASSERT_TRUE(ls.ReadFileOneW());
  ASSERT_TRUE(ls.ReadFileOneW());
  ASSERT_TRUE(ls.WriteFileOneA(6, u"b"));
  EXPECT_EQ(m.files->bytes(u"p.dat"), original);
  ASSERT_TRUE(ls.CloseFileA());
  EXPECT_EQ(m.files->bytes(u"p.dat"), original + record(6, u"b"));

  // The mode texts are compared without regard to case.
  ASSERT_TRUE(ls.OpenFileA(u"p.dat", u"input"));
  EXPECT_FALSE(ls.WriteFileOneA(1, u"x"));
  ls.CloseFileA();
  ASSERT_TRUE(ls.OpenFileA(u"p.dat", u"OUTPUT"));
  EXPECT_FALSE(ls.ReadFileOneW());
  ls.CloseFileA();
  EXPECT_EQ(m.files->bytes(u"p.dat"), "");
}

TEST(LoadSave, FileNumbers) {
  Memory m;
  m.files->put(u"a", record(1, u"one"));
  const int open_before = datafile::open_file_count();
  {
    clsLoadSave first(m.platform);
    clsLoadSave second(m.platform);
    const int16_t free = first.iFreeFileA();
    ASSERT_TRUE(first.OpenFileA(u"a", u"InPut"));
    EXPECT_EQ(first.FileOpenID(), free);
    EXPECT_EQ(second.iFreeFileA(), free + 1);
    ASSERT_TRUE(second.OpenFileA(u"b", u"OutPut"));
    EXPECT_EQ(second.FileOpenID(), free + 1);

    // A number handed to another object reaches the same file.
    second.FileOpenID(first.FileOpenID());
    ASSERT_TRUE(second.ReadFileOneW());
    EXPECT_EQ(second.Member(), u"one");
    EXPECT_TRUE(second.CloseFileA());
    EXPECT_FALSE(second.CloseFileA());  // closing again does nothing
    EXPECT_EQ(first.iFreeFileA(), free);
    EXPECT_FALSE(first.ReadFileOneW());

    // The object closes what it left open; an unfinished save is dropped.
    second.FileOpenID(static_cast<int16_t>(free + 1));
    second.WriteFileOneA(1, u"x");
  }
  EXPECT_EQ(datafile::open_file_count(), open_before);
  EXPECT_FALSE(m.files->exists(u"b"));

  // With all 255 numbers taken, opening fails with the mode's error.
  clsLoadSave ls(m.platform);
  std::vector<std::unique_ptr<clsLoadSave>> holders;
  for (int i = 0; i < 300; ++i) {
    holders.push_back(std::make_unique<clsLoadSave>(m.platform));
    EXPECT_EQ(holders.back()->OpenFileA(u"a", u"InPut"), i < 255 - open_before) << i;
  }
  EXPECT_EQ(datafile::open_file_count(), 255);
  EXPECT_EQ(ls.iFreeFileA(), 0);
  EXPECT_EQ(holders.back()->last_error(), 2002);
  EXPECT_FALSE(ls.OpenFileA(u"b", u"OutPut"));
  EXPECT_EQ(ls.last_error(), 2003);
  holders.clear();
  EXPECT_EQ(datafile::open_file_count(), open_before);
}

TEST(LoadSave, ReadingLoopsEndOnDamagedFiles) {
  const std::string good = record(0, u"rev") + record(100, u"k") + record(0, u"EOF");
  struct Case {
    const char* what;
    std::string content;
    int records;  // read before the failure
  };
  const Case cases[] = {
      {"empty file", "", 0},
      {"no EOF", record(0, u"rev") + record(100, u"k"), 2},
      {"cut in a header", good.substr(0, 12), 1},
      {"cut in a member", good.substr(0, good.size() - 1), 2},
      {"length past the end", record(0, u"rev") + bytes({1, 0, 0, 0, 0xFF, 0xFF, 'a', 'b'}), 1},
      {"random bytes", bytes({0x93, 0x11, 0xFE, 0x02, 0x00, 0x80, 0x7F, 0xEE, 0x01}), 0},
  };
  for (const Case& c : cases) {
    Memory m;
    m.files->put(u"p", c.content);
    clsLoadSave ls(m.platform);
    ASSERT_TRUE(ls.OpenFileA(u"p", u"InPut"));
    int32_t count = 0;
    int read = 0;
    bool stopped = false;
    do {
      const Text before = ls.Member();
      if (ls.ReadFileOneW()) {
        ++read;
      } else {
        EXPECT_EQ(ls.Member(), before) << c.what;
        EXPECT_EQ(ls.last_error(), 2001) << c.what;
      }
      stopped = ls.bReadMsgError(count, 10);
    } while (!stopped && !(ls.ID() == 0 && ls.Member() == u"EOF"));
    EXPECT_TRUE(stopped) << c.what;
    EXPECT_EQ(read, c.records) << c.what;
  }
}

TEST(LoadSave, ReadMessageGuardAndModes) {
  clsLoadSave ls(Memory().platform);
  struct Guard {
    int32_t l, max;
    bool stop;
    int32_t after;
  };
  // A counter at the largest value cannot count on: it stays and stops the loop.
  for (const Guard g :
       {Guard{10, 10, true, 11}, Guard{9, 10, false, 10}, Guard{0, 0, true, 1},
        Guard{-5, -5, true, -4}, Guard{INT32_MAX - 1, INT32_MAX, false, INT32_MAX},
        Guard{INT32_MAX, INT32_MAX, true, INT32_MAX}, Guard{INT32_MAX, 0, true, INT32_MAX}}) {
    int32_t l = g.l;
    EXPECT_EQ(ls.bReadMsgError(l, g.max), g.stop) << g.l;
    EXPECT_EQ(l, g.after) << g.l;
  }
  int32_t l = 0;
  EXPECT_TRUE(ls.bReadMsgError(l));

  const std::pair<TextView, int32_t> modes[] = {{u"Load", 2002},    {u"InPut", 2002},
                                                {u"default", 2002}, {u"Save", 2003},
                                                {u"OutPut", 2003},  {u"SaveAsNewVersion", 2003},
                                                {u"", 0},           {u"Loads", 0}};
  for (const auto& [mode, error] : modes) EXPECT_EQ(ls.lLoadSaveMode(mode), error);
}

// On disk, through the system's files: a save under Chinese folder and file
// names makes its backup copy, replaces the file and leaves no temporary
// file; the file reads back. (A save killed mid-way or stopped by a full
// disk is tested with each system's files.)
TEST(LoadSave, SavesOnDiskUnderChineseNames) {
  test_support::ScratchFolder dir("zk-ls");
  const std::string old = record(0, u"old") + record(0, u"EOF");
  dir.put("项目 一/梁 KL-1.zks", old);
  auto p = platform::Platform::headless();
  p->files = platform::Platform::environment_default()->files;
  const Text file = dir.text("项目 一/梁 KL-1.zks");

  clsLoadSave ls(p);
  ASSERT_TRUE(ls.OpenFileA(file, u"OutPut"));
  EXPECT_EQ(ls.backup_name(), dir.text("项目 一/梁 KL-1.zk$"));
  ls.WriteFileOneA(1, u"新");
  ASSERT_TRUE(ls.WriteFileEofAndCloseFileA());
  EXPECT_EQ(dir.content("项目 一/梁 KL-1.zks"), record(1, u"新") + record(0, u"EOF"));
  EXPECT_EQ(dir.content("项目 一/梁 KL-1.zk$"), old);
  EXPECT_EQ(dir.names("项目 一"), (std::vector<std::string>{"梁 KL-1.zk$", "梁 KL-1.zks"}));

  ASSERT_TRUE(ls.OpenFileA(file, u"InPut"));
  ASSERT_TRUE(ls.ReadFileOneW());
  EXPECT_EQ(ls.Member(), u"新");
  EXPECT_TRUE(ls.CloseFileA());
}

}  // namespace
}  // namespace zelkora
