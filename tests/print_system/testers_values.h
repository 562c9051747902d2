// What the companion's stand-in is told to answer, and how often it was asked. All of it goes with
// the object.
#pragma once

#include <windows.h>

namespace ostrel::print_system {

class TestersValues {
 public:
  TestersValues() { RegDeleteKeyW(HKEY_CURRENT_USER, kKey); }
  ~TestersValues() { RegDeleteKeyW(HKEY_CURRENT_USER, kKey); }
  TestersValues(const TestersValues&) = delete;
  TestersValues& operator=(const TestersValues&) = delete;

  void Set(const wchar_t* name, DWORD value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, REG_DWORD, &value, sizeof(value));
  }
  DWORD Get(const wchar_t* name) const {
    DWORD value = 0;
    DWORD size = sizeof(value);
    RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_DWORD, nullptr, &value, &size);
    return value;
  }

 private:
  static constexpr wchar_t kKey[] = L"Software\\OstrelNeighbours\\Companion";
};

}  // namespace ostrel::print_system
