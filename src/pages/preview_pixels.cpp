#include "pages/preview_pixels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace ostrel {
namespace {

constexpr std::uint8_t kWhiteByte = 0xFF;

// The picture's edges, in rows and in bytes of a row.
constexpr std::int32_t kEdgeRowsBefore = 3;
constexpr std::int32_t kEdgeRowsBehind = 2;
constexpr std::size_t kEdgeBytes = 7;

// What each level adds to a byte.
constexpr std::array<std::int32_t, kLevelVeryDark + 1> kLevelAmounts = {30, 15, 0, -25, -50};

// Whether a pixel is as bright as white. Its brightness in hundredths of a byte's step, rounded to
// whole steps, reaches 255 from here on.
bool IsWhite(const std::uint8_t* pixel) {
  constexpr std::uint32_t kHundredths = 100;
  constexpr std::uint32_t kRounding = 50;
  constexpr std::uint32_t kFirstWhite = kWhiteByte * kHundredths - kRounding;
  return 30U * pixel[0] + 59U * pixel[1] + 11U * pixel[2] >= kFirstWhite;
}

// ---- Eight pixels at a time ---------------------------------------------------------------------

// As three words, whose lowest byte is the first one in memory.
using Block = std::array<std::uint64_t, kPixelBytes>;
static_assert(std::endian::native == std::endian::little);
constexpr std::size_t kBlockPixels = 8;
constexpr std::size_t kBlockBytes = kBlockPixels * kPixelBytes;

// Word by word: a block that goes through memory in other pieces than it came waits for itself.
Block Load(const std::uint8_t* pixels) {
  Block block;
  for (std::size_t word = 0; word < block.size(); ++word) {
    std::memcpy(&block[word], pixels + word * sizeof(block[word]), sizeof(block[word]));
  }
  return block;
}

void Store(std::uint8_t* pixels, const Block& block) {
  for (std::size_t word = 0; word < block.size(); ++word) {
    std::memcpy(pixels + word * sizeof(block[word]), &block[word], sizeof(block[word]));
  }
}

Block Reversed(const Block& block) {
  constexpr std::uint64_t kPixel = 0xFFFFFF;
  const auto [low, middle, high] = block;
  const std::uint64_t third = low >> 48 | (middle & 0xFF) << 16;
  const std::uint64_t sixth = middle >> 56 | (high & 0xFFFF) << 8;
  return {high >> 40 | (high >> 16 & kPixel) << 24 | sixth << 48,
          sixth >> 16 | (middle >> 32 & kPixel) << 8 | (middle >> 8 & kPixel) << 32 | third << 56,
          third >> 8 | (low >> 24 & kPixel) << 16 | (low & kPixel) << 40};
}

bool IsAllWhite(const Block& block) {
  return (block[0] & block[1] & block[2]) == ~std::uint64_t{0};
}

// Lets a row's pixels change places, the outermost ones first. Most of a page is white paper, which
// looks the same from both ends.
void ReverseRow(std::uint8_t* front, std::size_t pixels) {
  std::uint8_t* behind = front + pixels * kPixelBytes;
  for (; pixels >= 2 * kBlockPixels; pixels -= 2 * kBlockPixels, front += kBlockBytes) {
    behind -= kBlockBytes;
    const Block first = Load(front);
    const Block last = Load(behind);
    if (!IsAllWhite(first) || !IsAllWhite(last)) {
      Store(front, Reversed(last));
      Store(behind, Reversed(first));
    }
  }
  for (; pixels >= 2; pixels -= 2, front += kPixelBytes) {
    behind -= kPixelBytes;
    std::array<std::uint8_t, kPixelBytes> first;
    std::memcpy(first.data(), front, kPixelBytes);
    std::memcpy(front, behind, kPixelBytes);
    std::memcpy(behind, first.data(), kPixelBytes);
  }
}

void SwapBytes(std::uint8_t* one, std::uint8_t* other, std::size_t bytes) {
  for (; bytes >= kBlockBytes; bytes -= kBlockBytes, one += kBlockBytes, other += kBlockBytes) {
    const Block block = Load(one);
    Store(one, Load(other));
    Store(other, block);
  }
  std::swap_ranges(one, one + bytes, other);
}

// ---- Levels -------------------------------------------------------------------------------------

// What becomes of pixels at a level. Pictures have few colours, in strokes of one each: the last
// pixel's answer serves most of the next ones.
class LevelOfPixels {
 public:
  explicit LevelOfPixels(std::int32_t amount) {
    for (std::size_t byte = 0; byte < bytes_.size(); ++byte) {
      bytes_[byte] = static_cast<std::uint8_t>(
          std::clamp(static_cast<std::int32_t>(byte) + amount, 0, std::int32_t{kWhiteByte}));
    }
  }

