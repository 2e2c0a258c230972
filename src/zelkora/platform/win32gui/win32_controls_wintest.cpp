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
  std::string out = "count ";
  out += std::to_string(list.ListCount());
  for (int32_t i = -1; i <= list.ListCount(); ++i) out.append(" [").append(u8(list.List(i))) += ']';
  return out;
}

std::string answers_of(const platform::ComboBox& box) {
  std::string out = answers_of(static_cast<const platform::ItemList&>(box));
  out.append(" text ").append(u8(box.Text()));
  return out;
}

std::string answers_of(const platform::ListBox& box) {
  std::string out = answers_of(static_cast<const platform::ItemList&>(box));
  out += " selected";
  for (int32_t i = -1; i <= box.ListCount(); ++i) out += box.Selected(i) ? " 1" : " 0";
  return out;
}

std::string answers_of(const platform::ListView& view) {
  std::string out = "columns ";
  out.append(std::to_string(view.ColumnHeadersCount())).append(" selected ");
  out += std::to_string(view.SelectedItem());
  for (int32_t item = -1; item <= view.ListItemsCount() + 1; ++item) {
    out.append(" |").append(u8(view.ItemText(item)));
    for (int32_t sub = -1; sub <= view.ColumnHeadersCount(); ++sub) {
      out.append(",").append(u8(view.SubItem(item, sub)));
    }
  }
  return out;
}

std::string answers_of(const platform::Toolbar& bar) {
  std::string out = "buttons ";
  out += std::to_string(bar.ButtonsCount());
  for (int32_t i = -1; i <= bar.ButtonsCount() + 1; ++i) {
    out.append(" ").append(std::to_string(bar.ButtonValue(i)));
  }
  return out;
}

std::string answers_of(const platform::CheckBox& box) { return std::to_string(box.Value()); }

// Each case's calls on the in-memory control and on the native one leave
// the same answers.
template <class Interface, class Memory, class Native>
void expect_same_answers(
    const std::vector<std::pair<const char*, std::function<void(Interface&)>>>& cases,
    const std::function<void(Memory&)>& make_memory, const std::function<void(Native&)>& make) {
  TestWindow window;
  for (const auto& [what, calls] : cases) {
    Memory memory;
    Native native(window.hwnd());
    make_memory(memory);
    make(native);
    calls(memory);
    calls(native);
    EXPECT_EQ(answers_of(native), answers_of(memory)) << what;
  }
}

TEST(NativeControls, ListsAnswerAsTheInMemoryOnes) {
  using Box = platform::ListBox;
  expect_same_answers<Box, MemoryListBox, ListBox>(
      {
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
      },
      [](MemoryListBox&) {}, [](ListBox&) {});

  using Combo = platform::ComboBox;
  expect_same_answers<Combo, MemoryComboBox, ComboBox>(
      {
          {"typed text kept through AddItem and Clear",
           [](Combo& b) {
             b.Text(u"C32 自定义");
             b.AddItem(u"C30");
             b.AddItem(u"c30");
             b.AddItem(u"C35");
           }},
          {"an item taken",
           [](Combo& b) {
             b.AddItem(u"HRB400");
             b.Text(u"HRB400");
             b.Clear();
           }},
      },
      [](MemoryComboBox&) {}, [](ComboBox&) {});
}

