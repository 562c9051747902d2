#include "job/watermark_geometry.h"

#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace ostrel {
namespace {

// The circle's constant of stamps: all cuts at right angles depend on its digits.
constexpr double kPi = 3.14159;
constexpr std::int32_t kFullCircle = 3600;
constexpr std::int32_t kRightAngle = 900;
constexpr std::int32_t kThreeRightAngles = 2700;

// clang-format off
struct HeightRow {
  std::int16_t sizePoints;
  double factor;
};
constexpr double kUsualFactor = 9.7;
constexpr HeightRow kHeightFactors[] = {
    // Size, Factor
    {36, 8.5},
    {44, 9.6},
    {54, 9.2},
    {72, 9.1},
    {88, 9.4},
};

// The room round a text in a ring, by how many characters it has.
struct RingRow {
  std::size_t mostUnits;
  double divisor;
};
constexpr double kUsualRingDivisor = 8;
constexpr RingRow kRingDivisors[] = {
    // Characters up to, Divisor
    {1, 4},
    {2, 3},
    {3, 6},
};

enum class Across { kLeft, kCentre, kRight };
enum class Down { kTop, kMiddle, kBottom };
struct AnchorRow {
  std::int16_t position;
  Across across;
  std::int64_t margins;        // from the edge
  std::int64_t turnedMargins;  // the same of a turned text
  Down down;
};
constexpr AnchorRow kAnchors[] = {
    // Position, Across, Margins, Turned, Down
    { 1, Across::kLeft,   2, 2, Down::kTop},
    { 2, Across::kCentre, 0, 0, Down::kTop},
    { 3, Across::kRight,  2, 1, Down::kTop},
    { 4, Across::kLeft,   2, 2, Down::kMiddle},
    { 6, Across::kRight,  1, 2, Down::kMiddle},
    { 7, Across::kLeft,   2, 2, Down::kBottom},
    { 8, Across::kCentre, 0, 0, Down::kBottom},
    { 9, Across::kRight,  1, 1, Down::kBottom},
};
constexpr AnchorRow kCentred = {5, Across::kCentre, 0, 0, Down::kMiddle};
// clang-format on

std::int64_t AnchorX(const AnchorRow& row, bool isTurned, std::int64_t margin, std::int64_t width,
                     std::int64_t pageWidth) {
  switch (row.across) {
    case Across::kLeft:
      return isTurned ? row.turnedMargins * margin + width : row.margins * margin;
    case Across::kRight:
      return isTurned ? pageWidth - row.turnedMargins * margin
                      : pageWidth - width - row.margins * margin;
    default:
      return isTurned ? pageWidth - (pageWidth - width) / 2 : (pageWidth - width) / 2;
  }
}

std::int64_t AnchorY(const AnchorRow& row, std::int64_t margin, std::int64_t height,
                     std::int64_t pageHeight) {
  switch (row.down) {
    case Down::kTop:
      return margin;
    case Down::kBottom:
      return pageHeight - height - margin;
    default:
      return (pageHeight - height) / 2;
  }
}

std::int64_t TimesOnPage(std::int64_t pageLength, std::int64_t cellLength) {
  return cellLength <= 0 ? 1 : 1 + pageLength / cellLength;
}

TileRegion Tile(const StampShape& shape, std::int64_t column, std::int64_t row,
                std::int64_t addedMargins) {
  const bool hasFrame = shape.frame != StampFrame::kNone;
  const std::int64_t step = hasFrame ? shape.margin : 0;
  return {.Width = Coordinate(shape.cell.width),
          .Height = Coordinate(shape.cell.height),
          .Column = Coordinate(column),
          .Row = Coordinate(row),
          .ImageOffsetX = 0,
          .ImageOffsetY = 0,
          .TextOffsetX = Coordinate((column + addedMargins) * step),
          .TextOffsetY = Coordinate((row + addedMargins) * step),
          .Margin = Coordinate(shape.margin)};
}

Rect Grown(const Rect& rect, std::int64_t by) {
  return {Coordinate(rect.left - by), Coordinate(rect.top - by), Coordinate(rect.right + by),
          Coordinate(rect.bottom + by)};
}

// A rotation by its sine and cosine.
struct Turn {
  double sine;
  double cosine;

