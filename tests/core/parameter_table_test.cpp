#include "core/parameter_table.h"

#include "core/ui_context.h"
#include "support/byte_record.h"
#include "support/case_name.h"
#include "support/record_layout.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::ByteRecord;
using test::Difference;
using test::PutNumber;
using test::PutText;

// The uncut key of each slot; empty where a key was retired.
// clang-format off
constexpr const char* kSlotKeys[] = {
    /*  0 */ "OutputSize", "ScaleFlag", "ScaleRadio", "ReversePrint", "FeedOrient",
    /*  5 */ "PosterPrint", "MultipleUp", "PageOrder", "PageBorder", "MixedOrient",
    /* 10 */ "PosterType", "CropMarks", "BookletPrint", "BookletBinding", "BookletCoverType",
    /* 15 */ "BookletCoverSource", "BookletPrintCover", "BookletPrintOnCoverOutside", "BoookletPrintOnBackCoverOutside", "Rotate",
    /* 20 */ "ImageShift", "MarginsAutoFit", "Side", "PrintPosition", "AdjustPrintPosition",
    /* 25 */ "LeftRight", "UpDown", "BookletPrintOnCoverInside", "BoookletPrintOnBackCoverInside", "FavoriteName",
    /* 30 */ "FavoriteIndex", "FirstPageOnly", "WatermarkData", "OverlayFlag", "OverlayFileName",
    /* 35 */ "", "", "", "", "",
    /* 40 */ "CustomPaperSize", "SourceTray", "ManualDuplex", "", "",
    /* 45 */ "DuplexIndex", "", "FinessMode", "Side2", "TonerSavingMode",
    /* 50 */ "ScreenType", "Duplex", "ColorMode", "", "PrintMode",
    /* 55 */ "ImageType", "ApplyElements", "DocumentElement", "Brightness", "Constrast",
    /* 60 */ "AdjustBalance", "TargetColor", "Highlights", "Midtones", "Shadows",
    /* 65 */ "Profile", "ColorTemperature", "GammaCorrection", "Monitor", "InputImage",
    /* 70 */ "Saturation", "ImageInputIndex", "Mismatch", "Rotate180", "Mirror",
    /* 75 */ "Thickness", "Negative", "sLaserTestAPResolution",
};
// clang-format on
static_assert(std::size(kSlotKeys) == 78);

constexpr std::size_t kSlotBytes = 28;
constexpr std::size_t kKeyCharacters = 19;

struct Place {
  std::size_t offset;
  std::size_t width;
};

// The place of an uncut key in the record's layout; rows that share a key make one place.
Place PlaceOf(std::string_view key) {
  Place place = {0, 0};
  for (const test::LayoutRow& row : test::kRecordLayout) {
    if (row.key == key) {
      place.offset = place.width == 0 ? row.offset : place.offset;
      place.width += row.width;
    }
  }
  return place;
}

struct FilledSlot {
  std::string name;
  std::size_t slot;
  std::string cutKey;
  Place place;    // of this slot
  Place reached;  // by the cut key: the lower slot's where two are alike
};

void PrintTo(const FilledSlot& slot, std::ostream* out) {
  *out << slot.name;
}

std::vector<FilledSlot> FilledSlots() {
  std::vector<FilledSlot> slots;
  for (std::size_t slot = 0; slot < std::size(kSlotKeys); ++slot) {
    const std::string key = kSlotKeys[slot];
    if (key.empty()) {
      continue;
    }
    const std::size_t lower = slot == 27 ? 17 : slot == 28 ? 18 : slot;
    slots.push_back({"Slot" + std::to_string(slot) + key, slot, key.substr(0, kKeyCharacters),
                     PlaceOf(key), PlaceOf(kSlotKeys[lower])});
  }
  return slots;
}

// A context with a record of random bytes and a built table, without a world around it.
class ContextTest : public testing::Test {
 protected:
  ContextTest() {
    test::SetBytes(context_->devmode, test::RandomBytes(sizeof(DriverDevmode), 1));
    context_->publicPointer = &context_->devmode.publicDevmode;
    context_->privatePointer = &context_->devmode.privateDevmode;
    BuildUIParamTable(context_.get());
  }

