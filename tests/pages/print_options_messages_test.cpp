// The print options page's messages that are no control's: help, apply and reset, the sheet that
// may not be changed, and the old warning.
#include "pages/options_stage.h"
#include "support/byte_record.h"

#include <cstring>

namespace ostrel {
namespace {

using test::OptionsStage;

// ---- Help ---------------------------------------------------------------------------------------

struct HelpCase {
  std::int32_t control;
  std::uint32_t topic;  // 0 for none
};
// clang-format off
constexpr HelpCase kHelpCases[] = {
    {1009, 3091}, {1181, 3091}, {1182, 3091},
    {1240, 1109}, {1125, 1109}, {1241, 1109}, {1414, 1109},
    {1019, 1154}, {1008, 1154}, {1394, 1154},
    {1242, 1155}, {1243, 1155}, {1422, 1155},
    {1064, 2001},
    {1020, 0}, {1393, 0}, {1496, 0}, {1447, 0}, {1176, 0}, {1018, 0}, {-1, 0}, {0, 0},
};
// clang-format on

class OptionsHelp : public testing::TestWithParam<HelpCase> {};

INSTANTIATE_TEST_SUITE_P(Controls, OptionsHelp, testing::ValuesIn(kHelpCases), [](const auto& row) {
  const int control = row.param.control;
  return control < 0 ? std::string("NoControl") : "Control" + std::to_string(control);
});

TEST_P(OptionsHelp, OpensAtTheControlsTopic) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.AskHelp(GetParam().control);
  const auto& help = stage.world().platform.shell.help;
  ASSERT_EQ(help.size(), GetParam().topic == 0 ? 0U : 1U);
  if (GetParam().topic != 0) {
    EXPECT_EQ(help[0].window, stage.page());
    EXPECT_EQ(help[0].command, 15U);  // HH_HELP_CONTEXT
    EXPECT_EQ(help[0].data, GetParam().topic);
    EXPECT_NE(help[0].file.find(u"ostrelPCL6uienus.chm"), std::u16string::npos);
  }
}

TEST(OptionsHelpKey, OfAControlReachesThePage) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().PressHelp(1064));
  ASSERT_EQ(stage.world().platform.shell.help.size(), 1U);
  EXPECT_EQ(stage.world().platform.shell.help[0].data, 2001U);
}

TEST(OptionsHelpButton, OpensThePagesTopicAndChangesNothing) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_EQ(stage.NotifyProcedure(kPsnHelp), 1);
  EXPECT_TRUE(stage.sheet->PressHelp());
  const auto& help = stage.world().platform.shell.help;
  ASSERT_EQ(help.size(), 2U);
  EXPECT_EQ(help[1].data, 500U);
  EXPECT_EQ(help[1].command, 15U);
  EXPECT_TRUE(stage.changes.empty());
}

// ---- Apply and reset ----------------------------------------------------------------------------

TEST(OptionsApply, HandsTheRecordOutAndLeavesThePage) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_TRUE(stage.sheet->PressApply());
  EXPECT_EQ(stage.scene.out.privateDevmode.FinessMode, 1);
  EXPECT_EQ(stage.context().applied, 1U);
  EXPECT_FALSE(stage.sheet->CanApply());
  EXPECT_EQ(std::ranges::count(stage.sheet->log, "unchanged 111"), 1);
  EXPECT_TRUE(stage.user().Checked(1422));
}

TEST(OptionsApply, DuplexOfAnotherKindGoesToThePrivateWord) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.shared().dmDuplex = 5;
  stage.Notify(kPsnApply);
  EXPECT_EQ(stage.own().Duplex, 5);
}

TEST(OptionsReset, ForgetsWhatWasApplied) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_TRUE(stage.sheet->PressApply());
  ASSERT_EQ(stage.context().applied, 1U);
  stage.Notify(kPsnReset);
  EXPECT_EQ(stage.context().applied, 0U);
}

TEST(OptionsCancel, LeavesTheCallersRecordUntouched) {
  OptionsStage stage;
  const auto before = test::BytesOf(stage.scene.out);
  ASSERT_TRUE(stage.Open());
  EXPECT_TRUE(stage.user().Click(1422));
  EXPECT_TRUE(stage.user().Click(1125));
  EXPECT_TRUE(stage.sheet->PressCancel());
  EXPECT_EQ(test::Difference(test::BytesOf(stage.scene.out), before), "");
}

// ---- A sheet that may not be changed ------------------------------------------------------------

constexpr std::int32_t kReadOnlyControls[] = {1181, 1018, 1008, 1400, 1028, 1255, 1404, 1009, 1064};

void AddOldControls(OptionsStage& stage) {
  for (const std::int32_t id : {1181, 1400, 1028, 1255, 1404, 1009}) {
    stage.AddControl(id, u"static", 0);
  }
  stage.AddControl(1182, u"static", headless::kStyleDisabled);
}

