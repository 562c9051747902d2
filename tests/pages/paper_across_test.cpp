// The paper page beside the print options page: what the one changes, the other shows when it comes
// up.
#include "pages/paper_stage.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kOptionsDialog = 111;

class PaperBesideOptions : public PaperStage {
 public:
  PaperBesideOptions() { withOtherPages = true; }
  headless::User Go(std::uint32_t dialog) {
    EXPECT_TRUE(sheet->ShowPageOf(dialog));
    const headless::User user = sheet->UserOf(dialog);
    ExpectChangesFrom(user.dialog());
    return user;
  }
  headless::User GoToOptions() { return Go(kOptionsDialog); }
  headless::User GoToPaper() { return Go(test::kPaperDialog); }
};

TEST(PaperAcross, TwoSidesLockTheMediaUntilPrintingIsOneSidedAgain) {
  PaperBesideOptions stage;
  ASSERT_TRUE(stage.OpenWith({}));
  for (const std::int32_t sides : {1125, 1241}) {
    EXPECT_TRUE(stage.GoToOptions().Click(sides));
    const headless::User paper = stage.GoToPaper();
    EXPECT_FALSE(paper.Enabled(1009)) << sides;
    EXPECT_TRUE(paper.Shown(1446)) << sides;
    EXPECT_TRUE(stage.GoToOptions().Click(1240));
    EXPECT_TRUE(stage.GoToPaper().Enabled(1009)) << sides;
    EXPECT_FALSE(paper.Shown(1446)) << sides;
  }
}

// The print options page names the source in both words, so that picking it again is no change.
TEST(PaperAcross, OptionsPageNamesTheSourceInBothWords) {
  PaperBesideOptions stage;
  ASSERT_TRUE(stage.OpenWith({}));
  PaperStage::With({.source = 258, .tray = 0})(stage.context());
  stage.GoToOptions();
  EXPECT_EQ(stage.own().SourceTray, 258);
  stage.GoToPaper();
  EXPECT_EQ(stage.Source(), (SourceSeen{3, true, false, true, 258, 258}));
  stage.PickSource(258);
  EXPECT_EQ(stage.TakeChanges(), 0U);
  EXPECT_EQ(stage.favorite(), u"Mine");
}

// A source that is refused there shows the one of the record, whatever the other page has named.
TEST(PaperAcross, RefusalAfterTheOptionsPageShowsTheRecordsSource) {
  PaperBesideOptions stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.GoToOptions();
  PaperStage::With({.paper = 252, .source = 257, .tray = 0})(stage.context());
  stage.GoToPaper();
  stage.PickSource(258);
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.Shown(1393), 257);
}

}  // namespace
}  // namespace ostrel
