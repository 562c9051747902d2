#include "pages/media_rules.h"

#include "core/text.h"
#include "pages/page_scene.h"
#include "support/case_name.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::PageScene;

// What the tables say, written a second time and in another way: keys by row, and rows by what they
// have in common.
constexpr std::array<std::int32_t, 28> kPapers = {1,   9,   5,   13,  37,  27,  28,  20, 11,  43,
                                                  250, 245, 252, 246, 70,  34,  7,   14, 243, 6,
                                                  31,  242, 241, 276, 277, 278, 279, 280};
constexpr std::array<std::int32_t, 9> kMedia = {1, 257, 258, 2, 259, 263, 264, 265, 261};
constexpr std::array<std::int32_t, 6> kSources = {7, 4, 257, 258, 259, 260};

const std::set<std::size_t> kPaperRowsTwoSided = {0, 1, 2, 17, 18};
const std::set<std::size_t> kPaperRowsManualOnly = {4, 5, 6, 7, 9, 20, 21, 23, 24, 25, 26, 27};
const std::set<std::size_t> kPaperRowsManualAndTray1 = {12, 13, 22};
const std::set<std::size_t> kMediaRowsManualOnly = {2, 4, 5, 7};

// The five flags of a row, as a text of ones and zeros.
std::string PaperSources(std::size_t row) {
  return kPaperRowsManualOnly.contains(row)       ? "01000"
         : kPaperRowsManualAndTray1.contains(row) ? "01100"
                                                  : "11111";
}
std::string MediaSources(std::size_t row) {
  return kMediaRowsManualOnly.contains(row) ? "01000"
         : row == 3                         ? "00100"
         : row == 8                         ? "00111"
                                            : "11111";
}

// Whether a row takes the source of a column. Behind the fifth stands the next row's first flag:
// one-sided printing, which all of them allow.
bool Takes(const std::string& flags, std::size_t column) {
  return column == 5 || flags[column] == '1';
}

// All numbers that a record's word can hold, of which only few have a row.
template <typename Body>
void ForEachWord(Body&& body) {
  for (std::int32_t word = std::numeric_limits<std::int16_t>::min();
       word <= std::numeric_limits<std::int16_t>::max(); ++word) {
    body(word);
  }
}

// Numbers that aren't even words.
constexpr std::array<std::int32_t, 5> kBeyondWords = {std::numeric_limits<std::int32_t>::min(),
                                                      -65536, 65536 + 9, 65536 + 288,
                                                      std::numeric_limits<std::int32_t>::max()};

template <std::size_t count>
std::size_t RowOf(const std::array<std::int32_t, count>& keys, std::int32_t key) {
  return static_cast<std::size_t>(std::find(keys.begin(), keys.end(), key) - keys.begin());
}

bool IsCustom(std::int32_t paper) {
  return paper >= 288 && paper <= 308;
}

TEST(MediaRules, RowsStandInTheDocumentedOrder) {
  for (std::size_t row = 0; row < kPapers.size(); ++row) {
    EXPECT_EQ(kPaperRules[row].id, kPapers[row]);
  }
  for (std::size_t row = 0; row < kMedia.size(); ++row) {
    EXPECT_EQ(kMediaRules[row].id, kMedia[row]);
  }
  for (std::size_t column = 0; column < kSources.size(); ++column) {
    EXPECT_EQ(kSourceColumns[column].binId, kSources[column]);
    EXPECT_EQ(kSourceColumns[column].column, column);
  }
}

TEST(MediaRules, OnlyKnownPapersAndMediaHaveARow) {
  const auto check = [](std::int32_t id) {
    const std::size_t paper = RowOf(kPapers, id);
    EXPECT_EQ(FindPaperRules(id), paper < kPapers.size() ? &kPaperRules[paper] : nullptr) << id;
    const std::size_t media = RowOf(kMedia, id);
    EXPECT_EQ(FindMediaRules(id), media < kMedia.size() ? &kMediaRules[media] : nullptr) << id;
  };
  ForEachWord(check);
  std::ranges::for_each(kBeyondWords, check);
}

TEST(MediaRules, EachPaperTakesTheSourcesOfItsRow) {
  for (std::size_t row = 0; row < kPapers.size(); ++row) {
    for (std::size_t column = 0; column < kSources.size(); ++column) {
      EXPECT_EQ(PaperTakesSource(kPapers[row], kSources[column]), Takes(PaperSources(row), column))
          << "paper " << kPapers[row] << ", source " << kSources[column];
    }
  }
}

