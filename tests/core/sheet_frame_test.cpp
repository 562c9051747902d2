// The frame of the two property sheets: what opens them, what is asked of the common sheet, what
// becomes of the record, and what is left when a sheet goes.
#include "core/model_table.h"
#include "core/page_state_table.h"
#include "core/settings_record.h"
#include "core/string_ids.h"
#include "core/text.h"
#include "driver/page_tables.h"
#include "pages/page_links.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/sheet_scene.h"

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::SheetRequest;
using test::SheetScene;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::uint32_t> kAllDocumentDialogs = {1072, 111, 693, 626, 645, 1511};
const std::vector<std::uint32_t> kAllPrinterDialogs = {651, 1512};

std::vector<std::uintptr_t> DialogsOf(const std::vector<SheetRequest>& pages) {
  std::vector<std::uintptr_t> dialogs;
  dialogs.reserve(pages.size());
  for (const SheetRequest& request : pages) {
    dialogs.push_back(reinterpret_cast<std::uintptr_t>(request.page.pszTemplate));
  }
  return dialogs;
}

std::uint32_t UserDword(SheetScene& scene, std::u16string_view subkey, std::u16string_view value) {
  const auto& values = scene.world.UserValues(subkey);
  const auto found = values.find(std::u16string(value));
  std::uint32_t number = 0xEEEEEEEE;
  if (found != values.end()) {
    std::memcpy(&number, found->second.bytes.data(), sizeof(number));
  }
  return number;
}

void ChooseModel(SheetScene& scene, std::u16string_view model) {
  scene.world.UserValues(test::kPrinterName)[u"printername"] = headless::StoredValue::Text(model);
}

bool OutIsUntouched(const SheetScene& scene) {
  const auto bytes = std::as_bytes(std::span(&scene.out, 1));
  return std::ranges::all_of(bytes, [](std::byte byte) { return byte == std::byte{0xA5}; });
}

// Closes what a test left open.
void Destroy(SheetScene& scene) {
  EXPECT_EQ(scene.CallDocument(kReasonDestroy, 0), 1);
}

// ---- The page tables ----------------------------------------------------------------------------

TEST(PageTables, DocumentRowsStandInTheSheetsOrder) {
  std::vector<std::pair<int, int>> rows;
  for (const SheetPageRow& row : kDocumentPages) {
    rows.emplace_back(row.dialogId, row.titleStringId);
    EXPECT_NE(row.procedure, nullptr) << row.dialogId;
  }
  EXPECT_THAT(rows, ElementsAre(std::pair(1072, 198), std::pair(111, 106), std::pair(693, 216),
                                std::pair(626, 126), std::pair(645, 142), std::pair(1511, 1502)));
}

TEST(PageTables, PrinterRowsStandInTheSheetsOrder) {
  std::vector<std::pair<int, int>> rows;
  for (const SheetPageRow& row : kPrinterPages) {
    rows.emplace_back(row.dialogId, row.titleStringId);
    EXPECT_NE(row.procedure, nullptr) << row.dialogId;
  }
  EXPECT_THAT(rows, ElementsAre(std::pair(651, 274), std::pair(1512, 4078)));
}

// ---- Opening the document sheet -----------------------------------------------------------------

