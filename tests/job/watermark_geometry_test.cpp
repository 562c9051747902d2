// Where texts and frames stand: the model's tables, and the numbers that a hand can work out.
#include "job/watermark_geometry.h"

#include "core/factory_watermarks.h"
#include "core/text.h"
#include "support/case_name.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace ostrel::test {
namespace {

constexpr StampExtent kPage = {4960, 7015};

WatermarkData Record(std::int16_t angle, std::int16_t border = 0) {
  WatermarkData record = kFactoryWatermarkRecords[kNoWatermark];
  record.PageWMSize = 72;
  record.PageWMAngle = angle;
  record.PageWMBorder = border;
  CopyText(record.PageWMText, u"Draft");
  return record;
}

// ---- The model's tables -------------------------------------------------------------------------

struct GeometryRow {
  std::int16_t angle, border, position, repeat, italic;
  std::int32_t width, height;
  std::int64_t margin, cellWidth, cellHeight, anchorX, anchorY, columns, rows, textX, textY;
};
constexpr GeometryRow kGeometry[] = {
#include "job/expected/stamp_geometry.inc"
};

TEST(WatermarkGeometry, EveryPositionDirectionAndFrame_StandsWhereTheModelSays) {
  for (const GeometryRow& row : kGeometry) {
    SCOPED_TRACE(testing::Message() << "angle " << row.angle << ", frame " << row.border
                                    << ", position " << row.position << ", repeat " << row.repeat);
    WatermarkData record = Record(row.angle, row.border);
    record.PageWMPosition = row.position;
    record.PageWMRepeat = row.repeat;
    record.PageWMItalic = row.italic;
    record.WMOffsetX = 33;
    record.WMOffsetY = 71;
    const StampAngle angle = AngleOf(row.angle);
    const StampShape shape = ShapeOf(record, angle, {row.width, row.height}, kPage.width);
    const StampPlaces places = PlacesOf(record, angle, shape, kPage);
    const PagePoint origin = TextOrigin(angle, shape, places.anchor);
    const PagePoint offset = CustomOffset(record, shape, kPage);
    EXPECT_EQ(shape.margin, row.margin);
    EXPECT_EQ(shape.cell, (StampExtent{row.cellWidth, row.cellHeight}));
    EXPECT_EQ(places.anchor, (PagePoint{row.anchorX, row.anchorY}));
    EXPECT_EQ(places.tiles.columns, row.columns);
    EXPECT_EQ(places.tiles.rows, row.rows);
    EXPECT_EQ(origin.x + offset.x, row.textX);
    EXPECT_EQ(origin.y + offset.y, row.textY);
  }
}

struct BoxRow {
  std::int16_t angle;
  std::int32_t width, height;
  std::int64_t anchorX, anchorY;
  std::int32_t outer[8];
  std::int32_t inner[8];
};
constexpr BoxRow kBoxes[] = {
#include "job/expected/stamp_boxes.inc"
};

double Distance(Point from, Point to) {
  return std::hypot(from.x - to.x, from.y - to.y);
}

// How far a point lies from the line through two others.
double DistanceToLine(Point point, Point a, Point b) {
  const double cross = static_cast<double>(b.x - a.x) * (point.y - a.y) -
                       static_cast<double>(b.y - a.y) * (point.x - a.x);
  return std::abs(cross) / Distance(a, b);
}

StampBox BoxOf(const BoxRow& row) {
  const StampAngle angle = AngleOf(row.angle);
  const StampShape shape =
      ShapeOf(Record(row.angle, 2), angle, {row.width, row.height}, kPage.width);
  return BoxAt(angle, shape, {row.anchorX, row.anchorY}, 7015);
}

TEST(WatermarkGeometry, BoxesInEveryDirection_HaveTheModelsCorners) {
  for (const BoxRow& row : kBoxes) {
    SCOPED_TRACE(testing::Message() << row.angle << ": " << row.width << " by " << row.height);
    const StampBox box = BoxOf(row);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(box.outer[i], (Point{row.outer[2 * i], row.outer[2 * i + 1]})) << i;
      EXPECT_EQ(box.inner[i], (Point{row.inner[2 * i], row.inner[2 * i + 1]})) << i;
    }
  }
}

