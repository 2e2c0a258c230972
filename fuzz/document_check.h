// Checks of written documents for the document harness: the files of a zip
// container unpacked, XML well-formed, RTF groups balanced and 7-bit.
#pragma once

#include <zlib.h>

#include <cctype>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

inline uint32_t le(std::string_view s, std::size_t at, int bytes) {
  uint32_t v = 0;
  for (int i = bytes - 1; i >= 0; --i)
    v = v << 8 | static_cast<unsigned char>(s[at + static_cast<std::size_t>(i)]);
  return v;
}

// The files of a zip container by name; false when it is damaged (a bad
// header, a size, a CRC or a deflate stream that does not check out).
inline bool unzip(std::string_view zip, std::map<std::string, std::string>& files) {
  const std::size_t end = zip.rfind(std::string_view("PK\x05\x06", 4));
  if (end == std::string_view::npos || end + 22 > zip.size()) return false;
  const uint32_t count = le(zip, end + 10, 2);
  std::size_t at = le(zip, end + 16, 4);
  for (uint32_t i = 0; i < count; ++i) {
    if (at + 46 > zip.size() || zip.substr(at, 4) != std::string_view("PK\x01\x02", 4))
      return false;
    const uint32_t method = le(zip, at + 10, 2), crc = le(zip, at + 16, 4);
    const uint32_t packed = le(zip, at + 20, 4), size = le(zip, at + 24, 4);
    const uint32_t name_len = le(zip, at + 28, 2), extra = le(zip, at + 30, 2),
                   comment = le(zip, at + 32, 2);
    const uint32_t local = le(zip, at + 42, 4);
    if (at + 46 + name_len > zip.size()) return false;
    const std::string name(zip.substr(at + 46, name_len));
    at += 46 + name_len + extra + comment;
    if (local + 30 > zip.size() || zip.substr(local, 4) != std::string_view("PK\x03\x04", 4))
      return false;
    const std::size_t data = local + 30 + le(zip, local + 26, 2) + le(zip, local + 28, 2);
    if (data + packed > zip.size()) return false;
    std::string out(size, '\0');
    if (method == 0) {
      if (packed != size) return false;
      out.assign(zip.substr(data, packed));
    } else if (method == 8) {
      z_stream z{};
      if (inflateInit2(&z, -15) != Z_OK) return false;
      z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zip.data() + data));
      z.avail_in = packed;
      z.next_out = reinterpret_cast<Bytef*>(out.data());
      z.avail_out = size;
      const int status = inflate(&z, Z_FINISH);
      const bool whole = status == Z_STREAM_END && z.total_out == size;
      inflateEnd(&z);
      if (!whole) return false;
    } else {
      return false;
    }
    if (crc32(0, reinterpret_cast<const Bytef*>(out.data()), static_cast<uInt>(out.size())) != crc)
      return false;
    files[name] = std::move(out);
  }
  return true;
}

// The code point of the UTF-8 sequence at s[i] (advancing i), or -1.
inline int32_t next_code_point(std::string_view s, std::size_t& i) {
  const auto b = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  const unsigned char c = b(i);
  int n = c < 0x80 ? 0 : (c >> 5) == 6 ? 1 : (c >> 4) == 14 ? 2 : (c >> 3) == 30 ? 3 : -1;
  if (n < 0 || i + static_cast<std::size_t>(n) >= s.size() + (n == 0 ? 1 : 0)) return -1;
  int32_t v = n == 0 ? c : c & (0x3F >> n);
  for (int k = 1; k <= n; ++k) {
    if ((b(i + static_cast<std::size_t>(k)) & 0xC0) != 0x80) return -1;
    v = v << 6 | (b(i + static_cast<std::size_t>(k)) & 0x3F);
  }
  static constexpr int32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (v < kLeast[n] || v > 0x10FFFF || (v >= 0xD800 && v <= 0xDFFF)) return -1;
  i += static_cast<std::size_t>(n) + 1;
  return v;
}

inline bool xml_char(int32_t c) {
  return c == 9 || c == 10 || c == 13 || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || c >= 0x10000;
}

