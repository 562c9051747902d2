// The watermarks that come with the driver, byte by byte, and what a repair keeps of a watermark.
#include "core/factory_watermarks.h"

#include "core/process_state.h"
#include "support/case_name.h"
#include "support/test_world.h"
#include "support/watermark_bytes.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel {
namespace {

using test::ByteRecord;
using test::BytesOf;
using test::Difference;
using test::FactoryFacts;
using test::Mark;
using test::RecordOf;
using test::WatermarkBytes;
using test::WatermarkFacts;

class FactoryRecord : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Places, FactoryRecord, testing::Range<std::size_t>(0, 6),
                         testing::PrintToStringParamName());

TEST_P(FactoryRecord, IsExactInAllItsBytes) {
  const test::TestWorld world;
  const ByteRecord expected = WatermarkBytes(FactoryFacts().at(GetParam()));
  EXPECT_EQ(Difference(BytesOf(kFactoryWatermarkRecords.at(GetParam())), expected), "");
  EXPECT_EQ(Difference(BytesOf(world.process.DefaultWatermarks.at(GetParam())), expected), "");
}

TEST(FactoryRecords, AreSix) {
  EXPECT_EQ(FactoryFacts().size(), kFactoryWatermarkRecords.size());
}

// What a repair of a settings record leaves of one that has it in force.
WatermarkData Repaired(const WatermarkData& watermark) {
  auto record = std::make_unique<PrivateDevmode>();
  InitPrivateDevmode(record.get(), nullptr);
  record->WatermarkData = watermark;
  ValidatePrivateDevmode(record.get());
  return record->WatermarkData;
}

TEST_P(FactoryRecord, PassesARepairButForTheChosenFont) {
  const test::TestWorld world;
  const WatermarkFacts facts = FactoryFacts().at(GetParam());
  ByteRecord expected = WatermarkBytes(facts);
  test::PutNumber(expected, 802, 2, facts.fontChosen == 0 ? 0 : 0x8F30);
  EXPECT_EQ(Difference(BytesOf(Repaired(RecordOf(facts))), expected), "");
}

struct RepairCase {
  const char* name;
  std::size_t offset;
  std::size_t width;
  std::int64_t given;
  std::int64_t kept;
};
void PrintTo(const RepairCase& row, std::ostream* out) {
  *out << row.name;
}

// clang-format off
constexpr RepairCase kRepairs[] = {
    // Name, offset, width, given, kept
    {"TypeAndIdOfZero",         0,   4, 0,         0},
    {"Id32",                    0,   2, 32,        32},
    {"Id33",                    0,   2, 33,        0},
    {"TypeImage",               2,   2, 2,         2},
    {"Type3",                   2,   2, 3,         0},
    {"Size6",                   784, 2, 6,         6},
    {"Size5",                   784, 2, 5,         72},
    {"Size600",                 784, 2, 600,       600},
    {"Size601",                 784, 2, 601,       72},
    {"Bold2",                   786, 2, 2,         0},
    {"Italic2",                 788, 2, 2,         0},
    {"Transparent2",            790, 2, 2,         0},
    {"Border2",                 792, 2, 2,         2},
    {"Border3",                 792, 2, 3,         0},
    {"Angle90",                 794, 2, 90,        90},
    {"Angle91",                 794, 2, 91,        0},
    {"AngleMinus90",            794, 2, 0xFFA6,    0xFFA6},
    {"AngleMinus91",            794, 2, 0xFFA5,    0},
    {"Scale1000",               796, 2, 1000,      1000},
    {"Scale1001",               796, 2, 1001,      0},
    {"Position10",              798, 2, 10,        10},
    {"Position11",              798, 2, 11,        0},
    {"Repeat2",                 800, 2, 2,         0},
    {"FontChosen",              802, 2, 1,         0x8F30},
    {"White",                   804, 4, 0xFFFFFF,  0xFFFFFF},
    {"ColourBeyondWhite",       804, 4, 0x1000000, 13311},
    {"Reserved7",               808, 2, 7,         7},
    {"Reserved8",               808, 2, 8,         0},
};
// clang-format on

class WatermarkRepair : public testing::TestWithParam<RepairCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, WatermarkRepair, testing::ValuesIn(kRepairs), test::CaseName());

TEST_P(WatermarkRepair, KeepsWhatIsInRange) {
  const test::TestWorld world;
  WatermarkFacts plain = Mark(7, u"Draft");
  plain.fontChosen = 0;
  ByteRecord bytes = WatermarkBytes(plain);
  test::PutNumber(bytes, GetParam().offset, GetParam().width, GetParam().given);
  WatermarkData given;
  test::SetBytes(given, bytes);
  test::PutNumber(bytes, GetParam().offset, GetParam().width, GetParam().kept);
  EXPECT_EQ(Difference(BytesOf(Repaired(given)), bytes), "");
}

// Each text is cut by a terminator in its last unit; the words that would stand in for a text that
// is too long never do.
TEST(WatermarkRepairOfTexts, CutsThemAndNothingStandsIn) {
  const test::TestWorld world;
  WatermarkData given = RecordOf(Mark(7, u"Draft"));
  std::ranges::fill(given.PageWMName, u'n');
  std::ranges::fill(given.PageWMText, u't');
  std::ranges::fill(given.PageWMTypeface, u'f');
  std::ranges::fill(given.PageWMFileName, u'b');
  const WatermarkData kept = Repaired(given);
  EXPECT_EQ(std::u16string(kept.PageWMName), std::u16string(32, u'n'));
  EXPECT_EQ(std::u16string(kept.PageWMText), std::u16string(64, u't'));
  EXPECT_EQ(std::u16string(kept.PageWMTypeface), std::u16string(31, u'f'));
  EXPECT_EQ(std::u16string(kept.PageWMFileName), std::u16string(259, u'b'));
}

}  // namespace
}  // namespace ostrel