TEST(MediaRules, EachMediaTakesTheSourcesOfItsRow) {
  for (std::size_t row = 0; row < kMedia.size(); ++row) {
    for (std::size_t column = 0; column < kSources.size(); ++column) {
      EXPECT_EQ(MediaTakesSource(kMedia[row], kSources[column]), Takes(MediaSources(row), column))
          << "media " << kMedia[row] << ", source " << kSources[column];
    }
  }
}

TEST(MediaRules, NothingTakesAnUnknownSource) {
  ForEachWord([](std::int32_t source) {
    if (RowOf(kSources, source) == kSources.size()) {
      EXPECT_FALSE(PaperTakesSource(9, source)) << source;
      EXPECT_FALSE(PaperTakesSource(288, source)) << source;
      EXPECT_FALSE(PaperTakesSource(280, source)) << source;
      EXPECT_FALSE(MediaTakesSource(1, source)) << source;
      EXPECT_FALSE(MediaTakesSource(261, source)) << source;
    }
  });
}

TEST(MediaRules, WithoutARowNoSourceIsTaken) {
  const auto check = [](std::int32_t id) {
    for (const std::int32_t source : kSources) {
      if (RowOf(kPapers, id) == kPapers.size()) {
        EXPECT_EQ(PaperTakesSource(id, source), IsCustom(id)) << id;
      }
      if (RowOf(kMedia, id) == kMedia.size()) {
        EXPECT_FALSE(MediaTakesSource(id, source)) << id;
      }
    }
  };
  ForEachWord(check);
  std::ranges::for_each(kBeyondWords, check);
}

TEST(MediaRules, PaperSourceConflictFollowsTheRecordsSource) {
  PageScene scene;
  const MediaRules rules(&scene.context);
  for (std::size_t column = 0; column < kSources.size(); ++column) {
    scene.shared().dmDefaultSource = static_cast<std::int16_t>(kSources[column]);
    ForEachWord([&](std::int32_t paper) {
      const std::size_t row = RowOf(kPapers, paper);
      const bool fed = row < kPapers.size() ? Takes(PaperSources(row), column) : IsCustom(paper);
      EXPECT_EQ(rules.PaperSourceConflict(paper), fed ? -1 : 1)
          << "paper " << paper << ", source " << kSources[column];
    });
    for (const std::int32_t paper : kBeyondWords) {
      EXPECT_EQ(rules.PaperSourceConflict(paper), 1) << paper;
    }
  }
}

// A record of a foreign driver may name any source. The papers of the tables refuse it, as they
// refuse one that they can't be fed from; a custom paper takes it.
TEST(MediaRules, UnknownSourceOfTheRecordIsAConflict) {
  PageScene scene;
  const MediaRules rules(&scene.context);
  for (const int source : {-32768, -1, 0, 15, 256, 261, 511, 512, 513, 32767}) {
    scene.shared().dmDefaultSource = static_cast<std::int16_t>(source);
    for (const std::int32_t paper : kPapers) {
      EXPECT_EQ(rules.PaperSourceConflict(paper), 1) << "source " << source;
    }
    EXPECT_EQ(rules.PaperSourceConflict(288), -1);
    EXPECT_EQ(rules.PaperSourceConflict(308), -1);
    EXPECT_EQ(rules.PaperSourceConflict(309), 1);
  }
}

TEST(MediaRules, PaperSourceCountIsThatOfTheRow) {
  PageScene scene;
  const MediaRules rules(&scene.context);
  const auto check = [&](std::int32_t paper) {
    const std::size_t row = RowOf(kPapers, paper);
    std::int32_t expected = IsCustom(paper) ? 5 : 0;
    if (row < kPapers.size()) {
      const std::string flags = PaperSources(row);
      expected = static_cast<std::int32_t>(std::ranges::count(flags, '1'));
    }
    EXPECT_EQ(rules.PaperSourceCount(paper), expected) << paper;
  };
  ForEachWord(check);
  std::ranges::for_each(kBeyondWords, check);
}

