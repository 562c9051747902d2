// Runs the native tests. A listener asserts after each that no process-wide state is left in force.
#include "core/process_state.h"

#include <gtest/gtest.h>

namespace {

class NothingLeftInForce final : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    EXPECT_FALSE(ostrel::IsProcessStateSet()) << "a process state outlived its test";
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new NothingLeftInForce);
  return RUN_ALL_TESTS();
}
