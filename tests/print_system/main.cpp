// Runs the tests that talk to the driver through the print system. They belong into a private one,
// for they install drivers and printers: tools/print-system makes it.
#include "print_system_fixture.h"

#include <gtest/gtest.h>

int wmain(int count, wchar_t** arguments) {
  testing::InitGoogleTest(&count, arguments);
  testing::AddGlobalTestEnvironment(new ostrel::print_system::InstalledDriver);
  const int result = RUN_ALL_TESTS();
  // A filter that fits nothing is a mistake, not a success.
  return testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 2 : result;
}
