// What a stamp changes in a page's device context, and puts back: the application goes on drawing
// there, and nothing of ours may show.
#pragma once

#include "platform/window_types.h"

#include <cstdint>
#include <optional>

namespace ostrel {

// The mapping and the modes. All that was changed is put back at the end of the scope, in a fixed
// order; what couldn't be changed is left alone.
class ContextStates {
 public:
  explicit ContextStates(DeviceContext hdc) : hdc_(hdc) {}
  ~ContextStates();
  ContextStates(const ContextStates&) = delete;
  ContextStates& operator=(const ContextStates&) = delete;

  // Origins 0, 0; extents from the page's right and bottom, with y turned round in both, so that
  // callers go on counting in device pixels.
  void SetMapping(const Rect& page);
  // From here on the mapping is the caller's.
  void LeaveMapping();
  void SetBkMode(std::int32_t mode);
  void SetROP2(std::int32_t operation);
  void SetTextAlign(std::uint32_t align);
  void SetTextColor(std::uint32_t color);
  void SetBkColor(std::uint32_t color);
  void SetStretchBltMode(std::int32_t mode);

 private:
  DeviceContext hdc_;
  // What was in force before; nothing for what wasn't changed.
  std::optional<Point> windowOrigin_;
  std::optional<Point> viewportOrigin_;
  std::optional<Size> windowExtent_;
  std::optional<Size> viewportExtent_;
  std::optional<std::int32_t> backgroundMode_;
  std::optional<std::int32_t> rasterMode_;
  std::optional<std::uint32_t> textAlign_;
  std::optional<std::uint32_t> textColor_;
  std::optional<std::uint32_t> backgroundColor_;
  std::optional<std::int32_t> stretchMode_;
};

// An object of our own in force in a context that isn't ours. At the end of the scope what was
// there before is in force again and ours is deleted.
class LentObject {
 public:
  explicit LentObject(DeviceContext hdc) : hdc_(hdc) {}
  ~LentObject();
  LentObject(const LentObject&) = delete;
  LentObject& operator=(const LentObject&) = delete;

  // Takes the object over, in place of the one before. Null, and an object that the context
  // doesn't take, change nothing. Result: whether it is in force.
  bool Select(GdiObject object);

 private:
  DeviceContext hdc_;
  GdiObject object_ = nullptr;
  GdiObject before_ = nullptr;
};

}  // namespace ostrel
