// The datafile commands over in-memory files: the text form of a data file
// both ways, the frame check, and exit code 1 with what was read so far for
// a damaged file.
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/datafile/record_file.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/platform.h"

namespace zelkora::cli {
namespace {

std::string record(int32_t id, TextView member) {
  std::string out;
  datafile::append_record(out, id, member);
  return out;
}

class DatafileCommands : public ::testing::Test {
 protected:
  DatafileCommands() : platform_(platform::Platform::headless()), scope_(platform_) {
    platform_->files = files_;
    platform_->settings->set(u"Zelkora 结构快速设计", u"Options", u"Revision", u"R1");
  }

  // Runs a command with `input` as standard input.
  int run_with(const std::vector<std::string>& args, const std::string& input = "") {
    std::istringstream in(input);
    std::streambuf* saved = std::cin.rdbuf(in.rdbuf());
    out_.str("");
    err_.str("");
    const int code = run(args, out_, err_);
    std::cin.rdbuf(saved);
    return code;
  }

  std::shared_ptr<platform::Platform> platform_;
  platform::ScopedPlatform scope_;
  std::shared_ptr<platform::headless::MemoryFileService> files_ =
      std::make_shared<platform::headless::MemoryFileService>();
  std::ostringstream out_, err_;
};

TEST_F(DatafileCommands, WriteThenDumpRoundTrips) {
  const std::string lines = "100\tdB\n2000\t250.5\n198\ttab\\there\\nline \\\\ \\uE002 中\n-7\t\n";
  ASSERT_EQ(run_with({"datafile", "write", "p.zks"}, lines), kExitOk) << err_.str();
  EXPECT_EQ(out_.str(), "records=6\nbackup=\n");
  EXPECT_EQ(files_->bytes(u"p.zks"),
            record(0, u"R1") + record(100, u"dB") + record(2000, u"250.5") +
                record(198, u"tab\there\nline \\ \uE002 中") + record(-7, u"") + record(0, u"EOF"));

  ASSERT_EQ(run_with({"datafile", "dump", "p.zks"}), kExitOk) << err_.str();
  const std::string dumped = "0\tR1\n" + lines + "0\tEOF\n";
  EXPECT_EQ(out_.str(), dumped);

  // The frame of a dump is replaced, so the round trip is exact; the old
  // file goes to the backup copy.
  const std::string before = *files_->bytes(u"p.zks");
  ASSERT_EQ(run_with({"datafile", "write", "p.zks"}, dumped), kExitOk) << err_.str();
  EXPECT_EQ(out_.str(), "records=6\nbackup=p.zk$\n");
  EXPECT_EQ(files_->bytes(u"p.zks"), before);
  EXPECT_EQ(files_->bytes(u"p.zk$"), before);

  ASSERT_EQ(run_with({"datafile", "dump", "p.zks", "--json"}), kExitOk) << err_.str();
  EXPECT_EQ(out_.str(),
            "[\n{\"id\":0,\"member\":\"R1\"},\n{\"id\":100,\"member\":\"dB\"},\n"
            "{\"id\":2000,\"member\":\"250.5\"},\n"
            "{\"id\":198,\"member\":\"tab\\there\\nline \\\\ \\ue002 中\"},\n"
            "{\"id\":-7,\"member\":\"\"},\n{\"id\":0,\"member\":\"EOF\"}\n]\n");

  ASSERT_EQ(run_with({"datafile", "verify", "p.zks"}), kExitOk) << err_.str();
  EXPECT_EQ(out_.str(), "records=6\nrevision=R1\neof=true\n");
}

TEST_F(DatafileCommands, DamagedFilesPrintWhatWasReadAndExit1) {
  const std::string good = record(0, u"R") + record(5, u"a\"b") + record(0, u"EOF");
  struct Case {
    std::string content;
    std::vector<std::string> args;
    std::string out;
    std::string err;  // a piece of stderr; empty for success
  };
  const std::string cut = good.substr(0, good.size() - 2);
  const Case cases[] = {
      {cut, {"dump"}, "0\tR\n5\ta\"b\n", "damaged after 2 record(s) (error 2001)"},
      {cut,
       {"dump", "--json"},
       "[\n{\"id\":0,\"member\":\"R\"},\n{\"id\":5,\"member\":\"a\\\"b\"}\n]\n",
       "damaged after 2"},
      {cut, {"verify"}, "records=2\nrevision=R\neof=false\n", "damaged after 2"},
      {"", {"dump"}, "", "no EOF record"},
      {"", {"dump", "--json"}, "[]\n", "no EOF record"},
      {"", {"verify"}, "records=0\nrevision=\neof=false\n", "does not start with a revision"},
      {record(0, u"R"), {"verify"}, "records=1\nrevision=R\neof=false\n", "no EOF record"},
      {record(5, u"x") + record(0, u"EOF"),
       {"verify"},
       "records=2\nrevision=\neof=true\n",
       "does not start with a revision"},
      {good + "x", {"verify"}, "records=3\nrevision=R\neof=true\n", "bytes after its EOF"},
      {good + "x", {"dump"}, "0\tR\n5\ta\"b\n0\tEOF\n", "damaged after 3"},
      {good, {"verify"}, "records=3\nrevision=R\neof=true\n", ""},
  };
  for (const Case& c : cases) {
    files_->put(u"f", c.content);
    std::vector<std::string> args = {"datafile", c.args[0], "f"};
    args.insert(args.end(), c.args.begin() + 1, c.args.end());
    EXPECT_EQ(run_with(args), c.err.empty() ? kExitOk : kExitFailed) << c.args[0] << err_.str();
    EXPECT_EQ(out_.str(), c.out) << c.args[0];
    EXPECT_NE(err_.str().find(c.err), std::string::npos) << err_.str();
  }
}

TEST_F(DatafileCommands, RefusedInputAndFailedSavesLeaveTheFile) {
  const std::string old = record(0, u"old") + record(0, u"EOF");
  struct Case {
    std::vector<std::string> args;
    std::string input;
    int code;
    std::string err;
    int fail_write = 0;
  };
  const Case cases[] = {
      {{"datafile", "write", "f"},
       "1\tok\nno tab\n",
       kExitFailed,
       "line 2: expected ID<TAB>Member"},
      {{"datafile", "write", "f"},
       "x1\tok\n",
       kExitFailed,
       "line 1: the ID must be a whole number"},
      {{"datafile", "write", "f"}, "1\ta\\qb\n", kExitFailed, "line 1: unknown escape"},
      {{"datafile", "write", "f"},
       "1\ta\xC3(\n",
       kExitFailed,
       "line 1: the member is not valid UTF-8"},
      {{"datafile", "write", "f"}, "1\t\\u12\n", kExitFailed, "four hexadecimal digits"},
      {{"datafile", "write", "f"},
       "1\t" + std::string(65536, 'x') + "\n",
       kExitFailed,
       "65536 bytes in code page 936, at most 65535"},
      {{"datafile", "write", "f"}, "1\ta\n2\tb\n", kExitFailed, "cannot save f (error 2003)", 3},
      {{"datafile", "dump", "missing"}, "", kExitFailed, "cannot open missing (error 2002)"},
      {{"datafile"}, "", kExitUsage, "expected dump, write or verify"},
      {{"datafile", "list", "f"}, "", kExitUsage, "unknown action"},
      {{"datafile", "dump"}, "", kExitUsage, "expected 2 argument(s)"},
  };
  for (const Case& c : cases) {
    files_->put(u"f", old);
    files_->fail_write_at(c.fail_write);
    EXPECT_EQ(run_with(c.args, c.input), c.code) << c.err;
    EXPECT_NE(err_.str().find(c.err), std::string::npos) << err_.str();
    EXPECT_EQ(files_->bytes(u"f"), old) << c.err;
  }
}

}  // namespace
}  // namespace zelkora::cli
