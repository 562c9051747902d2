// One window of the in-memory platform: what the system knows of every window, and what its class
// keeps besides.
#pragma once

#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace ostrel::headless {

enum class WindowKind {
  kPlain,  // of a class that keeps nothing of its own here
  kDialog,
  kStatic,
  kButton,
  kEdit,
  kList,  // a combo box or a list box
  kSpin,
  kTooltip,
};

// Window styles and the classes' own, winuser.h and commctrl.h.
inline constexpr std::uint32_t kStylePopup = 0x80000000;
inline constexpr std::uint32_t kStyleChild = 0x40000000;
inline constexpr std::uint32_t kStyleVisible = 0x10000000;
inline constexpr std::uint32_t kStyleDisabled = 0x08000000;
inline constexpr std::uint32_t kStyleGroup = 0x00020000;
inline constexpr std::uint32_t kStyleTabStop = 0x00010000;
inline constexpr std::uint32_t kExStyleMirrored = 0x00400000;         // WS_EX_LAYOUTRTL
inline constexpr std::uint32_t kExStyleNoInheritLayout = 0x00100000;  // WS_EX_NOINHERITLAYOUT
inline constexpr std::uint32_t kButtonTypeMask = 0x0F;
inline constexpr std::uint32_t kButtonNotify = 0x4000;  // BS_NOTIFY
inline constexpr std::uint32_t kStaticTypeMask = 0x1F;
inline constexpr std::uint32_t kStaticIcon = 0x03;       // SS_ICON
inline constexpr std::uint32_t kStaticOwnerDraw = 0x0D;  // SS_OWNERDRAW
inline constexpr std::uint32_t kStaticBitmap = 0x0E;     // SS_BITMAP
inline constexpr std::uint32_t kStaticNotify = 0x0100;   // SS_NOTIFY
inline constexpr std::uint32_t kEditMultiline = 0x0004;  // ES_MULTILINE
inline constexpr std::uint32_t kEditReadOnly = 0x0800;   // ES_READONLY
inline constexpr std::uint32_t kEditNumber = 0x2000;     // ES_NUMBER
inline constexpr std::uint32_t kComboTypeMask = 0x03;
inline constexpr std::uint32_t kComboSimple = 0x01;        // CBS_SIMPLE
inline constexpr std::uint32_t kComboDropDownList = 0x03;  // CBS_DROPDOWNLIST
inline constexpr std::uint32_t kComboOwnerDraw = 0x30;     // CBS_OWNERDRAWFIXED, ..VARIABLE
inline constexpr std::uint32_t kComboSort = 0x0100;        // CBS_SORT
inline constexpr std::uint32_t kComboHasStrings = 0x0200;  // CBS_HASSTRINGS
inline constexpr std::uint32_t kListNotify = 0x0001;       // LBS_NOTIFY
inline constexpr std::uint32_t kListSort = 0x0002;         // LBS_SORT
inline constexpr std::uint32_t kListOwnerDraw = 0x30;      // LBS_OWNERDRAWFIXED, ..VARIABLE
inline constexpr std::uint32_t kListHasStrings = 0x40;     // LBS_HASSTRINGS
inline constexpr std::uint32_t kSpinWrap = 0x01;           // UDS_WRAP
inline constexpr std::uint32_t kSpinSetBuddyInt = 0x02;    // UDS_SETBUDDYINT
inline constexpr std::uint32_t kSpinAutoBuddy = 0x10;      // UDS_AUTOBUDDY
inline constexpr std::uint32_t kSpinHorizontal = 0x40;     // UDS_HORZ
inline constexpr std::uint32_t kSpinNoThousands = 0x80;    // UDS_NOTHOUSANDS

// Types of buttons, BS_....
enum ButtonType : std::uint32_t {
  kPushButton = 0,
  kDefaultPushButton = 1,
  kCheckBox = 2,
  kAutoCheckBox = 3,
  kRadio = 4,
  kThreeState = 5,
  kAutoThreeState = 6,
  kGroupBox = 7,
  kAutoRadio = 9,
  kOwnerDrawButton = 11,
};

