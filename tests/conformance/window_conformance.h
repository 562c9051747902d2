// What every platform's dialogs, controls and drawing must do alike: the second suite beside
// platform_conformance.h, whose cases play a user too.
//
// A side writes a host and instantiates the suite with it:
//
//   struct Host {
//     Platform& platform();
//     ModuleHandle dialogs();  // a module with the dialogs of conformance_dialogs.rc
//     // Called from WM_INITDIALOG: sends the dialog kDialogIsOpen once it runs.
//     void WhenOpen(WindowHandle dialog);
//     void Type(WindowHandle dialog, std::int32_t id, std::u16string_view text);  // replaces all
//     void Choose(WindowHandle dialog, std::int32_t id, std::int32_t row);
//     void Click(WindowHandle dialog, std::int32_t id);
//     WindowHandle focus();
//   };
//   INSTANTIATE_TYPED_TEST_SUITE_P(Name, WindowConformance, Host);
#pragma once

#include "platform/platform.h"
#include "support/bitmap_rows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrel {

inline constexpr std::uint32_t kDialogIsOpen = 0x8000;  // WM_APP
inline constexpr std::uint32_t kConformanceDialog = 201;

// The controls of the dialog.
inline constexpr std::int32_t kConformanceEdit = 11;
inline constexpr std::int32_t kConformanceBox = 22;
inline constexpr std::int32_t kConformanceOne = 31;
inline constexpr std::int32_t kConformanceTwo = 32;
inline constexpr std::int32_t kConformanceOther = 33;
inline constexpr std::int32_t kConformanceCombo = 40;

template <typename Host>
class WindowConformance : public testing::Test {
 protected:
  using Visit = std::function<void(WindowHandle)>;

  WindowConformance() { current = this; }
  ~WindowConformance() override { current = nullptr; }

  Platform& platform() { return host_.platform(); }
  Windows& windows() { return platform().windows; }
  Graphics& graphics() { return platform().graphics; }

  // Runs the dialog, and the visit in it as soon as it is open. A visit that ends it with nothing
  // else ends it with 77.
  std::intptr_t Run(WindowHandle owner, Visit visit) {
    visits_.push_back(std::move(visit));
    const std::intptr_t result =
        windows().DialogBoxParamW(host_.dialogs(), kConformanceDialog, owner, &Procedure, 17);
    visits_.pop_back();
    return result;
  }

  WindowHandle Control(WindowHandle dialog, std::int32_t id) {
    return windows().GetDlgItem(dialog, id);
  }
  std::intptr_t Send(WindowHandle dialog, std::int32_t id, std::uint32_t message,
                     std::uintptr_t wParam = 0, std::intptr_t lParam = 0) {
    return windows().SendMessageW(Control(dialog, id), message, wParam, lParam);
  }
  void Fill(WindowHandle dialog) {
    for (const char16_t* text : {u"Banana", u"Apple", u"Cherry"}) {
      Send(dialog, kConformanceCombo, kCbAddString, 0, reinterpret_cast<std::intptr_t>(text));
    }
  }
  std::u16string Text(WindowHandle dialog, std::int32_t id) {
    std::array<char16_t, 64> text = {};
    windows().GetWindowTextW(Control(dialog, id), text.data(), static_cast<int>(text.size()));
    return text.data();
  }
  // "id code" of each command since the last call.
  std::vector<std::string> TakeCommands() { return std::exchange(commands_, {}); }

  // ---- Drawing

  // A picture in memory that a context holds.
  struct Picture {
    Graphics* graphics;
    DeviceContext screen;
    Size size;
    DeviceContext context = graphics->CreateCompatibleDC(screen);
    GdiObject bitmap = graphics->CreateCompatibleBitmap(screen, size.width, size.height);
    GdiObject before = graphics->SelectObject(context, bitmap);