// Whether the text is well-formed XML of the kind the writers make: a
// declaration, elements with quoted attributes, the five entities and
// character references, valid UTF-8 of XML characters, one root.
inline bool well_formed_xml(std::string_view x) {
  std::vector<std::string_view> open;
  std::size_t i = 0, roots = 0;
  const auto name_char = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == ':' || c == '_' || c == '-' ||
           c == '.';
  };
  const auto entity = [&](std::size_t& k) {
    const std::size_t semi = x.find(';', k);
    if (semi == std::string_view::npos || semi - k > 10) return false;
    const std::string_view e = x.substr(k + 1, semi - k - 1);
    k = semi + 1;
    if (e == "amp" || e == "lt" || e == "gt" || e == "quot" || e == "apos") return true;
    if (e.size() < 2 || e[0] != '#') return false;
    const bool hex = e[1] == 'x';
    const std::string digits(e.substr(hex ? 2 : 1));
    if (digits.empty() || digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") !=
                              std::string::npos) {
      return false;
    }
    return xml_char(static_cast<int32_t>(std::stol(digits, nullptr, hex ? 16 : 10)));
  };
  if (x.starts_with("<?xml")) {
    const std::size_t end = x.find("?>");
    if (end == std::string_view::npos) return false;
    i = end + 2;
  }
  while (i < x.size()) {
    if (x[i] == '&') {
      if (!entity(i)) return false;
      continue;
    }
    if (x[i] != '<') {
      const int32_t c = next_code_point(x, i);
      if (c < 0 || !xml_char(c)) return false;
      if (open.empty() && c != ' ' && c != '\n' && c != '\r' && c != '\t') return false;
      continue;
    }
    const bool closing = i + 1 < x.size() && x[i + 1] == '/';
    std::size_t k = i + (closing ? 2 : 1);
    const std::size_t name_start = k;
    while (k < x.size() && name_char(x[k])) ++k;
    const std::string_view name = x.substr(name_start, k - name_start);
    if (name.empty()) return false;
    if (closing) {
      if (open.empty() || open.back() != name || k >= x.size() || x[k] != '>') return false;
      open.pop_back();
      i = k + 1;
      continue;
    }
    // Attributes: name="value" or name='value'.
    for (;;) {
      while (k < x.size() && (x[k] == ' ' || x[k] == '\n' || x[k] == '\t' || x[k] == '\r')) ++k;
      if (k >= x.size()) return false;
      if (x[k] == '>' || (x[k] == '/' && k + 1 < x.size() && x[k + 1] == '>')) break;
      const std::size_t attr = k;
      while (k < x.size() && name_char(x[k])) ++k;
      if (k == attr || k + 1 >= x.size() || x[k] != '=' || (x[k + 1] != '"' && x[k + 1] != '\''))
        return false;
      const char quote = x[k + 1];
      k += 2;
      while (k < x.size() && x[k] != quote) {
        if (x[k] == '<') return false;
        if (x[k] == '&') {
          if (!entity(k)) return false;
          continue;
        }
        const int32_t c = next_code_point(x, k);
        if (c < 0 || !xml_char(c)) return false;
      }
      if (k >= x.size()) return false;
      ++k;
    }
    if (open.empty() && ++roots > 1) return false;
    if (x[k] == '/') {
      i = k + 2;
    } else {
      open.push_back(name);
      i = k + 1;
    }
  }
  return open.empty() && roots == 1;
}

// Whether an RTF file is 7-bit with its groups balanced and closed at the end.
inline bool balanced_rtf(std::string_view rtf) {
  if (!rtf.starts_with("{\\rtf1")) return false;
  int depth = 0;
  for (std::size_t i = 0; i < rtf.size(); ++i) {
    const auto c = static_cast<unsigned char>(rtf[i]);
    if (c >= 0x80 || c == 0) return false;
    if (c == '\\') {
      ++i;  // an escaped character or the first letter of a word
      continue;
    }
    if (c == '{') ++depth;
    if (c == '}' && --depth < 0) return false;
    if (depth == 0 && i + 1 < rtf.size() &&
        rtf.find_first_not_of("\r\n", i + 1) != std::string_view::npos) {
      return false;
    }
  }
  return depth == 0;
}

}  // namespace fuzz
