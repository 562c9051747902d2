#include "pages/media_rules.h"

#include "core/language.h"
#include "core/text.h"
#include "pages/page_record.h"
#include "pages/source_list.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace ostrel {
namespace {

// clang-format off
struct ConflictRow {
  BookletConflict bit;
  StringId text;
};
// In the order in which the texts are told.
constexpr ConflictRow kConflictTexts[] = {
    {kConflictReverseOrder,  kStringBookletNeedsNormalOrder},
    {kConflictPaper,         kStringBookletNeedsTwoSidedPaper},
    {kConflictMedia,         kStringBookletNeedsPlainPaper},
    {kConflictPagesPerSheet, kStringBookletNeedsOnePage},
    {kConflictScale,         kStringBookletNeedsFullScale},
};
// clang-format on

constexpr std::size_t kConflictLineUnits = 128;  // 256 bytes, with the terminator

constexpr bool HasFlagsOnly(const FeedRow& row) {
  const auto isFlag = [](std::uint8_t flag) { return flag <= 1; };
  return std::all_of(std::begin(row.duplex), std::end(row.duplex), isFlag) &&
         std::all_of(std::begin(row.sources), std::end(row.sources), isFlag);
}

template <std::size_t count>
constexpr bool HasUniqueIds(const std::array<FeedRow, count>& rows) {
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (rows[i].id == rows[j].id) {
        return false;
      }
    }
  }
  return true;
}

static_assert(HasUniqueIds(kPaperRules) && HasUniqueIds(kMediaRules));
static_assert(std::all_of(kPaperRules.begin(), kPaperRules.end(), HasFlagsOnly));
static_assert(std::all_of(kMediaRules.begin(), kMediaRules.end(), HasFlagsOnly));
static_assert(std::none_of(kPaperRules.begin(), kPaperRules.end(),
                           [](const FeedRow& row) { return IsCustomPaperOfRules(row.id); }),
              "a custom paper has no row");
static_assert(std::all_of(kMediaRules.begin(), kMediaRules.end(),
                          [](const FeedRow& rule) {
                            return std::any_of(
                                kMediaNames.begin(), kMediaNames.end(),
                                [&](const MediaName& name) { return name.mediaId == rule.id; });
                          }),
              "each media type with a rule has a name");

template <std::size_t count>
const FeedRow* FindRow(const std::array<FeedRow, count>& rows, std::int32_t id) {
  const auto row = std::ranges::find(rows, id, &FeedRow::id);
  return row == rows.end() ? nullptr : &*row;
}

const SourceColumn* FindColumn(std::int32_t source) {
  const auto column = std::ranges::find(kSourceColumns, source, &SourceColumn::binId);
  return column == kSourceColumns.end() ? nullptr : &*column;
}

// Whether a row's paper or media takes a source; `row` stands in `rows`.
template <std::size_t count>
bool RowTakesSource(const std::array<FeedRow, count>& rows, const FeedRow& row,
                    std::int32_t source) {
  const SourceColumn* column = FindColumn(source);
  if (column == nullptr) {
    return false;
  }
  if (column->column < kSourceFlags) {
    return row.sources[column->column] == 1;
  }
  // The column behind the last one lies in the next row.
  const FeedRow* next = &row + 1;
  return next == rows.data() + count || next->duplex[0] == 1;
}

// The refusal of a mode, which is also the number of its flag; flags count from 1 as dmDuplex does.
bool RefusesMode(const FeedRow& row, std::int32_t mode) {
  return mode >= kDuplexOneSided && mode <= kDuplexShortEdge &&
         row.duplex[mode - kDuplexOneSided] == 0;
}

}  // namespace

const FeedRow* FindPaperRules(std::int32_t paper) {
  return FindRow(kPaperRules, paper);
}

const FeedRow* FindMediaRules(std::int32_t media) {
  return FindRow(kMediaRules, media);
}

const MediaName* FindMediaName(std::int32_t media) {
  const auto row = std::ranges::find(kMediaNames, media, &MediaName::mediaId);
  return row == kMediaNames.end() ? nullptr : &*row;
}

bool PaperTakesSource(std::int32_t paper, std::int32_t source) {
  if (IsCustomPaperOfRules(paper)) {
    return FindColumn(source) != nullptr;
  }
  const FeedRow* row = FindPaperRules(paper);
  return row != nullptr && RowTakesSource(kPaperRules, *row, source);
}

