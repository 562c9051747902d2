// Any bytes as the record behind the print options page, and any clicks on it: the page shows, each
// answer ends, and "OK" hands out a record in range.
//
// Input: a byte that says where the record comes from, an action for each byte up to a zero, and
// the record's bytes. A caller's record has gone through the merge; one of a favourite is taken as
// it is stored, so any bytes can stand in the page's record.
#include "caller_record.h"
#include "core/page_state_table.h"
#include "core/sheet_frame.h"
#include "driver/page_tables.h"
#include "pages/page_support.h"
#include "platform/headless/headless_sheet.h"
#include "support/sheet_scene.h"

#include <array>
#include <cstring>
#include <iterator>

namespace {

using namespace ostrel;
using fuzz::Require;

constexpr std::int32_t kButtons[] = {1008, 1394, 1422, 1496, 1240, 1125, 1241, 1242, 1243, 1064};
constexpr std::int32_t kIcons[] = {1447, 1448, 1449, 1450};
constexpr std::int32_t kDrawn[] = {1176};

// What takes the place of the record after the sheet's opening and before its page is made.
fuzz::Input storedRecord;

std::int32_t Entry(SheetInfo* info, std::intptr_t lParam) {
  const std::int32_t answer = DrvDocumentPropertySheets(info, lParam, kDocumentPages);
  if (info->Reason == kReasonInit && answer == kSheetDone) {
    auto& context = *PointedAt<UIContext>(static_cast<std::intptr_t>(info->UserData));
    std::copy(storedRecord.begin(), storedRecord.end(),
              reinterpret_cast<std::uint8_t*>(&context.devmode));
  }
  return answer;
}

// One thing that a user does. What can't be done, on a locked control, isn't.
void Act(headless::User& user, std::uint8_t action) {
  constexpr std::uint8_t kKinds = 8;
  const std::uint8_t which = action / kKinds;
  switch (action % kKinds) {
    case 0:
    case 1:
    case 2:
      static_cast<void>(user.Click(kButtons[which % std::size(kButtons)]));
      break;
    case 3:
      static_cast<void>(user.Choose(1393, which % 4));
      break;
    case 4:
      static_cast<void>((which & 1) != 0 ? user.SpinUp(1020) : user.SpinDown(1020));
      break;
    case 5: {
      constexpr const char16_t* kTexts[] = {u"", u"0", u"999", u"1000", u"-", u"12a", u"  7 "};
      static_cast<void>(user.Paste(1019, kTexts[which % std::size(kTexts)]));
      break;
    }
    case 6:
      static_cast<void>(user.HoverTip(kIcons[which % std::size(kIcons)]));
      static_cast<void>(user.Draw(kDrawn[0]));
      break;
    default:
      static_cast<void>(user.MoveFocus(1019));
      break;
  }
}

void CheckRecord(const DriverDevmode& record) {
  const PublicDevmode& shared = record.publicDevmode;
  Require(shared.dmCopies >= 1 && shared.dmCopies <= kMaxCopies, "copies are in range");
  Require(shared.dmDuplex >= 1, "the duplex word is one that the page knows");
  Require(record.privateDevmode.MultipleUp != 22 || shared.dmDuplex == 1,
          "a poster is printed one-sided");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::SheetScene scene;
  fuzz::Input input(data, size);
  const std::uint8_t choice = fuzz::TakeByte(input);
  std::array<std::uint8_t, 24> actions = {};
  for (std::uint8_t& action : actions) {
    action = fuzz::TakeByte(input);
    if (action == 0) {
      break;
    }
  }
  auto* bytes = reinterpret_cast<std::uint8_t*>(&scene.in);
  const fuzz::Input record = fuzz::Take(input, sizeof(scene.in));
  storedRecord = {};
  if ((choice & 1) != 0) {
    storedRecord = record;
  } else {
    // Behind the words that tell the record's shape.
    const fuzz::Input rest = record.subspan(std::min<std::size_t>(record.size(), 72));
    std::copy(rest.begin(), rest.end(), bytes + 72);
  }
  scene.document.fMode = kDmCopy | ((choice & 2) != 0 ? std::uint32_t{kDmNoPermission} : 0U);

  headless::HeadlessSheet sheet(scene.world.platform, &Entry,
                                reinterpret_cast<std::intptr_t>(&scene.document));
  Require(sheet.Open(), "the sheet opens");
  headless::User user = sheet.UserOf(111);
  for (const std::uint8_t action : actions) {
    if (action == 0) {
      break;
    }
    Act(user, action);
  }
  if ((choice & 4) != 0) {
    Require(sheet.PressCancel(), "Cancel closes the sheet");
  } else if (sheet.PressOk() && (choice & 1) == 0) {
    CheckRecord(scene.out);
  }
  return 0;
}