  ByteRecord Record() const { return test::BytesOf(context_->devmode); }

  std::unique_ptr<UIContext> context_ = std::make_unique<UIContext>();
};

// ---- The slots ----------------------------------------------------------------------------------

using BuildTable = ContextTest;

TEST_F(BuildTable, FillsAll78SlotsExactlyWhateverStoodThere) {
  std::memset(&context_->uiParams, 0xCD, sizeof(context_->uiParams));
  BuildUIParamTable(context_.get());
  ByteRecord expected(std::size(kSlotKeys) * kSlotBytes);
  for (const FilledSlot& filled : FilledSlots()) {
    const std::size_t start = filled.slot * kSlotBytes;
    std::ranges::copy(filled.cutKey, expected.begin() + static_cast<std::ptrdiff_t>(start));
    PutNumber(expected, start + 20, 4, static_cast<std::int64_t>(filled.place.width));
    PutNumber(expected, start + 24, 4, static_cast<std::int64_t>(filled.place.offset));
  }
  EXPECT_EQ(Difference(test::BytesOf(context_->uiParams), expected), "");
}

TEST_F(BuildTable, LeavesRetiredSlotsAllZero) {
  std::memset(&context_->uiParams, 0xCD, sizeof(context_->uiParams));
  BuildUIParamTable(context_.get());
  for (const std::size_t slot : {35U, 36U, 37U, 38U, 39U, 43U, 44U, 46U, 53U}) {
    EXPECT_EQ(Difference(test::BytesOf(context_->uiParams[slot]), ByteRecord(28)), "") << slot;
  }
}

TEST_F(BuildTable, TouchesNothingElseInTheContext) {
  std::memset(static_cast<void*>(context_.get()), 0xCD, sizeof(UIContext));
  ByteRecord expected = test::BytesOf(*context_);
  BuildUIParamTable(context_.get());
  const ByteRecord table = test::BytesOf(context_->uiParams);
  std::ranges::copy(table, expected.begin() + offsetof(UIContext, uiParams));
  EXPECT_EQ(Difference(test::BytesOf(*context_), expected), "");
}

TEST_F(BuildTable, CutsTheKeysThatAreTooLong) {
  EXPECT_STREQ(context_->uiParams[17].Key, "BookletPrintOnCover");
  EXPECT_STREQ(context_->uiParams[27].Key, "BookletPrintOnCover");
  EXPECT_STREQ(context_->uiParams[18].Key, "BoookletPrintOnBack");
  EXPECT_STREQ(context_->uiParams[28].Key, "BoookletPrintOnBack");
  EXPECT_STREQ(context_->uiParams[77].Key, "sLaserTestAPResolut");
}

// ---- Get and Set by key -------------------------------------------------------------------------

class ParameterOfSlot : public ContextTest, public testing::WithParamInterface<FilledSlot> {
 protected:
  const char* key_ = GetParam().cutKey.c_str();
  std::size_t offset_ = GetParam().reached.offset;
  std::uint32_t width_ = static_cast<std::uint32_t>(GetParam().reached.width);
};

INSTANTIATE_TEST_SUITE_P(Filled, ParameterOfSlot, testing::ValuesIn(FilledSlots()),
                         test::CaseName());

TEST_P(ParameterOfSlot, GetCopiesExactlyTheFieldOut) {
  const ByteRecord before = Record();
  ByteRecord buffer(width_ + 16, 0xCD);
  ByteRecord expected = buffer;
  std::copy_n(before.begin() + static_cast<std::ptrdiff_t>(220 + offset_), width_,
              expected.begin() + 8);
  EXPECT_EQ(GetUIParam(context_.get(), key_, buffer.data() + 8, width_), 0U);
  EXPECT_EQ(Difference(buffer, expected), "");
  EXPECT_EQ(Difference(Record(), before), "");
}

TEST_P(ParameterOfSlot, SetCopiesExactlyTheFieldIn) {
  const ByteRecord data = test::RandomBytes(width_, 2);
  ByteRecord expected = Record();
  std::ranges::copy(data, expected.begin() + static_cast<std::ptrdiff_t>(220 + offset_));
  EXPECT_EQ(SetUIParam(context_.get(), key_, data.data(), width_), 0U);
  EXPECT_EQ(Difference(Record(), expected), "");
}