// Not by the model, but by what a box is: two closed rectangles whose sides run side by side, twice
// the line's width of 50 apart. Cut corners lie some pixels off.
TEST(WatermarkGeometry, BoxesInEveryDirection_AreBandsOfEvenWidth) {
  constexpr double kOff = 5;
  for (const BoxRow& row : kBoxes) {
    SCOPED_TRACE(testing::Message() << row.angle << ": " << row.width << " by " << row.height);
    const StampBox box = BoxOf(row);
    for (std::size_t i = 0; i < 4; ++i) {
      const std::size_t next = (i + 1) % 4;
      EXPECT_NEAR(DistanceToLine(box.inner[i], box.outer[i], box.outer[next]), 100, kOff) << i;
      EXPECT_NEAR(DistanceToLine(box.inner[next], box.outer[i], box.outer[next]), 100, kOff) << i;
      EXPECT_NEAR(Distance(box.outer[i], box.outer[next]) - Distance(box.inner[i], box.inner[next]),
                  200, kOff);
    }
    // Neither is crossed: its diagonals are alike.
    EXPECT_NEAR(Distance(box.outer[0], box.outer[2]), Distance(box.outer[1], box.outer[3]), kOff);
    EXPECT_NEAR(Distance(box.inner[0], box.inner[2]), Distance(box.inner[1], box.inner[3]), kOff);
  }
}

// ---- By hand ------------------------------------------------------------------------------------

struct HeightRow {
  std::int16_t size;
  double scale;
  std::int32_t height;
};
// clang-format off
constexpr HeightRow kHeights[] = {
    // Size, Scale, Height
    {36,  0.0,   306},  // 8.5
    {44,  0.0,   422},  // 9.6: 422.4
    {54,  0.0,   496},  // 9.2: 496.8
    {72,  0.0,   655},  // 9.1: 655.2
    {88,  0.0,   827},  // 9.4: 827.2
    {114, 0.0,  1105},  // 9.7: 1105.8
    {6,   0.0,    58},  // 58.2
    {35,  0.0,   339},  // 339.5
    {37,  0.0,   358},  // 358.9
    {600, 0.0,  5820},
    {72,  1.0,   655},
    {72,  0.5,   327},  // of the cut height: 327.5
    {72,  2.0,  1310},
    {72, -1.0,  -655},
    {-5,  0.0,   -48},  // 48.5
    {32767, 0.0, 317839},  // 317839.9
};
// clang-format on

TEST(WatermarkGeometry, HeightOfLetters_IsSizeByItsFactorAndScaleEachCut) {
  for (const HeightRow& row : kHeights) {
    EXPECT_EQ(StampHeight(row.size, row.scale), row.height) << row.size << " by " << row.scale;
  }
}

