// The lists of the paper page: paper sizes with the user's own behind them, and media types.
#pragma once

#include "config/setting_stores.h"
#include "core/model_table.h"
#include "core/string_ids.h"
#include "core/ui_context.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ostrel {

struct ListedMedia {
  StringId name;
  std::int16_t mediaId;
  std::uint64_t families;  // that have it
};

inline constexpr std::size_t kListedMedia = 9;

// Empties the list of papers and fills it: the 28 sizes of the table, then each stored one with its
// size behind its name, every row with the paper's id as item data. Nothing is selected. A stored
// record whose id can't be one of the user's is left out. The opened list is made as wide as the
// stored names ask for.
void FillPaperList(WindowHandle page, std::int32_t control, const UIContext& context);

// Empties the list of media types and fills it with those that the model's family has, each with
// its id as item data. Nothing is selected.
void FillMediaList(WindowHandle page, std::int32_t control);

// The size of a stored paper as its row tells it, in the paper's own unit and cut to fit:
// "(210.0 x 297.0 mm)", with the language's decimal mark.
void WriteSizeLabel(ModuleHandle texts, const CustomPaperRecord& paper, std::span<char16_t> label);

// With each stored paper the width of the opened list becomes the larger of itself and that text's
// width, less the first number; the list then is at least as wide as the second one.
inline constexpr std::int32_t kDropWidthLess_px = 30;
inline constexpr std::int32_t kLeastDropWidth_px = 180;

// How wide an opened list of stored names becomes: this, and at least the second number.
void SetDropWidth(WindowHandle list, std::int32_t width_px);

}  // namespace ostrel
