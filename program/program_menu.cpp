// The program menu of a desktop host.
#include "program/program_menu.h"

#include <algorithm>

#include "program/programs.h"
#include "zelkora/frame/catalogue_ids.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/grid/grid_appearance.h"
#include "zelkora/platform/codepage.h"
#include "zelkora/platform/headless/memory_ini_files.h"
#include "zelkora/platform/resources.h"

namespace zelkora::desk {

namespace {

// The program menu in memory, every other INI file the system's.
class MenuIniFiles : public platform::IniFiles {
 public:
  MenuIniFiles(std::shared_ptr<platform::IniFiles> system, Text menu) : system_(std::move(system)) {
    menu_.put(kMenuFile, menu);
  }
  Text read(TextView section, TextView key, TextView default_value, TextView file) const override {
    if (equal_text(file, kMenuFile, Compare::Text)) {
      return menu_.read(section, key, default_value, kMenuFile);
    }
    return system_ ? system_->read(section, key, default_value, file) : Text(default_value);
  }
  bool write(TextView section, TextView key, std::optional<TextView> value,
             TextView file) override {
    return system_ && !equal_text(file, kMenuFile, Compare::Text) &&
           system_->write(section, key, value, file);
  }

 private:
  std::shared_ptr<platform::IniFiles> system_;
  platform::headless::MemoryIniFiles menu_;
};

constexpr std::size_t kMaxMenuBytes = std::size_t{1} << 20;

}  // namespace

void add_program_menu(platform::Platform& platform) {
  const std::optional<std::string> menu =
      platform::read_resource(platform.resources, to_utf8(kMenuFile), kMaxMenuBytes);
  platform.ini =
      std::make_shared<MenuIniFiles>(platform.ini, codepage::from_ansi(menu.value_or("")));
}

namespace {

constexpr TextView kViewSection = u"View";
constexpr TextView kMenuKey = u"Menu";
// Group captions are joined by "|", which the menu file uses between a
// group and its programs and so is in no caption.
constexpr TextView kGroupSeparator = u"|";

// The menu's rows that the grid has (row 0 is the header), with their lines.
template <class Each>
void for_each_menu_row(const clsGridCellMain& menu, const platform::GridControl& grid, Each each) {
  const std::vector<clsGridCellMain::MenuLine>& lines = menu.menu_lines();
  for (std::size_t row = 1; row < lines.size() && row < static_cast<std::size_t>(grid.Rows());
       ++row) {
    each(static_cast<int32_t>(row), lines[row]);
  }
}

bool unfolded_group(const platform::GridControl& grid, int32_t row,
                    const clsGridCellMain::MenuLine& line) {
  return line.kind == clsGridCellMain::kGroupLine &&
         grid.ImageKey(row, grid::kPictureCol) == grid::kExpandedKey;
}

}  // namespace

int32_t menu_row_of(const platform::GridControl& grid, TextView caption) {
  for (int32_t row = 1; row < grid.Rows(); ++row) {
    if (trim(grid.Text(row, grid::kCaptionCol)) == trim(caption)) return row;
  }
  return 0;
}

std::vector<std::pair<int32_t, Text>> dim_programs_without_form(const clsGridCellMain& menu,
                                                                platform::GridControl& grid) {
  std::vector<std::pair<int32_t, Text>> dimmed;
  for_each_menu_row(menu, grid, [&](int32_t row, const clsGridCellMain::MenuLine& line) {
    if (!line.selectable || program_of(line.key)) return;
    grid.ForeColor(row, grid::kCaptionCol, platform::kColourGrayText);
    dimmed.emplace_back(row, u"“" + Text(line.key) + u"”的计算表单不在本程序中。");
  });
  return dimmed;
}

std::vector<Text> unfolded_groups(const clsGridCellMain& menu, const platform::GridControl& grid) {
  std::vector<Text> groups;
  for_each_menu_row(menu, grid, [&](int32_t row, const clsGridCellMain::MenuLine& line) {
    if (unfolded_group(grid, row, line)) groups.emplace_back(trim(line.caption));
  });
  return groups;
}

void keep_folding(const std::shared_ptr<const platform::Platform>& platform,
                  const std::vector<Text>& groups) {
  if (!platform->settings) return;
  Text joined;
  for (const Text& group : groups) {
    if (!joined.empty()) joined += kGroupSeparator;
    joined += group;
  }
  const clsCharacter chr(platform);
  platform->settings->set(chr.tString(text_id::kApplication), kViewSection, kMenuKey, joined);
}

void restore_folding(const std::shared_ptr<const platform::Platform>& platform,
                     clsGridCellMain& menu, platform::GridControl& grid) {
  if (!platform->settings) return;
  const clsCharacter chr(platform);
  const std::optional<Text> saved =
      platform->settings->get(chr.tString(text_id::kApplication), kViewSection, kMenuKey);
  if (!saved) return;
  const std::vector<Text> open = split_text(*saved, kGroupSeparator);
  // A group is unfolded as a click unfolds it; the active cell is put back.
  const platform::CellRef active = grid.ActiveCell();
  for_each_menu_row(menu, grid, [&](int32_t row, const clsGridCellMain::MenuLine& line) {
    if (line.kind != clsGridCellMain::kGroupLine || unfolded_group(grid, row, line) ||
        std::find(open.begin(), open.end(), Text(trim(line.caption))) == open.end()) {
      return;
    }
    grid.ActiveCell(row, grid::kCaptionCol);
    Text page, key;
    menu.GridCell_Click(page, key);
  });
  grid.ActiveCell(active.row, active.col);
}

}  // namespace zelkora::desk
