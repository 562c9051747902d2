// The three tables by which the media type rules the source, cell by cell for every family.
#include "pages/paper_rules.h"

#include "pages/paper_stage.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr SourceLock kKeep = SourceLock::kKeep;
constexpr SourceLock kLive = SourceLock::kLive;
constexpr SourceLock kLiveWithIcon = SourceLock::kLiveWithIcon;
constexpr SourceLock kLocked = SourceLock::kLocked;
constexpr std::int32_t kNone = -1;

// What is asked for, by whether the families have trays, and by whether the row's condition holds.
struct RuleCase {
  const char* name;
  std::int32_t media;
  bool hasTrays;
  bool condition;  // the source is allowed, or the paper feeds from the record's source and others
  std::int16_t source;
  std::int32_t listed;
  std::int32_t position;  // kNone for none
  bool storeNow;
  SourceLock lock;
};
void PrintTo(const RuleCase& row, std::ostream* out) {
  *out << row.name;
}

SourceOutcome Expected(const RuleCase& row) {
  return {.position = row.position == kNone ? std::nullopt : std::optional(row.position),
          .storeNow = row.storeNow,
          .lock = row.lock};
}

SourceFacts FactsOf(const RuleCase& row) {
  return {.media = row.media,
          .family = 0,
          .source = row.source,
          .sourceAllowed = row.condition,
          .paperTakesSource = row.condition,
          .paperSources = row.condition ? 2 : 0,
          .listedSources = row.listed};
}

// Asks a table for every family of the case's kind.
void ExpectForAllFamilies(const SourceRules& rules, const RuleCase& row, SourceFacts facts) {
  for (const FamilyModel& model : test::kFamilyModels) {
    if (model.hasTrays == row.hasTrays) {
      facts.family = model.family;
      EXPECT_EQ(ApplySourceRules(rules, facts), Expected(row)) << "family " << model.family;
    }
  }
}

// The paper's own answers play no part: what they left is whether the source is allowed.
void ExpectWhateverThePaperTakes(const SourceRules& rules, const RuleCase& row) {
  for (const bool takes : {false, true}) {
    SourceFacts facts = FactsOf(row);
    facts.paperTakesSource = takes;
    facts.paperSources = takes ? 5 : 0;
    ExpectForAllFamilies(rules, row, facts);
  }
}

// ---- When the record is shown -------------------------------------------------------------------

// clang-format off
const RuleCase kRefreshCases[] = {
    // Name,                 Media, Trays, Allowed, Source, Listed, Position, Store, Lock
    {"Plain",                   1, true,  true,  257, 5, 2,     false, kLive},
    {"PlainFixed",              1, false, true,    4, 3, 1,     false, kLive},
    {"PlainLocked",             1, true,  false, 257, 5, kNone, false, kKeep},
    {"Thin",                  264, true,  true,  259, 5, 4,     false, kLive},
    {"ThinFixed",             264, false, true,    7, 3, 0,     false, kLive},
    {"ThinLocked",            264, false, false,   7, 3, kNone, false, kKeep},
    {"Thick",                 257, true,  true,  258, 5, 3,     false, kLive},
    {"ThickLocked",           257, true,  false, 258, 5, kNone, false, kKeep},
    {"ThickFixed",            257, false, true,  257, 3, 1,     true,  kLive},
    {"ThickFixedLocked",      257, false, false, 257, 3, 1,     true,  kLive},
    {"LetterheadManual5",     261, true,  true,    4, 5, 2,     true,  kLive},
    {"LetterheadManual4",     261, true,  false,   4, 4, 2,     true,  kLive},
    {"LetterheadManual3",     261, true,  true,    4, 3, 2,     true,  kLocked},
    {"LetterheadAutomatic5",  261, true,  true,    7, 5, 2,     true,  kLive},
    {"LetterheadAutomatic3",  261, false, true,    7, 3, 2,     true,  kLocked},
    {"LetterheadTray2",       261, true,  true,  258, 5, kNone, false, kLive},
    {"LetterheadTray1Of3",    261, true,  true,  257, 3, kNone, false, kLocked},
    {"LetterheadNone",        261, true,  true,    0, 5, kNone, false, kLive},
    {"Transparency",            2, true,  true,    7, 5, 2,     true,  kLocked},
    {"TransparencyFixed",       2, false, true,    7, 3, 1,     true,  kLocked},
    {"Envelope",              258, true,  true,    7, 5, 1,     true,  kLocked},
    {"EnvelopeFixed",         258, false, false, 257, 3, 1,     true,  kLocked},
    {"Card",                  259, true,  true,    7, 5, 1,     true,  kLocked},
    {"Labels",                263, false, true,    7, 3, 1,     true,  kLocked},
    {"ExtraThick",            265, true,  false,   7, 5, 1,     true,  kLocked},
    {"Unlisted",                6, true,  true,    7, 5, 1,     true,  kLocked},
    {"OutOfRange",              0, false, true,    7, 3, 1,     true,  kLocked},
};
// clang-format on

