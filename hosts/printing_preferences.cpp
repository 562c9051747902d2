// Opens the printing preferences of a printer with this driver, as an application does, and shows
// what came of it: which settings of the record have changed.
//
//   printing_preferences --desktop          for a user at the display; waits for OK or Cancel
//   printing_preferences --driven SUFFIX FOLDER
//                                           without one: the program goes through the sheet and its
//                                           dialogs by their controls, in the language of that
//                                           suffix, and leaves a picture of each in the folder, as
//                                           preferences_SUFFIX_NAME.bmp
//
// Result: 0, or 1 with a line on the standard error when something failed.
#include "core/printer_store.h"
#include "driver_words.h"
#include "print_system_setup.h"
#include "record_fields.h"
#include "report_data.h"
#include "screenshot.h"
#include "sheet_driver.h"
#include "text_table.h"

#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrel;
using namespace ostrel::print_system;
using report::Heading;
using report::kLeft;
using report::kRight;
using report::Table;

constexpr wchar_t kPrinterName[] = L"Hazel 2 Series";

void Say(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

// ---- Records ------------------------------------------------------------------------------------

class Preferences {
 public:
  Preferences() {
    Ask(nullptr, &before, DM_OUT_BUFFER);
    after = before;
  }

  // Shows the sheet; returns when it is closed.
  LONG Show() { return Ask(&before, &after, DM_IN_PROMPT | DM_IN_BUFFER | DM_OUT_BUFFER); }

  DriverDevmode before = {};
  DriverDevmode after = {};

 private:
  LONG Ask(DriverDevmode* in, DriverDevmode* out, DWORD mode) {
    const LONG answer = DocumentPropertiesW(nullptr, printer_.get(), Writable(name_),
                                            reinterpret_cast<DEVMODEW*>(out),
                                            reinterpret_cast<DEVMODEW*>(in), mode);
    if (answer < 0) {
      throw std::runtime_error("DocumentPropertiesW failed");
    }
    return answer;
  }

  std::wstring name_ = kPrinterName;
  Printer printer_{name_};
};

std::string ChangesText(const Preferences& preferences) {
  Table table({kLeft, kRight, kRight});
  table.Row({"setting", "before", "after"});
  std::size_t changes = 0;
  for (const NamedField& field : NamedFields()) {
    if (!FieldsEqual(preferences.before, preferences.after, field)) {
      table.Row({std::string(field.name), FieldShown(preferences.before, field),
                 FieldShown(preferences.after, field)});
      ++changes;
    }
  }
  return Heading("What the application got back: " + std::to_string(changes) + " of " +
                 std::to_string(NamedFields().size()) + " settings changed") +
         (changes == 0 ? std::string() : table.Text());
}

// ---- For a user ---------------------------------------------------------------------------------

void ShowOnDesktop() {
  Say("The printing preferences of \"" + Utf8(kPrinterName) + "\" are open on the display.\n");
  Preferences preferences;
  preferences.Show();
  Say(ChangesText(preferences));
}

// ---- Without one --------------------------------------------------------------------------------

struct Language {
  std::wstring_view suffix;
  const wchar_t* library;
};

constexpr Language kLanguages[] = {
    {L"enus", kLanguageLibraryFile}, {L"de", kGermanLibraryFile}, {L"he", kHebrewLibraryFile}};

// One step: what is done, to the control of which caption.
struct Step {
  const char* does;
  int caption;
  void (*how)(SheetDriver&);
};

constexpr Step kOptionsSteps[] = {
    {"type 3", 1018, [](SheetDriver& sheet) { sheet.Type(1019, L"3"); }},
    {"one more by the arrow", 1018, [](SheetDriver& sheet) { sheet.Spin(1020, true); }},
    {"click", 1008, [](SheetDriver& sheet) { sheet.Click(1008); }},
    {"click", 1241, [](SheetDriver& sheet) { sheet.Click(1241); }},
    {"click", 1243, [](SheetDriver& sheet) { sheet.Click(1243); }},
    {"choose the second row", 1483, [](SheetDriver& sheet) { sheet.Choose(1393, 1); }},
};

constexpr Step kPaperSteps[] = {
    {"choose Legal", 1400, [](SheetDriver& sheet) { sheet.Choose(1404, 2); }},
    {"choose the first tray", 1403, [](SheetDriver& sheet) { sheet.Choose(1393, 2); }},
};

constexpr Step kCustomPaperSteps[] = {
    {"choose the second name", 1165, [](SheetDriver& sheet) { sheet.Choose(1009, 1); }},
    {"one more by the arrow", 1268, [](SheetDriver& sheet) { sheet.Spin(1270, true); }},
};

constexpr Step kSeveralPagesSteps[] = {
    {"click", 1390, [](SheetDriver& sheet) { sheet.Click(1390); }},
    {"choose the second row", 1409, [](SheetDriver& sheet) { sheet.Choose(1393, 1); }},
};

constexpr Step kBookletSteps[] = {
    {"click", 1387, [](SheetDriver& sheet) { sheet.Click(1387); }},
    {"click", 1486, [](SheetDriver& sheet) { sheet.Click(1486); }},
};

constexpr Step kCoverSteps[] = {
    {"choose the second row", 1478, [](SheetDriver& sheet) { sheet.Choose(1479, 1); }},
    {"click", 1394, [](SheetDriver& sheet) { sheet.Click(1394); }},
    {"click", 1395, [](SheetDriver& sheet) { sheet.Click(1395); }},
};

// One picture and the steps to it: on the page of that title, or in the dialog that a button of the
// page before opens, which is left by a button then.
struct Scene {
  const wchar_t* picture;
  UINT title;  // 0 for a dialog
  int opener;  // 0 for a page
  int leftBy;  // 0 for a page
  std::span<const Step> steps;
};

// clang-format off
constexpr Scene kScenes[] = {
    {L"options",       106, 0,    0,        kOptionsSteps},
    {L"paper",         216, 0,    0,        kPaperSteps},
    {L"custom_papers", 0,   1407, IDCANCEL, kCustomPaperSteps},
    {L"several_pages", 126, 0,    0,        kSeveralPagesSteps},
    {L"booklet",       126, 0,    0,        kBookletSteps},
    {L"booklet_cover", 0,   1065, IDOK,     kCoverSteps},
};
// clang-format on

std::wstring TextOfLibrary(const std::wstring& library, UINT id) {
  const HMODULE module = LoadLibraryExW((ProgramFolder() + L"\\" + library).c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
  wchar_t text[256] = {};
  LoadStringW(module, id, text, 256);
  FreeLibrary(module);
  return text;
}

// A caption as it reads, without the mark of its access key.
std::string Plain(const std::wstring& caption) {
  std::string text = Utf8(caption);
  std::erase(text, '&');
  return text;
}

void SpeakLanguage(const Language& language) {
  const Printer printer(kPrinterName);
  const DriverWords words(ConfigLibraryPath(printer.get()));
  if (!WriteUserString(u"Suffix", win32::Utf16(language.suffix.data()),
                       win32::Utf16(kOstrelDriverName))) {
    throw std::runtime_error("the language can't be chosen");
  }
}

void RefuseMessages(SheetDriver& sheet) {
  if (const auto box = sheet.AnswerBox()) {
    throw std::runtime_error("an unexpected message: " + Utf8(box->text));
  }
}

void Enter(SheetDriver& sheet, const Scene& scene, const Language& language) {
  if (scene.opener == 0) {
    sheet.ShowPage(TextOfLibrary(language.library, scene.title));
  } else {
    sheet.Click(scene.opener);
  }
  RefuseMessages(sheet);
}

// Goes through the sheet once. Result: what was done, a line each, by the captions of the language.
std::string GoThrough(Preferences& preferences, const Language& language,
                      const std::wstring& folder) {
  SheetDriver sheet([&preferences] { return preferences.Show(); });
  Table done({kLeft, kLeft});
  for (const Scene& scene : kScenes) {
    Enter(sheet, scene, language);
    for (const Step& step : scene.steps) {
      const std::string caption = Plain(sheet.Text(step.caption));
      step.how(sheet);
      RefuseMessages(sheet);
      done.Row({caption, step.does});
    }
    const HWND dialog = sheet.Dialog();
    SaveScreenshot(
        dialog == nullptr ? sheet.sheet() : dialog,
        folder + L"/preferences_" + std::wstring(language.suffix) + L"_" + scene.picture + L".bmp");
    if (scene.leftBy != 0) {
      sheet.LeaveDialog(scene.leftBy);
      RefuseMessages(sheet);
    }
  }
  sheet.Press(SheetButton::kOk);
  sheet.Result();
  return done.Text();
}

void ShowDriven(const std::wstring& suffix, const std::wstring& folder) {
  const auto* language = std::ranges::find(kLanguages, suffix, &Language::suffix);
  if (language == std::end(kLanguages)) {
    throw std::runtime_error("there is no language " + Utf8(suffix));
  }
  SpeakLanguage(*language);
  Preferences preferences;
  const std::string done = GoThrough(preferences, *language, folder);
  Say(Heading("Printing preferences, gone through by their controls") + done +
      ChangesText(preferences));
}

int Run(const std::vector<std::wstring>& arguments) {
  const bool desktop = arguments.size() == 1 && arguments[0] == L"--desktop";
  if (!desktop && (arguments.size() != 3 || arguments[0] != L"--driven")) {
    std::fputs("usage: printing_preferences --desktop | --driven SUFFIX FOLDER\n", stderr);
    return 2;
  }
  const DriverPackage package = OstrelPackage();
  InstallDriver(package, ProgramFolder());
  InstallCompanion();
  AddPrinterWithDriver(kPrinterName, package.driverName);
  report::StoreSamples(kPrinterName);
  if (desktop) {
    ShowOnDesktop();
  } else {
    ShowDriven(arguments[1], arguments[2]);
  }
  return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  _setmode(_fileno(stdout), _O_BINARY);
  try {
    return Run(std::vector<std::wstring>(arguments + 1, arguments + count));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "printing_preferences: %s\n", failure.what());
    return 1;
  }
}
