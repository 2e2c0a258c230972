// Reading the check expression of a numeric entry (its grammar is described
// in cls_err_chr.h) and testing a number against it. Nothing here composes
// a message; clsErrChr turns a failed condition into one.
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::checking {

enum class EntryCheck : uint8_t {
  kNone,            // "UnCheckNum", "0"
  kListItem,        // "1"
  kCoordinatePair,  // "X,Y"
  kSlabBar,         // "BanGJ"
  kBar,             // "GJ"
  kNumber,          // everything else
};

enum class Relation : uint8_t { kGreater, kGreaterEqual, kLess, kLessEqual, kNotEqual, kEqual };

struct Condition {
  bool interval = false;
  Relation relation = Relation::kGreater;  // a relation: value relation limit
  double limit = 0;
  double lower = 0, upper = 0;  // an interval
  bool lower_open = false, upper_open = false;
};

// The largest (and least) number that a type letter admits, and the error
// numbers of an entry beyond them.
struct NumberType {
  double largest;
  double least;
  int32_t above_error;  // 0: name the limit with the relation error
  int32_t below_error;
};

struct EntryDescriptor {
  EntryCheck check = EntryCheck::kNumber;
  bool allow_empty = false;  // leading "n"
  bool allow_auto = false;   // leading "x"
  NumberType type{};
  std::vector<Condition> conditions;
  // The parts the grammar cannot read (an unknown sign, a limit that is no
  // number): the check passes over them, so they are slips of the layout.
  std::vector<Text> unreadable;
};

EntryDescriptor parse_entry_descriptor(TextView descriptor);

// The relation at the start of `text` (two-character signs first) and its
// length, or 0 when the text does not start with one. "=" is a relation only
// when `allow_equal_sign` (the two-value check), not in a descriptor.
std::size_t read_relation(TextView text, Relation& relation, bool allow_equal_sign);

// True when `value` stands in `relation` to `limit`.
bool holds(Relation relation, double value, double limit);

// The error number of a failed relation: 155 for ">", 166 ">=", 153 "<",
// 154 "<=", 169 "<>", 168 "=".
int32_t relation_error(Relation relation);

// True when `value` lies in the interval of `condition`.
bool within(const Condition& condition, double value);

}  // namespace zelkora::checking
