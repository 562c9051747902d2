// The clock and the forms of its times, texts of 8 bits, the computer's name and its folders.
#include "platform/headless/headless_platform.h"

#include <algorithm>
#include <iterator>

namespace ostrel::headless {

// ---- Times --------------------------------------------------------------------------------------

namespace {

// The letters of a format that stand for a part of a time. Of letters that begin alike the longer
// ones come first.
struct TimePart {
  std::u16string_view letters;
  std::uint16_t SystemTime::*part;
};
constexpr TimePart kTimeParts[] = {
    {u"yyyy", &SystemTime::wYear}, {u"MM", &SystemTime::wMonth},  {u"M", &SystemTime::wMonth},
    {u"dd", &SystemTime::wDay},    {u"d", &SystemTime::wDay},     {u"HH", &SystemTime::wHour},
    {u"mm", &SystemTime::wMinute}, {u"ss", &SystemTime::wSecond},
};

// The hour of a clock with two halves of a day, and the half's name, are made of the hour.
constexpr std::u16string_view kHourOfHalf = u"h";
constexpr std::u16string_view kHalf = u"tt";
constexpr std::uint16_t kNoon = 12;

void AddNumber(std::u16string& out, std::size_t width, std::uint16_t number) {
  const std::string digits = std::to_string(number);
  out.append(width - std::min(width, digits.size()), u'0').append(digits.begin(), digits.end());
}

std::u16string Formatted(std::u16string_view format, const SystemTime& time) {
  std::u16string out;
  while (!format.empty()) {
    std::size_t taken = 1;
    const auto* part = std::ranges::find_if(
        kTimeParts, [&](const TimePart& row) { return format.starts_with(row.letters); });
    if (part != std::end(kTimeParts)) {
      taken = part->letters.size();
      AddNumber(out, taken, time.*part->part);
    } else if (format.starts_with(kHourOfHalf)) {
      AddNumber(out, 1, time.wHour % kNoon == 0 ? kNoon : time.wHour % kNoon);
    } else if (format.starts_with(kHalf)) {
      taken = kHalf.size();
      out += time.wHour < kNoon ? u"AM" : u"PM";
    } else {
      out += format.front();
    }
    format.remove_prefix(taken);
  }
  return out;
}

bool IsDay(const SystemTime& time) {
  constexpr std::uint16_t kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (time.wMonth < 1 || time.wMonth > std::size(kDays)) {
    return false;
  }
  const bool isLeapYear = time.wYear % 4 == 0 && (time.wYear % 100 != 0 || time.wYear % 400 == 0);
  const int days = kDays[time.wMonth - 1] + (time.wMonth == 2 && isLeapYear ? 1 : 0);
  return time.wDay >= 1 && time.wDay <= days;
}

bool IsTimeOfDay(const SystemTime& time) {
  return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60;
}

}  // namespace

// Hands a text out as the platform does: 0 when it doesn't fit, its size when it is only asked for.
int HeadlessLocale::HandOut(std::u16string_view text, char16_t* buffer, int units) {
  const int needed = static_cast<int>(text.size()) + 1;
  if (units == 0) {
    return needed;
  }
  if (units < needed) {
    debug_.SetLastError(kErrorInsufficientBuffer);
    return 0;
  }
  buffer[text.copy(buffer, text.size())] = u'\0';
  return needed;
}

int HeadlessLocale::HandOutTime(const char* operation, bool isTime, std::u16string_view format,
                                const SystemTime& time, char16_t* buffer, int units) {
  if (faults_.ShouldFail(operation) || !isTime) {
    debug_.SetLastError(kErrorInvalidParameter);
    return 0;
  }
  return HandOut(Formatted(format, time), buffer, units);
}

int HeadlessLocale::GetDateFormatW(std::uint32_t /*locale*/, std::uint32_t /*flags*/,
                                   const SystemTime& time, const char16_t* format, char16_t* buffer,
                                   int units) {
  return HandOutTime("GetDateFormatW", IsDay(time), format == nullptr ? dateFormat : format, time,
                     buffer, units);
}

int HeadlessLocale::GetTimeFormatW(std::uint32_t /*locale*/, std::uint32_t /*flags*/,
                                   const SystemTime& time, const char16_t* format, char16_t* buffer,
                                   int units) {
  return HandOutTime("GetTimeFormatW", IsTimeOfDay(time), format == nullptr ? timeFormat : format,
                     time, buffer, units);
}

// ---- Texts of 8 bits ----------------------------------------------------------------------------

void HeadlessLocale::CharUpperW(char16_t* text) {
  for (; *text != u'\0'; ++text) {
    const bool isSmall =
        (*text >= u'a' && *text <= u'z') || (*text >= 0xE0 && *text <= 0xFE && *text != 0xF7);
    *text = static_cast<char16_t>(isSmall ? *text - 0x20 : *text);
  }
}

int HeadlessLocale::MultiByteToWideChar(std::uint32_t /*codePage*/, const char* text,
                                        char16_t* buffer, int units) {
  if (faults_.ShouldFail("MultiByteToWideChar")) {
    return 0;
  }
  std::u16string wide;
  for (; *text != '\0'; ++text) {
    wide += static_cast<unsigned char>(*text);
  }
  return HandOut(wide, buffer, units);
}

// ---- The computer -------------------------------------------------------------------------------

void HeadlessSystem::Sleep(std::uint32_t duration_ms) {
  sleeps_ms.push_back(duration_ms);
  if (onSleep) {
    onSleep();
  }
}

bool HeadlessSystem::GetComputerNameW(char16_t* buffer, std::uint32_t* units) {
  if (faults_.ShouldFail("GetComputerNameW")) {
    return false;
  }
  if (*units <= computerName.size()) {
    *units = static_cast<std::uint32_t>(computerName.size() + 1);
    debug_.SetLastError(kErrorBufferOverflow);
    return false;
  }
  buffer[computerName.copy(buffer, computerName.size())] = u'\0';
  *units = static_cast<std::uint32_t>(computerName.size());
  return true;
}

std::uint32_t HeadlessSystem::GetSystemDirectoryW(char16_t* path, std::uint32_t units) {
  const auto size = static_cast<std::uint32_t>(systemDirectory.size());
  if (faults_.ShouldFail("GetSystemDirectoryW")) {
    return 0;
  }
  if (units <= size) {
    return size + 1;
  }
  path[systemDirectory.copy(path, size)] = u'\0';
  return size;
}

bool HeadlessSystem::SetCurrentDirectoryW(const char16_t* path) {
  constexpr std::u16string_view kRoot = u"C:\\";
  const bool isThere = path == systemDirectory || path == kRoot || files_.IsDirectory(path);
  if (faults_.ShouldFail("SetCurrentDirectoryW") || !isThere) {
    debug_.SetLastError(kErrorFileNotFound);
    return false;
  }
  currentDirectory = path;
  return true;
}

}  // namespace ostrel::headless
