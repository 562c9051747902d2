// The document sheet in the print system: every scenario of its pages, its way from the opening to
// the caller's record, and the neighbours and files that it needs.
#include "common_sheet.h"
#include "copied_library.h"
#include "neighbour_values.h"
#include "open_files.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "windows_sheet.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ostrel::print_system {
namespace {

constexpr UINT kPrintOptionsTitle = 106;
constexpr UINT kPaperTitle = 216;
constexpr UINT kLayoutTitle = 126;

std::wstring Text(UINT id) {
  return ShippedText(LibraryOfUsersLanguage(), id);
}

// The printer's own record, as an application begins with it.
Record PrintersRecord(const std::wstring& name = kTestPrinter) {
  const Printer printer(name);
  Record record;
  EXPECT_EQ(DocumentPropertiesW(nullptr, printer.get(), Writable(name), record.devmode(), nullptr,
                                DM_OUT_BUFFER),
            IDOK);
  return record;
}

bool IsPoison(const Record& record) {
  return std::ranges::all_of(record.bytes(), [](BYTE byte) { return byte == 0xCC; });
}

// ---- What a user does ---------------------------------------------------------------------------

class PagesScenario : public testing::TestWithParam<scenario::Scenario> {};

TEST_P(PagesScenario, GoesAsItIsTold) {
  WindowsSheet sheet;
  EXPECT_EQ(scenario::PlayScenario(GetParam(), sheet), "");
}

const auto kNameOfScenario = [](const auto& row) { return row.param.name; };
INSTANTIATE_TEST_SUITE_P(PrintOptions, PagesScenario,
                         testing::ValuesIn(ScenariosOf("print_options")), kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(Paper, PagesScenario, testing::ValuesIn(ScenariosOf("paper")),
                         kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(Layout, PagesScenario, testing::ValuesIn(ScenariosOf("layout")),
                         kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(CustomPapers, PagesScenario,
                         testing::ValuesIn(ScenariosOf("custom_papers")), kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(BookletCover, PagesScenario,
                         testing::ValuesIn(ScenariosOf("booklet_cover")), kNameOfScenario);
INSTANTIATE_TEST_SUITE_P(AcrossPages, PagesScenario, testing::ValuesIn(ScenariosOf("across_pages")),
                         kNameOfScenario);

// ---- The call -----------------------------------------------------------------------------------

class DocumentSheetCall : public testing::Test {
 protected:
  SettingsPlace settings_;
};

TEST_F(DocumentSheetCall, IsAnsweredWithOneAfterOk) {
  DocumentSheet sheet(PrintersRecord());
  sheet.driver().Press(SheetButton::kOk);
  EXPECT_EQ(sheet.driver().Result(), IDOK);
  EXPECT_FALSE(IsPoison(sheet.out));
}

// The print system's own common sheet doesn't tell Cancel from OK; the record does.
TEST_F(DocumentSheetCall, LeavesTheRecordAloneAfterCancelWhateverItAnswers) {
  DocumentSheet sheet(PrintersRecord());
  sheet.driver().Press(SheetButton::kCancel);
  EXPECT_EQ(sheet.driver().Result(), HasStandInSheet() ? 0 : IDOK);
  EXPECT_TRUE(IsPoison(sheet.out));
}

TEST_F(DocumentSheetCall, IsAnsweredWithOneAfterApplyAndCancel) {
  DocumentSheet sheet(PrintersRecord());
  sheet.driver().ShowPage(Text(kPrintOptionsTitle));
  sheet.driver().Click(1422);
  sheet.driver().Press(SheetButton::kApply);
  sheet.driver().Press(SheetButton::kCancel);
  EXPECT_EQ(sheet.driver().Result(), IDOK);
  EXPECT_EQ(sheet.out.privatePart().FinessMode, 1);
}

TEST_F(DocumentSheetCall, WritesNothingWhereTheCallerAsksForNothing) {
  DocumentSheet sheet(PrintersRecord(), DM_IN_PROMPT | DM_IN_BUFFER);
  sheet.driver().ShowPage(Text(kPrintOptionsTitle));
  sheet.driver().Click(1422);
  sheet.driver().Press(SheetButton::kOk);
  sheet.driver().Result();
  EXPECT_TRUE(IsPoison(sheet.out));
}

// The Tab key stops at the radio button that is selected. Were another one a stop, the focus alone
// would click it there, and change the setting.
TEST_F(DocumentSheetCall, HasItsTabStopsAtTheSelectedRadioButtons) {
  Record record = PrintersRecord();
  record.devmode()->dmDuplex = DMDUP_HORIZONTAL;
  record.privatePart().PrintMode = 1;
  DocumentSheet sheet(record);
  sheet.driver().ShowPage(Text(kPrintOptionsTitle));
  const HWND page = sheet.driver().page();
  for (const auto& [radio, selected] :
       {std::pair{1240, false}, std::pair{1125, false}, std::pair{1241, true},
        std::pair{1242, false}, std::pair{1243, true}}) {
    EXPECT_EQ((GetWindowLongW(GetDlgItem(page, radio), GWL_STYLE) & WS_TABSTOP) != 0, selected)
        << radio;
  }
  sheet.driver().Press(SheetButton::kCancel);
  sheet.driver().Result();
}

// Common dialogs hand the same record in and out.
TEST_F(DocumentSheetCall, MayHandOneRecordInAndOut) {
  const Record before = PrintersRecord();
  for (const bool accepted : {false, true}) {
    Record both = before;
    const Printer printer(kTestPrinter);
    SheetDriver sheet([&both, &printer] {
      return DocumentPropertiesW(nullptr, printer.get(), Writable(kTestPrinter), both.devmode(),
                                 both.devmode(), DocumentSheet::kPrompt);
    });
    sheet.ShowPage(Text(kPrintOptionsTitle));
    sheet.Click(1422);
    sheet.Press(accepted ? SheetButton::kOk : SheetButton::kCancel);
    sheet.Result();
    EXPECT_EQ(both.bytes() == before.bytes(), !accepted);
    EXPECT_EQ(both.privatePart().FinessMode, accepted ? 1 : 0);
  }
}

TEST_F(DocumentSheetCall, ShowsThePrintersNameWhereTheCommonSheetAsksForATitle) {
  DocumentSheet sheet(PrintersRecord());
  const std::wstring title = sheet.driver().Title();
  if (HasStandInSheet()) {
    EXPECT_NE(title.find(kTestPrinter), std::wstring::npos) << Utf8(title);
  } else {
    EXPECT_EQ(title, L"Options");
  }
}

// Each sheet's pages keep their states by their thread.
TEST_F(DocumentSheetCall, MayBeMadeTwiceAtATime) {
  Record first = PrintersRecord();
  Record second = PrintersRecord();
  second.devmode()->dmCopies = 7;
  DocumentSheet one(first);
  DocumentSheet other(second);
  for (DocumentSheet* sheet : {&one, &other}) {
    sheet->driver().ShowPage(Text(kPrintOptionsTitle));
  }
  one.driver().Click(1125);
  other.driver().Click(1422);
  EXPECT_TRUE(one.driver().IsChecked(1125));
  EXPECT_FALSE(other.driver().IsChecked(1125));
  EXPECT_FALSE(one.driver().IsChecked(1422));
  one.driver().Press(SheetButton::kOk);
  one.driver().Result();
  other.driver().Spin(1020, true);
  other.driver().Press(SheetButton::kOk);
  other.driver().Result();
  EXPECT_EQ(one.out.devmode()->dmDuplex, 2);
  EXPECT_EQ(one.out.devmode()->dmCopies, 1);
  EXPECT_EQ(other.out.devmode()->dmDuplex, 1);
  EXPECT_EQ(other.out.devmode()->dmCopies, 8);
  EXPECT_EQ(other.out.privatePart().FinessMode, 1);
}

// With all its pages and their dialogs. The model has booklets.
TEST_F(DocumentSheetCall, LeavesNothingOpenHoweverOftenItIsMade) {
  UserValues printersValues(kTestPrinter);
  printersValues.Set(L"PrinterName", TextValue(L"Hazel 2 Series"));
  constexpr int kSheets = 100;
  constexpr int kFirstSheets = 10;  // libraries and caches settle
  constexpr std::size_t kMoreFiles = 2;
  constexpr std::size_t kMoreBytes = 6U << 20U;
  const Record record = PrintersRecord();
  std::size_t files = 0;
  std::size_t memory = 0;
  for (int round = 0; round < kSheets; ++round) {
    DocumentSheet sheet(record);
    if (round % 2 == 0) {
      sheet.driver().ShowPage(Text(kPrintOptionsTitle));
      sheet.driver().Click(1422);
      sheet.driver().ShowPage(Text(kLayoutTitle));
      sheet.driver().Click(1415);
    }
    if (round % 4 == 0) {
      sheet.driver().ShowPage(Text(kPaperTitle));
      sheet.driver().Click(1407);
      sheet.driver().LeaveDialog(IDCANCEL);
    }
    if (round % 4 == 2) {
      sheet.driver().Click(1486);
      sheet.driver().Click(1065);
      sheet.driver().LeaveDialog(IDCANCEL);
    }
    sheet.driver().Press(round % 3 == 0 ? SheetButton::kCancel : SheetButton::kOk);
    sheet.driver().Result();
    if (round == kFirstSheets) {
      files = OpenFiles();
      memory = WorkingSetBytes();
    }
  }
  EXPECT_GT(files, 0U);
  EXPECT_LE(OpenFiles(), files + kMoreFiles);
  EXPECT_LE(WorkingSetBytes(), memory + kMoreBytes);
}

// ---- The protocol -------------------------------------------------------------------------------

// The driver's function in a common sheet that this program opens itself.
class DocumentSheetProtocol : public DocumentSheetCall {
 protected:
  DocumentSheetProtocol() {
    header_.cbSize = sizeof(header_);
    header_.hPrinter = printer_.get();
    header_.pszPrinterName = name_.data();
    header_.pdmIn = in_.devmode();
    header_.pdmOut = out_.devmode();
    header_.fMode = DocumentSheet::kPrompt;
  }

  // Shows the sheet of a driver library. Without a sheet it returns at once.
  LONG Show(const DriverExports& driver, SheetButton button) {
    call_ = {.function = driver.DrvDocumentPropertySheets,
             .header = reinterpret_cast<LPARAM>(&header_)};
    SheetDriver sheet([this] { return call_.Run(); });
    if (sheet.IsOpen()) {
      pages_ = sheet.PageTitles();
      sheet.Press(button);
    }
    return sheet.Result();
  }

  // What the driver hears when it opens nothing: the print system's own common sheet ends even
  // that.
  static std::vector<SheetReasonCall> NothingOpened() {
    return HasStandInSheet() ? std::vector<SheetReasonCall>{{0, -1}}
                             : std::vector<SheetReasonCall>{{0, -1}, {2, -1}};
  }

  std::wstring name_ = kTestPrinter;
  Printer printer_{name_};
  Record in_ = PrintersRecord();
  Record out_;
  DOCUMENTPROPERTYHEADER header_ = {};
  CommonSheetCall call_ = {};
  std::vector<std::wstring> pages_;
};

TEST_F(DocumentSheetProtocol, GoesThroughItsReasonsOnOk) {
  EXPECT_GE(Show(*LoadInstalledDriver(), SheetButton::kOk), 0);
  std::vector<SheetReasonCall> expected = {{0, 1}, {1, 1}, {2, 1}};
  if (HasStandInSheet()) {
    // The result is set by the page's "apply", and once more when the first page goes.
    expected = {{0, 1}, {1, 1}, {3, 1}, {3, 1}, {2, 1}};
    EXPECT_EQ(call_.result, static_cast<DWORD>(CPSUI_OK));
  }
  EXPECT_EQ(call_.seen, expected);
  EXPECT_FALSE(IsPoison(out_));
}

TEST_F(DocumentSheetProtocol, SetsNoResultOnCancel) {
  EXPECT_GE(Show(*LoadInstalledDriver(), SheetButton::kCancel), 0);
  EXPECT_EQ(call_.seen, (std::vector<SheetReasonCall>{{0, 1}, {1, 1}, {2, 1}}));
  if (HasStandInSheet()) {
    EXPECT_EQ(call_.result, static_cast<DWORD>(CPSUI_CANCEL));
  }
  EXPECT_TRUE(IsPoison(out_));
}

TEST_F(DocumentSheetProtocol, AnswersMinusOneToReasonsWithoutASheet) {
  const auto driver = LoadInstalledDriver();
  for (WORD reason = 0; reason <= 5; ++reason) {
    PROPSHEETUI_INFO info = {};
    info.cbSize = sizeof(info);
    info.Reason = reason;
    EXPECT_EQ(driver->DrvDocumentPropertySheets(&info, 0), -1) << "reason " << reason;
  }
}

// ---- What a sheet can't do without --------------------------------------------------------------

TEST_F(DocumentSheetProtocol, ShowsNothingWithoutATextLibrary) {
  const CopiedLibrary driver({kDriverLibraryFile, kPictureLibraryFile});
  EXPECT_LT(Show(*driver.operator->(), SheetButton::kCancel), 0);
  EXPECT_EQ(call_.seen, NothingOpened());
  EXPECT_TRUE(IsPoison(out_));
}

TEST_F(DocumentSheetProtocol, ShowsNothingWithoutAPictureLibrary) {
  const CopiedLibrary driver({kDriverLibraryFile, kLanguageLibraryFile});
  EXPECT_LT(Show(*driver.operator->(), SheetButton::kCancel), 0);
  EXPECT_EQ(call_.seen, NothingOpened());
}

TEST_F(DocumentSheetProtocol, ShowsNothingForAPrinterThatIsNone) {
  header_.hPrinter = nullptr;
  EXPECT_LT(Show(*LoadInstalledDriver(), SheetButton::kCancel), 0);
  EXPECT_EQ(call_.seen, NothingOpened());
}

// ---- Pages --------------------------------------------------------------------------------------

struct ModelPages {
  const wchar_t* model;
  std::vector<std::wstring> pages;
};

TEST_F(DocumentSheetProtocol, ShowsThePagesThatTheModelHasInTheirOrder) {
  CopiedLibrary driver({kDriverLibraryFile, kPictureLibraryFile});
  driver.Add(ProgramFolder() + L"\\test_libraries\\test_pages.dll", kLanguageLibraryFile);
  const std::vector<std::wstring> five = {L"Favorites", L"Options", L"Paper", L"Layout",
                                          L"Watermark"};
  std::vector<std::wstring> six = five;
  six.emplace_back(L"Secret");
  const ModelPages rows[] = {{L"Alder 1 Series", five},    {L"Cedar 1 Series", six},
                             {L"Dogwood 1 Series", five},  {L"Elm 1 Series", six},
                             {L"Ginkgo 1 Series", six},    {L"Hazel 1 Series", six},
                             {L"Ironwood 1 Series", five}, {L"Kauri 1 Series", six}};
  UserValues user(kTestPrinter);
  for (const ModelPages& row : rows) {
    user.Set(L"PrinterName", TextValue(row.model));
    EXPECT_GE(Show(*driver.operator->(), SheetButton::kCancel), 0);
    EXPECT_EQ(pages_, row.pages) << Utf8(row.model);
  }
}

// ---- The companion library ----------------------------------------------------------------------

class DocumentSheetCompanion : public DocumentSheetProtocol {
 protected:
  std::optional<Value> Declined() const { return driversValues_.Get(L"Cancel"); }

  NeighbourValues tester_{L"Companion"};
  UserValues printersValues_{kTestPrinter};
  UserValues driversValues_{kOstrelDriverName};
};

TEST_F(DocumentSheetCompanion, IsAskedOnceASheetAndLetGo) {
  DocumentSheet sheet(in_);
  EXPECT_EQ(tester_.Number(L"DocumentCalls"), 1U);
  EXPECT_EQ(tester_.Number(L"DeviceCalls"), 0U);
  EXPECT_EQ(GetModuleHandleW(kCompanionFile), nullptr);
  EXPECT_EQ(Declined(), DwordValue(0));
}

TEST_F(DocumentSheetCompanion, ThatDeclinesIsRememberedAndTheSheetOpens) {
  tester_.SetNumber(L"DocumentAnswer", 0);
  DocumentSheet sheet(in_);
  EXPECT_TRUE(sheet.driver().IsOpen());
  EXPECT_EQ(Declined(), DwordValue(1));
}

TEST_F(DocumentSheetCompanion, ThatFailsIsNotTakenForOneThatDeclines) {
  tester_.SetNumber(L"DocumentAnswer", 0xFFFFFFFF);
  DocumentSheet sheet(in_);
  EXPECT_TRUE(sheet.driver().IsOpen());
  EXPECT_EQ(Declined(), DwordValue(0));
}

TEST_F(DocumentSheetCompanion, ThatIsMissingLeavesNoSheet) {
  RemoveCompanion();
  const LONG answer = Show(*LoadInstalledDriver(), SheetButton::kCancel);
  DocumentSheet sheet(in_);
  EXPECT_FALSE(sheet.driver().IsOpen());
  InstallCompanion();
  EXPECT_LT(answer, 0);
  EXPECT_EQ(call_.seen, NothingOpened());
  EXPECT_TRUE(IsPoison(sheet.out));
}

TEST_F(DocumentSheetCompanion, SetsTheModelThatTheSheetOpensWith) {
  constexpr int kHazelRow = 24;
  tester_.SetNumber(L"PickModel", 1);
  DocumentSheet sheet(in_);
  const HWND picker = sheet.driver().Dialog();
  ASSERT_NE(picker, nullptr);
  EXPECT_EQ(sheet.driver().Ask(GetDlgItem(picker, 102), CB_GETCOUNT, 0, 0), 36);
  sheet.driver().Ask(GetDlgItem(picker, 102), CB_SETCURSEL, kHazelRow, 0);
  sheet.driver().Ask(GetDlgItem(picker, 104), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(L"printer.example"));
  sheet.driver().LeaveDialog(IDOK);
  sheet.driver().ShowPage(Text(kPrintOptionsTitle));
  EXPECT_TRUE(sheet.driver().IsShown(1393));
  EXPECT_EQ(printersValues_.Get(L"PrinterName"), TextValue(L"Hazel 1 Series"));
  EXPECT_EQ(printersValues_.Get(L"PrinterHostName"), TextValue(L"printer.example"));
  EXPECT_EQ(driversValues_.Get(L"PrinterModel"), TextValue(L"Hazel 1 Series"));
  EXPECT_EQ(Declined(), DwordValue(0));
}

TEST_F(DocumentSheetCompanion, WhosePickerIsCancelledDeclines) {
  tester_.SetNumber(L"PickModel", 1);
  DocumentSheet sheet(in_);
  ASSERT_NE(sheet.driver().Dialog(), nullptr);
  sheet.driver().LeaveDialog(IDCANCEL);
  EXPECT_NE(sheet.driver().sheet(), nullptr);
  EXPECT_EQ(Declined(), DwordValue(1));
  EXPECT_EQ(printersValues_.Get(L"PrinterHostName"), std::nullopt);
}

// ---- The settings file --------------------------------------------------------------------------

TEST_F(DocumentSheetProtocol, OfADamagedSettingsFileIsAMessageAndNoSheet) {
  settings_.Write("no tree at all");
  DocumentSheet sheet(in_);
  const auto box = sheet.driver().AnswerBox();
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->text, Text(254));
  EXPECT_EQ(box->title, Text(199));
  EXPECT_EQ(sheet.driver().Dialog(), nullptr);
  EXPECT_EQ(sheet.driver().sheet(), nullptr);
  EXPECT_FALSE(sheet.driver().IsOpen());
  EXPECT_EQ(settings_.Read(), std::nullopt);
  EXPECT_TRUE(IsPoison(sheet.out));
}

// ---- A universal printer ------------------------------------------------------------------------

class UniversalSheet : public testing::Test {
 protected:
  static constexpr wchar_t kName[] = L"Printer for all";

  UniversalSheet() {
    settings_.Clear();
    printersValues_.Set(L"InstallMode", DwordValue(1));
    printersValues_.Set(L"PrinterName", TextValue(L"Hazel 3 Series"));
    driversValues_.Set(L"PrinterModel", TextValue(L"Hazel 3 Series"));
    driversValues_.Set(L"SettingPrinterModel", TextValue(L"Hazel 3 Series"));
    printer_.SetData(L"TrayInstallSize", DwordValue(8));
    printer_.SetData(L"TrayInstall", BinaryValue({1, 0, 0, 0, 5, 0, 0, 0}));
  }

  void OpenAndCancel() {
    DocumentSheet sheet(PrintersRecord(kName), DocumentSheet::kPrompt, kName);
    ASSERT_TRUE(sheet.driver().IsOpen());
    sheet.driver().Press(SheetButton::kCancel);
  }

  // A text value, which is stored in a field of fixed size.
  static std::wstring TextOf(const std::optional<Value>& value) {
    if (!value || value->type != REG_SZ) {
      return L"no text";
    }
    const auto* text = reinterpret_cast<const wchar_t*>(value->bytes.data());
    const std::wstring_view whole(text, value->bytes.size() / sizeof(wchar_t));
    return std::wstring(whole.substr(0, whole.find(L'\0')));
  }

  TemporaryPrinter printer_{kName};
  UserValues printersValues_{kName};
  UserValues driversValues_{kOstrelDriverName};
  SettingsPlace settings_;
};

TEST_F(UniversalSheet, RecordsWhatItOpensWith) {
  OpenAndCancel();
  EXPECT_EQ(TextOf(printersValues_.Get(L"ConfigPrintInfo")), Text(200) + L":Hazel 3 Series ");
  EXPECT_EQ(TextOf(printersValues_.Get(L"RegTips")), Text(255).substr(0, 130));
  EXPECT_EQ(TextOf(printersValues_.Get(L"RegTips2")), Text(256).substr(0, 130));
  EXPECT_EQ(TextOf(printersValues_.Get(L"ConfigPrinterName")), L"Hazel 3 Series");
  EXPECT_EQ(TextOf(printersValues_.Get(L"ConfigPrinterModel")), L"Hazel 3 Series");
  EXPECT_EQ(driversValues_.Get(L"TrayInstall1"), DwordValue(1));
  EXPECT_EQ(driversValues_.Get(L"TrayInstall2"), DwordValue(5));
}

TEST_F(UniversalSheet, ForgetsTheTraysOfAnotherModel) {
  driversValues_.Set(L"SettingPrinterModel", TextValue(L"Hazel 2 Series"));
  OpenAndCancel();
  EXPECT_EQ(driversValues_.Get(L"TrayInstall1"), DwordValue(0));
  EXPECT_EQ(driversValues_.Get(L"TrayInstall2"), DwordValue(0));
}

TEST_F(UniversalSheet, RecordsNothingWhereTheModeIsNotInstalled) {
  for (const DWORD mode : {0U, 2U}) {
    printersValues_.Set(L"InstallMode", DwordValue(mode));
    OpenAndCancel();
    EXPECT_EQ(printersValues_.Get(L"ConfigPrintInfo"), std::nullopt);
    EXPECT_EQ(driversValues_.Get(L"TrayInstall1"), std::nullopt);
  }
}

}  // namespace
}  // namespace ostrel::print_system
