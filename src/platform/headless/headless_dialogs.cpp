// Dialogs of the in-memory windows: how they are made from their templates, and how those that lock
// their owner run, message boxes among them.
#include "platform/headless/headless_platform.h"
#include "platform/headless/headless_windows.h"
#include "platform/headless/names.h"

#include <algorithm>

namespace ostrel::headless {
namespace {

// MulDiv: to the nearest.
std::int32_t Scale(std::int32_t units, std::int32_t multiplier, std::int32_t divisor) {
  const std::int32_t product = units * multiplier;
  const std::int32_t half = product < 0 ? -divisor / 2 : divisor / 2;
  return (product + half) / divisor;
}

}  // namespace

// ---- From a template ----------------------------------------------------------------------------

// A mirrored window counts from its right edge.
Rect HeadlessWindows::PlaceWithin(const Window& parent, const DialogPlace& place) const {
  const std::int32_t x = Scale(place.x, kBaseUnitX, 4);
  const std::int32_t y = Scale(place.y, kBaseUnitY, 8);
  const std::int32_t width = Scale(place.width, kBaseUnitX, 4);
  const std::int32_t height = Scale(place.height, kBaseUnitY, 8);
  const Rect& outer = parent.screenPlace;
  const std::int32_t left = parent.IsMirrored() ? outer.right - x - width : outer.left + x;
  return {left, outer.top + y, left + width, outer.top + y + height};
}

ImageHandle HeadlessWindows::AddImage(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                                      Size size) {
  const auto handle = HandleOf<ImageHandle>(nextImage_);
  nextImage_ += kHandleStep;
  images_[handle] = {module, id, kind, size};
  return handle;
}

const HeadlessWindows::Image* HeadlessWindows::ImageOf(ImageHandle image) const {
  const auto found = images_.find(image);
  return found == images_.end() ? nullptr : &found->second;
}

// A static control shows the icon or bitmap that its title names.
void HeadlessWindows::ShowOwnImage(Window& window, ModuleHandle module,
                                   const DialogControl& control) {
  const Resources* resources = modules_.ResourcesOf(module);
  if (window.kind != WindowKind::kStatic || control.titleId == 0 || resources == nullptr) {
    return;
  }
  constexpr Size kIconSize = {32, 32};
  const std::uint32_t type = window.StaticTypeOf();
  ImageHandle image = nullptr;
  if (type == kStaticIcon && resources->icons.contains(control.titleId)) {
    image = AddImage(module, control.titleId, kImageIcon, kIconSize);
  } else if (type == kStaticBitmap && resources->bitmaps.contains(control.titleId)) {
    const BitmapResource& bitmap = resources->bitmaps.at(control.titleId);
    image = AddImage(module, control.titleId, kImageBitmap, {bitmap.width, bitmap.height});
  }
  window.image = static_cast<std::intptr_t>(NumberOf(image));
}

// The owner of a list that it draws is asked for the rows' height when the list is made, which is
// before WM_INITDIALOG.
void HeadlessWindows::AskItemHeight(WindowHandle control) {
  constexpr std::uint32_t kOdtListBox = 2;
  constexpr std::uint32_t kOdtComboBox = 3;
  const Window& window = *Find(control);
  MeasureItem question = {};
  question.CtlType = window.IsCombo() ? kOdtComboBox : kOdtListBox;
  question.CtlID = static_cast<std::uint32_t>(window.id);
  question.itemHeight = kBaseUnitY;
  Deliver(window.parent, kWmMeasureItem, question.CtlID,
          reinterpret_cast<std::intptr_t>(&question));
  if (Window* alive = Find(control); alive != nullptr) {
    alive->list.itemHeight = question.itemHeight;
  }
}

void HeadlessWindows::AddControl(ModuleHandle module, const DialogControl& control,
                                 WindowHandle dialog) {
  Window& parent = *Find(dialog);
  Window& window = Add(control.className);
  window.parent = dialog;
  window.id = control.id;
  window.style = control.style | kStyleChild;
  window.extendedStyle = control.extendedStyle;
  if (parent.IsMirrored() && (parent.extendedStyle & kExStyleNoInheritLayout) == 0) {
    window.extendedStyle |= kExStyleMirrored;
  }
  window.helpId = control.helpId;
  window.text = control.title;
  window.screenPlace = PlaceWithin(parent, control.place);
  ShowOwnImage(window, module, control);
  if (window.kind == WindowKind::kSpin && (window.style & kSpinAutoBuddy) != 0 &&
      !parent.children.empty()) {
    window.spin.buddy = parent.children.back();
  }
  parent.children.push_back(window.handle);
  if (window.kind == WindowKind::kList && window.IsOwnerDrawn()) {
    AskItemHeight(window.handle);
  }
}

// Makes the dialog and its controls, and tells it nothing yet.
WindowHandle HeadlessWindows::BuildDialog(ModuleHandle module, std::uint32_t templateId,
                                          WindowHandle parent, DialogProcedure procedure,
                                          bool asChild) {
  constexpr Point kPagePlace = {10, 40};  // of a page within its sheet, in pixels
  const Resources* resources = modules_.ResourcesOf(module);
  if (resources == nullptr || !resources->dialogs.contains(templateId)) {
    Fail(kErrorResourceNameNotFound);
    return nullptr;
  }
  const DialogTemplate& dialog = resources->dialogs.at(templateId);
  Window& window = Add(kDialogClass);
  const WindowHandle handle = window.handle;
  window.kind = WindowKind::kDialog;
  window.parent = parent;
  window.style = dialog.style;
  window.extendedStyle = dialog.extendedStyle;
  window.helpId = dialog.helpId;
  window.text = dialog.title;
  window.procedure = procedure;
  const Window* outer = Find(parent);
  const Window screen;
  window.screenPlace = PlaceWithin(outer == nullptr ? screen : *outer, dialog.place);
  if (asChild) {
    window.style = (window.style | kStyleChild) & ~(kStylePopup | kStyleVisible | kStyleDisabled);
    const Point origin = {outer->screenPlace.left + kPagePlace.x,
                          outer->screenPlace.top + kPagePlace.y};
    window.screenPlace = {origin.x, origin.y, origin.x + window.screenPlace.Width(),
                          origin.y + window.screenPlace.Height()};
  }
  if (outer != nullptr) {
    Find(parent)->children.push_back(handle);
  }
  for (const DialogControl& control : dialog.controls) {
    AddControl(module, control, handle);
  }
  return handle;
}

// Where the focus goes when a dialog leaves it to the system.
WindowHandle HeadlessWindows::FirstStop(const Window& dialog) const {
  const auto first = std::ranges::find_if(dialog.children, [this](WindowHandle child) {
    const Window& control = *Find(child);
    return (control.style & kStyleTabStop) != 0 && control.IsEnabled() && control.IsShown();
  });
  return first == dialog.children.end() ? nullptr : *first;
}

WindowHandle HeadlessWindows::CreateDialogWindow(ModuleHandle module, std::uint32_t templateId,
                                                 WindowHandle parent, DialogProcedure procedure,
                                                 std::intptr_t initParam, bool asChild) {
  const WindowHandle dialog = BuildDialog(module, templateId, parent, procedure, asChild);
  if (dialog != nullptr) {
    Deliver(dialog, kWmInitDialog, NumberOf(FirstStop(*Find(dialog))), initParam);
  }
  return IsWindow(dialog) ? dialog : nullptr;
}

// ---- Dialogs and boxes that lock their owner ----------------------------------------------------

// Disables the top window that the owner stands in. Result: null when there was nothing to disable.
WindowHandle HeadlessWindows::LockTopOf(WindowHandle owner) {
  const WindowHandle top = TopOf(owner);
  Window* window = Find(top);
  if (window == nullptr || !window->IsEnabled()) {
    return nullptr;
  }
  window->style |= kStyleDisabled;
  return top;
}

void HeadlessWindows::Unlock(WindowHandle locked) {
  IfAlive(locked, [](Window& window) { window.style &= ~kStyleDisabled; });
}

WindowHandle HeadlessWindows::TopOf(WindowHandle window) const {
  const Window* found = Find(window);
  while (found != nullptr && (found->style & kStyleChild) != 0) {
    window = found->parent;
    found = Find(window);
  }
  return window;
}

bool HeadlessWindows::IsOpenDialog(WindowHandle dialog) const {
  const Window* found = Find(dialog);
  return found != nullptr && found->modal.isModal && !found->modal.hasEnded;
}

std::intptr_t HeadlessWindows::DialogBoxParamW(ModuleHandle module, std::uint32_t templateId,
                                               WindowHandle owner, DialogProcedure procedure,
                                               std::intptr_t initParam) {
  if (owner != nullptr && !IsWindow(owner)) {
    Fail(kErrorInvalidWindow);
    return 0;  // where every other failure is -1
  }
  if (faults_.ShouldFail("DialogBoxParamW")) {
    Fail(kErrorNotEnoughMemory);
    return -1;
  }
  const WindowHandle dialog = BuildDialog(module, templateId, TopOf(owner), procedure, false);
  if (dialog == nullptr) {
    return -1;
  }
  Find(dialog)->modal = {.isModal = true, .locked = LockTopOf(owner), .focusBefore = focus_};
  const std::intptr_t leavesFocus =
      Deliver(dialog, kWmInitDialog, NumberOf(FirstStop(*Find(dialog))), initParam);
  if (IsOpenDialog(dialog)) {
    RunModal(dialog, leavesFocus != 0);
  }
  const Window* ended = Find(dialog);
  const std::intptr_t result = ended == nullptr ? -1 : ended->modal.result;
  Destroy(dialog);
  return result;
}

void HeadlessWindows::RunModal(WindowHandle dialog, bool leavesFocus) {
  Show(dialog, true);
  if (leavesFocus && IsOpenDialog(dialog)) {
    const WindowHandle first = FirstStop(*Find(dialog));
    MoveFocus(first == nullptr ? dialog : first);
  } else if (IsOpenDialog(dialog) && TopOf(focus_) != dialog) {
    MoveFocus(dialog);  // away from the owner at least
  }
  if (IsOpenDialog(dialog) && onDialog) {
    onDialog(dialog);
  }
  if (IsOpenDialog(dialog)) {
    Deliver(dialog, kWmClose, 0, 0);
  }
  if (IsOpenDialog(dialog)) {
    End(*Find(dialog), -1);
  }
}

// The owner lives again and has its focus back when the dialog is hidden; it is destroyed later.
void HeadlessWindows::End(Window& dialog, std::intptr_t result) {
  const WindowHandle handle = dialog.handle;
  dialog.modal.hasEnded = true;
  dialog.modal.result = result;
  Unlock(std::exchange(dialog.modal.locked, nullptr));
  const WindowHandle before = std::exchange(dialog.modal.focusBefore, nullptr);
  Show(handle, false);
  if (IsReachable(before)) {
    MoveFocus(before);
  }
}

bool HeadlessWindows::EndDialog(WindowHandle dialog, std::intptr_t result) {
  Window* window = Take("EndDialog", dialog);
  if (window == nullptr || window->kind != WindowKind::kDialog) {
    return Fail(kErrorInvalidWindow);
  }
  End(*window, result);
  return true;
}

int HeadlessWindows::MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                                 std::uint32_t style) {
  if (faults_.ShouldFail("MessageBoxW")) {
    Fail(kErrorNotEnoughMemory);
    return 0;
  }
  boxes.push_back({owner, text == nullptr ? u"" : text, caption == nullptr ? u"" : caption, style});
  const WindowHandle before = focus_;
  const WindowHandle locked = LockTopOf(owner);
  MoveFocus(nullptr);
  if (onBox) {
    onBox(Box(boxes.back()));
  }
  int answer = kIdOk;
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  }
  Unlock(locked);
  if (IsReachable(before)) {
    MoveFocus(before);
  }
  return answer;
}

}  // namespace ostrel::headless
