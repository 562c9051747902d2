// What a user does to the name, the size and the unit of a paper, without saving it.
#include "pages/custom_paper_stage.h"
#include "pages/name_cleaning.h"

namespace ostrel {
namespace {

// Two papers, the first of which is in force.
struct TypingStage : CustomPaperStage {
  TypingStage() {
    Put({Card(u"Card"), Photo(u"Photo", 289)});
    SetWords(test::CardWords(288));
  }
  bool CanSave() { return user().Enabled(kSave); }
  bool CanDelete() { return user().Enabled(kDelete); }
};

// ---- Names --------------------------------------------------------------------------------------

struct TypedNameCase {
  const char* name;
  const char16_t* typed;
  const char16_t* shown;
  bool canSave;
  bool canDelete;
};

class TypedName : public testing::TestWithParam<TypedNameCase> {};

INSTANTIATE_TEST_SUITE_P(
    Names, TypedName,
    testing::Values(TypedNameCase{"New", u"Poster", u"Poster", true, false},
                    TypedNameCase{"Stored", u"Photo", u"Photo", true, false},
                    TypedNameCase{"Empty", u"", u"", false, false},
                    TypedNameCase{"OfBlanks", u"   ", u"   ", false, false},
                    TypedNameCase{"WithBlanksAround", u"  Poster ", u"  Poster ", true, false},
                    TypedNameCase{"Untitled", u"Untitled", u"Untitled", false, true},
                    TypedNameCase{"UntitledWithBlanks", u" Untitled ", u" Untitled ", false, true},
                    TypedNameCase{"OfAFixedPaper", u"A4", u"A4", false, false},
                    TypedNameCase{"OfAFixedPaperWithBlanks", u" A4 ", u" A4 ", false, false},
                    TypedNameCase{"WithARefusedUnit", u"Po.ster", u"Poster", true, false},
                    TypedNameCase{"WithNothingElse", u"<>()", u"", false, false},
                    TypedNameCase{"ThatBecomesAFixedPapers", u"A.4", u"A4", false, false},
                    TypedNameCase{"ThatBecomesBlank", u"< >", u" ", false, false},
                    TypedNameCase{"ThatBecomesUntitled", u"Un*titled", u"Untitled", false, true}),
    test::CaseName());

// Pasted at once, so that each rule meets the whole name.
TEST_P(TypedName, DecidesWhatCanBeDone) {
  const TypedNameCase& row = GetParam();
  TypingStage stage;
  stage.Show([&] {
    ASSERT_TRUE(stage.CanDelete());
    ASSERT_FALSE(stage.CanSave());
    EXPECT_TRUE(stage.user().Paste(kNameBox, row.typed));
    EXPECT_EQ(stage.Text(kNameBox), row.shown);
    EXPECT_EQ(stage.CanSave(), row.canSave);
    EXPECT_EQ(stage.CanDelete(), row.canDelete);
    // Once more behind a name that can be saved, and that can't be deleted.
    EXPECT_TRUE(stage.user().Paste(kNameBox, u"Sheet"));
    ASSERT_TRUE(stage.CanSave());
    ASSERT_FALSE(stage.CanDelete());
    EXPECT_TRUE(stage.user().Paste(kNameBox, row.typed));
    EXPECT_EQ(stage.CanSave(), row.canSave);
    EXPECT_FALSE(stage.CanDelete());
    EXPECT_EQ(stage.Text(kWidth), u"100.0");
  });
  EXPECT_EQ(stage.timesShown, 1);
  EXPECT_EQ(stage.Words(), test::CardWords(288));
}

TEST(TypedNames, EachRefusedCharacterVanishesAsItIsTyped) {
  for (const char16_t unit : kRefusedInNames) {
    TypingStage stage;
    stage.Show([&] {
      EXPECT_TRUE(stage.user().Type(kNameBox, std::u16string{u'a', unit, u'b'}));
      // The caret went behind the name, so that what follows came to its end.
      EXPECT_EQ(stage.Text(kNameBox), u"ab") << static_cast<int>(unit);
      EXPECT_TRUE(stage.CanSave());
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

TEST(TypedNames, BlanksMayStandInside) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"My poster"));
    EXPECT_EQ(stage.Text(kNameBox), u"My poster");
    EXPECT_TRUE(stage.CanSave());
  });
}

TEST(TypedNames, WithoutATextForItUntitledIsTheEnglishWord) {
  TypingStage stage;
  stage.language.strings.erase(5005);
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Paste(kNameBox, u"Untitled"));
    EXPECT_FALSE(stage.CanSave());
  });
}