  PagePoint Around(PagePoint centre, PagePoint point) const {
    const auto x = static_cast<double>(point.x - centre.x);
    const auto y = static_cast<double>(point.y - centre.y);
    return {Cut(x * cosine - y * sine + static_cast<double>(centre.x)),
            Cut(x * sine + y * cosine + static_cast<double>(centre.y))};
  }
  Turn Back() const { return {-sine, cosine}; }
};

// Moves the sides of a rectangle that lies straight outwards; inwards by less than 0. Its first
// edge may be an upright or a level one.
Quadrilateral MovedSides(const Quadrilateral& corners, bool firstIsUpright, std::int64_t by) {
  const PagePoint& nextInX = firstIsUpright ? corners[3] : corners[1];
  const PagePoint& nextInY = firstIsUpright ? corners[1] : corners[3];
  const std::int64_t x = nextInX.x < corners[0].x ? -by : by;
  const std::int64_t y = nextInY.y < corners[0].y ? -by : by;
  Quadrilateral moved = corners;
  moved[0] = {corners[0].x - x, corners[0].y - y};
  moved[2] = {corners[2].x + x, corners[2].y + y};
  PagePoint& alongX = firstIsUpright ? moved[3] : moved[1];
  PagePoint& alongY = firstIsUpright ? moved[1] : moved[3];
  alongX = {alongX.x + x, alongX.y - y};
  alongY = {alongY.x - x, alongY.y + y};
  return moved;
}

// The turn that lays an edge level. One is added to both lengths, so that no edge is without any.
Turn LevellingTurn(PagePoint from, PagePoint to) {
  const auto dx = static_cast<double>(std::abs(to.x - from.x) + 1);
  const auto dy = static_cast<double>(std::abs(to.y - from.y) + 1);
  const double length = std::sqrt(dx * dx + dy * dy);
  const bool runsApart = (to.x > from.x) == (to.y < from.y);
  const double sine = dy / length;
  return {runsApart ? sine : -sine, dx / length};
}

std::array<Point, 4> Mirrored(const Quadrilateral& corners, std::int64_t pageBottom) {
  std::array<Point, 4> points = {};
  std::ranges::transform(corners, points.begin(), [pageBottom](const PagePoint& corner) {
    return Point{Coordinate(corner.x), Coordinate(pageBottom - corner.y)};
  });
  return points;
}

}  // namespace

// ---- Numbers ------------------------------------------------------------------------------------

std::int64_t Cut(double number) {
  constexpr auto kMost = static_cast<double>(kFarthest);
  if (std::isnan(number)) {
    return 0;
  }
  return static_cast<std::int64_t>(std::clamp(number, -kMost, kMost));
}

std::int32_t Coordinate(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp(number, -kFarthest, kFarthest));
}

Rect PlatformRect(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height) {
  const std::int32_t x = Coordinate(left);
  const std::int32_t y = Coordinate(top);
  return {x, y, x + Coordinate(width), y + Coordinate(height)};
}

// ---- The text -----------------------------------------------------------------------------------

std::int32_t StampHeight(std::int16_t sizePoints, double scale) {
  const auto* row = std::ranges::find(kHeightFactors, sizePoints, &HeightRow::sizePoints);
  const double factor = row == std::end(kHeightFactors) ? kUsualFactor : row->factor;
  const std::int64_t height = Cut(sizePoints * factor);
  return Coordinate(scale == 0.0 ? height : Cut(static_cast<double>(height) * scale));
}

