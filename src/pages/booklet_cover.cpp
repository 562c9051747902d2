#include "pages/booklet_cover.h"

namespace ostrel {

bool ShowBookletCoverDialog(WindowHandle /*page*/, UIContext& /*context*/) {
  return false;
}

}  // namespace ostrel