TEST(TypedNames, InAnotherLanguageItsOwnWordIsTheUntitledOne) {
  TypingStage stage;
  stage.UseLanguage("de", true);
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Paste(kNameBox, u"Unbenannt"));
    EXPECT_FALSE(stage.CanSave());
    EXPECT_TRUE(stage.user().Paste(kNameBox, u"Untitled"));
    EXPECT_TRUE(stage.CanSave());
  });
}

TEST(TypedNames, OneThatCodePutsThereMeetsTheRulesWithTheNextChange) {
  TypingStage stage;
  stage.Show([&] {
    stage.SetText(kNameBox, u"a|b");
    stage.Command(kNameBox, kCbnEditChange);
    EXPECT_EQ(stage.Text(kNameBox), u"ab");
    EXPECT_TRUE(stage.CanSave());
  });
}

// ---- Choosing -----------------------------------------------------------------------------------

TEST(ChosenName, BringsItsSizeItsUnitAndItsPaper) {
  TypingStage stage;
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Photo", u"4.00", u"6.00", kInches, false, true}));
    EXPECT_EQ(stage.Text(1274), u"in");
    EXPECT_EQ(stage.Words(), test::PhotoWords(289));
    EXPECT_TRUE(stage.user().Choose(kNameBox, 0));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_EQ(stage.Words(), test::PhotoWords(289));
}

TEST(ChosenName, AnnouncesASizeOfItsOwn) {
  constexpr std::uint32_t kAnnounced = kDmPaperLength | kDmPaperWidth | kDmFormName;
  TypingStage stage;
  stage.shared().dmFields &= ~kAnnounced;
  stage.Show([&] {
    EXPECT_EQ(stage.shared().dmFields & kAnnounced, 0U);
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_EQ(stage.shared().dmFields & kAnnounced, kAnnounced);
  });
}

TEST(ChosenName, TakesTheNameFromTheListAndNotFromTheBox) {
  TypingStage stage;
  stage.Show([&] {
    stage.windows().Deliver(stage.user().Control(kNameBox), kCbSetCurSel, 1, 0);
    stage.SetText(kNameBox, u"Card");  // what the box showed before
    stage.windows().Deliver(stage.user().Control(kNameBox), kCbSetCurSel, 1, 0);
    stage.Command(kNameBox, kCbnSelChange);
    EXPECT_EQ(stage.Words(), test::PhotoWords(289));
  });
}

TEST(ChosenName, EndsAnUnfinishedChange) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"123"));
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Poster"));
    ASSERT_TRUE(stage.CanSave());
    ASSERT_FALSE(stage.CanDelete());
    EXPECT_TRUE(stage.user().Choose(kNameBox, 0));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
  });
}

TEST(ChosenName, OfARecordThatCantBeReadOnlyAllowsToDeleteIt) {
  CustomPaperStage stage;
  test::PutSettings(stage.world, test::SettingsTree{.papers = {test::StoredPaper(Card(u"Card")),
                                                               test::Record("Broken", "x")}}
                                     .Bytes());
  stage.SetWords(test::CardWords(288));
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Broken", u"100.0", u"150.0", kMillimeters, false, true}));
    EXPECT_EQ(stage.Words(), test::CardWords(288));
  });
  EXPECT_EQ(stage.timesShown, 1);
}

TEST(ChosenName, WithoutASelectedRowChangesNothing) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kNameBox, u"Poster"));
    stage.windows().Deliver(stage.user().Control(kNameBox), kCbSetCurSel,
                            static_cast<std::uintptr_t>(-1), 0);
    stage.Command(kNameBox, kCbnSelChange);
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_TRUE(stage.CanSave());
    EXPECT_FALSE(stage.CanDelete());
  });
}