    Picture(Graphics& drawing, DeviceContext model, Size pixels)
        : graphics(&drawing), screen(model), size(pixels) {
      EXPECT_NE(before, nullptr);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
      EXPECT_NE(graphics->SelectObject(context, before), nullptr);
      EXPECT_TRUE(graphics->DeleteObject(bitmap));
      EXPECT_TRUE(graphics->DeleteDC(context));
    }
    // Its rows as digits of the red byte, "#" for 255.
    std::vector<std::string> Rows() {
      graphics->SelectObject(context, before);
      BitmapInfoHeader form = test::Form(size.width, size.height);
      const auto count = static_cast<std::uint32_t>(size.height);
      std::vector<std::uint8_t> bytes(test::RowBytes(size.width) * count);
      EXPECT_EQ(graphics->GetDIBits(screen, bitmap, 0, count, bytes.data(), &form), size.height);
      graphics->SelectObject(context, bitmap);
      std::vector<std::string> rows;
      for (std::int32_t y = size.height - 1; y >= 0; --y) {
        const std::uint8_t* row =
            bytes.data() + test::RowBytes(size.width) * static_cast<std::size_t>(y);
        std::string digits;
        for (std::int32_t x = 0; x < size.width; ++x) {
          const std::uint8_t red = row[static_cast<std::size_t>(x) * 3 + 2];
          digits += red == 0xFF ? '#' : static_cast<char>('0' + red);
        }
        rows.push_back(digits);
      }
      return rows;
    }
  };
  // Six columns by three rows, numbered.
  void Number(Picture& picture) {
    const std::vector<std::uint8_t> rows =
        test::NumberedRows(picture.size.width, picture.size.height);
    const Rect all = {0, 0, picture.size.width, picture.size.height};
    EXPECT_NE(
        graphics().StretchDIBits(picture.context, all, all, rows.data(),
                                 test::Form(picture.size.width, picture.size.height), kRasterCopy),
        0);
  }
  using Rows = std::vector<std::string>;

  // A copy of the numbered picture, and what it leaves in the target.
  struct Copy {
    const char* name;
    Rect place;
    Rect from;
    Rows rows;
  };
  // Makes each copy by `draw(target, source, copy)`, which tells whether it drew, in a picture of
  // its own. `way` names the drawing.
  template <typename Draw>
  void ExpectCopies(const std::vector<Copy>& copies, const char* way, Size target, Draw draw) {
    const DeviceContext screen = graphics().GetDC(nullptr);
    for (const Copy& copy : copies) {
      SCOPED_TRACE(testing::Message() << copy.name << ", " << way);
      Picture from(graphics(), screen, {6, 3});
      Picture into(graphics(), screen, target);
      Number(from);
      EXPECT_TRUE(draw(into, from, copy));
      EXPECT_EQ(into.Rows(), copy.rows);
    }
    EXPECT_EQ(graphics().ReleaseDC(nullptr, screen), 1);
  }
  // The same numbered picture, out of memory.
  bool CopyNumberedRows(Picture& target, const Copy& copy) {
    return graphics().StretchDIBits(target.context, copy.place, copy.from,
                                    test::NumberedRows(6, 3).data(), test::Form(6, 3),
                                    kRasterCopy) != 0;
  }

  Host host_;
  std::vector<Visit> visits_;
  std::vector<std::string> commands_;
  Visit onCommand_;

 private:
  static inline WindowConformance* current = nullptr;

  static std::intptr_t Procedure(WindowHandle dialog, std::uint32_t message, std::uintptr_t wParam,
                                 std::intptr_t lParam) {
    WindowConformance* test = current;
    if (test == nullptr) {
      return 0;
    }
    if (message == kWmInitDialog) {
      EXPECT_EQ(lParam, 17);
      test->host_.WhenOpen(dialog);
      return 1;
    }
    if (message == kDialogIsOpen) {
      test->commands_.clear();
      const Visit visit = test->visits_.back();  // which may run another dialog
      visit(dialog);
      test->windows().EndDialog(dialog, std::exchange(test->result_, 77));
    } else if (message == kWmCommand) {
      test->HearCommand(dialog, wParam);
    }
    return 0;
  }
  void HearCommand(WindowHandle dialog, std::uintptr_t wParam) {
    const std::uint16_t id = LowWord(wParam);
    std::array<char, 24> line = {};
    std::snprintf(line.data(), line.size(), "%u %x", id, HighWord(wParam));
    commands_.emplace_back(line.data());
    if (onCommand_) {
      onCommand_(dialog);
    }
    if (HighWord(wParam) == kBnClicked && (id == kIdOk || id == kIdCancel)) {
      result_ = 100 + id;
    }
  }

