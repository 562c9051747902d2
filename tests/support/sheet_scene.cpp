#include "support/sheet_scene.h"

#include "driver/page_tables.h"

#include <cstring>

namespace ostrel::test {
namespace {

SheetScene* current = nullptr;

std::intptr_t CommonSheet(SheetHandle sheet, std::uint32_t function, std::intptr_t first,
                          std::intptr_t second) {
  if (sheet != current->info.hComPropSheet) {
    return -1;
  }
  SheetRequest request = {function, {}, {}, first, second, current->info.Result};
  if (function == kSheetAddPage) {
    request.page = *reinterpret_cast<const SheetPage*>(first);
    request.title = request.page.pszTitle == nullptr ? u"" : request.page.pszTitle;
    if (current->pagesTaken == 0) {
      return -1;
    }
    --current->pagesTaken;
  }
  current->requests.push_back(request);
  return 1;
}

std::int32_t OlDocumentPropertySheets(SheetInfo* info, std::intptr_t lParam) {
  current->companion.documentCalls.emplace_back(info, lParam);
  return current->companion.documentAnswer;
}

std::int32_t OlDevicePropertySheets(SheetInfo* info, std::intptr_t lParam) {
  current->companion.deviceCalls.emplace_back(info, lParam);
  return current->companion.deviceAnswer;
}

}  // namespace

SheetScene::SheetScene(const std::vector<std::uint32_t>& dialogs) {
  current = this;
  headless::HeadlessModules& modules = world.platform.modules;
  modules.Install(kCompanionPath);
  modules.Export(kCompanionPath, "OlDocumentPropertySheets",
                 reinterpret_cast<ExportedFunction>(&OlDocumentPropertySheets));
  modules.Export(kCompanionPath, "OlDevicePropertySheets",
                 reinterpret_cast<ExportedFunction>(&OlDevicePropertySheets));
  headless::Resources library = {.strings = EnglishStrings()};
  for (const std::uint32_t dialog : dialogs) {
    library.entries.emplace(kResourceDialog, dialog);
  }
  modules.InstallResources(kEnglishLibraryPath,
                           std::make_shared<const headless::Resources>(std::move(library)));

  info.cbSize = sizeof(info);
  info.hComPropSheet = reinterpret_cast<SheetHandle>(std::uintptr_t{0x51});
  info.pfnComPropSheet = &CommonSheet;
  InitDriverDevmode(&in, kDriverName, nullptr);
  std::memset(static_cast<void*>(&out), 0xA5, sizeof(out));
  document.cbSize = sizeof(document);
  document.hPrinter = world.OpenPrinter();
  document.pszPrinterName = printerName.data();
  document.pdmIn = &in.publicDevmode;
  document.pdmOut = &out.publicDevmode;
  document.fMode = kDmCopy;
  device.cbSize = sizeof(device);
  device.hPrinter = document.hPrinter;
  device.pszPrinterName = printerName.data();
}

SheetScene::~SheetScene() {
  world.platform.print.ClosePrinter(document.hPrinter);
  current = nullptr;
}

std::int32_t SheetScene::CallDocument(std::uint16_t reason, std::intptr_t lParam) {
  info.Reason = reason;
  return DrvDocumentPropertySheets(&info, lParam, kDocumentPages);
}

std::int32_t SheetScene::CallDevice(std::uint16_t reason, std::intptr_t lParam) {
  info.Reason = reason;
  return DrvDevicePropertySheets(&info, lParam, kPrinterPages);
}

std::vector<SheetRequest> SheetScene::Pages() const {
  std::vector<SheetRequest> pages;
  for (const SheetRequest& request : requests) {
    if (request.function == kSheetAddPage) {
      pages.push_back(request);
    }
  }
  return pages;
}

std::size_t SheetScene::ResultsSet() const {
  std::size_t count = 0;
  for (const SheetRequest& request : requests) {
    count += request.function == kSheetSetResult && request.first == 0 && request.second == 1;
  }
  return count;
}

}  // namespace ostrel::test
