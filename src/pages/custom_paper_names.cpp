#include "pages/custom_paper_names.h"

#include "core/language.h"
#include "core/paper_tables.h"
#include "core/text.h"
#include "pages/name_cleaning.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr std::size_t kTextUnits = 260;

std::u16string_view WithoutExplanation(std::u16string_view paperName) {
  const std::size_t bracket = paperName.find(u'(');
  if (bracket == std::u16string_view::npos) {
    return paperName;
  }
  paperName = paperName.substr(0, bracket);
  return paperName.substr(0, paperName.find_last_not_of(u' ') + 1);
}

bool IsFixedPaperName(std::u16string_view name, ModuleHandle texts) {
  return std::ranges::any_of(kPaperTable, [&](const PaperRow& row) {
    char16_t paperName[kTextUnits] = {};
    return LoadExistingString(texts, row.nameStringId, paperName) &&
           WithoutExplanation(FieldText(paperName)) == name;
  });
}

}  // namespace

PaperNameKind JudgePaperName(std::u16string_view name, std::u16string_view untitled,
                             ModuleHandle texts) {
  if (name.empty()) {
    return PaperNameKind::kEmpty;
  }
  if (name == untitled) {
    return PaperNameKind::kUntitled;
  }
  if (!IsCleanName(name)) {
    return PaperNameKind::kWithRefusedUnits;
  }
  return IsFixedPaperName(name, texts) ? PaperNameKind::kFixedPaper : PaperNameKind::kFree;
}

}  // namespace ostrel