TEST(DocumentSheetOpens, ContextIsMadeFromTheHeader) {
  SheetScene scene(kAllDocumentDialogs);
  scene.in.publicDevmode.dmCopies = 17;
  ASSERT_EQ(scene.OpenDocument(), 1);
  const UIContext* context = scene.context();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 17);
  EXPECT_EQ(context->printerHandle, scene.document.hPrinter);
  EXPECT_EQ(context->deviceSheet, 0U);
  EXPECT_EQ(context->noPermission, 0U);
  EXPECT_EQ(context->activePage, 0U);
  EXPECT_EQ(context->documentHeader, &scene.document);
  EXPECT_EQ(context->sheetHandle, scene.info.hComPropSheet);
  EXPECT_EQ(context->sheetCallback, scene.info.pfnComPropSheet);
  EXPECT_EQ(scene.info.Result, 0U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, CallsOldResultIsCleared) {
  SheetScene scene(kAllDocumentDialogs);
  scene.info.Result = 77;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.info.Result, 0U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, ModeWithoutPermissionLocksThePages) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.fMode = kDmCopy | 0x20;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.context()->noPermission, 1U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, WithoutAContextThereIsNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.modules.Remove(test::kBitmapLibraryPath);
  EXPECT_EQ(scene.OpenDocument(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_THAT(scene.companion.documentCalls, IsEmpty());
}

TEST(DocumentSheetOpens, WithoutAHeaderThereIsNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  EXPECT_EQ(scene.CallDocument(kReasonInit, 0), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
}

TEST(DocumentSheetOpens, WithoutACompanionThereIsNoSheetAndNothingIsLeft) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.modules.Remove(test::kCompanionPath);
  EXPECT_EQ(scene.OpenDocument(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_THAT(scene.requests, IsEmpty());
}

TEST(DocumentSheetOpens, CompanionElsewhereIsNotLoaded) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.modules.Remove(test::kCompanionPath);
  scene.world.platform.modules.Install(u"olunidrvui.dll");
  scene.world.platform.modules.Install(u"\\3\\olunidrvui.dll");
  scene.world.platform.faults.FailOperation("GetPrinterDriverDirectoryW");
  EXPECT_EQ(scene.OpenDocument(), -1);
}

TEST(DocumentSheetOpens, DriverDirectoryTooLongForTheCompanionsPathMeansNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.print.driverDirectory = u"C:\\" + std::u16string(245, u'd');
  EXPECT_EQ(scene.OpenDocument(), -1);
}

TEST(DocumentSheetOpens, CompanionGetsTheSameArgumentsAndIsFreed) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_THAT(
      scene.companion.documentCalls,
      ElementsAre(std::pair(&scene.info, reinterpret_cast<std::intptr_t>(&scene.document))));
  EXPECT_THAT(scene.companion.deviceCalls, IsEmpty());
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, CompanionThatAgreedIsWrittenDown) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(UserDword(scene, test::kDriverName, u"cancel"), 0U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, CompanionThatDeclinedIsWrittenDownAndTheSheetOpens) {
  SheetScene scene(kAllDocumentDialogs);
  scene.companion.documentAnswer = 0;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(UserDword(scene, test::kDriverName, u"cancel"), 1U);
  EXPECT_FALSE(scene.world.UserValues(test::kPrinterName).contains(u"cancel"));
  Destroy(scene);
}

TEST(DocumentSheetOpens, NegativeAnswerOfTheCompanionIsNoDecline) {
  SheetScene scene(kAllDocumentDialogs);
  scene.companion.documentAnswer = -1;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(UserDword(scene, test::kDriverName, u"cancel"), 0U);
  Destroy(scene);
}

TEST(DocumentSheetOpens, CompanionWithoutTheEntryIsPassedOver) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.modules.Install(test::kCompanionPath);  // without exports
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_FALSE(scene.world.UserValues(test::kDriverName).contains(u"cancel"));
  Destroy(scene);
}

TEST(DocumentSheetOpens, ModelIsSelectedBeforeThePages) {
  SheetScene scene(kAllDocumentDialogs);
  ChooseModel(scene, u"Juniper 2 Series");
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.world.process.ModelFlags, Juniper);
  Destroy(scene);
}

TEST(DocumentSheetOpens, CorruptSettingsFileIsToldAndMeansNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  const std::string rubbish = "this is no tree";
  const auto bytes = std::as_bytes(std::span(rubbish));
  scene.world.platform.files.Put(test::kSettingsPath, {bytes.begin(), bytes.end()});
  EXPECT_EQ(scene.OpenDocument(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
  ASSERT_THAT(scene.world.platform.windows.boxes, SizeIs(1));
  EXPECT_EQ(scene.world.platform.windows.boxes[0].text, test::EnglishStrings().at(254));
  EXPECT_EQ(scene.world.platform.windows.boxes[0].caption, test::EnglishStrings().at(199));
  EXPECT_EQ(scene.world.platform.files.Get(test::kSettingsPath), nullptr);
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
  EXPECT_THAT(scene.requests, IsEmpty());
}

TEST(DocumentSheetOpens, UniversalPrinterIsWrittenDown) {
  SheetScene scene(kAllDocumentDialogs);
  ChooseModel(scene, u"Hazel 2 Series");
  scene.world.UserValues(test::kPrinterName)[u"installmode"] = headless::StoredValue::Dword(1);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_TRUE(scene.world.UserValues(test::kPrinterName).contains(u"configprintinfo"));
  EXPECT_TRUE(scene.world.UserValues(test::kPrinterName).contains(u"regtips"));
  Destroy(scene);
}

TEST(DocumentSheetOpens, OtherPrinterIsNotWrittenDown) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.UserValues(test::kPrinterName)[u"installmode"] = headless::StoredValue::Dword(2);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_FALSE(scene.world.UserValues(test::kPrinterName).contains(u"configprintinfo"));
  Destroy(scene);
}

TEST(DocumentSheetOpens, HeaderWithoutAPrintersNameOpensTheSheet) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.pszPrinterName = nullptr;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.world.process.ModelFlags, Alder);
  Destroy(scene);
}

