#include "core/settings_record.h"

#include "support/byte_record.h"
#include "support/case_name.h"
#include "support/record_layout.h"
#include "support/test_world.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::ByteRecord;
using test::Check;
using test::Difference;
using test::Kind;
using test::PutNumber;
using test::PutText;
using test::RecordPlace;

constexpr char16_t kOstrel[] = u"Ostrel Hazel 2 Series";

constexpr std::uint32_t kNoWatermarkId = 146;
constexpr std::uint32_t kFavoriteId = 202;

// ---- The public part ----------------------------------------------------------------------------

struct PublicLocale {
  const char* name;
  const char16_t* country;
  std::int16_t paperSize;
  std::int16_t paperWidth;
  std::int16_t paperLength;
  const char16_t* formName;
};

// The defaults at the places that the platform gives them in its record of 220 bytes.
ByteRecord ExpectedPublicRecord(std::u16string_view deviceName, const PublicLocale& locale) {
  ByteRecord bytes(220);
  PutText(bytes, 0, deviceName);
  PutNumber(bytes, 64, 2, 1025);        // dmSpecVersion
  PutNumber(bytes, 66, 2, 1536);        // dmDriverVersion
  PutNumber(bytes, 68, 2, 220);         // dmSize
  PutNumber(bytes, 70, 2, 7676);        // dmDriverExtra
  PutNumber(bytes, 72, 4, 0x0200BF0F);  // dmFields
  PutNumber(bytes, 76, 2, 1);           // dmOrientation
  PutNumber(bytes, 78, 2, locale.paperSize);
  PutNumber(bytes, 80, 2, locale.paperLength);
  PutNumber(bytes, 82, 2, locale.paperWidth);
  PutNumber(bytes, 84, 2, 100);  // dmScale
  PutNumber(bytes, 86, 2, 1);    // dmCopies
  PutNumber(bytes, 88, 2, 7);    // dmDefaultSource
  PutNumber(bytes, 90, 2, 600);  // dmPrintQuality
  PutNumber(bytes, 92, 2, 1);    // dmColor
  PutNumber(bytes, 94, 2, 1);    // dmDuplex
  PutNumber(bytes, 96, 2, 600);  // dmYResolution
  PutNumber(bytes, 98, 2, 1);    // dmTTOption
  PutNumber(bytes, 100, 2, 0);   // dmCollate
  PutText(bytes, 102, locale.formName);
  PutNumber(bytes, 196, 4, 1);  // dmMediaType
  return bytes;
}

constexpr PublicLocale kA4 = {"A4", u"49", 9, 2100, 2970, u"A4"};
constexpr PublicLocale kLetter = {"Letter", u"1", 1, 2159, 2794, u"Letter"};

template <typename Record>
Record Poisoned() {
  Record record;
  test::SetBytes(record, ByteRecord(sizeof(Record), 0xCD));
  return record;
}

class PublicDefaults : public testing::TestWithParam<PublicLocale> {};

INSTANTIATE_TEST_SUITE_P(Locales, PublicDefaults, testing::Values(kA4, kLetter), test::CaseName());

TEST_P(PublicDefaults, AreExactInAllTheirBytes) {
  test::TestWorld world;
  world.platform.locale.country = GetParam().country;
  auto record = Poisoned<PublicDevmode>();
  EXPECT_EQ(InitPublicDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPublicRecord(kOstrel, GetParam())), "");
}

struct NameLength {
  const char* name;
  std::size_t given;
  std::size_t kept;
};

class PublicDeviceName : public testing::TestWithParam<NameLength> {};

INSTANTIATE_TEST_SUITE_P(Lengths, PublicDeviceName,
                         testing::Values(NameLength{"Empty", 0, 0}, NameLength{"OneUnit", 1, 1},
                                         NameLength{"FillsTheField", 31, 31},
                                         NameLength{"OneTooLong", 32, 31},
                                         NameLength{"MuchTooLong", 40, 31}),
                         test::CaseName());

