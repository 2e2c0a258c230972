#include "zelkora/document/writer_support.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "zelkora/platform/codepage.h"

namespace zelkora::document {

namespace {

constexpr int kMaxCells = 400;

double within(double value, double low, double high, double fallback) {
  if (!std::isfinite(value)) return fallback;
  return std::clamp(value, low, high);
}

}  // namespace

PageSetup sane_page(const PageSetup& page) {
  const PageSetup a4;
  PageSetup sane;
  sane.width_mm = within(page.width_mm, 50, 558, a4.width_mm);
  sane.height_mm = within(page.height_mm, 50, 558, a4.height_mm);
  const double across = sane.width_mm / 3, down = sane.height_mm / 3;
  sane.left_mm = within(page.left_mm, 0, across, std::min(a4.left_mm, across));
  sane.right_mm = within(page.right_mm, 0, across, std::min(a4.right_mm, across));
  sane.top_mm = within(page.top_mm, 0, down, std::min(a4.top_mm, down));
  sane.bottom_mm = within(page.bottom_mm, 0, down, std::min(a4.bottom_mm, down));
  sane.font_pt = within(page.font_pt, 5, 72, a4.font_pt);
  return sane;
}

std::size_t signature_position(const std::vector<Block>& blocks) {
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const auto* paragraph = std::get_if<Paragraph>(&blocks[i]);
    if (paragraph && paragraph->kind == Paragraph::Kind::kRule) return i + 1;
  }
  return 0;
}

std::array<SignatureField, 4> signature_fields(const Signature& signature) {
  return {{{kCalculatedBy, signature.calculated_by},
           {kCheckedBy, signature.checked_by},
           {kApprovedBy, signature.approved_by},
           {kDateCaption, signature.date}}};
}

int heading_level(const Paragraph& paragraph) { return std::clamp(paragraph.level, 1, 3); }

Align sane_align(Align align) {
  return align == Align::kCenter || align == Align::kRight ? align : Align::kLeft;
}

int runs_width(const std::vector<Run>& runs) {
  std::size_t width = 0;
  for (const Run& run : runs) width += codepage::display_width(run.text);
  return static_cast<int>(std::min<std::size_t>(width, kMaxCells));
}

std::vector<Column> table_columns(const Table& table) {
  std::size_t count = 0;
  for (const auto& row : table.rows) count = std::max(count, row.size());
  std::vector<Column> columns(count);
  for (std::size_t c = 0; c < count; ++c) {
    if (c < table.align.size()) columns[c].align = sane_align(table.align[c]);
    if (c < table.widths.size() && table.widths[c] > 0) {
      columns[c].width = std::min(table.widths[c], kMaxCells);
      continue;
    }
    for (const auto& row : table.rows) {
      if (c < row.size()) columns[c].width = std::max(columns[c].width, runs_width(row[c]));
    }
  }
  return columns;
}

int table_indent(const Table& table) { return std::clamp(table.indent, 0, kMaxCells); }

std::string decimal(double value, int decimals) {
  if (!std::isfinite(value) || std::fabs(value) > 1e12) value = 0;
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  std::string text(buffer, result.ptr);
  if (text.find('.') != std::string::npos) {
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
  }
  if (text == "-0") text = "0";
  return text;
}

}  // namespace zelkora::document