StampAngle AngleOf(std::int16_t degrees) {
  const std::int32_t tenths = (degrees < 0 ? degrees + 360 : degrees) * 10 % kFullCircle;
  StampAngle angle;
  angle.tenths = tenths < 0 ? tenths + kFullCircle : tenths;
  const double radians = angle.tenths * kPi / 1800;
  angle.sine = std::abs(std::sin(radians));
  angle.cosine = std::abs(std::cos(radians));
  return angle;
}

// ---- The shape ----------------------------------------------------------------------------------

StampFrame FrameOf(const WatermarkData& record) {
  switch (record.PageWMBorder) {
    case 1:
      return StampFrame::kRing;
    case 2:
      return StampFrame::kBox;
    default:
      return StampFrame::kNone;
  }
}

std::int64_t LineWidth(std::int16_t sizePoints) {
  constexpr std::int64_t kLine = 25;
  return kLine * std::max(sizePoints / 36, 1);
}

std::int64_t MarginOf(std::int64_t lineWidth, const StampAngle& angle) {
  if (angle.tenths == kRightAngle || angle.tenths == kThreeRightAngles) {
    return lineWidth;
  }
  const bool isSteep = (angle.tenths >= 450 && angle.tenths <= kRightAngle) ||
                       (angle.tenths >= kThreeRightAngles && angle.tenths <= 3150);
  return Cut(static_cast<double>(lineWidth) / (isSteep ? angle.sine : angle.cosine));
}

StampExtent Rotated(const StampExtent& extent, const StampAngle& angle) {
  const auto width = static_cast<double>(extent.width);
  const auto height = static_cast<double>(extent.height);
  return {Cut(width * angle.cosine + height * angle.sine),
          Cut(height * angle.cosine + width * angle.sine)};
}

StampExtent ItalicAllowance(const StampExtent& text, std::int64_t pageWidth) {
  constexpr std::int64_t kWidePages = 10;
  const bool isWide = pageWidth == 0 || text.width / pageWidth >= kWidePages;
  const double divisor = isWide ? 100.0 : 14.0;
  return {CutRounded(static_cast<double>(text.width) / divisor),
          CutRounded(static_cast<double>(text.height) / divisor)};
}

std::int64_t RingDiameter(const StampExtent& text, std::size_t units) {
  const auto* row = std::ranges::find_if(
      kRingDivisors, [units](const RingRow& candidate) { return units <= candidate.mostUnits; });
  const double divisor = row == std::end(kRingDivisors) ? kUsualRingDivisor : row->divisor;
  const std::int64_t side = text.width > text.height ? text.width : text.height;
  return side + CutRounded(static_cast<double>(side) / divisor);
}

StampShape ShapeOf(const WatermarkData& record, const StampAngle& angle, Size measured,
                   std::int64_t pageWidth) {
  constexpr double kBoxDivisor = 5;
  StampShape shape = {};
  shape.frame = FrameOf(record);
  shape.text = {measured.width, measured.height};
  if (record.PageWMItalic != 0) {
    shape.allowance = ItalicAllowance(shape.text, pageWidth);
    shape.text.width += shape.allowance.width;
    shape.text.height += shape.allowance.height;
  }
  shape.rotated = Rotated(shape.text, angle);
  shape.lineWidth = LineWidth(record.PageWMSize);
  shape.margin = MarginOf(shape.lineWidth, angle);
  shape.box = shape.text;
  if (shape.frame == StampFrame::kRing) {
    const std::int64_t diameter = RingDiameter(shape.text, FieldText(record.PageWMText).size());
    shape.cell = {diameter, diameter};
    return shape;
  }
  if (shape.frame == StampFrame::kBox) {
    const StampExtent room = {CutRounded(static_cast<double>(shape.text.width) / kBoxDivisor),
                              CutRounded(static_cast<double>(shape.text.height) / kBoxDivisor)};
    shape.allowance.width += room.width;
    shape.allowance.height += room.height;
    shape.box.width += room.width;
    shape.box.height += room.height;
  }
  shape.cell = Rotated(shape.box, angle);
  return shape;
}

