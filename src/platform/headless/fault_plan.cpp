#include "platform/headless/fault_plan.h"

namespace ostrel::headless {

void FaultPlan::FailCall(std::size_t n) {
  remainingCalls_ = n;
  fired_ = false;
}

void FaultPlan::FailOperation(std::string_view operation, std::size_t n) {
  named_.push_back({std::string(operation), n});
  fired_ = false;
}

void FaultPlan::Clear() {
  remainingCalls_ = 0;
  named_.clear();
  fired_ = false;
}

void FaultPlan::StartTrace() {
  tracing_ = true;
  trace_.clear();
}

bool FaultPlan::ShouldFail(std::string_view operation) {
  if (tracing_) {
    trace_.emplace_back(operation);
  }
  if (onAsked) {
    onAsked(operation);
  }
  bool fail = false;
  if (remainingCalls_ != 0) {
    fail = --remainingCalls_ == 0;
  }
  for (Named& named : named_) {
    if (named.operation != operation) {
      continue;
    }
    if (named.remaining == 0) {
      fail = true;
    } else if (--named.remaining == 0) {
      fail = true;
      named.operation.clear();  // it has failed once and is done
    }
  }
  fired_ = fired_ || fail;
  return fail;
}

}  // namespace ostrel::headless
