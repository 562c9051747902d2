// A stand-in for the driver's companion library, olunidrvui.dll: the half of the universal
// arrangement that knows how the real model is found, and that keeps it for the user.
//
// What it answers is up to a tester, in numbers of the neighbour Companion: `DocumentAnswer`,
// `DeviceAnswer` and `EventAnswer`, 1 where there is none. With `PickModel` at 1 the two sheets'
// functions show a small dialog first, in which the user picks the model; Cancel there makes the
// answer 0. `DocumentCalls`, `DeviceCalls` and `EventCalls` count. The arguments of the last event
// are kept as `EventPrinter`, `EventContext`, `Event`, `EventInputBytes`, `EventInput`,
// `EventOutputBytes` and `EventOutput`.
#include "core/model_table.h"
#include "platform/win32/driver_interface.h"
#include "resource.h"
#include "testers_values.h"

#include <windows.h>
#include <winspool.h>

#include <cstddef>
#include <cstdint>
#include <sddl.h>
#include <string>
#include <vector>

namespace {

constexpr LONG kRefused = 0;

HMODULE ownModule = nullptr;

const ostrel::TestersValues& Tester() {
  static const ostrel::TestersValues tester(L"Companion");
  return tester;
}

// ---- The user's values --------------------------------------------------------------------------

std::wstring UserSid() {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) {
    return {};
  }
  alignas(TOKEN_USER) BYTE buffer[256] = {};
  DWORD needed = 0;
  std::wstring sid;
  wchar_t* text = nullptr;
  if (GetTokenInformation(token, TokenUser, buffer, sizeof(buffer), &needed) != FALSE &&
      ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(buffer)->User.Sid, &text) !=
          FALSE) {
    sid = text;
    LocalFree(text);
  }
  CloseHandle(token);
  return sid;
}

void KeepForUser(const std::wstring& subkey, const wchar_t* name, const std::wstring& text) {
  const std::wstring path = UserSid() + L"\\SOFTWARE\\OstrelUPD\\" + subkey;
  RegSetKeyValueW(HKEY_USERS, path.c_str(), name, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

// The two names under which the driver keeps what it knows.
struct Names {
  std::wstring printer;
  std::wstring driver;
};

Names NamesOf(HANDLE printer) {
  DWORD needed = 0;
  GetPrinterW(printer, 2, nullptr, 0, &needed);
  std::vector<BYTE> buffer(needed);
  if (needed == 0 || GetPrinterW(printer, 2, buffer.data(), needed, &needed) == FALSE) {
    return {};
  }
  const auto* info = reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data());
  return {.printer = info->pPrinterName, .driver = info->pDriverName};
}

// ---- The model picker ---------------------------------------------------------------------------

struct Choice {
  std::wstring model;
  std::wstring host;
};

std::wstring ModelName(std::size_t row) {
  const std::u16string_view name = ostrel::kModelTable[row].name;
  return {name.begin(), name.end()};
}

void FillPicker(HWND dialog) {
  for (std::size_t row = 0; row < ostrel::kModelRows; ++row) {
    const std::wstring name = ModelName(row);
    const wchar_t* shown = name.empty() ? L"(none)" : name.c_str();
    SendDlgItemMessageW(dialog, PICKER_MODEL, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shown));
  }
  SendDlgItemMessageW(dialog, PICKER_MODEL, CB_SETCURSEL, 0, 0);
  SendDlgItemMessageW(dialog, PICKER_HOST, EM_LIMITTEXT, 120, 0);
}

void ReadPicker(HWND dialog, Choice& choice) {
  const LRESULT row = SendDlgItemMessageW(dialog, PICKER_MODEL, CB_GETCURSEL, 0, 0);
  choice.model = row == CB_ERR ? L"" : ModelName(static_cast<std::size_t>(row));
  wchar_t host[128] = {};
  GetDlgItemTextW(dialog, PICKER_HOST, host, 128);
  choice.host = host;
}

INT_PTR CALLBACK PickerProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    FillPicker(dialog);
    return TRUE;
  }
  const WORD command = LOWORD(wParam);
  if (message != WM_COMMAND || (command != IDOK && command != IDCANCEL)) {
    return FALSE;
  }
  if (command == IDOK) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a dialog keeps its data this way.
    ReadPicker(dialog, *reinterpret_cast<Choice*>(GetWindowLongPtrW(dialog, DWLP_USER)));
  }
  EndDialog(dialog, command);
  return TRUE;
}

// Lets the user pick and keeps the choice. Result: whether the user did.
bool PickModel(HANDLE printer) {
  Choice choice;
  const INT_PTR pressed =
      DialogBoxParamW(ownModule, MAKEINTRESOURCEW(PICKER_DIALOG), GetActiveWindow(),
                      PickerProcedure, reinterpret_cast<LPARAM>(&choice));
  if (pressed != IDOK) {
    return false;
  }
  const Names names = NamesOf(printer);
  KeepForUser(names.printer, L"PrinterName", choice.model);
  KeepForUser(names.printer, L"PrinterHostName", choice.host);
  KeepForUser(names.driver, L"PrinterModel", choice.model);
  return true;
}

LONG AnswerSheet(const wchar_t* counter, const wchar_t* answer, HANDLE printer) {
  Tester().Count(counter);
  if (Tester().Number(L"PickModel") == 1 && !PickModel(printer)) {
    return kRefused;
  }
  return static_cast<LONG>(Tester().Number(answer, 1));
}

// Both headers begin alike, up to the printer's handle.
HANDLE PrinterOf(LPARAM header) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the print system passes a pointer this way.
  return header == 0 ? nullptr : reinterpret_cast<const DEVICEPROPERTYHEADER*>(header)->hPrinter;
}
static_assert(offsetof(DEVICEPROPERTYHEADER, hPrinter) ==
              offsetof(DOCUMENTPROPERTYHEADER, hPrinter));

// A handle or a pointer as a decimal number.
std::wstring NumberText(const void* pointer) {
  return std::to_wstring(reinterpret_cast<std::uintptr_t>(pointer));
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    ownModule = module;
  }
  return TRUE;
}

LONG WINAPI OlDocumentPropertySheets(PPROPSHEETUI_INFO /*info*/, LPARAM lParam) {
  return AnswerSheet(L"DocumentCalls", L"DocumentAnswer", PrinterOf(lParam));
}

LONG WINAPI OlDevicePropertySheets(PPROPSHEETUI_INFO /*info*/, LPARAM lParam) {
  return AnswerSheet(L"DeviceCalls", L"DeviceAnswer", PrinterOf(lParam));
}

INT WINAPI OlDocumentEvent(HANDLE printer, HDC deviceContext, INT event, ULONG inputBytes,
                           PVOID input, ULONG outputBytes, PVOID output) {
  Tester().SetText(L"EventPrinter", NumberText(printer));
  Tester().SetText(L"EventContext", NumberText(deviceContext));
  Tester().SetNumber(L"Event", static_cast<DWORD>(event));
  Tester().SetNumber(L"EventInputBytes", inputBytes);
  Tester().SetText(L"EventInput", NumberText(input));
  Tester().SetNumber(L"EventOutputBytes", outputBytes);
  Tester().SetText(L"EventOutput", NumberText(output));
  Tester().Count(L"EventCalls");
  return static_cast<INT>(Tester().Number(L"EventAnswer", 1));
}

}  // extern "C"
