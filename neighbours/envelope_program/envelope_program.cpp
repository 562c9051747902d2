// A stand-in for the program that some models' printing preferences start for envelopes, beside the
// driver library: what it would have the user do to the device is up to its maker. This one shows
// nothing and writes down how it was started, for a tester, as the neighbour EnvelopeProgram:
// `CommandLine` and `Title`, its window's, and last `Starts`, which counts.
#include "testers_values.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*none*/, LPWSTR /*arguments*/,
                    int /*show*/) {
  const ostrel::TestersValues tester(L"EnvelopeProgram");
  STARTUPINFOW started = {};
  started.cb = sizeof(started);
  GetStartupInfoW(&started);
  tester.SetText(L"CommandLine", GetCommandLineW());
  tester.SetText(L"Title", started.lpTitle == nullptr ? L"" : started.lpTitle);
  tester.Count(L"Starts");
  return 0;
}
