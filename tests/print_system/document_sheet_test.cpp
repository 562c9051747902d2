// The document sheet in the print system: every scenario of its pages, and what belongs to the
// whole.
#include "print_system_fixture.h"
#include "scenarios/scenario_files.h"
#include "windows_sheet.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace ostrel::print_system {
namespace {

// ---- What a user does ---------------------------------------------------------------------------

std::vector<scenario::Scenario> ShippedScenarios() {
  return scenario::ReadScenarios(std::filesystem::path(ProgramFolder()) / "scenarios" /
                                 "print_options");
}

class PrintOptionsScenario : public testing::TestWithParam<scenario::Scenario> {};

TEST_P(PrintOptionsScenario, GoesAsItIsTold) {
  WindowsSheet sheet;
  EXPECT_EQ(scenario::PlayScenario(GetParam(), sheet), "");
}

INSTANTIATE_TEST_SUITE_P(Each, PrintOptionsScenario, testing::ValuesIn(ShippedScenarios()),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace ostrel::print_system
