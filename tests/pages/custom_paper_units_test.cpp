// Lengths of the user's own papers: to pixels and back, the cut, the limits, and records whose
// numbers don't belong together.
#include "pages/custom_paper_units.h"

#include "support/case_name.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace ostrel {
namespace {

constexpr PaperUnit kPx = PaperUnit::kPixels;
constexpr PaperUnit kMm = PaperUnit::kMillimeters;
constexpr PaperUnit kIn = PaperUnit::kInches;

// ---- Pixels -------------------------------------------------------------------------------------

struct PixelCase {
  const char* name;
  double value;
  PaperUnit unit;
  double pixels_px600;
};

class PixelsOfLength : public testing::TestWithParam<PixelCase> {};

INSTANTIATE_TEST_SUITE_P(Lengths, PixelsOfLength,
                         testing::Values(PixelCase{"OneInch", 1, kIn, 600},
                                         PixelCase{"LetterWidth", 8.5, kIn, 5100},
                                         PixelCase{"LeastWidthInInches", 2.95, kIn, 1770},
                                         PixelCase{"AnInchOfMillimeters", 25.4, kMm, 600},
                                         PixelCase{"A4Width", 210, kMm, 4960.629921259842},
                                         PixelCase{"A4Length", 297, kMm, 7015.748031496063},
                                         PixelCase{"LeastWidth", 75, kMm, 1771.6535433070867},
                                         PixelCase{"Pixels", 123.5, kPx, 123.5},
                                         PixelCase{"Nothing", 0, kMm, 0}),
                         test::CaseName());

TEST_P(PixelsOfLength, IsItsNumberAt600DotsPerInch) {
  const PixelCase& row = GetParam();
  EXPECT_NEAR(PixelsOf({row.value, row.unit, 2}), row.pixels_px600, 1e-9);
}

struct LengthCase {
  const char* name;
  double pixels_px600;
  PaperUnit unit;
  int decimals;
  double value;
};

class LengthOfPixelsCase : public testing::TestWithParam<LengthCase> {};

INSTANTIATE_TEST_SUITE_P(
    Pixels, LengthOfPixelsCase,
    testing::Values(LengthCase{"OneInchIsMillimeters", 600, kMm, 1, 25.4},
                    LengthCase{"OneDigitIsNotCut", 1000, kMm, 1, 42.333333333333336},
                    LengthCase{"TwoDigitsAreCutToThree", 1000, kIn, 2, 1.666},
                    LengthCase{"TwoDigitsOfMillimetersToo", 1000, kMm, 2, 42.333},
                    LengthCase{"NoDigitIsCutToOne", 1000, kIn, 0, 1.6},
                    // The wider number lies just short of the digit that is meant.
                    LengthCase{"TheDigitThatIsMeantStays", 1769.9999, kIn, 2, 2.95},
                    LengthCase{"FurtherOffItGoes", 1769.99, kIn, 2, 2.949},
                    LengthCase{"PixelsStay", 1234, kPx, 1, 1234},
                    LengthCase{"PixelsAreCutToo", 1234.5678, kPx, 2, 1234.567},
                    LengthCase{"Nothing", 0, kIn, 2, 0}),
    test::CaseName());

TEST_P(LengthOfPixelsCase, IsCutBehindTheDigitsShown) {
  const LengthCase& row = GetParam();
  const PaperLength length = LengthOfPixels(row.pixels_px600, row.unit, row.decimals);
  EXPECT_NEAR(length.value, row.value, 1e-9);
  EXPECT_EQ(length.unit, row.unit);
  EXPECT_EQ(length.decimals, row.decimals);
}

TEST(PaperLengths, EachOneThatCanBeShownGoesToPixelsAndBack) {
  for (const SizeLimits& limits : kSizeLimits) {
    const double step = limits.decimals == 1 ? 0.1 : 0.01;
    for (double value = limits.width.least; value <= limits.length.most; value += step) {
      const double shown = RoundToDigits(value, limits.decimals);
      CustomPaperRecord record = {};
      StoreLength(record, kLengthSide, {shown, limits.unit, limits.decimals});
      const PaperLength back =
          LengthOfPixels(StoredPixels(record, kLengthSide), limits.unit, limits.decimals);
      EXPECT_DOUBLE_EQ(RoundToDigits(back.value, limits.decimals), shown);
      EXPECT_TRUE(IsSameLength({shown, limits.unit, limits.decimals}, back)) << shown;
    }
  }
}

TEST(RoundToDigits, TakesTheNearestNumber) {
  EXPECT_DOUBLE_EQ(RoundToDigits(210.00001, 1), 210.0);
  EXPECT_DOUBLE_EQ(RoundToDigits(2.94999, 2), 2.95);
  EXPECT_DOUBLE_EQ(RoundToDigits(2.954, 2), 2.95);
  EXPECT_DOUBLE_EQ(RoundToDigits(7.6, 0), 8.0);
}

// A number of 32 bits is told with its own digits; of two that are as near it takes the even one.
TEST(RoundToDigits, IsWhatATextShows) {
  EXPECT_DOUBLE_EQ(RoundToDigits(3.015, 2), 3.02);
  EXPECT_DOUBLE_EQ(RoundToDigits(4.125, 2), 4.12);
  EXPECT_DOUBLE_EQ(RoundToDigits(4.375, 2), 4.38);
  for (int pixels_px600 = 0; pixels_px600 < 9000; ++pixels_px600) {
    for (const SizeLimits& limits : kSizeLimits) {
      const double value = LengthOfPixels(pixels_px600, limits.unit, limits.decimals).value;
      std::array<char, 32> text = {};
      std::snprintf(text.data(), text.size(), "%.*f", limits.decimals,
                    static_cast<double>(static_cast<float>(value)));
      EXPECT_DOUBLE_EQ(RoundToDigits(value, limits.decimals), std::stod(text.data()))
          << pixels_px600;
    }
  }
}

struct SameCase {
  const char* name;
  double left;
  double right;
  int decimals;
  bool same;
};

class IsSameLengthCase : public testing::TestWithParam<SameCase> {};

INSTANTIATE_TEST_SUITE_P(Lengths, IsSameLengthCase,
                         testing::Values(SameCase{"Equal", 75, 75, 1, true},
                                         SameCase{"HalfAStepApart", 75, 75.05, 1, true},
                                         SameCase{"HalfAStepBelow", 75, 74.95, 1, true},
                                         SameCase{"MoreThanHalfAStep", 75, 75.051, 1, false},
                                         SameCase{"AStep", 75, 74.9, 1, false},
                                         SameCase{"HalfAFinerStep", 2.95, 2.955, 2, true},
                                         SameCase{"MoreThanHalfAFinerStep", 2.95, 2.956, 2, false}),
                         test::CaseName());

TEST_P(IsSameLengthCase, WithinHalfAStepOfTheLastDigit) {
  const SameCase& row = GetParam();
  EXPECT_EQ(IsSameLength({row.left, kMm, row.decimals}, {row.right, kMm, row.decimals}), row.same);
}

// ---- Limits -------------------------------------------------------------------------------------

TEST(SizeLimitsTable, HoldsTheNumbersOfBothUnits) {
  const SizeLimits& mm = LimitsOf(kMm);
  EXPECT_EQ(mm.unit, kMm);
  EXPECT_EQ(mm.width.least, 75.0);
  EXPECT_EQ(mm.width.most, 216.0);
  EXPECT_EQ(mm.length.least, 148.0);
  EXPECT_EQ(mm.length.most, 356.0);
  EXPECT_EQ(mm.decimals, 1);
  const SizeLimits& inches = LimitsOf(kIn);
  EXPECT_EQ(inches.unit, kIn);
  EXPECT_EQ(inches.width.least, 2.95);
  EXPECT_EQ(inches.width.most, 8.5);
  EXPECT_EQ(inches.length.least, 5.83);
  EXPECT_EQ(inches.length.most, 14.0);
  EXPECT_EQ(inches.decimals, 2);
}

TEST(WithinLimitsOf, BringsANumberToTheNearerEnd) {
  constexpr LengthLimits kLimits = {75.0, 216.0};
  EXPECT_EQ(WithinLimits(0, kLimits), 75.0);
  EXPECT_EQ(WithinLimits(74.99, kLimits), 75.0);
  EXPECT_EQ(WithinLimits(75.0, kLimits), 75.0);
  EXPECT_EQ(WithinLimits(100.5, kLimits), 100.5);
  EXPECT_EQ(WithinLimits(216.0, kLimits), 216.0);
  EXPECT_EQ(WithinLimits(216.01, kLimits), 216.0);
}

// ---- Records ------------------------------------------------------------------------------------

TEST(UnitOfRecord, IsInchesForAnyNumberButOne) {
  CustomPaperRecord record = {};
  for (const std::uint32_t unit : {0U, 2U, 3U, 0xFFFFFFFFU}) {
    record.Unit = unit;
    EXPECT_EQ(UnitOf(record), kIn) << unit;
  }
  record.Unit = 1;
  EXPECT_EQ(UnitOf(record), kMm);
}

TEST(StoreLength, KeepsTheUnroundedNumberAndRoundsThePixels) {
  CustomPaperRecord record = {};
  StoreLength(record, kWidthSide, {210, kMm, 1});
  EXPECT_EQ(record.Width, 4961);
  EXPECT_EQ(record.ExactWidth, 4960.62992F);
  StoreLength(record, kLengthSide, {356, kMm, 1});
  EXPECT_EQ(record.Length, 8409);
  EXPECT_EQ(record.ExactLength, 8409.4488F);
  StoreLength(record, kWidthSide, {1234.5, kPx, 1});  // a half goes up
  EXPECT_EQ(record.Width, 1235);
  EXPECT_EQ(record.ExactWidth, 1234.5F);
}

TEST(StoreLength, StaysWithinWhatARecordHolds) {
  CustomPaperRecord record = {};
  StoreLength(record, kWidthSide, {-1, kMm, 1});
  EXPECT_EQ(record.Width, 0);
  EXPECT_EQ(record.ExactWidth, 0.0F);
  StoreLength(record, kWidthSide, {65535, kPx, 1});
  EXPECT_EQ(record.Width, 65535);
  StoreLength(record, kWidthSide, {1e30, kMm, 1});
  EXPECT_EQ(record.Width, 65535);
  EXPECT_EQ(record.ExactWidth, 65535.0F);
}

struct StoredCase {
  const char* name;
  std::uint16_t whole;
  float exact;
  double pixels_px600;
};

class StoredPixelsCase : public testing::TestWithParam<StoredCase> {};

INSTANTIATE_TEST_SUITE_P(
    Records, StoredPixelsCase,
    testing::Values(StoredCase{"RoundedUp", 4961, 4960.5F, 4960.5},
                    StoredCase{"RoundedDown", 4961, 4961.25F, 4961.25},
                    StoredCase{"NoExactNumber", 4961, 0.0F, 4961},
                    StoredCase{"Another", 4961, 5100.0F, 4961},
                    StoredCase{"Infinite", 65535, std::numeric_limits<float>::infinity(), 65535},
                    StoredCase{"NotANumber", 0, std::numeric_limits<float>::quiet_NaN(), 0},
                    StoredCase{"Negative", 0, -7000.0F, 0}),
    test::CaseName());

TEST_P(StoredPixelsCase, AreTheExactOnesWhereBothBelongTogether) {
  const StoredCase& row = GetParam();
  CustomPaperRecord record = {};
  record.Length = row.whole;
  record.ExactLength = row.exact;
  EXPECT_EQ(StoredPixels(record, kLengthSide), row.pixels_px600);
}

}  // namespace
}  // namespace ostrel
