// A folder of a test's own under the system's temporary folder, removed with
// everything in it at the end of the scope. Names are UTF-8, paths Unicode,
// so a test can use Chinese names on every system.
//
//   ScratchFolder dir("zk-ini");
//   dir.put("图例.ini", "[List]\r\n1=a\r\n");
//   ini.read(u"List", u"1", u"", dir.text("图例.ini"));
#pragma once

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "zelkora/platform/paths.h"

namespace zelkora::test_support {

class ScratchFolder {
 public:
  explicit ScratchFolder(std::string_view prefix = "zk") {
    static std::atomic<unsigned> counter{0};
    std::random_device random;
    for (;;) {
      path_ =
          std::filesystem::temp_directory_path() /
          (std::string(prefix) + "-" + std::to_string(random()) + "-" + std::to_string(counter++));
      if (std::filesystem::create_directories(path_)) break;
    }
  }
  ~ScratchFolder() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The path of an entry ("a.ini", "sub/b.ini"), spelt as the system does.
  std::filesystem::path operator/(std::string_view name) const {
    return (path_ / platform::path_from_utf8(name)).make_preferred();
  }
  // The same as library text, as the library's operations take paths.
  Text text(std::string_view name) const { return platform::text_from_path(*this / name); }

  // Writes a file (and the folders it needs).
  void put(std::string_view name, std::string_view bytes) const {
    const std::filesystem::path file = *this / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  // The bytes of a file; empty when it cannot be read.
  std::string content(std::string_view name) const {
    std::ifstream in(*this / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  // The names of the entries of the folder or of a folder in it, sorted
  // (hidden temporary files included).
  std::vector<std::string> names(std::string_view folder = {}) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(*this / folder)) {
      names.push_back(platform::utf8_from_path(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace zelkora::test_support
