// The pixel work of the layout page's picture, byte for byte. What is expected is worked out here
// from each byte's place alone, one byte after the other.
#include "pages/preview_pixels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

namespace ostrel {
namespace {

// A picture in memory, with a guard behind it that nothing may touch.
class Pixels {
 public:
  Pixels(std::int32_t width, std::int32_t height)
      : stride((width * 3 + 3) / 4 * 4),
        bytes(static_cast<std::size_t>(stride * height) + kGuard, 0xA5),
        rows{bytes.data(), width, height} {}
  Pixels(const Pixels& other)
      : stride(other.stride),
        bytes(other.bytes),
        rows{bytes.data(), other.rows.width, other.rows.height} {}

  std::uint8_t& At(std::int32_t row, std::int32_t byte) {
    return bytes[static_cast<std::size_t>(row * stride + byte)];
  }
  void Fill(std::uint8_t first, std::uint8_t second, std::uint8_t third) {
    for (std::int32_t row = 0; row < rows.height; ++row) {
      for (std::int32_t column = 0; column < rows.width; ++column) {
        At(row, column * 3) = first;
        At(row, column * 3 + 1) = second;
        At(row, column * 3 + 2) = third;
      }
    }
  }
  // Any bytes, the rows' padding among them; of three pixels two are white. With an even seed rows
  // begin with white paper, and half of them are like the one before.
  void FillAtRandom(unsigned seed) {
    std::mt19937 numbers(seed);
    for (std::int32_t row = 0; row < rows.height; ++row) {
      bool white = false;
      const bool repeats = row != 0 && seed % 2 == 0 && numbers() % 2 == 0;
      for (std::int32_t byte = 0; byte < stride; ++byte) {
        white = byte % 3 == 0 ? numbers() % 3 != 0 : white;
        const bool paper = seed % 2 == 0 && byte < 30;
        At(row, byte) = repeats          ? At(row - 1, byte)
                        : white || paper ? 0xFF
                                         : static_cast<std::uint8_t>(numbers());
      }
    }
  }

  static constexpr std::size_t kGuard = 64;
  std::int32_t stride;
  std::vector<std::uint8_t> bytes;
  PixelRows rows;
};

// Sizes from a single pixel on, with every length of a row's padding.
struct SizeCase {
  std::int32_t width, height;
};
void PrintTo(const SizeCase& row, std::ostream* out) {
  *out << row.width << " x " << row.height;
}
const SizeCase kSizes[] = {
    {1, 1},  {2, 2},  {3, 3},  {4, 4},  {5, 5},  {6, 6},  {7, 7},     {8, 8},     {9, 9},
    {1, 9},  {9, 1},  {3, 6},  {4, 6},  {5, 6},  {6, 5},  {10, 7},    {11, 7},    {12, 7},
    {13, 7}, {21, 8}, {27, 8}, {28, 8}, {29, 8}, {30, 8}, {111, 111}, {112, 110}, {131, 96},
};

class PixelWork : public testing::TestWithParam<SizeCase> {
 protected:
  Pixels Random(unsigned seed) const {
    Pixels pixels(GetParam().width, GetParam().height);
    pixels.FillAtRandom(seed);
    return pixels;
  }
};

INSTANTIATE_TEST_SUITE_P(Sizes, PixelWork, testing::ValuesIn(kSizes));

// The same pixels, each row's from the last to the first, and on request the rows so too.
Pixels InTheOtherOrder(const Pixels& before, bool rowsToo) {
  Pixels after = before;
  for (std::int32_t row = 0; row < after.rows.height; ++row) {
    const std::int32_t fromRow = rowsToo ? after.rows.height - 1 - row : row;
    for (std::int32_t byte = 0; byte < after.rows.width * 3; ++byte) {
      const std::int32_t from = (after.rows.width - 1 - byte / 3) * 3 + byte % 3;
      after.At(row, byte) = before.bytes[static_cast<std::size_t>(fromRow * after.stride + from)];
    }
  }
  return after;
}

// ---- Mirrored rows ------------------------------------------------------------------------------

TEST_P(PixelWork, MirroredRows_HaveTheirPixelsInTheOtherOrder) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const Pixels before = Random(seed);
    const Pixels expected = InTheOtherOrder(before, false);
    Pixels after = before;
    MirrorRows(after.rows);
    ASSERT_EQ(after.bytes, expected.bytes);
    MirrorRows(after.rows);
    ASSERT_EQ(after.bytes, before.bytes);
  }
}

