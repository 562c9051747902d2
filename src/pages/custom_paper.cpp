#include "pages/custom_paper.h"

namespace ostrel {

bool ShowCustomPaperDialog(WindowHandle /*page*/, UIContext& /*context*/) {
  return false;
}

}  // namespace ostrel
