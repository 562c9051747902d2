#include "pages/warning_boxes.h"

#include "pages/page_scene.h"
#include "support/case_name.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace ostrel {
namespace {

using test::DialogRecorder;
using test::PageScene;

struct BoxCase {
  const char* name;
  std::function<void(WindowHandle, ModuleHandle)> warn;
  std::vector<std::uint32_t> texts;  // one behind the other
};

void PrintTo(const BoxCase& row, std::ostream* out) {
  *out << row.name;
}

BoxCase Media(const char* name, std::int32_t media, std::vector<std::uint32_t> texts) {
  return {name, [media](auto owner, auto module) { WarnMediaUnsupported(owner, module, media); },
          std::move(texts)};
}

BoxCase Source(const char* name, bool paper, bool media, std::vector<std::uint32_t> texts) {
  return {name, [=](auto owner, auto module) { WarnSourceConflict(owner, module, paper, media); },
          std::move(texts)};
}

BoxCase Poster(const char* name, WatermarkPoster kind, std::uint32_t text) {
  return {
      name, [kind](auto owner, auto module) { WarnWatermarkPoster(owner, module, kind); }, {text}};
}

class WarningBoxes : public testing::TestWithParam<BoxCase> {
 protected:
  void Warn() { GetParam().warn(DialogRecorder::Dialog(), scene_.context.languageModule); }
  std::vector<headless::HeadlessWindows::Box>& boxes() {
    return scene_.world.platform.windows.boxes;
  }

  PageScene scene_;
};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Each, WarningBoxes,
    testing::Values(
        Media("MediaPlain",        1,   {127,  5001, 5003, 5002}),
        Media("MediaThick",        257, {388,  5001, 5003, 5002}),
        Media("MediaEnvelope",     258, {139,  5001, 5003, 5002}),
        Media("MediaCardStock",    259, {4075, 5001, 5003, 5002}),
        Media("MediaLabels",       263, {334,  5001, 5003, 5002}),
        Media("MediaTransparency", 2,   {4076, 5001, 5003, 5002}),
        Media("MediaThin",         264, {5099, 5001, 5003, 5002}),
        Media("MediaExtraThick",   265, {6541, 5001, 5003, 5002}),
        Media("MediaLetterhead",   261, {6542, 5001, 5003, 5002}),
        Media("MediaUnknown",      6,   {5001, 5003, 5002}),
        BoxCase{"PaperNoDuplex", WarnPaperNoDuplex, {5041}},
        Source("SourceOfThePaper", true,  false, {180}),
        Source("SourceOfBoth",     true,  true,  {180}),
        Source("SourceOfTheMedia", false, true,  {5033}),
        Source("SourceOfNeither",  false, false, {}),
        BoxCase{"MediaOfThePaper", WarnMedia, {6543}},
        BoxCase{"PosterDuplex", WarnPosterDuplex, {5032}},
        BoxCase{"PosterDuplexWatermark", WarnPosterDuplexWatermark, {5047}},
        Poster("WatermarkInForce", WatermarkPoster::kPosterRefused,    2068),
        Poster("PosterInForce",    WatermarkPoster::kWatermarkRefused, 2067),
        BoxCase{"EditorPoster", WarnEditorPoster, {2067}},
        BoxCase{"BookletCollate", WarnBookletCollate, {5088}}),
    test::CaseName());
// clang-format on

TEST_P(WarningBoxes, ShowsItsText) {
  Warn();
  std::u16string text;
  for (const std::uint32_t id : GetParam().texts) {
    text += scene_.English(id);
  }
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].owner, DialogRecorder::Dialog());
  EXPECT_EQ(boxes()[0].text, text.substr(0, 259));
  EXPECT_EQ(boxes()[0].caption, scene_.English(5004));
  EXPECT_EQ(boxes()[0].style, 0x30U);
}

TEST_P(WarningBoxes, ReadsFromRightToLeftWhereTheLanguageDoes) {
  scene_.world.process.RightToLeftLanguage = true;
  Warn();
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].style, 0x180030U);
}

TEST_P(WarningBoxes, TellsWhichTextsAreMissing) {
  scene_.UseTexts({});
  Warn();
  std::u16string text;
  for (const std::uint32_t id : GetParam().texts) {
    const std::string number = std::to_string(id);
    text += u"id:" + std::u16string(number.begin(), number.end()) + u" missing!";
  }
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].text, text);
  EXPECT_EQ(boxes()[0].caption, u"id:5004 missing!");
}

TEST_P(WarningBoxes, CutsALongTextAt259Characters) {
  headless::StringTable texts = {{5004, std::u16string(300, u't')}};
  std::u16string text;
  for (const std::uint32_t id : GetParam().texts) {
    texts[id] = std::u16string(300, static_cast<char16_t>(u'a' + id % 26));
    text += texts[id].substr(0, 259);
  }
  scene_.UseTexts(texts);
  Warn();
  ASSERT_EQ(boxes().size(), 1U);
  EXPECT_EQ(boxes()[0].text, text.substr(0, 259));
  EXPECT_EQ(boxes()[0].caption, std::u16string(259, u't'));
}

