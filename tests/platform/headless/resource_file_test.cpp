#include "platform/headless/resource_file.h"

#include "support/case_name.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using Bytes = std::vector<std::byte>;

// Reads from a block of exactly these bytes.
StringTable Read(const Bytes& bytes, std::size_t count) {
  const auto block = std::make_unique<std::byte[]>(count);
  std::copy_n(bytes.begin(), count, block.get());
  return ReadStringTable({block.get(), count});
}

StringTable Read(const Bytes& bytes) {
  return Read(bytes, bytes.size());
}

void AddNumber(Bytes& bytes, std::uint32_t number, std::size_t width) {
  for (std::size_t i = 0; i < width; ++i) {
    bytes.push_back(static_cast<std::byte>(number >> (8 * i)));
  }
}

// A type or a name in an entry's header.
struct Id {
  std::uint16_t number = 0;
  std::u16string text = {};
};

void AddId(Bytes& bytes, const Id& id) {
  if (id.text.empty()) {
    AddNumber(bytes, 0xFFFF, 2);
    AddNumber(bytes, id.number, 2);
    return;
  }
  for (const char16_t unit : id.text) {
    AddNumber(bytes, unit, 2);
  }
  AddNumber(bytes, 0, 2);
}

void AddEntry(Bytes& file, const Id& type, const Id& name, const Bytes& data) {
  Bytes header;
  AddId(header, type);
  AddId(header, name);
  while (header.size() % 4 != 0) {
    header.push_back(std::byte{0});
  }
  header.resize(header.size() + 16);  // version, flags, language, characteristics
  AddNumber(file, static_cast<std::uint32_t>(data.size()), 4);
  AddNumber(file, static_cast<std::uint32_t>(header.size() + 8), 4);
  file.insert(file.end(), header.begin(), header.end());
  file.insert(file.end(), data.begin(), data.end());
  while (file.size() % 4 != 0) {
    file.push_back(std::byte{0});
  }
}

Bytes OpenedFile() {
  Bytes file;
  AddEntry(file, {}, {}, {});
  return file;
}

// A block of 16 strings of which these are not empty.
Bytes StringBlock(const std::vector<std::pair<std::size_t, std::u16string>>& strings) {
  Bytes data;
  for (std::size_t i = 0; i < 16; ++i) {
    const auto found =
        std::ranges::find(strings, i, &std::pair<std::size_t, std::u16string>::first);
    const std::u16string text = found == strings.end() ? u"" : found->second;
    AddNumber(data, static_cast<std::uint32_t>(text.size()), 2);
    for (const char16_t unit : text) {
      AddNumber(data, unit, 2);
    }
  }
  return data;
}

constexpr std::uint16_t kTypeString = 6;

TEST(ResourceFile, OpeningEntryAloneHoldsNoStrings) {
  EXPECT_EQ(OpenedFile().size(), 32U);
  EXPECT_TRUE(Read(OpenedFile()).empty());
}

TEST(ResourceFile, StringsAreFoundByBlockAndPlace) {
  Bytes file = OpenedFile();
  AddEntry(file, {kTypeString}, {1}, StringBlock({{0, u"zero"}, {15, u"fifteen"}}));
  AddEntry(file, {kTypeString}, {4}, StringBlock({{3, u"\u00FCber"}}));
  const StringTable expected = {{0, u"zero"}, {15, u"fifteen"}, {51, u"\u00FCber"}};
  EXPECT_EQ(Read(file), expected);
}

TEST(ResourceFile, OtherTypesAndNamedBlocksArePassedOver) {
  Bytes file = OpenedFile();
  AddEntry(file, {2}, {1}, Bytes(7, std::byte{0x41}));
  AddEntry(file, {0, u"PICTURE"}, {0, u"LOGO"}, Bytes(5, std::byte{0x41}));
  AddEntry(file, {kTypeString}, {0, u"NAMED"}, StringBlock({{0, u"not by number"}}));
  AddEntry(file, {kTypeString}, {2}, StringBlock({{1, u"seventeen"}}));
  EXPECT_EQ(Read(file), (StringTable{{17, u"seventeen"}}));
}

