#include "core/sheet_frame.h"

#include "config/setting_stores.h"
#include "core/companion.h"
#include "core/devmode_lifecycle.h"
#include "core/devmode_queries.h"
#include "core/language.h"
#include "core/library_lifetime.h"
#include "core/model_table.h"
#include "core/page_state_table.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/string_ids.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace ostrel {
namespace {

// ---- The companion library ----------------------------------------------------------------------

// Its entries have the signature of this driver's own.
using CompanionEntry = std::int32_t (*)(SheetInfo* info, std::intptr_t lParam);

CompanionEntry FindEntry(ModuleHandle companion, const char* name) {
  return reinterpret_cast<CompanionEntry>(World().modules.GetProcAddress(companion, name));
}

// ---- The pages ----------------------------------------------------------------------------------

constexpr std::uint32_t kPageFlags = kPspUseIconId | kPspHasHelp;
constexpr std::uint32_t kTitledPageFlags = kPspUseTitle | kPspHasHelp;
constexpr std::uint32_t kFirstPageFlags = kPageFlags | kPspUseCallback;
static_assert(kPageFlags == 0x24);
static_assert(kTitledPageFlags == 0x28);
static_assert(kFirstPageFlags == 0xA4);

// The common property sheet's number for an icon of its own (compstui.h).
constexpr std::uintptr_t kHeaderIcon = 64082;

// When the sheet's first page goes, and what was applied last still holds, it is taken over once
// more. "Cancel" has been through ForgetApply by then.
std::uint32_t OnFirstPage(WindowHandle window, std::uint32_t message, SheetPage* page) {
  if (message == kPspcbRelease && page != nullptr) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a page carries its context as a number.
    auto* context = reinterpret_cast<UIContext*>(page->lParam);
    if (context != nullptr && context->applied != 0) {
      ApplySettings(window, context);
    }
  }
  return message == kPspcbRelease || message == kPspcbCreate ? 1 : 0;
}

// Made from this library's manifest, when it is first needed and until it can be made.
ActivationContext PageActivationContext() {
  constexpr std::uint32_t kManifestId = 2;
  ProcessState& process = Process();
  if (process.PageActivationContext == ActivationContext::kNone) {
    process.PageActivationContext =
        World().system.CreateActCtxW(process.LibraryModule, kManifestId);
  }
  return process.PageActivationContext;
}

// Whether the row's page can be shown; it then stands in `page`.
bool PreparePage(const SheetPageRow& row, std::span<char16_t> title, ModuleHandle module,
                 UIContext* context, SheetPage& page) {
  if (!World().modules.FindResourceW(module, row.dialogId, kResourceDialog)) {
    return false;
  }
  page.dwSize = sizeof(page);
  page.dwFlags = kPageFlags;
  page.hInstance = module;
  // A dialog's id travels in the place of its name.
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  page.pszTemplate = reinterpret_cast<const char16_t*>(std::uintptr_t{row.dialogId});
  page.pfnDlgProc = row.procedure;
  page.lParam = reinterpret_cast<std::intptr_t>(context);
  if (LoadExistingString(module, row.titleStringId, title)) {
    page.dwFlags |= kTitledPageFlags;
    page.pszTitle = title.data();
  }
  if (const ActivationContext made = PageActivationContext(); made != ActivationContext::kNone) {
    page.dwFlags |= kPspUseFusionContext;
    page.hActCtx = made;
  }
  return true;
}

using PageTitle = char16_t[kPageTitleUnits];

// The pages that are there stand first, the rest is zero. Result: how many are there.
template <std::size_t Rows>
std::size_t PreparePages(std::span<const SheetPageRow> rows, PageTitle (&titles)[Rows],
                         ModuleHandle module, UIContext* context,
                         std::array<SheetPage, Rows>& pages) {
  std::size_t count = 0;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (PreparePage(rows[row], titles[row], module, context, pages[count])) {
      ++count;
    }
  }
  if (count != 0) {
    pages[0].dwFlags |= kFirstPageFlags;
    pages[0].pfnCallback = OnFirstPage;
  }
  return count;
}

