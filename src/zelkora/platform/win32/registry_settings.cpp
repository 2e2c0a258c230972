// The settings store over the registry of the current user.
#include "zelkora/platform/win32/registry_settings.h"

#include <string>

#include "zelkora/platform/win32/wide.h"
#include "zelkora/platform/win32/windows_api.h"

namespace zelkora::platform::win32 {

namespace {

constexpr DWORD kMaxValueBytes = 64 * 1024;

// A registry key, closed at the end of its scope.
class Key {
 public:
  Key() = default;
  ~Key() {
    if (key_) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  HKEY* out() { return &key_; }
  HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

bool usable_name(TextView name) { return !name.empty() && name.find(u'\\') == TextView::npos; }

std::optional<Text> string_value(const std::wstring& bytes_as_units, DWORD bytes) {
  std::wstring value = bytes_as_units.substr(0, bytes / sizeof(wchar_t));
  while (!value.empty() && value.back() == L'\0') value.pop_back();  // the stored terminator
  return from_wide(value);
}

}  // namespace

std::optional<Text> RegistrySettingsStore::key_path(TextView application, TextView section) const {
  if (!usable_name(application) || !usable_name(section)) return std::nullopt;
  Text path = root_;
  path.push_back(u'\\');
  path.append(application);
  path.push_back(u'\\');
  path.append(section);
  return path;
}

std::optional<Text> RegistrySettingsStore::get(TextView application, TextView section,
                                               TextView key) const {
  const std::optional<Text> path = key_path(application, section);
  if (!path || key.find(u'\\') != TextView::npos) return std::nullopt;
  Key opened;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, wide(*path).c_str(), 0, KEY_QUERY_VALUE, opened.out()) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  const std::wstring name = wide(key);
  DWORD type = 0;
  DWORD bytes = 0;
  if (::RegQueryValueExW(opened.get(), name.c_str(), nullptr, &type, nullptr, &bytes) !=
          ERROR_SUCCESS ||
      bytes > kMaxValueBytes) {
    return std::nullopt;
  }
  if (type == REG_DWORD && bytes == sizeof(DWORD)) {
    DWORD number = 0;
    if (::RegQueryValueExW(opened.get(), name.c_str(), nullptr, nullptr,
                           reinterpret_cast<BYTE*>(&number), &bytes) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    return from_utf8(std::to_string(number));
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  std::wstring units(bytes / sizeof(wchar_t) + 1, L'\0');
  DWORD got = static_cast<DWORD>(units.size() * sizeof(wchar_t));
  if (::RegQueryValueExW(opened.get(), name.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(units.data()), &got) != ERROR_SUCCESS ||
      (type != REG_SZ && type != REG_EXPAND_SZ)) {
    return std::nullopt;  // changed between the two calls
  }
  return string_value(units, got);
}

bool RegistrySettingsStore::set(TextView application, TextView section, TextView key,
                                TextView value) {
  const std::optional<Text> path = key_path(application, section);
  if (!path || key.find(u'\\') != TextView::npos ||
      (value.size() + 1) * sizeof(wchar_t) > kMaxValueBytes) {
    return false;
  }
  Key created;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, wide(*path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE, nullptr, created.out(), nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const std::wstring data = wide(value);
  return ::RegSetValueExW(created.get(), wide(key).c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(data.c_str()),
                          static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace zelkora::platform::win32
