// The parameter table: short keys to width and offset inside the private part, and the accessors.
//
// A context carries a table of 78 slots, built when the context is made. A slot's number is its
// key's identity, so an empty slot must never take another key.
#pragma once

#include "core/result.h"
#include "core/settings_record.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

struct UIContext;

inline constexpr std::size_t kUIParamSlots = 78;
inline constexpr std::size_t kUIParamKeyBytes = 20;  // ASCII with NUL

struct UIParamSlot {
  char Key[kUIParamKeyBytes];
  std::uint32_t Width;   // bytes
  std::uint32_t Offset;  // bytes from the start of PrivateDevmode
};
static_assert(sizeof(UIParamSlot) == 28);

using UIParamTable = std::array<UIParamSlot, kUIParamSlots>;

// Fills the context's 78 slots. Keys of more than 19 characters are cut to 19: by its full key such
// a slot isn't found, by the cut key the lower of two alike. Two pairs of slots are alike, 17 with
// 27 and 18 with 28, and the fields of their later slots are reached by offset.
void BuildUIParamTable(UIContext* context);

// Copies the field of `key` out to `buffer`. Result: kResultOk; kResultNullObject for a null
// context; kResultUnknownKey when no slot holds the key; kResultWidthMismatch when `sizeBytes`
// differs from the slot's width, with nothing copied.
Result GetUIParam(const UIContext* context, const char* key, void* buffer, std::uint32_t sizeBytes);

// Copies `data` into the field of `key`. Result: kResultOk; kResultFail when the context has no
// private record; kResultUnknownKey; kResultWidthMismatch, with nothing copied.
Result SetUIParam(UIContext* context, const char* key, const void* data, std::uint32_t sizeBytes);

// The flag that writes no word but announces a custom size: paper length, width and form name.
inline constexpr std::uint32_t kAnnounceCustomSize = 0x7FFF;

// Reads one public word by its flag, repairing the record on the way: an orientation outside 0..2,
// copies outside 1..999, a duplex outside 1..3 and a media type outside 1..266 become 1, a negative
// collate becomes 0. The scale answers 100, whatever is stored. A flag that isn't served leaves
// `value` as it was. Result: kResultOk; kResultNullObject for a null context.
Result GetDevmodeField(UIContext* context, std::uint32_t flag, std::int16_t* value);

// Writes one public word by its flag, or, for kAnnounceCustomSize, the announcement alone. dmFields
// is not touched otherwise. Result: kResultOk; kResultFail for an unknown flag;
// kResultNullObject for a null context.
Result SetDevmodeField(UIContext* context, std::uint32_t flag, std::int16_t value);

// Writes the one public text, dmFormName (flag kDmFormName), 31 characters at most. Results as
// above.
Result SetDevmodeField(UIContext* context, std::uint32_t flag, const char16_t* text);

}  // namespace ostrel
