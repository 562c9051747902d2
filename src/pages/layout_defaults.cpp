#include "pages/layout_defaults.h"

#include "pages/page_record.h"

#include <cstdint>

namespace ostrel {
namespace {

struct DefaultRow {
  std::int16_t PrivateDevmode::*word;
  std::int16_t value;
};

// By the words themselves: the keys of some of them are too long for the parameter table.
// clang-format off
constexpr DefaultRow kDefaults[] = {
    // Word,                                          Value
    {&PrivateDevmode::BookletPrint,                    0},
    {&PrivateDevmode::BookletBinding,                  0},
    {&PrivateDevmode::BookletCoverType,                1},
    {&PrivateDevmode::BookletCoverSource,              0},
    {&PrivateDevmode::BookletPrintCover,               0},
    {&PrivateDevmode::BookletPrintOnCoverOutside,      0},
    {&PrivateDevmode::BookletPrintOnCoverInside,       0},
    {&PrivateDevmode::BoookletPrintOnBackCoverOutside, 0},
    {&PrivateDevmode::BoookletPrintOnBackCoverInside,  0},
    {&PrivateDevmode::MultipleUp,                      1},
    {&PrivateDevmode::PageBorder,                      0},
    {&PrivateDevmode::PageOrder,                       0},
    {&PrivateDevmode::PosterPrint,                     0},
    {&PrivateDevmode::PosterType,                      0},
    {&PrivateDevmode::CropMarks,                       0},
    {&PrivateDevmode::TonerSavingMode,                 0},
    {&PrivateDevmode::Thickness,                       2},
    {&PrivateDevmode::Rotate180,                       0},
};
// clang-format on

template <typename Word>
bool Set(Word& word, Word value) {
  const bool changes = word != value;
  word = value;
  return changes;
}

}  // namespace

bool LayoutDefaults(UIContext& context) {
  PrivateDevmode& own = *context.privatePointer;
  bool changed = false;
  for (const DefaultRow& row : kDefaults) {
    changed |= Set(own.*row.word, row.value);
  }
  changed |= Set(own.ScaleRadio, kFullScale);
  changed |= Set(context.publicPointer->dmOrientation, kPortrait);
  return changed;
}

}  // namespace ostrel
