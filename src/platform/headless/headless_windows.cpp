#include "platform/headless/headless_windows.h"

#include "platform/headless/control_classes.h"
#include "platform/headless/edit_class.h"
#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>

namespace ostrel::headless {
namespace {

constexpr std::uint32_t kErrorInvalidIndex = 1413;     // ERROR_INVALID_INDEX
constexpr std::uint32_t kErrorControlNotFound = 1421;  // ERROR_CONTROL_ID_NOT_FOUND
constexpr std::uint32_t kErrorNoClass = 1407;          // ERROR_CANNOT_FIND_WND_CLASS
constexpr std::uint16_t kCbnSelEndCancel = 10;

// Window longs that are the window's own words, winuser.h.
constexpr std::int32_t kGwlStyle = -16;
constexpr std::int32_t kGwlExStyle = -20;
constexpr std::int32_t kGwlpId = -12;

std::u16string FromNarrow(const char* text) {
  std::u16string wide;
  for (; *text != '\0'; ++text) {
    wide += static_cast<char16_t>(static_cast<unsigned char>(*text));
  }
  return wide;
}

// Messages whose answer is what the dialog procedure returns itself.
bool AnswersDirectly(std::uint32_t message) {
  constexpr std::uint32_t kColorFirst = 0x0132;  // WM_CTLCOLORMSGBOX .. WM_CTLCOLORSTATIC
  constexpr std::uint32_t kColorLast = 0x0138;
  constexpr std::uint32_t kVKeyToItem = 0x002E;
  constexpr std::uint32_t kCharToItem = 0x002F;
  constexpr std::uint32_t kQueryDragIcon = 0x0037;
  constexpr std::uint32_t kCompareItem = 0x0039;
  return message == kWmInitDialog || (message >= kColorFirst && message <= kColorLast) ||
         message == kVKeyToItem || message == kCharToItem || message == kQueryDragIcon ||
         message == kCompareItem;
}

// The codes by which a control tells that it got or lost the focus; 0 when it doesn't tell.
std::uint16_t FocusCode(const Window& window, bool got) {
  constexpr std::uint16_t kEnSetFocus = 0x0100;
  constexpr std::uint16_t kCbnSetFocus = 3;
  constexpr std::uint16_t kCbnKillFocus = 4;
  constexpr std::uint16_t kLbnSetFocus = 4;
  constexpr std::uint16_t kLbnKillFocus = 5;
  constexpr std::uint16_t kBnSetFocus = 6;
  constexpr std::uint16_t kBnKillFocus = 7;
  switch (window.kind) {
    case WindowKind::kEdit:
      return got ? kEnSetFocus : std::uint16_t{kEnKillFocus};
    case WindowKind::kList:
      if (window.IsCombo()) {
        return got ? kCbnSetFocus : kCbnKillFocus;
      }
      return (window.style & kListNotify) == 0 ? 0 : (got ? kLbnSetFocus : kLbnKillFocus);
    case WindowKind::kButton:
      return (window.style & kButtonNotify) == 0 ? 0 : (got ? kBnSetFocus : kBnKillFocus);
    default:
      return 0;
  }
}

// GetDlgItemInt's reading: blanks before, a sign if it may be there, digits and nothing else.
bool ReadNumber(const std::u16string& text, bool isSigned, std::uint32_t* value) {
  std::size_t place = text.find_first_not_of(u' ');
  if (place == text.npos) {
    return false;
  }
  const bool negative = isSigned && text[place] == u'-';
  place += negative ? 1 : 0;
  const std::int64_t most = isSigned ? std::numeric_limits<std::int32_t>::max()
                                     : std::numeric_limits<std::uint32_t>::max();
  std::int64_t number = 0;
  if (place == text.size()) {
    return false;
  }
  for (; place < text.size(); ++place) {
    if (text[place] < u'0' || text[place] > u'9') {
      return false;
    }
    number = number * 10 + (text[place] - u'0');
    if (number > most + (negative ? 1 : 0)) {
      return false;
    }
  }
  *value = static_cast<std::uint32_t>(negative ? -number : number);
  return true;
}

}  // namespace

HeadlessWindows::HeadlessWindows(FaultPlan& faults, HeadlessDebugOutput& debug,
                                 HeadlessModules& modules, HeadlessGraphics& graphics)
    : faults_(faults), debug_(debug), modules_(modules) {
  graphics.Attach(*this);
}

bool HeadlessWindows::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

const Window* HeadlessWindows::Find(WindowHandle window) const {
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : found->second.get();
}

Window* HeadlessWindows::Find(WindowHandle window) {
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : found->second.get();
}

Window* HeadlessWindows::Take(const char* operation, WindowHandle window) {
  Window* found = Find(window);
  if (faults_.ShouldFail(operation) || found == nullptr) {
    Fail(kErrorInvalidWindow);
    return nullptr;
  }
  return found;
}

bool HeadlessWindows::IsMirrored(WindowHandle window) const {
  const Window* found = Find(window);
  return found != nullptr && found->IsMirrored();
}

bool HeadlessWindows::IsReachable(WindowHandle window) const {
  const Window* found = Find(window);
  bool isInner = found != nullptr;
  bool reachable = isInner;
  while (reachable && isInner) {
    reachable = found->IsShown() && found->IsEnabled();
    isInner = (found->style & kStyleChild) != 0;
    found = Find(found->parent);
    isInner = isInner && found != nullptr;
  }
  return reachable;
}

std::intptr_t HeadlessWindows::ClassLong(const std::u16string& className,
                                         std::int32_t index) const {
  const auto found = classLongs_.find({className, index});
  return found == classLongs_.end() ? 0 : found->second;
}

WindowHandle HeadlessWindows::ControlOf(WindowHandle dialog, std::int32_t id) const {
  const Window* found = Find(dialog);
  if (found == nullptr) {
    return nullptr;
  }
  const auto control = std::ranges::find_if(found->children, [&](WindowHandle child) {
    const Window& window = *Find(child);
    return window.id == id && (window.style & kStyleChild) != 0;
  });
  return control == found->children.end() ? nullptr : *control;
}

std::u16string HeadlessWindows::TextOf(const Window& window) const {
  if (window.kind != WindowKind::kList || window.HasComboEdit()) {
    return window.text;
  }
  const ListState& list = window.list;
  return window.IsCombo() && list.selection >= 0
             ? list.items[static_cast<std::size_t>(list.selection)].text
             : u"";
}

// ---- Making windows -----------------------------------------------------------------------------

Window& HeadlessWindows::Add(const std::u16string& className) {
  auto window = std::make_unique<Window>();
  window->handle = HandleOf<WindowHandle>(nextHandle_);
  nextHandle_ += kHandleStep;
  window->className = className;
  window->kind = KindOfClass(className);
  Window& added = *window;
  windows_[added.handle] = std::move(window);
  return added;
}

namespace {

// The classes that user32 and comctl32 register, as far as a dialog has them, in lower case.
bool IsKnownClass(std::u16string_view className) {
  constexpr std::u16string_view kClasses[] = {u"static",
                                              u"button",
                                              u"edit",
                                              u"combobox",
                                              u"listbox",
                                              u"scrollbar",
                                              u"#32770",
                                              u"tooltips_class32",
                                              u"msctls_updown32",
                                              u"syslistview32",
                                              u"systreeview32",
                                              u"msctls_trackbar32",
                                              u"msctls_progress32",
                                              u"systabcontrol32"};
  return std::ranges::find(kClasses, className) != std::end(kClasses);
}

}  // namespace

WindowHandle HeadlessWindows::CreateWindowExW(std::uint32_t extendedStyle,
                                              const char16_t* className, std::uint32_t style,
                                              WindowHandle owner, ModuleHandle /*module*/) {
  if (faults_.ShouldFail("CreateWindowExW") || className == nullptr ||
      !IsKnownClass(LowerCase(className))) {
    Fail(kErrorNoClass);
    return nullptr;
  }
  Window* outer = Find(owner);
  if (owner != nullptr && outer == nullptr) {
    Fail(kErrorInvalidWindow);
    return nullptr;
  }
  Window& window = Add(LowerCase(className));
  window.parent = owner;
  window.style = style;
  window.extendedStyle = extendedStyle;
  if (outer != nullptr) {
    outer->children.push_back(window.handle);
  }
  return window.handle;
}

void HeadlessWindows::Destroy(WindowHandle window) {
  if (!IsWindow(window)) {
    return;
  }
  for (WindowHandle inner = focus_; inner != nullptr; inner = Find(inner)->parent) {
    if (inner == window) {  // the window is hidden before it goes, and the focus leaves it
      MoveFocus(nullptr);
      break;
    }
  }
  Deliver(window, kWmDestroy, 0, 0);
  const std::vector<WindowHandle> children = Find(window)->children;
  for (const WindowHandle child : children) {
    Destroy(child);
  }
  if (Window* parent = Find(Find(window)->parent); parent != nullptr) {
    std::erase(parent->children, window);
  }
  windows_.erase(window);
}

bool HeadlessWindows::DestroyWindow(WindowHandle window) {
  if (Take("DestroyWindow", window) == nullptr) {
    return false;
  }
  Destroy(window);
  return true;
}

// ---- Messages -----------------------------------------------------------------------------------

std::intptr_t HeadlessWindows::CallProcedure(WindowHandle window, std::uint32_t message,
                                             std::uintptr_t wParam, std::intptr_t lParam) {
  Window* dialog = Find(window);
  dialog->longs[kDwlpMessageResult] = 0;  // each message begins without an answer
  const std::intptr_t handled = dialog->procedure(window, message, wParam, lParam);
  dialog = Find(window);
  if (dialog == nullptr) {
    return 0;
  }
  if (AnswersDirectly(message)) {
    return handled;
  }
  return handled != 0 ? dialog->longs[kDwlpMessageResult]
                      : AnswerControlMessage(*this, window, message, wParam, lParam);
}

std::intptr_t HeadlessWindows::Deliver(WindowHandle window, std::uint32_t message,
                                       std::uintptr_t wParam, std::intptr_t lParam) {
  const Window* found = Find(window);
  if (found == nullptr) {
    return 0;
  }
  if (const auto answerer = found->answerer; answerer) {
    return answerer(message, wParam, lParam);
  }
  if (found->procedure != nullptr) {
    return CallProcedure(window, message, wParam, lParam);
  }
  return AnswerControlMessage(*this, window, message, wParam, lParam);
}

std::intptr_t HeadlessWindows::SendMessageW(WindowHandle window, std::uint32_t message,
                                            std::uintptr_t wParam, std::intptr_t lParam) {
  return Take("SendMessageW", window) == nullptr ? 0 : Deliver(window, message, wParam, lParam);
}

void HeadlessWindows::NotifyParent(const Window& control, std::uint16_t code) {
  Deliver(control.parent, kWmCommand, MakeWords(static_cast<std::uint16_t>(control.id), code),
          static_cast<std::intptr_t>(NumberOf(control.handle)));
}

// ---- State of windows ---------------------------------------------------------------------------

WindowHandle HeadlessWindows::GetDlgItem(WindowHandle dialog, std::int32_t id) {
  if (Take("GetDlgItem", dialog) == nullptr) {
    return nullptr;
  }
  const WindowHandle control = ControlOf(dialog, id);
  if (control == nullptr) {
    Fail(kErrorControlNotFound);
  }
  return control;
}

WindowHandle HeadlessWindows::GetParent(WindowHandle window) {
  const Window* found = Take("GetParent", window);
  return found == nullptr ? nullptr : found->parent;
}

bool HeadlessWindows::EnableWindow(WindowHandle window, bool enable) {
  Window* found = Take("EnableWindow", window);
  if (found == nullptr) {
    return false;
  }
  stateChanges.push_back({window, StateChange::kEnable, enable});
  const bool wasDisabled = !found->IsEnabled();
  found->style = enable ? found->style & ~kStyleDisabled : found->style | kStyleDisabled;
  if (!enable && focus_ == window) {
    MoveFocus(nullptr);  // a disabled window can't keep the focus
  }
  return wasDisabled;
}

bool HeadlessWindows::IsWindowEnabled(WindowHandle window) {
  const Window* found = Take("IsWindowEnabled", window);
  return found != nullptr && found->IsEnabled();
}

void HeadlessWindows::Show(WindowHandle window, bool show) {
  Window& found = *Find(window);
  if (found.IsShown() == show) {
    return;
  }
  if (found.kind == WindowKind::kDialog) {
    Deliver(window, kWmShowWindow, show ? 1 : 0, 0);
  }
  Window* alive = Find(window);
  if (alive == nullptr) {
    return;
  }
  alive->style = show ? alive->style | kStyleVisible : alive->style & ~kStyleVisible;
  for (WindowHandle inner = show ? nullptr : focus_; inner != nullptr;
       inner = Find(inner)->parent) {
    if (inner == window) {
      MoveFocus(alive->parent);
      return;
    }
  }
}

bool HeadlessWindows::ShowWindow(WindowHandle window, std::int32_t command) {
  const Window* found = Take("ShowWindow", window);
  if (found == nullptr) {
    return false;
  }
  stateChanges.push_back({window, StateChange::kShow, command != kSwHide});
  const bool wasShown = found->IsShown();
  Show(window, command != kSwHide);
  return wasShown;
}

namespace {

bool IsUncheckedRadio(const Window& window) {
  return window.kind == WindowKind::kButton && window.checkState == 0 &&
         (window.ButtonTypeOf() == kRadio || window.ButtonTypeOf() == kAutoRadio);
}

}  // namespace

void HeadlessWindows::MoveFocus(WindowHandle window) {
  if (focus_ == window) {
    return;
  }
  const WindowHandle loser = std::exchange(focus_, window);
  IfAlive(loser, [this](const Window& combo) {
    if (combo.IsCombo()) {
      NotifyParent(combo, kCbnSelEndCancel);
    }
  });
  IfAlive(loser, [this](const Window& control) {
    if (const std::uint16_t code = FocusCode(control, false); code != 0) {
      NotifyParent(control, code);
    }
  });
  Window* winner = Find(window);
  if (focus_ == window && winner != nullptr && winner->HasComboEdit()) {
    SelectText(*winner, 0, -1);
  }
  if (focus_ == window && winner != nullptr && FocusCode(*winner, true) != 0) {
    NotifyParent(*winner, FocusCode(*winner, true));
  }
  // A radio button is clicked by the focus itself, unless it is checked or the mouse brought it.
  winner = Find(window);
  if (focus_ == window && winner != nullptr && pressed_ != window && IsUncheckedRadio(*winner)) {
    PressButton(*this, window);
  }
}

void HeadlessWindows::MoveFocusByMouse(WindowHandle window) {
  pressed_ = window;
  MoveFocus(window);
  pressed_ = nullptr;
}

WindowHandle HeadlessWindows::SetFocus(WindowHandle window) {
  if (Take("SetFocus", window) == nullptr) {
    return nullptr;
  }
  const WindowHandle top = TopOf(window);  // whose owner may well be locked
  for (WindowHandle outer = window; outer != nullptr; outer = Find(outer)->parent) {
    if (!Find(outer)->IsEnabled()) {
      return nullptr;
    }
    if (outer == top) {
      break;
    }
  }
  const WindowHandle before = focus_;
  MoveFocus(window);
  return before;
}

bool HeadlessWindows::InvalidateRect(WindowHandle window) {
  Window* found = Take("InvalidateRect", window);
  if (found == nullptr) {
    return false;
  }
  ++found->invalidations;
  return true;
}

// ---- Texts and checks ---------------------------------------------------------------------------

int HeadlessWindows::GetWindowTextW(WindowHandle window, char16_t* buffer, int units) {
  constexpr std::uint32_t kWmGetText = 0x000D;
  const Window* found = Take("GetWindowTextW", window);
  if (units <= 0) {
    return 0;
  }
  buffer[0] = u'\0';
  if (found == nullptr) {
    return 0;
  }
  return static_cast<int>(Deliver(window, kWmGetText, static_cast<std::uintptr_t>(units),
                                  reinterpret_cast<std::intptr_t>(buffer)));
}

bool HeadlessWindows::SetWindowTextW(WindowHandle window, const char16_t* text) {
  constexpr std::uint32_t kWmSetText = 0x000C;
  return Take("SetWindowTextW", window) != nullptr &&
         Deliver(window, kWmSetText, 0, reinterpret_cast<std::intptr_t>(text)) > 0;
}

bool HeadlessWindows::SetWindowTextA(WindowHandle window, const char* text) {
  constexpr std::uint32_t kWmSetText = 0x000C;
  const std::u16string wide = text == nullptr ? u"" : FromNarrow(text);
  return Take("SetWindowTextA", window) != nullptr &&
         Deliver(window, kWmSetText, 0, reinterpret_cast<std::intptr_t>(wide.c_str())) > 0;
}

std::uint32_t HeadlessWindows::GetDlgItemTextA(WindowHandle dialog, std::int32_t id, char* buffer,
                                               int bytes) {
  const bool asked = Take("GetDlgItemTextA", dialog) != nullptr;
  const Window* control = Find(ControlOf(dialog, id));
  if (bytes <= 0) {
    return 0;
  }
  buffer[0] = '\0';
  if (!asked || control == nullptr) {
    Fail(kErrorControlNotFound);
    return 0;
  }
  const std::u16string text = TextOf(*control);
  const std::size_t copied = std::min(text.size(), static_cast<std::size_t>(bytes) - 1);
  for (std::size_t i = 0; i < copied; ++i) {
    buffer[i] = static_cast<char>(text[i] > 0xFF ? u'?' : text[i]);
  }
  buffer[copied] = '\0';
  return static_cast<std::uint32_t>(copied);
}

std::uint32_t HeadlessWindows::GetDlgItemInt(WindowHandle dialog, std::int32_t id, bool* translated,
                                             bool isSigned) {
  std::uint32_t value = 0;
  const bool asked = Take("GetDlgItemInt", dialog) != nullptr;
  const Window* control = Find(ControlOf(dialog, id));
  const bool good = asked && control != nullptr && ReadNumber(TextOf(*control), isSigned, &value);
  if (translated != nullptr) {
    *translated = good;
  }
  return good ? value : 0;
}

bool HeadlessWindows::SetDlgItemInt(WindowHandle dialog, std::int32_t id, std::uint32_t value,
                                    bool isSigned) {
  const std::string number =
      isSigned ? std::to_string(static_cast<std::int32_t>(value)) : std::to_string(value);
  const std::u16string text = FromNarrow(number.c_str());
  return SetWindowTextW(GetDlgItem(dialog, id), text.c_str());
}

bool HeadlessWindows::CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) {
  const WindowHandle control =
      Take("CheckDlgButton", dialog) == nullptr ? nullptr : ControlOf(dialog, id);
  if (control == nullptr) {
    return Fail(kErrorControlNotFound);
  }
  Deliver(control, kBmSetCheck, state, 0);
  return true;
}

