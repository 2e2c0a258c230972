// The program menu grid, headless: built from the shipped menu or a menu
// file, driven by a script of clicks, keys and row entries.
#include <fstream>
#include <sstream>

#include "tools/zelkora/cli.h"
#include "zelkora/grid/cls_grid_cell_main.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/headless/headless_grid.h"
#include "zelkora/platform/headless/memory_ini_files.h"

namespace zelkora::cli {

namespace {

constexpr TextView kShippedMenu = u"ZK_PROMENU.INI";

// The script: one event a line ("click ROW", "key CODE", "enter ROW"), blank
// lines and lines starting with "#" skipped.
struct Event {
  std::string name;
  int32_t value = 0;
};

std::vector<Event> read_script(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw UsageError{"cannot read the script " + path};
  std::vector<Event> events;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::istringstream words(line);
    Event e;
    std::string value, rest;
    if (!(words >> e.name) || e.name.front() == '#') continue;
    const std::string where = path + ":" + std::to_string(number);
    if ((e.name != "click" && e.name != "key" && e.name != "enter") || !(words >> value) ||
        (words >> rest)) {
      throw UsageError{where + ": expected click ROW, key CODE or enter ROW"};
    }
    e.value = arg_int32(value, where + " value");
    events.push_back(e);
  }
  return events;
}

}  // namespace

std::shared_ptr<platform::IniFiles> shipped_menu_ini(const platform::Platform& platform) {
  constexpr std::size_t kMaxMenuBytes = std::size_t{1} << 20;
  const std::optional<std::string> shipped =
      platform::read_resource(platform.resources, to_utf8(kShippedMenu), kMaxMenuBytes);
  if (!shipped) throw Failure{"the resources hold no program menu " + to_utf8(kShippedMenu)};
  auto ini = std::make_shared<platform::headless::MemoryIniFiles>();
  ini->put(kShippedMenu, codepage::from_ansi(*shipped));
  return ini;
}

namespace {

void menu_command(Args& args, std::ostream& out) {
  const auto script = args.take_option("--script");
  if (args.size() > 1) args.expect(1);
  const std::vector<Event> events = script ? read_script(*script) : std::vector<Event>{};

  auto platform = std::make_shared<platform::Platform>(*platform::Platform::current());
  Text file;
  if (args.size() == 1) {
    file = file_arg(args[0]);
  } else {
    platform->ini = shipped_menu_ini(*platform);
    file = kShippedMenu;
  }

  platform::headless::MemoryGrid grid;
  clsGridCellMain menu(platform);
  menu.GridCell(&grid);
  menu.tProMenuIniFile(file);
  menu.GridCell_Initialize();
  for (const Event& e : events) {
    Text page, key;
    bool selected = false;
    if (e.name == "key") {
      int16_t code = static_cast<int16_t>(e.value);
      selected = menu.GridCell_KeyDown(code, 0, page, key);
    } else {
      if (e.value < 0 || e.value >= grid.Rows()) {
        throw UsageError{e.name + " " + std::to_string(e.value) + ": no such row"};
      }
      grid.ActiveCell(e.value, 2);
      if (e.name == "enter") {
        menu.GridCell_EnterRow();
      } else {
        selected = menu.GridCell_Click(page, key);
      }
    }
    if (selected) out << "selected=" << out_text(page) << "|" << out_text(key) << "\n";
  }
  out << grid.render();
}

}  // namespace

std::vector<Command> menu_commands() {
  return {
      {"menu", "[INIFILE] [--script FILE]",
       "builds the program menu grid (the shipped menu by default), runs the script (click ROW, "
       "key CODE, enter ROW; rows count from 1 as drawn before any fold changes) and prints "
       "selected=PAGE|KEY for each choice, then the grid",
       menu_command},
  };
}

}  // namespace zelkora::cli
