/// The library's own files: the catalogue, the grid layouts and the program
/// menu, as trees of named files ("catalogue/catalogue.tsv",
/// "layouts/clsBeamSteel.txt", "ZK_PROMENU.INI"). A platform bundle lists the
/// sources in force, lowest precedence first: the compiled-in resources, then
/// (by default) the folders named by ZELKORA_RESOURCES in their order. A later
/// source overrides an earlier one: the catalogue id by id, a layout or the
/// menu file name by name.
/// @code{.unparsed}
///   const ResourceSources sources = standard_resources("/opt/suite/resources");
/// @endcode
/// A program adds a folder of its own on top of the default bundle's:
///
///   auto p = std::make_shared<Platform>(*Platform::environment_default());
///   p->resources.push_back(folder_resources("/opt/beam/resources"));
///   ScopedPlatform scope(p);  // or pass p to the constructors
///   std::optional<std::string> menu = read_resource(sources, "ZK_PROMENU.INI", 1 << 20); @file
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelkora::platform {

/// One tree of resource files. Names and folders are UTF-8 with "/"
/// separators, relative to the tree's root.
class ResourceSource {
 public:
  virtual ~ResourceSource() = default;
  /// Where the files come from: a folder, or "compiled-in". Two sources with
  /// the same origin hold the same files.
  virtual std::string origin() const = 0;
  /// Where the file `path` is, for messages: its path on disk, or its name
  /// among the compiled-in files.
  virtual std::string location(std::string_view path) const = 0;
  /// False for a folder that does not exist.
  virtual bool available() const = 0;
  /// Whether `folder` ("catalogue", "layouts") is a folder of the tree.
  virtual bool has_folder(std::string_view folder) const = 0;
  /// The names of the files directly in `folder` ("" for the root), sorted.
  virtual std::vector<std::string> files(std::string_view folder) const = 0;
  /// The bytes of the file `path`, or nothing when it is missing, cannot be
  /// read or is larger than `max_bytes`.
  virtual std::optional<std::string> read(std::string_view path, std::size_t max_bytes) const = 0;
};
/// The sources in force, lowest precedence first.
using ResourceSources = std::vector<std::shared_ptr<const ResourceSource>>;

/// The files compiled into the library from resources/.
std::shared_ptr<const ResourceSource> compiled_in_resources();

/// The files of a folder on disk, read when asked (std::filesystem: the same
/// on every system).
std::shared_ptr<const ResourceSource> folder_resources(std::filesystem::path folder);

/// The compiled-in resources, overridden by `folder` unless it is empty.
ResourceSources standard_resources(const std::filesystem::path& folder = {});
/// The compiled-in resources, overridden by each folder in turn (a later one
/// overrides an earlier one); empty paths are skipped.
ResourceSources standard_resources(const std::vector<std::filesystem::path>& folders);

/// The folder a source keeps its `kind` in: `kind` itself where the tree has
/// it, else the root (a resource folder may hold its files at the top).
std::string folder_of(const ResourceSource& source, std::string_view kind);

/// The bytes of `path` from the last source that has it.
std::optional<std::string> read_resource(const ResourceSources& sources, std::string_view path,
                                         std::size_t max_bytes);

}  // namespace zelkora::platform
