// A caller's record made of fuzz input: any bytes, in a block of exactly as many bytes as the
// record's own size words tell (and never fewer than the 72 that hold these words), so that a read
// or a write beyond the caller's memory is caught.
#pragma once

#include "core/devmode_lifecycle.h"
#include "core/process_state.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>

namespace ostrel::fuzz {

using Input = std::span<const std::uint8_t>;

// Splits off the first `count` bytes of the input, or what is left of it.
inline Input Take(Input& input, std::size_t count) {
  const Input taken = input.first(std::min(count, input.size()));
  input = input.subspan(taken.size());
  return taken;
}

// One byte of the input; 0 when it is used up.
inline std::uint8_t TakeByte(Input& input) {
  const Input taken = Take(input, 1);
  return taken.empty() ? std::uint8_t{0} : taken.front();
}

class CallerRecord {
 public:
  // Takes the header first and then as many bytes as it announces; zeros stand in for missing
  // input.
  explicit CallerRecord(Input& input) {
    PublicDevmode head = {};
    const Input start = Take(input, kDevmodeHeaderBytes);
    std::copy(start.begin(), start.end(), reinterpret_cast<std::uint8_t*>(&head));
    size_ = std::max<std::size_t>(ReadHeader(&head).TotalBytes(), kDevmodeHeaderBytes);
    block_ = std::make_unique<std::uint8_t[]>(size_);
    std::copy(start.begin(), start.end(), block_.get());
    const Input rest = Take(input, size_ - kDevmodeHeaderBytes);
    std::copy(rest.begin(), rest.end(), block_.get() + kDevmodeHeaderBytes);
  }

  PublicDevmode* get() { return reinterpret_cast<PublicDevmode*>(block_.get()); }
  std::size_t size() const { return size_; }

 private:
  std::size_t size_ = 0;
  std::unique_ptr<std::uint8_t[]> block_;
};

// Ends the run with a message when a promise is broken.
inline void Require(bool kept, const char* promise) {
  if (!kept) {
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
  }
}

}  // namespace ostrel::fuzz
