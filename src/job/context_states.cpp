#include "job/context_states.h"

#include "core/process_state.h"
#include "job/watermark_geometry.h"

namespace ostrel {
namespace {

// Remembers what was in force before the first change.
template <typename Value>
void Remember(std::optional<Value>& kept, Value before, Value failure) {
  if (before != failure && !kept) {
    kept = before;
  }
}

}  // namespace

ContextStates::~ContextStates() {
  Graphics& graphics = World().graphics;
  if (textAlign_) {
    graphics.SetTextAlign(hdc_, *textAlign_);
  }
  if (windowExtent_) {
    graphics.SetWindowExtEx(hdc_, windowExtent_->width, windowExtent_->height, nullptr);
  }
  if (viewportExtent_) {
    graphics.SetViewportExtEx(hdc_, viewportExtent_->width, viewportExtent_->height, nullptr);
  }
  if (windowOrigin_) {
    graphics.SetWindowOrgEx(hdc_, windowOrigin_->x, windowOrigin_->y, nullptr);
  }
  if (viewportOrigin_) {
    graphics.SetViewportOrgEx(hdc_, viewportOrigin_->x, viewportOrigin_->y, nullptr);
  }
  if (rasterMode_) {
    graphics.SetROP2(hdc_, *rasterMode_);
  }
  if (backgroundMode_) {
    graphics.SetBkMode(hdc_, *backgroundMode_);
  }
  if (backgroundColor_) {
    graphics.SetBkColor(hdc_, *backgroundColor_);
  }
  if (textColor_) {
    graphics.SetTextColor(hdc_, *textColor_);
  }
  if (stretchMode_) {
    graphics.SetStretchBltMode(hdc_, *stretchMode_);
  }
}

void ContextStates::SetMapping(const Rect& page) {
  Graphics& graphics = World().graphics;
  const std::int32_t width = Coordinate(page.right);
  const std::int32_t height = Coordinate(-std::int64_t{page.bottom});
  Point origin = {};
  Size extent = {};
  if (graphics.SetWindowOrgEx(hdc_, 0, 0, &origin)) {
    windowOrigin_ = origin;
  }
  if (graphics.SetViewportOrgEx(hdc_, 0, 0, &origin)) {
    viewportOrigin_ = origin;
  }
  if (graphics.SetWindowExtEx(hdc_, width, height, &extent)) {
    windowExtent_ = extent;
  }
  if (graphics.SetViewportExtEx(hdc_, width, height, &extent)) {
    viewportExtent_ = extent;
  }
}

void ContextStates::LeaveMapping() {
  windowOrigin_.reset();
  viewportOrigin_.reset();
  windowExtent_.reset();
  viewportExtent_.reset();
}

void ContextStates::SetBkMode(std::int32_t mode) {
  Remember(backgroundMode_, World().graphics.SetBkMode(hdc_, mode), 0);
}

void ContextStates::SetROP2(std::int32_t operation) {
  Remember(rasterMode_, World().graphics.SetROP2(hdc_, operation), 0);
}

void ContextStates::SetTextAlign(std::uint32_t align) {
  Remember(textAlign_, World().graphics.SetTextAlign(hdc_, align), kInvalidTextAlign);
}

void ContextStates::SetTextColor(std::uint32_t color) {
  Remember(textColor_, World().graphics.SetTextColor(hdc_, color), kInvalidColor);
}

void ContextStates::SetBkColor(std::uint32_t color) {
  Remember(backgroundColor_, World().graphics.SetBkColor(hdc_, color), kInvalidColor);
}

void ContextStates::SetStretchBltMode(std::int32_t mode) {
  Remember(stretchMode_, World().graphics.SetStretchBltMode(hdc_, mode), 0);
}

LentObject::~LentObject() {
  if (before_ == nullptr) {
    return;
  }
  Graphics& graphics = World().graphics;
  if (graphics.SelectObject(hdc_, before_) == nullptr) {
    // Once more, since an object that is in force can't be deleted.
    graphics.SelectObject(hdc_, before_);
  }
  graphics.DeleteObject(object_);
}

bool LentObject::Select(GdiObject object) {
  Graphics& graphics = World().graphics;
  if (object == nullptr) {
    return false;
  }
  const GdiObject previous = graphics.SelectObject(hdc_, object);
  if (previous == nullptr) {
    graphics.DeleteObject(object);
    return false;
  }
  if (before_ == nullptr) {
    before_ = previous;
  } else {
    graphics.DeleteObject(object_);
  }
  object_ = object;
  return true;
}

}  // namespace ostrel
