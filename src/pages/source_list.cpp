#include "pages/source_list.h"

#include "core/printer_store.h"
#include "core/process_state.h"
#include "pages/page_support.h"

#include <algorithm>
#include <iterator>

namespace ostrel {
namespace {

// By place.
constexpr std::int16_t kBins[] = {kBinAutomatic, kBinManual, kBinTray1, kBinTray2, kBinTray3};

}  // namespace

bool FamilyHasOptionalTrays() {
  return (Process().ModelFlags & kFamiliesWithOptionalTrays) != 0;
}

void FillSourceList(WindowHandle page, std::int32_t control, const UIContext& context) {
  const std::size_t fitted =
      kListedSources - static_cast<std::size_t>(CountMissingTrays(context.printerHandle));
  std::array<ComboRow, kListedSources> rows = {};
  std::size_t count = 0;
  for (std::size_t row = 0; row < fitted; ++row) {
    const ListedSource& source = kSourceList[row];
    if (source.families == kAllFamilies || (source.families & Process().ModelFlags) != 0) {
      rows[count++] = {static_cast<std::uint32_t>(source.name), source.binId};
    }
  }
  FillCombo(page, control, std::span(rows).first(count), kCbErr);
}

std::int16_t BinOfPosition(std::int32_t position) {
  const bool listed = position >= 0 && position < static_cast<std::int32_t>(std::size(kBins));
  return listed ? kBins[position] : kBinAutomatic;
}

std::int32_t PositionOfBin(std::int16_t bin) {
  if (bin == kBinLikeTray1) {
    return kTray1Position;
  }
  const auto* found = std::ranges::find(kBins, bin);
  return found == std::end(kBins) ? kAutomaticPosition
                                  : static_cast<std::int32_t>(found - std::begin(kBins));
}

}  // namespace ostrel
