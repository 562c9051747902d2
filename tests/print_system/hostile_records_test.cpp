// Records that no driver of ours has made, taken through every page and dialog of the sheet:
// whatever they hold, the sheet opens, is gone through, and ends as the user says.
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "stored_values.h"
#include "windows_sheet.h"

#include <random>

namespace ostrel::print_system {
namespace {

constexpr UINT kTitles[] = {106, 216, 126, 106};  // of the pages, in the order of the walk
constexpr int kDialogButtons[] = {1407, 1065};

enum class Filling { kOnes, kHalf, kSmallNumbers, kNoise };

struct HostileRecord {
  const char* name;
  Filling filling;
  unsigned seed;
};

void PrintTo(const HostileRecord& row, std::ostream* out) {
  *out << row.name;
}

// Spoils the private part and the numbers of the public one. The words by which the driver knows
// the record as its own stay, so that it looks at the rest.
Record SpoiltRecord(const HostileRecord& row) {
  const Printer printer(kTestPrinter);
  Record record;
  EXPECT_EQ(AskDefaultRecord(printer.get(), record), IDOK);
  std::mt19937 random(row.seed);
  const auto below = [&random](unsigned limit) {
    return static_cast<std::uint16_t>(random() % limit);
  };
  auto* words = reinterpret_cast<std::uint16_t*>(&record.privatePart());
  for (std::size_t word = 0; word < sizeof(PrivateDevmode) / sizeof(*words); ++word) {
    words[word] = row.filling == Filling::kOnes           ? std::uint16_t{0xFFFF}
                  : row.filling == Filling::kHalf         ? std::uint16_t{0x7FFF}
                  : row.filling == Filling::kSmallNumbers ? below(24)
                                                          : below(0x10000);
  }
  DEVMODEW& numbers = *record.devmode();
  const unsigned limit = row.filling == Filling::kSmallNumbers ? 300 : 0x10000;
  for (std::int16_t* number :
       {&numbers.dmOrientation, &numbers.dmPaperSize, &numbers.dmPaperLength, &numbers.dmPaperWidth,
        &numbers.dmCopies, &numbers.dmDefaultSource, &numbers.dmDuplex, &numbers.dmCollate}) {
    *number = static_cast<std::int16_t>(below(limit));
  }
  numbers.dmMediaType = below(300);
  return record;
}

// Answers whatever is asked, and cancels a dialog.
void Dismiss(SheetDriver& driver) {
  while (driver.Dialog() != nullptr) {
    if (!driver.AnswerBox()) {
      driver.LeaveDialog(IDCANCEL);
    }
  }
}

void WalkThrough(SheetDriver& driver) {
  Dismiss(driver);
  for (const UINT title : kTitles) {
    driver.ShowPage(ShippedText(LibraryOfUsersLanguage(), title));
    Dismiss(driver);
    for (const int button : kDialogButtons) {
      if (driver.HasControl(button) && driver.IsShown(button) && driver.IsEnabled(button)) {
        driver.Click(button);
        Dismiss(driver);
      }
    }
  }
}

class HostileRecords : public testing::TestWithParam<HostileRecord> {
 protected:
  HostileRecords() {
    settings_.Clear();
    printersValues_.Set(L"PrinterName", TextValue(L"Hazel 2 Series"));
  }

  SettingsPlace settings_;
  UserValues printersValues_{kTestPrinter};
};

TEST_P(HostileRecords, GoThroughEveryPageAndAreLeftAloneByCancel) {
  const Record record = SpoiltRecord(GetParam());
  DocumentSheet sheet(record);
  ASSERT_TRUE(sheet.driver().IsOpen());
  WalkThrough(sheet.driver());
  sheet.driver().Press(SheetButton::kCancel);
  Dismiss(sheet.driver());
  sheet.driver().Result();
  EXPECT_EQ(sheet.in.bytes(), record.bytes());
  EXPECT_EQ(sheet.out.bytes(), Record().bytes());
}

TEST_P(HostileRecords, ComeBackAsRecordsThatTheDriverTakes) {
  DocumentSheet sheet(SpoiltRecord(GetParam()));
  WalkThrough(sheet.driver());
  sheet.driver().Press(SheetButton::kOk);
  Dismiss(sheet.driver());
  EXPECT_EQ(sheet.driver().Result(), IDOK);
  const DEVMODEW& out = *sheet.out.devmode();
  EXPECT_EQ(out.dmSize, sizeof(DEVMODEW));
  EXPECT_EQ(out.dmDriverExtra, sizeof(PrivateDevmode));
  EXPECT_GE(out.dmCopies, 1);
  EXPECT_LE(out.dmCopies, 999);
  EXPECT_TRUE(out.dmOrientation == 1 || out.dmOrientation == 2) << out.dmOrientation;
  const PrivateDevmode& part = sheet.out.privatePart();
  EXPECT_GE(part.ScaleRadio, 25);
  EXPECT_LE(part.ScaleRadio, 400);
  EXPECT_TRUE(part.FeedOrient == 1 || part.FeedOrient == 2) << part.FeedOrient;
}

// clang-format off
constexpr HostileRecord kRecords[] = {
    {"AllBitsSet",       Filling::kOnes,         1},
    {"LargestNumbers",   Filling::kHalf,         2},
    {"SmallNumbers",     Filling::kSmallNumbers, 3},
    {"OtherSmallOnes",   Filling::kSmallNumbers, 4},
    {"Noise",            Filling::kNoise,        5},
    {"OtherNoise",       Filling::kNoise,        6},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Row, HostileRecords, testing::ValuesIn(kRecords),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace ostrel::print_system