// An id that no record can hold as one of the user's.
TEST(ChosenName, WithAnAbsurdIdOnlyAllowsToDeleteIt) {
  for (const std::uint32_t id : {9U, 287U, 32768U, 0x12345U, 0xFFFFFFFFU}) {
    CustomPaperStage stage;
    stage.Put({Photo(u"Absurd", id), Card(u"Card", 288)});
    stage.SetWords(test::CardWords(288));
    EXPECT_TRUE(stage.Show([&] {
      EXPECT_TRUE(stage.user().Choose(kNameBox, 0));
      EXPECT_EQ(stage.Seen(),
                (PaperSeen{u"Absurd", u"100.0", u"150.0", kMillimeters, false, true}));
      EXPECT_EQ(stage.Words(), test::CardWords(288));
      EXPECT_TRUE(stage.user().Click(kDelete));
      EXPECT_TRUE(stage.user().Click(kIdOk));
    })) << id;
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card", 288)}));
  }
}

TEST(ChosenName, WithAnAbsurdSizeSetsItAsItIsStored) {
  CustomPaperStage stage;
  stage.Put({PaperFacts{.name = u"Wide", .id = 288, .unit = 1, .width = 65535, .length = 0}});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Choose(kNameBox, 0));
    EXPECT_EQ(stage.Words(), (PaperWords{288, 27743, 0}));
    EXPECT_EQ(stage.Text(kWidth), u"216.0");
    EXPECT_EQ(stage.Text(kLength), u"148.0");
  });
}

// ---- Sizes --------------------------------------------------------------------------------------

struct TypedSizeCase {
  const char* name;
  const char16_t* typed;
  bool changes;          // the record, at once
  const char16_t* left;  // shown when the box was left
};

class TypedWidth : public testing::TestWithParam<TypedSizeCase> {};

// The record's width is 100.0 mm.
INSTANTIATE_TEST_SUITE_P(Texts, TypedWidth,
                         testing::Values(TypedSizeCase{"Another", u"120.5", true, u"120.5"},
                                         TypedSizeCase{"TheSame", u"100.0", false, u"100.0"},
                                         TypedSizeCase{"AStepMore", u"100.1", true, u"100.1"},
                                         TypedSizeCase{"AStepLess", u"99.9", true, u"99.9"},
                                         TypedSizeCase{"AtTheLeast", u"75.0", true, u"75.0"},
                                         TypedSizeCase{"BelowTheLeast", u"74.9", true, u"75.0"},
                                         TypedSizeCase{"Zero", u"0", true, u"75.0"},
                                         TypedSizeCase{"Negative", u"-90", true, u"75.0"},
                                         TypedSizeCase{"AtTheMost", u"216.0", true, u"216.0"},
                                         TypedSizeCase{"AboveTheMost", u"216.1", true, u"216.0"},
                                         TypedSizeCase{"FarAbove", u"999999", true, u"216.0"},
                                         TypedSizeCase{"WithBlanks", u" 120 ", true, u" 120 "},
                                         TypedSizeCase{"WithoutDigitsBehind", u"120.", true,
                                                       u"120."}),
                         test::CaseName());

