// Files compiled into the library from resources/: the catalogue, the grid
// layouts and the program menu. The build writes the table; the library reads
// it through `embedded_file` and never changes it.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace zelkora::platform {

struct EmbeddedFile {
  const char* name;  // path below resources/, with "/" separators
  const unsigned char* data;
  std::size_t size;

  std::string_view bytes() const { return {reinterpret_cast<const char*>(data), size}; }
};

// Every embedded file, sorted by name.
std::span<const EmbeddedFile> embedded_files();

// The embedded file of that exact name, or nullptr.
const EmbeddedFile* embedded_file(std::string_view name);

}  // namespace zelkora::platform
