// What choosing a paper writes into the record, and which stored papers can be chosen at all.
#include "pages/chosen_paper.h"

#include "pages/custom_paper_stage.h"

namespace ostrel {
namespace {

constexpr std::uint32_t kAnnounced = kDmPaperLength | kDmPaperWidth | kDmFormName;

struct ChoiceStage : CustomPaperStage {
  ChoiceStage() {
    Put({Card(u"Card", 288), Photo(u"Last", 32767), Card(u"Beyond", 32768), Card(u"Low", 287)});
    SetWords({13, 7, 8});
    shared().dmFields = kDmOrientation;
  }
  std::uint32_t fields() { return shared().dmFields; }
};

struct IdCase {
  const char* name;
  std::uint32_t id;
  bool canBeChosen;
};

class StoredPaperId : public testing::TestWithParam<IdCase> {};

INSTANTIATE_TEST_SUITE_P(Ids, StoredPaperId,
                         testing::Values(IdCase{"Zero", 0, false},
                                         IdCase{"OfAFixedPaper", 9, false},
                                         IdCase{"JustBelow", 287, false},
                                         IdCase{"First", 288, true}, IdCase{"Far", 5000, true},
                                         IdCase{"Last", 32767, true},
                                         IdCase{"JustAbove", 32768, false},
                                         IdCase{"WithTheLowWordOfAFirst", 0x10120, false},
                                         IdCase{"All", 0xFFFFFFFF, false}),
                         test::CaseName());

TEST_P(StoredPaperId, CanBeChosenWhenARecordCanHoldIt) {
  CustomPaperRecord paper = {};
  paper.PaperId = GetParam().id;
  EXPECT_EQ(CanBeChosen(paper), GetParam().canBeChosen);
  CustomPaperStage stage;
  stage.Put({Photo(u"Mine", GetParam().id)});
  CustomPaperRecord found = {};
  found.Width = 77;
  EXPECT_EQ(FindChoosablePaper(GetParam().id, found), GetParam().canBeChosen);
  EXPECT_EQ(found.Width, GetParam().canBeChosen ? 2400 : 77);  // left alone otherwise
}

TEST(ChosenPaper, OfTheUsersOwnBringsItsSizeAndAnnouncesIt) {
  ChoiceStage stage;
  ChoosePaper(stage.context, 32767);
  EXPECT_EQ(stage.Words(), test::PhotoWords(32767));
  EXPECT_EQ(stage.fields(), kDmOrientation | kAnnounced);
}

TEST(ChosenPaper, OfTheTableBringsItsIdAlone) {
  ChoiceStage stage;
  ChoosePaper(stage.context, 9);
  EXPECT_EQ(stage.Words(), (PaperWords{9, 7, 8}));
  EXPECT_EQ(stage.fields(), kDmOrientation);
}

TEST(ChosenPaper, OfTheTableIsNotLookedForInTheStore) {
  ChoiceStage stage;
  stage.Put({Photo(u"Impostor", 9)});
  ChoosePaper(stage.context, 9);
  EXPECT_EQ(stage.Words(), (PaperWords{9, 7, 8}));
}

TEST(ChosenPaper, ThatIsGoneOrHasNoIdOfTheUsersLeavesTheSize) {
  for (const std::int16_t id : std::initializer_list<std::int16_t>{289, 287, -1, -32768}) {
    ChoiceStage stage;
    ChoosePaper(stage.context, id);
    EXPECT_EQ(stage.Words(), (PaperWords{id, 7, 8}));
    EXPECT_EQ(stage.fields(), kDmOrientation);
  }
}

TEST(ChosenStoredPaper, BringsItsSizeAndAnnouncesIt) {
  ChoiceStage stage;
  CustomPaperRecord paper = {};
  ASSERT_TRUE(FindCustomPaper(288, &paper));
  ChooseStoredPaper(stage.context, paper);
  EXPECT_EQ(stage.Words(), test::CardWords(288));
  EXPECT_EQ(stage.fields(), kDmOrientation | kAnnounced);
}

TEST(ChosenTablePaper, CanBringItsSizeAndAnnouncesNothing) {
  ChoiceStage stage;
  ChooseTablePaperWithSize(stage.context, 9);
  EXPECT_EQ(stage.Words(), test::kA4Words);
  ChooseTablePaperWithSize(stage.context, 1);
  EXPECT_EQ(stage.Words(), test::kLetterWords);
  EXPECT_EQ(stage.fields(), kDmOrientation);
  ChooseTablePaperWithSize(stage.context, 288);  // without a row
  EXPECT_EQ(stage.Words(), test::kLetterWords);
}

TEST(ChosenPaper, WithoutARecordWritesNothing) {
  ChoiceStage stage;
  UIContext empty = {};
  ChoosePaper(empty, 288);
  ChooseTablePaperWithSize(empty, 9);
  EXPECT_EQ(stage.Words(), (PaperWords{13, 7, 8}));
}

}  // namespace
}  // namespace ostrel
