// The lists of this platform, one class each, without any state of their own.
#pragma once

#include "platform/platform.h"

namespace ostrel::win32 {

class SystemPrintSystem final : public PrintSystem {
 public:
  bool OpenPrinterW(const char16_t* name, PrinterHandle* printer,
                    const PrinterDefaults* defaults) override;
  bool ClosePrinter(PrinterHandle printer) override;
  bool GetPrinterW(PrinterHandle printer, std::uint32_t level, void* buffer,
                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool GetPrinterDriverW(PrinterHandle printer, const char16_t* environment, std::uint32_t level,
                         void* buffer, std::uint32_t sizeBytes,
                         std::uint32_t* neededBytes) override;
  bool GetPrinterDriverDirectoryW(const char16_t* server, const char16_t* environment,
                                  std::uint32_t level, void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override;
  bool GetPrinterDriverDirectoryA(const char* server, const char* environment, std::uint32_t level,
                                  void* buffer, std::uint32_t sizeBytes,
                                  std::uint32_t* neededBytes) override;
  std::uint32_t GetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t* type,
                                void* data, std::uint32_t sizeBytes,
                                std::uint32_t* neededBytes) override;
  std::uint32_t SetPrinterDataW(PrinterHandle printer, const char16_t* name, std::uint32_t type,
                                const void* data, std::uint32_t sizeBytes) override;
  bool SetPrinterW(PrinterHandle printer, std::uint32_t level, const void* buffer,
                   std::uint32_t command) override;
};

class SystemLocale final : public Locale {
 public:
  int GetLocaleInfoW(std::uint32_t locale, std::uint32_t type, char16_t* buffer,
                     int units) override;
  std::uint16_t GetUserDefaultUILanguage() override;
  int GetDateFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override;
  int GetTimeFormatW(std::uint32_t locale, std::uint32_t flags, const SystemTime& time,
                     const char16_t* format, char16_t* buffer, int units) override;
  int MultiByteToWideChar(std::uint32_t codePage, const char* text, char16_t* buffer,
                          int units) override;
};

class SystemModules final : public Modules {
 public:
  std::uint32_t GetModuleFileNameW(ModuleHandle module, char16_t* path,
                                   std::uint32_t units) override;
  ModuleHandle LoadLibraryW(const char16_t* path) override;
  bool FreeLibrary(ModuleHandle module) override;
  int LoadStringW(ModuleHandle module, std::uint32_t id, char16_t* buffer, int units) override;
  bool FindResourceW(ModuleHandle module, std::uint32_t id, std::uint32_t type) override;
  ExportedFunction GetProcAddress(ModuleHandle module, const char* name) override;
};

class SystemFiles final : public Files {
 public:
  std::uint32_t GetFileAttributesW(const char16_t* path) override;
  bool FindFirstFileW(const char16_t* path) override;
  FileHandle CreateFileW(const char16_t* path, Access access) override;
  bool GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) override;
  bool ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override;
  bool WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override;
  bool SetEndOfFile(FileHandle file) override;
  bool CloseHandle(FileHandle file) override;
  bool DeleteFileW(const char16_t* path) override;
  bool CreateDirectoryW(const char16_t* path) override;
  std::uint32_t GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                         const char16_t* fallback, char16_t* buffer,
                                         std::uint32_t units, const char16_t* path) override;
};

class SystemRegistry final : public Registry {
 public:
  std::uint32_t RegCreateKeyExW(const char16_t* path, RegistryKey* key) override;
  std::uint32_t RegQueryValueExW(RegistryKey key, const char16_t* name, std::uint32_t* type,
                                 void* data, std::uint32_t* sizeBytes) override;
  std::uint32_t RegSetValueExW(RegistryKey key, const char16_t* name, std::uint32_t type,
                               const void* data, std::uint32_t sizeBytes) override;
  std::uint32_t RegCloseKey(RegistryKey key) override;
};

class SystemSecurity final : public Security {
 public:
  bool OpenProcessToken(TokenHandle* token) override;
  bool GetTokenInformation(TokenHandle token, std::uint32_t informationClass, void* buffer,
                           std::uint32_t sizeBytes, std::uint32_t* neededBytes) override;
  bool CloseHandle(TokenHandle token) override;
  bool ConvertSidToStringSidW(void* sid, char16_t** text) override;
  void LocalFree(void* block) override;
  bool GetUserNameW(char16_t* buffer, std::uint32_t* units) override;
};

class SystemShell final : public Shell {
 public:
  std::uint32_t SHGetFolderPathW(std::uint32_t folder, char16_t* path) override;
  bool ShellExecuteW(const char16_t* verb, const char16_t* file, const char16_t* parameters,
                     std::int32_t showCommand) override;
  WindowHandle HtmlHelpW(WindowHandle window, const char16_t* file, std::uint32_t command,
                         std::uintptr_t data) override;
};

class SystemWindows final : public Windows {
 public:
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
  std::intptr_t DialogBoxParamW(ModuleHandle module, std::uint32_t templateId, WindowHandle owner,
                                DialogProcedure procedure, std::intptr_t initParam) override;
  bool EndDialog(WindowHandle dialog, std::intptr_t result) override;
  ImageHandle LoadImageW(ModuleHandle module, std::uint32_t id, std::uint32_t kind,
                         std::int32_t width, std::int32_t height) override;
};

