// The in-memory platform under the suite that the real one passes too.
#include "conformance/platform_conformance.h"

#include "support/test_world.h"

#include <string>

namespace ostrel {
namespace {

class HeadlessHost {
 public:
  Platform& platform() { return *world_.process.platform; }
  std::u16string printerName() { return test::kPrinterName; }
  std::u16string driverName() { return test::kDriverName; }
  std::u16string languageLibrary() { return test::kEnglishLibraryPath; }
  std::u16string newFile() { return u"conformance.bin"; }
  std::u16string newFolder() { return u"C:\\conformance"; }

 private:
  test::TestWorld world_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, PlatformConformance, HeadlessHost);

}  // namespace
}  // namespace ostrel
