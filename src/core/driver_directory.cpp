#include "core/driver_directory.h"

#include "core/process_state.h"

namespace ostrel {

void ReadDriverDirectory(std::span<char16_t, kMaxPathUnits> directory) {
  constexpr std::uint32_t kLevel = 1;
  std::uint32_t needed = 0;
  if (!World().print.GetPrinterDriverDirectoryW(nullptr, nullptr, kLevel, directory.data(),
                                                static_cast<std::uint32_t>(directory.size_bytes()),
                                                &needed)) {
    directory[0] = u'\0';
  }
}

}  // namespace ostrel
