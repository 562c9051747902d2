// The printer's lists as an application asks for them.
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

namespace ostrel::print_system {

inline constexpr std::size_t kTablePapers = 28;

// A question of DeviceCapabilitiesW about the test printer.
int AskCapability(WORD code, void* output);

// A list of names, in rows of that many characters.
std::vector<std::wstring> NamesListed(WORD code, std::size_t rowUnits);

// What follows the table's rows in a list of papers. All questions must tell the same count.
struct ListedPapers {
  std::vector<WORD> ids;
  std::vector<std::pair<LONG, LONG>> sizes_tenths_mm;
  std::vector<std::wstring> names;
};
ListedPapers PapersBehindTheTable();

}  // namespace ostrel::print_system
