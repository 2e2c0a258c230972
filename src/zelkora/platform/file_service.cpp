// What every file service shares: copying a file, the extension of a name.
#include "zelkora/platform/file_service.h"

#include <array>

namespace zelkora::platform {

bool copy_file(FileService& files, TextView from, TextView to, std::error_code& error) {
  const std::unique_ptr<DataFile> source = files.open(from, FileAccess::Read, error);
  if (!source) return false;
  const std::unique_ptr<DataFile> copy = files.open(to, FileAccess::Replace, error);
  if (!copy) return false;
  std::array<char, std::size_t{64} * 1024> chunk{};
  std::uint64_t copied = 0;
  for (;;) {
    const std::size_t n = source->read(chunk.data(), chunk.size());
    if (n == 0) break;
    if (!copy->write(std::string_view(chunk.data(), n))) {
      error = std::make_error_code(std::errc::io_error);
      return false;
    }
    copied += n;
  }
  if (copied != source->size() || !copy->commit()) {
    error = std::make_error_code(std::errc::io_error);
    return false;
  }
  return true;
}

Text file_name_extension(TextView file_name) {
  const std::size_t slash = file_name.find_last_of(u"/\\");
  const TextView base = slash == TextView::npos ? file_name : file_name.substr(slash + 1);
  const std::size_t dot = base.rfind(u'.');
  return dot == TextView::npos ? Text() : Text(base.substr(dot + 1));
}

}  // namespace zelkora::platform
