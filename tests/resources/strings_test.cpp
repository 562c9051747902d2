// The shipped texts in their compiled form: every text that the code names is there in each
// language. What the texts must be like is checked where they are written (tools/check-strings.py).
#include "core/language.h"
#include "core/string_ids.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace ostrel {
namespace {

class ShippedStrings : public testing::TestWithParam<std::string> {
 protected:
  const headless::StringTable& strings() const { return test::Strings(GetParam()); }
};

TEST_P(ShippedStrings, HoldATextForEveryId) {
  for (const StringId id : kAllStringIds) {
    const auto found = strings().find(id);
    EXPECT_TRUE(found != strings().end() && !found->second.empty()) << "string " << id;
  }
}

TEST_P(ShippedStrings, HoldNoTextThatTheCodeDoesNotName) {
  EXPECT_EQ(strings().size(), std::size(kAllStringIds));
}

TEST_P(ShippedStrings, GiveTheDefaultFavoriteOneName) {
  EXPECT_EQ(strings().at(kStringDefaultFavorite), strings().at(kStringDefaultFavoriteName));
}

TEST_P(ShippedStrings, KeepTheirBlanksAndLineBreaks) {
  EXPECT_EQ(strings().at(kStringReasonSeparator), u"\n");
  EXPECT_EQ(strings().at(kStringModelChanged).front(), u'\n');
  EXPECT_EQ(strings().at(kStringModelChanged).back(), u' ');
  EXPECT_EQ(strings().at(kStringPageNumberPrefix).back(), u' ');
}

TEST_P(ShippedStrings, AreLoadedWholeByTheDriver) {
  test::TestWorld world;
  const std::u16string path =
      u"C:\\texts\\" + std::u16string(GetParam().begin(), GetParam().end()) + u".dll";
  world.platform.modules.Install(path, strings());
  const ModuleHandle module = world.platform.modules.LoadLibraryW(path.c_str());
  for (const StringId id : kAllStringIds) {
    char16_t text[260];
    const int length = LoadUiString(module, id, text);
    EXPECT_EQ(std::u16string_view(text, static_cast<std::size_t>(length)), strings().at(id))
        << "string " << id;
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, ShippedStrings, testing::ValuesIn(test::Languages()),
                         [](const auto& language) { return language.param; });

TEST(ShippedStringsByLanguage, AreWrittenInTheLanguage) {
  EXPECT_EQ(test::Strings("enus").at(kStringDefaultFavorite), u"Default");
  EXPECT_EQ(test::Strings("de").at(kStringDefaultFavorite), u"Standard");
  EXPECT_EQ(test::Strings("he").at(kStringDefaultFavorite), u"ברירת מחדל");
  EXPECT_EQ(test::Strings("de").at(kStringTextFontSize9Half), u"9,5");
}

}  // namespace
}  // namespace ostrel