struct ModelPages {
  const char* name;
  const char16_t* model;
  bool hasJobPin;
};

class DocumentSheetPages : public testing::TestWithParam<ModelPages> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Families, DocumentSheetPages, testing::Values(
    ModelPages{"Alder",    u"Alder 1 Series",    false},
    ModelPages{"Birch",    u"Birch 1 Series",    false},
    ModelPages{"Cedar",    u"Cedar 1 Series",    true},
    ModelPages{"Dogwood",  u"Dogwood 1 Series",  false},
    ModelPages{"Elm",      u"Elm 1 Series",      true},
    ModelPages{"Fir",      u"Fir 1 Series",      false},
    ModelPages{"Ginkgo",   u"Ginkgo 1 Series",   true},
    ModelPages{"Hazel",    u"Hazel 1 Series",    true},
    ModelPages{"Ironwood", u"Ironwood 1 Series", false},
    ModelPages{"Juniper",  u"Juniper 1 Series",  false},
    ModelPages{"Kauri",    u"Kauri 1 Series",    true}), test::CaseName());
// clang-format on

TEST_P(DocumentSheetPages, JobPinPageIsThereForItsFamiliesAlone) {
  SheetScene scene(kAllDocumentDialogs);
  ChooseModel(scene, GetParam().model);
  scene.world.process.JobPinPageIndex = 99;
  ASSERT_EQ(scene.OpenDocument(), 1);
  std::vector<std::uintptr_t> expected = {1072, 111, 693, 626, 645};
  if (GetParam().hasJobPin) {
    expected.push_back(1511);
  }
  EXPECT_THAT(DialogsOf(scene.Pages()), ElementsAreArray(expected));
  EXPECT_EQ(scene.world.process.JobPinPageIndex, GetParam().hasJobPin ? 5 : 0);
  Destroy(scene);
}

TEST(DocumentSheetPage, IsDescribedAsTheCommonSheetWantsIt) {
  SheetScene scene(kAllDocumentDialogs);
  ChooseModel(scene, u"Hazel 2 Series");
  ASSERT_EQ(scene.OpenDocument(), 1);
  const std::vector<SheetRequest> pages = scene.Pages();
  ASSERT_THAT(pages, SizeIs(6));
  const std::uint32_t titleIds[] = {198, 106, 216, 126, 142, 1502};
  for (std::size_t row = 0; row < pages.size(); ++row) {
    const SheetPage& page = pages[row].page;
    EXPECT_EQ(page.dwSize, 96U) << row;
    EXPECT_EQ(page.dwFlags, row == 0 ? 0x40ACU : 0x402CU) << row;
    EXPECT_EQ(page.hInstance, scene.world.process.CurrentLanguageModule) << row;
    EXPECT_EQ(page.pszIcon, nullptr) << row;
    EXPECT_EQ(page.pfnDlgProc, kDocumentPages[row].procedure) << row;
    EXPECT_EQ(page.lParam, reinterpret_cast<std::intptr_t>(scene.context())) << row;
    EXPECT_EQ(page.pfnCallback != nullptr, row == 0) << row;
    EXPECT_EQ(page.hActCtx, scene.world.process.PageActivationContext) << row;
    EXPECT_EQ(pages[row].title, test::EnglishStrings().at(titleIds[row])) << row;
    EXPECT_EQ(pages[row].second, 0) << row;
  }
  Destroy(scene);
}

TEST(DocumentSheetPage, WithoutATitleStringKeepsTheDialogsOwn) {
  SheetScene scene(kAllDocumentDialogs);
  headless::Resources library = {.strings = test::EnglishStrings()};
  library.strings.erase(106);
  library.entries = {{kResourceDialog, 111}};
  scene.world.platform.modules.InstallResources(
      test::kEnglishLibraryPath, std::make_shared<const headless::Resources>(std::move(library)));
  ASSERT_EQ(scene.OpenDocument(), 1);
  ASSERT_THAT(scene.Pages(), SizeIs(1));
  EXPECT_EQ(scene.Pages()[0].page.dwFlags, 0x40A4U);
  EXPECT_EQ(scene.Pages()[0].page.pszTitle, nullptr);
  Destroy(scene);
}

TEST(DocumentSheetPage, TitleIsCutToItsBuffer) {
  SheetScene scene(kAllDocumentDialogs);
  headless::Resources library = {.strings = test::EnglishStrings()};
  library.strings[106] = std::u16string(300, u't');
  library.entries = {{kResourceDialog, 111}};
  scene.world.platform.modules.InstallResources(
      test::kEnglishLibraryPath, std::make_shared<const headless::Resources>(std::move(library)));
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.Pages().at(0).title, std::u16string(255, u't'));
  Destroy(scene);
}