TEST(ResourceFile, EveryCutIsNoticedButOneBetweenTwoEntries) {
  Bytes file = OpenedFile();
  std::vector<std::size_t> ends = {file.size()};
  AddEntry(file, {kTypeString}, {1}, StringBlock({{0, u"odd"}}));
  ends.push_back(file.size());
  AddEntry(file, {0, u"PICTURE"}, {0, u"LOGO"}, Bytes(5, std::byte{0x41}));
  ends.push_back(file.size());
  AddEntry(file, {kTypeString}, {2}, StringBlock({{0, u"sixteen"}}));
  for (std::size_t count = 0; count < file.size(); ++count) {
    if (std::ranges::find(ends, count) == ends.end()) {
      EXPECT_THROW(Read(file, count), std::runtime_error) << count;
    } else {
      EXPECT_LE(Read(file, count).size(), 1U) << count;
    }
  }
  EXPECT_EQ(Read(file).size(), 2U);
}

// Where the entries of a file end, by their own sizes.
std::vector<std::size_t> EntryEnds(const Bytes& file) {
  std::vector<std::size_t> ends;
  std::size_t place = 0;
  while (place < file.size()) {
    std::uint32_t sizes[2];
    std::memcpy(sizes, file.data() + place, sizeof(sizes));
    place = (place + sizes[0] + sizes[1] + 3) / 4 * 4;
    ends.push_back(place);
  }
  return ends;
}

TEST(ResourceFile, EveryCutOfTheShippedFileIsNoticedButOneBetweenTwoEntries) {
  const Bytes& file = test::EnglishResourceFile();
  const StringTable whole = Read(file);
  EXPECT_EQ(whole, test::EnglishStrings());
  EXPECT_TRUE(whole.contains(202));
  const std::vector<std::size_t> ends = EntryEnds(file);
  ASSERT_EQ(ends.back(), file.size());
  for (std::size_t count = 0; count < file.size(); ++count) {
    if (std::ranges::find(ends, count) == ends.end()) {
      ASSERT_THROW(Read(file, count), std::runtime_error) << count;
      continue;
    }
    for (const auto& [id, text] : Read(file, count)) {
      ASSERT_EQ(whole.at(id), text) << count;
    }
  }
}

