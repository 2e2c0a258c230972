/// The library's view of everything outside it: the per-user settings store,
/// INI files, the message box, the user's number locale, the suite service
/// object, the data files and the help viewer. `Platform` bundles one
/// implementation of each.
///
/// Every class of the library captures `Platform::current()` when it is
/// created. The process-wide default is built from the environment by the
/// composition root (platform/defaults.cpp), the one place that names the
/// implementations; tests and embedding programs swap it for the life of a
/// `ScopedPlatform`, or pass a bundle to a constructor. Nothing here changes
/// process-wide state such as the C locale. @file
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zelkora/platform/file_service.h"
#include "zelkora/platform/progress.h"
#include "zelkora/platform/resources.h"
#include "zelkora/platform/text.h"

namespace zelkora::platform {

/// Per-user named settings, addressed by application, section and key.
/// Reading never creates a key or a file.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The stored value, or nothing when the key or the whole store is missing.
  virtual std::optional<Text> get(TextView application, TextView section, TextView key) const = 0;
  /// Stores a value (the options dialog of a calling program does this; the
  /// library itself only reads). False when it could not be stored.
  virtual bool set(TextView application, TextView section, TextView key, TextView value) = 0;

  /// The stored value, or `default_value` when there is none.
  Text get_or(TextView application, TextView section, TextView key, TextView default_value) const;
};

/// INI files of the suite with the semantics of the classic private-profile
/// calls. Section and key names are compared without regard to case; files
/// are in code page 936.
class IniFiles {
 public:
  virtual ~IniFiles() = default;
  /// The value of `key` in `section` of `file`, without surrounding blanks
  /// (and surrounding quotes), cut to the 512-character read buffer; the
  /// default (without its trailing blanks) when the file, section or key is
  /// missing.
  virtual Text read(TextView section, TextView key, TextView default_value,
                    TextView file) const = 0;
  /// Writes `key=value` into `section`, creating the file or the section when
  /// needed and keeping every other line. No value removes the key. False when
  /// the file could not be written; the old file is then left as it was.
  virtual bool write(TextView section, TextView key, std::optional<TextView> value,
                     TextView file) = 0;
};

/// The modal message box of the host, and the channel for problems the
/// library finds in its own resources.
class MessageBox {
 public:
  virtual ~MessageBox() = default;
  /// A modal warning with the exclamation icon and one OK button.
  virtual void warning(TextView text, TextView title) = 0;
  /// @{ A modal question with the question icon and the buttons Yes and Cancel;
  /// the answer is kYes or kCancel. A host that cannot ask answers kYes.
  static constexpr int32_t kYes = 6;
  static constexpr int32_t kCancel = 2;  ///< The answer Cancel.
  virtual int32_t question(TextView /*text*/, TextView /*title*/) { return kYes; }  /// @}
  /// A problem found by the library itself (a damaged resource file, say),
  /// in UTF-8, for the developer rather than the engineer.
  virtual void diagnostic(std::string_view message) = 0;
};

/// The user's number conventions.
class NumberLocale {
 public:
  virtual ~NumberLocale() = default;
  virtual Text decimal_symbol() const = 0;   ///< "." or ","; never empty
  virtual Text grouping_symbol() const = 0;  ///< "," "." " " ...; empty when none
};

/// The suite service object: a component of the suite outside the library.
class SuiteServices {
 public:
  virtual ~SuiteServices() = default;
  virtual bool file_exists(TextView path) const = 0;  ///< Whether `path` names an existing file.
  /// The extension of a file name without its dot ("a.zks" gives "zks"), or
  /// empty text when it has none.
  virtual Text extension(TextView file_name) const = 0;
  /// The full path of a named suite file ("Zelkora.chm"), or empty text when
  /// the suite does not have it.
  virtual Text full_path(TextView suite_file_name) const = 0;
  /// The full path of a per-user file of the suite that the library writes
  /// ("ZK_Form.INI"), kept where the history file "ZK_History.INI" is kept,
  /// whether it exists yet or not; its folder is made when missing. Empty
  /// text when the suite keeps no such files.
  virtual Text user_file(TextView /*suite_file_name*/) { return {}; }
  /// @{ History records of the suite's programs. Absent unless the suite
  /// provides them: reading gives nothing, adding fails quietly.
  virtual std::vector<Text> history(TextView /*program*/) const { return {}; }
  virtual bool add_history(TextView /*program*/, TextView /*entry*/) { return false; }  /// @}
};

/// The system's viewer of compiled HTML help ("Zelkora.chm").
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  /// Opens the help file `file` (a full path) at `topic`, a page inside it
  /// ("beam.htm"), or at its start when `topic` is empty. False when it could
  /// not be shown.
  virtual bool show(TextView file, TextView topic) = 0;
};
/// One implementation of each interface the library uses outside itself.
struct Platform {
  std::shared_ptr<SettingsStore> settings;  ///< The per-user settings store.
  std::shared_ptr<IniFiles> ini;            ///< The INI files.
  std::shared_ptr<MessageBox> messages;     ///< The message box.
  std::shared_ptr<NumberLocale> locale;     ///< The user's number conventions.
  std::shared_ptr<SuiteServices> suite;     ///< The suite service object.
  /// The files of the project data files (binary reading and writing, safe
  /// replacement, copies).
  std::shared_ptr<FileService> files;
  /// The progress display of DisplayProcess; null for none.
  std::shared_ptr<ProgressDisplay> progress;
  /// The help viewer; null where the system has none.
  std::shared_ptr<HelpViewer> help;
  /// The library's catalogue, layouts and menu file, lowest precedence first
  /// (platform/resources.h).
  ResourceSources resources;

  /// The bundle in force: the innermost `ScopedPlatform`, else the default.
  static std::shared_ptr<const Platform> current();
  /// The default bundle, built once from the environment: this system's
  /// settings store, INI files, data files, number locale, suite services,
  /// message box and help viewer, and the compiled-in resources overridden by
  /// the folder `ZELKORA_RESOURCES`.
  static std::shared_ptr<const Platform> environment_default();
  /// A bundle of in-memory implementations with "." and "," as number symbols
  /// and the compiled-in resources; for tests and headless hosts.
  static std::shared_ptr<Platform> headless();
};

/// Makes `platform` the current bundle until the end of the scope. Scopes
/// nest; they belong to the user-interface thread like everything else.
class ScopedPlatform {
 public:
  explicit ScopedPlatform(std::shared_ptr<const Platform> platform);  ///< Makes `platform` current.
  ~ScopedPlatform();
  ScopedPlatform(const ScopedPlatform&) = delete;
  ScopedPlatform& operator=(const ScopedPlatform&) = delete;

 private:
  std::shared_ptr<const Platform> previous_;
};

}  // namespace zelkora::platform