TEST(OptionsReadOnly, LocksNineControlsAndFreesOne) {
  OptionsStage stage;
  AddOldControls(stage);
  stage.scene.document.fMode |= kDmNoPermission;
  ASSERT_TRUE(stage.Open());
  for (const std::int32_t id : kReadOnlyControls) {
    EXPECT_FALSE(stage.user().Enabled(id)) << id;
  }
  EXPECT_TRUE(stage.user().Enabled(1182));
  for (const std::int32_t id : {1019, 1020, 1240, 1125, 1241, 1242, 1243, 1393, 1394, 1422, 1496}) {
    EXPECT_TRUE(stage.user().Enabled(id)) << id;
  }
}

// Each time: a reload frees collation, and the next showing locks it again.
TEST(OptionsReadOnly, LocksEachTimeThePageIsShown) {
  OptionsStage stage;
  stage.scene.document.fMode |= kDmNoPermission;
  ASSERT_TRUE(stage.Open());
  stage.ShowAgain();
  EXPECT_TRUE(stage.user().Enabled(1008));
  EXPECT_FALSE(stage.user().Enabled(1064));
  for (const std::uintptr_t shown : {std::uintptr_t{1}, std::uintptr_t{0}}) {
    stage.windows().EnableWindow(stage.Item(1008), true);
    stage.Send(kWmShowWindow, shown);
    EXPECT_FALSE(stage.user().Enabled(1008)) << shown;
  }
}

TEST(OptionsReadOnly, SheetThatMayBeChangedIsLeftAsItIs) {
  OptionsStage stage;
  AddOldControls(stage);
  ASSERT_TRUE(stage.Open());
  for (const std::int32_t id : kReadOnlyControls) {
    EXPECT_TRUE(stage.user().Enabled(id)) << id;
  }
  EXPECT_FALSE(stage.user().Enabled(1182));
}

// ---- The old warning ----------------------------------------------------------------------------

struct WarningCase {
  const char* name;
  std::uintptr_t code;
  const char16_t* base;     // string 2005
  const char16_t* piece;    // string 3002 or 3006
  const char16_t* country;  // LOCALE_ICOUNTRY
  const char16_t* text;     // shown; null for no box
};
void PrintTo(const WarningCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const WarningCase kWarningCases[] = {
    {"CodeZero", 0, u"a", u"P", u"49", nullptr},
    {"CodeOne", 1, u"a", u"P", u"49", nullptr},
    {"CodeTwo", 2, u"a", u"P", u"49", nullptr},
    {"CodeSeven", 7, u"a", u"P", u"49", nullptr},
    {"CodeHuge", 0x100000003, u"a", u"P", u"49", nullptr},
    {"MetricPaper", 3, u"x", u"y", u"49", u"x A4 (210 x 297mm"},
    {"LetterPaper", 3, u"x", u"y", u"1", u"xLetter (8.5 x 11"},
    // Each piece has its own length as the room of all that stands then, so the end of the paper's
    // name shows under no text.
    {"PieceIsCutByTheBase", 3, u"ab", u"12345", u"49", u"ab123 A4 (210 x 2"},
    {"PieceOfTheBasesLengthAddsNothing", 3, u"abcde", u"12345", u"49", u"abcde A4 (210 x 2"},
    {"PieceShorterThanTheBaseIsLeftOut", 3, u"abcdef", u"12345", u"49", u"abcdef A4 (210 x "},
    {"LongBaseLeavesAllOut", 3, u"These settings can't be used together.", u"\nPaper: ", u"49",
     u"These settings can't be used together."},
    {"MediaBreaks", 4, u"a", u"Media type", u"49", u"a\r\nMedia tPlain paper of"},
    {"FiveIsLikeFour", 5, u"a", u"Media type", u"49", u"a\r\nMedia tPlain paper of"},
    {"BreakAfterOneLetter", 6, u"a", u"P", u"49", u"a\r\n"},
    {"BreakIsCut", 6, u"ab", u"P", u"49", u"ab\r"},
    {"BreakIsLeftOut", 6, u"abcd", u"P", u"49", u"abcd"},
};
// clang-format on

class OptionsOldWarning : public testing::TestWithParam<WarningCase> {};

INSTANTIATE_TEST_SUITE_P(Codes, OptionsOldWarning, testing::ValuesIn(kWarningCases),
                         test::CaseName());

TEST_P(OptionsOldWarning, ShowsItsPiecesWithinTheirOwnLengths) {
  OptionsStage stage;
  stage.language.strings[2005] = GetParam().base;
  stage.language.strings[3002] = GetParam().piece;
  stage.language.strings[3006] = GetParam().piece;
  stage.language.strings[127] = u"Plain paper of all kinds";
  stage.world().platform.locale.country = GetParam().country;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode before = stage.context().devmode;
  stage.Send(0x500, GetParam().code);
  ASSERT_EQ(stage.boxes().size(), GetParam().text == nullptr ? 0U : 1U);
  if (GetParam().text != nullptr) {
    const auto& box = stage.boxes()[0];
    EXPECT_EQ(box.text, GetParam().text);
    EXPECT_EQ(box.caption, OptionsStage::Text(2000));
    EXPECT_EQ(box.style, 48U);
    EXPECT_EQ(box.owner, stage.page());
  }
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
  EXPECT_TRUE(stage.changes.empty());
}

struct CountryCase {
  const char16_t* country;
  bool letter;
};

class OptionsWarningCountry : public testing::TestWithParam<CountryCase> {};

INSTANTIATE_TEST_SUITE_P(Codes, OptionsWarningCountry,
                         testing::Values(CountryCase{u"0", false}, CountryCase{u"1", true},
                                         CountryCase{u"2", true}, CountryCase{u"3", false},
                                         CountryCase{u"49", false}, CountryCase{u"50", true},
                                         CountryCase{u"59", true}, CountryCase{u"60", false},
                                         CountryCase{u"499", false}, CountryCase{u"500", true},
                                         CountryCase{u"599", true}, CountryCase{u"600", false}),
                         [](const auto& row) {
                           const std::u16string code = row.param.country;
                           return "Country" + std::string(code.begin(), code.end());
                         });

TEST_P(OptionsWarningCountry, DecidesThePapersName) {
  OptionsStage stage;
  stage.language.strings[2005] = u"x";
  stage.language.strings[3002] = u"y";
  stage.world().platform.locale.country = GetParam().country;
  ASSERT_TRUE(stage.Open());
  stage.Send(0x500, 3);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, GetParam().letter ? u"xLetter (8.5 x 11" : u"x A4 (210 x 297mm");
}

