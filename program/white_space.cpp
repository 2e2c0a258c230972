// White space in the program's texts.
#include "program/white_space.h"

#include <limits>

namespace zelkora::desk {

bool is_white_space(char16_t c) {
  if (c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\x85' || c == u'\xA0') return true;
  if (c < u'\x1680') return false;
  return c == u'\x1680' || (c >= u'\x2000' && c <= u'\x200A') || c == u'\x2028' || c == u'\x2029' ||
         c == u'\x202F' || c == u'\x205F' || c == u'\x3000';
}

TextView trimmed(TextView text) {
  std::size_t first = 0, last = text.size();
  while (first < last && is_white_space(text[first])) ++first;
  while (last > first && is_white_space(text[last - 1])) --last;
  return text.substr(first, last - first);
}

Text simplified(TextView text) {
  Text out;
  bool gap = false;
  for (const char16_t c : trimmed(text)) {
    if (is_white_space(c)) {
      gap = true;
      continue;
    }
    if (gap) out += u' ';
    gap = false;
    out += c;
  }
  return out;
}

std::optional<int> to_int(TextView text) {
  text = trimmed(text);
  const bool negative = !text.empty() && text.front() == u'-';
  if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) text.remove_prefix(1);
  if (text.empty()) return std::nullopt;
  long long value = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9') return std::nullopt;
    value = value * 10 + (c - u'0');
    if (value > static_cast<long long>(std::numeric_limits<int>::max()) + 1) return std::nullopt;
  }
  if (negative) value = -value;
  if (value > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(value);
}

}  // namespace zelkora::desk