// Modes 1, 2 and 3 have a flag; 4 counts as 2, 5 as 3. 0, 6 (as 4) and all others have none.
TEST(MediaRules, PaperDuplexConflictForEveryPaperAndMode) {
  PageScene scene;
  const MediaRules rules(&scene.context);
  const std::map<std::int32_t, std::int32_t> counted = {
      {-32768, -32768}, {-1, -1}, {0, 0}, {1, 1}, {2, 2},        {3, 3},
      {4, 2},           {5, 3},   {6, 4}, {7, 5}, {32767, 32765}};
  for (const auto& [mode, flag] : counted) {
    ForEachWord([&](std::int32_t paper) {
      const std::size_t row = RowOf(kPapers, paper);
      std::int32_t expected = -1;
      if (row < kPapers.size() && !kPaperRowsTwoSided.contains(row) && (flag == 2 || flag == 3)) {
        expected = flag;
      } else if (IsCustom(paper) && flag >= 2) {
        expected = 1;
      }
      EXPECT_EQ(rules.PaperDuplexConflict(paper, mode), expected)
          << "paper " << paper << ", mode " << mode;
    });
  }
}

TEST(MediaRules, OneSidedPrintingOnACustomPaperIsNoConflict) {
  PageScene scene;
  EXPECT_EQ(MediaRules(&scene.context).PaperDuplexConflict(288, 1), -1);
}

TEST(MediaRules, OnlyPlainMediaIsPrintedOnBothSides) {
  for (const FeedRow& row : kMediaRules) {
    EXPECT_EQ(MediaRefusesDuplex(row.id), row.id != 1) << row.id;
    EXPECT_EQ(row.duplex[0], 1);
    EXPECT_EQ(row.duplex[2], row.id == 1 ? 1 : 0);
  }
  for (const std::int32_t unknown : {-1, 0, 3, 6, 256, 260, 262, 266, 512, 65537}) {
    EXPECT_FALSE(MediaRefusesDuplex(unknown)) << unknown;
  }
}

TEST(MediaRules, EachMediaHasItsName) {
  const std::map<std::int32_t, std::uint32_t> names = {{1, 127},    {257, 388},  {258, 139},
                                                       {259, 4075}, {263, 334},  {2, 4076},
                                                       {264, 5099}, {265, 6541}, {261, 6542}};
  ForEachWord([&](std::int32_t media) {
    const MediaName* name = FindMediaName(media);
    const auto expected = names.find(media);
    ASSERT_EQ(name != nullptr, expected != names.end()) << media;
    if (name != nullptr) {
      EXPECT_EQ(name->name, expected->second);
    }
  });
}

TEST(MediaRules, WithoutAContextThereIsNothingInTheWay) {
  const MediaRules rules(nullptr);
  EXPECT_EQ(rules.PaperSourceConflict(9), -1);
  EXPECT_EQ(rules.PaperSourceConflict(27), 1);  // not from the automatic source
  EXPECT_EQ(rules.ActiveConflicts(), 0U);
  std::array<char16_t, kConflictTextUnits> text;
  text.fill(u'#');
  const auto before = text;
  rules.ConflictText(text);
  EXPECT_EQ(text, before);
}

// ---- Conflicts ----------------------------------------------------------------------------------

// A record on which a booklet can be printed.
void MakeFit(PageScene& scene) {
  scene.shared().dmPaperSize = 9;
  scene.shared().dmMediaType = 1;
  scene.shared().dmDuplex = 1;
  scene.own().ReversePrint = 0;
  scene.own().MultipleUp = 1;
  scene.own().ScaleRadio = 100;
}

using Set = void (*)(PageScene& scene, std::int32_t value);

struct ConflictCase {
  const char* name;
  Set set;
  std::int32_t value;
  std::uint32_t conflicts;
};

class ActiveConflicts : public testing::TestWithParam<ConflictCase> {};

