// What the driver does around a document's calls: which events it knows, the start of a document
// with its guard, and the stamp at the end of a page.
#include "job/document_events.h"

#include "job/job_stage.h"
#include "job/page_stamp.h"
#include "support/case_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

using test::Calls;
using test::InOrder;
using test::JobStage;
using test::kMonitorMissing;
using test::kPrinterAsked;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// Orders of calls that the tests put together.
const Calls kCompanionLoaded = {"GetPrinterDriverDirectoryA level 1",
                                "MultiByteToWideChar code page 0", "LoadLibraryW olunidrvui.dll"};
const Calls kCompanionTold = {"GetProcAddress OlDocumentEvent", "OlDocumentEvent"};
const Calls kComputerTold = {"GetComputerNameW", "escape 20498, 200 in, 0 out"};
const Calls kMonitorStarted = {"CharUpperW ostrel",   "FindWindowW",          kMonitorMissing,
                               "GetSystemDirectoryW", "SetCurrentDirectoryW", "ShellExecuteW",
                               "Sleep 500",           "FindWindowW"};
const Calls kStampAsked = {"GetDeviceCaps", "GetDeviceCaps", "escape 20481, 0 in, 1348 out",
                           "escape 20492, 0 in, 4 out", "escape 20485, 0 in, 4 out"};
const Calls kModelSelected = {"RegQueryValueExW PrinterName"};

// ---- The table of events ------------------------------------------------------------------------

struct EventCase {
  std::int32_t event;
  std::int32_t result;
  Calls story;
};

const EventCase kEvents[] = {
    {1, 1, {}},
    {5, 1,
     InOrder({kCompanionLoaded,
              kCompanionTold,
              kPrinterAsked,
              {"RegQueryValueExW InstallMode"},
              kComputerTold,
              kPrinterAsked,
              kMonitorStarted,
              {"FreeLibrary"}})},
    {6, 1, {"escape 20486, 0 in, 0 out"}},
    {7, 1, InOrder({kPrinterAsked, kStampAsked})},
    {13, 1, {}},
};

const EventCase& CaseOf(std::int32_t event) {
  static const EventCase kOther = {-1, 0, {}};
  const auto* row = std::ranges::find(kEvents, event, &EventCase::event);
  return row == std::end(kEvents) ? kOther : *row;
}

// All the events that the platform names, and the numbers around them. Only the low word counts.
TEST(DocumentEvents, AreHandledByTheirLowWord) {
  for (std::int32_t event = 0; event <= 20; ++event) {
    const EventCase& row = CaseOf(event);
    for (const std::uint32_t high : {0U, 0x00010000U, 0x00050000U, 0x7FFF0000U, 0xFFFF0000U}) {
      JobStage stage;
      EXPECT_EQ(stage.Raise(static_cast<std::int32_t>(high | static_cast<std::uint32_t>(event))),
                row.result)
          << event;
      EXPECT_EQ(stage.Story(), row.story) << event << " " << high;
    }
  }
}

TEST(DocumentEvents, BeyondAByteAreUnknown) {
  for (const std::int32_t event : {0x101, 0x105, 0x106, 0x107, 0x10D, 0x8005, 0xFFFF, 65536, -1}) {
    JobStage stage;
    EXPECT_EQ(stage.Raise(event), 0) << event;
    EXPECT_THAT(stage.Story(), IsEmpty()) << event;
  }
}

TEST(DocumentEvents, WithoutHandlesAndBuffersAreHandledAllTheSame) {
  for (std::int32_t event = 0; event <= 20; ++event) {
    JobStage stage;
    EXPECT_EQ(DrvDocumentEvent({nullptr, nullptr, event, 0xFFFFFFFF, nullptr, 0xFFFFFFFF, nullptr}),
              CaseOf(event).result)
        << event;
    EXPECT_THAT(stage.Escapes(), IsEmpty()) << event;
  }
}

// ---- The companion ------------------------------------------------------------------------------

TEST(StartDocCompanion, GetsAllSevenArgumentsAsTheyCame) {
  JobStage stage;
  int in = 0;
  int out = 0;
  const DocumentEvent event = {stage.printer, stage.hdc, 0x12340005, 17, &in, 4, &out};
  EXPECT_EQ(DrvDocumentEvent(event), 1);
  ASSERT_THAT(stage.companionCalls, SizeIs(1));
  EXPECT_EQ(stage.companionCalls[0], event);
}

