// A stand-in for the status monitor, ostrelsm.exe, which watches a printer while a job runs. This
// one shows nothing: it owns a window of the class that the driver looks for and writes down what
// it is told, for a tester, as the neighbour StatusMonitor: `CommandLine`, `Arguments` behind the
// program's name and `Show`, how to show itself; of the message that a document starts,
// `StartMessages`, which counts; of a record, `DwData`, `RecordBytes`, `LastName`, `ZerosBehind`
// the name, and last `Records`, which counts; `Order`, a letter for each of them, M or R, with m
// for a message that has parameters. `Starts` counts last of all at the start, when the window is
// there.
//
// It ends when it is closed, or when it has heard nothing for a while: `IdleSeconds`, 60 where
// there is no such value.
#include "testers_values.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

namespace {

constexpr wchar_t kWindowClass[] = L"OSTRELStatusMonitor";
constexpr UINT kDocumentStarts = WM_USER + 20;
constexpr UINT_PTR kIdleTimer = 1;

const ostrel::TestersValues& Tester() {
  static const ostrel::TestersValues tester(L"StatusMonitor");
  return tester;
}

void RestartIdleTime(HWND window) {
  constexpr DWORD kUsual_s = 60;
  constexpr DWORD kSecond_ms = 1000;
  SetTimer(window, kIdleTimer, Tester().Number(L"IdleSeconds", kUsual_s) * kSecond_ms, nullptr);
}

void AddToOrder(wchar_t letter) {
  Tester().SetText(L"Order", Tester().Text(L"Order") + letter);
}

// The text of a record, as far as there is one; it may lack its terminator.
std::wstring TextOf(const COPYDATASTRUCT& record) {
  std::wstring text(record.cbData / sizeof(wchar_t), L'\0');
  if (record.lpData != nullptr) {
    std::memcpy(text.data(), record.lpData, text.size() * sizeof(wchar_t));
  }
  return text.substr(0, text.find(L'\0'));
}

// Whether all behind the text is zero.
bool HasZerosBehind(const COPYDATASTRUCT& record, const std::wstring& text) {
  const auto* bytes = static_cast<const std::byte*>(record.lpData);
  return bytes != nullptr &&
         std::all_of(bytes + text.size() * sizeof(wchar_t), bytes + record.cbData,
                     [](std::byte each) { return each == std::byte{0}; });
}

void TakeRecord(const COPYDATASTRUCT& record) {
  const std::wstring text = TextOf(record);
  AddToOrder(L'R');
  Tester().SetNumber(L"DwData", static_cast<DWORD>(record.dwData));
  Tester().SetNumber(L"RecordBytes", record.cbData);
  Tester().SetNumber(L"ZerosBehind", HasZerosBehind(record, text) ? 1 : 0);
  Tester().SetText(L"LastName", text);
  Tester().Count(L"Records");
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kDocumentStarts:
      AddToOrder(wParam == 0 && lParam == 0 ? L'M' : L'm');
      Tester().Count(L"StartMessages");
      RestartIdleTime(window);
      return 0;
    case WM_COPYDATA:
      // NOLINTNEXTLINE(performance-no-int-to-ptr): a message carries a pointer this way.
      TakeRecord(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
      RestartIdleTime(window);
      return TRUE;
    case WM_TIMER:
      DestroyWindow(window);
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE hInstance, HINSTANCE /*none*/, LPWSTR lpCmdLine, int nShowCmd) {
  WNDCLASSW windowClass = {};
  windowClass.lpfnWndProc = OnMessage;
  windowClass.hInstance = hInstance;
  windowClass.lpszClassName = kWindowClass;
  RegisterClassW(&windowClass);
  HWND window = CreateWindowExW(0, kWindowClass, L"Status monitor", WS_OVERLAPPED, 0, 0, 0, 0,
                                nullptr, nullptr, hInstance, nullptr);
  if (window == nullptr) {
    return 1;
  }
  Tester().SetText(L"CommandLine", GetCommandLineW());
  Tester().SetText(L"Arguments", lpCmdLine);
  Tester().SetNumber(L"Show", static_cast<DWORD>(nShowCmd));
  RestartIdleTime(window);
  Tester().Count(L"Starts");
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
  }
  return 0;
}