std::uint32_t HeadlessWindows::IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) {
  const Window* control =
      Take("IsDlgButtonChecked", dialog) == nullptr ? nullptr : Find(ControlOf(dialog, id));
  return control == nullptr ? 0 : control->checkState;
}

// ---- Longs --------------------------------------------------------------------------------------

std::intptr_t HeadlessWindows::GetWindowLongPtrW(WindowHandle window, std::int32_t index) {
  const Window* found = Take("GetWindowLongPtrW", window);
  if (found == nullptr) {
    return 0;
  }
  switch (index) {
    case kGwlStyle:
      return static_cast<std::int32_t>(found->style);
    case kGwlExStyle:
      return static_cast<std::int32_t>(found->extendedStyle);
    case kGwlpId:
      return found->id;
    default:
      break;
  }
  const auto value = found->longs.find(index);
  return value == found->longs.end() ? 0 : value->second;
}

std::intptr_t HeadlessWindows::SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                                 std::intptr_t value) {
  Window* found = Take("SetWindowLongPtrW", window);
  if (found == nullptr) {
    return 0;
  }
  switch (index) {
    case kGwlStyle:
      return static_cast<std::int32_t>(
          std::exchange(found->style, static_cast<std::uint32_t>(value)));
    case kGwlExStyle:
      return static_cast<std::int32_t>(
          std::exchange(found->extendedStyle, static_cast<std::uint32_t>(value)));
    case kGwlpId:
      return std::exchange(found->id, static_cast<std::int32_t>(value));
    case kGwlpUserData:
      return std::exchange(found->longs[index], value);
    default:
      break;
  }
  if (found->kind != WindowKind::kDialog || (index != kDwlpMessageResult && index != kDwlpUser)) {
    Fail(kErrorInvalidIndex);
    return 0;
  }
  return std::exchange(found->longs[index], value);
}

