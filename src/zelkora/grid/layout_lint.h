// Checking a layout before a form is built from it: every rule the grid
// relies on, and every catalogue text the layout refers to. A layout that
// passes builds a grid whose defaults its own checks accept.
//
// The lint reads the layout as the grid does (grid/layout.h), line by line,
// so a damaged line is one problem and the others are still checked; the
// defaults are derived and checked exactly as the grid derives them and
// checks an entry (grid::default_text, grid::check_entry). It needs the
// catalogue of the program: the platform's resource sources, that is the
// compiled-in texts overridden by the folder of ZELKORA_RESOURCES, where a
// program keeps its own texts (70000-79999) and layouts.
//
//   for (const grid::LayoutProblem& p : grid::lint_layout(text, u"clsMyForm", platform))
//     std::cout << p.describe() << "\n";   // "line 12, item 5: default ..."
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "zelkora/platform/platform.h"
#include "zelkora/platform/text.h"

namespace zelkora::grid {

// The rules (docs/layouts.md explains each).
enum class LayoutRule : uint8_t {
  kLineEnd,             // a line ends in a bare LF, not CR LF
  kName,                // no catalogue text of the layout names names it as written
  kUnreadableLine,      // the grid cannot read the line or its descriptor
  kDescriptorText,      // the descriptor id has no catalogue text
  kNoRows,              // the layout has no rows
  kFirstRow,            // the first row is no heading
  kHeading,             // a heading row of another index than -1 or another kind than 10
  kHeadingTwice,        // two headings with one caption
  kKind,                // an item row of no item kind (100, 110, 1100)
  kCollapsed,           // a collapsed row that is no group, or a group that is not collapsed
  kCaption,             // the caption id has no catalogue text
  kExplanation,         // the caption has no explanation (caption id + 1)
  kCell,                // the cell type is neither 0 nor 1
  kList,                // the list is an INI list (0, 100, 200) or has no catalogue text
  kCheck,               // a part of the check expression cannot be read
  kDefaultEmpty,        // the default gives an empty text
  kDefaultRefused,      // the row's check refuses its default
  kListItemRefused,     // the row's check refuses an item of its list
  kMemberWithoutGroup,  // a group member without a group row above it
  kGroupMembers,        // a group with fewer than two members below it
  kGroupDefault,        // a group's default is not its members' defaults joined
  kItemTwice,           // an item index on two rows
  kItemRange,           // an item index beyond rows - headings - 1
  kItemGap,             // an item index 0..N-1 on no row
};

struct LayoutProblem {
  int32_t line = 0;             // the line of the layout (1-based); 0: the layout as a whole
  std::optional<int32_t> item;  // the row's item index (-1 a heading), when it was read
  LayoutRule rule = LayoutRule::kUnreadableLine;
  std::string message;  // UTF-8

  // "line 12, item 5: ...", "line 1, heading: ...", "line 7: ...", "layout: ...".
  std::string describe() const;
};

// The problems of the decoded layout `text` named `name` (the name its file
// has, without ".txt"), in the order of the lines (those of the whole layout
// first), checked against the catalogue and the value lists of `platform`.
// Never throws for anything the text holds.
std::vector<LayoutProblem> lint_layout(TextView text, TextView name,
                                       const std::shared_ptr<const platform::Platform>& platform);

// The problems of the layout `name` (without regard to case) of the
// platform's resource sources, its file's name checked as written;
// Fault(MissingResource) when there is none.
std::vector<LayoutProblem> lint_named_layout(
    TextView name, const std::shared_ptr<const platform::Platform>& platform);

}  // namespace zelkora::grid
