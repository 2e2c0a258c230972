// The byte-level readers behind the text helpers, for the units that decode
// files in place: UTF-8 straight into a buffer, and the escapes of the
// library's text files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zelkora {

// Decodes `utf8` strictly into `out`, which has room for utf8.size() units
// (never more are needed), up to the first invalid sequence (overlong forms,
// surrogates, values above U+10FFFF, truncated sequences). Returns the end of
// what was written; `stopped` is the byte offset where decoding stopped:
// utf8.size() when all of it was valid.
inline char16_t* decode_utf8_into(std::string_view utf8, char16_t* out, std::size_t& stopped);

// Decodes the one UTF-8 sequence at s[i]: its code point, with `len` its
// bytes; -1 for an invalid sequence (`len` the bytes to skip).
int32_t decode_utf8(std::string_view s, std::size_t i, std::size_t& len);

// The value of a hexadecimal digit, or -1.
int hex_digit_value(char c);

// The escapes of the library's text files (the catalogue files, the lines
// of `zelkora datafile write`): \t \n \r \\ and \uXXXX (four hexadecimal
// digits, one UTF-16 unit).
enum class EscapeProblem { kNone, kUnknown, kShortUnicode };

// Reads the escape at utf8[at] (a backslash with a character after it): the
// unit it stands for and the bytes it takes (2, or 6 for \u); 0 with the
// problem when it is none.
std::size_t read_escape(std::string_view utf8, std::size_t at, char16_t& unit,
                        EscapeProblem& problem);

// ---- Inline definitions -------------------------------------------------------

inline char16_t* decode_utf8_into(std::string_view utf8, char16_t* out, std::size_t& stopped) {
  char16_t* dst = out;
  const auto* src = reinterpret_cast<const unsigned char*>(utf8.data());
  const std::size_t n = utf8.size();
  std::size_t i = 0;
  while (i < n) {
    // Eight ASCII bytes at a time.
    while (i + 8 <= n) {
      uint64_t chunk;
      std::memcpy(&chunk, src + i, 8);
      if (chunk & 0x8080808080808080ull) break;
      for (int k = 0; k < 8; ++k) dst[k] = src[i + k];
      dst += 8;
      i += 8;
    }
    if (i == n) break;
    const unsigned char b0 = src[i];
    if (b0 < 0x80) {
      *dst++ = b0;
      ++i;
      continue;
    }
    // The common case of Chinese text: a well-formed three-byte sequence.
    if ((b0 & 0xF0) == 0xE0 && i + 2 < n && (src[i + 1] & 0xC0) == 0x80 &&
        (src[i + 2] & 0xC0) == 0x80) {
      const char16_t cp = static_cast<char16_t>(((b0 & 0x0F) << 12) | ((src[i + 1] & 0x3F) << 6) |
                                                (src[i + 2] & 0x3F));
      if (cp >= 0x800 && (cp < 0xD800 || cp > 0xDFFF)) {
        *dst++ = cp;
        i += 3;
        continue;
      }
    }
    std::size_t len = 0;
    const int32_t cp = decode_utf8(utf8, i, len);
    if (cp < 0) break;
    if (cp < 0x10000) {
      *dst++ = static_cast<char16_t>(cp);
    } else {
      *dst++ = static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10));
      *dst++ = static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF));
    }
    i += len;
  }
  stopped = i;
  return dst;
}

}  // namespace zelkora