TEST_P(TypedWidth, IsTakenAndPutRightWhenTheBoxIsLeft) {
  const TypedSizeCase& row = GetParam();
  for (const bool comma : {false, true}) {
    TypingStage stage;
    stage.UseLanguage("enus", comma);
    std::u16string typed = row.typed;
    std::u16string left = row.left;
    if (comma) {
      std::ranges::replace(typed, u'.', u',');
      std::ranges::replace(left, u'.', u',');
    }
    stage.Show([&] {
      EXPECT_TRUE(stage.user().Paste(kWidth, typed));
      EXPECT_EQ(stage.Text(kWidth), typed);
      EXPECT_EQ(stage.Text(kNameBox), row.changes ? u"Untitled" : u"Card");
      EXPECT_FALSE(stage.CanSave());
      EXPECT_EQ(stage.CanDelete(), !row.changes);
      EXPECT_TRUE(stage.user().MoveFocus(kLength));
      EXPECT_EQ(stage.Text(kWidth), left);
      EXPECT_EQ(stage.Text(kLength), comma ? u"150,0" : u"150.0");
      EXPECT_EQ(stage.Words(), test::CardWords(288));
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

TEST(TypedSize, OfTheLengthHasItsOwnLimits) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kLength, u"147.9"));
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
    EXPECT_TRUE(stage.user().MoveFocus(kWidth));
    EXPECT_EQ(stage.Text(kLength), u"148.0");
    EXPECT_TRUE(stage.user().Type(kLength, u"356.1"));
    EXPECT_TRUE(stage.user().MoveFocus(kWidth));
    EXPECT_EQ(stage.Text(kLength), u"356.0");
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_EQ(stage.Text(kLength), u"14.00");
    EXPECT_TRUE(stage.user().Type(kLength, u"5.82"));
    EXPECT_TRUE(stage.user().MoveFocus(kWidth));
    EXPECT_EQ(stage.Text(kLength), u"5.83");
    EXPECT_TRUE(stage.user().Type(kLength, u"14.00"));
    EXPECT_TRUE(stage.user().MoveFocus(kWidth));
    EXPECT_EQ(stage.Text(kLength), u"14.00");
  });
}

TEST(TypedSize, OfMoreThanFourteenInchesOfLengthNeverShows) {
  for (const bool comma : {false, true}) {
    for (const std::u16string point : {u"14.01", u"14.001", u"15", u"999999", u" 20 "}) {
      TypingStage stage;
      stage.UseLanguage("enus", comma);
      const auto local = [&](std::u16string text) {
        std::ranges::replace(text, comma ? u'.' : u',', comma ? u',' : u'.');
        return text;
      };
      stage.Show([&] {
        EXPECT_TRUE(stage.user().Click(kInches));
        EXPECT_TRUE(stage.user().MoveFocus(kLength));
        EXPECT_TRUE(stage.user().Paste(kLength, local(point)));
        EXPECT_EQ(stage.Text(kLength), local(u"14.00"));
        EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
        EXPECT_EQ(stage.user().Selection(kLength), (std::pair<std::size_t, std::size_t>{5, 5}));
        stage.SetText(kLength, local(u"6.00"));
        stage.SetText(kLength, local(point));
        EXPECT_EQ(stage.Text(kLength), local(u"14.00"));
        stage.SaveAs(u"Long");
      });
      EXPECT_EQ(stage.timesShown, 1);
      CustomPaperRecord saved = {};
      ASSERT_TRUE(CustomPaperStore().Read(u"Long", saved));
      EXPECT_EQ(saved.Length, 8400);
    }
  }
}

// A length of 14 inches that is typed too high is still the same.
TEST(TypedSize, AboveFourteenInchesAtFourteenCountsAsUnchanged) {
  CustomPaperStage stage;
  stage.Put({PaperFacts{u"Tall", 288, 2, 5100, 8400, 5100.0F, 8400.0F}});
  stage.SetWords({288, 1, 2});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Paste(kLength, u"14.01"));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Tall", u"8.50", u"14.00", kInches, false, true}));
  });
}

TEST(TypedSize, OtherwiseAboveTheMostStandsUntilTheBoxIsLeft) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Paste(kLength, u"356.1"));
    EXPECT_EQ(stage.Text(kLength), u"356.1");
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_TRUE(stage.user().Paste(kWidth, u"15"));
    EXPECT_EQ(stage.Text(kWidth), u"15");
    EXPECT_TRUE(stage.user().MoveFocus(kNameBox));
    EXPECT_EQ(stage.Text(kWidth), u"8.50");
    // What was shown is what was taken.
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Text(kWidth), u"215.9");
  });
}

struct LeftCase {
  const char* name;
  bool inches;
  std::int32_t box;
  const char16_t* text;
  const char16_t* least;
};

class LeftBox : public testing::TestWithParam<LeftCase> {};

INSTANTIATE_TEST_SUITE_P(Boxes, LeftBox,
                         testing::Values(LeftCase{"EmptyWidth", false, kWidth, u"", u"75.0"},
                                         LeftCase{"EmptyLength", false, kLength, u"", u"148.0"},
                                         LeftCase{"EmptyWidthInInches", true, kWidth, u"", u"2.95"},
                                         LeftCase{"EmptyLengthInInches", true, kLength, u"",
                                                  u"5.83"},
                                         LeftCase{"BlankWidth", false, kWidth, u"  ", u"75.0"}),
                         test::CaseName());

