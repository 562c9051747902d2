#include "print_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using testing::ElementsAre;

const auto kContext = reinterpret_cast<DeviceContext>(std::uintptr_t{0x40});

class WrittenSystem final : public JobSystem {
 public:
  std::int32_t Raise(JobEvent event, DeviceContext context) override {
    const std::string number = std::to_string(static_cast<int>(event));
    calls.push_back("event " + number + (context == nullptr ? " without a context" : ""));
    return number == refused ? -1 : 1;
  }
  DeviceContext CreateContext() override { return Does("create") ? kContext : nullptr; }
  bool BeginDocument(DeviceContext /*context*/) override { return Does("start document"); }
  bool BeginPage(DeviceContext /*context*/) override { return Does("start page"); }
  bool FinishPage(DeviceContext /*context*/) override { return Does("end page"); }
  bool FinishDocument(DeviceContext /*context*/) override { return Does("end document"); }
  void DeleteContext(DeviceContext /*context*/) override { Does("delete"); }

  JobResult Print(int pages) {
    return PrintJob(*this, pages, [this](DeviceContext context, int page) {
      EXPECT_EQ(context, kContext);
      calls.push_back("draw " + std::to_string(page));
    });
  }

  std::vector<std::string> calls;
  std::string refused;  // the event that the driver refuses
  std::string failing;  // the call that fails

 private:
  bool Does(const std::string& call) {
    calls.push_back(call);
    return call != failing;
  }
};

TEST(PrintJob, DocumentOfTwoPagesRaisesTheEventsAroundItsCalls) {
  WrittenSystem system;
  EXPECT_EQ(system.Print(2), JobResult::kPrinted);
  EXPECT_THAT(system.calls,
              ElementsAre("event 1 without a context", "create", "event 2", "event 5",
                          "start document", "event 13", "event 6", "start page", "draw 0",
                          "event 7", "end page", "event 6", "start page", "draw 1", "event 7",
                          "end page", "event 8", "end document", "event 12", "event 10", "delete"));
}

TEST(PrintJob, RefusedJobIsNotStarted) {
  WrittenSystem system;
  system.refused = "5";
  EXPECT_EQ(system.Print(2), JobResult::kRefused);
  EXPECT_THAT(system.calls, ElementsAre("event 1 without a context", "create", "event 2", "event 5",
                                        "event 10", "delete"));
}

TEST(PrintJob, JobRefusedBeforeItsContextHasNone) {
  WrittenSystem system;
  system.refused = "1";
  EXPECT_EQ(system.Print(1), JobResult::kRefused);
  EXPECT_THAT(system.calls, ElementsAre("event 1 without a context"));
}

TEST(PrintJob, ContextThatCannotBeMadeEndsTheJob) {
  WrittenSystem system;
  system.failing = "create";
  EXPECT_EQ(system.Print(1), JobResult::kFailed);
  EXPECT_THAT(system.calls, ElementsAre("event 1 without a context", "create"));
}

TEST(PrintJob, PageThatCannotBeStartedEndsTheDocument) {
  WrittenSystem system;
  system.failing = "start page";
  EXPECT_EQ(system.Print(3), JobResult::kFailed);
  EXPECT_THAT(system.calls,
              ElementsAre("event 1 without a context", "create", "event 2", "event 5",
                          "start document", "event 13", "event 6", "start page", "event 8",
                          "end document", "event 12", "event 10", "delete"));
}

TEST(PrintJob, DocumentThatCannotBeStartedFails) {
  WrittenSystem system;
  system.failing = "start document";
  EXPECT_EQ(system.Print(1), JobResult::kFailed);
  EXPECT_EQ(system.calls.back(), "delete");
}

}  // namespace
}  // namespace ostrel
