// Any bytes as a caller's record through the merge, into a good record and into a good record with
// fields and version words of the input's choice.
#include "caller_record.h"
#include "core/devmode_lifecycle.h"
#include "support/test_world.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrel;
  using fuzz::Require;

  static const test::TestWorld world;
  static const DriverDevmode fresh = [] {
    DriverDevmode record;
    InitDriverDevmode(&record, test::kDriverName, test::kDriverName);
    return record;
  }();

  fuzz::Input input(data, size);
  DriverDevmode target = fresh;
  if ((fuzz::TakeByte(input) & 1) != 0) {
    target.publicDevmode.dmFields = std::uint32_t{fuzz::TakeByte(input)} * 0x01010101;
    target.publicDevmode.dmDriverVersion = fuzz::TakeByte(input);
  }
  const DriverDevmode before = target;
  fuzz::CallerRecord incoming(input);

  const bool merged = MergeDevmode(&target, incoming.get());
  Require(merged || std::memcmp(&before, &target, sizeof(target)) == 0,
          "a refusal changes nothing");
  Require(target.publicDevmode.dmSize == kPublicDevmodeBytes, "the public size stands");
  Require(target.publicDevmode.dmDriverExtra == kPrivateDevmodeBytes, "the private size stands");
  Require(target.privateDevmode.Signature == kPrivateSignature, "the private part stays ours");
  Require(target.publicDevmode.dmCopies >= 1 && target.publicDevmode.dmCopies <= 999,
          "copies are in range");
  Require(target.publicDevmode.dmDuplex >= 1 && target.publicDevmode.dmDuplex <= 5,
          "duplex is in range");
  return 0;
}
