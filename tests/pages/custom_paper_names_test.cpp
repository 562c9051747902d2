// Which names a paper of the user's own may have.
#include "pages/custom_paper_names.h"

#include "core/paper_tables.h"
#include "pages/name_cleaning.h"
#include "support/case_name.h"
#include "support/test_world.h"

#include <gtest/gtest.h>
#include <string>

namespace ostrel {
namespace {

constexpr char16_t kTextsPath[] = u"C:\\texts.dll";

struct NameScene {
  test::TestWorld world;
  ModuleHandle texts = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);

  void UseTexts(headless::StringTable table) {
    world.platform.modules.Install(kTextsPath, std::move(table));
    texts = world.platform.modules.LoadLibraryW(kTextsPath);
  }
  PaperNameKind Judge(std::u16string_view name, std::u16string_view untitled = u"Untitled") {
    return JudgePaperName(name, untitled, texts);
  }
};

TEST(PaperNames, AnEmptyOneIsToldFirst) {
  NameScene scene;
  EXPECT_EQ(scene.Judge(u""), PaperNameKind::kEmpty);
  EXPECT_EQ(scene.Judge(u"", u""), PaperNameKind::kEmpty);
}

TEST(PaperNames, TheUntitledOneIsToldByItsExactText) {
  NameScene scene;
  EXPECT_EQ(scene.Judge(u"Untitled"), PaperNameKind::kUntitled);
  EXPECT_EQ(scene.Judge(u"untitled"), PaperNameKind::kFree);
  EXPECT_EQ(scene.Judge(u"Ohne Namen", u"Ohne Namen"), PaperNameKind::kUntitled);
  // Before its characters are looked at.
  EXPECT_EQ(scene.Judge(u"(none)", u"(none)"), PaperNameKind::kUntitled);
}

TEST(PaperNames, EachRefusedCharacterIsFound) {
  NameScene scene;
  for (const char16_t unit : kRefusedInNames) {
    const std::u16string name = {u'a', unit};
    EXPECT_EQ(scene.Judge(name), PaperNameKind::kWithRefusedUnits) << static_cast<int>(unit);
  }
  EXPECT_EQ(scene.Judge(u"a-b_c &%$#@!+={}[]~`^"), PaperNameKind::kFree);
}

TEST(PaperNames, EachPaperOfTheTableKeepsItsName) {
  NameScene scene;
  headless::StringTable texts;
  for (const PaperRow& row : kPaperTable) {
    const std::string number = std::to_string(row.id);
    texts[row.nameStringId] = u"Sheet " + std::u16string(number.begin(), number.end());
  }
  scene.UseTexts(texts);
  for (const auto& [id, text] : texts) {
    EXPECT_EQ(scene.Judge(text), PaperNameKind::kFixedPaper) << id;
  }
}

struct FixedCase {
  const char* name;
  const char16_t* paperName;  // of the Letter paper
  const char16_t* given;
  PaperNameKind kind;
};

class FixedPaperNames : public testing::TestWithParam<FixedCase> {};

INSTANTIATE_TEST_SUITE_P(
    Names, FixedPaperNames,
    testing::Values(
        FixedCase{"UpToTheBracket", u"Letter (8.5 x 11 in)", u"Letter", PaperNameKind::kFixedPaper},
        FixedCase{"WithoutABlank", u"Letter(8.5 x 11 in)", u"Letter", PaperNameKind::kFixedPaper},
        FixedCase{"WithoutABracket", u"Letter", u"Letter", PaperNameKind::kFixedPaper},
        FixedCase{"OfSeveralWords", u"My Letter   (8.5)", u"My Letter", PaperNameKind::kFixedPaper},
        FixedCase{"OfAnotherCase", u"Letter (8.5)", u"letter", PaperNameKind::kFree},
        FixedCase{"ALongerOne", u"Letter (8.5)", u"Letter 2", PaperNameKind::kFree},
        FixedCase{"AShorterOne", u"Letter (8.5)", u"Lette", PaperNameKind::kFree},
        FixedCase{"OnlyABracket", u"(8.5)", u"Letter", PaperNameKind::kFree},
        FixedCase{"OnlyBlanksBeforeIt", u"  (8.5)", u"Letter", PaperNameKind::kFree}),
    test::CaseName());

TEST_P(FixedPaperNames, AreTakenUpToTheirBracket) {
  NameScene scene;
  scene.UseTexts({{108, GetParam().paperName}});
  EXPECT_EQ(scene.Judge(GetParam().given), GetParam().kind);
}

TEST(PaperNames, OfALanguageWithoutPapersAreFree) {
  NameScene scene;
  scene.UseTexts({});
  EXPECT_EQ(scene.Judge(u"A4"), PaperNameKind::kFree);
  // What stands in for a missing text elsewhere is no paper's name.
  EXPECT_EQ(scene.Judge(u"id 116 missing!"), PaperNameKind::kFree);
  EXPECT_EQ(JudgePaperName(u"A4", u"Untitled", nullptr), PaperNameKind::kFree);
}

TEST(PaperNames, TheShippedNamesAreTakenInEachLanguage) {
  for (const std::string& language : test::Languages()) {
    NameScene scene;
    scene.UseTexts(test::Strings(language));
    EXPECT_EQ(scene.Judge(u"A4"), PaperNameKind::kFixedPaper) << language;
    EXPECT_EQ(scene.Judge(u"Photo card"), PaperNameKind::kFree) << language;
  }
}

}  // namespace
}  // namespace ostrel
