#include "core/devmode_queries.h"

#include "core/devmode_lifecycle.h"
#include "core/language.h"
#include "core/settings_record.h"
#include "core/ui_context.h"
#include "support/call_recorder.h"
#include "support/caller_block.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace ostrel {
namespace {

using test::BytesOf;
using test::CallerBlock;
using test::CallRecorder;
using test::DefaultRecord;
using test::kPoison;

constexpr std::uint32_t kUnsetError = 4711;
constexpr std::u16string_view kRefusalText =
    u"This setting can't be used with the other settings of the job.";

// ---- DevQueryPrintEx ----------------------------------------------------------------------------

class QueryPrint : public testing::Test {
 protected:
  QueryPrint() { process().CurrentLanguageModule = LoadLanguageModule(test::kDriverName); }
  ProcessState& process() { return world_.process; }

  // A question about `record` with a buffer of `units`, poisoned and exactly sized.
  DevQueryPrintInfo Question(PublicDevmode* record, std::uint32_t units) {
    buffer_ = std::make_unique<char16_t[]>(units);
    std::fill_n(buffer_.get(), units, u'#');
    DevQueryPrintInfo info = {};
    info.cbSize = sizeof(info);
    info.Level = 1;
    info.pDevMode = record;
    info.pszErrorStr = buffer_.get();
    info.cchErrorStr = units;
    info.cchNeeded = kUnsetError;
    return info;
  }

  test::TestWorld world_;
  DriverDevmode good_ = DefaultRecord();
  DriverDevmode bad_ = [] {
    DriverDevmode record = DefaultRecord();
    record.publicDevmode.dmFields = 0;
    return record;
  }();
  std::unique_ptr<char16_t[]> buffer_;
};

TEST_F(QueryPrint, NullArgumentIsFalse) {
  EXPECT_FALSE(DevQueryPrintEx(nullptr));
}

TEST_F(QueryPrint, LevelZeroIsFalseWithoutAReason) {
  DevQueryPrintInfo info = Question(&good_.publicDevmode, 8);
  info.Level = 0;
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(buffer_[0], u'#');
  EXPECT_EQ(info.cchNeeded, kUnsetError);
}

TEST_F(QueryPrint, AnyOtherLevelIsAnswered) {
  for (const std::uint16_t level : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{65535}}) {
    DevQueryPrintInfo info = Question(&good_.publicDevmode, 8);
    info.Level = level;
    EXPECT_TRUE(DevQueryPrintEx(&info)) << level;
    info.pDevMode = &bad_.publicDevmode;
    EXPECT_FALSE(DevQueryPrintEx(&info)) << level;
  }
}

TEST_F(QueryPrint, WithoutARecordIsTrue) {
  DevQueryPrintInfo info = Question(nullptr, 8);
  EXPECT_TRUE(DevQueryPrintEx(&info));
  EXPECT_EQ(buffer_[0], u'#');
}

TEST_F(QueryPrint, WithoutMemoryIsTrueEvenForARefusedRecord) {
  world_.platform.faults.FailOperation("HeapAlloc");
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 8);
  EXPECT_TRUE(DevQueryPrintEx(&info));
  EXPECT_EQ(buffer_[0], u'#');
  EXPECT_EQ(info.cchNeeded, kUnsetError);
}

TEST_F(QueryPrint, MergeableRecordIsTrueAndStaysAsItWas) {
  good_.publicDevmode.dmCopies = 0;
  good_.privateDevmode.ScaleRadio = 9999;
  CallerBlock record(good_, kDriverDevmodeBytes);
  DevQueryPrintInfo info = Question(record.get(), 8);
  EXPECT_TRUE(DevQueryPrintEx(&info));
  EXPECT_EQ(record.copy(), BytesOf(good_));
  EXPECT_EQ(buffer_[0], u'#');
  EXPECT_EQ(info.cchNeeded, kUnsetError);
}

TEST_F(QueryPrint, LeavesNothingBehind) {
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 8);
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(world_.Leftovers(1), "");  // the current language
}

TEST_F(QueryPrint, InitialisesARecordOfItsOwnByTheRecordsDeviceName) {
  CallRecorder recorder(world_);
  DevQueryPrintInfo info = Question(&good_.publicDevmode, 8);
  EXPECT_TRUE(DevQueryPrintEx(&info));
  const test::Calls expected = test::InOrder({
      {"HeapAlloc block", "GetLocaleInfoW type 5"},
      test::UserRead("Suffix", test::kDriverName),
      {
          "GetModuleFileNameW",
          "GetModuleFileNameW",
          "LoadLibraryW ostrelPCL6uienus.dll",
          "LoadStringW 202",
          "LoadStringW 146",
          "FreeLibrary",
          "GetLocaleInfoW type 5",
          "HeapFree",
      },
  });
  good_.publicDevmode.dmPaperSize = 8;  // asks for the locale's paper in the merge
  recorder.calls.clear();
  EXPECT_TRUE(DevQueryPrintEx(&info));
  EXPECT_EQ(recorder.calls, expected);
}

struct ErrorBufferCase {
  const char* name;
  std::uint32_t units;
};

class QueryPrintRefusal : public QueryPrint, public testing::WithParamInterface<ErrorBufferCase> {};

