// Bytes read from data and INI files may be anything: decoding them from
// code page 936 must never crash, and whatever decodes must encode to bytes
// whose width the width table predicts.
#include <cstdint>
#include <string_view>

#include "zelkora/platform/codepage.h"
#include "zelkora/platform/ini_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const zelkora::Text text = zelkora::codepage::from_ansi(bytes);
  const std::string back = zelkora::codepage::to_ansi(text);
  if (back.size() != zelkora::codepage::display_width(text)) __builtin_trap();
  (void)zelkora::platform::ini::find_value(text, u"1", u"0");
  (void)zelkora::platform::ini::edit(text, u"Others", u"1", u"x");
  return 0;
}
