// The Windows number locale, message box, help viewer and program folder.
#include "zelkora/platform/win32/system_services.h"

#include <string>

#include "zelkora/platform/win32/wide.h"
#include "zelkora/platform/win32/windows_api.h"
// After <windows.h>, whose types it uses.
#include <htmlhelp.h>

namespace zelkora::platform {

EnvLookup process_environment() {
  return [](const char* name) -> std::optional<std::string> {
    const std::wstring wide_name = win32::wide(from_utf8(name));
    std::wstring value(256, L'\0');
    for (;;) {
      ::SetLastError(ERROR_SUCCESS);
      const DWORD n = ::GetEnvironmentVariableW(wide_name.c_str(), value.data(),
                                                static_cast<DWORD>(value.size()));
      if (n == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
      if (n < value.size()) {
        value.resize(n);
        return to_utf8(win32::from_wide(value));
      }
      value.resize(n);  // the size needed, with the terminator
    }
  };
}

namespace win32 {

namespace {

Text locale_info(LCTYPE type) {
  wchar_t buffer[16] = {};
  const int n = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, buffer, 16);
  return n > 1 ? from_wide(std::wstring_view(buffer, static_cast<std::size_t>(n - 1))) : Text();
}

// The caption of the Yes button in the user's interface language.
const wchar_t* yes_caption() {
  return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_CHINESE ? L"\x662F(&Y)" : L"&Yes";
}

// Renames the OK button of the next message box of this thread to Yes.
thread_local HHOOK yes_hook = nullptr;

LRESULT CALLBACK caption_yes(int code, WPARAM wparam, LPARAM lparam) {
  const HHOOK hook = yes_hook;
  if (code == HCBT_ACTIVATE) {
    ::SetDlgItemTextW(reinterpret_cast<HWND>(wparam), IDOK, yes_caption());
    ::UnhookWindowsHookEx(hook);
    yes_hook = nullptr;
  }
  return ::CallNextHookEx(hook, code, wparam, lparam);
}

int show_box(TextView text, TextView title, UINT style) {
  const HWND owner = ::GetActiveWindow();
  style |= MB_SETFOREGROUND | (owner ? MB_APPLMODAL : MB_TASKMODAL);
  return ::MessageBoxW(owner, wide(text).c_str(), wide(title).c_str(), style);
}

}  // namespace

SystemNumberLocale::SystemNumberLocale(const EnvLookup& env) : decimal_(u"."), grouping_(u",") {
  if (Text decimal = locale_info(LOCALE_SDECIMAL); !decimal.empty()) decimal_ = decimal;
  grouping_ = locale_info(LOCALE_STHOUSAND);
  const Text grouping = locale_info(LOCALE_SGROUPING);
  if (grouping.empty() || grouping.front() == u'0') grouping_.clear();
  apply_number_overrides(env, decimal_, grouping_);
}

void Win32MessageBox::warning(TextView text, TextView title) {
  show_box(text, title, MB_OK | MB_ICONWARNING);
}

int32_t Win32MessageBox::question(TextView text, TextView title) {
  yes_hook = ::SetWindowsHookExW(WH_CBT, caption_yes, nullptr, ::GetCurrentThreadId());
  const int answer = show_box(text, title, MB_OKCANCEL | MB_ICONQUESTION);
  if (yes_hook) {  // no box was shown
    ::UnhookWindowsHookEx(yes_hook);
    yes_hook = nullptr;
  }
  return answer == IDCANCEL ? kCancel : kYes;  // a box that cannot be shown answers Yes
}

bool HtmlHelpViewer::show(TextView file, TextView topic) {
  Text target(file);
  if (!topic.empty()) {
    target += u"::/";
    target += topic;
  }
  const HWND owner = ::GetActiveWindow();
  return ::HtmlHelpW(owner ? owner : ::GetDesktopWindow(), wide(target).c_str(), HH_DISPLAY_TOPIC,
                     0) != nullptr;
}

std::filesystem::path program_folder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD n = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (n == 0) return {};
    if (n < name.size()) {
      name.resize(n);
      return std::filesystem::path(name).parent_path();
    }
    name.resize(name.size() * 2);
  }
}

}  // namespace win32

}  // namespace zelkora::platform