// ---- Places -------------------------------------------------------------------------------------

TileCount CappedTiles(std::int64_t columns, std::int64_t rows) {
  const bool areTooMany = columns > kMostTiles || rows > kMostTiles || columns * rows > kMostTiles;
  return areTooMany ? TileCount{} : TileCount{columns, rows};
}

StampPlaces PlacesOf(const WatermarkData& record, const StampAngle& angle, const StampShape& shape,
                     const StampExtent& page) {
  const StampExtent& cell = shape.cell;
  if (record.PageWMRepeat != 0) {
    return {.anchor = {2 * shape.margin + (angle.IsTurned() ? cell.width : 0), shape.margin},
            .tiles = CappedTiles(TimesOnPage(page.width, cell.width),
                                 TimesOnPage(page.height, cell.height))};
  }
  const auto* found = std::ranges::find(kAnchors, record.PageWMPosition, &AnchorRow::position);
  const AnchorRow& row = found == std::end(kAnchors) ? kCentred : *found;
  return {.anchor = {AnchorX(row, angle.IsTurned(), shape.margin, cell.width, page.width),
                     AnchorY(row, shape.margin, cell.height, page.height)},
          .tiles = {}};
}

PagePoint TextOrigin(const StampAngle& angle, const StampShape& shape, PagePoint anchor,
                     double ringRise) {
  const auto [x, y] = anchor;
  const double sine = angle.sine;
  const double cosine = angle.cosine;
  if (shape.frame == StampFrame::kRing) {
    const auto ex = static_cast<double>(shape.allowance.width);
    const auto ey = static_cast<double>(shape.allowance.height);
    const auto cy = static_cast<double>(shape.text.height);
    const std::int64_t diameter = shape.cell.width;
    const std::int64_t besides = (diameter - shape.rotated.width) / 2;
    const std::int64_t above = (diameter - shape.rotated.height) / 2;
    if (angle.tenths < kThreeRightAngles) {
      // On paper the allowance raises the text in full, not by half, and has to.
      return {Cut(static_cast<double>(besides + x) + ex * cosine / 2),
              Cut(static_cast<double>(y - above + diameter) - ey * sine * ringRise -
                  static_cast<double>(Cut(cy * cosine)))};
    }
    return {Cut(static_cast<double>(besides - diameter + x) + ex * sine / 2 +
                static_cast<double>(Cut(cy * sine))),
            Cut(static_cast<double>(above + y) + ey * sine / 2)};
  }
  const std::int64_t halfWidth = shape.allowance.width / 2;
  const std::int64_t halfHeight = shape.allowance.height / 2;
  const auto across = static_cast<double>(halfWidth);
  const auto down = static_cast<double>(halfHeight);
  const auto along = static_cast<double>(shape.box.width - halfWidth);
  if (angle.IsTurned()) {
    return {Cut(-down * sine) - Cut(along * cosine) + x,
            Cut(down * cosine) + Cut(across * sine) + y};
  }
  return {Cut(down * sine) + Cut(across * cosine) + x, Cut(along * sine) + Cut(down * cosine) + y};
}

PagePoint CustomOffset(const WatermarkData& record, const StampShape& shape,
                       const StampExtent& page) {
  constexpr std::int16_t kCustomPosition = 10;
  constexpr std::int64_t kMiddle = 50;
  constexpr double kPercent = 0.01;
  if (record.PageWMPosition != kCustomPosition) {
    return {0, 0};
  }
  const std::int64_t across = (record.WMOffsetX - kMiddle) * page.width;
  const std::int64_t down = (record.WMOffsetY - kMiddle) * (page.height - shape.cell.height);
  return {Cut(static_cast<double>(across) * kPercent), Cut(static_cast<double>(down) * kPercent)};
}

TileRegion TextTile(const StampShape& shape, std::int64_t column, std::int64_t row) {
  return Tile(shape, column, row, 1);
}

