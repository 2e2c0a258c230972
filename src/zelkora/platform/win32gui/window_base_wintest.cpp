#include "zelkora/platform/win32gui/window_base.h"

#include <gtest/gtest.h>

namespace zelkora::platform::win32 {
namespace {

TEST(WindowBase, ColoursAreTheSystemsOrTheirOwn) {
  init_gui();
  EXPECT_EQ(colour_ref(rgb(1, 2, 3)), RGB(1, 2, 3));
  for (const uint32_t colour :
       {kColourWindow, kColourWindowText, kColourButtonFace, kColourGrayText}) {
    EXPECT_EQ(colour_ref(colour), ::GetSysColor(static_cast<int>(colour & 0xFF))) << colour;
  }
}

TEST(WindowBase, TwipsAreTheMonitorsPixels) {
  const struct {
    int32_t twips;
    int dpi;
    int pixels;
  } cases[] = {{1440, 96, 96}, {1440, 144, 144}, {15, 96, 1}, {300, 192, 40}, {-1440, 96, -96}};
  for (const auto& c : cases) {
    EXPECT_EQ(twips_to_pixels(c.twips, c.dpi), c.pixels) << c.twips << " at " << c.dpi;
    EXPECT_EQ(twips_to_pixels(pixels_to_twips(c.pixels, c.dpi), c.dpi), c.pixels);
  }
}

class StaticText : public HwndControl<Panel> {
 public:
  StaticText() {
    adopt(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                            ::GetModuleHandleW(nullptr), nullptr));
  }
};

TEST(WindowBase, AControlIsPlacedShownAndGreyedOnItsWindow) {
  init_gui();
  StaticText control;
  ASSERT_NE(control.hwnd(), nullptr);
  EXPECT_TRUE(control.Move(1440, 720, 2880, 1440));
  RECT r{};
  ::GetWindowRect(control.hwnd(), &r);
  EXPECT_EQ(r.right - r.left, twips_to_pixels(2880, dpi_of(control.hwnd())));
  EXPECT_FALSE(control.Move(0, 0, -1, 10));
  RECT after{};
  ::GetWindowRect(control.hwnd(), &after);
  EXPECT_TRUE(::EqualRect(&r, &after)) << "a refused placement moves nothing";

  EXPECT_FALSE(control.Visible());
  control.Visible(true);
  EXPECT_TRUE(control.Visible());
  control.Enabled(false);
  EXPECT_FALSE(control.Enabled());
  EXPECT_FALSE(::IsWindowEnabled(control.hwnd()));
}

}  // namespace
}  // namespace zelkora::platform::win32
