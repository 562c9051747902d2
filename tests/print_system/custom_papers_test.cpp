// The user's own paper sizes, put into the settings file by the test itself, as an application sees
// them through the print system.
#include "paper_lists.h"
#include "print_system_fixture.h"
#include "settings_folder.h"

#include <array>

namespace ostrel::print_system {
namespace {

// 600 pixels are an inch: 1181 px are 50.0 mm, 2362 px 100.0 mm.
const CustomPaper kCard = {1181, 2362, L"Card", 288};
const CustomPaper kLabel = {2480, 3508, L"\u00C9tiquette \u05D0 \u4E2D", 291};

class CustomPapers : public testing::Test {
 protected:
  void Store(const std::vector<std::string>& papers) {
    place_.Write(SettingsTree{.customPapers = papers}.Bytes());
  }

  SettingsPlace place_;
};

TEST_F(CustomPapers, FollowTheTableInTheOrderOfTheFile) {
  Store({CustomPaperLeaf("Label", kLabel), CustomPaperLeaf("Card", kCard)});
  const ListedPapers listed = PapersBehindTheTable();
  EXPECT_EQ(listed.ids, (std::vector<WORD>{291, 288}));
  EXPECT_EQ(listed.sizes_tenths_mm,
            (std::vector<std::pair<LONG, LONG>>{{1050, 1485}, {500, 1000}}));
  EXPECT_EQ(listed.names, (std::vector<std::wstring>{L"\u00C9tiquette \u05D0 \u4E2D (105 x 148mm)",
                                                     L"Card (50 x 100mm)"}));
}

TEST_F(CustomPapers, LeaveTheTableAsItIs) {
  Store({CustomPaperLeaf("Card", kCard)});
  std::array<WORD, kTablePapers + 1> ids = {};
  ASSERT_EQ(AskCapability(DC_PAPERS, ids.data()), 29);
  EXPECT_EQ(ids[0], 1);
  EXPECT_EQ(ids[27], 280);
}

TEST_F(CustomPapers, AreNotAmongTheMediaThatAreReady) {
  Store({CustomPaperLeaf("Card", kCard)});
  EXPECT_EQ(AskCapability(DC_MEDIAREADY, nullptr), 28);
}

TEST_F(CustomPapers, AreShownByTheNameInTheRecordAndNotByTheNodes) {
  Store({CustomPaperLeaf("Node", kCard)});
  EXPECT_EQ(PapersBehindTheTable().names, (std::vector<std::wstring>{L"Card (50 x 100mm)"}));
}

TEST_F(CustomPapers, WithARecordOfAnotherLengthArePassedOver) {
  Store({CustomPaperLeaf("Card", kCard), Leaf("Short", "binary", kCard.Value().substr(0, 71)),
         Leaf("Long", "binary", kCard.Value() + "x"), Leaf("Empty", "binary", ""),
         CustomPaperLeaf("Label", kLabel)});
  EXPECT_EQ(PapersBehindTheTable().ids, (std::vector<WORD>{288, 291}));
}

TEST_F(CustomPapers, AreThereAtOnceWhenTheFileChanges) {
  Store({CustomPaperLeaf("Card", kCard)});
  EXPECT_EQ(AskCapability(DC_PAPERS, nullptr), 29);
  Store({});
  EXPECT_EQ(AskCapability(DC_PAPERS, nullptr), 28);
}

TEST_F(CustomPapers, BeyondTheTwentiethAreNotListed) {
  std::vector<std::string> leaves;
  for (WORD id = 288; id < 288 + 25; ++id) {
    CustomPaper paper = kCard;
    paper.id = id;
    leaves.push_back(CustomPaperLeaf("Paper " + std::to_string(id), paper));
  }
  Store(leaves);
  const ListedPapers listed = PapersBehindTheTable();
  ASSERT_EQ(listed.ids.size(), 20U);
  EXPECT_EQ(listed.ids.back(), 307);
}

// ---- In a record --------------------------------------------------------------------------------

class CustomPaperInARecord : public CustomPapers {
 protected:
  void SetUp() override { ASSERT_EQ(AskDefaultRecord(printer_.get(), record_), 1); }

  void ExpectExtent(std::int16_t paper, std::int16_t width_tenths_mm,
                    std::int16_t length_tenths_mm) {
    record_.devmode()->dmPaperSize = paper;
    record_.devmode()->dmPaperWidth = 1;
    record_.devmode()->dmPaperLength = 1;
    Record out;
    ASSERT_EQ(AskRepairedRecord(printer_.get(), record_, out), 1);
    EXPECT_EQ(out.devmode()->dmPaperSize, paper);
    EXPECT_EQ(out.devmode()->dmPaperWidth, width_tenths_mm);
    EXPECT_EQ(out.devmode()->dmPaperLength, length_tenths_mm);
  }

  Printer printer_{kTestPrinter};
  Record record_;
};

TEST_F(CustomPaperInARecord, GetsItsExtentFromTheFile) {
  Store({CustomPaperLeaf("Card", kCard), CustomPaperLeaf("Label", kLabel)});
  ExpectExtent(288, 500, 1000);
  ExpectExtent(291, 1050, 1485);
}

TEST_F(CustomPaperInARecord, ThatIsNotStoredIsAsLargeAsA4) {
  Store({CustomPaperLeaf("Card", kCard)});
  ExpectExtent(289, 2100, 2970);
}

TEST_F(CustomPaperInARecord, OfAnIdThatTwoHaveIsTheFirst) {
  CustomPaper second = kLabel;
  second.id = kCard.id;
  Store({CustomPaperLeaf("Card", kCard), CustomPaperLeaf("Label", second)});
  ExpectExtent(288, 500, 1000);
}

TEST_F(CustomPaperInARecord, WithoutAFileMakesANewOne) {
  place_.Clear();
  ExpectExtent(288, 2100, 2970);
  EXPECT_EQ(place_.Read(),
            Container("cfgobj", {Leaf("version", "string", std::string_view("0.0.0.1\0", 8))}));
}

}  // namespace
}  // namespace ostrel::print_system