TileRegion FrameTile(const StampShape& shape, std::int64_t column, std::int64_t row) {
  return Tile(shape, column, row, 0);
}

// ---- Frames -------------------------------------------------------------------------------------

StampRing RingAt(const StampAngle& angle, const StampShape& shape, PagePoint anchor) {
  const std::int64_t diameter = shape.cell.width;
  const std::int64_t otherX = angle.IsTurned() ? anchor.x - diameter : anchor.x + diameter;
  const std::int64_t otherY = anchor.y + diameter;
  const Rect rect = {Coordinate(std::min(anchor.x, otherX)), Coordinate(std::min(anchor.y, otherY)),
                     Coordinate(std::max(anchor.x, otherX)),
                     Coordinate(std::max(anchor.y, otherY))};
  const std::int64_t half = shape.lineWidth / 2;
  return {Grown(rect, half), Grown(rect, -half)};
}

Quadrilateral BoxCorners(const StampAngle& angle, const StampShape& shape, PagePoint anchor) {
  const auto width = static_cast<double>(shape.box.width);
  const auto height = static_cast<double>(shape.box.height);
  const auto [x, y] = anchor;
  // The way along the text's line, and the way down across it.
  const PagePoint line = {Cut(width * angle.cosine), Cut(width * angle.sine)};
  const PagePoint side = {Cut(height * angle.sine), Cut(height * angle.cosine)};
  if (angle.IsTurned()) {
    return {PagePoint{x - line.x, y}, PagePoint{x, y + line.y},
            PagePoint{x - side.x, y + line.y + side.y}, PagePoint{x - line.x - side.x, y + side.y}};
  }
  return {PagePoint{x, y + line.y}, PagePoint{x + line.x, y},
          PagePoint{x + line.x + side.x, y + side.y}, PagePoint{x + side.x, y + line.y + side.y}};
}

void OrderCorners(Quadrilateral& corners) {
  // Corners of the same x keep their order, as exchanges of neighbours leave them.
  for (std::size_t unsorted = corners.size(); unsorted > 1; --unsorted) {
    for (std::size_t i = 1; i < unsorted; ++i) {
      if (corners[i - 1].x > corners[i].x) {
        std::swap(corners[i - 1], corners[i]);
      }
    }
  }
  if (corners[0].y > corners[1].y) {
    std::swap(corners[0], corners[1]);
  }
  if (corners[2].y < corners[3].y) {
    std::swap(corners[2], corners[3]);
  }
}

void OffsetPolygon(Quadrilateral& corners, std::int64_t distance, Quadrilateral& inner) {
  const PagePoint first = corners[0];
  if (first.x == corners[1].x || first.y == corners[1].y) {
    const bool isUpright = first.x == corners[1].x;
    inner = MovedSides(corners, isUpright, -distance);
    corners = MovedSides(corners, isUpright, distance);
    return;
  }
  const Turn turn = LevellingTurn(first, corners[1]);
  Quadrilateral level = {};
  std::ranges::transform(corners, level.begin(),
                         [&](PagePoint corner) { return turn.Around(first, corner); });
  const auto turnBack = [&](PagePoint corner) { return turn.Back().Around(first, corner); };
  std::ranges::transform(MovedSides(level, false, -distance), inner.begin(), turnBack);
  std::ranges::transform(MovedSides(level, false, distance), corners.begin(), turnBack);
}

StampBox BoxAt(const StampAngle& angle, const StampShape& shape, PagePoint anchor,
               std::int32_t pageBottom) {
  Quadrilateral outer = BoxCorners(angle, shape, anchor);
  OrderCorners(outer);
  for (PagePoint& corner : outer) {
    corner.y = pageBottom - corner.y;
  }
  Quadrilateral inner = {};
  OffsetPolygon(outer, shape.lineWidth, inner);
  return {Mirrored(outer, pageBottom), Mirrored(inner, pageBottom)};
}

}  // namespace ostrel
