// The tool takes scripts and record lines from anyone: a grid script (for the
// beam form, then saved) and the lines of `datafile write`, then the file
// dumped and verified, never crash; the tool answers with one of its exit
// codes.
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "fuzz/fuzz_input.h"
#include "tools/zelkora/cli.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"

namespace {

int run(const std::vector<std::string>& args, const std::string& input) {
  std::istringstream in(input);
  std::streambuf* saved = std::cin.rdbuf(in.rdbuf());
  std::ostringstream out, err;
  const int code = zelkora::cli::run(args, out, err);
  std::cin.rdbuf(saved);
  if (code < 0 || code > 3) __builtin_trap();
  return code;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const auto files = std::make_shared<platform::headless::MemoryFileService>();
  static const auto platform =
      fuzz::headless_platform([](platform::Platform& p) { p.files = files; });
  static const platform::ScopedPlatform scope(platform);
  static const std::string script = "/tmp/zk-tool-fuzz-" + std::to_string(::getpid()) + ".txt";
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] & 1) {
    std::ofstream(script, std::ios::binary) << text;
    run({"grid", "clsBeamSteel", "--script", script, "--save", "g.zks"}, "");
  } else {
    run({"datafile", "write", "d.zks"}, text);
    run({"datafile", "dump", "d.zks", "--json"}, "");
    run({"datafile", "verify", "d.zks"}, "");
  }
  return 0;
}
