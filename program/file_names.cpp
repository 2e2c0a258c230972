// The parts of a file's name.
#include "program/file_names.h"

#include <filesystem>
#include <system_error>

#include "zelkora/platform/paths.h"

namespace zelkora::desk {

namespace {

// Windows, where paths part at "\\" (and "/").
constexpr bool kWindows = std::filesystem::path::preferred_separator != '/';

// Where the name starts: after the last separator (or drive).
std::size_t name_start(TextView file) {
  const std::size_t slash = file.find_last_of(kWindows ? TextView(u"/\\") : TextView(u"/"));
  if (slash != TextView::npos) return slash + 1;
  return kWindows && file.size() >= 2 && file[1] == u':' ? 2 : 0;
}

std::size_t last_dot(TextView name) { return name.rfind(u'.'); }

}  // namespace

TextView file_name(TextView file) { return file.substr(name_start(file)); }

TextView file_suffix(TextView file) {
  const TextView name = file_name(file);
  const std::size_t dot = last_dot(name);
  return dot == TextView::npos ? TextView() : name.substr(dot + 1);
}

TextView complete_base_name(TextView file) {
  const TextView name = file_name(file);
  return name.substr(0, last_dot(name));
}

Text native_absolute_path(TextView file) {
  std::error_code error;
  const std::filesystem::path path =
      std::filesystem::absolute(platform::path_from_text(file), error);
  std::filesystem::path clean = path.lexically_normal();
  // A name that ends in "." or ".." names a folder without a separator after it.
  if (!clean.has_filename() && clean != clean.root_path() && name_start(file) != file.size()) {
    clean = clean.parent_path();
  }
  return platform::text_from_path(clean.make_preferred());
}

}  // namespace zelkora::desk
