// Every capability code as an application hears it through the print system. Buffers are poisoned
// and longer than the answer, so that a byte too many shows.
#include "print_system_fixture.h"

#include <algorithm>
#include <array>

namespace ostrel::print_system {
namespace {

constexpr BYTE kPoison = 0xCC;

struct ExpectedPaper {
  WORD id;
  LONG width_tenths_mm;
  LONG length_tenths_mm;
  const wchar_t* name;
};

// clang-format off
constexpr std::array<ExpectedPaper, 28> kPapers = {{
    {  1, 2159, 2794, L"Letter"},
    {  9, 2100, 2970, L"A4"},
    {  5, 2159, 3556, L"Legal"},
    { 13, 1820, 2570, L"B5 (JIS)"},
    { 37,  984, 1905, L"Monarch envelope"},
    { 27, 1100, 2200, L"DL envelope"},
    { 28, 1620, 2290, L"C5 envelope"},
    { 20, 1048, 2413, L"No. 10 envelope"},
    { 11, 1480, 2100, L"A5"},
    { 43, 1000, 1480, L"Japanese postcard"},
    {250, 1950, 2700, L"16K (195 x 270 mm)"},
    {245, 1850, 2600, L"16K (185 x 260 mm)"},
    {252, 1350, 1950, L"32K (135 x 195 mm)"},
    {246, 1300, 1850, L"32K (130 x 185 mm)"},
    { 70, 1050, 1480, L"A6"},
    { 34, 1760, 2500, L"B5 (ISO)"},
    {  7, 1842, 2667, L"Executive"},
    { 14, 2159, 3302, L"Folio"},
    {243, 2160, 3430, L"Oficio (216 x 343 mm)"},
    {  6, 1397, 2159, L"Statement"},
    { 31, 1140, 1620, L"C6 envelope"},
    {242, 1200, 2300, L"ZL envelope"},
    {241, 1250, 1760, L"B6 (ISO)"},
    {276, 1050, 2350, L"Japanese envelope You 4"},
    {277, 1480, 2000, L"Japanese double postcard"},
    {278, 1200, 2350, L"Japanese envelope Chou 3"},
    {279, 1200, 2350, L"Japanese envelope You Chou 3"},
    {280, 1140, 1620, L"Japanese envelope You 2"},
}};
// clang-format on

std::int32_t Ask(WORD code, void* output = nullptr, const DEVMODEW* devmode = nullptr) {
  return DeviceCapabilitiesW(kTestPrinter, L"LPT1:", code, static_cast<LPWSTR>(output), devmode);
}

// The answer to a list code, and whether the memory behind the list was left alone.
template <typename Item>
struct ListAnswer {
  std::int32_t count;
  std::vector<Item> items;
  bool restUntouched;
};

template <typename Item>
ListAnswer<Item> AskList(WORD code, std::size_t expectedItems) {
  constexpr std::size_t kSpareItems = 256;
  std::vector<Item> buffer(expectedItems + kSpareItems);
  std::memset(buffer.data(), kPoison, buffer.size() * sizeof(Item));
  const std::int32_t count = Ask(code, buffer.data());
  const auto* rest = reinterpret_cast<const BYTE*>(buffer.data() + expectedItems);
  const bool untouched = std::all_of(rest, rest + kSpareItems * sizeof(Item),
                                     [](BYTE byte) { return byte == kPoison; });
  buffer.resize(expectedItems);
  return {count, std::move(buffer), untouched};
}

std::vector<std::wstring> RowsOf(const std::vector<wchar_t>& units, std::size_t rowUnits) {
  std::vector<std::wstring> rows;
  for (std::size_t start = 0; start < units.size(); start += rowUnits) {
    const std::wstring_view row(&units[start], rowUnits);
    rows.emplace_back(row.substr(0, row.find(L'\0')));
  }
  return rows;
}

std::vector<std::wstring> PaperNames() {
  std::vector<std::wstring> names;
  for (const ExpectedPaper& paper : kPapers) {
    names.emplace_back(paper.name);
  }
  return names;
}

TEST(Capabilities, PapersAreTheTableInItsOrder) {
  const auto answer = AskList<WORD>(DC_PAPERS, kPapers.size());
  EXPECT_EQ(answer.count, 28);
  for (std::size_t row = 0; row < kPapers.size(); ++row) {
    EXPECT_EQ(answer.items[row], kPapers[row].id) << "row " << row;
  }
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, PaperSizesAreTenthsOfAMillimetreInTheSameOrder) {
  const auto answer = AskList<POINT>(DC_PAPERSIZE, kPapers.size());
  EXPECT_EQ(answer.count, 28);
  for (std::size_t row = 0; row < kPapers.size(); ++row) {
    EXPECT_EQ(answer.items[row].x, kPapers[row].width_tenths_mm) << "paper " << kPapers[row].id;
    EXPECT_EQ(answer.items[row].y, kPapers[row].length_tenths_mm) << "paper " << kPapers[row].id;
  }
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, PaperNamesAreRowsOf64Units) {
  const auto answer = AskList<wchar_t>(DC_PAPERNAMES, kPapers.size() * 64);
  EXPECT_EQ(answer.count, 28);
  EXPECT_EQ(RowsOf(answer.items, 64), PaperNames());
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, MediaReadyListsTheTablePapersAlone) {
  const auto answer = AskList<wchar_t>(DC_MEDIAREADY, kPapers.size() * 64);
  EXPECT_EQ(answer.count, 28);
  EXPECT_EQ(RowsOf(answer.items, 64), PaperNames());
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, BinsAreThreeWithoutOptionalTrays) {
  const auto answer = AskList<WORD>(DC_BINS, 3);
  EXPECT_EQ(answer.count, 3);
  EXPECT_EQ(answer.items, (std::vector<WORD>{7, 4, 257}));
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, BinNamesAreRowsOf24Units) {
  const auto answer = AskList<wchar_t>(DC_BINNAMES, 3 * 24);
  EXPECT_EQ(answer.count, 3);
  EXPECT_EQ(RowsOf(answer.items, 24),
            (std::vector<std::wstring>{L"Automatic", L"Manual feed", L"Tray 1"}));
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, ResolutionsAreTwoPairs) {
  const auto answer = AskList<LONG>(DC_ENUMRESOLUTIONS, 4);
  EXPECT_EQ(answer.count, 2);
  EXPECT_EQ(answer.items, (std::vector<LONG>{600, 600, 1200, 1200}));
  EXPECT_TRUE(answer.restUntouched);
}

TEST(Capabilities, FileDependenciesAreNoneAndAnEmptyText) {
  const auto answer = AskList<wchar_t>(DC_FILEDEPENDENCIES, 1);
  EXPECT_EQ(answer.count, 0);
  EXPECT_EQ(answer.items[0], L'\0');
  EXPECT_TRUE(answer.restUntouched);
}

struct NumberCase {
  const char* name;
  WORD code;
  std::int32_t answer;
};

void PrintTo(const NumberCase& row, std::ostream* out) {
  *out << row.name;
}

class CapabilityNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(CapabilityNumber, IsAnsweredWithoutABuffer) {
  EXPECT_EQ(Ask(GetParam().code), GetParam().answer);
}

TEST_P(CapabilityNumber, DoesNotDependOnTheCallersRecord) {
  Record record(kDriverDevmodeBytes, 0xFF);
  EXPECT_EQ(Ask(GetParam().code, nullptr, record.devmode()), GetParam().answer);
}

// clang-format off
constexpr NumberCase kNumbers[] = {
    {"Fields", DC_FIELDS, 0x0200BF0F},
    {"PapersCount", DC_PAPERS, 28},
    {"PaperSizeCount", DC_PAPERSIZE, 28},
    {"MinExtent", DC_MINEXTENT, 762 | (1270 << 16)},
    {"MaxExtent", DC_MAXEXTENT, 2159 | (3556 << 16)},
    {"BinsCount", DC_BINS, 3},
    {"Duplex", DC_DUPLEX, 1},
    {"Size", DC_SIZE, 220},
    {"Extra", DC_EXTRA, 7676},
    {"Version", DC_VERSION, 1025},
    {"Driver", DC_DRIVER, 1536},
    {"BinNamesCount", DC_BINNAMES, 3},
    {"ResolutionsCount", DC_ENUMRESOLUTIONS, 2},
    {"FileDependenciesCount", DC_FILEDEPENDENCIES, 0},
    {"TrueType", DC_TRUETYPE, 0},
    {"PaperNamesCount", DC_PAPERNAMES, 28},
    {"Orientation", DC_ORIENTATION, 90},
    {"Copies", DC_COPIES, 999},
    {"BinAdjust", DC_BINADJUST, 0},
    {"EmfCompliant", DC_EMF_COMPLIANT, -1},
    {"DatatypeProduced", DC_DATATYPE_PRODUCED, -1},
    {"Collate", DC_COLLATE, 1},
    {"Manufacturer", DC_MANUFACTURER, -1},
    {"Model", DC_MODEL, -1},
    {"Personality", DC_PERSONALITY, -1},
    {"PrintRate", DC_PRINTRATE, -1},
    {"PrintRateUnit", DC_PRINTRATEUNIT, -1},
    {"PrinterMemory", DC_PRINTERMEM, -1},
    {"MediaReadyCount", DC_MEDIAREADY, 28},
    {"Staple", DC_STAPLE, 0},
    {"PrintRatePpm", DC_PRINTRATEPPM, 0},
    {"ColorDevice", DC_COLORDEVICE, 0},
    {"Nup", DC_NUP, -1},
    {"MediaTypeNames", DC_MEDIATYPENAMES, -1},
    {"MediaTypes", DC_MEDIATYPES, -1},
    {"CodeZero", 0, -1},
    {"CodeBeyondTheLast", 36, -1},
    {"LargestCode", 0xFFFF, -1},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EachCode, CapabilityNumber, testing::ValuesIn(kNumbers),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(CapabilityNumber, IsTheSameForANullPrinter) {
  const auto driver = LoadInstalledDriver();
  wchar_t name[] = L"";
  EXPECT_EQ(static_cast<std::int32_t>(
                driver->DrvDeviceCapabilities(nullptr, name, GetParam().code, nullptr, nullptr)),
            GetParam().answer);
}

TEST(Capabilities, ANullDeviceNameStillGivesNames) {
  const auto driver = LoadInstalledDriver();
  std::vector<wchar_t> names(3 * 24);
  EXPECT_EQ(driver->DrvDeviceCapabilities(nullptr, nullptr, DC_BINNAMES, names.data(), nullptr),
            3U);
  EXPECT_EQ(RowsOf(names, 24),
            (std::vector<std::wstring>{L"Automatic", L"Manual feed", L"Tray 1"}));
}

}  // namespace
}  // namespace ostrel::print_system
