#include "core/devmode_lifecycle.h"

#include "config/setting_stores.h"
#include "support/caller_block.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

using test::BytesOf;
using test::CallerBlock;
using test::DefaultRecord;
using test::kPoison;

// ---- The version --------------------------------------------------------------------------------

struct VersionCase {
  const char* name;
  std::uint16_t size;
  std::uint16_t specVersion;
  std::uint16_t version;
};

class DevmodeVersion : public testing::TestWithParam<VersionCase> {};

INSTANTIATE_TEST_SUITE_P(
    Sizes, DevmodeVersion,
    testing::Values(VersionCase{"Size192", 192, 7, 800}, VersionCase{"Size216", 216, 7, 1024},
                    VersionCase{"Size224", 224, 7, 1025}, VersionCase{"Size220", 220, 1025, 1025},
                    VersionCase{"Size220OfAnotherVersion", 220, 7, 7},
                    VersionCase{"Size220WithoutVersion", 220, 0, 0},
                    VersionCase{"Size192WithoutVersion", 192, 0, 800},
                    VersionCase{"Size216WithoutVersion", 216, 0, 1024},
                    VersionCase{"Size224WithoutVersion", 224, 0, 1025},
                    VersionCase{"Size191", 191, 7, 7}, VersionCase{"Size193", 193, 7, 7},
                    VersionCase{"Size215", 215, 7, 7}, VersionCase{"Size217", 217, 7, 7},
                    VersionCase{"Size223", 223, 7, 7}, VersionCase{"Size225", 225, 7, 7},
                    VersionCase{"Size0", 0, 7, 7}, VersionCase{"Size65535", 65535, 7, 7}),
    test::CaseName());

TEST_P(DevmodeVersion, FollowsFromTheSize) {
  CallerBlock record(kDevmodeHeaderBytes);
  record->dmSize = GetParam().size;
  record->dmSpecVersion = GetParam().specVersion;
  EXPECT_EQ(QueryDevmodeVersion(record.get()), GetParam().version);
}

TEST(DevmodeVersionOfNothing, IsZero) {
  EXPECT_EQ(QueryDevmodeVersion(nullptr), 0);
}

// ---- Merge: refusals ----------------------------------------------------------------------------

class DevmodeMerge : public testing::Test {
 protected:
  test::TestWorld world_;
  DriverDevmode target_ = DefaultRecord();
};

TEST_F(DevmodeMerge, NullIncomingIsTrueAndChangesNothing) {
  const DriverDevmode before = target_;
  EXPECT_TRUE(MergeDevmode(&target_, nullptr));
  EXPECT_EQ(BytesOf(target_), BytesOf(before));
}

TEST_F(DevmodeMerge, NullTargetIsRefused) {
  const DriverDevmode incoming = DefaultRecord();
  EXPECT_FALSE(MergeDevmode(nullptr, &incoming.publicDevmode));
}

struct RefusalCase {
  const char* name;
  std::uint16_t incomingSize;
  void (*arrange)(PublicDevmode& target, PublicDevmode& incoming);
};

class DevmodeMergeRefusal : public testing::TestWithParam<RefusalCase> {};

void Nothing(PublicDevmode& /*target*/, PublicDevmode& /*incoming*/) {}

INSTANTIATE_TEST_SUITE_P(
    Conditions, DevmodeMergeRefusal,
    testing::Values(RefusalCase{"EmptyDeviceName", 220,
                                [](auto&, auto& incoming) { incoming.dmDeviceName[0] = u'\0'; }},
                    RefusalCase{"Size72", 72, Nothing}, RefusalCase{"Size192", 192, Nothing},
                    RefusalCase{"Size216", 216, Nothing}, RefusalCase{"Size219", 219, Nothing},
                    RefusalCase{"Size221", 221, Nothing}, RefusalCase{"Size224", 224, Nothing},
                    RefusalCase{"Size65535", 65535, Nothing},
                    RefusalCase{"IncomingWithoutVersion", 220,
                                [](auto&, auto& incoming) { incoming.dmSpecVersion = 0; }},
                    RefusalCase{"TargetWithoutVersion", 220,
                                [](auto& target, auto&) { target.dmSpecVersion = 0; }},
                    RefusalCase{"IncomingWithoutFields", 220,
                                [](auto&, auto& incoming) { incoming.dmFields = 0; }}),
    test::CaseName());

TEST_P(DevmodeMergeRefusal, IsFalseAndLeavesTheTargetAlone) {
  test::TestWorld world;
  DriverDevmode target = DefaultRecord();
  DriverDevmode other = DefaultRecord();
  other.publicDevmode.dmCopies = 9;
  other.privateDevmode.ScaleRadio = 50;
  CallerBlock incoming = CallerBlock::Sized(other, GetParam().incomingSize, 0);
  GetParam().arrange(target.publicDevmode, *incoming.get());
  const DriverDevmode before = target;
  EXPECT_FALSE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(BytesOf(target), BytesOf(before));
}

TEST_F(DevmodeMerge, RecordOf220BytesIsMerged) {
  CallerBlock incoming = CallerBlock::Sized(target_, 220, 0);
  incoming->dmCopies = 9;
  EXPECT_TRUE(MergeDevmode(&target_, incoming.get()));
  EXPECT_EQ(target_.publicDevmode.dmCopies, 9);
}

// ---- Merge: header words ------------------------------------------------------------------------

