// The text engine under the INI files and the settings store: reading a value
// from, and editing, the decoded content of an INI file, with the rules of
// the classic private-profile calls. It does no file input or output; the
// callers decode and encode (code page 936 for the suite's INI files, UTF-8
// for the settings file).
//
// The content is read line by line (a line ends at LF; a CR before it belongs
// to the line end; a U+FEFF at the very start is skipped):
//  - "[name]" starts a section. Blanks and tabs around the line and around
//    the name are allowed; the name runs to the last "]" of the line.
//  - "key=value" is a key of the current section. The key runs to the first
//    "="; key and value lose their surrounding blanks and tabs, and the value
//    loses one pair of matching surrounding quotes ("..." or '...').
//  - A line starting with ";" is a comment; any other line without "=" is
//    ignored, as are keys before the first section and lines with an empty
//    key.
// Section and key names are compared without regard to case, after losing
// their surrounding blanks and tabs. When a section appears more than once
// only the first one counts, for reading and for editing; within it, the
// first line of a key counts.
//
//   std::optional<TextView> v = ini::find_value(content, u"Options", u"Lang");
//   std::optional<Text> edited = ini::edit(content, u"Options", u"Lang", u"2");
#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>

#include "zelkora/platform/text.h"

namespace zelkora::platform::ini {

// The value of `key` in the first section called `section`, as a view into
// `content`; nothing when the section or the key is missing.
std::optional<TextView> find_value(TextView content, TextView section, TextView key);

// The read buffer of the classic call, in bytes of code page 936, including
// the terminating NUL.
inline constexpr std::size_t kReadBufferSize = 512;

// What the classic read returns for `content` (empty for a missing file):
// the value found, else `default_value` without its trailing blanks; either
// cut to the longest start that fits the read buffer (at most 511 bytes in
// code page 936, never half of a double-byte character).
Text read_profile_string(TextView content, TextView section, TextView key, TextView default_value);

// A content parsed once for many reads: the same answers as find_value and
// read_profile_string, each read a lookup (the names folded once) instead of
// a pass over the content. Neither copied nor moved: its answers are views
// into the content it owns.
class Index {
 public:
  explicit Index(Text content);
  Index(const Index&) = delete;
  Index& operator=(const Index&) = delete;

  std::optional<TextView> find_value(TextView section, TextView key) const;
  Text read_profile_string(TextView section, TextView key, TextView default_value) const;
  const Text& content() const { return content_; }

 private:
  Text content_;
  // The first section of each name, folded, and in it the first line of
  // each key, folded: the value without its quotes.
  std::unordered_map<Text, std::unordered_map<Text, TextView>> sections_;
};

// The line end that `edit` writes into new lines.
enum class LineEnd { CrLf, Lf };

// Whether `key=value` can be stored in `section` so that it reads back: the
// names must not be empty (after losing surrounding blanks and tabs), nothing
// may contain a line break, and the key may not contain "=" nor start with
// ";" or "[".
bool can_store(TextView section, TextView key, std::optional<TextView> value);

// `content` with `key` set to `value` in `section`, or with the key removed
// when there is no value. Nothing when `can_store` refuses the entry.
//  - An existing key keeps its line, its spelling and the blanks around "=";
//    only the value after them is replaced.
//  - A new key goes on a new line after the last key line of the section
//    (right after the header when the section has no keys).
//  - A new section is appended at the end as "[section]" and "key=value".
//  - Removing takes away every line of the key in the section; a missing
//    section or key leaves the content as it was.
// Every other line stays as it was, character for character. New lines end
// the way the content's first line does, or with `new_line_end` when the
// content has no line end yet.
std::optional<Text> edit(TextView content, TextView section, TextView key,
                         std::optional<TextView> value, LineEnd new_line_end = LineEnd::CrLf);

// The text to write after "=" so that reading gives back exactly `value`:
// the value itself, or the value in double quotes when it has surrounding
// blanks or tabs, or a pair of quotes of its own. The settings stores use it
// (a stored symbol may be a blank); the classic INI write does not.
Text quoted_if_needed(TextView value);

}  // namespace zelkora::platform::ini