// Adds pages up to the first that isn't taken.
void AddPages(const SheetInfo& info, std::span<SheetPage> pages) {
  for (SheetPage& page : pages) {
    if (info.pfnComPropSheet == nullptr ||
        info.pfnComPropSheet(info.hComPropSheet, kSheetAddPage,
                             reinterpret_cast<std::intptr_t>(&page), 0) <= 0) {
      break;
    }
  }
}

// How many rows of the document sheet are for the model in force. The last one, the job's PIN, is
// found by its title.
std::size_t RowsOfModel(std::span<const SheetPageRow, kDocumentPageRows> rows) {
  if ((Process().ModelFlags & kFamiliesWithJobPin) == 0) {
    return kDocumentPageRows - 1;
  }
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (rows[row].titleStringId == kStringJobPin) {
      Process().JobPinPageIndex = static_cast<std::int32_t>(row);
    }
  }
  return kDocumentPageRows;
}

// ---- Opening ------------------------------------------------------------------------------------

// The library that the pages come from, chosen once: a sheet on another thread may change the
// process's word at any moment. The context's own library is the one that lives as long as the
// sheet. Null when there is none to be had.
ModuleHandle PagesModule(const UIContext& context) {
  ModuleHandle& current = Process().CurrentLanguageModule;
  if (current == nullptr) {
    current = LoadLanguageModule(context.driverName);
  }
  return context.languageModule != nullptr ? context.languageModule : current;
}

// Gives up a document sheet's context with its language library. The process forgets a module that
// may be gone with it.
void FreeDocumentContext(UIContext* context) {
  if (const ModuleHandle module = context->languageModule; module != nullptr) {
    if (Process().CurrentLanguageModule == module) {
      Process().CurrentLanguageModule = nullptr;
    }
    World().modules.FreeLibrary(module);
  }
  FreeUIContext(context);
}

// What the entry points do with a sheet's call when it opens.
struct Opening {
  SheetInfo& info;
  std::intptr_t lParam;
  const char16_t* printerName;
  UIContext* context;

  // From here on the print system holds the context.
  std::int32_t Keep() const {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the print system passes a pointer this way.
    context->documentHeader = reinterpret_cast<DocumentPropertyHeader*>(lParam);
    info.UserData = reinterpret_cast<std::uintptr_t>(context);
    info.Result = 0;
    return kSheetDone;
  }

  void PointAtSheet() const {
    context->sheetHandle = info.hComPropSheet;
    context->sheetCallback = info.pfnComPropSheet;
  }
};

// Result: whether the sheet opens; only then the print system holds the context.
bool OpenDocumentSheet(const Opening& opening,
                       std::span<const SheetPageRow, kDocumentPageRows> rows) {
  UIContext* context = opening.context;
  const ScopedModule companion(LoadCompanion());
  if (companion.get() == nullptr) {
    return false;
  }
  if (const CompanionEntry entry = FindEntry(companion.get(), "OlDocumentPropertySheets");
      entry != nullptr) {
    const bool declined = entry(&opening.info, opening.lParam) == 0;
    WriteUserDword(u"Cancel", declined ? 1 : 0, context->driverName);
  }
  SelectModelFlags(opening.printerName);
  if (CheckSettingsFile(context) == SettingsFileState::kCorrupt) {
    return false;
  }
  RecordUniversalPrinter(*context, opening.printerName);
  const std::size_t shownRows = RowsOfModel(rows);
  const ModuleHandle module = PagesModule(*context);
  if (module == nullptr) {
    return false;
  }
  std::array<SheetPage, kDocumentPageRows> pages = {};
  const std::size_t count =
      PreparePages(rows.first(shownRows), Process().DocumentPageTitles, module, context, pages);
  if (count == 0) {
    return false;
  }
  opening.PointAtSheet();
  AddPages(opening.info, std::span(pages).first(count));
  opening.Keep();
  return true;
}

enum class PrinterSheet { kOpens, kFails, kDeclined };