bool MediaTakesSource(std::int32_t media, std::int32_t source) {
  const FeedRow* row = FindMediaRules(media);
  return row != nullptr && RowTakesSource(kMediaRules, *row, source);
}

bool IsEnvelopePaper(std::int32_t paper) {
  constexpr std::int32_t kPapers[] = {37, 27, 28, 20, 31, 43, 277, 242, 276, 278, 279, 280};
  return std::ranges::find(kPapers, paper) != std::end(kPapers);
}

bool MediaNeedsOneSide(std::int32_t media) {
  constexpr std::int32_t kMedia[] = {263, 259, 258, 257, 2, 265, 261};
  return std::ranges::find(kMedia, media) != std::end(kMedia);
}

bool MediaRefusesDuplex(std::int32_t media) {
  const FeedRow* row = FindMediaRules(media);
  return row != nullptr && RefusesMode(*row, kDuplexLongEdge);
}

std::int32_t MediaRules::PaperSourceConflict(std::int32_t paper) const {
  if (IsCustomPaperOfRules(paper)) {
    return kNoConflict;  // whatever the source
  }
  const std::int32_t source =
      context_ == nullptr ? kBinAutomatic : context_->publicPointer->dmDefaultSource;
  return PaperTakesSource(paper, source) ? kNoConflict : 1;
}

std::int32_t MediaRules::PaperSourceCount(std::int32_t paper) const {
  if (IsCustomPaperOfRules(paper)) {
    return static_cast<std::int32_t>(kSourceFlags);
  }
  const FeedRow* row = FindPaperRules(paper);
  return row == nullptr ? 0 : std::accumulate(std::begin(row->sources), std::end(row->sources), 0);
}

std::int32_t MediaRules::PaperDuplexConflict(std::int32_t paper, std::int32_t mode) const {
  constexpr std::int32_t kFirstPrivateMode = 4;
  const std::int32_t counted = mode < kFirstPrivateMode ? mode : mode - 2;
  const FeedRow* row = FindPaperRules(paper);
  if (row != nullptr && RefusesMode(*row, counted)) {
    return counted;
  }
  return counted >= kDuplexLongEdge && IsCustomPaperOfRules(paper) ? 1 : kNoConflict;
}

std::uint32_t MediaRules::ActiveConflicts() const {
  if (context_ == nullptr) {
    return 0;
  }
  // The words are read as they stand: through the accessor a duplex above 3 would become 1.
  const PublicDevmode& shared = *context_->publicPointer;
  const PrivateDevmode& own = *context_->privatePointer;
  const FeedRow* paper = FindPaperRules(shared.dmPaperSize);
  std::uint32_t conflicts = 0;
  const auto add = [&conflicts](bool applies, BookletConflict bit) {
    conflicts |= applies ? bit : std::uint32_t{0};
  };
  add(own.ReversePrint == 1, kConflictReverseOrder);
  add(IsCustomPaperOfRules(shared.dmPaperSize) ||
          (paper != nullptr && RefusesMode(*paper, kDuplexShortEdge)),
      kConflictPaper);
  add(shared.dmMediaType != kMediaPlain, kConflictMedia);
  add(own.MultipleUp != 1, kConflictPagesPerSheet);
  add(own.ScaleRadio != kFullScale, kConflictScale);
  add(shared.dmDuplex == kDuplexLongEdge || shared.dmDuplex > kDuplexShortEdge, kConflictDuplex);
  return conflicts;
}

void MediaRules::ConflictText(std::span<char16_t, kConflictTextUnits> buffer) const {
  const std::uint32_t conflicts = ActiveConflicts();
  const std::size_t used = FieldText(buffer).size();
  if ((conflicts & ~std::uint32_t{kConflictDuplex}) == 0 || used == buffer.size()) {
    return;
  }
  TextBuilder out(buffer.subspan(used));
  for (const ConflictRow& row : kConflictTexts) {
    if ((conflicts & row.bit) != 0) {
      char16_t line[kConflictLineUnits] = {};
      LoadUiString(context_->languageModule, row.text, line);
      out.Add(FieldText(line)).Add(u"\r\n");
    }
  }
}

}  // namespace ostrel
