// The composition root: the one place that chooses the implementations of
// the platform interfaces and builds the standard bundles from them. A new
// system is a new folder beside posix/ and a branch here.
#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/headless/recording_progress.h"
#include "zelkora/platform/platform.h"
#include "zelkora/platform/posix/data_files.h"
#include "zelkora/platform/posix/environment.h"
#include "zelkora/platform/posix/ini_files.h"
#include "zelkora/platform/posix/settings_file.h"

namespace zelkora::platform {

std::shared_ptr<const Platform> Platform::environment_default() {
  static const std::shared_ptr<const Platform> platform = [] {
    auto p = std::make_shared<Platform>();
    const posix::EnvLookup env = posix::process_environment();
    std::filesystem::path resource_dir;
    if (auto dir = env("ZELKORA_RESOURCES"); dir && !dir->empty()) resource_dir = *dir;
    p->resources = standard_resources(resource_dir);
    auto messages = std::make_shared<posix::StderrMessageBox>();
    p->messages = messages;
    p->settings = std::make_shared<posix::PosixSettingsStore>(
        posix::PosixSettingsStore::default_path(),
        [messages](std::string_view problem) { messages->diagnostic(problem); });
    p->ini = std::make_shared<posix::PosixIniFiles>();
    p->locale = std::make_shared<posix::EnvironmentNumberLocale>(env);
    p->suite = std::make_shared<posix::FileSuiteServices>(resource_dir);
    p->files = posix::posix_file_service();
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
  p->resources = standard_resources();
  return p;
}

}  // namespace zelkora::platform