PrinterSheet OpenPrinterSheet(const Opening& opening,
                              std::span<const SheetPageRow, kPrinterPageRows> rows) {
  UIContext* context = opening.context;
  const ScopedModule companion(LoadCompanion());
  if (companion.get() == nullptr) {
    return PrinterSheet::kFails;
  }
  if (const CompanionEntry entry = FindEntry(companion.get(), "OlDevicePropertySheets");
      entry != nullptr && entry(&opening.info, opening.lParam) == 0) {
    return PrinterSheet::kDeclined;
  }
  SelectModelFlags(opening.printerName);
  const ModuleHandle module = PagesModule(*context);
  std::array<SheetPage, kPrinterPageRows> pages = {};
  if (module == nullptr ||
      PreparePages(rows, Process().PrinterPageTitles, module, context, pages) == 0) {
    return PrinterSheet::kFails;
  }
  opening.PointAtSheet();
  // Both rows go to the common sheet, also when only one has a page: it refuses the empty one.
  AddPages(opening.info, pages);
  opening.Keep();
  return PrinterSheet::kOpens;
}

// NOLINTBEGIN(performance-no-int-to-ptr): the protocol passes pointers as numbers.

std::int32_t OnDocumentInit(SheetInfo& info, std::intptr_t lParam,
                            std::span<const SheetPageRow, kDocumentPageRows> rows) {
  info.UserData = 0;
  const auto* header = reinterpret_cast<const DocumentPropertyHeader*>(lParam);
  UIContext* context =
      header == nullptr ? nullptr : CreateUIContext(header->hPrinter, header->pdmIn);
  if (context == nullptr) {
    return kSheetFailed;
  }
  context->deviceSheet = 0;
  context->noPermission = (header->fMode & kDmNoPermission) != 0 ? 1 : 0;
  Process().JobPinPageIndex = 0;
  if (!OpenDocumentSheet({info, lParam, header->pszPrinterName, context}, rows)) {
    FreeDocumentContext(context);
    // The companion had the same structure in its hands; what it may have left there isn't ours.
    info.UserData = 0;
    return kSheetFailed;
  }
  return kSheetDone;
}

std::int32_t OnPrinterInit(SheetInfo& info, std::intptr_t lParam,
                           std::span<const SheetPageRow, kPrinterPageRows> rows) {
  info.UserData = 0;
  const auto* header = reinterpret_cast<const DevicePropertyHeader*>(lParam);
  UIContext* context = header == nullptr ? nullptr : CreateUIContext(header->hPrinter, nullptr);
  if (context == nullptr) {
    return kSheetFailed;
  }
  context->deviceSheet = 1;
  Process().JobPinPageIndex = 0;
  const PrinterSheet sheet =
      OpenPrinterSheet({info, lParam, header->pszPrinterName, context}, rows);
  if (sheet != PrinterSheet::kOpens) {
    FreeUIContext(context);
    info.UserData = 0;
  }
  return sheet == PrinterSheet::kFails ? kSheetFailed : kSheetDone;
}

// ---- The later reasons --------------------------------------------------------------------------

UIContext* ContextOf(const SheetInfo& info) {
  return reinterpret_cast<UIContext*>(info.UserData);
}

std::int32_t OnGetHeader(const UIContext& context, std::intptr_t lParam) {
  auto* header = reinterpret_cast<SheetInfoHeader*>(lParam);
  if (header == nullptr) {
    return kSheetFailed;
  }
  header->Flags = kSheetHeaderTitle;
  header->pTitle = context.documentHeader->pszPrinterName;
  header->hInst = Process().CurrentLanguageModule;
  header->IconID = kHeaderIcon;
  return kSheetDone;
}

void TakeResult(SheetInfo& info, std::intptr_t lParam) {
  if (const auto* result = reinterpret_cast<const SetResultInfo*>(lParam); result != nullptr) {
    info.Result = static_cast<std::uintptr_t>(result->Result);
  }
}

// NOLINTEND(performance-no-int-to-ptr)

