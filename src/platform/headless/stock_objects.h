// The objects that the drawing system keeps at hand for all: brushes, pens and fonts.
#pragma once

#include "platform/headless/names.h"
#include "platform/window_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ostrel::headless {

// Indices of GetStockObject, wingdi.h.
inline constexpr std::int32_t kWhitePen = 6;
inline constexpr std::int32_t kBlackPen = 7;
inline constexpr std::int32_t kNullPen = 8;
inline constexpr std::int32_t kSystemFont = 13;
inline constexpr std::int32_t kDefaultGuiFont = 17;

inline constexpr std::uintptr_t kStockStep = 0x10;
inline constexpr std::uintptr_t kStockBase = 0x500000;
inline constexpr std::uintptr_t kStockEnd = kStockBase + kStockStep * (kDefaultGuiFont + 1);

inline GdiObject StockObject(std::int32_t index) {
  return HandleOf<GdiObject>(kStockBase + kStockStep * static_cast<std::uintptr_t>(index));
}

// The index of one of the system's objects; -1 for others.
inline std::int32_t StockIndex(GdiObject object) {
  const std::uintptr_t number = NumberOf(object);
  const bool isStock = number >= kStockBase && number < kStockEnd;
  return isStock ? static_cast<std::int32_t>((number - kStockBase) / kStockStep) : -1;
}

inline bool IsStockFont(std::int32_t index) {
  return index == kSystemFont || index == kDefaultGuiFont;
}

inline bool IsStockBrush(std::int32_t index) {
  return index >= kWhiteBrush && index <= kNullBrush;
}

// What a brush fills with; nothing for the one that doesn't.
inline std::optional<std::uint32_t> BrushColor(GdiObject brush) {
  constexpr std::array<std::uint32_t, 5> kColors = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040,
                                                    0x000000};
  const std::int32_t index = StockIndex(brush);
  return index == kNullBrush ? std::nullopt
                             : std::optional(kColors.at(static_cast<std::size_t>(index)));
}

}  // namespace ostrel::headless
