// Where this library lies and what it is called: the neighbours of the driver are found by both.
#pragma once

#include "platform/print_types.h"

#include <array>
#include <string_view>

namespace ostrel {

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
  // `ModulePrefix`: the stem less a final "PCL6ui" when it is longer than that, else the whole
  // stem. It names the ini file, the settings file and the neighbouring programs.
  std::u16string_view modulePrefix() const;

 private:
  std::array<char16_t, kMaxPathUnits> path_ = {};
  std::u16string_view directory_;
  std::u16string_view stem_;
};

}  // namespace ostrel
