// A stand-in for the render driver, as far as a stamp needs one: it holds a job's record, answers
// the private escapes from it, and places the tiles of a repeated stamp. What the real one does
// besides, turning pages into the printer's language, is left to the drawing system behind the
// context.
//
// The escapes are the same in memory and in a real print system; whoever owns the context hands
// them over, and moves the context's origin when it is told to.
#pragma once

#include "core/settings_record.h"
#include "job/render_driver_escapes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace ostrel::neighbours {

class RenderDriver {
 public:
  // `moveOrigin` is told where the drawing that follows begins, in pixels of the device.
  RenderDriver(const PrivateDevmode& job, std::function<void(Point)> moveOrigin);

  // Answers an escape. Result: 1; 0 for a code that this driver doesn't know, and for one whose
  // input or output hasn't the size of the protocol.
  int Escape(std::int32_t code, std::span<const std::byte> input, std::span<std::byte> output);

  // The page that is being printed, from 1; 0 before the first.
  std::int32_t page() const { return page_; }
  // Whether a stamp is being drawn.
  bool isStamping() const { return isStamping_; }
  // The name that the job brought; empty without one.
  const std::u16string& computerName() const { return computerName_; }
  // Stamps that were begun, and tiles that were told, since the job began.
  int stamps() const { return stamps_; }
  int tiles() const { return tiles_; }

  // What the escape of the page's state answers.
  std::int32_t pageState = 0;

 private:
  int TakeComputerName(std::span<const std::byte> input);
  int TakeTile(std::span<const std::byte> input);
  void Begin(bool stamping);
  void MoveTo(Point origin);
  // A stamp of a repeated watermark is told once for its text and once for its frame.
  Point PlaceOfCell(const TileRegion& region);
  bool IsStampForbidden() const;

  const PrivateDevmode& job_;
  std::function<void(Point)> moveOrigin_;
  std::u16string computerName_;
  std::int32_t page_ = 0;
  bool isStamping_ = false;
  int stamps_ = 0;
  int tiles_ = 0;
  std::optional<std::array<std::int32_t, 2>> textCell_ = {};  // column and row
};

}  // namespace ostrel::neighbours
