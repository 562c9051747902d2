#include "windows_sheet.h"

#include "config/setting_stores.h"
#include "core/ui_context.h"
#include "driver_words.h"

#include <cstring>
#include <stdexcept>

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

static_assert(scenario::kOutputPoison == 0xCC, "the poison of Record");

}  // namespace

DocumentSheet::DocumentSheet(const Record& callers, DWORD mode) : in(callers) {
  driver_.emplace([this, mode] {
    return DocumentPropertiesW(nullptr, printer_.get(), Writable(kTestPrinter), out.devmode(),
                               in.devmode(), mode);
  });
}

// ---- Around the sheet ---------------------------------------------------------------------------

WindowsSheet::WindowsSheet() {
  settings_.Clear();
  printersValues_.Delete(L"PrinterName");
  printersValues_.Delete(L"InstallMode");
}

WindowsSheet::~WindowsSheet() {
  sheet_.reset();
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

void WindowsSheet::SaveFavorite(std::u16string_view name, const DriverDevmode& record) {
  const Printer printer(kTestPrinter);
  const DriverWords words(ConfigLibraryPath(printer.get()));
  UIContext context = {};
  context.devmode = record;
  context.publicPointer = &context.devmode.publicDevmode;
  context.privatePointer = &context.devmode.privateDevmode;
  const FavoriteStore store;
  if (!store.Init() || !store.Save(std::u16string(name).c_str(), context)) {
    throw std::runtime_error("a favourite can't be kept");
  }
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
  const auto box = driver().AnswerBox();
  if (!box) {
    return std::nullopt;
  }
  return scenario::ShownBox{.title = Utf16Text(box->title), .text = Utf16Text(box->text)};
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

}  // namespace ostrel::print_system
