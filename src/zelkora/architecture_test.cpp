// The shape of the library, read from its sources: the subsystems include
// only the layers below their own, and only the platform folders and the
// composition root name a concrete platform. A back edge fails here before
// it can grow into a cycle.
//
//   platform <- frame <- typeset <- (reporttext, checking) <- datafile <- grid
//   section and controls beside, on platform and frame
//   document (a report as Word, RTF, HTML) on platform, frame and typeset
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// The layers each subsystem may include besides its own.
const std::map<std::string, std::set<std::string>>& allowed_layers() {
  static const std::map<std::string, std::set<std::string>> allowed = {
      {"platform", {}},
      {"frame", {"platform"}},
      {"typeset", {"platform", "frame"}},
      {"reporttext", {"platform", "frame", "typeset"}},
      {"checking", {"platform", "frame", "typeset"}},
      {"datafile", {"platform", "frame", "typeset", "reporttext", "checking"}},
      {"grid", {"platform", "frame", "typeset", "reporttext", "checking", "datafile"}},
      {"section", {"platform", "frame"}},
      {"controls", {"platform", "frame"}},
      {"document", {"platform", "frame", "typeset"}},
  };
  return allowed;
}

// The places that may name a concrete platform: the platforms' own folders
// (platform/posix/, platform/win32/, platform/headless/, platform/qt/, ...)
// and the composition root that builds the standard bundles.
bool may_name_a_platform(const std::string& relative) {
  const bool in_a_platform_folder =
      relative.starts_with("platform/") && relative.find('/', 9) != std::string::npos;
  return in_a_platform_folder || relative == "platform/defaults.cpp";
}

struct LibraryFile {
  std::string relative;  // below src/zelkora/, with "/" separators
  std::string layer;     // its first folder
  std::string text;
};

std::vector<LibraryFile> library_files() {
  const fs::path root = fs::path(ZK_SOURCE_DIR) / "src" / "zelkora";
  std::vector<LibraryFile> files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const fs::path& path = entry.path();
    const std::string name = path.filename().string();
    const bool test = name.find("_test") != std::string::npos ||
                      name.find("_qtest") != std::string::npos ||
                      name.find("_wintest") != std::string::npos;
    if (!entry.is_regular_file() || test) continue;
    if (path.extension() != ".h" && path.extension() != ".cpp") continue;
    const std::string relative = fs::relative(path, root).generic_string();
    const std::size_t slash = relative.find('/');
    if (slash == std::string::npos) continue;
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    files.push_back({relative, relative.substr(0, slash), text.str()});
  }
  return files;
}

// The paths below "zelkora/" that a file includes.
std::vector<std::string> included_paths(const std::string& text) {
  std::vector<std::string> paths;
  std::istringstream lines(text);
  const std::string marker = "#include \"zelkora/";
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(marker)) continue;
    const std::size_t end = line.find('"', marker.size());
    if (end != std::string::npos) paths.push_back(line.substr(marker.size(), end - marker.size()));
  }
  return paths;
}

TEST(Architecture, SubsystemsIncludeOnlyTheLayersBelowTheirOwn) {
  const auto files = library_files();
  ASSERT_GT(files.size(), 50u);
  std::vector<std::string> back_edges;
  for (const LibraryFile& file : files) {
    const auto layer = allowed_layers().find(file.layer);
    if (layer == allowed_layers().end()) {
      back_edges.push_back(file.relative + ": a folder that is no layer");
      continue;
    }
    for (const std::string& path : included_paths(file.text)) {
      const std::string target = path.substr(0, path.find('/'));
      if (target != file.layer && !layer->second.contains(target)) {
        back_edges.push_back(file.relative + " includes " + path);
      }
    }
  }
  std::string listed;
  for (const std::string& edge : back_edges) listed += "\n  " + edge;
  EXPECT_EQ(back_edges.size(), 0u) << "back edges:" << listed;
}

TEST(Architecture, OnlyThePlatformFoldersNameAConcretePlatform) {
  std::vector<std::string> naming;
  for (const LibraryFile& file : library_files()) {
    if (may_name_a_platform(file.relative)) continue;
    for (const char* name : {"platform/posix/", "platform/win32/", "platform/headless/",
                             "posix::", "win32::", "headless::", "_WIN32"}) {
      if (file.text.find(name) != std::string::npos) {
        naming.push_back(file.relative + " names " + name);
        break;
      }
    }
  }
  std::string listed;
  for (const std::string& file : naming) listed += "\n  " + file;
  EXPECT_EQ(naming.size(), 0u) << "files that name a concrete platform:" << listed;
}

}  // namespace
