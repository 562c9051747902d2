// Printer events. This print system sends none, so the test calls the driver's function itself;
// what it then finds is what the print system keeps.
#include "print_system_fixture.h"
#include "stored_values.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace ostrel::print_system {
namespace {

std::wstring UserName() {
  wchar_t name[256] = {};
  DWORD units = 256;
  GetUserNameW(name, &units);
  return std::wstring(name).substr(0, 31);
}

class PrinterEvent : public testing::Test {
 protected:
  static constexpr wchar_t kName[] = L"Printer of events";

  BOOL Send(INT event, const std::wstring& name = kName) {
    return driver_->DrvPrinterEvent(Writable(name), event, 0, 0);
  }
  std::optional<Value> StoredSize() const { return printer_.GetData(size_.c_str()); }
  // The record that the event keeps for the user; empty when there is none.
  std::vector<BYTE> StoredRecord() const {
    std::vector<BYTE> record(kDriverDevmodeBytes + 1);
    DWORD type = 0;
    DWORD needed = 0;
    const DWORD status = GetPrinterDataW(printer_.get(), Writable(data_), &type, record.data(),
                                         static_cast<DWORD>(record.size()), &needed);
    record.resize(status == ERROR_SUCCESS && type == REG_BINARY ? needed : 0);
    return record;
  }
  // The defaults that the print system keeps for all users.
  std::vector<BYTE> Defaults() const {
    DWORD needed = 0;
    GetPrinterW(printer_.get(), 8, nullptr, 0, &needed);
    std::vector<BYTE> buffer(needed);
    if (needed == 0 || GetPrinterW(printer_.get(), 8, buffer.data(), needed, &needed) == FALSE) {
      return {};
    }
    const DEVMODEW* record = reinterpret_cast<const PRINTER_INFO_8W*>(buffer.data())->pDevMode;
    if (record == nullptr) {
      return {};
    }
    const auto* bytes = reinterpret_cast<const BYTE*>(record);
    return {bytes, bytes + record->dmSize + record->dmDriverExtra};
  }

  TemporaryPrinter printer_{kName};
  std::wstring size_ = L"PrivateDevmodeDataSize" + UserName();
  std::wstring data_ = L"PrivateDevmodeData" + UserName();
  std::unique_ptr<DriverExports> driver_ = LoadInstalledDriver();
};

// The private part's bytes; what stands in the public part's texts depends on the code page.
std::vector<BYTE> PrivateBytes(const std::vector<BYTE>& record) {
  return record.size() < kDriverDevmodeBytes
             ? std::vector<BYTE>()
             : std::vector<BYTE>(record.begin() + kPublicDevmodeBytes, record.end());
}

class PrinterEventThatStores : public PrinterEvent, public testing::WithParamInterface<INT> {};

TEST_P(PrinterEventThatStores, KeepsTheDefaultsForTheUserAndForAll) {
  ASSERT_EQ(StoredSize(), std::nullopt);
  EXPECT_EQ(Send(GetParam()), TRUE);
  EXPECT_EQ(StoredSize(), DwordValue(kDriverDevmodeBytes));
  const std::vector<BYTE> record = StoredRecord();
  ASSERT_EQ(record.size(), kDriverDevmodeBytes);
  EXPECT_EQ(std::memcmp(&record[kPublicDevmodeBytes], "PRIV", 4), 0);
  const std::vector<BYTE> defaults = Defaults();
  ASSERT_EQ(defaults.size(), kDriverDevmodeBytes);
  EXPECT_EQ(PrivateBytes(defaults), PrivateBytes(record));
}

TEST_P(PrinterEventThatStores, FailsForAPrinterThatIsNone) {
  EXPECT_EQ(Send(GetParam(), L"No such printer"), FALSE);
  EXPECT_EQ(StoredSize(), std::nullopt);
}

TEST_P(PrinterEventThatStores, BringsADamagedRecordOfThePrinterInOrder) {
  Record damaged;
  ASSERT_EQ(DocumentPropertiesW(nullptr, printer_.get(), Writable(kName), damaged.devmode(),
                                nullptr, DM_OUT_BUFFER),
            IDOK);
  damaged.privatePart().TonerSavingMode = 99;
  damaged.privatePart().ScaleRadio = 50;
  PRINTER_INFO_8W info = {damaged.devmode()};
  ASSERT_NE(SetPrinterW(printer_.get(), 8, reinterpret_cast<LPBYTE>(&info), 0), FALSE);
  EXPECT_EQ(Send(GetParam()), TRUE);
  const std::vector<BYTE> defaults = Defaults();
  ASSERT_EQ(defaults.size(), kDriverDevmodeBytes);
  PrivateDevmode repaired;
  std::memcpy(&repaired, &defaults[kPublicDevmodeBytes], sizeof(repaired));
  EXPECT_EQ(repaired.TonerSavingMode, 0);
  EXPECT_EQ(repaired.ScaleRadio, 50);
}

INSTANTIATE_TEST_SUITE_P(Each, PrinterEventThatStores,
                         testing::Values(PRINTER_EVENT_INITIALIZE, PRINTER_EVENT_CACHE_REFRESH),
                         [](const auto& row) {
                           return row.param == PRINTER_EVENT_INITIALIZE ? "Initialize"
                                                                        : "CacheRefresh";
                         });

TEST_F(PrinterEvent, OfAnotherKindIsTakenNoteOfAndNothingIsKept) {
  for (const INT event :
       {0, PRINTER_EVENT_ADD_CONNECTION, PRINTER_EVENT_DELETE_CONNECTION, PRINTER_EVENT_DELETE,
        PRINTER_EVENT_CACHE_DELETE, PRINTER_EVENT_ATTRIBUTES_CHANGED, 99, -1}) {
    EXPECT_EQ(Send(event), TRUE) << "event " << event;
    EXPECT_EQ(Send(event, L"No such printer"), TRUE) << "event " << event;
  }
  EXPECT_EQ(StoredSize(), std::nullopt);
}

// The cache refresh needs two functions of the spooler's library; this print system has them.
TEST(SpoolerLibrary, ExportsTheWayToItsOwnRightsAndBack) {
  const HMODULE library = LoadLibraryW(L"spoolss.dll");
  ASSERT_NE(library, nullptr);
  EXPECT_NE(GetProcAddress(library, "RevertToPrinterSelf"), nullptr);
  EXPECT_NE(GetProcAddress(library, "ImpersonatePrinterClient"), nullptr);
  FreeLibrary(library);
}

// ---- Driver events ------------------------------------------------------------------------------

TEST(DriverEvent, IsAnsweredWithZeroWhateverItIs) {
  const auto driver = LoadInstalledDriver();
  for (DWORD event = 0; event <= 4; ++event) {
    EXPECT_EQ(driver->DrvDriverEvent(event, 3, nullptr, 0), 0) << "event " << event;
  }
}

}  // namespace
}  // namespace ostrel::print_system