TEST_P(ParameterOfSlot, GetOfAnotherWidthCopiesNothing) {
  const ByteRecord poison(width_ + 8, 0xCD);
  for (const std::uint32_t width : {0U, width_ - 1, width_ + 1}) {
    ByteRecord buffer = poison;
    EXPECT_EQ(GetUIParam(context_.get(), key_, buffer.data(), width), 0x8007007AU) << width;
    EXPECT_EQ(Difference(buffer, poison), "") << width;
  }
}

TEST_P(ParameterOfSlot, SetOfAnotherWidthCopiesNothing) {
  const ByteRecord before = Record();
  const ByteRecord data = test::RandomBytes(width_ + 8, 3);
  for (const std::uint32_t width : {0U, width_ - 1, width_ + 1}) {
    EXPECT_EQ(SetUIParam(context_.get(), key_, data.data(), width), 0x8007007AU) << width;
    EXPECT_EQ(Difference(Record(), before), "") << width;
  }
}

TEST_P(ParameterOfSlot, NullMemoryIsRefusedAsAWidth) {
  const ByteRecord before = Record();
  EXPECT_EQ(GetUIParam(context_.get(), key_, nullptr, width_), 0x8007007AU);
  EXPECT_EQ(SetUIParam(context_.get(), key_, nullptr, width_), 0x8007007AU);
  EXPECT_EQ(Difference(Record(), before), "");
}

struct UnknownKey {
  const char* name;
  const char* key;
};

class ParameterOfUnknownKey : public ContextTest, public testing::WithParamInterface<UnknownKey> {};

INSTANTIATE_TEST_SUITE_P(
    Keys, ParameterOfUnknownKey,
    testing::Values(UnknownKey{"Null", nullptr}, UnknownKey{"NoSuchKey", "JobMode"},
                    UnknownKey{"OneCharacterLess", "OutputSiz"},
                    UnknownKey{"OneCharacterMore", "OutputSize2"},
                    UnknownKey{"OtherCase", "outputsize"}, UnknownKey{"Blank", " "},
                    UnknownKey{"SettingInsteadOfKey", "PageParaNUP"},
                    UnknownKey{"FullKeyOfSlot17", "BookletPrintOnCoverOutside"},
                    UnknownKey{"FullKeyOfSlot27", "BookletPrintOnCoverInside"},
                    UnknownKey{"FullKeyOfSlot18", "BoookletPrintOnBackCoverOutside"},
                    UnknownKey{"FullKeyOfSlot28", "BoookletPrintOnBackCoverInside"},
                    UnknownKey{"FullKeyOfSlot77", "sLaserTestAPResolution"},
                    UnknownKey{"CutKeyAndOneCharacter", "BookletPrintOnCoverO"},
                    UnknownKey{"LongestKeyAndOneCharacter", "AdjustPrintPosition2"}),
    test::CaseName());

TEST_P(ParameterOfUnknownKey, GetAndSetFailAndCopyNothing) {
  const ByteRecord before = Record();
  for (const std::uint32_t width : {0U, 2U, 4U}) {
    ByteRecord buffer(8, 0xCD);
    EXPECT_EQ(GetUIParam(context_.get(), GetParam().key, buffer.data(), width), 0x80070057U);
    EXPECT_EQ(Difference(buffer, ByteRecord(8, 0xCD)), "");
    EXPECT_EQ(SetUIParam(context_.get(), GetParam().key, buffer.data(), width), 0x80070057U);
  }
  EXPECT_EQ(Difference(Record(), before), "");
}

using ParameterAccess = ContextTest;

TEST_F(ParameterAccess, EmptyKeyWithSizeZeroSucceedsAndCopiesNothing) {
  const ByteRecord before = Record();
  ByteRecord buffer(8, 0xCD);
  EXPECT_EQ(GetUIParam(context_.get(), "", buffer.data(), 0), 0U);
  EXPECT_EQ(GetUIParam(context_.get(), "", nullptr, 0), 0U);
  EXPECT_EQ(SetUIParam(context_.get(), "", buffer.data(), 0), 0U);
  EXPECT_EQ(SetUIParam(context_.get(), "", nullptr, 0), 0U);
  EXPECT_EQ(Difference(buffer, ByteRecord(8, 0xCD)), "");
  EXPECT_EQ(Difference(Record(), before), "");
}

