#include "platform/headless/dialog_template.h"

#include "support/case_name.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ostrel::headless {
namespace {

using Bytes = std::vector<std::byte>;

// Writes little-endian numbers and texts.
class Writer {
 public:
  Writer& Number(std::uint32_t number, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
      bytes.push_back(static_cast<std::byte>(number >> (8 * i)));
    }
    return *this;
  }
  Writer& Words(std::initializer_list<std::int32_t> words) {
    for (const std::int32_t word : words) {
      Number(static_cast<std::uint32_t>(word), 2);
    }
    return *this;
  }
  Writer& Text(const std::u16string& text) {
    for (const char16_t unit : text) {
      Number(unit, 2);
    }
    return Number(0, 2);
  }
  Writer& Align() {
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return *this;
  }

  Bytes bytes;
};

constexpr std::uint32_t kSetFont = 0x40;

// One of each form with two controls: a numbered class with a text and creation data, and a named
// class with an icon.
Bytes PlainForm() {
  Writer writer;
  writer.Number(0x80000000 | kSetFont, 4).Number(0x00400000, 4);  // style, extended style
  writer.Words({2, 1, -2, 300, 40});
  writer.Words({0}).Text(u"#32770").Text(u"Title");
  writer.Words({9}).Text(u"Some Sans");
  writer.Align().Number(0x50010000, 4).Number(0x200, 4);
  writer.Words({5, 6, 70, 80, 1019, 0xFFFF, 0x81}).Text(u"odd").Words({3});
  writer.Number(0xAABBCC, 3);
  writer.Align().Number(0x50000003, 4).Number(0, 4);
  writer.Words({1, 2, 3, 4, 0xFFFF}).Text(u"Custom_Class").Words({0xFFFF, 1077, 0});
  return writer.bytes;
}

Bytes ExtendedForm() {
  Writer writer;
  writer.Words({1, -1}).Number(77, 4).Number(0x00400000, 4).Number(0x80000000 | kSetFont, 4);
  writer.Words({2, 1, -2, 300, 40});
  writer.Words({0xFFFF, 5, 0}).Text(u"Title");
  writer.Words({9, 400, 0x0100}).Text(u"Some Sans");
  writer.Align().Number(12, 4).Number(0x200, 4).Number(0x50010000, 4);
  writer.Words({5, 6, 70, 80}).Number(1019, 4).Words({0xFFFF, 0x81}).Text(u"odd").Words({3});
  writer.Number(0xAABBCC, 3);
  writer.Align().Number(0, 4).Number(0, 4).Number(0x50000003, 4);
  writer.Words({1, 2, 3, 4}).Number(0xFFFFFFFF, 4).Text(u"Custom_Class");
  writer.Words({0xFFFF, 1077, 0});
  return writer.bytes;
}

// Reads from a block of exactly these bytes.
DialogTemplate Read(const Bytes& bytes, std::size_t count) {
  const auto block = std::make_unique<std::byte[]>(count);
  std::copy_n(bytes.begin(), count, block.get());
  return ReadDialogTemplate({block.get(), count});
}
DialogTemplate Read(const Bytes& bytes) {
  return Read(bytes, bytes.size());
}

struct Form {
  const char* name;
  Bytes bytes;
  bool isExtended;
};
class TemplateForm : public testing::TestWithParam<Form> {};

TEST_P(TemplateForm, HoldsTheDialog) {
  const DialogTemplate dialog = Read(GetParam().bytes);
  EXPECT_EQ(dialog.isExtended, GetParam().isExtended);
  EXPECT_EQ(dialog.style, 0x80000000 | kSetFont);
  EXPECT_EQ(dialog.extendedStyle, 0x00400000U);
  EXPECT_EQ(dialog.helpId, GetParam().isExtended ? 77U : 0U);
  EXPECT_EQ(dialog.place, (DialogPlace{1, -2, 300, 40}));
  EXPECT_EQ(dialog.title, u"Title");
  EXPECT_EQ(dialog.pointSize, 9U);
  EXPECT_EQ(dialog.typeface, u"Some Sans");
}

