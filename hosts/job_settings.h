// Settings of a job from a file, for programs that print: one setting of the record on a line, a
// number or a text in quotation marks, under the record's own names.
//
//   # An oblique word across each page
//   PageWMIndex = 1
//   PageWMText = "Confidential"
//
// "#" begins a comment, empty lines count as nothing, and "\n" is no line's end within a text.
// Texts are UTF-8. A picture's path that isn't a full one is looked for beside the file.
#pragma once

#include "core/settings_record.h"

#include <string_view>

namespace ostrel {

// Writes the settings into the record. `folder` is where the file lies, with a separator at its
// end, as the print system names it. Throws std::runtime_error with the line for one that can't be
// read.
void ApplyJobSettings(DriverDevmode& record, std::string_view text, std::u16string_view folder);

}  // namespace ostrel
