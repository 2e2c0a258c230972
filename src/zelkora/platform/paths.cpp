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

template <class String>
String native_of(TextView text) {
  if constexpr (kWide<String>) {
    return String(text.begin(), text.end());
  } else {
    return to_utf8(text);
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
    return from_utf8(native);
  }
}

}  // namespace

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
