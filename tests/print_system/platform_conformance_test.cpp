// The real platform under the suite that every platform must pass.
#include "conformance/platform_conformance.h"

#include "platform/win32/native_types.h"
#include "platform/win32/win32_platform.h"
#include "print_system_fixture.h"

namespace ostrel {
namespace {

std::u16string Utf16Text(const std::wstring& text) {
  return {text.begin(), text.end()};
}

struct SystemHost {
  Platform& platform() { return win32::SystemPlatform(); }
  std::u16string printerName() { return Utf16Text(print_system::kTestPrinter); }
  std::u16string driverName() { return Utf16Text(print_system::kOstrelDriverName); }
  std::u16string languageLibrary() {
    return Utf16Text(print_system::DriverFolder() + L"\\3\\" + print_system::kLanguageLibraryFile);
  }
  std::u16string newFile() {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"platform conformance.bin";
    DeleteFileW(path.c_str());
    ::SetLastError(kConformanceUnsetError);
    return Utf16Text(path);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, PlatformConformance, SystemHost);

}  // namespace
}  // namespace ostrel
