// Shared pointers whose counts lie beside the targets, in two process-wide ordered maps keyed by
// the pointer's value: one for text buffers, one for objects with a virtual destructor. With the
// last holder the entry is removed and the target freed. Nothing is locked.
//
// Targets are blocks of the platform's heap. A map takes its memory from there too; a target that
// can't be counted for lack of it is freed at once, and its holder is empty.
#pragma once

#include "core/heap_block.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace ostrel {

// An object that can be shared. Derived objects have this as their only base, so that both have one
// address.
class CountedObject {
 public:
  CountedObject() = default;
  virtual ~CountedObject() = default;
  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;
};

// Counts one holder more of a target. Result: false when there was no memory for a new entry.
bool AddHolder(char16_t* text);
bool AddHolder(CountedObject* object);

// Counts one holder less; with the last one the entry is removed and the target freed.
void RemoveHolder(char16_t* text);
void RemoveHolder(CountedObject* object);

// Holders of a target; 0 for one that isn't held.
std::int32_t HoldersOf(const char16_t* text);
std::int32_t HoldersOf(const CountedObject* object);

void FreeTarget(char16_t* text);
void FreeTarget(CountedObject* object);

// Holds a target, or nothing. T is char16_t or a class derived from CountedObject.
template <typename T>
class CountedPointer {
 public:
  CountedPointer() = default;
  // Takes a new target, or joins the holders of one that is held already. Null is allowed.
  explicit CountedPointer(T* target) : target_(target) {
    if (target_ != nullptr && !AddHolder(target_)) {
      FreeTarget(std::exchange(target_, nullptr));
    }
  }
  CountedPointer(const CountedPointer& other) : CountedPointer(other.target_) {}
  CountedPointer(CountedPointer&& other) noexcept
      : target_(std::exchange(other.target_, nullptr)) {}
  CountedPointer& operator=(CountedPointer other) noexcept {
    std::swap(target_, other.target_);
    return *this;
  }
  ~CountedPointer() {
    if (target_ != nullptr) {
      RemoveHolder(target_);
    }
  }

  T* get() const { return target_; }
  T* operator->() const { return target_; }
  T& operator*() const { return *target_; }
  explicit operator bool() const { return target_ != nullptr; }

 private:
  T* target_ = nullptr;
};

// A text buffer of `units` NULs, held. Empty when there is no memory.
CountedPointer<char16_t> MakeCountedText(std::size_t units);

// An object, held. Empty when there is no memory.
template <typename T>
CountedPointer<T> MakeCountedObject() {
  void* block = World().memory.HeapAlloc(sizeof(T));
  return block == nullptr ? CountedPointer<T>() : CountedPointer<T>(new (block) T());
}

}  // namespace ostrel
