// What the print-system tests share: the driver installed once for the whole run, the printer made
// with it, and small helpers around records.
#pragma once

#include "core/settings_record.h"
#include "driver_exports.h"
#include "print_system_setup.h"

#include <windows.h>
#include <winspool.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::print_system {

inline constexpr wchar_t kTestPrinter[] = L"Hazel 2 Series";

// Installs the package and makes the printer before the first test.
class InstalledDriver : public testing::Environment {
 public:
  void SetUp() override;
};

// A record as DocumentPropertiesW hands it out, in memory of exactly the bytes that were asked for,
// filled with a poison first.
class Record {
 public:
  explicit Record(std::size_t bytes = kDriverDevmodeBytes, BYTE poison = 0xCC)
      : bytes_(bytes, poison) {}

  DEVMODEW* devmode() { return reinterpret_cast<DEVMODEW*>(bytes_.data()); }
  const DEVMODEW* devmode() const { return reinterpret_cast<const DEVMODEW*>(bytes_.data()); }
  PrivateDevmode& privatePart() {
    return *reinterpret_cast<PrivateDevmode*>(bytes_.data() + kPublicDevmodeBytes);
  }
  std::vector<BYTE>& bytes() { return bytes_; }
  const std::vector<BYTE>& bytes() const { return bytes_; }

 private:
  std::vector<BYTE> bytes_;
};

// A text of a record; it ends at its terminator or with its field.
template <std::size_t kUnits>
std::wstring TextOf(const char16_t (&field)[kUnits]) {
  const std::u16string_view whole(field, kUnits);
  const std::u16string_view text = whole.substr(0, whole.find(u'\0'));
  return std::wstring(text.begin(), text.end());
}
template <std::size_t kUnits>
std::wstring TextOf(const wchar_t (&field)[kUnits]) {
  const std::wstring_view whole(field, kUnits);
  return std::wstring(whole.substr(0, whole.find(L'\0')));
}

// The installed driver's library, loaded from where the print system keeps it.
std::unique_ptr<DriverExports> LoadInstalledDriver();

// The three questions of DocumentPropertiesW about the test printer.
LONG AskRecordSize(HANDLE printer);
LONG AskDefaultRecord(HANDLE printer, Record& out);
LONG AskRepairedRecord(HANDLE printer, const Record& in, Record& out);

// How the user's country prints: by the name of the locale, which the driver doesn't look at.
struct CountryPaper {
  std::int16_t id;
  std::int16_t width_tenths_mm;
  std::int16_t length_tenths_mm;
  const wchar_t* name;
};
const CountryPaper& PaperOfUsersCountry();

// The library with the texts of the user's language.
const wchar_t* LibraryOfUsersLanguage();

// A text of one of the package's libraries, read by the platform; empty when there is none.
std::wstring ShippedText(const std::wstring& library, UINT id);

}  // namespace ostrel::print_system
