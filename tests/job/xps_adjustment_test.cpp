// What printing to an XPS document is told: which properties are changed, by what record, and where
// the walk over them ends.
#include "job/xps_adjustment.h"

#include "config/setting_stores.h"
#include "core/paper_tables.h"
#include "support/caller_block.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <array>
#include <cstring>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

namespace ostrel {
namespace {

using test::CallerBlock;
using testing::ElementsAre;

using Words = std::vector<std::uint16_t>;

constexpr std::uint32_t kOk = 0;
constexpr std::uint32_t kNotImplemented = 0x80004001;
constexpr std::int32_t kUntouched = -77;
constexpr ImageableAreaBlob kUntouchedArea = {0xAAAAAAAA, 0xBBBBBBBB, 0xCCCCCCCC, 0xDDDDDDDD};

constexpr char16_t kCompression[] = u"MxdcImageCompressionType";
constexpr char16_t kResolution[] = u"MxdcDotsPerInch";
constexpr char16_t kArea[] = u"MxdcImageableArea";

// A collection as the print system hands it over.
class Properties {
 public:
  Properties& AddNumber(std::u16string name, std::int32_t type = 2) {
    PrintNamedProperty& added = Add(std::move(name), type);
    added.propertyValue.value.propertyInt32 = kUntouched;
    return *this;
  }
  // All areas of a collection share one buffer.
  Properties& AddArea(std::uint32_t sizeBytes = 16, bool hasBuffer = true) {
    constexpr std::int32_t kBuffer = 10;
    PrintNamedProperty& added = Add(kArea, kBuffer);
    added.propertyValue.value.propertyBlob = {sizeBytes, hasBuffer ? &area_ : nullptr};
    return *this;
  }

  std::uint32_t Ask(const PublicDevmode* record, std::uint32_t recordBytes = 0) {
    PrintPropertiesCollection collection = {static_cast<std::uint32_t>(rows_.size()), rows_.data()};
    return MxdcGetPDEVAdjustment(recordBytes, record, sizeof(collection), &collection);
  }
  std::uint32_t Ask(const DriverDevmode& record) {
    return Ask(&record.publicDevmode, sizeof(record));
  }

  std::int32_t Number(std::size_t row) const {
    return rows_.at(row).propertyValue.value.propertyInt32;
  }
  const ImageableAreaBlob& Area() const { return area_; }
  std::vector<PrintNamedProperty>& rows() { return rows_; }

 private:
  PrintNamedProperty& Add(std::u16string name, std::int32_t type) {
    names_.push_back(std::move(name));
    PrintNamedProperty property = {};
    property.propertyName = names_.back().data();
    property.propertyValue.ePropertyType = type;
    rows_.push_back(property);
    return rows_.back();
  }

