// The POSIX environment, number locale and settings file place.
#include "zelkora/platform/posix/environment.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdlib>

namespace zelkora::platform {

EnvLookup process_environment() {
  return [](const char* name) -> std::optional<std::string> {
    const char* value = std::getenv(name);
    if (!value) return std::nullopt;
    return std::string(value);
  };
}

namespace posix {

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
  apply_number_overrides(env, decimal_, grouping_);
}

std::filesystem::path settings_file_path(const EnvLookup& env) {
  if (auto file = settings_file_override(env)) return *file;
  const auto non_empty = [&](const char* name) {
    std::optional<std::string> value = env(name);
    return value && !value->empty() ? value : std::nullopt;
  };
  if (auto config = non_empty("XDG_CONFIG_HOME");
      config && std::filesystem::path(*config).is_absolute()) {
    return std::filesystem::path(*config) / "zelkora" / "settings.ini";
  }
  if (auto home = non_empty("HOME")) {
    return std::filesystem::path(*home) / ".config" / "zelkora" / "settings.ini";
  }
  return {};
}

}  // namespace posix

}  // namespace zelkora::platform
