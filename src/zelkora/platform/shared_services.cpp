// The environment overrides, the suite services over folders and the
// diagnostics on stderr.
#include "zelkora/platform/shared_services.h"

#include <cstdio>
#include <system_error>

#include "zelkora/platform/paths.h"

namespace zelkora::platform {

namespace {

std::optional<std::string> non_empty(const EnvLookup& env, const char* name) {
  std::optional<std::string> value = env(name);
  if (value && value->empty()) value.reset();
  return value;
}

// The entry of `folder` named `name`: the one spelt exactly so, else the
// first that differs only in case. Its name as it is on the disk.
Text find_in_folder(const std::filesystem::path& folder, TextView name) {
  std::error_code ec;
  Text found;
  for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end;
       it.increment(ec)) {
    const Text entry = text_from_path(it->path().filename());
    if (!equal_text(entry, name, Compare::Text) || !it->is_regular_file(ec)) continue;
    if (entry == name) return text_from_path(it->path());
    if (found.empty()) found = text_from_path(it->path());
  }
  return found;
}

}  // namespace

void apply_number_overrides(const EnvLookup& env, Text& decimal, Text& grouping) {
  if (auto value = non_empty(env, "ZELKORA_DECIMAL_SYMBOL")) decimal = from_utf8(*value);
  if (auto value = env("ZELKORA_GROUPING_SYMBOL")) grouping = from_utf8(*value);
}

std::optional<std::filesystem::path> settings_file_override(const EnvLookup& env) {
  if (auto file = non_empty(env, "ZELKORA_SETTINGS")) return path_from_utf8(*file);
  return std::nullopt;
}

std::vector<std::filesystem::path> resource_folders(const EnvLookup& env) {
  std::vector<std::filesystem::path> folders;
  const std::string list = non_empty(env, "ZELKORA_RESOURCES").value_or(std::string());
  std::size_t start = 0;
  while (start <= list.size()) {
    std::size_t end = list.find(kFolderListSeparator, start);
    if (end == std::string::npos) end = list.size();
    if (end > start) folders.push_back(path_from_utf8(list.substr(start, end - start)));
    start = end + 1;
  }
  return folders;
}

bool FolderSuiteServices::file_exists(TextView path) const {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_regular_file(path_from_text(path), ec);
}

Text FolderSuiteServices::extension(TextView file_name) const {
  return file_name_extension(file_name);
}

Text FolderSuiteServices::full_path(TextView suite_file_name) const {
  if (suite_file_name.empty()) return {};
  for (const std::filesystem::path& folder : folders_) {
    if (folder.empty()) continue;
    if (Text found = find_in_folder(folder, suite_file_name); !found.empty()) return found;
  }
  return {};
}

std::vector<Text> FolderSuiteServices::history(TextView program) const {
  return history_ ? history_->files(program) : std::vector<Text>{};
}

bool FolderSuiteServices::add_history(TextView program, TextView entry) {
  if (!history_) return false;
  // The user's folder of the history may not be there yet.
  std::error_code ec;
  std::filesystem::create_directories(path_from_text(history_->file()).parent_path(), ec);
  return history_->add(program, entry);
}

Text FolderSuiteServices::user_file(TextView suite_file_name) {
  if (!history_ || suite_file_name.empty()) return {};
  const std::filesystem::path folder = path_from_text(history_->file()).parent_path();
  std::error_code ec;
  if (!folder.empty()) std::filesystem::create_directories(folder, ec);
  return text_from_path(folder / path_from_text(suite_file_name));
}

void StderrMessageBox::warning(TextView text, TextView title) {
  std::fprintf(stderr, "zelkora: %s: %s\n", to_utf8(title).c_str(), to_utf8(text).c_str());
}

void StderrMessageBox::diagnostic(std::string_view message) {
  std::fprintf(stderr, "zelkora: %.*s\n", static_cast<int>(message.size()), message.data());
}

}  // namespace zelkora::platform