TEST_F(ParameterAccess, EmptyKeyWithAnotherSizeIsAWidthMismatch) {
  const ByteRecord before = Record();
  for (const std::uint32_t width : {1U, 2U, 4U, 0xFFFFFFFFU}) {
    ByteRecord buffer(8, 0xCD);
    EXPECT_EQ(GetUIParam(context_.get(), "", buffer.data(), width), 0x8007007AU) << width;
    EXPECT_EQ(Difference(buffer, ByteRecord(8, 0xCD)), "") << width;
    EXPECT_EQ(SetUIParam(context_.get(), "", buffer.data(), width), 0x8007007AU) << width;
  }
  EXPECT_EQ(Difference(Record(), before), "");
}

TEST_F(ParameterAccess, NullContextIsNoObjectForGetAndAFailureForSet) {
  std::int16_t word = 0x5A5A;
  EXPECT_EQ(GetUIParam(nullptr, "Side", &word, 2), 0x8000000AU);
  EXPECT_EQ(word, 0x5A5A);
  EXPECT_EQ(SetUIParam(nullptr, "Side", &word, 2), 0x80004005U);
}

TEST_F(ParameterAccess, ContextWithoutPrivateRecordIsNoObjectForGetAndAFailureForSet) {
  context_->privatePointer = nullptr;
  const ByteRecord before = Record();
  std::int16_t word = 0x5A5A;
  EXPECT_EQ(GetUIParam(context_.get(), "Side", &word, 2), 0x8000000AU);
  EXPECT_EQ(word, 0x5A5A);
  EXPECT_EQ(SetUIParam(context_.get(), "Side", &word, 2), 0x80004005U);
  EXPECT_EQ(SetUIParam(context_.get(), "NoSuchKey", &word, 2), 0x80004005U);
  EXPECT_EQ(Difference(Record(), before), "");
}

TEST_F(ParameterAccess, GoesThroughThePrivatePointer) {
  auto other = std::make_unique<PrivateDevmode>();
  context_->privatePointer = other.get();
  const ByteRecord before = Record();
  std::int16_t word = 77;
  EXPECT_EQ(SetUIParam(context_.get(), "Side", &word, 2), 0U);
  EXPECT_EQ(other->Side, 77);
  word = 0;
  EXPECT_EQ(GetUIParam(context_.get(), "Side", &word, 2), 0U);
  EXPECT_EQ(word, 77);
  EXPECT_EQ(Difference(Record(), before), "");
}

// ---- Public words -------------------------------------------------------------------------------

struct PublicWord {
  std::uint32_t flag;
  std::size_t offset;
  std::size_t width;
};

constexpr PublicWord kOrientation = {0x1, 76, 2};
constexpr PublicWord kPaperSize = {0x2, 78, 2};
constexpr PublicWord kPaperLength = {0x4, 80, 2};
constexpr PublicWord kPaperWidth = {0x8, 82, 2};
constexpr PublicWord kScale = {0x10, 84, 2};
constexpr PublicWord kCopies = {0x100, 86, 2};
constexpr PublicWord kDefaultSource = {0x200, 88, 2};
constexpr PublicWord kPrintQuality = {0x400, 90, 2};
constexpr PublicWord kColor = {0x800, 92, 2};
constexpr PublicWord kDuplex = {0x1000, 94, 2};
constexpr PublicWord kYResolution = {0x2000, 96, 2};
constexpr PublicWord kCollate = {0x8000, 100, 2};
constexpr PublicWord kMediaType = {0x2000000, 196, 4};

std::string Hex(std::uint32_t flag) {
  std::ostringstream text;
  text << "Flag0x" << std::hex << flag;
  return text.str();
}

std::string Signed(std::int64_t value) {
  return (value < 0 ? "Minus" : "") + std::to_string(value < 0 ? -value : value);
}

