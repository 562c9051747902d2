// The scenario files, as the build has put them beside the tests.
#pragma once

#include "scenarios/sheet_scenario.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel::scenario {

// As googletest shows a case's row.
inline void PrintTo(const Scenario& scenario, std::ostream* out) {
  *out << scenario.name;
}

// All scenarios of a folder, by their names.
inline std::vector<Scenario> ReadScenarios(const std::filesystem::path& folder) {
  std::map<std::string, Scenario> found;
  std::error_code failure;
  for (const auto& entry : std::filesystem::directory_iterator(folder, failure)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const std::string name = entry.path().stem().string();
    found.emplace(name, ParseScenario(name, text));
  }
  std::vector<Scenario> scenarios;
  for (auto& [name, scenario] : found) {
    scenarios.push_back(std::move(scenario));
  }
  return scenarios;
}

}  // namespace ostrel::scenario