TEST(DocumentSheetPage, WithoutATemplateIsLeftOutAndTheNextOneComesFirst) {
  SheetScene scene({693, 645});
  ASSERT_EQ(scene.OpenDocument(), 1);
  const std::vector<SheetRequest> pages = scene.Pages();
  EXPECT_THAT(DialogsOf(pages), ElementsAre(693, 645));
  EXPECT_EQ(pages[0].page.dwFlags, 0x40ACU);
  EXPECT_NE(pages[0].page.pfnCallback, nullptr);
  EXPECT_EQ(pages[1].page.dwFlags, 0x402CU);
  EXPECT_EQ(pages[1].page.pfnCallback, nullptr);
  Destroy(scene);
}

TEST(DocumentSheetPage, NoTemplateAtAllMeansNoSheetAndNoContext) {
  SheetScene scene({});
  EXPECT_EQ(scene.OpenDocument(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_THAT(scene.requests, IsEmpty());
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
}

TEST(DocumentSheetPage, RefusedByTheCommonSheetEndsTheAddingAndTheSheetStands) {
  SheetScene scene(kAllDocumentDialogs);
  scene.pagesTaken = 2;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_THAT(DialogsOf(scene.Pages()), ElementsAre(1072, 111));
  EXPECT_NE(scene.context(), nullptr);
  Destroy(scene);
}

TEST(DocumentSheetPage, SheetWithoutAFunctionGetsNoPages) {
  SheetScene scene(kAllDocumentDialogs);
  scene.info.pfnComPropSheet = nullptr;
  EXPECT_EQ(scene.OpenDocument(), 1);
  EXPECT_THAT(scene.requests, IsEmpty());
  Destroy(scene);
}

TEST(PageActivationContext, IsMadeOnceFromTheSecondResource) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  Destroy(scene);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_THAT(scene.world.platform.system.requestedManifests, ElementsAre(2));
  EXPECT_EQ(scene.world.platform.system.liveContexts(), 1U);
  Destroy(scene);
}

TEST(PageActivationContext, ThatCouldNotBeMadeIsTriedAgain) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.faults.FailOperation("CreateActCtxW", 1);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.Pages()[0].page.dwFlags, 0xACU);
  EXPECT_EQ(scene.Pages()[0].page.hActCtx, ActivationContext{});
  EXPECT_EQ(scene.Pages()[1].page.dwFlags, 0x402CU);
  Destroy(scene);
}

TEST(LanguageModule, ThatIsMissingMeansNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  scene.world.platform.modules.Remove(test::kEnglishLibraryPath);
  EXPECT_EQ(scene.OpenDocument(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
}

TEST(LanguageModule, ThatTheContextLacksIsLoadedOnceMore) {
  SheetScene scene(kAllDocumentDialogs);
  // The three tries of the context fail, the next one doesn't: the defaults' own strings come
  // first.
  scene.world.platform.faults.FailOperation("LoadLibraryW", 1);
  scene.world.platform.faults.FailOperation("LoadLibraryW", 2);
  scene.world.platform.faults.FailOperation("LoadLibraryW", 3);
  scene.world.platform.faults.FailOperation("LoadLibraryW", 4);
  scene.world.platform.faults.FailOperation("LoadLibraryW", 5);
  scene.world.platform.faults.FailOperation("LoadLibraryW", 6);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.context()->languageModule, nullptr);
  EXPECT_NE(scene.world.process.CurrentLanguageModule, nullptr);
  EXPECT_EQ(scene.Pages().at(0).page.hInstance, scene.world.process.CurrentLanguageModule);
  Destroy(scene);
  EXPECT_NE(scene.world.process.CurrentLanguageModule, nullptr);
}

// ---- The later reasons --------------------------------------------------------------------------

TEST(DocumentSheetHeader, GetsTitleInstanceAndIcon) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  SheetInfoHeader header;
  std::memset(&header, 0xA5, sizeof(header));
  const WindowHandle parent = header.hWndParent;
  EXPECT_EQ(scene.CallDocument(kReasonGetHeader, reinterpret_cast<std::intptr_t>(&header)), 1);
  EXPECT_EQ(header.Flags, 4);
  EXPECT_EQ(header.pTitle, scene.printerName.data());
  EXPECT_EQ(header.hInst, scene.world.process.CurrentLanguageModule);
  EXPECT_EQ(header.IconID, 64082U);
  EXPECT_EQ(header.hWndParent, parent);
  EXPECT_EQ(header.cbSize, 0xA5A5);
  Destroy(scene);
}

