// Opens the printing preferences of a printer with this driver, as an application does, and shows
// what came of it: which settings of the record have changed.
//
//   printing_preferences --desktop          for a user at the display; waits for OK or Cancel
//   printing_preferences --driven SUFFIX PICTURE
//                                           without one: the program goes through the sheet by its
//                                           controls, in the language of that suffix, and leaves a
//                                           picture of it, a bitmap file
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
constexpr UINT kPrintOptionsTitle = 106;

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

// One step through the page: what is done, to the control of which caption.
struct Step {
  const char* does;
  int caption;
  void (*how)(SheetDriver&);
};

constexpr Step kSteps[] = {
    {"type 3", 1018, [](SheetDriver& sheet) { sheet.Type(1019, L"3"); }},
    {"one more by the arrow", 1018, [](SheetDriver& sheet) { sheet.Spin(1020, true); }},
    {"click", 1008, [](SheetDriver& sheet) { sheet.Click(1008); }},
    {"click", 1125, [](SheetDriver& sheet) { sheet.Click(1125); }},
    {"click", 1243, [](SheetDriver& sheet) { sheet.Click(1243); }},
    {"choose the second row", 1483, [](SheetDriver& sheet) { sheet.Choose(1393, 1); }},
};

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

// Goes through the sheet once. Result: what was done, a line each, by the captions of the language.
std::string GoThrough(Preferences& preferences, const Language& language,
                      const std::wstring& picture) {
  SheetDriver sheet([&preferences] { return preferences.Show(); });
  sheet.ShowPage(TextOfLibrary(language.library, kPrintOptionsTitle));
  Table done({kLeft, kLeft});
  for (const Step& step : kSteps) {
    step.how(sheet);
    if (const auto box = sheet.AnswerBox()) {
      throw std::runtime_error("an unexpected message: " + Utf8(box->text));
    }
    done.Row({Plain(sheet.Text(step.caption)), step.does});
  }
  SaveScreenshot(sheet.sheet(), picture);
  sheet.Press(SheetButton::kOk);
  sheet.Result();
  return done.Text();
}

void ShowDriven(const std::wstring& suffix, const std::wstring& picture) {
  const auto* language = std::ranges::find(kLanguages, suffix, &Language::suffix);
  if (language == std::end(kLanguages)) {
    throw std::runtime_error("there is no language " + Utf8(suffix));
  }
  SpeakLanguage(*language);
  Preferences preferences;
  const std::string done = GoThrough(preferences, *language, picture);
  Say(Heading("Printing preferences, gone through by their controls") + done +
      ChangesText(preferences));
}

int Run(const std::vector<std::wstring>& arguments) {
  const bool desktop = arguments.size() == 1 && arguments[0] == L"--desktop";
  if (!desktop && (arguments.size() != 3 || arguments[0] != L"--driven")) {
    std::fputs("usage: printing_preferences --desktop | --driven SUFFIX PICTURE\n", stderr);
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
