// The program beside the driver that two families start for envelopes: when it is started, and what
// it is told.
#include "neighbour_values.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "stored_values.h"
#include "windows_sheet.h"

#include <filesystem>
#include <fstream>

namespace ostrel::print_system {
namespace {

constexpr UINT kPaperTitle = 216;
constexpr WORD kEnvelopes = 258;
constexpr WORD kPlainPaper = 1;

class EnvelopeProgram : public testing::Test {
 protected:
  EnvelopeProgram() {
    ini_ = std::filesystem::path(ConfigLibraryPath(Printer(kTestPrinter).get())).parent_path() /
           kConfigFile;
    std::ifstream file(ini_, std::ios::binary);
    iniBefore_.assign(std::istreambuf_iterator<char>(file), {});
  }
  ~EnvelopeProgram() override { std::ofstream(ini_, std::ios::binary) << iniBefore_; }

  void NamePrinter(const char* name) {
    std::ofstream(ini_, std::ios::binary) << "[Print]\r\nPrinterName=" << name << "\r\n";
  }

  // Opens the sheet of a model over a record of these media, and lets the paper page apply it.
  void ApplyPaper(const wchar_t* model, WORD media, SheetButton button = SheetButton::kOk) {
    printersValues_.Set(L"PrinterName", TextValue(model));
    const Printer printer(kTestPrinter);
    Record record;
    ASSERT_EQ(AskDefaultRecord(printer.get(), record), IDOK);
    record.devmode()->dmMediaType = media;
    record.devmode()->dmDefaultSource = DMBIN_MANUAL;
    DocumentSheet sheet(record);
    sheet.driver().ShowPage(ShippedText(LibraryOfUsersLanguage(), kPaperTitle));
    sheet.driver().Press(button);
    if (button != SheetButton::kApply) {
      sheet.driver().Result();
    }
  }

  NeighbourValues tester_{L"EnvelopeProgram"};
  UserValues printersValues_{kTestPrinter};
  SettingsPlace settings_;
  std::filesystem::path ini_;
  std::string iniBefore_;
};

TEST_F(EnvelopeProgram, IsStartedByTwoFamiliesForEnvelopesAlone) {
  // Whatever is started by mistake is started before those that are meant, and has counted then.
  ApplyPaper(L"Cedar 1 Series", kEnvelopes);
  ApplyPaper(L"Fir 1 Series", kEnvelopes);
  ApplyPaper(L"Hazel 2 Series", kEnvelopes);
  ApplyPaper(L"Dogwood 1 Series", kPlainPaper);
  ApplyPaper(L"Dogwood 1 Series", kEnvelopes, SheetButton::kCancel);
  ApplyPaper(L"Dogwood 1 Series", kEnvelopes);
  EXPECT_EQ(tester_.AwaitCount(L"Starts", 1), 1U);
  ApplyPaper(L"Elm 4 Series", kEnvelopes);
  EXPECT_EQ(tester_.AwaitCount(L"Starts", 2), 2U);
}

TEST_F(EnvelopeProgram, IsToldThePrintersNameOfTheIniFileUnderItsTitle) {
  NamePrinter("Front office");
  ApplyPaper(L"Elm 1 Series", kEnvelopes);
  ASSERT_EQ(tester_.AwaitCount(L"Starts", 1), 1U);
  EXPECT_EQ(tester_.Text(L"CommandLine"), L"Front office");
  EXPECT_EQ(tester_.Text(L"Title"), L"ENV");
}

TEST_F(EnvelopeProgram, ThatIsMissingLeavesTheSheetAsItIs) {
  RemoveEnvelopeProgram();
  ApplyPaper(L"Elm 1 Series", kEnvelopes);
  InstallEnvelopeProgram();
  EXPECT_EQ(tester_.Number(L"Starts"), 0U);
}

}  // namespace
}  // namespace ostrel::print_system
