#include "pages/guarded_procedure.h"

#include <gtest/gtest.h>
#include <new>

namespace ostrel {
namespace {

std::intptr_t Answer(WindowHandle dialog, std::uint32_t message, std::uintptr_t wParam,
                     std::intptr_t lParam) {
  if (message == kWmClose) {
    throw std::bad_alloc();
  }
  return dialog == nullptr ? lParam - static_cast<std::intptr_t>(wParam) : 0;
}

TEST(GuardedProcedure, AnswersAsTheProcedureDoes) {
  EXPECT_EQ(Guarded<Answer>(nullptr, kWmCommand, 2, 9), 7);
}

TEST(GuardedProcedure, LetsNothingThatIsThrownOut) {
  EXPECT_EQ(Guarded<Answer>(nullptr, kWmClose, 2, 9), 0);
}

}  // namespace
}  // namespace ostrel
