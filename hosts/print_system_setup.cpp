#include "print_system_setup.h"

#include <stdexcept>

namespace ostrel::print_system {
namespace {

constexpr DWORD kDriverVersion = 3;  // user-mode drivers
constexpr wchar_t kEnvironment[] = L"Windows x64";

// The folder of a driver's version; the print system makes it with the first driver.
std::wstring VersionFolder() {
  return DriverFolder() + L"\\" + std::to_wstring(kDriverVersion);
}

void CopyToDriverFolder(const std::wstring& sourceFolder, const std::wstring& file) {
  const std::wstring from = sourceFolder + L"\\" + file;
  const std::wstring own = VersionFolder() + L"\\" + file;
  const std::wstring to = DriverFolder() + L"\\" + file;
  if (CopyFileW(from.c_str(), to.c_str(), FALSE) == FALSE &&
      CopyFileW(own.c_str(), to.c_str(), FALSE) == FALSE) {
    ThrowLastError(("CopyFileW of " + Utf8(from)).c_str());
  }
}

// A list of names as the print system takes it: each terminated, and the list once more.
std::wstring MultiText(const std::vector<std::wstring>& texts) {
  std::wstring list;
  for (const std::wstring& text : texts) {
    list += text + L'\0';
  }
  return list + L'\0';
}

std::wstring SystemFolder() {
  wchar_t path[MAX_PATH] = {};
  if (GetSystemDirectoryW(path, MAX_PATH) == 0) {
    ThrowLastError("GetSystemDirectoryW");
  }
  return path;
}

void InstallNeighbour(const wchar_t* file, const std::wstring& folder) {
  const std::wstring from = ProgramFolder() + L"\\neighbours\\" + file;
  CreateDirectoryW(folder.c_str(), nullptr);  // fails when it is there, which is as good
  if (CopyFileW(from.c_str(), (folder + L"\\" + file).c_str(), FALSE) == FALSE) {
    ThrowLastError(("CopyFileW of " + Utf8(from)).c_str());
  }
}

void RemoveNeighbour(const wchar_t* file, const std::wstring& folder) {
  if (DeleteFileW((folder + L"\\" + file).c_str()) == FALSE) {
    ThrowLastError(("DeleteFileW of " + Utf8(file)).c_str());
  }
}

}  // namespace

DriverPackage OstrelPackage(const std::wstring& driverName) {
  return {.driverName = driverName,
          .driverFile = kDriverLibraryFile,
          .dataFile = kPrinterDescriptionFile,
          .configFile = kDriverLibraryFile,
          .dependentFiles = {kLanguageLibraryFile, kGermanLibraryFile, kHebrewLibraryFile,
                             kPictureLibraryFile, kConfigFile}};
}

DriverPackage PostScriptPackage() {
  return {.driverName = kPostScriptDriverName,
          .driverFile = L"wineps.drv",
          .dataFile = kPrinterDescriptionFile,
          .configFile = L"wineps.drv",
          .dependentFiles = {}};
}

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH] = {};
  if (GetModuleFileNameW(nullptr, path, MAX_PATH) == 0) {
    ThrowLastError("GetModuleFileNameW");
  }
  const std::wstring_view whole = path;
  return std::wstring(whole.substr(0, whole.rfind(L'\\')));
}

std::wstring DriverFolder() {
  wchar_t path[MAX_PATH] = {};
  DWORD needed = 0;
  std::wstring environment = kEnvironment;
  if (GetPrinterDriverDirectoryW(nullptr, environment.data(), 1, reinterpret_cast<LPBYTE>(path),
                                 sizeof(path), &needed) == FALSE) {
    ThrowLastError("GetPrinterDriverDirectoryW");
  }
  return path;
}