TEST_F(DevmodeMerge, TargetsHeaderWordsAreKept) {
  WriteHeader(&target_.publicDevmode, {800, 7, 216, 7676});
  DriverDevmode incoming = DefaultRecord();
  incoming.publicDevmode.dmCopies = 9;
  ASSERT_TRUE(MergeDevmode(&target_, &incoming.publicDevmode));
  EXPECT_EQ(target_.publicDevmode.dmSpecVersion, 800);
  EXPECT_EQ(target_.publicDevmode.dmDriverVersion, 7);
  EXPECT_EQ(target_.publicDevmode.dmSize, 216);
  EXPECT_EQ(target_.publicDevmode.dmDriverExtra, 7676);
  EXPECT_EQ(target_.publicDevmode.dmCopies, 9);
}

TEST_F(DevmodeMerge, TargetWithoutDriverVersionTakesTheIncomingVersionsAndSize220) {
  WriteHeader(&target_.publicDevmode, {800, 0, 216, 7676});
  CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 40);
  incoming->dmSpecVersion = 1026;
  incoming->dmDriverVersion = 99;
  ASSERT_TRUE(MergeDevmode(&target_, incoming.get()));
  EXPECT_EQ(target_.publicDevmode.dmSpecVersion, 1026);
  EXPECT_EQ(target_.publicDevmode.dmDriverVersion, 99);
  EXPECT_EQ(target_.publicDevmode.dmSize, 220);
  EXPECT_EQ(target_.publicDevmode.dmDriverExtra, 7676);
}

TEST_F(DevmodeMerge, NameAndAnnouncedFieldsOfTheTargetStand) {
  CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
  incoming->dmDeviceName[0] = u'X';
  incoming->dmFields = 0xFFFFFFFF;
  incoming->dmFormName[0] = u'X';
  incoming->dmTTOption = 3;
  incoming->dmScale = 250;  // the target doesn't announce it
  const DriverDevmode before = target_;
  ASSERT_TRUE(MergeDevmode(&target_, incoming.get()));
  EXPECT_EQ(BytesOf(target_), BytesOf(before));
}

// ---- Merge: public fields -----------------------------------------------------------------------

struct FieldCase {
  const char* name;
  std::uint32_t flag;
  std::int16_t PublicDevmode::*field;
  std::int16_t before;
  std::int16_t incoming;
  std::int16_t after;
};

class PublicField : public testing::TestWithParam<FieldCase> {
 protected:
  // A foreign record of the public part alone.
  CallerBlock Incoming(std::uint32_t fields) {
    CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
    incoming.get()->*GetParam().field = GetParam().incoming;
    incoming->dmFields = fields;
    return incoming;
  }
  DriverDevmode Target(std::uint32_t fields) {
    DriverDevmode target = DefaultRecord();
    target.publicDevmode.*GetParam().field = GetParam().before;
    target.publicDevmode.dmFields = fields;
    return target;
  }
  // A flag that no field is merged by, so that a record has fields, but not the one in question.
  static constexpr std::uint32_t kOther = kDmTTOption;

  test::TestWorld world_;
};

// clang-format off
constexpr FieldCase kFieldCases[] = {
    // Name                          Flag             Field                          Before Incoming After
    {"OrientationPortrait",          kDmOrientation,  &PublicDevmode::dmOrientation,      2,     1,     1},
    {"OrientationLandscape",         kDmOrientation,  &PublicDevmode::dmOrientation,      1,     2,     2},
    {"OrientationZero",              kDmOrientation,  &PublicDevmode::dmOrientation,      2,     0,     2},
    {"OrientationThree",             kDmOrientation,  &PublicDevmode::dmOrientation,      2,     3,     2},
    {"OrientationNegative",          kDmOrientation,  &PublicDevmode::dmOrientation,      2,    -1,     2},
    {"CopiesOne",                    kDmCopies,       &PublicDevmode::dmCopies,           5,     1,     1},
    {"CopiesMost",                   kDmCopies,       &PublicDevmode::dmCopies,           5,   999,   999},
    {"CopiesZero",                   kDmCopies,       &PublicDevmode::dmCopies,           5,     0,     5},
    {"CopiesOneTooMany",             kDmCopies,       &PublicDevmode::dmCopies,           5,  1000,     5},
    {"CopiesNegative",               kDmCopies,       &PublicDevmode::dmCopies,           5,    -1,     5},
    {"PrintQuality600",              kDmPrintQuality, &PublicDevmode::dmPrintQuality,  1200,   600,   600},
    {"PrintQuality1200",             kDmPrintQuality, &PublicDevmode::dmPrintQuality,   600,  1200,  1200},
    {"PrintQuality300",              kDmPrintQuality, &PublicDevmode::dmPrintQuality,  1200,   300,   600},
    {"PrintQuality1201",             kDmPrintQuality, &PublicDevmode::dmPrintQuality,  1200,  1201,   600},
    {"PrintQualityZero",             kDmPrintQuality, &PublicDevmode::dmPrintQuality,  1200,     0,   600},
    {"PrintQualityHighByName",       kDmPrintQuality, &PublicDevmode::dmPrintQuality,  1200,    -4,   600},
    {"YResolution600",               kDmYResolution,  &PublicDevmode::dmYResolution,   1200,   600,   600},
    {"YResolution1200",              kDmYResolution,  &PublicDevmode::dmYResolution,    600,  1200,  1200},
    {"YResolution300",               kDmYResolution,  &PublicDevmode::dmYResolution,   1200,   300,   600},
    {"YResolutionZero",              kDmYResolution,  &PublicDevmode::dmYResolution,   1200,     0,   600},
    {"DuplexNegative",               kDmDuplex,       &PublicDevmode::dmDuplex,           2,    -1,     2},
    {"DuplexZero",                   kDmDuplex,       &PublicDevmode::dmDuplex,           2,     0,     2},
    {"DuplexOne",                    kDmDuplex,       &PublicDevmode::dmDuplex,           2,     1,     1},
    {"DuplexTwo",                    kDmDuplex,       &PublicDevmode::dmDuplex,           1,     2,     2},
    {"DuplexThree",                  kDmDuplex,       &PublicDevmode::dmDuplex,           2,     3,     3},
    {"DuplexFour",                   kDmDuplex,       &PublicDevmode::dmDuplex,           2,     4,     4},
    {"DuplexFive",                   kDmDuplex,       &PublicDevmode::dmDuplex,           2,     5,     5},
    {"DuplexSix",                    kDmDuplex,       &PublicDevmode::dmDuplex,           2,     6,     2},
    {"SourceNegative",               kDmDefaultSource,&PublicDevmode::dmDefaultSource,    7,    -1,     7},
    {"SourceZero",                   kDmDefaultSource,&PublicDevmode::dmDefaultSource,    7,     0,     7},
    {"SourceOne",                    kDmDefaultSource,&PublicDevmode::dmDefaultSource,    7,     1,     1},
    {"SourceLargest",                kDmDefaultSource,&PublicDevmode::dmDefaultSource,    7, 32767, 32767},
    {"Scale250",                     kDmScale,        &PublicDevmode::dmScale,          100,   250,   250},
    {"ScaleZero",                    kDmScale,        &PublicDevmode::dmScale,          100,     0,     0},
    {"ScaleNegative",                kDmScale,        &PublicDevmode::dmScale,          100,    -1,    -1},
    {"CollateZero",                  kDmCollate,      &PublicDevmode::dmCollate,          1,     0,     0},
    {"CollateOne",                   kDmCollate,      &PublicDevmode::dmCollate,          0,     1,     1},
    {"CollateTwo",                   kDmCollate,      &PublicDevmode::dmCollate,          1,     2,     1},
    {"CollateNegative",              kDmCollate,      &PublicDevmode::dmCollate,          1,    -1,     1},
    {"ColorAsked",                   kDmColor,        &PublicDevmode::dmColor,            2,     2,     1},
    {"ColorMonochromeAsked",         kDmColor,        &PublicDevmode::dmColor,            2,     1,     1},
    {"ColorZero",                    kDmColor,        &PublicDevmode::dmColor,            2,     0,     1},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Values, PublicField, testing::ValuesIn(kFieldCases), test::CaseName());

