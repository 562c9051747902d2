#include "pages/preview.h"

namespace ostrel {

std::uint32_t LayoutPictureId(UIContext& /*context*/) {
  return 0;
}

void DrawLayoutPicture(UIContext& /*context*/, const DrawItem& /*item*/) {}

}  // namespace ostrel