void InstallDriver(const DriverPackage& package, const std::wstring& sourceFolder) {
  CreateDirectoryW(VersionFolder().c_str(), nullptr);  // fails when it is there, which is as good
  std::vector<std::wstring> files = package.dependentFiles;
  files.push_back(package.driverFile);
  files.push_back(package.dataFile);
  files.push_back(package.configFile);
  for (const std::wstring& file : files) {
    CopyToDriverFolder(sourceFolder, file);
  }

  // Bare file names: with a path the print system doesn't tell the driver that it was installed.
  std::wstring dependent = MultiText(package.dependentFiles);
  std::wstring environment = kEnvironment;
  wchar_t dataType[] = L"RAW";
  DRIVER_INFO_3W info = {};
  info.cVersion = kDriverVersion;
  info.pName = Writable(package.driverName);
  info.pEnvironment = environment.data();
  info.pDriverPath = Writable(package.driverFile);
  info.pDataFile = Writable(package.dataFile);
  info.pConfigFile = Writable(package.configFile);
  info.pDependentFiles = package.dependentFiles.empty() ? nullptr : dependent.data();
  info.pDefaultDataType = dataType;
  if (AddPrinterDriverExW(nullptr, 3, reinterpret_cast<LPBYTE>(&info), APD_COPY_ALL_FILES) ==
      FALSE) {
    ThrowLastError("AddPrinterDriverExW");
  }
}

void InstallCompanion() {
  InstallNeighbour(kCompanionFile, VersionFolder());
}

void RemoveCompanion() {
  RemoveNeighbour(kCompanionFile, VersionFolder());
}

void InstallEnvelopeProgram() {
  InstallNeighbour(kEnvelopeProgramFile, VersionFolder());
}

void RemoveEnvelopeProgram() {
  RemoveNeighbour(kEnvelopeProgramFile, VersionFolder());
}

void InstallStatusMonitor() {
  InstallNeighbour(kStatusMonitorFile, SystemFolder());
}

void RemoveStatusMonitor() {
  RemoveNeighbour(kStatusMonitorFile, SystemFolder());
}

void AddPrinterWithDriver(const std::wstring& printerName, const std::wstring& driverName) {
  if (HasPrinter(printerName)) {
    return;
  }
  wchar_t port[] = L"LPT1:";
  wchar_t printProcessor[] = L"winprint";
  wchar_t dataType[] = L"RAW";
  PRINTER_INFO_2W info = {};
  info.pPrinterName = Writable(printerName);
  info.pPortName = port;
  info.pDriverName = Writable(driverName);
  info.pPrintProcessor = printProcessor;
  info.pDatatype = dataType;
  const HANDLE printer = AddPrinterW(nullptr, 2, reinterpret_cast<LPBYTE>(&info));
  if (printer == nullptr) {
    ThrowLastError("AddPrinterW");
  }
  ClosePrinter(printer);
}

bool HasPrinter(const std::wstring& printerName) {
  HANDLE printer = nullptr;
  if (OpenPrinterW(Writable(printerName), &printer, nullptr) == FALSE) {
    return false;
  }
  ClosePrinter(printer);
  return true;
}

void RemovePrinter(const std::wstring& printerName) {
  PRINTER_DEFAULTSW access = {};
  access.DesiredAccess = PRINTER_ALL_ACCESS;
  HANDLE printer = nullptr;
  if (OpenPrinterW(Writable(printerName), &printer, &access) == FALSE) {
    ThrowLastError("OpenPrinterW");
  }
  const BOOL removed = DeletePrinter(printer);
  const DWORD code = GetLastError();
  ClosePrinter(printer);
  if (removed == FALSE) {
    SetLastError(code);
    ThrowLastError("DeletePrinter");
  }
}

std::wstring ConfigLibraryPath(HANDLE printer) {
  DWORD needed = 0;
  GetPrinterDriverW(printer, nullptr, 2, nullptr, 0, &needed);
  std::vector<BYTE> buffer(needed);
  if (GetPrinterDriverW(printer, nullptr, 2, buffer.data(), needed, &needed) == FALSE) {
    ThrowLastError("GetPrinterDriverW");
  }
  return reinterpret_cast<const DRIVER_INFO_2W*>(buffer.data())->pConfigFile;
}

Printer::Printer(const std::wstring& name) {
  if (OpenPrinterW(Writable(name), &handle_, nullptr) == FALSE) {
    ThrowLastError("OpenPrinterW");
  }
}

Printer::~Printer() {
  ClosePrinter(handle_);
}

std::string Utf8(std::wstring_view text) {
  const int units = static_cast<int>(text.size());
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string out(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, out.data(), bytes, nullptr, nullptr);
  return out;
}

void ThrowLastError(const char* call) {
  const DWORD code = GetLastError();
  throw std::runtime_error(std::string(call) + " failed with error " + std::to_string(code));
}

}  // namespace ostrel::print_system
