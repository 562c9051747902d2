// The program beside the driver that two families start for envelopes: when it is started, and what
// it is told.
#include "import_patch.h"
#include "neighbour_values.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "stored_values.h"
#include "windows_sheet.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

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

// ---- The platform's part ------------------------------------------------------------------------

// All that the platform is asked for. It was the sheet's thread that asked; the sheet is gone when
// this is read.
struct ProcessStart {
  int calls = 0;
  std::wstring application;
  std::wstring commandLine;
  bool hasSecurity = true;
  BOOL inheritsHandles = TRUE;
  DWORD flags = 0;
  bool hasEnvironment = true;
  bool hasFolder = true;
  STARTUPINFOW startup = {};
  std::wstring title;
};
ProcessStart processStart;

BOOL WINAPI TakeProcessStart(LPCWSTR application, LPWSTR commandLine,
                             LPSECURITY_ATTRIBUTES processSecurity,
                             LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles,
                             DWORD flags, LPVOID environment, LPCWSTR folder,
                             LPSTARTUPINFOW startup, LPPROCESS_INFORMATION /*information*/) {
  processStart = {.calls = processStart.calls + 1,
                  .application = application == nullptr ? L"(none)" : application,
                  .commandLine = commandLine == nullptr ? L"(none)" : commandLine,
                  .hasSecurity = processSecurity != nullptr || threadSecurity != nullptr,
                  .inheritsHandles = inheritsHandles,
                  .flags = flags,
                  .hasEnvironment = environment != nullptr,
                  .hasFolder = folder != nullptr,
                  .startup = *startup,
                  .title = startup->lpTitle == nullptr ? L"(none)" : startup->lpTitle};
  SetLastError(ERROR_FILE_NOT_FOUND);
  return FALSE;
}

// The sheet's start of the program, taken before the platform gets it.
class EnvelopeProcess : public EnvelopeProgram {
 protected:
  void SetUp() override {
    NamePrinter("Front office");
    processStart = {};
    ApplyPaper(L"Elm 1 Series", kEnvelopes);
    ASSERT_EQ(processStart.calls, 1);
  }

 private:
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
  ImportPatch patch_{kDriverLibraryFile, "KERNEL32.dll", "CreateProcessW",
                     reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(&TakeProcessStart))};
};

TEST_F(EnvelopeProcess, IsStartedByItsFullPathWithNothingOfTheSheetsProcess) {
  EXPECT_EQ(processStart.application, DriverFolder() + L"\\3\\" + kEnvelopeProgramFile);
  EXPECT_EQ(processStart.commandLine, L"Front office");
  EXPECT_FALSE(processStart.hasSecurity);
  EXPECT_EQ(processStart.inheritsHandles, FALSE);
  EXPECT_EQ(processStart.flags, 32U);
  EXPECT_FALSE(processStart.hasEnvironment);
  EXPECT_FALSE(processStart.hasFolder);
  EXPECT_EQ(processStart.title, L"ENV");
}

TEST_F(EnvelopeProcess, IsStartedWithATitleAndAShowModeThatNoFlagAnnounces) {
  const STARTUPINFOW& startup = processStart.startup;
  EXPECT_EQ(startup.cb, 104U);
  EXPECT_EQ(startup.wShowWindow, 5);
  EXPECT_EQ(startup.dwFlags, 0U);
  EXPECT_EQ(startup.lpReserved, nullptr);
  EXPECT_EQ(startup.lpDesktop, nullptr);
  EXPECT_EQ(startup.dwX | startup.dwY | startup.dwXSize | startup.dwYSize, 0U);
  EXPECT_EQ(startup.dwXCountChars | startup.dwYCountChars | startup.dwFillAttribute, 0U);
  EXPECT_EQ(startup.cbReserved2, 0);
  EXPECT_EQ(startup.lpReserved2, nullptr);
  EXPECT_EQ(startup.hStdInput, nullptr);
  EXPECT_EQ(startup.hStdOutput, nullptr);
  EXPECT_EQ(startup.hStdError, nullptr);
}

}  // namespace
}  // namespace ostrel::print_system