TEST_P(PublicField, AnnouncedByBothRecordsFollowsItsRule) {
  DriverDevmode target = Target(GetParam().flag);
  DriverDevmode expected = target;
  expected.publicDevmode.*GetParam().field = GetParam().after;
  CallerBlock incoming = Incoming(GetParam().flag);
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(target.publicDevmode.*GetParam().field, GetParam().after);
  EXPECT_EQ(BytesOf(target), BytesOf(expected));
}

TEST_P(PublicField, AnnouncedByTheTargetAloneStays) {
  DriverDevmode target = Target(GetParam().flag);
  const DriverDevmode before = target;
  CallerBlock incoming = Incoming(kOther);
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(BytesOf(target), BytesOf(before));
}

TEST_P(PublicField, AnnouncedByTheIncomingAloneStays) {
  DriverDevmode target = Target(kOther);
  const DriverDevmode before = target;
  CallerBlock incoming = Incoming(GetParam().flag);
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(BytesOf(target), BytesOf(before));
}

struct MediaCase {
  const char* name;
  std::uint32_t targetFields;
  std::uint32_t incomingFields;
  std::uint32_t incoming;
  std::uint32_t after;
};

class MediaTypeField : public testing::TestWithParam<MediaCase> {};

INSTANTIATE_TEST_SUITE_P(
    Values, MediaTypeField,
    testing::Values(MediaCase{"One", kDmMediaType, kDmMediaType, 1, 1},
                    MediaCase{"OneAbovePublicList", kDmMediaType, kDmMediaType, 267, 267},
                    MediaCase{"Largest", kDmMediaType, kDmMediaType, 0xFFFFFFFF, 0xFFFFFFFF},
                    MediaCase{"Zero", kDmMediaType, kDmMediaType, 0, 5},
                    MediaCase{"TargetAlone", kDmMediaType, kDmTTOption, 1, 5},
                    MediaCase{"IncomingAlone", kDmTTOption, kDmMediaType, 1, 5}),
    test::CaseName());

TEST_P(MediaTypeField, IsTakenUnlessZero) {
  test::TestWorld world;
  DriverDevmode target = DefaultRecord();
  target.publicDevmode.dmFields = GetParam().targetFields;
  target.publicDevmode.dmMediaType = 5;
  CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
  incoming->dmFields = GetParam().incomingFields;
  incoming->dmMediaType = GetParam().incoming;
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(target.publicDevmode.dmMediaType, GetParam().after);
}

// ---- Merge: duplex modes of this driver's own ---------------------------------------------------

struct DuplexCase {
  const char* name;
  std::int16_t duplex;
  std::uint16_t incomingExtra;
  std::int16_t privateAfter;
};

class PrivateDuplex : public testing::TestWithParam<DuplexCase> {};

INSTANTIATE_TEST_SUITE_P(Records, PrivateDuplex,
                         testing::Values(DuplexCase{"ThreeIsPublicOnly", 3, 8, 2},
                                         DuplexCase{"FourWithTheWord", 4, 8, 5},
                                         DuplexCase{"FiveWithTheWord", 5, 8, 5},
                                         DuplexCase{"FourWithOneByteTooFew", 4, 7, 2},
                                         DuplexCase{"FiveWithOneByteTooFew", 5, 7, 2},
                                         DuplexCase{"FiveWithoutPrivatePart", 5, 0, 2},
                                         DuplexCase{"FiveWithALongerForeignPart", 5, 9000, 5},
                                         DuplexCase{"SixIsIgnored", 6, 8, 2}),
                         test::CaseName());

