// The three forms of DocumentPropertiesW without a dialog: how large, the printer's record, and the
// caller's record given back in order.
#include "print_system_fixture.h"

#include <algorithm>
#include <array>

namespace ostrel::print_system {
namespace {

constexpr std::array<char, 4> kSignature = {'P', 'R', 'I', 'V'};

// Starts each case from the printer's own record.
class RecordExchange : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(AskDefaultRecord(printer_.get(), sent_), 1); }

  // Sends `sent_`, and keeps what came back in `received_`.
  void Repair() { ASSERT_EQ(AskRepairedRecord(printer_.get(), sent_, received_), 1); }

  Printer printer_{kTestPrinter};
  Record sent_;
  Record received_;
};

using DocumentPropertiesCall = RecordExchange;
using RepairedRecord = RecordExchange;
using ForeignRecord = RecordExchange;

// ---- The printer's record -----------------------------------------------------------------------

TEST_F(DocumentPropertiesCall, SizeQueryTellsTheWholeRecord) {
  EXPECT_EQ(AskRecordSize(printer_.get()), 7896);
}

TEST_F(DocumentPropertiesCall, DefaultRecordHasItsHeaderWords) {
  const DEVMODEW& record = *sent_.devmode();
  EXPECT_EQ(TextOf(record.dmDeviceName), kOstrelDriverName);
  EXPECT_EQ(record.dmSpecVersion, 1025);
  EXPECT_EQ(record.dmDriverVersion, 1536);
  EXPECT_EQ(record.dmSize, 220);
  EXPECT_EQ(record.dmDriverExtra, 7676);
  EXPECT_EQ(record.dmFields, 0x0200BF0FU);
}

TEST_F(DocumentPropertiesCall, DefaultRecordHasItsPublicValues) {
  const DEVMODEW& record = *sent_.devmode();
  EXPECT_EQ(record.dmOrientation, 1);
  EXPECT_EQ(record.dmScale, 100);
  EXPECT_EQ(record.dmCopies, 1);
  EXPECT_EQ(record.dmDefaultSource, 7);
  EXPECT_EQ(record.dmPrintQuality, 600);
  EXPECT_EQ(record.dmColor, 1);
  EXPECT_EQ(record.dmDuplex, 1);
  EXPECT_EQ(record.dmYResolution, 600);
  EXPECT_EQ(record.dmTTOption, 1);
  EXPECT_EQ(record.dmCollate, 0);
  EXPECT_EQ(record.dmMediaType, 1U);
}

TEST_F(DocumentPropertiesCall, DefaultRecordHasItsPrivateValues) {
  const PrivateDevmode& record = sent_.privatePart();
  EXPECT_EQ(record.Signature, kSignature);
  EXPECT_EQ(record.ColorMode, 1);
  EXPECT_EQ(record.Duplex, 1);
  EXPECT_EQ(record.ScaleRadio, 100);
  EXPECT_EQ(record.MultipleUp, 1);
  EXPECT_EQ(record.FeedOrient, 1);
  EXPECT_EQ(record.BookletSheets, 5);
  EXPECT_EQ(record.BookletCoverType, 1);
  EXPECT_EQ(record.FavoriteIndex, 26);
  EXPECT_EQ(record.GammaCorrection, 3);
  EXPECT_EQ(record.Thickness, 2);
  EXPECT_EQ(record.UseSoftFont, 1U);
  EXPECT_EQ(record.SoftFontBitmap, 0U);
}

TEST_F(DocumentPropertiesCall, DefaultRecordNamesFavouriteAndWatermarkInTheUsersLanguage) {
  EXPECT_EQ(TextOf(sent_.privatePart().FavoriteName), L"Default");
  EXPECT_EQ(TextOf(sent_.privatePart().WatermarkData.PageWMName), L"[No Watermark]");
}

TEST_F(DocumentPropertiesCall, DefaultRecordHoldsNoCustomPapers) {
  const auto* first = reinterpret_cast<const BYTE*>(sent_.privatePart().CustomPaperSize);
  EXPECT_TRUE(std::all_of(first, first + sizeof(PrivateDevmode::CustomPaperSize),
                          [](BYTE byte) { return byte == 0; }));
}

