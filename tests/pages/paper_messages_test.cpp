// The paper page's messages that are no control's: tooltips, help, apply with the envelope program,
// pictures, and the sheet that may not be changed.
#include "pages/paper_stage.h"
#include "support/ini_file.h"

#include <cstring>

namespace ostrel {
namespace {

// ---- Tooltips -----------------------------------------------------------------------------------

TEST(MediaTip, NamesTheBookletOrTwoSidedPrinting) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.duplex = 3}));
  EXPECT_EQ(stage.AskTip(1446), PaperStage::Text(5030));
  stage.own().BookletPrint = 1;
  EXPECT_EQ(stage.AskTip(1446), PaperStage::Text(196));
  stage.own().BookletPrint = 2;
  EXPECT_EQ(stage.AskTip(1446), PaperStage::Text(5030));
  EXPECT_EQ(stage.user().HoverTip(1446), PaperStage::Text(5030));
}

// It is this page's own radio of the short edge that is asked.
TEST(MediaTip, StaysAwayWhileA5IsFedByItsLongEdge) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 11, .feed = 2}));
  EXPECT_EQ(stage.AskTip(1446), u"");
  EXPECT_TRUE(stage.user().Click(1240));
  EXPECT_EQ(stage.AskTip(1446), PaperStage::Text(5030));
}

struct SourceTipCase {
  std::uint32_t media;
  bool withTrays, fixed;  // whether the media is a reason in these families
};
constexpr SourceTipCase kSourceTips[] = {
    {1, false, false}, {264, false, false}, {257, false, true}, {6, false, true},
    {2, true, true},   {258, true, true},   {259, true, true},  {263, true, true},
    {265, true, true}, {261, true, true},   {3, true, true},    {266, true, true},
};

class SourceTip : public testing::TestWithParam<FamilyModel> {};
INSTANTIATE_TEST_SUITE_P(Families, SourceTip, testing::ValuesIn(test::kFamilyModels),
                         [](const auto& row) {
                           return "Family" + std::to_string(row.param.family);
                         });

TEST_P(SourceTip, NamesThePaperAndTheMedia) {
  PaperStage stage(GetParam().model);
  ASSERT_TRUE(stage.OpenWith({}));
  for (const SourceTipCase& row : kSourceTips) {
    const bool media = GetParam().hasTrays ? row.withTrays : row.fixed;
    const std::u16string reason = media ? PaperStage::Text(5033) : u"";
    for (const test::ListedPaper& paper : test::kListedPapers) {
      const bool envelope =
          std::ranges::find(test::kEnvelopes, paper.id) != std::end(test::kEnvelopes);
      stage.shared().dmMediaType = row.media;
      stage.shared().dmPaperSize = paper.id;
      const std::u16string both =
          PaperStage::Text(5050) + (media ? PaperStage::Text(408) + reason : u"");
      EXPECT_EQ(stage.AskTip(1450), envelope ? both : reason) << paper.id << " " << row.media;
    }
  }
}

TEST(SourceTipText, ComesUpOverTheIconThatIsShown) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 37, .media = 258}));
  EXPECT_EQ(stage.user().HoverTip(1450),
            PaperStage::Text(5050) + PaperStage::Text(408) + PaperStage::Text(5033));
  EXPECT_EQ(stage.user().HoverTip(1446), u"");  // hidden
}

TEST(SourceTipText, LongTextsEndBeforeTheBuffer) {
  PaperStage stage;
  for (const std::uint32_t id : {5050U, 5033U, 408U}) {
    stage.language.strings[id] = std::u16string(2000, u'x');
  }
  ASSERT_TRUE(stage.OpenWith({.paper = 37, .media = 258}));
  const std::u16string text = stage.AskTip(1450);
  EXPECT_GT(text.size(), 500U);
  EXPECT_LT(text.size(), kTooltipReasonUnits);
}

TEST(FeedTip, IsThereForAnyPaperButA5) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  for (const test::ListedPaper& paper : test::kListedPapers) {
    stage.shared().dmPaperSize = paper.id;
    EXPECT_EQ(stage.AskTip(1449), paper.id == 11 ? u"" : PaperStage::Text(2069)) << paper.id;
  }
}

TEST(PaperTip, AnyOtherToolGetsTheEmptyText) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({.paper = 37, .media = 258}));
  EXPECT_NE(stage.AskTip(1450), u"");
  for (const std::int32_t id : {1404, 1009, 1393, 1240, 1447, 1448, 9999}) {
    EXPECT_EQ(stage.AskTip(id), u"") << id;
  }
}

