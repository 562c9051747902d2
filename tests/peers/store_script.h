// A fixed list of store operations, the same in every world: favourites, custom papers and
// watermarks are saved, saved again, renamed and deleted. Whoever runs it from the same settings
// file must end with the same bytes.
#pragma once

#include <string>

namespace ostrel::peers {

// The script has two acts; the second continues from the file that the first leaves.
inline constexpr int kActs = 2;

// Runs an act in the process state in force. Result: the operations that didn't answer as the
// script expects, a line each; empty when all did.
std::string RunAct(int act);

// What the stores hold, as text: each name with the length of its record and a sum over its bytes.
std::string DescribeStores();

}  // namespace ostrel::peers
