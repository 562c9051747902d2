#include "paper_lists.h"

#include "print_system_fixture.h"

namespace ostrel::print_system {
namespace {

constexpr std::size_t kPaperNameUnits = 64;
constexpr wchar_t kBehind = L'#';

}  // namespace

int AskCapability(WORD code, void* output) {
  return DeviceCapabilitiesW(kTestPrinter, L"LPT1:", code, static_cast<LPWSTR>(output), nullptr);
}

std::vector<std::wstring> NamesListed(WORD code, std::size_t rowUnits) {
  const int count = AskCapability(code, nullptr);
  EXPECT_GE(count, 0);
  const auto rows = static_cast<std::size_t>(count);
  std::vector<wchar_t> text((rows + 1) * rowUnits, kBehind);
  EXPECT_EQ(AskCapability(code, text.data()), count);
  EXPECT_EQ(text[rows * rowUnits], kBehind);
  std::vector<std::wstring> names;
  for (std::size_t row = 0; row < rows; ++row) {
    names.emplace_back(&text[row * rowUnits]);
  }
  return names;
}

ListedPapers PapersBehindTheTable() {
  constexpr std::size_t kRoom = kTablePapers + 64;
  std::vector<WORD> ids(kRoom);
  std::vector<POINT> sizes(kRoom);
  const int count = AskCapability(DC_PAPERS, ids.data());
  EXPECT_EQ(AskCapability(DC_PAPERS, nullptr), count);
  EXPECT_EQ(AskCapability(DC_PAPERSIZE, nullptr), count);
  EXPECT_EQ(AskCapability(DC_PAPERSIZE, sizes.data()), count);
  const std::vector<std::wstring> names = NamesListed(DC_PAPERNAMES, kPaperNameUnits);
  EXPECT_EQ(names.size(), static_cast<std::size_t>(count));
  ListedPapers listed;
  for (std::size_t row = kTablePapers; row < names.size(); ++row) {
    listed.ids.push_back(ids[row]);
    listed.sizes_tenths_mm.emplace_back(sizes[row].x, sizes[row].y);
    listed.names.push_back(names[row]);
  }
  return listed;
}

}  // namespace ostrel::print_system
