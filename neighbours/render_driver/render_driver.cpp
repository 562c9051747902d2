#include "render_driver.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ostrel::neighbours {
namespace {

constexpr int kAnswered = 1;
constexpr int kUnknown = 0;

template <typename Value>
int Answer(std::span<std::byte> output, const Value& value) {
  if (output.size() != sizeof(value)) {
    return kUnknown;
  }
  std::memcpy(output.data(), &value, sizeof(value));
  return kAnswered;
}

}  // namespace

RenderDriver::RenderDriver(const PrivateDevmode& job, std::function<void(Point)> moveOrigin)
    : job_(job), moveOrigin_(std::move(moveOrigin)) {}

int RenderDriver::Escape(std::int32_t code, std::span<const std::byte> input,
                         std::span<std::byte> output) {
  switch (code) {
    case kEscapeReadWatermark:
      return Answer(output, job_.WatermarkData);
    case kEscapeStampBegins:
      Begin(true);
      return kAnswered;
    case kEscapeTile:
      return TakeTile(input);
    case kEscapeStampEnds:
      Begin(false);
      return kAnswered;
    case kEscapeStampForbidden:
      return Answer(output, std::int32_t{IsStampForbidden()});
    case kEscapePageStarts:
      ++page_;
      return kAnswered;
    case kEscapePageNumber:
      return Answer(output, page_);
    case kEscapePageState:
      return Answer(output, pageState);
    case kEscapeComputerName:
      return TakeComputerName(input);
    default:
      return kUnknown;
  }
}

bool RenderDriver::IsStampForbidden() const {
  return job_.FirstPageOnly != 0 && page_ > 1;
}

int RenderDriver::TakeComputerName(std::span<const std::byte> input) {
  if (input.size() != kComputerNameBytes) {
    return kUnknown;
  }
  std::array<char16_t, kComputerNameBytes / sizeof(char16_t)> name = {};
  std::memcpy(name.data(), input.data(), input.size());
  computerName_.assign(name.begin(), std::find(name.begin(), name.end(), u'\0'));
  return kAnswered;
}

void RenderDriver::Begin(bool stamping) {
  isStamping_ = stamping;
  stamps_ += stamping ? 1 : 0;
  textCell_.reset();
  MoveTo({0, 0});
}

void RenderDriver::MoveTo(Point origin) {
  if (moveOrigin_) {
    moveOrigin_(origin);
  }
}

int RenderDriver::TakeTile(std::span<const std::byte> input) {
  if (input.empty()) {
    MoveTo({0, 0});
    return kAnswered;
  }
  TileRegion region = {};
  if (input.size() != sizeof(region)) {
    return kUnknown;
  }
  std::memcpy(&region, input.data(), sizeof(region));
  ++tiles_;
  const bool isPicture = region.Width == 0 && region.Height == 0;
  MoveTo(isPicture ? Point{region.ImageOffsetX, region.ImageOffsetY} : PlaceOfCell(region));
  return kAnswered;
}

// A text stands within its frame, so both begin at the same place: the frame's words leave out one
// margin that they tell apart.
Point RenderDriver::PlaceOfCell(const TileRegion& region) {
  const std::array<std::int32_t, 2> cell = {region.Column, region.Row};
  const bool isFrame = textCell_ == cell;
  textCell_ = isFrame ? std::nullopt : std::optional(cell);
  const std::int32_t margin = isFrame ? region.Margin : 0;
  return {region.Column * region.Width + region.TextOffsetX + margin,
          region.Row * region.Height + region.TextOffsetY + margin};
}

}  // namespace ostrel::neighbours
