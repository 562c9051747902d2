#include "print_system_fixture.h"

#include <stdexcept>

namespace ostrel::print_system {
namespace {

constexpr CountryPaper kLetter = {1, 2159, 2794, L"Letter"};
constexpr CountryPaper kA4 = {9, 2100, 2970, L"A4"};

std::wstring UserLocaleName() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
  return name;
}

LONG AskDocumentProperties(HANDLE printer, DEVMODEW* out, const DEVMODEW* in, DWORD mode) {
  return DocumentPropertiesW(nullptr, printer, Writable(kTestPrinter), out,
                             const_cast<DEVMODEW*>(in), mode);
}

}  // namespace

void InstalledDriver::SetUp() {
  const DriverPackage package = OstrelPackage();
  InstallDriver(package, ProgramFolder());
  InstallCompanion();
  InstallEnvelopeProgram();
  AddPrinterWithDriver(kTestPrinter, package.driverName);
}

std::unique_ptr<DriverExports> LoadInstalledDriver() {
  const Printer printer(kTestPrinter);
  return std::make_unique<DriverExports>(ConfigLibraryPath(printer.get()));
}

LONG AskRecordSize(HANDLE printer) {
  return AskDocumentProperties(printer, nullptr, nullptr, 0);
}

LONG AskDefaultRecord(HANDLE printer, Record& out) {
  return AskDocumentProperties(printer, out.devmode(), nullptr, DM_OUT_BUFFER);
}

LONG AskRepairedRecord(HANDLE printer, const Record& in, Record& out) {
  return AskDocumentProperties(printer, out.devmode(), in.devmode(), DM_IN_BUFFER | DM_OUT_BUFFER);
}

const CountryPaper& PaperOfUsersCountry() {
  const std::wstring name = UserLocaleName();
  if (name == L"en-US") {
    return kLetter;
  }
  if (name == L"de-DE") {
    return kA4;
  }
  throw std::runtime_error("these tests know the locales en-US and de-DE, not " + Utf8(name));
}

const wchar_t* LibraryOfUsersLanguage() {
  return UserLocaleName() == L"de-DE" ? kGermanLibraryFile : kLanguageLibraryFile;
}

std::wstring ShippedText(const std::wstring& library, UINT id) {
  const HMODULE module = LoadLibraryExW((ProgramFolder() + L"\\" + library).c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
  wchar_t text[512] = {};
  LoadStringW(module, id, text, 512);
  FreeLibrary(module);
  return text;
}

}  // namespace ostrel::print_system
