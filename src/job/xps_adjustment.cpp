#include "job/xps_adjustment.h"

#include "core/devmode_lifecycle.h"
#include "core/paper_tables.h"
#include "core/settings_record.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::int32_t kNoCompression = 0;
constexpr std::int32_t kDotsPerInch = 600;
constexpr std::uint32_t kMargin_um = 4000;

// ---- The caller's record ------------------------------------------------------------------------

// A record in memory that may be shorter than it should be.
class CallersRecord {
 public:
  CallersRecord(const PublicDevmode* record, std::uint32_t sizeBytes) {
    if (record == nullptr || (sizeBytes != 0 && sizeBytes < kDevmodeHeaderBytes)) {
      return;
    }
    const DevmodeHeader header = ReadHeader(record);
    record_ = record;
    driverExtra_ = header.driverExtra;
    publicBytes_ = sizeBytes == 0 ? header.size : std::min<std::uint32_t>(header.size, sizeBytes);
  }

  // Whether there is one.
  explicit operator bool() const { return record_ != nullptr; }
  // Both are 0 when the record doesn't tell them.
  std::int16_t paperSize() const { return Word(offsetof(PublicDevmode, dmPaperSize)); }
  std::int16_t printQuality() const { return Word(offsetof(PublicDevmode, dmPrintQuality)); }

  // The private part, when it has this driver's size. It is pointed at, never read.
  const PrivateDevmode* privatePart() const {
    return driverExtra_ == kPrivateDevmodeBytes
               ? reinterpret_cast<const PrivateDevmode*>(
                     reinterpret_cast<const std::byte*>(record_) + kPublicDevmodeBytes)
               : nullptr;
  }

 private:
  std::int16_t Word(std::size_t offset) const {
    std::int16_t value = 0;
    if (offset + sizeof(value) <= publicBytes_) {
      std::memcpy(&value, reinterpret_cast<const std::byte*>(record_) + offset, sizeof(value));
    }
    return value;
  }

  const PublicDevmode* record_ = nullptr;
  std::uint32_t publicBytes_ = 0;
  std::uint16_t driverExtra_ = 0;
};

// ---- The imageable area -------------------------------------------------------------------------

// An unknown paper, or a user's one in another driver's record, has the size of the country's.
PaperExtent PageOf(const CallersRecord& record) {
  const auto paperId = static_cast<std::uint16_t>(record.paperSize());
  const bool isKnown =
      IsCustomPaperId(paperId) ? record.privatePart() != nullptr : FindPaperRow(paperId) != nullptr;
  constexpr std::int16_t kAnyOrientation = 0;
  PaperExtent page = {};
  GetPaperExtent(record.privatePart(),
                 isKnown ? paperId : static_cast<std::uint16_t>(PaperOfLocale().id),
                 kAnyOrientation, &page);
  return page;
}

// The far edge of an area that leaves the margin on both sides. A stored size may be smaller than
// its margins; its area is empty.
std::uint32_t FarEdge(std::uint16_t size_px600) {
  constexpr std::uint32_t kTenth_um = 100;
  return std::max(TenthsOfMillimetre(size_px600) * kTenth_um, 2 * kMargin_um) - kMargin_um;
}

// ---- The properties -----------------------------------------------------------------------------

// What becomes of a known property: nothing when its value is of the wrong type, which ends the
// walk; otherwise whether it was changed.
using Adjusted = std::optional<bool>;

Adjusted SetInt32(PrintPropertyValue& property, std::int32_t value) {
  if (property.ePropertyType != kPropertyTypeInt32) {
    return std::nullopt;
  }
  property.value.propertyInt32 = value;
  return true;
}

Adjusted AdjustCompression(PrintPropertyValue& property, const CallersRecord& /*record*/) {
  return SetInt32(property, kNoCompression);
}

Adjusted AdjustResolution(PrintPropertyValue& property, const CallersRecord& record) {
  if (property.ePropertyType == kPropertyTypeInt32 && record.printQuality() > 0) {
    return false;
  }
  return SetInt32(property, kDotsPerInch);
}

Adjusted AdjustImageableArea(PrintPropertyValue& property, const CallersRecord& record) {
  if (property.ePropertyType != kPropertyTypeBuffer || !record) {
    return std::nullopt;
  }
  const PrintPropertyBlob& blob = property.value.propertyBlob;
  if (blob.cbBuf != sizeof(ImageableAreaBlob) || blob.pBuf == nullptr) {
    return std::nullopt;
  }
  const PaperExtent page = PageOf(record);
  const ImageableAreaBlob area = {.left_um = kMargin_um,
                                  .top_um = kMargin_um,
                                  .right_um = FarEdge(page.width_px600),
                                  .bottom_um = FarEdge(page.length_px600)};
  std::memcpy(blob.pBuf, &area, sizeof(area));
  return true;
}

struct PropertyRow {
  std::u16string_view name;
  Adjusted (*adjust)(PrintPropertyValue& property, const CallersRecord& record);
};

// clang-format off
constexpr std::array<PropertyRow, 3> kProperties = {{
    // Name                        Adjustment
    {u"MxdcImageCompressionType", AdjustCompression},
    {u"MxdcDotsPerInch",          AdjustResolution},
    {u"MxdcImageableArea",        AdjustImageableArea},
}};
// clang-format on

}  // namespace

std::uint32_t MxdcGetPDEVAdjustment(std::uint32_t devmodeBytes, const PublicDevmode* devmode,
                                    std::uint32_t propertiesBytes,
                                    PrintPropertiesCollection* properties) {
  std::uint32_t result = kXpsNotAdjusted;
  if (properties == nullptr ||
      (propertiesBytes != 0 && propertiesBytes < sizeof(PrintPropertiesCollection)) ||
      properties->propertiesCollection == nullptr) {
    return result;
  }
  const CallersRecord record(devmode, devmodeBytes);
  for (PrintNamedProperty& property :
       std::span(properties->propertiesCollection, properties->numberOfProperties)) {
    const auto row =
        std::ranges::find(kProperties, CallerText(property.propertyName), &PropertyRow::name);
    if (row == kProperties.end()) {
      continue;
    }
    const Adjusted adjusted = row->adjust(property.propertyValue, record);
    if (!adjusted) {
      break;
    }
    if (*adjusted) {
      result = kXpsAdjusted;
    }
  }
  return result;
}

}  // namespace ostrel