// ---- A turned picture ---------------------------------------------------------------------------

TEST_P(PixelWork, ATurnedPicture_HasItsPixelsFromTheLastToTheFirst) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const Pixels before = Random(seed);
    const Pixels expected = InTheOtherOrder(before, true);
    Pixels after = before;
    TurnRows(after.rows);
    ASSERT_EQ(after.bytes, expected.bytes);
  }
}

// ---- Levels -------------------------------------------------------------------------------------

// The amount by name of the level, as a person would tell it.
int AmountOf(std::int16_t level) {
  switch (level) {
    case 0:
      return 30;
    case 1:
      return 15;
    case 3:
      return -25;
    case 4:
      return -50;
    default:
      return 0;
  }
}

// The byte at a place of a picture once a level is shown.
std::uint8_t Levelled(Pixels& before, std::int32_t row, std::int32_t byte, int amount) {
  const std::int32_t first = byte / 3 * 3;
  const std::uint8_t value = before.At(row, byte);
  const bool rowTouched = row >= 3 && row < before.rows.height - 2;
  const bool bytesTouched = first >= 7 && first + 2 <= before.stride - 7;
  if (!rowTouched || !bytesTouched) {
    return value;
  }
  const int brightness = (30 * before.At(row, first) + 59 * before.At(row, first + 1) +
                          11 * before.At(row, first + 2) + 50) /
                         100;
  return brightness < 255 ? static_cast<std::uint8_t>(std::clamp(value + amount, 0, 255)) : value;
}

TEST_P(PixelWork, Levels_ChangeWhatIsNotWhiteInsideTheEdges) {
  for (std::int16_t level = -1; level <= 6; ++level) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
      Pixels before = Random(seed);
      Pixels expected = before;
      for (std::int32_t row = 0; row < before.rows.height; ++row) {
        for (std::int32_t byte = 0; byte < before.stride; ++byte) {
          expected.At(row, byte) = Levelled(before, row, byte, AmountOf(level));
        }
      }
      Pixels after = before;
      ShowLevel(after.rows, level);
      ASSERT_EQ(after.bytes, expected.bytes) << "level " << level << ", seed " << seed;
    }
  }
}

TEST(PixelLevel, NumbersThatAreNoLevel_LeaveThePicture) {
  Pixels pixels(16, 8);
  pixels.Fill(100, 100, 100);
  const Pixels before = pixels;
  for (const std::int16_t level :
       std::initializer_list<std::int16_t>{2, 5, 99, 32767, -1, -32768}) {
    ShowLevel(pixels.rows, level);
    EXPECT_EQ(pixels.bytes, before.bytes) << level;
  }
}

// A picture of one gray, and which of its bytes a level touches.
TEST(PixelLevel, TheEdges_AreThreeRowsThenTwoAndThreePixelsThenTwo) {
  Pixels pixels(16, 9);  // a row of 48 bytes, which needs no padding
  pixels.Fill(100, 100, 100);
  ShowLevel(pixels.rows, 0);
  for (std::int32_t row = 0; row < 9; ++row) {
    for (std::int32_t byte = 0; byte < 48; ++byte) {
      // Byte 7 lies within the third pixel, whose first byte lies outside; byte 48 - 7 is the last
      // one of the fourteenth pixel.
      const bool inside = row >= 3 && row <= 6 && byte >= 9 && byte <= 41;
      EXPECT_EQ(pixels.At(row, byte), inside ? 130 : 100) << row << ", " << byte;
    }
  }
}

