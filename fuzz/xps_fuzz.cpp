// Any bytes as the record, and any kinds of properties, behind the adjustments for XPS documents:
// no read beyond the record, no write beyond a property, and the area is one.
//
// Input: a byte for the country; two bytes for how many bytes the caller tells, and the record;
// then for each property a byte for its name, one for its type and one for its buffer.
#include "caller_record.h"
#include "job/xps_adjustment.h"
#include "support/test_world.h"

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace {

using namespace ostrel;
using fuzz::Require;

constexpr std::size_t kMostProperties = 12;
constexpr std::uint32_t kMostBytes = 32;
constexpr std::uint8_t kPoison = 0xCC;

// Names that are known, nearly known, empty and missing.
std::array<std::u16string, 6> names = {u"MxdcImageCompressionType", u"MxdcDotsPerInch",
                                       u"MxdcImageableArea",        u"MxdcImageableAre",
                                       u"mxdcdotsperinch",          u""};

struct Buffer {
  std::uint32_t sizeBytes = 0;
  std::unique_ptr<std::uint8_t[]> bytes;
};

Buffer TakeBuffer(fuzz::Input& input) {
  const std::uint8_t choice = fuzz::TakeByte(input);
  Buffer buffer;
  buffer.sizeBytes =
      (choice & 1) != 0 ? std::uint32_t{sizeof(ImageableAreaBlob)} : choice % kMostBytes;
  if ((choice & 2) == 0) {
    buffer.bytes = std::make_unique<std::uint8_t[]>(buffer.sizeBytes);
    std::fill_n(buffer.bytes.get(), buffer.sizeBytes, kPoison);
  }
  return buffer;
}

PrintNamedProperty TakeProperty(fuzz::Input& input, std::vector<Buffer>& buffers) {
  constexpr std::int32_t kTypes = 12;
  PrintNamedProperty property = {};
  const std::size_t name = fuzz::TakeByte(input) % (names.size() + 1);
  property.propertyName = name < names.size() ? names.at(name).data() : nullptr;
  const std::uint8_t type = fuzz::TakeByte(input);
  property.propertyValue.ePropertyType = type < 0xF0 ? type % kTypes : -type;
  buffers.push_back(TakeBuffer(input));
  property.propertyValue.value.propertyBlob = {buffers.back().sizeBytes,
                                               buffers.back().bytes.get()};
  return property;
}

void CheckArea(const PrintNamedProperty& property) {
  const PrintPropertyBlob& blob = property.propertyValue.value.propertyBlob;
  if (property.propertyName != names[2].data() ||
      property.propertyValue.ePropertyType != kPropertyTypeBuffer || blob.pBuf == nullptr ||
      blob.cbBuf != sizeof(ImageableAreaBlob) ||
      *static_cast<std::uint8_t*>(blob.pBuf) == kPoison) {
    return;
  }
  const auto& area = *static_cast<const ImageableAreaBlob*>(blob.pBuf);
  constexpr std::uint32_t kMargin_um = 4000;
  constexpr std::uint32_t kLargest_um = 2770300;  // 65535 pixels less the margin
  Require(area.left_um == kMargin_um && area.top_um == kMargin_um, "the margins are fixed");
  Require(area.right_um >= kMargin_um && area.right_um <= kLargest_um, "right lies on the paper");
  Require(area.bottom_um >= kMargin_um && area.bottom_um <= kLargest_um,
          "bottom lies on the paper");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static test::TestWorld world;
  fuzz::Input input(data, size);
  world.platform.locale.country = (fuzz::TakeByte(input) & 1) != 0 ? u"1" : u"49";
  std::uint32_t told = fuzz::TakeByte(input);
  told |= std::uint32_t{fuzz::TakeByte(input)} << 8;
  fuzz::CallerRecord record(input);
  told = std::min<std::uint32_t>(told, static_cast<std::uint32_t>(record.size()));
  std::vector<Buffer> buffers;
  std::vector<PrintNamedProperty> properties;
  while (!input.empty() && properties.size() < kMostProperties) {
    properties.push_back(TakeProperty(input, buffers));
  }
  PrintPropertiesCollection collection = {static_cast<std::uint32_t>(properties.size()),
                                          properties.data()};
  const std::uint32_t result =
      MxdcGetPDEVAdjustment(told, record.get(), sizeof(collection), &collection);
  Require(result == kXpsAdjusted || result == kXpsNotAdjusted, "one of the two results");
  for (const PrintNamedProperty& property : properties) {
    CheckArea(property);
  }
  return 0;
}
