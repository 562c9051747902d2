// The lists of operations through which the logic reaches the world.
//
// Every operation bears the platform's own name and keeps its contract: arguments, results and the
// last error are those that the platform documents for the function of that name. Two sets stand
// behind the lists: win32/ passes each call on to the system, headless/ answers from memory and can
// be made to fail at any call. The logic holds no other door to the outside.
#pragma once

#include "platform/print_types.h"
#include "platform/window_types.h"

#include <cstddef>
#include <cstdint>

namespace ostrel {

// Printers, drivers and what the spooler keeps for them (winspool.drv).
class PrintSystem {
 public:
  virtual bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                            const PrinterDefaults* defaults) = 0;
  virtual bool ClosePrinter(PrinterHandle printer) = 0;
  virtual bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) = 0;
  virtual bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment,
                                 std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                 std::uint32_t* neededBytes) = 0;
  virtual bool GetPrinterDriverDirectoryW(const char16_t* server, const char16_t* environment,
                                          std::uint32_t level, void* buffer,
                                          std::uint32_t sizeBytes, std::uint32_t* neededBytes) = 0;
  // The same in 8-bit text of the system's code page, with "?" for what it has no letter for.
  virtual bool GetPrinterDriverDirectoryA(const char* server, const char* environment,
                                          std::uint32_t level, void* buffer,
                                          std::uint32_t sizeBytes, std::uint32_t* neededBytes) = 0;
  // Results of the printer data: an error code, 0 for success.
  virtual std::uint32_t GetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                        std::uint32_t* type, void* data, std::uint32_t sizeBytes,
                                        std::uint32_t* neededBytes) = 0;
  virtual std::uint32_t SetPrinterDataW(PrinterHandle printer, const char16_t* name,
                                        std::uint32_t type, const void* data,
                                        std::uint32_t sizeBytes) = 0;
  virtual bool SetPrinterW(PrinterHandle printer, std::uint32_t level, const void* buffer,
                           std::uint32_t command) = 0;

 protected:
  ~PrintSystem() = default;
};

// The user's locale and language (kernel32).
class Locale {
 public:
  // Result: units written with the terminator, 0 when the text can't be had.
  virtual int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                             int units) = 0;
  virtual std::uint16_t GetUserDefaultUILanguage() = 0;
  // A day and a time of day in the locale's form, or in that of `format` if there is one. Result:
  // units written with the terminator, 0 when the text doesn't fit or can't be had.
  virtual int GetDateFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                             const char16_t* format, char16_t* buffer, int units) = 0;
  virtual int GetTimeFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                             const char16_t* format, char16_t* buffer, int units) = 0;
  // Makes capitals of a terminated text's letters, in their place (user32).
  virtual void CharUpperW(char16_t* text) = 0;
  // Widens a terminated text. Result: units written with the terminator, 0 when it doesn't fit.
  virtual int MultiByteToWideChar(std::uint32_t codePage, const char* text, char16_t* buffer,
                                  int units) = 0;

 protected:
  ~Locale() = default;
};

// Libraries and the strings in them (kernel32, user32).
class Modules {
 public:
  // Result: units written without the terminator, `units` when the path was cut, 0 on failure.
  virtual std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                           std::uint32_t units) = 0;
  virtual ModuleHandle LoadLibraryW(const char16_t* path) = 0;
  virtual bool FreeLibrary(ModuleHandle module) = 0;
  // Result: units written without the terminator; a longer text is cut to fit; 0 when there is
  // none.
  virtual int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) = 0;
  // Whether the module holds a resource of this id and type, RT_....
  virtual bool FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) = 0;
  // Result: null when the module exports no such function.
  virtual ExportedFunction GetProcAddress(ModuleHandle module, const char* name) = 0;

 protected:
  ~Modules() = default;
};

// The file system (kernel32). What the platform takes as flags stands here as one choice a caller
// has; every opening shares the file with all others.
class Files {
 public:
  enum class Access {
    kOpenExistingForReading,
    kOpenExistingForUpdate,   // reading and writing; a file that may not be written isn't opened
    kCreateAlwaysForWriting,  // what was in the file is gone
    kOpenAlwaysForAppending,  // a missing file is made, an existing one is left as it is
  };

