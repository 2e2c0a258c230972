// What the RTF and HTML writers share: the page's numbers made safe for a
// reader, where the signature block goes and what it says, a table's columns,
// and numbers written the same whatever the process's locale.
//
//   PageSetup page = sane_page(document.page);
//   std::size_t at = signature_position(document.blocks);  // block index
//   std::vector<Column> columns = table_columns(table);
//   std::string mm = decimal(12.5);                         // "12.5"
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "zelkora/document/report_document.h"

namespace zelkora::document {

// The page setup with every number finite and within what Word and a browser
// accept: a page of 50 to 558 mm (22 inches) each way, margins from 0 to a
// third of the page, the body font from 5 to 72 points. A number that is not
// finite takes the default.
PageSetup sane_page(const PageSetup& page);

// The index of the block before which the signature block goes: right after
// the first kRule paragraph, else at the start (0).
std::size_t signature_position(const std::vector<Block>& blocks);

// One field of the signature block: its caption and the name or date written
// after it (empty: a blank to sign on).
struct SignatureField {
  TextView caption;
  TextView value;
};
std::array<SignatureField, 4> signature_fields(const Signature& signature);

// What stands between two fields of the signature block.
inline constexpr char16_t kSignatureGap[] = u"\u3000\u3000";

// The display cells an empty field's blank takes.
inline constexpr int kSignatureBlankCells = 10;

// A heading paragraph's level, 1 to 3 whatever the model says.
int heading_level(const Paragraph& paragraph);

// Left, centred or right: any other value of Align reads as left.
Align sane_align(Align align);

// A column of a table: its width in display cells (the table's own, else the
// widest text of the column; 1 to 400) and its alignment (left when not given).
struct Column {
  int width = 1;
  Align align = Align::kLeft;
};

// The table's columns: as many as its longest row has cells. Shorter rows are
// written with empty cells at their end; a table without cells has none.
std::vector<Column> table_columns(const Table& table);

// The display cells of a table's indent, 0 to 400.
int table_indent(const Table& table);

// The display width of runs: ASCII one cell, a Chinese character two.
int runs_width(const std::vector<Run>& runs);

// A number with at most `decimals` decimals, trailing zeros dropped, "." as
// the decimal point whatever the locale; a number that is not finite is "0".
std::string decimal(double value, int decimals = 3);

}  // namespace zelkora::document