TEST_P(PrivateDuplex, IsTakenForFourAndFiveFromARecordThatHoldsIt) {
  test::TestWorld world;
  DriverDevmode target = DefaultRecord();
  target.privateDevmode.Duplex = 2;
  DriverDevmode other = DefaultRecord();
  other.privateDevmode.Duplex = 5;
  CallerBlock incoming = CallerBlock::Sized(other, 220, GetParam().incomingExtra);
  incoming->dmDuplex = GetParam().duplex;
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(target.publicDevmode.dmDuplex, GetParam().duplex == 6 ? 1 : GetParam().duplex);
  EXPECT_EQ(target.privateDevmode.Duplex, GetParam().privateAfter);
}

// ---- Merge: paper -------------------------------------------------------------------------------

struct PaperCase {
  const char* name;
  const char16_t* country;
  std::int16_t incoming;
  std::int16_t id;
  std::int16_t width;
  std::int16_t length;
};

class MergedPaper : public testing::TestWithParam<PaperCase> {};

constexpr char16_t kA4Country[] = u"49";
constexpr char16_t kLetterCountry[] = u"1";

INSTANTIATE_TEST_SUITE_P(
    Ids, MergedPaper,
    testing::Values(PaperCase{"Letter", kA4Country, 1, 1, 2159, 2794},
                    PaperCase{"A4", kA4Country, 9, 9, 2100, 2970},
                    PaperCase{"A4WhereLetterIsUsed", kLetterCountry, 9, 9, 2100, 2970},
                    PaperCase{"A5", kA4Country, 11, 11, 1480, 2100},
                    PaperCase{"OwnId", kA4Country, 280, 280, 1140, 1620},
                    PaperCase{"FirstCustom", kA4Country, 288, 288, 2100, 2970},
                    PaperCase{"LastCustom", kA4Country, 319, 319, 2100, 2970},
                    PaperCase{"CustomWhereLetterIsUsed", kLetterCountry, 288, 288, 2100, 2970},
                    PaperCase{"BelowCustom", kA4Country, 287, 9, 2100, 2970},
                    PaperCase{"AboveCustom", kA4Country, 320, 9, 2100, 2970},
                    PaperCase{"UnknownWhereA4IsUsed", kA4Country, 8, 9, 2100, 2970},
                    PaperCase{"UnknownWhereLetterIsUsed", kLetterCountry, 8, 1, 2159, 2794},
                    PaperCase{"ZeroWhereA4IsUsed", kA4Country, 0, 9, 2100, 2970},
                    PaperCase{"ZeroWhereLetterIsUsed", kLetterCountry, 0, 1, 2159, 2794},
                    PaperCase{"NegativeWhereLetterIsUsed", kLetterCountry, -1, 1, 2159, 2794}),
    test::CaseName());

TEST_P(MergedPaper, HasIdWidthAndLengthAndLeavesTheFormNameAlone) {
  test::TestWorld world;
  world.platform.locale.country = GetParam().country;
  constexpr std::uint32_t kEachFlag[] = {kDmPaperSize, kDmPaperLength, kDmPaperWidth};
  for (const std::uint32_t flag : kEachFlag) {
    DriverDevmode target = DefaultRecord();
    target.publicDevmode.dmFields = flag;
    target.publicDevmode.dmPaperSize = 5;
    target.publicDevmode.dmPaperWidth = 11;
    target.publicDevmode.dmPaperLength = 12;
    target.publicDevmode.dmFormName[0] = u'T';
    DriverDevmode expected = target;
    expected.publicDevmode.dmPaperSize = GetParam().id;
    expected.publicDevmode.dmPaperWidth = GetParam().width;
    expected.publicDevmode.dmPaperLength = GetParam().length;

    CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
    incoming->dmFields = flag;
    incoming->dmPaperSize = GetParam().incoming;
    incoming->dmPaperWidth = 777;
    incoming->dmPaperLength = 888;
    incoming->dmFormName[0] = u'I';
    ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
    EXPECT_EQ(BytesOf(target), BytesOf(expected)) << flag;
    EXPECT_EQ(target.publicDevmode.dmPaperSize, GetParam().id) << flag;
  }
}

struct StoredPaperCase {
  const char* name;
  std::int16_t incoming;
  std::int16_t id;
  std::int16_t width;
  std::int16_t length;
};

class MergedStoredPaper : public testing::TestWithParam<StoredPaperCase> {};

INSTANTIATE_TEST_SUITE_P(Ids, MergedStoredPaper,
                         testing::Values(StoredPaperCase{"First", 288, 288, 1270, 1778},
                                         StoredPaperCase{"Last", 319, 319, 762, 3556},
                                         StoredPaperCase{"FirstOfEqualIds", 300, 300, 1274, 1781},
                                         StoredPaperCase{"NotStored", 289, 289, 2100, 2970},
                                         // No custom id, whatever the store holds under it.
                                         StoredPaperCase{"BeyondTheRange", 320, 9, 2100, 2970}),
                         test::CaseName());

