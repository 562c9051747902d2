// The driver's document sheet in the print system, as scenarios play it.
#pragma once

#include "print_system_fixture.h"
#include "scenarios/sheet_scenario.h"
#include "settings_folder.h"
#include "sheet_driver.h"
#include "stored_values.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace ostrel::print_system {

// A sheet opened as an application opens it, over records of the caller's. They outlive the sheet.
class DocumentSheet {
 public:
  explicit DocumentSheet(const Record& in, DWORD mode = kPrompt,
                         const std::wstring& printerName = kTestPrinter);

  static constexpr DWORD kPrompt = DM_IN_PROMPT | DM_IN_BUFFER | DM_OUT_BUFFER;

  SheetDriver& driver() { return *driver_; }
  Record in;
  Record out;

 private:
  std::wstring printerName_;
  Printer printer_;
  std::optional<SheetDriver> driver_;  // goes first
};

class WindowsSheet final : public scenario::SheetUnderTest {
 public:
  WindowsSheet();
  ~WindowsSheet() override;

  void BeUser(const scenario::UserKind& user) override;
  int HomePaper() override;
  std::u16string UiText(std::uint32_t id) override;
  void SelectModel(std::u16string_view model) override;
  void FitTrays(int count) override;
  void StorePaper(const CustomPaperRecord& paper) override;
  std::optional<CustomPaperRecord> StoredPaper(std::u16string_view name) override;
  DriverDevmode PrintersRecord() override;
  void SaveFavorite(std::u16string_view name, const DriverDevmode& record) override;
  void Open(const DriverDevmode& callers, bool noPermission) override;
  bool IsOpen() override;
  void ShowPage(std::u16string_view title) override;
  void Press(scenario::SheetButton button) override;
  bool OffersApply() override;
  std::optional<scenario::ShownBox> TakeBox() override;
  void AnswerNext(scenario::BoxAnswer answer) override;
  void OnDialog(std::function<void()> play) override;
  int OpenDialogs() override;
  std::u16string DialogTitle() override;
  DriverDevmode Input() override;
  DriverDevmode Output() override;
  bool HasControl(int control) override;
  bool IsChecked(int control) override;
  bool IsEnabled(int control) override;
  bool IsShown(int control) override;
  std::u16string Text(int control) override;
  int Row(int control) override;
  std::vector<std::u16string> Rows(int control) override;
  std::u16string Tooltip(int control) override;
  int FocusedControl() override;
  void Click(int control) override;
  void Type(int control, std::u16string_view text) override;
  void Choose(int control, int row) override;
  void Spin(int control, bool up) override;
  void Focus(int control) override;
  void Notify(int control) override;

 private:
  SheetDriver& driver();

  UserValues printersValues_{kTestPrinter};
  UserValues driversValues_{kOstrelDriverName};
  SettingsPlace settings_;
  std::deque<scenario::BoxAnswer> answers_;  // of the next boxes
  std::optional<DocumentSheet> sheet_;
};

// Who the user of this run is.
const scenario::UserKind& UserOfRun();

// The scenarios of a folder that this run's user can play.
std::vector<scenario::Scenario> ScenariosOf(const char* folder);

}  // namespace ostrel::print_system
