// The POSIX helpers of the platform's file units: the temporary file beside
// a target and the folder sync that make a rename durable. (The whole-file
// calls of platform/whole_file.h are implemented in file_io.cpp.)
#pragma once

#include <filesystem>

namespace zelkora::platform::posix {

// A new, empty file beside `target` (a hidden name in the same folder), open
// for reading and writing; -1 when none could be made.
int create_temporary(const std::filesystem::path& target, std::filesystem::path& temporary);

// Syncs the folder, so that a rename in it is durable; a folder that cannot
// be synced is passed over.
void sync_folder(const std::filesystem::path& folder);

}  // namespace zelkora::platform::posix