class SystemGraphics final : public Graphics {
 public:
  GdiObject LoadBitmapW(ModuleHandle module, std::uint32_t id) override;
  bool DeleteObject(GdiObject object) override;
  bool GetBitmapSize(GdiObject bitmap, Size* size) override;
  DeviceContext GetDC(WindowHandle window) override;
  int ReleaseDC(WindowHandle window, DeviceContext context) override;
  int GetDeviceCaps(DeviceContext context, std::int32_t index) override;
  DeviceContext CreateCompatibleDC(DeviceContext context) override;
  bool DeleteDC(DeviceContext context) override;
  GdiObject SelectObject(DeviceContext context, GdiObject object) override;
  std::uint32_t GetLayout(DeviceContext context) override;
  std::uint32_t SetLayout(DeviceContext context, std::uint32_t layout) override;
  bool TransparentBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from,
                      std::uint32_t transparentColor) override;
  GdiObject CreateCompatibleBitmap(DeviceContext context, std::int32_t width,
                                   std::int32_t height) override;
  GdiObject CreatePen(std::int32_t style, std::int32_t width, std::uint32_t color) override;
  GdiObject GetStockObject(std::int32_t index) override;
  int GetDIBits(DeviceContext context, GdiObject bitmap, std::uint32_t firstRow, std::uint32_t rows,
                void* pixels, BitmapInfoHeader* form) override;
  int StretchDIBits(DeviceContext target, const Rect& place, const Rect& from, const void* pixels,
                    const BitmapInfoHeader& form, std::uint32_t rasterOperation) override;
  bool BitBlt(DeviceContext target, const Rect& place, DeviceContext source, Point from) override;
  bool StretchBlt(DeviceContext target, const Rect& place, DeviceContext source,
                  const Rect& from) override;
  int SetStretchBltMode(DeviceContext context, std::int32_t mode) override;
  bool FillRect(DeviceContext target, const Rect& place, GdiObject brush) override;
  bool Rectangle(DeviceContext target, const Rect& place) override;
  bool Ellipse(DeviceContext target, const Rect& place) override;
  bool Polygon(DeviceContext target, const Point* corners, int count) override;
  GdiObject LoadImageW(const char16_t* path, std::uint32_t flags) override;
  GdiObject CreateSolidBrush(std::uint32_t color) override;
  GdiObject CreateBrushIndirect(const LogBrush& brush) override;
  GdiObject CreateFontIndirectW(const LogFont& font) override;
  int EnumFontFamiliesExW(DeviceContext context, const LogFont& wanted, FontCallback callback,
                          std::intptr_t callersWord) override;
  bool SetWindowOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                      Point* before) override;
  bool SetViewportOrgEx(DeviceContext context, std::int32_t x, std::int32_t y,
                        Point* before) override;
  bool SetWindowExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                      Size* before) override;
  bool SetViewportExtEx(DeviceContext context, std::int32_t width, std::int32_t height,
                        Size* before) override;
  bool DPtoLP(DeviceContext context, Point* points, int count) override;
  int SetBkMode(DeviceContext context, std::int32_t mode) override;
  int SetROP2(DeviceContext context, std::int32_t operation) override;
  int SetPolyFillMode(DeviceContext context, std::int32_t mode) override;
  std::uint32_t SetTextAlign(DeviceContext context, std::uint32_t align) override;
  std::uint32_t SetTextColor(DeviceContext context, std::uint32_t color) override;
  std::uint32_t SetBkColor(DeviceContext context, std::uint32_t color) override;
  bool BeginPath(DeviceContext context) override;
  bool EndPath(DeviceContext context) override;
  bool FillPath(DeviceContext context) override;
  bool ExtTextOutW(DeviceContext context, std::int32_t x, std::int32_t y, std::uint32_t options,
                   const Rect* place, const char16_t* text, int units) override;
  int ExtEscape(DeviceContext context, std::int32_t code, std::int32_t inputBytes,
                const void* input, std::int32_t outputBytes, void* output) override;
  bool GetTextExtentPointW(DeviceContext context, const char16_t* text, int units,
                           Size* size) override;
};

class SystemSystem final : public System {
 public:
  std::uint32_t GetCurrentThreadId() override;
  std::uint32_t GetMajorVersion() override;
  ActivationContext CreateActCtxW(ModuleHandle module, std::uint32_t manifestId) override;
  void ReleaseActCtx(ActivationContext context) override;
  bool CreateProcessW(const char16_t* application, char16_t* commandLine,
                      std::uint32_t creationFlags, const char16_t* windowTitle,
                      ProcessInformation* information) override;
  bool CloseHandle(ProcessHandle handle) override;
  void GetLocalTime(SystemTime* time) override;
  void Sleep(std::uint32_t duration_ms) override;
  bool GetComputerNameW(char16_t* buffer, std::uint32_t* units) override;
  std::uint32_t GetSystemDirectoryW(char16_t* path, std::uint32_t units) override;
  bool SetCurrentDirectoryW(const char16_t* path) override;
};

class SystemMemory final : public Memory {
 public:
  void* HeapAlloc(std::size_t sizeBytes) override;
  void HeapFree(void* block) override;
};

class SystemDebugOutput final : public DebugOutput {
 public:
  void OutputDebugStringW(const char16_t* line) override;
  std::uint32_t GetLastError() override;
  void SetLastError(std::uint32_t code) override;
};

}  // namespace ostrel::win32