TEST_P(LeftBox, WithoutANumberTakesTheLeast) {
  TypingStage stage;
  stage.Show([&] {
    if (GetParam().inches) {
      EXPECT_TRUE(stage.user().Click(kInches));
    }
    EXPECT_TRUE(stage.user().Type(GetParam().box, GetParam().text));
    EXPECT_EQ(stage.Text(kNameBox), u"Card");  // nothing was taken yet
    EXPECT_TRUE(stage.user().MoveFocus(GetParam().box == kWidth ? kLength : kWidth));
    EXPECT_EQ(stage.Text(GetParam().box), GetParam().least);
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
    EXPECT_FALSE(stage.CanSave());
    EXPECT_FALSE(stage.CanDelete());
  });
  EXPECT_EQ(stage.timesShown, 1);
}

TEST(LeftBoxes, EmptiedAtTheLeastCountAsUnchanged) {
  CustomPaperStage stage;
  stage.Put({PaperFacts{u"Least", 288, 1, 1772, 3496, 1771.653564453125F, 3496.06298828125F}});
  stage.SetWords({288, 750, 1480});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u""));
    EXPECT_TRUE(stage.user().MoveFocus(kLength));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Least", u"75.0", u"148.0", kMillimeters, false, true}));
  });
}

// Texts that no key could type come back as the last good one.
TEST(PastedSize, ThatIsNoNumberComesBackAsTheLastGoodOne) {
  for (const char16_t* text : {u"abc", u"1 2", u"1..2", u"12x", u"1,2", u"٣"}) {
    TypingStage stage;
    stage.Show([&] {
      EXPECT_TRUE(stage.user().Paste(kWidth, text));
      EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
      stage.SetText(kWidth, text);
      EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

TEST(PastedSize, IsCutAtSixCharactersAndALongerOneThatCodePutsThereIsRefused) {
  TypingStage stage;
  stage.Show([&] {
    stage.SetText(kWidth, u"0000100");
    EXPECT_EQ(stage.Text(kWidth), u"100.0");
    EXPECT_TRUE(stage.user().Paste(kWidth, u"0000100"));
    EXPECT_EQ(stage.Text(kWidth), u"000010");
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
  });
}

TEST(PastedSize, InACommaLanguageAPointIsRefused) {
  TypingStage stage;
  stage.UseLanguage("de", true);
  stage.Show([&] {
    for (const char16_t* text : {u"120.5", u".5", u",5", u"1,2,3"}) {
      EXPECT_TRUE(stage.user().Paste(kWidth, text));
      EXPECT_EQ(stage.Text(kWidth), u"100,0");
    }
    EXPECT_TRUE(stage.user().Paste(kWidth, u"120,5"));
    EXPECT_EQ(stage.Text(kWidth), u"120,5");
    EXPECT_EQ(stage.Text(kNameBox), u"Unbenannt");
  });
}

// A number of too many digits can't stand, and isn't taken: its box keeps the focus.
TEST(TypedSize, OfTooManyDigitsHoldsTheFocus) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"120.55"));
    EXPECT_EQ(stage.Text(kWidth), u"120.55");
    static_cast<void>(stage.user().MoveFocus(kLength));
    EXPECT_EQ(stage.user().Focus(), kWidth);
    EXPECT_EQ(stage.Text(kWidth), u"120.55");
    EXPECT_TRUE(stage.user().Type(kWidth, u"120.5"));
    EXPECT_TRUE(stage.user().MoveFocus(kLength));
    EXPECT_EQ(stage.Text(kWidth), u"120.5");
  });
}

TEST(TypedSize, OfTooManyDigitsInBothBoxesEndsAllTheSame) {
  TypingStage stage;
  EXPECT_FALSE(stage.Show([&] {
    EXPECT_TRUE(stage.user().MoveFocus(kWidth));
    stage.SetText(kWidth, u"99.999");
    stage.SetText(kLength, u"199.99");
    static_cast<void>(stage.user().MoveFocus(kLength));
    static_cast<void>(stage.user().Click(kIdCancel));
  }));
  EXPECT_EQ(stage.timesShown, 1);
  EXPECT_EQ(stage.Words(), test::CardWords(288));
}

