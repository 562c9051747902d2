// Results of the low layers: HRESULT values as the platform defines them (winerror.h).
#pragma once

#include <cstdint>

namespace ostrel {

enum Result : std::uint32_t {
  kResultOk = 0,
  kResultNoLanguage = 1,              // a success with a remark (S_FALSE): no language library
  kResultNullObject = 0x8000000A,     // E_PENDING: the object asked is not there
  kResultFail = 0x80004005,           // E_FAIL
  kResultUnknownKey = 0x80070057,     // E_INVALIDARG
  kResultWidthMismatch = 0x8007007A,  // HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER)
};

// The top bit of an HRESULT marks a failure.
constexpr bool Failed(Result result) {
  return (static_cast<std::uint32_t>(result) & 0x80000000U) != 0;
}

}  // namespace ostrel
