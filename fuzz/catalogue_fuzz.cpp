// Catalogue files from outside may be damaged in any way: loading one must
// never crash, and a refused file must leave the catalogue as it was.
#include <cstdint>
#include <string_view>

#include "zelkora/frame/catalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using zelkora::frame::Catalogue;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Catalogue c;
  if (c.add_file("base.tsv", "1\tone\n2\ttwo\n")) __builtin_trap();
  const bool refused = c.add_file("fuzz.tsv", bytes).has_value();
  if (refused && (c.size() != 2 || c.find(1) != u"one" || c.find(2) != u"two")) __builtin_trap();
  for (int32_t id = 0; id < 64; ++id) (void)c.find(id);
  return 0;
}
