// What printing to an XPS document asks of the driver: MxdcGetPDEVAdjustment, which changes a
// collection of named properties in place.
#pragma once

#include "platform/print_types.h"

#include <cstddef>
#include <cstdint>

namespace ostrel {

// Types of a property's value, EPrintPropertyType (winspool.h of the platform's own development
// kit; the compiler's set of headers hasn't these structures).
enum PrintPropertyType : std::int32_t {
  kPropertyTypeInt32 = 2,
  kPropertyTypeBuffer = 10,
};

// PrintPropertyValue: the type, and a value of that type. Of the types that the platform knows, the
// widest take the 16 bytes.
struct PrintPropertyBlob {
  std::uint32_t cbBuf;  // offset 0; bytes of pBuf
  void* pBuf;           // 8
};
struct PrintPropertyValue {
  std::int32_t ePropertyType;  // offset 0
  union {
    std::int32_t propertyInt32;      // 8
    PrintPropertyBlob propertyBlob;  // 8
  } value;
};
static_assert(sizeof(PrintPropertyBlob) == 16);
static_assert(offsetof(PrintPropertyBlob, pBuf) == 8);
static_assert(sizeof(PrintPropertyValue) == 24);
static_assert(offsetof(PrintPropertyValue, value) == 8);

// PrintNamedProperty.
struct PrintNamedProperty {
  char16_t* propertyName;            // offset 0
  PrintPropertyValue propertyValue;  // 8
};
static_assert(sizeof(PrintNamedProperty) == 32);
static_assert(offsetof(PrintNamedProperty, propertyValue) == 8);

// PrintPropertiesCollection.
struct PrintPropertiesCollection {
  std::uint32_t numberOfProperties;          // offset 0
  PrintNamedProperty* propertiesCollection;  // 8
};
static_assert(sizeof(PrintPropertiesCollection) == 16);
static_assert(offsetof(PrintPropertiesCollection, propertiesCollection) == 8);

// The value of "MxdcImageableArea", in micrometres.
struct ImageableAreaBlob {
  std::uint32_t left_um;
  std::uint32_t top_um;
  std::uint32_t right_um;
  std::uint32_t bottom_um;
  bool operator==(const ImageableAreaBlob&) const = default;
};
static_assert(sizeof(ImageableAreaBlob) == 16);

// HRESULTs (winerror.h).
inline constexpr std::uint32_t kXpsAdjusted = 0;              // S_OK
inline constexpr std::uint32_t kXpsNotAdjusted = 0x80004001;  // E_NOTIMPL

// Says how the job with this record is to become an XPS document: without compression of images, at
// 600 dpi unless the record has a quality of its own, and within 4 mm of the page's edges. A known
// property of the wrong type ends the walk; what was changed before stays changed.
//
// `devmodeBytes` and `propertiesBytes` tell the callers' memory, 0 that they don't tell it. A
// record too short for a word is one that doesn't tell that word. Null records and collections are
// allowed. Result: an HRESULT.
std::uint32_t MxdcGetPDEVAdjustment(std::uint32_t devmodeBytes, const PublicDevmode* devmode,
                                    std::uint32_t propertiesBytes,
                                    PrintPropertiesCollection* properties);

}  // namespace ostrel
