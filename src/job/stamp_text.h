// The text of a stamp: the record's own, and what the record adds to it when the page is printed.
#pragma once

#include "core/settings_record.h"
#include "platform/window_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ostrel {

// A text in a buffer of its own; what doesn't fit is cut off at its end.
class StampText {
 public:
  static constexpr std::size_t kMostUnits = 255;

  std::u16string_view view() const { return {units_.data(), length_}; }
  bool IsEmpty() const { return length_ == 0; }

  // Adds a text behind a blank; without the blank when nothing stands before it.
  void AddItem(std::u16string_view item);
  // Takes the first and the last character away. Result: false for a text that hasn't two.
  bool Shorten();
  // Moves all characters to the left by one. The first is lost and the last stands twice, which is
  // how pages in use look: the text's length has been told already.
  void MoveLeft();

 private:
  std::array<char16_t, kMostUnits + 1> units_ = {};
  std::size_t length_ = 0;
};

// How the number of a page is written: behind a text, or in the place of its "%d".
struct PageNumberForm {
  std::u16string_view text;
  bool replacesPlace;
};

// The record's own text alone.
StampText RecordText(const WatermarkData& record);

// The record's text with the date, the time, the page's number, the computer's and the user's name,
// as far as the record asks for them. An item that can't be had is left out; a render driver that
// doesn't tell a page's number leaves it 0.
StampText TextOfStamp(DeviceContext hdc, const WatermarkData& record, const PageNumberForm& form);

}  // namespace ostrel
