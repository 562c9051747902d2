// The programs beside the driver: what they are called, how the status monitor is told and started,
// and how the envelope helper is.
#include "job/status_monitor.h"

#include "core/text.h"
#include "job/job_stage.h"
#include "support/case_name.h"
#include "support/ini_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace ostrel {
namespace {

using headless::HeadlessShell;
using test::Calls;
using test::InOrder;
using test::JobStage;
using test::kMonitorMissing;
using test::kMonitorTold;
using test::kPrinterAsked;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char16_t kMonitorProgram[] = u"C:\\windows\\system32\\ostrelsm.exe";
constexpr std::nullopt_t kNoVerb = std::nullopt;
constexpr char16_t kFolder[] = u"C:\\windows\\system32\\spool\\drivers\\x64\\3";

// ---- Names --------------------------------------------------------------------------------------

struct NameCase {
  const char* name;
  std::u16string module;
  std::u16string className;
  std::u16string program;
  std::u16string helper;
};
void PrintTo(const NameCase& row, std::ostream* out) {
  *out << row.name;
}

const std::u16string kLong(124, u'p');
const std::u16string kLongCapitals(124, u'P');

// clang-format off
const NameCase kNames[] = {
    {"Ours",         u"ostrelPCL6ui.dll", u"OSTRELStatusMonitor", u"ostrelsm.exe", u"ostrelPCL6EnvDlg.exe"},
    {"NoEnding",     u"printer.dll", u"PRINTERStatusMonitor", u"printersm.exe", u"printerPCL6EnvDlg.exe"},
    {"SixUnits",     u"PCL6ui.dll", u"PCL6UIStatusMonitor", u"PCL6uism.exe", u"PCL6uiPCL6EnvDlg.exe"},
    {"OtherSix",     u"Driver.dll", u"DRIVERStatusMonitor", u"Driversm.exe", u"DriverPCL6EnvDlg.exe"},
    {"SevenUnits",   u"xPCL6ui.dll", u"XStatusMonitor", u"xsm.exe", u"xPCL6EnvDlg.exe"},
    {"LastFullStop", u"a.bPCL6ui.dll", u"A.BStatusMonitor", u"a.bsm.exe", u"a.bPCL6EnvDlg.exe"},
    {"OtherLetters", u"\u00E4\u00F1\u00F7PCL6ui.dll", u"\u00C4\u00D1\u00F7StatusMonitor",
     u"\u00E4\u00F1\u00F7sm.exe", u"\u00E4\u00F1\u00F7PCL6EnvDlg.exe"},
    {"Longest",      kLong + u"12345678.dll", kLongCapitals + u"12345StatusMonitor",
     kLong + u"12345sm.exe", kLong + u"12345PCL6EnvDlg.exe"},
    {"EndingIsCut",  kLong + u"PCL6ui.dll", kLongCapitals + u"PCL6UStatusMonitor",
     kLong + u"PCL6usm.exe", kLong + u"PCL6uPCL6EnvDlg.exe"},
};
// clang-format on

class NeighbourNames : public testing::TestWithParam<NameCase> {
 protected:
  void BeNamed(const std::u16string& module) {
    const std::u16string path = std::u16string(kFolder) + u"\\" + module;
    stage_.world.platform.modules.Install(path);
    stage_.world.process.LibraryModule = stage_.world.platform.modules.LoadLibraryW(path.c_str());
  }
  JobStage stage_;
};
INSTANTIATE_TEST_SUITE_P(Modules, NeighbourNames, testing::ValuesIn(kNames), test::CaseName());

TEST_P(NeighbourNames, FollowTheLibrarysOwn) {
  BeNamed(GetParam().module);
  std::array<char16_t, kMaxPathUnits> text = {};
  EXPECT_TRUE(WriteMonitorClassName(text));
  EXPECT_EQ(FieldText(text), GetParam().className);
  EXPECT_TRUE(WriteEnvelopeHelperName(text));
  EXPECT_EQ(FieldText(text), GetParam().helper);
  LaunchStatusMonitor(u"");
  EXPECT_THAT(stage_.world.platform.shell.started,
              ElementsAre(HeadlessShell::Started{
                  kNoVerb, u"C:\\windows\\system32\\" + GetParam().program, u"", 0}));
}

TEST_P(NeighbourNames, FindTheMonitorsWindow) {
  BeNamed(GetParam().module);
  stage_.OpenMonitor(GetParam().className);
  NotifyStatusMonitor(stage_.printer);
  EXPECT_THAT(stage_.monitorMessages, SizeIs(2));
}

TEST(NeighbourNamesUnknown, NameNoProgramAndNoWindow) {
  JobStage stage;
  stage.OpenMonitor(u"statusmonitor");
  stage.world.platform.faults.FailOperation("GetModuleFileNameW");
  std::array<char16_t, kMaxPathUnits> text = {};
  EXPECT_FALSE(WriteMonitorClassName(text));
  EXPECT_FALSE(WriteEnvelopeHelperName(text));
  NotifyStatusMonitor(stage.printer);
  LaunchStatusMonitor(u"Front office");
  EXPECT_EQ(stage.Story(), InOrder({kPrinterAsked, {"GetSystemDirectoryW"}}));
  EXPECT_THAT(stage.monitorMessages, IsEmpty());
}

// ---- A monitor that runs ------------------------------------------------------------------------

TEST(RunningMonitor, GetsTheMessageAndThenTheName) {
  JobStage stage;
  stage.OpenMonitor();
  NotifyStatusMonitor(stage.printer);
  EXPECT_EQ(stage.Story(),
            InOrder({kPrinterAsked,
                     {"CharUpperW ostrel", "FindWindowW", "PostMessageW", kMonitorTold, "Sleep 100",
                      "monitor gets 1044", "monitor gets 74"}}));
  ASSERT_THAT(stage.monitorMessages, SizeIs(2));
  EXPECT_EQ(stage.monitorMessages[0].wParam, 0U);
  EXPECT_EQ(stage.monitorMessages[0].lParam, 0);
  const test::MonitorMessage& name = stage.monitorMessages[1];
  EXPECT_EQ(name.wParam, 0U);
  EXPECT_EQ(name.record.dwData, 0U);
  EXPECT_EQ(name.record.cbData, 520U);
  EXPECT_EQ(test::UnitsOf(name.bytes),
            std::u16string(u"Front office") + std::u16string(248, u'\0'));
}

// Both lie where they outlive the call: the window gets a pointer.
TEST(RunningMonitor, GetsTheProcesssOwnRecord) {
  JobStage stage;
  stage.OpenMonitor();
  NotifyStatusMonitor(stage.printer);
  ASSERT_THAT(stage.monitorMessages, SizeIs(2));
  EXPECT_EQ(stage.monitorMessages[1].lParam,
            reinterpret_cast<std::intptr_t>(&stage.world.process.MonitorCopyData));
  EXPECT_EQ(stage.monitorMessages[1].record.lpData, stage.world.process.MonitorPrinterName);
}

TEST(RunningMonitor, GetsALongNameCutAndNothingOfTheOneBefore) {
  JobStage stage;
  stage.OpenMonitor();
  const std::u16string name(300, u'n');
  stage.world.printer->name = name;
  NotifyStatusMonitor(stage.printer);
  stage.world.printer->name = u"Two";
  NotifyStatusMonitor(stage.printer);
  ASSERT_THAT(stage.monitorMessages, SizeIs(4));
  EXPECT_EQ(test::UnitsOf(stage.monitorMessages[1].bytes), name.substr(0, 259) + u'\0');
  EXPECT_EQ(test::UnitsOf(stage.monitorMessages[3].bytes),
            std::u16string(u"Two") + std::u16string(257, u'\0'));
}

TEST(RunningMonitor, GetsAPairForEachOfThreeDocuments) {
  JobStage stage;
  stage.OpenMonitor();
  for (int document = 0; document < 3; ++document) {
    EXPECT_EQ(stage.StartDoc(), 1);
  }
  std::vector<std::uint32_t> messages;
  for (const test::MonitorMessage& each : stage.monitorMessages) {
    messages.push_back(each.message);
  }
  EXPECT_THAT(messages, ElementsAre(1044, 74, 1044, 74, 1044, 74));
  EXPECT_THAT(stage.world.platform.shell.started, IsEmpty());
  EXPECT_THAT(stage.world.platform.system.sleeps_ms, ElementsAre(100, 100, 100));
}

TEST(RunningMonitor, ThatCannotBePostedToGetsTheNameAllTheSame) {
  JobStage stage;
  stage.OpenMonitor();
  stage.world.platform.faults.FailOperation("PostMessageW");
  NotifyStatusMonitor(stage.printer);
  ASSERT_THAT(stage.monitorMessages, SizeIs(1));
  EXPECT_EQ(stage.monitorMessages[0].message, 74U);
}

TEST(RunningMonitor, MayEndWhileItPreparesItself) {
  JobStage stage;
  const WindowHandle window = stage.OpenMonitor();
  stage.whileAsleep = [&] { stage.world.platform.windows.Destroy(window); };
  NotifyStatusMonitor(stage.printer);
  EXPECT_THAT(stage.monitorMessages, IsEmpty());
  EXPECT_THAT(stage.world.platform.shell.started, IsEmpty());
}

// ---- A monitor that has to be started -----------------------------------------------------------

TEST(MissingMonitor, IsStartedWithTheNameAndGetsNoMessage) {
  JobStage stage;
  stage.whileAsleep = [&] { stage.OpenMonitor(); };
  NotifyStatusMonitor(stage.printer);
  EXPECT_EQ(stage.Story(),
            InOrder({kPrinterAsked,
                     {"CharUpperW ostrel", "FindWindowW", kMonitorMissing, "GetSystemDirectoryW",
                      "SetCurrentDirectoryW", "ShellExecuteW", "Sleep 500", "FindWindowW"}}));
  EXPECT_THAT(stage.world.platform.shell.started,
              ElementsAre(HeadlessShell::Started{kNoVerb, kMonitorProgram, u"Front office", 0}));
  EXPECT_THAT(stage.monitorMessages, IsEmpty());
}

TEST(MissingMonitor, GetsANameWithBlanksWithoutQuotes) {
  JobStage stage;
  LaunchStatusMonitor(u"Front office, 2nd  floor ");
  EXPECT_THAT(stage.world.platform.shell.started,
              ElementsAre(HeadlessShell::Started{kNoVerb, kMonitorProgram,
                                                 u"Front office, 2nd  floor ", 0}));
}

TEST(MissingMonitor, LeavesTheProcessInTheSystemDirectory) {
  JobStage stage;
  stage.world.platform.system.currentDirectory = u"D:\\work";
  NotifyStatusMonitor(stage.printer);
  EXPECT_EQ(stage.world.platform.system.currentDirectory, u"C:\\windows\\system32");
}

TEST(MissingMonitor, IsStartedAtEachDocumentUntilOneRuns) {
  JobStage stage;
  NotifyStatusMonitor(stage.printer);
  NotifyStatusMonitor(stage.printer);
  EXPECT_THAT(stage.world.platform.shell.started, SizeIs(2));
  stage.OpenMonitor();
  NotifyStatusMonitor(stage.printer);
  EXPECT_THAT(stage.world.platform.shell.started, SizeIs(2));
  EXPECT_THAT(stage.monitorMessages, SizeIs(2));
}

TEST(MissingMonitor, ThatCannotBeStartedIsWaitedForAsAnyOther) {
  for (const char* operation : {"ShellExecuteW", "SetCurrentDirectoryW"}) {
    JobStage stage;
    stage.world.platform.faults.FailOperation(operation);
    NotifyStatusMonitor(stage.printer);
    EXPECT_THAT(stage.world.platform.system.sleeps_ms, ElementsAre(500)) << operation;
    EXPECT_EQ(stage.world.platform.shell.started.size(),
              std::string_view(operation) == "ShellExecuteW" ? 0U : 1U);
    EXPECT_THAT(stage.boxes(), IsEmpty());
  }
}

// A path that isn't known in full would name another program.
TEST(MissingMonitor, WithoutItsFullPathIsNotStarted) {
  // 260 units hold 246 of the directory, the separator, 12 of the name and the terminator.
  for (const auto& [units, starts] : {std::pair<std::size_t, bool>{246, true},
                                      {247, false},
                                      {259, false},
                                      {260, false},
                                      {400, false}}) {
    JobStage stage;
    stage.world.platform.system.systemDirectory = u"C:\\" + std::u16string(units - 3, u's');
    LaunchStatusMonitor(u"Front office");
    EXPECT_EQ(stage.world.platform.shell.started.size(), starts ? 1U : 0U) << units;
    EXPECT_EQ(stage.world.platform.system.sleeps_ms.size(), starts ? 1U : 0U) << units;
    EXPECT_EQ(stage.world.platform.system.currentDirectory == u"C:\\", !starts) << units;
  }
  JobStage stage;
  stage.world.platform.faults.FailOperation("GetSystemDirectoryW");
  LaunchStatusMonitor(u"Front office");
  EXPECT_THAT(stage.world.platform.shell.started, IsEmpty());
}

// ---- Printers that tell nothing -----------------------------------------------------------------

TEST(MonitorOfNoPrinter, IsLeftAlone) {
  JobStage stage;
  stage.OpenMonitor();
  NotifyStatusMonitor(nullptr);
  EXPECT_THAT(stage.Story(), IsEmpty());
  stage.world.printer->describes = false;
  NotifyStatusMonitor(stage.printer);
  EXPECT_THAT(stage.monitorMessages, IsEmpty());
  EXPECT_THAT(stage.world.platform.system.sleeps_ms, IsEmpty());
}

// ---- The envelope helper ------------------------------------------------------------------------

constexpr char16_t kHelper[] = u"ostrelPCL6EnvDlg.exe";

TEST(EnvelopeHelper, IsStartedWithTheNameOfTheIniFile) {
  JobStage stage;
  test::PutConfig(stage.world, "[Print]\r\nPrinterName=Ostrel Printer\r\n");
  LaunchEnvelopeHelper(kHelper);
  EXPECT_EQ(stage.Story(), (Calls{"GetPrivateProfileStringW", "GetPrinterDriverDirectoryW level 1",
                                  "CreateProcessW"}));
  EXPECT_THAT(
      stage.world.platform.system.startedProcesses,
      ElementsAre(headless::HeadlessSystem::StartedProcess{
          std::u16string(kFolder) + u"\\ostrelPCL6EnvDlg.exe", u"Ostrel Printer", 32, u"ENV"}));
}

TEST(EnvelopeHelper, KeepsItsHandlesOpen) {
  JobStage stage;
  LaunchEnvelopeHelper(kHelper);
  EXPECT_EQ(stage.world.platform.system.liveProcessHandles(), 2U);
  LaunchEnvelopeHelper(kHelper);
  EXPECT_EQ(stage.world.platform.system.liveProcessHandles(), 4U);
}

TEST(EnvelopeHelper, GetsALongNameCut) {
  JobStage stage;
  test::PutConfig(stage.world, "[Print]\r\nPrinterName=" + std::string(300, 'n') + "\r\n");
  LaunchEnvelopeHelper(kHelper);
  ASSERT_THAT(stage.world.platform.system.startedProcesses, SizeIs(1));
  EXPECT_EQ(stage.world.platform.system.startedProcesses[0].commandLine, std::u16string(259, u'n'));
}

TEST(EnvelopeHelper, WithoutItsFullPathIsNotStarted) {
  // 260 units hold 236 of the directory, "\3\", 20 of the name and the terminator.
  for (const auto& [units, starts] : {std::pair<std::size_t, bool>{236, true}, {237, false}}) {
    JobStage stage;
    stage.world.platform.print.driverDirectory = u"C:\\" + std::u16string(units - 3, u'd');
    LaunchEnvelopeHelper(kHelper);
    EXPECT_EQ(stage.world.platform.system.startedProcesses.size(), starts ? 1U : 0U) << units;
  }
  JobStage stage;
  LaunchEnvelopeHelper(u"");
  LaunchEnvelopeHelper(nullptr);
  stage.world.platform.faults.FailOperation("GetPrinterDriverDirectoryW");
  LaunchEnvelopeHelper(kHelper);
  EXPECT_THAT(stage.world.platform.system.startedProcesses, IsEmpty());
}

TEST(EnvelopeHelper, ThatCannotBeStartedIsPassedOver) {
  JobStage stage;
  stage.world.platform.faults.FailOperation("CreateProcessW");
  LaunchEnvelopeHelper(kHelper);
  EXPECT_EQ(stage.world.platform.system.liveProcessHandles(), 0U);
  EXPECT_THAT(stage.boxes(), IsEmpty());
  EXPECT_THAT(stage.world.platform.system.sleeps_ms, IsEmpty());
}

}  // namespace
}  // namespace ostrel
