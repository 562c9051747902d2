#include "platform/headless/headless_sheet.h"

#include "platform/headless/test_dialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = std::vector<std::string>;

constexpr std::int32_t kPush = 20;

// A sheet entry and its pages, as a driver makes them; what they do is set by the test.
struct Driver {
  ModuleHandle module = nullptr;
  std::vector<std::uint32_t> pages = {101, 102, 103};
  std::int32_t initAnswer = 1;
  bool addsPages = true;
  bool namesThem = true;
  bool setsResultAtApply = true;
  bool setsResultAtReason3 = false;
  std::uint32_t createAnswer = 1;

  SheetInfo* info = nullptr;
  std::vector<std::intptr_t> initParams;                 // of reason 0
  std::intptr_t destroyParam = -1;                       // of reason 2
  std::vector<std::intptr_t> results;                    // of reason 3
  std::vector<std::intptr_t> adds;                       // the answers of function 1
  std::map<std::uint32_t, std::intptr_t> notifyAnswers;  // by code, for every page
  std::map<WindowHandle, SheetPage*> shownPages;
  std::vector<std::uint32_t> callbacks;  // the messages, in order
  HeadlessWindows* windows = nullptr;
};
Driver* driver = nullptr;

std::uint32_t PageCallback(WindowHandle window, std::uint32_t message, SheetPage* page) {
  EXPECT_EQ(window, nullptr);
  EXPECT_EQ(page->lParam, 55);
  driver->callbacks.push_back(message);
  return message == kPspcbCreate ? driver->createAnswer : 1;
}

std::intptr_t PageProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) {
  switch (message) {
    case kWmInitDialog:
      driver->shownPages[window] = reinterpret_cast<SheetPage*>(lParam);
      return 1;
    case kWmCommand:
      if (LowWord(wParam) == kPush) {
        driver->windows->SendMessageW(driver->windows->GetParent(window), kPsmChanged,
                                      reinterpret_cast<std::uintptr_t>(window), 0);
      }
      return 1;
    case kWmNotify: {
      const auto& note = *reinterpret_cast<const SheetNotify*>(lParam);
      if (note.hdr.code == kPsnApply && driver->setsResultAtApply) {
        driver->info->pfnComPropSheet(driver->info->hComPropSheet, kSheetSetResult, 0, 7);
      }
      driver->windows->SetWindowLongPtrW(window, kDwlpMessageResult,
                                         driver->notifyAnswers[note.hdr.code]);
      return 1;
    }
    default:
      return 0;
  }
}

void AddPages(SheetInfo* info) {
  for (const std::uint32_t dialog : driver->pages) {
    SheetPage page = {};
    page.dwSize = dialog == 0 ? 0 : sizeof(page);
    page.dwFlags = kPspUseCallback | kPspHasHelp | (driver->namesThem ? kPspUseTitle : 0U);
    page.hInstance = driver->module;
    page.pszTemplate = reinterpret_cast<const char16_t*>(std::uintptr_t{dialog});
    page.pszTitle = dialog == 102 ? reinterpret_cast<const char16_t*>(std::uintptr_t{5}) : u"Tab";
    page.pfnDlgProc = &PageProcedure;
    page.lParam = 55;
    page.pfnCallback = &PageCallback;
    driver->adds.push_back(info->pfnComPropSheet(info->hComPropSheet, kSheetAddPage,
                                                 reinterpret_cast<std::intptr_t>(&page), 0));
    page = {};  // the sheet has its own copy
  }
}

char16_t caption[] = u"Front office";

std::int32_t Entry(SheetInfo* info, std::intptr_t lParam) {
  driver->info = info;
  EXPECT_EQ(info->cbSize, sizeof(SheetInfo));
  switch (info->Reason) {
    case kReasonInit:
      driver->initParams.push_back(lParam);
      info->UserData = 99;
      if (driver->addsPages) {
        AddPages(info);
      }
      return driver->initAnswer;
    case kReasonGetHeader: {
      auto* header = reinterpret_cast<SheetInfoHeader*>(lParam);
      EXPECT_EQ(header->cbSize, sizeof(SheetInfoHeader));
      header->pTitle = caption;
      header->Flags = kSheetHeaderTitle;
      return 1;
    }
    case kReasonDestroy:
      EXPECT_EQ(info->UserData, 99U);
      driver->destroyParam = lParam;
      return 1;
    case kReasonSetResult: {
      const auto* given = reinterpret_cast<const SetResultInfo*>(lParam);
      driver->results.push_back(given->Result);
      info->Result = static_cast<std::uintptr_t>(given->Result);
      if (driver->setsResultAtReason3) {
        info->pfnComPropSheet(info->hComPropSheet, kSheetSetResult, 0, 8);
      }
      return 1;
    }
    default:
      return -1;
  }
}