struct ReadWord {
  PublicWord word;
  std::int64_t stored;
  std::int16_t answer;
  std::int64_t afterwards;
};

void PrintTo(const ReadWord& row, std::ostream* out) {
  *out << Hex(row.word.flag) << " storing " << row.stored;
}

class GetPublicWord : public ContextTest, public testing::WithParamInterface<ReadWord> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Edges, GetPublicWord, testing::Values(
    // Word, stored, answer, stored afterwards
    ReadWord{kOrientation, 0, 0, 0},
    ReadWord{kOrientation, 1, 1, 1},
    ReadWord{kOrientation, 2, 2, 2},
    ReadWord{kOrientation, 3, 1, 1},
    ReadWord{kOrientation, -1, 1, 1},
    ReadWord{kOrientation, 32767, 1, 1},
    ReadWord{kOrientation, -32768, 1, 1},
    ReadWord{kPaperSize, 0, 0, 0},
    ReadWord{kPaperSize, -1, -1, -1},
    ReadWord{kPaperSize, 319, 319, 319},
    ReadWord{kPaperSize, 32767, 32767, 32767},
    ReadWord{kPaperLength, 0, 0, 0},
    ReadWord{kPaperLength, -32768, -32768, -32768},
    ReadWord{kPaperLength, 32767, 32767, 32767},
    ReadWord{kPaperWidth, 0, 0, 0},
    ReadWord{kPaperWidth, -32768, -32768, -32768},
    ReadWord{kPaperWidth, 32767, 32767, 32767},
    ReadWord{kScale, 250, 100, 250},
    ReadWord{kScale, 0, 100, 0},
    ReadWord{kScale, -1, 100, -1},
    ReadWord{kScale, 100, 100, 100},
    ReadWord{kCopies, 1, 1, 1},
    ReadWord{kCopies, 999, 999, 999},
    ReadWord{kCopies, 0, 1, 1},
    ReadWord{kCopies, 1000, 1, 1},
    ReadWord{kCopies, -1, 1, 1},
    ReadWord{kCopies, 32767, 1, 1},
    ReadWord{kCopies, -32768, 1, 1},
    ReadWord{kColor, 0, 0, 0},
    ReadWord{kColor, 2, 2, 2},
    ReadWord{kColor, -1, -1, -1},
    ReadWord{kDuplex, 1, 1, 1},
    ReadWord{kDuplex, 3, 3, 3},
    ReadWord{kDuplex, 0, 1, 1},
    ReadWord{kDuplex, 4, 1, 1},
    ReadWord{kDuplex, 5, 1, 1},
    ReadWord{kDuplex, -1, 1, 1},
    ReadWord{kCollate, 0, 0, 0},
    ReadWord{kCollate, 1, 1, 1},
    ReadWord{kCollate, 32767, 32767, 32767},
    ReadWord{kCollate, -1, 0, 0},
    ReadWord{kCollate, -32768, 0, 0},
    ReadWord{kMediaType, 1, 1, 1},
    ReadWord{kMediaType, 266, 266, 266},
    ReadWord{kMediaType, 0, 1, 1},
    ReadWord{kMediaType, 267, 1, 1},
    ReadWord{kMediaType, 65537, 1, 1},
    ReadWord{kMediaType, 65536 + 200, 1, 1},
    ReadWord{kMediaType, -1, 1, 1}),
    [](const auto& row) { return Hex(row.param.word.flag) + "Storing" + Signed(row.param.stored); });
// clang-format on

TEST_P(GetPublicWord, AnswersAndRepairsTheRecordInThatWordOnly) {
  ByteRecord record = Record();
  PutNumber(record, GetParam().word.offset, GetParam().word.width, GetParam().stored);
  test::SetBytes(context_->devmode, record);
  std::int16_t value = 0x5A5A;
  EXPECT_EQ(GetDevmodeField(context_.get(), GetParam().word.flag, &value), 0U);
  EXPECT_EQ(value, GetParam().answer);
  PutNumber(record, GetParam().word.offset, GetParam().word.width, GetParam().afterwards);
  EXPECT_EQ(Difference(Record(), record), "");
}

class FlagTest : public ContextTest, public testing::WithParamInterface<std::uint32_t> {};