TEST_P(PublicDeviceName, IsCutTo31CharactersAndTouchesNothingElse) {
  test::TestWorld world;
  const std::u16string name = std::u16string(GetParam().given, u'n');
  auto record = Poisoned<PublicDevmode>();
  EXPECT_EQ(InitPublicDevmode(&record, name.c_str()), 0U);
  EXPECT_EQ(
      Difference(test::BytesOf(record), ExpectedPublicRecord(name.substr(0, GetParam().kept), kA4)),
      "");
}

TEST(InitPublicDevmode, NullNameLeavesTheFieldEmpty) {
  test::TestWorld world;
  auto record = Poisoned<PublicDevmode>();
  EXPECT_EQ(InitPublicDevmode(&record, nullptr), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPublicRecord(u"", kA4)), "");
}

TEST(InitPublicDevmode, NullRecordFails) {
  test::TestWorld world;
  EXPECT_EQ(InitPublicDevmode(nullptr, kOstrel), 0x80004005U);
}

// ---- The private part's defaults ----------------------------------------------------------------

ByteRecord ExpectedPrivateRecord(std::u16string_view favoriteName,
                                 std::u16string_view watermarkName = u"[No Watermark]") {
  ByteRecord bytes(test::kPrivateBytes);
  for (const RecordPlace& place : test::RecordPlaces()) {
    const bool number = place.row.kind == Kind::kWord || place.row.kind == Kind::kDword ||
                        place.row.kind == Kind::kUnsigned;
    for (std::size_t i = 0; number && i < place.elements(); ++i) {
      PutNumber(bytes, place.offset + i * place.elementBytes(), place.elementBytes(),
                place.row.initial);
    }
    const bool isWatermarkName = place.offset == test::kWatermarkOffset + 4;
    PutText(bytes, place.offset,
            isWatermarkName ? watermarkName : std::u16string_view(place.initialText));
  }
  constexpr std::uint8_t kSignature[] = {0x50, 0x52, 0x49, 0x56};
  std::copy(std::begin(kSignature), std::end(kSignature), bytes.begin());
  PutText(bytes, 352, favoriteName);
  return bytes;
}

// The world with a language library that holds only these two texts.
struct TwoTextWorld {
  TwoTextWorld(std::u16string noWatermark, std::u16string favorite) {
    Install(std::move(noWatermark), std::move(favorite));
  }
  void Install(std::u16string noWatermark, std::u16string favorite) {
    world.platform.modules.Install(
        test::kEnglishLibraryPath,
        {{kNoWatermarkId, std::move(noWatermark)}, {kFavoriteId, std::move(favorite)}});
  }
  test::TestWorld world;
};

TEST(InitPrivateDevmode, WithoutDriverNameGivesTheDefaultsInAllTheirBytes) {
  test::TestWorld world;
  auto record = Poisoned<PrivateDevmode>();
  EXPECT_EQ(InitPrivateDevmode(&record, nullptr), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPrivateRecord(u"")), "");
}

TEST(InitPrivateDevmode, WithDriverNameTakesTheFavoriteOfTheShippedLibrary) {
  test::TestWorld world;
  auto record = Poisoned<PrivateDevmode>();
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPrivateRecord(u"Default")), "");
}

TEST(InitPrivateDevmode, WithoutDriverNameNoLibraryIsOpened) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, nullptr), 0U);
  EXPECT_EQ(std::ranges::count(world.platform.faults.trace(), "LoadLibraryW"), 0);
  EXPECT_TRUE(world.platform.modules.requestedStrings.empty());
}

TEST(InitPrivateDevmode, WithDriverNameTheLibraryIsOpenedAndClosedAgain) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(std::ranges::count(world.platform.faults.trace(), "LoadLibraryW"), 1);
  EXPECT_EQ(world.platform.modules.loadsOf(test::kEnglishLibraryPath), 0U);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(InitPrivateDevmode, MissingLibraryGivesOneAndAnEmptyFavoriteName) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kEnglishLibraryPath);
  auto record = Poisoned<PrivateDevmode>();
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 1U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPrivateRecord(u"")), "");
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(InitPrivateDevmode, WatermarkWaitsForTheFirstLibraryToBeTranslated) {
  TwoTextWorld two(u"Kein Wasserzeichen", u"Standard");
  two.world.platform.modules.Remove(test::kEnglishLibraryPath);
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 1U);
  two.Install(u"Kein Wasserzeichen", u"Standard");
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(
      Difference(test::BytesOf(record), ExpectedPrivateRecord(u"Standard", u"Kein Wasserzeichen")),
      "");
}

