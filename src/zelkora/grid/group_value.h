// The value of a group row: its members' values joined with ", " in member
// order ("2, 16" for a count and a diameter). What a user types is split at
// "," and each part trimmed of blanks, so "2,16" and " 2 ,16" are "2, 16".
#pragma once

#include <vector>

#include "zelkora/platform/text.h"

namespace zelkora::grid {

// The parts of a group value, trimmed; none for an empty text.
inline std::vector<Text> split_group_value(TextView value) {
  std::vector<Text> parts;
  if (value.empty()) return parts;
  for (const Text& part : split_text(value, u",")) parts.emplace_back(trim(part));
  return parts;
}

// The parts trimmed and joined with ", ".
inline Text join_group_value(const std::vector<Text>& parts) {
  Text joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined += u", ";
    joined += trim(parts[i]);
  }
  return joined;
}

}  // namespace zelkora::grid
