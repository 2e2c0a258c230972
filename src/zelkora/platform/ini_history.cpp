// The history of the suite's programs in its INI file.
#include "zelkora/platform/ini_history.h"

#include <algorithm>
#include <string>

#include "zelkora/platform/codepage.h"

namespace zelkora::platform {

namespace {

constexpr std::size_t kLongestValue = 511;

Text key_of(int n) {
  const std::string digits = std::to_string(n);
  return Text(digits.begin(), digits.end());
}

char16_t path_unit(char16_t c, PathCase path_case) {
  if (path_case == PathCase::kExact) return c;
  return c == u'/' ? u'\\' : fold_case(c);
}

// What reads back as it was written: not empty, no line break, no blanks
// around it and no quotes around it (an INI read takes them off), every
// character in code page 936 and at most the read buffer's 511 bytes.
bool can_be_kept(TextView program, TextView file) {
  const auto storable = [](TextView text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == u'"' || text.front() == u'\'');
    return !text.empty() && trim(text).size() == text.size() && !quoted &&
           text.find_first_of(u"\r\n") == TextView::npos &&
           std::all_of(text.begin(), text.end(), codepage::has_ansi_form) &&
           codepage::display_width(text) <= kLongestValue;
  };
  return storable(program) && storable(file) && program.find_first_of(u"[]") == TextView::npos;
}

}  // namespace

bool same_path(TextView a, TextView b, PathCase path_case) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [&](char16_t x, char16_t y) {
           return path_unit(x, path_case) == path_unit(y, path_case);
         });
}

std::vector<Text> IniHistory::files(TextView program) const {
  std::vector<Text> found;
  if (!ini_ || trim(program).empty()) return found;
  for (int n = 1; n <= kLength; ++n) {
    Text entry = ini_->read(program, key_of(n), {}, file_);
    if (entry.empty()) continue;
    const bool repeated = std::any_of(found.begin(), found.end(), [&](const Text& seen) {
      return same_path(seen, entry, path_case_);
    });
    if (!repeated) found.push_back(std::move(entry));
  }
  return found;
}

bool IniHistory::add(TextView program, TextView file) {
  if (!ini_ || !can_be_kept(program, file)) return false;
  std::vector<Text> list = files(program);
  std::erase_if(list, [&](const Text& seen) { return same_path(seen, file, path_case_); });
  list.insert(list.begin(), Text(file));
  if (list.size() > static_cast<std::size_t>(kLength)) list.resize(kLength);
  for (int n = 1; n <= kLength; ++n) {
    const std::size_t at = static_cast<std::size_t>(n - 1);
    const std::optional<TextView> value =
        at < list.size() ? std::optional<TextView>(list[at]) : std::nullopt;
    if (!ini_->write(program, key_of(n), value, file_)) return false;
  }
  return true;
}

}  // namespace zelkora::platform
