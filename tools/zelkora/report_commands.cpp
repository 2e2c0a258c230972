// Commands of the report tables.
#include <algorithm>
#include <cstdlib>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"

namespace zelkora::cli {

namespace {

// Widths beyond this are refused rather than padded out in memory.
constexpr int32_t kMostCells = 100000;

int32_t arg_cells(std::string_view arg, std::string_view what) {
  const int32_t value = arg_int32(arg, what);
  if (std::abs(static_cast<int64_t>(value)) > kMostCells) {
    throw UsageError{std::string(what) + " must lie within -" + std::to_string(kMostCells) +
                     " to " + std::to_string(kMostCells)};
  }
  return value;
}

eAlignment arg_alignment(std::string_view arg) {
  if (arg == "left") return zkLeftJustify;
  if (arg == "center") return zkCenter;
  if (arg == "right") return zkRightJustify;
  throw UsageError{"--align must be left, center or right, not \"" + std::string(arg) + "\""};
}

void cell_command(Args& args, std::ostream& out) {
  const auto align = args.take_option("--align");
  const auto spaces = args.take_option("--spaces");
  args.expect(2);
  const eAlignment alignment = align ? arg_alignment(*align) : zkRightJustify;
  const int32_t extra = spaces ? arg_cells(*spaces, "N") : 0;
  const int32_t width = arg_cells(args[1], "WIDTH");
  clsCharacter chr;
  out << "[" << out_text(chr.tFormatByLen(arg_text(args[0]), width, alignment, extra)) << "]\n";
}

// A comma-separated list argument.
std::vector<std::string> arg_list(std::string_view arg) {
  std::vector<std::string> items;
  std::size_t start = 0;
  for (;;) {
    const std::size_t comma = arg.find(',', start);
    items.emplace_back(
        arg.substr(start, comma == std::string_view::npos ? arg.npos : comma - start));
    if (comma == std::string_view::npos) return items;
    start = comma + 1;
  }
}

void table_command(Args& args, std::ostream& out) {
  const auto widths = args.take_option("--widths");
  const auto aligns = args.take_option("--align");
  const auto spaces = args.take_option("--spaces");
  const bool markup = args.take_flag("--markup");
  if (args.size() == 0) throw UsageError{"give at least one ROW"};
  std::vector<std::vector<Text>> rows;
  std::size_t columns = 0;
  for (std::size_t i = 0; i < args.size(); ++i) {
    rows.push_back(split_text(arg_text(args[i]), u"|"));
    columns = std::max(columns, rows.back().size());
  }
  if (columns == 0) throw UsageError{"the rows have no cells"};
  clsCharacter chr;
  chr.ListOut_Ubound(static_cast<int32_t>(columns) - 1);
  chr.ListOut_Initialize(0, 12, zkRightJustify, spaces ? arg_cells(*spaces, "N") : 1);
  if (widths) {
    const auto list = arg_list(*widths);
    for (std::size_t i = 0; i < list.size() && i < columns; ++i) {
      chr.ListOut_Index_Width(static_cast<int32_t>(i), arg_cells(list[i], "--widths"));
    }
  }
  if (aligns) {
    const auto list = arg_list(*aligns);
    for (std::size_t i = 0; i < list.size() && i < columns; ++i) {
      chr.ListOut_Index_Align(static_cast<int32_t>(i), arg_alignment(list[i]));
    }
  }
  for (std::vector<Text>& cells : rows) {
    cells.resize(columns);
    chr.ListOut_TextAddRow(cells, 0);
  }
  // Widths count the text as shown, so the table lines up once the markup is
  // taken out.
  const Text table = replace_all(chr.Txt(), chr.tConEnter1(), u"\n");
  out << out_text(markup ? table : chr.tDelSuperSubSign(table));
}

}  // namespace

std::vector<Command> report_commands() {
  return {
      {"cell", "TEXT WIDTH [--align left|center|right] [--spaces N]",
       "TEXT fitted into a report-table column of WIDTH cells with N extra blanks (default "
       "right, 0), between [ and ]",
       cell_command},
      {"table", "ROW... [--widths W1,W2,...] [--align A1,A2,...] [--spaces N] [--markup]",
       "a report table of \"|\"-separated cells, one ROW an argument (columns 12 wide, "
       "right-aligned, 1 extra blank unless given), printed without markup unless --markup",
       table_command},
  };
}

}  // namespace zelkora::cli
