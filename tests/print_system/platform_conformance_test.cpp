// The real platform under the suites that every platform must pass.
#include "conformance/platform_conformance.h"

#include "conformance/computer_conformance.h"
#include "conformance/drawing_conformance.h"
#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"
#include "print_system_fixture.h"
#include "stored_values.h"

namespace ostrel {
namespace {

std::u16string Utf16Text(const std::wstring& text) {
  return {text.begin(), text.end()};
}

class SystemHost {
 public:
  // A case may leave its folder behind, and the values that it set for the user.
  ~SystemHost() {
    if (!folder_.empty()) {
      RemoveDirectoryW(folder_.c_str());
    }
  }

  Platform& platform() { return win32::SystemPlatform(); }
  std::u16string printerName() { return Utf16Text(print_system::kTestPrinter); }
  std::u16string driverName() { return Utf16Text(print_system::kOstrelDriverName); }
  std::u16string languageLibrary() {
    return Utf16Text(print_system::DriverFolder() + L"\\3\\" + print_system::kLanguageLibraryFile);
  }
  std::u16string knownFont() { return u"tahoma"; }
  std::u16string newFile() {
    const std::wstring path = TemporaryFolder() + L"platform conformance.bin";
    DeleteFileW(path.c_str());
    ::SetLastError(kConformanceUnsetError);
    return Utf16Text(path);
  }
  std::u16string newFolder() {
    folder_ = TemporaryFolder() + L"platform conformance";
    RemoveDirectoryW(folder_.c_str());
    ::SetLastError(kConformanceUnsetError);
    return Utf16Text(folder_);
  }

 private:
  static std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    return folder;
  }

  std::wstring folder_;
  print_system::UserValues userValues_{L"Conformance"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, PlatformConformance, SystemHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Windows, DrawingConformance, SystemHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Windows, ComputerConformance, SystemHost);

}  // namespace
}  // namespace ostrel
