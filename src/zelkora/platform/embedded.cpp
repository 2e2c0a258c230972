// Looking up the files compiled into the library.
#include "zelkora/platform/embedded.h"

#include <algorithm>

namespace zelkora::platform {

const EmbeddedFile* embedded_file(std::string_view name) {
  auto files = embedded_files();
  auto it = std::lower_bound(files.begin(), files.end(), name,
                             [](const EmbeddedFile& f, std::string_view n) { return f.name < n; });
  return it != files.end() && it->name == name ? &*it : nullptr;
}

}  // namespace zelkora::platform
