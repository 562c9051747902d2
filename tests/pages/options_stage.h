// The stage of the print options page, and the papers that two-sided printing is asked about.
#pragma once

#include "pages/page_stage.h"
#include "pages/print_options.h"
#include "support/case_name.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace ostrel::test {

inline constexpr std::uint32_t kOptionsDialog = 111;

class OptionsStage : public PageStage {
 public:
  OptionsStage() : PageStage({kOptionsDialog, kPrintOptionsPage, PrintOptionsPageProcedure}) {}

  // The bitmap that the duplex picture shows.
  std::uint32_t DuplexPicture() { return user().Image(1453); }
};

// Papers with and without rows, for the tables of two-sided printing.
struct PaperCase {
  std::int16_t paper;
  bool twoSided;  // whether its row allows it; true for a paper without a row
  bool hasRow;
};
inline constexpr PaperCase kPaperCases[] = {
    {1, true, true},
    {9, true, true},
    {5, true, true},
    {13, false, true},
    {37, false, true},
    {27, false, true},
    {28, false, true},
    {20, false, true},
    {11, false, true},
    {43, false, true},
    {250, false, true},
    {245, false, true},
    {252, false, true},
    {246, false, true},
    {70, false, true},
    {34, false, true},
    {7, false, true},
    {14, true, true},
    {243, true, true},
    {6, false, true},
    {31, false, true},
    {242, false, true},
    {241, false, true},
    {276, false, true},
    {277, false, true},
    {278, false, true},
    {279, false, true},
    {280, false, true},
    // The user's own, at both ends of the two ranges, and ids that nobody has.
    {288, true, false},
    {308, true, false},
    {309, true, false},
    {319, true, false},
    {287, true, false},
    {320, true, false},
    {0, true, false},
    {-1, true, false},
    {511, true, false},
    {512, true, false},
    {32767, true, false},
};
inline bool IsRuleCustomPaper(std::int16_t paper) {
  return paper >= 288 && paper <= 308;
}
struct PaperCaseName {
  std::string operator()(const testing::TestParamInfo<PaperCase>& row) const {
    const int paper = row.param.paper;
    return paper < 0 ? "Minus" + std::to_string(-paper) : "Paper" + std::to_string(paper);
  }
};
inline void PrintTo(const PaperCase& row, std::ostream* out) {
  *out << row.paper;
}

}  // namespace ostrel::test
