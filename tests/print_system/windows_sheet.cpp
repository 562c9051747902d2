#include "windows_sheet.h"

#include "config/setting_stores.h"
#include "core/printer_store.h"
#include "core/ui_context.h"
#include "driver_words.h"
#include "scenarios/scenario_files.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace ostrel::print_system {
namespace {

std::u16string Utf16Text(std::wstring_view text) {
  return {text.begin(), text.end()};
}

std::wstring WideText(std::u16string_view text) {
  return {text.begin(), text.end()};
}

DriverDevmode AsDevmode(const Record& record) {
  DriverDevmode devmode = {};
  std::memcpy(&devmode, record.bytes().data(), sizeof(devmode));
  return devmode;
}

Record AsRecord(const DriverDevmode& devmode) {
  Record record;
  std::memcpy(record.bytes().data(), &devmode, sizeof(devmode));
  return record;
}

// What the driver keeps is written and read by its own words, for as long as that takes.
class DriversKeeping {
 public:
  HANDLE printer() const { return printer_.get(); }

 private:
  Printer printer_{kTestPrinter};
  DriverWords words_{ConfigLibraryPath(printer_.get())};
};

void MustBeKept(bool kept) {
  if (!kept) {
    throw std::runtime_error("it can't be kept");
  }
}

static_assert(scenario::kOutputPoison == 0xCC, "the poison of Record");

}  // namespace

DocumentSheet::DocumentSheet(const Record& callers, DWORD mode, const std::wstring& printerName)
    : in(callers), printerName_(printerName), printer_(printerName) {
  driver_.emplace([this, mode] {
    return DocumentPropertiesW(nullptr, printer_.get(), Writable(printerName_), out.devmode(),
                               in.devmode(), mode);
  });
}

// ---- Around the sheet ---------------------------------------------------------------------------

WindowsSheet::WindowsSheet() {
  settings_.Clear();
  printersValues_.Delete(L"PrinterName");
  printersValues_.Delete(L"InstallMode");
  FitTrays(0);
}

WindowsSheet::~WindowsSheet() {
  sheet_.reset();
}

// The language's library stays loaded for the process, so nobody can become another user in it.
void WindowsSheet::BeUser(const scenario::UserKind& user) {
  if (user != UserOfRun()) {
    throw std::runtime_error("this run has another user");
  }
}

int WindowsSheet::HomePaper() {
  return PaperOfUsersCountry().id;
}

std::u16string WindowsSheet::UiText(std::uint32_t id) {
  return Utf16Text(ShippedText(LibraryOfUsersLanguage(), id));
}

void WindowsSheet::SelectModel(std::u16string_view model) {
  printersValues_.Set(L"PrinterName", TextValue(WideText(model)));
}

DriverDevmode WindowsSheet::PrintersRecord() {
  const Printer printer(kTestPrinter);
  Record record;
  if (AskDefaultRecord(printer.get(), record) != IDOK) {
    throw std::runtime_error("the printer has no record");
  }
  return AsDevmode(record);
}

void WindowsSheet::FitTrays(int count) {
  const DriversKeeping driver;
  MustBeKept(WriteTrayBlock(win32::ToPrinter(driver.printer()),
                            {{count > 0 ? kTrayFitted : 0U, count > 1 ? kTrayFitted : 0U}}));
}

void WindowsSheet::StorePaper(const CustomPaperRecord& paper) {
  const DriversKeeping driver;
  const CustomPaperStore store;
  MustBeKept(InitSettingsFile() && store.Save(paper.Name, paper));
}

std::optional<CustomPaperRecord> WindowsSheet::StoredPaper(std::u16string_view name) {
  const DriversKeeping driver;
  const CustomPaperStore store;
  CustomPaperRecord paper = {};
  return store.Read(std::u16string(name).c_str(), paper) ? std::optional(paper) : std::nullopt;
}

void WindowsSheet::SaveFavorite(std::u16string_view name, const DriverDevmode& record) {
  const DriversKeeping driver;
  UIContext context = {};
  context.devmode = record;
  context.publicPointer = &context.devmode.publicDevmode;
  context.privatePointer = &context.devmode.privateDevmode;
  const FavoriteStore store;
  MustBeKept(store.Init() && store.Save(std::u16string(name).c_str(), context));
}

// ---- The sheet as a whole -----------------------------------------------------------------------

SheetDriver& WindowsSheet::driver() {
  if (!sheet_) {
    throw std::runtime_error("no sheet was opened");
  }
  return sheet_->driver();
}

void WindowsSheet::Open(const DriverDevmode& callers, bool noPermission) {
  constexpr DWORD kNoPermission = 0x20;  // DM_NOPERMISSION
  sheet_.emplace(AsRecord(callers), DocumentSheet::kPrompt | (noPermission ? kNoPermission : 0));
}

