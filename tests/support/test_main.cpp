// Runs the native tests. A listener asserts after each that no process-wide state is left in force,
// and that the driver has freed all that it had allocated.
#include "core/process_state.h"
#include "support/test_world.h"

#include <gtest/gtest.h>

namespace {

class NothingLeftInForce final : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    EXPECT_FALSE(ostrel::IsProcessStateSet()) << "a process state outlived its test";
    EXPECT_EQ(ostrel::test::TakeUnfreed(), "") << "memory outlived its test";
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new NothingLeftInForce);
  return RUN_ALL_TESTS();
}
