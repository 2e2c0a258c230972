// The file service of the POSIX platform (see platform/file_service.h).
//
// Reads and writes go through one 64 KiB buffer per file, so a data file of
// a million small records costs a few hundred system calls. A file opened to
// be written is a hidden temporary file beside the target
// (".<name>.<pid>.<n>.tmp"); the commit flushes it, syncs it, renames it over
// the target and syncs the folder. The temporary file takes the permissions
// of the target it replaces. A symbolic link as target is followed, so the
// file it points to is replaced and the link stays.
//
// A target that exists but may not be written is refused (EACCES), as a
// classic open for writing would refuse it, even though the folder would
// allow the rename.
#pragma once

#include <memory>

#include "zelkora/platform/file_service.h"

namespace zelkora::platform::posix {

class PosixFileService final : public FileService {
 public:
  bool exists(TextView path) const override;
  std::unique_ptr<DataFile> open(TextView path, FileAccess access, std::error_code& error) override;
};

// One service for the whole process: the default of a platform bundle that
// has none.
std::shared_ptr<FileService> posix_file_service();

}  // namespace zelkora::platform::posix
