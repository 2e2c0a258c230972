// Check expressions come from layouts and values from the user: a check
// under any number notation and language offset answers with a number and
// never raises; an accepted value leaves no message.
#include <cstdint>
#include <memory>

#include "fuzz/fuzz_input.h"
#include "zelkora/checking/cls_err_chr.h"
#include "zelkora/platform/headless/headless.h"

namespace {

std::shared_ptr<zelkora::platform::Platform> with_symbols(char16_t decimal, char16_t grouping) {
  auto p = zelkora::platform::Platform::headless();
  p->locale = std::make_shared<zelkora::platform::headless::FixedNumberLocale>(
      zelkora::Text(1, decimal), zelkora::Text(1, grouping));
  return p;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::shared_ptr<zelkora::platform::Platform> platforms[] = {
      with_symbols(u'.', u','), with_symbols(u',', u'.'), with_symbols(u',', u' ')};
  fuzz::Input in(data, size);
  const uint8_t choice = in.byte();
  const int32_t offset = static_cast<int32_t>(in.number()) * 65536;
  const std::vector<zelkora::Text> t = in.texts(3);
  zelkora::clsErrChr err(platforms[choice % 3]);
  if (choice & 0x80) err.lLanguage(offset);
  const int32_t number = err.GenCheckCboEnterNumErrW(t[0], t[1], t[2], true);
  if (number == 0 && !err.tError_Txt().empty()) __builtin_trap();
  (void)err.CheckCboListErrW(choice, t[1], t[2], zelkora::Compare::Text, true);
  (void)err.GenCheckHntQdDj(t[2], true);
  return 0;
}
