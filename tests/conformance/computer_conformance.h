// What every platform must tell alike of the computer: its clock and the forms of times, texts of
// 8 bits, its names and folders, and other programs' windows. The fourth suite beside
// platform_conformance.h.
//
// A side writes a host and instantiates the suite with it:
//
//   struct Host {
//     Platform& platform();
//     std::u16string printerName();  // of a printer that exists
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(Name, ComputerConformance, Host);
#pragma once

#include "platform/platform.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

template <typename Host>
class ComputerConformance : public testing::Test {
 protected:
  Platform& platform() { return host_.platform(); }
  std::uint32_t lastError() { return platform().debug.GetLastError(); }

  using Form = int (Locale::*)(std::uint32_t, std::uint32_t, const SystemTime&, const char16_t*,
                               char16_t*, int);
  // The text in a buffer of as many units; "0" for a failure.
  std::u16string Formed(Form form, std::uint32_t flags, const char16_t* format, int units,
                        const SystemTime& time = kMonday) {
    std::array<char16_t, 64> buffer = {};
    buffer.fill(u'x');
    const int count =
        (platform().locale.*form)(kLocaleUserDefault, flags, time, format, buffer.data(), units);
    if (count == 0) {
      return u"0";
    }
    EXPECT_EQ(buffer[static_cast<std::size_t>(count) - 1], u'\0');
    EXPECT_EQ(buffer[static_cast<std::size_t>(count)], u'x');
    return {buffer.data(), static_cast<std::size_t>(count) - 1};
  }

  static constexpr SystemTime kMonday = {2026, 3, 1, 9, 4, 5, 7, 0};
  Host host_;
};

TYPED_TEST_SUITE_P(ComputerConformance);

// ---- Times --------------------------------------------------------------------------------------

TYPED_TEST_P(ComputerConformance, ATimeIsFormedAsItsFormatTells) {
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, kTimeForce24Hours, u"HH:mm:ss", 64), u"04:05:07");
  SystemTime evening = this->kMonday;
  evening.wHour = 23;
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, kTimeForce24Hours, u"HH:mm:ss", 64, evening),
            u"23:05:07");
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, u"yyyy-MM-dd", 64), u"2026-03-09");
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, u"M/d/yyyy", 64), u"3/9/2026");
}

TYPED_TEST_P(ComputerConformance, ATimeWithoutAFormatHasTheUsersOne) {
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, nullptr, 64), u"3/9/2026");
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, 0, nullptr, 64), u"4:05:07 AM");
}

TYPED_TEST_P(ComputerConformance, ATimeThatDoesNotFitIsAFailureAndTellsItsSize) {
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, 0, u"HH:mm:ss", 9), u"04:05:07");
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, 0, u"HH:mm:ss", 8), u"0");
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, u"yyyy-MM-dd", 10), u"0");
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  Locale& locale = this->platform().locale;
  EXPECT_EQ(locale.GetTimeFormatW(kLocaleUserDefault, 0, this->kMonday, u"HH:mm:ss", nullptr, 0),
            9);
  EXPECT_EQ(locale.GetDateFormatW(kLocaleUserDefault, 0, this->kMonday, u"yyyy-MM-dd", nullptr, 0),
            11);
}

TYPED_TEST_P(ComputerConformance, ATimeThatIsNoneIsNotFormed) {
  SystemTime noDay = this->kMonday;
  noDay.wMonth = 13;
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, nullptr, 64, noDay), u"0");
  EXPECT_EQ(this->lastError(), kErrorInvalidParameter);
  noDay = this->kMonday;
  noDay.wDay = 32;
  EXPECT_EQ(this->Formed(&Locale::GetDateFormatW, 0, nullptr, 64, noDay), u"0");
  SystemTime noTime = this->kMonday;
  noTime.wHour = 24;
  EXPECT_EQ(this->Formed(&Locale::GetTimeFormatW, 0, u"HH", 64, noTime), u"0");
  EXPECT_EQ(this->lastError(), kErrorInvalidParameter);
}

TYPED_TEST_P(ComputerConformance, TheClockTellsATime) {
  SystemTime time = {};
  this->platform().system.GetLocalTime(&time);
  EXPECT_GE(time.wYear, 2024);
  EXPECT_GE(time.wMonth, 1);
  EXPECT_LE(time.wMonth, 12);
  EXPECT_LE(time.wHour, 23);
  this->platform().system.Sleep(0);
}

// ---- Texts of 8 bits ----------------------------------------------------------------------------

TYPED_TEST_P(ComputerConformance, ATextOf8BitsIsWidenedWithItsTerminator) {
  Locale& locale = this->platform().locale;
  std::array<char16_t, 8> wide = {};
  wide.fill(u'x');
  EXPECT_EQ(locale.MultiByteToWideChar(kAnsiCodePage, "C:\\3", wide.data(), 8), 5);
  EXPECT_EQ(std::u16string_view(wide.data(), 6), std::u16string_view(u"C:\\3\0x", 6));
  EXPECT_EQ(locale.MultiByteToWideChar(kAnsiCodePage, "C:\\3", wide.data(), 5), 5);
  EXPECT_EQ(locale.MultiByteToWideChar(kAnsiCodePage, "C:\\3", nullptr, 0), 5);
  EXPECT_EQ(locale.MultiByteToWideChar(kAnsiCodePage, "", wide.data(), 8), 1);
  EXPECT_EQ(locale.MultiByteToWideChar(kAnsiCodePage, "C:\\3", wide.data(), 4), 0);
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
}

