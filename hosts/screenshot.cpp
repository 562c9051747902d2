#include "screenshot.h"

#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace ostrel {
namespace {

struct Pixels {
  BITMAPINFOHEADER info = {};
  std::vector<BYTE> rows = {};
};

// Owner of what a picture is taken with.
class MemoryPicture {
 public:
  MemoryPicture(HDC screen, int width, int height)
      : context_(CreateCompatibleDC(screen)),
        bitmap_(CreateCompatibleBitmap(screen, width, height)),
        before_(SelectObject(context_, bitmap_)) {}
  ~MemoryPicture() {
    SelectObject(context_, before_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }
  MemoryPicture(const MemoryPicture&) = delete;
  MemoryPicture& operator=(const MemoryPicture&) = delete;

  HDC context() const { return context_; }
  HBITMAP bitmap() const { return bitmap_; }

 private:
  HDC context_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};

Pixels Take(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  const HDC screen = GetWindowDC(window);
  SetLayout(screen, 0);  // a mirrored window would give a mirrored picture
  Pixels pixels;
  {
    const MemoryPicture picture(screen, width, height);
    const BOOL copied = BitBlt(picture.context(), 0, 0, width, height, screen, 0, 0, SRCCOPY);
    pixels.info = {.biSize = sizeof(BITMAPINFOHEADER),
                   .biWidth = width,
                   .biHeight = height,
                   .biPlanes = 1,
                   .biBitCount = 24,
                   .biCompression = BI_RGB,
                   .biSizeImage = 0,
                   .biXPelsPerMeter = 0,
                   .biYPelsPerMeter = 0,
                   .biClrUsed = 0,
                   .biClrImportant = 0};
    const std::size_t pitch = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
    pixels.rows.resize(pitch * static_cast<std::size_t>(height));
    BITMAPINFO info = {};
    info.bmiHeader = pixels.info;
    const int lines = GetDIBits(screen, picture.bitmap(), 0, static_cast<UINT>(height),
                                pixels.rows.data(), &info, DIB_RGB_COLORS);
    if (copied == FALSE || lines != height) {
      pixels.rows.clear();
    }
  }
  ReleaseDC(window, screen);
  return pixels;
}

}  // namespace

void SaveScreenshot(HWND window, const std::wstring& path) {
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
  const Pixels pixels = Take(window);
  if (pixels.rows.empty()) {
    throw std::runtime_error("the window's picture can't be read");
  }
  BITMAPFILEHEADER header = {};
  header.bfType = 0x4D42;  // "BM"
  header.bfOffBits = sizeof(header) + sizeof(pixels.info);
  header.bfSize = header.bfOffBits + static_cast<DWORD>(pixels.rows.size());
  std::FILE* const file = _wfopen(path.c_str(), L"wb");
  if (file == nullptr) {
    throw std::runtime_error("the picture's file can't be made");
  }
  const bool written = std::fwrite(&header, sizeof(header), 1, file) == 1 &&
                       std::fwrite(&pixels.info, sizeof(pixels.info), 1, file) == 1 &&
                       std::fwrite(pixels.rows.data(), pixels.rows.size(), 1, file) == 1;
  if (std::fclose(file) != 0 || !written) {
    throw std::runtime_error("the picture's file can't be written");
  }
}

}  // namespace ostrel