TEST_P(MergedStoredPaper, TakesTheStoredExtent) {
  test::TestWorld world;
  ASSERT_TRUE(InitSettingsFile());
  const auto store = [](const char16_t* name, std::uint32_t id, std::uint16_t width_px600,
                        std::uint16_t length_px600) {
    CustomPaperRecord record = {};
    record.PaperId = id;
    record.Width = width_px600;
    record.Length = length_px600;
    ASSERT_TRUE(CustomPaperStore().Save(name, record));
  };
  store(u"A", 288, 3000, 4200);
  store(u"B", 300, 3009, 4208);
  store(u"C", 300, 3002, 4202);
  store(u"D", 319, 1800, 8400);
  store(u"E", 320, 1800, 8400);
  DriverDevmode target = DefaultRecord();
  CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
  incoming->dmPaperSize = GetParam().incoming;
  incoming->dmPaperWidth = 777;
  incoming->dmPaperLength = 888;
  ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(target.publicDevmode.dmPaperSize, GetParam().id);
  EXPECT_EQ(target.publicDevmode.dmPaperWidth, GetParam().width);
  EXPECT_EQ(target.publicDevmode.dmPaperLength, GetParam().length);
}

TEST_F(DevmodeMerge, PaperIsPortraitInLandscapeToo) {
  DriverDevmode incoming = DefaultRecord();
  incoming.publicDevmode.dmOrientation = 2;
  incoming.publicDevmode.dmPaperSize = 11;
  ASSERT_TRUE(MergeDevmode(&target_, &incoming.publicDevmode));
  EXPECT_EQ(target_.publicDevmode.dmOrientation, 2);
  EXPECT_EQ(target_.publicDevmode.dmPaperWidth, 1480);
  EXPECT_EQ(target_.publicDevmode.dmPaperLength, 2100);
}

TEST_F(DevmodeMerge, PaperAnnouncedByOneRecordAloneStays) {
  constexpr std::uint32_t kPaper = kDmPaperSize | kDmPaperLength | kDmPaperWidth;
  for (const bool byTarget : {false, true}) {
    DriverDevmode target = DefaultRecord();
    target.publicDevmode.dmFields = byTarget ? kPaper : std::uint32_t{kDmCopies};
    const DriverDevmode before = target;
    CallerBlock incoming = CallerBlock::Sized(DefaultRecord(), 220, 0);
    incoming->dmFields = byTarget ? std::uint32_t{kDmCopies} : kPaper;
    incoming->dmPaperSize = 11;
    ASSERT_TRUE(MergeDevmode(&target, incoming.get()));
    EXPECT_EQ(BytesOf(target), BytesOf(before)) << byTarget;
  }
}

// ---- Merge: private part ------------------------------------------------------------------------

// An own record whose public and private part both tell it from the defaults.
DriverDevmode TellingRecord() {
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmCopies = 9;
  record.privateDevmode.ScaleRadio = 50;
  record.privateDevmode.Reserved5416[2259] = 0xAB;
  return record;
}

TEST_F(DevmodeMerge, OwnPrivatePartIsTakenToItsLastByte) {
  CallerBlock incoming = CallerBlock::Sized(TellingRecord(), 220, 7676);
  ASSERT_TRUE(MergeDevmode(&target_, incoming.get()));
  EXPECT_EQ(BytesOf(target_.privateDevmode), BytesOf(TellingRecord().privateDevmode));
}

TEST_F(DevmodeMerge, OwnPrivatePartIsRepairedAfterItWasTaken) {
  CallerBlock incoming(DefaultRecord(), kDriverDevmodeBytes);
  std::memset(incoming.bytes() + 220 + 4, 0x7F, kPrivateDevmodeBytes - 4);
  PrivateDevmode repaired;
  std::memcpy(&repaired, incoming.bytes() + 220, sizeof(repaired));
  ASSERT_EQ(ValidatePrivateDevmode(&repaired), kResultOk);
  ASSERT_TRUE(MergeDevmode(&target_, incoming.get()));
  EXPECT_EQ(BytesOf(target_.privateDevmode), BytesOf(repaired));
  EXPECT_EQ(target_.privateDevmode.ScaleRadio, 100);
}

TEST_F(DevmodeMerge, UnrepairableOddWordsPassThrough) {
  DriverDevmode incoming = DefaultRecord();
  incoming.privateDevmode.FavoriteIndex = 40;
  incoming.privateDevmode.SourceTray = -5;
  ASSERT_TRUE(MergeDevmode(&target_, &incoming.publicDevmode));
  EXPECT_EQ(target_.privateDevmode.FavoriteIndex, 40);
  EXPECT_EQ(target_.privateDevmode.SourceTray, -5);
}

struct ForeignCase {
  const char* name;
  std::uint16_t incomingExtra;
  void (*arrange)(PublicDevmode& target, CallerBlock& incoming);
};

class ForeignPrivatePart : public testing::TestWithParam<ForeignCase> {};

void NothingElse(PublicDevmode& /*target*/, CallerBlock& /*incoming*/) {}

INSTANTIATE_TEST_SUITE_P(
    Marks, ForeignPrivatePart,
    testing::Values(
        ForeignCase{"OlderDriverVersion", 7676,
                    [](auto&, auto& incoming) { incoming->dmDriverVersion = 1535; }},
        ForeignCase{"NewerDriverVersion", 7676,
                    [](auto&, auto& incoming) { incoming->dmDriverVersion = 1537; }},
        ForeignCase{"OtherSystemVersion", 7676,
                    [](auto&, auto& incoming) { incoming->dmSpecVersion = 1024; }},
        ForeignCase{"OneByteShorter", 7675, NothingElse},
        ForeignCase{"OneByteLonger", 7677, NothingElse},
        ForeignCase{"NoPrivatePart", 0, NothingElse},
        ForeignCase{"FirstByteOfTheSignature", 7676,
                    [](auto&, auto& incoming) { incoming.bytes()[220] = std::byte{'p'}; }},
        ForeignCase{"LastByteOfTheSignature", 7676,
                    [](auto&, auto& incoming) { incoming.bytes()[223] = std::byte{'W'}; }},
        ForeignCase{"TargetOfAnotherSize", 7676,
                    [](auto& target, auto&) { target.dmDriverExtra = 7675; }},
        ForeignCase{"TargetWithoutPrivatePart", 7676,
                    [](auto& target, auto&) { target.dmDriverExtra = 0; }}),
    test::CaseName());