  std::intptr_t result_ = 77;
};

TYPED_TEST_SUITE_P(WindowConformance);

// ---- Dialogs ------------------------------------------------------------------------------------

TYPED_TEST_P(WindowConformance, ADialogTellsWhatItWasEndedWith) {
  EXPECT_EQ(this->Run(nullptr, [](WindowHandle) {}), 77);
  EXPECT_EQ(this->Run(nullptr,
                      [this](WindowHandle dialog) {
                        EXPECT_TRUE(this->windows().EndDialog(dialog, 5));
                        EXPECT_TRUE(this->windows().EndDialog(dialog, 6));
                      }),
            77);  // the last ending counts
}

TYPED_TEST_P(WindowConformance, AButtonIsACommand) {
  EXPECT_EQ(this->Run(nullptr, [this](WindowHandle dialog) { this->host_.Click(dialog, kIdOk); }),
            101);
}

TYPED_TEST_P(WindowConformance, ADialogLocksItsOwnerAndHasTheFocusUntilItEnds) {
  this->Run(nullptr, [this](WindowHandle owner) {
    const WindowHandle box = this->Control(owner, kConformanceBox);
    this->windows().SetFocus(box);
    const std::intptr_t result = this->Run(box, [&](WindowHandle dialog) {
      EXPECT_FALSE(this->windows().IsWindowEnabled(owner));
      EXPECT_EQ(this->windows().GetParent(dialog), owner);
      EXPECT_EQ(this->host_.focus(), this->Control(dialog, kConformanceEdit));
      EXPECT_TRUE(this->windows().EndDialog(dialog, 1));
      EXPECT_TRUE(this->windows().IsWindowEnabled(owner));
      EXPECT_EQ(this->host_.focus(), box);
      EXPECT_NE(this->Control(dialog, kIdOk), nullptr);  // it still lives
    });
    EXPECT_EQ(result, 77);
    EXPECT_TRUE(this->windows().IsWindowEnabled(owner));
    EXPECT_EQ(this->host_.focus(), box);
  });
}

TYPED_TEST_P(WindowConformance, ADialogWithoutATemplateIsNotMade) {
  const std::intptr_t result = this->windows().DialogBoxParamW(
      this->host_.dialogs(), 299, nullptr,
      [](WindowHandle, std::uint32_t, std::uintptr_t, std::intptr_t) { return std::intptr_t{0}; },
      0);
  EXPECT_EQ(result, -1);
  EXPECT_FALSE(this->windows().EndDialog(nullptr, 1));
}

// ---- Combo boxes with an edit -------------------------------------------------------------------

TYPED_TEST_P(WindowConformance, AComboBoxIsSilentAboutWhatCodeDoes) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    const auto send = [&](std::uint32_t message, std::uintptr_t wParam = 0,
                          std::intptr_t lParam = 0) {
      return this->Send(dialog, kConformanceCombo, message, wParam, lParam);
    };
    const auto shown = [&] { return this->Text(dialog, kConformanceCombo); };
    this->Fill(dialog);
    EXPECT_EQ(send(kCbSetCurSel, 1), 1);
    EXPECT_EQ(shown(), u"Apple");
    EXPECT_TRUE(
        this->windows().SetWindowTextW(this->Control(dialog, kConformanceCombo), u"Cherry"));
    EXPECT_EQ(shown(), u"Cherry");
    EXPECT_EQ(send(kCbGetCurSel), 1);
    EXPECT_EQ(send(kCbSetCurSel, ~std::uintptr_t{0}), kCbErr);
    EXPECT_EQ(shown(), u"");
    EXPECT_EQ(send(kCbSetCurSel, 1), 1);
    EXPECT_EQ(send(kCbDeleteString, 1), 2);
    EXPECT_EQ(send(kCbGetCurSel), -1);
    EXPECT_EQ(shown(), u"Apple");
    send(kCbResetContent);
    EXPECT_EQ(shown(), u"");
    EXPECT_TRUE(this->TakeCommands().empty());
  });
}

