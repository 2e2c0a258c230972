// Patterns, format codes and markup come from callers and layouts and may be
// anything: formatting a number by them, stripping and measuring them must
// never crash, and the output must stay proportionate to the input.
#include <cstdint>
#include <cstring>

#include "zelkora/frame/numbers.h"
#include "zelkora/typeset/markup.h"
#include "zelkora/typeset/number_format.h"
#include "zelkora/typeset/picture_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < sizeof(double)) return 0;
  double value = 0;
  std::memcpy(&value, data, sizeof value);
  zelkora::Text text(reinterpret_cast<const char16_t*>(data + sizeof value),
                     (size - sizeof value) / 2);
  const zelkora::frame::NumberSymbols comma{u',', u'.'};
  const zelkora::Text out = zelkora::typeset::format_picture(value, text, comma);
  // A number has at most 309 integer digits, two more for each "%", and its
  // grouping; each other character of the pattern prints at most one.
  if (out.size() > 1000 + 4 * text.size()) __builtin_trap();

  zelkora::Text s = out;
  zelkora::typeset::trim_trailing_zeros(s, u',', true);
  (void)zelkora::typeset::parse_format_code(text);

  const zelkora::Text stripped = zelkora::typeset::strip_markup(text);
  if (stripped.size() > text.size()) __builtin_trap();
  if (zelkora::typeset::markup_display_width(text) > 2 * text.size()) __builtin_trap();
  return 0;
}
