// What the media type in force makes of the paper source: three tables of the paper page, one for
// each occasion, and the one way in which they are read.
//
// The tables differ in more than they seem to at first sight. Each stands as it is.
#pragma once

#include "core/model_table.h"
#include "pages/media_rules.h"
#include "pages/source_list.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ostrel {

inline constexpr std::int32_t kMediaTransparency = 2;
inline constexpr std::int32_t kMediaThick = 257;
inline constexpr std::int32_t kMediaEnvelope = 258;
inline constexpr std::int32_t kMediaLetterhead = 261;

// A5, the one paper that may choose which edge goes first.
inline constexpr std::int16_t kPaperWithFeedChoice = 11;

// How many sources the list must have before letterhead leaves a choice.
inline constexpr std::int32_t kSourcesForLetterhead = 4;

// What has to hold for a row to do anything.
enum class SourceWhen : std::uint8_t {
  kAlways,
  kSourceAllowed,  // the rules before this one left the source free
  kPaperFeeds,     // the paper takes the record's source, and has others too
};

enum class SourcePlace : std::uint8_t {
  kKeep,
  kRecord,       // where the record's source stands
  kManual,       // position 1
  kTray1,        // position 2
  kOntoTray1,    // position 2, when the source is the automatic one or manual feed
  kOntoTray1Or0  // the same, and when the record names none
};

enum class SourceLock : std::uint8_t {
  kKeep,
  kLive,          // enabled, without the icon
  kLiveWithIcon,  // enabled, and the icon shown beside it all the same
  kLocked,        // disabled, with the icon
  kByTrays,       // live when the list is long enough for letterhead, else locked
  kByTraysIfFed,  // the same, when the paper takes the record's source
};

enum class SourceStore : std::uint8_t { kLater, kNow };

inline constexpr std::int32_t kAnyMedia = 0;

struct SourceRule {
  std::int32_t media;
  std::uint64_t families;
  SourceWhen when;
  SourcePlace place;
  SourceStore store;
  SourceLock lock;
};

// clang-format off
// When the page shows the record. What is put elsewhere is written to the record at once.
inline constexpr auto kRefreshSourceRules = std::to_array<SourceRule>({
    // Media,             Families,               When,                       Place,                    Store,               Lock
    {kMediaPlain,         kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kRecord,     SourceStore::kLater, SourceLock::kLive},
    {kMediaThin,          kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kRecord,     SourceStore::kLater, SourceLock::kLive},
    {kMediaThick,         kFamiliesWithFixedTray, SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kNow,   SourceLock::kLive},
    {kMediaThick,         kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kRecord,     SourceStore::kLater, SourceLock::kLive},
    {kMediaLetterhead,    kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kOntoTray1,  SourceStore::kNow,   SourceLock::kByTrays},
    {kMediaTransparency,  kFamiliesWithOptionalTrays, SourceWhen::kAlways,    SourcePlace::kTray1,      SourceStore::kNow,   SourceLock::kLocked},
    {kMediaTransparency,  kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kNow,   SourceLock::kLocked},
    {kAnyMedia,           kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kNow,   SourceLock::kLocked},
});

// When another paper is chosen. The source is written once, behind all rules. Letterhead shows the
// icon beside a list that stays live.
inline constexpr auto kPaperSourceRules = std::to_array<SourceRule>({
    // Media,             Families,               When,                       Place,                    Store,               Lock
    {kMediaPlain,         kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaThin,          kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaThick,         kFamiliesWithFixedTray, SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
    {kMediaThick,         kAllFamilies,           SourceWhen::kSourceAllowed, SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaTransparency,  kFamiliesWithOptionalTrays, SourceWhen::kAlways,    SourcePlace::kTray1,      SourceStore::kLater, SourceLock::kLocked},
    {kMediaTransparency,  kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
    {kMediaLetterhead,    kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kTray1,      SourceStore::kLater, SourceLock::kLiveWithIcon},
    {kAnyMedia,           kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
});

// When another media type is chosen. The source is written once, behind the rule.
inline constexpr auto kMediaSourceRules = std::to_array<SourceRule>({
    // Media,             Families,               When,                       Place,                    Store,               Lock
    {kMediaPlain,         kAllFamilies,           SourceWhen::kPaperFeeds,    SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaThin,          kAllFamilies,           SourceWhen::kPaperFeeds,    SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaThick,         kFamiliesWithFixedTray, SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
    {kMediaThick,         kAllFamilies,           SourceWhen::kPaperFeeds,    SourcePlace::kKeep,       SourceStore::kLater, SourceLock::kLive},
    {kMediaTransparency,  kFamiliesWithOptionalTrays, SourceWhen::kAlways,    SourcePlace::kTray1,      SourceStore::kLater, SourceLock::kLocked},
    {kMediaTransparency,  kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
    {kMediaLetterhead,    kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kOntoTray1Or0, SourceStore::kLater, SourceLock::kByTraysIfFed},
    {kAnyMedia,           kAllFamilies,           SourceWhen::kAlways,        SourcePlace::kManual,     SourceStore::kLater, SourceLock::kLocked},
});
// clang-format on

using SourceRules = std::array<SourceRule, 8>;

// What a rule looks at.
struct SourceFacts {
  std::int32_t media;
  std::uint64_t family;        // ModelFlags
  std::int16_t source;         // the record's
  bool sourceAllowed;          // what the rules before have left
  bool paperTakesSource;       // the record's one
  std::int32_t paperSources;   // how many the paper takes
  std::int32_t listedSources;  // how many the list has
};

// What a rule asks for; what is empty or kKeep stays as it is.
struct SourceOutcome {
  std::optional<std::int32_t> position;
  bool storeNow = false;
  SourceLock lock = SourceLock::kKeep;  // never one that depends on anything

  bool operator==(const SourceOutcome&) const = default;
};

// Reads a table: the first row of the media and the family decides.
SourceOutcome ApplySourceRules(const SourceRules& rules, const SourceFacts& facts);

}  // namespace ostrel