struct LaterReason {
  const char* name;
  std::uint16_t reason;
};

class SheetWithoutContext : public testing::TestWithParam<LaterReason> {};

INSTANTIATE_TEST_SUITE_P(Reasons, SheetWithoutContext,
                         testing::Values(LaterReason{"GetHeader", 1}, LaterReason{"Destroy", 2},
                                         LaterReason{"SetResult", 3}, LaterReason{"Other", 4},
                                         LaterReason{"Last", 65535}),
                         test::CaseName());

TEST_P(SheetWithoutContext, AnswersFailureOnBothSheets) {
  SheetScene scene(kAllDocumentDialogs);
  SheetInfoHeader header = {};
  const auto lParam = reinterpret_cast<std::intptr_t>(&header);
  EXPECT_EQ(scene.CallDocument(GetParam().reason, lParam), -1);
  EXPECT_EQ(scene.CallDevice(GetParam().reason, lParam), -1);
  EXPECT_EQ(header.Flags, 0);
}

TEST(SheetReason, ThatIsUnknownFailsAndLeavesTheContext) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  const UIContext* context = scene.context();
  EXPECT_EQ(scene.CallDocument(5, 0), -1);
  EXPECT_EQ(scene.context(), context);
  Destroy(scene);
}

TEST(DocumentSheetDestroy, FreesContextLanguageAndPageStates) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  TellPages(&PageLinks::mediaChanged, true);
  ASSERT_NE(PageStatePlace(PageSlot::kPageLinks), nullptr);
  const std::size_t loads = scene.world.platform.modules.loadsOf(test::kEnglishLibraryPath);
  EXPECT_EQ(scene.CallDocument(kReasonDestroy, 0x100), 1);
  EXPECT_EQ(PageStatePlace(PageSlot::kPageLinks), nullptr);
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kEnglishLibraryPath), loads - 1);
  EXPECT_EQ(scene.world.process.CurrentLanguageModule, nullptr);
  EXPECT_EQ(scene.info.UserData, 0U);
  // Only the copy of the defaults lives on.
  EXPECT_EQ(scene.world.platform.memory.liveBlocks(), 1U);
  EXPECT_EQ(scene.CallDocument(kReasonDestroy, 0), -1);
}

TEST(DocumentSheetDestroy, KeepsTheModuleOfAnotherContext) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  const auto other = reinterpret_cast<ModuleHandle>(std::uintptr_t{0xBEEF});
  scene.world.process.CurrentLanguageModule = other;
  Destroy(scene);
  EXPECT_EQ(scene.world.process.CurrentLanguageModule, other);
}

TEST(DocumentSheetResult, AppliesAndTakesTheCallsResultOver) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  scene.context()->publicPointer->dmCopies = 23;
  const SetResultInfo result = {sizeof(SetResultInfo), 0, nullptr, 0x1234};
  EXPECT_EQ(scene.CallDocument(kReasonSetResult, reinterpret_cast<std::intptr_t>(&result)), 1);
  EXPECT_EQ(scene.info.Result, 0x1234U);
  EXPECT_EQ(scene.out.publicDevmode.dmCopies, 23);
  ASSERT_EQ(scene.ResultsSet(), 1U);
  EXPECT_EQ(scene.requests.back().result, 0U) << "applied before the result is taken over";
  Destroy(scene);
}

TEST(DocumentSheetResult, WithoutADescriptionStillApplies) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_EQ(scene.CallDocument(kReasonSetResult, 0), 1);
  EXPECT_EQ(scene.info.Result, 0U);
  EXPECT_FALSE(OutIsUntouched(scene));
  Destroy(scene);
}

TEST(DocumentSheetCall, WithoutASheetIsTheFormThatShowsNothing) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.fMode = 0;
  EXPECT_EQ(DrvDocumentPropertySheets(nullptr, reinterpret_cast<std::intptr_t>(&scene.document),
                                      kDocumentPages),
            7896);
  scene.document.fMode = kDmCopy;
  scene.in.publicDevmode.dmCopies = 5;
  EXPECT_EQ(DrvDocumentPropertySheets(nullptr, reinterpret_cast<std::intptr_t>(&scene.document),
                                      kDocumentPages),
            1);
  EXPECT_EQ(scene.out.publicDevmode.dmCopies, 5);
  EXPECT_THAT(scene.companion.documentCalls, IsEmpty());
}

// ---- Taking over --------------------------------------------------------------------------------

TEST(ApplySettings, WithoutAContextDoesNothing) {
  const SheetScene scene(kAllDocumentDialogs);
  EXPECT_FALSE(ApplySettings(nullptr, nullptr));
  ForgetApply(nullptr);
}

