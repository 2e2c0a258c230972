#include "zelkora/platform/platform.h"

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/memory_files.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/headless/memory_settings.h"
#include "zelkora/platform/headless/recording_progress.h"
#include "zelkora/platform/posix/data_files.h"
#include "zelkora/platform/posix/environment.h"
#include "zelkora/platform/posix/ini_files.h"
#include "zelkora/platform/posix/settings_file.h"

namespace zelkora::platform {

namespace {

std::shared_ptr<const Platform>& scoped_current() {
  static std::shared_ptr<const Platform> current;
  return current;
}

}  // namespace

std::shared_ptr<const Platform> Platform::current() {
  const auto& scoped = scoped_current();
  return scoped ? scoped : environment_default();
}

std::shared_ptr<const Platform> Platform::environment_default() {
  static const std::shared_ptr<const Platform> platform = [] {
    auto p = std::make_shared<Platform>();
    const posix::EnvLookup env = posix::process_environment();
    if (auto dir = env("ZELKORA_RESOURCES"); dir && !dir->empty()) p->resource_dir = *dir;
    auto messages = std::make_shared<posix::StderrMessageBox>();
    p->messages = messages;
    p->settings = std::make_shared<posix::PosixSettingsStore>(
        posix::PosixSettingsStore::default_path(),
        [messages](std::string_view problem) { messages->diagnostic(problem); });
    p->ini = std::make_shared<posix::PosixIniFiles>();
    p->locale = std::make_shared<posix::EnvironmentNumberLocale>(env);
    p->suite = std::make_shared<posix::FileSuiteServices>(p->resource_dir);
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
  return p;
}

ScopedPlatform::ScopedPlatform(std::shared_ptr<const Platform> platform)
    : previous_(std::move(scoped_current())) {
  scoped_current() = std::move(platform);
}

ScopedPlatform::~ScopedPlatform() { scoped_current() = std::move(previous_); }

}  // namespace zelkora::platform
