// The driver's document sheet in the print system, as scenarios play it.
#pragma once

#include "print_system_fixture.h"
#include "scenarios/sheet_scenario.h"
#include "settings_folder.h"
#include "sheet_driver.h"
#include "stored_values.h"

#include <optional>

namespace ostrel::print_system {

// A sheet opened as an application opens it, over records of the caller's. They outlive the sheet.
class DocumentSheet {
 public:
  explicit DocumentSheet(const Record& in, DWORD mode = kPrompt);

  static constexpr DWORD kPrompt = DM_IN_PROMPT | DM_IN_BUFFER | DM_OUT_BUFFER;

  SheetDriver& driver() { return *driver_; }
  Record in;
  Record out;

 private:
  Printer printer_{kTestPrinter};
  std::optional<SheetDriver> driver_;  // goes first
};

class WindowsSheet final : public scenario::SheetUnderTest {
 public:
  WindowsSheet();
  ~WindowsSheet() override;

  std::u16string UiText(std::uint32_t id) override;
  void SelectModel(std::u16string_view model) override;
  DriverDevmode PrintersRecord() override;
  void SaveFavorite(std::u16string_view name, const DriverDevmode& record) override;
  void Open(const DriverDevmode& callers, bool noPermission) override;
  bool IsOpen() override;
  void ShowPage(std::u16string_view title) override;
  void Press(scenario::SheetButton button) override;
  bool OffersApply() override;
  std::optional<scenario::ShownBox> TakeBox() override;
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
  std::optional<DocumentSheet> sheet_;
};

}  // namespace ostrel::print_system