TEST(WatermarkGeometry, ScalesBeyondAllReason_GiveANumber) {
  EXPECT_EQ(StampHeight(72, 1e300), kFarthest);
  EXPECT_EQ(StampHeight(72, -std::numeric_limits<double>::infinity()), -kFarthest);
  EXPECT_EQ(StampHeight(72, std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(WatermarkGeometry, Cut_DropsTheFractionAndHoldsWhatIsTooFar) {
  EXPECT_EQ(Cut(2.999), 2);
  EXPECT_EQ(Cut(-2.999), -2);
  EXPECT_EQ(Cut(-0.5), 0);
  EXPECT_EQ(Cut(1e12), kFarthest);
  EXPECT_EQ(Cut(-1e12), -kFarthest);
  EXPECT_EQ(CutRounded(2.5), 3);
  EXPECT_EQ(CutRounded(-2.0), -1);
  EXPECT_EQ(CutRounded(-2.5), -2);
  EXPECT_EQ(Coordinate(std::numeric_limits<std::int64_t>::min()), -kFarthest);
  EXPECT_EQ(Coordinate(std::numeric_limits<std::int64_t>::max()), kFarthest);
  EXPECT_EQ(Coordinate(-17), -17);
}

TEST(WatermarkGeometry, PlatformRect_KeepsItsSizeWhereverItIs) {
  EXPECT_EQ(PlatformRect(1, 2, 3, 4), (Rect{1, 2, 4, 6}));
  const Rect far =
      PlatformRect(std::int64_t{1} << 40, -(std::int64_t{1} << 40), 5, std::int64_t{1} << 40);
  EXPECT_EQ(far.left, kFarthest);
  EXPECT_EQ(far.top, -kFarthest);
  EXPECT_EQ(far.Width(), 5);
  EXPECT_EQ(far.Height(), kFarthest);
}

struct AngleRow {
  std::int16_t degrees;
  std::int32_t tenths;
};
constexpr AngleRow kAngles[] = {{0, 0},     {45, 450},    {90, 900},   {-45, 3150},
                                {-1, 3590}, {-90, 2700},  {360, 0},    {400, 400},
                                {-360, 0},  {-400, 3200}, {32767, 70}, {-32768, 3520}};

// 32767 is 91 circles and 7; -32768 is 8 more than 92 circles short.
TEST(WatermarkGeometry, Angles_AreTenthsWithinTheCircle) {
  for (const AngleRow& row : kAngles) {
    EXPECT_EQ(AngleOf(row.degrees).tenths, row.tenths) << row.degrees;
  }
}

TEST(WatermarkGeometry, RightAngles_MissTheCircleByItsConstant) {
  const StampAngle up = AngleOf(90);
  EXPECT_NEAR(up.cosine, 1.326795e-6, 1e-11);  // 3.14159265358979 less 3.14159, halved
  EXPECT_LT(up.sine, 1);
  // So a side that is cut by itself at a right angle loses one.
  StampShape shape = {};
  shape.box = {2250, 500};
  const Quadrilateral corners = {PagePoint{0, 2249}, PagePoint{0, 0}, PagePoint{499, 0},
                                 PagePoint{499, 2249}};
  EXPECT_EQ(BoxCorners(up, shape, {0, 0}), corners);
  // Cut with what the other side adds, it doesn't.
  EXPECT_EQ(Rotated({2250, 500}, up), (StampExtent{500, 2250}));
}

struct MarginRow {
  std::int16_t degrees;
  std::int64_t margin;  // of a line of 50
};
// clang-format off
constexpr MarginRow kMargins[] = {
    // Angle, Margin
    {0,   50},
    {30,  57},  // by the cosine 0.8660: 57.7
    {44,  69},  // by the cosine 0.7193: 69.5
    {45,  70},  // by the sine: 70.7
    {60,  57},  // by the sine: 57.7
    {89,  50},
    {90,  50},
    {-90, 50},
    {-60, 57},  // 3000 tenths: by the sine
    {-45, 70},  // 3150 tenths: by the sine
    {-44, 69},  // by the cosine
    {-1,  50},
};
// clang-format on

TEST(WatermarkGeometry, Margins_GoByTheSteeperSide) {
  for (const MarginRow& row : kMargins) {
    EXPECT_EQ(MarginOf(50, AngleOf(row.degrees)), row.margin) << row.degrees;
  }
}

TEST(WatermarkGeometry, MarginAtMinus45_IsTheLineByTheSineNotByTheCosine) {
  StampAngle angle = AngleOf(-45);
  EXPECT_EQ(angle.tenths, 3150);
  angle.sine = 0.5;
  angle.cosine = 0.25;
  EXPECT_EQ(MarginOf(25, angle), 50);
  angle = AngleOf(90);
  angle.sine = 0.5;
  EXPECT_EQ(angle.tenths, 900);
  EXPECT_EQ(MarginOf(25, angle), 25);
}

TEST(WatermarkGeometry, LinesOfFrames_GrowWithEach36Points) {
  EXPECT_EQ(LineWidth(6), 25);
  EXPECT_EQ(LineWidth(71), 25);
  EXPECT_EQ(LineWidth(72), 50);
  EXPECT_EQ(LineWidth(107), 50);
  EXPECT_EQ(LineWidth(600), 400);
  EXPECT_EQ(LineWidth(0), 25);
  EXPECT_EQ(LineWidth(-32768), 25);
  EXPECT_EQ(LineWidth(32767), 22750);
}

TEST(WatermarkGeometry, ItalicAllowance_IsAFourteenthOrAHundredthRounded) {
  EXPECT_EQ(ItalicAllowance({2247, 500}, 4960), (StampExtent{161, 36}));  // 160.5, 35.7
  EXPECT_EQ(ItalicAllowance({49599, 70}, 4960), (StampExtent{3543, 5}));  // 9 widths: 3542.8
  EXPECT_EQ(ItalicAllowance({49600, 149}, 4960), (StampExtent{496, 1}));  // 10 widths; 1.49
  EXPECT_EQ(ItalicAllowance({50, 150}, 0), (StampExtent{1, 2}));          // no page: 0.5, 1.5
  EXPECT_EQ(ItalicAllowance({14, 28}, -100), (StampExtent{1, 2}));
}

struct RingRow {
  std::size_t units;
  std::int64_t diameter;  // round 100 by 40
};
constexpr RingRow kRings[] = {{0, 125}, {1, 125}, {2, 133}, {3, 117}, {4, 113}, {64, 113}};

// A quarter, 33.3, 16.7, 12.5 more.
TEST(WatermarkGeometry, Rings_LeaveShortTextsMoreRoom) {
  for (const RingRow& row : kRings) {
    EXPECT_EQ(RingDiameter({100, 40}, row.units), row.diameter) << row.units;
    EXPECT_EQ(RingDiameter({40, 100}, row.units), row.diameter) << row.units;
    EXPECT_EQ(RingDiameter({100, 100}, row.units), row.diameter) << row.units;
  }
}

TEST(WatermarkGeometry, ShapeOfABox_GrowsByAFifthOfTheSlantedText) {
  WatermarkData record = Record(0, 2);
  record.PageWMItalic = 1;
  const StampShape shape = ShapeOf(record, AngleOf(0), {1400, 140}, 4960);
  EXPECT_EQ(shape.text, (StampExtent{1500, 150}));
  EXPECT_EQ(shape.allowance, (StampExtent{400, 40}));
  EXPECT_EQ(shape.box, (StampExtent{1800, 180}));
  EXPECT_EQ(shape.cell, (StampExtent{1800, 180}));
  EXPECT_EQ(shape.rotated, (StampExtent{1500, 150}));
}

TEST(WatermarkGeometry, AllowanceOfARing_IsTheItalicOneAlone) {
  WatermarkData record = Record(0, 1);
  EXPECT_EQ(ShapeOf(record, AngleOf(0), {1400, 140}, 4960).allowance, (StampExtent{0, 0}));
  record.PageWMItalic = 1;
  EXPECT_EQ(ShapeOf(record, AngleOf(0), {1400, 140}, 4960).allowance, (StampExtent{100, 10}));
}

// A ring of 500 round a text of 400 by 100, slanted by 30 and 8, at 30 degrees. The text is 396 and
// 286 wide and high then: ((500 - 396) / 2 + 30 * 0.866 / 2), (500 - 107 - 8 * 0.5 - 86).
TEST(WatermarkGeometry, TextInARing_IsRaisedByTheWholeAllowanceOnPaper) {
  StampShape shape = {};
  shape.frame = StampFrame::kRing;
  shape.text = {400, 100};
  shape.allowance = {30, 8};
  shape.rotated = {396, 286};
  shape.cell = {500, 500};
  EXPECT_EQ(TextOrigin(AngleOf(30), shape, {0, 0}), (PagePoint{64, 303}));
  EXPECT_EQ(TextOrigin(AngleOf(30), shape, {0, 0}, 0.5), (PagePoint{64, 305}));
}

TEST(WatermarkGeometry, ARing_IsAsWideAsHalfALineToBothSides) {
  StampShape shape = {};
  shape.cell = {1000, 1000};
  shape.lineWidth = 75;
  const StampRing right = RingAt(AngleOf(45), shape, {100, 200});
  EXPECT_EQ(right.outer, (Rect{63, 163, 1137, 1237}));
  EXPECT_EQ(right.inner, (Rect{137, 237, 1063, 1163}));
  const StampRing left = RingAt(AngleOf(-45), shape, {1100, 200});
  EXPECT_EQ(left.outer, right.outer);
  EXPECT_EQ(left.inner, right.inner);
}

TEST(WatermarkGeometry, CornersOfALevelBox_GoRoundAndMoveByTheLine) {
  StampShape shape = {};
  shape.frame = StampFrame::kBox;
  shape.box = {400, 100};
  shape.lineWidth = 25;
  const StampBox box = BoxAt(AngleOf(0), shape, {1000, 2000}, 7015);
  const std::array<Point, 4> outer = {Point{975, 1975}, Point{975, 2125}, Point{1425, 2125},
                                      Point{1425, 1975}};
  const std::array<Point, 4> inner = {Point{1025, 2025}, Point{1025, 2075}, Point{1375, 2075},
                                      Point{1375, 2025}};
  EXPECT_EQ(box.outer, outer);
  EXPECT_EQ(box.inner, inner);
}

TEST(WatermarkGeometry, OrderOfCorners_IsLeftByRisingYThenRightByFallingY) {
  Quadrilateral corners = {PagePoint{30, 5}, PagePoint{10, 9}, PagePoint{40, 1}, PagePoint{20, 2}};
  OrderCorners(corners);
  const Quadrilateral ordered = {PagePoint{20, 2}, PagePoint{10, 9}, PagePoint{30, 5},
                                 PagePoint{40, 1}};
  EXPECT_EQ(corners, ordered);
}

// Sides of 3, 4, 5: the factors are near 0.8 and 0.6, since each side counts one more.
TEST(WatermarkGeometry, OffsetOfATiltedRectangle_IsADistanceOnAllSides) {
  // The first edge falls to the right by (400, -300); the rectangle is 500 by 250.
  Quadrilateral corners = {PagePoint{1000, 1000}, PagePoint{1400, 700}, PagePoint{1550, 900},
                           PagePoint{1150, 1200}};
  Quadrilateral inner = {};
  OffsetPolygon(corners, 50, inner);
  // 50 along the edge and 50 across: (-40 - 30, 30 - 40) from the first corner.
  const Quadrilateral outerByHand = {PagePoint{930, 990}, PagePoint{1410, 630},
                                     PagePoint{1620, 910}, PagePoint{1140, 1270}};
  const Quadrilateral innerByHand = {PagePoint{1070, 1010}, PagePoint{1390, 770},
                                     PagePoint{1480, 890}, PagePoint{1160, 1130}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(static_cast<double>(corners[i].x), static_cast<double>(outerByHand[i].x), 3) << i;
    EXPECT_NEAR(static_cast<double>(corners[i].y), static_cast<double>(outerByHand[i].y), 3) << i;
    EXPECT_NEAR(static_cast<double>(inner[i].x), static_cast<double>(innerByHand[i].x), 3) << i;
    EXPECT_NEAR(static_cast<double>(inner[i].y), static_cast<double>(innerByHand[i].y), 3) << i;
  }
}

// ---- Tiles --------------------------------------------------------------------------------------

struct TileCountRow {
  const char* name;
  StampExtent cell;
  StampExtent page;
  std::int64_t columns;
  std::int64_t rows;
};
// clang-format off
constexpr TileCountRow kTileCounts[] = {
    // Name, Cell, Page, Columns, Rows
    {"Usual",                {1000, 2000},  {4960, 7015}, 5, 4},
    {"FitsExactly",          {4960, 7015},  {4960, 7015}, 2, 2},
    {"LargerThanThePage",    {4961, 7016},  {4960, 7015}, 1, 1},
    {"WithoutWidth",         {0, 2000},     {4960, 7015}, 1, 4},
    {"WithoutHeight",        {1000, 0},     {4960, 7015}, 5, 1},
    {"Negative",             {-7, -7},      {4960, 7015}, 1, 1},
    {"PageWithoutSize",      {1000, 2000},  {0, 0},       1, 1},
    {"PageTurnedRound",      {1000, 2000},  {-4960, -10}, -3, 1},
    {"SmallestLetters",      {11, 57},      {4960, 7015}, 451, 124},
    {"NotTooMany",           {1, 100},      {999, 9999},  1000, 100},
    {"JustTooMany",          {1, 100},      {1000, 9999}, 1, 1},
    {"TooManyAreOne",        {1, 1},        {4960, 7015}, 1, 1},
    {"TooManyOnAHugePage",   {1, 1},        {0x7FFFFFFF, 0x7FFFFFFF}, 1, 1},
};
// clang-format on

class TileCounts : public testing::TestWithParam<TileCountRow> {};

TEST_P(TileCounts, AreOneMoreThanFit) {
  const TileCountRow& row = GetParam();
  WatermarkData record = Record(0);
  record.PageWMRepeat = 1;
  StampShape shape = {};
  shape.cell = row.cell;
  const StampPlaces places = PlacesOf(record, AngleOf(0), shape, row.page);
  EXPECT_EQ(places.tiles.columns, row.columns);
  EXPECT_EQ(places.tiles.rows, row.rows);
}

INSTANTIATE_TEST_SUITE_P(Cells, TileCounts, testing::ValuesIn(kTileCounts), CaseName());

TEST(WatermarkGeometry, TilesAboveTheCap_AreOne) {
  struct Row {
    TileCount wished;
    TileCount given;
  };
  constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();
  for (const Row& row : {Row{{1000, 100}, {1000, 100}}, Row{{100000, 1}, {100000, 1}},
                         Row{{11, 9091}, {1, 1}},  // 100001
                         Row{{100001, 1}, {1, 1}}, Row{{-3, 100000}, {-3, 100000}},
                         Row{{-3, 100001}, {1, 1}}, Row{{kHuge, kHuge}, {1, 1}}}) {
    const TileCount tiles = CappedTiles(row.wished.columns, row.wished.rows);
    EXPECT_EQ(tiles.columns, row.given.columns) << row.wished.columns << ", " << row.wished.rows;
    EXPECT_EQ(tiles.rows, row.given.rows) << row.wished.columns << ", " << row.wished.rows;
  }
}

TEST(WatermarkGeometry, WordsOfATile_AddMarginsOnlyWithAFrame) {
  StampShape shape = {};
  shape.cell = {700, 300};
  shape.margin = 57;
  for (const StampFrame frame : {StampFrame::kRing, StampFrame::kBox}) {
    shape.frame = frame;
    const TileRegion text = TextTile(shape, 2, 3);
    const TileRegion ring = FrameTile(shape, 2, 3);
    EXPECT_EQ(text.Width, 700);
    EXPECT_EQ(text.Height, 300);
    EXPECT_EQ(text.Column, 2);
    EXPECT_EQ(text.Row, 3);
    EXPECT_EQ(text.ImageOffsetX, 0);
    EXPECT_EQ(text.ImageOffsetY, 0);
    EXPECT_EQ(text.TextOffsetX, 171);
    EXPECT_EQ(text.TextOffsetY, 228);
    EXPECT_EQ(ring.Width, 700);
    EXPECT_EQ(ring.Height, 300);
    EXPECT_EQ(ring.Column, 2);
    EXPECT_EQ(ring.Row, 3);
    EXPECT_EQ(ring.TextOffsetX, 114);
    EXPECT_EQ(ring.TextOffsetY, 171);
    EXPECT_EQ(ring.Margin, 57);
  }
  shape.frame = StampFrame::kNone;
  EXPECT_EQ(TextTile(shape, 2, 3).TextOffsetX, 0);
  EXPECT_EQ(TextTile(shape, 2, 3).TextOffsetY, 0);
}

TEST(WatermarkGeometry, Position10_MovesByPercentOfThePageAndOfTheRoomLeft) {
  WatermarkData record = Record(0);
  record.PageWMPosition = 10;
  record.WMOffsetX = 25;
  record.WMOffsetY = 73;
  StampShape shape = {};
  shape.cell = {2000, 1000};
  // -25 * 4960 / 100, and 23 * 6015 / 100 = 1383.45.
  EXPECT_EQ(CustomOffset(record, shape, kPage), (PagePoint{-1240, 1383}));
  record.PageWMPosition = 9;
  EXPECT_EQ(CustomOffset(record, shape, kPage), (PagePoint{0, 0}));
}

}  // namespace
}  // namespace ostrel::test
