// The booklet's cover dialog over the in-memory window system, with the template and the texts that
// are shipped. A test changes the record first, and then does what a user does while the dialog is
// open.
#pragma once

#include "core/parameter_table.h"
#include "core/settings_record.h"
#include "core/ui_context.h"
#include "pages/booklet_cover.h"
#include "platform/headless/control_classes.h"
#include "platform/headless/user.h"
#include "support/test_world.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::test {

// The dialog's boxes, each with its word of the record.
struct BookletBoxRow {
  const char* name;
  std::int32_t control;
  std::int16_t PrivateDevmode::*field;
};
inline constexpr BookletBoxRow kBookletBoxes[] = {
    {"Cover", 1394, &PrivateDevmode::BookletPrintCover},
    {"FrontOutside", 1395, &PrivateDevmode::BookletPrintOnCoverOutside},
    {"FrontInside", 1396, &PrivateDevmode::BookletPrintOnCoverInside},
    {"BackOutside", 1397, &PrivateDevmode::BoookletPrintOnBackCoverOutside},
    {"BackInside", 1398, &PrivateDevmode::BoookletPrintOnBackCoverInside},
};
inline void PrintTo(const BookletBoxRow& row, std::ostream* out) {
  *out << row.name;
}

class BookletStage {
 public:
  using Play = std::function<void(headless::User&)>;
  static constexpr std::uint32_t kLayoutPage = 626;

  // A cover is printed on A4, by a model of a family that may have both trays and has them.
  BookletStage() {
    InitDriverDevmode(&context.devmode, kDriverName, nullptr);
    context.publicPointer = &context.devmode.publicDevmode;
    context.privatePointer = &context.devmode.privateDevmode;
    BuildUIParamTable(&context);
    std::u16string(kDriverName).copy(context.driverName, kDriverNameUnits - 1);
    context.printerHandle = world.OpenPrinter();
    world.process.ModelFlags = 0x80;
    FitTrays(1, 1);
    shared().dmPaperSize = 9;
    shared().dmDefaultSource = 7;
    own().BookletPrint = 1;
    own().BookletPrintCover = 1;
    own().BookletCoverSource = 7;
  }
  ~BookletStage() { world.platform.print.ClosePrinter(context.printerHandle); }
  BookletStage(const BookletStage&) = delete;
  BookletStage& operator=(const BookletStage&) = delete;

  // ---- Before the dialog opens
  void FitTrays(std::uint8_t first, std::uint8_t second) {
    world.printer->data[u"TrayInstallSize"] = headless::StoredValue::Dword(8);
    world.printer->data[u"TrayInstall"] = headless::StoredValue::Binary(
        {std::byte{first}, {}, {}, {}, std::byte{second}, {}, {}, {}});
  }
  headless::Resources language = *LibraryResources("enus");
  void RemoveControl(std::int32_t id) {
    std::erase_if(language.dialogs.at(1071).controls,
                  [id](const auto& control) { return control.id == id; });
  }
  PublicDevmode& shared() { return context.devmode.publicDevmode; }
  PrivateDevmode& own() { return context.devmode.privateDevmode; }
  // Null without memory.
  BookletDialogState& state() { return *GetPageState<BookletDialogState>(PageSlot::kBookletCover); }

  // ---- The dialog
  // Opens the dialog for a user. Result: the dialog's.
  bool Open(Play play) {
    if (context.languageModule == nullptr) {
      world.platform.modules.InstallResources(
          kEnglishLibraryPath, std::make_shared<const headless::Resources>(language));
      context.languageModule = world.platform.modules.LoadLibraryW(kEnglishLibraryPath);
    }
    // The dialog's own template plays the sheet, in which the page stands.
    const DialogProcedure silent = [](WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t) {
      return std::intptr_t{0};
    };
    sheet = windows().CreateDialogWindow(context.languageModule, 1071, nullptr, silent, 0, false);
    const WindowHandle page =
        windows().CreateDialogWindow(context.languageModule, kLayoutPage, sheet, silent, 0, true);
    EXPECT_NE(page, nullptr);
    windows().onDialog = [this, play = std::move(play)](WindowHandle dialog) {
      ++openings;
      headless::User user(world.platform, dialog);
      play(user);
    };
    const bool ok = ShowBookletCoverDialog(page, context);
    EXPECT_TRUE(windows().Find(sheet)->IsEnabled());
    windows().Destroy(std::exchange(sheet, nullptr));
    return ok;
  }
  WindowHandle sheet = nullptr;  // behind the dialog, while it is open
  int openings = 0;              // how often a dialog came up

  // What may be asked of an open dialog, for tests that look once.
  struct Look {
    std::int32_t sourceRow, mediaRow, bindingRow;
    std::int16_t source;  // of the snapshot
    bool sourceLive, mediaLive, sourceIcon, mediaIcon;
    bool operator==(const Look&) const = default;
  };
  Look LookAt(headless::User& user) {
    return {user.Selected(1393), user.Selected(1009),
            user.Selected(1479), state().snapshot.privateDevmode.BookletCoverSource,
            user.Enabled(1393),  user.Enabled(1009),
            user.Shown(1450),    user.Shown(1446)};
  }
  Look LookOnce() {
    Look look = {};
    EXPECT_FALSE(Open([&](headless::User& user) { look = LookAt(user); }));
    EXPECT_EQ(openings, 1);
    return look;
  }
  // Adds a row that the lists never have of their own. The fault plan isn't asked.
  void AddRow(headless::User& user, std::int32_t control, std::intptr_t value) {
    const WindowHandle combo = user.Control(control);
    const std::intptr_t row = headless::AnswerControlMessage(
        windows(), combo, kCbAddString, 0, reinterpret_cast<std::intptr_t>(u"another"));
    headless::AnswerControlMessage(windows(), combo, kCbSetItemData,
                                   static_cast<std::uintptr_t>(row), value);
  }
  std::u16string AskTip(headless::User& user, std::int32_t id) {
    NotifyTooltipText question = {};
    question.hdr = {nullptr, reinterpret_cast<std::uintptr_t>(user.Control(id)), kTtnGetDispInfo};
    question.lpszText = question.szText;
    question.szText[0] = u'#';
    windows().Deliver(user.dialog(), kWmNotify, 0, reinterpret_cast<std::intptr_t>(&question));
    return question.lpszText == nullptr ? u"(null)" : question.lpszText;
  }

  headless::HeadlessWindows& windows() { return world.platform.windows; }
  const std::vector<headless::HeadlessWindows::Box>& boxes() { return windows().boxes; }
  static std::u16string Text(std::uint32_t id) { return EnglishStrings().at(id); }

  TestWorld world;
  UIContext context = {};
};

}  // namespace ostrel::test
