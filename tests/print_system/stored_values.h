// What the print system and the registry keep for the driver, written and read with the platform's
// own calls. Whatever a test changes through here is as it was when the object goes.
#pragma once

#include "print_system_setup.h"

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ostrel::print_system {

// A stored value: its type and its bytes.
struct Value {
  DWORD type;
  std::vector<BYTE> bytes;
  bool operator==(const Value&) const = default;
};

Value DwordValue(DWORD number);
Value BinaryValue(std::vector<BYTE> bytes);
// A text with its terminator.
Value TextValue(const std::wstring& text);

void PrintTo(const Value& value, std::ostream* out);

// A subkey of the calling user's part of the registry, where the driver keeps what it knows about a
// printer or a driver of that name: HKEY_USERS\(SID)\SOFTWARE\OstrelUPD\(name).
class UserValues {
 public:
  explicit UserValues(const std::wstring& subkey);
  ~UserValues();
  UserValues(const UserValues&) = delete;
  UserValues& operator=(const UserValues&) = delete;

  void Set(const wchar_t* name, const Value& value);
  void Delete(const wchar_t* name);
  // Without a value where there is none.
  std::optional<Value> Get(const wchar_t* name) const;

 private:
  struct Named {
    std::wstring name;
    Value value;
  };
  std::vector<Named> All() const;

  HKEY key_ = nullptr;
  std::wstring path_;
  bool made_ = false;
  std::vector<Named> before_;
};

// A printer of a test's own. The print system can't delete printer data, but takes a whole printer
// away with them.
class TemporaryPrinter {
 public:
  explicit TemporaryPrinter(const std::wstring& name);
  ~TemporaryPrinter();
  TemporaryPrinter(const TemporaryPrinter&) = delete;
  TemporaryPrinter& operator=(const TemporaryPrinter&) = delete;

  const std::wstring& name() const { return name_; }
  HANDLE get() const { return printer_->get(); }

  void SetData(const wchar_t* name, const Value& value);
  std::optional<Value> GetData(const wchar_t* name) const;

 private:
  std::wstring name_;
  std::optional<Printer> printer_;
};

}  // namespace ostrel::print_system
