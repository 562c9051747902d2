// What a neighbour's stand-in is told to answer, and what it has written down. All of it goes with
// the object.
#pragma once

#include "testers_values.h"

#include <windows.h>

namespace ostrel::print_system {

class NeighbourValues : public TestersValues {
 public:
  explicit NeighbourValues(const wchar_t* neighbour) : TestersValues(neighbour) { Clear(); }
  ~NeighbourValues() { Clear(); }
  NeighbourValues(const NeighbourValues&) = delete;
  NeighbourValues& operator=(const NeighbourValues&) = delete;

  // Waits until a neighbour in another process has counted so far. Result: how far it has.
  DWORD AwaitCount(const wchar_t* name, DWORD count) const {
    constexpr DWORD kLimit_ms = 20000;
    constexpr DWORD kPoll_ms = 20;
    for (DWORD waited = 0; Number(name) < count && waited < kLimit_ms; waited += kPoll_ms) {
      Sleep(kPoll_ms);
    }
    return Number(name);
  }
};

}  // namespace ostrel::print_system
