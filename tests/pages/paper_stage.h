// The stage of the paper page: the records that it opens with, the choices a user makes by what a
// row stands for, and what the source list looks like afterwards.
#pragma once

#include "config/setting_stores.h"
#include "core/model_table.h"
#include "core/printer_store.h"
#include "pages/page_stage.h"
#include "pages/paper.h"
#include "support/byte_record.h"
#include "support/case_name.h"
#include "support/settings_file.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr std::uint32_t kPaperDialog = 693;

// Numbers as the record's words hold them.
using Words = std::vector<std::int16_t>;

// One model of each family.
struct FamilyModel {
  std::uint64_t family;
  const char16_t* model;
  bool hasTrays;  // the family has optional trays; otherwise its one tray is fixed
};
inline constexpr FamilyModel kFamilyModels[] = {
    {0x1, u"Alder 1 Series", false},      {0x2, u"Birch 1 Series", false},
    {0x4, u"Cedar 1 Series", false},      {0x8, u"Dogwood 1 Series", true},
    {0x10, u"Elm 1 Series", true},        {0x20, u"Fir 1 Series", true},
    {0x40, u"Ginkgo 1 Series", true},     {0x80, u"Hazel 1 Series", true},
    {0x100, u"Ironwood 1 Series", false}, {0x200, u"Juniper 1 Series", false},
    {0x400, u"Kauri 1 Series", false},
};
inline constexpr char16_t kTrays[] = u"Hazel 1 Series";
inline constexpr char16_t kFixed[] = u"Alder 1 Series";

// The source's part of the page and of the record.
struct SourceSeen {
  std::int32_t position;
  bool live;
  bool icon;
  bool allowed;
  std::int16_t bin;   // dmDefaultSource
  std::int16_t tray;  // SourceTray
  bool operator==(const SourceSeen&) const = default;
};
inline void PrintTo(const SourceSeen& seen, std::ostream* out) {
  *out << "position " << seen.position << (seen.live ? ", live" : ", locked")
       << (seen.icon ? ", icon" : "") << (seen.allowed ? ", allowed" : "") << ", bin " << seen.bin
       << ", tray " << seen.tray;
}

struct PaperRecord {
  std::int16_t paper = 9;
  std::uint32_t media = 1;
  std::int16_t source = 7;
  std::int16_t duplex = 1;
  std::int16_t feed = 1;
  std::optional<std::int16_t> tray = {};  // SourceTray, where it isn't the source
};

class PaperStage : public PageStage {
 public:
  explicit PaperStage(const char16_t* model = kTrays, int missingTrays = 0)
      : PageStage({kPaperDialog, kPaperPage, PaperPageProcedure}) {
    SelectModel(model);
    const PrinterHandle printer = world().OpenPrinter();
    EXPECT_TRUE(WriteTrayBlock(
        printer, {{missingTrays < 2 ? kTrayFitted : 0, missingTrays < 1 ? kTrayFitted : 0}}));
    world().platform.print.ClosePrinter(printer);
  }

  // A record to open the page with.
  static Prepare With(const PaperRecord& record) {
    return [record](UIContext& made) {
      PublicDevmode& shared = *made.publicPointer;
      shared.dmPaperSize = record.paper;
      shared.dmMediaType = record.media;
      shared.dmDefaultSource = record.source;
      shared.dmDuplex = record.duplex;
      made.privatePointer->SourceTray = record.tray.value_or(record.source);
      made.privatePointer->FeedOrient = record.feed;
      NameRecord(made, u"Mine");
    };
  }
  [[nodiscard]] bool OpenWith(const PaperRecord& record) { return Open(With(record)); }

  // The user's stored papers, whole records as the file keeps them.
  void Store(const std::vector<CustomPaperRecord>& papers) {
    for (const CustomPaperRecord& paper : papers) {
      EXPECT_TRUE(InitSettingsFile());
      EXPECT_TRUE(CustomPaperStore().Save(paper.Name, paper));
    }
  }
  static CustomPaperRecord Custom(std::uint32_t id, std::u16string_view name,
                                  std::uint16_t width_px600 = 3000,
                                  std::uint16_t length_px600 = 4000, std::uint32_t unit = 1) {
    CustomPaperRecord paper = {};
    paper.PaperId = id;
    paper.Width = width_px600;
    paper.Length = length_px600;
    paper.Unit = unit;
    name.copy(paper.Name, std::size(paper.Name) - 1);
    return paper;
  }

