// Puts driver packages into the print system and makes printers with them: what an installer does,
// for the programs that play the print system's or an application's role.
//
// A package's files lie beside the running program. Functions throw std::runtime_error with the
// call that failed and its error code.
#pragma once

#include <windows.h>
#include <winspool.h>

#include <string>
#include <string_view>
#include <vector>

namespace ostrel::print_system {

struct DriverPackage {
  std::wstring driverName;
  std::wstring driverFile;
  std::wstring dataFile;
  std::wstring configFile;                   // the library that answers DeviceCapabilitiesW
  std::vector<std::wstring> dependentFiles;  // bare names, as the three above
};

inline constexpr wchar_t kOstrelDriverName[] = L"Ostrel Hazel 2 Series";
inline constexpr wchar_t kDriverLibraryFile[] = L"ostrelPCL6ui.dll";
inline constexpr wchar_t kLanguageLibraryFile[] =
    L"ostrelPCL6uienus.dll";  // English, of last resort
inline constexpr wchar_t kGermanLibraryFile[] = L"ostrelPCL6uide.dll";
inline constexpr wchar_t kHebrewLibraryFile[] = L"ostrelPCL6uihe.dll";
inline constexpr wchar_t kPictureLibraryFile[] = L"ostrelPCL6uiResBmp.dll";
inline constexpr wchar_t kConfigFile[] = L"ostrelConfig.ini";
inline constexpr wchar_t kPrinterDescriptionFile[] = L"ostrel_hazel_2.ppd";

// Our driver, under the name of one of its models.
DriverPackage OstrelPackage(const std::wstring& driverName = kOstrelDriverName);

// The print system's own PostScript driver over the same printer description: what ours is measured
// against.
inline constexpr wchar_t kPostScriptDriverName[] = L"PostScript driver of the print system";
DriverPackage PostScriptPackage();

// Folders, each without a trailing backslash: that of the running program, and the one into which
// an installer puts a package's files before it announces the driver.
std::wstring ProgramFolder();
std::wstring DriverFolder();

// Copies a package's files from `sourceFolder`, or from where the print system keeps its own
// drivers, and announces the driver. Installing a driver again brings its files up to date.
void InstallDriver(const DriverPackage& package, const std::wstring& sourceFolder);

// The stand-ins for what lies beside the driver in its folder: the companion library, and the
// program that some models' preferences start; and for the status monitor, in the system's folder.
// Beside the running program they lie in the folder "neighbours".
inline constexpr wchar_t kCompanionFile[] = L"olunidrvui.dll";
inline constexpr wchar_t kEnvelopeProgramFile[] = L"ostrelPCL6EnvDlg.exe";
void InstallCompanion();
void RemoveCompanion();
void InstallEnvelopeProgram();
void RemoveEnvelopeProgram();
inline constexpr wchar_t kStatusMonitorFile[] = L"ostrelsm.exe";
void InstallStatusMonitor();
void RemoveStatusMonitor();

// Makes a printer with an installed driver, unless there is one of that name.
void AddPrinterWithDriver(const std::wstring& printerName, const std::wstring& driverName);

bool HasPrinter(const std::wstring& printerName);

// Takes a printer away, with all that the print system keeps for it.
void RemovePrinter(const std::wstring& printerName);

// The full path of the library that answers for a printer.
std::wstring ConfigLibraryPath(HANDLE printer);

// Owner of an opened printer.
class Printer {
 public:
  explicit Printer(const std::wstring& name);
  ~Printer();
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_ = nullptr;
};

// The platform takes many texts as pointers to writable data and writes to none of them.
inline LPWSTR Writable(const std::wstring& text) {
  return const_cast<LPWSTR>(text.c_str());
}

// For output: programs write UTF-8 whatever the code page is.
std::string Utf8(std::wstring_view text);

[[noreturn]] void ThrowLastError(const char* call);

}  // namespace ostrel::print_system
