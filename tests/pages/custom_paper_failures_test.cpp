// The dialog of the user's own papers when the world fails: files that can't be written, controls
// that the template lacks, and any call of the platform refused.
#include "pages/custom_paper_stage.h"

#include <array>

namespace ostrel {
namespace {

// ---- Files that can't be written ----------------------------------------------------------------

struct TwoPapers : CustomPaperStage {
  TwoPapers() {
    Put({Card(u"Card"), Photo(u"Photo", 289)});
    SetWords(test::CardWords(288));
  }
  void ProtectTheFile() { world.platform.files.MakeReadOnly(test::kSettingsPath); }
};

TEST(UnwritableStore, ANewPaperIsNotListed) {
  TwoPapers stage;
  EXPECT_TRUE(stage.Show([&] {
    EXPECT_TRUE(stage.user().Type(kWidth, u"120"));
    stage.ProtectTheFile();
    stage.SaveAs(u"New");
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Card", u"Photo"}));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"New", u"120", u"150.0", kMillimeters, true, false}));
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_TRUE(stage.user().Click(kIdOk));
  }));
  EXPECT_TRUE(stage.boxes().empty());
  EXPECT_EQ(stage.Words(), test::CardWords(288));
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289)}));
}

TEST(UnwritableStore, AReplacedPaperStaysWhereItIs) {
  TwoPapers stage;
  stage.windows().answers = {kIdYes};
  stage.windows().onBox = [&](const auto&) { stage.ProtectTheFile(); };
  stage.Show([&] {
    stage.SaveAs(u"Card");
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Card", u"Photo"}));
    EXPECT_TRUE(stage.user().Enabled(kSave));
    EXPECT_EQ(stage.boxes().size(), 1U);
  });
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289)}));
}

TEST(UnwritableStore, ADeletedPaperStays) {
  TwoPapers stage;
  stage.Show([&] {
    stage.ProtectTheFile();
    EXPECT_TRUE(stage.user().Click(kDelete));
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Card", u"Photo"}));
    EXPECT_EQ(stage.Seen(), (PaperSeen{u"Card", u"100.0", u"150.0", kMillimeters, false, true}));
    EXPECT_TRUE(stage.user().Click(kIdCancel));
  });
  EXPECT_EQ(stage.Words(), test::CardWords(288));  // nothing was deleted
  EXPECT_SETTINGS(stage.world, StoreOf({Card(u"Card"), Photo(u"Photo", 289)}));
}

TEST(VanishedStore, MeanwhileAChosenPaperChangesNothing) {
  TwoPapers stage;
  stage.Show([&] {
    test::PutSettings(stage.world, StoreOf({}));
    EXPECT_TRUE(stage.user().Choose(kNameBox, 1));
    EXPECT_EQ(stage.Words(), test::CardWords(288));
    EXPECT_EQ(stage.Text(kWidth), u"100.0");
    EXPECT_TRUE(stage.user().Click(kDelete));  // there is none of that name
    EXPECT_EQ(stage.user().ItemTexts(kNameBox).size(), 2U);
  });
}

TEST(ChangedStore, MeanwhileIsListedAfterTheNextSave) {
  TwoPapers stage;
  stage.Show([&] {
    test::PutSettings(stage.world, StoreOf({Photo(u"Foreign", 288)}));
    stage.SaveAs(u"Mine");
    EXPECT_EQ(stage.user().ItemTexts(kNameBox), (std::vector<std::u16string>{u"Foreign", u"Mine"}));
    EXPECT_EQ(stage.Words(), test::CardWords(289));
  });
}

// ---- A dialog that lacks controls ---------------------------------------------------------------

TEST(CustomPaperTemplate, MayLackAnyControl) {
  const headless::Resources shipped = *test::LibraryResources("enus");
  for (const auto& control : shipped.dialogs.at(657).controls) {
    TwoPapers stage;
    const std::int32_t lacking = control.id;
    std::erase_if(stage.language.dialogs.at(657).controls,
                  [&](const auto& each) { return each.id == lacking; });
    stage.Show([&] {
      for (const std::int32_t id : {kInches, kMillimeters, kSave, kDelete, kDefaults, kSave}) {
        stage.Command(id);
      }
      stage.Command(kNameBox, kCbnEditChange);
      stage.Command(kNameBox, kCbnSelChange);
      stage.Command(kWidth, kEnChange);
      stage.Command(kWidth, kEnKillFocus);
      EXPECT_TRUE(stage.IsOpen());
      stage.Command(kIdOk);
      EXPECT_FALSE(stage.IsOpen());
    });
    EXPECT_EQ(stage.timesShown, 1) << lacking;
  }
}

// ---- Any call refused ---------------------------------------------------------------------------

// All that a user can do. What a refused call has locked or ended isn't done. Result: whether
// anything could be deleted.
bool DoEverything(CustomPaperStage& stage) {
  headless::User user = stage.user();
  static_cast<void>(user.Type(kWidth, u"120"));
  static_cast<void>(user.Type(kLength, u"1"));
  static_cast<void>(user.SpinUp(kWidthSpin));
  static_cast<void>(user.Type(kNameBox, u"N.ew"));
  static_cast<void>(user.Click(kSave));
  static_cast<void>(user.Choose(kNameBox, 1));
  static_cast<void>(user.Click(kInches));
  const bool deleted = user.Click(kDelete);
  static_cast<void>(user.Click(kDefaults));
  static_cast<void>(user.Type(kNameBox, u"Card"));
  static_cast<void>(user.Click(kSave));
  static_cast<void>(user.Click(kIdOk));
  return deleted;
}

