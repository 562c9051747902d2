// The owner of a block from the platform's heap.
#pragma once

#include "core/process_state.h"

#include <cstddef>
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

}  // namespace ostrel
