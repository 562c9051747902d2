// The windows of the in-memory platform: dialogs built from compiled templates, their controls and
// the boxes. Controls keep the state that their class keeps, and send the notifications that the
// platform sends: an edit tells of every change of its text, also of one made by code; a list, a
// check box or a label that code changes tells nothing.
//
// Dialog units become pixels by fixed base units of 6 by 13. Windows have no borders, so a window's
// client area is the whole of it. Narrow texts are taken for Latin-1.
#pragma once

#include "platform/headless/dialog_template.h"
#include "platform/headless/fault_plan.h"
#include "platform/headless/window.h"
#include "platform/platform.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::headless {

class HeadlessDebugOutput;
class HeadlessGraphics;
class HeadlessModules;

inline constexpr std::int32_t kBaseUnitX = 6;   // pixels of four dialog units
inline constexpr std::int32_t kBaseUnitY = 13;  // pixels of eight dialog units

inline constexpr char16_t kDialogClass[] = u"#32770";
inline constexpr std::uint32_t kErrorInvalidWindow = 1400;  // ERROR_INVALID_WINDOW_HANDLE

class HeadlessWindows final : public Windows {
 public:
  HeadlessWindows(FaultPlan& faults, HeadlessDebugOutput& debug, HeadlessModules& modules,
                  HeadlessGraphics& graphics);