struct FlagName {
  std::string operator()(const testing::TestParamInfo<std::uint32_t>& row) const {
    return Hex(row.param);
  }
};

using GetUnservedFlag = FlagTest;

INSTANTIATE_TEST_SUITE_P(Flags, GetUnservedFlag,
                         testing::Values(0, 0x200, 0x400, 0x2000, 0x4000, 0x10000, 0x3, 0x18,
                                         0x7FFF, 0x2000001, 0x80000000, 0xFFFFFFFF),
                         FlagName());

TEST_P(GetUnservedFlag, LeavesValueAndRecordUntouchedAndSucceeds) {
  const ByteRecord before = Record();
  std::int16_t value = 0x5A5A;
  EXPECT_EQ(GetDevmodeField(context_.get(), GetParam(), &value), 0U);
  EXPECT_EQ(value, 0x5A5A);
  EXPECT_EQ(Difference(Record(), before), "");
}

struct WrittenWord {
  const char* name;
  PublicWord word;
};

class SetPublicWord : public ContextTest, public testing::WithParamInterface<WrittenWord> {};

INSTANTIATE_TEST_SUITE_P(
    Words, SetPublicWord,
    testing::Values(WrittenWord{"Orientation", kOrientation}, WrittenWord{"PaperSize", kPaperSize},
                    WrittenWord{"PaperLength", kPaperLength},
                    WrittenWord{"PaperWidth", kPaperWidth}, WrittenWord{"Scale", kScale},
                    WrittenWord{"Copies", kCopies}, WrittenWord{"DefaultSource", kDefaultSource},
                    WrittenWord{"PrintQuality", kPrintQuality}, WrittenWord{"Color", kColor},
                    WrittenWord{"Duplex", kDuplex}, WrittenWord{"YResolution", kYResolution},
                    WrittenWord{"Collate", kCollate}, WrittenWord{"MediaType", kMediaType}),
    test::CaseName());

TEST_P(SetPublicWord, WritesTheWholeWordAndNothingElse) {
  for (const std::int16_t value :
       {std::int16_t{0}, std::int16_t{1}, std::int16_t{0x1234}, std::int16_t{32767}}) {
    ByteRecord expected = Record();
    PutNumber(expected, GetParam().word.offset, GetParam().word.width, value);
    EXPECT_EQ(SetDevmodeField(context_.get(), GetParam().word.flag, value), 0U) << value;
    EXPECT_EQ(Difference(Record(), expected), "") << value;
  }
}

TEST_P(SetPublicWord, WritesANegativeValueUnrepaired) {
  ByteRecord expected = Record();
  PutNumber(expected, GetParam().word.offset, GetParam().word.width, -2);
  EXPECT_EQ(SetDevmodeField(context_.get(), GetParam().word.flag, std::int16_t{-2}), 0U);
  EXPECT_EQ(Difference(Record(), expected), "");
}

using SetUnknownFlag = FlagTest;

INSTANTIATE_TEST_SUITE_P(Flags, SetUnknownFlag,
                         testing::Values(0, 0x3, 0x18, 0x20, 0x40, 0x80, 0x4000, 0x10000, 0x20000,
                                         0x4000000, 0x2000001, 0x80000000, 0xFFFFFFFF),
                         FlagName());

TEST_P(SetUnknownFlag, FailsAndWritesNothing) {
  const ByteRecord before = Record();
  EXPECT_EQ(SetDevmodeField(context_.get(), GetParam(), std::int16_t{7}), 0x80004005U);
  EXPECT_EQ(Difference(Record(), before), "");
}

using SetTextByWordFlag = FlagTest;

INSTANTIATE_TEST_SUITE_P(Flags, SetTextByWordFlag,
                         testing::Values(0, 0x1, 0x2000000, 0x7FFF, 0x10001), FlagName());

TEST_P(SetTextByWordFlag, FailsAndWritesNothing) {
  const ByteRecord before = Record();
  EXPECT_EQ(SetDevmodeField(context_.get(), GetParam(), u"text"), 0x80004005U);
  EXPECT_EQ(Difference(Record(), before), "");
}

struct FormName {
  const char* name;
  std::size_t given;
  std::size_t kept;
};