TEST(StartDocCompanion, IsNotAskedForItsOpinion) {
  for (const std::int32_t answer : {0, 1, -1, 7}) {
    JobStage stage;
    stage.companionAnswer = answer;
    EXPECT_EQ(stage.StartDoc(), 1) << answer;
    EXPECT_EQ(stage.Story(), CaseOf(5).story) << answer;
  }
}

TEST(StartDocCompanion, HearsOfNoOtherEvent) {
  JobStage stage;
  for (std::int32_t event = 0; event <= 20; ++event) {
    if (event != 5) {
      stage.Raise(event);
    }
  }
  EXPECT_THAT(stage.companionCalls, IsEmpty());
  EXPECT_THAT(stage.recorder.paths, IsEmpty());
}

TEST(StartDocCompanion, WithoutTheFunctionChangesNothing) {
  JobStage stage;
  stage.world.platform.modules.Install(test::kCompanionPath);  // one without exports
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_EQ(stage.Story(), InOrder({kCompanionLoaded,
                                    {"GetProcAddress OlDocumentEvent"},
                                    kPrinterAsked,
                                    {"RegQueryValueExW InstallMode"},
                                    kComputerTold,
                                    kPrinterAsked,
                                    kMonitorStarted,
                                    {"FreeLibrary"}}));
}