TEST(ApplySettings, HandsTheRecordOutAndSetsTheResult) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  scene.context()->publicPointer->dmCopies = 12;
  scene.context()->privatePointer->ReversePrint = 1;
  EXPECT_TRUE(ApplySettings(nullptr, scene.context()));
  EXPECT_EQ(scene.out.publicDevmode.dmCopies, 12);
  EXPECT_EQ(scene.out.privateDevmode.ReversePrint, 1);
  EXPECT_EQ(scene.context()->applied, 1U);
  EXPECT_EQ(scene.ResultsSet(), 1U);
  Destroy(scene);
}

TEST(ApplySettings, HandsOutToACallerWhoseRecordsAreOne) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.pdmOut = scene.document.pdmIn;
  ASSERT_EQ(scene.OpenDocument(), 1);
  scene.context()->publicPointer->dmCopies = 12;
  EXPECT_TRUE(ApplySettings(nullptr, scene.context()));
  EXPECT_EQ(scene.in.publicDevmode.dmCopies, 12);
  EXPECT_EQ(scene.in.publicDevmode.dmSize, 220);
  EXPECT_EQ(scene.in.publicDevmode.dmDriverExtra, 7676);
  Destroy(scene);
}

struct ModeCase {
  const char* name;
  std::uint32_t mode;
  bool handsOut;
};

class ApplyByMode : public testing::TestWithParam<ModeCase> {};

INSTANTIATE_TEST_SUITE_P(Bits, ApplyByMode,
                         testing::Values(ModeCase{"None", 0, false}, ModeCase{"Update", 1, true},
                                         ModeCase{"Copy", 2, true}, ModeCase{"Both", 3, true},
                                         ModeCase{"Prompt", 4, false}, ModeCase{"Modify", 8, false},
                                         ModeCase{"PromptAndCopy", 6, true}),
                         test::CaseName());

TEST_P(ApplyByMode, OnlyACallerWhoAskedGetsTheRecord) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.fMode = GetParam().mode;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_TRUE(ApplySettings(nullptr, scene.context()));
  EXPECT_EQ(OutIsUntouched(scene), !GetParam().handsOut);
  EXPECT_EQ(scene.ResultsSet(), GetParam().handsOut ? 1U : 0U);
  EXPECT_EQ(scene.context()->applied, 1U);
  Destroy(scene);
}

TEST(ApplySettings, WithoutAnOutputRecordStillSetsTheResult) {
  SheetScene scene(kAllDocumentDialogs);
  scene.document.pdmOut = nullptr;
  ASSERT_EQ(scene.OpenDocument(), 1);
  EXPECT_TRUE(ApplySettings(nullptr, scene.context()));
  EXPECT_EQ(scene.ResultsSet(), 1U);
  Destroy(scene);
}

struct DuplexCase {
  const char* name;
  std::int16_t duplex;
  std::int16_t privateDuplex;
};

class ApplyDuplex : public testing::TestWithParam<DuplexCase> {};

INSTANTIATE_TEST_SUITE_P(Values, ApplyDuplex,
                         testing::Values(DuplexCase{"One", 1, 77}, DuplexCase{"Three", 3, 77},
                                         DuplexCase{"Four", 4, 4}, DuplexCase{"Five", 5, 5},
                                         DuplexCase{"Most", 32767, 32767},
                                         DuplexCase{"Negative", -1, 77}),
                         test::CaseName());

TEST_P(ApplyDuplex, PublicWordAboveThreeGoesToThePrivateWord) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  scene.context()->privatePointer->Duplex = 77;
  scene.context()->publicPointer->dmDuplex = GetParam().duplex;
  EXPECT_TRUE(ApplySettings(nullptr, scene.context()));
  EXPECT_EQ(scene.context()->privatePointer->Duplex, GetParam().privateDuplex);
  Destroy(scene);
}

// ---- The first page's callback ------------------------------------------------------------------

SheetPage FirstPage(const SheetScene& scene) {
  return scene.Pages().at(0).page;
}

TEST(FirstPage, ReleasedAfterAnApplyTakesOverOnceMore) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  SheetPage page = FirstPage(scene);
  scene.context()->applied = 1;
  scene.context()->publicPointer->dmCopies = 9;
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbRelease, &page), 1U);
  EXPECT_EQ(scene.out.publicDevmode.dmCopies, 9);
  Destroy(scene);
}

