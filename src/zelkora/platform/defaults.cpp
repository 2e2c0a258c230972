// The composition root: the one place that chooses the implementations of
// the platform interfaces and builds the standard bundles from them. A new
// system is a new folder beside posix/ and win32/ and a branch here.
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/headless/recording_progress.h"
#include "zelkora/platform/paths.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/settings_file.h"
#include "zelkora/platform/shared_services.h"
#if defined(_WIN32)
#include "zelkora/platform/win32/data_files.h"
#include "zelkora/platform/win32/registry_settings.h"
#include "zelkora/platform/win32/system_services.h"
#else
#include "zelkora/platform/posix/data_files.h"
#include "zelkora/platform/posix/environment.h"
#include "zelkora/platform/posix/help_opener.h"
#endif

namespace zelkora::platform {

namespace {

// The folders of suite files: the resource folders, the one that overrides
// the others first.
std::vector<std::filesystem::path> suite_folders(
    const std::vector<std::filesystem::path>& resources) {
  return {resources.rbegin(), resources.rend()};
}

// The folder of the suite's history: the resource folder that overrides the
// others, else `otherwise`.
std::filesystem::path history_folder(const std::vector<std::filesystem::path>& resources,
                                     const std::filesystem::path& otherwise) {
  return resources.empty() ? otherwise : resources.back();
}

// The suite's history file in `folder`, read and written through the
// bundle's INI files; none without a folder.
std::shared_ptr<IniHistory> history_in(const Platform& p, const std::filesystem::path& folder,
                                       PathCase path_case) {
  if (folder.empty()) return nullptr;
  return std::make_shared<IniHistory>(
      p.ini, text_from_path(folder / path_from_text(IniHistory::kFileName)), path_case);
}

#if defined(_WIN32)

// Windows: the registry (unless ZELKORA_SETTINGS names a settings file), the
// regional settings, the system's message box and help viewer; suite files
// in the resource folders and beside the program.
void add_system_services(Platform& p, const EnvLookup& env,
                         const std::vector<std::filesystem::path>& resources) {
  auto messages = std::make_shared<win32::Win32MessageBox>();
  p.messages = messages;
  if (auto file = settings_file_override(env)) {
    p.settings = std::make_shared<SettingsFile>(
        *file, [messages](std::string_view problem) { messages->diagnostic(problem); });
  } else {
    p.settings = std::make_shared<win32::RegistrySettingsStore>();
  }
  p.locale = std::make_shared<win32::SystemNumberLocale>(env);
  const std::filesystem::path program = win32::program_folder();
  std::vector<std::filesystem::path> folders = suite_folders(resources);
  folders.push_back(program);
  p.suite = std::make_shared<FolderSuiteServices>(
      std::move(folders), history_in(p, history_folder(resources, program), PathCase::kIgnoreCase));
  p.files = win32::win32_file_service();
  p.help = std::make_shared<win32::HtmlHelpViewer>();
}

#else

// POSIX: the settings file, the locale of the environment, messages on
// stderr; suite files in the resource folders, the history in the last of
// them or beside the settings file; help through the desktop's opener.
void add_system_services(Platform& p, const EnvLookup& env,
                         const std::vector<std::filesystem::path>& resources) {
  auto messages = std::make_shared<StderrMessageBox>();
  p.messages = messages;
  p.settings = std::make_shared<SettingsFile>(
      posix::settings_file_path(env),
      [messages](std::string_view problem) { messages->diagnostic(problem); });
  p.locale = std::make_shared<posix::EnvironmentNumberLocale>(env);
  const std::filesystem::path settings = posix::settings_file_path(env);
  p.suite = std::make_shared<FolderSuiteServices>(
      suite_folders(resources),
      history_in(p, history_folder(resources, settings.parent_path()), PathCase::kExact));
  p.files = posix::posix_file_service();
  p.help = std::make_shared<posix::OpenerHelpViewer>(posix::help_opener(env));
}

#endif

}  // namespace

std::shared_ptr<const Platform> Platform::environment_default() {
  static const std::shared_ptr<const Platform> platform = [] {
    auto p = std::make_shared<Platform>();
    const EnvLookup env = process_environment();
    const std::vector<std::filesystem::path> resources = resource_folders(env);
    p->resources = standard_resources(resources);
    p->ini = std::make_shared<DiskIniFiles>();
    add_system_services(*p, env, resources);
    return std::shared_ptr<const Platform>(std::move(p));
  }();
  return platform;
}

std::shared_ptr<Platform> Platform::headless() {
  auto p = std::make_shared<Platform>();
  p->settings = std::make_shared<headless::MemorySettingsStore>();
  p->ini = std::make_shared<headless::MemoryIniFiles>();
  p->messages = std::make_shared<headless::RecordingMessageBox>();
  p->locale = std::make_shared<headless::FixedNumberLocale>();
  p->suite = std::make_shared<headless::MemorySuiteServices>(p->ini);
  p->files = std::make_shared<headless::MemoryFileService>();
  p->progress = std::make_shared<headless::RecordingProgressDisplay>();
  p->help = std::make_shared<headless::RecordingHelpViewer>();
  p->resources = standard_resources();
  return p;
}

}  // namespace zelkora::platform