class Sheet : public testing::Test {
 protected:
  Sheet() {
    platform_.modules.InstallResources(kTestLibraryPath, TestDialogs());
    driver_.module = platform_.modules.LoadLibraryW(kTestLibraryPath);
    driver_.windows = &platform_.windows;
    driver = &driver_;
  }
  ~Sheet() override { driver = nullptr; }

  Log Take(HeadlessSheet& sheet) { return std::exchange(sheet.log, {}); }

  HeadlessPlatform platform_;
  Driver driver_;
};

TEST_F(Sheet, OpensByAskingForPagesAndHeaderAndShowsTheFirst) {
  HeadlessSheet sheet(platform_, &Entry, 1234);
  EXPECT_TRUE(sheet.Open());
  EXPECT_THAT(driver_.initParams, ElementsAre(1234));
  EXPECT_THAT(driver_.adds, ElementsAre(1, 2, 3));
  EXPECT_EQ(sheet.info().lParamInit, 1234);
  EXPECT_EQ(sheet.caption(), u"Front office");
  EXPECT_EQ(Take(sheet), (Log{"reason 0 -> 1", "add 101 -> 1", "addref 101", "add 102 -> 2",
                              "addref 102", "add 103 -> 3", "addref 103", "reason 1 -> 1",
                              "create 101", "init 101", "setactive 101 -> 0", "show 101"}));
  EXPECT_TRUE(sheet.UserOf(101).Click(kPush));
  EXPECT_EQ(sheet.UserOf(102).dialog(), nullptr);
}

TEST_F(Sheet, PagesGetTheirOwnCopiesAndTitles) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  ASSERT_EQ(sheet.pageCount(), 3U);
  EXPECT_EQ(sheet.page(0).title, u"Tab");
  EXPECT_EQ(sheet.page(1).title, u"Page of a string");
  EXPECT_EQ(std::u16string(sheet.page(0).copy.pszTitle), u"Tab");
  EXPECT_EQ(driver_.shownPages.at(sheet.page(0).window), &sheet.page(0).copy);
  EXPECT_EQ(sheet.page(0).copy.lParam, 55);
}

TEST_F(Sheet, PagesWithoutATitleHaveTheirDialogs) {
  driver_.namesThem = false;
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  EXPECT_EQ(sheet.page(2).title, u"Third");
}

TEST_F(Sheet, SwitchesPagesByAskingBoth) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  Take(sheet);
  EXPECT_TRUE(sheet.ShowPageOf(102));
  EXPECT_EQ(Take(sheet), (Log{"killactive 101 -> 0", "create 102", "init 102", "setactive 102 -> 0",
                              "hide 101", "show 102"}));
  EXPECT_FALSE(sheet.UserOf(101).Click(kPush));  // it isn't shown
  EXPECT_TRUE(sheet.UserOf(102).Click(kPush));
  Take(sheet);
  EXPECT_TRUE(sheet.ShowPage(0));
  EXPECT_EQ(Take(sheet),
            (Log{"killactive 102 -> 0", "setactive 101 -> 0", "hide 102", "show 101"}));
  EXPECT_TRUE(sheet.ShowPage(0));
  EXPECT_THAT(Take(sheet), IsEmpty());
  EXPECT_FALSE(sheet.ShowPageOf(999));
  EXPECT_FALSE(sheet.ShowPage(3));
}

TEST_F(Sheet, PageMayKeepTheUserOrRefuseHim) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  driver_.notifyAnswers[kPsnKillActive] = -1;
  EXPECT_FALSE(sheet.ShowPageOf(102));
  EXPECT_FALSE(sheet.PressOk());
  EXPECT_TRUE(sheet.isOpen());
  driver_.notifyAnswers = {{kPsnSetActive, -1}};
  EXPECT_FALSE(sheet.ShowPageOf(102));
  EXPECT_EQ(sheet.activePage(), 0U);
}