struct EditState {
  std::size_t limit = 30000;  // units a user can put in
  std::size_t selectionStart = 0;
  std::size_t selectionEnd = 0;
  // What EM_UNDO takes back: `undoInserted` units at `undoPlace`, for which `undoText` comes again.
  std::u16string undoText = {};
  std::size_t undoPlace = 0;
  std::size_t undoInserted = 0;
};

struct ListItem {
  std::u16string text = {};
  std::uintptr_t data = 0;
};

struct ListState {
  std::vector<ListItem> items = {};
  std::int32_t selection = -1;
  std::int32_t droppedWidth = 0;  // that was asked for; the list is never narrower than its box
  std::uint32_t itemHeight = 0;   // that the owner asked for; 0 when it wasn't asked
};

struct SpinState {
  WindowHandle buddy = nullptr;
  std::int32_t minimum = 100;  // above the maximum at first: the upper arrow counts down then
  std::int32_t maximum = 0;
  std::int32_t position = 0;
  std::vector<SpinAcceleration> accelerations = {{0, 1}, {2, 5}, {5, 20}};
};

struct Tool {
  std::uint32_t flags = 0;
  WindowHandle window = nullptr;
  std::uintptr_t id = 0;
  Rect rect = {};
  bool asksForText = false;  // the text comes by TTN_GETDISPINFOW
  std::u16string text = {};
};

struct TooltipState {
  std::vector<Tool> tools = {};
  bool active = true;
  std::int32_t maxWidth = -1;
  std::uint32_t backgroundColor = 0x00E1FFFF;  // as the system's colour for tips
};

// A dialog that locks its owner until it is ended.
struct ModalState {
  bool isModal = false;
  bool hasEnded = false;  // by EndDialog, or by the user's leaving it
  std::intptr_t result = 0;
  WindowHandle locked = nullptr;  // to be enabled again when the dialog ends
  WindowHandle focusBefore = nullptr;
};

struct Window {
  WindowHandle handle = nullptr;
  WindowHandle parent = nullptr;  // or the owner of a window that isn't a child
  std::u16string className = {};  // in lower case
  WindowKind kind = WindowKind::kPlain;
  std::int32_t id = 0;
  std::uint32_t style = 0;
  std::uint32_t extendedStyle = 0;
  std::uint32_t helpId = 0;
  std::u16string text = {};
  Rect screenPlace = {};  // in pixels of the screen; windows have no borders
  std::map<std::int32_t, std::intptr_t> longs = {};
  std::vector<WindowHandle> children = {};  // owned windows too, in the order of their making

  DialogProcedure procedure = nullptr;  // of a dialog
  ModalState modal = {};
  // Of a window that another player answers for; first to be asked.
  std::function<std::intptr_t(std::uint32_t, std::uintptr_t, std::intptr_t)> answerer = {};

  std::uint32_t checkState = 0;
  std::intptr_t image = 0;        // the handle that a static or a button shows
  std::size_t invalidations = 0;  // asked for by InvalidateRect
  EditState edit = {};
  ListState list = {};
  SpinState spin = {};
  TooltipState tooltip = {};

  bool IsEnabled() const { return (style & kStyleDisabled) == 0; }
  bool IsShown() const { return (style & kStyleVisible) != 0; }
  bool IsMirrored() const { return (extendedStyle & kExStyleMirrored) != 0; }
  bool IsCombo() const { return className == u"combobox"; }
  // Whether it is a combo box whose text can be edited.
  bool HasComboEdit() const { return IsCombo() && (style & kComboTypeMask) != kComboDropDownList; }
  // Whether a user can put a text in, as long as the window can be reached.
  bool TakesTyping() const {
    return HasComboEdit() || (kind == WindowKind::kEdit && (style & kEditReadOnly) == 0);
  }
  std::uint32_t ButtonTypeOf() const { return style & kButtonTypeMask; }
  std::uint32_t StaticTypeOf() const { return style & kStaticTypeMask; }
  bool IsOwnerDrawn() const;
};

}  // namespace ostrel::headless