  // While a box is open its owner is disabled, and the control that has the focus loses it.
  int MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                  std::uint32_t style) override;
  WindowHandle GetDlgItem(WindowHandle dialog, std::int32_t id) override;
  WindowHandle GetParent(WindowHandle window) override;
  bool EnableWindow(WindowHandle window, bool enable) override;
  bool IsWindowEnabled(WindowHandle window) override;
  bool ShowWindow(WindowHandle window, std::int32_t command) override;
  WindowHandle SetFocus(WindowHandle window) override;
  bool InvalidateRect(WindowHandle window) override;
  std::intptr_t SendMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;
  // Kept until DeliverPosted.
  bool PostMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) override;
  WindowHandle FindWindowW(const char16_t* className) override;
  int GetWindowTextW(WindowHandle window, char16_t* buffer, int units) override;
  bool SetWindowTextW(WindowHandle window, const char16_t* text) override;
  bool SetWindowTextA(WindowHandle window, const char* text) override;
  std::uint32_t GetDlgItemTextA(WindowHandle dialog, std::int32_t id, char* buffer,
                                int bytes) override;
  std::uint32_t GetDlgItemInt(WindowHandle dialog, std::int32_t id, bool* translated,
                              bool isSigned) override;
  bool SetDlgItemInt(WindowHandle dialog, std::int32_t id, std::uint32_t value,
                     bool isSigned) override;
  bool CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) override;
  std::uint32_t IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) override;
  std::intptr_t GetWindowLongPtrW(WindowHandle window, std::int32_t index) override;
  std::intptr_t SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                  std::intptr_t value) override;
  std::uintptr_t SetClassLongPtrW(WindowHandle window, std::int32_t index,
                                  std::intptr_t value) override;
  bool GetWindowRect(WindowHandle window, Rect* rect) override;
  int MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) override;
  bool GetCursorPos(Point* point) override;
  bool SetCursorPos(std::int32_t x, std::int32_t y) override;
  WindowHandle CreateWindowExW(std::uint32_t extendedStyle, const char16_t* className,
                               std::uint32_t style, WindowHandle owner,
                               ModuleHandle module) override;
  bool DestroyWindow(WindowHandle window) override;
  // Hands the dialog to `onDialog`, which plays the user. One that it leaves open is closed as by
  // its Cancel button, and ends with -1 when it resists.
  std::intptr_t DialogBoxParamW(ModuleHandle module, std::uint32_t templateId, WindowHandle owner,
                                DialogProcedure procedure, std::intptr_t initParam) override;
  bool EndDialog(WindowHandle dialog, std::intptr_t result) override;
  ImageHandle LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                         std::int32_t width, std::int32_t height) override;

  // ---- What a test sets and sees

  struct Box {
    WindowHandle owner;
    std::u16string text;
    std::u16string caption;
    std::uint32_t style;
  };
  // The boxes shown, in order, and what the user will answer to the next ones. A box that finds no
  // answer is answered with IDOK.
  std::vector<Box> boxes;
  std::deque<int> answers;
  // Called while a box is open.
  std::function<void(const Box&)> onBox;

  // Plays the user while a modal dialog is open: called once for each, when it is shown. A dialog
  // has ended when IsOpenDialog says so; nothing of it can be reached then.
  std::function<void(WindowHandle dialog)> onDialog;
  bool IsOpenDialog(WindowHandle dialog) const;

  // What code did to a window's state, in order, whether that changed it or not.
  struct StateChange {
    WindowHandle window;
    enum Kind { kEnable, kShow } kind;
    bool on;
    bool operator==(const StateChange&) const = default;
  };
  std::vector<StateChange> stateChanges;

  Point cursor = {0, 0};
  // Where the mouse was put by SetCursorPos, in order.
  std::vector<Point> cursorMoves;

  // An image that a control shows or that was loaded.
  struct Image {
    ModuleHandle module;
    std::uint32_t id;
    std::uint32_t kind;  // IMAGE_...
    Size size;           // as asked for; its own for a bitmap
  };
  // Images of LoadImageW, in order of their loading, and how many of them there are.
  const Image* ImageOf(ImageHandle image) const;
  std::size_t loadedImages() const { return images_.size(); }

  // Null for what isn't a window (any more).
  const Window* Find(WindowHandle window) const;
  Window* Find(WindowHandle window);
  // Works on with a window after a notification, if that has left it alive.
  template <typename Work>
  void IfAlive(WindowHandle window, Work work) {
    if (Window* found = Find(window); found != nullptr) {
      work(*found);
    }
  }
  bool IsWindow(WindowHandle window) const { return Find(window) != nullptr; }
  bool IsMirrored(WindowHandle window) const;
  // Whether the window and all that hold it are shown, and enabled. Owners don't count.
  bool IsReachable(WindowHandle window) const;
  std::size_t liveWindows() const { return windows_.size(); }
  WindowHandle focus() const { return focus_; }
  // A value of a class, by its name in lower case; 0 when none was set.
  std::intptr_t ClassLong(const std::u16string& className, std::int32_t index) const;

  // ---- For those who play the system's part: a sheet, a user. None of these asks the fault plan.

  // Builds a dialog from a template of a loaded module. With `asChild` it is a page within its
  // parent, hidden; else it stands where the template says. Null when the module holds no such
  // template. The procedure gets WM_INITDIALOG last, unless an owner-drawn list asks it for its
  // height before.
  WindowHandle CreateDialogWindow(ModuleHandle module, std::uint32_t templateId,
                                  WindowHandle parent, DialogProcedure procedure,
                                  std::intptr_t initParam, bool asChild);
  // A window that `answerer` answers for; FindWindowW finds it by its class, in lower case.
  WindowHandle CreatePlayedWindow(
      Rect place,
      std::function<std::intptr_t(std::uint32_t, std::uintptr_t, std::intptr_t)> answerer,
      const std::u16string& className = u"");
  // Hands the messages over that were posted so far, as a thread does that asks for them.
  void DeliverPosted();
  // A message to a window, handled by whoever has to. A dialog's answer is what it put into
  // DWLP_MSGRESULT, when its procedure says that it has answered.
  std::intptr_t Deliver(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                        std::intptr_t lParam);
  // WM_COMMAND from a control to its parent.
  void NotifyParent(const Window& control, std::uint16_t code);
  void MoveFocus(WindowHandle window);
  // The same by a press of the mouse, which holds back the click that an unchecked radio button
  // gets with the focus.
  void MoveFocusByMouse(WindowHandle window);
  void Show(WindowHandle window, bool show);
  void Destroy(WindowHandle window);
  std::u16string TextOf(const Window& window) const;
  WindowHandle ControlOf(WindowHandle dialog, std::int32_t id) const;

 private:
  static constexpr std::uintptr_t kHandleStep = 2;

  Window& Add(const std::u16string& className);
  WindowHandle BuildDialog(ModuleHandle module, std::uint32_t templateId, WindowHandle parent,
                           DialogProcedure procedure, bool asChild);
  WindowHandle FirstStop(const Window& dialog) const;
  WindowHandle TopOf(WindowHandle window) const;
  WindowHandle LockTopOf(WindowHandle owner);
  void Unlock(WindowHandle locked);
  void RunModal(WindowHandle dialog, bool leavesFocus);
  void End(Window& dialog, std::intptr_t result);
  void AddControl(ModuleHandle module, const DialogControl& control, WindowHandle dialog);
  void ShowOwnImage(Window& window, ModuleHandle module, const DialogControl& control);
  void AskItemHeight(WindowHandle control);
  Rect PlaceWithin(const Window& parent, const DialogPlace& place) const;
  std::int32_t ToScreenX(const Window* window, std::int32_t x) const;
  std::int32_t FromScreenX(const Window* window, std::int32_t x) const;
  std::intptr_t CallProcedure(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                              std::intptr_t lParam);
  ImageHandle AddImage(ModuleHandle module, std::uint32_t id, std::uint32_t kind, Size size);
  // Asks the fault plan and finds the window; null with the last error set when either says no.
  Window* Take(const char* operation, WindowHandle window);
  bool Fail(std::uint32_t code);

  struct PostedMessage {
    WindowHandle window;
    std::uint32_t message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
  };

  FaultPlan& faults_;
  HeadlessDebugOutput& debug_;
  HeadlessModules& modules_;
  std::vector<PostedMessage> posted_;
  std::map<WindowHandle, std::unique_ptr<Window>> windows_;
  std::map<std::pair<std::u16string, std::int32_t>, std::intptr_t> classLongs_;
  std::map<ImageHandle, Image> images_;
  WindowHandle focus_ = nullptr;
  WindowHandle pressed_ = nullptr;  // where the mouse's button is down
  std::uintptr_t nextHandle_ = 0x10010;
  std::uintptr_t nextImage_ = 0x800010;
};

}  // namespace ostrel::headless
