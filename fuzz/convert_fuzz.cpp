// Any bytes as both records of a conversion, in all modes and through the copy to a caller.
#include "caller_record.h"
#include "core/devmode_lifecycle.h"
#include "core/devmode_queries.h"
#include "support/test_world.h"

#include <cstring>

namespace {

using namespace ostrel;
using fuzz::Require;

// The exported conversion tells how much memory `out` has, so the size may be any number.
void ConvertThroughEntryPoint(fuzz::Input& input) {
  const std::uint32_t mode = fuzz::TakeByte(input) % 6;
  fuzz::CallerRecord out(input);
  fuzz::CallerRecord in(input);
  const auto room = static_cast<std::int32_t>(out.size());
  std::int32_t size = room;
  const bool converted = DrvConvertDevMode(test::kPrinterName, in.get(), out.get(), &size, mode);
  Require(!converted || size <= room, "what was written fits the caller's memory");
}

void ConvertDirectly(fuzz::Input& input) {
  fuzz::CallerRecord out(input);
  fuzz::CallerRecord in(input);
  // Memory of `out` is promised for its own words only; a driver version of 0 takes those of `in`.
  if (SettledHeader(out.get(), in.get()).TotalBytes() <= out.size()) {
    Require(ConvertDevmode(out.get(), in.get()) <= out.size(), "no more is copied than fits");
  }
}

void CopyOut(fuzz::Input& input) {
  static const DriverDevmode current = [] {
    DriverDevmode record;
    InitDriverDevmode(&record, test::kDriverName, test::kDriverName);
    return record;
  }();
  fuzz::CallerRecord reference(input);
  auto out = std::make_unique<DriverDevmode>();
  std::memset(out.get(), 0xCC, sizeof(*out));
  const DriverDevmode poison = *out;
  const bool copied = CopyDevmodeOut(&current, reference.get(), &out->publicDevmode);
  Require(copied || std::memcmp(out.get(), &poison, sizeof(poison)) == 0,
          "a record that can't be copied out leaves the output alone");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const test::TestWorld world;
  fuzz::Input input(data, size);
  switch (fuzz::TakeByte(input) % 3) {
    case 0:
      ConvertThroughEntryPoint(input);
      break;
    case 1:
      ConvertDirectly(input);
      break;
    default:
      CopyOut(input);
      break;
  }
  return 0;
}
