// The program that both worlds build: it runs an act of the store script, or tells what the stores
// hold, with the application data in a folder of the caller's choice.
//
//   store_peer act 1|2 FOLDER
//   store_peer describe FOLDER
#pragma once

#include "store_script.h"

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace ostrel::peers {

// Runs the command in a world that `enter` makes for the folder and that lasts until `enter`'s
// result goes. Result: that of the program.
template <typename Enter>
int RunPeer(const std::vector<std::string>& arguments, Enter enter) {
  const bool isAct = arguments.size() == 3 && arguments[0] == "act" &&
                     (arguments[1] == "1" || arguments[1] == "2");
  const bool isDescription = arguments.size() == 2 && arguments[0] == "describe";
  if (!isAct && !isDescription) {
    std::fputs("usage: store_peer act 1|2 FOLDER, or store_peer describe FOLDER\n", stderr);
    return 2;
  }
  const auto world = enter(arguments.back());
  if (isDescription) {
    std::fputs(DescribeStores().c_str(), stdout);
    return 0;
  }
  const std::string unexpected = RunAct(arguments[1] == "1" ? 1 : 2);
  if (!unexpected.empty()) {
    std::fprintf(stderr, "store_peer: not as expected:\n%s", unexpected.c_str());
    return 1;
  }
  return 0;
}

}  // namespace ostrel::peers