  // Result: kInvalidFileAttributes when there is nothing at the path.
  virtual std::uint32_t GetFileAttributesW(const char16_t* path) = 0;
  // Whether a search for the path finds anything; the search is ended at once.
  virtual bool FindFirstFileW(const char16_t* path) = 0;
  // Result: null when the file can't be opened.
  virtual FileHandle CreateFileW(const char16_t* path, Access access) = 0;
  virtual bool GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) = 0;
  virtual bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                        std::uint32_t* readBytes) = 0;
  virtual bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                         std::uint32_t* writtenBytes) = 0;
  // Ends the file where the last reading or writing through the handle stopped.
  virtual bool SetEndOfFile(FileHandle file) = 0;
  virtual bool CloseHandle(FileHandle file) = 0;
  virtual bool DeleteFileW(const char16_t* path) = 0;
  virtual bool CreateDirectoryW(const char16_t* path) = 0;
  // Reads a value of an ini file. Result: units written without the terminator; `fallback` takes
  // the place of a value that isn't there.
  virtual std::uint32_t GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                                 const char16_t* fallback, char16_t* buffer,
                                                 std::uint32_t units, const char16_t* path) = 0;

 protected:
  ~Files() = default;
};

// The registry below HKEY_USERS (advapi32). Results: an error code, 0 for success.
class Registry {
 public:
  // Opens the key, making it if it is missing, for reading and writing values.
  virtual std::uint32_t RegCreateKeyExW(const char16_t* path, RegistryKey* key) = 0;
  virtual std::uint32_t RegQueryValueExW(RegistryKey key, const char16_t* name, std::uint32_t* type,
                                         void* data, std::uint32_t* sizeBytes) = 0;
  virtual std::uint32_t RegSetValueExW(RegistryKey key, const char16_t* name, std::uint32_t type,
                                       const void* data, std::uint32_t sizeBytes) = 0;
  virtual std::uint32_t RegCloseKey(RegistryKey key) = 0;

 protected:
  ~Registry() = default;
};

// Who the calling process runs for (advapi32).
class Security {
 public:
  // Opens the calling process's token for queries.
  virtual bool OpenProcessToken(TokenHandle* token) = 0;
  virtual bool GetTokenInformation(TokenHandle token, std::uint32_t informationClass, void* buffer,
                                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) = 0;
  virtual bool CloseHandle(TokenHandle token) = 0;
  // The text is freed with LocalFree.
  virtual bool ConvertSidToStringSidW(void* sid, char16_t** text) = 0;
  virtual void LocalFree(void* block) = 0;
  // `units` tells the buffer's size and takes the units written, with the terminator.
  virtual bool GetUserNameW(char16_t* buffer, std::uint32_t* units) = 0;

 protected:
  ~Security() = default;
};

// The shell and its help (shell32, hhctrl).
class Shell {
 public:
  // Writes the folder's path, without a separator at the end, into 260 units. Result: an HRESULT.
  virtual std::uint32_t SHGetFolderPathW(std::uint32_t folder, char16_t* path) = 0;
  // `verb` may be null for the usual one; `showCommand` is one of ShowWindow's.
  virtual bool ShellExecuteW(const char16_t* verb, const char16_t* file, const char16_t* parameters,
                             std::int32_t showCommand) = 0;
  virtual WindowHandle HtmlHelpW(WindowHandle window, const char16_t* file, std::uint32_t command,
                                 std::uintptr_t data) = 0;

 protected:
  ~Shell() = default;
};

// Windows, dialogs, their controls and boxes (user32, comctl32).
class Windows {
 public:
  // Result: the button's id, 0 when the box can't be shown.
  virtual int MessageBoxW(WindowHandle owner, const char16_t* text, const char16_t* caption,
                          std::uint32_t style) = 0;

