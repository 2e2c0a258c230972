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

TEST(WindowShot, WritesTheWindowAsAPngOfItsSize) {
  TestWindow window;
  Panel panel(window.hwnd());
  panel.Move(0, 0, 6000, 3000);
  CheckBox check(panel.hwnd(), u"配筋 Reinforcement");
  check.Move(150, 150, 3600, 360);
  RichTextBox title(panel.hwnd());
  title.Move(150, 600, 5000, 1200);
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

  // Where the check box draws its caption, more than its ground.
  POINT origin{0, 0};
  ::MapWindowPoints(check.hwnd(), nullptr, &origin, 1);
  RECT box{};
  ::GetClientRect(check.hwnd(), &box);
  const std::vector<uint32_t> pixels = png_pixels(file, width, height);
  std::set<uint32_t> colours;
  for (LONG y = 0; y < box.bottom; ++y) {
    for (LONG x = 0; x < box.right; ++x) {
      colours.insert(pixels[static_cast<std::size_t>(origin.y - frame.top + y) * width +
                            static_cast<std::size_t>(origin.x - frame.left + x)]);
    }
  }
  EXPECT_GT(colours.size(), 2u);
  ::DeleteFileW(file.c_str());
}

}  // namespace
}  // namespace zelkora::platform::win32
