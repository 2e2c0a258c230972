// The Windows platform's services of the user's system: the number locale
// from the user's regional settings, the system's modal message box, the
// compiled HTML help viewer and the folder of the running program.
#pragma once

#include <filesystem>

#include "zelkora/platform/shared_services.h"

namespace zelkora::platform::win32 {

// The user's decimal symbol and digit grouping from the regional settings
// (GetLocaleInfoEx of the user's default locale; a grouping of "0" groups no
// digits). `ZELKORA_DECIMAL_SYMBOL` and `ZELKORA_GROUPING_SYMBOL`, when set,
// take precedence, as on every system.
class SystemNumberLocale : public NumberLocale {
 public:
  explicit SystemNumberLocale(const EnvLookup& env = process_environment());
  Text decimal_symbol() const override { return decimal_; }
  Text grouping_symbol() const override { return grouping_; }

 private:
  Text decimal_;
  Text grouping_;
};

// The system's modal message box, owned by the active window of the calling
// thread (modal to the whole thread when there is none): a warning with the
// exclamation icon and OK; a question with the question icon and the buttons
// Yes and Cancel (the box's OK button captioned "是(&Y)" on a Chinese user
// interface, "&Yes" on any other; Esc and the close box answer Cancel).
// Diagnostics go to the standard error stream.
class Win32MessageBox : public StderrMessageBox {
 public:
  void warning(TextView text, TextView title) override;
  int32_t question(TextView text, TextView title) override;
};

// Compiled HTML help through the system's viewer (HtmlHelpW, HH_DISPLAY_TOPIC).
class HtmlHelpViewer : public HelpViewer {
 public:
  bool show(TextView file, TextView topic) override;
};

// The folder of the running program (where the suite installs its files).
std::filesystem::path program_folder();

}  // namespace zelkora::platform::win32
