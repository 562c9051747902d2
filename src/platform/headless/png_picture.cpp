#include "platform/headless/png_picture.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace ostrel::headless {
namespace {

using Bytes = std::vector<std::uint8_t>;

void AddBigEndian(Bytes& out, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    out.push_back(static_cast<std::uint8_t>(number >> shift));
  }
}

// The check sum of a chunk, PNG 1.2, appendix D.
std::uint32_t Crc32(std::span<const std::uint8_t> bytes) {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::uint32_t sum = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    sum ^= byte;
    for (int bit = 0; bit < 8; ++bit) {
      sum = (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
    }
  }
  return ~sum;
}

// The check sum of a zlib stream, RFC 1950, section 8.
std::uint32_t Adler32(std::span<const std::uint8_t> bytes) {
  constexpr std::uint32_t kBase = 65521;
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const std::uint8_t byte : bytes) {
    low = (low + byte) % kBase;
    high = (high + low) % kBase;
  }
  return high << 16 | low;
}

void AddChunk(Bytes& out, std::string_view name, std::span<const std::uint8_t> content) {
  AddBigEndian(out, static_cast<std::uint32_t>(content.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), name.begin(), name.end());
  out.insert(out.end(), content.begin(), content.end());
  AddBigEndian(out, Crc32(std::span(out).subspan(start)));
}

// A zlib stream of blocks that are stored as they are (RFC 1951, section 3.2.4).
Bytes Stored(std::span<const std::uint8_t> content) {
  constexpr std::size_t kMostInBlock = 0xFFFF;
  Bytes out = {0x78, 0x01};
  std::size_t place = 0;
  do {
    const std::size_t count = std::min(kMostInBlock, content.size() - place);
    const bool isLast = place + count == content.size();
    out.push_back(isLast ? 1 : 0);
    for (const std::size_t length : {count, ~count}) {
      out.push_back(static_cast<std::uint8_t>(length));
      out.push_back(static_cast<std::uint8_t>(length >> 8));
    }
    const auto block = content.subspan(place, count);
    out.insert(out.end(), block.begin(), block.end());
    place += count;
  } while (place < content.size());
  AddBigEndian(out, Adler32(content));
  return out;
}

}  // namespace

std::vector<std::uint8_t> WritePng(const Surface& surface) {
  Bytes rows;
  for (std::int32_t y = 0; y < surface.height(); ++y) {
    rows.push_back(0);  // the row stands for itself
    for (std::int32_t x = 0; x < surface.width(); ++x) {
      const std::uint32_t color = surface.ColorAt(x, y);
      for (const int shift : {0, 8, 16}) {
        rows.push_back(static_cast<std::uint8_t>(color >> shift));
      }
    }
  }
  Bytes header;
  AddBigEndian(header, static_cast<std::uint32_t>(surface.width()));
  AddBigEndian(header, static_cast<std::uint32_t>(surface.height()));
  // 8 bits for each of red, green and blue; the only compression, filters and order that there are.
  header.insert(header.end(), {8, 2, 0, 0, 0});

  Bytes out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  AddChunk(out, "IHDR", header);
  AddChunk(out, "IDAT", Stored(rows));
  AddChunk(out, "IEND", {});
  return out;
}

std::string Base64(const std::vector<std::uint8_t>& bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t place = 0; place < bytes.size(); place += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - place);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8 | (i < count ? bytes[place + i] : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= count ? kDigits[(group >> (18 - 6 * i)) & 0x3F] : '=';
    }
  }
  return text;
}

}  // namespace ostrel::headless
