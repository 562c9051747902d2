// Runs the tests that talk to the driver through the print system. They belong into a private one,
// for they install drivers and printers: tools/print-system makes it.
#include "print_system_fixture.h"

#include <gtest/gtest.h>

int wmain(int count, wchar_t** arguments) {
  testing::InitGoogleTest(&count, arguments);
  testing::AddGlobalTestEnvironment(new ostrel::print_system::InstalledDriver);
  return RUN_ALL_TESTS();
}