INSTANTIATE_TEST_SUITE_P(
    Buffers, QueryPrintRefusal,
    testing::Values(ErrorBufferCase{"Ample", 200}, ErrorBufferCase{"Exact", 63},
                    ErrorBufferCase{"OneTooSmall", 62}, ErrorBufferCase{"TwoUnits", 2},
                    ErrorBufferCase{"TerminatorAlone", 1}, ErrorBufferCase{"SizeZero", 0}),
    test::CaseName());

TEST_P(QueryPrintRefusal, WritesTheReasonCutToFitAndCountsAllOfIt) {
  ASSERT_EQ(kRefusalText.size() + 1, 63U);
  const std::uint32_t units = GetParam().units;
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, units);
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(info.cchNeeded, 63U);
  if (units != 0) {
    EXPECT_EQ(std::u16string(buffer_.get()), kRefusalText.substr(0, units - 1));
  }
}

TEST_F(QueryPrint, NullBufferOfAnySizeGetsTheCountAlone) {
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 0);
  info.pszErrorStr = nullptr;
  info.cchErrorStr = 200;
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(info.cchNeeded, 63U);
}

TEST_F(QueryPrint, SizeZeroWritesNothingToTheBuffer) {
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 4);
  info.cchErrorStr = 0;
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(std::u16string_view(buffer_.get(), 4), u"####");
  EXPECT_EQ(info.cchNeeded, 63U);
}

TEST_F(QueryPrint, ReasonComesFromTheCurrentLanguageNotFromTheRecords) {
  world_.platform.modules.Install(u"C:\\other.dll", {{207, u"Nein."}});
  process().CurrentLanguageModule = world_.platform.modules.LoadLibraryW(u"C:\\other.dll");
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 200);
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(std::u16string(buffer_.get()), u"Nein.");
  EXPECT_EQ(info.cchNeeded, 6U);
}

TEST_F(QueryPrint, WithoutACurrentLanguageTheReasonIsTheFallbackText) {
  process().CurrentLanguageModule = nullptr;
  DevQueryPrintInfo info = Question(&bad_.publicDevmode, 200);
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(std::u16string(buffer_.get()), u"id:207 missing!");
  EXPECT_EQ(info.cchNeeded, 16U);
}

struct QueryRecordCase {
  const char* name;
  std::uint16_t size;
  std::uint16_t extra;
  bool answer;
};

class QueryPrintRecord : public QueryPrint, public testing::WithParamInterface<QueryRecordCase> {};

INSTANTIATE_TEST_SUITE_P(Shapes, QueryPrintRecord,
                         testing::Values(QueryRecordCase{"Own", 220, 7676, true},
                                         QueryRecordCase{"PublicAlone", 220, 0, true},
                                         QueryRecordCase{"HeaderAlone", 72, 0, false},
                                         QueryRecordCase{"Size192", 192, 112, false},
                                         QueryRecordCase{"Size216", 216, 0, false},
                                         QueryRecordCase{"Size224", 224, 0, false}),
                         test::CaseName());

TEST_P(QueryPrintRecord, OfAForeignSizeIsRefused) {
  CallerBlock record = CallerBlock::Sized(good_, GetParam().size, GetParam().extra);
  DevQueryPrintInfo info = Question(record.get(), 8);
  EXPECT_EQ(DevQueryPrintEx(&info), GetParam().answer);
}

TEST_F(QueryPrint, UnterminatedDeviceNameIsReadToItsEndOnly) {
  CallerBlock record = CallerBlock::Sized(good_, 72, 0);
  std::fill_n(record->dmDeviceName, kDeviceNameUnits, u'n');
  DevQueryPrintInfo info = Question(record.get(), 200);
  EXPECT_FALSE(DevQueryPrintEx(&info));
  EXPECT_EQ(std::u16string(buffer_.get()), kRefusalText);

  std::fill_n(good_.publicDevmode.dmDeviceName, kDeviceNameUnits, u'n');
  info = Question(&good_.publicDevmode, 200);
  EXPECT_TRUE(DevQueryPrintEx(&info));
}

TEST_F(QueryPrint, RecordWithoutANameIsRefused) {
  good_.publicDevmode.dmDeviceName[0] = u'\0';
  DevQueryPrintInfo info = Question(&good_.publicDevmode, 200);
  EXPECT_FALSE(DevQueryPrintEx(&info));
}

// ---- DrvQueryJobAttributes ----------------------------------------------------------------------

constexpr std::size_t kAttributeBytes = 36;

struct AttributeBlock {
  alignas(8) std::byte bytes[kAttributeBytes + 12];
  AttributeBlock() { std::fill(std::begin(bytes), std::end(bytes), kPoison); }
  bool IsPoisonFrom(std::size_t place) const {
    return std::all_of(bytes + place, std::end(bytes),
                       [](std::byte each) { return each == kPoison; });
  }
};

std::vector<std::uint32_t> WordsOf(const AttributeBlock& block) {
  std::vector<std::uint32_t> words(kAttributeBytes / 4);
  std::memcpy(words.data(), block.bytes, kAttributeBytes);
  return words;
}

TEST(JobAttributes, OtherLevelsAreNotAnswered) {
  test::TestWorld world;
  const DriverDevmode record = DefaultRecord();
  for (const std::uint32_t level : {0U, 1U, 2U, 4U, 5U, 0xFFFFFFFFU}) {
    AttributeBlock answer;
    EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, level, answer.bytes), 0U) << level;
    EXPECT_TRUE(answer.IsPoisonFrom(0)) << level;
  }
}

