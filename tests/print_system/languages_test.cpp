// The user's language: the suffix that the first use stores in the user's registry, and the texts
// that a stored suffix leads to. What is expected is read from the libraries by the platform
// itself.
#include "print_system_fixture.h"
#include "stored_values.h"

#include <array>

namespace ostrel::print_system {
namespace {

constexpr std::array<UINT, 28> kPaperNameIds = {
    108, 116,  110, 118, 123,  120, 121,  122,  119,  4063, 4064, 4065, 4067, 4068,
    340, 4069, 111, 109, 4070, 411, 4072, 4073, 4074, 6001, 6002, 6003, 6004, 6005};

std::wstring NameRow(const std::vector<wchar_t>& rows, std::size_t row, std::size_t rowUnits) {
  return &rows[row * rowUnits];
}

std::vector<std::wstring> AskPaperNames() {
  std::vector<wchar_t> rows(kPaperNameIds.size() * 64 + 64);
  EXPECT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_PAPERNAMES, rows.data(), nullptr), 28);
  std::vector<std::wstring> names;
  for (std::size_t row = 0; row < kPaperNameIds.size(); ++row) {
    names.push_back(NameRow(rows, row, 64));
  }
  return names;
}

std::vector<std::wstring> PaperNamesIn(const std::wstring& library) {
  std::vector<std::wstring> names;
  for (const UINT id : kPaperNameIds) {
    names.push_back(ShippedText(library, id));
  }
  return names;
}

std::vector<std::wstring> FallbackNames() {
  std::vector<std::wstring> names;
  for (const UINT id : kPaperNameIds) {
    names.push_back(L"id:" + std::to_wstring(id) + L" missing!");
  }
  return names;
}

class LanguageSuffix : public testing::Test {
 protected:
  // An application's question names the printer, and so does the subkey of its answer.
  UserValues user_{kTestPrinter};
};

TEST_F(LanguageSuffix, IsWrittenByTheFirstUse) {
  user_.Delete(L"Suffix");
  AskPaperNames();
  const std::optional<Value> stored = user_.Get(L"Suffix");
  ASSERT_NE(stored, std::nullopt);
  EXPECT_EQ(stored->type, static_cast<DWORD>(REG_SZ));
  ASSERT_EQ(stored->bytes.size(), 260U);
  EXPECT_EQ(std::wstring_view(reinterpret_cast<const wchar_t*>(stored->bytes.data())), L"enus");
}

TEST_F(LanguageSuffix, IsNotWrittenWhereNoTextIsAskedFor) {
  user_.Delete(L"Suffix");
  EXPECT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_PAPERNAMES, nullptr, nullptr), 28);
  EXPECT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_COPIES, nullptr, nullptr), 999);
  EXPECT_EQ(user_.Get(L"Suffix"), std::nullopt);
}

TEST_F(LanguageSuffix, ThatIsStoredStaysAsItWasWritten) {
  user_.Set(L"Suffix", TextValue(L"de"));
  AskPaperNames();
  EXPECT_EQ(user_.Get(L"Suffix"), TextValue(L"de"));
}

TEST_F(LanguageSuffix, OfAnotherTypeCountsAsNoneAndIsReplaced) {
  user_.Set(L"Suffix", DwordValue(7));
  EXPECT_EQ(AskPaperNames(), PaperNamesIn(kLanguageLibraryFile));
  ASSERT_NE(user_.Get(L"Suffix"), std::nullopt);
  EXPECT_EQ(user_.Get(L"Suffix")->type, static_cast<DWORD>(REG_SZ));
}

TEST_F(LanguageSuffix, OfADriverServesItsSettingsRecord) {
  UserValues driver(kOstrelDriverName);
  driver.Delete(L"Suffix");
  const Printer printer(kTestPrinter);
  Record out;
  ASSERT_EQ(AskDefaultRecord(printer.get(), out), 1);
  ASSERT_NE(driver.Get(L"Suffix"), std::nullopt);
  EXPECT_EQ(driver.Get(L"Suffix")->bytes.size(), 260U);
}

struct StoredSuffix {
  const wchar_t* suffix;
  const wchar_t* library;  // null where no library with texts is found
};

void PrintTo(const StoredSuffix& row, std::ostream* out) {
  *out << Utf8(row.suffix);
}

class StoredLanguage : public LanguageSuffix, public testing::WithParamInterface<StoredSuffix> {};

TEST_P(StoredLanguage, NamesThePapersFromItsLibrary) {
  user_.Set(L"Suffix", TextValue(GetParam().suffix));
  EXPECT_EQ(AskPaperNames(),
            GetParam().library == nullptr ? FallbackNames() : PaperNamesIn(GetParam().library));
}

TEST_P(StoredLanguage, NamesTheSourcesFromItsLibrary) {
  user_.Set(L"Suffix", TextValue(GetParam().suffix));
  std::vector<wchar_t> rows(4 * 24);
  ASSERT_EQ(DeviceCapabilitiesW(kTestPrinter, L"LPT1:", DC_BINNAMES, rows.data(), nullptr), 3);
  const std::array<UINT, 3> ids = {4017, 4031, 190};
  for (std::size_t row = 0; row < ids.size(); ++row) {
    EXPECT_EQ(NameRow(rows, row, 24), GetParam().library == nullptr
                                          ? L"id:" + std::to_wstring(ids[row]) + L" missing!"
                                          : ShippedText(GetParam().library, ids[row]));
  }
}

// clang-format off
constexpr StoredSuffix kStoredSuffixes[] = {
    {L"enus", kLanguageLibraryFile},
    {L"de",   kGermanLibraryFile},
    {L"he",   kHebrewLibraryFile},
    {L"DE",   kGermanLibraryFile},    // the file system doesn't look at the case
    {L"dech", kGermanLibraryFile},    // the second try: the language's two letters
    {L"zhcn", kLanguageLibraryFile},  // the third: English
    {L"kz",   nullptr},  // of two letters and without a library: the driver's own, without texts
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EachSuffix, StoredLanguage, testing::ValuesIn(kStoredSuffixes),
                         [](const auto& row) { return Utf8(row.param.suffix); });

TEST(ShippedLanguages, DifferInTheNamesOfPapers) {
  EXPECT_NE(PaperNamesIn(kGermanLibraryFile), PaperNamesIn(kLanguageLibraryFile));
  EXPECT_NE(PaperNamesIn(kHebrewLibraryFile), PaperNamesIn(kLanguageLibraryFile));
}

}  // namespace
}  // namespace ostrel::print_system