TEST(InitPrivateDevmode, WatermarkKeepsTheFirstLanguagesWordWhenASecondOneComes) {
  TwoTextWorld two(u"Kein Wasserzeichen", u"Standard");
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  two.Install(u"Sans filigrane", u"Par défaut");
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record),
                       ExpectedPrivateRecord(u"Par défaut", u"Kein Wasserzeichen")),
            "");
}

TEST(InitPrivateDevmode, TranslatedWatermarkStaysForARecordWithoutDriverName) {
  TwoTextWorld two(u"Kein Wasserzeichen", u"Standard");
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(InitPrivateDevmode(&record, nullptr), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record), ExpectedPrivateRecord(u"", u"Kein Wasserzeichen")),
            "");
}

TEST(InitPrivateDevmode, TranslationChangesTheProcessWideRecordOnlyInItsName) {
  TwoTextWorld two(u"Kein", u"Standard");
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  const ByteRecord all = ExpectedPrivateRecord(u"Standard", u"Kein");
  const auto first = all.begin() + std::ptrdiff_t{test::kWatermarkOffset};
  EXPECT_EQ(Difference(test::BytesOf(two.world.process.DefaultWatermarks[kNoWatermark]),
                       ByteRecord(first, first + std::ptrdiff_t{test::kWatermarkBytes})),
            "");
}

TEST(InitPrivateDevmode, ChangedDefaultWatermarkIsCopiedAsItStands) {
  test::TestWorld world;
  const ByteRecord watermark = test::RandomBytes(test::kWatermarkBytes, 1);
  test::SetBytes(world.process.DefaultWatermarks[kNoWatermark], watermark);
  PrivateDevmode record = {};
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  ByteRecord expected = ExpectedPrivateRecord(u"Default");
  std::ranges::copy(watermark, expected.begin() + std::ptrdiff_t{test::kWatermarkOffset});
  EXPECT_EQ(Difference(test::BytesOf(record), expected), "");
}

struct LibraryText {
  const char* name;
  std::size_t watermarkUnits;
  std::size_t watermarkKept;
  std::size_t favoriteUnits;
  std::size_t favoriteKept;
};

class PrivateLibraryText : public testing::TestWithParam<LibraryText> {};

INSTANTIATE_TEST_SUITE_P(Lengths, PrivateLibraryText,
                         testing::Values(LibraryText{"OneUnit", 1, 1, 1, 1},
                                         LibraryText{"JustFits", 31, 31, 255, 255},
                                         LibraryText{"OneTooLong", 32, 31, 256, 255},
                                         LibraryText{"MuchTooLong", 200, 31, 900, 255}),
                         test::CaseName());

TEST_P(PrivateLibraryText, IsCutToTheCharactersOfItsField) {
  const std::u16string watermark(GetParam().watermarkUnits, u'w');
  const std::u16string favorite(GetParam().favoriteUnits, u'f');
  TwoTextWorld two(watermark, favorite);
  auto record = Poisoned<PrivateDevmode>();
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record),
                       ExpectedPrivateRecord(favorite.substr(0, GetParam().favoriteKept),
                                             watermark.substr(0, GetParam().watermarkKept))),
            "");
}

TEST(InitPrivateDevmode,
     LibraryWithoutTheTextsGivesTheFavoriteItsFallbackAndLeavesTheWatermarkItsName) {
  test::TestWorld world;
  world.platform.modules.Install(test::kEnglishLibraryPath);
  auto record = Poisoned<PrivateDevmode>();
  EXPECT_EQ(InitPrivateDevmode(&record, kOstrel), 0U);
  EXPECT_EQ(Difference(test::BytesOf(record),
                       ExpectedPrivateRecord(u"id:202 missing!", u"[No Watermark]")),
            "");
}

TEST(InitPrivateDevmode, WatermarkIsNamedByTheFirstLibraryThatHasTheText) {
  test::TestWorld world;
  world.platform.modules.Install(test::kEnglishLibraryPath);
  auto record = Poisoned<PrivateDevmode>();
  InitPrivateDevmode(&record, kOstrel);
  world.platform.modules.Install(test::kEnglishLibraryPath, {{146, u"[Kein Wasserzeichen]"}});
  InitPrivateDevmode(&record, kOstrel);
  EXPECT_EQ(std::u16string(record.WatermarkData.PageWMName), u"[Kein Wasserzeichen]");
}

