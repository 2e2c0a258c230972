// Paths as text. Where the system spells paths in UTF-16 (wchar_t) a text is
// its path unit for unit, so even a name that is not valid Unicode survives;
// where it spells them in bytes, paths are UTF-8.
#include "zelkora/platform/paths.h"

#include <type_traits>

namespace zelkora::platform {

namespace {

using Native = std::filesystem::path::string_type;

template <class String>
constexpr bool kWide = std::is_same_v<typename String::value_type, wchar_t>;

// A low surrogate U+DC80..U+DCFF not preceded by a high one: a byte of a
// name that was no UTF-8, kept by text_from_system_name.
bool is_escaped_byte(TextView text, std::size_t i) {
  const char16_t c = text[i];
  if (c < 0xDC80 || c > 0xDCFF) return false;
  return i == 0 || text[i - 1] < 0xD800 || text[i - 1] > 0xDBFF;
}

std::string bytes_of(TextView text) {
  std::string out;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!is_escaped_byte(text, i)) continue;
    out += to_utf8(text.substr(start, i - start));
    out.push_back(static_cast<char>(text[i] - 0xDC00));
    start = i + 1;
  }
  out += to_utf8(text.substr(start));
  return out;
}

template <class String>
String native_of(TextView text) {
  if constexpr (kWide<String>) {
    return String(text.begin(), text.end());
  } else {
    return bytes_of(text);
  }
}

template <class String>
String native_of_utf8(std::string_view utf8) {
  if constexpr (kWide<String>) {
    return native_of<String>(from_utf8(utf8));
  } else {
    return String(utf8);
  }
}

template <class String>
std::string utf8_of(const String& native) {
  if constexpr (kWide<String>) {
    return to_utf8(Text(native.begin(), native.end()));
  } else {
    return native;
  }
}

template <class String>
Text text_of(const String& native) {
  if constexpr (kWide<String>) {
    return Text(native.begin(), native.end());
  } else {
    return text_from_system_name(native);
  }
}

}  // namespace

Text text_from_system_name(std::string_view name) {
  Text out;
  std::size_t at = 0;
  std::size_t bad = 0;
  while (!append_utf8(name.substr(at), out, &bad)) {
    out.push_back(static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(name[at + bad])));
    at += bad + 1;
  }
  return out;
}

std::filesystem::path path_from_text(TextView text) {
  return std::filesystem::path(native_of<Native>(text));
}

std::filesystem::path path_from_utf8(std::string_view utf8) {
  return std::filesystem::path(native_of_utf8<Native>(utf8));
}

Text text_from_path(const std::filesystem::path& path) { return text_of(path.native()); }

std::string utf8_from_path(const std::filesystem::path& path) {
  return utf8_of(path.generic_string<Native::value_type>());
}

}  // namespace zelkora::platform
