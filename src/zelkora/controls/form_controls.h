/// What every calculation form does with its controls, on the control
/// interfaces (platform/controls.h), so on the in-memory controls, the Qt
/// adapters and any later host alike. Named as the suite names its
/// operations: the result's type first (b bool, l long; none for a
/// procedure), then the kind of control (CboB combo box, lstB list box, ChkB
/// check box, lstView list view), then the action.
/// @code{.unparsed}
///   controls::bCboB_FillFromList(cboShape, chr, 5140);   // "锥形|阶梯形"
///   controls::bCboB_SelectText(cboShape, u"阶梯形");
///   controls::ChkB_EnableControls(chkTorsion, {&cboT, &lstT});
///   controls::bLstView_MoveRow(lvwLoads, lvwLoads.SelectedItem(), -1);  // 上移
/// @endcode
/// Texts are compared as the suite's list checks compare them: trimmed and
/// without regard to case (Compare::Text). @file
#pragma once

#include <cstdint>
#include <vector>

#include "zelkora/frame/cls_character.h"
#include "zelkora/platform/controls.h"
#include "zelkora/platform/text.h"

namespace zelkora::controls {

/// The items of a list text: the parts between "|" ("锥形|阶梯形" gives two),
/// none for an empty text. Parts are kept as they stand (an empty part is an
/// empty item).
std::vector<Text> tListItems(TextView tList);

/// The index (from 0) of the first item equal to `text`, trimmed and without
/// regard to case; -1 when there is none.
int32_t lItemList_FindText(const platform::ItemList& list, TextView text);

/// Fills a combo box with value list `lList` as the grid reads it
/// (clsCharacter::ComboBoxList: catalogue text 40000 + lList split at "|";
/// lists 0, 100 and 200 from the suite's INI files). The items are replaced.
/// The box's text stays when it is one of the new items (spelt as the item);
/// otherwise a drop-down list shows its first item and a drop-down combo
/// keeps its typed text. False, with the box emptied of items, when the list
/// has none.
bool bCboB_FillFromList(platform::ComboBox& CboB, const clsCharacter& chr, int32_t lList);
/// The same from a list text the form holds ("C20|C25|C30").
bool bCboB_FillFromText(platform::ComboBox& CboB, TextView tList);

/// Fills a list box with value list `lList` (as bCboB_FillFromList) or with
/// the items of a list text; the items are replaced and none is selected.
/// False when there are no items.
bool bLstB_FillFromList(platform::ListBox& lstB, const clsCharacter& chr, int32_t lList);
bool bLstB_FillFromText(platform::ListBox& lstB, TextView tList);
/**< The same with the items of a list text. */
/// Shows the item equal to `text` (trimmed, without regard to case) in the
/// combo box, spelt as the item. False, with the text left as it was, when
/// no item matches.
bool bCboB_SelectText(platform::ComboBox& CboB, TextView text);
/// Selects the item equal to `text` in the list box and no other. False,
/// with the selection left as it was, when no item matches.
bool bLstB_SelectText(platform::ListBox& lstB, TextView text);

/// Enables `controls` while the check box is checked (Value 1) and disables
/// them while it is unchecked or grayed; with `bInverse`, the other way
/// round. Null entries are passed over.
void ChkB_EnableControls(const platform::CheckBox& ChkB,
                         const std::vector<platform::Control*>& controls, bool bInverse = false);

/// Moves list item `lItem` (from 1) by `lStep` places (-1 one up, 1 one
/// down), its text and sub-items with it, the items between shifting by one;
/// the selection stays on the item it was on. False, with nothing changed,
/// when the item does not exist, the step is 0 or the item would leave the
/// list.
bool bLstView_MoveRow(platform::ListView& lstView, int32_t lItem, int32_t lStep);

}  // namespace zelkora::controls
