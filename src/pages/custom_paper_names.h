// Names of the user's own paper sizes: which ones may be saved.
#pragma once

#include "platform/print_types.h"

#include <cstddef>
#include <string_view>

namespace ostrel {

inline constexpr std::size_t kTypedPaperNameUnits = 16;  // that a user can type
inline constexpr std::size_t kMostPaperNameUnits = 24;   // that can be saved

enum class PaperNameKind {
  kEmpty,
  kUntitled,          // what stands for a size without a name yet
  kWithRefusedUnits,  // has a character that no name may have
  kFixedPaper,        // a paper of the driver's own table bears it
  kFree,
};

// Judges a name that has no blanks at its ends. The papers' names are those of the language
// library; what stands behind a "(" in them only explains the name.
PaperNameKind JudgePaperName(std::u16string_view name, std::u16string_view untitled,
                             ModuleHandle texts);

}  // namespace ostrel
