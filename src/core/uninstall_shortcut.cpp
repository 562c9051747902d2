#include "core/uninstall_shortcut.h"

#include "core/process_state.h"
#include "core/text.h"
#include "platform/window_types.h"

#include <array>
#include <string_view>

namespace ostrel {
namespace {

struct ShortcutRow {
  std::u16string_view folder;
  std::u16string_view name;
};

constexpr std::u16string_view kMultiFolder = u"\\dogwoodm";
constexpr std::u16string_view kPrinterFolder = u"\\dogwoodp";

// Models whose installers leave a shortcut, in the order of their tries: a printer's name may hold
// more than one of them. The list has models that the model table doesn't.
// clang-format off
constexpr std::array<ShortcutRow, 19> kShortcutRows = {{
    {kMultiFolder,   u"Ostrel Dogwood 3 Series"},
    {kMultiFolder,   u"Ostrel Dogwood 4 Series"},
    {kMultiFolder,   u"Ostrel Dogwood 5 Series"},
    {kMultiFolder,   u"Ostrel Elm 1 Series"},
    {kMultiFolder,   u"Ostrel Elm 2 Series"},
    {kMultiFolder,   u"Ostrel Elm 5 Series"},
    {kMultiFolder,   u"Ostrel Elm 3 Series"},
    {kMultiFolder,   u"Ostrel Elm 4 Series"},
    {kMultiFolder,   u"Ostrel Dogwood 6 Series"},
    {kMultiFolder,   u"Ostrel Dogwood 7 Series"},
    {kMultiFolder,   u"Ostrel Elm 6 Series"},
    {kMultiFolder,   u"Ostrel Elm 7 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 1 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 8 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 9 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 2 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 10 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 11 Series"},
    {kPrinterFolder, u"Ostrel Dogwood 12 Series"},
}};
// clang-format on

void StartUninstaller(const ShortcutRow& row) {
  char16_t systemFolder[kMaxPathUnits] = {};
  if (World().shell.SHGetFolderPathW(kCsidlSystem, systemFolder) != 0) {
    return;
  }
  char16_t program[kMaxPathUnits];
  TextBuilder path(program);
  path.Add(FieldText(systemFolder))
      .Add(u"\\Ostrel")
      .Add(u"\\")
      .Add(row.folder)
      .Add(u"\\UnSetupData\\Uninstall.exe");
  char16_t parameters[128];
  TextBuilder arguments(parameters);
  arguments.Add(u"\"-uninstall\" \"-CreateShortcut\" \"-Printer\" ")
      .Add(u"\"")
      .Add(row.name)
      .Add(u"\"");
  if (path.fits() && arguments.fits()) {
    World().shell.ShellExecuteW(u"runas", program, parameters, kSwShowNormal);
  }
}

}  // namespace

void RunUninstallShortcut(const char16_t* printerName) {
  const std::u16string_view name = CallerText(printerName);
  for (const ShortcutRow& row : kShortcutRows) {
    if (name.find(row.name) != std::u16string_view::npos) {
      StartUninstaller(row);
      return;
    }
  }
}

}  // namespace ostrel
