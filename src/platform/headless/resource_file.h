// Reads the strings out of a compiled resource file (".res", the 32-bit resource format that the
// platform's resource compiler writes and its linker takes), so that native tests see the same
// compiled texts that the Windows libraries ship.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>

namespace ostrel::headless {

using StringTable = std::unordered_map<std::uint32_t, std::u16string>;

// The strings of a resource file, by id. Throws std::runtime_error for a file that is not one or
// that is cut short. A file cut between two entries is a shorter file: nothing in it counts them.
StringTable ReadStringTable(std::span<const std::byte> resourceFile);

}  // namespace ostrel::headless
