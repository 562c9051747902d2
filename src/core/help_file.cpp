#include "core/help_file.h"

#include "core/driver_directory.h"
#include "core/language.h"
#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::u16string_view kHelpExtension = u".chm";
constexpr std::u16string_view kEnglishHelp = u"enus.chm";

// What the later tries cut off the end of a help file's name: two letters and
// ".chm", four letters and ".chm".
constexpr std::size_t kTwoLetterCut = 6;
constexpr std::size_t kEnglishCut = 8;

using Path = char16_t[kMaxPathUnits];

// "\", stem, suffix and ".chm".
void BuildHelpName(const char16_t* driverName, std::span<char16_t> name) {
  constexpr std::u16string_view kLibraryExtension = u".dll";
  char16_t libraryField[kMaxPathUnits + kLanguageSuffixUnits] = {};
  BuildLanguageLibraryName(driverName, libraryField);
  std::u16string_view library = FieldText(libraryField);
  library.remove_suffix(library.ends_with(kLibraryExtension) ? kLibraryExtension.size() : 0);
  TextBuilder(name).Add(u"\\").Add(library).Add(kHelpExtension);
}

std::u16string_view WithoutLast(std::u16string_view name, std::size_t count) {
  return name.substr(0, name.size() - std::min(name.size(), count));
}

// A path that doesn't fit is none: cut, it would name another file.
template <typename... Pieces>
void WritePath(std::span<char16_t> path, Pieces... pieces) {
  TextBuilder text(path);
  (text.Add(pieces), ...);
  if (!text.fits()) {
    CopyText(path, {});
  }
}

bool Exists(const char16_t* path) {
  return World().files.FindFirstFileW(path);
}

}  // namespace

bool FindHelpFile(const char16_t* driverName, std::span<char16_t> path) {
  Path directoryField = {};
  ReadDriverDirectory(directoryField);
  const std::u16string_view directory = FieldText(directoryField);
  char16_t nameField[kMaxPathUnits + kLanguageSuffixUnits] = {};
  BuildHelpName(driverName, nameField);
  const std::u16string_view name = FieldText(nameField);

  WritePath(path, directory, name);
  if (Exists(path.data())) {
    return true;
  }
  WritePath(path, directory, kDriverVersionFolder, name);
  if (Exists(path.data())) {
    return false;
  }
  WritePath(path, directory, kDriverVersionFolder, WithoutLast(name, kTwoLetterCut),
            kHelpExtension);
  if (Exists(path.data())) {
    return false;
  }
  WritePath(path, directory, kDriverVersionFolder, WithoutLast(name, kEnglishCut), kEnglishHelp);
  return false;
}

void ShowHelp(WindowHandle window, std::uint32_t contextId, const char16_t* driverName) {
  Path path = {};
  FindHelpFile(driverName, path);
  World().shell.HtmlHelpW(window, path, kHelpContext, contextId);
}

}  // namespace ostrel
