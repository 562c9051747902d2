// What the user's country and language decide. This suite runs once in the United States and once
// in Germany; the rest of the tests in the United States only.
#include "print_system_fixture.h"

namespace ostrel::print_system {
namespace {

class UsersCountry : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(AskDefaultRecord(printer_.get(), record_), 1); }

  Printer printer_{kTestPrinter};
  Record record_;
};

TEST_F(UsersCountry, DecidesTheDefaultPaper) {
  EXPECT_EQ(record_.devmode()->dmPaperSize, PaperOfUsersCountry().id);
  EXPECT_EQ(record_.devmode()->dmPaperWidth, PaperOfUsersCountry().width_tenths_mm);
  EXPECT_EQ(record_.devmode()->dmPaperLength, PaperOfUsersCountry().length_tenths_mm);
  EXPECT_EQ(TextOf(record_.devmode()->dmFormName), PaperOfUsersCountry().name);
}

TEST_F(UsersCountry, DecidesWhatAnUnknownPaperBecomes) {
  record_.devmode()->dmPaperSize = 200;
  Record out;
  ASSERT_EQ(AskRepairedRecord(printer_.get(), record_, out), 1);
  EXPECT_EQ(out.devmode()->dmPaperSize, PaperOfUsersCountry().id);
}

TEST_F(UsersCountry, LeavesAKnownPaperAlone) {
  for (const std::int16_t paper : {std::int16_t{1}, std::int16_t{9}}) {
    record_.devmode()->dmPaperSize = paper;
    Record out;
    ASSERT_EQ(AskRepairedRecord(printer_.get(), record_, out), 1);
    EXPECT_EQ(out.devmode()->dmPaperSize, paper);
  }
}

TEST_F(UsersCountry, DoesNotChangeTheListOfPapers) {
  WORD papers[28] = {};
  ASSERT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_PAPERS, reinterpret_cast<LPWSTR>(papers),
                                nullptr),
            28);
  EXPECT_EQ(papers[0], 1);
  EXPECT_EQ(papers[1], 9);
}

TEST_F(UsersCountry, NamesTheFavouriteInTheUsersLanguage) {
  EXPECT_EQ(TextOf(record_.privatePart().FavoriteName), ShippedText(LibraryOfUsersLanguage(), 202));
}

TEST_F(UsersCountry, NamesTheBinsInTheUsersLanguage) {
  wchar_t names[3][24] = {};
  ASSERT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_BINNAMES, names[0], nullptr), 3);
  EXPECT_EQ(TextOf(names[0]), ShippedText(LibraryOfUsersLanguage(), 4017));
}

TEST_F(UsersCountry, ReadsGermanTextsInGermany) {
  const bool german = LibraryOfUsersLanguage() == std::wstring_view(kGermanLibraryFile);
  EXPECT_EQ(TextOf(record_.privatePart().FavoriteName), german ? L"Standard" : L"Default");
}

}  // namespace
}  // namespace ostrel::print_system
