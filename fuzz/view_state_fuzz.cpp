// A kept view comes from the user's settings and may be damaged: reading it
// never fails, and what is read, written again, reads the same.
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/grid/view_state.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora::grid;  // NOLINT(google-build-using-namespace)
  fuzz::Input in(data, size);
  const ViewState first = parse_view_state(in.texts(1)[0]);
  const zelkora::Text text = view_state_text(first);
  if (view_state_text(parse_view_state(text)) != text) __builtin_trap();
  return 0;
}
