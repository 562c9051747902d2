// The list of paper sources, as the paper page and the booklet's cover show it.
//
// A row's place in the list and the bin that it stands for go together by two fixed rules, which
// don't look at the list: where a machine's list is shorter, the rules stay as they are.
#pragma once

#include "core/model_table.h"
#include "core/string_ids.h"
#include "core/ui_context.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

struct ListedSource {
  StringId name;
  std::int16_t binId;
  std::uint64_t families;  // that have it
};

inline constexpr std::int16_t kBinAutomatic = 7;
inline constexpr std::int16_t kBinManual = 4;
inline constexpr std::int16_t kBinTray1 = 257;
inline constexpr std::int16_t kBinTray2 = 258;
inline constexpr std::int16_t kBinTray3 = 259;
inline constexpr std::int16_t kBinLikeTray1 = 260;

// Where they stand in the list.
inline constexpr std::int32_t kAutomaticPosition = 0;
inline constexpr std::int32_t kManualPosition = 1;
inline constexpr std::int32_t kTray1Position = 2;

inline constexpr std::size_t kListedSources = 6;
inline constexpr std::uint64_t kAllFamilies = ~std::uint64_t{0};

// clang-format off
inline constexpr std::array<ListedSource, kListedSources> kSourceList = {{
    // Name,                      Bin,          Families
    {kStringSourceAutomatic,        kBinAutomatic, kAllFamilies},
    {kStringSourceManualPlainModel, kBinManual,    kFamiliesWithFixedTray},
    {kStringSourceManual,           kBinManual,    kFamiliesWithOptionalTrays},
    {kStringSourceTray1,            kBinTray1,     kAllFamilies},
    {kStringSourceTray2,            kBinTray2,     kFamiliesWithOptionalTrays},
    {kStringSourceTray3,            kBinTray3,     kFamiliesWithOptionalTrays},
}};
// clang-format on

// Whether the model's family can have trays beside its first one.
bool FamilyHasOptionalTrays();

// Empties a combo box and adds the sources of the printer, each with its bin as item data: the
// table's rows without as many of the last ones as optional trays are missing, and of those the
// ones that the model's family has. Nothing is selected.
void FillSourceList(WindowHandle page, std::int32_t control, const UIContext& context);

// The bin at a place of the list; the automatic source for any other place.
std::int16_t BinOfPosition(std::int32_t position);

// The place of a bin in the list. Bin 260 stands at that of tray 1, and any other bin at the first.
std::int32_t PositionOfBin(std::int16_t bin);

}  // namespace ostrel
