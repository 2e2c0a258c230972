// The programs of the desktop program: which menu entries open a form of
// their own, the layout each form is built from, the form's rules for the
// items that do not apply, and its calculation.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "program/load_cases.h"
#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/text.h"

namespace zelkora::desk {

// An item that applies only while a switch item (a "是"/"否" row) says "是".
struct ItemRule {
  int32_t switch_item;
  std::vector<int32_t> items;
};

// A program's calculation: the report, one line of markup each, of the form's
// values by item.
// A program's calculation: the report of the form's values and its load
// cases (none on a form without a table of them).
using ReportOf = std::vector<Text> (*)(const std::vector<Text>& values, const CaseRows& cases,
                                       clsCharacter& chr);

struct Program {
  TextView menu_key;  // the program's key in the menu ("梁配筋计算")
  TextView layout;    // its form's layout ("clsBeamSteel")
  std::vector<ItemRule> rules;
  bool calculates;            // the form has a calculation (the beam, the load combinations)
  ReportOf report = nullptr;  // the calculation of a form that calculates
  // The form holds its loads in a table of load cases (program/load_cases.h).
  bool load_cases = false;
};

// The catalogue id of the layout named `name` (without regard to case) by
// the library's rule of layout names (grid/layout.h), or 0.
int32_t layout_id(TextView name, const clsCharacter& chr);

// The programs whose forms this program has.
const std::vector<Program>& programs();

// The program of a menu key, or null when its form is not part of this
// program.
const Program* program_of(TextView menu_key);

// The program whose layout is `layout` (without regard to case), or null.
const Program* program_of_layout(TextView layout);

// What a file given as a project is: missing, no data file of the suite (or
// damaged before its identifier), or the data file of the form with layout
// `layout` (which may be another program's).
struct ProjectFileKind {
  bool exists = false;
  std::optional<Text> layout;
};
ProjectFileKind project_file_kind(const std::shared_ptr<const platform::Platform>& platform,
                                  TextView file);

// Why a project file cannot be opened in the form of `program` (null: in
// none of this program's forms), as a sentence for the user.
Text why_not_opened(const ProjectFileKind& kind, TextView file, const Program* program);

// The hidden marks of a form's items (0..lMax) after its rules: an item is
// hidden while its switch says anything but "是".
void apply_rules(const Program& program, const std::vector<Text>& texts, std::vector<bool>& hidden,
                 const clsCharacter& chr);

}  // namespace zelkora::desk