  // Result: null when the dialog has no such control.
  virtual WindowHandle GetDlgItem(WindowHandle dialog, std::int32_t id) = 0;
  virtual WindowHandle GetParent(WindowHandle window) = 0;
  virtual bool EnableWindow(WindowHandle window, bool enable) = 0;
  virtual bool IsWindowEnabled(WindowHandle window) = 0;
  virtual bool ShowWindow(WindowHandle window, std::int32_t command) = 0;
  virtual WindowHandle SetFocus(WindowHandle window) = 0;
  virtual bool InvalidateRect(WindowHandle window) = 0;  // the whole window, its background too
  virtual std::intptr_t SendMessageW(WindowHandle window, std::uint32_t message,
                                     std::uintptr_t wParam, std::intptr_t lParam) = 0;
  // To a window alone: null doesn't stand for the calling thread.
  virtual bool PostMessageW(WindowHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) = 0;
  // A top window of this class, whatever its title and whosever it is; null when there is none.
  virtual WindowHandle FindWindowW(const char16_t* className) = 0;

  // Result: units copied, without the terminator.
  virtual int GetWindowTextW(WindowHandle window, char16_t* buffer, int units) = 0;
  virtual bool SetWindowTextW(WindowHandle window, const char16_t* text) = 0;
  virtual bool SetWindowTextA(WindowHandle window, const char* text) = 0;
  // Texts and numbers of a dialog's control. `translated` tells whether the text was a number.
  virtual std::uint32_t GetDlgItemTextA(WindowHandle dialog, std::int32_t id, char* buffer,
                                        int bytes) = 0;
  virtual std::uint32_t GetDlgItemInt(WindowHandle dialog, std::int32_t id, bool* translated,
                                      bool isSigned) = 0;
  virtual bool SetDlgItemInt(WindowHandle dialog, std::int32_t id, std::uint32_t value,
                             bool isSigned) = 0;
  virtual bool CheckDlgButton(WindowHandle dialog, std::int32_t id, std::uint32_t state) = 0;
  virtual std::uint32_t IsDlgButtonChecked(WindowHandle dialog, std::int32_t id) = 0;

  virtual std::intptr_t GetWindowLongPtrW(WindowHandle window, std::int32_t index) = 0;
  virtual std::intptr_t SetWindowLongPtrW(WindowHandle window, std::int32_t index,
                                          std::intptr_t value) = 0;
  // Sets a value of the window's class.
  virtual std::uintptr_t SetClassLongPtrW(WindowHandle window, std::int32_t index,
                                          std::intptr_t value) = 0;

  // In screen coordinates, and the way from one window's client coordinates to another's; a null
  // window stands for the screen. A mirrored target turns left and right round.
  virtual bool GetWindowRect(WindowHandle window, Rect* rect) = 0;
  virtual int MapWindowPoints(WindowHandle from, WindowHandle to, Rect* rect) = 0;
  virtual bool GetCursorPos(Point* point) = 0;
  virtual bool SetCursorPos(std::int32_t x, std::int32_t y) = 0;

  // A window without a place of its own, such as a tooltip, owned by the top window that
  // `owner` stands in, and destroyed with that.
  virtual WindowHandle CreateWindowExW(std::uint32_t extendedStyle, const char16_t* className,
                                       std::uint32_t style, WindowHandle owner,
                                       ModuleHandle module) = 0;
  virtual bool DestroyWindow(WindowHandle window) = 0;

  // Shows a module's dialog over its owner and returns when EndDialog has ended it. Result: what
  // EndDialog was given; -1 when the dialog can't be made.
  virtual std::intptr_t DialogBoxParamW(ModuleHandle module, std::uint32_t templateId,
                                        WindowHandle owner, DialogProcedure procedure,
                                        std::intptr_t initParam) = 0;
  virtual bool EndDialog(WindowHandle dialog, std::intptr_t result) = 0;

  // An icon or a bitmap of a module, in pixels. Null when there is none.
  virtual ImageHandle LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                                 std::int32_t width, std::int32_t height) = 0;

 protected:
  ~Windows() = default;
};

// Drawing (gdi32, msimg32, user32).
class Graphics {
 public:
  // Null when the module holds no such bitmap. Freed with DeleteObject.
  virtual GdiObject LoadBitmapW(ModuleHandle module, std::uint32_t id) = 0;
  virtual bool DeleteObject(GdiObject object) = 0;
  // The size of a bitmap in pixels.
  virtual bool GetBitmapSize(GdiObject bitmap, Size* size) = 0;

