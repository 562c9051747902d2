// The two programs beside the driver: the status monitor, which watches a printer while a job runs,
// and the helper for envelopes. Both are named after the driver's own library, so that each family
// of drivers has its own.
//
// All of this is best effort: a program that can't be found or started stops no job and no page,
// and no message is shown. Only paths that are known in full are started.
#pragma once

#include "platform/print_types.h"

#include <cstdint>
#include <span>

namespace ostrel {

// The message that a document starts; WM_USER + 20, without parameters. Its name in the debug lines
// is START_MUN.
inline constexpr std::uint32_t kStartMonitorMessage = 1044;

// Bytes of the printer's name that follows it with WM_COPYDATA: 260 units, zeros behind the text.
inline constexpr std::uint32_t kMonitorNameBytes = 520;

// The text of a status monitor's window class.
using MonitorClassName = std::span<char16_t, kMaxPathUnits>;

// The name of the status monitor's window class. Result: false when this library's own name can't
// be told.
bool WriteMonitorClassName(MonitorClassName className);

// Tells the status monitor that a document starts on the printer, and starts the monitor where none
// runs; a monitor that was started has the printer's name in its command line and gets no message.
// Blocks until a running monitor has taken the name. Does nothing for a null handle or a printer
// that tells nothing of itself.
void NotifyStatusMonitor(PrinterHandle printer);

// Starts the status monitor, with the printer's name as it stands for its command line, and gives
// it half a second. The process's current directory is the system's afterwards.
void LaunchStatusMonitor(const char16_t* printerName);

// The file name of the envelope helper. Result: false when this library's own name can't be told.
bool WriteEnvelopeHelperName(std::span<char16_t, kMaxPathUnits> programName);

// Starts a program in the folder of drivers, with the printer's name of the driver's ini file for
// its command line. Nobody waits for it, and its handles stay open.
void LaunchEnvelopeHelper(const char16_t* programName);

}  // namespace ostrel