class SetFormName : public ContextTest, public testing::WithParamInterface<FormName> {};

INSTANTIATE_TEST_SUITE_P(Lengths, SetFormName,
                         testing::Values(FormName{"Empty", 0, 0}, FormName{"OneUnit", 1, 1},
                                         FormName{"FillsTheField", 31, 31},
                                         FormName{"OneTooLong", 32, 31},
                                         FormName{"MuchTooLong", 200, 31}),
                         test::CaseName());

TEST_P(SetFormName, KeepsAtMost31CharactersAndWritesNothingElse) {
  const std::u16string given(GetParam().given, u'f');
  ByteRecord expected = Record();
  PutText(expected, 102, std::u16string(32, u'\0'));
  PutText(expected, 102, given.substr(0, GetParam().kept));
  EXPECT_EQ(SetDevmodeField(context_.get(), 0x10000, given.c_str()), 0U);
  EXPECT_EQ(Difference(Record(), expected), "");
}

struct Announcement {
  const char* name;
  std::uint32_t before;
  std::uint32_t after;
};

class AnnounceCustomSize : public ContextTest, public testing::WithParamInterface<Announcement> {};

INSTANTIATE_TEST_SUITE_P(Fields, AnnounceCustomSize,
                         testing::Values(Announcement{"Nothing", 0, 0x1000C},
                                         Announcement{"Defaults", 0x0200BF0F, 0x0201BF0F},
                                         Announcement{"AllButTheThree", 0xFFFEFFF3, 0xFFFFFFFF},
                                         Announcement{"Everything", 0xFFFFFFFF, 0xFFFFFFFF}),
                         test::CaseName());

TEST_P(AnnounceCustomSize, AddsLengthWidthAndFormNameToTheFieldsAndWritesNothingElse) {
  ByteRecord record = Record();
  PutNumber(record, 72, 4, GetParam().before);
  test::SetBytes(context_->devmode, record);
  EXPECT_EQ(SetDevmodeField(context_.get(), 0x7FFF, std::int16_t{1234}), 0U);
  PutNumber(record, 72, 4, GetParam().after);
  EXPECT_EQ(Difference(Record(), record), "");
}

using PublicAccess = ContextTest;

TEST_F(PublicAccess, NullFormNameEmptiesTheField) {
  ByteRecord expected = Record();
  PutText(expected, 102, std::u16string(32, u'\0'));
  const char16_t* none = nullptr;
  EXPECT_EQ(SetDevmodeField(context_.get(), 0x10000, none), 0U);
  EXPECT_EQ(Difference(Record(), expected), "");
}

TEST_F(PublicAccess, NullContextIsNoObject) {
  std::int16_t value = 0x5A5A;
  EXPECT_EQ(GetDevmodeField(nullptr, 0x1, &value), 0x8000000AU);
  EXPECT_EQ(value, 0x5A5A);
  EXPECT_EQ(SetDevmodeField(nullptr, 0x1, std::int16_t{1}), 0x8000000AU);
  EXPECT_EQ(SetDevmodeField(nullptr, 0x10000, u"A4"), 0x8000000AU);
}

TEST_F(PublicAccess, ContextWithoutPublicRecordIsNoObject) {
  context_->publicPointer = nullptr;
  const ByteRecord before = Record();
  std::int16_t value = 0x5A5A;
  EXPECT_EQ(GetDevmodeField(context_.get(), 0x1, &value), 0x8000000AU);
  EXPECT_EQ(value, 0x5A5A);
  EXPECT_EQ(SetDevmodeField(context_.get(), 0x1, std::int16_t{1}), 0x8000000AU);
  EXPECT_EQ(SetDevmodeField(context_.get(), 0x10000, u"A4"), 0x8000000AU);
  EXPECT_EQ(Difference(Record(), before), "");
}

TEST_F(PublicAccess, NullValueIsNoObjectAndRepairsNothing) {
  const ByteRecord before = Record();
  EXPECT_EQ(GetDevmodeField(context_.get(), 0x100, nullptr), 0x8000000AU);
  EXPECT_EQ(Difference(Record(), before), "");
}

}  // namespace
}  // namespace ostrel
