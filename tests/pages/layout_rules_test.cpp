// The table of rules behind the layout page, expanded over whole products of what its conditions
// look at.
#include "pages/layout_rules.h"

#include "pages/layout_stage.h"
#include "pages/page_scene.h"

#include <cstring>

namespace ostrel {
namespace {

// What the rules did to the page, in order.
class RecordedControls final : public LayoutRuleControls {
 public:
  explicit RecordedControls(const UIContext& context) : context_(context) {}

  void Warn(Refusal refusal) override {
    refusals.push_back(refusal);
    pagesAtBox = context_.privatePointer->MultipleUp;
  }
  void EnablePageRadios(bool enable) override { Add("radios", enable); }
  void ClearPageRadios() override { calls.emplace_back("cleared"); }
  void EnableBookletButton(bool enable) override { Add("button", enable); }

  std::vector<Refusal> refusals;
  std::vector<std::string> calls;
  std::int16_t pagesAtBox = 0;

 private:
  void Add(const char* what, bool enable) {
    calls.push_back(std::string(what) + (enable ? " on" : " off"));
  }
  const UIContext& context_;
};

struct RuleScene : test::PageScene {
  RuleScene() { BuildUIParamTable(&context); }
  RecordedControls controls{context};
};

TEST(LayoutRulesPoster, IsDecidedByDuplexBookletAndWatermark) {
  for (int duplex = -1; duplex <= 7; ++duplex) {
    for (const bool booklet : {false, true}) {
      for (int watermark = -1; watermark <= 2; ++watermark) {
        RuleScene scene;
        scene.shared().dmDuplex = static_cast<std::int16_t>(duplex);
        scene.own().BookletPrint = booklet ? 1 : 0;
        scene.own().WatermarkData.PageWMFlag = static_cast<std::int16_t>(watermark);
        scene.own().MultipleUp = 8;
        const bool accepted = AskFor(LayoutOption::kPoster, scene.context, scene.controls);
        const bool sides = duplex >= 2 && duplex <= 5 && !booklet;
        const bool mark = watermark >= 1;
        SCOPED_TRACE(testing::Message() << duplex << ' ' << booklet << ' ' << watermark);
        EXPECT_EQ(accepted, !sides && !mark);
        std::vector<Refusal> refusals;
        if (!accepted) {
          refusals.push_back(sides
                                 ? (mark ? Refusal::kPosterDuplexWatermark : Refusal::kPosterDuplex)
                                 : Refusal::kWatermarkPoster);
        }
        EXPECT_EQ(scene.controls.refusals, refusals);
        EXPECT_EQ(scene.own().MultipleUp, accepted ? 22 : 1);
        EXPECT_EQ(scene.own().PosterPrint, accepted ? 1 : 0);
        EXPECT_EQ(scene.own().BookletPrint, booklet && !accepted ? 1 : 0);
        EXPECT_EQ(scene.shared().dmDuplex, booklet && accepted ? 1 : duplex);
        std::vector<std::string> calls;
        if (accepted) {
          calls = booklet ? std::vector<std::string>{"button off", "radios off"}
                          : std::vector<std::string>{"radios off"};
        } else {
          EXPECT_EQ(scene.controls.pagesAtBox, 8);  // the box comes first
        }
        EXPECT_EQ(scene.controls.calls, calls);
      }
    }
  }
}

TEST(LayoutRulesBooklet, IsRefusedOnlyOverOtherSidesWithConflicts) {
  for (int duplex = 0; duplex <= 6; ++duplex) {
    for (const bool reverse : {false, true}) {
      RuleScene scene;
      scene.shared().dmDuplex = static_cast<std::int16_t>(duplex);
      scene.own().ReversePrint = reverse ? 1 : 0;
      scene.own().ScaleRadio = 150;
      scene.own().JobMode = 1;
      scene.shared().dmCollate = 0;
      const bool accepted = AskFor(LayoutOption::kBooklet, scene.context, scene.controls);
      const bool conflicts = reverse || duplex == 2 || duplex > 3;
      EXPECT_EQ(accepted, duplex == 1 || !conflicts) << duplex << reverse;
      EXPECT_EQ(scene.controls.refusals.size(), accepted ? 0U : 1U);
      EXPECT_EQ(scene.shared().dmDuplex, duplex == 1 ? 3 : duplex);
      EXPECT_EQ(scene.own().BookletPrint, 1);
      EXPECT_EQ(scene.shared().dmCollate, 1);
      EXPECT_EQ(scene.own().ScaleRadio, 100);
      EXPECT_EQ(scene.own().JobMode, 0);
      EXPECT_EQ(scene.controls.calls, std::vector<std::string>({"cleared"}));
    }
  }
}

TEST(LayoutRulesPages, ChangeOrderAndBorderOnlyWhenTheyDiffer) {
  for (const std::int16_t before : test::kPageCodes) {
    for (const std::int16_t asked : test::kPageCodes) {
      RuleScene scene;
      scene.own().MultipleUp = before;
      scene.own().PageOrder = 1;
      scene.own().PageBorder = 1;
      scene.own().BookletPrint = 1;
      scene.own().PosterPrint = 1;
      const bool changed =
          AskFor(LayoutOption::kPagesPerSheet, scene.context, scene.controls, asked);
      EXPECT_EQ(changed, before != asked);
      EXPECT_EQ(scene.own().MultipleUp, asked);
      EXPECT_EQ(scene.own().PageOrder, changed ? 0 : 1);
      EXPECT_EQ(scene.own().PageBorder, changed && asked == 1 ? 0 : 1);
      EXPECT_EQ(scene.own().BookletPrint, 0);
      EXPECT_EQ(scene.own().PosterPrint, 0);
      EXPECT_TRUE(scene.controls.calls.empty());
    }
  }
}

TEST(LayoutRulesOrientation, TouchesTheOrderOfTwoPagesAlone) {
  for (int pages = -1; pages <= 24; ++pages) {
    RuleScene scene;
    scene.own().MultipleUp = static_cast<std::int16_t>(pages);
    scene.own().PageOrder = 1;
    EXPECT_EQ(AskFor(LayoutOption::kOrientation, scene.context, scene.controls), pages == 2);
    EXPECT_EQ(scene.own().PageOrder, pages == 2 ? 0 : 1);
  }
}

TEST(LayoutRulesLocks, FollowFromTheModeAlone) {
  for (int pages = -1; pages <= 24; ++pages) {
    for (const bool booklet : {false, true}) {
      for (const bool poster : {false, true}) {
        LayoutFacts mode;
        mode.pages = static_cast<std::int16_t>(pages);
        mode.booklet = booklet;
        mode.poster = poster;
        const bool several = pages >= 2 && pages <= 20;
        SCOPED_TRACE(testing::Message() << pages << ' ' << booklet << ' ' << poster);
        EXPECT_EQ(IsLocked(LayoutOption::kOrderAndBorder, mode), !several || booklet || poster);
        EXPECT_EQ(IsLocked(LayoutOption::kScale, mode),
                  several || booklet || poster || pages == 22);
        EXPECT_EQ(IsLocked(LayoutOption::kPosterRadio, mode), booklet);
        EXPECT_FALSE(IsLocked(LayoutOption::kBookletRadio, mode));
        EXPECT_FALSE(IsLocked(LayoutOption::kThickness, mode));
      }
    }
  }
}

TEST(LayoutRulesLocks, OfThicknessAndBookletFollowTheirOwnFacts) {
  for (const std::int16_t saving : std::initializer_list<std::int16_t>{-1, 0, 1, 2}) {
    LayoutFacts facts;
    facts.tonerSaving = saving;
    EXPECT_EQ(IsLocked(LayoutOption::kThickness, facts), saving != 0);
  }
  for (const std::uint32_t conflicts : {0U, 1U, 64U, 127U}) {
    LayoutFacts facts;
    facts.conflicts = conflicts;
    EXPECT_EQ(IsLocked(LayoutOption::kBookletRadio, facts), conflicts != 0);
  }
}

}  // namespace
}  // namespace ostrel