TEST(JobAttributes, Level3IsAnsweredInExactly36Bytes) {
  test::TestWorld world;
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmCopies = 12;
  record.privateDevmode.MultipleUp = 4;
  AttributeBlock answer;
  EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, 3, answer.bytes), 1U);
  const std::vector<std::uint32_t> expected = {4, 4, 1, 0, 0, 12, 12, 0, 600 | (600 << 16)};
  EXPECT_EQ(WordsOf(answer), expected);
  EXPECT_TRUE(answer.IsPoisonFrom(kAttributeBytes));
}

TEST(JobAttributes, Record1200DpiIsAnsweredWith600) {
  test::TestWorld world;
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmPrintQuality = 1200;
  record.publicDevmode.dmYResolution = 1200;
  AttributeBlock answer;
  EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, 3, answer.bytes), 1U);
  EXPECT_EQ(WordsOf(answer)[8], 600U | (600U << 16));
}

TEST(JobAttributes, BorderIsNotConsulted) {
  test::TestWorld world;
  DriverDevmode record = DefaultRecord();
  for (const std::int16_t border : {std::int16_t{0}, std::int16_t{1}}) {
    record.privateDevmode.PageBorder = border;
    record.privateDevmode.PageOrder = 5;
    AttributeBlock answer;
    EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, 3, answer.bytes), 1U);
    EXPECT_EQ(WordsOf(answer)[2], 1U) << border;
    EXPECT_EQ(WordsOf(answer)[3], 0U) << border;
    EXPECT_EQ(WordsOf(answer)[4], 0U) << border;
  }
}

TEST(JobAttributes, ValuesAreTakenWithoutChecks) {
  test::TestWorld world;
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmCopies = 2000;
  record.privateDevmode.MultipleUp = 99;
  record.privateDevmode.Signature = {'n', 'o', 'n', 'e'};
  AttributeBlock answer;
  EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, 3, answer.bytes), 1U);
  EXPECT_EQ(WordsOf(answer)[0], 99U);
  EXPECT_EQ(WordsOf(answer)[1], 99U);
  EXPECT_EQ(WordsOf(answer)[5], 2000U);
  EXPECT_EQ(WordsOf(answer)[6], 2000U);
}

TEST(JobAttributes, NullPointersAreNotAnswered) {
  test::TestWorld world;
  const DriverDevmode record = DefaultRecord();
  AttributeBlock answer;
  EXPECT_EQ(DrvQueryJobAttributes(nullptr, 3, answer.bytes), 0U);
  EXPECT_TRUE(answer.IsPoisonFrom(0));
  EXPECT_EQ(DrvQueryJobAttributes(&record.publicDevmode, 3, nullptr), 0U);
}

struct ShortRecordCase {
  const char* name;
  std::uint16_t size;
  std::uint16_t extra;
  std::uint32_t pages;
  std::uint32_t copies;
};

class JobAttributesOfShortRecord : public testing::TestWithParam<ShortRecordCase> {};

INSTANTIATE_TEST_SUITE_P(Shapes, JobAttributesOfShortRecord,
                         testing::Values(ShortRecordCase{"HeaderAlone", 72, 0, 1, 1},
                                         ShortRecordCase{"OneByteBeforeTheCopies", 87, 0, 1, 1},
                                         ShortRecordCase{"UpToTheCopies", 88, 0, 1, 12},
                                         ShortRecordCase{"PublicAlone", 220, 0, 1, 12},
                                         ShortRecordCase{"OneByteBeforePages", 220, 285, 1, 12},
                                         ShortRecordCase{"UpToThePages", 220, 286, 4, 12}),
                         test::CaseName());

TEST_P(JobAttributesOfShortRecord, AnswerOneForWhatTheRecordDoesNotHold) {
  test::TestWorld world;
  DriverDevmode record = DefaultRecord();
  record.publicDevmode.dmCopies = 12;
  record.privateDevmode.MultipleUp = 4;
  CallerBlock shorter = CallerBlock::Sized(record, GetParam().size, GetParam().extra);
  AttributeBlock answer;
  EXPECT_EQ(DrvQueryJobAttributes(shorter.get(), 3, answer.bytes), 1U);
  EXPECT_EQ(WordsOf(answer)[0], GetParam().pages);
  EXPECT_EQ(WordsOf(answer)[5], GetParam().copies);
}

// ---- DrvConvertDevMode --------------------------------------------------------------------------

class ConvertEntry : public testing::Test {
 protected:
  ConvertEntry() { world_.platform.debug.lastError = kUnsetError; }
  std::uint32_t LastError() const { return world_.platform.debug.lastError; }

  // An output of `roomBytes` with these header words in poison.
  static CallerBlock Output(const DevmodeHeader& header, std::size_t roomBytes) {
    CallerBlock out(roomBytes);
    WriteHeader(out.get(), header);
    return out;
  }

  test::TestWorld world_;
  const DriverDevmode in_ = [] {
    DriverDevmode record = DefaultRecord();
    record.publicDevmode.dmCopies = 9;
    record.privateDevmode.ScaleRadio = 50;
    return record;
  }();
};

TEST_F(ConvertEntry, NullSizeFailsInEveryMode) {
  CallerBlock out = Output({1025, 1536, 220, 7676}, kDriverDevmodeBytes);
  const std::vector<std::byte> before = out.copy();
  for (const std::uint32_t mode : {0U, 1U, 2U, 3U, 4U, 5U}) {
    world_.platform.debug.lastError = kUnsetError;
    EXPECT_FALSE(
        DrvConvertDevMode(test::kPrinterName, &in_.publicDevmode, out.get(), nullptr, mode));
    EXPECT_EQ(LastError(), 87U) << mode;
    EXPECT_EQ(out.copy(), before) << mode;
  }
}

