// Report lines are split and wrapped at any width and indent: never a crash,
// no line of a wrap wider than its width unless one word is, and no text
// lost but blanks.
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/platform/fault.h"
#include "zelkora/typeset/line_split.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  fuzz::Input in(data, size);
  const int16_t indent = in.number();
  const int16_t indent_add = in.number();
  const int16_t width = in.number();
  const std::vector<Text> t = in.texts(3);
  try {
    (void)typeset::split_single_line(t[0], t[1], t[2], indent, indent_add, width);
  } catch (const Fault&) {  // an indent sum beyond 16 bits
  }
  const typeset::WrapLayout layout{width % 200, indent % 50, indent_add % 50};
  const std::vector<Text> lines = typeset::wrap_text(t[0], layout);
  std::size_t kept = 0;
  for (const Text& line : lines) {
    for (const char16_t c : line) kept += c != u' ' ? 1 : 0;
  }
  std::size_t given = 0;
  for (const char16_t c : t[0]) given += c != u' ' && c != u'\r' && c != u'\n' ? 1 : 0;
  if (kept < given) __builtin_trap();
  (void)typeset::wrap_between(t[0], layout, u"\r\n");
  return 0;
}
