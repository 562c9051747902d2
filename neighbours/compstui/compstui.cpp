// A stand-in for the print system's common property sheet, compstui.dll, that does what the
// platform documents where the one of a print system does less: the driver is asked for the sheet's
// title, told the result (reason 3), and Cancel is told apart from OK.
//
// Functions of a sheet: pages by handle or by description, further sheet functions, the count of
// pages and the result. Pages of options in a tree, and what goes with these, aren't served. It is
// test equipment: a run loads it only when it asks for it.
#include <windows.h>
#include <commctrl.h>
#include <compstui.h>
#include <prsht.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr WORD kVersion = 0x0100;           // PROPSHEETUI_INFO_VERSION
constexpr UINT_PTR kOwnIconsFirst = 64000;  // icon ids from here on are the common sheet's own
constexpr wchar_t kUserDataProperty[] = L"OstrelCommonSheetUserData";

struct Sheet;

// One function that takes part in a sheet. Its address is the handle that the function gets.
struct Group {
  Sheet* sheet;
  Group* parent;
  PFNPROPSHEETUI function;
  PROPSHEETUI_INFO info;
  bool settingResult;
};

struct Sheet {
  WORD flags;
  std::vector<std::unique_ptr<Group>> groups;  // the first one is the caller's own
  std::vector<HPROPSHEETPAGE> pages;
};

LONG_PTR ComPropSheet(HANDLE handle, UINT function, LPARAM lParam1, LPARAM lParam2);

LONG Tell(Group& group, WORD reason, LPARAM lParam) {
  group.info.Reason = reason;
  return group.function(&group.info, lParam);
}

// Adds a function and lets it begin. Null, with the function forgotten, when it doesn't want to.
Group* AddGroup(Sheet& sheet, Group* parent, PFNPROPSHEETUI function, LPARAM lParam, LONG* answer) {
  sheet.groups.push_back(std::make_unique<Group>());
  Group& group = *sheet.groups.back();
  group = {
      .sheet = &sheet, .parent = parent, .function = function, .info = {}, .settingResult = false};
  group.info.cbSize = sizeof(group.info);
  group.info.Version = kVersion;
  group.info.Flags = sheet.flags;
  group.info.hComPropSheet = &group;
  group.info.pfnComPropSheet = ComPropSheet;
  group.info.lParamInit = lParam;
  group.info.Result = CPSUI_CANCEL;
  *answer = Tell(group, PROPSHEETUI_REASON_INIT, lParam);
  if (*answer > 0) {
    return &group;
  }
  std::erase_if(sheet.groups, [&group](const auto& each) { return each.get() == &group; });
  return nullptr;
}

LONG_PTR AddPage(Sheet& sheet, HPROPSHEETPAGE page) {
  if (page == nullptr) {
    return ERR_CPSUI_CREATEPROPPAGE_FAILED;
  }
  sheet.pages.push_back(page);
  return reinterpret_cast<LONG_PTR>(page);
}

// The result goes to the function that set it and up to the sheet's caller. One that sets the
// result while it hears of one is not told of that again.
LONG_PTR SetResult(Group& group, LONG_PTR result) {
  LONG_PTR told = 0;
  for (Group* each = &group; each != nullptr; each = each->parent) {
    if (each->settingResult) {
      break;
    }
    SETRESULT_INFO info = {};
    info.cbSize = sizeof(info);
    info.hSetResult = &group;
    info.Result = result;
    each->settingResult = true;
    each->info.Result = static_cast<ULONG_PTR>(result);
    const LONG answer = Tell(*each, PROPSHEETUI_REASON_SET_RESULT, reinterpret_cast<LPARAM>(&info));
    each->settingResult = false;
    if (answer <= 0) {
      break;
    }
    ++told;
  }
  return told;
}

template <typename Pointer>
Pointer As(LPARAM lParam) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the protocol passes pointers this way.
  return reinterpret_cast<Pointer>(lParam);
}

LONG_PTR ComPropSheet(HANDLE handle, UINT function, LPARAM lParam1, LPARAM lParam2) {
  if (handle == nullptr) {
    return ERR_CPSUI_INVALID_LPARAM;
  }
  Group& group = *static_cast<Group*>(handle);
  switch (function) {
    case CPSFUNC_ADD_HPROPSHEETPAGE:
      return AddPage(*group.sheet, As<HPROPSHEETPAGE>(lParam1));
    case CPSFUNC_ADD_PROPSHEETPAGEW:
      return AddPage(*group.sheet, CreatePropertySheetPageW(As<LPCPROPSHEETPAGEW>(lParam1)));
    case CPSFUNC_ADD_PROPSHEETPAGEA:
      return AddPage(*group.sheet, CreatePropertySheetPageA(As<LPCPROPSHEETPAGEA>(lParam1)));
    case CPSFUNC_ADD_PFNPROPSHEETUIA:
    case CPSFUNC_ADD_PFNPROPSHEETUIW: {
      LONG answer = 0;
      Group* added = AddGroup(*group.sheet, &group, As<PFNPROPSHEETUI>(lParam1), lParam2, &answer);
      return added != nullptr ? reinterpret_cast<LONG_PTR>(added) : LONG_PTR{answer};
    }
    case CPSFUNC_GET_PAGECOUNT:
      return static_cast<LONG_PTR>(group.sheet->pages.size());
    case CPSFUNC_SET_RESULT:
      return SetResult(group, lParam2);
    default:
      return ERR_CPSUI_FUNCTION_NOT_IMPLEMENTED;
  }
}