bool IsWithin(std::uint16_t pixels, std::uint16_t least, std::uint16_t most) {
  return pixels >= least && pixels <= most;
}

// The file is rewritten in its place: a refused writing leaves it cut, and a reader takes what is
// there. One that isn't seen is made anew.
bool LeavesTheFileCut(const std::string& operation) {
  return operation == "WriteFile" || operation == "GetFileAttributesW";
}

// Whatever was refused: each stored record is one of the two that were there or one that the dialog
// may make, and of the two none is lost but by deleting it.
void ExpectSaneStore(const std::string& operation, const std::string& what, bool deleted) {
  const bool card = IsPaperStored(u"Card");
  const bool photo = IsPaperStored(u"Photo");
  EXPECT_TRUE(LeavesTheFileCut(operation) || (deleted ? card || photo : card && photo)) << what;
  std::array<CustomPaperRecord, 20> records = {};
  const std::size_t count = ReadCustomPapers(records);
  EXPECT_LE(count, 3U) << what;
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_TRUE(IsWithin(records[i].Width, 1770, 5102)) << what << ": " << records[i].Width;
    EXPECT_TRUE(IsWithin(records[i].Length, 3496, 8409)) << what << ": " << records[i].Length;
    EXPECT_TRUE(records[i].Unit == 1 || records[i].Unit == 2) << what;
    EXPECT_NE(records[i].Name[0], u'\0') << what;
    EXPECT_GE(records[i].PaperId, 288U) << what;
    EXPECT_LE(records[i].PaperId, 291U) << what;
  }
}

TEST(CustomPaperFailures, AnyCallMayBeRefused) {
  bool fired = true;
  std::size_t n = 0;
  while (fired) {
    ++n;
    TwoPapers stage;
    stage.windows().answers = {kIdYes, kIdYes, kIdYes};
    bool deleted = false;
    std::string refused;
    stage.Show([&] {
      stage.world.platform.faults.StartTrace();
      stage.world.platform.faults.FailCall(n);
      deleted = DoEverything(stage);
      fired = stage.world.platform.faults.fired();
      refused = fired ? stage.world.platform.faults.trace().at(n - 1) : "nothing";
      stage.world.platform.faults.Clear();
    });
    EXPECT_EQ(stage.timesShown, 1);
    EXPECT_EQ(stage.world.platform.files.openFiles(), 0U);
    ExpectSaneStore(refused, "call " + std::to_string(n) + ", " + refused, deleted);
    if (HasFailure()) {
      break;
    }
  }
  EXPECT_GT(n, 500U);
}

TEST(CustomPaperFailures, AnyCallOfTheOpeningMayBeRefused) {
  bool fired = true;
  std::size_t n = 0;
  while (fired) {
    ++n;
    TwoPapers stage;
    const std::string before = test::Settings(stage.world);
    stage.windows().onDialog = [](WindowHandle) {};
    stage.context.languageModule =
        stage.world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
    stage.world.platform.faults.StartTrace();
    stage.world.platform.faults.FailCall(n);
    ShowCustomPaperDialog(nullptr, stage.context);
    fired = stage.world.platform.faults.fired();
    const std::string refused = fired ? stage.world.platform.faults.trace().at(n - 1) : "nothing";
    stage.world.platform.faults.Clear();
    EXPECT_EQ(stage.Words(), test::CardWords(288)) << n;
    EXPECT_EQ(stage.world.platform.files.openFiles(), 0U);
    EXPECT_TRUE(LeavesTheFileCut(refused) || test::Settings(stage.world) == before)
        << n << ", " << refused;
    if (HasFailure()) {
      break;
    }
  }
  EXPECT_GT(n, 100U);
}

// Each operation that the dialog uses, refused all the time.
TEST(CustomPaperFailures, AnyOperationMayBeRefusedForGood) {
  for (const char* operation : {"SendMessageW",
                                "SetWindowTextW",
                                "GetWindowTextW",
                                "GetDlgItem",
                                "EnableWindow",
                                "IsWindowEnabled",
                                "CheckDlgButton",
                                "SetFocus",
                                "MessageBoxW",
                                "GetWindowLongPtrW",
                                "SetWindowLongPtrW",
                                "LoadStringW",
                                "CreateFileW",
                                "ReadFile",
                                "WriteFile",
                                "GetLocaleInfoW",
                                "GetDC",
                                "GetTextExtentPointW",
                                "SelectObject",
                                "HeapAlloc",
                                "EndDialog"}) {
    TwoPapers stage;
    stage.windows().answers = {kIdYes, kIdYes, kIdYes};
    bool deleted = false;
    stage.Show([&] {
      stage.world.platform.faults.FailOperation(operation);
      deleted = DoEverything(stage);
      stage.world.platform.faults.Clear();
    });
    EXPECT_EQ(stage.timesShown, 1) << operation;
    EXPECT_EQ(stage.world.platform.files.openFiles(), 0U) << operation;
    ExpectSaneStore(operation, operation, deleted);
  }
}

}  // namespace
}  // namespace ostrel