  // Picks a value's row, whatever the list's state is: code selects, and the page is told.
  void Pick(std::int32_t list, std::int16_t value) {
    SelectComboValue(page(), list, value);
    ASSERT_GE(user().Selected(list), 0) << value;
    Command(list, kCbnSelChange);
  }
  void PickPaper(std::int16_t paper) { Pick(1404, paper); }
  void PickMedia(std::int16_t media) { Pick(1009, media); }
  void PickSource(std::int16_t bin) { Pick(1393, bin); }
  // What a list shows; -1 for none.
  int Shown(std::int32_t list) {
    std::int16_t value = 0;
    return SelectedComboValue(page(), list, &value) ? value : -1;
  }

  PaperPageState& state() { return *GetPageState<PaperPageState>(PageSlot::kPaper); }
  SourceSeen Source() {
    return {user().Selected(1393), user().Enabled(1393),     user().Shown(1450),
            state().sourceAllowed, shared().dmDefaultSource, own().SourceTray};
  }
  bool IsUntitled() { return favorite() == Text(5005); }

  // What was written behind the last change that the sheet was told of; empty for nothing.
  std::string WrittenBehindTheChange() {
    return changes.empty() ? "no change"
                           : Difference(BytesOf(changes.back()), BytesOf(context().devmode));
  }
  // Writes down what a list shows while each box is up.
  std::vector<int>& WatchBoxes(std::int32_t list) {
    windows().onBox = [this, list](const auto& /*box*/) { shownInBoxes_.push_back(Shown(list)); };
    return shownInBoxes_;
  }

  // The box that was shown last is this one, and it is the only one.
  void ExpectOneBox(const std::u16string& text) {
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0].text, text);
    EXPECT_EQ(boxes()[0].caption, Text(5004));
    EXPECT_EQ(boxes()[0].style, 48U);
    EXPECT_EQ(boxes()[0].owner, page());
  }

 private:
  std::vector<int> shownInBoxes_;
};

// Envelopes and cards.
inline constexpr std::int16_t kEnvelopes[] = {37, 27, 28, 20, 31, 43, 277, 242, 276, 278, 279, 280};

// The 28 papers of the table, in the order of the list, and what the rules say of each.
enum class Feeds { kAny, kManualOnly, kManualAndTray1 };
struct ListedPaper {
  std::int16_t id;
  std::uint32_t name;
  bool twoSided;
  Feeds feeds;
};
// clang-format off
inline constexpr ListedPaper kListedPapers[] = {
    {1, 108, true, Feeds::kAny},           {9, 116, true, Feeds::kAny},
    {5, 110, true, Feeds::kAny},           {13, 118, false, Feeds::kAny},
    {37, 123, false, Feeds::kManualOnly},  {27, 120, false, Feeds::kManualOnly},
    {28, 121, false, Feeds::kManualOnly},  {20, 122, false, Feeds::kManualOnly},
    {11, 119, false, Feeds::kAny},         {43, 4063, false, Feeds::kManualOnly},
    {250, 4064, false, Feeds::kAny},       {245, 4065, false, Feeds::kAny},
    {252, 4067, false, Feeds::kManualAndTray1}, {246, 4068, false, Feeds::kManualAndTray1},
    {70, 340, false, Feeds::kAny},         {34, 4069, false, Feeds::kAny},
    {7, 111, false, Feeds::kAny},          {14, 109, true, Feeds::kAny},
    {243, 4070, true, Feeds::kAny},        {6, 411, false, Feeds::kAny},
    {31, 4072, false, Feeds::kManualOnly}, {242, 4073, false, Feeds::kManualOnly},
    {241, 4074, false, Feeds::kManualAndTray1}, {276, 6001, false, Feeds::kManualOnly},
    {277, 6002, false, Feeds::kManualOnly}, {278, 6003, false, Feeds::kManualOnly},
    {279, 6004, false, Feeds::kManualOnly}, {280, 6005, false, Feeds::kManualOnly},
};
// clang-format on
inline void PrintTo(const ListedPaper& paper, std::ostream* out) {
  *out << paper.id;
}
struct ListedPaperName {
  std::string operator()(const testing::TestParamInfo<ListedPaper>& row) const {
    return "Paper" + std::to_string(row.param.id);
  }
};

// The nine media types in the order of the list.
inline constexpr std::int16_t kListedMediaIds[] = {1, 257, 258, 259, 263, 2, 264, 265, 261};

}  // namespace ostrel::test

namespace ostrel {

// Nearly every file of these tests names them.
using test::FamilyModel;
using test::kFixed;
using test::kTrays;
using test::PaperRecord;
using test::PaperStage;
using test::SourceSeen;
using test::Words;

}  // namespace ostrel
