// What the dialog of the user's own paper sizes leaves behind in the print system: the bytes of the
// settings file, and what applications are told of the printer's papers.
#include "paper_lists.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "windows_sheet.h"

#include <bit>

namespace ostrel::print_system {
namespace {

constexpr UINT kPaperTitle = 216;
constexpr std::size_t kRecordBytes = 72;

std::wstring Text(UINT id) {
  return ShippedText(LibraryOfUsersLanguage(), id);
}

class CustomPaperDialog : public testing::Test {
 protected:
  CustomPaperDialog() { settings_.Clear(); }

  // Opens the dialog over a sheet of the printer's own record.
  void OpenDialog() {
    const Printer printer(kTestPrinter);
    Record record;
    ASSERT_EQ(AskDefaultRecord(printer.get(), record), IDOK);
    sheet_.emplace(record);
    sheet_->driver().ShowPage(Text(kPaperTitle));
    sheet_->driver().Click(1407);
    ASSERT_EQ(sheet_->driver().OpenDialogs(), 1);
  }

  // Stores a size in millimetres under a name.
  void Save(const wchar_t* name, const wchar_t* width, const wchar_t* length) {
    SheetDriver& driver = sheet_->driver();
    driver.Click(1110);
    driver.Type(1358, width);
    driver.Type(1442, length);
    driver.Type(1009, name);
    driver.Click(1421);
  }

  std::string StoredBytes(std::string_view node) const {
    return LeafValue(settings_.Read().value_or(""), {"cfgobj", "UIParam", "cuspapersetting", node})
        .value_or("");
  }

  SettingsPlace settings_;
  std::optional<DocumentSheet> sheet_;  // goes first
};

// The record as the format tells it, put together by hand.
std::string ExpectedBytes(std::uint16_t width_px600, std::uint16_t length_px600,
                          std::wstring_view name, std::uint32_t id, float exactWidth_px600,
                          float exactLength_px600) {
  std::string bytes;
  const auto add = [&bytes](auto number) {
    for (std::size_t byte = 0; byte < sizeof(number); ++byte) {
      bytes += static_cast<char>(number >> (8 * byte));
    }
  };
  add(width_px600);
  add(length_px600);
  for (std::size_t unit = 0; unit < 26; ++unit) {
    add(static_cast<std::uint16_t>(unit < name.size() ? name[unit] : 0));
  }
  add(id);
  add(std::uint32_t{1});  // millimetres
  add(std::bit_cast<std::uint32_t>(exactWidth_px600));
  add(std::bit_cast<std::uint32_t>(exactLength_px600));
  return bytes;
}

// The two exact sizes hold what the boxes held, unrounded: a box's number has a small surplus,
// which differs with the way it took. So these are compared as numbers and all else byte for byte.
TEST_F(CustomPaperDialog, LeavesTheRecordInTheSettingsFileByteForByte) {
  OpenDialog();
  Save(L"Caf\u00E9 \u05D0", L"100", L"150");
  const std::string stored = StoredBytes("Caf\xC3\xA9 \xD7\x90");
  ASSERT_EQ(stored.size(), kRecordBytes);
  float exactWidth = 0;
  float exactLength = 0;
  std::memcpy(&exactWidth, &stored[64], sizeof(float));
  std::memcpy(&exactLength, &stored[68], sizeof(float));
  EXPECT_NEAR(exactWidth, 100 * 600 / 25.4, 0.05);
  EXPECT_NEAR(exactLength, 150 * 600 / 25.4, 0.05);
  EXPECT_EQ(stored, ExpectedBytes(2362, 3543, L"Caf\u00E9 \u05D0", 288, exactWidth, exactLength));
}

TEST_F(CustomPaperDialog, LeavesAFileOfWholeObjects) {
  OpenDialog();
  Save(L"Card", L"100", L"150");
  const std::string bytes = settings_.Read().value_or("");
  EXPECT_EQ(LeafValue(bytes, {"cfgobj", "version"}), std::string("0.0.0.1\0", 8));
  EXPECT_NE(LeafValue(bytes, {"cfgobj", "UIParam", "watermarksetting"}), std::nullopt);
  EXPECT_EQ(LeafValue(bytes, {"cfgobj", "UIParam", "cuspapersetting", "card"}), std::nullopt);
  EXPECT_EQ(StoredBytes("Card").size(), kRecordBytes);
}

TEST_F(CustomPaperDialog, TellsApplicationsOfThePaperAtOnce) {
  OpenDialog();
  EXPECT_TRUE(PapersBehindTheTable().ids.empty());
  Save(L"Card", L"100", L"150");
  Save(L"Label", L"80", L"200");
  const ListedPapers listed = PapersBehindTheTable();
  EXPECT_EQ(listed.ids, (std::vector<WORD>{288, 289}));
  EXPECT_EQ(listed.sizes_tenths_mm,
            (std::vector<std::pair<LONG, LONG>>{{1000, 1500}, {800, 2000}}));
  EXPECT_EQ(listed.names,
            (std::vector<std::wstring>{L"Card (100 x 150mm)", L"Label (80 x 200mm)"}));
}

TEST_F(CustomPaperDialog, TakesADeletedPaperOutOfTheListsAtOnce) {
  OpenDialog();
  Save(L"Card", L"100", L"150");
  Save(L"Label", L"80", L"200");
  sheet_->driver().Choose(1009, 0);
  sheet_->driver().Click(1417);
  EXPECT_EQ(PapersBehindTheTable().ids, (std::vector<WORD>{289}));
  EXPECT_EQ(StoredBytes("Card"), "");
}

// A record with such a paper is as large as the file says.
TEST_F(CustomPaperDialog, GivesARecordItsExtent) {
  OpenDialog();
  Save(L"Card", L"100", L"150");
  sheet_->driver().LeaveDialog(IDOK);
  sheet_->driver().Press(SheetButton::kOk);
  EXPECT_EQ(sheet_->driver().Result(), IDOK);
  EXPECT_EQ(sheet_->out.devmode()->dmPaperSize, 288);
  EXPECT_EQ(sheet_->out.devmode()->dmPaperWidth, 1000);
  EXPECT_EQ(sheet_->out.devmode()->dmPaperLength, 1500);
}

}  // namespace
}  // namespace ostrel::print_system