TEST_F(DocumentPropertiesCall, NothingIsWrittenBehindTheRecord) {
  constexpr std::size_t kSpareBytes = 64;
  Record out(kDriverDevmodeBytes + kSpareBytes);
  ASSERT_EQ(AskRepairedRecord(printer_.get(), sent_, out), 1);
  const auto behind = out.bytes().begin() + kDriverDevmodeBytes;
  EXPECT_TRUE(std::all_of(behind, out.bytes().end(), [](BYTE byte) { return byte == 0xCC; }));
}

TEST_F(DocumentPropertiesCall, AGoodRecordComesBackByteForByte) {
  DEVMODEW& record = *sent_.devmode();
  record.dmOrientation = 2;
  record.dmCopies = 999;
  record.dmDuplex = 3;
  record.dmDefaultSource = 4;
  record.dmPrintQuality = 1200;
  record.dmYResolution = 1200;
  record.dmCollate = 1;
  sent_.privatePart().MultipleUp = 23;
  sent_.privatePart().LeftRight = -1181;
  sent_.privatePart().TonerSavingMode = 3;
  Repair();
  EXPECT_EQ(received_.bytes(), sent_.bytes());
}

TEST_F(DocumentPropertiesCall, TheCallersRecordMayBeTheOutputToo) {
  sent_.devmode()->dmCopies = 0;
  sent_.privatePart().Thickness = 9;
  ASSERT_EQ(AskRepairedRecord(printer_.get(), sent_, sent_), 1);
  EXPECT_EQ(sent_.devmode()->dmCopies, 1);
  EXPECT_EQ(sent_.privatePart().Thickness, 2);
}

// ---- Wrong values -------------------------------------------------------------------------------

// One 16-bit word of the whole record, what is sent in it and what is to come back.
struct WordCase {
  const char* name;
  std::size_t offset;
  std::int16_t sent;
  std::int16_t expected;
};

void PrintTo(const WordCase& row, std::ostream* out) {
  *out << row.name;
}

class RepairedWord : public RecordExchange, public testing::WithParamInterface<WordCase> {};

TEST_P(RepairedWord, ComesBackInOrder) {
  const WordCase& row = GetParam();
  std::memcpy(&sent_.bytes()[row.offset], &row.sent, sizeof(row.sent));
  Repair();
  std::int16_t received = 0;
  std::memcpy(&received, &received_.bytes()[row.offset], sizeof(received));
  EXPECT_EQ(received, row.expected);
}

constexpr std::size_t Private(std::size_t offset) {
  return 220 + offset;
}

