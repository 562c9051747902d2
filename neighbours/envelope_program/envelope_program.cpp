// A stand-in for the program that some models' printing preferences start for envelopes, beside the
// driver library: what it would have the user do to the device is up to its maker. This one shows
// nothing and writes down how it was started, for a tester, in
// HKEY_CURRENT_USER\Software\OstrelNeighbours\EnvelopeProgram: `CommandLine` and `Title`, its
// window's, and last `Starts`, which counts.
#include <windows.h>

#include <string>

namespace {

constexpr wchar_t kTestersKey[] = L"Software\\OstrelNeighbours\\EnvelopeProgram";

void Write(const wchar_t* name, const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  RegSetKeyValueW(HKEY_CURRENT_USER, kTestersKey, name, REG_SZ, text.c_str(),
                  static_cast<DWORD>(bytes));
}

DWORD Starts() {
  DWORD starts = 0;
  DWORD size = sizeof(starts);
  RegGetValueW(HKEY_CURRENT_USER, kTestersKey, L"Starts", RRF_RT_REG_DWORD, nullptr, &starts,
               &size);
  return starts;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*none*/, LPWSTR /*arguments*/,
                    int /*show*/) {
  STARTUPINFOW started = {};
  started.cb = sizeof(started);
  GetStartupInfoW(&started);
  Write(L"CommandLine", GetCommandLineW());
  Write(L"Title", started.lpTitle == nullptr ? L"" : started.lpTitle);
  const DWORD starts = Starts() + 1;
  RegSetKeyValueW(HKEY_CURRENT_USER, kTestersKey, L"Starts", REG_DWORD, &starts, sizeof(starts));
  return 0;
}