bool WindowsSheet::IsOpen() {
  return sheet_ && driver().IsOpen();
}

void WindowsSheet::ShowPage(std::u16string_view title) {
  driver().ShowPage(WideText(title));
}

void WindowsSheet::Press(scenario::SheetButton button) {
  using scenario::SheetButton;
  if (OpenDialogs() > 0) {
    driver().LeaveDialog(button == SheetButton::kOk ? IDOK : IDCANCEL);
    return;
  }
  driver().Press(button == SheetButton::kOk       ? print_system::SheetButton::kOk
                 : button == SheetButton::kApply  ? print_system::SheetButton::kApply
                 : button == SheetButton::kCancel ? print_system::SheetButton::kCancel
                                                  : print_system::SheetButton::kHelp);
}

bool WindowsSheet::OffersApply() {
  return driver().OffersApply();
}

std::optional<scenario::ShownBox> WindowsSheet::TakeBox() {
  if (!sheet_) {
    return std::nullopt;
  }
  using scenario::BoxAnswer;
  const BoxAnswer answer = answers_.empty() ? BoxAnswer::kOk : answers_.front();
  const auto box = driver().AnswerBox(answer == BoxAnswer::kYes  ? IDYES
                                      : answer == BoxAnswer::kNo ? IDNO
                                                                 : IDOK);
  if (!box) {
    return std::nullopt;
  }
  if (!answers_.empty()) {
    answers_.pop_front();
  }
  return scenario::ShownBox{.title = Utf16Text(box->title), .text = Utf16Text(box->text)};
}

void WindowsSheet::AnswerNext(scenario::BoxAnswer answer) {
  answers_.push_back(answer);
}

// Here the step that opens a dialog is over at once.
void WindowsSheet::OnDialog(std::function<void()> /*play*/) {}

int WindowsSheet::OpenDialogs() {
  return sheet_ ? driver().OpenDialogs() : 0;
}

std::u16string WindowsSheet::DialogTitle() {
  return Utf16Text(driver().TextOf(driver().Dialog()));
}

DriverDevmode WindowsSheet::Input() {
  return AsDevmode(sheet_.value().in);
}

DriverDevmode WindowsSheet::Output() {
  return AsDevmode(sheet_.value().out);
}

// ---- Controls -----------------------------------------------------------------------------------

bool WindowsSheet::HasControl(int control) {
  return driver().HasControl(control);
}

bool WindowsSheet::IsChecked(int control) {
  return driver().IsChecked(control);
}

bool WindowsSheet::IsEnabled(int control) {
  return driver().IsEnabled(control);
}

bool WindowsSheet::IsShown(int control) {
  return driver().IsShown(control);
}

std::u16string WindowsSheet::Text(int control) {
  return Utf16Text(driver().Text(control));
}

int WindowsSheet::Row(int control) {
  return driver().Row(control);
}

std::vector<std::u16string> WindowsSheet::Rows(int control) {
  std::vector<std::u16string> rows;
  for (const std::wstring& row : driver().Rows(control)) {
    rows.push_back(Utf16Text(row));
  }
  return rows;
}

std::u16string WindowsSheet::Tooltip(int control) {
  return Utf16Text(driver().Tooltip(control));
}

int WindowsSheet::FocusedControl() {
  return driver().Focus();
}

void WindowsSheet::Click(int control) {
  driver().Click(control);
}

void WindowsSheet::Type(int control, std::u16string_view text) {
  driver().Type(control, WideText(text));
}

void WindowsSheet::Choose(int control, int row) {
  driver().Choose(control, row);
}

void WindowsSheet::Spin(int control, bool up) {
  driver().Spin(control, up);
}

void WindowsSheet::Focus(int control) {
  driver().Focus(control);
}

void WindowsSheet::Notify(int control) {
  driver().Notify(control);
}

// ---- The run ------------------------------------------------------------------------------------

const scenario::UserKind& UserOfRun() {
  static const scenario::UserKind user =
      LibraryOfUsersLanguage() == std::wstring_view(kGermanLibraryFile)
          ? scenario::UserKind{.language = "de", .country = 49}
          : scenario::UserKind{.language = "enus", .country = 1};
  return user;
}

std::vector<scenario::Scenario> ScenariosOf(const char* folder) {
  auto scenarios =
      scenario::ReadScenarios(std::filesystem::path(ProgramFolder()) / "scenarios" / folder);
  std::erase_if(scenarios, [](const scenario::Scenario& scenario) {
    return scenario.user && *scenario.user != UserOfRun();
  });
  return scenarios;
}

}  // namespace ostrel::print_system