  // The device context of a window, of the screen for null. Given back with ReleaseDC.
  virtual DeviceContext GetDC(WindowHandle window) = 0;
  virtual int ReleaseDC(WindowHandle window, DeviceContext context) = 0;
  virtual int GetDeviceCaps(DeviceContext context, std::int32_t index) = 0;
  // A context in memory, compatible with another one. Freed with DeleteDC.
  virtual DeviceContext CreateCompatibleDC(DeviceContext context) = 0;
  virtual bool DeleteDC(DeviceContext context) = 0;
  // Result: what was selected before; null on failure.
  virtual GdiObject SelectObject(DeviceContext context, GdiObject object) = 0;
  // How the context counts its horizontal way, kLayout....
  virtual std::uint32_t GetLayout(DeviceContext context) = 0;
  virtual std::uint32_t SetLayout(DeviceContext context, std::uint32_t layout) = 0;
  // Copies a rectangle of the same size, leaving out pixels of a colour (0x00BBGGRR).
  virtual bool TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source,
                              Point from, std::uint32_t transparentColor) = 0;

  // Null on failure. Both are freed with DeleteObject.
  virtual GdiObject CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                           std::int32_t height) = 0;
  virtual GdiObject CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) = 0;
  // One of the system's own objects; it is never freed.
  virtual GdiObject GetStockObject(std::int32_t index) = 0;

  // Copies rows of a bitmap that no context holds into memory, in the form that `form` asks for.
  // Result: rows copied, 0 on failure.
  virtual int GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow,
                        std::uint32_t rows, void* pixels, BitmapInfoHeader* form) = 0;
  // Draws pixels of memory; `from` counts in their rows, the last of which lies at its top when the
  // form has them last row first. `rasterOperation` is kRasterCopy or another of the ternary ones.
  // Result: rows drawn, 0 on failure.
  virtual int StretchDIBits(DeviceContext target, const Rect& place, const Rect& from,
                            const void* pixels, const BitmapInfoHeader& form,
                            std::uint32_t rasterOperation) = 0;
  virtual bool BitBlt(DeviceContext target, const Rect& place, DeviceContext source,
                      Point from) = 0;
  // A place whose right lies left of its left, or whose bottom above its top, turns the picture.
  virtual bool StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                          const Rect& from) = 0;
  // Result: the mode before; 0 on failure.
  virtual int SetStretchBltMode(DeviceContext context, std::int32_t mode) = 0;
  virtual bool FillRect(DeviceContext target, const Rect& place, GdiObject brush) = 0;
  // With the context's pen and brush.
  virtual bool Rectangle(DeviceContext target, const Rect& place) = 0;
  // Two more shapes with the context's pen and brush.
  virtual bool Ellipse(DeviceContext target, const Rect& place) = 0;
  virtual bool Polygon(DeviceContext target, const Point* corners, int count) = 0;

  // The bitmap in a file, in its own size. `flags` are LR_... of LoadImage. Null when there is
  // none. Freed with DeleteObject.
  virtual GdiObject LoadImageW(const char16_t* path, std::uint32_t flags) = 0;
  // Null on failure. All are freed with DeleteObject.
  virtual GdiObject CreateSolidBrush(std::uint32_t color) = 0;
  virtual GdiObject CreateBrushIndirect(const LogBrush& brush) = 0;
  virtual GdiObject CreateFontIndirectW(const LogFont& font) = 0;
  // Reports the fonts of the face and the character set of `wanted` until the callback says 0.
  // Result: what the callback said last; what it says when there is no font is up to the platform.
  virtual int EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted,
                                  FontCallback callback, std::intptr_t callersWord) = 0;

  // The mapping of a context: from its window, in the units that callers count in, to its viewport,
  // in the device's. `before` takes what was in force.
  virtual bool SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                              Point* before) = 0;
  virtual bool SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                                Point* before) = 0;
  virtual bool SetWindowExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                              Size* before) = 0;
  virtual bool SetViewportExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                                Size* before) = 0;
  // Turns points of the device's into callers' ones.
  virtual bool DPtoLP(DeviceContext context, Point* points, int count) = 0;

  // What drawing goes by. Results: what was in force before; on failure 0, and kInvalidColor or
  // kInvalidTextAlign where 0 is a value.
  virtual int SetBkMode(DeviceContext context, std::int32_t mode) = 0;
  virtual int SetROP2(DeviceContext context, std::int32_t operation) = 0;
  virtual int SetPolyFillMode(DeviceContext context, std::int32_t mode) = 0;
  virtual std::uint32_t SetTextAlign(DeviceContext context, std::uint32_t align) = 0;
  virtual std::uint32_t SetTextColor(DeviceContext context, std::uint32_t color) = 0;
  virtual std::uint32_t SetBkColor(DeviceContext context, std::uint32_t color) = 0;

  // What is drawn between the first two becomes the context's path instead of a picture.
  virtual bool BeginPath(DeviceContext context) = 0;
  virtual bool EndPath(DeviceContext context) = 0;
  // Fills the path with the context's brush, and drops it.
  virtual bool FillPath(DeviceContext context) = 0;
  // `options` are ETO_...; `place` may be null.
  virtual bool ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y,
                           std::uint32_t options, const Rect* place, const char16_t* text,
                           int units) = 0;
  // A word to the driver behind the context. Result: what it answers; 0 for a code that it doesn't
  // know, below 0 for a failure.
  virtual int ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                        const void* input, std::int32_t outputBytes, void* output) = 0;

  // The size of a line of text in the context's font.
  virtual bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                                   Size* size) = 0;

 protected:
  ~Graphics() = default;
};

