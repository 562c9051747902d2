// Which picture of the layout page shows a record, and what of the record its pixels show.
#include "core/parameter_table.h"
#include "pages/page_scene.h"
#include "pages/preview.h"
#include "support/case_name.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {
namespace {

class LayoutScene : public test::PageScene {
 public:
  LayoutScene() { BuildUIParamTable(&context); }

  void ForgetKey(std::string_view key) {
    for (UIParamSlot& slot : context.uiParams) {
      if (slot.Key == key) {
        slot.Key[0] = '#';
      }
    }
  }
  std::uint32_t Picture() { return LayoutPictureId(context); }
};

// ---- Pages per sheet ----------------------------------------------------------------------------

// Every cell, by the value of PageOrder that reaches it.
struct OrderCase {
  std::int16_t orientation, border, multipleUp, order;
  std::uint32_t picture;
};
void PrintTo(const OrderCase& row, std::ostream* out) {
  *out << row.orientation << ", " << row.border << ", " << row.multipleUp << ", " << row.order;
}
// clang-format off
const OrderCase kOrderCases[] = {
    // Orientation, Border, Pages, Order, Picture
    {1, 0, 2, 0, 847}, {1, 0, 2, 1, 839}, {1, 0, 2, 2, 0}, {1, 0, 2, 3, 0},
    {1, 0, 4, 2, 835}, {1, 0, 4, 3, 857}, {1, 0, 4, 4, 851}, {1, 0, 4, 5, 876},
    {1, 0, 8, 2, 831}, {1, 0, 8, 3, 800}, {1, 0, 8, 4, 813}, {1, 0, 8, 5, 812},
    {1, 0, 16, 2, 860}, {1, 0, 16, 3, 874}, {1, 0, 16, 4, 846}, {1, 0, 16, 5, 879},
    {1, 0, 22, 0, 1060}, {1, 0, 22, 1, 1060}, {1, 0, 22, 2, 1060}, {1, 0, 22, 3, 1060},
    {2, 0, 2, 0, 809}, {2, 0, 2, 1, 875}, {2, 0, 2, 2, 0}, {2, 0, 2, 3, 0},
    {2, 0, 4, 2, 830}, {2, 0, 4, 3, 807}, {2, 0, 4, 4, 850}, {2, 0, 4, 5, 877},
    {2, 0, 8, 2, 798}, {2, 0, 8, 3, 842}, {2, 0, 8, 4, 815}, {2, 0, 8, 5, 790},
    {2, 0, 16, 2, 777}, {2, 0, 16, 3, 773}, {2, 0, 16, 4, 775}, {2, 0, 16, 5, 771},
    {2, 0, 22, 0, 1058}, {2, 0, 22, 1, 1058}, {2, 0, 22, 2, 1058}, {2, 0, 22, 3, 1058},
    {1, 1, 2, 0, 871}, {1, 1, 2, 1, 862}, {1, 1, 2, 2, 0}, {1, 1, 2, 3, 0},
    {1, 1, 4, 2, 829}, {1, 1, 4, 3, 801}, {1, 1, 4, 4, 853}, {1, 1, 4, 5, 864},
    {1, 1, 8, 2, 794}, {1, 1, 8, 3, 786}, {1, 1, 8, 4, 795}, {1, 1, 8, 5, 803},
    {1, 1, 16, 2, 826}, {1, 1, 16, 3, 849}, {1, 1, 16, 4, 866}, {1, 1, 16, 5, 878},
    {1, 1, 22, 0, 1060}, {1, 1, 22, 1, 1060}, {1, 1, 22, 2, 1060}, {1, 1, 22, 3, 1060},
    {2, 1, 2, 0, 883}, {2, 1, 2, 1, 868}, {2, 1, 2, 2, 0}, {2, 1, 2, 3, 0},
    {2, 1, 4, 2, 832}, {2, 1, 4, 3, 820}, {2, 1, 4, 4, 814}, {2, 1, 4, 5, 843},
    {2, 1, 8, 2, 869}, {2, 1, 8, 3, 838}, {2, 1, 8, 4, 791}, {2, 1, 8, 5, 818},
    {2, 1, 16, 2, 778}, {2, 1, 16, 3, 774}, {2, 1, 16, 4, 776}, {2, 1, 16, 5, 772},
    {2, 1, 22, 0, 1058}, {2, 1, 22, 1, 1058}, {2, 1, 22, 2, 1058}, {2, 1, 22, 3, 1058},
    // Order 0 isn't counted from 2.
    {1, 0, 4, 0, 835}, {1, 1, 8, 0, 794}, {2, 0, 16, 0, 777}, {2, 1, 4, 0, 832},
    // Orders and borders without a cell.
    {1, 0, 4, 1, 0}, {2, 1, 8, 1, 0}, {1, 0, 16, 1, 0},
    {1, 0, 4, 6, 0}, {1, 0, 8, 7, 0}, {2, 0, 16, 32767, 0},
    {1, 0, 2, 4, 0}, {1, 0, 2, 5, 0}, {1, 0, 22, 4, 0}, {2, 0, 22, 5, 0},
    {1, 0, 2, -1, 0}, {1, 0, 4, -1, 0}, {1, 0, 22, -1, 0}, {2, 0, 2, -32768, 0},
    {1, 2, 4, 2, 0}, {2, -1, 2, 0, 0},
    // One page, and numbers of pages without a row.
    {1, 0, 1, 0, 888}, {2, 0, 1, 0, 886}, {1, 1, 1, 5, 888}, {2, 1, 1, -1, 886},
    {1, 0, 9, 0, 888}, {2, 0, 23, 0, 886}, {1, 0, 0, 0, 888}, {2, 0, -1, 0, 886},
    // What the getter of the orientation makes of others.
    {3, 0, 1, 0, 888}, {-1, 0, 2, 0, 847}, {3, 1, 16, 5, 878},
    {0, 0, 1, 0, 0}, {0, 0, 2, 0, 0},
};
// clang-format on

class OrderPicture : public testing::TestWithParam<OrderCase> {};

INSTANTIATE_TEST_SUITE_P(Cells, OrderPicture, testing::ValuesIn(kOrderCases));

TEST_P(OrderPicture, IsTheOneOfItsCell) {
  LayoutScene scene;
  scene.shared().dmOrientation = GetParam().orientation;
  scene.own().PageBorder = GetParam().border;
  scene.own().MultipleUp = GetParam().multipleUp;
  scene.own().PageOrder = GetParam().order;
  EXPECT_EQ(scene.Picture(), GetParam().picture);
}

// ---- Booklets and posters -----------------------------------------------------------------------

struct BookletCase {
  const char* name;
  std::int16_t orientation, binding, rotate;
  std::uint32_t picture;
};
void PrintTo(const BookletCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const BookletCase kBookletCases[] = {
    {"PortraitLeft",            1, 0, 0, 1070},
    {"PortraitRight",           1, 1, 0, 1076},
    {"LandscapeLeft",           2, 0, 0, 1069},
    {"LandscapeRight",          2, 1, 0,  719},
    {"PortraitLeftTurned",      1, 0, 1, 1076},
    {"PortraitRightTurned",     1, 1, 1, 1070},
    {"LandscapeLeftTurned",     2, 0, 1,  719},
    {"LandscapeRightTurned",    2, 1, 1, 1069},
    {"TurnedByAnyOtherNumber",  1, 0, 7, 1076},
    {"BindingWithoutAPicture",  1, 2, 0,    0},
    {"NegativeBinding",         1,-1, 0,    0},
    {"TurnedWithoutAPicture",   2, 2, 1,    0},
    {"TurnedNegative",          2,-1, 1,    0},
    {"NoOrientation",           0, 0, 0,    0},
};
// clang-format on

class BookletPicture : public testing::TestWithParam<BookletCase> {};

INSTANTIATE_TEST_SUITE_P(Cells, BookletPicture, testing::ValuesIn(kBookletCases), test::CaseName());

TEST_P(BookletPicture, IsChosenBeforeAllOthers) {
  LayoutScene scene;
  scene.shared().dmOrientation = GetParam().orientation;
  scene.own().BookletPrint = 1;
  scene.own().BookletBinding = GetParam().binding;
  scene.own().Rotate180 = GetParam().rotate;
  scene.own().PosterPrint = 1;
  scene.own().MultipleUp = 4;
  EXPECT_EQ(scene.Picture(), GetParam().picture);
}

TEST(PosterPicture, AnyPoster_IsChosenByTheOrientationAlone) {
  LayoutScene scene;
  scene.own().PosterPrint = 1;
  scene.own().MultipleUp = 4;
  for (const std::int16_t type : std::initializer_list<std::int16_t>{0, 1, 2, 9}) {
    for (const std::int16_t marks : std::initializer_list<std::int16_t>{0, 1}) {
      scene.own().PosterType = type;
      scene.own().CropMarks = marks;
      scene.shared().dmOrientation = 1;
      EXPECT_EQ(scene.Picture(), 1074U);
      scene.shared().dmOrientation = 2;
      EXPECT_EQ(scene.Picture(), 1073U);
      scene.shared().dmOrientation = 0;
      EXPECT_EQ(scene.Picture(), 0U);
    }
  }
}

TEST(PosterPicture, ThePagesOfAPosterWithoutThePoster_HaveTheirOwn) {
  LayoutScene scene;
  scene.own().MultipleUp = 22;
  EXPECT_EQ(scene.Picture(), 1060U);
  scene.own().PosterPrint = 1;
  EXPECT_EQ(scene.Picture(), 1074U);
}

// ---- Keys that can't be read --------------------------------------------------------------------

struct KeyCase {
  const char* name;
  std::int16_t PrivateDevmode::*field;
  std::int16_t value;
  std::uint32_t picture;  // when the key can be read
  std::uint32_t without;
};
void PrintTo(const KeyCase& row, std::ostream* out) {
  *out << row.name;
}
// clang-format off
const KeyCase kKeyCases[] = {
    {"BookletPrint", &PrivateDevmode::BookletPrint, 1, 1070, 835},
    {"PosterPrint",  &PrivateDevmode::PosterPrint,  1, 1074, 835},
    {"MultipleUp",   &PrivateDevmode::MultipleUp,   8,  831, 888},
    {"PageOrder",    &PrivateDevmode::PageOrder,    3,  857, 835},
    {"PageBorder",   &PrivateDevmode::PageBorder,   1,  829, 835},
};
// clang-format on

class UnreadableKey : public testing::TestWithParam<KeyCase> {};

INSTANTIATE_TEST_SUITE_P(Keys, UnreadableKey, testing::ValuesIn(kKeyCases), test::CaseName());

TEST_P(UnreadableKey, CountsAsItsDefault) {
  LayoutScene scene;
  scene.own().MultipleUp = 4;
  scene.own().*GetParam().field = GetParam().value;
  EXPECT_EQ(scene.Picture(), GetParam().picture);
  scene.ForgetKey(GetParam().name);
  EXPECT_EQ(scene.Picture(), GetParam().without);
}

TEST(UnreadableBinding, CountsAsLeftAndAsUpright) {
  LayoutScene scene;
  scene.own().BookletPrint = 1;
  scene.own().BookletBinding = 1;
  scene.ForgetKey("BookletBinding");
  EXPECT_EQ(scene.Picture(), 1070U);
  scene.own().Rotate180 = 1;
  EXPECT_EQ(scene.Picture(), 1076U);
  scene.ForgetKey("Rotate180");
  EXPECT_EQ(scene.Picture(), 1070U);
}

// ---- What the pixels show -----------------------------------------------------------------------

void ExpectAsItIs(const PreviewLook& look) {
  EXPECT_EQ(look.level, 2);
  EXPECT_FALSE(look.rotate);
  EXPECT_EQ(look.scale, 100);
  EXPECT_FALSE(look.booklet);
}

TEST(PreviewLook, OfDefaults_IsThePictureAsItIs) {
  LayoutScene scene;
  ExpectAsItIs(PreviewLookOf(scene.context));
}

TEST(PreviewLook, EachWordOfTheRecord_IsTakenOver) {
  LayoutScene scene;
  scene.own().Rotate180 = 1;
  scene.own().BookletPrint = 1;
  scene.own().ScaleRadio = 70000;
  for (const std::int16_t thickness : std::initializer_list<std::int16_t>{0, 1, 2, 3, 4, 9, -3}) {
    scene.own().Thickness = thickness;
    EXPECT_EQ(PreviewLookOf(scene.context).level, thickness);
  }
  const PreviewLook look = PreviewLookOf(scene.context);
  EXPECT_TRUE(look.rotate);
  EXPECT_TRUE(look.booklet);
  EXPECT_EQ(look.scale, 70000);
}

TEST(PreviewLook, SavingToner_IsTheLightestLevelWhateverTheThickness) {
  LayoutScene scene;
  for (const std::int16_t toner : std::initializer_list<std::int16_t>{1, 2, 3, -1}) {
    for (const std::int16_t thickness : std::initializer_list<std::int16_t>{0, 2, 4}) {
      scene.own().TonerSavingMode = toner;
      scene.own().Thickness = thickness;
      EXPECT_EQ(PreviewLookOf(scene.context).level, 0);
    }
  }
}

TEST(PreviewLook, KeysThatCannotBeRead_CountAsTheirDefaults) {
  LayoutScene scene;
  scene.own().Rotate180 = 1;
  scene.own().BookletPrint = 1;
  scene.own().ScaleRadio = 50;
  scene.own().Thickness = 4;
  scene.own().TonerSavingMode = 1;
  scene.ForgetKey("TonerSavingMode");
  EXPECT_EQ(PreviewLookOf(scene.context).level, 4);
  for (const std::string_view key : {"Rotate180", "BookletPrint", "ScaleRadio", "Thickness"}) {
    scene.ForgetKey(key);
  }
  ExpectAsItIs(PreviewLookOf(scene.context));
}

}  // namespace
}  // namespace ostrel