std::uintptr_t HeadlessWindows::SetClassLongPtrW(WindowHandle window, std::int32_t index,
                                                 std::intptr_t value) {
  const Window* found = Take("SetClassLongPtrW", window);
  if (found == nullptr) {
    return 0;
  }
  return static_cast<std::uintptr_t>(std::exchange(classLongs_[{found->className, index}], value));
}

// ---- Places -------------------------------------------------------------------------------------

bool HeadlessWindows::GetWindowRect(WindowHandle window, Rect* rect) {
  const Window* found = Take("GetWindowRect", window);
  if (found == nullptr) {
    return false;
  }
  *rect = found->screenPlace;
  return true;
}

std::int32_t HeadlessWindows::ToScreenX(const Window* window, std::int32_t x) const {
  if (window == nullptr) {
    return x;
  }
  return window->IsMirrored() ? window->screenPlace.right - x : window->screenPlace.left + x;
}

std::int32_t HeadlessWindows::FromScreenX(const Window* window, std::int32_t x) const {
  if (window == nullptr) {
    return x;
  }
  return window->IsMirrored() ? window->screenPlace.right - x : x - window->screenPlace.left;
}

int HeadlessWindows::MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) {
  const Window* source = Find(from);
  const Window* target = Find(to);
  if (faults_.ShouldFail("MapWindowPoints") || (from != nullptr && source == nullptr) ||
      (to != nullptr && target == nullptr)) {
    Fail(kErrorInvalidWindow);
    return 0;
  }
  const std::int32_t down = (source == nullptr ? 0 : source->screenPlace.top) -
                            (target == nullptr ? 0 : target->screenPlace.top);
  const std::int32_t across = FromScreenX(target, ToScreenX(source, 0));
  Rect mapped = {FromScreenX(target, ToScreenX(source, rect->left)), rect->top + down,
                 FromScreenX(target, ToScreenX(source, rect->right)), rect->bottom + down};
  const bool turns =
      (source != nullptr && source->IsMirrored()) != (target != nullptr && target->IsMirrored());
  if (turns) {
    std::swap(mapped.left, mapped.right);
  }
  *rect = mapped;
  return static_cast<int>(
      MakeWords(static_cast<std::uint16_t>(across), static_cast<std::uint16_t>(down)));
}

