// The status monitor in a process of its own: what a document tells one that runs, and how one is
// started that doesn't.
#include "import_patch.h"
#include "neighbour_values.h"
#include "print_system_fixture.h"

#include <filesystem>
#include <optional>
#include <string>

namespace ostrel::print_system {
namespace {

constexpr wchar_t kMonitorClass[] = L"OSTRELStatusMonitor";

std::wstring SystemFolder() {
  wchar_t path[MAX_PATH] = {};
  GetSystemDirectoryW(path, MAX_PATH);
  return path;
}

// Closes the monitor that runs, and waits for its process to end.
void EndMonitor() {
  constexpr DWORD kLimit_ms = 20000;
  const HWND window = FindWindowW(kMonitorClass, nullptr);
  if (window == nullptr) {
    return;
  }
  DWORD processId = 0;
  GetWindowThreadProcessId(window, &processId);
  const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, processId);
  PostMessageW(window, WM_CLOSE, 0, 0);
  WaitForSingleObject(process, kLimit_ms);
  CloseHandle(process);
}

class StatusMonitor : public testing::Test {
 protected:
  StatusMonitor() { InstallStatusMonitor(); }
  ~StatusMonitor() override {
    EndMonitor();
    if (std::filesystem::exists(SystemFolder() + L"\\" + kStatusMonitorFile)) {
      RemoveStatusMonitor();
    }
    std::filesystem::current_path(directory_);
  }

  // Starts one as its user does.
  void StartMonitor() {
    std::wstring commandLine = SystemFolder() + L"\\" + kStatusMonitorFile;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &started) == FALSE) {
      ThrowLastError("CreateProcessW");
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    ASSERT_EQ(tester_.AwaitCount(L"Starts", 1), 1U);
  }

  INT StartDocument() {
    const Printer printer(kTestPrinter);
    return driver_->DrvDocumentEvent(printer.get(), nullptr, DOCUMENTEVENT_STARTDOC, 0, nullptr, 0,
                                     nullptr);
  }

  std::filesystem::path directory_ = std::filesystem::current_path();
  NeighbourValues tester_{L"StatusMonitor"};
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
};

TEST_F(StatusMonitor, ThatRunsGetsAPairOfMessagesForEachDocument) {
  StartMonitor();
  for (int document = 0; document < 3; ++document) {
    EXPECT_EQ(StartDocument(), 1);
  }
  // The record is sent, so the monitor has it when the call returns.
  EXPECT_EQ(tester_.Number(L"Records"), 3U);
  EXPECT_EQ(tester_.Number(L"StartMessages"), 3U);
  EXPECT_EQ(tester_.Text(L"Order"), L"MRMRMR");
  EXPECT_EQ(tester_.Text(L"LastName"), kTestPrinter);
  EXPECT_EQ(tester_.Number(L"RecordBytes"), 520U);
  EXPECT_EQ(tester_.Number(L"ZerosBehind"), 1U);
  EXPECT_EQ(tester_.Number(L"DwData", 1), 0U);
  EXPECT_EQ(tester_.Number(L"Starts"), 1U);
  EXPECT_EQ(std::filesystem::current_path(), directory_);
}

TEST_F(StatusMonitor, ThatDoesNotRunIsStartedWithTheNameAndToldOfTheNextDocument) {
  EXPECT_EQ(StartDocument(), 1);
  ASSERT_EQ(tester_.AwaitCount(L"Starts", 1), 1U);
  EXPECT_EQ(tester_.Text(L"Arguments"), kTestPrinter);
  EXPECT_EQ(tester_.Number(L"Show", 99), DWORD{SW_HIDE});
  EXPECT_EQ(tester_.Text(L"Order"), L"");
  EXPECT_EQ(lstrcmpiW(std::filesystem::current_path().c_str(), SystemFolder().c_str()), 0);
  EXPECT_EQ(StartDocument(), 1);
  EXPECT_EQ(tester_.Text(L"Order"), L"MR");
  EXPECT_EQ(tester_.Number(L"Starts"), 1U);
}

// What the shell is asked for; a text that is missing has no value.
struct ShellStart {
  HWND window = nullptr;
  std::optional<std::wstring> verb;
  std::optional<std::wstring> file;
  std::optional<std::wstring> parameters;
  std::optional<std::wstring> folder;
  INT show = -1;
};
ShellStart shellStart;

std::optional<std::wstring> TextOrNone(LPCWSTR text) {
  return text == nullptr ? std::nullopt : std::optional<std::wstring>(text);
}

HINSTANCE WINAPI TakeShellStart(HWND window, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters,
                                LPCWSTR folder, INT show) {
  shellStart = {
      window, TextOrNone(verb), TextOrNone(file), TextOrNone(parameters), TextOrNone(folder), show};
  return nullptr;
}

TEST_F(StatusMonitor, IsStartedThroughTheShellWithoutWindowVerbAndFolder) {
  const ImportPatch patch(kDriverLibraryFile, "SHELL32.dll", "ShellExecuteW",
                          reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(&TakeShellStart)));
  shellStart = {GetDesktopWindow(), L"?", L"?", L"?", L"?", -1};
  EXPECT_EQ(StartDocument(), 1);
  EXPECT_EQ(shellStart.window, nullptr);
  EXPECT_EQ(shellStart.verb, std::nullopt);
  EXPECT_EQ(shellStart.file, SystemFolder() + L"\\" + kStatusMonitorFile);
  EXPECT_EQ(shellStart.parameters, kTestPrinter);
  EXPECT_EQ(shellStart.folder, std::nullopt);
  EXPECT_EQ(shellStart.show, SW_HIDE);
}

TEST_F(StatusMonitor, ThatIsMissingStopsNoJob) {
  RemoveStatusMonitor();
  EXPECT_EQ(StartDocument(), 1);
  EXPECT_EQ(tester_.Number(L"Starts"), 0U);
}

TEST_F(StatusMonitor, EndsByItselfWhenItHearsNothing) {
  tester_.SetNumber(L"IdleSeconds", 1);
  StartMonitor();
  constexpr DWORD kLimit_ms = 20000;
  constexpr DWORD kPoll_ms = 50;
  for (DWORD waited = 0; FindWindowW(kMonitorClass, nullptr) != nullptr && waited < kLimit_ms;
       waited += kPoll_ms) {
    Sleep(kPoll_ms);
  }
  EXPECT_EQ(FindWindowW(kMonitorClass, nullptr), nullptr);
}

}  // namespace
}  // namespace ostrel::print_system
