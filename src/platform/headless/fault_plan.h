// Which call of an in-memory platform fails, and which calls were made.
//
// Every operation that can fail in the real world asks the plan first. A test names the operation
// and the call, or just the n-th call of all: so each entry point can be walked through all its
// failures.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::headless {

class FaultPlan {
 public:
  // Fails the n-th call from now on, counted from 1 over all operations. 0 fails none.
  void FailCall(std::size_t n);

  // Fails the n-th call of one operation from now on, counted from 1; every call when n is 0.
  void FailOperation(std::string_view operation, std::size_t n = 0);

  // Forgets all failures to come. The trace stays.
  void Clear();

  // Whether a planned failure has happened since it was planned.
  bool fired() const { return fired_; }

  // Starts writing down the names of the operations asked for.
  void StartTrace();
  const std::vector<std::string>& trace() const { return trace_; }

  // Told of each operation before it is done, when there is one: for an order of calls over all
  // lists.
  std::function<void(std::string_view operation)> onAsked;

  // Asked by each operation under its own name. Result: whether it must fail.
  bool ShouldFail(std::string_view operation);

 private:
  struct Named {
    std::string operation;
    std::size_t remaining;  // calls until it fails; 0 fails every call
  };

  std::size_t remainingCalls_ = 0;
  std::vector<Named> named_;
  bool fired_ = false;
  bool tracing_ = false;
  std::vector<std::string> trace_;
};

}  // namespace ostrel::headless
