#include "support/surface_picture.h"

#include <cstdint>
#include <fstream>

namespace ostrel::test {
namespace {

void AppendNumber(std::string& bytes, std::uint32_t number, int count) {
  for (int i = 0; i < count; ++i) {
    bytes += static_cast<char>(number >> (8 * i) & 0xFF);
  }
}

}  // namespace

// BITMAPFILEHEADER and BITMAPINFOHEADER (wingdi.h), then the rows, the last one first.
std::string PictureFile(const headless::Surface& surface) {
  constexpr std::uint32_t kFileHeaderBytes = 14;
  constexpr std::uint32_t kInfoHeaderBytes = 40;
  constexpr std::uint32_t kHeaderBytes = kFileHeaderBytes + kInfoHeaderBytes;
  const auto rowBytes = static_cast<std::uint32_t>(surface.strideBytes());
  const std::uint32_t imageBytes = rowBytes * static_cast<std::uint32_t>(surface.height());
  std::string bytes = "BM";
  AppendNumber(bytes, kHeaderBytes + imageBytes, 4);
  AppendNumber(bytes, 0, 4);
  AppendNumber(bytes, kHeaderBytes, 4);
  AppendNumber(bytes, kInfoHeaderBytes, 4);
  AppendNumber(bytes, static_cast<std::uint32_t>(surface.width()), 4);
  AppendNumber(bytes, static_cast<std::uint32_t>(surface.height()), 4);
  AppendNumber(bytes, 1, 2);
  AppendNumber(bytes, 24, 2);
  AppendNumber(bytes, 0, 4);
  AppendNumber(bytes, imageBytes, 4);
  bytes.resize(kHeaderBytes);
  for (std::int32_t y = surface.height() - 1; y >= 0; --y) {
    bytes.append(reinterpret_cast<const char*>(surface.Row(y)), rowBytes);
  }
  return bytes;
}

bool SavePicture(const headless::Surface& surface, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  file << PictureFile(surface);
  file.close();
  return file.good();
}

}  // namespace ostrel::test
