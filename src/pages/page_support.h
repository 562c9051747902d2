// Small services for every page: its context, its captions and lists, its help, and what a change
// by the user does beside the change.
//
// A page's window data holds the context. Where it holds none, nothing of a record is touched and
// no help opens; a list then shows its missing texts as "id:%d missing!". A control that the dialog
// lacks is passed over, and so is a caption that the language lacks.
#pragma once

#include "core/page_state_table.h"
#include "core/ui_context.h"
#include "platform/window_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// What a message's word points at. Words of messages are numbers, whatever they carry.
template <typename T>
T* PointedAt(std::intptr_t word) {
  return reinterpret_cast<T*>(word);  // NOLINT(performance-no-int-to-ptr): the platform's way
}

// The context that a page's window remembers; may be null.
UIContext* PageContext(WindowHandle page);

// For WM_INITDIALOG, whose lParam is the page's description: remembers its context in the window.
// Result: the context.
UIContext* RememberContext(WindowHandle page, std::intptr_t lParam);

// ---- Messages -----------------------------------------------------------------------------------

// Answers a message to a page by `answer(context, state)`: 0 where the window remembers no context,
// or where there is no memory for the state. WM_INITDIALOG brings the context.
template <typename State, typename Answer>
std::intptr_t AnswerMessage(PageSlot slot, WindowHandle page, std::uint32_t message,
                            std::intptr_t lParam, Answer answer) {
  UIContext* context = message == kWmInitDialog ? RememberContext(page, lParam) : PageContext(page);
  State* state = context == nullptr ? nullptr : GetPageState<State>(slot);
  return state == nullptr ? 0 : answer(*context, *state);
}

// The calling thread's state of a page whose dialog stands; null when there is none. A state isn't
// made for the question.
template <typename State>
State* LivePageState(PageSlot slot) {
  State* state = PageStatePlace(slot) == nullptr ? nullptr : GetPageState<State>(slot);
  return state == nullptr || state->dialog == nullptr ? nullptr : state;
}

// A page without a topic of its own leaves the sheet's Help button alone.
inline constexpr std::uint32_t kNoHelpTopic = 0;

// What all pages answer alike: PSN_APPLY, PSN_RESET and PSN_HELP. Result: the dialog procedure's
// answer; 0 for any other code.
std::intptr_t AnswerSheetNotify(WindowHandle page, UIContext& context, std::uint32_t code,
                                std::uint32_t helpTopic);

// ---- Controls and texts -------------------------------------------------------------------------

struct CaptionRow {
  std::int32_t control;
  std::uint32_t stringId;
};

// Gives controls their captions, each cut at 259 characters.
void SetCaptions(WindowHandle dialog, ModuleHandle module, std::span<const CaptionRow> rows);

void ShowControl(WindowHandle dialog, std::int32_t control, bool show);
void EnableControl(WindowHandle dialog, std::int32_t control, bool enable);

struct ComboRow {
  std::uint32_t stringId;
  std::int16_t value;
};

// Empties a combo box, adds the rows, each with its value as item data, and selects the row at the
// place `selected`. Texts come from the page's language library.
void FillCombo(WindowHandle page, std::int32_t control, std::span<const ComboRow> rows,
               std::int32_t selected);

// Adds one row behind those that a combo box has. One that can't be added is left out.
void AddComboRow(WindowHandle dialog, std::int32_t control, const char16_t* text,
                 std::int16_t value);

// Selects the row of a value. A value without a row clears the selection.
void SelectComboValue(WindowHandle dialog, std::int32_t control, std::int16_t value);

// The value of the row that is selected. Result: false when none is.
bool SelectedComboValue(WindowHandle dialog, std::int32_t control, std::int16_t* value);

// How wide a line of text is in a control's own font, pixels; 0 when that can't be told.
std::int32_t TextWidth(WindowHandle control, const char16_t* text);

// Whether the name of the Letter paper, in the page's language, holds no comma.
bool PaperNameHasNoComma(WindowHandle page);

// ---- Changes ------------------------------------------------------------------------------------

// Tells the sheet that the page has a change to apply.
void SetSheetChanged(WindowHandle page);

// The name that a favourite takes once a setting was changed by hand. Result: its length, 0 with
// an empty name when the language has no such text.
int LoadUntitledName(WindowHandle page, std::span<char16_t> name);

// The same name, or "Untitled" when the language has no such text.
void ReadUntitledName(WindowHandle page, std::span<char16_t> name);

// How a page writes that name. The limits are to stay as they are.
enum class UntitledRule {
  kWhenDifferent,  // the print options page: only a name that differs, with up to 260 characters,
                   // of which the field takes what it has room for
  kAlwaysShort,    // the layout page and the watermark page: in any case, with up to 24 characters
};

// After a user's change to a setting: the record no longer claims to be a favourite. "Untitled"
// stands in for a text that the language lacks.
void MarkUntitled(WindowHandle page, UntitledRule rule);

// The same for pages that leave the name alone when the language has no text for it: with up to 260
// characters, of which the field takes what it has room for. Result: whether there was a text.
bool NameUntitled(WindowHandle page);

// ---- Help ---------------------------------------------------------------------------------------

struct HelpPair {
  std::int32_t control;
  std::uint32_t context;
};

// PSN_HELP: opens the help at the page's own topic.
void ShowPageHelp(WindowHandle page, std::uint32_t context);

// WM_HELP, whose lParam tells a control: opens the help at its topic. A control without a pair has
// none. Result: whether it had one.
bool ShowControlHelp(WindowHandle page, std::intptr_t lParam, std::span<const HelpPair> pairs);

}  // namespace ostrel
