// Deleting a paper of the user's own, the defaults, and the two ways out of the dialog.
#include "pages/custom_paper_stage.h"

namespace ostrel {
namespace {

// ---- Deleting -----------------------------------------------------------------------------------

TEST(DeletedPaper, MakesRoomForTheFirstThatIsLeft) {
  CustomPaperStage stage;
  stage.Put({Photo(u"Photo", 290), Card(u"Card", 288), Card(u"Other", 289)});
  stage.SetWords(test::CardWords(288));
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Photo", u"Other"}));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Photo", u"4.00", u"6.00", kInches, false, true}));
    EXPECT_EQ(stage.user().Selected(kNameBox), 0);
    EXPECT_EQ(stage.Words(), test::PhotoWords(290));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_EQ(stage.Words(), test::PhotoWords(290));
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_SETTINGS(stage.world, StoreOf({Photo(u"Photo", 290), Card(u"Other", 289)}));
}

struct LastDeletedCase {
  const char* name;
  bool letterCountry;
  PaperWords words;
  PaperSeen seen;
};

class LastPaperDeleted : public testing::TestWithParam<LastDeletedCase> {};

INSTANTIATE_TEST_SUITE_P(
    Countries, LastPaperDeleted,
    testing::Values(LastDeletedCase{"A4",
                                    false,
                                    test::kA4Words,
                                    {u"Untitled", u"210.0", u"297.0", kMillimeters, false, false}},
                    LastDeletedCase{"Letter",
                                    true,
                                    test::kLetterWords,
                                    {u"Untitled", u"8.27", u"11.69", kInches, false, false}}),
    test::CaseName());

TEST_P(LastPaperDeleted, LeavesTheCountrysPaper) {
  CustomPaperStage stage;
  // In the other unit than the country's.
  stage.Put({GetParam().letterCountry ? Card(u"Only") : Photo(u"Only")});
  stage.SetWords({288, 7, 8});
  if (GetParam().letterCountry) {
    stage.UseLetterCountry();
  }
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().ItemTexts(kNameBox).empty());
    EXPECT_EQ(stage.Seen(), GetParam().seen);
    EXPECT_EQ(stage.Words(), GetParam().words);
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.Unit, GetParam().letterCountry ? 2U : 1U);
    EXPECT_EQ(paper.PaperId, 288U);
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_EQ(stage.Words(), GetParam().words);
  EXPECT_SETTINGS(stage.world, StoreOf({}));
}

TEST(DeletedPaper, GivesItsIdToTheNextNewOne) {
  CustomPaperStage stage;
  stage.Put({Card(u"A", 288), Card(u"B", 289), Card(u"C", 290)});
  stage.SetWords(test::CardWords(289));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    stage.SaveAs(u"D");
    EXPECT_EQ(stage.Words(), test::CardWords(289));
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"A", 288), Card(u"C", 290), Card(u"D", 289)}));
}

TEST(DeletedPaper, OfAFullStoreMakesRoom) {
  CustomPaperStage stage;
  stage.Put(Papers(16));
  stage.SetWords(test::CardWords(290));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    stage.SaveAs(u"New");
    EXPECT_TRUE(stage.boxes().empty());
    EXPECT_EQ(stage.Words(), test::CardWords(290));
  });
}

TEST(DeletedPaper, ThatCantBeReadGoesToo) {
  CustomPaperStage stage;
  test::PutSettings(stage.world, test::SettingsTree{.papers = {test::StoredPaper(Card(u"Card")),
                                                               test::Record("Broken", "x")}}
                                     .Bytes());
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  });
  EXPECT_EQ(stage.Words(), test::CardWords(288));  // the paper in force was another one
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card")}));
}

TEST(DeletedPaper, LeavesTheCountrysPaperWhenOnlyUnreadableOnesRemain) {
  CustomPaperStage stage;
  const std::string broken = test::Record("Broken", "x");
  const std::string absurd = test::StoredPaper(Photo(u"Absurd", 40000));
  test::PutSettings(
      stage.world,
      test::SettingsTree{.papers = {broken, test::StoredPaper(Card(u"Card")), absurd}}.Bytes());
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Untitled", u"210.0", u"297.0", kMillimeters, false, false}));
    EXPECT_EQ(stage.user().ItemTexts(kNameBox),
              (std::vector<std::u16string>{u"Broken", u"Absurd"}));
    EXPECT_EQ(stage.Words(), test::kA4Words);
    EXPECT_TRUE(stage.user().Click(kIdOk));
  });
  EXPECT_EQ(stage.Words(), test::kA4Words);
  EXPECT_SETTINGS(stage.world, (test::SettingsTree{.papers = {broken, absurd}}.Bytes()));
}

TEST(DeletedPaper, MayHaveBlanksAroundItsName) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"  Wide ", 289), Card(u"Wide", 290)});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Card", u"Wide"}));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Card(u"Wide", 290)}));
}

