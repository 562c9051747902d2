#include "core/companion.h"

#include "core/driver_directory.h"
#include "core/process_state.h"
#include "core/text.h"

#include <array>
#include <cstring>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::u16string_view kCompanionName = u"\\olunidrvui.dll";

// A path in 8-bit text, and the bytes of it that are in use.
struct BytePath {
  std::array<char, kMaxPathUnits> bytes = {};
  std::size_t length = 0;

  // Appends a name of ASCII letters. Result: whether it fits, with a terminator behind it.
  bool Add(std::u16string_view name) {
    if (length + name.size() >= bytes.size()) {
      return false;
    }
    for (const char16_t unit : name) {
      bytes.at(length++) = static_cast<char>(unit);
    }
    bytes.at(length) = '\0';
    return true;
  }
};

// The driver directory, as far as the code page has letters for it; empty when the system doesn't
// tell.
BytePath DriverDirectoryBytes() {
  constexpr std::uint32_t kLevel = 1;
  BytePath path;
  std::uint32_t needed = 0;
  if (World().print.GetPrinterDriverDirectoryA(nullptr, nullptr, kLevel, path.bytes.data(),
                                               static_cast<std::uint32_t>(path.bytes.size()),
                                               &needed)) {
    path.bytes.back() = '\0';
    path.length = std::strlen(path.bytes.data());
  }
  return path;
}

}  // namespace

ModuleHandle LoadCompanion() {
  char16_t directory[kMaxPathUnits] = {};
  ReadDriverDirectory(directory);
  char16_t path[kMaxPathUnits] = {};
  TextBuilder text(path);
  text.Add(FieldText(directory)).Add(kDriverVersionFolder).Add(kCompanionName);
  return directory[0] != u'\0' && text.fits() ? World().modules.LoadLibraryW(path) : nullptr;
}

ModuleHandle LoadCompanionByCodePage() {
  BytePath path = DriverDirectoryBytes();
  if (path.length == 0 || !path.Add(kDriverVersionFolder) || !path.Add(kCompanionName)) {
    return nullptr;
  }
  char16_t wide[kMaxPathUnits] = {};
  return World().locale.MultiByteToWideChar(kAnsiCodePage, path.bytes.data(), wide,
                                            static_cast<int>(kMaxPathUnits)) == 0
             ? nullptr
             : World().modules.LoadLibraryW(wide);
}

}  // namespace ostrel
