// The form-control helpers on the in-memory controls.
#include "zelkora/controls/form_controls.h"

#include <gtest/gtest.h>

#include <tuple>

#include "zelkora/platform/headless/headless.h"
#include "zelkora/platform/headless/headless_controls.h"

namespace zelkora::controls {
namespace {

using platform::ComboBox;
using namespace platform::headless;

TEST(FormControls, ListsFillAndSelectByText) {
  const clsCharacter chr(platform::Platform::headless());
  const struct {
    int16_t style;
    const char16_t* before;  // the combo's text
    int32_t list;            // catalogue list, or 0 for `text`
    const char16_t* text;
    std::vector<Text> items;
    const char16_t* after;
    const char16_t* select;  // then selected by text: found or not
    bool found;
  } cases[] = {
      {ComboBox::kDropdownList,
       u"",
       5140,
       nullptr,
       {u"锥形", u"阶梯形"},
       u"锥形",
       u" 阶梯形",
       true},
      {ComboBox::kDropdownList, u"c30", 0, u"C25|C30", {u"C25", u"C30"}, u"C30", u"c25", true},
      {ComboBox::kDropdownCombo, u"C40", 0, u"C25|C30", {u"C25", u"C30"}, u"C40", u"C35", false},
      {ComboBox::kDropdownList, u"C40", 9999, nullptr, {}, u"C40", u"C40", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(to_utf8(c.before));
    MemoryComboBox box;
    box.style = c.style;
    box.items = {u"old"};
    box.text = c.before;
    MemoryListBox list;
    list.items = {u"old"};
    list.selected = {true};
    EXPECT_EQ(c.text ? bCboB_FillFromText(box, c.text) : bCboB_FillFromList(box, chr, c.list),
              !c.items.empty());
    EXPECT_EQ(c.text ? bLstB_FillFromText(list, c.text) : bLstB_FillFromList(list, chr, c.list),
              !c.items.empty());
    EXPECT_EQ(box.items, c.items);
    EXPECT_EQ(list.items, c.items);
    EXPECT_EQ(box.text, c.after);
    EXPECT_FALSE(list.Selected(0));
    const Text shown = box.text;
    EXPECT_EQ(bCboB_SelectText(box, c.select), c.found);
    EXPECT_EQ(bLstB_SelectText(list, c.select), c.found);
    const int32_t at = lItemList_FindText(list, c.select);
    EXPECT_EQ(box.text, c.found ? box.List(at) : shown);
    for (int32_t i = 0; i < list.ListCount(); ++i) EXPECT_EQ(list.Selected(i), i == at);
  }
}

TEST(FormControls, CheckBoxEnablesItsControls) {
  for (const auto& [value, inverse, enabled] :
       {std::tuple{1, false, true}, {0, false, false}, {2, false, false}, {0, true, true}}) {
    MemoryCheckBox check;
    check.value = static_cast<int16_t>(value);
    MemoryComboBox box;
    MemoryListView view;
    box.Enabled(!enabled);
    ChkB_EnableControls(check, {&box, nullptr, &view}, inverse);
    EXPECT_EQ(box.Enabled(), enabled) << value << inverse;
    EXPECT_EQ(view.Enabled(), enabled) << value << inverse;
  }
}

TEST(FormControls, ListViewRowsMoveWithTheirSubItemsAndSelection) {
  const struct {
    int32_t item, step, selected_before;
    const char* order;  // the rows after; unchanged when the move is refused
    int32_t selected_after;
  } cases[] = {
      {2, -1, 2, "BACD", 1}, {1, 3, 3, "BCDA", 2}, {4, -3, 1, "DABC", 2}, {3, -1, 4, "ACBD", 4},
      {1, -1, 1, "ABCD", 1}, {4, 1, 0, "ABCD", 0}, {0, 1, 0, "ABCD", 0},  {2, 0, 2, "ABCD", 2},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.item << " by " << c.step);
    MemoryListView view;
    view.columns = 2;
    for (const char16_t* row : {u"A", u"B", u"C", u"D"}) {
      view.SubItem(view.ListItemsAdd(row), 1, Text(row) + u"1");
    }
    view.SelectedItem(c.selected_before);
    EXPECT_EQ(bLstView_MoveRow(view, c.item, c.step), std::string(c.order) != "ABCD");
    Text order;
    for (int32_t i = 1; i <= view.ListItemsCount(); ++i) {
      order += view.ItemText(i);
      EXPECT_EQ(view.SubItem(i, 1), view.ItemText(i) + u"1") << i;
    }
    EXPECT_EQ(to_utf8(order), c.order);
    EXPECT_EQ(view.SelectedItem(), c.selected_after);
  }
}

}  // namespace
}  // namespace zelkora::controls
