// Commands of the report tables.
#include <algorithm>
#include <cstdlib>

#include "tools/zelkora/cli.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/frame/numbers.h"
#include "zelkora/typeset/markup.h"

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

void interpolate_command(Args& args, std::ostream& out) {
  if (args.size() != 2 && args.size() != 3) throw UsageError{"expected TABLE X [Y]"};
  const Text table = arg_text(args[0]);
  const double x = arg_double(args[1], "X");
  clsCharacter chr;
  int32_t error = 0;
  const double value = args.size() == 2
                           ? chr.dInterpolate(table, x, error)
                           : chr.dInterpolate2(table, x, arg_double(args[2], "Y"), error);
  out << "value=" << to_utf8(frame::general_number_text(value, frame::NumberSymbols{})) << "\n"
      << "error=" << error << "\n";
}

std::vector<int32_t> arg_ids(std::string_view arg) {
  std::vector<int32_t> ids;
  for (std::size_t start = 0; start <= arg.size();) {
    std::size_t end = arg.find(',', start);
    if (end == std::string_view::npos) end = arg.size();
    ids.push_back(arg_int32(arg.substr(start, end - start), "ID"));
    start = end + 1;
  }
  return ids;
}

void header_command(Args& args, std::ostream& out) {
  const std::optional<std::string> project = args.take_option("--project");
  const std::optional<std::string> standards = args.take_option("--standards");
  const std::optional<std::string> date = args.take_option("--date");
  const std::optional<std::string> width = args.take_option("--width");
  const bool plain = args.take_flag("--plain");
  args.expect(1);
  clsCharacter chr;
  if (width) chr.iMaxChrNow(static_cast<int16_t>(std::clamp(arg_cells(*width, "N"), 0, 32767)));
  Text head = chr.tCalHead(arg_text(args[0]), project ? arg_text(*project) : Text(),
                           standards ? arg_ids(*standards) : std::vector<int32_t>{},
                           date ? arg_text(*date) : Text());
  head = replace_all(head, chr.tConEnter1(), u"\n");
  out << out_text(plain ? typeset::strip_markup(head) : head);
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
      {"interpolate", "TABLE X [Y]",
       "the value at X (and Y) of a table \"k1|k2|...;v1|v2|...\" (two dimensions: "
       "\"corner|y1|y2;x1|v11|v12;...\"), by straight lines between the keys: value= and "
       "error= (39997 outside the table, 39999 for a damaged one)",
       interpolate_command},
      {"header", "TITLE [--project P] [--standards ID,ID...] [--date D] [--width N] [--plain]",
       "the head of a calculation report: the title centred in bold, the project, the "
       "standards by catalogue id, the date (today when not given) and a rule",
       header_command},
  };
}

}  // namespace zelkora::cli