TEST(InitPrivateDevmode, NullRecordIsToldAndNoLibraryIsOpened) {
  test::TestWorld world;
  world.platform.faults.StartTrace();
  EXPECT_EQ(InitPrivateDevmode(nullptr, kOstrel), 0x8000000AU);
  EXPECT_TRUE(world.platform.faults.trace().empty());
}

// ---- The whole record ---------------------------------------------------------------------------

ByteRecord ExpectedDriverRecord(std::u16string_view deviceName, std::u16string_view favoriteName) {
  ByteRecord bytes = ExpectedPublicRecord(deviceName, kA4);
  std::ranges::copy(ExpectedPrivateRecord(favoriteName), std::back_inserter(bytes));
  return bytes;
}

TEST(InitDriverDevmode, SetsBothPartsOneBehindTheOther) {
  test::TestWorld world;
  auto record = std::make_unique<DriverDevmode>(Poisoned<DriverDevmode>());
  EXPECT_TRUE(InitDriverDevmode(record.get(), u"Device", kOstrel));
  EXPECT_EQ(Difference(test::BytesOf(*record), ExpectedDriverRecord(u"Device", u"Default")), "");
}

TEST(InitDriverDevmode, NullNamesGiveARecordWithoutNames) {
  test::TestWorld world;
  auto record = std::make_unique<DriverDevmode>(Poisoned<DriverDevmode>());
  EXPECT_TRUE(InitDriverDevmode(record.get(), nullptr, nullptr));
  EXPECT_EQ(Difference(test::BytesOf(*record), ExpectedDriverRecord(u"", u"")), "");
}

TEST(InitDriverDevmode, MissingLibraryIsNoFailure) {
  test::TestWorld world;
  world.platform.modules.Remove(test::kEnglishLibraryPath);
  auto record = std::make_unique<DriverDevmode>(Poisoned<DriverDevmode>());
  EXPECT_TRUE(InitDriverDevmode(record.get(), u"Device", kOstrel));
  EXPECT_EQ(Difference(test::BytesOf(*record), ExpectedDriverRecord(u"Device", u"")), "");
}

TEST(InitDriverDevmode, NullRecordIsFalse) {
  test::TestWorld world;
  EXPECT_FALSE(InitDriverDevmode(nullptr, u"Device", kOstrel));
}

// ---- Validation ---------------------------------------------------------------------------------

bool IsTerminated(const ByteRecord& bytes, const RecordPlace& place) {
  for (std::size_t i = 0; i < place.elements(); ++i) {
    if (test::GetNumber(bytes, place.offset + 2 * i, 2) == 0) {
      return true;
    }
  }
  return false;
}

std::int64_t ElementAt(const ByteRecord& bytes, const RecordPlace& place, std::size_t element) {
  const std::uint64_t raw =
      test::GetNumber(bytes, place.offset + element * place.elementBytes(), place.elementBytes());
  return place.row.kind == Kind::kWord    ? static_cast<std::int16_t>(raw)
         : place.row.kind == Kind::kDword ? static_cast<std::int32_t>(raw)
                                          : static_cast<std::int64_t>(raw);
}

void PutElement(ByteRecord& bytes, const RecordPlace& place, std::size_t element,
                std::int64_t value) {
  PutNumber(bytes, place.offset + element * place.elementBytes(), place.elementBytes(), value);
}

bool IsAccepted(const RecordPlace& place, std::int64_t value) {
  return value >= place.row.minimum && value <= place.row.maximum;
}

