// The bundle in force, and its scopes.
#include "zelkora/platform/platform.h"

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

ScopedPlatform::ScopedPlatform(std::shared_ptr<const Platform> platform)
    : previous_(std::move(scoped_current())) {
  scoped_current() = std::move(platform);
}

ScopedPlatform::~ScopedPlatform() { scoped_current() = std::move(previous_); }

}  // namespace zelkora::platform
