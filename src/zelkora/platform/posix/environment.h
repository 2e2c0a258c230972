// The real defaults of the platform layer on a POSIX system: the user's
// number locale from the environment, the message box on stderr and the
// suite services on the file system.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "zelkora/platform/platform.h"

namespace zelkora::platform::posix {

// Looks up an environment variable; nothing when it is not set.
using EnvLookup = std::function<std::optional<std::string>(const char* name)>;

// The process environment.
EnvLookup process_environment();

// The decimal and grouping symbols of LC_NUMERIC of the environment, read
// with newlocale (never setlocale); `ZELKORA_DECIMAL_SYMBOL` and
// `ZELKORA_GROUPING_SYMBOL`, when set, take precedence (an empty grouping
// symbol means none).
class EnvironmentNumberLocale : public NumberLocale {
 public:
  explicit EnvironmentNumberLocale(const EnvLookup& env = process_environment());
  Text decimal_symbol() const override { return decimal_; }
  Text grouping_symbol() const override { return grouping_; }

 private:
  Text decimal_;
  Text grouping_;
};

// Warnings and diagnostics go to the standard error stream, one line each:
// "zelkora: <title>: <text>".
class StderrMessageBox : public MessageBox {
 public:
  void warning(TextView text, TextView title) override;
  void diagnostic(std::string_view message) override;
};

// File questions answered by the file system; suite files are looked for in
// the resource folder, without regard to the case of their names.
class FileSuiteServices : public SuiteServices {
 public:
  explicit FileSuiteServices(std::filesystem::path resource_dir = {})
      : resource_dir_(std::move(resource_dir)) {}
  bool file_exists(TextView path) const override;
  Text extension(TextView file_name) const override;
  Text full_path(TextView suite_file_name) const override;

 private:
  std::filesystem::path resource_dir_;
};

}  // namespace zelkora::platform::posix
