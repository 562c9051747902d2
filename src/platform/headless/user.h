// A user in front of one dialog: does what a hand does, and sees what an eye sees.
//
// What a hand can't do fails: a control that isn't there, is hidden or is disabled, or stands in a
// dialog that is, is neither clicked nor typed into, and the verb's result tells so. Whatever the
// dialog does in answer to a verb happens within it. None of this asks the fault plan.
#pragma once

#include "platform/headless/headless_platform.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::headless {

class User {
 public:
  User(HeadlessPlatform& platform, WindowHandle dialog)
      : windows_(platform.windows),
        graphics_(platform.graphics),
        modules_(platform.modules),
        dialog_(dialog) {}

  WindowHandle dialog() const { return dialog_; }
  WindowHandle Control(std::int32_t id) const { return windows_.ControlOf(dialog_, id); }

  // ---- What a hand does

  // Clicks a button, a check box, a radio button, or a static control that tells of clicks. The
  // focus goes there first.
  [[nodiscard]] bool Click(std::int32_t id);
  // Goes to an edit, or to a combo box with one, selects all in it and types each character; an
  // empty text deletes. Stops with false when the dialog takes the focus or the edit away.
  [[nodiscard]] bool Type(std::int32_t id, std::u16string_view text);
  // Types behind what is there.
  [[nodiscard]] bool AppendTyping(std::int32_t id, std::u16string_view text);
  // Selects all and pastes: one change for the whole text. Even an edit for digits takes it.
  [[nodiscard]] bool Paste(std::int32_t id, std::u16string_view text);
  // Opens a combo box and picks a row, or picks one in a list box. Picking the row that is selected
  // already is told like any other pick. A combo box's edit shows the row once all is told.
  [[nodiscard]] bool Choose(std::int32_t id, std::int32_t row);
  // One press of a spin control's arrow; an edit that is its buddy gets the focus.
  [[nodiscard]] bool SpinUp(std::int32_t id) { return Spin(id, true); }
  [[nodiscard]] bool SpinDown(std::int32_t id) { return Spin(id, false); }
  // Goes to a control by the keyboard, which selects all of an edit's text.
  [[nodiscard]] bool MoveFocus(std::int32_t id);
  // Moves the mouse onto the dialog's own area.
  void MoveMouse(Point clientPlace);
  // Moves the mouse onto a control and waits. Result: the text that a tooltip shows; empty when
  // none comes up.
  std::u16string HoverTip(std::int32_t id);
  // Presses F1 on a control.
  [[nodiscard]] bool PressHelp(std::int32_t id);
  // Makes the dialog draw a control that it has to draw, into a context of the control. Result:
  // what was drawn; nothing for a control that draws itself or isn't there.
  std::optional<std::vector<HeadlessGraphics::Copy>> Draw(std::int32_t id);
  // Asks the dialog for the height of an owner-drawn list's rows. Result: 0 for other controls.
  std::uint32_t Measure(std::int32_t id);

  // ---- What an eye sees. All of it is empty, false or -1 for a control that isn't there.

  bool Has(std::int32_t id) const { return Control(id) != nullptr; }
  std::u16string Text(std::int32_t id) const;
  bool Enabled(std::int32_t id) const;
  bool Shown(std::int32_t id) const;  // its own state, whatever the dialog's
  bool Checked(std::int32_t id) const;
  std::int32_t Selected(std::int32_t id) const;
  std::vector<std::u16string> ItemTexts(std::int32_t id) const;
  std::vector<std::uintptr_t> ItemData(std::int32_t id) const;
  // The resource id of the icon or bitmap that a control shows; 0 for none.
  std::uint32_t Image(std::int32_t id) const;
  std::int32_t Position(std::int32_t id) const;  // of a spin control
  // The id of the dialog's control that has the focus; 0 when none of them has it.
  std::int32_t Focus() const;
  std::size_t Invalidations(std::int32_t id) const;
  // The selected stretch of an edit, or of a combo box's.
  std::pair<std::size_t, std::size_t> Selection(std::int32_t id) const;

 private:
  const Window* Find(std::int32_t id) const { return windows_.Find(Control(id)); }
  // Null when there is no such control, of that kind, within reach.
  Window* Reach(std::int32_t id);
  Window* Reach(std::int32_t id, WindowKind kind);
  bool Spin(std::int32_t id, bool upper);
  // Whether the focus went to something that takes a text.
  bool GoToText(std::int32_t id);
  bool TypeEach(WindowHandle edit, std::u16string_view text);
  // Looks at both before it asks the dialog, which may change them.
  std::u16string AskTip(const Window& tooltip, const Tool& tool);

  HeadlessWindows& windows_;
  HeadlessGraphics& graphics_;
  HeadlessModules& modules_;
  WindowHandle dialog_;
};

}  // namespace ostrel::headless
