#include "core/administrator.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using Groups = std::vector<headless::HeadlessSecurity::Group>;

constexpr std::uint32_t kMandatory = 0x1;
constexpr std::uint32_t kEnabled = 0x4;
constexpr std::uint32_t kForRefusalsOnly = 0x10;

const std::u16string kAdministrators = u"S-1-5-32-544";
const std::u16string kUsers = u"S-1-5-32-545";

struct GroupCase {
  const char* name;
  std::uint32_t majorVersion;
  Groups groups;
  bool administrator;
};

void PrintTo(const GroupCase& row, std::ostream* out) {
  *out << row.name;
}

class Administrator : public testing::TestWithParam<GroupCase> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Groups, Administrator,
    testing::Values(
        GroupCase{"NoGroups",             6,  {}, false},
        GroupCase{"OtherGroups",          6,  {{kUsers, kEnabled}}, false},
        GroupCase{"EnabledOn6",           6,  {{kUsers, kEnabled}, {kAdministrators, kMandatory | kEnabled}}, true},
        GroupCase{"DisabledOn6",          6,  {{kAdministrators, kForRefusalsOnly}}, false},
        GroupCase{"DisabledThenEnabledOn6", 6, {{kAdministrators, 0}, {kAdministrators, kEnabled}}, true},
        GroupCase{"AllOtherBitsOn6",      6,  {{kAdministrators, ~kEnabled}}, false},
        GroupCase{"DisabledOn5",          5,  {{kAdministrators, 0}}, true},
        GroupCase{"DisabledOn10",         10, {{kAdministrators, kForRefusalsOnly}}, true},
        GroupCase{"EnabledOn10",          10, {{kAdministrators, kEnabled}}, true},
        GroupCase{"NoneOn10",             10, {{kUsers, kEnabled}}, false},
        GroupCase{"LongerSid",            10, {{u"S-1-5-32-5440", kEnabled}}, false},
        GroupCase{"ShorterSid",           10, {{u"S-1-5-32-54", kEnabled}}, false}),
    test::CaseName());
// clang-format on

TEST_P(Administrator, ByTheGroupsOfTheToken) {
  test::TestWorld world;
  world.platform.system.majorVersion = GetParam().majorVersion;
  world.platform.security.groups = GetParam().groups;
  EXPECT_EQ(IsUserAdministrator(), GetParam().administrator);
  EXPECT_EQ(world.Leftovers(), "");
}

TEST(AdministratorFailures, CountAsNoAdministrator) {
  for (const char* operation :
       {"OpenProcessToken", "GetTokenInformation", "HeapAlloc", "ConvertSidToStringSidW"}) {
    test::TestWorld world;
    world.platform.security.groups = {{kAdministrators, kEnabled}};
    world.platform.faults.FailOperation(operation);
    EXPECT_FALSE(IsUserAdministrator()) << operation;
    EXPECT_TRUE(world.platform.faults.fired());
    EXPECT_EQ(world.Leftovers(), "");
  }
}

TEST(AdministratorFailures, GroupThatCantBeReadLeavesTheOthers) {
  test::TestWorld world;
  world.platform.security.groups = {{kUsers, kEnabled}, {kAdministrators, kEnabled}};
  world.platform.faults.FailOperation("ConvertSidToStringSidW", 1);
  EXPECT_TRUE(IsUserAdministrator());
}

}  // namespace
}  // namespace ostrel
