// Wrappers of one dialog control each: what a control may hold, what happens when it holds
// something else, and which controls depend on it. A page's state holds them by value.
//
// A wrapper is made unattached and becomes live through Attach; attaching again, to the same page
// opened anew, overwrites what was there. A control that the dialog lacks is no error: each later
// call simply fails at the platform. A wrapper owns nothing of the window system and no child.
#pragma once

#include "core/heap_block.h"
#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

inline constexpr std::int32_t kNoControl = -1;

// Units that are read of any edit, with the terminator.
inline constexpr std::size_t kEditTextUnits = 260;

// What a check of an edit's text answers.
inline constexpr int kTextStands = 1;
inline constexpr int kTextRefused = -1;

class DlgControl {
 public:
  DlgControl() = default;
  DlgControl(const DlgControl&) = delete;
  DlgControl& operator=(const DlgControl&) = delete;

  virtual void Attach(WindowHandle dialog, std::int32_t id);
  virtual void Enable(bool enable);
  virtual ~DlgControl() = default;

  std::int32_t id() const { return id_; }  // kNoControl until attached
  WindowHandle window() const { return window_; }
  WindowHandle dialog() const { return dialog_; }

  // Sends the control's window a message.
  std::intptr_t Send(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) const;

 protected:
  void EnableOwnWindow(bool enable) const;
  // Gives the control the focus. A control that isn't there takes it from no other.
  void Focus() const;

 private:
  std::int32_t id_ = kNoControl;
  WindowHandle window_ = nullptr;
  WindowHandle dialog_ = nullptr;
};

// ---- Edits --------------------------------------------------------------------------------------

class EditBase : public DlgControl {
 public:
  // Any text stands. Result: 0.
  virtual int Validate();
  // The text, cut to the buffer and to kEditTextUnits. Result: its length.
  virtual int GetText(std::span<char16_t> buffer);
  // Null leaves the text as it is.
  virtual void SetText(const char16_t* text);
};

class TextEdit : public EditBase {
 public:
  // kTextStands when something beside blanks at both ends is there and isn't longer than
  // `maximumLength`; otherwise the control takes the focus, and kTextRefused.
  int Validate() override;
  // The text without the blanks at both ends, cut to the buffer.
  int GetText(std::span<char16_t> buffer) override;

  std::int32_t maximumLength = 0;
};

// What a numeric edit may hold.
struct NumberRange {
  float maximum = 0;
  float minimum = 0;
  std::int32_t precision = 0;          // digits allowed behind the decimal separator
  std::int32_t maximumTextLength = 0;  // units
  char16_t lastGoodText[kEditTextUnits] = {};
  std::int8_t allowsSign = 0;  // not 0: a leading "-" may stand
};

class NumberEdit : public DlgControl {
 public:
  virtual int Validate();
  virtual int Spare();

  NumberRange range;

 protected:
  NumberEdit() = default;

  // The edit's text, cut to the buffer.
  std::u16string_view ReadText(std::span<char16_t, kEditTextUnits> buffer) const;
  void ShowLastGoodText();
  // What a typed text meets before its characters are looked at: its length, and blanks at both
  // ends. Result: kTextStands or kTextRefused when that decides, with all done that goes with it;
  // else 0.
  int CheckLengthTyped(std::u16string_view text);
  // The last good text comes back in the place of what was typed, all of it selected. Result:
  // kTextRefused.
  int RefuseTyped();
  // Takes the last change back.
  void Undo();

  // What the edit itself writes or takes back is a change too, which is checked in turn. Were that
  // refused as well, the edit would write and be asked without end: two texts that are both too
  // long, a kept number whose separator is another language's, an end of a range outside of it. So
  // while it writes it writes no more.
  bool writing_ = false;

 private:
  bool undoing_ = false;
};

class IntEdit : public NumberEdit {
 public:
  // For the moment when the control is left: puts a number outside the range to its nearer end.
  int Validate() override;
  // For each change while the user types.
  int ChangeCheck();
  // The number in the box, within the range or not. Result: kTextStands with the value, or
  // kTextRefused, with the value as it was.
  int GetValue(std::int32_t* value);
  void SetValue(std::int32_t value);
};

// Numbers are shown with a comma when the process-wide flag DecimalCommaLanguage is set.
class DecimalEdit : public NumberEdit {
 public:
  int Validate() override;
  int ChangeCheck();
  // The number in the box plus 0.00001, so that a later truncation doesn't lose its last digit.
  int GetValue(float* value);
  void SetValue(float value);
};

// ---- Spins --------------------------------------------------------------------------------------

// A held button never accelerates.
template <typename Edit>
class SpinBase : public DlgControl {
 public:
  void Attach(WindowHandle dialog, std::int32_t id) override;
  // `edit` isn't owned.
  virtual void SetBuddy(Edit* edit) = 0;
  // Moves the buddy's number by a step. Result: whether it did; a step out of the range leaves the
  // text alone.
  virtual bool Step(bool up) = 0;
};

class IntSpin : public SpinBase<IntEdit> {
 public:
  void SetBuddy(IntEdit* edit) override;  // in steps of 1
  bool Step(bool up) override;            // from 0 when the text is no number

 private:
  IntEdit* buddy_ = nullptr;
  std::int32_t step_ = 0;
};

class FloatSpin : public SpinBase<DecimalEdit> {
 public:
  void SetBuddy(DecimalEdit* edit) override;  // in steps of the last digit that the edit shows
  bool Step(bool up) override;                // from 0.001 when the text is no number

 private:
  DecimalEdit* buddy_ = nullptr;
  float step_ = 0;
};

extern template class SpinBase<IntEdit>;
extern template class SpinBase<DecimalEdit>;

// ---- Groups -------------------------------------------------------------------------------------

// Controls that are enabled together. Children aren't owned; they are siblings in the same page
// state, and best added where that state is constructed, since a page may be attached many times.
class ControlGroup : public DlgControl {
 public:
  void Enable(bool enable) override;  // each child, and not its own window

  // Null is passed over. Without room for one more the child is left out, which a debug line tells.
  void AddChild(DlgControl* control);

 protected:
  std::span<DlgControl* const> children() const { return {children_.get(), count_}; }
  void EnableChildren(bool enable);

 private:
  bool Grow();

  HeapBlock<DlgControl*> children_;
  std::size_t count_ = 0;
  std::size_t capacity_ = 0;
};

// A radio button or a check box, and as its children the controls that are live only while it is
// checked.
class RadioButton : public ControlGroup {
 public:
  void Enable(bool enable) override;  // the children, then its own window
  // Checks the button when the id is its own, and enables the children exactly then. It doesn't
  // uncheck the button of another id.
  virtual void Select(std::int32_t id);

  // Sets the state, and enables the children by it. A button that is in that state already does
  // nothing at all, even if its children are out of step.
  void SetCheck(bool on);
  bool IsChecked() const;
};

class RadioGroup : public ControlGroup {
 public:
  // Checks the child of that id and unchecks the others.
  virtual void Select(std::int32_t id);

  void AddChild(RadioButton* button) { ControlGroup::AddChild(button); }
};

}  // namespace ostrel
