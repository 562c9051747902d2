// What the driver does when the spooler tells it of a printer's or the driver's fate.
#pragma once

#include <cstdint>

namespace ostrel {

// Events of DrvPrinterEvent that the driver works at, PRINTER_EVENT_... of winddiui.h.
inline constexpr std::int32_t kPrinterEventInitialize = 3;
inline constexpr std::int32_t kPrinterEventCacheRefresh = 5;

// The event of DrvDriverEvent that the driver works at, DRIVER_EVENT_DELETE of winddiui.h.
inline constexpr std::uint32_t kDriverEventDelete = 2;

// Puts a lost uninstall shortcut back, at every event. When a printer is set up or its cache is
// refreshed, stores the default settings: for the user with the printer data, for all as the
// printer's own record. Result: true for other events; else whether the printer could be opened.
bool DrvPrinterEvent(const char16_t* printerName, std::int32_t event);

// A driver that is removed takes the settings file with it that this process has used. Result: 0
// for every event.
std::int32_t DrvDriverEvent(std::uint32_t event);

}  // namespace ostrel
