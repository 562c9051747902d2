#include "job/bitmap_geometry.h"

#include <algorithm>
#include <iterator>

namespace ostrel {
namespace {

// Where along one direction a bitmap is placed, and which end of it is shown there.
enum class Place { kPageStart, kFitted, kPageEnd };
enum class Part { kFirst, kFitted, kLast };

// clang-format off
struct PositionRow {
  std::int16_t position;
  Place across;
  Place down;
  Part partAcross;
  Part partDown;  // rows lie upside down: the first ones are the picture's lowest
};
constexpr PositionRow kPositions[] = {
    // Position, Dest x, Dest y, Src x and w, Src y and h
    {1, Place::kPageStart, Place::kPageStart, Part::kFirst,  Part::kLast},
    {2, Place::kFitted,    Place::kPageStart, Part::kFitted, Part::kLast},
    {3, Place::kPageEnd,   Place::kPageStart, Part::kLast,   Part::kLast},
    {4, Place::kPageStart, Place::kFitted,    Part::kFirst,  Part::kFitted},
    {5, Place::kFitted,    Place::kFitted,    Part::kFitted, Part::kFitted},
    {6, Place::kPageEnd,   Place::kFitted,    Part::kLast,   Part::kFitted},
    {7, Place::kPageStart, Place::kPageEnd,   Part::kFirst,  Part::kFirst},
    {8, Place::kFitted,    Place::kPageEnd,   Part::kFitted, Part::kFirst},
    {9, Place::kPageEnd,   Place::kPageEnd,   Part::kLast,   Part::kFirst},
};
// clang-format on

const PositionRow* FindPosition(std::int16_t position) {
  const auto* row = std::ranges::find(kPositions, position, &PositionRow::position);
  return row == std::end(kPositions) ? nullptr : row;
}

// One direction of a rectangle.
struct Span {
  std::int64_t start;
  std::int64_t end;

  std::int64_t Length() const { return end - start; }
};
Span Across(const Rect& rect) {
  return {rect.left, rect.right};
}
Span Down(const Rect& rect) {
  return {rect.top, rect.bottom};
}

std::int64_t StartOf(Place place, const Span& page, const Span& fitted) {
  switch (place) {
    case Place::kPageStart:
      return page.start;
    case Place::kPageEnd:
      return page.end - fitted.end + fitted.start;
    default:
      return fitted.start;
  }
}

// What was cut off at both ends is cut off at one.
Span PartOf(Part part, std::int64_t bitmap, const Span& fitted) {
  switch (part) {
    case Part::kFirst:
      return {0, fitted.Length()};
    case Part::kLast: {
      const std::int64_t start = bitmap - fitted.end + fitted.start;
      return {start, start + 2 * fitted.end - bitmap};
    }
    default:
      return fitted;
  }
}

// Fits one direction: `length` of the bitmap on the page, in pixels.
void FitSpan(Span& place, Span& from, float length) {
  constexpr double kBitMore = 0.005;
  const Span page = place;
  const double onPage = length;
  const double share = static_cast<double>(from.Length()) / onPage + kBitMore;
  const std::int64_t middle = page.Length() / 2 + page.start;
  const std::int64_t start = CutRounded(static_cast<double>(middle)) - CutRounded(onPage / 2);
  if (start < page.start) {
    from.start =
        Cut(static_cast<double>(page.start - start) * share + static_cast<double>(from.start));
  } else {
    place.start = start;
  }
  const double beyond = static_cast<double>(page.end - start) - onPage;
  if (beyond < 0) {
    from.end += CutRounded(beyond * share);
  } else {
    place.end = CutRounded(static_cast<double>(start) + onPage);
  }
}

// The longer side of a page, each counted with one pixel more.
double LongerSide(const Rect& page) {
  return static_cast<double>(std::max(Across(page).Length(), Down(page).Length()) + 1);
}

float FittedLength(const Span& from, double longerSide, std::int16_t scalePercent) {
  const auto pixels = static_cast<double>(from.Length() + 1);
  return static_cast<float>(pixels * longerSide * 254 / 96 / 2970 * scalePercent / 100);
}

float TileLength(std::int32_t pixels, double longerSide, std::int16_t sizePoints) {
  constexpr double kDivisor = 28512000;  // 96 * 2970 * 100
  return static_cast<float>((pixels + 1.0) * longerSide * 254 * sizePoints / kDivisor);
}

std::int64_t TimesOnPage(std::int64_t pagePixels, float tile) {
  return tile > 0 ? Cut(static_cast<double>(pagePixels + 1) / double{tile} + 1) : 1;
}

}  // namespace

void FitBitmapRect(Rect& place, Rect& from, const WatermarkData& record) {
  const double longerSide = LongerSide(place);
  const float width = FittedLength(Across(from), longerSide, record.PageWMScale);
  const float height = FittedLength(Down(from), longerSide, record.PageWMScale);
  if (width == 0 || height == 0) {
    place = {0, 0, 0, 0};
    return;
  }
  Span across = Across(place);
  Span down = Down(place);
  Span fromAcross = Across(from);
  Span fromDown = Down(from);
  FitSpan(across, fromAcross, width);
  FitSpan(down, fromDown, height);
  place = {Coordinate(across.start), Coordinate(down.start), Coordinate(across.end),
           Coordinate(down.end)};
  from = {Coordinate(fromAcross.start), Coordinate(fromDown.start), Coordinate(fromAcross.end),
          Coordinate(fromDown.end)};
}

bool HasBitmapPlace(std::int16_t position) {
  return FindPosition(position) != nullptr;
}

BitmapDrawing BitmapDrawingAt(std::int16_t position, const Rect& page, Size bitmap,
                              const WatermarkData& record) {
  const PositionRow* row = FindPosition(position);
  if (row == nullptr) {
    return {};
  }
  Rect place = page;
  Rect from = {0, 0, bitmap.width, bitmap.height};
  FitBitmapRect(place, from, record);
  const Span fromAcross = PartOf(row->partAcross, bitmap.width, Across(from));
  const Span fromDown = PartOf(row->partDown, bitmap.height, Down(from));
  return {PlatformRect(StartOf(row->across, Across(page), Across(place)),
                       StartOf(row->down, Down(page), Down(place)), Across(place).Length(),
                       Down(place).Length()),
          PlatformRect(fromAcross.start, fromDown.start, fromAcross.Length(), fromDown.Length())};
}

BitmapTiles BitmapTilesOf(const Rect& page, Size bitmap, const WatermarkData& record) {
  const double longerSide = LongerSide(page);
  const float width = TileLength(bitmap.width, longerSide, record.PageWMSize);
  const float height = TileLength(bitmap.height, longerSide, record.PageWMSize);
  return {.width = width,
          .height = height,
          .count = CappedTiles(TimesOnPage(Across(page).Length(), width),
                               TimesOnPage(Down(page).Length(), height))};
}

}  // namespace ostrel
