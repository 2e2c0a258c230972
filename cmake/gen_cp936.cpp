// zk_gen_cp936 <out.inc>
//
// Writes the code page 936 tables of zelkora/platform/codepage.cpp. The
// mapping is the C library's converter "CP936" (GBK with the euro sign at
// 0x80) plus the private-use characters U+E000-U+E765 in the three
// user-defined areas, in this order:
//
//   U+E000-U+E233  <->  AAA1-AFFE  (trail bytes A1-FE)
//   U+E234-U+E4C5  <->  F8A1-FEFE  (trail bytes A1-FE)
//   U+E4C6-U+E765  <->  A140-A7A0  (trail bytes 40-7E, 80-A0)
//
// The converter "GB18030" has the same user-defined mapping; the generator
// checks that it agrees and fails when it does not, and fails as well when
// the user-defined codes collide with the converter's own.
//
// Tables written (all `constexpr`, meant to be included once, inside a
// namespace, after <cstdint>):
//   kEncode[65536]        UTF-16 unit -> 0 (no form), a byte (1-0xFF), or
//                         lead << 8 | trail
//   kDecodeSingle[128]    byte 0x80-0xFF alone -> character, 0 when it is not
//                         a character on its own (lead bytes, 0xFF)
//   kDecodeDouble[126*191] (lead 0x81-0xFE, trail 0x40-0xFE) -> character,
//                         0 when the pair has none
//   kWide[1024]           bit c set when character c takes two bytes
#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kLeadFirst = 0x81;
constexpr int kLeadCount = 0xFE - 0x81 + 1;  // 126
constexpr int kTrailFirst = 0x40;
constexpr int kTrailCount = 0xFE - 0x40 + 1;  // 191, 0x7F included and never used

struct UserArea {
  char16_t first_char;
  int lead_first, lead_last;
  int trail_first, trail_last;  // 0x7F is skipped
};

constexpr UserArea kUserAreas[] = {
    {0xE000, 0xAA, 0xAF, 0xA1, 0xFE},
    {0xE234, 0xF8, 0xFE, 0xA1, 0xFE},
    {0xE4C6, 0xA1, 0xA7, 0x40, 0xA0},
};
constexpr char16_t kUserLast = 0xE765;

