#include "pages/page_support.h"

#include "core/help_file.h"
#include "core/language.h"
#include "core/process_state.h"
#include "core/sheet_frame.h"
#include "core/text.h"

#include <algorithm>
#include <string_view>

namespace ostrel {
namespace {

constexpr std::size_t kTextUnits = 260;
constexpr std::size_t kShortNameCharacters = 24;

ModuleHandle LanguageModuleOf(const UIContext* context) {
  return context == nullptr ? nullptr : context->languageModule;
}

std::intptr_t SendTo(WindowHandle dialog, std::int32_t control, std::uint32_t message,
                     std::uintptr_t wParam, std::intptr_t lParam) {
  Windows& windows = World().windows;
  return windows.SendMessageW(windows.GetDlgItem(dialog, control), message, wParam, lParam);
}

// A place in a list as a message carries it; -1 stands for none.
std::uintptr_t Place(std::intptr_t place) {
  return static_cast<std::uintptr_t>(place);
}

// The value of a row as it was stored: item data is as wide as a pointer.
std::int16_t ItemValue(WindowHandle dialog, std::int32_t control, std::intptr_t place) {
  return static_cast<std::int16_t>(SendTo(dialog, control, kCbGetItemData, Place(place), 0));
}

}  // namespace

UIContext* PageContext(WindowHandle page) {
  return PointedAt<UIContext>(World().windows.GetWindowLongPtrW(page, kGwlpUserData));
}

UIContext* RememberContext(WindowHandle page, std::intptr_t lParam) {
  const auto* description = PointedAt<const SheetPage>(lParam);
  const std::intptr_t context = description == nullptr ? 0 : description->lParam;
  World().windows.SetWindowLongPtrW(page, kGwlpUserData, context);
  return PointedAt<UIContext>(context);
}

std::intptr_t AnswerSheetNotify(WindowHandle page, UIContext& context, std::uint32_t code,
                                std::uint32_t helpTopic) {
  switch (code) {
    case kPsnApply:
      return ApplySettings(page, &context) ? 1 : 0;
    case kPsnReset:
      ForgetApply(&context);
      return 1;
    case kPsnHelp:
      if (helpTopic == kNoHelpTopic) {
        return 0;
      }
      ShowPageHelp(page, helpTopic);
      return 1;
    default:
      return 0;
  }
}

void SetCaptions(WindowHandle dialog, ModuleHandle module, std::span<const CaptionRow> rows) {
  Windows& windows = World().windows;
  for (const CaptionRow& row : rows) {
    char16_t caption[kTextUnits] = {};
    const WindowHandle control = windows.GetDlgItem(dialog, row.control);
    if (control != nullptr && LoadExistingString(module, row.stringId, caption)) {
      windows.SetWindowTextW(control, caption);
    }
  }
}

void ShowControl(WindowHandle dialog, std::int32_t control, bool show) {
  Windows& windows = World().windows;
  windows.ShowWindow(windows.GetDlgItem(dialog, control), show ? kSwShow : kSwHide);
}

void EnableControl(WindowHandle dialog, std::int32_t control, bool enable) {
  Windows& windows = World().windows;
  windows.EnableWindow(windows.GetDlgItem(dialog, control), enable);
}

void AddComboRow(WindowHandle dialog, std::int32_t control, const char16_t* text,
                 std::int16_t value) {
  const std::intptr_t place =
      SendTo(dialog, control, kCbAddString, 0, reinterpret_cast<std::intptr_t>(text));
  if (place >= 0) {
    SendTo(dialog, control, kCbSetItemData, Place(place), value);
  }
}

void FillCombo(WindowHandle page, std::int32_t control, std::span<const ComboRow> rows,
               std::int32_t selected) {
  const ModuleHandle module = LanguageModuleOf(PageContext(page));
  SendTo(page, control, kCbResetContent, 0, 0);
  for (const ComboRow& row : rows) {
    char16_t text[kTextUnits] = {};
    LoadUiString(module, row.stringId, text);
    AddComboRow(page, control, text, row.value);
  }
  SendTo(page, control, kCbSetCurSel, Place(selected), 0);
}

void SelectComboValue(WindowHandle dialog, std::int32_t control, std::int16_t value) {
  const std::intptr_t count = SendTo(dialog, control, kCbGetCount, 0, 0);
  std::intptr_t place = 0;
  while (place < count && ItemValue(dialog, control, place) != value) {
    ++place;
  }
  SendTo(dialog, control, kCbSetCurSel, Place(place < count ? place : kCbErr), 0);
}

bool SelectedComboValue(WindowHandle dialog, std::int32_t control, std::int16_t* value) {
  // A control that isn't there has no list either, though it answers with a place.
  if (SendTo(dialog, control, kCbGetCount, 0, 0) <= 0) {
    return false;
  }
  const std::intptr_t place = SendTo(dialog, control, kCbGetCurSel, 0, 0);
  if (place < 0) {
    return false;
  }
  *value = ItemValue(dialog, control, place);
  return true;
}

std::int32_t TextWidth(WindowHandle control, const char16_t* text) {
  Graphics& graphics = World().graphics;
  const DeviceContext context = graphics.GetDC(control);
  if (context == nullptr) {
    return 0;
  }
  auto* font = PointedAt<GdiObjectRep>(World().windows.SendMessageW(control, kWmGetFont, 0, 0));
  const GdiObject before = font == nullptr ? nullptr : graphics.SelectObject(context, font);
  Size size = {};
  const auto units = static_cast<int>(std::u16string_view(text).size());
  const bool known = graphics.GetTextExtentPointW(context, text, units, &size);
  if (before != nullptr) {
    graphics.SelectObject(context, before);
  }
  graphics.ReleaseDC(control, context);
  return known ? size.width : 0;
}

bool PaperNameHasNoComma(WindowHandle page) {
  char16_t name[kTextUnits] = {};
  LoadUiString(LanguageModuleOf(PageContext(page)), kStringPaperLetter, name);
  return FieldText(name).find(u',') == std::u16string_view::npos;
}

void SetSheetChanged(WindowHandle page) {
  Windows& windows = World().windows;
  windows.SendMessageW(windows.GetParent(page), kPsmChanged, reinterpret_cast<std::uintptr_t>(page),
                       0);
}

int LoadUntitledName(WindowHandle page, std::span<char16_t> name) {
  CopyText(name, {});
  const bool loaded =
      LoadExistingString(LanguageModuleOf(PageContext(page)), kStringUntitled, name);
  return loaded ? static_cast<int>(FieldText(name).size()) : 0;
}

void ReadUntitledName(WindowHandle page, std::span<char16_t> name) {
  if (LoadUntitledName(page, name) == 0) {
    CopyText(name, u"Untitled");
  }
}

void MarkUntitled(WindowHandle page, UntitledRule rule) {
  UIContext* context = PageContext(page);
  if (context == nullptr) {
    return;
  }
  char16_t loaded[kTextUnits] = {};
  ReadUntitledName(page, loaded);
  const std::u16string_view name = FieldText(loaded);
  auto& favorite = context->privatePointer->FavoriteName;
  if (rule == UntitledRule::kAlwaysShort) {
    CopyText(favorite, name.substr(0, kShortNameCharacters));
  } else if (FieldText(favorite) != name) {
    CopyText(favorite, name);
  }
}

bool NameUntitled(WindowHandle page) {
  UIContext* context = PageContext(page);
  char16_t name[kTextUnits] = {};
  if (context == nullptr || LoadUntitledName(page, name) == 0) {
    return false;
  }
  CopyText(context->privatePointer->FavoriteName, FieldText(name));
  return true;
}

void ShowPageHelp(WindowHandle page, std::uint32_t context) {
  if (const UIContext* owner = PageContext(page); owner != nullptr) {
    ShowHelp(page, context, owner->driverName);
  }
}

bool ShowControlHelp(WindowHandle page, std::intptr_t lParam, std::span<const HelpPair> pairs) {
  const auto* asked = PointedAt<const HelpInfo>(lParam);
  if (asked == nullptr) {
    return false;
  }
  const auto pair = std::ranges::find(pairs, asked->iCtrlId, &HelpPair::control);
  if (pair == pairs.end()) {
    return false;
  }
  ShowPageHelp(page, pair->context);
  return true;
}

}  // namespace ostrel
