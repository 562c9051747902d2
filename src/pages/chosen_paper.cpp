#include "pages/chosen_paper.h"

#include "core/paper_tables.h"
#include "core/parameter_table.h"

#include <limits>

namespace ostrel {
namespace {

void SetSize(UIContext& context, std::uint16_t width_px600, std::uint16_t length_px600) {
  SetDevmodeField(&context, kDmPaperWidth,
                  static_cast<std::int16_t>(TenthsOfMillimetre(width_px600)));
  SetDevmodeField(&context, kDmPaperLength,
                  static_cast<std::int16_t>(TenthsOfMillimetre(length_px600)));
}

}  // namespace

bool CanBeChosen(const CustomPaperRecord& paper) {
  return paper.PaperId >= kFirstCustomPaperId &&
         paper.PaperId <= static_cast<std::uint32_t>(std::numeric_limits<std::int16_t>::max());
}

bool FindChoosablePaper(std::uint32_t paperId, CustomPaperRecord& paper) {
  CustomPaperRecord found = {};
  if (!FindCustomPaper(paperId, &found) || !CanBeChosen(found)) {
    return false;
  }
  paper = found;
  return true;
}

void ChooseStoredPaper(UIContext& context, const CustomPaperRecord& paper) {
  SetDevmodeField(&context, kDmPaperSize, static_cast<std::int16_t>(paper.PaperId));
  SetSize(context, paper.Width, paper.Length);
  SetDevmodeField(&context, kAnnounceCustomSize, std::int16_t{0});
}

void ChooseTablePaperWithSize(UIContext& context, std::int16_t paperId) {
  if (const PaperRow* row = FindPaperRow(static_cast<std::uint16_t>(paperId)); row != nullptr) {
    SetDevmodeField(&context, kDmPaperSize, paperId);
    SetSize(context, row->width_px600, row->length_px600);
  }
}

void ChoosePaper(UIContext& context, std::int16_t paperId) {
  const bool ofTable = FindPaperRow(static_cast<std::uint16_t>(paperId)) != nullptr;
  CustomPaperRecord paper = {};
  if (!ofTable && FindChoosablePaper(static_cast<std::uint32_t>(paperId), paper)) {
    ChooseStoredPaper(context, paper);
  } else {
    SetDevmodeField(&context, kDmPaperSize, paperId);
  }
}

}  // namespace ostrel
