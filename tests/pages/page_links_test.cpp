#include "pages/page_links.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <ostream>

namespace ostrel {
namespace {

struct LinkCase {
  const char* name;
  bool PageLinks::*fact;
  bool atFirst;
};

void PrintTo(const LinkCase& row, std::ostream* out) {
  *out << row.name;
}

class PageLinksFact : public testing::TestWithParam<LinkCase> {};

INSTANTIATE_TEST_SUITE_P(
    Facts, PageLinksFact,
    testing::Values(LinkCase{"DuplexOff", &PageLinks::duplexOff, true},
                    LinkCase{"DuplexAllowed", &PageLinks::duplexAllowed, false},
                    LinkCase{"JobModeAllowed", &PageLinks::jobModeAllowed, false},
                    LinkCase{"MediaChanged", &PageLinks::mediaChanged, false}),
    test::CaseName());

TEST_P(PageLinksFact, IsKeptUntilItIsToldAnew) {
  test::TestWorld world;
  const auto fact = GetParam().fact;
  EXPECT_EQ(AskPages(fact), GetParam().atFirst);
  TellPages(fact, !GetParam().atFirst);
  EXPECT_EQ(AskPages(fact), !GetParam().atFirst);
  TellPages(fact, GetParam().atFirst);
  EXPECT_EQ(AskPages(fact), GetParam().atFirst);
}

TEST_P(PageLinksFact, IsItsOwn) {
  test::TestWorld world;
  TellPages(GetParam().fact, !GetParam().atFirst);
  const PageLinks untold;
  for (const auto other : {&PageLinks::duplexOff, &PageLinks::duplexAllowed,
                           &PageLinks::jobModeAllowed, &PageLinks::mediaChanged}) {
    if (other != GetParam().fact) {
      EXPECT_EQ(AskPages(other), untold.*other);
    }
  }
}

TEST_P(PageLinksFact, IsUnknownToOtherThreads) {
  test::TestWorld world;
  world.platform.system.threadId = 1;
  TellPages(GetParam().fact, !GetParam().atFirst);
  world.platform.system.threadId = 2;
  EXPECT_EQ(AskPages(GetParam().fact), GetParam().atFirst);
}

TEST_P(PageLinksFact, EndsWithTheSheet) {
  test::TestWorld world;
  TellPages(GetParam().fact, !GetParam().atFirst);
  ReleasePageStates();
  EXPECT_EQ(AskPages(GetParam().fact), GetParam().atFirst);
}

TEST_P(PageLinksFact, IsLostWithoutMemory) {
  test::TestWorld world;
  world.platform.faults.FailOperation("HeapAlloc");
  TellPages(GetParam().fact, !GetParam().atFirst);
  EXPECT_EQ(AskPages(GetParam().fact), GetParam().atFirst);
}

}  // namespace
}  // namespace ostrel