TYPED_TEST_P(WindowConformance, AComboBoxTellsOfEachCharacterAndHasNoRowThen) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    this->Fill(dialog);
    this->Send(dialog, kConformanceCombo, kCbSetCurSel, 1);
    this->windows().SetFocus(this->Control(dialog, kConformanceCombo));
    EXPECT_EQ(this->TakeCommands(), (std::vector<std::string>{"11 200", "40 3"}));
    std::vector<std::intptr_t> selections;
    this->onCommand_ = [&](WindowHandle) {
      selections.push_back(this->Send(dialog, kConformanceCombo, kCbGetCurSel));
    };
    this->host_.Type(dialog, kConformanceCombo, u"Ap");
    this->onCommand_ = {};
    EXPECT_EQ(this->TakeCommands(), (std::vector<std::string>{"40 6", "40 5", "40 6", "40 5"}));
    EXPECT_EQ(selections, (std::vector<std::intptr_t>{1, -1, -1, -1}));
    EXPECT_EQ(this->Text(dialog, kConformanceCombo), u"Ap");
    this->windows().SetFocus(this->Control(dialog, kConformanceEdit));
    EXPECT_EQ(this->TakeCommands(), (std::vector<std::string>{"40 a", "40 4", "11 100"}));
  });
}

TYPED_TEST_P(WindowConformance, AComboBoxShowsAChosenRowAfterItWasTold) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    this->Fill(dialog);
    this->windows().SetFocus(this->Control(dialog, kConformanceCombo));
    this->windows().SetWindowTextW(this->Control(dialog, kConformanceCombo), u"old");
    this->TakeCommands();
    std::u16string told;
    std::intptr_t selected = -1;
    this->onCommand_ = [&](WindowHandle) {
      told = this->Text(dialog, kConformanceCombo);
      selected = this->Send(dialog, kConformanceCombo, kCbGetCurSel);
    };
    this->host_.Choose(dialog, kConformanceCombo, 2);
    this->onCommand_ = {};
    EXPECT_EQ(this->TakeCommands(), (std::vector<std::string>{"40 7", "40 9", "40 8", "40 1"}));
    EXPECT_EQ(told, u"old");
    EXPECT_EQ(selected, 2);
    EXPECT_EQ(this->Text(dialog, kConformanceCombo), u"Cherry");
  });
}

TYPED_TEST_P(WindowConformance, AComboBoxFindsRowsLimitsTypingAndKeepsItsWidth) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    const auto send = [&](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
      return this->Send(dialog, kConformanceCombo, message, wParam, lParam);
    };
    const auto find = [&](const char16_t* text) {
      return send(kCbFindStringExact, ~std::uintptr_t{0}, reinterpret_cast<std::intptr_t>(text));
    };
    this->Fill(dialog);
    EXPECT_EQ(find(u"aPPLE"), 1);
    EXPECT_EQ(find(u"Appl"), kCbErr);
    EXPECT_EQ(find(u""), kCbErr);
    EXPECT_EQ(send(kCbGetLbTextLen, 1, 0), 5);
    EXPECT_EQ(send(kCbGetLbTextLen, 7, 0), kCbErr);
    send(kCbLimitText, 4, 0);  // systems differ in the answer
    this->host_.Type(dialog, kConformanceCombo, u"12345");
    EXPECT_EQ(this->Text(dialog, kConformanceCombo), u"1234");
    EXPECT_EQ(send(kCbSetEditSel, 0, static_cast<std::intptr_t>(MakeWords(0, 0xFFFF))), 1);
    Rect place = {};
    this->windows().GetWindowRect(this->Control(dialog, kConformanceCombo), &place);
    EXPECT_EQ(send(kCbGetDroppedWidth, 0, 0), place.Width());
    EXPECT_EQ(send(kCbSetDroppedWidth, 300, 0), 300);
    EXPECT_EQ(send(kCbSetDroppedWidth, 3, 0), place.Width());
  });
}