class RefreshSourceRule : public testing::TestWithParam<RuleCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, RefreshSourceRule, testing::ValuesIn(kRefreshCases),
                         test::CaseName());

TEST_P(RefreshSourceRule, SaysWhatItsRowSays) {
  ExpectWhateverThePaperTakes(kRefreshSourceRules, GetParam());
}

// ---- When another paper is chosen ---------------------------------------------------------------

// clang-format off
const RuleCase kPaperCases[] = {
    // Name,                 Media, Trays, Allowed, Source, Listed, Position, Store, Lock
    {"Plain",                   1, true,  true,    7, 5, kNone, false, kLive},
    {"PlainLocked",             1, false, false,   7, 3, kNone, false, kKeep},
    {"Thin",                  264, false, true,    7, 3, kNone, false, kLive},
    {"ThinLocked",            264, true,  false,   7, 5, kNone, false, kKeep},
    {"Thick",                 257, true,  true,    7, 5, kNone, false, kLive},
    {"ThickLocked",           257, true,  false,   7, 5, kNone, false, kKeep},
    {"ThickFixed",            257, false, true,    7, 3, 1,     false, kLocked},
    {"ThickFixedLocked",      257, false, false,   7, 3, 1,     false, kLocked},
    {"Transparency",            2, true,  true,    7, 5, 2,     false, kLocked},
    {"TransparencyFixed",       2, false, true,    7, 3, 1,     false, kLocked},
    {"Letterhead",            261, true,  true,    7, 5, 2,     false, kLiveWithIcon},
    {"LetterheadShortList",   261, true,  false, 258, 3, 2,     false, kLiveWithIcon},
    {"LetterheadFixed",       261, false, false,   7, 3, 2,     false, kLiveWithIcon},
    {"Envelope",              258, true,  true,    7, 5, 1,     false, kLocked},
    {"Card",                  259, false, true,    7, 3, 1,     false, kLocked},
    {"Labels",                263, true,  false,   7, 5, 1,     false, kLocked},
    {"ExtraThick",            265, true,  true,    7, 5, 1,     false, kLocked},
    {"Unlisted",                3, false, true,    7, 3, 1,     false, kLocked},
};
// clang-format on

class PaperSourceRule : public testing::TestWithParam<RuleCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, PaperSourceRule, testing::ValuesIn(kPaperCases), test::CaseName());

TEST_P(PaperSourceRule, SaysWhatItsRowSays) {
  ExpectWhateverThePaperTakes(kPaperSourceRules, GetParam());
}

// ---- When another media type is chosen ----------------------------------------------------------