void SetReverse(PageScene& scene, std::int32_t value) {
  scene.own().ReversePrint = static_cast<std::int16_t>(value);
}
void SetPaper(PageScene& scene, std::int32_t value) {
  scene.shared().dmPaperSize = static_cast<std::int16_t>(value);
}
void SetMedia(PageScene& scene, std::int32_t value) {
  scene.shared().dmMediaType = static_cast<std::uint32_t>(value);
}
void SetNup(PageScene& scene, std::int32_t value) {
  scene.own().MultipleUp = static_cast<std::int16_t>(value);
}
void SetScale(PageScene& scene, std::int32_t value) {
  scene.own().ScaleRadio = static_cast<decltype(scene.own().ScaleRadio)>(value);
}
void SetDuplex(PageScene& scene, std::int32_t value) {
  scene.shared().dmDuplex = static_cast<std::int16_t>(value);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Record, ActiveConflicts,
    testing::Values(
        ConflictCase{"NormalOrder",        SetReverse, 0,   0},
        ConflictCase{"ReverseOrder",       SetReverse, 1,   1},
        ConflictCase{"OddReverseOrder",    SetReverse, 2,   0},
        ConflictCase{"TwoSidedPaper",      SetPaper,   1,   0},
        ConflictCase{"OneSidedPaper",      SetPaper,   11,  2},
        ConflictCase{"Envelope",           SetPaper,   27,  2},
        ConflictCase{"FirstCustomPaper",   SetPaper,   288, 2},
        ConflictCase{"LastCustomPaper",    SetPaper,   308, 2},
        ConflictCase{"PaperBehindThem",    SetPaper,   309, 0},
        ConflictCase{"PaperBeforeThem",    SetPaper,   287, 0},
        ConflictCase{"UnknownPaper",       SetPaper,   8,   0},
        ConflictCase{"NegativePaper",      SetPaper,   -1,  0},
        ConflictCase{"PlainMedia",         SetMedia,   1,   0},
        ConflictCase{"ThinMedia",          SetMedia,   264, 4},
        ConflictCase{"NoMedia",            SetMedia,   0,   4},
        ConflictCase{"TwoPages",           SetNup,     2,   32},
        ConflictCase{"Poster",             SetNup,     22,  32},
        ConflictCase{"NoPages",            SetNup,     0,   32},
        ConflictCase{"Smaller",            SetScale,   99,  16},
        ConflictCase{"Larger",             SetScale,   101, 16},
        ConflictCase{"DuplexNone",         SetDuplex,  0,   0},
        ConflictCase{"LongEdge",           SetDuplex,  2,   64},
        ConflictCase{"ShortEdge",          SetDuplex,  3,   0},
        ConflictCase{"PrivateDuplex",      SetDuplex,  4,   64},
        ConflictCase{"LastPrivateDuplex",  SetDuplex,  5,   64},
        ConflictCase{"DuplexBeyondAll",    SetDuplex,  6,   64},
        ConflictCase{"NegativeDuplex",     SetDuplex,  -1,  0}),
    test::CaseName());
// clang-format on

TEST_P(ActiveConflicts, Word) {
  PageScene scene;
  MakeFit(scene);
  ASSERT_EQ(MediaRules(&scene.context).ActiveConflicts(), 0U);
  GetParam().set(scene, GetParam().value);
  const DriverDevmode before = scene.context.devmode;
  EXPECT_EQ(MediaRules(&scene.context).ActiveConflicts(), GetParam().conflicts);
  EXPECT_EQ(scene.shared().dmDuplex, before.publicDevmode.dmDuplex);  // not repaired on the way
}

TEST(ActiveConflictsOfPapers, EachPaperByItsShortEdge) {
  PageScene scene;
  MakeFit(scene);
  for (std::size_t row = 0; row < kPapers.size(); ++row) {
    SetPaper(scene, kPapers[row]);
    EXPECT_EQ(MediaRules(&scene.context).ActiveConflicts(),
              kPaperRowsTwoSided.contains(row) ? 0U : 2U)
        << kPapers[row];
  }
}

void MakeUnfit(PageScene& scene) {
  SetReverse(scene, 1);
  SetPaper(scene, 27);
  SetMedia(scene, 258);
  SetNup(scene, 4);
  SetScale(scene, 50);
  SetDuplex(scene, 2);
}

using ConflictBuffer = std::array<char16_t, kConflictTextUnits>;

std::u16string TextOf(const ConflictBuffer& buffer) {
  return std::u16string(FieldText(buffer));
}

TEST(ConflictText, TellsAllInTheirOrder) {
  PageScene scene;
  MakeUnfit(scene);
  ASSERT_EQ(MediaRules(&scene.context).ActiveConflicts(), 1U + 2 + 4 + 16 + 32 + 64);
  ConflictBuffer buffer = {};
  MediaRules(&scene.context).ConflictText(buffer);
  std::u16string expected;
  for (const std::uint32_t id : {6007U, 6540U, 6009U, 6010U, 6011U}) {
    expected += scene.English(id).substr(0, 127) + u"\r\n";
  }
  EXPECT_EQ(TextOf(buffer), expected);
}

