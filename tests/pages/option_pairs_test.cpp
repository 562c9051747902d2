// Options of different pages that exclude or change one another, two after the other in every
// order: each is set as a user sets it, and after each the record and the locks of the three pages
// are compared with what the rules say of the options in force.
//
// The model below knows the rules as statements about a record, not how the pages come to them.
#include "config/setting_stores.h"
#include "pages/layout_stage.h"
#include "pages/print_options.h"

#include <span>

namespace ostrel {
namespace {

using test::LayoutStage;

// The words that the rules are about.
struct Model {
  int duplex = 1;
  int pages = 1;
  int order = 0;
  bool poster = false;
  bool booklet = false;
  bool reverse = false;
  int scale = 100;
  int media = 1;
  int paper = 9;
  int jobMode = 0;
  bool collate = false;
  int watermark = 0;
  std::size_t boxes = 0;

  bool operator==(const Model&) const = default;

  // ---- What is locked on the print options page
  bool PaperIsTwoSided() const { return paper == 9; }
  bool MediaIsTwoSided() const { return media == 1; }
  bool DuplexLive() const {
    return MediaIsTwoSided() && PaperIsTwoSided() && !poster && !booklet && !reverse;
  }
  bool ReverseLive() const { return duplex < 2; }
  bool CollateLive() const { return !booklet; }
  bool JobModeLive() const { return pages != 22 && !booklet && watermark == 0; }

  // ---- What is locked on the paper page
  bool MediaLive() const { return duplex == 1; }

  // ---- What is locked on the layout page
  bool HasConflict() const {
    return reverse || !PaperIsTwoSided() || media != 1 || pages != 1 || scale != 100 || duplex == 2;
  }
  bool PagesLive() const { return pages != 22 && !booklet; }
  bool OrderLive() const { return pages > 1 && PagesLive(); }
  bool ScaleLive() const { return pages == 1 && !booklet; }
};
void PrintTo(const Model& model, std::ostream* out) {
  *out << "duplex " << model.duplex << " pages " << model.pages << " order " << model.order
       << " poster " << model.poster << " booklet " << model.booklet << " reverse " << model.reverse
       << " scale " << model.scale << " media " << model.media << " paper " << model.paper
       << " job mode " << model.jobMode << " collate " << model.collate << " watermark "
       << model.watermark << " boxes " << model.boxes;
}

class PairStage : public LayoutStage {
 public:
  PairStage() { withOtherPages = true; }

  // All three pages are there from the start, so that none repairs the record in between.
  [[nodiscard]] bool OpenAll() {
    CustomPaperRecord paper = {};
    paper.PaperId = 300;
    paper.Width = 3000;
    paper.Length = 4000;
    paper.Unit = 1;
    std::u16string(u"Mine").copy(paper.Name, std::size(paper.Name) - 1);
    const bool open = InitSettingsFile() && CustomPaperStore().Save(paper.Name, paper) &&
                      Open([](UIContext& context) {
                        context.publicPointer->dmPaperSize = 9;
                        context.publicPointer->dmCollate = 0;
                      });
    return open && sheet->ShowPageOf(kOptionsDialogId) && sheet->ShowPageOf(kPaperDialogId) &&
           sheet->ShowPageOf(test::kLayoutDialog);
  }
  headless::User Go(std::uint32_t dialog) {
    if (std::exchange(changedElsewhere_, false)) {
      const bool options = dialog == kOptionsDialogId;
      EXPECT_TRUE(sheet->ShowPageOf(options ? test::kLayoutDialog : kOptionsDialogId));
    }
    EXPECT_TRUE(sheet->ShowPageOf(dialog));
    ExpectChangesFrom(sheet->UserOf(dialog).dialog());
    return sheet->UserOf(dialog);
  }
  // A page that isn't here has changed the record: the next page to be asked is shown anew.
  bool ChangedElsewhere() { return changedElsewhere_ = true; }
  headless::User GoToOptions() { return Go(kOptionsDialogId); }
  headless::User GoToPaper() { return Go(kPaperDialogId); }
  // Picks the row of a value from a list of the paper page.
  bool ChooseOfPaper(std::int32_t list, std::uintptr_t value) {
    headless::User user = GoToPaper();
    const std::vector<std::uintptr_t> values = user.ItemData(list);
    const auto row = std::ranges::find(values, value) - values.begin();
    return user.Choose(list, static_cast<std::int32_t>(row));
  }
  headless::User GoToLayout() { return Go(test::kLayoutDialog); }

