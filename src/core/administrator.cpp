#include "core/administrator.h"

#include "core/heap_block.h"
#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::u16string_view kAdministrators = u"S-1-5-32-544";
// The system version of which a group must be enabled to count.
constexpr std::uint32_t kMajorVersionWithDenials = 6;

bool IsAdministrators(void* sid) {
  Security& security = World().security;
  char16_t* text = nullptr;
  if (!security.ConvertSidToStringSidW(sid, &text)) {
    return false;
  }
  const bool same = CallerText(text) == kAdministrators;
  security.LocalFree(text);
  return same;
}

HeapBlock<TokenGroups> GroupsOfProcess() {
  Security& security = World().security;
  TokenHandle token = nullptr;
  if (!security.OpenProcessToken(&token)) {
    return {};
  }
  auto groups = AskForBlock<TokenGroups>(
      [&](TokenGroups* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        return security.GetTokenInformation(token, kTokenGroups, buffer, sizeBytes, neededBytes);
      });
  security.CloseHandle(token);
  return groups;
}

}  // namespace

bool IsUserAdministrator() {
  const HeapBlock<TokenGroups> groups = GroupsOfProcess();
  if (!groups) {
    return false;
  }
  const bool mustBeEnabled = World().system.GetMajorVersion() == kMajorVersionWithDenials;
  const std::span<const TokenUser> rows(groups->Groups, groups->GroupCount);
  return std::ranges::any_of(rows, [mustBeEnabled](const TokenUser& group) {
    const bool counts = !mustBeEnabled || (group.Attributes & kGroupEnabled) != 0;
    return counts && IsAdministrators(group.Sid);
  });
}

}  // namespace ostrel
