// Any bytes as the record of the two entry points that read one without making a context: whether
// it can be printed with, and the attributes of its job.
#include "caller_record.h"
#include "core/devmode_queries.h"
#include "support/test_world.h"

#include <array>
#include <cstring>

namespace {

using namespace ostrel;
using fuzz::Require;

void AskWhetherPrintable(fuzz::Input& input) {
  constexpr char16_t kPoison = 0xCCCC;
  constexpr std::uint32_t kUnits = 40;
  std::array<char16_t, kUnits> reason;
  reason.fill(kPoison);
  DevQueryPrintInfo info = {};
  info.cbSize = sizeof(info);
  info.Level = 1;
  info.cchErrorStr = fuzz::TakeByte(input) % (kUnits - 1);
  info.pszErrorStr = reason.data();
  fuzz::CallerRecord record(input);
  info.pDevMode = record.get();
  DevQueryPrintEx(&info);
  for (std::size_t i = info.cchErrorStr; i < reason.size(); ++i) {
    Require(reason[i] == kPoison, "nothing is written behind the caller's buffer");
  }
}

void AskForJobAttributes(fuzz::Input& input) {
  const std::uint32_t level = fuzz::TakeByte(input) % 5;
  fuzz::CallerRecord record(input);
  AttributeInfo3 attributes;
  std::memset(&attributes, 0xCC, sizeof(attributes));
  const std::uint32_t answer = DrvQueryJobAttributes(record.get(), level, &attributes);
  Require(answer == (level == 3 ? 1U : 0U), "level 3 alone is answered");
  Require(level != 3 || attributes.dmPrintQuality == 600, "the resolution is the fixed one");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::TestWorld world;
  fuzz::Input input(data, size);
  if ((fuzz::TakeByte(input) & 1) != 0) {
    AskWhetherPrintable(input);
  } else {
    AskForJobAttributes(input);
  }
  return 0;
}
