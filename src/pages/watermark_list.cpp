#include "pages/watermark_list.h"

#include "core/text.h"
#include "pages/page_support.h"
#include "watermark/watermark_record.h"

namespace ostrel {
namespace {

std::intptr_t Send(const WatermarkPageState& state, std::uint32_t message, std::intptr_t wParam,
                   std::intptr_t lParam) {
  return World().windows.SendMessageW(state.list.window(), message,
                                      static_cast<std::uintptr_t>(wParam), lParam);
}

}  // namespace

void FillWatermarkList(const WatermarkPageState& state) {
  const WatermarkList list = ReadWatermarkList();
  const WatermarkOrder order = SortByIndex(list);
  Send(state, kLbResetContent, 0, 0);
  std::intptr_t row = 0;
  for (const std::size_t place : order.all()) {
    const WatermarkData& record = list.records()[place];
    std::array<char16_t, std::size(WatermarkData{}.PageWMName) + 1> name;
    CopyText(name, FieldText(record.PageWMName));
    if (Send(state, kLbInsertString, row, reinterpret_cast<std::intptr_t>(name.data())) == row) {
      Send(state, kLbSetItemData, row, record.PageWMIndex);
      ++row;
    }
  }
  KeepInOrder(list, order);
}

bool SelectWatermark(const WatermarkPageState& state, std::int16_t index) {
  const UIContext* context = PageContext(state.dialog);
  if (context == nullptr) {
    return false;
  }
  const WatermarkData inForce = WatermarkInForce(*context);
  const WatermarkList list = ReadWatermarkList();
  for (std::size_t place = 0; place < list.count; ++place) {
    const WatermarkData& record = list.records()[place];
    if (list.isPresent[place] && record.PageWMIndex == index &&
        FieldText(record.PageWMName) == FieldText(inForce.PageWMName)) {
      Send(state, kLbSetCurSel, static_cast<std::intptr_t>(place), 0);
      return true;
    }
  }
  return false;
}

}  // namespace ostrel
