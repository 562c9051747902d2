#include "config/setting_stores.h"

namespace ostrel {

std::size_t ReadCustomPapers(std::span<CustomPaperRecord> /*records*/) {
  return 0;
}

bool FindCustomPaper(std::uint32_t /*paperId*/, CustomPaperRecord* /*record*/) {
  return false;
}

}  // namespace ostrel
