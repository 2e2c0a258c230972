/// Files kept in memory: `platform::FileService` for tests and headless hosts,
/// with the same rules as the files on disk (a write goes to a copy that
/// replaces the file on commit) and with failures that a test can inject: a
/// write that fails (a full disk), an open that is refused (no permission), a
/// commit that fails (a failed sync or rename). A file is known by its exact
/// name.
///
///   auto files = std::make_shared<MemoryFileService>();
///   files->put(u"a.zks", "old bytes");
///   files->fail_write_at(3);            // the third write from now fails
///   ... save through a clsLoadSave ...
///   files->bytes(u"a.zks");              // still "old bytes" @file
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "zelkora/platform/file_service.h"

namespace zelkora::platform::headless {
/// Files kept in memory (see the file).
class MemoryFileService final : public FileService {
 public:
  MemoryFileService();

  bool exists(TextView path) const override;
  std::unique_ptr<DataFile> open(TextView path, FileAccess access, std::error_code& error) override;

  /// Creates or replaces a file.
  void put(TextView path, std::string bytes);
  /// The content of a file, or nothing when there is no such file.
  std::optional<std::string> bytes(TextView path) const;

  /// The `n`-th write call from now on fails (1: the next one), and so does
  /// every later write to that file; 0 for none.
  void fail_write_at(int n);
  /// Every open fails with "permission denied" while on.
  void fail_open(bool on);
  /// Every commit of a written file fails while on.
  void fail_commit(bool on);
  /// The write calls made so far, on all files.
  int write_count() const;

  struct State;  ///< shared with the open files

 private:
  std::shared_ptr<State> state_;
};

}  // namespace zelkora::platform::headless
