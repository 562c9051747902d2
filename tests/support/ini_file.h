// The driver's ini file in a test world.
#pragma once

#include "support/test_world.h"

#include <span>
#include <string_view>

namespace ostrel::test {

inline constexpr char16_t kConfigPath[] =
    u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelConfig.ini";

inline void PutConfig(TestWorld& world, std::string_view text,
                      std::u16string_view path = kConfigPath) {
  const auto bytes = std::as_bytes(std::span(text));
  world.platform.files.Put(path, {bytes.begin(), bytes.end()});
}

}  // namespace ostrel::test
