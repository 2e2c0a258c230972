#include "zelkora/datafile/cls_load_save.h"

namespace zelkora {

clsLoadSave::clsLoadSave() : clsLoadSave(platform::Platform::current()) {}

clsLoadSave::clsLoadSave(std::shared_ptr<const platform::Platform> platform)
    : platform_(std::move(platform)), suite_(platform_->suite) {}

clsLoadSave::~clsLoadSave() { suite_.reset(); }

}  // namespace zelkora
