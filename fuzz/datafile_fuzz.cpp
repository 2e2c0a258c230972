// A project data file may hold any bytes. Reading it record by record, as
// records and as one-text records in the order the first byte chooses, must
// never crash or read out of bounds; a read that fails leaves the record
// buffer as it was, and every read after it fails too; no member is longer
// than the file; and the reading loop ends through bReadMsgError.
#include <cstdint>
#include <string>

#include "zelkora/datafile/cls_load_save.h"
#include "zelkora/platform/headless/memory_files.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using zelkora::Text;
  static const auto files = std::make_shared<zelkora::platform::headless::MemoryFileService>();
  static const auto platform = [] {
    auto p = zelkora::platform::Platform::headless();
    p->files = files;
    return p;
  }();
  if (size == 0) return 0;
  const uint8_t pattern = data[0];
  const std::string content(reinterpret_cast<const char*>(data) + 1, size - 1);
  files->put(u"f", content);

  zelkora::clsLoadSave ls(platform);
  if (!ls.OpenFileA(u"f", u"InPut")) __builtin_trap();
  // Each record takes at least two bytes: more reads than that must stop.
  const int32_t bound = static_cast<int32_t>(content.size() / 2 + 1);
  int32_t count = 0;
  bool failed = false;
  for (int i = 0;; ++i) {
    const int32_t id_before = ls.ID();
    const Text member_before = ls.Member();
    bool ok = false;
    if ((pattern >> (i % 8)) & 1) {
      const Text text = ls.tReadFileOneStringA();
      ok = ls.last_error() == 0;
      if (text.size() > content.size()) __builtin_trap();
    } else {
      ok = ls.ReadFileOneW();
      if (ok && ls.Member().size() > content.size()) __builtin_trap();
    }
    if (!ok && (ls.ID() != id_before || ls.Member() != member_before)) __builtin_trap();
    if (ok && failed) __builtin_trap();
    failed = failed || !ok;
    if (ls.bReadMsgError(count, bound)) break;
    if (count > bound + 1) __builtin_trap();
  }
  if (!ls.CloseFileA()) __builtin_trap();
  return 0;
}