bool HeadlessWindows::GetCursorPos(Point* point) {
  if (faults_.ShouldFail("GetCursorPos")) {
    return Fail(kErrorAccessDenied);
  }
  *point = cursor;
  return true;
}

bool HeadlessWindows::SetCursorPos(std::int32_t x, std::int32_t y) {
  if (faults_.ShouldFail("SetCursorPos")) {
    return Fail(kErrorAccessDenied);
  }
  cursor = {x, y};
  cursorMoves.push_back(cursor);
  return true;
}

ImageHandle HeadlessWindows::LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                                        std::int32_t width, std::int32_t height) {
  const Resources* resources = modules_.ResourcesOf(module);
  const bool isIcon = resources != nullptr && kind == kImageIcon && resources->icons.contains(id);
  const bool isBitmap =
      resources != nullptr && kind == kImageBitmap && resources->bitmaps.contains(id);
  if (faults_.ShouldFail("LoadImageW") || (!isIcon && !isBitmap)) {
    Fail(kErrorResourceNameNotFound);
    return nullptr;
  }
  Size size = {width, height};
  if (isBitmap && (width == 0 || height == 0)) {
    size = {resources->bitmaps.at(id).width, resources->bitmaps.at(id).height};
  }
  return AddImage(module, id, kind, size);
}

}  // namespace ostrel::headless