std::int32_t AnswerDocumentSheet(SheetInfo& info, std::intptr_t lParam,
                                 std::span<const SheetPageRow, kDocumentPageRows> rows) {
  if (info.Reason == kReasonInit) {
    return OnDocumentInit(info, lParam, rows);
  }
  UIContext* context = ContextOf(info);
  if (context == nullptr) {
    return kSheetFailed;
  }
  switch (info.Reason) {
    case kReasonGetHeader:
      return OnGetHeader(*context, lParam);
    case kReasonDestroy:
      ReleasePageStates();
      FreeDocumentContext(context);
      info.UserData = 0;
      return kSheetDone;
    case kReasonSetResult:
      ApplySettings(nullptr, context);
      TakeResult(info, lParam);
      return kSheetDone;
    default:
      return kSheetFailed;
  }
}

std::int32_t AnswerPrinterSheet(SheetInfo& info, std::intptr_t lParam,
                                std::span<const SheetPageRow, kPrinterPageRows> rows) {
  if (info.Reason == kReasonInit) {
    return OnPrinterInit(info, lParam, rows);
  }
  UIContext* context = ContextOf(info);
  if (context == nullptr) {
    return kSheetFailed;
  }
  switch (info.Reason) {
    case kReasonGetHeader:
      return OnGetHeader(*context, lParam);
    case kReasonDestroy:
      FreeUIContext(context);
      info.UserData = 0;
      return kSheetDone;
    case kReasonSetResult:
      TakeResult(info, lParam);
      ApplySettings(nullptr, context);
      return kSheetDone;
    default:
      return kSheetFailed;
  }
}

// Hands the record out to the caller, and tells the common sheet that there is a result.
void HandOut(UIContext& context) {
  constexpr std::uint32_t kHandsOut = kDmUpdate | kDmCopy;
  const DocumentPropertyHeader* header = context.documentHeader;
  if (context.deviceSheet != 0 || header == nullptr || (header->fMode & kHandsOut) == 0) {
    return;
  }
  CopyDevmodeOut(&context.devmode, header->pdmIn, header->pdmOut);
  // A common sheet may answer with a "set result" of its own, which takes the settings over and
  // would tell it again, without end.
  if (context.sheetCallback != nullptr && context.settingResult == 0) {
    context.settingResult = 1;
    context.sheetCallback(context.sheetHandle, kSheetSetResult, 0, 1);
    context.settingResult = 0;
  }
}

}  // namespace

std::int32_t DrvDocumentPropertySheets(SheetInfo* info, std::intptr_t lParam,
                                       std::span<const SheetPageRow, kDocumentPageRows> rows) {
  const std::int32_t answer =
      info == nullptr
          // NOLINTNEXTLINE(performance-no-int-to-ptr): the print system passes a pointer this way.
          ? DocumentPropertiesWithoutDialog(reinterpret_cast<DocumentPropertyHeader*>(lParam))
          : AnswerDocumentSheet(*info, lParam, rows);
  DeleteTemporaryFile();
  return answer;
}

std::int32_t DrvDevicePropertySheets(SheetInfo* info, std::intptr_t lParam,
                                     std::span<const SheetPageRow, kPrinterPageRows> rows) {
  if (info == nullptr) {
    return kSheetFailed;
  }
  const std::int32_t answer = AnswerPrinterSheet(*info, lParam, rows);
  if (info->Reason == kReasonDestroy) {
    DeleteTemporaryFile();
  }
  return answer;
}

bool ApplySettings(WindowHandle window, UIContext* context) {
  if (context == nullptr) {
    return false;
  }
  // The test whether a favourite is still in force belongs here; it comes with the favourites page.
  constexpr std::int16_t kLastPublicDuplex = 3;
  if (context->publicPointer->dmDuplex > kLastPublicDuplex) {
    context->privatePointer->Duplex = context->publicPointer->dmDuplex;
  }
  context->applied = 1;
  if (window != nullptr) {
    World().windows.SetWindowLongPtrW(window, kDwlpMessageResult, 0);
    World().windows.SendMessageW(World().windows.GetParent(window), kPsmUnchanged,
                                 reinterpret_cast<std::uintptr_t>(window), 0);
  }
  HandOut(*context);
  return true;
}

void ForgetApply(UIContext* context) {
  if (context != nullptr) {
    context->applied = 0;
  }
}

}  // namespace ostrel
