#include "pages/watermark_list.h"

#include "core/text.h"
#include "pages/page_support.h"
#include "watermark/watermark_record.h"

namespace ostrel {

void FillWatermarkList(const WatermarkPageState& state) {
  InitSettingsFile();
  const WatermarkList list = ReadWatermarkList();
  const WatermarkOrder order = SortByIndex(list);
  state.list.Send(kLbResetContent, 0, 0);
  std::intptr_t row = 0;
  for (const std::size_t place : order.all()) {
    const WatermarkData& record = list.records()[place];
    const TerminatedName name = NameOf(record);
    const auto at = static_cast<std::uintptr_t>(row);
    if (state.list.Send(kLbInsertString, at, reinterpret_cast<std::intptr_t>(name.data())) == row) {
      state.list.Send(kLbSetItemData, at, record.PageWMIndex);
      ++row;
    }
  }
  KeepInOrder(list, order);
}

bool SelectWatermark(const WatermarkPageState& state, std::int16_t index) {
  const UIContext* context = PageContext(state.dialog);
  if (context == nullptr || state.list.window() == nullptr) {
    return false;
  }
  const WatermarkData inForce = WatermarkInForce(*context);
  const WatermarkList list = ReadWatermarkList();
  const std::size_t place = FindRecord(list, [&](const WatermarkData& record) {
    return record.PageWMIndex == index &&
           FieldText(record.PageWMName) == FieldText(inForce.PageWMName);
  });
  // What a list box can't do it answers by a negative number.
  return place < list.count && state.list.Send(kLbSetCurSel, place, 0) >= 0;
}

}  // namespace ostrel
