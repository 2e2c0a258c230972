#include "zelkora/checking/cls_err_chr.h"

namespace zelkora {

clsErrChr::clsErrChr() : clsErrChr(platform::Platform::current()) {}

clsErrChr::clsErrChr(std::shared_ptr<const platform::Platform> platform)
    : character_(std::make_unique<clsCharacter>(std::move(platform))),
      thousands_separator_(character_->ThousandsSeparator()) {}

clsErrChr::~clsErrChr() = default;

}  // namespace zelkora
