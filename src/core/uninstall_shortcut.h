// The repair of an uninstall shortcut, which a printer's events ask for.
#pragma once

namespace ostrel {

// Starts the uninstall program of the first listed model whose name the printer's name holds, with
// the arguments that make it put its shortcut back. Does nothing for other printers.
void RunUninstallShortcut(const char16_t* printerName);

}  // namespace ostrel
