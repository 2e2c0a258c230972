// Code page 936 from and to UTF-16, through the tables generated at build time.
#include "zelkora/platform/codepage.h"

#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace zelkora::codepage {

namespace {

// kEncode, kDecodeSingle, kDecodeDouble and kWide, written by zk_gen_cp936.
#include "cp936_tables.inc"

constexpr char16_t kReplacement = 0xFFFD;

bool is_high_surrogate(char16_t c) { return (c & 0xFC00) == 0xD800; }
bool is_low_surrogate(char16_t c) { return (c & 0xFC00) == 0xDC00; }
bool is_surrogate(char16_t c) { return (c & 0xF800) == 0xD800; }

bool is_lead_byte(unsigned char b) { return b >= 0x81 && b <= 0xFE; }
bool is_trail_byte(unsigned char b) { return b >= 0x40 && b <= 0xFE && b != 0x7F; }

unsigned wide_bit(char16_t c) { return static_cast<unsigned>((kWide[c >> 6] >> (c & 63)) & 1); }

// Whether text[i] is the low half of a surrogate pair (its high half is at
// i - 1). A high surrogate only ever pairs with the unit after it, so this
// decides the pairs of the whole text from left to right.
bool ends_pair(TextView text, std::size_t i) {
  return i > 0 && is_low_surrogate(text[i]) && is_high_surrogate(text[i - 1]);
}

}  // namespace

int char_width(char16_t c) { return 1 + static_cast<int>(wide_bit(c)); }

bool has_ansi_form(char16_t c) { return c < 0x80 || (!is_surrogate(c) && kEncode[c] != 0); }

std::size_t display_width(TextView text) {
  // Every unit counts 1 and a double-byte character one more; the rare
  // surrogate pairs, one "?" for two units, are counted apart.
  std::size_t width = text.size();
  bool surrogates = false;
  std::size_t i = 0;
#ifdef __SSE2__
  // Eight units at a time: ASCII adds nothing, an ideograph of the unified
  // block U+4E00-U+9FA5 (all of which code page 936 has) one; the table
  // decides the other units of a block.
  const __m128i ascii_bits = _mm_set1_epi16(static_cast<short>(0xFF80));
  const __m128i flip = _mm_set1_epi16(static_cast<short>(0x8000));
  const __m128i cjk_low = _mm_set1_epi16(static_cast<short>(0x4E00 ^ 0x8000));
  const __m128i cjk_high = _mm_set1_epi16(static_cast<short>(0x9FA5 ^ 0x8000));
  // Ideographs are counted lane by lane, and the lanes summed every 4096
  // blocks, before a lane could overflow.
  __m128i ideographs = _mm_setzero_si128();
  auto sum_lanes = [&] {
    alignas(16) std::uint16_t lanes[8];
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes), ideographs);
    for (const std::uint16_t n : lanes) width += n;
    ideographs = _mm_setzero_si128();
  };
  for (std::size_t block = 1; i + 8 <= text.size(); i += 8, ++block) {
    if (block % 4096 == 0) sum_lanes();
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
    const __m128i ascii = _mm_cmpeq_epi16(_mm_and_si128(v, ascii_bits), _mm_setzero_si128());
    const __m128i x = _mm_xor_si128(v, flip);  // unsigned order as signed order
    const __m128i cjk =
        _mm_andnot_si128(_mm_or_si128(_mm_cmplt_epi16(x, cjk_low), _mm_cmpgt_epi16(x, cjk_high)),
                         _mm_set1_epi16(-1));
    ideographs = _mm_sub_epi16(ideographs, cjk);  // a lane of cjk is -1 or 0
    unsigned other = ~static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(ascii, cjk))) & 0xFFFFu;
    while (other != 0) {
      const unsigned lane = static_cast<unsigned>(__builtin_ctz(other)) / 2;
      const char16_t c = text[i + lane];
      width += wide_bit(c);
      surrogates |= is_surrogate(c);
      other &= ~(3u << (lane * 2));
    }
  }
  sum_lanes();
#endif
  for (; i < text.size(); ++i) {
    const char16_t c = text[i];
    width += wide_bit(c);
    surrogates |= is_surrogate(c);
  }
  if (surrogates) {
    for (std::size_t k = 1; k < text.size(); ++k) width -= ends_pair(text, k) ? 1 : 0;
  }
  return width;
}

std::size_t prefix_fitting(TextView text, std::size_t max_bytes) {
  std::size_t used = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    const bool pair = i + 1 < text.size() && ends_pair(text, i + 1);
    const std::size_t w = pair ? 1 : static_cast<std::size_t>(char_width(text[i]));
    if (used + w > max_bytes) break;
    used += w;
    i += pair ? 2 : 1;
  }
  return i;
}

void append_ansi(std::string& out, TextView text) {
  const std::size_t start = out.size();
  out.resize(start + display_width(text));
  char* p = out.data() + start;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c < 0x80) {
      *p++ = static_cast<char>(c);
      continue;
    }
    if (is_surrogate(c)) {
      if (is_high_surrogate(c) && i + 1 < text.size() && is_low_surrogate(text[i + 1])) ++i;
      *p++ = '?';
      continue;
    }
    const std::uint16_t code = kEncode[c];
    if (code == 0) {
      *p++ = '?';
    } else if (code <= 0xFF) {
      *p++ = static_cast<char>(code);
    } else {
      *p++ = static_cast<char>(code >> 8);
      *p++ = static_cast<char>(code & 0xFF);
    }
  }
}

std::string to_ansi(TextView text) {
  std::string out;
  append_ansi(out, text);
  return out;
}

Text from_ansi(std::string_view bytes) {
  Text out;
  out.reserve(bytes.size());
  const std::size_t n = bytes.size();
  std::size_t i = 0;
  while (i < n) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    if (b < 0x80) {
      out.push_back(b);
      ++i;
      continue;
    }
    const char16_t single = kDecodeSingle[b - 0x80];
    if (single != 0) {
      out.push_back(single);
      ++i;
      continue;
    }
    if (!is_lead_byte(b) || i + 1 >= n ||
        !is_trail_byte(static_cast<unsigned char>(bytes[i + 1]))) {
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    const auto trail = static_cast<unsigned char>(bytes[i + 1]);
    const char16_t c = kDecodeDouble[(b - 0x81) * 191 + (trail - 0x40)];
    out.push_back(c != 0 ? c : kReplacement);
    i += 2;
  }
  return out;
}

}  // namespace zelkora::codepage
