// Commands of the report tables.
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

}  // namespace

std::vector<Command> report_commands() {
  return {
      {"cell", "TEXT WIDTH [--align left|center|right] [--spaces N]",
       "TEXT fitted into a report-table column of WIDTH cells with N extra blanks (default "
       "right, 0), between [ and ]",
       cell_command},
  };
}

}  // namespace zelkora::cli
