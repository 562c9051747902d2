// Where this library lies and what it is called: the neighbours of the driver are found by both.
#pragma once

#include "platform/print_types.h"

#include <array>
#include <string_view>

namespace ostrel {

// The most that a prefix of our neighbours' names may have.
inline constexpr std::size_t kModulePrefixUnits = 129;

// The place of this library. All texts are empty when the system doesn't tell it.
class OwnPlace {
 public:
  OwnPlace();
  OwnPlace(const OwnPlace&) = delete;
  OwnPlace& operator=(const OwnPlace&) = delete;

  // The directory, with the separator at the end.
  std::u16string_view directory() const { return directory_; }
  // The file name without directory and extension.
  std::u16string_view stem() const { return stem_; }
  // `ModulePrefix`: the first 129 units of the stem less a final "PCL6ui" when they are longer than
  // that, else all of them. It names the ini file, the settings file and the neighbouring programs.
  std::u16string_view modulePrefix() const;

 private:
  std::array<char16_t, kMaxPathUnits> path_ = {};
  std::u16string_view directory_;
  std::u16string_view stem_;
};

}  // namespace ostrel
