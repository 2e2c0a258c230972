// The in-memory suite services.
#include "zelkora/platform/headless/headless.h"

#include "zelkora/platform/file_service.h"
#include "zelkora/platform/headless/memory_ini_files.h"

namespace zelkora::platform::headless {

MemorySuiteServices::MemorySuiteServices(std::shared_ptr<IniFiles> ini)
    : history_(ini ? std::move(ini) : std::make_shared<MemoryIniFiles>(),
               Text(IniHistory::kFileName), PathCase::kExact) {}

Text MemorySuiteServices::extension(TextView file_name) const {
  return file_name_extension(file_name);
}

Text MemorySuiteServices::full_path(TextView suite_file_name) const {
  for (const auto& [name, path] : suite_files) {
    if (equal_text(name, suite_file_name, Compare::Text)) return path;
  }
  return {};
}

}  // namespace zelkora::platform::headless
