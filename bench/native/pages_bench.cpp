// What the pages' own code costs, natively, over the in-memory window system. The peer of a refresh
// is the same calls of the window system without our logic; that of a whole visit, the same sheet
// with a page that does nothing.
#include "core/sheet_frame.h"
#include "driver/page_tables.h"
#include "pages/print_options.h"
#include "platform/headless/headless_sheet.h"
#include "support/sheet_scene.h"

#include <benchmark/benchmark.h>
#include <cstdint>

namespace ostrel {
namespace {

std::int32_t Entry(SheetInfo* info, std::intptr_t lParam) {
  return DrvDocumentPropertySheets(info, lParam, kDocumentPages);
}

// The same sheet with a page that only has what all pages share.
std::int32_t PlainEntry(SheetInfo* info, std::intptr_t lParam) {
  auto rows = kDocumentPages;
  rows[1].procedure = rows[0].procedure;
  return DrvDocumentPropertySheets(info, lParam, rows);
}

// The sheet, open, with its page shown.
struct OpenSheet {
  explicit OpenSheet(headless::HeadlessSheet::Entry entry)
      : sheet(scene.world.platform, entry, reinterpret_cast<std::intptr_t>(&scene.document)) {
    open = sheet.Open();
  }

  test::SheetScene scene;
  headless::HeadlessSheet sheet;
  bool open;
};

constexpr char kRefreshCalls[] = "WindowCallsOfARefreshPeer";
constexpr char kPlainVisit[] = "VisitOfAPlainPagePeer";

// The calls that a refresh of the page makes of the window system, by their kinds.
void WindowCallsOfARefreshPeer(benchmark::State& state) {
  OpenSheet open(&Entry);
  Windows& windows = World().windows;
  const WindowHandle page = open.sheet.UserOf(111).dialog();
  constexpr std::int32_t kChecks[] = {1242, 1243, 1496, 1008, 1394, 1422, 1240, 1125, 1241};
  constexpr std::int32_t kLive[] = {1008, 1393, 1240, 1125, 1241, 1394};
  constexpr std::int32_t kShown[] = {1449, 1450, 1447, 1448};
  for (auto _ : state) {
    windows.SetWindowTextA(windows.GetDlgItem(page, 1019), "1");
    for (const std::int32_t control : kChecks) {
      benchmark::DoNotOptimize(windows.IsDlgButtonChecked(page, control));
    }
    for (const std::int32_t control : kLive) {
      windows.EnableWindow(windows.GetDlgItem(page, control), true);
    }
    for (const std::int32_t control : kShown) {
      windows.ShowWindow(windows.GetDlgItem(page, control), kSwHide);
    }
    const WindowHandle combo = windows.GetDlgItem(page, 1393);
    for (std::uintptr_t row = 0; row < 3; ++row) {
      benchmark::DoNotOptimize(windows.SendMessageW(combo, kCbGetItemData, row, 0));
    }
    windows.SendMessageW(combo, kCbSetCurSel, 0, 0);
    const GdiObject picture =
        World().graphics.LoadBitmapW(open.scene.world.process.CurrentLanguageModule, 115);
    windows.SendMessageW(windows.GetDlgItem(page, 1453), kStmSetImage, kImageBitmap,
                         reinterpret_cast<std::intptr_t>(picture));
    World().graphics.DeleteObject(picture);
  }
}
BENCHMARK(WindowCallsOfARefreshPeer);

void RefreshOfThePrintOptionsPage(benchmark::State& state) {
  OpenSheet open(&Entry);
  auto& context = *reinterpret_cast<UIContext*>(open.sheet.info().UserData);
  for (auto _ : state) {
    RefreshPrintOptionsPage(context);
  }
  state.SetLabel(kRefreshCalls);
}
BENCHMARK(RefreshOfThePrintOptionsPage);

void Visit(benchmark::State& state, headless::HeadlessSheet::Entry entry) {
  test::SheetScene scene;
  for (auto _ : state) {
    headless::HeadlessSheet sheet(scene.world.platform, entry,
                                  reinterpret_cast<std::intptr_t>(&scene.document));
    if (!sheet.Open() || !sheet.PressCancel()) {
      state.SkipWithError("the sheet doesn't open");
      return;
    }
  }
}

void VisitOfAPlainPagePeer(benchmark::State& state) {
  Visit(state, &PlainEntry);
}
BENCHMARK(VisitOfAPlainPagePeer);

void VisitOfThePrintOptionsPage(benchmark::State& state) {
  Visit(state, &Entry);
  state.SetLabel(kPlainVisit);
}
BENCHMARK(VisitOfThePrintOptionsPage);

}  // namespace
}  // namespace ostrel
