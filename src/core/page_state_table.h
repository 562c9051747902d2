// Where a dialog procedure finds what its page keeps between two messages.
//
// A sheet runs on one thread, so its pages' states are found by the thread alone: a row of the
// table for each thread id modulo 512, a column for each kind of page. Two threads whose ids agree
// modulo 512 share a row; that is accepted. Nothing is locked.
#pragma once

#include "core/process_state.h"

#include <array>
#include <cstddef>
#include <new>

namespace ostrel {

// What a page keeps. Derived states have this as their only base, so that both have one address.
class PageState {
 public:
  PageState() = default;
  virtual ~PageState() = default;
  PageState(const PageState&) = delete;
  PageState& operator=(const PageState&) = delete;
};

inline constexpr std::size_t kPageStateRows = 512;
inline constexpr std::size_t kPageStateSlots = 260;

// Columns in use. Those that live to the end of the process belong to dialogs that remember what
// was in them.
enum class PageSlot : std::size_t {
  kPrintOptions = 0,
  kPaper = 1,
  kLayout = 2,
  kWatermark = 3,
  kCustomPaper = 4,
  kWatermarkEditor = 6,  // kept
  kBookletCover = 10,    // kept
  kDocumentSheet = 11,
  kDateTimeStamp = 17,  // kept
  kPageLinks = 20,      // what pages tell one another
};

struct PageStateTable {
  std::array<std::array<PageState*, kPageStateSlots>, kPageStateRows> rows;
};

// The row of a thread id.
std::size_t PageStateRow(std::uint32_t threadId);

// The calling thread's place for a state.
PageState*& PageStatePlace(PageSlot slot);

// The calling thread's state of a page, made on first use. Null when there is no memory; the next
// call tries again.
template <typename State>
State* GetPageState(PageSlot slot) {
  PageState*& place = PageStatePlace(slot);
  if (place == nullptr) {
    if (void* block = World().memory.HeapAlloc(sizeof(State)); block != nullptr) {
      place = new (block) State();
    }
  }
  return static_cast<State*>(place);
}

// Destroys the calling thread's states that live as long as the document sheet, and clears their
// places. Those of the other dialogs stay.
void ReleasePageStates();

// Destroys every state of every thread: for the end of a process, and for tests.
void ReleaseAllPageStates();

}  // namespace ostrel