TEST_F(ConvertEntry, UnknownModesAreFalseWithoutAnError) {
  CallerBlock out(kDriverDevmodeBytes);
  for (const std::uint32_t mode : {0U, 3U, 5U, 6U, 7U, 8U, 0xFFFFFFFFU}) {
    std::int32_t size = 8000;
    EXPECT_FALSE(DrvConvertDevMode(test::kPrinterName, &in_.publicDevmode, out.get(), &size, mode));
    EXPECT_EQ(size, 8000) << mode;
    EXPECT_EQ(LastError(), kUnsetError) << mode;
    EXPECT_TRUE(out.IsPoison()) << mode;
  }
}

struct ConvertModeCase {
  const char* name;
  DevmodeHeader out;
  std::int32_t size;   // given; the block holds this much, and at least a header
  std::int32_t after;  // 0 for a failure
};

class ConvertModeConvert : public ConvertEntry,
                           public testing::WithParamInterface<ConvertModeCase> {};

// clang-format off
constexpr ConvertModeCase kConvertModeCases[] = {
    // Name                     Out                       Size  After
    {"SameShape",              {1025, 1536, 220, 7676},   7896, 7896},
    {"SameShapeMoreRoom",      {1025, 1536, 220, 7676},   9000, 7896},
    {"OlderShape",             {800,  848,  192, 112},     304,  304},
    {"LargerExtra",            {1025, 1536, 220, 7700},   7920, 7920},
    {"PublicAlone",            {1025, 1536, 220, 0},       220,  220},
    {"NoDriverVersion",        {1025, 0,    220, 0},      7896, 7896},
    {"HeaderAlone",            {1025, 1536, 72,  0},        72,   72},
    {"OneByteTooSmall",        {1025, 1536, 220, 7676},   7895,    0},
    {"OwnWordsFitTakenDoNot",  {1025, 0,    220, 0},      7895,    0},
    {"SizeBelowTheHeader",     {1025, 1536, 0,   0},        71,    0},
    {"SizeZero",               {1025, 1536, 0,   0},         0,    0},
    {"NegativeSize",           {1025, 1536, 220, 7676},     -1,    0},
    {"LowestSize",             {1025, 1536, 220, 7676}, -2147483647 - 1, 0},
    {"OutWithoutVersion",      {0,    1536, 220, 7676},   7896,    0},
    {"OutOf71Bytes",           {1025, 1536, 71,  0},       220,    0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Shapes, ConvertModeConvert, testing::ValuesIn(kConvertModeCases),
                         test::CaseName());

TEST_P(ConvertModeConvert, SetsTheSizeOrFailsWith87AndTouchesNothing) {
  constexpr std::int32_t kHeader = kDevmodeHeaderBytes;
  CallerBlock out =
      Output(GetParam().out, static_cast<std::size_t>(std::max(GetParam().size, kHeader)));
  const std::vector<std::byte> before = out.copy();
  std::int32_t size = GetParam().size;
  const bool succeeds = GetParam().after != 0;
  EXPECT_EQ(DrvConvertDevMode(test::kPrinterName, &in_.publicDevmode, out.get(), &size, 1),
            succeeds);
  if (succeeds) {
    EXPECT_EQ(size, GetParam().after);
    EXPECT_EQ(LastError(), kUnsetError);
    CallerBlock expected = Output(GetParam().out, out.size());
    ASSERT_NE(ConvertDevmode(expected.get(), &in_.publicDevmode), 0U);
    EXPECT_TRUE(out.copy() == expected.copy());
  } else {
    EXPECT_EQ(size, GetParam().size);
    EXPECT_EQ(LastError(), 87U);
    EXPECT_TRUE(out.copy() == before);
  }
}

TEST_F(ConvertEntry, ConvertModeWithoutOutOrInFailsWith87) {
  CallerBlock out = Output({1025, 1536, 220, 7676}, kDriverDevmodeBytes);
  const std::vector<std::byte> before = out.copy();
  std::int32_t size = 7896;
  EXPECT_FALSE(DrvConvertDevMode(nullptr, &in_.publicDevmode, nullptr, &size, 1));
  EXPECT_EQ(LastError(), 87U);
  EXPECT_EQ(size, 7896);
  world_.platform.debug.lastError = kUnsetError;
  EXPECT_FALSE(DrvConvertDevMode(nullptr, nullptr, out.get(), &size, 1));
  EXPECT_EQ(LastError(), 87U);
  EXPECT_EQ(size, 7896);
  EXPECT_TRUE(out.copy() == before);
}

TEST_F(ConvertEntry, ConvertModeWithAnUnversionedInFailsWith87) {
  DriverDevmode in = in_;
  in.publicDevmode.dmSpecVersion = 0;
  CallerBlock out = Output({1025, 1536, 220, 7676}, kDriverDevmodeBytes);
  const std::vector<std::byte> before = out.copy();
  std::int32_t size = 7896;
  EXPECT_FALSE(DrvConvertDevMode(nullptr, &in.publicDevmode, out.get(), &size, 1));
  EXPECT_EQ(LastError(), 87U);
  EXPECT_TRUE(out.copy() == before);
}

TEST_F(ConvertEntry, ConvertModeNeedsNoPrinter) {
  world_.platform.faults.StartTrace();
  CallerBlock out = Output({1025, 1536, 220, 7676}, kDriverDevmodeBytes);
  std::int32_t size = 7896;
  EXPECT_TRUE(DrvConvertDevMode(u"no such printer", &in_.publicDevmode, out.get(), &size, 1));
  EXPECT_EQ(out.copy(), BytesOf(in_));
  EXPECT_TRUE(world_.platform.faults.trace().empty());
}

// ---- to the old format

struct RoomCase {
  const char* name;
  std::int32_t size;
  bool withOut;
};

class ConvertModeOld : public ConvertEntry, public testing::WithParamInterface<RoomCase> {};

INSTANTIATE_TEST_SUITE_P(TooLittle, ConvertModeOld,
                         testing::Values(RoomCase{"OneByteTooSmall", 303, true},
                                         RoomCase{"Zero", 0, true}, RoomCase{"Negative", -1, true},
                                         RoomCase{"NoOut", 304, false},
                                         RoomCase{"NoOutWithAmpleSize", 9000, false},
                                         RoomCase{"NoOutNoSize", 0, false}),
                         test::CaseName());

TEST_P(ConvertModeOld, TellsTheSizeAndFailsWith122) {
  CallerBlock out(static_cast<std::size_t>(std::max(GetParam().size, 1)));
  std::int32_t size = GetParam().size;
  EXPECT_FALSE(DrvConvertDevMode(nullptr, &in_.publicDevmode,
                                 GetParam().withOut ? out.get() : nullptr, &size, 2));
  EXPECT_EQ(size, 304);
  EXPECT_EQ(LastError(), 122U);
  EXPECT_TRUE(out.IsPoison());
}

TEST_F(ConvertEntry, OldModeWritesTheOldHeaderThePublicWordsAndAClearedPrivatePart) {
  CallerBlock out(304);
  std::int32_t size = 304;
  EXPECT_TRUE(DrvConvertDevMode(nullptr, &in_.publicDevmode, out.get(), &size, 2));
  EXPECT_EQ(size, 304);
  EXPECT_EQ(LastError(), kUnsetError);
  EXPECT_EQ(out->dmSpecVersion, 800);
  EXPECT_EQ(out->dmDriverVersion, 848);
  EXPECT_EQ(out->dmSize, 192);
  EXPECT_EQ(out->dmDriverExtra, 112);
  const std::vector<std::byte> source = BytesOf(in_);
  EXPECT_TRUE(std::equal(out.bytes(), out.bytes() + 64, source.begin()));
  EXPECT_TRUE(std::equal(out.bytes() + 72, out.bytes() + 192, source.begin() + 72));
  EXPECT_TRUE(std::all_of(out.bytes() + 192, out.bytes() + 304,
                          [](std::byte each) { return each == std::byte{0}; }));
}

TEST_F(ConvertEntry, OldModeWritesNothingBehind304Bytes) {
  CallerBlock out(400);
  std::int32_t size = 400;
  EXPECT_TRUE(DrvConvertDevMode(nullptr, &in_.publicDevmode, out.get(), &size, 2));
  EXPECT_EQ(size, 304);
  EXPECT_TRUE(std::all_of(out.bytes() + 304, out.bytes() + 400,
                          [](std::byte each) { return each == kPoison; }));
}

TEST_F(ConvertEntry, OldModeOfARecordInTheOldFormatKeepsItsPrivatePart) {
  CallerBlock in = CallerBlock::Sized(in_, 192, 112);
  CallerBlock out(304);
  std::int32_t size = 304;
  EXPECT_TRUE(DrvConvertDevMode(nullptr, in.get(), out.get(), &size, 2));
  EXPECT_TRUE(std::equal(out.bytes() + 192, out.bytes() + 304, in.bytes() + 192));
}

TEST_F(ConvertEntry, OldModeThatCannotConvertFailsWith87AndTouchesNothing) {
  DriverDevmode unversioned = in_;
  unversioned.publicDevmode.dmSpecVersion = 0;
  CallerBlock tooShort = CallerBlock::Sized(in_, 72, 0);
  tooShort->dmSize = 71;
  const PublicDevmode* const inputs[] = {nullptr, &unversioned.publicDevmode, tooShort.get()};
  for (const PublicDevmode* in : inputs) {
    world_.platform.debug.lastError = kUnsetError;
    CallerBlock out(304);
    std::int32_t size = 304;
    EXPECT_FALSE(DrvConvertDevMode(nullptr, in, out.get(), &size, 2));
    EXPECT_EQ(LastError(), 87U);
    EXPECT_TRUE(out.IsPoison());
  }
}

// ---- the driver's default

class ConvertModeDefault : public ConvertEntry, public testing::WithParamInterface<RoomCase> {};

INSTANTIATE_TEST_SUITE_P(TooLittle, ConvertModeDefault,
                         testing::Values(RoomCase{"OneByteTooSmall", 7895, true},
                                         RoomCase{"Zero", 0, true}, RoomCase{"Negative", -1, true},
                                         RoomCase{"NoOut", 7896, false},
                                         RoomCase{"NoOutNoSize", 0, false}),
                         test::CaseName());

TEST_P(ConvertModeDefault, TellsTheSizeAndFailsWith122) {
  world_.platform.faults.StartTrace();
  CallerBlock out(static_cast<std::size_t>(std::max(GetParam().size, 1)));
  std::int32_t size = GetParam().size;
  EXPECT_FALSE(DrvConvertDevMode(test::kPrinterName, nullptr,
                                 GetParam().withOut ? out.get() : nullptr, &size, 4));
  EXPECT_EQ(size, 7896);
  EXPECT_EQ(LastError(), 122U);
  EXPECT_TRUE(out.IsPoison());
  EXPECT_TRUE(world_.platform.faults.trace().empty());  // before the printer is asked
}

TEST_F(ConvertEntry, DefaultModeWritesTheDefaultsOfThePrintersDriver) {
  CallerBlock out(8000);
  std::int32_t size = 8000;
  EXPECT_TRUE(DrvConvertDevMode(test::kPrinterName, nullptr, out.get(), &size, 4));
  EXPECT_EQ(size, 7896);
  DriverDevmode expected;
  ASSERT_TRUE(InitDriverDevmode(&expected, test::kDriverName, test::kDriverName));
  EXPECT_TRUE(std::equal(out.bytes(), out.bytes() + 7896, BytesOf(expected).begin()));
  EXPECT_TRUE(std::all_of(out.bytes() + 7896, out.bytes() + 8000,
                          [](std::byte each) { return each == kPoison; }));
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(ConvertEntry, DefaultModeOpensThePrinterWithoutSpecialAccessAndClosesIt) {
  CallRecorder recorder(world_);
  CallerBlock out(7896);
  std::int32_t size = 7896;
  EXPECT_TRUE(DrvConvertDevMode(test::kPrinterName, nullptr, out.get(), &size, 4));
  constexpr std::string_view kInitialisation[] = {"GetLocaleInfoW",     "GetUserDefaultUILanguage",
                                                  "GetModuleFileNameW", "LoadLibraryW",
                                                  "LoadStringW",        "FreeLibrary"};
  const test::Calls expected = test::InOrder({
      {
          "OpenPrinterW Front office",
          "GetPrinterDriverW level 2, size",
          "HeapAlloc block",
          "GetPrinterDriverW level 2, block",
      },
      test::UserRead("Suffix", test::kDriverName),
      test::UserWrite("Suffix", test::kDriverName),
      {"ClosePrinter", "HeapFree"},
  });
  EXPECT_EQ(recorder.CallsExcept(kInitialisation), expected);
  EXPECT_EQ(world_.platform.print.lastDesiredAccess(), 0U);
}

struct DefaultFailureCase {
  const char* name;
  const char16_t* printer;
  const char* operation;  // null for none
  std::size_t call;
};

class ConvertModeDefaultFailure : public ConvertEntry,
                                  public testing::WithParamInterface<DefaultFailureCase> {};

INSTANTIATE_TEST_SUITE_P(
    Conditions, ConvertModeDefaultFailure,
    testing::Values(
        DefaultFailureCase{"PrinterUnknown", u"nobody", nullptr, 0},
        DefaultFailureCase{"NoPrinterName", nullptr, nullptr, 0},
        DefaultFailureCase{"PrinterDoesNotOpen", test::kPrinterName, "OpenPrinterW", 1},
        DefaultFailureCase{"DriverTellsNoSize", test::kPrinterName, "GetPrinterDriverW", 1},
        DefaultFailureCase{"DriverTellsASizeAndNoMore", test::kPrinterName, "GetPrinterDriverW", 2},
        DefaultFailureCase{"NoMemory", test::kPrinterName, "HeapAlloc", 1}),
    test::CaseName());

TEST_P(ConvertModeDefaultFailure, IsFalseClosesThePrinterAndTouchesNoOutput) {
  if (GetParam().operation != nullptr) {
    world_.platform.faults.FailOperation(GetParam().operation, GetParam().call);
  }
  CallerBlock out(7896);
  std::int32_t size = 7896;
  EXPECT_FALSE(DrvConvertDevMode(GetParam().printer, nullptr, out.get(), &size, 4));
  EXPECT_TRUE(out.IsPoison());
  // The platform's own error stands: a caller mustn't take a failure for a call with too small an
  // output.
  EXPECT_NE(LastError(), 87U);
  EXPECT_NE(LastError(), 122U);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(ConvertEntry, DefaultModeAsksAgainForADescriptionThatGrewBetweenTheCalls) {
  world_.printer->driverPath = u"1234567";  // ends at the edge of its place in the block
  world_.platform.print.GrowDescriptionBy(1);
  world_.platform.faults.StartTrace();
  CallerBlock out(7896);
  std::int32_t size = 7896;
  ASSERT_TRUE(DrvConvertDevMode(test::kPrinterName, nullptr, out.get(), &size, 4));
  EXPECT_EQ(std::u16string(out->dmDeviceName), test::kDriverName);
  EXPECT_EQ(std::ranges::count(world_.platform.faults.trace(), "GetPrinterDriverW"), 3);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(ConvertEntry, DefaultModeWithoutALanguageLibraryStillGivesTheRecord) {
  world_.platform.modules.Remove(test::kEnglishLibraryPath);
  CallerBlock out(7896);
  std::int32_t size = 7896;
  EXPECT_TRUE(DrvConvertDevMode(test::kPrinterName, nullptr, out.get(), &size, 4));
  EXPECT_EQ(out->dmDriverExtra, 7676);
  EXPECT_EQ(world_.Leftovers(), "");
}

// ---- DrvUpgradePrinter --------------------------------------------------------------------------

class UpgradeEntry : public testing::Test {
 protected:
  UpgradeEntry() { world_.platform.debug.lastError = kUnsetError; }
  std::uint32_t LastError() const { return world_.platform.debug.lastError; }

  test::TestWorld world_;
  std::u16string name_ = test::kPrinterName;
  DriverUpgradeInfo1 info_ = {name_.data(), nullptr};
};

TEST_F(UpgradeEntry, OtherLevelsFailWith87) {
  for (const std::uint32_t level : {0U, 2U, 3U, 0xFFFFFFFFU}) {
    world_.platform.debug.lastError = kUnsetError;
    EXPECT_FALSE(DrvUpgradePrinter(level, &info_)) << level;
    EXPECT_EQ(LastError(), 87U) << level;
  }
}

TEST_F(UpgradeEntry, NullPointersFailWith87) {
  EXPECT_FALSE(DrvUpgradePrinter(1, nullptr));
  EXPECT_EQ(LastError(), 87U);
  world_.platform.debug.lastError = kUnsetError;
  info_.pPrinterName = nullptr;
  EXPECT_FALSE(DrvUpgradePrinter(1, &info_));
  EXPECT_EQ(LastError(), 87U);
}

TEST_F(UpgradeEntry, OpensThePrinterForAdministrationWritesTheBlockAndClosesIt) {
  CallRecorder recorder(world_);
  EXPECT_TRUE(DrvUpgradePrinter(1, &info_));
  EXPECT_EQ(world_.platform.print.lastDesiredAccess(), 0x000F000CU);
  const test::Calls expected = {
      "OpenPrinterW Front office",
      "GetPrinterDataW PrinterDataSize",
      "HeapAlloc block",
      "SetPrinterDataW PrinterDataSize",
      "SetPrinterDataW PrinterData",
      "HeapFree",
      "ClosePrinter",
  };
  EXPECT_EQ(recorder.calls, expected);
  EXPECT_NE(LastError(), 87U);
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(UpgradeEntry, StoredBlockIsReadBeforeItIsWritten) {
  world_.printer->data[u"PrinterDataSize"] = headless::StoredValue::Dword(4);
  world_.printer->data[u"PrinterData"] =
      headless::StoredValue::Binary({std::byte{0xFF}, std::byte{0x05}, std::byte{4}, std::byte{0}});
  CallRecorder recorder(world_);
  EXPECT_TRUE(DrvUpgradePrinter(1, &info_));
  const test::Calls expected = {
      "OpenPrinterW Front office",
      "GetPrinterDataW PrinterDataSize",
      "HeapAlloc block",
      "GetPrinterDataW PrinterData",
      "SetPrinterDataW PrinterDataSize",
      "SetPrinterDataW PrinterData",
      "HeapFree",
      "ClosePrinter",
  };
  EXPECT_EQ(recorder.calls, expected);
  EXPECT_EQ(world_.printer->data[u"PrinterDataSize"], headless::StoredValue::Dword(8));
  EXPECT_EQ(
      world_.printer->data[u"PrinterData"],
      headless::StoredValue::Binary({std::byte{0x00}, std::byte{0x06}, std::byte{8}, std::byte{0},
                                     std::byte{0}, std::byte{0}, std::byte{0}, std::byte{0}}));
}

TEST_F(UpgradeEntry, LackOfMemoryIsFalseAndThePrinterIsClosed) {
  world_.platform.faults.FailOperation("HeapAlloc");
  EXPECT_FALSE(DrvUpgradePrinter(1, &info_));
  EXPECT_TRUE(world_.printer->data.empty());
  EXPECT_EQ(world_.Leftovers(), "");
}

TEST_F(UpgradeEntry, UnknownPrinterIsFalse) {
  name_ = u"nobody";
  info_.pPrinterName = name_.data();
  EXPECT_FALSE(DrvUpgradePrinter(1, &info_));
  EXPECT_NE(LastError(), 87U);
  EXPECT_EQ(world_.Leftovers(), "");
}

// ---- The sheet without a dialog -----------------------------------------------------------------

class NoDialogSheet : public testing::Test {
 protected:
  NoDialogSheet() {
    header_.cbSize = sizeof(header_);
    header_.hPrinter = world_.OpenPrinter();
    header_.pdmOut = out_.get();
    header_.cbOut = kUnsetError;
  }

  std::int32_t Ask(std::uint32_t mode) {
    header_.fMode = mode;
    return DocumentPropertiesWithoutDialog(&header_);
  }

  test::TestWorld world_;
  DocumentPropertyHeader header_ = {};
  CallerBlock out_{kDriverDevmodeBytes};
};

TEST_F(NoDialogSheet, NullHeaderIsMinusOne) {
  EXPECT_EQ(DocumentPropertiesWithoutDialog(nullptr), -1);
}

TEST_F(NoDialogSheet, ModeZeroAsksForTheSizeOnly) {
  world_.platform.faults.StartTrace();
  EXPECT_EQ(Ask(0), 7896);
  EXPECT_EQ(header_.cbOut, 7896U);
  EXPECT_TRUE(out_.IsPoison());
  EXPECT_TRUE(world_.platform.faults.trace().empty());
}

TEST_F(NoDialogSheet, NullOutAsksForTheSizeOnly) {
  world_.platform.faults.StartTrace();
  header_.pdmOut = nullptr;
  for (const std::uint32_t mode : {1U, 2U, 8U, 10U}) {
    header_.cbOut = kUnsetError;
    EXPECT_EQ(Ask(mode), 7896) << mode;
    EXPECT_EQ(header_.cbOut, 7896U) << mode;
  }
  EXPECT_TRUE(world_.platform.faults.trace().empty());
}

TEST_F(NoDialogSheet, SizeIsToldEvenToACallerWithANullPrinter) {
  header_.hPrinter = nullptr;
  EXPECT_EQ(Ask(0), 7896);
  EXPECT_EQ(header_.cbOut, 7896U);
}

TEST_F(NoDialogSheet, CopyModesHandTheRecordOut) {
  for (const std::uint32_t mode : {1U, 2U, 3U, 10U, 0xFFFFFFFFU}) {
    header_.cbOut = kUnsetError;
    std::fill_n(out_.bytes(), out_.size(), kPoison);
    EXPECT_EQ(Ask(mode), 1) << mode;
    EXPECT_EQ(header_.cbOut, 7896U) << mode;
    EXPECT_EQ(out_->dmDriverExtra, 7676) << mode;
    EXPECT_EQ(std::u16string(out_->dmDeviceName), test::kDriverName) << mode;
    EXPECT_EQ(out_->dmPaperSize, 9) << mode;
  }
}

TEST_F(NoDialogSheet, OtherModesMakeAContextAndHandNothingOut) {
  for (const std::uint32_t mode : {4U, 8U, 12U}) {
    EXPECT_EQ(Ask(mode), 1) << mode;
    EXPECT_EQ(header_.cbOut, 7896U) << mode;
    EXPECT_TRUE(out_.IsPoison()) << mode;
  }
  EXPECT_NE(world_.process.DefaultContextCopy, nullptr);
}

TEST_F(NoDialogSheet, CallersRecordComesBackRepaired) {
  DriverDevmode in = DefaultRecord();
  in.publicDevmode.dmCopies = 9;
  in.publicDevmode.dmOrientation = 7;
  in.privateDevmode.ScaleRadio = 401;
  in.privateDevmode.MultipleUp = 4;
  header_.pdmIn = &in.publicDevmode;
  EXPECT_EQ(Ask(2), 1);
  DriverDevmode out;
  std::memcpy(&out, out_.bytes(), sizeof(out));
  EXPECT_EQ(out.publicDevmode.dmCopies, 9);
  EXPECT_EQ(out.publicDevmode.dmOrientation, 1);
  EXPECT_EQ(out.privateDevmode.ScaleRadio, 100);
  EXPECT_EQ(out.privateDevmode.MultipleUp, 4);
  EXPECT_EQ(in.privateDevmode.ScaleRadio, 401);  // the input is only read
}

TEST_F(NoDialogSheet, InputAndOutputMayBeOneRecord) {
  DriverDevmode in = DefaultRecord();
  in.publicDevmode.dmCopies = 9;
  in.privateDevmode.ScaleRadio = 50;
  header_.pdmIn = &in.publicDevmode;
  ASSERT_EQ(Ask(2), 1);
  CallerBlock both(in, kDriverDevmodeBytes);
  header_.pdmIn = both.get();
  header_.pdmOut = both.get();
  EXPECT_EQ(Ask(2), 1);
  EXPECT_TRUE(both.copy() == out_.copy());
  EXPECT_EQ(both->dmCopies, 9);
}

TEST_F(NoDialogSheet, InputsSmallerSizesAreAnsweredWith) {
  CallerBlock in = CallerBlock::Sized(DefaultRecord(), 192, 100);
  in->dmSpecVersion = 800;
  in->dmDriverVersion = 7;
  header_.pdmIn = in.get();
  EXPECT_EQ(Ask(2), 1);
  EXPECT_EQ(out_->dmSpecVersion, 800);
  EXPECT_EQ(out_->dmDriverVersion, 7);
  EXPECT_EQ(out_->dmSize, 192);
  EXPECT_EQ(out_->dmDriverExtra, 100);
  EXPECT_EQ(out_.bytes()[292], kPoison);
}

TEST_F(NoDialogSheet, InputThatCannotBeAnsweredLeavesTheOutputUntouched) {
  CallerBlock in = CallerBlock::Sized(DefaultRecord(), 72, 0);
  in->dmSize = 71;
  header_.pdmIn = in.get();
  EXPECT_EQ(Ask(2), 1);
  EXPECT_TRUE(out_.IsPoison());
}

TEST_F(NoDialogSheet, NullPrinterIsMinusOneWithTheSizeTold) {
  header_.hPrinter = nullptr;
  EXPECT_EQ(Ask(2), -1);
  EXPECT_EQ(header_.cbOut, 7896U);
  EXPECT_TRUE(out_.IsPoison());
}

TEST_F(NoDialogSheet, FailedContextIsMinusOneAndLeavesTheOutputUntouched) {
  world_.platform.modules.Remove(test::kBitmapLibraryPath);
  EXPECT_EQ(Ask(2), -1);
  EXPECT_EQ(header_.cbOut, 7896U);
  EXPECT_TRUE(out_.IsPoison());
  world_.platform.print.ClosePrinter(header_.hPrinter);
  EXPECT_EQ(world_.Leftovers(1), "");
}

TEST_F(NoDialogSheet, FreesItsContextAndKeepsTheLibraries) {
  EXPECT_EQ(Ask(2), 1);
  EXPECT_EQ(world_.platform.memory.liveBlocks(), 1U);  // the copy with the defaults
  world_.platform.print.ClosePrinter(header_.hPrinter);
  EXPECT_EQ(world_.Leftovers(2), "");
}

}  // namespace
}  // namespace ostrel
