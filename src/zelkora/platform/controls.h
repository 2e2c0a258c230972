/// The controls of a calling form as the library sees them. A form hands its
/// controls to the library's classes; the library reaches them only through
/// these interfaces (the members a form's controls have under these names).
/// Each host implements them over its toolkit; the in-memory ones of the
/// headless platform serve tests and hosts without a user interface. @file
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "zelkora/platform/text.h"

namespace zelkora::platform {

/// Any control or object of the calling form. "Enabled": whether the user
/// can work it; a control kept in memory just keeps the flag, a host's
/// control greys out.
class Control {
 public:
  virtual ~Control() = default;
  virtual bool Enabled() const { return enabled_; }  ///< Whether the user can work the control.
  virtual void Enabled(bool enabled) { enabled_ = enabled; }  ///< Enables or disables the control.

 private:
  bool enabled_ = true;
};

/// A check box: "Value" 0 unchecked, 1 checked, 2 grayed.
class CheckBox : public Control {
 public:
  virtual int16_t Value() const = 0;      ///< The state: 0 unchecked, 1 checked, 2 grayed.
  virtual void Value(int16_t value) = 0;  ///< Sets the state (0, 1 or 2).
};

/// An option button: "Value" true when it is the chosen one of its group.
class OptionButton : public Control {
 public:
  virtual bool Value() const = 0;      ///< Whether the button is the chosen one of its group.
  virtual void Value(bool value) = 0;  ///< Chooses the button (true) or not.
};

/// The items of a list, numbered from 0.
class ItemList : public Control {
 public:
  virtual int32_t ListCount() const = 0;  ///< The number of items.
  /// Item `index`; empty text outside 0..ListCount-1.
  virtual Text List(int32_t index) const = 0;
  virtual void AddItem(TextView item) = 0;  ///< Adds an item at the end.
  virtual void Clear() = 0;                 ///< Removes every item.
};

/// A combo box. "Style" 0 is a drop-down combo (the text may be typed), 2 a
/// drop-down list (the text is one of the items).
class ComboBox : public ItemList {
 public:
  static constexpr int16_t kDropdownCombo = 0;  ///< `Style` of a drop-down combo.
  static constexpr int16_t kDropdownList = 2;   ///< `Style` of a drop-down list.
  /// (The member keeps the control's name; the type is zelkora::Text.)
  virtual zelkora::Text Text() const = 0;
  virtual void Text(TextView text) = 0;    ///< Sets the text of the edit part.
  virtual int16_t Style() const = 0;       ///< kDropdownCombo or kDropdownList.
  virtual uint32_t BackColor() const = 0;  ///< The background colour (platform::rgb).
};

/// A list box whose items can be selected one by one.
class ListBox : public ItemList {
 public:
  /// False outside 0..ListCount-1.
  virtual bool Selected(int32_t index) const = 0;
  virtual void Selected(int32_t index, bool selected) = 0;  ///< Selects or deselects item `index`.
};

/// A list view in report form: "ColumnHeaders" columns; each of "ListItems"
/// (numbered from 1) has a text and "SubItems" 1..columns-1.
class ListView : public Control {
 public:
  virtual int32_t ColumnHeadersCount() const = 0;  ///< The number of columns.
  virtual int32_t ListItemsCount() const = 0;      ///< The number of items.
  virtual void ListItemsClear() = 0;               ///< Removes every item.
  /// Adds an item at the end and returns its index (from 1).
  virtual int32_t ListItemsAdd(TextView text) = 0;
  /// Empty text for an item or sub-item that does not exist.
  virtual Text ItemText(int32_t item) const = 0;
  virtual Text SubItem(int32_t item, int32_t sub) const = 0;  ///< Sub-item `sub` of `item`.
  /// Ignored for an item or sub-item that does not exist.
  virtual void SubItem(int32_t item, int32_t sub, TextView text) = 0;
  /// An item's own text (column 0); ignored for an item that does not exist.
  virtual void ItemText(int32_t item, TextView text) = 0;
  /// The selected item (the one the user works on), 0 for none; selecting
  /// an item that does not exist selects none.
  virtual int32_t SelectedItem() const = 0;
  virtual void SelectedItem(int32_t item) = 0;  ///< Selects item `item` (0: none).
};

/// A toolbar: "Buttons" numbered from 1, each with a "Value" (0 up, 1 down).
class Toolbar : public Control {
 public:
  virtual int32_t ButtonsCount() const = 0;  ///< The number of buttons.
  /// 0 for a button that does not exist.
  virtual int16_t ButtonValue(int32_t index) const = 0;
  /// Ignored for a button that does not exist.
  virtual void ButtonValue(int32_t index, int16_t value) = 0;
};

/// A control array: elements by index, with gaps allowed. "UBound" is the
/// highest index (-1 for none), "LBound" the lowest (0 for none).
template <class T>
class ControlArray {
 public:  /// Puts `control` at `index`; a null control leaves a gap there.
  void set(int32_t index, T* control) {
    if (control) {
      elements_[index] = control;
    } else {
      elements_.erase(index);
    }
  }
  /// The element at `index`, or null in a gap.
  T* Item(int32_t index) const {
    auto it = elements_.find(index);
    return it == elements_.end() ? nullptr : it->second;
  }  /// The lowest index, 0 for none.
  int32_t LBound() const { return elements_.empty() ? 0 : elements_.begin()->first; }
  int32_t UBound() const { return elements_.empty() ? -1 : elements_.rbegin()->first; }  ///< Top.
  int32_t Count() const { return static_cast<int32_t>(elements_.size()); }  ///< Element count.

 private:
  std::map<int32_t, T*> elements_;
};

}  // namespace zelkora::platform