TYPED_TEST_P(ComputerConformance, TheDriverDirectoryIsToldIn8BitsToo) {
  PrintSystem& print = this->platform().print;
  std::uint32_t wideBytes = 0;
  EXPECT_FALSE(print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, nullptr, 0, &wideBytes));
  std::vector<char16_t> wide(wideBytes / sizeof(char16_t) + 1);
  EXPECT_TRUE(
      print.GetPrinterDriverDirectoryW(nullptr, nullptr, 1, wide.data(), wideBytes, &wideBytes));
  const std::u16string directory = wide.data();
  std::uint32_t needed = 0;
  EXPECT_FALSE(print.GetPrinterDriverDirectoryA(nullptr, nullptr, 1, nullptr, 0, &needed));
  EXPECT_EQ(this->lastError(), kErrorInsufficientBuffer);
  EXPECT_GT(needed, directory.size());
  std::vector<char> narrow(needed + 1);
  EXPECT_TRUE(
      print.GetPrinterDriverDirectoryA(nullptr, nullptr, 1, narrow.data(), needed, &needed));
  const std::string text = narrow.data();
  EXPECT_EQ(std::u16string(text.begin(), text.end()), directory);
  EXPECT_FALSE(
      print.GetPrinterDriverDirectoryA(nullptr, nullptr, 2, narrow.data(), needed, &needed));
}

// ---- Names and folders --------------------------------------------------------------------------

TYPED_TEST_P(ComputerConformance, TheComputerHasANameAndTellsItsSize) {
  System& system = this->platform().system;
  std::array<char16_t, 256> name = {};
  auto units = static_cast<std::uint32_t>(name.size());
  EXPECT_TRUE(system.GetComputerNameW(name.data(), &units));
  EXPECT_GT(units, 0U);
  EXPECT_EQ(units, std::u16string(name.data()).size());
  std::uint32_t oneLess = units;
  EXPECT_FALSE(system.GetComputerNameW(name.data(), &oneLess));
  EXPECT_EQ(this->lastError(), kErrorBufferOverflow);
  EXPECT_EQ(oneLess, units + 1);
  EXPECT_TRUE(system.GetComputerNameW(name.data(), &oneLess));
}

TYPED_TEST_P(ComputerConformance, TheSystemHasAFolderAndTellsItsSize) {
  System& system = this->platform().system;
  std::array<char16_t, 260> path = {};
  const std::uint32_t units = system.GetSystemDirectoryW(path.data(), 260);
  EXPECT_GT(units, 3U);
  EXPECT_EQ(units, std::u16string(path.data()).size());
  EXPECT_EQ(system.GetSystemDirectoryW(path.data(), units), units + 1);
  EXPECT_EQ(system.GetSystemDirectoryW(path.data(), units + 1), units);
  EXPECT_EQ(system.GetSystemDirectoryW(nullptr, 0), units + 1);
}

TYPED_TEST_P(ComputerConformance, TheFolderOfAProcessCanBeChangedToOneThatIsThere) {
  System& system = this->platform().system;
  std::array<char16_t, 260> path = {};
  EXPECT_NE(system.GetSystemDirectoryW(path.data(), 260), 0U);
  EXPECT_TRUE(system.SetCurrentDirectoryW(path.data()));
  EXPECT_FALSE(system.SetCurrentDirectoryW(u"C:\\nowhere at all"));
  EXPECT_EQ(this->lastError(), kErrorFileNotFound);
  EXPECT_TRUE(system.SetCurrentDirectoryW(u"C:\\"));
}

// ---- Other programs' windows --------------------------------------------------------------------

TYPED_TEST_P(ComputerConformance, AWindowOfAnUnknownClassIsNotFound) {
  EXPECT_EQ(this->platform().windows.FindWindowW(u"OstrelNoSuchClass"), nullptr);
}

TYPED_TEST_P(ComputerConformance, AMessageForAWindowThatIsNotThereIsNotPosted) {
  constexpr std::uint32_t kNothing = 0;  // WM_NULL
  int place = 0;
  EXPECT_FALSE(this->platform().windows.PostMessageW(reinterpret_cast<WindowHandle>(&place),
                                                     kNothing, 0, 0));
  EXPECT_FALSE(this->platform().windows.PostMessageW(nullptr, kNothing, 0, 0));
}

REGISTER_TYPED_TEST_SUITE_P(
    ComputerConformance, ATimeIsFormedAsItsFormatTells, ATimeWithoutAFormatHasTheUsersOne,
    ATimeThatDoesNotFitIsAFailureAndTellsItsSize, ATimeThatIsNoneIsNotFormed, TheClockTellsATime,
    ATextOf8BitsIsWidenedWithItsTerminator, TheDriverDirectoryIsToldIn8BitsToo,
    TheComputerHasANameAndTellsItsSize, TheSystemHasAFolderAndTellsItsSize,
    TheFolderOfAProcessCanBeChangedToOneThatIsThere, AWindowOfAnUnknownClassIsNotFound,
    AMessageForAWindowThatIsNotThereIsNotPosted);

}  // namespace ostrel
