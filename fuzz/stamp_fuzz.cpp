// Any watermark record stamped onto any page, with texts of any size and any file as its bitmap:
// the stamp ends, leaves nothing behind, and the context is as it was.
//
// Input: a byte of choices (page state, right to left, scale), the page's rectangle, a text's width
// and height for each of its characters, the page's number, 16 bits for the call that fails (0 for
// none); then the record, 1348 bytes, and the bitmap file.
#include "caller_record.h"
#include "job/stamp_stage.h"

#include <cstring>
#include <iterator>

namespace {

using namespace ostrel;
using fuzz::Require;

constexpr double kScales[] = {1.0, 0.0, 0.5, -3.0, 1e300, 1e-300};

// A number of the input; what is missing is zeros.
template <typename Number>
Number TakeNumber(fuzz::Input& input) {
  Number number = {};
  const fuzz::Input bytes = fuzz::Take(input, sizeof(number));
  std::memcpy(&number, bytes.data(), bytes.size());
  return number;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  test::StampScene scene;
  const std::uint8_t choice = fuzz::TakeByte(input);
  scene.pageState = choice & 1;
  scene.rightToLeft = (choice & 2) != 0;
  scene.scale = kScales[(choice >> 2) % std::size(kScales)];
  scene.page = TakeNumber<Rect>(input);
  const auto letter = TakeNumber<Size>(input);
  scene.pageNumber = TakeNumber<std::int32_t>(input);
  const auto failing = TakeNumber<std::uint16_t>(input);
  scene.record = TakeNumber<WatermarkData>(input);
  const auto* file = reinterpret_cast<const std::byte*>(input.data());
  scene.world.platform.files.Put(test::kBitmapPath, {file, file + input.size()});
  scene.world.platform.graphics.measureText = [letter](const LogFont& /*font*/,
                                                       std::u16string_view text) {
    const std::int64_t width = std::int64_t{letter.width} * static_cast<std::int64_t>(text.size());
    return Size{static_cast<std::int32_t>(width), letter.height};
  };
  World().graphics.SetWindowOrgEx(scene.hdc, 3, 4, nullptr);
  const headless::DrawingState before = scene.State();
  // There may be millions of them.
  scene.device.records = false;
  scene.world.platform.faults.FailCall(failing);
  scene.Stamp();
  const bool failed = scene.world.platform.faults.fired();
  scene.world.platform.faults.Clear();
  scene.device.records = true;

  Require(scene.LiveObjects() == 0, "a stamp leaves nothing behind");
  headless::DrawingState after = scene.State();
  const bool mayLeaveMapping = scene.record.PageWMFlag == 2;
  if (mayLeaveMapping) {
    Require(after.mapping == before.mapping || after.mapping.windowOrigin == Point{0, 0},
            "what stays of a missing bitmap is the mapping");
    after.mapping = before.mapping;
  }
  Require(failed || after == before, "the states are put back");
  return 0;
}
