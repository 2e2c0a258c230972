#include "zelkora/platform/win32gui/win32_controls.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "zelkora/platform/headless/headless_controls.h"
#include "zelkora/platform/win32gui/controls_wintest_support.h"

namespace zelkora::platform::win32 {
namespace {

using namespace headless;

// Everything a control answers, over indexes from one before its range to
// one after.
std::string answers_of(const platform::ItemList& list) {
  std::string out = std::to_string(list.ListCount());
  for (int32_t i = -1; i <= list.ListCount(); ++i) out.append("|").append(u8(list.List(i)));
  return out;
}

std::string answers_of(const platform::ComboBox& box) {
  return answers_of(static_cast<const platform::ItemList&>(box)).append(" text ") + u8(box.Text());
}

std::string answers_of(const platform::ListBox& box) {
  std::string out = answers_of(static_cast<const platform::ItemList&>(box)).append(" selected");
  for (int32_t i = -1; i <= box.ListCount(); ++i) out += box.Selected(i) ? " 1" : " 0";
  return out;
}

std::string answers_of(const platform::ListView& view) {
  std::string out = std::to_string(view.ColumnHeadersCount());
  out.append(" columns, selected ").append(std::to_string(view.SelectedItem()));
  for (int32_t item = -1; item <= view.ListItemsCount() + 1; ++item) {
    out.append(" |").append(u8(view.ItemText(item)));
    for (int32_t sub = -1; sub <= view.ColumnHeadersCount(); ++sub) {
      out.append(",").append(u8(view.SubItem(item, sub)));
    }
  }
  return out;
}

std::string answers_of(const platform::Toolbar& bar) {
  std::string out = std::to_string(bar.ButtonsCount());
  for (int32_t i = -1; i <= bar.ButtonsCount() + 1; ++i) {
    out.append(" ").append(std::to_string(bar.ButtonValue(i)));
  }
  return out;
}

// Each case's calls on the in-memory control and on the native one, made
// by `make`, leave the same answers.
template <class Interface, class Memory, class Native>
void expect_same_answers(
    const std::vector<std::pair<const char*, std::function<void(Interface&)>>>& cases,
    const std::function<void(Memory&, Native&)>& make = [](Memory&, Native&) {}) {
  TestWindow window;
  for (const auto& [what, calls] : cases) {
    Memory memory;
    Native native(window.hwnd());
    make(memory, native);
    calls(memory);
    calls(native);
    EXPECT_EQ(answers_of(native), answers_of(memory)) << what;
  }
}

TEST(NativeControls, AnswerAsTheInMemoryOnes) {
  using Box = platform::ListBox;
  expect_same_answers<Box, MemoryListBox, ListBox>({
      {"items selected one by one, outside the range ignored",
       [](Box& b) {
         for (const char16_t* item : {u"一", u"二", u"三"}) b.AddItem(item);
         for (const int32_t index : {-1, 1, 2, 3}) b.Selected(index, true);
         b.Selected(2, false);
       }},
      {"cleared with its selection",
       [](Box& b) {
         b.AddItem(u"a");
         b.Selected(0, true);
         b.Clear();
         b.AddItem(u"b");
       }},
  });

  using Combo = platform::ComboBox;
  expect_same_answers<Combo, MemoryComboBox, ComboBox>({
      {"a typed text kept through AddItem and Clear",
       [](Combo& b) {
         b.Text(u"C32 自定义");
         for (const char16_t* item : {u"C30", u"c30"}) b.AddItem(item);
         b.Clear();
       }},
  });

  using View = platform::ListView;
  expect_same_answers<View, MemoryListView, ListView>(
      {
          {"sub-items of the columns only, an item's own text, a selection",
           [](View& v) {
             v.ListItemsAdd(u"荷载");
             v.ListItemsAdd(u"");
             for (int32_t item = -1; item <= 3; ++item) {
               for (int32_t sub = -1; sub <= 3; ++sub) {
                 v.SubItem(item, sub, from_utf8(std::to_string(item * 10 + sub)));
               }
             }
             v.ItemText(2, u"恒载");
             v.ItemText(3, u"none");
             v.SelectedItem(2);
           }},
          {"selecting item 0 selects none",
           [](View& v) {
             v.ListItemsAdd(u"a");
             v.ListItemsAdd(u"b");
             v.SelectedItem(1);
             v.SelectedItem(0);
           }},
          {"cleared, nothing selected",
           [](View& v) {
             v.ListItemsAdd(u"a");
             v.SelectedItem(1);
             v.ListItemsClear();
             v.ListItemsAdd(u"new");
           }},
      },
      [](MemoryListView& memory, ListView& native) {
        memory.columns = 3;
        for (const char16_t* title : {u"名称", u"值", u"单位"}) native.add_column(title, 60);
      });

  using Bar = platform::Toolbar;
  expect_same_answers<Bar, MemoryToolbar, Toolbar>(
      {{"buttons outside the range ignored",
        [](Bar& b) {
          for (const int32_t index : {0, 1, 3, 4}) b.ButtonValue(index, 1);
          b.ButtonValue(1, 0);
        }}},
      [](MemoryToolbar& memory, Toolbar& native) {
        memory.values = {0, 0, 0};
        for (const char16_t* text : {u"A", u"配筋", u"C"}) native.add_button(text);
      });
}

TEST(NativeControls, AListShowsOnlyItsItems) {
  TestWindow window;
  const struct {
    const char16_t* given;
    const char16_t* shown;
  } cases[] = {{u"C35", u"C35"}, {u"C40", u"C30"}, {u"c35", u"C30"}, {u"", u"C30"}};
  for (const auto& c : cases) {
    ComboBox list(window.hwnd(), platform::ComboBox::kDropdownList);
    EXPECT_EQ(list.Style(), platform::ComboBox::kDropdownList);
    list.AddItem(u"C30");
    list.AddItem(u"C35");
    EXPECT_EQ(list.Text(), u"") << "adding items chooses none";
    list.Text(u"C30");
    list.Text(c.given);
    EXPECT_EQ(list.Text(), c.shown) << u8(c.given);
    list.Clear();
    EXPECT_EQ(list.Text(), u"");
  }
}

TEST(NativeControls, OptionsAndCheckBoxesKeepTheirRules) {
  TestWindow window;
  OptionButton first(window.hwnd(), u"矩形", true);
  OptionButton second(window.hwnd(), u"T 形");
  OptionButton other_group(window.hwnd(), u"其他", true);
  other_group.Value(true);
  first.Value(true);
  second.Value(true);
  EXPECT_EQ(std::vector<bool>({first.Value(), second.Value(), other_group.Value()}),
            std::vector<bool>({false, true, true}));
  second.Value(false);
  EXPECT_FALSE(second.Value() || first.Value());

  // Only the program grays a box; a click never does.
  CheckBox check(window.hwnd(), u"人防");
  std::vector<int16_t> values;
  for (const int16_t value : {1, 3, 2}) {
    check.Value(value);
    values.push_back(check.Value());
  }
  for (int i = 0; i < 3; ++i) {
    ::SendMessageW(check.hwnd(), BM_CLICK, 0, 0);
    values.push_back(check.Value());
  }
  EXPECT_EQ(values, (std::vector<int16_t>{1, 1, 2, 1, 0, 1}));
}

TEST(NativeControls, AComboBoxIsPaintedInItsBackColour) {
  TestWindow window;
  Panel panel(window.hwnd());  // the box's parent may be the form's panel
  ComboBox box(panel.hwnd());
  EXPECT_EQ(box.BackColor(), kColourWindow);
  EXPECT_TRUE(box.Move(0, 0, 1440, 300));
  RECT opened{};
  ::SendMessageW(box.hwnd(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&opened));
  EXPECT_GT(opened.bottom - opened.top, twips_to_pixels(1500, dpi_of(box.hwnd())))
      << "room for the opened list";

  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  ::GetComboBoxInfo(box.hwnd(), &parts);
  for (const uint32_t colour : {rgb(255, 255, 0), kColourButtonFace, kColourWindow}) {
    box.set_back_color(colour);
    EXPECT_EQ(box.BackColor(), colour);
    HDC dc = ::GetDC(box.hwnd());
    LOGBRUSH brush{};
    ::GetObjectW(reinterpret_cast<HBRUSH>(::SendMessageW(panel.hwnd(), WM_CTLCOLOREDIT,
                                                         reinterpret_cast<WPARAM>(dc),
                                                         reinterpret_cast<LPARAM>(parts.hwndItem))),
                 sizeof brush, &brush);
    EXPECT_EQ(brush.lbColor, colour_ref(colour));
    EXPECT_EQ(::GetBkColor(dc), colour_ref(colour));
    ::ReleaseDC(box.hwnd(), dc);
  }
}

// The panel's parent sees the commands of the panel's children.
TEST(NativeControls, APanelHandsItsChildrensCommandsToItsParent) {
  static std::vector<UINT> seen;
  const auto record = [](HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                         DWORD_PTR) -> LRESULT {
    if (message == WM_COMMAND || message == WM_NOTIFY) seen.push_back(message);
    return ::DefSubclassProc(window, message, w, l);
  };
  TestWindow window;
  ::SetWindowSubclass(window.hwnd(), record, 1, 0);
  Panel panel(window.hwnd());
  CheckBox check(panel.hwnd(), u"抗震");
  ::SendMessageW(check.hwnd(), BM_CLICK, 0, 0);
  NMHDR note{check.hwnd(), 0, NM_CLICK};
  ::SendMessageW(panel.hwnd(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&note));
  EXPECT_EQ(seen, (std::vector<UINT>{WM_COMMAND, WM_NOTIFY}));
  ::RemoveWindowSubclass(window.hwnd(), record, 1);
  EXPECT_EQ(::GetClassLongPtrW(panel.hwnd(), GCLP_HBRBACKGROUND), COLOR_BTNFACE + 1);
}

int font_height(HWND control) {
  LOGFONTW font{};
  ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font,
               &font);
  return std::abs(font.lfHeight);
}

TEST(NativeControls, ShowTheMessageFontAtTheirDpi) {
  TestWindow window;
  CheckBox check(window.hwnd());
  ListView view(window.hwnd());
  const int at_96 = std::abs(message_font(96).lfHeight);
  ASSERT_GT(at_96, 0);
  for (const HWND control : {check.hwnd(), view.hwnd()}) {
    EXPECT_EQ(font_height(control), std::abs(message_font(dpi_of(control)).lfHeight));
    ::SendMessageW(control, WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
    EXPECT_NEAR(font_height(control), 2 * at_96, 1);
  }
}

}  // namespace
}  // namespace zelkora::platform::win32
