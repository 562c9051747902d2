#include "common_sheet.h"

#include <string_view>

namespace ostrel::print_system {
namespace {

constexpr WORD kReasonBeforeInit = 5;  // the print system's own question, not for drivers

LONG Forward(PPROPSHEETUI_INFO info, LPARAM lParam) {
  if (info->Reason == kReasonBeforeInit) {
    return 1;
  }
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the protocol passes pointers this way.
  auto* call = reinterpret_cast<CommonSheetCall*>(info->lParamInit);
  const LONG answer =
      call->function(info, info->Reason == PROPSHEETUI_REASON_INIT ? call->header : lParam);
  call->seen.push_back({info->Reason, answer});
  return answer;
}

}  // namespace

bool HasStandInSheet() {
  wchar_t choice[16] = {};
  GetEnvironmentVariableW(L"COMMON_SHEET", choice, 16);
  return std::wstring_view(choice) == L"stand-in";
}

void PrintTo(const SheetReasonCall& call, std::ostream* out) {
  *out << "reason " << call.reason << " -> " << call.answer;
}

LONG CommonSheetCall::Run() {
  return CommonPropertySheetUIW(nullptr, Forward, reinterpret_cast<LPARAM>(this), &result);
}

}  // namespace ostrel::print_system