TEST(PaperTools, MouseMovementRefreshesAllThree) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  constexpr std::int32_t kIcons[] = {1446, 1450, 1449};
  std::vector<const std::vector<PaperStage::Sent>*> sent;
  for (std::size_t i = 0; i < std::size(kIcons); ++i) {
    const WindowHandle tooltip = stage.state().tooltips[i];
    ASSERT_NE(tooltip, nullptr);
    const headless::TooltipState& state = stage.windows().Find(tooltip)->tooltip;
    ASSERT_EQ(state.tools.size(), 1U);
    EXPECT_EQ(state.tools[0].id, reinterpret_cast<std::uintptr_t>(stage.Item(kIcons[i])));
    sent.push_back(&stage.Watch(tooltip));
  }
  stage.user().MoveMouse({1, 1});
  for (const auto* messages : sent) {
    ASSERT_EQ(messages->size(), 3U);
    EXPECT_EQ(messages->at(1).message, kTtmSetToolInfo);
  }
}

// ---- Help ---------------------------------------------------------------------------------------

TEST(PaperHelp, OpensAtTheControlsTopic) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.ExpectHelpTopics({{1404, 1157},
                          {1009, 1157},
                          {1407, 1157},
                          {1393, 1158},
                          {1240, 1158},
                          {1125, 1158},
                          {1064, 2002},
                          {1446, 0},
                          {1400, 0},
                          {-1, 0}});
}

TEST(PaperHelp, ButtonOpensThePagesTopic) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_EQ(stage.NotifyProcedure(kPsnHelp), 1);
  ASSERT_EQ(stage.world().platform.shell.help.size(), 1U);
  EXPECT_EQ(stage.world().platform.shell.help[0].data, 512U);
}

// ---- Apply and reset ----------------------------------------------------------------------------

TEST(PaperApply, HandsTheRecordOut) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_TRUE(stage.user().Choose(1404, 2));
  EXPECT_TRUE(stage.sheet->PressApply());
  EXPECT_EQ(stage.context().applied, 1U);
  EXPECT_EQ(stage.scene.out.publicDevmode.dmPaperSize, 5);
  EXPECT_TRUE(stage.sheet->PressOk());
}

TEST(PaperReset, ForgetsTheApply) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  stage.context().applied = 1;
  EXPECT_EQ(stage.NotifyProcedure(kPsnReset), 1);
  EXPECT_EQ(stage.context().applied, 0U);
}

class EnvelopeProgram : public testing::TestWithParam<FamilyModel> {};
INSTANTIATE_TEST_SUITE_P(Families, EnvelopeProgram, testing::ValuesIn(test::kFamilyModels),
                         [](const auto& row) {
                           return "Family" + std::to_string(row.param.family);
                         });

