// The system's own controls behind the simple control interfaces: check
// box, option button, combo box, list box, list view, toolbar and the panel
// that holds a form's grid and title box. Each is made as a child of the
// window it is given and answers as the in-memory controls do
// (headless/headless_controls.h), with these rules of its own:
//
//  - a check box or option button ignores a value it cannot show;
//  - a combo box of kDropdownList shows only one of its items: a text that
//    is none of them is refused, and Clear empties it (an editable box keeps
//    its typed text);
//  - an option button chosen by the program lets the others of its group
//    go, as a click does;
//  - a toolbar button is down for any value but 0 (it reads 1).
//
// Every control shows the system's message font at its monitor's DPI (made
// again when the window is told the DPI changed) and draws in the system's
// colours, high contrast included.
//
//   win32::ComboBox grade(form, platform::ComboBox::kDropdownList);
//   grade.AddItem(u"C30");
//   grade.Text(u"C30");
//   win32::ListView bars(form);
//   bars.add_column(u"直径", 60);
#pragma once

#include <memory>
#include <string>

#include "zelkora/platform/win32gui/window_base.h"

namespace zelkora::platform::win32 {

// The library's text as the system's, and back (both UTF-16).
std::wstring to_wide(TextView text);
zelkora::Text from_wide(const wchar_t* text, std::size_t length);

// The system's message font (the one its dialogs show, with the user's
// language's characters) at `dpi`; made as a font the caller deletes.
LOGFONTW message_font(int dpi);
HFONT create_message_font(int dpi);

// Keeps a window in the message font of its DPI: sets it now, and again
// when the window is told its DPI changed (WM_DPICHANGED: the new DPI;
// WM_DPICHANGED_AFTERPARENT: its monitor's). Destroyed before the window.
class FontFollower {
 public:
  explicit FontFollower(HWND window);
  FontFollower(const FontFollower&) = delete;
  FontFollower& operator=(const FontFollower&) = delete;
  ~FontFollower();

 private:
  static LRESULT CALLBACK on_message(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  void apply(int dpi);

  HWND window_;
  HFONT font_ = nullptr;
};

// A control of the system's class `window_class`, a child of `parent`, in
// the message font.
template <class Base>
class NativeControl : public HwndControl<Base> {
 protected:
  NativeControl(HWND parent, const wchar_t* window_class, DWORD style, const wchar_t* caption = L"",
                DWORD ex_style = 0) {
    init_gui();
    this->adopt(::CreateWindowExW(ex_style, window_class, caption,
                                  WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 100, 24, parent,
                                  nullptr, ::GetModuleHandleW(nullptr), nullptr));
    font_ = std::make_unique<FontFollower>(this->hwnd());
  }
  ~NativeControl() override { font_.reset(); }

  LRESULT send(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return ::SendMessageW(this->hwnd(), message, w, l);
  }

 private:
  std::unique_ptr<FontFollower> font_;
};

// "Value" 0 unchecked, 1 checked, 2 grayed. A user's click makes a grayed
// or unchecked box checked and a checked one unchecked: only a program
// grays a box.
class CheckBox : public NativeControl<platform::CheckBox> {
 public:
  explicit CheckBox(HWND parent, TextView caption = {});
  ~CheckBox() override;
  int16_t Value() const override;
  void Value(int16_t value) override;

 private:
  static LRESULT CALLBACK on_message(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  bool setting_ = false;  // the program sets the value
};

// An option button; the first of a group is made with `first_of_group`.
class OptionButton : public NativeControl<platform::OptionButton> {
 public:
  explicit OptionButton(HWND parent, TextView caption = {}, bool first_of_group = false);
  bool Value() const override;
  void Value(bool value) override;
};

class ComboBox : public NativeControl<platform::ComboBox> {
 public:
  // `style`: kDropdownCombo or kDropdownList (made once, with the window).
  explicit ComboBox(HWND parent, int16_t style = kDropdownCombo);
  ~ComboBox() override;

  int32_t ListCount() const override;
  zelkora::Text List(int32_t index) const override;
  void AddItem(TextView item) override;
  void Clear() override;
  zelkora::Text Text() const override;
  void Text(TextView text) override;
  int16_t Style() const override;
  // The colour the form gave the box (the window colour until it gives
  // one); the box's field and list are painted in it.
  uint32_t BackColor() const override { return back_colour_; }
  void set_back_color(uint32_t colour);
  // Places the box's field (its height is the font's); the window reaches
  // down over the opened list.
  bool Move(int32_t left, int32_t top, int32_t width, int32_t height);

 private:
  static LRESULT CALLBACK on_parent_message(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  bool is_part(HWND window) const;
  HBRUSH back_brush(HDC dc);

  HWND parent_;
  uint32_t back_colour_ = kColourWindow;
  HBRUSH brush_ = nullptr;  // of a colour that is no system colour
};

// A list box whose items are selected one by one (a click toggles one).
class ListBox : public NativeControl<platform::ListBox> {
 public:
  explicit ListBox(HWND parent);
  int32_t ListCount() const override;
  zelkora::Text List(int32_t index) const override;
  void AddItem(TextView item) override;
  void Clear() override;
  bool Selected(int32_t index) const override;
  void Selected(int32_t index, bool selected) override;
};

// A list view in report form, one item selected at a time.
class ListView : public NativeControl<platform::ListView> {
 public:
  explicit ListView(HWND parent);
  // Adds a column at the right, `width` pixels at 96 DPI.
  void add_column(TextView title, int width);

  int32_t ColumnHeadersCount() const override;
  int32_t ListItemsCount() const override;
  void ListItemsClear() override;
  int32_t ListItemsAdd(TextView text) override;
  zelkora::Text ItemText(int32_t item) const override;
  zelkora::Text SubItem(int32_t item, int32_t sub) const override;
  void SubItem(int32_t item, int32_t sub, TextView text) override;
  void ItemText(int32_t item, TextView text) override;
  int32_t SelectedItem() const override;
  void SelectedItem(int32_t item) override;

 private:
  bool valid(int32_t item, int32_t sub) const;
  zelkora::Text cell(int32_t item, int32_t sub) const;
  void set_cell(int32_t item, int32_t sub, TextView text);
};

// A toolbar of text buttons that stay down when pressed.
class Toolbar : public NativeControl<platform::Toolbar> {
 public:
  explicit Toolbar(HWND parent);
  // Adds a button at the end; its command is its number (from 1).
  void add_button(TextView text);

  int32_t ButtonsCount() const override;
  int16_t ButtonValue(int32_t index) const override;
  void ButtonValue(int32_t index, int16_t value) override;

 private:
  int command_of(int32_t index) const;  // 0: no such button
};

// A container window in the button face colour; its children's commands
// and notifications (WM_COMMAND, WM_NOTIFY, WM_CTLCOLOR*) go on to its
// parent, as if the children were the parent's own.
class Panel : public HwndControl<platform::Panel> {
 public:
  explicit Panel(HWND parent);
};

}  // namespace zelkora::platform::win32