TEST(FirstPage, ReleasedAfterAResetTakesNothingOver) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  SheetPage page = FirstPage(scene);
  scene.context()->applied = 1;
  ForgetApply(scene.context());
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbRelease, &page), 1U);
  EXPECT_TRUE(OutIsUntouched(scene));
  EXPECT_EQ(scene.ResultsSet(), 0U);
  Destroy(scene);
}

TEST(FirstPage, CreatedAnswersYesAndTakesNothingOver) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  SheetPage page = FirstPage(scene);
  scene.context()->applied = 1;
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbCreate, &page), 1U);
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbAddRef, &page), 0U);
  EXPECT_EQ(page.pfnCallback(nullptr, 3, &page), 0U);
  EXPECT_TRUE(OutIsUntouched(scene));
  Destroy(scene);
}

TEST(FirstPage, ReleasedWithoutAPageOrAContextIsHarmless) {
  SheetScene scene(kAllDocumentDialogs);
  ASSERT_EQ(scene.OpenDocument(), 1);
  SheetPage page = FirstPage(scene);
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbRelease, nullptr), 1U);
  page.lParam = 0;
  EXPECT_EQ(page.pfnCallback(nullptr, kPspcbRelease, &page), 1U);
  Destroy(scene);
}

// ---- The printer sheet --------------------------------------------------------------------------

void DestroyDevice(SheetScene& scene) {
  EXPECT_EQ(scene.CallDevice(kReasonDestroy, 0), 1);
}

TEST(PrinterSheetOpens, ContextHasNoCallersRecord) {
  SheetScene scene(kAllPrinterDialogs);
  scene.in.publicDevmode.dmCopies = 17;
  ASSERT_EQ(scene.OpenDevice(), 1);
  const UIContext* context = scene.context();
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(context->publicPointer->dmCopies, 1);
  EXPECT_EQ(context->deviceSheet, 1U);
  EXPECT_EQ(context->noPermission, 0U);
  EXPECT_EQ(static_cast<void*>(context->documentHeader), &scene.device);
  EXPECT_EQ(scene.info.Result, 0U);
  DestroyDevice(scene);
}

TEST(PrinterSheetOpens, PagesAreThoseOfItsTable) {
  SheetScene scene(kAllPrinterDialogs);
  ASSERT_EQ(scene.OpenDevice(), 1);
  const std::vector<SheetRequest> pages = scene.Pages();
  EXPECT_THAT(DialogsOf(pages), ElementsAre(651, 1512));
  EXPECT_EQ(pages[0].page.dwFlags, 0x40ACU);
  EXPECT_NE(pages[0].page.pfnCallback, nullptr);
  EXPECT_EQ(pages[0].title, test::EnglishStrings().at(274));
  EXPECT_EQ(pages[1].page.dwFlags, 0x402CU);
  EXPECT_EQ(pages[1].title, test::EnglishStrings().at(4078));
  DestroyDevice(scene);
}

TEST(PrinterSheetOpens, RowWithoutATemplateSendsAnEmptyPage) {
  for (const std::uint32_t present : kAllPrinterDialogs) {
    SheetScene scene({present});
    ASSERT_EQ(scene.OpenDevice(), 1);
    const std::vector<SheetRequest> pages = scene.Pages();
    ASSERT_THAT(pages, SizeIs(2));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pages[0].page.pszTemplate), present);
    const SheetPage empty = {};
    EXPECT_EQ(std::memcmp(&pages[1].page, &empty, sizeof(empty)), 0);
    DestroyDevice(scene);
  }
}

TEST(PrinterSheetOpens, RefusedPageEndsTheAdding) {
  SheetScene scene(kAllPrinterDialogs);
  scene.pagesTaken = 1;
  ASSERT_EQ(scene.OpenDevice(), 1);
  EXPECT_THAT(DialogsOf(scene.Pages()), ElementsAre(651));
  DestroyDevice(scene);
}

TEST(PrinterSheetOpens, NoTemplateMeansNoSheet) {
  SheetScene scene(kAllDocumentDialogs);
  EXPECT_EQ(scene.OpenDevice(), -1);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_THAT(scene.requests, IsEmpty());
}

TEST(PrinterSheetOpens, CompanionThatDeclinesIsAllThatIsShown) {
  SheetScene scene(kAllPrinterDialogs);
  scene.companion.deviceAnswer = 0;
  EXPECT_EQ(scene.OpenDevice(), 1);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_THAT(scene.requests, IsEmpty());
  EXPECT_THAT(scene.companion.deviceCalls,
              ElementsAre(std::pair(&scene.info, reinterpret_cast<std::intptr_t>(&scene.device))));
  EXPECT_THAT(scene.companion.documentCalls, IsEmpty());
  EXPECT_FALSE(scene.world.UserValues(test::kDriverName).contains(u"cancel"));
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
}

