// The in-memory platform under the suites that the real one passes too.
#include "conformance/platform_conformance.h"

#include "conformance/computer_conformance.h"
#include "conformance/drawing_conformance.h"
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
  std::u16string knownFont() { return u"arial"; }
  std::u16string newFile() { return u"conformance.bin"; }
  std::u16string newFolder() { return u"C:\\conformance"; }

 private:
  test::TestWorld world_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, PlatformConformance, HeadlessHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, DrawingConformance, HeadlessHost);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ComputerConformance, HeadlessHost);

}  // namespace
}  // namespace ostrel
