// What is kept on the printer object and per user.
//
// Printer data are named values that the spooler keeps with a printer, shared by all its users. The
// per-user store is a subtree of the registry; it carries the universal arrangement: one installed
// driver whose real model is chosen afterwards, per user. Nothing is locked: other processes of the
// same user write the same values, and the last writer wins.
#pragma once

#include "core/heap_block.h"
#include "platform/print_types.h"

#include <array>
#include <cstdint>
#include <span>

namespace ostrel {

struct UIContext;

// Optional trays that can be missing.
inline constexpr int kOptionalTrays = 2;
inline constexpr std::uint32_t kTrayFitted = 1;  // any other value of a tray word means missing

// The most that a per-user text may have, with its terminator. Of what is written, only the first
// 130 units are stored.
inline constexpr std::size_t kUserTextUnits = 260;
using UserText = std::array<char16_t, kUserTextUnits>;

// Blocks of printer data, by their place in the table of value names.
enum class PrinterBlock : std::size_t {
  kPrinterData,     // the version block
  kDeviceData,      // no user
  kPrivateDevmode,  // the whole settings record, one for each user of the printer
  kCustomPaper,     // no user
  kFontData,        // no user
};

// The version block of the printer data, 8 bytes.
struct PrinterDataBlock {
  std::uint16_t Version;
  std::uint16_t Size;
  std::uint32_t Reserved;
};
static_assert(sizeof(PrinterDataBlock) == 8);

// The optional-tray block of the printer data, 8 bytes.
struct TrayBlock {
  std::array<std::uint32_t, kOptionalTrays> Trays;  // tray 2, tray 3
};
static_assert(sizeof(TrayBlock) == 8);

// The printer's PRINTER_INFO_2. Null, after a debug line, when the printer tells nothing.
HeapBlock<PrinterInfo2> GetPrinterInfo2(PrinterHandle printer);

// The printer's name out of it, cut to fit; empty when the printer tells nothing. Result: whether
// it told something.
bool ReadPrinterName(PrinterHandle printer, std::span<char16_t> name);

// Stores a block under its pair of names, the length first. The names of the settings record get
// the user's name appended. Result: whether both were stored; without the length the data aren't
// written.
bool WritePrinterBlock(PrinterHandle printer, const void* data, std::uint32_t sizeBytes,
                       PrinterBlock block);

// Reads the optional-tray block. `sizeBytes` takes the length that was stored; words behind it are
// zero. Null when there is none.
HeapBlock<TrayBlock> ReadTrayBlock(PrinterHandle printer, std::uint32_t* sizeBytes);

// Stores the optional-tray block. Result: whether both values were stored.
bool WriteTrayBlock(PrinterHandle printer, const TrayBlock& block);

// Reads a per-user word or text below the subkey, a printer's or a driver's name. Result: true when
// the subkey could be opened, whatever became of the value: one that is missing, of another type or
// too long leaves what the caller had.
bool ReadUserValue(const char16_t* valueName, std::uint32_t* data, const char16_t* subkey);
bool ReadUserValue(const char16_t* valueName, std::span<char16_t> text, const char16_t* subkey);

// A per-user text; empty when there is none.
UserText ReadUserText(const char16_t* valueName, const char16_t* subkey);

// Stores a per-user word or text. Result: whether it was stored. A text always takes 260 bytes, so
// one of more than 129 characters is cut and loses its terminator.
bool WriteUserDword(const char16_t* valueName, std::uint32_t data, const char16_t* subkey);
bool WriteUserString(const char16_t* valueName, const char16_t* text, const char16_t* subkey);

// How many of the two optional trays are missing: 0, 1 or 2. No information counts as 2.
int CountMissingTrays(PrinterHandle printer);

// Brings the printer data block up to this version. Result: false only without memory.
bool UpgradePrinterData(PrinterHandle printer);

// Reads a value of the driver's ini file, which lies beside this library; empty when it isn't
// there.
void ReadConfigValue(std::span<char16_t> output, const char16_t* section, const char16_t* key);

// Whether the printer was set up in universal mode.
bool IsUniversalPrinter(const char16_t* printerName);

// What the opening of a document sheet writes down for a universal printer: the caption, the words
// of the job's warning, the model in force, and the tray words. Does nothing for other printers.
void RecordUniversalPrinter(const UIContext& context, const char16_t* printerName);

}  // namespace ostrel
