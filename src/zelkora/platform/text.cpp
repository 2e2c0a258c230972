// The text helpers: UTF-8, blanks, comparison, searching, splitting.
#include "zelkora/platform/text.h"

#include "zelkora/platform/utf8.h"

#include <cstdint>
#include <cstring>

namespace zelkora {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

}  // namespace

int32_t decode_utf8(std::string_view s, std::size_t i, std::size_t& len) {
  const auto b0 = static_cast<unsigned char>(s[i]);
  if (b0 < 0x80) {
    len = 1;
    return b0;
  }
  std::size_t need;
  int32_t cp;
  int32_t min;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    need = 1, cp = b0 & 0x1F, min = 0x80;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    need = 2, cp = b0 & 0x0F, min = 0x800;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    need = 3, cp = b0 & 0x07, min = 0x10000;
  } else {
    len = 1;
    return -1;
  }
  std::size_t k = 1;
  for (; k <= need; ++k) {
    if (i + k >= s.size()) break;
    const auto b = static_cast<unsigned char>(s[i + k]);
    if ((b & 0xC0) != 0x80) break;
    cp = (cp << 6) | (b & 0x3F);
  }
  if (k <= need) {
    len = k;
    return -1;
  }
  len = need + 1;
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return -1;
  return cp;
}

namespace {

void append_code_point(Text& out, int32_t cp) {
  if (cp < 0x10000) {
    out.push_back(static_cast<char16_t>(cp));
  } else {
    cp -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
  }
}

bool is_blank(char16_t c) { return c == u' '; }

}  // namespace

bool append_utf8(std::string_view utf8, Text& out, std::size_t* bad_offset) {
  // The output never has more units than the input has bytes: size it once,
  // write through a pointer and cut it to what was written.
  const std::size_t start = out.size();
  out.resize(start + utf8.size());
  std::size_t stopped = 0;
  const char16_t* const end = decode_utf8_into(utf8, out.data() + start, stopped);
  out.resize(static_cast<std::size_t>(end - out.data()));
  if (stopped == utf8.size()) return true;
  if (bad_offset) *bad_offset = stopped;
  return false;
}

int hex_digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::size_t read_escape(std::string_view utf8, std::size_t at, char16_t& unit,
                        EscapeProblem& problem) {
  problem = EscapeProblem::kNone;
  switch (at + 1 < utf8.size() ? utf8[at + 1] : '\0') {
    case 't':
      unit = u'\t';
      return 2;
    case 'n':
      unit = u'\n';
      return 2;
    case 'r':
      unit = u'\r';
      return 2;
    case '\\':
      unit = u'\\';
      return 2;
    case 'u': {
      unsigned value = 0;
      for (std::size_t k = at + 2; k < at + 6; ++k) {
        const int digit = k < utf8.size() ? hex_digit_value(utf8[k]) : -1;
        if (digit < 0) {
          problem = EscapeProblem::kShortUnicode;
          return 0;
        }
        value = value * 16 + static_cast<unsigned>(digit);
      }
      unit = static_cast<char16_t>(value);
      return 6;
    }
    default:
      problem = EscapeProblem::kUnknown;
      return 0;
  }
}

Text from_utf8(std::string_view utf8) {
  Text out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    std::size_t len = 0;
    const int32_t cp = decode_utf8(utf8, i, len);
    if (cp < 0) {
      out.push_back(kReplacement);
    } else {
      append_code_point(out, cp);
    }
    i += len;
  }
  return out;
}

std::string to_utf8(TextView text) {
  std::string out;
  out.reserve(text.size() * 3);
  for (std::size_t i = 0; i < text.size(); ++i) {
    uint32_t cp = text[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = kReplacement;
    }
    if (cp < 0x80) {
      out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
  }
  return out;
}

bool is_well_formed(TextView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c < 0xD800 || c > 0xDFFF) continue;
    if (c > 0xDBFF || i + 1 == text.size() || text[i + 1] < 0xDC00 || text[i + 1] > 0xDFFF) {
      return false;
    }
    ++i;
  }
  return true;
}

TextView trim_left(TextView text) {
  std::size_t b = 0;
  while (b < text.size() && is_blank(text[b])) ++b;
  return text.substr(b);
}

TextView trim_right(TextView text) {
  std::size_t e = text.size();
  while (e > 0 && is_blank(text[e - 1])) --e;
  return text.substr(0, e);
}

TextView trim(TextView text) { return trim_right(trim_left(text)); }

char16_t fold_case(char16_t c) {
  if (c < 0x80) return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<char16_t>(c - 32);
  if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) return static_cast<char16_t>(c - 32);
  if (c >= 0x430 && c <= 0x44F) return static_cast<char16_t>(c - 32);
  if (c >= 0x450 && c <= 0x45F) return static_cast<char16_t>(c - 80);
  if (c >= 0xFF41 && c <= 0xFF5A) return static_cast<char16_t>(c - 32);
  return c;
}

bool equal_text(TextView a, TextView b, Compare mode) {
  if (a.size() != b.size()) return false;
  if (mode == Compare::Binary) return a == b;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (fold_case(a[i]) != fold_case(b[i])) return false;
  }
  return true;
}

std::size_t find_text(TextView haystack, TextView needle, std::size_t from, Compare mode) {
  if (from > haystack.size()) return TextView::npos;
  if (mode == Compare::Binary) return haystack.find(needle, from);
  if (needle.empty()) return from;
  if (needle.size() > haystack.size()) return TextView::npos;
  const char16_t first = fold_case(needle[0]);
  for (std::size_t i = from; i + needle.size() <= haystack.size(); ++i) {
    if (fold_case(haystack[i]) == first &&
        equal_text(haystack.substr(i, needle.size()), needle, Compare::Text)) {
      return i;
    }
  }
  return TextView::npos;
}

Text replace_all(TextView text, TextView find, TextView replacement, Compare mode) {
  if (find.empty()) return Text(text);
  Text out;
  out.reserve(text.size());
  std::size_t pos = 0;
  for (;;) {
    const std::size_t hit = find_text(text, find, pos, mode);
    if (hit == TextView::npos) break;
    out.append(text.substr(pos, hit - pos));
    out.append(replacement);
    pos = hit + find.size();
  }
  out.append(text.substr(pos));
  return out;
}

std::vector<Text> split_text(TextView text, TextView delimiter, Compare mode) {
  std::vector<Text> parts;
  if (text.empty()) return parts;
  if (delimiter.empty()) {
    parts.emplace_back(text);
    return parts;
  }
  std::size_t pos = 0;
  for (;;) {
    const std::size_t hit = find_text(text, delimiter, pos, mode);
    if (hit == TextView::npos) break;
    parts.emplace_back(text.substr(pos, hit - pos));
    pos = hit + delimiter.size();
  }
  parts.emplace_back(text.substr(pos));
  return parts;
}

}  // namespace zelkora