TEST(PrinterSheetOpens, WithoutCompanionHeaderContextOrLanguageThereIsNoSheet) {
  {
    SheetScene scene(kAllPrinterDialogs);
    scene.world.platform.modules.Remove(test::kCompanionPath);
    EXPECT_EQ(scene.OpenDevice(), -1);
  }
  {
    SheetScene scene(kAllPrinterDialogs);
    EXPECT_EQ(scene.CallDevice(kReasonInit, 0), -1);
  }
  {
    SheetScene scene(kAllPrinterDialogs);
    scene.world.platform.modules.Remove(test::kBitmapLibraryPath);
    EXPECT_EQ(scene.OpenDevice(), -1);
  }
  {
    SheetScene scene(kAllPrinterDialogs);
    scene.world.platform.modules.Remove(test::kEnglishLibraryPath);
    EXPECT_EQ(scene.OpenDevice(), -1);
  }
}

TEST(PrinterSheetOpens, CompanionWithoutTheEntryIsPassedOver) {
  SheetScene scene(kAllPrinterDialogs);
  scene.world.platform.modules.Install(test::kCompanionPath);
  ASSERT_EQ(scene.OpenDevice(), 1);
  DestroyDevice(scene);
}

TEST(PrinterSheetOpens, SettingsFileAndUniversalStepsAreLeftAlone) {
  SheetScene scene(kAllPrinterDialogs);
  const std::string rubbish = "this is no tree";
  const auto bytes = std::as_bytes(std::span(rubbish));
  scene.world.platform.files.Put(test::kSettingsPath, {bytes.begin(), bytes.end()});
  ChooseModel(scene, u"Elm 3 Series");
  scene.world.UserValues(test::kPrinterName)[u"installmode"] = headless::StoredValue::Dword(1);
  ASSERT_EQ(scene.OpenDevice(), 1);
  EXPECT_THAT(scene.world.platform.windows.boxes, IsEmpty());
  EXPECT_FALSE(scene.world.UserValues(test::kPrinterName).contains(u"configprintinfo"));
  EXPECT_EQ(scene.world.process.ModelFlags, Elm);
  DestroyDevice(scene);
}

TEST(PrinterSheetHeader, IsThatOfTheDocumentSheet) {
  SheetScene scene(kAllPrinterDialogs);
  ASSERT_EQ(scene.OpenDevice(), 1);
  SheetInfoHeader header = {};
  EXPECT_EQ(scene.CallDevice(kReasonGetHeader, reinterpret_cast<std::intptr_t>(&header)), 1);
  EXPECT_EQ(header.Flags, 4);
  EXPECT_EQ(header.pTitle, scene.printerName.data());
  EXPECT_EQ(header.hInst, scene.world.process.CurrentLanguageModule);
  EXPECT_EQ(header.IconID, 64082U);
  DestroyDevice(scene);
}

TEST(PrinterSheetResult, IsTakenOverBeforeTheSettingsAreAndNothingIsHandedOut) {
  SheetScene scene(kAllPrinterDialogs);
  ASSERT_EQ(scene.OpenDevice(), 1);
  const SetResultInfo result = {sizeof(SetResultInfo), 0, nullptr, 0x4321};
  EXPECT_EQ(scene.CallDevice(kReasonSetResult, reinterpret_cast<std::intptr_t>(&result)), 1);
  EXPECT_EQ(scene.info.Result, 0x4321U);
  EXPECT_EQ(scene.context()->applied, 1U);
  EXPECT_EQ(scene.ResultsSet(), 0U);
  EXPECT_TRUE(OutIsUntouched(scene));
  DestroyDevice(scene);
}

TEST(PrinterSheetDestroy, FreesTheContextAndKeepsTheLanguage) {
  SheetScene scene(kAllPrinterDialogs);
  ASSERT_EQ(scene.OpenDevice(), 1);
  const std::size_t loads = scene.world.platform.modules.loadsOf(test::kEnglishLibraryPath);
  DestroyDevice(scene);
  EXPECT_EQ(scene.world.platform.modules.loadsOf(test::kEnglishLibraryPath), loads);
  EXPECT_NE(scene.world.process.CurrentLanguageModule, nullptr);
  EXPECT_EQ(scene.info.UserData, 0U);
  EXPECT_EQ(scene.world.platform.memory.liveBlocks(), 1U);
}

TEST(PrinterSheetCall, WithoutASheetFails) {
  const SheetScene scene(kAllPrinterDialogs);
  EXPECT_EQ(DrvDevicePropertySheets(nullptr, 0, kPrinterPages), -1);
}

}  // namespace
}  // namespace ostrel
