// A caller's record made of fuzz input: any bytes, in a block of exactly as many bytes as the record's
// own size words tell (and never fewer than the 72 that hold these words), so that a read beyond the
// caller's memory is caught.
#pragma once

#include "core/devmode_lifecycle.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>

namespace ostrel::fuzz {

class CallerRecord {
 public:
  explicit CallerRecord(std::span<const std::uint8_t> bytes) {
    std::uint8_t header[kDevmodeHeaderBytes] = {};
    std::copy_n(bytes.begin(), std::min(bytes.size(), sizeof(header)), header);
    size_ = std::max<std::size_t>(
        ReadHeader(reinterpret_cast<const PublicDevmode*>(AlignedCopy(header).get()))
            .TotalBytes(),
        kDevmodeHeaderBytes);
    block_.reset(new std::uint8_t[size_]());
    std::copy_n(bytes.begin(), std::min(bytes.size(), size_), block_.get());
  }

  // Null when the input says so: a caller may have no record.
  PublicDevmode* get() { return reinterpret_cast<PublicDevmode*>(block_.get()); }
  std::size_t size() const { return size_; }

 private:
  static std::unique_ptr<std::uint8_t[]> AlignedCopy(const std::uint8_t (&header)[72]) {
    std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[sizeof(header)]);
    std::memcpy(copy.get(), header, sizeof(header));
    return copy;
  }

  std::size_t size_ = 0;
  std::unique_ptr<std::uint8_t[]> block_;
};

// Splits off the first `count` bytes of the input, or what is left of it.
inline std::span<const std::uint8_t> Take(std::span<const std::uint8_t>& input, std::size_t count) {
  const auto taken = input.first(std::min(count, input.size()));
  input = input.subspan(taken.size());
  return taken;
}

// One byte of the input; 0 when it is used up.
inline std::uint8_t TakeByte(std::span<const std::uint8_t>& input) {
  const auto taken = Take(input, 1);
  return taken.empty() ? std::uint8_t{0} : taken.front();
}

}  // namespace ostrel::fuzz