struct MediaTextCase {
  std::uint32_t media;
  std::uint32_t text;  // 0 for none
};

class OptionsWarningMedia : public testing::TestWithParam<MediaTextCase> {};

INSTANTIATE_TEST_SUITE_P(Types, OptionsWarningMedia,
                         testing::Values(MediaTextCase{1, 127}, MediaTextCase{257, 388},
                                         MediaTextCase{258, 139}, MediaTextCase{259, 4075},
                                         MediaTextCase{263, 334}, MediaTextCase{2, 4076},
                                         MediaTextCase{264, 5099}, MediaTextCase{265, 6541},
                                         MediaTextCase{261, 6542}, MediaTextCase{266, 0}),
                         [](const auto& row) { return "Media" + std::to_string(row.param.media); });

TEST_P(OptionsWarningMedia, NamesTheMediaInForce) {
  OptionsStage stage;
  stage.language.strings[2005] = u"a";
  stage.language.strings[3006] = u"P";
  if (GetParam().text != 0) {
    stage.language.strings[GetParam().text] = u"a media type's name";
  }
  ASSERT_TRUE(stage.Open());
  stage.shared().dmMediaType = GetParam().media;
  stage.Send(0x500, 4);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].text, GetParam().text == 0 ? u"a\r\n" : u"a\r\na media type's n");
}

TEST(OptionsWarningBox, ReadsFromRightToLeftWhereTheLanguageDoes) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.world().process.RightToLeftLanguage = true;
  stage.Send(0x500, 6);
  ASSERT_EQ(stage.boxes().size(), 1U);
  EXPECT_EQ(stage.boxes()[0].style, 48U | 0x180000U);
}

// ---- Messages that mean nothing here ------------------------------------------------------------

TEST(OptionsPage, TakesMessagesWithoutTheirStructures) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  const DriverDevmode before = stage.context().devmode;
  for (const std::uint32_t message : {kWmNotify, kWmDrawItem, kWmMeasureItem, kWmHelp}) {
    EXPECT_EQ(stage.CallProcedure(message, 0, 0), 0) << message;
  }
  NotifyHeader unknown = {nullptr, 0, 0xFFFFFFFE};
  EXPECT_EQ(stage.CallProcedure(kWmNotify, 0, reinterpret_cast<std::intptr_t>(&unknown)), 0);
  EXPECT_EQ(stage.CallProcedure(kWmUser + 257, 3, 0), 0);
  EXPECT_EQ(std::memcmp(&before, &stage.context().devmode, sizeof(before)), 0);
}

TEST(OptionsPage, WithoutAContextDoesNothing) {
  OptionsStage stage;
  ASSERT_TRUE(stage.Open());
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData, 0);
  constexpr std::uint32_t kMessages[] = {kWmCommand, kWmMouseMove, kWmShowWindow, 0x500};
  for (const std::uint32_t message : kMessages) {
    EXPECT_EQ(stage.CallProcedure(message, 1422, 0), 0) << message;
  }
  EXPECT_EQ(stage.own().FinessMode, 0);
  EXPECT_TRUE(stage.boxes().empty());
  stage.windows().SetWindowLongPtrW(stage.page(), kGwlpUserData,
                                    reinterpret_cast<std::intptr_t>(&stage.context()));
}

}  // namespace
}  // namespace ostrel
