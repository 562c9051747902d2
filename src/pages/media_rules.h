// Which paper and which media type can be fed from which source, and which can be printed on both
// sides: the two tables, and the questions that pages ask of them.
//
// Answers come from the tables and from the context's record; nothing is written. Any number may be
// asked for: what has no row is told below for each question.
#pragma once

#include "core/settings_record.h"
#include "core/string_ids.h"
#include "core/ui_context.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ostrel {

inline constexpr std::size_t kRulePaperRows = 28;
inline constexpr std::size_t kRuleMediaRows = 9;
inline constexpr std::size_t kDuplexFlags = 3;
inline constexpr std::size_t kSourceFlags = 5;

// dmDuplex by the names of its three public values (DMDUP_... of wingdi.h).
inline constexpr std::int32_t kDuplexOneSided = kDuplexSimplex;
inline constexpr std::int32_t kDuplexLongEdge = 2;
inline constexpr std::int32_t kDuplexShortEdge = 3;

inline constexpr std::int32_t kMediaPlain = 1;
inline constexpr std::int32_t kMediaThin = 264;

// What a paper or a media type can do; 1 is supported.
struct FeedRow {
  std::int16_t id;
  std::uint8_t duplex[kDuplexFlags];   // one-sided, long edge, short edge
  std::uint8_t sources[kSourceFlags];  // in the order of the source columns
};

