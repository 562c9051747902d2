// Any bytes as a private part: after validation every value is in range, and a second pass finds
// nothing more to repair.
#include "caller_record.h"
#include "core/record_schema.h"
#include "core/settings_record.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ostrel;
  using fuzz::Require;

  PrivateDevmode record = {};
  if (size != 0) {
    std::memcpy(&record, data, std::min(size, sizeof(record)));
  }
  Require(ValidatePrivateDevmode(&record) == kResultOk, "validation never fails");
  Require(record.Signature == kPrivateSignature, "the signature is repaired");
  Require(record.ColorMode == 1, "the record is monochrome");
  Require(record.Duplex >= 1 && record.Duplex <= 5, "the private duplex word is in range");
  Require(record.ScaleRadio >= 25 && record.ScaleRadio <= 400, "the scale is in range");
  Require(record.WatermarkData.PageWMText[64] == 0, "the watermark text is terminated");
  for (const CustomPaperEntry& entry : record.CustomPaperSize) {
    Require(entry.Width >= 1800 && entry.Width <= 5100, "custom widths are in range");
    Require(entry.Name[24] == 0, "custom names are terminated");
  }

  const PrivateDevmode once = record;
  ValidatePrivateDevmode(&record);
  Require(std::memcmp(&once, &record, sizeof(record)) == 0, "validating twice is validating once");
  return 0;
}
