#include "pages/custom_paper_units.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrel {
namespace {

constexpr double kCutMargin = 0.00001;  // a number just short of a digit keeps it
constexpr double kSameMargin = 0.0001;  // of a number that went to pixels and back

double PowerOfTen(int exponent) {
  double power = 1;
  for (int i = 0; i < exponent; ++i) {
    power *= 10;
  }
  return power;
}

double CutToDigits(double value, int digits) {
  const double scale = PowerOfTen(digits);
  return std::trunc((value + kCutMargin) * scale) / scale;
}

double UncutLength(double pixels_px600, PaperUnit unit) {
  switch (unit) {
    case PaperUnit::kMillimeters:
      return pixels_px600 * kMillimetersPerInch / kPaperDotsPerInch;
    case PaperUnit::kInches:
      return pixels_px600 / kPaperDotsPerInch;
    default:
      return pixels_px600;
  }
}

}  // namespace

double PixelsOf(const PaperLength& length) {
  switch (length.unit) {
    case PaperUnit::kMillimeters:
      return length.value * kPaperDotsPerInch / kMillimetersPerInch;
    case PaperUnit::kInches:
      return length.value * kPaperDotsPerInch;
    default:
      return length.value;
  }
}

PaperLength LengthOfPixels(double pixels_px600, PaperUnit unit, int decimals) {
  const double value = UncutLength(pixels_px600, unit);
  return {decimals == 1 ? value : CutToDigits(value, decimals + 1), unit, decimals};
}

double RoundToDigits(double value, int decimals) {
  const double scale = PowerOfTen(decimals);
  // So few bits that the product is exact.
  return std::nearbyint(static_cast<double>(static_cast<float>(value)) * scale) / scale;
}

bool IsSameLength(const PaperLength& left, const PaperLength& right) {
  const double halfStep = 0.5 / PowerOfTen(left.decimals);
  return std::abs(left.value - right.value) <= halfStep + kSameMargin;
}

// ---- Limits -------------------------------------------------------------------------------------

// The numbers that edits have always compared with.
static_assert(LeastOf(kSizeLimits[0].width) == 74.9999F);
static_assert(MostOf(kSizeLimits[0].width) == 216.0001F);
static_assert(LeastOf(kSizeLimits[0].length) == 147.9999F);
static_assert(MostOf(kSizeLimits[0].length) == 356.0001F);
static_assert(LeastOf(kSizeLimits[1].width) == 2.9499F);
static_assert(MostOf(kSizeLimits[1].width) == 8.5001F);
static_assert(LeastOf(kSizeLimits[1].length) == 5.8299F);
static_assert(MostOf(kSizeLimits[1].length) == 14.0001F);

double WithinLimits(double value, const LengthLimits& limits) {
  return std::clamp(value, limits.least, limits.most);
}

// ---- Records ------------------------------------------------------------------------------------

double StoredPixels(const CustomPaperRecord& record, const PaperSide& side) {
  constexpr double kMostApart = 0.501;  // rounding, in a number of 32 bits
  const double whole = record.*side.whole;
  const double exact = static_cast<double>(record.*side.exact);
  // No comparison holds for what isn't a number.
  return std::abs(exact - whole) <= kMostApart ? exact : whole;
}

void StoreLength(CustomPaperRecord& record, const PaperSide& side, const PaperLength& length) {
  constexpr double kMost = std::numeric_limits<std::uint16_t>::max();
  const double pixels = std::clamp(PixelsOf(length), 0.0, kMost);
  record.*side.exact = static_cast<float>(pixels);
  record.*side.whole = static_cast<std::uint16_t>(std::min(pixels + 0.5, kMost));
}

}  // namespace ostrel