TEST(ResourceFile, ChangedBytesAreReadOrRefusedButNeverOverrun) {
  const Bytes& file = test::EnglishResourceFile();
  std::mt19937 random(1);
  std::size_t refused = 0;
  constexpr std::size_t kRuns = 4000;
  for (std::size_t run = 0; run < kRuns; ++run) {
    Bytes changed = file;
    for (int i = 0; i < 3; ++i) {
      changed[random() % changed.size()] = static_cast<std::byte>(random());
    }
    try {
      Read(changed);
    } catch (const std::runtime_error&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 0U);
  EXPECT_LT(refused, kRuns);
}

TEST(ResourceFile, FilesOfAnotherKindAreRefused) {
  EXPECT_THROW(Read(Bytes{}), std::runtime_error);
  EXPECT_THROW(Read(Bytes(100, std::byte{0})), std::runtime_error);
  EXPECT_THROW(Read(Bytes(100, std::byte{0xFF})), std::runtime_error);
  EXPECT_THROW(Read(Bytes(100, std::byte{'t'})), std::runtime_error);
  Bytes withoutOpening;
  AddEntry(withoutOpening, {kTypeString}, {1}, StringBlock({{0, u"zero"}}));
  EXPECT_THROW(Read(withoutOpening), std::runtime_error);
}

TEST(ResourceFile, SizesThatOverflowAreRefused) {
  for (const std::size_t word : {std::size_t{32}, std::size_t{36}}) {
    for (const std::uint32_t size : {0xFFFFFFFFU, 0xFFFFFFF8U, 0x80000000U, 7U, 0U}) {
      if (word == 32 && size <= 7) {
        continue;  // a small amount of data is allowed
      }
      Bytes file = OpenedFile();
      AddEntry(file, {kTypeString}, {1}, StringBlock({{0, u"zero"}}));
      std::memcpy(file.data() + word, &size, sizeof(size));
      EXPECT_THROW(Read(file), std::runtime_error) << word << ' ' << size;
    }
  }
}

// ---- All of a file ------------------------------------------------------------------------------

// A bitmap's header, its colours and its rows.
Bytes BitmapBytes(std::int32_t width, std::int32_t height, std::uint32_t bits, std::uint32_t colors,
                  std::size_t rest) {
  Bytes data;
  AddNumber(data, 40, 4);
  AddNumber(data, static_cast<std::uint32_t>(width), 4);
  AddNumber(data, static_cast<std::uint32_t>(height), 4);
  AddNumber(data, 1, 2);
  AddNumber(data, bits, 2);
  for (const std::uint32_t word : {0U, 0U, 0U, 0U, colors, 0U}) {
    AddNumber(data, word, 4);
  }
  data.resize(data.size() + rest, std::byte{0x5A});
  return data;
}

struct BitmapRow {
  const char* name;
  std::int32_t width;
  std::int32_t height;
  std::uint32_t bits;
  std::uint32_t colors;
  std::size_t rest;  // bytes behind the header that it takes
  bool good;
};
class BitmapEntry : public testing::TestWithParam<BitmapRow> {};

TEST_P(BitmapEntry, IsReadWithExactlyItsBytesOrRefused) {
  const BitmapRow& row = GetParam();
  const auto read = [&row](std::size_t rest) {
    Bytes file = OpenedFile();
    AddEntry(file, {2}, {78}, BitmapBytes(row.width, row.height, row.bits, row.colors, rest));
    return ReadResources(file);
  };
  if (!row.good) {
    EXPECT_THROW(read(row.rest), std::runtime_error);
    return;
  }
  const Resources resources = read(row.rest);
  const BitmapResource& bitmap = resources.bitmaps.at(78);
  EXPECT_EQ(bitmap.width, row.width);
  EXPECT_EQ(bitmap.height, row.height);
  EXPECT_EQ(bitmap.bitsPerPixel, row.bits);
  const std::size_t ownColors = row.bits <= 8 ? std::size_t{1} << row.bits : 0;
  EXPECT_EQ(bitmap.colors,
            std::vector<std::uint32_t>(row.colors != 0 ? row.colors : ownColors, 0x5A5A5A));
  EXPECT_TRUE(resources.Holds(2, 78));
  for (std::size_t rest = 0; rest < row.rest; ++rest) {
    EXPECT_THROW(read(rest), std::runtime_error) << rest;
  }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Kinds, BitmapEntry, testing::Values(
    BitmapRow{"OneBit",          9, 2, 1,  0, 8 + 8,           true},
    BitmapRow{"FourBits",        9, 2, 4,  0, 64 + 16,         true},
    BitmapRow{"EightBits",       3, 3, 8,  0, 1024 + 12,       true},
    BitmapRow{"FewColours",      3, 3, 8,  2, 8 + 12,          true},
    BitmapRow{"TrueColour",      3, 2, 24, 0, 24,              true},
    BitmapRow{"WithAlpha",       3, 2, 32, 0, 24,              true},
    BitmapRow{"NoWidth",         0, 2, 24, 0, 100,             false},
    BitmapRow{"NegativeWidth",  -3, 2, 24, 0, 100,             false},
    BitmapRow{"NegativeHeight",  3, -2, 24, 0, 100,            false},
    BitmapRow{"TooWide",         0x8000, 1, 1, 0, 0x2000,      false},
    BitmapRow{"StrangeBits",     3, 2, 17, 0, 100,             false},
    BitmapRow{"TooManyColours",  3, 2, 24, 257, 2000,          false}),
    test::CaseName());
// clang-format on

// A group of one icon of 16 by 0 pixels, 0 standing for 256, whose picture is this entry.
Bytes IconGroup(std::uint32_t type, std::uint32_t size, std::uint32_t id) {
  Bytes data;
  for (const std::uint32_t word : {0U, type, 1U}) {
    AddNumber(data, word, 2);
  }
  AddNumber(data, 16, 1);
  AddNumber(data, 0, 1);
  AddNumber(data, 0, 2);
  AddNumber(data, 1, 2);
  AddNumber(data, 32, 2);
  AddNumber(data, size, 4);
  AddNumber(data, id, 2);
  return data;
}

Bytes IconFile(const Bytes& group) {
  Bytes file = OpenedFile();
  AddEntry(file, {14}, {77}, group);  // before the picture that it names
  AddEntry(file, {3}, {5}, Bytes(9, std::byte{1}));
  return file;
}

TEST(ResourceFile, IconsAreReadByTheirGroups) {
  const Resources resources = ReadResources(IconFile(IconGroup(1, 9, 5)));
  EXPECT_EQ(resources.icons.at(77).pictures, (std::vector<IconResource::Picture>{{16, 256, 32}}));
  EXPECT_TRUE(resources.Holds(14, 77));
  EXPECT_TRUE(resources.Holds(3, 5));
  EXPECT_FALSE(resources.Holds(14, 5));
}

TEST(ResourceFile, IconWithoutItsPictureOrCutShortIsRefused) {
  EXPECT_THROW(ReadResources(IconFile(IconGroup(1, 9, 6))), std::runtime_error);
  EXPECT_THROW(ReadResources(IconFile(IconGroup(1, 8, 5))), std::runtime_error);
  EXPECT_THROW(ReadResources(IconFile(IconGroup(2, 9, 5))), std::runtime_error);
  const Bytes whole = IconGroup(1, 9, 5);
  for (std::size_t count = 0; count < whole.size(); ++count) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(count));
    EXPECT_THROW(ReadResources(IconFile(cut)), std::runtime_error) << count;
  }
}