// clang-format off
constexpr WordCase kWords[] = {
    // Public words, by their offset in DEVMODEW
    {"OrientationOfThree", 76, 3, 1},
    {"OrientationOfZero", 76, 0, 1},
    {"CopiesOfZero", 86, 0, 1},
    {"CopiesAboveTheMost", 86, 1000, 1},
    {"CopiesAtTheMost", 86, 999, 999},
    {"SourceOfZero", 88, 0, 7},
    {"SourceOfATray", 88, 257, 257},
    {"QualityOf300", 90, 300, 600},
    {"QualityOfDraft", 90, -1, 600},
    {"QualityOf1200", 90, 1200, 1200},
    {"Colour", 92, 2, 1},
    {"DuplexOfSix", 94, 6, 1},
    {"DuplexOfZero", 94, 0, 1},
    {"DuplexOfFour", 94, 4, 4},
    {"YResolutionOf72", 96, 72, 600},
    {"CollateOfTwo", 100, 2, 0},
    // Private words
    {"ColorMode", Private(4), 2, 1},
    {"DuplexBelow", Private(6), 0, 1},
    {"DuplexAbove", Private(6), 6, 1},
    {"DuplexAtTheMost", Private(6), 5, 5},
    {"DuplexIndex", Private(8), 3, 0},
    {"ReversePrint", Private(10), 2, 0},
    {"MultipleUpBelow", Private(284), 0, 1},
    {"MultipleUpAbove", Private(284), 24, 1},
    {"SourceTrayIsNotChecked", Private(298), 77, 77},
    {"MismatchIsNotChecked", Private(306), -5, -5},
    {"BookletSheetsAbove", Private(314), 51, 5},
    {"BookletSheetsBelow", Private(314), 0, 5},
    {"BookletCoverSourceIsNotChecked", Private(334), 99, 99},
    {"LeftRightBelow", Private(348), -1182, 0},
    {"LeftRightAtTheLeast", Private(348), -1181, -1181},
    {"FavoriteIndexAboveSurvives", Private(864), 40, 40},
    {"FavoriteIndexBelowSurvives", Private(864), -1, -1},
    {"ImageTypeAbove", Private(874), 3, 0},
    {"IcmTypeAbove", Private(876), 4, 0},
    {"LastBrightnessAbove", Private(888), 101, 0},
    {"GammaCorrection", Private(938), 5, 3},
    {"ColorTemperature", Private(936), 3, 1},
    {"TonerSavingMode", Private(1968), 4, 0},
    {"Thickness", Private(1974), 5, 2},
    {"WatermarkIndex", Private(2088), 33, 0},
    {"WatermarkSize", Private(2872), 601, 72},
    {"WatermarkAngle", Private(2882), 91, 0},
    {"WatermarkAngleAtTheLeast", Private(2882), -90, -90},
    {"WatermarkFontChosen", Private(2890), 1, -28880},
    {"CustomPaperWidthIsCleared", Private(3964), 2000, 0},
    {"CustomPaperLengthIsCleared", Private(3966 + 19 * 72), 3000, 0},
    {"CustomPaperNameIsCleared", Private(3968), 'X', 0},
    {"UseSoftFont", Private(5404), 2, 1},
    {"SoftFontBitmap", Private(5408), 2, 0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EachRule, RepairedWord, testing::ValuesIn(kWords),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RepairedRecord, AnUnknownPaperBecomesTheCountrysOwn) {
  sent_.devmode()->dmPaperSize = 999;
  sent_.devmode()->dmPaperWidth = 1;
  sent_.devmode()->dmPaperLength = 1;
  Repair();
  EXPECT_EQ(received_.devmode()->dmPaperSize, PaperOfUsersCountry().id);
  EXPECT_EQ(received_.devmode()->dmPaperWidth, PaperOfUsersCountry().width_tenths_mm);
  EXPECT_EQ(received_.devmode()->dmPaperLength, PaperOfUsersCountry().length_tenths_mm);
}

TEST_F(RepairedRecord, AKnownPaperBringsItsOwnSize) {
  sent_.devmode()->dmPaperSize = 243;
  sent_.devmode()->dmPaperWidth = 1;
  sent_.devmode()->dmPaperLength = 1;
  Repair();
  EXPECT_EQ(received_.devmode()->dmPaperSize, 243);
  EXPECT_EQ(received_.devmode()->dmPaperWidth, 2160);
  EXPECT_EQ(received_.devmode()->dmPaperLength, 3430);
}

TEST_F(RepairedRecord, ACustomPaperWithoutARecordTakesTheStandInSize) {
  sent_.devmode()->dmPaperSize = 288;
  Repair();
  EXPECT_EQ(received_.devmode()->dmPaperSize, 288);
  EXPECT_EQ(received_.devmode()->dmPaperWidth, 2100);
  EXPECT_EQ(received_.devmode()->dmPaperLength, 2970);
}

TEST_F(RepairedRecord, AMediaTypeOfZeroLeavesTheEarlierOne) {
  sent_.devmode()->dmMediaType = 0;
  Repair();
  EXPECT_EQ(received_.devmode()->dmMediaType, 1U);
}

TEST_F(RepairedRecord, AFieldThatIsNotAnnouncedIsPassedOver) {
  sent_.devmode()->dmFields &= ~static_cast<DWORD>(DM_COPIES);
  sent_.devmode()->dmCopies = 9;
  Repair();
  EXPECT_EQ(received_.devmode()->dmCopies, 1);
}

TEST_F(RepairedRecord, AScaleIsNotTakenSinceThePrintersRecordDoesNotAnnounceIt) {
  sent_.devmode()->dmFields |= DM_SCALE;
  sent_.devmode()->dmScale = 250;
  Repair();
  EXPECT_EQ(received_.devmode()->dmScale, 100);
}

TEST_F(RepairedRecord, TextsWithoutTerminatorAreEmptiedOrCut) {
  std::ranges::fill(sent_.privatePart().Monitor, u'x');
  std::ranges::fill(sent_.privatePart().InputImage, u'x');
  std::ranges::fill(sent_.privatePart().WatermarkData.PageWMText, u'x');
  Repair();
  EXPECT_EQ(TextOf(received_.privatePart().Monitor), L"");
  EXPECT_EQ(TextOf(received_.privatePart().InputImage), L"");
  EXPECT_EQ(TextOf(received_.privatePart().WatermarkData.PageWMText), std::wstring(64, L'x'));
}

TEST_F(RepairedRecord, AnEmptyFavouriteNameIsFilled) {
  std::ranges::fill(sent_.privatePart().FavoriteName, u'\0');
  Repair();
  EXPECT_EQ(TextOf(received_.privatePart().FavoriteName), L"Default");
}

TEST_F(RepairedRecord, AFavouriteNameOfTheCallerStays) {
  const std::u16string_view name = u"Draft, two on a page \u05D0\u4E2D";
  std::ranges::copy(name, sent_.privatePart().FavoriteName);
  sent_.privatePart().FavoriteName[name.size()] = u'\0';
  Repair();
  EXPECT_EQ(TextOf(received_.privatePart().FavoriteName), std::wstring(name.begin(), name.end()));
}

TEST_F(RepairedRecord, RepairingTwiceChangesNothingMore) {
  std::fill(sent_.bytes().begin() + 72, sent_.bytes().end(), BYTE{0xFF});
  sent_.privatePart().Signature = kSignature;
  Repair();
  Record again;
  ASSERT_EQ(AskRepairedRecord(printer_.get(), received_, again), 1);
  EXPECT_EQ(again.bytes(), received_.bytes());
}

// ---- Records of another driver, or of another time ----------------------------------------------

TEST_F(ForeignRecord, AWrongSignatureLosesThePrivatePartAndKeepsThePublicFields) {
  sent_.devmode()->dmCopies = 7;
  sent_.privatePart().MultipleUp = 4;
  sent_.privatePart().Signature[0] = 'X';
  Repair();
  EXPECT_EQ(received_.devmode()->dmCopies, 7);
  EXPECT_EQ(received_.privatePart().MultipleUp, 1);
  EXPECT_EQ(received_.privatePart().Signature, kSignature);
}

TEST_F(ForeignRecord, AnotherDriverVersionLosesThePrivatePartAndKeepsThePublicFields) {
  sent_.devmode()->dmDriverVersion = 1535;
  sent_.devmode()->dmCopies = 7;
  sent_.privatePart().MultipleUp = 4;
  Repair();
  EXPECT_EQ(received_.devmode()->dmCopies, 7);
  EXPECT_EQ(received_.privatePart().MultipleUp, 1);
}

TEST_F(ForeignRecord, AnEmptyDeviceNameIsNotMerged) {
  sent_.devmode()->dmDeviceName[0] = L'\0';
  sent_.devmode()->dmCopies = 7;
  Repair();
  EXPECT_EQ(received_.devmode()->dmCopies, 1);
}

TEST_F(ForeignRecord, ARecordWithoutFieldsIsNotMerged) {
  sent_.devmode()->dmFields = 0;
  sent_.privatePart().MultipleUp = 4;
  Repair();
  EXPECT_EQ(received_.privatePart().MultipleUp, 1);
}

// The caller's own record is the smaller one, so the answer is cut to it and bears its words.
class OldRecord : public RecordExchange, public testing::WithParamInterface<WORD> {};

TEST_P(OldRecord, IsNotMergedAndIsAnsweredInItsOwnSize) {
  sent_.devmode()->dmSize = GetParam();
  sent_.devmode()->dmDriverExtra = 0;
  sent_.devmode()->dmCopies = 7;
  Repair();
  EXPECT_EQ(received_.devmode()->dmSize, GetParam());
  EXPECT_EQ(received_.devmode()->dmDriverExtra, 0);
  EXPECT_EQ(received_.devmode()->dmCopies, 1);
  const auto behind = received_.bytes().begin() + GetParam();
  EXPECT_TRUE(std::all_of(behind, received_.bytes().end(), [](BYTE byte) { return byte == 0xCC; }));
}

INSTANTIATE_TEST_SUITE_P(EachSize, OldRecord, testing::Values(WORD{192}, WORD{216}),
                         [](const auto& row) { return std::to_string(row.param) + "Bytes"; });

}  // namespace
}  // namespace ostrel::print_system