TEST(TypedSize, StartingWithThePointIsNotTaken) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Paste(kWidth, u".5"));
    EXPECT_EQ(stage.Text(kNameBox), u"Card");
    static_cast<void>(stage.user().MoveFocus(kLength));
    EXPECT_EQ(stage.user().Focus(), kWidth);
    EXPECT_EQ(stage.Text(kWidth), u"100.0");  // taken back
  });
}

// ---- Spins --------------------------------------------------------------------------------------

struct SpinCase {
  const char* name;
  bool inches;
  std::int32_t spin;
  std::int32_t box;
  const char16_t* from;
  const char16_t* up;
  const char16_t* down;
};

class SizeSpins : public testing::TestWithParam<SpinCase> {};

INSTANTIATE_TEST_SUITE_P(
    Spins, SizeSpins,
    testing::Values(
        SpinCase{"Width", false, kWidthSpin, kWidth, u"120.0", u"120.1", u"119.9"},
        SpinCase{"Length", false, kLengthSpin, kLength, u"200.0", u"200.1", u"199.9"},
        SpinCase{"WidthInInches", true, kWidthSpin, kWidth, u"4.10", u"4.11", u"4.09"},
        SpinCase{"LengthInInches", true, kLengthSpin, kLength, u"8.00", u"8.01", u"7.99"},
        SpinCase{"WidthAtTheLeast", false, kWidthSpin, kWidth, u"75.0", u"75.1", u"75.0"},
        SpinCase{"WidthAtTheMost", false, kWidthSpin, kWidth, u"216.0", u"216.0", u"215.9"},
        SpinCase{"LengthAtTheLeast", true, kLengthSpin, kLength, u"5.83", u"5.84", u"5.83"},
        SpinCase{"LengthAtTheMost", true, kLengthSpin, kLength, u"14.00", u"14.00", u"13.99"}),
    test::CaseName());

TEST_P(SizeSpins, StepByTheLastDigit) {
  const SpinCase& row = GetParam();
  for (const bool up : {true, false}) {
    TypingStage stage;
    stage.Show([&] {
      if (row.inches) {
        EXPECT_TRUE(stage.user().Click(kInches));
      }
      EXPECT_TRUE(stage.user().Type(row.box, row.from));
      // A name of its own again, which a step takes away.
      EXPECT_TRUE(stage.user().Type(kNameBox, u"Poster"));
      // The upper arrow tells a negative delta: this spin has no range of its own.
      NotifyUpDown step = {};
      step.hdr = {stage.user().Control(row.spin), static_cast<std::uintptr_t>(row.spin),
                  kUdnDeltaPos};
      step.iDelta = up ? -1 : 1;
      EXPECT_EQ(stage.windows().Deliver(stage.dialog(), kWmNotify, step.hdr.idFrom,
                                        reinterpret_cast<std::intptr_t>(&step)),
                0);
      const std::u16string expected = up ? row.up : row.down;
      EXPECT_EQ(stage.Text(row.box), expected);
      const bool moved = expected != row.from;
      EXPECT_EQ(stage.Text(kNameBox), moved ? u"Untitled" : u"Poster");
      EXPECT_EQ(stage.CanSave(), !moved);
      EXPECT_FALSE(stage.CanDelete());
    });
    EXPECT_EQ(stage.timesShown, 1);
  }
}