TEST(ResourceFile, HoldsStringsDialogsAndEntriesOfOtherTypes) {
  Bytes file = OpenedFile();
  AddEntry(file, {kTypeString}, {1}, StringBlock({{3, u"three"}}));
  Bytes dialog(8, std::byte{0});  // no style, no controls, no menu, class, title or font
  dialog.resize(dialog.size() + 16);
  AddEntry(file, {5}, {111}, dialog);
  AddEntry(file, {24}, {2}, Bytes(3, std::byte{'<'}));
  const Resources resources = ReadResources(file);
  EXPECT_EQ(resources.strings, (StringTable{{3, u"three"}}));
  EXPECT_EQ(resources.dialogs.size(), 1U);
  EXPECT_TRUE(resources.Holds(5, 111));
  EXPECT_TRUE(resources.Holds(24, 2));
  EXPECT_FALSE(resources.Holds(5, 2));
  AddEntry(file, {5}, {112}, Bytes(5, std::byte{0}));
  EXPECT_THROW(ReadResources(file), std::runtime_error);
}

TEST(ResourceFile, ShippedLibrariesAreRead) {
  for (const std::string& language : test::Languages()) {
    EXPECT_EQ(test::LibraryResources(language)->strings, test::Strings(language)) << language;
  }
  EXPECT_FALSE(test::LibraryResources("ResBmp")->bitmaps.empty());
}

TEST(ResourceFile, StringLongerThanItsBlockIsRefused) {
  Bytes data = StringBlock({{0, u"zero"}});
  data[0] = std::byte{200};
  Bytes file = OpenedFile();
  AddEntry(file, {kTypeString}, {1}, data);
  EXPECT_THROW(Read(file), std::runtime_error);
}

}  // namespace
}  // namespace ostrel::headless
