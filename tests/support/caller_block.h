// A caller's record in a heap block of exactly the bytes that it holds, so that the sanitizer run
// catches every step beyond them.
#pragma once

#include "core/settings_record.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace ostrel::test {

// What outputs are filled with before a call.
inline constexpr std::byte kPoison{0xC5};

class CallerBlock {
 public:
  // A block of poison.
  explicit CallerBlock(std::size_t sizeBytes)
      : size_(sizeBytes), block_(std::make_unique<std::byte[]>(sizeBytes)) {
    std::fill_n(block_.get(), size_, kPoison);
  }

  // The first bytes of a record, and poison behind its end.
  CallerBlock(const DriverDevmode& record, std::size_t sizeBytes) : CallerBlock(sizeBytes) {
    std::memcpy(block_.get(), &record, std::min(size_, sizeof(record)));
  }

  // The record with the size words given, in a block of exactly these sizes: the public part cut
  // or poisoned to `publicBytes`, the private bytes directly behind it.
  static CallerBlock Sized(const DriverDevmode& record, std::uint16_t publicBytes,
                           std::uint16_t privateBytes) {
    CallerBlock block(std::size_t{publicBytes} + privateBytes);
    std::memcpy(block.bytes(), &record, std::min<std::size_t>(publicBytes, kPublicDevmodeBytes));
    std::memcpy(block.bytes() + publicBytes, &record.privateDevmode,
                std::min<std::size_t>(privateBytes, kPrivateDevmodeBytes));
    block->dmSize = publicBytes;
    block->dmDriverExtra = privateBytes;
    return block;
  }

  PublicDevmode* get() { return reinterpret_cast<PublicDevmode*>(block_.get()); }
  PublicDevmode* operator->() { return get(); }
  std::byte* bytes() { return block_.get(); }
  std::size_t size() const { return size_; }
  std::vector<std::byte> copy() const { return {block_.get(), block_.get() + size_}; }

  bool IsPoison() const {
    return std::all_of(block_.get(), block_.get() + size_,
                       [](std::byte each) { return each == kPoison; });
  }

 private:
  std::size_t size_;
  std::unique_ptr<std::byte[]> block_;
};

// This driver's default record, without a favourite's name.
inline DriverDevmode DefaultRecord() {
  DriverDevmode record;
  InitDriverDevmode(&record, u"Ostrel Hazel 2 Series", nullptr);
  return record;
}

template <typename Record>
std::vector<std::byte> BytesOf(const Record& record) {
  const auto* bytes = reinterpret_cast<const std::byte*>(&record);
  return {bytes, bytes + sizeof(record)};
}

}  // namespace ostrel::test
