// The per-user settings store of Windows: the registry of the current user,
// a key per application and section under `HKEY_CURRENT_USER\Software`
// (`HKEY_CURRENT_USER\Software\Zelkora 结构快速设计\Options`, value
// "1cboOpt"), values as strings (REG_SZ). Wide-character calls throughout.
//
// Reading opens keys for querying only and so never creates one; a value of
// another type reads as missing, except a REG_DWORD, which reads as its
// decimal number. Names with "\" (which would name other keys) and values
// larger than 64 KiB are refused. `set` creates the keys it needs.
//
//   RegistrySettingsStore settings;
//   Text opt = settings.get_or(u"Zelkora 结构快速设计", u"Options", u"1cboOpt", u"0");
#pragma once

#include "zelkora/platform/platform.h"

namespace zelkora::platform::win32 {

class RegistrySettingsStore final : public SettingsStore {
 public:
  // The settings under `HKEY_CURRENT_USER\<root>`; the tests use a root of
  // their own.
  explicit RegistrySettingsStore(Text root = u"Software") : root_(std::move(root)) {}

  std::optional<Text> get(TextView application, TextView section, TextView key) const override;
  bool set(TextView application, TextView section, TextView key, TextView value) override;

  // The key path below HKEY_CURRENT_USER of an application's section, or
  // nothing for names the registry cannot take as one key each.
  std::optional<Text> key_path(TextView application, TextView section) const;

 private:
  Text root_;
};

}  // namespace zelkora::platform::win32
