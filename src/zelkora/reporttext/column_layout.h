// The column layout of a report table held by each clsCharacter.
#pragma once

#include <cstdint>
#include <vector>

namespace zelkora::reporttext {

struct ColumnLayout {
  int32_t ubound = 0;
  std::vector<int32_t> width;
  std::vector<int32_t> alignment;
  std::vector<int32_t> extra_blanks;
};

}  // namespace zelkora::reporttext
