// The form-control helpers on the in-memory controls.
#include "zelkora/controls/form_controls.h"

#include <gtest/gtest.h>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_controls.h"

namespace zelkora::controls {
namespace {

using platform::ComboBox;
using platform::headless::MemoryCheckBox;
using platform::headless::MemoryComboBox;
using platform::headless::MemoryListBox;
using platform::headless::MemoryListView;

TEST(FormControls, CombosAndListsFillFromListsAndSelectByText) {
  const auto p = platform::Platform::headless();
  const clsCharacter chr(p);
  const struct {
    int16_t style;
    const char16_t* before;  // the combo's text before
    int32_t list;            // catalogue list, or 0 for `text`
    const char16_t* text;
    std::vector<Text> items;
    const char16_t* after;
    bool filled;
  } cases[] = {
      {ComboBox::kDropdownList, u"", 5140, nullptr, {u"锥形", u"阶梯形"}, u"锥形", true},
      {ComboBox::kDropdownList, u" 阶梯形", 5140, nullptr, {u"锥形", u"阶梯形"}, u"阶梯形", true},
      {ComboBox::kDropdownList, u"c30", 0, u"C25|C30", {u"C25", u"C30"}, u"C30", true},
      {ComboBox::kDropdownCombo, u"C40", 0, u"C25|C30", {u"C25", u"C30"}, u"C40", true},
      {ComboBox::kDropdownList, u"C40", 0, u"", {}, u"C40", false},
      {ComboBox::kDropdownList, u"C40", 9999, nullptr, {}, u"C40", false},  // no such list
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.list);
    MemoryComboBox box;
    box.style = c.style;
    box.items = {u"old"};
    box.text = c.before;
    MemoryListBox list;
    list.items = {u"old"};
    list.selected = {true};
    const bool filled =
        c.text ? bCboB_FillFromText(box, c.text) : bCboB_FillFromList(box, chr, c.list);
    const bool list_filled =
        c.text ? bLstB_FillFromText(list, c.text) : bLstB_FillFromList(list, chr, c.list);
    EXPECT_EQ(filled, c.filled);
    EXPECT_EQ(list_filled, c.filled);
    EXPECT_EQ(box.items, c.items);
    EXPECT_EQ(box.text, c.after);
    EXPECT_EQ(list.items, c.items);
    EXPECT_FALSE(list.Selected(0) || list.Selected(1));
  }
}

TEST(FormControls, SelectTextIgnoresCaseAndBlanksAndKeepsAMiss) {
  const struct {
    const char16_t* text;
    bool found;
    const char16_t* combo;  // the combo's text after
    int32_t selected;       // the list box's selected item after
  } cases[] = {
      {u"hrb400", true, u"HRB400", 1},
      {u" hrb500 ", true, u"HRB500", 2},
      {u"HRB335", false, u"C30", 0},
      {u"", false, u"C30", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.text));
    MemoryComboBox box;
    box.items = {u"HPB300", u"HRB400", u"HRB500"};
    box.text = u"C30";
    MemoryListBox list;
    list.items = box.items;
    list.selected = {true, false, false};
    EXPECT_EQ(bCboB_SelectText(box, c.text), c.found);
    EXPECT_EQ(bLstB_SelectText(list, c.text), c.found);
    EXPECT_EQ(box.text, c.combo);
    for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(list.Selected(i), i == c.selected) << i;
  }
}

TEST(FormControls, CheckBoxEnablesItsControls) {
  const struct {
    int16_t value;
    bool inverse;
    bool enabled;
  } cases[] = {
      {1, false, true}, {0, false, false}, {2, false, false}, {1, true, false}, {0, true, true}};
  for (const auto& c : cases) {
    MemoryCheckBox check;
    check.value = c.value;
    MemoryComboBox box;
    MemoryListView view;
    box.Enabled(!c.enabled);
    view.Enabled(!c.enabled);
    ChkB_EnableControls(check, {&box, nullptr, &view}, c.inverse);
    EXPECT_EQ(box.Enabled(), c.enabled) << c.value << c.inverse;
    EXPECT_EQ(view.Enabled(), c.enabled) << c.value << c.inverse;
  }
}

TEST(FormControls, ListViewRowsMoveWithTheirSubItemsAndSelection) {
  const struct {
    int32_t item;
    int32_t step;
    int32_t selected_before;
    bool moved;
    const char* order;  // the rows' texts after
    int32_t selected_after;
  } cases[] = {
      {2, -1, 2, true, "BACD", 1}, {2, 1, 2, true, "ACBD", 3},  {1, 3, 3, true, "BCDA", 2},
      {4, -3, 1, true, "DABC", 2}, {3, -1, 4, true, "ACBD", 4}, {1, -1, 1, false, "ABCD", 1},
      {4, 1, 0, false, "ABCD", 0}, {0, 1, 0, false, "ABCD", 0}, {5, -1, 0, false, "ABCD", 0},
      {2, 0, 2, false, "ABCD", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.item << " by " << c.step);
    MemoryListView view;
    view.columns = 3;
    for (const char16_t* row : {u"A", u"B", u"C", u"D"}) {
      const int32_t item = view.ListItemsAdd(row);
      view.SubItem(item, 1, Text(row) + u"1");
      view.SubItem(item, 2, Text(row) + u"2");
    }
    view.SelectedItem(c.selected_before);
    EXPECT_EQ(bLstView_MoveRow(view, c.item, c.step), c.moved);
    Text order;
    for (int32_t i = 1; i <= view.ListItemsCount(); ++i) {
      const Text text = view.ItemText(i);
      order += text;
      EXPECT_EQ(view.SubItem(i, 1), text + u"1") << i;
      EXPECT_EQ(view.SubItem(i, 2), text + u"2") << i;
    }
    EXPECT_EQ(to_utf8(order), c.order);
    EXPECT_EQ(view.SelectedItem(), c.selected_after);
  }
}

}  // namespace
}  // namespace zelkora::controls
