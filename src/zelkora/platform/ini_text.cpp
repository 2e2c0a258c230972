// The private-profile rules on the text of an INI file.
#include "zelkora/platform/ini_text.h"

#include <utility>
#include <vector>

#include "zelkora/platform/codepage.h"

namespace zelkora::platform::ini {

namespace {

bool is_space(char16_t c) { return c == u' ' || c == u'\t'; }

TextView trim_spaces(TextView s) {
  std::size_t b = 0;
  std::size_t e = s.size();
  while (b < e && is_space(s[b])) ++b;
  while (e > b && is_space(s[e - 1])) --e;
  return s.substr(b, e - b);
}

TextView unquote(TextView value) {
  if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
      value.back() == value.front()) {
    return value.substr(1, value.size() - 2);
  }
  return value;
}

bool has_line_break(TextView s) { return s.find_first_of(u"\r\n") != TextView::npos; }

// One line of the content: [begin, end) is its text, [end, next) its line end.
struct Line {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t next = 0;
};

enum class Kind { Other, Section, Key };

struct Parsed {
  Kind kind = Kind::Other;
  TextView name;             // section or key name, trimmed
  TextView value;            // key value, trimmed (quotes still on)
  std::size_t value_at = 0;  // offset in the content of the text after "=" and its blanks
};

class Lines {
 public:
  explicit Lines(TextView content) : content_(content) {
    if (!content_.empty() && content_[0] == u'\uFEFF') pos_ = 1;
  }

  bool next(Line& line) {
    if (pos_ >= content_.size()) return false;
    line.begin = pos_;
    const std::size_t lf = content_.find(u'\n', pos_);
    if (lf == TextView::npos) {
      line.end = line.next = content_.size();
    } else {
      line.end = (lf > pos_ && content_[lf - 1] == u'\r') ? lf - 1 : lf;
      line.next = lf + 1;
    }
    pos_ = line.next;
    return true;
  }

 private:
  TextView content_;
  std::size_t pos_ = 0;
};

Parsed parse(TextView content, const Line& line) {
  Parsed p;
  const TextView raw = content.substr(line.begin, line.end - line.begin);
  const TextView text = trim_spaces(raw);
  if (text.empty() || text[0] == u';') return p;
  if (text[0] == u'[') {
    const std::size_t close = text.rfind(u']');
    if (close != TextView::npos) {
      p.kind = Kind::Section;
      p.name = trim_spaces(text.substr(1, close - 1));
      return p;
    }
  }
  const std::size_t eq = raw.find(u'=');
  if (eq == TextView::npos) return p;
  p.name = trim_spaces(raw.substr(0, eq));
  if (p.name.empty()) return p;
  p.kind = Kind::Key;
  std::size_t v = eq + 1;
  while (v < raw.size() && is_space(raw[v])) ++v;
  p.value_at = line.begin + v;
  p.value = trim_spaces(raw.substr(v));
  return p;
}

bool same_name(TextView a, TextView b) { return equal_text(a, b, Compare::Text); }

// Where a key lives in the content.
struct Place {
  bool section_found = false;
  Line header;  // the section's header line
  bool has_keys = false;
  Line last_key;                // the section's last key line
  std::vector<Line> key_lines;  // the lines of the key asked for, in order
  std::size_t first_value_at = 0;
};

Place locate(TextView content, TextView section, TextView key, bool every_key_line) {
  section = trim_spaces(section);
  key = trim_spaces(key);
  Place place;
  Lines lines(content);
  Line line;
  bool inside = false;
  while (lines.next(line)) {
    const Parsed p = parse(content, line);
    if (p.kind == Kind::Section) {
      if (inside) break;
      if (!place.section_found && same_name(p.name, section)) {
        place.section_found = inside = true;
        place.header = line;
      }
    } else if (p.kind == Kind::Key && inside) {
      place.has_keys = true;
      place.last_key = line;
      if (same_name(p.name, key) && (every_key_line || place.key_lines.empty())) {
        if (place.key_lines.empty()) place.first_value_at = p.value_at;
        place.key_lines.push_back(line);
      }
    }
  }
  return place;
}

// A name as the comparisons see it: without its blanks and tabs, folded.
Text folded_name(TextView name) {
  Text out(trim_spaces(name));
  for (char16_t& c : out) c = fold_case(c);
  return out;
}

// What the classic read hands back: the value, or the default without its
// trailing blanks, cut to fit the read buffer.
Text fitted_read(std::optional<TextView> found, TextView default_value) {
  const TextView value = found ? *found : trim_right(default_value);
  return Text(value.substr(0, codepage::prefix_fitting(value, kReadBufferSize - 1)));
}

TextView line_end_of(TextView content, LineEnd fallback) {
  const std::size_t lf = content.find(u'\n');
  if (lf == TextView::npos) return fallback == LineEnd::CrLf ? u"\r\n" : u"\n";
  return (lf > 0 && content[lf - 1] == u'\r') ? u"\r\n" : u"\n";
}

}  // namespace

