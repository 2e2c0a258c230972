#include "zelkora/platform/win32gui/window_shot.h"

#include <gtest/gtest.h>
#include <wincodec.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "zelkora/platform/win32gui/controls_wintest_support.h"
#include "zelkora/platform/win32gui/win32_controls.h"
#include "zelkora/platform/win32gui/win32_rich_text.h"

namespace zelkora::platform::win32 {
namespace {

uint32_t big_endian(const std::string& bytes, std::size_t at) {
  uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// The file's pixels as 0xAARRGGBB, read back through WIC.
std::vector<uint32_t> png_pixels(const std::wstring& file, UINT width, UINT height) {
  std::vector<uint32_t> pixels(std::size_t{width} * height);
  IWICImagingFactory* factory = nullptr;
  IWICBitmapDecoder* decoder = nullptr;
  IWICBitmapFrameDecode* frame = nullptr;
  if (SUCCEEDED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_IWICImagingFactory, reinterpret_cast<void**>(&factory))) &&
      SUCCEEDED(factory->CreateDecoderFromFilename(file.c_str(), nullptr, GENERIC_READ,
                                                   WICDecodeMetadataCacheOnDemand, &decoder)) &&
      SUCCEEDED(decoder->GetFrame(0, &frame))) {
    frame->CopyPixels(nullptr, width * 4, width * height * 4,
                      reinterpret_cast<BYTE*>(pixels.data()));
  }
  for (IUnknown* p : {static_cast<IUnknown*>(frame), static_cast<IUnknown*>(decoder),
                      static_cast<IUnknown*>(factory)}) {
    if (p) p->Release();
  }
  return pixels;
}

// The number of colours of the pixels the window covers in the picture of
// the top-level window `top`.
std::size_t colours_of(HWND window, HWND top, const std::vector<uint32_t>& pixels) {
  RECT frame{};
  RECT area{};
  ::GetWindowRect(top, &frame);
  ::GetWindowRect(window, &area);
  std::set<uint32_t> colours;
  const auto width = frame.right - frame.left;
  for (LONG y = area.top; y < area.bottom; ++y) {
    for (LONG x = area.left; x < area.right; ++x) {
      colours.insert(pixels[static_cast<std::size_t>((y - frame.top) * width + x - frame.left)]);
    }
  }
  return colours.size();
}

// A form with a control of each kind. With ZELKORA_KEEP_SHOT set, the
// picture stays in the temporary folder for a person to look at.
TEST(WindowShot, WritesTheWindowAsAPngOfItsSize) {
  TestWindow window;
  Panel panel(window.hwnd());
  panel.Move(0, 0, 7000, 4500);
  CheckBox check(panel.hwnd(), u"配筋 Reinforcement");
  check.Move(150, 150, 3000, 360);
  check.Value(1);
  ComboBox combo(panel.hwnd(), platform::ComboBox::kDropdownList);
  combo.Move(150, 600, 3000, 360);
  combo.AddItem(u"C30 混凝土");
  combo.Text(u"C30 混凝土");
  ListView view(panel.hwnd());
  view.Move(150, 1100, 3000, 1200);
  view.add_column(u"荷载", 80);
  view.add_column(u"值", 60);
  view.SubItem(view.ListItemsAdd(u"恒载 g"), 1, u"12.5");
  Toolbar bar(panel.hwnd());
  bar.Move(3300, 1700, 3000, 400);
  for (const char16_t* text : {u"计算", u"配筋"}) bar.add_button(text);
  bar.ButtonValue(2, 1);
  RichTextBox title(panel.hwnd());
  title.Move(150, 2500, 6000, 1200);
  title.TextRTF(u"{\\rtf1 \\b 纵筋直径 d\\b0\\par d——纵筋直径。}");
  ::UpdateWindow(window.hwnd());

  wchar_t folder[MAX_PATH] = {};
  ::GetTempPathW(MAX_PATH, folder);
  const std::wstring file = std::wstring(folder) + L"zelkora-shot.png";
  ASSERT_TRUE(write_window_png(window.hwnd(), file));

  std::ifstream in(std::filesystem::path(file), std::ios::binary);
  const std::string png((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  ASSERT_GT(png.size(), 33u);
  EXPECT_EQ(png.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8));
  EXPECT_EQ(png.substr(12, 4), "IHDR");
  RECT frame{};
  ::GetWindowRect(window.hwnd(), &frame);
  const auto width = static_cast<UINT>(frame.right - frame.left);
  const auto height = static_cast<UINT>(frame.bottom - frame.top);
  EXPECT_EQ(big_endian(png, 16), width);
  EXPECT_EQ(big_endian(png, 20), height);

  // Each control draws more than its ground: its text, its box, its lines.
  const std::vector<uint32_t> pixels = png_pixels(file, width, height);
  for (const HWND control : {check.hwnd(), combo.hwnd(), view.hwnd(), bar.hwnd(), title.hwnd()}) {
    wchar_t name[64] = {};
    ::GetClassNameW(control, name, 64);
    EXPECT_GT(colours_of(control, window.hwnd(), pixels), 2u) << u8(from_wide(name, wcslen(name)));
  }
  if (!::GetEnvironmentVariableW(L"ZELKORA_KEEP_SHOT", nullptr, 0)) ::DeleteFileW(file.c_str());
}

}  // namespace
}  // namespace zelkora::platform::win32
