// The per-user settings file: `platform::SettingsStore` over an INI file in
// UTF-8 with one section per application and section, written
// "[<application>/<section>]":
//
//   [Zelkora 结构快速设计/Options]
//   1cboOpt=2
//
// Names are compared without regard to case and values are read as in the
// suite's INI files (see platform/ini_text.h). The file is parsed once and
// parsed again only when it changes on disk: when its identity, size,
// modification or change time changes (a file changed in the last two seconds
// is parsed at every read, as file times are coarse). Reading never creates
// the file or a key. A missing file, one that cannot be read and one that is
// not valid UTF-8 all read as having no keys; the last two are reported once
// (per state of the file) through the diagnostic hook, and `set` refuses to
// overwrite them. `set` writes the whole file atomically, creating its
// folders. A value with a line break cannot be stored.
//
//   SettingsFile settings(path);
//   Text opt = settings.get_or(u"Zelkora 结构快速设计", u"Options", u"1cboOpt", u"0");
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

#include "zelkora/platform/ini_text.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/whole_file.h"

namespace zelkora::platform {

class SettingsFile final : public SettingsStore {
 public:
  // Receives a message in UTF-8 about a settings file that cannot be used.
  using Diagnostic = std::function<void(std::string_view)>;

  static constexpr std::size_t kMaxFileSize = std::size_t{4} << 20;

  // The store of `file`; an empty path gives a store without keys that
  // cannot store any.
  explicit SettingsFile(std::filesystem::path file, Diagnostic diagnostic = {});

  const std::filesystem::path& path() const { return path_; }

  std::optional<Text> get(TextView application, TextView section, TextView key) const override;
  bool set(TextView application, TextView section, TextView key, TextView value) override;

 private:
  enum class State { Missing, Usable, Unusable };
  struct Loaded {
    State state = State::Missing;
    Text content;  // empty unless usable
  };

  // Reads and checks the file as it is now, reporting a file that cannot be
  // used once per stamp. Called with `mutex_` held.
  Loaded load(FileStamp* stamp) const;
  void report(std::string_view problem) const;

  std::filesystem::path path_;
  Diagnostic diagnostic_;

  mutable std::mutex mutex_;
  mutable bool cached_ = false;
  mutable bool settled_ = false;                     // the cached file had not changed lately
  mutable std::optional<FileStamp> stamp_;           // of the cached state; nothing when missing
  mutable std::unique_ptr<const ini::Index> index_;  // the cached content, parsed
  mutable std::optional<FileStamp> reported_;
};

}  // namespace zelkora::platform
