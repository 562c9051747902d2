// Any stored papers behind the dialog of the user's own papers, and any typing, pasting and
// clicking in it: each answer ends, what the dialog saves lies within its limits, and Cancel leaves
// the paper in force as it was, unless its record was deleted.
//
// Input: a byte for the country, the decimal separator and the way out; the paper in force, two
// bytes; how many records are stored, one byte, and 76 bytes for each (a number for its name, a
// byte for its length, and its value); then an action for each byte.
#include "caller_record.h"
#include "core/devmode_lifecycle.h"
#include "pages/custom_paper.h"
#include "platform/headless/user.h"
#include "support/settings_file.h"

#include <array>
#include <cmath>
#include <iterator>
#include <string>

namespace {

using namespace ostrel;
using fuzz::Require;

constexpr std::size_t kRecordBytes = 72;
constexpr std::int32_t kButtons[] = {1110, 1111, 1421, 1417, 1064, 1112, 1421, 1417};
constexpr std::int32_t kBoxes[] = {1358, 1442};
constexpr std::int32_t kSpins[] = {1270, 1273};
constexpr const char16_t* kSizes[] = {u"",      u"0",     u"75",     u"216.1", u"2.95",  u"8,5",
                                      u"-",     u".5",    u"100.55", u"1e9",   u" 1 2 ", u"999999",
                                      u"14.00", u"14,01", u"٣",      u"5-3"};
constexpr const char16_t* kNames[] = {u"",
                                      u"  ",
                                      u"Untitled",
                                      u"A4",
                                      u" A4 ",
                                      u"a.b:c",
                                      u"Paper0",
                                      u"Paper1",
                                      u"My paper",
                                      u"<>",
                                      u"123456789012345678901234",
                                      u"1234567890123456789012345"};

std::string StoreOf(fuzz::Input& input) {
  constexpr std::uint8_t kMostRecords = 20;
  test::SettingsTree tree;
  const std::uint8_t count = fuzz::TakeByte(input) % kMostRecords;
  for (std::uint8_t i = 0; i < count; ++i) {
    const std::string name = "Paper" + std::to_string(fuzz::TakeByte(input) % kMostRecords);
    const std::size_t length = (fuzz::TakeByte(input) & 7) == 7 ? kRecordBytes - 1 : kRecordBytes;
    const fuzz::Input bytes = fuzz::Take(input, kRecordBytes);
    std::string value(bytes.begin(), bytes.end());
    value.resize(length, '\0');
    tree.papers.push_back(test::Record(name, value));
  }
  return tree.Bytes();
}

// One thing that a user, or another program, does. What can't be done isn't.
void Act(test::TestWorld& world, WindowHandle dialog, std::uint8_t action) {
  constexpr std::uint8_t kKinds = 8;
  headless::User user(world.platform, dialog);
  headless::HeadlessWindows& windows = world.platform.windows;
  const std::size_t which = action / kKinds;
  const std::int32_t box = kBoxes[which % std::size(kBoxes)];
  const char16_t* size = kSizes[which / 2 % std::size(kSizes)];
  const char16_t* name = kNames[which % std::size(kNames)];
  switch (action % kKinds) {
    case 0:
      static_cast<void>(user.Click(kButtons[which % std::size(kButtons)]));
      break;
    case 1:
      static_cast<void>(user.Type(box, size));
      break;
    case 2:
      static_cast<void>(user.Paste(box, size));
      break;
    case 3:
      windows.SetWindowTextW(user.Control(box), size);
      break;
    case 4:
      static_cast<void>(user.Type(1009, name));
      break;
    case 5:
      windows.SetWindowTextW(user.Control(1009), name);
      windows.Deliver(dialog, kWmCommand, which % 2 == 0 ? 1421 : MakeWords(1009, kCbnEditChange),
                      0);
      break;
    case 6:
      static_cast<void>(user.Choose(1009, static_cast<std::int32_t>(which % 20)));
      break;
    default:
      static_cast<void>(which % 4 < 2 ? user.SpinUp(kSpins[which % 2])
                                      : user.SpinDown(kSpins[which % 2]));
      break;
  }
}

// What the dialog has saved lies within the limits of its unit.
void CheckSaved(const CustomPaperRecord& paper) {
  const SizeLimits& limits = LimitsOf(UnitOf(paper));
  const auto within = [&](const PaperSide& side, const LengthLimits& ends) {
    const double length =
        LengthOfPixels(StoredPixels(paper, side), limits.unit, limits.decimals).value;
    return length >= ends.least - 0.001 && length <= ends.most + 0.001;
  };
  Require(within(kWidthSide, limits.width), "a saved width lies within the limits");
  Require(within(kLengthSide, limits.length), "a saved length lies within the limits");
  Require(std::isfinite(paper.ExactWidth) && std::isfinite(paper.ExactLength),
          "saved numbers are numbers");
}

// Records that weren't in the file before are the dialog's.
void CheckStore(const std::string& before) {
  std::array<CustomPaperRecord, kMaxCustomPapers> papers = {};
  const std::size_t count = ReadCustomPapers(papers);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string value = test::AsString(test::BytesOf(papers[i]));
    if (before.find(value) == std::string::npos) {
      CheckSaved(papers[i]);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::TestWorld world;
  UIContext context = {};
  InitDriverDevmode(&context.devmode, test::kPrinterName, nullptr);
  context.publicPointer = &context.devmode.publicDevmode;
  context.privatePointer = &context.devmode.privateDevmode;
  context.languageModule = world.platform.modules.LoadLibraryW(test::kEnglishLibraryPath);
  fuzz::Input input(data, size);
  const std::uint8_t choice = fuzz::TakeByte(input);
  world.platform.locale.country = (choice & 1) != 0 ? u"1" : u"49";
  world.process.DecimalCommaLanguage = (choice & 2) != 0;
  const std::uint8_t low = fuzz::TakeByte(input);
  const auto paper = static_cast<std::int16_t>(low | (fuzz::TakeByte(input) << 8));
  PublicDevmode& shared = *context.publicPointer;
  shared.dmPaperSize = paper;
  shared.dmPaperWidth = 7;
  shared.dmPaperLength = 8;
  shared.dmFields = kDmOrientation;
  test::PutSettings(world, StoreOf(input));
  const std::string before = test::Settings(world);

  bool deleted = false;
  world.platform.windows.onDialog = [&](WindowHandle dialog) {
    world.platform.windows.answers.assign(input.size(), (choice & 8) != 0 ? kIdYes : 7);
    for (const std::uint8_t action : input) {
      if (world.platform.windows.IsOpenDialog(dialog)) {
        Act(world, dialog, action);
      }
    }
    deleted = GetPageState<CustomPaperDialogState>(PageSlot::kCustomPaper)->selectionDeleted;
    headless::User user(world.platform, dialog);
    static_cast<void>(user.Click((choice & 4) != 0 ? kIdOk : kIdCancel));
  };
  const bool accepted = ShowCustomPaperDialog(nullptr, context);
  if (!accepted && !deleted) {
    Require(shared.dmPaperSize == paper, "Cancel puts the paper back");
    Require(shared.dmPaperWidth == 7 && shared.dmPaperLength == 8, "Cancel puts its size back");
  }
  Require(accepted || shared.dmFields == kDmOrientation, "Cancel puts the announcement back");
  Require(accepted || !deleted || shared.dmPaperSize == 9 || shared.dmPaperSize == 1,
          "a paper that is gone makes room for A4 or Letter");
  CheckStore(before);
  Require(world.platform.files.openFiles() == 0, "files are closed");
  return 0;
}