// ---- The sheet itself ---------------------------------------------------------------------------

// What the functions say about title and icon: one that is deeper in knows better.
PROPSHEETUI_INFO_HEADER AskHeader(Sheet& sheet, HWND owner) {
  PROPSHEETUI_INFO_HEADER header = {};
  header.cbSize = sizeof(header);
  header.hWndParent = owner;
  for (const auto& group : sheet.groups) {
    Tell(*group, PROPSHEETUI_REASON_GET_INFO_HEADER, reinterpret_cast<LPARAM>(&header));
  }
  return header;
}

HICON IconOf(const PROPSHEETUI_INFO_HEADER& header) {
  if ((header.Flags & PSUIHDRF_USEHICON) != 0) {
    return header.hIcon;
  }
  const bool own = header.IconID >= kOwnIconsFirst;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): MAKEINTRESOURCE.
  HICON icon = own ? nullptr : LoadIconW(header.hInst, MAKEINTRESOURCEW(header.IconID));
  return icon != nullptr ? icon : LoadIconW(nullptr, IDI_APPLICATION);
}

INT_PTR Show(Sheet& sheet, HWND owner) {
  const PROPSHEETUI_INFO_HEADER asked = AskHeader(sheet, owner);
  PROPSHEETHEADERW header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_USEHICON;
  if ((asked.Flags & PSUIHDRF_PROPTITLE) != 0) {
    header.dwFlags |= PSH_PROPTITLE;
  }
  if ((asked.Flags & PSUIHDRF_NOAPPLYNOW) != 0) {
    header.dwFlags |= PSH_NOAPPLYNOW;
  }
  header.hwndParent = owner;
  header.hInstance = asked.hInst;
  header.hIcon = IconOf(asked);
  header.pszCaption = asked.pTitle;
  header.nPages = static_cast<UINT>(sheet.pages.size());
  header.phpage = sheet.pages.data();
  return PropertySheetW(&header);
}

void End(Sheet& sheet, LPARAM applied) {
  for (auto group = sheet.groups.rbegin(); group != sheet.groups.rend(); ++group) {
    Tell(**group, PROPSHEETUI_REASON_DESTROY, applied);
  }
}

LONG Run(HWND owner, PFNPROPSHEETUI function, LPARAM lParam, LPDWORD result, WORD flags) {
  if (function == nullptr) {
    return ERR_CPSUI_INVALID_PDATA;
  }
  Sheet sheet = {.flags = flags, .groups = {}, .pages = {}};
  LONG answer = 0;
  const Group* caller = AddGroup(sheet, nullptr, function, lParam, &answer);
  if (caller == nullptr) {
    return answer < 0 ? answer : ERR_CPSUI_GETLASTERROR;
  }
  answer = ERR_CPSUI_NO_PROPSHEETPAGE;
  if (!sheet.pages.empty()) {
    answer = Show(sheet, owner) < 0 ? ERR_CPSUI_GETLASTERROR : 1;
  }
  const auto chosen = static_cast<DWORD>(caller->info.Result);
  End(sheet, chosen == CPSUI_CANCEL ? 0 : 1);
  if (result != nullptr) {
    *result = chosen;
  }
  return answer;
}

}  // namespace

extern "C" {

LONG WINAPI CommonPropertySheetUIW(HWND owner, PFNPROPSHEETUI function, LPARAM lParam,
                                   LPDWORD result) {
  return Run(owner, function, lParam, result, PSUIINFO_UNICODE);
}

LONG WINAPI CommonPropertySheetUIA(HWND owner, PFNPROPSHEETUI function, LPARAM lParam,
                                   LPDWORD result) {
  return Run(owner, function, lParam, result, 0);
}

// A word that a page keeps with its dialog.
ULONG_PTR WINAPI GetCPSUIUserData(HWND dialog) {
  return reinterpret_cast<ULONG_PTR>(GetPropW(dialog, kUserDataProperty));
}

BOOL WINAPI SetCPSUIUserData(HWND dialog, ULONG_PTR data) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a window keeps words as handles.
  return SetPropW(dialog, kUserDataProperty, reinterpret_cast<HANDLE>(data));
}

}  // extern "C"
