#include "platform/headless/user.h"

#include "platform/headless/control_classes.h"
#include "platform/headless/edit_class.h"
#include "platform/headless/list_classes.h"
#include "platform/headless/names.h"

#include <algorithm>

namespace ostrel::headless {
namespace {

std::intptr_t PointParam(Point place) {
  return static_cast<std::intptr_t>(
      MakeWords(static_cast<std::uint16_t>(place.x), static_cast<std::uint16_t>(place.y)));
}

// A tool stands for a whole control, named by its window, or for a rectangle of the dialog.
bool CoversControl(const Tool& tool, const Window& control, WindowHandle dialog, Point place) {
  if ((tool.flags & kTtfIdIsWindow) != 0) {
    return tool.id == NumberOf(control.handle) && control.IsEnabled();
  }
  return tool.window == dialog && place.x >= tool.rect.left && place.x < tool.rect.right &&
         place.y >= tool.rect.top && place.y < tool.rect.bottom;
}

std::uint32_t OwnerDrawType(const Window& control) {
  constexpr std::uint32_t kOdtListBox = 2;
  constexpr std::uint32_t kOdtComboBox = 3;
  constexpr std::uint32_t kOdtButton = 4;
  constexpr std::uint32_t kOdtStatic = 5;
  switch (control.kind) {
    case WindowKind::kList:
      return control.IsCombo() ? kOdtComboBox : kOdtListBox;
    case WindowKind::kButton:
      return kOdtButton;
    default:
      return kOdtStatic;
  }
}

}  // namespace

Window* User::Reach(std::int32_t id) {
  const WindowHandle control = Control(id);
  return windows_.IsReachable(control) ? windows_.Find(control) : nullptr;
}

Window* User::Reach(std::int32_t id, WindowKind kind) {
  Window* control = Reach(id);
  return control != nullptr && control->kind == kind ? control : nullptr;
}

// ---- What a hand does ---------------------------------------------------------------------------

bool User::Click(std::int32_t id) {
  const Window* control = Reach(id);
  if (control == nullptr) {
    return false;
  }
  const WindowHandle handle = control->handle;
  if (control->kind == WindowKind::kStatic && (control->style & kStaticNotify) != 0) {
    windows_.NotifyParent(*control, 0);  // STN_CLICKED
    return true;
  }
  if (control->kind != WindowKind::kButton || control->ButtonTypeOf() == kGroupBox) {
    return false;
  }
  windows_.MoveFocusByMouse(handle);
  if (!windows_.IsReachable(handle)) {
    return false;  // what lost the focus has locked it
  }
  PressButton(windows_, handle);
  return true;
}

bool User::TypeEach(WindowHandle edit, std::u16string_view text) {
  constexpr std::uint32_t kWmChar = 0x0102;
  for (const char16_t unit : text) {
    if (windows_.focus() != edit || !windows_.IsReachable(edit)) {
      return false;
    }
    windows_.Deliver(edit, kWmChar, unit, 1);
  }
  return true;
}

bool User::GoToText(std::int32_t id) {
  const Window* control = Reach(id);
  return control != nullptr && control->TakesTyping() && MoveFocus(id);
}

bool User::Type(std::int32_t id, std::u16string_view text) {
  if (!GoToText(id)) {
    return false;
  }
  const WindowHandle edit = Control(id);
  Window& window = *windows_.Find(edit);
  SelectText(window, 0, -1);
  if (text.empty() && !window.text.empty()) {
    ReplaceSelection(windows_, edit, {});
  }
  return TypeEach(edit, text);
}

bool User::AppendTyping(std::int32_t id, std::u16string_view text) {
  if (!GoToText(id)) {
    return false;
  }
  Window& window = *windows_.Find(Control(id));
  const auto end = static_cast<std::int32_t>(window.text.size());
  SelectText(window, end, end);
  return TypeEach(Control(id), text);
}

bool User::Paste(std::int32_t id, std::u16string_view text) {
  if (!GoToText(id)) {
    return false;
  }
  SelectText(*windows_.Find(Control(id)), 0, -1);
  ReplaceSelection(windows_, Control(id), text);
  return true;
}

bool User::Choose(std::int32_t id, std::int32_t row) {
  constexpr std::uint16_t kCbnDropDown = 7;
  constexpr std::uint16_t kCbnCloseUp = 8;
  constexpr std::uint16_t kCbnSelEndOk = 9;
  const Window* control = Reach(id, WindowKind::kList);
  if (control == nullptr) {
    return false;
  }
  const WindowHandle handle = control->handle;
  const bool isCombo = control->IsCombo();
  const bool dropsDown = isCombo && (control->style & kComboTypeMask) != kComboSimple;
  const bool tells = isCombo || (control->style & kListNotify) != 0;
  windows_.MoveFocus(handle);
  if (dropsDown && windows_.IsReachable(handle)) {
    windows_.NotifyParent(*windows_.Find(handle), kCbnDropDown);
  }
  Window* alive = windows_.IsReachable(handle) ? windows_.Find(handle) : nullptr;
  if (alive == nullptr || row < 0 || static_cast<std::size_t>(row) >= alive->list.items.size()) {
    return false;
  }
  alive->list.selection = row;
  const std::vector<std::uint16_t> codes =
      dropsDown ? std::vector<std::uint16_t>{kCbnSelEndOk, kCbnCloseUp, kCbnSelChange}
      : isCombo ? std::vector<std::uint16_t>{kCbnSelEndOk, kCbnSelChange}
                : std::vector<std::uint16_t>{kCbnSelChange};  // LBN_SELCHANGE: the same number
  for (const std::uint16_t code : codes) {
    if (tells) {
      windows_.IfAlive(handle, [&](const Window& list) { windows_.NotifyParent(list, code); });
    }
  }
  windows_.IfAlive(handle, [&](Window& list) { ShowSelectedRow(windows_, list); });
  return true;
}

bool User::Spin(std::int32_t id, bool upper) {
  const Window* control = Reach(id, WindowKind::kSpin);
  if (control == nullptr) {
    return false;
  }
  const WindowHandle handle = control->handle;
  const WindowHandle buddy = control->spin.buddy;
  const Window* buddyWindow = windows_.Find(buddy);
  const bool buddyIsEdit = buddyWindow != nullptr && buddyWindow->kind == WindowKind::kEdit;
  if (buddyIsEdit && windows_.IsReachable(buddy)) {
    windows_.MoveFocus(buddy);
  }
  if (!windows_.IsReachable(handle)) {
    return false;
  }
  PressArrow(windows_, handle, upper);
  if (buddyIsEdit) {
    windows_.Deliver(buddy, kEmSetSel, 0, -1);
  }
  return true;
}

bool User::MoveFocus(std::int32_t id) {
  const Window* control = Reach(id);
  if (control == nullptr || control->kind == WindowKind::kStatic) {
    return false;
  }
  const WindowHandle handle = control->handle;
  windows_.MoveFocus(handle);
  if (windows_.focus() != handle) {
    return false;
  }
  if (windows_.Find(handle)->kind == WindowKind::kEdit) {
    windows_.Deliver(handle, kEmSetSel, 0, -1);
  }
  return true;
}

void User::MoveMouse(Point clientPlace) {
  windows_.Deliver(dialog_, kWmMouseMove, 0, PointParam(clientPlace));
}

std::u16string User::AskTip(const Window& tooltip, const Tool& tool) {
  if (!tool.asksForText) {
    return tool.text;
  }
  NotifyTooltipText question = {};
  question.hdr = {tooltip.handle, tool.id, kTtnGetDispInfo};
  question.lpszText = question.szText;
  question.uFlags = tool.flags;
  windows_.Deliver(tool.window, kWmNotify, tool.id, reinterpret_cast<std::intptr_t>(&question));
  const auto number = reinterpret_cast<std::uintptr_t>(question.lpszText);
  if (question.hinst != nullptr && number <= 0xFFFF) {
    const Resources* resources = modules_.ResourcesOf(question.hinst);
    const auto id = static_cast<std::uint32_t>(number);
    return resources != nullptr && resources->strings.contains(id) ? resources->strings.at(id)
                                                                   : u"";
  }
  return question.lpszText == nullptr ? u"" : question.lpszText;
}

std::u16string User::HoverTip(std::int32_t id) {
  const WindowHandle handle = Control(id);
  const Window* control = windows_.Find(handle);
  if (control == nullptr || !control->IsShown() || !windows_.IsReachable(dialog_)) {
    return {};
  }
  Rect place = control->screenPlace;
  const Window& dialog = *windows_.Find(dialog_);
  const std::int32_t middle = (place.left + place.right) / 2;
  const Point onDialog = {
      dialog.IsMirrored() ? dialog.screenPlace.right - middle : middle - dialog.screenPlace.left,
      (place.top + place.bottom) / 2 - dialog.screenPlace.top};
  MoveMouse(onDialog);
  control = windows_.Find(handle);
  if (control == nullptr || !control->IsShown()) {
    return {};
  }
  const std::vector<WindowHandle> owned = windows_.Find(dialog_)->children;
  for (const WindowHandle candidate : owned) {
    const Window* tooltip = windows_.Find(candidate);
    if (tooltip == nullptr || tooltip->kind != WindowKind::kTooltip || !tooltip->tooltip.active) {
      continue;
    }
    const std::vector<Tool>& tools = tooltip->tooltip.tools;
    const auto tool = std::ranges::find_if(tools, [&](const Tool& known) {
      return CoversControl(known, *control, dialog_, onDialog);
    });
    if (tool != tools.end()) {
      return AskTip(*tooltip, *tool);
    }
  }
  return {};
}

bool User::PressHelp(std::int32_t id) {
  constexpr std::int32_t kHelpOnWindow = 1;  // HELPINFO_WINDOW
  const Window* control = Reach(id);
  if (control == nullptr) {
    return false;
  }
  HelpInfo question = {};
  question.cbSize = sizeof(question);
  question.iContextType = kHelpOnWindow;
  question.iCtrlId = id;
  question.hItemHandle = control->handle;
  question.dwContextId = control->helpId;
  question.MousePos = windows_.cursor;
  windows_.Deliver(control->handle, kWmHelp, 0, reinterpret_cast<std::intptr_t>(&question));
  return true;
}

std::optional<std::vector<HeadlessGraphics::Copy>> User::Draw(std::int32_t id) {
  constexpr std::uint32_t kDrawEntire = 1;    // ODA_DRAWENTIRE
  constexpr std::uint32_t kIsDisabled = 0x4;  // ODS_DISABLED
  constexpr std::uint32_t kHasFocus = 0x10;   // ODS_FOCUS
  const Window* control = Find(id);
  if (control == nullptr || !control->IsOwnerDrawn()) {
    return std::nullopt;
  }
  DrawItem order = {};
  order.CtlType = OwnerDrawType(*control);
  order.CtlID = static_cast<std::uint32_t>(id);
  order.itemAction = kDrawEntire;
  order.itemState = (control->IsEnabled() ? 0 : kIsDisabled) |
                    (windows_.focus() == control->handle ? kHasFocus : 0);
  order.hwndItem = control->handle;
  order.rcItem = {0, 0, control->screenPlace.Width(), control->screenPlace.Height()};
  if (control->kind == WindowKind::kList) {
    const std::int32_t row = control->list.selection;
    order.itemID = static_cast<std::uint32_t>(row);
    order.itemData = row < 0 ? 0 : control->list.items[static_cast<std::size_t>(row)].data;
  }
  const std::size_t before = graphics_.copies.size();
  order.hDC = graphics_.BeginPaint(control->handle);
  windows_.Deliver(dialog_, kWmDrawItem, order.CtlID, reinterpret_cast<std::intptr_t>(&order));
  graphics_.EndPaint(order.hDC);
  return std::vector(graphics_.copies.begin() + static_cast<std::ptrdiff_t>(before),
                     graphics_.copies.end());
}

std::uint32_t User::Measure(std::int32_t id) {
  const Window* control = Find(id);
  if (control == nullptr || control->kind != WindowKind::kList || !control->IsOwnerDrawn()) {
    return 0;
  }
  MeasureItem question = {};
  question.CtlType = OwnerDrawType(*control);
  question.CtlID = static_cast<std::uint32_t>(id);
  question.itemHeight = kBaseUnitY;
  windows_.Deliver(dialog_, kWmMeasureItem, question.CtlID,
                   reinterpret_cast<std::intptr_t>(&question));
  return question.itemHeight;
}

// ---- What an eye sees ---------------------------------------------------------------------------

std::u16string User::Text(std::int32_t id) const {
  const Window* control = Find(id);
  return control == nullptr ? u"" : windows_.TextOf(*control);
}

bool User::Enabled(std::int32_t id) const {
  const Window* control = Find(id);
  return control != nullptr && control->IsEnabled();
}

bool User::Shown(std::int32_t id) const {
  const Window* control = Find(id);
  return control != nullptr && control->IsShown();
}

bool User::Checked(std::int32_t id) const {
  const Window* control = Find(id);
  return control != nullptr && control->checkState == kBstChecked;
}

std::int32_t User::Selected(std::int32_t id) const {
  const Window* control = Find(id);
  return control == nullptr ? -1 : control->list.selection;
}

std::vector<std::u16string> User::ItemTexts(std::int32_t id) const {
  std::vector<std::u16string> texts;
  if (const Window* control = Find(id); control != nullptr) {
    std::ranges::transform(control->list.items, std::back_inserter(texts), &ListItem::text);
  }
  return texts;
}

std::vector<std::uintptr_t> User::ItemData(std::int32_t id) const {
  std::vector<std::uintptr_t> data;
  if (const Window* control = Find(id); control != nullptr) {
    std::ranges::transform(control->list.items, std::back_inserter(data), &ListItem::data);
  }
  return data;
}

std::uint32_t User::Image(std::int32_t id) const {
  const Window* control = Find(id);
  if (control == nullptr) {
    return 0;
  }
  const auto number = static_cast<std::uintptr_t>(control->image);
  if (const auto* image = windows_.ImageOf(HandleOf<ImageHandle>(number)); image != nullptr) {
    return image->id;
  }
  const auto* bitmap = graphics_.BitmapOf(HandleOf<GdiObject>(number));
  return bitmap == nullptr ? 0 : bitmap->id;
}

std::int32_t User::Position(std::int32_t id) const {
  const Window* control = Find(id);
  return control == nullptr ? -1 : control->spin.position;
}

std::int32_t User::Focus() const {
  const Window* control = windows_.Find(windows_.focus());
  return control != nullptr && control->parent == dialog_ ? control->id : 0;
}

std::size_t User::Invalidations(std::int32_t id) const {
  const Window* control = Find(id);
  return control == nullptr ? 0 : control->invalidations;
}

std::pair<std::size_t, std::size_t> User::Selection(std::int32_t id) const {
  const Window* control = Find(id);
  if (control == nullptr) {
    return {0, 0};
  }
  return {control->edit.selectionStart, control->edit.selectionEnd};
}

}  // namespace ostrel::headless
