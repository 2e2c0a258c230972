// The compiled-in and folder resource sources.
#include "zelkora/platform/resources.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "zelkora/platform/embedded.h"

namespace zelkora::platform {

namespace {

class CompiledInResources : public ResourceSource {
 public:
  std::string origin() const override { return "compiled-in"; }
  std::string location(std::string_view path) const override { return std::string(path); }
  bool available() const override { return true; }
  bool has_folder(std::string_view folder) const override {
    const std::string prefix = std::string(folder) + "/";
    return std::any_of(
        embedded_files().begin(), embedded_files().end(),
        [&](const EmbeddedFile& f) { return std::string_view(f.name).starts_with(prefix); });
  }
  std::vector<std::string> files(std::string_view folder) const override {
    const std::string prefix = folder.empty() ? std::string() : std::string(folder) + "/";
    std::vector<std::string> names;
    for (const EmbeddedFile& file : embedded_files()) {
      const std::string_view name = file.name;
      if (name.starts_with(prefix) && name.find('/', prefix.size()) == std::string_view::npos) {
        names.emplace_back(name.substr(prefix.size()));
      }
    }
    return names;  // the table is sorted by name
  }
  std::optional<std::string> read(std::string_view path, std::size_t max_bytes) const override {
    const EmbeddedFile* file = embedded_file(path);
    if (!file || file->size > max_bytes) return std::nullopt;
    return std::string(file->bytes());
  }
};

std::filesystem::path path_of(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string utf8_of(const std::filesystem::path& path) {
  const std::u8string name = path.generic_u8string();
  return std::string(name.begin(), name.end());
}

class FolderResources : public ResourceSource {
 public:
  explicit FolderResources(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::string origin() const override { return utf8_of(folder_); }
  std::string location(std::string_view path) const override {
    return utf8_of(folder_ / path_of(path));
  }
  bool available() const override {
    std::error_code ec;
    return std::filesystem::is_directory(folder_, ec);
  }
  bool has_folder(std::string_view folder) const override {
    std::error_code ec;
    return std::filesystem::is_directory(folder_ / path_of(folder), ec);
  }
  std::vector<std::string> files(std::string_view folder) const override {
    std::vector<std::string> names;
    std::error_code ec;
    for (std::filesystem::directory_iterator it(folder_ / path_of(folder), ec), end;
         !ec && it != end; it.increment(ec)) {
      if (it->is_regular_file(ec)) names.push_back(utf8_of(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  std::optional<std::string> read(std::string_view path, std::size_t max_bytes) const override {
    const std::filesystem::path file = folder_ / path_of(path);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(file, ec);
    if (ec || size > max_bytes) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!in.read(bytes.data(), static_cast<std::streamsize>(size))) return std::nullopt;
    return bytes;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace

std::shared_ptr<const ResourceSource> compiled_in_resources() {
  static const auto source = std::make_shared<const CompiledInResources>();
  return source;
}

std::shared_ptr<const ResourceSource> folder_resources(std::filesystem::path folder) {
  return std::make_shared<const FolderResources>(std::move(folder));
}

ResourceSources standard_resources(const std::filesystem::path& folder) {
  return standard_resources(std::vector<std::filesystem::path>{folder});
}

ResourceSources standard_resources(const std::vector<std::filesystem::path>& folders) {
  ResourceSources sources{compiled_in_resources()};
  for (const std::filesystem::path& folder : folders) {
    if (!folder.empty()) sources.push_back(folder_resources(folder));
  }
  return sources;
}

std::string folder_of(const ResourceSource& source, std::string_view kind) {
  return source.has_folder(kind) ? std::string(kind) : std::string();
}

std::optional<std::string> read_resource(const ResourceSources& sources, std::string_view path,
                                         std::size_t max_bytes) {
  for (auto it = sources.rbegin(); it != sources.rend(); ++it) {
    if (auto bytes = (*it)->read(path, max_bytes)) return bytes;
  }
  return std::nullopt;
}

}  // namespace zelkora::platform
