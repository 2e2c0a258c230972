// What every calculation form does with its controls.
#include "zelkora/controls/form_controls.h"

#include <algorithm>

namespace zelkora::controls {

namespace {

bool same_item(TextView a, TextView b) { return equal_text(trim(a), trim(b), Compare::Text); }

// The list's items replaced by `items`; false when there are none.
bool fill(platform::ItemList& list, const std::vector<Text>& items) {
  list.Clear();
  for (const Text& item : items) list.AddItem(item);
  return !items.empty();
}

bool fill_combo(platform::ComboBox& box, const std::vector<Text>& items) {
  const Text before = box.Text();
  const bool filled = fill(box, items);
  if (!filled) return false;
  if (!bCboB_SelectText(box, before) && box.Style() == platform::ComboBox::kDropdownList) {
    box.Text(box.List(0));
  }
  return true;
}

// The texts of item `item`: its own (column 0) and its sub-items.
std::vector<Text> row_texts(const platform::ListView& view, int32_t item) {
  std::vector<Text> texts{view.ItemText(item)};
  for (int32_t sub = 1; sub < view.ColumnHeadersCount(); ++sub) {
    texts.push_back(view.SubItem(item, sub));
  }
  return texts;
}

void put_row(platform::ListView& view, int32_t item, const std::vector<Text>& texts) {
  view.ItemText(item, texts[0]);
  for (std::size_t sub = 1; sub < texts.size(); ++sub) {
    view.SubItem(item, static_cast<int32_t>(sub), texts[sub]);
  }
}

}  // namespace

std::vector<Text> tListItems(TextView tList) {
  if (tList.empty()) return {};
  return split_text(tList, u"|");
}

int32_t lItemList_FindText(const platform::ItemList& list, TextView text) {
  const int32_t count = list.ListCount();
  for (int32_t i = 0; i < count; ++i) {
    if (same_item(list.List(i), text)) return i;
  }
  return -1;
}

bool bCboB_FillFromList(platform::ComboBox& CboB, const clsCharacter& chr, int32_t lList) {
  return fill_combo(CboB, chr.ComboBoxList(lList));
}

bool bCboB_FillFromText(platform::ComboBox& CboB, TextView tList) {
  return fill_combo(CboB, tListItems(tList));
}

bool bLstB_FillFromList(platform::ListBox& lstB, const clsCharacter& chr, int32_t lList) {
  return fill(lstB, chr.ComboBoxList(lList));
}

bool bLstB_FillFromText(platform::ListBox& lstB, TextView tList) {
  return fill(lstB, tListItems(tList));
}

bool bCboB_SelectText(platform::ComboBox& CboB, TextView text) {
  const int32_t index = lItemList_FindText(CboB, text);
  if (index < 0) return false;
  CboB.Text(CboB.List(index));
  return true;
}

bool bLstB_SelectText(platform::ListBox& lstB, TextView text) {
  const int32_t index = lItemList_FindText(lstB, text);
  if (index < 0) return false;
  for (int32_t i = 0; i < lstB.ListCount(); ++i) lstB.Selected(i, i == index);
  return true;
}

void ChkB_EnableControls(const platform::CheckBox& ChkB,
                         const std::vector<platform::Control*>& controls, bool bInverse) {
  const bool enabled = (ChkB.Value() == 1) != bInverse;
  for (platform::Control* control : controls) {
    if (control) control->Enabled(enabled);
  }
}

bool bLstView_MoveRow(platform::ListView& lstView, int32_t lItem, int32_t lStep) {
  const int64_t count = lstView.ListItemsCount();
  const int64_t target = static_cast<int64_t>(lItem) + lStep;
  if (lItem < 1 || lItem > count || lStep == 0 || target < 1 || target > count) return false;
  const auto to = static_cast<int32_t>(target);
  const int32_t selected = lstView.SelectedItem();
  const std::vector<Text> moved = row_texts(lstView, lItem);
  const int32_t by = lStep > 0 ? 1 : -1;
  for (int32_t item = lItem; item != to; item += by) {
    put_row(lstView, item, row_texts(lstView, item + by));
  }
  put_row(lstView, to, moved);
  if (selected == lItem) {
    lstView.SelectedItem(to);
  } else if (selected != 0 && std::min(lItem, to) <= selected && selected <= std::max(lItem, to)) {
    lstView.SelectedItem(selected - by);
  }
  return true;
}

}  // namespace zelkora::controls