TEST(PixelLevel, RowsWithPadding_AreTouchedByTheirLengthWithIt) {
  // 13 pixels take 39 bytes and one of padding: bytes 7 to 33. 15 take 45 and three: 7 to 41.
  for (const auto& [width, lastByte] : {std::pair{13, 32}, std::pair{14, 35}, std::pair{15, 41}}) {
    Pixels pixels(width, 7);
    pixels.Fill(100, 100, 100);
    ShowLevel(pixels.rows, 4);
    for (std::int32_t byte = 0; byte < width * 3; ++byte) {
      EXPECT_EQ(pixels.At(3, byte), byte >= 9 && byte <= lastByte ? 50 : 100)
          << width << ", " << byte;
    }
  }
}

TEST(PixelLevel, Bytes_StopAtBothEnds) {
  struct {
    std::int16_t level;
    std::uint8_t before, after;
  } const kCases[] = {
      {0, 0, 30},    {0, 225, 255}, {0, 226, 255}, {0, 254, 255}, {1, 0, 15},    {1, 240, 255},
      {1, 241, 255}, {3, 25, 0},    {3, 24, 0},    {3, 0, 0},     {3, 26, 1},    {3, 254, 229},
      {4, 50, 0},    {4, 49, 0},    {4, 0, 0},     {4, 51, 1},    {4, 254, 204},
  };
  for (const auto& row : kCases) {
    Pixels pixels(16, 8);
    pixels.Fill(row.before, row.before, row.before);
    ShowLevel(pixels.rows, row.level);
    EXPECT_EQ(pixels.At(4, 12), row.after) << row.level << ", " << int{row.before};
  }
}

// The brightness of white begins where 30, 59 and 11 hundredths of the bytes round to 255, and each
// byte has its own weight.
TEST(PixelLevel, White_BeginsWhereTheBrightnessRoundsToIt) {
  struct {
    std::uint8_t first, second, third;
    bool white;
  } const kCases[] = {
      {255, 255, 255, true}, {255, 255, 251, true},  {255, 255, 250, false},
      {254, 255, 255, true}, {253, 255, 255, false}, {255, 254, 255, false},
      {254, 255, 254, true}, {254, 255, 253, false}, {0, 255, 255, false},
      {255, 0, 255, false},  {255, 255, 0, false},   {254, 254, 254, false},
  };
  for (const auto& row : kCases) {
    Pixels pixels(16, 8);
    pixels.Fill(row.first, row.second, row.third);
    ShowLevel(pixels.rows, 3);
    EXPECT_EQ(pixels.At(4, 12) == row.first, row.white || row.first == 0)
        << int{row.first} << ", " << int{row.second} << ", " << int{row.third};
    EXPECT_EQ(pixels.At(4, 13) == row.second, row.white || row.second == 0);
    EXPECT_EQ(pixels.At(4, 14) == row.third, row.white || row.third == 0);
  }
}

// ---- White edges --------------------------------------------------------------------------------

TEST_P(PixelWork, WhiteEdges_AreWholeRowsAndThePixelsAtTheirEnds) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const Pixels before = Random(seed);
    Pixels expected = before;
    const std::int32_t width = expected.rows.width;
    for (std::int32_t row = 0; row < expected.rows.height; ++row) {
      const bool wholeRow = row <= 2 || row >= expected.rows.height - 2;
      for (std::int32_t byte = 0; byte < expected.stride; ++byte) {
        const std::int32_t pixel = byte / 3;
        const bool atEnd = byte < width * 3 && (pixel == 0 || pixel == width - 1);
        if (wholeRow || atEnd) {
          expected.At(row, byte) = 255;
        }
      }
    }
    Pixels after = before;
    WhitenEdges(after.rows);
    ASSERT_EQ(after.bytes, expected.bytes);
  }
}

TEST(RowStride, IsTheNextMultipleOfFourBytes) {
  EXPECT_EQ(RowStride(1), 4U);
  EXPECT_EQ(RowStride(2), 8U);
  EXPECT_EQ(RowStride(3), 12U);
  EXPECT_EQ(RowStride(4), 12U);
  EXPECT_EQ(RowStride(5), 16U);
  EXPECT_EQ(RowStride(111), 336U);
  EXPECT_EQ(RowStride(0x7FFFFFFF), 0x180000000U);  // (2^31 - 1) * 3 rounded up
}

}  // namespace
}  // namespace ostrel