// Threads, processes, versions, the clock, the computer and activation contexts (kernel32).
class System {
 public:
  virtual std::uint32_t GetCurrentThreadId() = 0;
  // The system's major version.
  virtual std::uint32_t GetMajorVersion() = 0;
  // An activation context from a module's manifest resource. Result: kNone when it can't be
  // made.
  virtual ActivationContext CreateActCtxW(ModuleHandle module, std::uint32_t manifestId) = 0;
  virtual void ReleaseActCtx(ActivationContext context) = 0;
  // Starts a program that inherits no handles, with this process's environment and directory.
  // `commandLine` may be written to; `windowTitle` may be null. Both handles are the caller's.
  virtual bool CreateProcessW(const char16_t* application, char16_t* commandLine,
                              std::uint32_t creationFlags, const char16_t* windowTitle,
                              ProcessInformation* information) = 0;
  virtual bool CloseHandle(ProcessHandle handle) = 0;
  virtual void GetLocalTime(SystemTime* time) = 0;
  virtual void Sleep(std::uint32_t duration_ms) = 0;
  // `units` tells the buffer's size and takes the units written, without the terminator.
  virtual bool GetComputerNameW(char16_t* buffer, std::uint32_t* units) = 0;
  // Result: units written without the terminator; 0 or a number not below `units` on failure.
  virtual std::uint32_t GetSystemDirectoryW(char16_t* path, std::uint32_t units) = 0;
  virtual bool SetCurrentDirectoryW(const char16_t* path) = 0;

 protected:
  ~System() = default;
};

// Memory whose lack an operation must survive (kernel32).
class Memory {
 public:
  // A block of `sizeBytes` zero bytes, aligned for any type; null when there is none to be had.
  virtual void* HeapAlloc(std::size_t sizeBytes) = 0;
  // Frees a block of HeapAlloc; null is allowed.
  virtual void HeapFree(void* block) = 0;

 protected:
  ~Memory() = default;
};

// Debug lines and the calling thread's last error (kernel32).
class DebugOutput {
 public:
  virtual void OutputDebugStringW(const char16_t* line) = 0;
  virtual std::uint32_t GetLastError() = 0;
  virtual void SetLastError(std::uint32_t code) = 0;

 protected:
  ~DebugOutput() = default;
};

// One platform: a list of each kind. It owns none of them.
struct Platform {
  PrintSystem& print;
  Locale& locale;
  Modules& modules;
  Files& files;
  Registry& registry;
  Security& security;
  Shell& shell;
  Windows& windows;
  Graphics& graphics;
  System& system;
  Memory& memory;
  DebugOutput& debug;
};

}  // namespace ostrel