TEST(NativeControls, ViewsAndToolbarsAnswerAsTheInMemoryOnes) {
  using View = platform::ListView;
  const auto fill = [](View& v) {
    v.ListItemsAdd(u"荷载");
    v.ListItemsAdd(u"");
    for (int32_t item = -1; item <= 3; ++item) {
      for (int32_t sub = -1; sub <= 3; ++sub) {
        v.SubItem(item, sub, from_utf8(std::to_string(item) + "." + std::to_string(sub)));
      }
    }
  };
  const std::vector<std::pair<const char*, std::function<void(View&)>>> views{
      {"sub-items of the columns only", fill},
      {"an item's own text, a selection",
       [&](View& v) {
         fill(v);
         v.ItemText(2, u"恒载");
         v.ItemText(3, u"none");
         v.SelectedItem(2);
       }},
      {"a selection of no item selects none",
       [&](View& v) {
         fill(v);
         v.SelectedItem(1);
         v.SelectedItem(3);
       }},
      {"cleared, selection gone",
       [&](View& v) {
         fill(v);
         v.SelectedItem(1);
         v.ListItemsClear();
         v.ListItemsAdd(u"new");
       }},
  };
  expect_same_answers<View, MemoryListView, ListView>(
      views, [](MemoryListView& m) { m.columns = 3; },
      [](ListView& v) {
        for (const char16_t* title : {u"名称", u"值", u"单位"}) v.add_column(title, 60);
      });
  expect_same_answers<View, MemoryListView, ListView>(
      views, [](MemoryListView& m) { m.columns = 1; },
      [](ListView& v) { v.add_column(u"名称", 60); });

  using Bar = platform::Toolbar;
  expect_same_answers<Bar, MemoryToolbar, Toolbar>(
      {{"buttons outside the range ignored",
        [](Bar& b) {
          for (const int32_t index : {0, 1, 3, 4}) b.ButtonValue(index, 1);
          b.ButtonValue(1, 0);
        }}},
      [](MemoryToolbar& m) {
        m.values = {0, 0, 0};
      },
      [](Toolbar& t) {
        for (const char16_t* text : {u"A", u"配筋", u"C"}) t.add_button(text);
      });

  using Check = platform::CheckBox;
  expect_same_answers<Check, MemoryCheckBox, CheckBox>(
      {{"grayed", [](Check& c) { c.Value(2); }},
       {"checked after grayed",
        [](Check& c) {
          c.Value(2);
          c.Value(1);
        }},
       {"unchecked",
        [](Check& c) {
          c.Value(1);
          c.Value(0);
        }}},
      [](MemoryCheckBox&) {}, [](CheckBox&) {});
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

TEST(NativeControls, ChoosingAnOptionLetsTheOthersOfItsGroupGo) {
  TestWindow window;
  OptionButton first(window.hwnd(), u"矩形", true);
  OptionButton second(window.hwnd(), u"T 形");
  OptionButton other_group(window.hwnd(), u"其他", true);
  other_group.Value(true);
  first.Value(true);
  second.Value(true);
  EXPECT_FALSE(first.Value());
  EXPECT_TRUE(second.Value());
  EXPECT_TRUE(other_group.Value());
  second.Value(false);
  EXPECT_FALSE(second.Value() || first.Value());

  CheckBox check(window.hwnd());
  check.Value(1);
  check.Value(3);  // not a value of a check box
  EXPECT_EQ(check.Value(), 1);
}

TEST(NativeControls, AClickNeverGraysACheckBox) {
  TestWindow window;
  CheckBox check(window.hwnd(), u"人防");
  check.Value(2);
  std::vector<int16_t> after_clicks;
  for (int i = 0; i < 3; ++i) {
    ::SendMessageW(check.hwnd(), BM_CLICK, 0, 0);
    after_clicks.push_back(check.Value());
  }
  EXPECT_EQ(after_clicks, (std::vector<int16_t>{1, 0, 1}));
}

// The brush and colours the box's parent answers for the box's field.
COLORREF field_colour(const ComboBox& box, HWND parent) {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ::GetComboBoxInfo(box.hwnd(), &info);
  HDC dc = ::GetDC(box.hwnd());
  const auto brush =
      reinterpret_cast<HBRUSH>(::SendMessageW(parent, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                                              reinterpret_cast<LPARAM>(info.hwndItem)));
  LOGBRUSH drawn{};
  ::GetObjectW(brush, sizeof drawn, &drawn);
  EXPECT_EQ(::GetBkColor(dc), drawn.lbColor);
  ::ReleaseDC(box.hwnd(), dc);
  return drawn.lbColor;
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
  for (const uint32_t colour : {rgb(255, 255, 0), kColourButtonFace, kColourWindow}) {
    box.set_back_color(colour);
    EXPECT_EQ(box.BackColor(), colour);
    EXPECT_EQ(field_colour(box, panel.hwnd()), colour_ref(colour)) << colour;
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
  EXPECT_EQ(check.Value(), 1);
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
