/// In-memory controls: each keeps its state in public members, so that a test
/// or a headless host sets and reads it directly. @file
#pragma once

#include <algorithm>
#include <vector>

#include "zelkora/platform/controls.h"

namespace zelkora::platform::headless {
/// A check box that keeps its state in `value`.
class MemoryCheckBox : public CheckBox {
 public:
  int16_t Value() const override { return value; }
  void Value(int16_t v) override { value = v; }
  int16_t value = 0;  ///< The state: 0 unchecked, 1 checked, 2 grayed.
};
/// An option button that keeps its state in `value`.
class MemoryOptionButton : public OptionButton {
 public:
  bool Value() const override { return value; }
  void Value(bool v) override { value = v; }
  bool value = false;  ///< Whether it is the chosen one.
};

/// The item list shared by the combo box and the list box.
template <class Base>
class MemoryItems : public Base {
 public:  /// The number of items.
  int32_t ListCount() const override { return static_cast<int32_t>(items.size()); }
  /** Item `index`; empty outside the list. */ zelkora::Text List(int32_t index) const override {
    return index >= 0 && index < ListCount() ? items[static_cast<std::size_t>(index)]
                                             : zelkora::Text();
  }
  void AddItem(TextView item) override { items.emplace_back(item); }  ///< Adds an item at the end.
  void Clear() override { items.clear(); }                            ///< Removes every item.
  std::vector<zelkora::Text> items;                                   ///< The items, from 0.
};
/// A combo box whose text, style and colour are public members.
class MemoryComboBox : public MemoryItems<ComboBox> {
 public:
  zelkora::Text Text() const override { return text; }
  void Text(TextView t) override { text = t; }
  int16_t Style() const override { return style; }
  uint32_t BackColor() const override { return back_color; }
  zelkora::Text text;              ///< The text of the edit part.
  int16_t style = kDropdownCombo;  ///< kDropdownCombo or kDropdownList.
  uint32_t back_color = 0xFFFFFF;  ///< The background colour.
};
/// A list box; `selected` holds the marks of the items.
class MemoryListBox : public MemoryItems<ListBox> {
 public:
  bool Selected(int32_t index) const override {
    return index >= 0 && index < static_cast<int32_t>(selected.size()) &&
           selected[static_cast<std::size_t>(index)];
  }
  void Selected(int32_t index, bool value) override {
    if (index < 0 || index >= ListCount()) return;
    selected.resize(items.size());
    selected[static_cast<std::size_t>(index)] = value;
  }
  void Clear() override {
    items.clear();
    selected.clear();
  }
  std::vector<bool> selected;  ///< Selection marks by index (may be shorter than `items`).
};
/// A list view whose columns, items and selection are public members.
class MemoryListView : public ListView {
 public:  /// An item: its text and sub-items.
  struct Item {
    zelkora::Text text;                    ///< The item's own text (column 0).
    std::vector<zelkora::Text> sub_items;  ///< index 0 unused
  };
  int32_t ColumnHeadersCount() const override { return columns; }
  int32_t ListItemsCount() const override { return static_cast<int32_t>(items.size()); }
  void ListItemsClear() override {
    items.clear();
    selected = 0;
  }
  int32_t ListItemsAdd(TextView text) override {
    items.push_back({zelkora::Text(text),
                     std::vector<zelkora::Text>(static_cast<std::size_t>(std::max(columns, 1)))});
    return ListItemsCount();
  }
  zelkora::Text ItemText(int32_t item) const override {
    return valid(item, 0) ? items[static_cast<std::size_t>(item - 1)].text : zelkora::Text();
  }
  zelkora::Text SubItem(int32_t item, int32_t sub) const override {
    return valid(item, sub) && sub > 0
               ? items[static_cast<std::size_t>(item - 1)].sub_items[static_cast<std::size_t>(sub)]
               : zelkora::Text();
  }
  void SubItem(int32_t item, int32_t sub, TextView text) override {
    if (valid(item, sub) && sub > 0) {
      items[static_cast<std::size_t>(item - 1)].sub_items[static_cast<std::size_t>(sub)] = text;
    }
  }
  void ItemText(int32_t item, TextView text) override {
    if (valid(item, 0)) items[static_cast<std::size_t>(item - 1)].text = text;
  }
  int32_t SelectedItem() const override { return valid(selected, 0) ? selected : 0; }
  void SelectedItem(int32_t item) override { selected = valid(item, 0) ? item : 0; }
  int32_t columns = 1;      ///< The number of columns.
  std::vector<Item> items;  ///< The items; item 1 is items[0].
  int32_t selected = 0;     ///< from 1; 0 for none

 private:
  bool valid(int32_t item, int32_t sub) const {
    return item >= 1 && item <= ListItemsCount() && sub >= 0 && sub < std::max(columns, 1);
  }
};
/// A toolbar whose buttons' values are in `values`.
class MemoryToolbar : public Toolbar {
 public:
  int32_t ButtonsCount() const override { return static_cast<int32_t>(values.size()); }
  int16_t ButtonValue(int32_t index) const override {
    return index >= 1 && index <= ButtonsCount() ? values[static_cast<std::size_t>(index - 1)] : 0;
  }
  void ButtonValue(int32_t index, int16_t value) override {
    if (index >= 1 && index <= ButtonsCount()) values[static_cast<std::size_t>(index - 1)] = value;
  }
  std::vector<int16_t> values;  ///< button 1 first
};

}  // namespace zelkora::platform::headless
