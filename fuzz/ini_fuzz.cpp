// An INI file may hold anything. Reading a key through the parsed index must
// give what the one-pass reader gives; an edit the rules allow must read back
// as written, and a removed key must be gone.
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "zelkora/platform/ini_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  namespace ini = zelkora::platform::ini;
  fuzz::Input in(data, size);
  const std::vector<zelkora::Text> t = in.texts(4);
  const zelkora::Text& section = t[0];
  const zelkora::Text& key = t[1];
  const zelkora::Text& value = t[2];
  const zelkora::Text& content = t[3];

  const ini::Index index(content);
  if (index.find_value(section, key) != ini::find_value(content, section, key)) __builtin_trap();
  if (index.read_profile_string(section, key, value) !=
      ini::read_profile_string(content, section, key, value)) {
    __builtin_trap();
  }
  if (const auto edited = ini::edit(content, section, key, ini::quoted_if_needed(value))) {
    const auto back = ini::find_value(*edited, section, key);
    if (!back || *back != value) __builtin_trap();
    if (ini::Index(*edited).find_value(section, key) != back) __builtin_trap();
  }
  if (const auto removed = ini::edit(content, section, key, std::nullopt)) {
    if (ini::find_value(*removed, section, key)) __builtin_trap();
  }
  return 0;
}
