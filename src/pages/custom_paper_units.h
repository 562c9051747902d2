// Lengths of the user's own paper sizes: millimeters and inches, how long a paper may be in either,
// and the way to pixels and back.
//
// A stored size is pixels at 600 dpi; its unit only tells how it is shown. What a person reads or
// types has one digit behind the separator in millimeters and two in inches.
#pragma once

#include "config/setting_stores.h"

#include <cstdint>

namespace ostrel {

// As a stored record counts. A record with any other number is taken for one in inches.
enum class PaperUnit : std::uint32_t {
  kPixels = 0,
  kMillimeters = 1,
  kInches = 2,
};

inline constexpr double kPaperDotsPerInch = 600;
inline constexpr double kMillimetersPerInch = 25.4;

// A length as it is shown: a number, its unit, and how many digits it has behind the separator.
struct PaperLength {
  double value;
  PaperUnit unit;
  int decimals;
};

double PixelsOf(const PaperLength& length);

// The number is cut behind one digit more than is shown, but for lengths of one digit, which aren't
// cut at all.
PaperLength LengthOfPixels(double pixels_px600, PaperUnit unit, int decimals);

// The number that a box with so many digits behind the separator shows. Boxes are given numbers of
// 32 bits, and of two digits that are as near they show the even one.
double RoundToDigits(double value, int decimals);

// Half a step of the last digit: two numbers no further apart are shown as the same.
bool IsSameLength(const PaperLength& left, const PaperLength& right);

// ---- Limits -------------------------------------------------------------------------------------

struct LengthLimits {
  double least;
  double most;
};

struct SizeLimits {
  PaperUnit unit;
  LengthLimits width;
  LengthLimits length;
  int decimals;
};

// clang-format off
inline constexpr SizeLimits kSizeLimits[] = {
    // Unit,                 Width min, max,   Length min, max,    Decimals
    {PaperUnit::kMillimeters, {75.0,    216.0}, {148.0,    356.0}, 1},
    {PaperUnit::kInches,      {2.95,    8.5},   {5.83,     14.0},  2},
};
// clang-format on

constexpr const SizeLimits& LimitsOf(PaperUnit unit) {
  return kSizeLimits[unit == PaperUnit::kMillimeters ? 0 : 1];
}

// What an edit compares with is a little wider, so that the ends themselves lie within.
inline constexpr double kLimitMargin = 0.0001;
constexpr float LeastOf(const LengthLimits& limits) {
  return static_cast<float>(limits.least - kLimitMargin);
}
constexpr float MostOf(const LengthLimits& limits) {
  return static_cast<float>(limits.most + kLimitMargin);
}

// The nearest length within the limits.
double WithinLimits(double value, const LengthLimits& limits);

// ---- Records ------------------------------------------------------------------------------------

// One side of a record's size: whole pixels, and the same unrounded.
struct PaperSide {
  std::uint16_t CustomPaperRecord::*whole;
  float CustomPaperRecord::*exact;
};
inline constexpr PaperSide kWidthSide = {&CustomPaperRecord::Width, &CustomPaperRecord::ExactWidth};
inline constexpr PaperSide kLengthSide = {&CustomPaperRecord::Length,
                                          &CustomPaperRecord::ExactLength};

constexpr PaperUnit UnitOf(const CustomPaperRecord& record) {
  return record.Unit == static_cast<std::uint32_t>(PaperUnit::kMillimeters)
             ? PaperUnit::kMillimeters
             : PaperUnit::kInches;
}

// The unrounded pixels, or the whole ones where both don't belong together.
double StoredPixels(const CustomPaperRecord& record, const PaperSide& side);

// Stores a length: unrounded, and as whole pixels. What a record has no room for goes to the nearer
// end of its room.
void StoreLength(CustomPaperRecord& record, const PaperSide& side, const PaperLength& length);

}  // namespace ostrel