std::optional<TextView> find_value(TextView content, TextView section, TextView key) {
  section = trim_spaces(section);
  key = trim_spaces(key);
  Lines lines(content);
  Line line;
  bool inside = false;
  while (lines.next(line)) {
    const Parsed p = parse(content, line);
    if (p.kind == Kind::Section) {
      if (inside) return std::nullopt;
      inside = same_name(p.name, section);
    } else if (p.kind == Kind::Key && inside && same_name(p.name, key)) {
      return unquote(p.value);
    }
  }
  return std::nullopt;
}

Text read_profile_string(TextView content, TextView section, TextView key, TextView default_value) {
  return fitted_read(find_value(content, section, key), default_value);
}

Index::Index(Text content) : content_(std::move(content)) {
  const TextView all = content_;
  Lines lines(all);
  Line line;
  std::unordered_map<Text, TextView>* keys = nullptr;  // of the section read, if first
  while (lines.next(line)) {
    const Parsed p = parse(all, line);
    if (p.kind == Kind::Section) {
      auto [at, first] = sections_.try_emplace(folded_name(p.name));
      keys = first ? &at->second : nullptr;
    } else if (p.kind == Kind::Key && keys) {
      keys->try_emplace(folded_name(p.name), unquote(p.value));
    }
  }
}

std::optional<TextView> Index::find_value(TextView section, TextView key) const {
  const auto at = sections_.find(folded_name(section));
  if (at == sections_.end()) return std::nullopt;
  const auto value = at->second.find(folded_name(key));
  if (value == at->second.end()) return std::nullopt;
  return value->second;
}

Text Index::read_profile_string(TextView section, TextView key, TextView default_value) const {
  return fitted_read(find_value(section, key), default_value);
}

bool can_store(TextView section, TextView key, std::optional<TextView> value) {
  section = trim_spaces(section);
  key = trim_spaces(key);
  if (section.empty() || key.empty()) return false;
  if (has_line_break(section) || has_line_break(key)) return false;
  if (key.find(u'=') != TextView::npos || key[0] == u';' || key[0] == u'[') return false;
  return !(value && has_line_break(*value));
}

std::optional<Text> edit(TextView content, TextView section, TextView key,
                         std::optional<TextView> value, LineEnd new_line_end) {
  if (!can_store(section, key, value)) return std::nullopt;
  const Place place = locate(content, section, key, /*every_key_line=*/!value);
  const TextView eol = line_end_of(content, new_line_end);
  Text out;

  if (!value) {
    out.reserve(content.size());
    std::size_t copied = 0;
    for (const Line& line : place.key_lines) {
      out.append(content.substr(copied, line.begin - copied));
      copied = line.next;
    }
    out.append(content.substr(copied));
    return out;
  }

  out.reserve(content.size() + section.size() + key.size() + value->size() + 8);
  if (!place.key_lines.empty()) {
    const Line& line = place.key_lines.front();
    out.append(content.substr(0, place.first_value_at));
    out.append(*value);
    out.append(content.substr(line.end));
    return out;
  }

  // A new line after `after`, or at the end of the content.
  const Line* after = place.has_keys ? &place.last_key : &place.header;
  const std::size_t at = place.section_found ? after->next : content.size();
  out.append(content.substr(0, at));
  const std::size_t start = (!content.empty() && content[0] == u'\uFEFF') ? 1 : 0;
  if (at > start && out.back() != u'\n') out.append(eol);
  if (!place.section_found) {
    out.append(u"[");
    out.append(trim_spaces(section));
    out.append(u"]");
    out.append(eol);
  }
  out.append(trim_spaces(key));
  out.append(u"=");
  out.append(*value);
  out.append(eol);
  out.append(content.substr(at));
  return out;
}

Text quoted_if_needed(TextView value) {
  auto is_space = [](char16_t c) { return c == u' ' || c == u'\t'; };
  const bool padded = !value.empty() && (is_space(value.front()) || is_space(value.back()));
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == u'"' || value.front() == u'\'');
  if (!padded && !quoted) return Text(value);
  return u"\"" + Text(value) + u"\"";
}

}  // namespace zelkora::platform::ini
