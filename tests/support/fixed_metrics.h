// Drawing whose texts measure what a test says, and whose driver answers as a test says, whatever
// platform stands behind: so two platforms are given the same to draw by. What goes to the driver
// is written down.
#pragma once

#include "platform/headless/drawing_record.h"
#include "support/passed_graphics.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrel::test {

class FixedMetrics final : public PassedGraphics {
 public:
  // The size of a text in a font that was made through here; texts in other fonts measure nothing.
  using Measure = std::function<Size(const LogFont& font, std::u16string_view text)>;
  FixedMetrics(Graphics& next, Measure measure)
      : PassedGraphics(next), measure_(std::move(measure)) {}

  // Answers escapes in the driver's place. Without it they are handed on.
  std::function<int(std::int32_t code, std::span<const std::byte> input,
                    std::span<std::byte> output)>
      onEscape = {};
  // Called with each escape, before it is answered.
  std::function<void(DeviceContext context, const headless::DrawingOperation& escape)> onRecord =
      {};
  // The escapes, in order.
  std::vector<headless::DrawingOperation> escapes = {};

  GdiObject CreateFontIndirectW(const LogFont& font) override {
    const GdiObject object = PassedGraphics::CreateFontIndirectW(font);
    if (object != nullptr) {
      fonts_[object] = font;
    }
    return object;
  }
  GdiObject SelectObject(DeviceContext context, GdiObject object) override {
    const GdiObject before = PassedGraphics::SelectObject(context, object);
    // Another kind of object leaves the font as it is: what came out tells the kind.
    if (before != nullptr && (fonts_.contains(object) || fonts_.contains(before))) {
      selected_[context] = object;
    }
    return before;
  }
  bool DeleteObject(GdiObject object) override {
    const bool isDeleted = PassedGraphics::DeleteObject(object);
    if (isDeleted) {
      fonts_.erase(object);
    }
    return isDeleted;
  }
  // Asks nobody else: what a context without a device answers differs.
  bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                           Size* size) override {
    if (text == nullptr || units < 0) {
      return false;
    }
    const auto selected = selected_.find(context);
    const auto font = selected == selected_.end() ? fonts_.end() : fonts_.find(selected->second);
    *size = font == fonts_.end() ? Size{0, 0}
                                 : measure_(font->second, {text, static_cast<std::size_t>(units)});
    return true;
  }
  int ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                const void* input, std::int32_t outputBytes, void* output) override {
    const auto bytes = [](const void* block, std::int32_t count) {
      return block == nullptr || count < 0 ? 0 : static_cast<std::size_t>(count);
    };
    const std::span<const std::byte> in(static_cast<const std::byte*>(input),
                                        bytes(input, inputBytes));
    const std::span<std::byte> out(static_cast<std::byte*>(output), bytes(output, outputBytes));
    escapes.push_back({.call = headless::DrawingCall::kExtEscape,
                       .numbers = {code, outputBytes},
                       .bytes = {in.begin(), in.end()}});
    if (onRecord) {
      onRecord(context, escapes.back());
    }
    return onEscape
               ? onEscape(code, in, out)
               : PassedGraphics::ExtEscape(context, code, inputBytes, input, outputBytes, output);
  }

 private:
  Measure measure_;
  std::map<GdiObject, LogFont> fonts_;
  std::map<DeviceContext, GdiObject> selected_;
};

}  // namespace ostrel::test
