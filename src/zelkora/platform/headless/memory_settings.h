/// Settings kept in memory: `platform::SettingsStore` for tests and headless
/// hosts. The store is the text of a settings file and follows the same rules
/// as the file on disk (sections "[<application>/<section>]", names compared
/// without regard to case, UTF-8), so a test can
/// start from the content of a real file and look at what was stored.
///
///   MemorySettingsStore settings(u"[App/Options]\n1cboOpt=2\n");
///   settings.get(u"app", u"options", u"1CBOOPT");  // u"2" @file
#pragma once

#include <optional>
#include <utility>

#include "zelkora/platform/platform.h"

namespace zelkora::platform::headless {
/// Settings kept in memory (see the file).
class MemorySettingsStore final : public SettingsStore {
 public:
  MemorySettingsStore() = default;  ///< An empty store.
  explicit MemorySettingsStore(Text content) : content_(std::move(content)) {}
  ///< A store with the text `content`.
  std::optional<Text> get(TextView application, TextView section, TextView key) const override;
  bool set(TextView application, TextView section, TextView key, TextView value) override;

  /// The whole store as the text of a settings file.
  const Text& content() const { return content_; }
  void set_content(Text content) { content_ = std::move(content); }  ///< Replaces the whole store.

 private:
  Text content_;
};

}  // namespace zelkora::platform::headless
