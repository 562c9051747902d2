// The computer of the in-memory platform: its clock, its names, its folders, and windows of other
// programs. What it has in common with the real one stands in conformance/computer_conformance.h.
#include "platform/headless/headless_platform.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrel::headless {
namespace {

using testing::ElementsAre;

class Computer : public testing::Test {
 protected:
  std::u16string Date(const char16_t* format) {
    std::array<char16_t, 40> text = {};
    platform_.locale.GetDateFormatW(kLocaleUserDefault, 0, time_, format, text.data(), 40);
    return text.data();
  }
  std::u16string Time(const char16_t* format) {
    std::array<char16_t, 40> text = {};
    platform_.locale.GetTimeFormatW(kLocaleUserDefault, 0, time_, format, text.data(), 40);
    return text.data();
  }

  HeadlessPlatform platform_;
  SystemTime time_ = platform_.system.localTime;
};

TEST_F(Computer, TheClockStandsWhereATestPutIt) {
  platform_.system.localTime.wHour = 3;
  SystemTime told = {};
  platform_.system.GetLocalTime(&told);
  EXPECT_EQ(told, (SystemTime{2026, 3, 1, 9, 3, 5, 7, 0}));
}

TEST_F(Computer, TheLocalesFormsAreSettable) {
  EXPECT_EQ(Date(nullptr), u"3/9/2026");
  EXPECT_EQ(Time(nullptr), u"2:05:07 PM");
  platform_.locale.dateFormat = u"dd.MM.yyyy";
  platform_.locale.timeFormat = u"HH:mm";
  EXPECT_EQ(Date(nullptr), u"09.03.2026");
  EXPECT_EQ(Time(nullptr), u"14:05");
}

TEST_F(Computer, TheHalvesOfADayBeginAtTwelve) {
  for (const auto& [hour, text] : {std::pair<std::uint16_t, const char16_t*>{0, u"12 AM"},
                                   {1, u"1 AM"},
                                   {11, u"11 AM"},
                                   {12, u"12 PM"},
                                   {23, u"11 PM"}}) {
    time_.wHour = hour;
    EXPECT_EQ(Time(u"h tt"), text);
  }
}

TEST_F(Computer, ADayMustBeInItsMonth) {
  const auto isDay = [this](std::uint16_t year, std::uint16_t month, std::uint16_t day) {
    time_.wYear = year;
    time_.wMonth = month;
    time_.wDay = day;
    return !Date(u"d").empty();
  };
  EXPECT_TRUE(isDay(2024, 2, 29));
  EXPECT_TRUE(isDay(2000, 2, 29));
  EXPECT_FALSE(isDay(2023, 2, 29));
  EXPECT_FALSE(isDay(2100, 2, 29));
  EXPECT_TRUE(isDay(2023, 12, 31));
  EXPECT_FALSE(isDay(2023, 4, 31));
  EXPECT_FALSE(isDay(2023, 0, 1));
  EXPECT_FALSE(isDay(2023, 1, 0));
}

TEST_F(Computer, WhatTheLocaleCannotTellIsAFailure) {
  platform_.faults.FailOperation("GetDateFormatW", 1);
  platform_.faults.FailOperation("GetTimeFormatW", 1);
  platform_.faults.FailOperation("MultiByteToWideChar", 1);
  std::array<char16_t, 40> text = {};
  EXPECT_EQ(platform_.locale.GetDateFormatW(0x400, 0, time_, nullptr, text.data(), 40), 0);
  EXPECT_EQ(platform_.locale.GetTimeFormatW(0x400, 0, time_, nullptr, text.data(), 40), 0);
  EXPECT_EQ(platform_.locale.MultiByteToWideChar(0, "a", text.data(), 40), 0);
  EXPECT_EQ(text[0], u'\0');
}

TEST_F(Computer, LettersBeyondAsciiAreThoseOfTheFirstPage) {
  std::array<char16_t, 4> text = {};
  EXPECT_EQ(platform_.locale.MultiByteToWideChar(0, "\xE9?", text.data(), 4), 3);
  EXPECT_EQ(std::u16string(text.data()), u"\u00E9?");
}

TEST_F(Computer, ADriverDirectoryBeyondTheCodePageLosesItsLetters) {
  platform_.print.driverDirectory = u"C:\\\u0434";
  std::uint32_t needed = 0;
  std::array<char, 8> path = {};
  EXPECT_TRUE(
      platform_.print.GetPrinterDriverDirectoryA(nullptr, nullptr, 1, path.data(), 5, &needed));
  EXPECT_EQ(needed, 5U);
  EXPECT_STREQ(path.data(), "C:\\?");
  platform_.faults.FailOperation("GetPrinterDriverDirectoryA", 1);
  EXPECT_FALSE(
      platform_.print.GetPrinterDriverDirectoryA(nullptr, nullptr, 1, path.data(), 5, &needed));
}

TEST_F(Computer, WaitingTakesNoTimeAndIsWrittenDown) {
  int played = 0;
  platform_.system.Sleep(50);
  platform_.system.onSleep = [&played] { ++played; };
  platform_.system.Sleep(100);
  EXPECT_THAT(platform_.system.sleeps_ms, ElementsAre(50U, 100U));
  EXPECT_EQ(played, 1);
}

TEST_F(Computer, NamesAndFoldersFailByTheirNames) {
  HeadlessSystem& system = platform_.system;
  for (const char* name : {"GetComputerNameW", "GetSystemDirectoryW", "SetCurrentDirectoryW"}) {
    platform_.faults.FailOperation(name, 1);
  }
  std::array<char16_t, 40> text = {};
  std::uint32_t units = 40;
  EXPECT_FALSE(system.GetComputerNameW(text.data(), &units));
  EXPECT_EQ(units, 40U);
  EXPECT_EQ(system.GetSystemDirectoryW(text.data(), 40), 0U);
  EXPECT_FALSE(system.SetCurrentDirectoryW(u"C:\\windows\\system32"));
  EXPECT_EQ(system.currentDirectory, u"C:\\");
  EXPECT_EQ(text[0], u'\0');
}

TEST_F(Computer, AFolderOfTheFileSystemCanBeTheCurrentOne) {
  EXPECT_FALSE(platform_.system.SetCurrentDirectoryW(u"C:\\data"));
  EXPECT_TRUE(platform_.files.CreateDirectoryW(u"C:\\data"));
  EXPECT_TRUE(platform_.system.SetCurrentDirectoryW(u"C:\\data"));
  EXPECT_EQ(platform_.system.currentDirectory, u"C:\\data");
}

// ---- Windows of other programs ------------------------------------------------------------------

TEST_F(Computer, AWindowIsFoundByItsClassWhateverItsLetters) {
  std::vector<std::uint32_t> heard;
  const WindowHandle monitor = platform_.windows.CreatePlayedWindow(
      {0, 0, 10, 10},
      [&heard](std::uint32_t message, std::uintptr_t, std::intptr_t) {
        heard.push_back(message);
        return std::intptr_t{5};
      },
      u"OstrelMonitor");
  HeadlessWindows& windows = platform_.windows;
  EXPECT_EQ(windows.FindWindowW(u"ostrelmonitor"), monitor);
  EXPECT_EQ(windows.FindWindowW(u"Ostrel"), nullptr);
  EXPECT_EQ(windows.FindWindowW(nullptr), nullptr);
  platform_.faults.FailOperation("FindWindowW", 1);
  EXPECT_EQ(windows.FindWindowW(u"OstrelMonitor"), nullptr);

  EXPECT_TRUE(windows.PostMessageW(monitor, 1044, 0, 0));
  EXPECT_THAT(heard, testing::IsEmpty());  // not before it is delivered
  EXPECT_EQ(windows.SendMessageW(monitor, kWmCopyData, 0, 0), 5);
  windows.DeliverPosted();
  windows.DeliverPosted();
  EXPECT_THAT(heard, ElementsAre(kWmCopyData, 1044U));
  platform_.faults.FailOperation("PostMessageW", 1);
  EXPECT_FALSE(windows.PostMessageW(monitor, 1044, 0, 0));
  EXPECT_TRUE(windows.PostMessageW(monitor, 1044, 0, 0));
  EXPECT_TRUE(windows.DestroyWindow(monitor));
  windows.DeliverPosted();  // to nobody
  EXPECT_EQ(std::ranges::count(heard, 1044U), 1);
}

}  // namespace
}  // namespace ostrel::headless
