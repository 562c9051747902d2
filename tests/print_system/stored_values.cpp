#include "stored_values.h"

#include "print_system_fixture.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <ostream>
#include <sddl.h>
#include <stdexcept>

namespace ostrel::print_system {
namespace {

// The text form of the user that this process runs for.
std::wstring UserSid() {
  HANDLE token = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) {
    ThrowLastError("OpenProcessToken");
  }
  alignas(TOKEN_USER) BYTE buffer[256] = {};
  DWORD needed = 0;
  const BOOL had = GetTokenInformation(token, ::TokenUser, buffer, sizeof(buffer), &needed);
  CloseHandle(token);
  wchar_t* text = nullptr;
  if (had == FALSE || ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(buffer)->User.Sid,
                                             &text) == FALSE) {
    ThrowLastError("the user's SID");
  }
  std::wstring sid = text;
  LocalFree(text);
  return sid;
}

void ThrowStatus(const char* call, LSTATUS status) {
  SetLastError(static_cast<DWORD>(status));
  ThrowLastError(call);
}

}  // namespace

Value DwordValue(DWORD number) {
  Value value = {REG_DWORD, std::vector<BYTE>(sizeof(number))};
  std::memcpy(value.bytes.data(), &number, sizeof(number));
  return value;
}

Value BinaryValue(std::vector<BYTE> bytes) {
  return {REG_BINARY, std::move(bytes)};
}

Value TextValue(const std::wstring& text) {
  const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
  return {REG_SZ, std::vector<BYTE>(bytes, bytes + (text.size() + 1) * sizeof(wchar_t))};
}

void PrintTo(const Value& value, std::ostream* out) {
  *out << "type " << value.type << ", " << value.bytes.size() << " bytes:";
  for (const BYTE byte : value.bytes) {
    *out << " " << static_cast<int>(byte);
  }
}

// ---- The user's registry ------------------------------------------------------------------------

UserValues::UserValues(const std::wstring& subkey)
    : path_(UserSid() + L"\\SOFTWARE\\OstrelUPD\\" + subkey) {
  DWORD disposition = 0;
  const LSTATUS status =
      RegCreateKeyExW(HKEY_USERS, path_.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                      KEY_ALL_ACCESS, nullptr, &key_, &disposition);
  if (status != ERROR_SUCCESS) {
    ThrowStatus("RegCreateKeyExW", status);
  }
  made_ = disposition == REG_CREATED_NEW_KEY;
  before_ = All();
}

UserValues::~UserValues() {
  for (const Named& now : All()) {
    RegDeleteValueW(key_, now.name.c_str());
  }
  for (const Named& then : before_) {
    Set(then.name.c_str(), then.value);
  }
  RegCloseKey(key_);
  if (made_) {
    RegDeleteKeyW(HKEY_USERS, path_.c_str());
  }
}

void UserValues::Set(const wchar_t* name, const Value& value) {
  const LSTATUS status = RegSetValueExW(key_, name, 0, value.type, value.bytes.data(),
                                        static_cast<DWORD>(value.bytes.size()));
  if (status != ERROR_SUCCESS) {
    ThrowStatus("RegSetValueExW", status);
  }
}

void UserValues::Delete(const wchar_t* name) {
  RegDeleteValueW(key_, name);
}

std::optional<Value> UserValues::Get(const wchar_t* name) const {
  Value value = {REG_NONE, std::vector<BYTE>(2048)};
  auto size = static_cast<DWORD>(value.bytes.size());
  if (RegQueryValueExW(key_, name, nullptr, &value.type, value.bytes.data(), &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.bytes.resize(size);
  return value;
}

std::vector<UserValues::Named> UserValues::All() const {
  std::vector<Named> all;
  for (DWORD index = 0;; ++index) {
    wchar_t name[256] = {};
    DWORD units = 256;
    if (RegEnumValueW(key_, index, name, &units, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      return all;
    }
    if (const std::optional<Value> value = Get(name)) {
      all.push_back({name, *value});
    }
  }
}

// ---- Printers -----------------------------------------------------------------------------------

TemporaryPrinter::TemporaryPrinter(const std::wstring& name) : name_(name) {
  AddPrinterWithDriver(name_, kOstrelDriverName);
  printer_.emplace(name_);
}

TemporaryPrinter::~TemporaryPrinter() {
  printer_.reset();
  EXPECT_NO_THROW(RemovePrinter(name_));
}

void TemporaryPrinter::SetData(const wchar_t* name, const Value& value) {
  std::vector<BYTE> bytes = value.bytes;
  const DWORD status = SetPrinterDataW(get(), const_cast<LPWSTR>(name), value.type, bytes.data(),
                                       static_cast<DWORD>(bytes.size()));
  if (status != ERROR_SUCCESS) {
    ThrowStatus("SetPrinterDataW", static_cast<LSTATUS>(status));
  }
}

std::optional<Value> TemporaryPrinter::GetData(const wchar_t* name) const {
  Value value = {REG_NONE, std::vector<BYTE>(2048)};
  DWORD needed = 0;
  if (GetPrinterDataW(get(), const_cast<LPWSTR>(name), &value.type, value.bytes.data(),
                      static_cast<DWORD>(value.bytes.size()), &needed) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.bytes.resize(needed);
  return value;
}

}  // namespace ostrel::print_system