TEST_F(Sheet, OkAppliesEveryShownPageAndThenGivesTheResult) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  ASSERT_TRUE(sheet.ShowPageOf(103));
  Take(sheet);
  EXPECT_TRUE(sheet.PressOk());
  EXPECT_EQ(Take(sheet),
            (Log{"killactive 103 -> 0", "apply 101 -> 0", "set result 7 -> 1", "apply 103 -> 0",
                 "set result 7 -> 1", "destroy 101", "release 101", "release 102", "destroy 103",
                 "release 103", "reason 3 -> 1", "reason 2 -> 1"}));
  EXPECT_THAT(driver_.results, ElementsAre(7));
  EXPECT_EQ(sheet.result(), 7U);
  EXPECT_EQ(driver_.destroyParam, 1);
  EXPECT_FALSE(sheet.isOpen());
  EXPECT_EQ(platform_.windows.liveWindows(), 0U);
  EXPECT_FALSE(sheet.PressOk());
}

TEST_F(Sheet, OkWithoutAResultGivesOne) {
  driver_.setsResultAtApply = false;
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  EXPECT_TRUE(sheet.PressOk());
  EXPECT_THAT(driver_.results, ElementsAre(1));
}

TEST_F(Sheet, ResultAtOnceComesWithinTheFunctionAndNotAgainWithinItself) {
  driver_.setsResultAtReason3 = true;
  HeadlessSheet sheet(platform_, &Entry, 0, ResultManner::kAtOnce);
  ASSERT_TRUE(sheet.Open());
  Take(sheet);
  EXPECT_TRUE(sheet.PressOk());
  EXPECT_EQ(Take(sheet), (Log{"killactive 101 -> 0", "apply 101 -> 0", "set result 7 -> 1",
                              "reason 3 -> 1", "set result 8 -> 1", "destroy 101", "release 101",
                              "release 102", "release 103", "reason 2 -> 1"}));
}

TEST_F(Sheet, WithoutResultsThereIsNoHeaderEither) {
  HeadlessSheet sheet(platform_, &Entry, 0, ResultManner::kNever);
  ASSERT_TRUE(sheet.Open());
  EXPECT_EQ(sheet.caption(), u"");
  Take(sheet);
  EXPECT_TRUE(sheet.PressCancel());
  EXPECT_EQ(Take(sheet), (Log{"querycancel 101 -> 0", "reset 101 -> 0", "destroy 101",
                              "release 101", "release 102", "release 103", "reason 2 -> 1"}));
  EXPECT_EQ(driver_.destroyParam, 0x100);  // as after OK
  HeadlessSheet second(platform_, &Entry, 0, ResultManner::kNever);
  ASSERT_TRUE(second.Open());
  Take(second);
  EXPECT_TRUE(second.PressOk());
  EXPECT_EQ(Take(second),
            (Log{"killactive 101 -> 0", "apply 101 -> 0", "set result 7 -> 0", "destroy 101",
                 "release 101", "release 102", "release 103", "reason 2 -> 1"}));
  EXPECT_THAT(driver_.results, IsEmpty());
}

TEST_F(Sheet, CancelResetsEveryShownPageAndGivesNoResult) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  ASSERT_TRUE(sheet.ShowPageOf(102));
  Take(sheet);
  EXPECT_TRUE(sheet.PressCancel());
  EXPECT_EQ(Take(sheet),
            (Log{"querycancel 102 -> 0", "reset 101 -> 0", "reset 102 -> 0", "destroy 101",
                 "release 101", "destroy 102", "release 102", "release 103", "reason 2 -> 1"}));
  EXPECT_THAT(driver_.results, IsEmpty());
  EXPECT_EQ(driver_.destroyParam, 0);
}

TEST_F(Sheet, PageMayKeepTheSheetFromCancelling) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  driver_.notifyAnswers[kPsnQueryCancel] = 1;
  EXPECT_FALSE(sheet.PressCancel());
  EXPECT_TRUE(sheet.isOpen());
}

TEST_F(Sheet, ApplyIsLiveOnceAPageHasChanged) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  EXPECT_FALSE(sheet.CanApply());
  EXPECT_FALSE(sheet.PressApply());
  EXPECT_TRUE(sheet.ActiveUser().Click(kPush));
  EXPECT_TRUE(sheet.CanApply());
  Take(sheet);
  EXPECT_TRUE(sheet.PressApply());
  EXPECT_EQ(Take(sheet), (Log{"killactive 101 -> 0", "apply 101 -> 0", "set result 7 -> 1",
                              "setactive 101 -> 0"}));
  EXPECT_FALSE(sheet.CanApply());
  EXPECT_TRUE(sheet.isOpen());
  EXPECT_THAT(driver_.results, IsEmpty());
}