class Converter {
 public:
  Converter(const char* to, const char* from) : cd_(iconv_open(to, from)) {}
  ~Converter() {
    if (ok()) iconv_close(cd_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  bool ok() const { return cd_ != reinterpret_cast<iconv_t>(-1); }

  // Converts `in` completely; false when the converter refuses any of it.
  bool convert(const std::string& in, std::string& out) {
    iconv(cd_, nullptr, nullptr, nullptr, nullptr);
    char buffer[16];
    char* src = const_cast<char*>(in.data());
    std::size_t src_left = in.size();
    char* dst = buffer;
    std::size_t dst_left = sizeof buffer;
    const std::size_t r = iconv(cd_, &src, &src_left, &dst, &dst_left);
    if (r == static_cast<std::size_t>(-1) || src_left != 0) return false;
    out.assign(buffer, dst);
    return true;
  }

 private:
  iconv_t cd_;
};

std::string utf16le(char16_t c) {
  return std::string{static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
}

// The one BMP character of UTF-16LE bytes, or 0.
char16_t single_unit(const std::string& bytes) {
  if (bytes.size() != 2) return 0;
  const auto c = static_cast<char16_t>(static_cast<unsigned char>(bytes[0]) |
                                       static_cast<unsigned char>(bytes[1]) << 8);
  return (c >= 0xD800 && c <= 0xDFFF) ? 0 : c;
}

int double_index(int lead, int trail) {
  return (lead - kLeadFirst) * kTrailCount + (trail - kTrailFirst);
}

int fail(const char* what) {
  std::fprintf(stderr, "zk_gen_cp936: %s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return fail("usage: zk_gen_cp936 <out.inc>");

  Converter encoder("CP936", "UTF-16LE");
  Converter decoder("UTF-16LE", "CP936");
  Converter gb18030("UTF-16LE", "GB18030");
  if (!encoder.ok() || !decoder.ok()) return fail("the C library has no CP936 converter");
  if (!gb18030.ok()) return fail("the C library has no GB18030 converter");

  std::vector<std::uint16_t> encode(65536, 0);
  std::vector<char16_t> decode_single(128, 0);
  std::vector<char16_t> decode_double(kLeadCount * kTrailCount, 0);

  std::string out;
  for (int c = 1; c < 0x10000; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    if (!encoder.convert(utf16le(static_cast<char16_t>(c)), out)) continue;
    if (out.size() == 1) {
      encode[c] = static_cast<unsigned char>(out[0]);
    } else if (out.size() == 2) {
      encode[c] = static_cast<std::uint16_t>(static_cast<unsigned char>(out[0]) << 8 |
                                             static_cast<unsigned char>(out[1]));
    } else {
      return fail("CP936 gave a form longer than two bytes");
    }
  }
  for (int b = 0x80; b <= 0xFF; ++b) {
    if (decoder.convert(std::string(1, static_cast<char>(b)), out))
      decode_single[b - 0x80] = single_unit(out);
  }
  for (int lead = kLeadFirst; lead <= 0xFE; ++lead) {
    for (int trail = kTrailFirst; trail <= 0xFE; ++trail) {
      if (trail == 0x7F) continue;
      const std::string pair{static_cast<char>(lead), static_cast<char>(trail)};
      if (decoder.convert(pair, out)) decode_double[double_index(lead, trail)] = single_unit(out);
    }
  }

  // The user-defined areas, checked against GB18030.
  char16_t next = kUserAreas[0].first_char;
  for (const UserArea& area : kUserAreas) {
    if (next != area.first_char) return fail("user-defined areas are not contiguous");
    for (int lead = area.lead_first; lead <= area.lead_last; ++lead) {
      for (int trail = area.trail_first; trail <= area.trail_last; ++trail) {
        if (trail == 0x7F) continue;
        const std::string pair{static_cast<char>(lead), static_cast<char>(trail)};
        if (!gb18030.convert(pair, out) || single_unit(out) != next)
          return fail("GB18030 disagrees with the user-defined mapping");
        char16_t& slot = decode_double[double_index(lead, trail)];
        if (slot != 0 && slot != next) return fail("a user-defined code is taken by CP936");
        slot = next;
        encode[next] = static_cast<std::uint16_t>(lead << 8 | trail);
        ++next;
      }
    }
  }
  if (next != kUserLast + 1) return fail("user-defined areas do not end at U+E765");

  FILE* f = std::fopen(argv[1], "w");
  if (!f) return fail("cannot write the output file");
  std::fprintf(f, "// Generated by zk_gen_cp936 (cmake/gen_cp936.cpp). Do not edit.\n\n");

  auto write_table = [f](const char* decl, const auto& values, int per_line) {
    std::fprintf(f, "%s = {", decl);
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i % per_line == 0) std::fprintf(f, "\n");
      const unsigned long long v = values[i];
      if (v == 0)
        std::fprintf(f, "0,");
      else
        std::fprintf(f, "0x%llX,", v);
    }
    std::fprintf(f, "\n};\n\n");
  };
  write_table("constexpr std::uint16_t kEncode[65536]", encode, 16);
  write_table("constexpr char16_t kDecodeSingle[128]", decode_single, 16);
  write_table("constexpr char16_t kDecodeDouble[126 * 191]", decode_double, 16);

  std::vector<std::uint64_t> wide(1024, 0);
  for (int c = 0x80; c < 0x10000; ++c) {
    if (encode[c] > 0xFF) wide[c >> 6] |= std::uint64_t{1} << (c & 63);
  }
  write_table("constexpr std::uint64_t kWide[1024]", wide, 4);

  if (std::fclose(f) != 0) return fail("cannot write the output file");
  return 0;
}
