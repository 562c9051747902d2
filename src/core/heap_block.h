// The owner of a block from the platform's heap, and the question for one of unknown size.
#pragma once

#include "core/process_state.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace ostrel {

// Owns one zero-filled block; null when there was no memory. Freed at the end of the scope.
template <typename T>
class HeapBlock {
 public:
  HeapBlock() = default;
  explicit HeapBlock(std::size_t sizeBytes)
      : block_(static_cast<T*>(World().memory.HeapAlloc(sizeBytes))) {}
  ~HeapBlock() { reset(); }
  HeapBlock(HeapBlock&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  HeapBlock& operator=(HeapBlock&& other) noexcept {
    if (this != &other) {
      reset();
      block_ = std::exchange(other.block_, nullptr);
    }
    return *this;
  }
  HeapBlock(const HeapBlock&) = delete;
  HeapBlock& operator=(const HeapBlock&) = delete;

  void reset() {
    if (block_ != nullptr) {
      World().memory.HeapFree(std::exchange(block_, nullptr));
    }
  }
  // Hands the block to the caller, who frees it with HeapFree.
  T* release() { return std::exchange(block_, nullptr); }
  T* get() const { return block_; }
  T* operator->() const { return block_; }
  T& operator*() const { return *block_; }
  explicit operator bool() const { return block_ != nullptr; }

 private:
  T* block_ = nullptr;
};

// Asks the platform for a block of a size that only the platform knows. `ask(buffer, sizeBytes,
// &neededBytes)` is the question; the answer may grow between two calls, so it is asked again until
// it fits. A block that grows every time is given up. Result: null on failure, with the last error
// set.
template <typename T, typename Ask>
HeapBlock<T> AskForBlock(Ask&& ask) {
  constexpr int kTries = 4;
  HeapBlock<T> block;
  std::uint32_t size = 0;
  for (int tries = 0; tries < kTries; ++tries) {
    std::uint32_t needed = 0;
    if (ask(block.get(), size, &needed) && block) {
      return block;
    }
    if (needed <= size || World().debug.GetLastError() != kErrorInsufficientBuffer) {
      break;
    }
    size = needed;
    block = HeapBlock<T>(size);
    if (!block) {
      World().debug.SetLastError(kErrorNotEnoughMemory);
      break;
    }
  }
  return {};
}

}  // namespace ostrel