TEST_P(WarningBoxes, IsPassedOverWhenItCantBeShown) {
  scene_.world.platform.faults.FailOperation("MessageBoxW");
  Warn();
  EXPECT_TRUE(scene_.world.platform.faults.fired());
  EXPECT_TRUE(boxes().empty());
}

struct GivenText {
  const char* name;
  const char16_t* text;
  std::u16string shown;
};

class WarnTextBox : public testing::TestWithParam<GivenText> {};

const std::u16string kLongest(259, u'x');
const std::u16string kTooLong = kLongest + u"y";

INSTANTIATE_TEST_SUITE_P(Texts, WarnTextBox,
                         testing::Values(GivenText{"Lines", u"One\r\nTwo\r\n", u"One\r\nTwo\r\n"},
                                         GivenText{"Empty", u"", u""},
                                         GivenText{"Null", nullptr, u""},
                                         GivenText{"Longest", kLongest.c_str(), kLongest},
                                         GivenText{"TooLong", kTooLong.c_str(), kLongest}),
                         test::CaseName());

TEST_P(WarnTextBox, ShowsTheTextGiven) {
  PageScene scene;
  WarnText(DialogRecorder::Dialog(), scene.context.languageModule, GetParam().text);
  const auto& boxes = scene.world.platform.windows.boxes;
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, GetParam().shown);
  EXPECT_EQ(boxes[0].caption, scene.English(5004));
  EXPECT_EQ(boxes[0].style, 48U);
  EXPECT_EQ(boxes[0].owner, DialogRecorder::Dialog());
}

TEST(WarnTextBoxStyle, ReadsFromRightToLeftWhereTheLanguageDoesAndTellsAMissingTitle) {
  PageScene scene;
  scene.world.process.RightToLeftLanguage = true;
  WarnText(DialogRecorder::Dialog(), nullptr, u"One");
  const auto& boxes = scene.world.platform.windows.boxes;
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].style, 0x180030U);
  EXPECT_EQ(boxes[0].caption, u"id:5004 missing!");
}

TEST(WarnStringBox, HasATextAndATitleOfItsOwn) {
  PageScene scene;
  WarnString(DialogRecorder::Dialog(), scene.context.languageModule, 5008, 2000);
  const auto& boxes = scene.world.platform.windows.boxes;
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, scene.English(5008));
  EXPECT_EQ(boxes[0].caption, scene.English(2000));
  EXPECT_EQ(boxes[0].style, 0x30U);
  EXPECT_EQ(boxes[0].owner, DialogRecorder::Dialog());
}

// ---- Questions ----------------------------------------------------------------------------------

struct AnswerCase {
  const char* name;
  int button;
  bool yes;
};

class Question : public testing::TestWithParam<AnswerCase> {};

INSTANTIATE_TEST_SUITE_P(Answers, Question,
                         testing::Values(AnswerCase{"Yes", 6, true}, AnswerCase{"No", 7, false},
                                         AnswerCase{"Ok", 1, false},
                                         AnswerCase{"NotShown", 0, false}),
                         test::CaseName());

TEST_P(Question, IsOnlyAnsweredByYes) {
  PageScene scene;
  scene.world.platform.windows.answers = {GetParam().button};
  EXPECT_EQ(AskYesNo(DialogRecorder::Dialog(), scene.context.languageModule, 5010, 2000),
            GetParam().yes);
  const auto& boxes = scene.world.platform.windows.boxes;
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, scene.English(5010));
  EXPECT_EQ(boxes[0].caption, scene.English(2000));
  EXPECT_EQ(boxes[0].style, 0x34U);
  EXPECT_EQ(boxes[0].owner, DialogRecorder::Dialog());
}

TEST(QuestionStyle, ReadsFromRightToLeftAndTellsMissingTexts) {
  PageScene scene;
  scene.world.process.RightToLeftLanguage = true;
  EXPECT_FALSE(AskYesNo(nullptr, nullptr, 5010, 2000));
  const auto& boxes = scene.world.platform.windows.boxes;
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].style, 0x180034U);
  EXPECT_EQ(boxes[0].text, u"id:5010 missing!");
  EXPECT_EQ(boxes[0].caption, u"id:2000 missing!");
}

TEST(WarningBoxesWithoutALanguage, TellTheMissingIds) {
  PageScene scene;
  WarnMedia(nullptr, nullptr);
  ASSERT_EQ(scene.world.platform.windows.boxes.size(), 1U);
  EXPECT_EQ(scene.world.platform.windows.boxes[0].text, u"id:6543 missing!");
}

}  // namespace
}  // namespace ostrel
