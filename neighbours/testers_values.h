// What a tester and the stand-ins of this folder tell one another: values of
// HKEY_CURRENT_USER\Software\OstrelNeighbours\ and the neighbour's name.
#pragma once

#include <windows.h>

#include <string>

namespace ostrel {

class TestersValues {
 public:
  explicit TestersValues(const wchar_t* neighbour)
      : key_(std::wstring(L"Software\\OstrelNeighbours\\") + neighbour) {}

  DWORD Number(const wchar_t* name, DWORD otherwise = 0) const {
    DWORD value = 0;
    DWORD size = sizeof(value);
    return RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value,
                        &size) == ERROR_SUCCESS
               ? value
               : otherwise;
  }
  void SetNumber(const wchar_t* name, DWORD value) const {
    RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name, REG_DWORD, &value, sizeof(value));
  }
  // Adds one.
  void Count(const wchar_t* name) const { SetNumber(name, Number(name) + 1); }

  // Empty when there is none.
  std::wstring Text(const wchar_t* name) const {
    constexpr DWORD kMostUnits = 4096;
    std::wstring text(kMostUnits, L'\0');
    DWORD size = kMostUnits * sizeof(wchar_t);
    if (RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(),
                     &size) != ERROR_SUCCESS) {
      size = sizeof(wchar_t);
    }
    text.resize(size / sizeof(wchar_t) - 1);
    return text;
  }
  void SetText(const wchar_t* name, const std::wstring& text) const {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name, REG_SZ, text.c_str(),
                    static_cast<DWORD>(bytes));
  }

  void Clear() const { RegDeleteKeyW(HKEY_CURRENT_USER, key_.c_str()); }

 private:
  std::wstring key_;
};

}  // namespace ostrel