  std::deque<std::u16string> names_;
  ImageableAreaBlob area_ = kUntouchedArea;
  std::vector<PrintNamedProperty> rows_;
};

class XpsAdjustment : public testing::Test {
 protected:
  test::TestWorld world_;
  DriverDevmode record_ = test::DefaultRecord();
};

// ---- The collection -----------------------------------------------------------------------------

TEST_F(XpsAdjustment, OfNoPropertiesIsNotImplemented) {
  EXPECT_EQ(MxdcGetPDEVAdjustment(0, &record_.publicDevmode, 16, nullptr), kNotImplemented);
  EXPECT_EQ(MxdcGetPDEVAdjustment(0, nullptr, 0, nullptr), kNotImplemented);
  PrintPropertiesCollection nowhere = {5, nullptr};
  EXPECT_EQ(MxdcGetPDEVAdjustment(0, nullptr, 16, &nowhere), kNotImplemented);
  Properties properties;
  properties.AddNumber(kCompression);
  PrintPropertiesCollection none = {0, properties.rows().data()};
  EXPECT_EQ(MxdcGetPDEVAdjustment(0, nullptr, 16, &none), kNotImplemented);
  EXPECT_EQ(properties.Number(0), kUntouched);
}

TEST_F(XpsAdjustment, OfACollectionThatIsTooShortIsNotImplemented) {
  for (const auto& [bytes, answered] :
       {std::pair{1U, false}, {15U, false}, {16U, true}, {0U, true}, {48U, true}}) {
    Properties properties;
    properties.AddNumber(kCompression);
    PrintPropertiesCollection collection = {1, properties.rows().data()};
    EXPECT_EQ(MxdcGetPDEVAdjustment(0, nullptr, bytes, &collection),
              answered ? kOk : kNotImplemented)
        << bytes;
    EXPECT_EQ(properties.Number(0), answered ? 0 : kUntouched) << bytes;
  }
}

TEST_F(XpsAdjustment, PassesOverOtherNames) {
  Properties properties;
  for (const char16_t* name :
       {u"", u"Mxdc", u"mxdcdotsperinch", u"MxdcDotsPerInc", u"MxdcDotsPerInch ",
        u"MxdcDotsPerInch2", u"MxdcImageCompressionTyp", u"MXDCIMAGEABLEAREA"}) {
    properties.AddNumber(name);
  }
  properties.AddNumber(u"x").rows().back().propertyName = nullptr;
  EXPECT_EQ(properties.Ask(record_), kNotImplemented);
  for (std::size_t i = 0; i < properties.rows().size(); ++i) {
    EXPECT_EQ(properties.Number(i), kUntouched) << i;
  }
  properties.AddNumber(kCompression);
  EXPECT_EQ(properties.Ask(record_), kOk);
  EXPECT_EQ(properties.Number(9), 0);
}

TEST_F(XpsAdjustment, ChangesAllThree) {
  record_.publicDevmode.dmPrintQuality = 0;
  record_.publicDevmode.dmPaperSize = 9;
  Properties properties;
  properties.AddArea().AddNumber(kResolution).AddNumber(kCompression);
  EXPECT_EQ(properties.Ask(record_), kOk);
  EXPECT_EQ(properties.Area(), (ImageableAreaBlob{4000, 4000, 206000, 293000}));
  EXPECT_EQ(properties.Number(1), 600);
  EXPECT_EQ(properties.Number(2), 0);
}

TEST_F(XpsAdjustment, ChangesAPropertyThatComesTwiceTwice) {
  Properties properties;
  properties.AddNumber(kCompression).AddNumber(kCompression);
  EXPECT_EQ(properties.Ask(record_), kOk);
  EXPECT_EQ(properties.Number(0), 0);
  EXPECT_EQ(properties.Number(1), 0);
}

// ---- Where the walk ends ------------------------------------------------------------------------

// All types that the platform knows, and some that it doesn't.
constexpr std::int32_t kTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 0x10002, 0x7FFFFFFF};

TEST_F(XpsAdjustment, EndsAtAWrongTypeWithTheResultSoFar) {
  for (const char16_t* name : {kCompression, kResolution, kArea}) {
    for (const std::int32_t type : kTypes) {
      if (type == (name == kArea ? 10 : 2)) {
        continue;
      }
      for (const bool hasOneBefore : {false, true}) {
        Properties properties;
        if (hasOneBefore) {
          properties.AddNumber(kCompression);
        }
        properties.AddNumber(name, type).AddNumber(kResolution).AddArea();
        EXPECT_EQ(properties.Ask(record_), hasOneBefore ? kOk : kNotImplemented) << type;
        const std::size_t wrong = hasOneBefore ? 1 : 0;
        EXPECT_EQ(properties.Number(wrong), kUntouched) << type;
        EXPECT_EQ(properties.Number(wrong + 1), kUntouched) << type;
        EXPECT_EQ(properties.Area(), kUntouchedArea) << type;
      }
    }
  }
}

// The type counts also where the record has a quality of its own.
TEST_F(XpsAdjustment, EndsAtAResolutionOfAWrongTypeWhateverTheQuality) {
  record_.publicDevmode.dmPrintQuality = 300;
  Properties properties;
  properties.AddNumber(kResolution, 3).AddNumber(kCompression);
  EXPECT_EQ(properties.Ask(record_), kNotImplemented);
  EXPECT_EQ(properties.Number(1), kUntouched);
}

TEST_F(XpsAdjustment, EndsAtAnAreaThatCannotBeWritten) {
  struct Case {
    std::uint32_t sizeBytes;
    bool hasBuffer;
    bool hasRecord;
  };
  for (const Case& row : {Case{8, true, true},
                          {15, true, true},
                          {17, true, true},
                          {0, true, true},
                          {0x80000010, true, true},
                          {16, false, true},
                          {16, true, false}}) {
    Properties properties;
    properties.AddArea(row.sizeBytes, row.hasBuffer).AddNumber(kCompression);
    EXPECT_EQ(properties.Ask(row.hasRecord ? &record_.publicDevmode : nullptr), kNotImplemented)
        << row.sizeBytes;
    EXPECT_EQ(properties.Area(), kUntouchedArea) << row.sizeBytes;
    EXPECT_EQ(properties.Number(1), kUntouched) << row.sizeBytes;
  }
}

// ---- The resolution -----------------------------------------------------------------------------

TEST_F(XpsAdjustment, LeavesTheResolutionToARecordWithAQuality) {
  for (const std::int16_t quality : std::vector<std::int16_t>{1, 300, 600, 1200, 32767}) {
    record_.publicDevmode.dmPrintQuality = quality;
    Properties properties;
    properties.AddNumber(kResolution);
    EXPECT_EQ(properties.Ask(record_), kNotImplemented) << quality;
    EXPECT_EQ(properties.Number(0), kUntouched) << quality;
    properties.AddNumber(kCompression).AddNumber(kResolution);
    EXPECT_EQ(properties.Ask(record_), kOk) << quality;
    EXPECT_EQ(properties.Number(2), kUntouched) << quality;
  }
}

TEST_F(XpsAdjustment, SetsTheResolutionForARecordWithoutAQuality) {
  for (const int quality : {0, -1, -4, -32768}) {
    record_.publicDevmode.dmPrintQuality = static_cast<std::int16_t>(quality);
    Properties properties;
    properties.AddNumber(kResolution);
    EXPECT_EQ(properties.Ask(record_), kOk) << quality;
    EXPECT_EQ(properties.Number(0), 600) << quality;
  }
  Properties properties;
  properties.AddNumber(kResolution);
  EXPECT_EQ(properties.Ask(nullptr), kOk);
  EXPECT_EQ(properties.Number(0), 600);
}

// ---- The imageable area -------------------------------------------------------------------------

struct PaperCase {
  std::int16_t id;
  std::uint32_t width_tenths_mm;
  std::uint32_t length_tenths_mm;
};
// In tenths of a millimetre, as the papers are sold or as the driver's own are told.
// clang-format off
constexpr PaperCase kPapers[] = {
    {  1, 2159, 2794}, {  9, 2100, 2970}, {  5, 2159, 3556}, { 13, 1820, 2570}, { 37,  984, 1905},
    { 27, 1100, 2200}, { 28, 1620, 2290}, { 20, 1048, 2413}, { 11, 1480, 2100}, { 43, 1000, 1480},
    {250, 1950, 2700}, {245, 1850, 2600}, {252, 1350, 1950}, {246, 1300, 1850}, { 70, 1050, 1480},
    { 34, 1760, 2500}, {  7, 1842, 2667}, { 14, 2159, 3302}, {243, 2160, 3430}, {  6, 1397, 2159},
    { 31, 1140, 1620}, {242, 1200, 2300}, {241, 1250, 1760}, {276, 1050, 2350}, {277, 1480, 2000},
    {278, 1200, 2350}, {279, 1200, 2350}, {280, 1140, 1620},
};
// clang-format on
static_assert(std::size(kPapers) == kPaperRows);

ImageableAreaBlob AreaWithin(std::uint32_t width_tenths_mm, std::uint32_t length_tenths_mm) {
  return {4000, 4000, width_tenths_mm * 100 - 4000, length_tenths_mm * 100 - 4000};
}
const ImageableAreaBlob kWithinA4 = {4000, 4000, 206000, 293000};
const ImageableAreaBlob kWithinLetter = {4000, 4000, 211900, 275400};

class XpsArea : public XpsAdjustment {
 protected:
  ImageableAreaBlob Area() {
    Properties properties;
    properties.AddArea();
    EXPECT_EQ(properties.Ask(record_), kOk);
    return properties.Area();
  }
  // Under a name of the id's, in the place of one that has it.
  void Store(std::uint32_t paperId, std::uint16_t width_px600, std::uint16_t length_px600) {
    CustomPaperRecord paper = {};
    paper.PaperId = paperId;
    paper.Width = width_px600;
    paper.Length = length_px600;
    paper.Name[0] = static_cast<char16_t>(u'A' + paperId - kFirstCustomPaperId);
    ASSERT_TRUE(InitSettingsFile());
    ASSERT_TRUE(CustomPaperStore().Save(paper.Name, paper));
  }
};

TEST_F(XpsArea, IsEachPaperOfTheTableLessFourMillimetres) {
  world_.platform.locale.country = u"1";
  for (const PaperCase& paper : kPapers) {
    for (const std::uint16_t extra : Words{7676, 0, 7675}) {
      record_.publicDevmode.dmPaperSize = paper.id;
      record_.publicDevmode.dmDriverExtra = extra;
      EXPECT_EQ(Area(), AreaWithin(paper.width_tenths_mm, paper.length_tenths_mm)) << paper.id;
    }
  }
}

// Landscape plays no part.
TEST_F(XpsArea, IsThatOfThePortraitPaper) {
  record_.publicDevmode.dmPaperSize = 9;
  record_.publicDevmode.dmOrientation = 2;
  EXPECT_EQ(Area(), kWithinA4);
}

struct CountryCase {
  std::u16string country;
  bool usesLetter;
};
const CountryCase kCountries[] = {
    {u"1", true},    {u"2", true},    {u"50", true}, {u"59", true},  {u"500", true},
    {u"599", true},  {u"0", false},   {u"3", false}, {u"49", false}, {u"60", false},
    {u"499", false}, {u"600", false}, {u"x", false},
};

TEST_F(XpsArea, IsThatOfTheCountrysPaperForAnUnknownOne) {
  for (const CountryCase& row : kCountries) {
    for (const int paper : {0, 2, 8, 256, 287, 320, 32767, -1, -32768}) {
      world_.platform.locale.country = row.country;
      record_.publicDevmode.dmPaperSize = static_cast<std::int16_t>(paper);
      EXPECT_EQ(Area(), row.usesLetter ? kWithinLetter : kWithinA4) << paper;
    }
  }
}

TEST_F(XpsArea, IsThatOfLetterWhenTheCountryCannotBeTold) {
  world_.platform.faults.FailOperation("GetLocaleInfoW");
  record_.publicDevmode.dmPaperSize = 0;
  EXPECT_EQ(Area(), kWithinLetter);
}

// 3000 pixels are 127.0 mm, 4000 are 169.3 mm.
TEST_F(XpsArea, IsThatOfAStoredPaper) {
  for (const std::uint16_t id : Words{288, 300, 319}) {
    Store(id, 3000, 4000);
    record_.publicDevmode.dmPaperSize = static_cast<std::int16_t>(id);
    EXPECT_EQ(Area(), (ImageableAreaBlob{4000, 4000, 123000, 165300})) << id;
  }
}

// The size that the lookup has for it, whatever the country.
TEST_F(XpsArea, IsThatOfA4ForAnOwnPaperThatIsNotStored) {
  world_.platform.locale.country = u"1";
  record_.publicDevmode.dmPaperSize = 300;
  EXPECT_EQ(Area(), kWithinA4);
}

TEST_F(XpsArea, IsThatOfTheCountrysPaperForAnOwnOneInAForeignRecord) {
  Store(300, 3000, 4000);
  record_.publicDevmode.dmPaperSize = 300;
  for (const std::uint16_t extra : Words{0, 7675, 7677}) {
    record_.publicDevmode.dmDriverExtra = extra;
    world_.platform.locale.country = u"1";
    EXPECT_EQ(Area(), kWithinLetter) << extra;
    world_.platform.locale.country = u"49";
    EXPECT_EQ(Area(), kWithinA4) << extra;
  }
}

// A settings file may hold any size. 100 pixels are 4.2 mm, 189 are 8.0 mm, 190 are 8.04: 8.0 too.
// The largest are 65535 pixels, 2774.3 mm.
TEST_F(XpsArea, OfAPaperSmallerThanItsMarginsIsEmpty) {
  struct Case {
    std::uint16_t width, length;
    std::uint32_t right, bottom;
  };
  for (const Case& row : {Case{0, 0, 4000, 4000},
                          {100, 189, 4000, 4000},
                          {191, 192, 4100, 4100},
                          {65535, 94, 2770300, 4000}}) {
    Store(288, row.width, row.length);
    record_.publicDevmode.dmPaperSize = 288;
    EXPECT_EQ(Area(), (ImageableAreaBlob{4000, 4000, row.right, row.bottom})) << row.width;
  }
}

TEST_F(XpsArea, IsWrittenWhereverTheBufferLies) {
  alignas(8) std::array<std::byte, 24> bytes = {};
  Properties properties;
  properties.AddArea().rows()[0].propertyValue.value.propertyBlob.pBuf = bytes.data() + 1;
  record_.publicDevmode.dmPaperSize = 9;
  EXPECT_EQ(properties.Ask(record_), kOk);
  ImageableAreaBlob area = {};
  std::memcpy(&area, bytes.data() + 1, sizeof(area));
  EXPECT_EQ(area, kWithinA4);
  EXPECT_EQ(bytes[0], std::byte{0});
  EXPECT_EQ(bytes[17], std::byte{0});
}

// ---- Records that are too short -----------------------------------------------------------------

struct ShortCase {
  const char* name;
  std::uint16_t size;  // dmSize, and the bytes that are there
  std::uint32_t told;  // by the caller
  bool isRecord;
  bool hasPaper;
  bool hasQuality;
};
void PrintTo(const ShortCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr ShortCase kShortCases[] = {
    //                  size  told  record  paper  quality
    {"Whole",           220,  220,  true,   true,  true},
    {"NotTold",         220,  0,    true,   true,  true},
    {"ToldLonger",      220,  7896, true,   true,  true},
    {"ToldShort",       220,  91,   true,   true,  false},
    {"ToldQuality",     220,  92,   true,   true,  true},
    {"ToldPaper",       220,  80,   true,   true,  false},
    {"ToldHalfAPaper",  220,  79,   true,   false, false},
    {"ToldHeader",      220,  72,   true,   false, false},
    {"ToldLess",        220,  71,   false,  false, false},
    {"ToldOne",         220,  1,    false,  false, false},
    {"SizeOfHeader",    72,   0,    true,   false, false},
    {"SizeOfHeaderTold",72,   220,  true,   false, false},
    {"HalfAPaper",      79,   0,    true,   false, false},
    {"Paper",           80,   0,    true,   true,  false},
    {"HalfAQuality",    91,   0,    true,   true,  false},
    {"Quality",         92,   0,    true,   true,  true},
};
// clang-format on

class ShortRecord : public testing::TestWithParam<ShortCase> {};
INSTANTIATE_TEST_SUITE_P(Sizes, ShortRecord, testing::ValuesIn(kShortCases), test::CaseName());

TEST_P(ShortRecord, CountsForTheWordsThatItHolds) {
  const test::TestWorld world;
  DriverDevmode record = test::DefaultRecord();
  record.publicDevmode.dmPaperSize = 5;
  record.publicDevmode.dmPrintQuality = 300;
  CallerBlock block = CallerBlock::Sized(record, GetParam().size, 0);
  Properties properties;
  properties.AddNumber(kResolution).AddArea();
  const std::uint32_t result = properties.Ask(block.get(), GetParam().told);
  EXPECT_EQ(properties.Number(0), GetParam().hasQuality ? kUntouched : 600);
  const ImageableAreaBlob area = GetParam().hasPaper ? AreaWithin(2159, 3556) : kWithinA4;
  EXPECT_EQ(properties.Area(), GetParam().isRecord ? area : kUntouchedArea);
  EXPECT_EQ(result, kOk);
}

// A record that tells less than the words of its own header still has them.
TEST_F(XpsAdjustment, TakesARecordOfSizeZeroForOneWithoutWords) {
  CallerBlock block(record_, 72);
  block->dmSize = 0;
  Properties properties;
  properties.AddArea().AddNumber(kResolution);
  EXPECT_EQ(properties.Ask(block.get()), kOk);
  EXPECT_EQ(properties.Area(), kWithinA4);
  EXPECT_EQ(properties.Number(1), 600);
}

}  // namespace
}  // namespace ostrel