TEST(StartDocCompanion, IsLoadedFromTheDriversFolder) {
  JobStage stage;
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_THAT(stage.recorder.paths,
              ElementsAre(u"C:\\windows\\system32\\spool\\drivers\\x64\\3\\olunidrvui.dll"));
  EXPECT_EQ(stage.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
}

// Its path comes back from the code page with the letters that went into it.
TEST(StartDocCompanion, IsLoadedFromAFolderOfTheCodePage) {
  JobStage stage;
  const std::u16string path = u"C:\\B\u00FCro\\3\\olunidrvui.dll";
  stage.world.platform.print.driverDirectory = u"C:\\B\u00FCro";
  stage.world.platform.modules.Install(path);
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_THAT(stage.recorder.paths, ElementsAre(path));
  EXPECT_THAT(stage.Escapes(), ElementsAre(20498));
}

// Without the companion the event ends at once, and the job goes on: a changed model too.
void ExpectNoStartSteps(JobStage& stage, const Calls& story) {
  stage.MakeModelChanged();
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_EQ(stage.Story(), story);
  EXPECT_THAT(stage.boxes(), IsEmpty());
  EXPECT_THAT(stage.Escapes(), IsEmpty());
}

TEST(StartDocWithoutCompanion, DoesNothing) {
  JobStage stage;
  stage.world.platform.modules.Remove(test::kCompanionPath);
  ExpectNoStartSteps(stage, kCompanionLoaded);
}

// The path is put together in 8-bit text: the folder is there, and can't be named.
TEST(StartDocWithoutCompanion, IsThatOfAFolderOutsideTheCodePage) {
  JobStage stage;
  const std::u16string folder = u"C:\\\u5370\u5237";
  stage.world.platform.print.driverDirectory = folder;
  stage.world.platform.modules.Install(folder + u"\\3\\olunidrvui.dll");
  ExpectNoStartSteps(stage, kCompanionLoaded);
  EXPECT_THAT(stage.recorder.paths, ElementsAre(u"C:\\??\\3\\olunidrvui.dll"));
}

TEST(StartDocWithoutCompanion, IsThatOfAnUnknownOrTooLongFolder) {
  const Calls asked(kCompanionLoaded.begin(), kCompanionLoaded.begin() + 1);
  const Calls widened(kCompanionLoaded.begin(), kCompanionLoaded.begin() + 2);
  {
    JobStage stage;
    stage.world.platform.faults.FailOperation("GetPrinterDriverDirectoryA");
    ExpectNoStartSteps(stage, asked);
  }
  {
    JobStage stage;
    stage.world.platform.print.driverDirectory.clear();
    ExpectNoStartSteps(stage, asked);
  }
  {
    JobStage stage;
    stage.world.platform.faults.FailOperation("MultiByteToWideChar");
    ExpectNoStartSteps(stage, widened);
  }
  // 260 bytes hold 242 of the folder, "\3", 15 of the name and the terminator.
  for (const auto& [bytes, loads] :
       {std::pair<std::size_t, bool>{242, true}, {243, false}, {259, false}, {300, false}}) {
    JobStage stage;
    const std::u16string folder = u"C:\\" + std::u16string(bytes - 3, u'd');
    stage.world.platform.print.driverDirectory = folder;
    stage.world.platform.modules.Install(folder + u"\\3\\olunidrvui.dll");
    EXPECT_EQ(stage.StartDoc(), 1);
    EXPECT_EQ(stage.recorder.paths.size(), loads ? 1U : 0U) << bytes;
    EXPECT_EQ(stage.Escapes().size(), loads ? 1U : 0U) << bytes;
  }
}

// ---- The guard ----------------------------------------------------------------------------------

struct GuardCase {
  const char* name;
  std::uint32_t installMode;
  std::u16string configured;
  std::u16string model;
  bool refuses;
};
void PrintTo(const GuardCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const GuardCase kGuardCases[] = {
    {"Changed",             1, u"Cedar 1 Series", u"Hazel 2 Series", true},
    {"OtherLetterCase",     1, u"Hazel 2 series", u"Hazel 2 Series", true},
    {"ModelGone",           1, u"Hazel 2 Series", u"",               true},
    {"LongerModel",         1, u"Hazel 2",        u"Hazel 2 Series", true},
    {"SameModel",           1, u"Hazel 2 Series", u"Hazel 2 Series", false},
    {"NothingWrittenDown",  1, u"",               u"Hazel 2 Series", false},
    {"NothingAtAll",        1, u"",               u"",               false},
    {"NotUniversal",        0, u"Cedar 1 Series", u"Hazel 2 Series", false},
    {"OtherInstallMode",    2, u"Cedar 1 Series", u"Hazel 2 Series", false},
};
// clang-format on

class UniversalGuard : public testing::TestWithParam<GuardCase> {
 protected:
  void Prepare() {
    stage_.MakeModelChanged();
    stage_.Store(u"installmode", GetParam().installMode);
    stage_.Store(u"configprintername", GetParam().configured);
    stage_.Store(u"printername", GetParam().model);
  }
  JobStage stage_;
};
INSTANTIATE_TEST_SUITE_P(Stores, UniversalGuard, testing::ValuesIn(kGuardCases), test::CaseName());

TEST_P(UniversalGuard, RefusesAJobWhoseModelHasChanged) {
  Prepare();
  EXPECT_EQ(stage_.StartDoc(), GetParam().refuses ? -1 : 1);
  EXPECT_EQ(stage_.boxes().size(), GetParam().refuses ? 1U : 0U);
  EXPECT_EQ(stage_.Escapes().size(), GetParam().refuses ? 0U : 1U);
  EXPECT_EQ(stage_.world.platform.shell.started.size(), GetParam().refuses ? 0U : 1U);
  EXPECT_EQ(stage_.world.platform.modules.loadsOf(test::kCompanionPath), 0U);
}

// By the model, in universal mode alone, refused or not.
TEST_P(UniversalGuard, SelectsTheFamilyFirst) {
  Prepare();
  stage_.world.process.ModelFlags = 0x10;
  stage_.StartDoc();
  const std::uint64_t family = GetParam().model.empty() ? 0x1 : 0x80;
  EXPECT_EQ(stage_.world.process.ModelFlags, GetParam().installMode == 1 ? family : 0x10U);
}

TEST(UniversalGuardOf, APrinterWithoutValuesRefusesNothing) {
  JobStage stage;
  EXPECT_EQ(stage.StartDoc(), 1);
  stage.Store(u"installmode", std::uint32_t{1});
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_THAT(stage.boxes(), IsEmpty());
}

TEST(UniversalGuardSteps, ComeInTheirOrder) {
  JobStage stage;
  stage.MakeModelChanged();
  EXPECT_EQ(stage.StartDoc(), -1);
  EXPECT_EQ(stage.Story(),
            InOrder({kCompanionLoaded,
                     kCompanionTold,
                     kPrinterAsked,
                     {"RegQueryValueExW InstallMode"},
                     kModelSelected,
                     {"RegQueryValueExW ConfigPrinterName", "RegQueryValueExW PrinterName",
                      "RegQueryValueExW RegTips", "RegQueryValueExW RegTips2",
                      "RegQueryValueExW ConfigPrintInfo", "MessageBoxW", "FreeLibrary"}}));
  EXPECT_EQ(stage.companionCalls.size(), 1U);
}

TEST(UniversalGuardBox, SaysTheUsersOwnWords) {
  JobStage stage;
  stage.MakeModelChanged();
  EXPECT_EQ(stage.StartDoc(), -1);
  ASSERT_THAT(stage.boxes(), SizeIs(1));
  EXPECT_EQ(stage.boxes()[0].owner, nullptr);
  EXPECT_EQ(stage.boxes()[0].text, u"Info.Second.Hazel 2 SeriesFirst.");
  EXPECT_EQ(stage.boxes()[0].caption, u"Hazel 2 Series");
  EXPECT_EQ(stage.boxes()[0].style, 48U);
}

TEST(UniversalGuardBox, FollowsTheLanguagesDirection) {
  JobStage stage;
  stage.MakeModelChanged();
  stage.world.process.RightToLeftLanguage = true;
  EXPECT_EQ(stage.StartDoc(), -1);
  ASSERT_THAT(stage.boxes(), SizeIs(1));
  EXPECT_EQ(stage.boxes()[0].style, 0x180030U);
}

TEST(UniversalGuardBox, MayLackAnyOfItsWords) {
  constexpr std::pair<const char16_t*, const char16_t*> kRest[] = {
      {u"configprintinfo", u"Second.Hazel 2 SeriesFirst."},
      {u"regtips2", u"Info.Hazel 2 SeriesFirst."},
      {u"regtips", u"Info.Second.Hazel 2 Series"},
      {u"printername", u"Info.Second.First."}};
  for (const auto& [missing, text] : kRest) {
    JobStage stage;
    stage.MakeModelChanged();
    stage.world.UserValues(test::kPrinterName).erase(missing);
    EXPECT_EQ(stage.StartDoc(), -1);
    ASSERT_THAT(stage.boxes(), SizeIs(1));
    EXPECT_EQ(stage.boxes()[0].text, text);
  }
}

// The four texts have 100, 100, 50 and 30 units; of 280, the buffer holds 259.
TEST(UniversalGuardBox, LosesWhatIsBeyondItsBuffer) {
  JobStage stage;
  stage.MakeModelChanged();
  stage.Store(u"configprintinfo", std::u16string(100, u'i'));
  stage.Store(u"regtips2", std::u16string(100, u's'));
  stage.Store(u"printername", std::u16string(50, u'm'));
  stage.Store(u"regtips", std::u16string(30, u'f'));
  EXPECT_EQ(stage.StartDoc(), -1);
  ASSERT_THAT(stage.boxes(), SizeIs(1));
  EXPECT_EQ(stage.boxes()[0].text, std::u16string(100, u'i') + std::u16string(100, u's') +
                                       std::u16string(50, u'm') + std::u16string(9, u'f'));
  EXPECT_EQ(stage.boxes()[0].caption, std::u16string(50, u'm'));
}

TEST(UniversalGuardBox, ThatCannotBeShownRefusesTheJobAllTheSame) {
  JobStage stage;
  stage.MakeModelChanged();
  stage.world.platform.faults.FailOperation("MessageBoxW");
  EXPECT_EQ(stage.StartDoc(), -1);
  EXPECT_THAT(stage.Escapes(), IsEmpty());
}

TEST(UniversalGuardBox, IsShownWhileTheCompanionIsStillLoaded) {
  JobStage stage;
  stage.MakeModelChanged();
  stage.world.platform.windows.onBox = [&](const auto& /*box*/) {
    EXPECT_EQ(stage.world.platform.modules.loadsOf(test::kCompanionPath), 1U);
  };
  EXPECT_EQ(stage.StartDoc(), -1);
  EXPECT_THAT(stage.boxes(), SizeIs(1));
}

// A printer that tells nothing is looked up under an empty name.
TEST(StartDocOfANamelessPrinter, ReadsTheStoreUnderAnEmptyName) {
  for (const bool hasHandle : {true, false}) {
    JobStage stage;
    stage.world.printer->describes = false;
    DocumentEvent event = stage.Event(5);
    event.hPrinter = hasHandle ? stage.printer : nullptr;
    EXPECT_EQ(DrvDocumentEvent(event), 1);
    EXPECT_THAT(stage.Escapes(), ElementsAre(20498));
    stage.MakeModelChanged(u"");
    EXPECT_EQ(DrvDocumentEvent(event), -1);
    EXPECT_THAT(stage.boxes(), SizeIs(1));
    EXPECT_THAT(stage.world.platform.shell.started, IsEmpty());
  }
}

TEST(StartDocOfALongName, ReadsTheStoreUnderItsFirst259Units) {
  JobStage stage;
  const std::u16string name(300, u'n');
  stage.world.printer->name = name;
  stage.MakeModelChanged(name.substr(0, 259));
  EXPECT_EQ(stage.StartDoc(), -1);
}

// ---- The computer's name ------------------------------------------------------------------------

const headless::DrawingOperation* ComputerNameEscape(const JobStage& stage) {
  const auto found = std::ranges::find_if(stage.device.operations, [](const auto& operation) {
    return operation.call == headless::DrawingCall::kExtEscape && operation.numbers.at(0) == 20498;
  });
  return found == stage.device.operations.end() ? nullptr : &*found;
}

std::vector<std::byte> TwoHundredBytes(std::u16string_view text) {
  std::vector<std::byte> bytes(200);
  for (std::size_t i = 0; i < text.size(); ++i) {
    bytes.at(2 * i) = static_cast<std::byte>(text[i] & 0xFF);
    bytes.at(2 * i + 1) = static_cast<std::byte>(text[i] >> 8);
  }
  return bytes;
}

TEST(ComputerName, GoesOutInTwoHundredBytesWithZerosBehindIt) {
  JobStage stage;
  stage.world.platform.system.computerName = u"B\u00DCRO-\u0416";
  EXPECT_EQ(stage.StartDoc(), 1);
  const headless::DrawingOperation* escape = ComputerNameEscape(stage);
  ASSERT_NE(escape, nullptr);
  EXPECT_EQ(escape->bytes, TwoHundredBytes(u"B\u00DCRO-\u0416"));
  EXPECT_EQ(escape->numbers.at(1), 0);  // nothing comes back
}

TEST(ComputerName, ThatIsTooLongForThemIsCut) {
  for (const std::size_t units : {std::size_t{99}, std::size_t{100}, std::size_t{199}}) {
    JobStage stage;
    stage.world.platform.system.computerName = std::u16string(units, u'c');
    EXPECT_EQ(stage.StartDoc(), 1);
    const headless::DrawingOperation* escape = ComputerNameEscape(stage);
    ASSERT_NE(escape, nullptr);
    EXPECT_EQ(escape->bytes,
              TwoHundredBytes(std::u16string(std::min(units, std::size_t{100}), u'c')));
  }
}

TEST(ComputerName, ThatCannotBeHadIsNotSent) {
  {
    JobStage stage;
    stage.world.platform.faults.FailOperation("GetComputerNameW");
    EXPECT_EQ(stage.StartDoc(), 1);
    EXPECT_THAT(stage.Escapes(), IsEmpty());
    EXPECT_THAT(stage.world.platform.shell.started, SizeIs(1));  // the rest goes on
  }
  JobStage stage;
  stage.world.platform.system.computerName = std::u16string(200, u'c');
  EXPECT_EQ(stage.StartDoc(), 1);
  EXPECT_THAT(stage.Escapes(), IsEmpty());
}

// ---- The status monitor -------------------------------------------------------------------------

TEST(StartDocMonitor, IsToldLastWhileTheCompanionIsStillLoaded) {
  JobStage stage;
  stage.OpenMonitor();
  stage.whileAsleep = [&] {
    EXPECT_EQ(stage.world.platform.modules.loadsOf(test::kCompanionPath), 1U);
  };
  EXPECT_EQ(stage.StartDoc(), 1);
  const Calls story = stage.Story();
  ASSERT_GT(story.size(), 3U);
  EXPECT_THAT(Calls(story.end() - 3, story.end()),
              ElementsAre("monitor gets 1044", "monitor gets 74", "FreeLibrary"));
}

TEST(StartDocMonitor, IsNotToldOfANullPrinter) {
  JobStage stage;
  stage.OpenMonitor();
  DocumentEvent event = stage.Event(5);
  event.hPrinter = nullptr;
  EXPECT_EQ(DrvDocumentEvent(event), 1);
  EXPECT_THAT(stage.Escapes(), ElementsAre(20498));
  EXPECT_THAT(stage.monitorMessages, IsEmpty());
  EXPECT_THAT(stage.Story(), Not(Contains("FindWindowW")));
}

// ---- The stamp ----------------------------------------------------------------------------------

struct StampCase {
  const char* name;
  std::int16_t index;
  std::int32_t forbidden;
  bool stamps;
};
void PrintTo(const StampCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
constexpr StampCase kStampCases[] = {
    {"None",              0,  0,          false},
    {"NoneAndForbidden",  0,  1,          false},
    {"First",             1,  0,          true},
    {"Last",              32, 0,          true},
    {"Negative",          -1, 0,          true},
    {"Forbidden",         1,  1,          false},
    {"ForbiddenByMinus",  1,  -1,         false},
    {"ForbiddenByHigh",   1,  0x01000000, false},
};
// clang-format on

class PageEnd : public testing::TestWithParam<StampCase> {};
INSTANTIATE_TEST_SUITE_P(Answers, PageEnd, testing::ValuesIn(kStampCases), test::CaseName());

TEST_P(PageEnd, IsStampedAsTheRenderDriverSays) {
  JobStage stage;
  stage.watermark.PageWMIndex = GetParam().index;
  stage.forbidden = GetParam().forbidden;
  EXPECT_EQ(stage.EndPage(), 1);
  const std::vector<std::int32_t> escapes = stage.Escapes();
  ASSERT_GE(escapes.size(), 3U);
  EXPECT_THAT(std::vector(escapes.begin(), escapes.begin() + 3), ElementsAre(20481, 20492, 20485));
  if (GetParam().stamps) {
    ASSERT_GE(escapes.size(), 5U);
    EXPECT_EQ(escapes[3], 20482);
    EXPECT_EQ(escapes.back(), 20484);
  } else {
    EXPECT_EQ(escapes.size(), 3U);
  }
}

TEST(PageEndQuestions, StartFromZeros) {
  JobStage stage;
  EXPECT_EQ(stage.EndPage(), 1);
  ASSERT_THAT(stage.outputsBefore, SizeIs(3));
  EXPECT_EQ(stage.outputsBefore[0], std::vector<std::byte>(1348));
  EXPECT_EQ(stage.outputsBefore[1], std::vector<std::byte>(4));
  EXPECT_EQ(stage.outputsBefore[2], std::vector<std::byte>(4));
}

TEST(PageEndQuestions, WithoutAnAnswerMeanNoStampOrAnAllowedOne) {
  for (const auto& [unknown, stamps] :
       {std::pair{20481, false}, std::pair{20492, true}, std::pair{20485, true}}) {
    JobStage stage;
    stage.watermark.PageWMIndex = 3;
    stage.forbidden = unknown == 20485 ? 1 : 0;
    stage.unknownEscapes = {unknown};
    EXPECT_EQ(stage.EndPage(), 1);
    EXPECT_EQ(stage.Escapes().size() > 3, stamps) << unknown;
  }
}

// No state of the job is kept: each page is asked for anew.
TEST(PageEndQuestions, AreAskedAtEachPage) {
  JobStage stage;
  stage.watermark.PageWMIndex = 1;
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_THAT(stage.Escapes(), Contains(20482));
  stage.device.operations.clear();
  stage.watermark.PageWMIndex = 0;
  EXPECT_EQ(stage.EndPage(), 1);
  EXPECT_THAT(stage.Escapes(), ElementsAre(20481, 20492, 20485));
}

TEST(PageEndQuestions, ArePutToANullContextInVain) {
  JobStage stage;
  stage.watermark.PageWMIndex = 1;
  DocumentEvent event = stage.Event(7);
  event.hdc = nullptr;
  EXPECT_EQ(DrvDocumentEvent(event), 1);
  EXPECT_THAT(stage.Escapes(), IsEmpty());
}

TEST(PageEndOfANamelessPrinter, IsStampedAllTheSame) {
  for (const bool hasHandle : {true, false}) {
    JobStage stage;
    stage.world.printer->describes = false;
    stage.watermark.PageWMIndex = 1;
    DocumentEvent event = stage.Event(7);
    event.hPrinter = hasHandle ? stage.printer : nullptr;
    EXPECT_EQ(DrvDocumentEvent(event), 1);
    EXPECT_THAT(stage.Escapes(), Contains(20484));
  }
}

// ---- What the stamp is given --------------------------------------------------------------------

TEST(PageEndStamp, IsThatOfTheRecordOnTheWholePage) {
  std::vector<std::vector<std::string>> stamps;
  for (const std::int32_t pageState : {0, 1}) {
    JobStage stage;
    stage.device.page = {3000, 5000};
    stage.watermark = test::RepeatedText();
    stage.pageState = pageState;
    stage.MakeLettersWide();
    EXPECT_EQ(stage.EndPage(), 1);
    stamps.push_back(stage.Stamp());

    stage.device.operations.clear();
    DrawPrintStamp(stage.hdc, {0, 0, 3000, 5000}, test::RepeatedText(), pageState, 1.0,
                   {3000, 5000});
    EXPECT_EQ(stamps.back(), stage.Operations()) << pageState;
  }
  EXPECT_NE(stamps[0], stamps[1]);
}

// ---- Failures -----------------------------------------------------------------------------------

struct Walked {
  const char* name;
  std::int32_t event;
  bool universal;
  bool monitorRuns;
};
void PrintTo(const Walked& row, std::ostream* out) {
  *out << row.name;
}

class JobFailures : public testing::TestWithParam<Walked> {};
INSTANTIATE_TEST_SUITE_P(Events, JobFailures,
                         testing::Values(Walked{"StartDoc", 5, false, false},
                                         Walked{"StartDocToMonitor", 5, false, true},
                                         Walked{"StartDocGuarded", 5, true, true},
                                         Walked{"StartPage", 6, false, false},
                                         Walked{"EndPage", 7, false, false}),
                         test::CaseName());

// Whatever call fails, the event is answered, nothing is left behind, and each stamp that begins
// ends.
TEST_P(JobFailures, LeaveNothingBehind) {
  constexpr std::size_t kMostCalls = 500;
  std::size_t n = 1;
  bool fired = true;
  for (; fired && n < kMostCalls; ++n) {
    JobStage stage;
    stage.watermark = test::RepeatedText();
    if (GetParam().universal) {
      stage.MakeModelChanged();
    }
    const WindowHandle monitor = GetParam().monitorRuns ? stage.OpenMonitor() : nullptr;
    stage.world.platform.faults.StartTrace();
    stage.world.platform.faults.FailCall(n);
    const std::int32_t result = stage.Raise(GetParam().event);
    fired = stage.world.platform.faults.fired();
    stage.world.platform.faults.Clear();
    EXPECT_TRUE(result == 1 || (GetParam().universal && result == -1)) << n;
    const std::vector<std::int32_t> escapes = stage.Escapes();
    if (!fired || stage.world.platform.faults.trace().at(n - 1) != "ExtEscape") {
      EXPECT_EQ(std::ranges::count(escapes, 20482), std::ranges::count(escapes, 20484)) << n;
    }
    stage.world.platform.windows.Destroy(monitor);
    stage.world.platform.graphics.DeleteDC(std::exchange(stage.hdc, nullptr));
    stage.world.platform.print.ClosePrinter(std::exchange(stage.printer, nullptr));
    EXPECT_EQ(stage.world.Leftovers(), "") << n;
  }
  EXPECT_FALSE(fired) << "no end of calls";
  EXPECT_GT(n, GetParam().event == 6 ? 1U : 5U);
}

}  // namespace
}  // namespace ostrel
