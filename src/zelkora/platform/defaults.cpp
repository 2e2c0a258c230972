// The composition root: the one place that chooses the implementations of
// the platform interfaces and builds the standard bundles from them. A new
// system is a new folder beside posix/ and win32/ and a branch here.
#include "zelkora/platform/disk_ini_files.h"
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/headless/recording_progress.h"
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
#endif

namespace zelkora::platform {

namespace {

#if defined(_WIN32)

// Windows: the registry (unless ZELKORA_SETTINGS names a settings file), the
// regional settings, the system's message box and help viewer; suite files
// in the resource folder and beside the program.
void add_system_services(Platform& p, const EnvLookup& env,
                         const std::filesystem::path& resources) {
  auto messages = std::make_shared<win32::Win32MessageBox>();
  p.messages = messages;
  if (auto file = settings_file_override(env)) {
    p.settings = std::make_shared<SettingsFile>(
        *file, [messages](std::string_view problem) { messages->diagnostic(problem); });
  } else {
    p.settings = std::make_shared<win32::RegistrySettingsStore>();
  }
  p.locale = std::make_shared<win32::SystemNumberLocale>(env);
  p.suite = std::make_shared<FolderSuiteServices>(
      std::vector<std::filesystem::path>{resources, win32::program_folder()});
  p.files = win32::win32_file_service();
  p.help = std::make_shared<win32::HtmlHelpViewer>();
}

#else

// POSIX: the settings file, the locale of the environment, messages on
// stderr; suite files in the resource folder; no help viewer.
void add_system_services(Platform& p, const EnvLookup& env,
                         const std::filesystem::path& resources) {
  auto messages = std::make_shared<StderrMessageBox>();
  p.messages = messages;
  p.settings = std::make_shared<SettingsFile>(
      posix::settings_file_path(env),
      [messages](std::string_view problem) { messages->diagnostic(problem); });
  p.locale = std::make_shared<posix::EnvironmentNumberLocale>(env);
  p.suite = std::make_shared<FolderSuiteServices>(std::vector<std::filesystem::path>{resources});
  p.files = posix::posix_file_service();
}

#endif

}  // namespace

std::shared_ptr<const Platform> Platform::environment_default() {
  static const std::shared_ptr<const Platform> platform = [] {
    auto p = std::make_shared<Platform>();
    const EnvLookup env = process_environment();
    const std::filesystem::path resources = resource_folder(env);
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
  p->suite = std::make_shared<headless::MemorySuiteServices>();
  p->files = std::make_shared<headless::MemoryFileService>();
  p->progress = std::make_shared<headless::RecordingProgressDisplay>();
  p->help = std::make_shared<headless::RecordingHelpViewer>();
  p->resources = standard_resources();
  return p;
}

}  // namespace zelkora::platform
