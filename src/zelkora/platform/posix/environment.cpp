// The POSIX number locale, message box and suite services.
#include "zelkora/platform/posix/environment.h"
#include "zelkora/platform/posix/file_io.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdio>
#include <cstdlib>
#include <system_error>

namespace zelkora::platform::posix {

namespace {

// A locale string as text: UTF-8 when it decodes as such, else byte by byte.
Text locale_text(const char* bytes) {
  if (!bytes) return {};
  Text out;
  if (append_utf8(bytes, out)) return out;
  out.clear();
  for (const char* p = bytes; *p; ++p) out.push_back(static_cast<unsigned char>(*p));
  return out;
}

}  // namespace

EnvLookup process_environment() {
  return [](const char* name) -> std::optional<std::string> {
    const char* value = std::getenv(name);
    if (!value) return std::nullopt;
    return std::string(value);
  };
}

EnvironmentNumberLocale::EnvironmentNumberLocale(const EnvLookup& env)
    : decimal_(u"."), grouping_(u",") {
  // The locale name as the C library would choose it for LC_NUMERIC.
  std::string name = "C";
  for (const char* var : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
    if (auto value = env(var); value && !value->empty()) {
      name = *value;
      break;
    }
  }
  if (locale_t loc = newlocale(LC_NUMERIC_MASK, name.c_str(), static_cast<locale_t>(nullptr))) {
    Text decimal = locale_text(nl_langinfo_l(RADIXCHAR, loc));
    if (!decimal.empty()) decimal_ = decimal;
    grouping_ = locale_text(nl_langinfo_l(THOUSEP, loc));
    freelocale(loc);
  }
  if (auto decimal = env("ZELKORA_DECIMAL_SYMBOL"); decimal && !decimal->empty()) {
    decimal_ = from_utf8(*decimal);
  }
  if (auto grouping = env("ZELKORA_GROUPING_SYMBOL")) grouping_ = from_utf8(*grouping);
}

void StderrMessageBox::warning(TextView text, TextView title) {
  std::fprintf(stderr, "zelkora: %s: %s\n", to_utf8(title).c_str(), to_utf8(text).c_str());
}

void StderrMessageBox::diagnostic(std::string_view message) {
  std::fprintf(stderr, "zelkora: %.*s\n", static_cast<int>(message.size()), message.data());
}

bool FileSuiteServices::file_exists(TextView path) const {
  std::error_code ec;
  return !path.empty() && std::filesystem::is_regular_file(path_from_text(path), ec);
}

Text FileSuiteServices::extension(TextView file_name) const {
  return file_name_extension(file_name);
}

Text FileSuiteServices::full_path(TextView suite_file_name) const {
  if (resource_dir_.empty() || suite_file_name.empty()) return {};
  std::error_code ec;
  const std::filesystem::path exact = resource_dir_ / path_from_text(suite_file_name);
  if (std::filesystem::is_regular_file(exact, ec)) return from_utf8(exact.string());
  for (std::filesystem::directory_iterator it(resource_dir_, ec), end; !ec && it != end;
       it.increment(ec)) {
    if (equal_text(from_utf8(it->path().filename().string()), suite_file_name, Compare::Text) &&
        it->is_regular_file(ec)) {
      return from_utf8(it->path().string());
    }
  }
  return {};
}

}  // namespace zelkora::platform::posix
