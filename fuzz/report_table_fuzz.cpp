// Report cells take any text at any width: fitting, padding and joining
// cells never crash; what goes wrong is a documented Fault.
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/platform/fault.h"
#include "zelkora/reporttext/report_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  fuzz::Input in(data, size);
  const int32_t avail = in.number() % 400;
  const int32_t alignment = in.byte() % 4;
  const int32_t extra = in.byte() % 8;
  const int16_t key = in.number();
  const std::vector<Text> t = in.texts(2);
  const reporttext::Notation notation{frame::NumberSymbols{u'.', u','}, u"."};
  (void)reporttext::fit_text(t[0], avail, notation);
  reporttext::ColumnLayout layout;
  try {
    layout.ubound = 1;
    layout.initialize(0, avail, alignment, extra);
    (void)reporttext::format_cell(layout, 0, t[0], notation);
    (void)reporttext::format_row(layout, {t[0], t[1]}, 0, 1, notation);
  } catch (const Fault&) {  // the documented faults: index, overflow
  }
  (void)reporttext::filter_key(key, t[1]);
  (void)reporttext::text_width(t[0]);
  return 0;
}