TEST_P(ForeignPrivatePart, IsIgnoredWhilePublicFieldsAreTaken) {
  test::TestWorld world;
  DriverDevmode target = DefaultRecord();
  CallerBlock incoming = CallerBlock::Sized(TellingRecord(), 220, GetParam().incomingExtra);
  GetParam().arrange(target.publicDevmode, incoming);
  const DriverDevmode before = target;
  EXPECT_TRUE(MergeDevmode(&target, incoming.get()));
  EXPECT_EQ(BytesOf(target.privateDevmode), BytesOf(before.privateDevmode));
  EXPECT_EQ(target.publicDevmode.dmCopies, 9);
}

// ---- Convert ------------------------------------------------------------------------------------

struct Shape {
  std::uint16_t specVersion;
  std::uint16_t driverVersion;
  std::uint16_t size;
  std::uint16_t driverExtra;
};

struct ConvertCase {
  const char* name;
  Shape in;
  Shape out;
  std::uint32_t copied;
  std::uint32_t copiedPublic;
  Shape after;
};

// A block of exactly its own size, every byte told from its neighbours, with these header words.
CallerBlock Patterned(const Shape& shape, std::size_t roomBytes, unsigned seed) {
  CallerBlock block(roomBytes);
  for (std::size_t i = 0; i < block.size(); ++i) {
    block.bytes()[i] = static_cast<std::byte>(i * 7 + i / 256 + seed);
  }
  std::memcpy(block.bytes() + 64, &shape, sizeof(shape));
  return block;
}

class DevmodeConversion : public testing::TestWithParam<ConvertCase> {};

