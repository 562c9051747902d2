#include "pages/print_options_pictures.h"

#include "pages/media_rules.h"
#include "pages/owner_draw.h"
#include "pages/page_record.h"

namespace ostrel {
namespace {

// Colours that count as transparent, 0x00BBGGRR.
constexpr std::uint32_t kMagenta = 0xFF00FF;
constexpr std::uint32_t kWhite = 0xFFFFFF;

std::uint32_t CollationPictureId(const UIContext& context) {
  const std::int16_t collate = context.publicPointer->dmCollate;
  const std::int16_t reverse = Setting(context, "ReversePrint", 0);
  if (collate == 0 && reverse == 0) {
    return 425;
  }
  if (collate == 0 && reverse == 1) {
    return 5021;
  }
  return collate == 1 && reverse == 1 ? 5008 : 426;
}

std::uint32_t FeedPictureId(const UIContext& context) {
  const std::int16_t feed = Setting(context, "FeedOrient", 0);
  return feed == 0 || feed == 1 ? 902 : 903;
}

}  // namespace

std::uint32_t DuplexPictureId(UIContext& context) {
  // clang-format off
  struct Row {
    std::int16_t orientation;
    std::uint16_t oneSided, longEdge, shortEdge, booklet;
  };
  constexpr Row kRows[] = {
      // Orientation, Duplex 1, 2, 3, 3 as a booklet
      {1,              631,  902,  905,  1072},
      {2,             1068, 1065, 1066,  1071},
  };
  // clang-format on
  for (const Row& row : kRows) {
    if (row.orientation == context.publicPointer->dmOrientation) {
      switch (StoredDuplex(context)) {
        case kDuplexOneSided:
          return row.oneSided;
        case kDuplexLongEdge:
          return row.longEdge;
        case kDuplexShortEdge:
          return IsBooklet(context) ? row.booklet : row.shortEdge;
        default:
          return 0;
      }
    }
  }
  return 0;
}

bool FindItemPicture(const UIContext& context, std::uint32_t control, ItemPicture& picture) {
  const ModuleHandle bitmaps = context.bitmapModule;
  switch (control) {
    case 1022:
      picture = {context.languageModule, 115, kWhite};
      return true;
    case 1032:
      picture = {bitmaps, FeedPictureId(context), kMagenta};
      return true;
    case 1033:
      picture = {bitmaps, 905, kMagenta};
      return true;
    case 1066:
      picture = {bitmaps, 901, kSheetGround};
      return true;
    case 1174:
      picture = {bitmaps, 631, kMagenta};
      return true;
    case 1387:
      picture = {bitmaps, 902, kMagenta};
      return true;
    case 1176:
      picture = {bitmaps, CollationPictureId(context), kSheetGround};
      return true;
    default:
      return false;
  }
}

}  // namespace ostrel
