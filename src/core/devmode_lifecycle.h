// How foreign records are accepted and handed back: merge, header-aware conversion, copy out.
//
// A caller's record holds exactly as many bytes as its own size words tell, and at least the 72
// that end with these words. Nothing here reads or writes beyond that.
#pragma once

#include "core/settings_record.h"

#include <cstdint>

namespace ostrel {

// The four words by which a record tells its own shape.
struct DevmodeHeader {
  std::uint16_t specVersion;
  std::uint16_t driverVersion;
  std::uint16_t size;         // bytes of the public part
  std::uint16_t driverExtra;  // bytes of the private part

  std::uint32_t TotalBytes() const { return std::uint32_t{size} + driverExtra; }
};
static_assert(sizeof(DevmodeHeader) == 8);

DevmodeHeader ReadHeader(const PublicDevmode* record);
void WriteHeader(PublicDevmode* record, const DevmodeHeader& header);

// The header that `out` has after a conversion from `in`: its own, or that of `in` when its driver
// version is 0.
DevmodeHeader SettledHeader(const PublicDevmode* out, const PublicDevmode* in);

// The record version that `dmSize` tells: 192 gives 800, 216 gives 1024, 224 gives 1025, any other
// size gives the record's own dmSpecVersion; null gives 0.
std::uint16_t QueryDevmodeVersion(const PublicDevmode* record);

// Merges `incoming` into `target`: known public fields by their rules, and the private part when it
// is this driver's own. The target's header words survive, unless its driver version is 0.
// Result: true when merged, also for a null `incoming`, which changes nothing; false for a record
// without a device name, of a size other than 220, without a version or without fields.
bool MergeDevmode(DriverDevmode* target, const PublicDevmode* incoming);

// Copies `in` to `out` by the smaller public size; private bytes only when both sizes of that part
// agree, otherwise `out`'s private part is zeroed. `out`'s header words stand, or are taken from
// `in` when `out`'s driver version is 0. `out` must hold as many bytes as its words, so settled,
// tell. Result: bytes copied; 0, with nothing copied, when either record has no version or a size
// below 72.
std::uint32_t ConvertDevmode(PublicDevmode* out, const PublicDevmode* in);

// Gives `out` a header and converts `in` to it. Result: false when nothing could be copied, in
// which case `out` is as it was.
bool ConvertDevmodeTo(const DevmodeHeader& header, PublicDevmode* out, const PublicDevmode* in);

// Hands `current` out to a caller. With a reference, `out` takes the smaller public and the smaller
// private size of the two, each with its version word. `out` must hold 7896 bytes.
// Result: false for a null `out`, for a current record that announces more than it holds, or when
// nothing could be copied; `out` is untouched then.
bool CopyDevmodeOut(const DriverDevmode* current, const PublicDevmode* reference,
                    PublicDevmode* out);

}  // namespace ostrel