TEST_P(EnvelopeProgram, StartsForTwoFamiliesAndEnvelopes) {
  for (const std::uint32_t media : {1U, 258U, 259U, 2U}) {
    PaperStage stage(GetParam().model);
    test::PutConfig(stage.world(), "[Print]\r\nPrinterName=Ostrel Printer\r\n");
    ASSERT_TRUE(stage.OpenWith({.media = media}));
    EXPECT_EQ(stage.NotifyProcedure(kPsnApply), 1);
    EXPECT_EQ(stage.context().applied, 1U);
    const auto& system = stage.world().platform.system;
    const bool starts = (GetParam().family & 0x18) != 0 && media == 258;
    ASSERT_EQ(system.startedProcesses.size(), starts ? 1U : 0U) << media;
    if (starts) {
      EXPECT_EQ(system.startedProcesses[0].application,
                u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\ostrelPCL6EnvDlg.exe");
      EXPECT_EQ(system.startedProcesses[0].commandLine, u"Ostrel Printer");
      EXPECT_EQ(system.startedProcesses[0].windowTitle, u"ENV");
      EXPECT_EQ(system.startedProcesses[0].creationFlags, 32U);
    }
    EXPECT_EQ(system.liveProcessHandles(), starts ? 2U : 0U) << "they stay open";
  }
}

// The settings are taken over before the program is looked for.
TEST(EnvelopeProgramStart, ComesBehindTheApply) {
  PaperStage stage(u"Dogwood 1 Series");
  ASSERT_TRUE(stage.OpenWith({.media = 258}));
  ASSERT_EQ(stage.context().applied, 0U);
  std::size_t startedBefore = 99;
  headless::Window* window = stage.windows().Find(stage.sheet->window());
  window->answerer = [&, before = window->answerer](std::uint32_t message, std::uintptr_t wParam,
                                                    std::intptr_t lParam) {
    if (message == kPsmUnchanged) {
      startedBefore = stage.world().platform.system.startedProcesses.size();
    }
    return before(message, wParam, lParam);
  };
  EXPECT_EQ(stage.NotifyProcedure(kPsnApply), 1);
  EXPECT_EQ(startedBefore, 0U);
  EXPECT_EQ(stage.world().platform.system.startedProcesses.size(), 1U);
}

TEST(EnvelopeProgramStart, WithoutTheIniFileHasAnEmptyCommandLine) {
  PaperStage stage(u"Dogwood 1 Series");
  ASSERT_TRUE(stage.OpenWith({.media = 258}));
  EXPECT_TRUE(stage.sheet->PressOk());
  const auto& started = stage.world().platform.system.startedProcesses;
  ASSERT_EQ(started.size(), 1U);
  EXPECT_EQ(started[0].commandLine, u"");
}

// The settings are taken over whatever becomes of the program. A path that isn't known in full
// names no program.
TEST(EnvelopeProgramStart, FailureLeavesTheApplyAlone) {
  for (const auto& [operation, starts] :
       {std::pair{"CreateProcessW", false}, std::pair{"GetPrinterDriverDirectoryW", false},
        std::pair{"GetModuleFileNameW", false}, std::pair{"GetPrivateProfileStringW", true}}) {
    PaperStage stage(u"Elm 1 Series");
    ASSERT_TRUE(stage.OpenWith({.media = 258}));
    stage.world().platform.faults.FailOperation(operation);
    EXPECT_EQ(stage.NotifyProcedure(kPsnApply), 1) << operation;
    stage.world().platform.faults.Clear();
    EXPECT_EQ(stage.context().applied, 1U) << operation;
    EXPECT_EQ(stage.world().platform.system.startedProcesses.size(), starts ? 1U : 0U) << operation;
    EXPECT_EQ(stage.world().platform.system.liveProcessHandles(), starts ? 2U : 0U) << operation;
  }
}

TEST(EnvelopeProgramStart, PathThatDoesNotFitNamesNone) {
  PaperStage stage(u"Elm 1 Series");
  ASSERT_TRUE(stage.OpenWith({.media = 258}));
  stage.world().platform.print.driverDirectory = u"C:\\" + std::u16string(240, u'd');
  EXPECT_EQ(stage.NotifyProcedure(kPsnApply), 1);
  EXPECT_TRUE(stage.world().platform.system.startedProcesses.empty());
}

// ---- Pictures -----------------------------------------------------------------------------------

TEST(PaperPictures, StandInTheirControls) {
  constexpr std::pair<std::int32_t, std::uint32_t> kPictures[] = {
      {1318, 1079}, {1315, 1080}, {1387, 901}};
  PaperStage stage;
  auto bitmaps = *test::LibraryResources("ResBmp");
  const auto one = *bitmaps.bitmaps.begin();
  for (const auto& [control, bitmap] : kPictures) {
    bitmaps.bitmaps[bitmap] = one.second;
  }
  stage.world().platform.modules.InstallResources(
      test::kBitmapLibraryPath, std::make_shared<const headless::Resources>(bitmaps));
  ASSERT_TRUE(stage.OpenWith({}));
  for (const auto& [control, bitmap] : kPictures) {
    const auto drawn = stage.user().Draw(control);
    ASSERT_TRUE(drawn.has_value()) << control;
    ASSERT_EQ(drawn->size(), 1U) << control;
    EXPECT_EQ(drawn->at(0).bitmap, bitmap);
    EXPECT_EQ(drawn->at(0).transparentColor, 15660020U);
  }
  EXPECT_EQ(stage.graphics().liveBitmaps(), 0U);
  EXPECT_EQ(stage.graphics().liveContexts(), 0U);
}

TEST(PaperPictures, OtherItemsAreNotThePages) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  DrawItem item = {};
  item.CtlID = 1176;
  EXPECT_EQ(stage.CallProcedure(kWmDrawItem, 1176, reinterpret_cast<std::intptr_t>(&item)), 0);
  EXPECT_EQ(stage.CallProcedure(kWmDrawItem, 0, 0), 0);
}

// ---- The sheet that may not be changed ----------------------------------------------------------

TEST(PaperReadOnly, LocksDefaultsEachTimeThePageIsShown) {
  PaperStage stage;
  stage.scene.document.fMode |= 0x20;
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_FALSE(stage.user().Enabled(1064));
  stage.windows().EnableWindow(stage.Item(1064), true);
  stage.Send(kWmShowWindow, 1);
  EXPECT_FALSE(stage.user().Enabled(1064));
  for (const std::int32_t id : {1404, 1009, 1393, 1407}) {
    EXPECT_TRUE(stage.user().Enabled(id)) << id;
  }
}

TEST(PaperReadOnly, SheetWithPermissionKeepsDefaultsLive) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_TRUE(stage.user().Enabled(1064));
}

TEST(PaperMessages, WithoutAPointerDoNothing) {
  PaperStage stage;
  ASSERT_TRUE(stage.OpenWith({}));
  EXPECT_EQ(stage.CallProcedure(kWmNotify, 0, 0), 0);
  EXPECT_EQ(stage.CallProcedure(kWmHelp, 0, 0), 0);
  EXPECT_EQ(stage.CallProcedure(0x7777, 1, 2), 0);
}

}  // namespace
}  // namespace ostrel