// clang-format off
inline constexpr std::array<FeedRow, kRulePaperRows> kPaperRules = {{
    // Id    Duplex     Sources 7, 4, 257, 258, 259
    {   1, {1, 1, 1}, {1, 1, 1, 1, 1}},  //  0
    {   9, {1, 1, 1}, {1, 1, 1, 1, 1}},  //  1
    {   5, {1, 1, 1}, {1, 1, 1, 1, 1}},  //  2
    {  13, {1, 0, 0}, {1, 1, 1, 1, 1}},  //  3
    {  37, {1, 0, 0}, {0, 1, 0, 0, 0}},  //  4
    {  27, {1, 0, 0}, {0, 1, 0, 0, 0}},  //  5
    {  28, {1, 0, 0}, {0, 1, 0, 0, 0}},  //  6
    {  20, {1, 0, 0}, {0, 1, 0, 0, 0}},  //  7
    {  11, {1, 0, 0}, {1, 1, 1, 1, 1}},  //  8
    {  43, {1, 0, 0}, {0, 1, 0, 0, 0}},  //  9
    { 250, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 10
    { 245, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 11
    { 252, {1, 0, 0}, {0, 1, 1, 0, 0}},  // 12
    { 246, {1, 0, 0}, {0, 1, 1, 0, 0}},  // 13
    {  70, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 14
    {  34, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 15
    {   7, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 16
    {  14, {1, 1, 1}, {1, 1, 1, 1, 1}},  // 17
    { 243, {1, 1, 1}, {1, 1, 1, 1, 1}},  // 18
    {   6, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 19
    {  31, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 20
    { 242, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 21
    { 241, {1, 0, 0}, {0, 1, 1, 0, 0}},  // 22
    { 276, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 23
    { 277, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 24
    { 278, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 25
    { 279, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 26
    { 280, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 27
}};

inline constexpr std::array<FeedRow, kRuleMediaRows> kMediaRules = {{
    // Id    Duplex     Sources 7, 4, 257, 258, 259
    {   1, {1, 1, 1}, {1, 1, 1, 1, 1}},  // 0
    { 257, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 1
    { 258, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 2
    {   2, {1, 0, 0}, {0, 0, 1, 0, 0}},  // 3
    { 259, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 4
    { 263, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 5
    { 264, {1, 0, 0}, {1, 1, 1, 1, 1}},  // 6
    { 265, {1, 0, 0}, {0, 1, 0, 0, 0}},  // 7
    { 261, {1, 0, 0}, {0, 0, 1, 1, 1}},  // 8
}};

struct SourceColumn {
  std::int16_t binId;
  std::uint8_t column;
};

// Bin 260 has a column of its own number, one beyond the flags that a row has: it is answered by
// the first flag of the next row, and by 1 behind the last one. This is to stay.
inline constexpr std::array<SourceColumn, kSourceFlags + 1> kSourceColumns = {{
    // Bin, Column
    {   7, 0},
    {   4, 1},
    { 257, 2},
    { 258, 3},
    { 259, 4},
    { 260, 5},
}};

struct MediaName {
  std::int16_t mediaId;
  StringId name;
};

inline constexpr std::array<MediaName, kRuleMediaRows> kMediaNames = {{
    // Media, Name
    {   1, kStringMediaPlain},
    { 257, kStringMediaThick},
    { 258, kStringMediaEnvelope},
    { 259, kStringMediaCardStock},
    { 263, kStringMediaLabels},
    {   2, kStringMediaTransparency},
    { 264, kStringMediaThin},
    { 265, kStringMediaExtraThick},
    { 261, kStringMediaLetterhead},
}};
// clang-format on

// The row of a paper or of a media type; null for an id without one.
const FeedRow* FindPaperRules(std::int32_t paper);
const FeedRow* FindMediaRules(std::int32_t media);

// The name of a media type; null for one that isn't in the list.
const MediaName* FindMediaName(std::int32_t media);

// Papers that the rules take for the user's own: a narrower range than that of the ids which the
// paper tables give to them. Both ranges stand.
constexpr bool IsCustomPaperOfRules(std::int32_t paper) {
  return paper >= 288 && paper <= 308;
}

// Whether a paper or a media type may be fed from a source. A custom paper takes any source that
// has a column. An id without a row takes none, and no row takes a source without a column.
bool PaperTakesSource(std::int32_t paper, std::int32_t source);
bool MediaTakesSource(std::int32_t media, std::int32_t source);

// Whether the media type has a row that refuses two-sided printing along the long edge.
bool MediaRefusesDuplex(std::int32_t media);

// Envelopes and cards: papers that letterhead and transparencies aren't made of.
bool IsEnvelopePaper(std::int32_t paper);

// Media types that can't be chosen while printing is two-sided. Thin paper isn't among them, though
// its row has no long edge; both lists stand.
bool MediaNeedsOneSide(std::int32_t media);

// What forbids booklet printing.
enum BookletConflict : std::uint32_t {
  kConflictReverseOrder = 1,
  kConflictPaper = 2,
  kConflictMedia = 4,
  kConflictScale = 16,
  kConflictPagesPerSheet = 32,
  kConflictDuplex = 64,  // has no text
};

inline constexpr std::size_t kConflictTextUnits = 2048;

class MediaRules {
 public:
  static constexpr std::int32_t kNoConflict = -1;

  // Built on the stack for the length of some questions. The context may be null: its record is
  // then taken for one without conflicts and with the automatic source.
  explicit MediaRules(const UIContext* context) : context_(context) {}

  // kNoConflict when the paper can be fed from the record's source, else 1. A paper without a row
  // has no conflict when it is custom, whatever the source, and has one otherwise; a paper with a
  // row is in conflict with a source that has no column.
  std::int32_t PaperSourceConflict(std::int32_t paper) const;
  // The sources of a paper: 5 for a custom one, 0 for one without a row.
  std::int32_t PaperSourceCount(std::int32_t paper) const;
  // kNoConflict, or a positive number when the paper can't be printed in a mode of dmDuplex. Modes
  // of 4 and more count as two less. A mode without a flag meets no row's refusal.
  std::int32_t PaperDuplexConflict(std::int32_t paper, std::int32_t mode) const;
  // The BookletConflict bits of the record.
  std::uint32_t ActiveConflicts() const;
  // Appends the texts of those bits to what is in the buffer, each on a line of its own, cut to
  // fit. Conflicts without a text leave the buffer as it was.
  void ConflictText(std::span<char16_t, kConflictTextUnits> buffer) const;

 private:
  const UIContext* context_;
};

}  // namespace ostrel
