// The entry points whose whole job is a device-mode question. Arguments, results and last errors
// are those of the exported functions of these names.
#pragma once

#include "platform/print_types.h"

#include <cstdint>

namespace ostrel {

// Whether the record of `info` can be printed with. On a refusal the reason is written into the
// caller's error buffer, cut to fit, and cchNeeded counts its units with the terminator.
bool DevQueryPrintEx(DevQueryPrintInfo* info);

// Answers level 3, an ATTRIBUTE_INFO_3, with 1; any other level with 0.
std::uint32_t DrvQueryJobAttributes(const PublicDevmode* devmode, std::uint32_t level,
                                    void* attributes);

// Converts a record, or gives the driver's default one. `sizeBytes` tells how much `out` holds and
// takes the size that is needed. Last error 87 for what can't be converted, 122 for a small `out`.
bool DrvConvertDevMode(const char16_t* printerName, const PublicDevmode* in, PublicDevmode* out,
                       std::int32_t* sizeBytes, std::uint32_t mode);

// Brings the printer data of a driver that is being replaced up to date. `upgradeInfo` is a
// DRIVER_UPGRADE_INFO_1. Last error 87 for another level or a null pointer.
bool DrvUpgradePrinter(std::uint32_t level, const void* upgradeInfo);

// The form of DrvDocumentPropertySheets that shows no dialog. Result: 7896 when only the size was
// asked, 1 when the record was handed out, -1 when no context could be made.
std::int32_t DocumentPropertiesWithoutDialog(DocumentPropertyHeader* header);

}  // namespace ostrel
