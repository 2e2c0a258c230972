// A user's own default values of a form ("我的默认值"), beside the layout's:
// the values a user saved from a form, put back into it when it opens (and
// on request), kept in the suite's INI file "ZK_Form.INI" (code page 936),
// one section per layout, the key an item's number (0..lMax, as the data
// files number the items), the value the item's text:
//
//   [clsBeamSteel]
//   10=300
//   12=HRB500
//   15=3, 20
//
// The file is where the suite keeps its per-user files, beside the history
// "ZK_History.INI" (platform::SuiteServices::user_file).
//
// Reading takes entry by entry what the grid would take from the user:
// only the keys 0..lMax of the layout's own section (the section is named
// by the layout, without regard to case; other sections, other keys and
// repeated ones are never read); an entry is passed over, its item keeping
// the layout's default, when its bytes are not code page 936 (read as
// U+FFFD), it is as long as the INI read buffer allows (511 bytes, so it may
// be cut), its row's check expression (with the row's list, as a typed
// value is checked) refuses it, or a group's value has more parts than
// members. A group whose members have entries takes them (the group joins
// them); its own entry counts only when none of its members has one.
//
//   std::vector<grid::ItemValue> mine = grid::load_user_defaults(cell, u"clsBeamSteel");
//   grid::write_values(cell, mine);                  // checked, marked, one undo step
//   grid::save_user_defaults(cell, u"clsBeamSteel");  // the values as they are now
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/grid/cls_grid_cell.h"
#include "zelkora/grid/value_history.h"

namespace zelkora::grid {

// The suite's file of the users' defaults.
inline constexpr TextView kUserDefaultsFileName = u"ZK_Form.INI";
// The longest value kept, in bytes of code page 936: one less than the INI
// read buffer keeps, so that a value that fills the buffer is known as cut.
inline constexpr std::size_t kLongestUserDefault = 510;

// Why an entry is not taken.
enum class EntryFault {
  kNone,
  kNoSuchItem,  // no item of that number in the grid
  kBadBytes,    // bytes that are not code page 936 (U+FFFD), or a control character
  kOverlong,    // longer than kLongestUserDefault: cut by the read
  kRefused,     // the row's check, or the group rule, refuses it
};

// The full path of ZK_Form.INI in the suite of `platform`; empty when the
// suite keeps no per-user files.
Text user_defaults_file(const platform::Platform& platform);

// The entries of `layout`'s section for the keys "0".."max_item" that are
// present (an empty value is an entry), in item order, as they are written.
std::vector<ItemValue> read_user_default_entries(const platform::IniFiles& ini, TextView file,
                                                 TextView layout, int32_t max_item);

// Whether the built grid `cell` takes `entry` as a user's default; nothing
// is shown and the grid is not changed.
EntryFault entry_fault(clsGridCell& cell, const ItemValue& entry);

// The entries `cell` takes, in order (a group's own entry only when none of
// its members has one taken).
std::vector<ItemValue> accepted_user_defaults(clsGridCell& cell,
                                              const std::vector<ItemValue>& entries);

// The user's defaults of `layout` that the built grid takes, read from the
// suite's ZK_Form.INI of the grid's platform; none without the file.
std::vector<ItemValue> load_user_defaults(clsGridCell& cell, TextView layout);

struct SavedUserDefaults {
  bool written = false;           // the file was written (or nothing had to be)
  std::vector<int32_t> left_out;  // items whose values could not be kept
};
// Saves the grid's current values as the user's defaults of `layout`: every
// item 0..lMax, trimmed (the read trims). A value that would not read back
// as it is (a line break or control character, a character without a form
// in code page 936, quotes around it, longer than kLongestUserDefault) is
// left out and its key removed, so the layout's default applies to it.
// Not written when there is no such file or a write fails (keys written
// before the failure stay).
SavedUserDefaults save_user_defaults(clsGridCell& cell, TextView layout);

}  // namespace zelkora::grid
