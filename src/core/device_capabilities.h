// Answers to the graphics engine's questions about the device.
//
// Every answer comes from the paper and source tables, from a freshly defaulted public record, from
// the printer's tray equipment or from the user's custom papers, never from the caller's record.
#pragma once

#include "config/setting_stores.h"
#include "platform/print_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

// What DrvDeviceCapabilities answers for a code that it doesn't know.
inline constexpr std::uint32_t kCapabilityUnknown = 0xFFFFFFFF;

// The exported function of this name. `output` may be null for every list; then only the count is
// returned. `devmode` is ignored. A null printer counts as one that tells nothing.
std::uint32_t DrvDeviceCapabilities(PrinterHandle printer, const char16_t* deviceName,
                                    std::uint16_t capability, void* output,
                                    const PublicDevmode* devmode);

// The lists by themselves, for custom papers and tray counts of the caller's choice. Each writes to
// `output` unless it is null, and returns the count.
std::uint32_t AnswerPapers(std::span<const CustomPaperRecord> customs, std::uint16_t* output);
std::uint32_t AnswerPaperSizes(std::span<const CustomPaperRecord> customs, Point* output);
std::uint32_t AnswerPaperNames(std::span<const CustomPaperRecord> customs, ModuleHandle module,
                               char16_t* output);
std::uint32_t AnswerBins(int missingTrays, std::uint16_t* output);
std::uint32_t AnswerBinNames(int missingTrays, ModuleHandle module, char16_t* output);

// One name of the paper lists, filled with NUL behind the text.
using PaperNameRow = std::array<char16_t, kPaperNameUnits>;

// The names of all media that the driver could have ready: the 28 of the paper table, and then
// twenty custom papers numbered from 1, in the words of the library's format or as "Custom %d" when
// that is missing or its text too long.
using MediaReadyNames = std::array<PaperNameRow, 28 + kMaxCustomPapers>;
MediaReadyNames BuildMediaReadyNames(ModuleHandle module);

// Writes the name of a custom paper with its size, "Name (w x hmm)", into a row of 64 units. A text
// that has 64 characters or more gives way to "Custom n (w x hmm)", n being its place in the list,
// counted from 0. The rest of the row is NUL.
void WriteCustomPaperName(std::u16string_view name, std::size_t place, std::uint32_t width_mm,
                          std::uint32_t length_mm, std::span<char16_t, kPaperNameUnits> row);

}  // namespace ostrel
