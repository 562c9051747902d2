#include "platform/win32/win32_platform.h"

#include "platform/win32/system_lists.h"

namespace ostrel::win32 {
namespace {

// Without state and built at compile time, so that they stand before the library is attached.
constinit SystemPrintSystem printSystem;
constinit SystemLocale locale;
constinit SystemModules modules;
constinit SystemFiles files;
constinit SystemRegistry registry;
constinit SystemSecurity security;
constinit SystemShell shell;
constinit SystemWindows windows;
constinit SystemGraphics graphics;
constinit SystemSystem systemList;
constinit SystemMemory memory;
constinit SystemDebugOutput debugOutput;

constinit Platform platform = {.print = printSystem,
                               .locale = locale,
                               .modules = modules,
                               .files = files,
                               .registry = registry,
                               .security = security,
                               .shell = shell,
                               .windows = windows,
                               .graphics = graphics,
                               .system = systemList,
                               .memory = memory,
                               .debug = debugOutput};

}  // namespace

Platform& SystemPlatform() {
  return platform;
}

}  // namespace ostrel::win32
