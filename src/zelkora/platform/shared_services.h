// What the platforms of real systems share: the process environment and the
// overrides that scripts and tests set in it, the suite services over the
// suite's folders, and the diagnostics on the standard error stream.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "zelkora/platform/ini_history.h"
#include "zelkora/platform/platform.h"

namespace zelkora::platform {

// Looks up an environment variable; its value in UTF-8, or nothing when it
// is not set.
using EnvLookup = std::function<std::optional<std::string>(const char* name)>;

// The process environment (each system reads it its own way: Windows in
// UTF-16, whatever its ANSI code page).
EnvLookup process_environment();

// Applies the overrides of the user's number symbols: `ZELKORA_DECIMAL_SYMBOL`
// when set and not empty, `ZELKORA_GROUPING_SYMBOL` when set (empty means no
// grouping).
void apply_number_overrides(const EnvLookup& env, Text& decimal, Text& grouping);

// The settings file named by `ZELKORA_SETTINGS` (it replaces the system's
// settings store), or nothing when the variable is unset or empty.
std::optional<std::filesystem::path> settings_file_override(const EnvLookup& env);

// The separator of a list of folders in a variable, as in PATH: ';' where
// paths are written with "\\" (Windows), ':' elsewhere.
inline constexpr char kFolderListSeparator =
    std::filesystem::path::preferred_separator == '\\' ? ';' : ':';

// The folders of `ZELKORA_RESOURCES`, a list separated by
// kFolderListSeparator, in the order given (a later folder overrides an
// earlier one); empty parts are skipped. None when the variable is unset or
// empty.
std::vector<std::filesystem::path> resource_folders(const EnvLookup& env);

// File questions answered by the file system; suite files are looked for in
// the given folders in order, without regard to the case of their names.
// The history is kept in the history file given, if any, and the suite's
// other per-user files beside it.
class FolderSuiteServices : public SuiteServices {
 public:
  explicit FolderSuiteServices(std::vector<std::filesystem::path> folders = {},
                               std::shared_ptr<IniHistory> history = nullptr)
      : folders_(std::move(folders)), history_(std::move(history)) {}
  bool file_exists(TextView path) const override;
  Text extension(TextView file_name) const override;
  Text full_path(TextView suite_file_name) const override;
  std::vector<Text> history(TextView program) const override;
  bool add_history(TextView program, TextView entry) override;
  // Beside the history file; empty without one.
  Text user_file(TextView suite_file_name) override;

 private:
  std::vector<std::filesystem::path> folders_;
  std::shared_ptr<IniHistory> history_;
};

// Warnings and diagnostics go to the standard error stream, one line each:
// "zelkora: <title>: <text>", in UTF-8.
class StderrMessageBox : public MessageBox {
 public:
  void warning(TextView text, TextView title) override;
  void diagnostic(std::string_view message) override;
};

}  // namespace zelkora::platform
