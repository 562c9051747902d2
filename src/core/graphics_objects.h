// Owners of what drawing takes from the platform. Each gives its object back at the end of the
// scope; declared in the order bitmap, context, selection, they go in the order that the platform
// asks for. An owner of nothing is allowed, and false.
#pragma once

#include "core/process_state.h"
#include "platform/window_types.h"

namespace ostrel {

// A bitmap, a pen, a brush or a font of our own.
class OwnedObject {
 public:
  explicit OwnedObject(GdiObject object) : object_(object) {}
  ~OwnedObject() {
    if (object_ != nullptr) {
      World().graphics.DeleteObject(object_);
    }
  }
  OwnedObject(const OwnedObject&) = delete;
  OwnedObject& operator=(const OwnedObject&) = delete;

  explicit operator bool() const { return object_ != nullptr; }
  GdiObject get() const { return object_; }

 private:
  GdiObject object_;
};

// A context in memory, like another one or, for null, like the screen's. Systems differ in whether
// it takes over the other one's layout; the screen's is never mirrored.
class MemoryContext {
 public:
  explicit MemoryContext(DeviceContext like)
      : context_(World().graphics.CreateCompatibleDC(like)) {}
  ~MemoryContext() {
    if (context_ != nullptr) {
      World().graphics.DeleteDC(context_);
    }
  }
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;

  explicit operator bool() const { return context_ != nullptr; }
  DeviceContext get() const { return context_; }

 private:
  DeviceContext context_;
};

// A context of the screen.
class ScreenContext {
 public:
  ScreenContext() : context_(World().graphics.GetDC(nullptr)) {}
  ~ScreenContext() {
    if (context_ != nullptr) {
      World().graphics.ReleaseDC(nullptr, context_);
    }
  }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;

  explicit operator bool() const { return context_ != nullptr; }
  DeviceContext get() const { return context_; }

 private:
  DeviceContext context_;
};

// An object in force in a context; false when it couldn't be selected, or when there is no object
// or no context.
class Selection {
 public:
  Selection(const MemoryContext& context, GdiObject object)
      : context_(context.get()),
        before_(context_ == nullptr || object == nullptr
                    ? nullptr
                    : World().graphics.SelectObject(context_, object)) {}
  ~Selection() {
    if (before_ != nullptr) {
      World().graphics.SelectObject(context_, before_);
    }
  }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  explicit operator bool() const { return before_ != nullptr; }

 private:
  DeviceContext context_;
  GdiObject before_;
};

}  // namespace ostrel