// ---- Edits and buttons --------------------------------------------------------------------------

TYPED_TEST_P(WindowConformance, AnEditThatIsOnlyToBeReadTakesNoTyping) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    EXPECT_EQ(this->Send(dialog, kConformanceEdit, kEmSetReadOnly, 1), 1);
    this->host_.Type(dialog, kConformanceEdit, u"x");
    EXPECT_EQ(this->Text(dialog, kConformanceEdit), u"");
    this->windows().SetWindowTextW(this->Control(dialog, kConformanceEdit), u"code");
    EXPECT_EQ(this->Text(dialog, kConformanceEdit), u"code");
    EXPECT_EQ(this->Send(dialog, kConformanceEdit, kEmSetReadOnly, 0), 1);
    this->host_.Type(dialog, kConformanceEdit, u"x");
    EXPECT_EQ(this->Text(dialog, kConformanceEdit), u"x");
  });
}

TYPED_TEST_P(WindowConformance, AutomaticButtonsChangeBeforeTheyTell) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    const auto checked = [&](std::int32_t id) {
      return this->windows().IsDlgButtonChecked(dialog, id);
    };
    std::uint32_t whenTold = 0;
    this->onCommand_ = [&](WindowHandle) { whenTold = checked(kConformanceBox); };
    this->host_.Click(dialog, kConformanceBox);
    this->onCommand_ = {};
    EXPECT_EQ(whenTold, kBstChecked);
    for (const std::int32_t id : {kConformanceOther, kConformanceOne, kConformanceTwo}) {
      this->host_.Click(dialog, id);
    }
    EXPECT_EQ(checked(kConformanceOne), kBstUnchecked);
    EXPECT_EQ(checked(kConformanceTwo), kBstChecked);
    EXPECT_EQ(checked(kConformanceOther), kBstChecked);
    this->Send(dialog, kConformanceOne, kBmSetCheck, 1);  // frees no other
    EXPECT_EQ(checked(kConformanceTwo), kBstChecked);
    EXPECT_EQ(this->Send(dialog, kConformanceOne, kBmGetCheck), 1);
  });
}

TYPED_TEST_P(WindowConformance, AControlsFontMeasuresTexts) {
  this->Run(nullptr, [this](WindowHandle dialog) {
    const WindowHandle combo = this->Control(dialog, kConformanceCombo);
    const std::intptr_t font = this->Send(dialog, kConformanceCombo, kWmGetFont);
    EXPECT_NE(font, 0);
    const DeviceContext context = this->graphics().GetDC(combo);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the handle travels as a number.
    const auto object = reinterpret_cast<GdiObject>(font);
    const GdiObject before = this->graphics().SelectObject(context, object);
    EXPECT_NE(before, nullptr);
    Size narrow = {};
    Size wide = {};
    EXPECT_TRUE(this->graphics().GetTextExtentPointW(context, u"Letter", 3, &narrow));
    EXPECT_TRUE(this->graphics().GetTextExtentPointW(context, u"Letter", 6, &wide));
    EXPECT_GT(narrow.width, 0);
    EXPECT_GT(wide.width, narrow.width);
    EXPECT_EQ(wide.height, narrow.height);
    EXPECT_EQ(this->graphics().SelectObject(context, before), object);
    EXPECT_EQ(this->graphics().ReleaseDC(combo, context), 1);
  });
}

