#include "platform/headless/fault_plan.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

// Asks for the operations in turn. Result: one letter each, F for a failure.
std::string Ask(FaultPlan& plan, const std::vector<std::string>& operations) {
  std::string answers;
  for (const std::string& operation : operations) {
    answers += plan.ShouldFail(operation) ? 'F' : '.';
  }
  return answers;
}

TEST(FaultPlan, FailsNothingUnlessAskedTo) {
  FaultPlan plan;
  EXPECT_EQ(Ask(plan, {"a", "b", "a"}), "...");
  EXPECT_FALSE(plan.fired());
}

TEST(FaultPlan, FailsTheNthCallOfAllOnce) {
  FaultPlan plan;
  plan.FailCall(3);
  EXPECT_EQ(Ask(plan, {"a", "b"}), "..");
  EXPECT_FALSE(plan.fired());
  EXPECT_EQ(Ask(plan, {"a", "b", "a", "b"}), "F...");
  EXPECT_TRUE(plan.fired());
}

TEST(FaultPlan, CallZeroFailsNone) {
  FaultPlan plan;
  plan.FailCall(2);
  plan.FailCall(0);
  EXPECT_EQ(Ask(plan, {"a", "a", "a"}), "...");
}

TEST(FaultPlan, CountsFromTheMomentOfPlanning) {
  FaultPlan plan;
  EXPECT_EQ(Ask(plan, {"a", "a"}), "..");
  plan.FailCall(1);
  EXPECT_EQ(Ask(plan, {"a", "a"}), "F.");
  plan.FailOperation("a", 2);
  EXPECT_EQ(Ask(plan, {"a", "a", "a"}), ".F.");
}

TEST(FaultPlan, FailsTheNthCallOfOneOperationOnce) {
  FaultPlan plan;
  plan.FailOperation("b", 2);
  EXPECT_EQ(Ask(plan, {"a", "b", "a", "a", "b", "b", "b"}), "....F..");
  EXPECT_TRUE(plan.fired());
}

TEST(FaultPlan, FailsEveryCallOfAnOperation) {
  FaultPlan plan;
  plan.FailOperation("b");
  EXPECT_EQ(Ask(plan, {"b", "a", "b", "b"}), "F.FF");
}

TEST(FaultPlan, KeepsSeveralPlansAtOnce) {
  FaultPlan plan;
  plan.FailOperation("a", 1);
  plan.FailOperation("a", 3);
  plan.FailOperation("b", 2);
  EXPECT_EQ(Ask(plan, {"a", "a", "b", "a", "b", "a"}), "F..FF.");
}

TEST(FaultPlan, ForgetsWhatWasPlanned) {
  FaultPlan plan;
  plan.FailCall(2);
  plan.FailOperation("a");
  EXPECT_EQ(Ask(plan, {"a"}), "F");
  plan.Clear();
  EXPECT_FALSE(plan.fired());
  EXPECT_EQ(Ask(plan, {"a", "a"}), "..");
}

TEST(FaultPlan, NewPlanHasNotFired) {
  FaultPlan plan;
  plan.FailCall(1);
  EXPECT_EQ(Ask(plan, {"a"}), "F");
  plan.FailCall(1);
  EXPECT_FALSE(plan.fired());
}

TEST(FaultPlan, TracesFromItsStartOnFailuresIncluded) {
  FaultPlan plan;
  Ask(plan, {"before"});
  EXPECT_TRUE(plan.trace().empty());
  plan.StartTrace();
  plan.FailOperation("b");
  Ask(plan, {"a", "b"});
  plan.Clear();
  Ask(plan, {"c"});
  EXPECT_EQ(plan.trace(), (std::vector<std::string>{"a", "b", "c"}));
  plan.StartTrace();
  EXPECT_TRUE(plan.trace().empty());
}

}  // namespace
}  // namespace ostrel::headless