TEST_P(TemplateForm, HoldsTheControls) {
  const DialogTemplate dialog = Read(GetParam().bytes);
  ASSERT_EQ(dialog.controls.size(), 2U);
  const DialogControl& first = dialog.controls[0];
  EXPECT_EQ(first.id, 1019);
  EXPECT_EQ(first.style, 0x50010000U);
  EXPECT_EQ(first.extendedStyle, 0x200U);
  EXPECT_EQ(first.helpId, GetParam().isExtended ? 12U : 0U);
  EXPECT_EQ(first.place, (DialogPlace{5, 6, 70, 80}));
  EXPECT_EQ(first.className, u"edit");
  EXPECT_EQ(first.title, u"odd");
  EXPECT_EQ(first.titleId, 0U);
  EXPECT_EQ(first.creationData, (Bytes{std::byte{0xCC}, std::byte{0xBB}, std::byte{0xAA}}));
  const DialogControl& second = dialog.controls[1];
  EXPECT_EQ(second.id, -1);
  EXPECT_EQ(second.className, u"custom_class");
  EXPECT_EQ(second.title, u"");
  EXPECT_EQ(second.titleId, 1077U);
  EXPECT_TRUE(second.creationData.empty());
}

TEST_P(TemplateForm, EveryCutIsRefused) {
  const Bytes& bytes = GetParam().bytes;
  for (std::size_t count = 0; count < bytes.size(); ++count) {
    EXPECT_THROW(Read(bytes, count), std::runtime_error) << count;
  }
}

TEST_P(TemplateForm, PaddingMayFollowButNoMore) {
  Bytes bytes = GetParam().bytes;
  bytes.resize(bytes.size() + 3);
  EXPECT_EQ(Read(bytes).controls.size(), 2U);
  bytes.resize(bytes.size() + 1);
  EXPECT_THROW(Read(bytes), std::runtime_error);
}

TEST_P(TemplateForm, EveryChangedByteIsReadOrRefused) {
  std::size_t refused = 0;
  for (std::size_t place = 0; place < GetParam().bytes.size(); ++place) {
    for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      Bytes bytes = GetParam().bytes;
      bytes[place] = static_cast<std::byte>(value);
      try {
        Read(bytes);
      } catch (const std::runtime_error&) {
        ++refused;
      }
    }
  }
  EXPECT_GT(refused, 0U);
}

INSTANTIATE_TEST_SUITE_P(Dialogs, TemplateForm,
                         testing::Values(Form{"Plain", PlainForm(), false},
                                         Form{"Extended", ExtendedForm(), true}),
                         test::CaseName());

TEST(DialogTemplate, WithoutAFontNamesNone) {
  Writer writer;
  writer.Number(0x80000000, 4).Number(0, 4).Words({0, 0, 0, 10, 10}).Words({0, 0}).Text(u"T");
  const DialogTemplate dialog = Read(writer.bytes);
  EXPECT_EQ(dialog.title, u"T");
  EXPECT_EQ(dialog.pointSize, 0U);
  EXPECT_TRUE(dialog.controls.empty());
}

TEST(DialogTemplate, NumberedClassesAreKnownByTheirNames) {
  const std::vector<std::u16string> names = {u"button",  u"edit",      u"static",
                                             u"listbox", u"scrollbar", u"combobox"};
  for (std::int32_t number = 0x7F; number <= 0x86; ++number) {
    Writer writer;
    writer.Number(0, 4).Number(0, 4).Words({1, 0, 0, 10, 10}).Words({0, 0, 0});
    writer.Align().Number(0, 4).Number(0, 4).Words({0, 0, 0, 0, 1, 0xFFFF, number, 0, 0});
    if (number == 0x7F || number == 0x86) {
      EXPECT_THROW(Read(writer.bytes), std::runtime_error) << number;
      continue;
    }
    EXPECT_EQ(Read(writer.bytes).controls.at(0).className,
              names[static_cast<std::size_t>(number - 0x80)]);
  }
}

TEST(DialogTemplate, AControlOfAnEmptyClassIsRefused) {
  Writer writer;
  writer.Number(0, 4).Number(0, 4).Words({1, 0, 0, 10, 10}).Words({0, 0, 0});
  writer.Align().Number(0, 4).Number(0, 4).Words({0, 0, 0, 0, 1, 0, 0, 0});
  EXPECT_THROW(Read(writer.bytes), std::runtime_error);
}

}  // namespace
}  // namespace ostrel::headless