// The repair once more, from the layout alone.
ByteRecord Repaired(ByteRecord bytes) {
  for (const RecordPlace& place : test::RecordPlaces()) {
    switch (place.row.check) {
      case Check::kRange:
        for (std::size_t i = 0; i < place.elements(); ++i) {
          if (!IsAccepted(place, ElementAt(bytes, place, i))) {
            PutElement(bytes, place, i, place.row.otherwise);
          }
        }
        break;
      case Check::kEmptied:
        if (!IsTerminated(bytes, place)) {
          for (std::size_t i = 0; i < place.elements(); ++i) {
            PutElement(bytes, place, i, 0);
          }
        }
        break;
      case Check::kForced:
        PutElement(bytes, place, static_cast<std::size_t>(place.row.maximum), 0);
        break;
      case Check::kSignature:
        PutNumber(bytes, place.offset, 4, 0x56495250);
        break;
      case Check::kNone:
        break;
    }
  }
  return bytes;
}

ByteRecord Validated(const ByteRecord& bytes) {
  auto record = std::make_unique<PrivateDevmode>();
  test::SetBytes(*record, bytes);
  EXPECT_EQ(ValidatePrivateDevmode(record.get()), 0U);
  return test::BytesOf(*record);
}

// A record that validation leaves as it is, with every unchecked byte at random.
ByteRecord SettledRecord(std::uint32_t seed) {
  return Repaired(test::RandomBytes(test::kPrivateBytes, seed));
}

// Writes each value to each element in turn and expects the outcome and no other change.
void ExpectRepair(const RecordPlace& place, const std::vector<std::int64_t>& values) {
  const ByteRecord settled = SettledRecord(static_cast<std::uint32_t>(place.offset));
  for (std::size_t element = 0; element < place.elements(); ++element) {
    for (const std::int64_t value : values) {
      if (value < place.lowestOfType() || value > place.highestOfType()) {
        continue;  // the range reaches the type's edge
      }
      ByteRecord given = settled;
      PutElement(given, place, element, value);
      ByteRecord expected = settled;
      PutElement(expected, place, element, IsAccepted(place, value) ? value : place.row.otherwise);
      EXPECT_EQ(Difference(Validated(given), expected), "")
          << "element " << element << " holding " << value;
    }
  }
}

class RangedPlace : public testing::TestWithParam<RecordPlace> {};

INSTANTIATE_TEST_SUITE_P(Record, RangedPlace, testing::ValuesIn(test::PlacesWith(Check::kRange)),
                         test::CaseName());

TEST_P(RangedPlace, KeepsItsMinimumAndItsMaximum) {
  ExpectRepair(GetParam(), {GetParam().row.minimum, GetParam().row.maximum});
}

TEST_P(RangedPlace, IsReplacedOneBelowAndOneAbove) {
  ExpectRepair(GetParam(), {GetParam().row.minimum - 1, GetParam().row.maximum + 1});
}

TEST_P(RangedPlace, IsReplacedAtTheExtremesOfItsType) {
  ExpectRepair(GetParam(), {GetParam().lowestOfType(), GetParam().highestOfType(), -1});
}

class UncheckedPlace : public testing::TestWithParam<RecordPlace> {};

INSTANTIATE_TEST_SUITE_P(Record, UncheckedPlace, testing::ValuesIn(test::PlacesWith(Check::kNone)),
                         test::CaseName());

TEST_P(UncheckedPlace, KeepsEveryValue) {
  const RecordPlace& place = GetParam();
  for (const std::int64_t value : {0, -1, 1, 40, 32767, -32768}) {
    ByteRecord given = SettledRecord(2);
    for (std::size_t i = 0; i < place.elements(); ++i) {
      PutElement(given, place, i, value);
    }
    EXPECT_EQ(Difference(Validated(given), given), "") << value;
  }
}

TEST_P(UncheckedPlace, KeepsRandomBytes) {
  const RecordPlace& place = GetParam();
  ByteRecord given = ExpectedPrivateRecord(u"");
  const ByteRecord bytes =
      test::RandomBytes(place.row.width, static_cast<std::uint32_t>(place.offset));
  std::ranges::copy(bytes, given.begin() + static_cast<std::ptrdiff_t>(place.offset));
  EXPECT_EQ(Difference(Validated(given), given), "");
}

class EmptiedText : public testing::TestWithParam<RecordPlace> {
 protected:
  // A settled record with the text full of units that are no terminator.
  ByteRecord Full() const {
    ByteRecord bytes = SettledRecord(3);
    PutText(bytes, GetParam().offset, std::u16string(256, u'x'));
    return bytes;
  }
};

