// Reading the check expression of a numeric entry, and testing numbers against it.
#include "zelkora/checking/entry_descriptor.h"

#include <cmath>
#include <limits>
#include <optional>

#include "zelkora/frame/error_numbers.h"
#include "zelkora/frame/numbers.h"

namespace zelkora::checking {

namespace {

constexpr NumberType kWidest{3e14, -3e14, error_id::kAboveSingle, error_id::kBelowSingle};
constexpr NumberType kInteger{32767, -32768, 0, 0};
constexpr NumberType kLong{1e9, -3e14, error_id::kAboveLong, error_id::kBelowSingle};

// A limit in a descriptor: a number written with "." and without grouping,
// whatever the user's notation; nothing else may follow it.
std::optional<double> read_limit(TextView text) {
  return frame::parse_number(trim(text), frame::NumberSymbols{u'.', 0});
}

// The brackets of an interval are the characters around its bounds that no
// number begins or ends with: "(0~100]", "{0~100}", "<0~100>".
bool may_begin_number(char16_t c) {
  return (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
}
bool may_end_number(char16_t c) { return (c >= u'0' && c <= u'9') || c == u'.'; }

// "(" opens exclusively and ")" closes exclusively; any other bracket, or
// none, is inclusive.
std::optional<Condition> read_interval(TextView text) {
  Condition c;
  c.interval = true;
  if (!text.empty() && !may_begin_number(text.front())) {
    c.lower_open = text.front() == u'(';
    text.remove_prefix(1);
  }
  if (!text.empty() && !may_end_number(text.back())) {
    c.upper_open = text.back() == u')';
    text.remove_suffix(1);
  }
  const std::size_t tilde = text.find(u'~');
  if (tilde == TextView::npos) return std::nullopt;
  const auto lower = read_limit(text.substr(0, tilde));
  const auto upper = read_limit(text.substr(tilde + 1));
  if (!lower || !upper) return std::nullopt;
  c.lower = *lower;
  c.upper = *upper;
  return c;
}

// A condition, or nothing for a name ("Lx") or a condition that cannot be
// read. A part with "~" is an interval, whatever its brackets.
std::optional<Condition> read_condition(TextView text) {
  text = trim(text);
  if (text.find(u'~') != TextView::npos) return read_interval(text);
  Condition c;
  const std::size_t n = read_relation(text, c.relation, false);
  if (n == 0) return std::nullopt;
  const auto limit = read_limit(text.substr(n));
  if (!limit) return std::nullopt;
  c.limit = *limit;
  return c;
}

// A part after the first that starts with neither a sign, a bracket nor a
// number, and holds no "~", names a quantity ("Lx") and is no condition.
bool is_name(TextView part) {
  part = trim(part);
  if (part.empty() || part.find(u'~') != TextView::npos) return false;
  const char16_t c = part.front();
  return !may_begin_number(c) && c != u'<' && c != u'>' && c != u'=' && c != u'(' && c != u'[' &&
         c != u'{';
}

// Adds the condition `part` to `d`, or keeps it among the unreadable parts.
void add_condition(EntryDescriptor& d, TextView part) {
  if (auto c = read_condition(part)) {
    d.conditions.push_back(*c);
  } else {
    d.unreadable.emplace_back(trim(part));
  }
}

}  // namespace

std::size_t read_relation(TextView text, Relation& relation, bool allow_equal_sign) {
  static constexpr struct {
    TextView sign;
    Relation relation;
  } kSigns[] = {
      {u">=", Relation::kGreaterEqual}, {u"<=", Relation::kLessEqual}, {u"<>", Relation::kNotEqual},
      {u">", Relation::kGreater},       {u"<", Relation::kLess},       {u"=", Relation::kEqual},
  };
  for (const auto& s : kSigns) {
    if (s.relation == Relation::kEqual && !allow_equal_sign) continue;
    if (text.starts_with(s.sign)) {
      relation = s.relation;
      return s.sign.size();
    }
  }
  return 0;
}

bool holds(Relation relation, double value, double limit) {
  switch (relation) {
    case Relation::kGreater:
      return value > limit;
    case Relation::kGreaterEqual:
      return value >= limit;
    case Relation::kLess:
      return value < limit;
    case Relation::kLessEqual:
      return value <= limit;
    case Relation::kNotEqual:
      return value != limit;
    case Relation::kEqual:
      return value == limit;
  }
  return true;
}

int32_t relation_error(Relation relation) {
  switch (relation) {
    case Relation::kGreater:
      return error_id::kFailsGreater;
    case Relation::kGreaterEqual:
      return error_id::kFailsGreaterEqual;
    case Relation::kLess:
      return error_id::kFailsLess;
    case Relation::kLessEqual:
      return error_id::kFailsLessEqual;
    case Relation::kNotEqual:
      return error_id::kFailsNotEqual;
    case Relation::kEqual:
      return error_id::kFailsEqual;
  }
  return 0;
}

bool within(const Condition& c, double value) {
  const bool above_lower = c.lower_open ? value > c.lower : value >= c.lower;
  const bool below_upper = c.upper_open ? value < c.upper : value <= c.upper;
  return above_lower && below_upper;
}

EntryDescriptor parse_entry_descriptor(TextView descriptor) {
  EntryDescriptor d;
  d.type = kWidest;
  const std::vector<Text> parts = split_text(descriptor, u"_");
  const TextView head = parts.empty() ? TextView() : trim(parts.front());
  if (head == u"UnCheckNum" || head == u"0") {
    d.check = EntryCheck::kNone;
    return d;
  }
  if (head == u"1") {
    d.check = EntryCheck::kListItem;
    return d;
  }
  if (head == u"X,Y") {
    d.check = EntryCheck::kCoordinatePair;
    return d;
  }
  if (head == u"BanGJ") {
    d.check = EntryCheck::kSlabBar;
    return d;
  }
  if (head == u"GJ") {
    d.check = EntryCheck::kBar;
    return d;
  }

  TextView rest = head;
  if (rest.starts_with(u'n')) {
    d.allow_empty = true;
    rest.remove_prefix(1);
  }
  if (rest.starts_with(u'x')) {
    d.allow_auto = true;
    rest.remove_prefix(1);
  }
  // The first type letter present wins, in the order S, I, L.
  for (const auto& [letter, type] :
       {std::pair{u'S', kWidest}, std::pair{u'I', kInteger}, std::pair{u'L', kLong}}) {
    if (rest.find(letter) != TextView::npos) {
      d.type = type;
      break;
    }
  }
  if (!rest.empty() && (rest.front() == u'S' || rest.front() == u'I' || rest.front() == u'L')) {
    rest.remove_prefix(1);
  }
  if (!trim(rest).empty()) add_condition(d, rest);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (!is_name(parts[i]) && !trim(parts[i]).empty()) add_condition(d, parts[i]);
  }
  return d;
}

}  // namespace zelkora::checking
