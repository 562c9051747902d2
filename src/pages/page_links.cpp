#include "pages/page_links.h"

namespace ostrel {

void TellPages(bool PageLinks::*fact, bool value) {
  if (auto* links = GetPageState<PageLinks>(PageSlot::kPageLinks); links != nullptr) {
    links->*fact = value;
  }
}

bool AskPages(bool PageLinks::*fact) {
  const auto* links = GetPageState<PageLinks>(PageSlot::kPageLinks);
  return links == nullptr ? PageLinks().*fact : links->*fact;
}

}  // namespace ostrel
