#include "core/page_state_table.h"

#include <utility>

namespace ostrel {
namespace {

constexpr PageSlot kSheetSlots[] = {
    PageSlot::kPrintOptions, PageSlot::kPaper,         PageSlot::kLayout,    PageSlot::kWatermark,
    PageSlot::kCustomPaper,  PageSlot::kDocumentSheet, PageSlot::kPageLinks,
};

void Destroy(PageState*& place) {
  if (PageState* state = std::exchange(place, nullptr); state != nullptr) {
    state->~PageState();
    World().memory.HeapFree(state);
  }
}

}  // namespace

std::size_t PageStateRow(std::uint32_t threadId) {
  // The remainder of the id as a signed number has the sign of the id. A negative one counts from
  // the table's end, which is the row that the unsigned id has.
  constexpr auto kRows = static_cast<std::int32_t>(kPageStateRows);
  const std::int32_t remainder = static_cast<std::int32_t>(threadId) % kRows;
  return static_cast<std::size_t>(remainder < 0 ? remainder + kRows : remainder);
}

PageState*& PageStatePlace(PageSlot slot) {
  auto& row = Process().PageStates->rows[PageStateRow(World().system.GetCurrentThreadId())];
  return row[static_cast<std::size_t>(slot)];
}

void ReleasePageStates() {
  for (const PageSlot slot : kSheetSlots) {
    Destroy(PageStatePlace(slot));
  }
}

void ReleaseAllPageStates() {
  for (auto& row : Process().PageStates->rows) {
    for (PageState*& place : row) {
      Destroy(place);
    }
  }
}

}  // namespace ostrel