INSTANTIATE_TEST_SUITE_P(Record, EmptiedText, testing::ValuesIn(test::PlacesWith(Check::kEmptied)),
                         test::CaseName());

TEST_P(EmptiedText, IsEmptiedWithoutATerminatorIn256Units) {
  ByteRecord expected = Full();
  PutText(expected, GetParam().offset, std::u16string(256, u'\0'));
  EXPECT_EQ(Difference(Validated(Full()), expected), "");
}

TEST_P(EmptiedText, IsKeptWithItsTerminatorInAnyUnit) {
  for (const std::size_t unit :
       {std::size_t{0}, std::size_t{1}, std::size_t{254}, std::size_t{255}}) {
    ByteRecord given = Full();
    PutElement(given, GetParam(), unit, 0);
    EXPECT_EQ(Difference(Validated(given), given), "") << unit;
  }
}

TEST_P(EmptiedText, IsNotKeptByAUnitOfWhichOneByteIsZero) {
  ByteRecord given = Full();
  PutElement(given, GetParam(), 7, 0x0100);
  PutElement(given, GetParam(), 8, 0x0001);
  ByteRecord expected = given;
  PutText(expected, GetParam().offset, std::u16string(256, u'\0'));
  EXPECT_EQ(Difference(Validated(given), expected), "");
}

class CutText : public testing::TestWithParam<RecordPlace> {};

INSTANTIATE_TEST_SUITE_P(Record, CutText, testing::ValuesIn(test::PlacesWith(Check::kForced)),
                         test::CaseName());

TEST_P(CutText, KeepsItsCharactersAndGetsATerminatorBehindThem) {
  const RecordPlace& place = GetParam();
  ByteRecord given = SettledRecord(4);
  PutText(given, place.offset, std::u16string(place.elements(), u'x'));
  ByteRecord expected = given;
  PutNumber(expected, place.offset + 2 * static_cast<std::size_t>(place.row.maximum), 2, 0);
  EXPECT_EQ(Difference(Validated(given), expected), "");
}

TEST_P(CutText, OfFullLengthIsKept) {
  const RecordPlace& place = GetParam();
  ByteRecord given = SettledRecord(5);
  PutText(given, place.offset,
          std::u16string(static_cast<std::size_t>(place.row.maximum), u'x') + u'\0');
  EXPECT_EQ(Difference(Validated(given), given), "");
}

struct ForcedWord {
  const char* name;
  std::size_t offset;
};

class CutTextPlace : public testing::TestWithParam<ForcedWord> {};

INSTANTIATE_TEST_SUITE_P(Record, CutTextPlace,
                         testing::Values(ForcedWord{"PageWMName", 2156},
                                         ForcedWord{"PageWMText", 2286},
                                         ForcedWord{"PageWMTypeface", 2350},
                                         ForcedWord{"PageWMFileName", 2870},
                                         ForcedWord{"FirstCustomPaperSizeName", 4016},
                                         ForcedWord{"LastCustomPaperSizeName", 5384}),
                         test::CaseName());

TEST_P(CutTextPlace, IsTheWordThatBecomesZero) {
  ByteRecord given = SettledRecord(6);
  PutNumber(given, GetParam().offset - 2, 2, 0x4142);
  PutNumber(given, GetParam().offset, 2, 0x4344);
  ByteRecord expected = given;
  PutNumber(expected, GetParam().offset, 2, 0);
  EXPECT_EQ(Difference(Validated(given), expected), "");
}

TEST(ValidatePrivateDevmode, NullRecordIsTold) {
  EXPECT_EQ(ValidatePrivateDevmode(nullptr), 0x8000000AU);
}

TEST(ValidatePrivateDevmode, DefaultRecordIsKeptAsItIs) {
  const ByteRecord defaults = ExpectedPrivateRecord(u"Default");
  EXPECT_EQ(Difference(Validated(defaults), defaults), "");
}

TEST(ValidatePrivateDevmode, WrongSignatureIsRewrittenAndNothingElse) {
  for (std::size_t i = 0; i < 4; ++i) {
    const ByteRecord settled = SettledRecord(7);
    ByteRecord given = settled;
    given[i] = static_cast<std::uint8_t>(~given[i]);
    EXPECT_EQ(Difference(Validated(given), settled), "") << i;
  }
}