  Model Record() {
    return {.duplex = shared().dmDuplex,
            .pages = own().MultipleUp,
            .order = own().PageOrder,
            .poster = own().PosterPrint != 0,
            .booklet = own().BookletPrint != 0,
            .reverse = own().ReversePrint != 0,
            .scale = own().ScaleRadio,
            .media = static_cast<int>(shared().dmMediaType),
            .paper = shared().dmPaperSize,
            .jobMode = own().JobMode,
            .collate = shared().dmCollate != 0,
            .watermark = own().WatermarkData.PageWMFlag,
            .boxes = boxes().size()};
  }

 private:
  static constexpr std::uint32_t kOptionsDialogId = 111;
  static constexpr std::uint32_t kPaperDialogId = 693;

  bool changedElsewhere_ = false;
};

// ---- The options --------------------------------------------------------------------------------

struct Option {
  const char* name;
  // Asks for it as a user does. Result: whether a hand could.
  bool (*ask)(PairStage& stage);
  // Whether it can be asked for, and what the rules make of it then.
  bool (*live)(const Model& model);
  void (*apply)(Model& model);
};
void PrintTo(const Option& option, std::ostream* out) {
  *out << option.name;
}

template <int pages>
bool AskForPages(PairStage& stage) {
  const headless::User user = stage.GoToLayout();
  headless::User hand = user;
  const auto place = std::ranges::find(test::kPageCodes, pages) - std::begin(test::kPageCodes);
  const std::int32_t radio = test::kPageRadioIds[place];
  return (user.Checked(1484) || hand.Click(1484)) && hand.Click(radio);
}

template <int pages>
void ApplyPages(Model& model) {
  if (model.pages != pages) {
    model.order = pages == 4 || pages == 8 || pages == 16 ? 2 : 0;
  }
  model.pages = pages;
  model.poster = false;
  model.booklet = false;
}

template <int duplex>
void ApplyTwoSided(Model& model) {
  if (model.duplex != duplex) {
    model.duplex = duplex;
    model.media = 1;
  }
}

void ApplyPoster(Model& model) {
  const bool twoSided = model.duplex != 1 && !model.booklet;
  if (twoSided || model.watermark != 0) {
    ++model.boxes;
    model.pages = 1;
    return;
  }
  if (model.booklet) {
    model.duplex = 1;
    model.booklet = false;
  }
  model.pages = 22;
  model.order = 0;
  model.poster = true;
  model.jobMode = 0;
}

void ApplyBooklet(Model& model) {
  model.booklet = true;
  model.duplex = 3;
  model.collate = true;
  model.scale = 100;
  model.jobMode = 0;
}

// Neither A5 nor a custom paper can be printed on both sides.
template <int paper>
void ApplyPaper(Model& model) {
  if (model.paper != paper && model.duplex != 1) {
    ++model.boxes;
    return;
  }
  model.paper = paper;
}

bool Always(const Model& /*model*/) {
  return true;
}
bool DuplexLive(const Model& model) {
  return model.DuplexLive();
}

// clang-format off
const Option kOptions[] = {
    {"OneSided",  [](PairStage& s) { return s.GoToOptions().Click(1240); }, DuplexLive,
                  [](Model& m) { m.duplex = 1; }},
    {"LongEdge",  [](PairStage& s) { return s.GoToOptions().Click(1125); }, DuplexLive, ApplyTwoSided<2>},
    {"ShortEdge", [](PairStage& s) { return s.GoToOptions().Click(1241); }, DuplexLive, ApplyTwoSided<3>},
    {"OnePage",      AskForPages<1>,  Always, ApplyPages<1>},
    {"TwoPages",     AskForPages<2>,  Always, ApplyPages<2>},
    {"FourPages",    AskForPages<4>,  Always, ApplyPages<4>},
    {"EightPages",   AskForPages<8>,  Always, ApplyPages<8>},
    {"SixteenPages", AskForPages<16>, Always, ApplyPages<16>},
    // The click on the booklet takes the poster away, until another mode gives it back.
    {"Poster",    [](PairStage& s) { return s.GoToLayout().Click(1485); },
                  [](const Model& m) { return !m.booklet; }, ApplyPoster},
    {"Booklet",   [](PairStage& s) { return s.GoToLayout().Click(1486); },
                  [](const Model& m) { return !m.HasConflict(); }, ApplyBooklet},
    {"ReverseOrder", [](PairStage& s) { return s.GoToOptions().Click(1394); },
                  [](const Model& m) { return m.ReverseLive(); }, [](Model& m) { m.reverse = !m.reverse; }},
    {"Scale",     [](PairStage& s) { return s.GoToLayout().Type(1025, u"150") && s.GoToLayout().MoveFocus(1048); },
                  [](const Model& m) { return m.ScaleLive(); }, [](Model& m) { m.scale = 150; }},
    {"MediaThick", [](PairStage& s) { return s.ChooseOfPaper(1009, 257); },
                  [](const Model& m) { return m.MediaLive(); }, [](Model& m) { m.media = 257; }},
    {"PaperA5",   [](PairStage& s) { return s.ChooseOfPaper(1404, 11); }, Always, ApplyPaper<11>},
    {"PaperCustom", [](PairStage& s) { return s.ChooseOfPaper(1404, 300); }, Always, ApplyPaper<300>},
    {"JobMode",   [](PairStage& s) { return s.GoToOptions().Choose(1393, 1); },
                  [](const Model& m) { return m.JobModeLive(); }, [](Model& m) { m.jobMode = 1; }},
    {"Collate",   [](PairStage& s) { return s.GoToOptions().Click(1008); },
                  [](const Model& m) { return m.CollateLive(); }, [](Model& m) { m.collate = !m.collate; }},
    {"Watermark", [](PairStage& s) { s.own().WatermarkData.PageWMFlag = 1; return s.ChangedElsewhere(); }, Always,
                  [](Model& m) { m.watermark = 1; }},
};
// clang-format on

constexpr std::size_t kSidesAndModes = 10;  // the rows from the top

// ---- What the pages show of it -----------------------------------------------------------------

void ExpectOptionsPage(PairStage& stage, const Model& model) {
  const headless::User user = stage.GoToOptions();
  for (const std::int32_t radio : {1240, 1125, 1241}) {
    EXPECT_EQ(user.Enabled(radio), model.DuplexLive()) << radio;
  }
  EXPECT_NE(user.Shown(1447), model.DuplexLive());
  EXPECT_EQ(AskPages(&PageLinks::duplexOff), model.duplex == 1);
  EXPECT_EQ(user.Checked(1240), model.duplex == 1);
  EXPECT_EQ(user.Checked(1125), model.duplex == 2);
  EXPECT_EQ(user.Checked(1241), model.duplex == 3);
  EXPECT_EQ(user.Enabled(1394), model.ReverseLive());
  EXPECT_NE(user.Shown(1448), model.ReverseLive());
  EXPECT_EQ(user.Checked(1394), model.reverse);
  EXPECT_EQ(user.Enabled(1008), model.CollateLive());
  EXPECT_NE(user.Shown(1449), model.CollateLive());
  EXPECT_EQ(user.Checked(1008), model.collate || model.booklet);
  EXPECT_EQ(user.Enabled(1393), model.JobModeLive());
  EXPECT_NE(user.Shown(1450), model.JobModeLive());
  EXPECT_EQ(user.Selected(1393), model.jobMode);
}

void ExpectPaperPage(PairStage& stage, const Model& model) {
  const headless::User user = stage.GoToPaper();
  EXPECT_EQ(user.Enabled(1009), model.MediaLive());
  EXPECT_NE(user.Shown(1446), model.MediaLive());
  const auto shown = [&user](std::int32_t list) {
    return user.ItemData(list).at(static_cast<std::size_t>(user.Selected(list)));
  };
  EXPECT_EQ(shown(1009), static_cast<std::uintptr_t>(model.media));
  EXPECT_EQ(shown(1404), static_cast<std::uintptr_t>(model.paper));
}

void ExpectLayoutPage(PairStage& stage, const Model& model) {
  const headless::User user = stage.GoToLayout();
  using Ids = std::vector<std::int32_t>;
  Ids modes;
  if (model.booklet) {
    modes = model.HasConflict() ? Ids() : Ids({1486});
  } else {
    modes = {model.pages == 22 ? 1485 : 1484};
  }
  EXPECT_EQ(stage.CheckedModes(), modes);
  const auto* code = std::ranges::find(test::kPageCodes, model.pages);
  EXPECT_EQ(stage.CheckedPages(),
            model.PagesLive() ? Ids({test::kPageRadioIds[code - test::kPageCodes]}) : Ids());
  EXPECT_TRUE(stage.ArePageRadiosEnabled(model.PagesLive()));
  EXPECT_EQ(user.Enabled(1485), !model.booklet);
  EXPECT_EQ(user.Shown(1454), model.booklet);
  EXPECT_EQ(user.Enabled(1486), !model.HasConflict());
  EXPECT_EQ(user.Shown(1453), model.HasConflict());
  EXPECT_EQ(user.Enabled(1065), model.booklet);
  EXPECT_EQ(user.Enabled(1044), model.pages == 22);
  EXPECT_TRUE(stage.IsOrderLive(model.OrderLive()));
  EXPECT_TRUE(stage.IsScaleLive(model.ScaleLive()));
  if (model.ScaleLive()) {
    EXPECT_EQ(user.Text(1025), model.scale == 150 ? u"150" : u"100");
  }
  if (model.OrderLive()) {
    EXPECT_EQ(user.Selected(1046), 0);
  }
}

class OptionPairs : public testing::TestWithParam<Option> {};

INSTANTIATE_TEST_SUITE_P(After, OptionPairs, testing::ValuesIn(kOptions), test::CaseName());

void AskAndCompare(PairStage& stage, const Option& option, Model& model) {
  const bool live = option.live(model);
  EXPECT_EQ(option.ask(stage), live);
  if (live) {
    option.apply(model);
  }
  EXPECT_EQ(stage.Record(), model);
}

TEST_P(OptionPairs, LeaveTheRecordAndTheLocksThatTheRulesSay) {
  for (const Option& second : kOptions) {
    SCOPED_TRACE(second.name);
    PairStage stage;
    ASSERT_TRUE(stage.OpenAll());
    Model model = stage.Record();
    ASSERT_EQ(model, Model());
    AskAndCompare(stage, GetParam(), model);
    AskAndCompare(stage, second, model);
    ExpectOptionsPage(stage, model);
    ExpectLayoutPage(stage, model);
    ExpectPaperPage(stage, model);
    ExpectOptionsPage(stage, model);  // and once more, after the other page was there
    EXPECT_EQ(AskPages(&PageLinks::duplexAllowed), model.DuplexLive());
    EXPECT_EQ(stage.Record(), model);  // showing it changes nothing
  }
}

// A third, of those that ask for sides or a mode: what two have left behind locks it too.
TEST_P(OptionPairs, GoOnWithAThirdOptionToo) {
  for (const Option& second : kOptions) {
    for (const Option& third : std::span(kOptions).first(kSidesAndModes)) {
      SCOPED_TRACE(testing::Message() << second.name << " then " << third.name);
      PairStage stage;
      ASSERT_TRUE(stage.OpenAll());
      Model model;
      for (const Option* option : {&GetParam(), &second, &third}) {
        AskAndCompare(stage, *option, model);
      }
      ExpectPaperPage(stage, model);
      ExpectLayoutPage(stage, model);
      ExpectOptionsPage(stage, model);
      if (HasFailure()) {
        return;
      }
    }
  }
}

}  // namespace
}  // namespace ostrel
