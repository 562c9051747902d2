#include "core/paper_tables.h"

#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr bool PaperIdsAreUnique() {
  for (std::size_t i = 0; i < kPaperRows; ++i) {
    for (std::size_t j = i + 1; j < kPaperRows; ++j) {
      if (kPaperTable[i].id == kPaperTable[j].id ||
          kPaperTable[i].nameStringId == kPaperTable[j].nameStringId) {
        return false;
      }
    }
  }
  return true;
}
static_assert(PaperIdsAreUnique());
static_assert(std::ranges::all_of(kPaperTable, [](const PaperRow& row) {
  return row.id < kFirstCustomPaperId && row.width_px600 < row.length_px600;
}));

constexpr LocalePaper kLocaleA4 = {kPaperA4, 2100, 2970, u"A4"};
constexpr LocalePaper kLocaleLetter = {kPaperLetter, 2159, 2794, u"Letter"};

// Country codes are those of LOCALE_ICOUNTRY, the telephone prefixes: the United States and Canada,
// and the Americas of prefix 5.
constexpr bool CountryUsesLetter(std::int32_t country) {
  return country == 1 || country == 2 || (country >= 50 && country <= 59) ||
         (country >= 500 && country <= 599);
}

PaperExtent ExtentOf(std::uint16_t width_px600, std::uint16_t length_px600) {
  return {width_px600,
          length_px600,
          {kPaperMargin_px600, kPaperMargin_px600, kPaperMargin_px600, kPaperMargin_px600}};
}

}  // namespace

const PaperRow* FindPaperRow(std::uint16_t paperId) {
  const auto row = std::ranges::find(kPaperTable, paperId, &PaperRow::id);
  return row == kPaperTable.end() ? nullptr : &*row;
}

bool IsA4Locale() {
  char16_t country[16] = {};
  if (World().locale.GetLocaleInfoW(kLocaleUserDefault, kLocaleICountry, country,
                                    static_cast<int>(std::size(country))) == 0) {
    return false;
  }
  return !CountryUsesLetter(LeadingNumber(FieldText(country)));
}

const LocalePaper& PaperOfLocale() {
  return IsA4Locale() ? kLocaleA4 : kLocaleLetter;
}

int GetPaperExtent(const PrivateDevmode* privateDevmode, std::uint16_t paperId,
                   std::int16_t /*orientation*/, PaperExtent* out) {
  if (paperId < kFirstCustomPaperId) {
    if (const PaperRow* row = FindPaperRow(paperId)) {
      *out = ExtentOf(row->width_px600, row->length_px600);
    }
    return 0;
  }
  CustomPaperRecord stored = {};
  if (privateDevmode != nullptr && FindCustomPaper(paperId, &stored)) {
    *out = ExtentOf(stored.Width, stored.Length);
  } else {
    *out = ExtentOf(kDefaultCustomWidth_px600, kDefaultCustomLength_px600);
  }
  return 0;
}

}  // namespace ostrel
