// Rebar notation and formula markup are typed by engineers: reading them
// never crashes; what cannot be read is an error number or a documented
// Fault (a count or diameter beyond its type).
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/fault.h"
#include "zelkora/platform/headless/headless.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const clsCharacter chr(platform::Platform::headless());
  fuzz::Input in(data, size);
  const Text text = in.texts(1)[0];
  int32_t count = 0;
  int32_t error = 0;
  double diameter = 0;
  try {
    chr.GjTextTurnW(text, count, diameter, error);
  } catch (const Fault&) {
  }
  float bar = 0;
  float spacing = 0;
  try {
    chr.BanGjTextTurn(text, bar, spacing, error);
  } catch (const Fault&) {
  }
  int16_t sign = 0;
  (void)chr.vYsfTextTurnW(text, sign);
  double fy = 0;
  (void)chr.bSignEnter_SteelFy(text, fy);
  return 0;
}