TEST(ConflictText, TellsEachOneAlone) {
  struct Row {
    Set set;
    std::int32_t value;
    std::uint32_t text;
  };
  for (const Row& row : {Row{SetReverse, 1, 6007}, Row{SetPaper, 27, 6540}, Row{SetMedia, 2, 6009},
                         Row{SetNup, 2, 6010}, Row{SetScale, 50, 6011}}) {
    PageScene scene;
    MakeFit(scene);
    row.set(scene, row.value);
    ConflictBuffer buffer = {};
    MediaRules(&scene.context).ConflictText(buffer);
    EXPECT_EQ(TextOf(buffer), scene.English(row.text).substr(0, 127) + u"\r\n");
  }
}

TEST(ConflictText, WithoutATextLeavesTheBufferAsItWas) {
  for (const std::int32_t duplex : {1, 2, 4}) {
    PageScene scene;
    MakeFit(scene);
    SetDuplex(scene, duplex);
    ConflictBuffer buffer;
    buffer.fill(u'#');
    const ConflictBuffer before = buffer;
    MediaRules(&scene.context).ConflictText(buffer);
    EXPECT_EQ(buffer, before);
  }
}

TEST(ConflictText, GoesBehindWhatIsInTheBuffer) {
  PageScene scene;
  MakeFit(scene);
  SetNup(scene, 2);
  ConflictBuffer buffer = {};
  std::u16string(u"Before: ").copy(buffer.data(), buffer.size());
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(TextOf(buffer), u"Before: " + scene.English(6010).substr(0, 127) + u"\r\n");
}

TEST(ConflictText, IsCutAtTheBuffersEnd) {
  PageScene scene;
  MakeFit(scene);
  SetNup(scene, 2);
  ConflictBuffer buffer = {};
  buffer.fill(u'x');
  buffer[kConflictTextUnits - 4] = u'\0';
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(TextOf(buffer),
            std::u16string(kConflictTextUnits - 4, u'x') + scene.English(6010).substr(0, 3));
  buffer.fill(u'x');
  const ConflictBuffer full = buffer;
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(buffer, full);
}

TEST(ConflictText, LineIsCutAt127Characters) {
  PageScene scene;
  scene.UseTexts({{6010, std::u16string(127, u'a') + u"b"}});
  MakeFit(scene);
  SetNup(scene, 2);
  ConflictBuffer buffer = {};
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(TextOf(buffer), std::u16string(127, u'a') + u"\r\n");
}

TEST(ConflictText, MissingTextIsTold) {
  PageScene scene;
  scene.UseTexts({});
  MakeFit(scene);
  SetReverse(scene, 1);
  SetScale(scene, 50);
  ConflictBuffer buffer = {};
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(TextOf(buffer), u"id:6007 missing!\r\nid:6011 missing!\r\n");
}

TEST(ConflictText, FitsWithTheLongestLines) {
  PageScene scene;
  const std::u16string line(127, u'w');
  scene.UseTexts({{6007, line}, {6540, line}, {6009, line}, {6010, line}, {6011, line}});
  MakeUnfit(scene);
  ConflictBuffer buffer = {};
  MediaRules(&scene.context).ConflictText(buffer);
  EXPECT_EQ(TextOf(buffer).size(), 5 * (127U + 2));
}

// The two lists that pages ask for, against all numbers that a record's word can hold.
TEST(EnvelopePaper, IsOneOfTwelve) {
  const std::set<std::int32_t> envelopes = {20, 27, 28, 31, 37, 43, 242, 276, 277, 278, 279, 280};
  ForEachWord([&](std::int32_t paper) {
    ASSERT_EQ(IsEnvelopePaper(paper), envelopes.contains(paper)) << paper;
  });
}

TEST(MediaNeedsOneSide, IsOneOfSevenAndThinPaperIsNot) {
  const std::set<std::int32_t> media = {2, 257, 258, 259, 261, 263, 265};
  ForEachWord([&](std::int32_t id) { ASSERT_EQ(MediaNeedsOneSide(id), media.contains(id)) << id; });
  EXPECT_TRUE(MediaRefusesDuplex(264));
  EXPECT_FALSE(MediaNeedsOneSide(264));
}

}  // namespace
}  // namespace ostrel