// ---- Drawing ------------------------------------------------------------------------------------

TYPED_TEST_P(WindowConformance, RowsOfMemoryAreDrawnAndReadBack) {
  Graphics& graphics = this->graphics();
  const DeviceContext screen = graphics.GetDC(nullptr);
  {
    typename TestFixture::Picture picture(graphics, screen, {6, 3});
    this->Number(picture);
    EXPECT_EQ(picture.Rows(), (std::vector<std::string>{"123456", "234567", "345678"}));
    // The first row of memory is the last of the picture.
    const std::vector<std::uint8_t> rows = test::NumberedRows(6, 3);
    EXPECT_NE(graphics.StretchDIBits(picture.context, {0, 0, 6, 1}, {0, 0, 6, 1}, rows.data(),
                                     test::Form(6, 3), kRasterCopy),
              0);
    EXPECT_EQ(picture.Rows(), (std::vector<std::string>{"345678", "234567", "345678"}));
    EXPECT_NE(graphics.StretchDIBits(picture.context, {5, 2, -1, -1}, {0, 0, 6, 3}, rows.data(),
                                     test::Form(6, 3), kRasterCopy),
              0);
    EXPECT_EQ(picture.Rows(), (std::vector<std::string>{"876543", "765432", "654321"}));
  }
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

TYPED_TEST_P(WindowConformance, ABitmapTellsItsFormAndASingleRow) {
  Graphics& graphics = this->graphics();
  const DeviceContext screen = graphics.GetDC(nullptr);
  const GdiObject bitmap = graphics.CreateCompatibleBitmap(screen, 3, 2);
  BitmapInfoHeader form = {};
  form.biSize = sizeof(form);
  EXPECT_NE(graphics.GetDIBits(screen, bitmap, 0, 0, nullptr, &form), 0);
  EXPECT_EQ(form.biWidth, 3);
  EXPECT_EQ(form.biHeight, 2);
  form = test::Form(3, 2);
  EXPECT_NE(graphics.GetDIBits(screen, bitmap, 0, 2, nullptr, &form), 0);
  EXPECT_EQ(form.biSizeImage, 24U);
  std::array<std::uint8_t, 24> rows;
  rows.fill(0xC5);
  EXPECT_EQ(graphics.GetDIBits(screen, bitmap, 1, 9, rows.data(), &form), 1);
  EXPECT_EQ(rows[0], 0);
  EXPECT_EQ(rows[12], 0xC5);
  EXPECT_EQ(graphics.GetDIBits(screen, nullptr, 0, 2, rows.data(), &form), 0);
  EXPECT_EQ(graphics.GetDIBits(nullptr, bitmap, 0, 2, rows.data(), &form), 0);
  EXPECT_TRUE(graphics.DeleteObject(bitmap));
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

TYPED_TEST_P(WindowConformance, CopiesAreStretchedTurnedAndCut) {
  const std::vector<typename TestFixture::Copy> copies = {
      {"same size", {1, 0, 6, 2}, {0, 0, 5, 2}, {"012345", "023456", "000000"}},
      {"turned by the place", {5, 2, -1, -1}, {0, 0, 6, 3}, {"876543", "765432", "654321"}},
      {"turned by the source", {0, 0, 6, 3}, {5, 0, -1, 3}, {"654321", "765432", "876543"}},
      {"shrunk", {0, 0, 3, 3}, {0, 0, 6, 3}, {"246000", "357000", "468000"}},
      {"shrunk a little", {0, 0, 5, 2}, {0, 0, 6, 3}, {"124560", "346780", "000000"}},
      {"grown", {0, 0, 6, 3}, {0, 0, 4, 2}, {"112334", "112334", "223445"}},
      {"partly outside", {-2, 0, 4, 3}, {0, 0, 6, 3}, {"345600", "456700", "567800"}},
      {"from partly outside", {0, 0, 6, 3}, {3, 0, 9, 3}, {"456000", "567000", "678000"}},
  };
  this->ExpectCopies(
      copies, "lines left out", {6, 3}, [this](auto& target, auto& source, const auto& copy) {
        EXPECT_NE(this->graphics().SetStretchBltMode(target.context, kStretchDeleteScans), 0);
        return this->graphics().StretchBlt(target.context, copy.place, source.context, copy.from);
      });
}

// A new context keeps the bits that all pixels have of those that come together.
TYPED_TEST_P(WindowConformance, ShrunkCopiesCombineWhatComesTogether) {
  // Out of "123456", "234567" and "345678".
  const std::vector<typename TestFixture::Copy> copies = {
      {"half as wide", {0, 0, 3, 3}, {0, 0, 6, 3}, {"004000", "246000", "040000"}},
      {"half as wide, turned", {2, 0, -1, 3}, {0, 0, 6, 3}, {"400000", "642000", "040000"}},
      {"less high", {0, 0, 6, 2}, {0, 0, 6, 3}, {"020446", "345678", "000000"}},
      {"less high, turned", {0, 1, 6, -1}, {0, 0, 6, 3}, {"345678", "020446", "000000"}},
      {"less wide and high", {0, 0, 3, 2}, {0, 0, 6, 3}, {"004000", "040000", "000000"}},
      {"a little less of both", {0, 0, 5, 2}, {0, 0, 6, 3}, {"020460", "344780", "000000"}},
  };
  this->ExpectCopies(
      copies, "a context", {6, 3}, [this](auto& target, auto& source, const auto& copy) {
        return this->graphics().StretchBlt(target.context, copy.place, source.context, copy.from);
      });
  this->ExpectCopies(copies, "rows of memory", {6, 3},
                     [this](auto& target, auto& /*source*/, const auto& copy) {
                       return this->CopyNumberedRows(target, copy);
                     });
}

// Whatever of a bitmap's way a mirrored context keeps, rows of memory are turned in it.
TYPED_TEST_P(WindowConformance, RowsOfMemoryAreTurnedInAMirroredContext) {
  const std::vector<typename TestFixture::Copy> copies = {
      {"same size", {0, 0, 6, 3}, {0, 0, 6, 3}, {"00654321", "00765432", "00876543"}},
      {"a part", {1, 0, 4, 1}, {2, 0, 5, 1}, {"00007650", "00000000", "00000000"}},
      {"shrunk", {0, 0, 3, 3}, {0, 0, 6, 3}, {"00000400", "00000642", "00000040"}},
      {"shrunk a little", {1, 0, 6, 3}, {0, 0, 6, 3}, {"00650210", "00764320", "00874430"}},
  };
  for (const std::uint32_t upright : {std::uint32_t{0}, kLayoutBitmapsUpright}) {
    this->ExpectCopies(copies, upright != 0 ? "bitmaps upright" : "bitmaps turned", {8, 3},
                       [&](auto& target, auto& /*source*/, const auto& copy) {
                         this->graphics().SetLayout(target.context, kLayoutRightToLeft | upright);
                         return this->CopyNumberedRows(target, copy);
                       });
  }
}

TYPED_TEST_P(WindowConformance, CopiesBetweenMirroredContextsAreTurned) {
  struct Case {
    std::uint32_t target;
    std::uint32_t source;
    const char* row;
  };
  const std::vector<Case> cases = {
      {0, 0, "03450000"},
      {0, kLayoutRightToLeft, "04320000"},
      {kLayoutRightToLeft, 0, "00005430"},
      {kLayoutRightToLeft, kLayoutRightToLeft, "00002340"},
  };
  Graphics& graphics = this->graphics();
  const DeviceContext screen = graphics.GetDC(nullptr);
  for (const Case& row : cases) {
    typename TestFixture::Picture source(graphics, screen, {6, 1});
    this->Number(source);
    graphics.SetLayout(source.context, row.source);
    for (const bool transparent : {false, true}) {
      typename TestFixture::Picture target(graphics, screen, {8, 1});
      graphics.SetLayout(target.context, row.target);
      const Rect place = {1, 0, 4, 1};
      EXPECT_TRUE(transparent ? graphics.TransparentBlt(target.context, place, source.context,
                                                        {2, 0}, 0x00FFFFFF)
                              : graphics.BitBlt(target.context, place, source.context, {2, 0}));
      EXPECT_EQ(target.Rows(), std::vector<std::string>{row.row})
          << row.target << " from " << row.source;
    }
  }
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

TYPED_TEST_P(WindowConformance, ShapesAreFilledAndFramed) {
  Graphics& graphics = this->graphics();
  const DeviceContext screen = graphics.GetDC(nullptr);
  const GdiObject pen = graphics.CreatePen(kPenSolid, 1, 7);
  for (const std::uint32_t layout : {std::uint32_t{0}, kLayoutRightToLeft}) {
    typename TestFixture::Picture picture(graphics, screen, {6, 4});
    graphics.SetLayout(picture.context, layout);
    EXPECT_TRUE(
        graphics.FillRect(picture.context, {0, 0, 2, 2}, graphics.GetStockObject(kWhiteBrush)));
    const GdiObject before = graphics.SelectObject(picture.context, pen);
    const GdiObject brush =
        graphics.SelectObject(picture.context, graphics.GetStockObject(kNullBrush));
    EXPECT_TRUE(graphics.Rectangle(picture.context, {1, 1, 6, 4}));
    graphics.SelectObject(picture.context, brush);
    graphics.SelectObject(picture.context, before);
    const std::vector<std::string> plain = {"##0000", "#77777", "070007", "077777"};
    const std::vector<std::string> mirrored = {"0000##", "77777#", "700070", "777770"};
    EXPECT_EQ(picture.Rows(), layout == 0 ? plain : mirrored);
  }
  EXPECT_TRUE(graphics.DeleteObject(pen));
  EXPECT_TRUE(graphics.DeleteObject(graphics.GetStockObject(kWhiteBrush)));
  EXPECT_NE(graphics.GetStockObject(kWhiteBrush), nullptr);
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

TYPED_TEST_P(WindowConformance, ABitmapIsInOneContextAtATime) {
  Graphics& graphics = this->graphics();
  const DeviceContext screen = graphics.GetDC(nullptr);
  {
    typename TestFixture::Picture picture(graphics, screen, {2, 2});
    const DeviceContext other = graphics.CreateCompatibleDC(screen);
    EXPECT_EQ(graphics.SelectObject(other, picture.bitmap), nullptr);
    EXPECT_EQ(graphics.SelectObject(screen, picture.bitmap), nullptr);
    EXPECT_TRUE(graphics.DeleteDC(other));
  }
  EXPECT_EQ(graphics.ReleaseDC(nullptr, screen), 1);
}

REGISTER_TYPED_TEST_SUITE_P(
    WindowConformance, ADialogTellsWhatItWasEndedWith, AButtonIsACommand,
    ADialogLocksItsOwnerAndHasTheFocusUntilItEnds, ADialogWithoutATemplateIsNotMade,
    AComboBoxIsSilentAboutWhatCodeDoes, AComboBoxTellsOfEachCharacterAndHasNoRowThen,
    AComboBoxShowsAChosenRowAfterItWasTold, AComboBoxFindsRowsLimitsTypingAndKeepsItsWidth,
    AnEditThatIsOnlyToBeReadTakesNoTyping, AutomaticButtonsChangeBeforeTheyTell,
    AControlsFontMeasuresTexts, RowsOfMemoryAreDrawnAndReadBack, ABitmapTellsItsFormAndASingleRow,
    CopiesAreStretchedTurnedAndCut, ShrunkCopiesCombineWhatComesTogether,
    RowsOfMemoryAreTurnedInAMirroredContext, CopiesBetweenMirroredContextsAreTurned,
    ShapesAreFilledAndFramed, ABitmapIsInOneContextAtATime);

}  // namespace ostrel
