// The column layout of the report tables.
#include "zelkora/frame/column_layout.h"

#include <algorithm>
#include <string>

#include "zelkora/platform/fault.h"

namespace zelkora::frame {

namespace {

[[noreturn]] void index_fault(int64_t index, int64_t upper) {
  throw Fault(FaultKind::IndexOutOfRange, "report table: column " + std::to_string(index) +
                                              " is outside 0 to " + std::to_string(upper));
}

}  // namespace

void ColumnLayout::initialize(int32_t start, int32_t column_width, int32_t column_alignment,
                              int32_t column_extra) {
  if (start < 0 && start <= ubound) index_fault(start, ubound);
  // A negative upper index gives no columns at all.
  const std::size_t count = ubound < 0 ? 0 : static_cast<std::size_t>(ubound) + 1;
  width.assign(count, 0);
  alignment.assign(count, 0);
  extra_blanks.assign(count, 0);
  for (std::size_t i = static_cast<std::size_t>(std::max(start, 0)); i < count; ++i) {
    width[i] = column_width;
    alignment[i] = column_alignment;
    extra_blanks[i] = column_extra;
  }
}

void ColumnLayout::check(int32_t index) const {
  if (index < 0 || index > upper()) index_fault(index, upper());
}

void ColumnLayout::set_width(int32_t index, int32_t value) {
  check(index);
  width[index] = value;
}

void ColumnLayout::set_alignment(int32_t index, int32_t value) {
  check(index);
  alignment[index] = value;
}

void ColumnLayout::set_extra_blanks(int32_t index, int32_t value) {
  check(index);
  extra_blanks[index] = value;
}

}  // namespace zelkora::frame