// 76.6 mm are 3.0157 inches: cut to three digits 3.015, shown as 3.02. What counts is what is
// shown.
TEST(SizeSpin, StepsFromWhatTheBoxShows) {
  CustomPaperStage stage;
  PaperFacts slim = Card(u"Slim");
  slim.width = 1809;
  slim.exactWidth = 1809.44881F;
  stage.Put({slim});
  stage.SetWords({288, 766, 1500});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_EQ(stage.Text(kWidth), u"3.02");
    EXPECT_TRUE(stage.user().Paste(kWidth, u"3.020"));  // too many digits to be taken
    EXPECT_TRUE(stage.user().Paste(kWidth, u"3.02"));   // the same
    EXPECT_EQ(stage.Text(kNameBox), u"Slim");
    EXPECT_TRUE(stage.user().SpinDown(kWidthSpin));
    EXPECT_EQ(stage.Text(kWidth), u"3.01");
    EXPECT_EQ(stage.Text(kNameBox), u"Untitled");
    EXPECT_FALSE(stage.user().Enabled(kDelete));
    stage.SaveAs(u"Slimmer");
  });
  const PaperFacts slimmer = {u"Slimmer", 289, 2, 1806, 3543, 1806.0F, 3543.30712890625F};
  EXPECT_SETTINGS(stage.world, StoreOf({slim, slimmer}));
}

TEST(SizeSpin, OfTheUsersHandCountsUpWithTheUpperArrow) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().SpinUp(kWidthSpin));
    EXPECT_EQ(stage.Text(kWidth), u"100.1");
    EXPECT_TRUE(stage.user().SpinDown(kWidthSpin));
    EXPECT_TRUE(stage.user().SpinDown(kWidthSpin));
    EXPECT_EQ(stage.Text(kWidth), u"99.9");
    EXPECT_TRUE(stage.user().SpinUp(kLengthSpin));
    EXPECT_EQ(stage.Text(kLength), u"150.1");
  });
}

TEST(SizeSpin, WithACommaStepsAlike) {
  TypingStage stage;
  stage.UseLanguage("de", true);
  stage.Show([&] {
    EXPECT_TRUE(stage.user().SpinUp(kWidthSpin));
    EXPECT_EQ(stage.Text(kWidth), u"100,1");
    EXPECT_EQ(stage.Text(kNameBox), u"Unbenannt");
  });
}

TEST(SizeSpin, OtherNotificationsAreLeftAlone) {
  TypingStage stage;
  stage.Show([&] {
    NotifyUpDown step = {};
    step.hdr = {nullptr, 4711, kUdnDeltaPos};
    step.iDelta = -1;
    stage.windows().Deliver(stage.dialog(), kWmNotify, 0, reinterpret_cast<std::intptr_t>(&step));
    step.hdr = {nullptr, kWidthSpin, kPsnHelp};
    stage.windows().Deliver(stage.dialog(), kWmNotify, 0, reinterpret_cast<std::intptr_t>(&step));
    stage.windows().Deliver(stage.dialog(), kWmNotify, 0, 0);
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
  });
}

// ---- The unit -----------------------------------------------------------------------------------

TEST(PaperUnits, SwapWhatIsShownAndNothingElse) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    // 100 mm are 3.937 inches, 150 mm are 5.905.
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"3.94", u"5.91", kInches, false, true}));
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    const auto& paper = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->paper;
    EXPECT_EQ(paper.Width, 2362);
    EXPECT_EQ(paper.ExactWidth, 2362.204833984375F);
    EXPECT_EQ(paper.Unit, 1U);
  });
  EXPECT_EQ(stage.Words(), test::CardWords(288));
}

TEST(PaperUnits, TheOneInForceStaysWhenItIsClickedAgain) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"120"));
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Text(kWidth), u"120");  // not even shown anew
  });
}

TEST(PaperUnits, ALengthAboveFourteenInchesShowsAsFourteen) {
  CustomPaperStage stage;
  stage.Put({PaperFacts{u"Long", 288, 1, 5102, 8409, 5102.3623046875F, 8409.44921875F}});
  stage.SetWords({288, 1, 2});
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Long", u"8.50", u"14.00", kInches, false, true}));
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Long", u"216.0", u"356.0", kMillimeters, false, true}));
  });
}

TEST(PaperUnits, ATypedSizeGoesAlong) {
  TypingStage stage;
  stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"127"));
    EXPECT_TRUE(stage.user().Click(kInches));
    EXPECT_EQ(stage.Text(kWidth), u"5.00");
    EXPECT_TRUE(stage.user().Type(kWidth, u"6.00"));
    EXPECT_TRUE(stage.user().Click(kMillimeters));
    EXPECT_EQ(stage.Text(kWidth), u"152.4");
  });
}

}  // namespace
}  // namespace ostrel
