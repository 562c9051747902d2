// The user's named records: for now the custom paper sizes, as capabilities and paper look-ups see
// them. The settings file behind them is not built yet, so every question is answered with "none".
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ostrel {

inline constexpr std::size_t kMaxCustomPapers = 20;  // rows that a list of papers has room for

// A user's paper size as the settings file keeps it; a file format of 72 bytes, little-endian.
struct CustomPaperRecord {
  std::uint16_t Width;    // offset 0; pixels at 600 dpi
  std::uint16_t Length;   // 2; pixels at 600 dpi
  char16_t Name[26];      // 4; 24 characters with terminator in practice
  std::uint32_t PaperId;  // 56; 288 and up
  std::uint32_t Unit;     // 60; 1 millimetres, 2 inches
  float ExactWidth;       // 64; pixels, unrounded
  float ExactLength;      // 68; pixels, unrounded
};
static_assert(sizeof(CustomPaperRecord) == 72);
static_assert(offsetof(CustomPaperRecord, Width) == 0);
static_assert(offsetof(CustomPaperRecord, Length) == 2);
static_assert(offsetof(CustomPaperRecord, Name) == 4);
static_assert(offsetof(CustomPaperRecord, PaperId) == 56);
static_assert(offsetof(CustomPaperRecord, Unit) == 60);
static_assert(offsetof(CustomPaperRecord, ExactWidth) == 64);
static_assert(offsetof(CustomPaperRecord, ExactLength) == 68);

// Reads the stored custom papers in store order. Result: how many were written to `records`.
std::size_t ReadCustomPapers(std::span<CustomPaperRecord> records);

// Finds the first stored custom paper with this id. Result: whether there is one.
bool FindCustomPaper(std::uint32_t paperId, CustomPaperRecord* record);

}  // namespace ostrel