// A disabled button would keep the focus.
TEST(DeletedPaper, TheLastOneLeavesTheFocusToTheName) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().Focus(), kDelete);  // there is another one to delete
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().Focus(), kNameBox);
    EXPECT_TRUE(stage.IsOpen());
  });
}

TEST(DeletedPaper, ThatIsNotStoredChangesNothing) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card")});
  stage.SetWords({288, 7, 8});
  stage.Show([&] {
    stage.SetText(kNameBox, u"Nobody");
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.Words(), (PaperWords{288, 7, 8}));
    EXPECT_EQ(stage.Text(kNameBox), u"Nobody");
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card")}));
}

// ---- Defaults -----------------------------------------------------------------------------------

TEST(PaperDefaults, InMillimetersAreTheLargestSize) {
  CustomPaperStage stage;
  stage.Put({Photo(u"Photo", 288)});
  stage.SetWords(test::PhotoWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Poster"));
    ASSERT_TRUE(stage.user().Enabled(kSave));
    EXPECT_TRUE(stage.user().Click(kDefaults));
    EXPECT_EQ(stage.Seen(),
              (PaperSeen{u"Untitled", u"216.0", u"356.0", kMillimeters, false, false}));
    EXPECT_EQ(stage.user().Selected(kNameBox), -1);
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.PaperId, 289U);
    EXPECT_EQ(paper.Unit, 1U);
    EXPECT_EQ(std::u16string(paper.Name), u"Untitled");
    EXPECT_EQ(stage.Words(), test::PhotoWords(288));
    stage.SaveAs(u"Largest");
  });
  EXPECT_SETTINGS(stage.world,
                  StoreOf({Photo(u"Photo", 288), PaperFacts{u"Largest", 289, 1, 5102, 8409,
                                                            5102.3623046875F, 8409.44921875F}}));
}

// The numbers of the inches' row are taken as millimeters, far below the least: users know it so.
TEST(PaperDefaults, InInchesShowTheLeastSize) {
  CustomPaperStage stage;
  stage.UseLetterCountry();
  stage.Put({Card(u"Card")});
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDefaults));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Untitled", u"2.95", u"5.83", kInches, false, false}));
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.Width, 201);   // 8.5 mm
    EXPECT_EQ(paper.Length, 331);  // 14 mm
    EXPECT_EQ(paper.ExactWidth, 200.7873992919922F);
    EXPECT_EQ(paper.Unit, 2U);
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Text(kWidth), u"75.0");
    EXPECT_EQ(stage.Text(kLength), u"148.0");
    EXPECT_TRUE(stage.user().Click(kInches));
    stage.SaveAs(u"Least");
  });
  EXPECT_SETTINGS(
      stage.world,
      StoreOf({Card(u"Card"), PaperFacts{u"Least", 289, 2, 1770, 3498, 1770.0F, 3498.0F}}));
}

TEST(PaperDefaults, WithAFullStoreHaveNoId) {
  CustomPaperStage stage;
  stage.Put(Papers(16));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDefaults));
    EXPECT_EQ(GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper.PaperId,
              0xFFFFFFFFU);
    EXPECT_EQ(stage.Text(kWidth), u"216.0");
  });
}

TEST(PaperDefaults, HaveTheLanguagesNameOrTheEnglishOne) {
  CustomPaperStage german;
  german.UseLanguage("de", true);
  german.Show([&] {
    EXPECT_TRUE(german.user().Click(kDefaults));
    EXPECT_EQ(german.Text(kNameBox), u"Unbenannt");
  });
  CustomPaperStage without;
  without.language.strings.erase(5005);
  without.Show([&] {
    EXPECT_TRUE(without.user().Click(kDefaults));
    EXPECT_EQ(without.Text(kNameBox), u"Untitled");
  });
}

// ---- The ways out -------------------------------------------------------------------------------

TEST(AcceptedDialog, SavesWhatCanBeSavedFirst) {
  CustomPaperStage stage;
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Sheet"));
    EXPECT_TRUE(stage.user().Click(kIdOk));
    EXPECT_FALSE(stage.IsOpen());
  }));
  EXPECT_EQ(stage.Words(), (PaperWords{288, 2100, 2970}));
  EXPECT_SETTINGS(
      stage.world,
      StoreOf({PaperFacts{u"Sheet", 288, 1, 4961, 7016, 4960.6298828125F, 7015.748046875F}}));
}

TEST(AcceptedDialog, WithoutANewNameSavesNothing) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card")});
  stage.SetWords(test::CardWords(288));
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"120"));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_EQ(stage.Words(), test::CardWords(288));
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card")}));
}

TEST(AcceptedDialog, EndsEvenWhenSavingIsRefused) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
  stage.SetWords(test::CardWords(288));
  stage.windows().answers = {7};  // no
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Photo"));
    EXPECT_TRUE(stage.user().Click(kIdOk));
    EXPECT_FALSE(stage.IsOpen());
  }));
  EXPECT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.Words(), test::CardWords(288));
}

