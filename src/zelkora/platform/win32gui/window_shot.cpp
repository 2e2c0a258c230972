// The picture of a window as a PNG file (window_shot.h).
#include "zelkora/platform/win32gui/window_shot.h"

#include <wincodec.h>

#include <cstdint>

namespace zelkora::platform::win32 {

namespace {

// A COM interface pointer released at the end of its scope.
template <class Interface>
class Com {
 public:
  Com() = default;
  Com(const Com&) = delete;
  Com& operator=(const Com&) = delete;
  ~Com() {
    if (p_) p_->Release();
  }
  Interface* operator->() const { return p_; }
  Interface** out() { return &p_; }

 private:
  Interface* p_ = nullptr;
};

// COM for the thread, when it has none yet.
class ComScope {
 public:
  ComScope() : result_(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;
  ~ComScope() {
    if (SUCCEEDED(result_)) ::CoUninitialize();
  }

 private:
  HRESULT result_;
};

// The window drawn into a top-down 32-bit bitmap: one BGRA pixel after
// another, opaque.
class WindowPixels {
 public:
  explicit WindowPixels(HWND window) {
    RECT frame{};
    if (!::GetWindowRect(window, &frame)) return;
    width_ = frame.right - frame.left;
    height_ = frame.bottom - frame.top;
    if (width_ <= 0 || height_ <= 0) return;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    dc_ = ::CreateCompatibleDC(nullptr);
    bitmap_ = ::CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
    if (!bitmap_) return;
    old_ = ::SelectObject(dc_, bitmap_);
    print_tree(window, frame, {0, 0, width_, height_});
    ::GdiFlush();
    auto* pixel = static_cast<uint32_t*>(bits_);
    for (int i = 0; i < width_ * height_; ++i) pixel[i] |= 0xFF000000u;  // GDI leaves alpha 0
  }
  WindowPixels(const WindowPixels&) = delete;
  WindowPixels& operator=(const WindowPixels&) = delete;
  ~WindowPixels() {
    if (old_) ::SelectObject(dc_, old_);
    if (bitmap_) ::DeleteObject(bitmap_);
    if (dc_) ::DeleteDC(dc_);
  }

  bool drawn() const { return bits_ != nullptr; }
  UINT width() const { return static_cast<UINT>(width_); }
  UINT height() const { return static_cast<UINT>(height_); }
  UINT stride() const { return width() * 4; }
  BYTE* bits() const { return static_cast<BYTE*>(bits_); }

 private:
  // The window and its shown children, each drawn by itself in the part of
  // `clip` (the picture's pixels) it covers: its frame, its ground and its
  // client area, then its children from the bottom of the z-order up. (Not
  // every system draws the children for WM_PRINT's PRF_CHILDREN.)
  void print_tree(HWND window, const RECT& top, RECT clip) {
    RECT frame{};
    RECT client{};
    ::GetWindowRect(window, &frame);
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    ::OffsetRect(&frame, -top.left, -top.top);
    ::OffsetRect(&client, -top.left, -top.top);
    if (!::IntersectRect(&clip, &clip, &frame)) return;
    draw_part(clip, frame, [&](HDC dc) {
      ::SendMessageW(window, WM_PRINT, reinterpret_cast<WPARAM>(dc), PRF_NONCLIENT);
    });
    if (!::IntersectRect(&clip, &clip, &client)) return;
    draw_part(clip, client, [&](HDC dc) {
      ::SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
      ::SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    });
    for (HWND child = ::GetWindow(::GetWindow(window, GW_CHILD), GW_HWNDLAST); child;
         child = ::GetWindow(child, GW_HWNDPREV)) {
      if (::IsWindowVisible(child)) print_tree(child, top, clip);
    }
  }

  // Has `draw` draw the part of the picture at `part` on a bitmap of its
  // own, with its origin at the part's corner (a control may take its
  // device's origin for its own), and copies the `clip` of it back.
  template <class Draw>
  void draw_part(const RECT& clip, const RECT& part, Draw draw) {
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    HDC dc = ::CreateCompatibleDC(dc_);
    HBITMAP bitmap = ::CreateCompatibleBitmap(dc_, width, height);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    ::BitBlt(dc, 0, 0, width, height, dc_, part.left, part.top, SRCCOPY);
    draw(dc);
    ::BitBlt(dc_, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top, dc,
             clip.left - part.left, clip.top - part.top, SRCCOPY);
    ::SelectObject(dc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
  }

  int width_ = 0;
  int height_ = 0;
  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_ = nullptr;
  void* bits_ = nullptr;
};

bool write_png(const WindowPixels& pixels, const std::wstring& file) {
  Com<IWICImagingFactory> factory;
  Com<IWICStream> stream;
  Com<IWICBitmapEncoder> encoder;
  Com<IWICBitmapFrameEncode> frame;
  WICPixelFormatGUID format = GUID_WICPixelFormat32bppBGRA;
  return SUCCEEDED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IWICImagingFactory,
                                      reinterpret_cast<void**>(factory.out()))) &&
         SUCCEEDED(factory->CreateStream(stream.out())) &&
         SUCCEEDED(stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE)) &&
         SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.out())) &&
         SUCCEEDED(encoder->Initialize(stream.operator->(), WICBitmapEncoderNoCache)) &&
         SUCCEEDED(encoder->CreateNewFrame(frame.out(), nullptr)) &&
         SUCCEEDED(frame->Initialize(nullptr)) &&
         SUCCEEDED(frame->SetSize(pixels.width(), pixels.height())) &&
         SUCCEEDED(frame->SetPixelFormat(&format)) &&
         IsEqualGUID(format, GUID_WICPixelFormat32bppBGRA) &&
         SUCCEEDED(frame->WritePixels(pixels.height(), pixels.stride(),
                                      pixels.stride() * pixels.height(), pixels.bits())) &&
         SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

}  // namespace

bool write_window_png(HWND window, const std::wstring& file) {
  const WindowPixels pixels(window);
  if (!pixels.drawn()) return false;
  const ComScope com;
  return write_png(pixels, file);
}

}  // namespace zelkora::platform::win32
