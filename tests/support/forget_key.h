// A record with a key that can't be read.
#pragma once

#include "core/ui_context.h"

#include <string_view>

namespace ostrel::test {

// A key that no record can be asked for any more.
inline void ForgetKey(UIContext& context, std::string_view key) {
  for (UIParamSlot& slot : context.uiParams) {
    if (slot.Key == key) {
      slot.Key[0] = '#';
    }
  }
}

}  // namespace ostrel::test
