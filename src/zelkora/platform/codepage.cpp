#include "zelkora/platform/codepage.h"

#include <cstdint>

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
  for (const char16_t c : text) {
    width += wide_bit(c);
    surrogates |= is_surrogate(c);
  }
  if (surrogates) {
    for (std::size_t i = 1; i < text.size(); ++i) width -= ends_pair(text, i) ? 1 : 0;
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