TEST_F(Sheet, ChangesAreCountedPageByPage) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  ASSERT_TRUE(sheet.ShowPageOf(102));
  Take(sheet);
  const auto send = [&](std::uint32_t message, std::uint32_t dialog) {
    platform_.windows.SendMessageW(sheet.window(), message,
                                   reinterpret_cast<std::uintptr_t>(sheet.UserOf(dialog).dialog()),
                                   0);
  };
  send(kPsmChanged, 101);
  send(kPsmChanged, 102);
  send(kPsmUnchanged, 101);
  EXPECT_TRUE(sheet.CanApply());
  send(kPsmUnchanged, 102);
  EXPECT_FALSE(sheet.CanApply());
  send(kPsmChanged, 103);  // from a window that is no page, yet something has changed
  EXPECT_TRUE(sheet.CanApply());
  EXPECT_EQ(Take(sheet),
            (Log{"changed 101", "changed 102", "unchanged 101", "unchanged 102", "changed 0"}));
}

TEST_F(Sheet, PageThatRefusesToApplyIsShown) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  ASSERT_TRUE(sheet.ShowPageOf(102));
  driver_.notifyAnswers[kPsnApply] = 2;  // without going there
  EXPECT_FALSE(sheet.PressOk());
  EXPECT_EQ(sheet.activePage(), 1U);
  driver_.notifyAnswers[kPsnApply] = 1;
  EXPECT_FALSE(sheet.PressOk());
  EXPECT_EQ(sheet.activePage(), 0U);
  EXPECT_TRUE(sheet.isOpen());
}

TEST_F(Sheet, HelpGoesToTheActivePage) {
  HeadlessSheet sheet(platform_, &Entry, 0);
  ASSERT_TRUE(sheet.Open());
  Take(sheet);
  EXPECT_TRUE(sheet.PressHelp());
  EXPECT_EQ(Take(sheet), (Log{"help 101 -> 0"}));
}

TEST_F(Sheet, AddingFailsWhenPlannedAndForADescriptionOfNothing) {
  driver_.pages = {101, 0, 102, 103};
  HeadlessSheet sheet(platform_, &Entry, 0);
  sheet.FailAdd(3);
  ASSERT_TRUE(sheet.Open());
  EXPECT_THAT(driver_.adds, ElementsAre(1, 0, 0, 2));
  EXPECT_EQ(sheet.PageOf(103), 1U);
  EXPECT_EQ(sheet.PageOf(102), std::nullopt);
}

TEST_F(Sheet, EntryThatRefusesEndsTheProtocol) {
  driver_.addsPages = false;
  driver_.initAnswer = -1;
  HeadlessSheet sheet(platform_, &Entry, 0);
  EXPECT_FALSE(sheet.Open());
  EXPECT_EQ(sheet.log, (Log{"reason 0 -> -1"}));
  EXPECT_FALSE(sheet.PressCancel() || sheet.PressApply() || sheet.PressHelp());
}

TEST_F(Sheet, WithoutPagesIsNotShownAndTakenDown) {
  driver_.addsPages = false;
  HeadlessSheet sheet(platform_, &Entry, 0);
  EXPECT_FALSE(sheet.Open());
  EXPECT_EQ(sheet.log, (Log{"reason 0 -> 1", "reason 1 -> 1", "reason 2 -> 1"}));
  EXPECT_EQ(platform_.windows.liveWindows(), 0U);
}

TEST_F(Sheet, PageWhoseCallbackForbidsItIsNotMade) {
  driver_.createAnswer = 0;
  HeadlessSheet sheet(platform_, &Entry, 0);
  EXPECT_FALSE(sheet.Open());
  EXPECT_THAT(driver_.callbacks, ElementsAre(0, 0, 0, 2, 2, 2, 1, 1, 1));
}

TEST_F(Sheet, LeftOpenIsTakenDownWithoutAWordToItsPages) {
  {
    HeadlessSheet sheet(platform_, &Entry, 0);
    ASSERT_TRUE(sheet.Open());
  }
  EXPECT_EQ(driver_.destroyParam, 0);
  EXPECT_EQ(platform_.windows.liveWindows(), 0U);
}

}  // namespace
}  // namespace ostrel::headless