TEST(CancelledDialog, PutsThePaperInForceBackAndKeepsWhatWasSaved) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
  stage.SetWords({288, 7, 8});
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    stage.SaveAs(u"Copy");
    EXPECT_EQ(stage.Words(), test::PhotoWords(290));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
    EXPECT_FALSE(stage.IsOpen());
  }));
  EXPECT_EQ(stage.Words(), (PaperWords{288, 7, 8}));
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289), Photo(u"Copy", 290)}));
}

TEST(CancelledDialog, DoesNotBringBackAnotherPaperThatWasDeleted) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
  stage.SetWords({288, 7, 8});
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  }));
  EXPECT_EQ(stage.Words(), (PaperWords{288, 7, 8}));
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card")}));
}

struct CancelCase {
  const char* name;
  std::int32_t unit;  // the radio button clicked last
  PaperWords words;
};

class CancelledAfterItsPaperWasDeleted : public testing::TestWithParam<CancelCase> {};

INSTANTIATE_TEST_SUITE_P(Units, CancelledAfterItsPaperWasDeleted,
                         testing::Values(CancelCase{"Millimeters", kMillimeters, test::kA4Words},
                                         CancelCase{"Inches", kInches, test::kLetterWords}),
                         test::CaseName());

TEST_P(CancelledAfterItsPaperWasDeleted, TakesThePaperOfTheUnit) {
  for (const std::size_t others : {0U, 1U}) {
    CustomPaperStage stage;
    std::vector<PaperFacts> papers = {Card(u"Card", 300)};
    if (others != 0) {
      papers.push_back(Photo(u"Photo", 301));
    }
    stage.Put(papers);
    stage.SetWords(test::CardWords(300));
    EXPECT_FALSE(stage.Show([&] {
      EXPECT_TRUE(stage.user().Click(kDelete));
      EXPECT_TRUE(stage.user().Click(GetParam().unit));
      EXPECT_TRUE(stage.user().Click(kIdCancel));
    }));
    EXPECT_EQ(stage.Words(), GetParam().words);
    papers.erase(papers.begin());
    EXPECT_SETTINGS(stage.world, StoreOf(papers));
  }
}

TEST(CancelledDialog, RemembersADeletedPaperThroughFurtherDeletions) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card", 300), Card(u"Other", 301)});
  stage.SetWords(test::CardWords(300));
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  }));
  EXPECT_EQ(stage.Words(), test::kA4Words);
}

// The paper in force is still there under its id, which another record bears too.
TEST(CancelledDialog, KeepsAPaperWhoseIdAnotherRecordHas) {
  for (const std::int32_t row : {0, 1}) {
    CustomPaperStage stage;
    stage.Put({Card(u"First", 300), Photo(u"Second", 300)});
    stage.SetWords(test::CardWords(300));
    EXPECT_FALSE(stage.Show([&] {
      EXPECT_TRUE(stage.user().Choose(kNameBox, row));
      EXPECT_TRUE(stage.user().Click(kDelete));
      EXPECT_TRUE(stage.user().Click(kIdCancel));
    }));
    EXPECT_EQ(stage.Words(), test::CardWords(300)) << row;
  }
}

TEST(CancelledDialog, LosesAPaperWhoseRecordsAreAllDeleted) {
  CustomPaperStage stage;
  stage.Put({Card(u"First", 300), Photo(u"Second", 300), Card(u"Other", 301)});
  stage.SetWords(test::CardWords(300));
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  }));
  EXPECT_EQ(stage.Words(), test::kA4Words);
}

// Choosing announces a size of its own. Nothing of that stays.
TEST(CancelledDialog, TakesTheAnnouncementBack) {
  for (const bool deleted : {false, true}) {
    CustomPaperStage stage;
    stage.Put({Card(u"Card"), Photo(u"Photo", 289)});
    stage.SetWords(test::CardWords(288));
    stage.shared().dmFields = kDmOrientation | kDmPaperSize;
    EXPECT_FALSE(stage.Show([&] {
      if (deleted) {
        EXPECT_TRUE(stage.user().Click(kDelete));
      } else {
        EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
      }
      EXPECT_NE(stage.shared().dmFields & kDmPaperWidth, 0U);
      EXPECT_TRUE(stage.user().Click(kIdCancel));
    }));
    EXPECT_EQ(stage.shared().dmFields, kDmOrientation | kDmPaperSize);
    // The paper that is left is told in inches.
    EXPECT_EQ(stage.Words(), deleted ? test::kLetterWords : test::CardWords(288));
  }
}

TEST(CancelledDialog, ForgetsTheDeletionBeforeTheNextOne) {
  CustomPaperStage stage;
  stage.Put({Card(u"Card", 300), Photo(u"Photo", 301)});
  stage.SetWords(test::CardWords(300));
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_FALSE(stage.Show([&] { EXPECT_TRUE(stage.user().Click(kIdCancel)); }));
  EXPECT_EQ(stage.Words(), test::PhotoWords(301));
}

}  // namespace
}  // namespace ostrel
