// The program beside the driver that two families start for envelopes: when it is started, and what
// it is told.
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "stored_values.h"
#include "windows_sheet.h"

#include <filesystem>
#include <fstream>

namespace ostrel::print_system {
namespace {

constexpr UINT kPaperTitle = 216;
constexpr wchar_t kTestersKey[] = L"Software\\OstrelNeighbours\\EnvelopeProgram";
constexpr WORD kEnvelopes = 258;
constexpr WORD kPlainPaper = 1;

DWORD Starts() {
  DWORD starts = 0;
  DWORD size = sizeof(starts);
  RegGetValueW(HKEY_CURRENT_USER, kTestersKey, L"Starts", RRF_RT_REG_DWORD, nullptr, &starts,
               &size);
  return starts;
}

std::wstring Told(const wchar_t* name) {
  wchar_t text[512] = {};
  DWORD size = sizeof(text);
  RegGetValueW(HKEY_CURRENT_USER, kTestersKey, name, RRF_RT_REG_SZ, nullptr, text, &size);
  return text;
}

// Waits until the program was started so often. It counts last.
DWORD AwaitStarts(DWORD starts) {
  constexpr DWORD kLimit_ms = 20000;
  constexpr DWORD kPoll_ms = 20;
  for (DWORD waited = 0; Starts() < starts && waited < kLimit_ms; waited += kPoll_ms) {
    Sleep(kPoll_ms);
  }
  return Starts();
}

class EnvelopeProgram : public testing::Test {
 protected:
  EnvelopeProgram() {
    RegDeleteKeyW(HKEY_CURRENT_USER, kTestersKey);
    ini_ = std::filesystem::path(ConfigLibraryPath(Printer(kTestPrinter).get())).parent_path() /
           kConfigFile;
    std::ifstream file(ini_, std::ios::binary);
    iniBefore_.assign(std::istreambuf_iterator<char>(file), {});
  }
  ~EnvelopeProgram() override {
    std::ofstream(ini_, std::ios::binary) << iniBefore_;
    RegDeleteKeyW(HKEY_CURRENT_USER, kTestersKey);
  }

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
  EXPECT_EQ(AwaitStarts(1), 1U);
  ApplyPaper(L"Elm 4 Series", kEnvelopes);
  EXPECT_EQ(AwaitStarts(2), 2U);
}

TEST_F(EnvelopeProgram, IsToldThePrintersNameOfTheIniFileUnderItsTitle) {
  NamePrinter("Front office");
  ApplyPaper(L"Elm 1 Series", kEnvelopes);
  ASSERT_EQ(AwaitStarts(1), 1U);
  EXPECT_EQ(Told(L"CommandLine"), L"Front office");
  EXPECT_EQ(Told(L"Title"), L"ENV");
}

TEST_F(EnvelopeProgram, ThatIsMissingLeavesTheSheetAsItIs) {
  RemoveEnvelopeProgram();
  ApplyPaper(L"Elm 1 Series", kEnvelopes);
  InstallEnvelopeProgram();
  EXPECT_EQ(Starts(), 0U);
}

}  // namespace
}  // namespace ostrel::print_system
