// Commands of the property grid and the program menu.
#include "tools/zelkora/cli.h"
#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/platform/fault.h"

namespace zelkora::cli {

namespace {

// The rows of a layout as the grid reads them: one line per row with the
// item index, the descriptor fields (the kind signed, so a collapsed row shows
// -10 or -110; the default field as written) and the event flag.
void layout_command(Args& args, std::ostream& out) {
  args.expect(1);
  const Text name = arg_text(args[0]);
  clsGridCell grid;
  const std::optional<int32_t> id = grid::layout_name_id(name, grid.character().catalogue());
  if (!id) {
    throw Fault(FaultKind::MissingResource, "no layout is called \"" + args[0] +
                                                "\" (catalogue texts " +
                                                std::to_string(grid::kFirstLayoutNameId) + " to " +
                                                std::to_string(grid::kLastLayoutNameId) + ")");
  }
  grid.lInterfaceResID(*id);
  grid.ReadLayoutResource();
  grid.SplitRowDescriptors();
  const grid::RowTables& t = grid.row_tables();
  std::string text =
      "rows=" + std::to_string(t.rows) + "\nlMax=" + std::to_string(t.max_item) + "\n";
  for (int32_t r = 1; r <= t.rows; ++r) {
    const auto i = static_cast<std::size_t>(r);
    text += std::to_string(r) + "\t" + std::to_string(t.item[i]) + "\t" +
            std::to_string(t.kind[i]) + "\t" + std::to_string(t.caption[i]) + "\t" +
            std::to_string(t.cell[i]) + "\t" + std::to_string(t.list[i]) + "\t" +
            out_text(t.default_field[i]) + "\t" + out_text(t.check[i]) + "\t" +
            (t.event[i] ? "1" : "0") + "\n";
  }
  out << text;
}

}  // namespace

std::vector<Command> grid_commands() {
  return {
      {"layout", "NAME",
       "the rows of a grid layout (name without regard to case): rows=, lMax=, then per row: "
       "row, item, kind, caption id, cell, list, default, check, event (0|1), tab-separated",
       layout_command},
  };
}

}  // namespace zelkora::cli
