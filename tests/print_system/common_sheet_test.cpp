// The stand-in for the common property sheet does what the platform documents, as far as drivers
// use it. What the print system's own one does otherwise stands beside it, so that a difference
// that goes is noticed.
#include "common_sheet.h"

#include "print_system_setup.h"
#include "sheet_driver.h"

#include <prsht.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::print_system {
namespace {

constexpr ULONG_PTR kUserData = 0x123456789A;

INT_PTR CALLBACK EmptyPage(HWND dialog, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  if (message == WM_INITDIALOG) {
    SetCPSUIUserData(dialog, kUserData);
  }
  return FALSE;
}

// A sheet of functions that note what they hear. The protocol hands them no state of a test's:
// there is one scene at a time.
struct Scene {
  LONG innerInit = 1;        // what the inner function answers to "init"
  LONG_PTR resultToSet = 0;  // by the inner function, at "init"; 0 for none
  std::string heard;
  LONG_PTR groupAdded = 0;
  LONG_PTR pageAdded = 0;
  LONG_PTR pageCount = 0;
  LONG_PTR told = -1;
  LONG_PTR unknown = 0;
};
Scene scene;

LONG_PTR AddEmptyPage(const PROPSHEETUI_INFO& info, UINT function) {
  const HMODULE library =
      LoadLibraryExW((ProgramFolder() + L"\\test_libraries\\test_pages.dll").c_str(), nullptr,
                     LOAD_LIBRARY_AS_DATAFILE);
  PROPSHEETPAGEW page = {};
  page.dwSize = sizeof(page);
  page.hInstance = library;
  page.pszTemplate = MAKEINTRESOURCEW(651);
  page.pfnDlgProc = EmptyPage;
  if (function == CPSFUNC_ADD_HPROPSHEETPAGE) {
    return info.pfnComPropSheet(info.hComPropSheet, function,
                                reinterpret_cast<LPARAM>(CreatePropertySheetPageW(&page)), 0);
  }
  return info.pfnComPropSheet(info.hComPropSheet, function, reinterpret_cast<LPARAM>(&page), 0);
}

LONG Inner(PPROPSHEETUI_INFO info, LPARAM lParam) {
  scene.heard += "inner " + std::to_string(info->Reason) + ", ";
  if (info->Reason == PROPSHEETUI_REASON_INIT) {
    EXPECT_EQ(lParam, 77);
    scene.pageAdded = AddEmptyPage(*info, CPSFUNC_ADD_PROPSHEETPAGEW);
    if (scene.resultToSet != 0) {
      scene.told =
          info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_SET_RESULT, 0, scene.resultToSet);
    }
    return scene.innerInit;
  }
  return 1;
}

LONG Outer(PPROPSHEETUI_INFO info, LPARAM /*lParam*/) {
  constexpr WORD kReasonBeforeInit = 5;
  if (info->Reason != kReasonBeforeInit) {
    scene.heard += "outer " + std::to_string(info->Reason) + ", ";
  }
  if (info->Reason == PROPSHEETUI_REASON_INIT) {
    const auto ask = [info](UINT function, LPARAM first, LPARAM second) {
      return info->pfnComPropSheet(info->hComPropSheet, function, first, second);
    };
    scene.groupAdded = ask(CPSFUNC_ADD_PFNPROPSHEETUIW, reinterpret_cast<LPARAM>(Inner), 77);
    AddEmptyPage(*info, CPSFUNC_ADD_HPROPSHEETPAGE);
    scene.pageCount = ask(CPSFUNC_GET_PAGECOUNT, 0, 0);
    scene.unknown = ask(99, 0, 0);
  }
  return 1;
}

class CommonSheet : public testing::Test {
 protected:
  CommonSheet() { scene = {}; }

  LONG Show(SheetButton button) {
    SheetDriver sheet([this] { return CommonPropertySheetUIW(nullptr, Outer, 0, &result_); });
    if (sheet.sheet() != nullptr) {
      tabs_ = sheet.PageTitles().size();
      userData_ = GetCPSUIUserData(sheet.page());
      sheet.Press(button);
    }
    return sheet.Result();
  }

  DWORD result_ = 0xCCCCCCCC;
  std::size_t tabs_ = 0;
  ULONG_PTR userData_ = 0;
};

TEST_F(CommonSheet, ShowsThePagesOfAllItsFunctions) {
  Show(SheetButton::kOk);
  EXPECT_EQ(tabs_, 2U);
  EXPECT_GT(scene.groupAdded, 0);
  EXPECT_GT(scene.pageAdded, 0);
}

TEST_F(CommonSheet, AsksAllItsFunctionsForTheTitleAndTellsThemTheEnd) {
  Show(SheetButton::kOk);
  EXPECT_EQ(scene.heard, HasStandInSheet()
                             ? "outer 0, inner 0, outer 1, inner 1, inner 2, outer 2, "
                             : "outer 0, inner 0, outer 1, inner 2, outer 2, ");
}

TEST_F(CommonSheet, KeepsAWordForAPage) {
  Show(SheetButton::kOk);
  EXPECT_EQ(userData_, HasStandInSheet() ? kUserData : 0);
}

TEST_F(CommonSheet, TellsAResultToTheFunctionThatSetItAndUpwards) {
  scene.resultToSet = 42;
  Show(SheetButton::kCancel);
  if (HasStandInSheet()) {
    EXPECT_EQ(scene.told, 2);
    EXPECT_NE(scene.heard.find("inner 3, outer 3, "), std::string::npos) << scene.heard;
    EXPECT_EQ(result_, 42U);
  } else {
    EXPECT_EQ(scene.told, 0);
    EXPECT_EQ(scene.heard.find('3'), std::string::npos) << scene.heard;
  }
}

TEST_F(CommonSheet, GoesOnWithoutAFunctionThatDeclines) {
  scene.innerInit = -1;
  Show(SheetButton::kOk);
  EXPECT_LE(scene.groupAdded, 0);
  EXPECT_GE(tabs_, 1U);
}

TEST_F(CommonSheet, TellsOkFromCancel) {
  EXPECT_EQ(Show(SheetButton::kOk), CPSUI_OK);
  EXPECT_EQ(Show(SheetButton::kCancel), HasStandInSheet() ? CPSUI_CANCEL : CPSUI_OK);
}

TEST_F(CommonSheet, KnowsNothingOfOtherFunctions) {
  Show(SheetButton::kCancel);
  EXPECT_EQ(scene.pageCount, HasStandInSheet() ? 2 : 0);
  EXPECT_EQ(scene.unknown, HasStandInSheet() ? ERR_CPSUI_FUNCTION_NOT_IMPLEMENTED : 0);
}

}  // namespace
}  // namespace ostrel::print_system