// clang-format off
const RuleCase kMediaCases[] = {
    // Name,                 Media, Trays, Feeds, Source, Listed, Position, Store, Lock
    {"Plain",                   1, true,  true,    7, 5, kNone, false, kLive},
    {"PlainUnfed",              1, false, false,   7, 3, kNone, false, kKeep},
    {"Thin",                  264, false, true,    7, 3, kNone, false, kLive},
    {"ThinUnfed",             264, true,  false,   7, 5, kNone, false, kKeep},
    {"Thick",                 257, true,  true,    7, 5, kNone, false, kLive},
    {"ThickUnfed",            257, true,  false,   7, 5, kNone, false, kKeep},
    {"ThickFixed",            257, false, true,    7, 3, 1,     false, kLocked},
    {"ThickFixedUnfed",       257, false, false,   7, 3, 1,     false, kLocked},
    {"Transparency",            2, true,  false,   7, 5, 2,     false, kLocked},
    {"TransparencyFixed",       2, false, true,    7, 3, 1,     false, kLocked},
    {"LetterheadManual5",     261, true,  true,    4, 5, 2,     false, kLive},
    {"LetterheadAutomatic4",  261, true,  true,    7, 4, 2,     false, kLive},
    {"LetterheadNone5",       261, true,  true,    0, 5, 2,     false, kLive},
    {"LetterheadManual3",     261, true,  true,    4, 3, 2,     false, kLocked},
    {"LetterheadFixed",       261, false, true,    7, 3, 2,     false, kLocked},
    {"LetterheadTray2",       261, true,  true,  258, 5, kNone, false, kLive},
    {"LetterheadUnfed",       261, true,  false,   4, 5, 2,     false, kKeep},
    {"LetterheadUnfed3",      261, true,  false,   7, 3, 2,     false, kKeep},
    {"Envelope",              258, true,  true,    7, 5, 1,     false, kLocked},
    {"Card",                  259, false, false,   7, 3, 1,     false, kLocked},
    {"Labels",                263, true,  true,    7, 5, 1,     false, kLocked},
    {"ExtraThick",            265, true,  true,    7, 5, 1,     false, kLocked},
    {"Unlisted",              266, false, true,    7, 3, 1,     false, kLocked},
};
// clang-format on

class MediaSourceRule : public testing::TestWithParam<RuleCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, MediaSourceRule, testing::ValuesIn(kMediaCases), test::CaseName());

// What the source was allowed before plays no part.
TEST_P(MediaSourceRule, SaysWhatItsRowSays) {
  for (const bool allowed : {false, true}) {
    SourceFacts facts = FactsOf(GetParam());
    facts.sourceAllowed = allowed;
    ExpectForAllFamilies(kMediaSourceRules, GetParam(), facts);
  }
}

// A paper that takes the source and has no other leaves no choice, and letterhead only asks
// whether it takes the source.
TEST(MediaSourceRules, PaperWithOneSourceOffersNoChoice) {
  SourceFacts facts = {.media = 1,
                       .family = Hazel,
                       .source = 4,
                       .sourceAllowed = true,
                       .paperTakesSource = true,
                       .paperSources = 1,
                       .listedSources = 5};
  EXPECT_EQ(ApplySourceRules(kMediaSourceRules, facts), SourceOutcome{});
  facts.paperTakesSource = false;
  facts.paperSources = 5;
  EXPECT_EQ(ApplySourceRules(kMediaSourceRules, facts), SourceOutcome{});
  facts = {.media = 261,
           .family = Hazel,
           .source = 4,
           .sourceAllowed = false,
           .paperTakesSource = true,
           .paperSources = 1,
           .listedSources = 4};
  EXPECT_EQ(ApplySourceRules(kMediaSourceRules, facts),
            (SourceOutcome{.position = 2, .storeNow = false, .lock = kLive}));
}

// Rows for "others" hold for a model of no family too.
TEST(SourceRules, ModelWithoutAFamilyIsOneOfTheOthers) {
  const SourceFacts facts = {.media = 2,
                             .family = 0,
                             .source = 7,
                             .sourceAllowed = true,
                             .paperTakesSource = true,
                             .paperSources = 5,
                             .listedSources = 2};
  for (const SourceRules* rules : {&kRefreshSourceRules, &kPaperSourceRules, &kMediaSourceRules}) {
    EXPECT_EQ(ApplySourceRules(*rules, facts).position, 1);
  }
}

}  // namespace
}  // namespace ostrel