TEST(ValidatePrivateDevmode, FontChosenBecomesANumberThatIsNoValidOneAndStaysIt) {
  const auto chosen = [](std::int16_t value) {
    ByteRecord bytes = ExpectedPrivateRecord(u"");
    PutNumber(bytes, 2890, 2, value);
    return bytes;
  };
  ByteRecord expected = ExpectedPrivateRecord(u"");
  PutNumber(expected, 2890, 2, 0x8F30);
  EXPECT_EQ(Difference(Validated(chosen(1)), expected), "");
  EXPECT_EQ(Difference(Validated(expected), expected), "");
  EXPECT_EQ(Difference(Validated(chosen(0)), chosen(0)), "");
}

TEST(ValidatePrivateDevmode, FavoriteIndexSurvivesBelowAndAboveItsStatedRange) {
  for (const std::int16_t index : {std::int16_t{40}, std::int16_t{-1}}) {
    ByteRecord given = ExpectedPrivateRecord(u"");
    PutNumber(given, 864, 2, index);
    EXPECT_EQ(Difference(Validated(given), given), "") << index;
  }
}

// After one pass every checked value lies where it may, whatever the record held before.
void ExpectEveryCheckHolds(const ByteRecord& bytes) {
  for (const RecordPlace& place : test::RecordPlaces()) {
    for (std::size_t i = 0; place.row.check == Check::kRange && i < place.elements(); ++i) {
      const std::int64_t value = ElementAt(bytes, place, i);
      const bool fontChosen = place.offset == 2890;
      EXPECT_TRUE(IsAccepted(place, value) ||
                  (fontChosen && static_cast<std::uint16_t>(value) == 0x8F30))
          << place.name << " holds " << value;
    }
    if (place.row.check == Check::kEmptied || place.row.check == Check::kForced) {
      EXPECT_TRUE(IsTerminated(bytes, place)) << place.name;
    }
  }
}

void ExpectOnePassRepairsAll(const ByteRecord& given) {
  const ByteRecord once = Validated(given);
  EXPECT_EQ(Difference(once, Repaired(given)), "");
  ExpectEveryCheckHolds(once);
  EXPECT_EQ(Difference(Validated(once), once), "") << "by a second pass";
}

TEST(ValidatePrivateDevmode, RecordOfOnesIsRepairedByOnePass) {
  ExpectOnePassRepairsAll(ByteRecord(test::kPrivateBytes, 0xFF));
}

TEST(ValidatePrivateDevmode, RecordOfZerosIsRepairedByOnePass) {
  ExpectOnePassRepairsAll(ByteRecord(test::kPrivateBytes, 0x00));
}

TEST(ValidatePrivateDevmode, RandomRecordsAreRepairedByOnePass) {
  for (std::uint32_t seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    ExpectOnePassRepairsAll(test::RandomBytes(test::kPrivateBytes, seed));
  }
}

// Random bytes seldom lie in a range; these records have small numbers everywhere.
TEST(ValidatePrivateDevmode, RecordsOfSmallRandomWordsAreRepairedByOnePass) {
  for (std::uint32_t seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    ByteRecord given = test::RandomBytes(test::kPrivateBytes, seed);
    for (std::size_t i = 0; i < given.size(); i += 2) {
      const std::int64_t small = given[i] % 8 - 2;
      PutNumber(given, i, 2, small);
    }
    ExpectOnePassRepairsAll(given);
  }
}

TEST(ValidatePrivateDevmode, TouchesNothingBeforeOrBehindTheRecord) {
  struct Guarded {
    std::uint8_t before[64];
    PrivateDevmode record;
    std::uint8_t behind[64];
  };
  auto guarded = std::make_unique<Guarded>(Poisoned<Guarded>());
  EXPECT_EQ(ValidatePrivateDevmode(&guarded->record), 0U);
  EXPECT_TRUE(std::ranges::all_of(guarded->before, [](int byte) { return byte == 0xCD; }));
  EXPECT_TRUE(std::ranges::all_of(guarded->behind, [](int byte) { return byte == 0xCD; }));
}

}  // namespace
}  // namespace ostrel
