#include "platform/headless/control_classes.h"

#include "platform/headless/edit_class.h"
#include "platform/headless/headless_graphics.h"
#include "platform/headless/list_classes.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace ostrel::headless {
namespace {

// Messages and notifications that the lists don't name, winuser.h and commctrl.h.
constexpr std::uint32_t kBmGetImage = 0x00F6;
constexpr std::uint32_t kBmSetImage = 0x00F7;
constexpr std::uint32_t kStmGetIcon = 0x0171;
constexpr std::uint32_t kUdmSetBuddy = kWmUser + 105;
constexpr std::uint32_t kUdmGetBuddy = kWmUser + 106;
constexpr std::uint32_t kUdmGetAccel = kWmUser + 108;
constexpr std::uint32_t kUdmSetRange32 = kWmUser + 111;
constexpr std::uint32_t kUdmSetPos32 = kWmUser + 113;
constexpr std::uint32_t kUdmGetPos32 = kWmUser + 114;
constexpr std::uint32_t kTtmGetToolCount = kWmUser + 13;
constexpr std::uint32_t kTtmGetTipBackgroundColor = kWmUser + 22;
constexpr std::uint32_t kTtmGetMaxTipWidth = kWmUser + 25;
constexpr std::uint32_t kTtmDelTool = kWmUser + 51;

// ---- Buttons ------------------------------------------------------------------------------------

bool HasCheck(const Window& button) {
  const std::uint32_t type = button.ButtonTypeOf();
  return (type >= kCheckBox && type <= kAutoThreeState) || type == kAutoRadio;
}

std::uint32_t MostCheck(const Window& button) {
  const std::uint32_t type = button.ButtonTypeOf();
  return type == kThreeState || type == kAutoThreeState ? 2 : 1;
}

// A radio button is a stop of the Tab key while it is checked, and only then.
void MakeStop(Window& window) {
  if (window.ButtonTypeOf() == kRadio || window.ButtonTypeOf() == kAutoRadio) {
    window.style =
        window.checkState != 0 ? window.style | kStyleTabStop : window.style & ~kStyleTabStop;
  }
}

// The radio buttons between two group marks are one another's rivals.
void CheckAlone(HeadlessWindows& windows, const Window& radio) {
  const Window* dialog = windows.Find(radio.parent);
  std::vector<Window*> rivals;
  bool found = false;
  for (const WindowHandle handle : dialog->children) {
    Window* window = windows.Find(handle);
    if ((window->style & kStyleGroup) != 0) {
      if (found) {
        break;
      }
      rivals.clear();
    }
    found = found || handle == radio.handle;
    rivals.push_back(window);
  }
  for (Window* rival : rivals) {
    if (rival->kind == WindowKind::kButton && rival->ButtonTypeOf() == kAutoRadio) {
      rival->checkState = rival->handle == radio.handle ? 1 : 0;
      MakeStop(*rival);
    }
  }
}

std::intptr_t AnswerButton(HeadlessWindows& windows, Window& window, std::uint32_t message,
                           std::uintptr_t wParam, std::intptr_t lParam) {
  switch (message) {
    case kBmGetCheck:
      return window.checkState;
    case kBmSetCheck:
      if (HasCheck(window)) {
        window.checkState = std::min(static_cast<std::uint32_t>(wParam), MostCheck(window));
        MakeStop(window);
      }
      return 0;
    case kBmClick: {  // as the mouse would, though even a disabled button obeys
      const WindowHandle button = window.handle;
      windows.MoveFocusByMouse(button);
      PressButton(windows, button);
      return 0;
    }
    case kBmSetImage:
      return std::exchange(window.image, lParam);
    case kBmGetImage:
      return window.image;
    default:
      return 0;
  }
}

// ---- Static controls ----------------------------------------------------------------------------

// An image of another kind than the control's style is refused.
std::intptr_t SetStaticImage(Window& window, std::uintptr_t kind, std::intptr_t image) {
  const std::uint32_t type = window.StaticTypeOf();
  const bool fits = (type == kStaticIcon && kind == kImageIcon) ||
                    (type == kStaticBitmap && kind == kImageBitmap);
  if (!fits) {
    return 0;
  }
  return std::exchange(window.image, image);
}

std::intptr_t AnswerStatic(Window& window, std::uint32_t message, std::uintptr_t wParam,
                           std::intptr_t lParam) {
  const bool isIcon = window.StaticTypeOf() == kStaticIcon;
  switch (message) {
    case kStmSetImage:
      return SetStaticImage(window, wParam, lParam);
    case kStmSetIcon:
      return SetStaticImage(window, kImageIcon, static_cast<std::intptr_t>(wParam));
    case kStmGetImage:
      return (wParam == kImageIcon) == isIcon ? window.image : 0;
    case kStmGetIcon:
      return isIcon ? window.image : 0;
    default:
      return 0;
  }
}

// ---- Spin controls ------------------------------------------------------------------------------

std::int32_t Clamp(const SpinState& spin, std::int32_t position) {
  return std::clamp(position, std::min(spin.minimum, spin.maximum),
                    std::max(spin.minimum, spin.maximum));
}

std::u16string Widen(const std::string& text) {
  return {text.begin(), text.end()};
}

// The buddy's text follows the position; a text that is already there is not set again.
void ShowPosition(HeadlessWindows& windows, const Window& window) {
  constexpr std::size_t kGroup = 3;
  Window* buddy = windows.Find(window.spin.buddy);
  if (buddy == nullptr || (window.style & kSpinSetBuddyInt) == 0) {
    return;
  }
  std::string digits = std::to_string(std::abs(window.spin.position));
  if ((window.style & kSpinNoThousands) == 0) {
    for (std::size_t place = digits.size(); place > kGroup; place -= kGroup) {
      digits.insert(place - kGroup, 1, ',');
    }
  }
  const std::u16string text = Widen((window.spin.position < 0 ? "-" : "") + digits);
  if (buddy->text == text) {
    return;
  }
  if (buddy->kind == WindowKind::kEdit) {
    SetEditText(windows, *buddy, text);
  } else {
    buddy->text = text;
  }
}

// Reads a position that the user has typed into the buddy. Result: false when it isn't one.
bool ReadPosition(HeadlessWindows& windows, Window& window) {
  const Window* buddy = windows.Find(window.spin.buddy);
  if (buddy == nullptr || (window.style & kSpinSetBuddyInt) == 0) {
    return true;
  }
  std::string digits;
  for (const char16_t unit : buddy->text) {
    if (unit != u',') {
      digits += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
  }
  char* end = nullptr;
  const long value = std::strtol(digits.c_str(), &end, 10);
  const auto position = static_cast<std::int32_t>(std::clamp(value, -0x7FFFFFFFL, 0x7FFFFFFFL));
  if (digits.empty() || *end != '\0' || Clamp(window.spin, position) != position) {
    return false;
  }
  window.spin.position = position;
  return true;
}

std::intptr_t SetPosition(HeadlessWindows& windows, Window& window, std::int32_t position) {
  const std::int32_t previous = std::exchange(window.spin.position, Clamp(window.spin, position));
  ShowPosition(windows, window);
  return previous;
}

std::int16_t LowShort(std::intptr_t words) {
  return static_cast<std::int16_t>(LowWord(static_cast<std::uintptr_t>(words)));
}
std::int16_t HighShort(std::intptr_t words) {
  return static_cast<std::int16_t>(HighWord(static_cast<std::uintptr_t>(words)));
}

std::intptr_t AnswerPosition(HeadlessWindows& windows, Window& window) {
  const bool good = ReadPosition(windows, window);
  return static_cast<std::intptr_t>(
      MakeWords(static_cast<std::uint16_t>(window.spin.position), good ? 0 : 1));
}

std::intptr_t AnswerPosition32(HeadlessWindows& windows, Window& window, std::intptr_t failed) {
  const bool good = ReadPosition(windows, window);
  if (failed != 0) {
    *PointerIn<std::int32_t>(failed) = good ? 0 : 1;  // BOOL
  }
  return window.spin.position;
}

std::intptr_t AnswerSpin(HeadlessWindows& windows, Window& window, std::uint32_t message,
                         std::uintptr_t wParam, std::intptr_t lParam) {
  SpinState& spin = window.spin;
  switch (message) {
    case kUdmSetRange:
      spin.maximum = LowShort(lParam);
      spin.minimum = HighShort(lParam);
      return 0;
    case kUdmGetRange:
      return static_cast<std::intptr_t>(MakeWords(static_cast<std::uint16_t>(spin.maximum),
                                                  static_cast<std::uint16_t>(spin.minimum)));
    case kUdmSetRange32:
      spin.minimum = static_cast<std::int32_t>(wParam);
      spin.maximum = static_cast<std::int32_t>(lParam);
      return 0;
    case kUdmSetPos:
      return SetPosition(windows, window, LowShort(lParam));
    case kUdmSetPos32:
      return SetPosition(windows, window, static_cast<std::int32_t>(lParam));
    case kUdmGetPos:
      return AnswerPosition(windows, window);
    case kUdmGetPos32:
      return AnswerPosition32(windows, window, lParam);
    case kUdmSetBuddy:
      return static_cast<std::intptr_t>(NumberOf(
          std::exchange(spin.buddy, HandleOf<WindowHandle>(static_cast<std::uintptr_t>(wParam)))));
    case kUdmGetBuddy:
      return static_cast<std::intptr_t>(NumberOf(spin.buddy));
    case kUdmSetAccel: {
      const auto* rows = PointerIn<const SpinAcceleration>(lParam);
      if (wParam == 0 || rows == nullptr) {
        return 0;
      }
      spin.accelerations.assign(rows, rows + wParam);
      return 1;
    }
    case kUdmGetAccel: {
      const std::size_t count = std::min<std::size_t>(wParam, spin.accelerations.size());
      std::copy_n(spin.accelerations.begin(), count, PointerIn<SpinAcceleration>(lParam));
      return static_cast<std::intptr_t>(spin.accelerations.size());
    }
    default:
      return 0;
  }
}

// Where the position goes from here: round at the ends or no further than to them.
std::int32_t Moved(const Window& window, std::int32_t delta) {
  const SpinState& spin = window.spin;
  const std::int32_t wanted = spin.position + delta;
  const std::int32_t clamped = Clamp(spin, wanted);
  if (clamped == wanted || (window.style & kSpinWrap) == 0) {
    return clamped;
  }
  return clamped == spin.minimum ? spin.maximum : spin.minimum;
}

// ---- Tooltips -----------------------------------------------------------------------------------

// Each version of the structure is a longer one; the shortest ends with the text.
constexpr std::uint32_t kLeastToolBytes = offsetof(ToolInfo, lpszText) + sizeof(char16_t*);

const ToolInfo* ToolFrom(std::intptr_t lParam) {
  const auto* tool = PointerIn<const ToolInfo>(lParam);
  const bool good =
      tool != nullptr && tool->cbSize >= kLeastToolBytes && tool->cbSize <= sizeof(ToolInfo);
  return good ? tool : nullptr;
}

Tool* FindTool(TooltipState& tooltip, const ToolInfo* asked) {
  if (asked == nullptr) {
    return nullptr;
  }
  const auto found = std::ranges::find_if(tooltip.tools, [asked](const Tool& tool) {
    return tool.window == asked->hwnd && tool.id == asked->uId;
  });
  return found == tooltip.tools.end() ? nullptr : &*found;
}

Tool ToTool(const ToolInfo& info) {
  constexpr std::uintptr_t kTextCallback = ~std::uintptr_t{0};  // LPSTR_TEXTCALLBACK
  Tool tool = {info.uFlags, info.hwnd, info.uId, info.rect};
  tool.asksForText = reinterpret_cast<std::uintptr_t>(info.lpszText) == kTextCallback;
  if (info.lpszText != nullptr && !tool.asksForText && info.hinst == nullptr) {
    tool.text = info.lpszText;
  }
  return tool;
}

std::intptr_t AnswerTooltip(TooltipState& tooltip, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) {
  switch (message) {
    case kTtmActivate:
      tooltip.active = wParam != 0;
      return 0;
    case kTtmAddTool:
      if (const ToolInfo* info = ToolFrom(lParam); info != nullptr) {
        tooltip.tools.push_back(ToTool(*info));
        return 1;
      }
      return 0;
    case kTtmSetToolInfo:
      if (Tool* tool = FindTool(tooltip, ToolFrom(lParam)); tool != nullptr) {
        *tool = ToTool(*ToolFrom(lParam));
      }
      return 0;
    case kTtmDelTool:
      if (const Tool* tool = FindTool(tooltip, ToolFrom(lParam)); tool != nullptr) {
        tooltip.tools.erase(tooltip.tools.begin() + (tool - tooltip.tools.data()));
      }
      return 0;
    case kTtmGetToolCount:
      return static_cast<std::intptr_t>(tooltip.tools.size());
    case kTtmSetMaxTipWidth:
      return std::exchange(tooltip.maxWidth, static_cast<std::int32_t>(lParam));
    case kTtmGetMaxTipWidth:
      return tooltip.maxWidth;
    case kTtmSetTipBackgroundColor:
      tooltip.backgroundColor = static_cast<std::uint32_t>(wParam);
      return 0;
    case kTtmGetTipBackgroundColor:
      return tooltip.backgroundColor;
    default:
      return 0;
  }
}

// ---- Dialogs ------------------------------------------------------------------------------------

// Closing a dialog is what its Cancel button does, unless that can't be pressed.
std::intptr_t AnswerDialog(HeadlessWindows& windows, const Window& window, std::uint32_t message) {
  if (message != kWmClose) {
    return 0;
  }
  const WindowHandle cancel = windows.ControlOf(window.handle, kIdCancel);
  const Window* button = windows.Find(cancel);
  if (button == nullptr || button->IsEnabled()) {
    windows.Deliver(window.handle, kWmCommand, MakeWords(kIdCancel, kBnClicked),
                    static_cast<std::intptr_t>(NumberOf(cancel)));
  }
  return 0;
}

// ---- Texts of all classes -----------------------------------------------------------------------

std::intptr_t SetText(HeadlessWindows& windows, Window& window, const char16_t* text) {
  const std::u16string_view shown = text == nullptr ? u"" : text;
  if (window.kind == WindowKind::kEdit || window.HasComboEdit()) {
    SetEditText(windows, window, shown);
    return 1;
  }
  if (window.kind == WindowKind::kList) {
    return kCbErr;  // its text is the row that is selected
  }
  window.text = shown;
  return 1;
}

std::intptr_t GetText(const std::u16string& text, std::uintptr_t units, std::intptr_t buffer) {
  if (units == 0) {
    return 0;
  }
  const std::size_t copied = std::min<std::size_t>(text.size(), units - 1);
  auto* target = PointerIn<char16_t>(buffer);
  std::copy_n(text.data(), copied, target);
  target[copied] = u'\0';
  return static_cast<std::intptr_t>(copied);
}

}  // namespace

bool Window::IsOwnerDrawn() const {
  switch (kind) {
    case WindowKind::kStatic:
      return StaticTypeOf() == kStaticOwnerDraw;
    case WindowKind::kButton:
      return ButtonTypeOf() == kOwnerDrawButton;
    case WindowKind::kList:
      return (style & (IsCombo() ? kComboOwnerDraw : kListOwnerDraw)) != 0;
    default:
      return false;
  }
}

WindowKind KindOfClass(std::u16string_view className) {
  struct Row {
    std::u16string_view name;
    WindowKind kind;
  };
  constexpr std::array<Row, 7> kRows = {{
      {u"static", WindowKind::kStatic},
      {u"button", WindowKind::kButton},
      {u"edit", WindowKind::kEdit},
      {u"combobox", WindowKind::kList},
      {u"listbox", WindowKind::kList},
      {u"msctls_updown32", WindowKind::kSpin},
      {u"tooltips_class32", WindowKind::kTooltip},
  }};
  const auto row = std::ranges::find(kRows, className, &Row::name);
  return row == kRows.end() ? WindowKind::kPlain : row->kind;
}

std::intptr_t AnswerControlMessage(HeadlessWindows& windows, WindowHandle control,
                                   std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) {
  constexpr std::uint32_t kWmSetText = 0x000C;
  constexpr std::uint32_t kWmGetText = 0x000D;
  constexpr std::uint32_t kWmGetTextLength = 0x000E;
  Window* window = windows.Find(control);
  switch (message) {
    case kWmSetText:
      return SetText(windows, *window, PointerIn<const char16_t>(lParam));
    case kWmGetText:
      return GetText(windows.TextOf(*window), wParam, lParam);
    case kWmGetTextLength:
      return static_cast<std::intptr_t>(windows.TextOf(*window).size());
    case kWmGetFont:
      return static_cast<std::intptr_t>(NumberOf(DialogFont()));
    case kWmHelp:  // goes up until someone knows help
      return windows.Deliver(window->parent, message, wParam, lParam);
    default:
      break;
  }
  switch (window->kind) {
    case WindowKind::kStatic:
      return AnswerStatic(*window, message, wParam, lParam);
    case WindowKind::kButton:
      return AnswerButton(windows, *window, message, wParam, lParam);
    case WindowKind::kEdit:
      return AnswerEdit(windows, *window, message, wParam, lParam);
    case WindowKind::kList:
      return AnswerList(windows, *window, message, wParam, lParam);
    case WindowKind::kSpin:
      return AnswerSpin(windows, *window, message, wParam, lParam);
    case WindowKind::kDialog:
      return AnswerDialog(windows, *window, message);
    case WindowKind::kTooltip:
      return AnswerTooltip(window->tooltip, message, wParam, lParam);
    default:
      return 0;
  }
}

void PressButton(HeadlessWindows& windows, WindowHandle button) {
  Window* alive = windows.Find(button);
  if (alive == nullptr) {
    return;  // it went with the focus
  }
  Window& window = *alive;
  switch (window.ButtonTypeOf()) {
    case kAutoCheckBox:
    case kAutoThreeState:
      window.checkState = (window.checkState + 1) % (MostCheck(window) + 1);
      break;
    case kAutoRadio:
      CheckAlone(windows, window);
      break;
    case kGroupBox:
      return;
    default:
      break;
  }
  windows.NotifyParent(window, kBnClicked);
}

void PressArrow(HeadlessWindows& windows, WindowHandle spin, bool upper) {
  constexpr std::uint32_t kWmHorizontalScroll = 0x0114;
  constexpr std::uint32_t kWmVerticalScroll = 0x0115;
  constexpr std::uint16_t kThumbPosition = 4;  // SB_THUMBPOSITION
  constexpr std::uint16_t kEndScroll = 8;      // SB_ENDSCROLL
  Window& window = *windows.Find(spin);
  ReadPosition(windows, window);
  const bool inverted = window.spin.maximum < window.spin.minimum;
  NotifyUpDown question = {};
  question.hdr = {spin, static_cast<std::uintptr_t>(window.id), kUdnDeltaPos};
  question.iPos = window.spin.position;
  question.iDelta = upper == inverted ? -1 : 1;
  const std::intptr_t refused = windows.Deliver(window.parent, kWmNotify, question.hdr.idFrom,
                                                reinterpret_cast<std::intptr_t>(&question));
  if (refused == 0) {
    windows.IfAlive(spin, [&](Window& alive) {
      alive.spin.position = Moved(alive, question.iDelta);
      ShowPosition(windows, alive);
    });
  }
  for (const std::uint16_t code : {kThumbPosition, kEndScroll}) {
    windows.IfAlive(spin, [&](const Window& alive) {
      const bool horizontal = (alive.style & kSpinHorizontal) != 0;
      windows.Deliver(alive.parent, horizontal ? kWmHorizontalScroll : kWmVerticalScroll,
                      MakeWords(code, static_cast<std::uint16_t>(alive.spin.position)),
                      static_cast<std::intptr_t>(NumberOf(spin)));
    });
  }
}

}  // namespace ostrel::headless