// clang-format off
constexpr ConvertCase kConvertCases[] = {
    // Name                          In                      Out                    Copied Public After
    {"SameShape",                   {1025, 1536, 220, 16},  {1025, 1536, 220, 16},  236, 220, {1025, 1536, 220, 16}},
    {"OtherVersionsSameSizes",      {1025, 1536, 220, 16},  {1024, 7,    220, 16},  236, 220, {1024, 7,    220, 16}},
    {"SmallerOut",                  {1025, 1536, 220, 16},  {800,  848,  192, 16},  208, 192, {800,  848,  192, 16}},
    {"SmallerIn",                   {800,  848,  192, 16},  {1025, 1536, 220, 16},  208, 192, {1025, 1536, 220, 16}},
    {"OutWithSmallerExtra",         {1025, 1536, 220, 16},  {1025, 1536, 220, 15},  220, 220, {1025, 1536, 220, 15}},
    {"OutWithLargerExtra",          {1025, 1536, 220, 16},  {1025, 1536, 220, 17},  220, 220, {1025, 1536, 220, 17}},
    {"OutWithoutExtra",             {1025, 1536, 220, 16},  {1025, 1536, 220, 0},   220, 220, {1025, 1536, 220, 0}},
    {"NeitherWithExtra",            {1025, 1536, 220, 0},   {1025, 1536, 220, 0},   220, 220, {1025, 1536, 220, 0}},
    {"InWithoutExtra",              {1025, 1536, 220, 0},   {1025, 1536, 220, 8},   220, 220, {1025, 1536, 220, 8}},
    {"OutWithoutDriverVersion",     {1025, 1536, 220, 16},  {800,  0,    192, 4},   236, 220, {1025, 1536, 220, 16}},
    {"NeitherWithDriverVersion",    {1025, 0,    220, 16},  {1025, 0,    220, 4},   236, 220, {1025, 0,    220, 16}},
    {"HeadersAlone",                {1025, 1536, 72,  0},   {1025, 1536, 72,  0},    72,  72, {1025, 1536, 72,  0}},
    {"InOfAHeaderAlone",            {1025, 1536, 72,  16},  {1025, 1536, 220, 16},   88,  72, {1025, 1536, 220, 16}},
    {"OutOfAHeaderAlone",           {1025, 1536, 220, 16},  {1025, 1536, 72,  16},   88,  72, {1025, 1536, 72,  16}},
    {"LargestIn",                   {1025, 1536, 65535, 65535}, {1025, 1536, 220, 8}, 220, 220, {1025, 1536, 220, 8}},
    {"LargestBoth",                 {1025, 1536, 65535, 65535}, {1025, 7, 65535, 65535}, 131070, 65535, {1025, 7, 65535, 65535}},
    // Nothing can be copied.
    {"InOf71Bytes",                 {1025, 1536, 71,  16},  {1025, 1536, 220, 16},    0,   0, {1025, 1536, 220, 16}},
    {"OutOf71Bytes",                {1025, 1536, 220, 16},  {1025, 1536, 71,  16},    0,   0, {1025, 1536, 71,  16}},
    {"InOfNoSize",                  {1025, 1536, 0,   16},  {1025, 1536, 220, 16},    0,   0, {1025, 1536, 220, 16}},
    {"OutTakingASizeOf71",          {1025, 1536, 71,  0},   {1025, 0,    220, 0},     0,   0, {1025, 0,    220, 0}},
    {"InWithoutVersion",            {0,    1536, 220, 16},  {1025, 1536, 220, 16},    0,   0, {1025, 1536, 220, 16}},
    {"OutWithoutVersion",           {1025, 1536, 220, 16},  {0,    1536, 220, 16},    0,   0, {0,    1536, 220, 16}},
    {"OutWithoutAnyVersion",        {1025, 1536, 220, 16},  {0,    0,    220, 16},    0,   0, {0,    0,    220, 16}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Shapes, DevmodeConversion, testing::ValuesIn(kConvertCases),
                         test::CaseName());

TEST_P(DevmodeConversion, CopiesTheSmallerPublicPartAndEqualPrivateParts) {
  const ConvertCase& row = GetParam();
  const auto room = [](const Shape& shape) {
    return std::max<std::size_t>(std::size_t{shape.size} + shape.driverExtra, kDevmodeHeaderBytes);
  };
  CallerBlock in = Patterned(row.in, room(row.in), 1);
  CallerBlock out = Patterned(row.out, std::max(room(row.out), room(row.after)), 101);
  const std::vector<std::byte> source = in.copy();
  std::vector<std::byte> expected = out.copy();
  if (row.copied != 0) {
    std::copy_n(source.begin(), row.copiedPublic, expected.begin());
    const auto privatePlace = expected.begin() + row.after.size;
    if (row.copied > row.copiedPublic) {
      std::copy_n(source.begin() + row.in.size, row.after.driverExtra, privatePlace);
    } else {
      std::fill_n(privatePlace, row.after.driverExtra, std::byte{0});
    }
    std::memcpy(expected.data() + 64, &row.after, sizeof(row.after));
  }
  EXPECT_EQ(ConvertDevmode(out.get(), in.get()), row.copied);
  EXPECT_TRUE(out.copy() == expected)
      << "first difference at "
      << std::mismatch(expected.begin(), expected.end(), out.bytes()).first - expected.begin();
  EXPECT_TRUE(in.copy() == source);
}

TEST(DevmodeConversionOfNothing, IsZero) {
  CallerBlock record = Patterned({1025, 1536, 220, 0}, 220, 1);
  const std::vector<std::byte> before = record.copy();
  EXPECT_EQ(ConvertDevmode(nullptr, record.get()), 0U);
  EXPECT_EQ(ConvertDevmode(record.get(), nullptr), 0U);
  EXPECT_EQ(ConvertDevmode(nullptr, nullptr), 0U);
  EXPECT_EQ(record.copy(), before);
}

TEST(DevmodeConversionOntoItself, CountsAllBytesAndChangesNone) {
  for (const std::uint16_t driverVersion : {std::uint16_t{1536}, std::uint16_t{0}}) {
    CallerBlock record = Patterned({1025, driverVersion, 220, 16}, 236, 1);
    const std::vector<std::byte> before = record.copy();
    EXPECT_EQ(ConvertDevmode(record.get(), record.get()), 236U) << driverVersion;
    EXPECT_EQ(record.copy(), before) << driverVersion;
  }
}

// ---- Copy out -----------------------------------------------------------------------------------

// Each of the two announces a paper, and that they do it by different words doesn't matter.
TEST(MergedPaperFlags, MayDifferBetweenTheRecords) {
  test::TestWorld world;
  constexpr std::uint32_t kPaperFlags[] = {kDmPaperSize, kDmPaperLength, kDmPaperWidth};
  for (const std::uint32_t ours : kPaperFlags) {
    for (const std::uint32_t theirs : kPaperFlags) {
      DriverDevmode target;
      DriverDevmode incoming;
      InitDriverDevmode(&target, test::kDriverName, nullptr);
      InitDriverDevmode(&incoming, test::kDriverName, nullptr);
      target.publicDevmode.dmFields = ours;
      incoming.publicDevmode.dmFields = theirs;
      incoming.publicDevmode.dmPaperSize = 11;
      EXPECT_TRUE(MergeDevmode(&target, &incoming.publicDevmode));
      EXPECT_EQ(target.publicDevmode.dmPaperSize, 11) << ours << " and " << theirs;
      EXPECT_EQ(target.publicDevmode.dmPaperWidth, 1480) << ours << " and " << theirs;
    }
  }
}

class DevmodeCopyOut : public testing::Test {
 protected:
  test::TestWorld world_;
  const DriverDevmode current_ = TellingRecord();
};

TEST_F(DevmodeCopyOut, NullOutIsRefused) {
  EXPECT_FALSE(CopyDevmodeOut(&current_, nullptr, nullptr));
  EXPECT_FALSE(CopyDevmodeOut(&current_, &current_.publicDevmode, nullptr));
}

TEST_F(DevmodeCopyOut, WithoutReferenceTheWholeRecordGoesOut) {
  CallerBlock out(kDriverDevmodeBytes);
  EXPECT_TRUE(CopyDevmodeOut(&current_, nullptr, out.get()));
  EXPECT_EQ(out.copy(), BytesOf(current_));
}

TEST_F(DevmodeCopyOut, WithoutReferenceTheRecordsOwnSizesCount) {
  DriverDevmode shorter = current_;
  shorter.publicDevmode.dmSize = 216;
  shorter.publicDevmode.dmDriverExtra = 100;
  CallerBlock out(316);
  EXPECT_TRUE(CopyDevmodeOut(&shorter, nullptr, out.get()));
  EXPECT_TRUE(std::equal(out.bytes(), out.bytes() + 316, BytesOf(shorter).begin()));
}

TEST_F(DevmodeCopyOut, CurrentRecordThatAnnouncesMoreThanItHoldsIsRefused) {
  struct TooLarge {
    std::uint16_t size;
    std::uint16_t extra;
  };
  constexpr TooLarge kTooLarge[] = {{221, 7676}, {220, 7677}, {65535, 0}, {220, 65535}};
  for (const TooLarge& words : kTooLarge) {
    DriverDevmode current = current_;
    current.publicDevmode.dmSize = words.size;
    current.publicDevmode.dmDriverExtra = words.extra;
    for (const PublicDevmode* reference :
         {static_cast<const PublicDevmode*>(nullptr), &current_.publicDevmode}) {
      CallerBlock out(kDriverDevmodeBytes);
      const auto before = out.copy();
      EXPECT_FALSE(CopyDevmodeOut(&current, reference, out.get())) << words.size;
      EXPECT_EQ(out.copy(), before) << words.size;
    }
  }
}

struct ReferenceCase {
  const char* name;
  Shape reference;
  Shape out;
  bool privateCopied;
};

class DevmodeCopyOutByReference : public testing::TestWithParam<ReferenceCase> {};

// clang-format off
constexpr ReferenceCase kReferenceCases[] = {
    // Name                     Reference                 Out                       Private part copied
    {"SameShape",              {1025, 1536, 220, 7676},  {1025, 1536, 220, 7676},  true},
    {"SameSizesOtherVersions", {1024, 7,    220, 7676},  {1025, 1536, 220, 7676},  true},
    {"SmallerSize",            {800,  7,    192, 7676},  {800,  1536, 192, 7676},  true},
    {"SizeOneByteSmaller",     {999,  7,    219, 7676},  {999,  1536, 219, 7676},  true},
    {"SmallerSizeNoVersion",   {0,    7,    192, 7676},  {0,    1536, 192, 7676},  true},
    {"LargerSize",             {999,  7,    224, 7676},  {1025, 1536, 220, 7676},  true},
    {"SmallerExtra",           {999,  7,    220, 100},   {1025, 7,    220, 100},   false},
    {"ExtraOneByteSmaller",    {999,  7,    220, 7675},  {1025, 7,    220, 7675},  false},
    {"NoExtra",                {999,  7,    220, 0},     {1025, 7,    220, 0},     false},
    {"LargerExtra",            {999,  7,    220, 8000},  {1025, 1536, 220, 7676},  true},
    {"BothSmaller",            {800,  848,  192, 112},   {800,  848,  192, 112},   false},
    {"SmallerSizeLargerExtra", {800,  848,  192, 8000},  {800,  1536, 192, 7676},  true},
    {"LargerSizeSmallerExtra", {999,  848,  224, 112},   {1025, 848,  220, 112},   false},
    {"LeastSize",              {999,  848,  72,  112},   {999,  848,  72,  112},   false},
    // A driver version of 0 can't be answered with: the words are the record's own again.
    {"SmallerExtraNoDriver",   {999,  0,    220, 100},   {1025, 1536, 220, 7676},  true},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Shapes, DevmodeCopyOutByReference, testing::ValuesIn(kReferenceCases),
                         test::CaseName());

std::vector<std::byte> ExpectedOut(const DriverDevmode& current, const ReferenceCase& row) {
  std::vector<std::byte> expected(kDriverDevmodeBytes, kPoison);
  const std::vector<std::byte> source = BytesOf(current);
  std::copy_n(source.begin(), row.out.size, expected.begin());
  std::memcpy(expected.data() + 64, &row.out, sizeof(row.out));
  if (row.privateCopied) {
    std::copy_n(source.begin() + 220, row.out.driverExtra, expected.begin() + row.out.size);
  } else {
    std::fill_n(expected.begin() + row.out.size, row.out.driverExtra, std::byte{0});
  }
  return expected;
}

TEST_P(DevmodeCopyOutByReference, GivesTheSmallerOfEachSizeWithItsVersion) {
  test::TestWorld world;
  const DriverDevmode current = TellingRecord();
  // Only the header of the reference is read.
  CallerBlock reference(kDevmodeHeaderBytes);
  std::memcpy(reference.bytes() + 64, &GetParam().reference, sizeof(Shape));
  CallerBlock out(kDriverDevmodeBytes);
  EXPECT_TRUE(CopyDevmodeOut(&current, reference.get(), out.get()));
  EXPECT_TRUE(out.copy() == ExpectedOut(current, GetParam()));
}

TEST_P(DevmodeCopyOutByReference, GivesTheSameWhenTheReferenceIsTheOutput) {
  test::TestWorld world;
  const DriverDevmode current = TellingRecord();
  CallerBlock both(kDriverDevmodeBytes);
  std::memcpy(both.bytes() + 64, &GetParam().reference, sizeof(Shape));
  EXPECT_TRUE(CopyDevmodeOut(&current, both.get(), both.get()));
  EXPECT_TRUE(both.copy() == ExpectedOut(current, GetParam()));
}

struct UnfitReferenceCase {
  const char* name;
  Shape reference;
};

class DevmodeCopyOutFailure : public testing::TestWithParam<UnfitReferenceCase> {};

INSTANTIATE_TEST_SUITE_P(References, DevmodeCopyOutFailure,
                         testing::Values(UnfitReferenceCase{"SizeOf71Bytes", {1025, 1536, 71, 0}},
                                         UnfitReferenceCase{"NoSize", {1025, 1536, 0, 0}},
                                         UnfitReferenceCase{"SmallerSizeWithoutVersion",
                                                            {0, 1536, 219, 0}}),
                         test::CaseName());

TEST_P(DevmodeCopyOutFailure, LeavesTheOutputUntouched) {
  test::TestWorld world;
  const DriverDevmode current = TellingRecord();
  CallerBlock reference(kDevmodeHeaderBytes);
  std::memcpy(reference.bytes() + 64, &GetParam().reference, sizeof(Shape));
  CallerBlock out(kDriverDevmodeBytes);
  EXPECT_FALSE(CopyDevmodeOut(&current, reference.get(), out.get()));
  EXPECT_TRUE(out.IsPoison());
}

}  // namespace
}  // namespace ostrel
