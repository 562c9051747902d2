// Opens the dialogs of the language libraries, pages in a property sheet, in several states, takes
// their pictures, and checks that every text fits and no two controls meet.
//
//   dialog_gallery FOLDER LANGUAGE...
//
// The pictures are FOLDER\<dialog>-<language>-<state>-<dpi>.bmp. Result: 0, or 1 with the faults.
// The libraries lie beside the program. No driver runs here: what a page would set stands in
// dialog_states.cpp.
#include "dialog_measure.h"
#include "dialog_states.h"
#include "print_system_setup.h"
#include "screenshot.h"

#include <windows.h>
#include <commctrl.h>
#include <prsht.h>

#include <cstdio>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace ostrel {
namespace {

constexpr COLORREF kPageKey = 15660020;
constexpr WORD kInfoIcon = 1077;
constexpr int kPreview = 1067;  // stands on white
constexpr int kInfoIconPixels = 18;

// One dialog in one state.
struct Scene {
  const DialogStates* dialog;
  const DialogState* state;
  HMODULE language;
  HMODULE pictures;
  HWND page = nullptr;  // or the dialog
};

std::wstring Text(HMODULE language, UINT id) {
  wchar_t text[300] = {};
  LoadStringW(language, id, text, 300);
  return text;
}

void ShowControl(HWND page, int id, bool show) {
  ShowWindow(GetDlgItem(page, id), show ? SW_SHOW : SW_HIDE);
}

void FillLists(const Scene& scene) {
  for (const auto& [control, rows] : scene.dialog->lists) {
    const HWND list = GetDlgItem(scene.page, control);
    for (const UINT row : rows) {
      SendMessageW(list, CB_ADDSTRING, 0,
                   reinterpret_cast<LPARAM>(Text(scene.language, row).c_str()));
    }
    SendMessageW(list, CB_SETCURSEL, 0, 0);
  }
  for (const auto& [control, row] : scene.state->rows) {
    SendDlgItemMessageW(scene.page, control, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
  }
}

void ShowIcon(const Scene& scene, int control) {
  const HANDLE icon = LoadImageW(scene.language, MAKEINTRESOURCEW(kInfoIcon), IMAGE_ICON,
                                 kInfoIconPixels, kInfoIconPixels, LR_SHARED);
  SendDlgItemMessageW(scene.page, control, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
  ShowControl(scene.page, control, true);
}

void Start(const Scene& scene) {
  FillLists(scene);
  for (const auto* boxes : {&scene.dialog->boxes, &scene.state->boxes}) {
    for (const auto& [control, text] : *boxes) {
      SetDlgItemTextW(scene.page, control, text);
    }
  }
  for (const auto& [control, text] : scene.state->texts) {
    SetDlgItemTextW(scene.page, control, Text(scene.language, text).c_str());
  }
  for (const int control : scene.state->hidden) {
    ShowControl(scene.page, control, false);
  }
  for (const int control : scene.state->checked) {
    CheckDlgButton(scene.page, control, BST_CHECKED);
  }
  for (const int control : scene.state->disabled) {
    EnableWindow(GetDlgItem(scene.page, control), FALSE);
  }
  for (const int control : scene.state->icons) {
    ShowIcon(scene, control);
  }
  for (const auto& [control, bitmap] : scene.state->pictures) {
    const HBITMAP picture = LoadBitmapW(scene.pictures, MAKEINTRESOURCEW(bitmap));
    SendDlgItemMessageW(scene.page, control, STM_SETIMAGE, IMAGE_BITMAP,
                        reinterpret_cast<LPARAM>(picture));
  }
}

// A picture in the middle of its item. A mirrored page mirrors what is drawn on it, which a picture
// with numbers must not be.
void DrawPicture(const DRAWITEMSTRUCT& item, HBITMAP picture) {
  BITMAP size = {};
  GetObjectW(picture, sizeof(size), &size);
  const HDC source = CreateCompatibleDC(item.hDC);
  const HGDIOBJ before = SelectObject(source, picture);
  const DWORD layout = GetLayout(item.hDC);
  if ((layout & LAYOUT_RTL) != 0) {
    SetLayout(item.hDC, layout | LAYOUT_BITMAPORIENTATIONPRESERVED);
  }
  const LONG x = (item.rcItem.left + item.rcItem.right - size.bmWidth) / 2;
  const LONG y = (item.rcItem.top + item.rcItem.bottom - size.bmHeight) / 2;
  TransparentBlt(item.hDC, x, y, size.bmWidth, size.bmHeight, source, 0, 0, size.bmWidth,
                 size.bmHeight, kPageKey);
  SetLayout(item.hDC, layout);
  SelectObject(source, before);
  DeleteDC(source);
}

void Draw(const Scene& scene, const DRAWITEMSTRUCT& item) {
  for (const auto& [control, bitmap] : scene.state->drawn) {
    if (static_cast<int>(item.CtlID) != control) {
      continue;
    }
    if (control == kPreview) {
      FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    const HBITMAP picture = LoadBitmapW(scene.pictures, MAKEINTRESOURCEW(bitmap));
    DrawPicture(item, picture);
    DeleteObject(picture);
  }
}

INT_PTR AnswerScene(HWND page, UINT message, LPARAM data, Scene* scene) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(page, DWLP_USER, reinterpret_cast<LPARAM>(scene));
    scene->page = page;
    Start(*scene);
    return TRUE;
  }
  if (message == WM_DRAWITEM) {
    Draw(*reinterpret_cast<const Scene*>(GetWindowLongPtrW(page, DWLP_USER)),
         *reinterpret_cast<const DRAWITEMSTRUCT*>(data));
    return TRUE;
  }
  return FALSE;
}

INT_PTR CALLBACK PageProcedure(HWND page, UINT message, WPARAM, LPARAM data) {
  const auto scene =
      message == WM_INITDIALOG ? reinterpret_cast<const PROPSHEETPAGEW*>(data)->lParam : LPARAM{0};
  return AnswerScene(page, message, data, reinterpret_cast<Scene*>(scene));
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM, LPARAM data) {
  return AnswerScene(dialog, message, data, reinterpret_cast<Scene*>(data));
}

HWND OpenSheet(Scene* scene) {
  const std::wstring title = Text(scene->language, scene->dialog->title);
  PROPSHEETPAGEW page = {};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_USETITLE;
  page.hInstance = scene->language;
  page.pszTemplate = MAKEINTRESOURCEW(scene->dialog->id);
  page.pszTitle = title.c_str();
  page.pfnDlgProc = PageProcedure;
  page.lParam = reinterpret_cast<LPARAM>(scene);
  PROPSHEETHEADERW header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS | PSH_NOCONTEXTHELP;
  header.pszCaption = title.c_str();
  header.nPages = 1;
  header.ppsp = &page;
  const INT_PTR sheet = PropertySheetW(&header);
  if (sheet == 0 || sheet == -1 || scene->page == nullptr) {
    print_system::ThrowLastError("PropertySheetW");
  }
  return reinterpret_cast<HWND>(sheet);
}

HWND OpenDialog(Scene* scene) {
  const HWND dialog = CreateDialogParamW(scene->language, MAKEINTRESOURCEW(scene->dialog->id),
                                         nullptr, DialogProcedure, reinterpret_cast<LPARAM>(scene));
  if (dialog == nullptr) {
    print_system::ThrowLastError("CreateDialogParamW");
  }
  return dialog;
}

void AnswerMessages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

HMODULE LoadLanguage(const std::wstring& language) {
  const std::wstring path = print_system::ProgramFolder() + L"\\ostrelPCL6ui" + language + L".dll";
  const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  if (library == nullptr) {
    print_system::ThrowLastError(("LoadLibraryExW of " + print_system::Utf8(path)).c_str());
  }
  return library;
}

class Gallery {
 public:
  Gallery(std::wstring folder, int dpi)
      : folder_(std::move(folder)), dpi_(dpi), pictures_(LoadLanguage(L"ResBmp")) {}

  // Whether all of the language's dialogs are without fault.
  bool Show(const std::wstring& language) const {
    const HMODULE library = LoadLanguage(language);
    bool good = true;
    for (const DialogStates& dialog : AllDialogs()) {
      for (const DialogState& state : dialog.states) {
        good = ShowState(language, {&dialog, &state, library, pictures_}) && good;
      }
    }
    FreeLibrary(library);
    return good;
  }

 private:
  bool ShowState(const std::wstring& language, Scene scene) const {
    const HWND sheet = scene.dialog->modal ? OpenDialog(&scene) : OpenSheet(&scene);
    ShowWindow(sheet, SW_SHOW);
    AnswerMessages();
    const std::wstring name = std::to_wstring(scene.dialog->id) + L"-" + language + L"-" +
                              scene.state->name + L"-" + std::to_wstring(dpi_);
    SaveScreenshot(sheet, folder_ + L"\\" + name + L".bmp");
    const std::vector<std::string> faults = DialogFaults(scene.page, dpi_);
    for (const std::string& fault : faults) {
      std::printf("%s: %s\n", print_system::Utf8(name).c_str(), fault.c_str());
    }
    DestroyWindow(sheet);
    AnswerMessages();
    return faults.empty();
  }

  std::wstring folder_;
  int dpi_;
  HMODULE pictures_;
};

int DisplayDpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi;
}

bool ShowAll(int count, wchar_t** arguments) {
  SetProcessDPIAware();
  const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_UPDOWN_CLASS | ICC_TAB_CLASSES};
  InitCommonControlsEx(&controls);
  const Gallery gallery(arguments[1], DisplayDpi());
  bool good = true;
  for (int i = 2; i < count; ++i) {
    good = gallery.Show(arguments[i]) && good;
  }
  std::printf("dialogs in %s at %d dpi: %s\n", print_system::Utf8(arguments[2]).c_str(),
              DisplayDpi(), good ? "no faults" : "faults");
  return good;
}

}  // namespace
}  // namespace ostrel

int wmain(int count, wchar_t** arguments) {
  if (count < 3) {
    std::fputs("usage: dialog_gallery FOLDER LANGUAGE...\n", stderr);
    return 2;
  }
  try {
    return ostrel::ShowAll(count, arguments) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "dialog_gallery: %s\n", failure.what());
    return 1;
  }
}
