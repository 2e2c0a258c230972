// The report aids on any input: labels of any number, equations broken at any
// width, tables of values and headers from any text. Never a crash; an
// equation loses nothing but blanks (U+0020); a table's fault leaves no value,
// and a point outside names the range of its keys least first.
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/value_table.h"
#include "zelkora/typeset/equation_split.h"
#include "zelkora/typeset/serial_labels.h"

namespace {

std::size_t non_blank(zelkora::TextView text) {
  std::size_t count = 0;
  for (const char16_t c : text) count += c != u' ' ? 1 : 0;
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zelkora;  // NOLINT(google-build-using-namespace)
  static const auto platform = platform::Platform::headless();
  fuzz::Input in(data, size);
  const auto high = static_cast<uint32_t>(static_cast<uint16_t>(in.number()));
  const auto n = static_cast<int32_t>((high << 16) | static_cast<uint16_t>(in.number()));
  const int16_t width = in.number();
  const double x = in.real();
  const double y = in.real();
  const std::vector<Text> t = in.texts(4);

  (void)typeset::heading_label(n);
  (void)typeset::subheading_label(n);
  (void)typeset::third_level_label(n);
  (void)typeset::list_label(n, t[3]);
  (void)typeset::roman_label(n);

  std::size_t kept = 0;
  for (const Text& line : typeset::split_equation(t[0], width)) kept += non_blank(line);
  if (kept != non_blank(t[0])) __builtin_trap();

  for (const frame::TableValue found :
       {frame::interpolate(t[1], x), frame::interpolate(t[1], x, y)}) {
    if (found.fault != frame::TableFault::kNone && found.value != 0) __builtin_trap();
    const bool outside = found.fault == frame::TableFault::kOutsideRows ||
                         found.fault == frame::TableFault::kOutsideColumns;
    if (outside && !(found.low <= found.high)) __builtin_trap();  // the range, least first
  }

  clsCharacter chr(platform);
  chr.iMaxChrNow(width);
  (void)chr.tCalHead(t[2], t[3], {n, n % 1000 + 59000}, t[3]);
  return 0;
}