  void Show(std::uint8_t* pixel, const std::uint8_t* end) {
    for (; pixel != end; pixel += kPixelBytes) {
      if (std::memcmp(pixel, before_.data(), kPixelBytes) != 0) {
        std::memcpy(before_.data(), pixel, kPixelBytes);
        after_ =
            IsWhite(pixel) ? before_ : Pixel{bytes_[pixel[0]], bytes_[pixel[1]], bytes_[pixel[2]]};
      }
      std::memcpy(pixel, after_.data(), kPixelBytes);
    }
  }

 private:
  using Pixel = std::array<std::uint8_t, kPixelBytes>;

  std::array<std::uint8_t, 256> bytes_;  // by the byte before
  Pixel before_ = {kWhiteByte, kWhiteByte, kWhiteByte};
  Pixel after_ = before_;
};

// ---- Rows ---------------------------------------------------------------------------------------

// Works on each row from one to another. Half of a page's rows are like the one before: those get a
// copy of its outcome.
template <typename Work>
void WorkOnRows(const PixelRows& rows, std::int32_t first, std::int32_t end, Work work) {
  const std::size_t bytes = rows.stride();
  for (std::int32_t index = first; index < end;) {
    std::uint8_t* row = rows.Row(index);
    std::int32_t next = index + 1;
    while (next < end && std::memcmp(row, rows.Row(next), bytes) == 0) {
      ++next;
    }
    work(row);
    for (++index; index < next; ++index) {
      std::memcpy(rows.Row(index), row, bytes);
    }
  }
}

}  // namespace

void MirrorRows(const PixelRows& rows) {
  const auto width = static_cast<std::size_t>(rows.width);
  WorkOnRows(rows, 0, rows.height, [width](std::uint8_t* row) { ReverseRow(row, width); });
}

void TurnRows(const PixelRows& rows) {
  MirrorRows(rows);
  const std::size_t bytes = static_cast<std::size_t>(rows.width) * kPixelBytes;
  for (std::int32_t above = 0, below = rows.height - 1; above < below; ++above, --below) {
    SwapBytes(rows.Row(above), rows.Row(below), bytes);
  }
}

void ShowLevel(const PixelRows& rows, std::int16_t level) {
  if (level < kLevelVeryLight || level > kLevelVeryDark || level == kLevelNormal) {
    return;
  }
  // Whole pixels between the two bytes, both counted in.
  constexpr std::size_t kFirstPixel = (kEdgeBytes + kPixelBytes - 1) / kPixelBytes;
  if (rows.stride() < 2 * kEdgeBytes) {
    return;
  }
  const std::size_t pixelsEnd = (rows.stride() - kEdgeBytes + 1) / kPixelBytes;
  if (pixelsEnd <= kFirstPixel) {
    return;
  }
  LevelOfPixels shown(kLevelAmounts[static_cast<std::size_t>(level)]);
  WorkOnRows(rows, kEdgeRowsBefore, rows.height - kEdgeRowsBehind, [&](std::uint8_t* row) {
    std::uint8_t* pixel = row + kFirstPixel * kPixelBytes;
    std::uint8_t* const end = row + pixelsEnd * kPixelBytes;
    for (; static_cast<std::size_t>(end - pixel) >= kBlockBytes; pixel += kBlockBytes) {
      if (!IsAllWhite(Load(pixel))) {
        shown.Show(pixel, pixel + kBlockBytes);
      }
    }
    shown.Show(pixel, end);
  });
}

void WhitenEdges(const PixelRows& rows) {
  const std::size_t lastPixel = static_cast<std::size_t>(rows.width - 1) * kPixelBytes;
  for (std::int32_t index = 0; index < rows.height; ++index) {
    std::uint8_t* row = rows.Row(index);
    if (index < kEdgeRowsBefore || index >= rows.height - kEdgeRowsBehind) {
      std::memset(row, kWhiteByte, rows.stride());
    } else {
      std::memset(row, kWhiteByte, kPixelBytes);
      std::memset(row + lastPixel, kWhiteByte, kPixelBytes);
    }
  }
}

}  // namespace ostrel
