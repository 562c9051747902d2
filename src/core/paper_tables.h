// Papers and sources: the 28 fixed sizes, the five sources, and the rule that picks A4 or Letter.
//
// Sizes are pixels at 600 dpi. Ids up to 70 are DMPAPER_ values of wingdi.h; ids of 241 and above
// are the driver's own; ids from 288 to 319 are the user's sizes, kept in the settings file.
#pragma once

#include "config/setting_stores.h"
#include "core/settings_record.h"
#include "platform/print_types.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrel {

inline constexpr std::int16_t kPaperLetter = 1;  // DMPAPER_LETTER
inline constexpr std::int16_t kPaperA4 = 9;      // DMPAPER_A4
inline constexpr std::uint16_t kFirstCustomPaperId = 288;
inline constexpr std::uint16_t kLastCustomPaperId = 319;

inline constexpr std::uint16_t kPaperMargin_px600 = 95;  // 4 mm, on all four sides of every paper

// Width, length and four margins of a paper in portrait, pixels at 600 dpi.
struct PaperExtent {
  std::uint16_t width_px600;
  std::uint16_t length_px600;
  std::uint16_t margins_px600[4];
};
static_assert(sizeof(PaperExtent) == 12);

struct PaperRow {
  std::uint16_t id;
  std::uint16_t nameStringId;
  std::uint16_t width_px600;
  std::uint16_t length_px600;
};

struct SourceRow {
  std::uint16_t binId;
  std::uint16_t nameStringId;
};

inline constexpr std::size_t kPaperRows = 28;
inline constexpr std::size_t kSourceRows = 5;

// clang-format off
inline constexpr std::array<PaperRow, kPaperRows> kPaperTable = {{
    // Id, Name, Width, Length      (row) millimetres
    {   1,  108,  5100,   6600},  //  0   215.9 x 279.4
    {   9,  116,  4960,   7015},  //  1   210.0 x 297.0
    {   5,  110,  5100,   8400},  //  2   215.9 x 355.6
    {  13,  118,  4299,   6071},  //  3   182.0 x 257.0
    {  37,  123,  2325,   4500},  //  4    98.4 x 190.5
    {  27,  120,  2598,   5197},  //  5   110.0 x 220.0
    {  28,  121,  3827,   5409},  //  6   162.0 x 229.0
    {  20,  122,  2475,   5700},  //  7   104.8 x 241.3
    {  11,  119,  3496,   4960},  //  8   148.0 x 210.0
    {  43, 4063,  2362,   3496},  //  9   100.0 x 148.0
    { 250, 4064,  4606,   6378},  // 10   195.0 x 270.0
    { 245, 4065,  4370,   6141},  // 11   185.0 x 260.0
    { 252, 4067,  3189,   4606},  // 12   135.0 x 195.0
    { 246, 4068,  3071,   4370},  // 13   130.0 x 185.0
    {  70,  340,  2480,   3496},  // 14   105.0 x 148.0
    {  34, 4069,  4157,   5906},  // 15   176.0 x 250.0
    {   7,  111,  4350,   6300},  // 16   184.2 x 266.7
    {  14,  109,  5100,   7800},  // 17   215.9 x 330.2
    { 243, 4070,  5102,   8102},  // 18   216.0 x 343.0
    {   6,  411,  3300,   5100},  // 19   139.7 x 215.9
    {  31, 4072,  2693,   3827},  // 20   114.0 x 162.0: one pixel more each way than row 27
    { 242, 4073,  2834,   5433},  // 21   120.0 x 230.0
    { 241, 4074,  2953,   4157},  // 22   125.0 x 176.0
    { 276, 6001,  2480,   5551},  // 23   105.0 x 235.0
    { 277, 6002,  3496,   4724},  // 24   148.0 x 200.0
    { 278, 6003,  2834,   5551},  // 25   120.0 x 235.0: the same size as row 26
    { 279, 6004,  2834,   5551},  // 26   120.0 x 235.0
    { 280, 6005,  2692,   3826},  // 27   114.0 x 162.0
}};

inline constexpr std::array<SourceRow, kSourceRows> kSourceTable = {{
    // Bin, Name
    {   7, 4017},  // automatic
    {   4, 4031},  // manual feed
    { 257,  190},  // tray 1
    { 258,  193},  // optional tray 2
    { 259,  194},  // optional tray 3
}};
// clang-format on

// The row of a fixed size; null for any other id.
const PaperRow* FindPaperRow(std::uint16_t paperId);

constexpr bool IsCustomPaperId(std::uint16_t paperId) {
  return paperId >= kFirstCustomPaperId && paperId <= kLastCustomPaperId;
}

// Pixels at 600 dpi to tenths of a millimetre: pixels x 254 / 600 + 0.5, truncated.
constexpr std::uint32_t TenthsOfMillimetre(std::uint32_t pixels_px600) {
  return (pixels_px600 * 254 + 300) / 600;
}

// Pixels at 600 dpi to whole millimetres, truncated.
constexpr std::uint32_t WholeMillimetres(std::uint32_t pixels_px600) {
  return TenthsOfMillimetre(pixels_px600) / 10;
}

// The paper that a record starts with, and that stands in for an unknown one.
struct LocalePaper {
  std::int16_t id;
  std::int16_t width_tenths_mm;
  std::int16_t length_tenths_mm;
  const char16_t* formName;
};

// Whether the user's country uses A4. The country codes 1, 2, 50..59 and 500..599 use Letter, and
// so does a locale that tells no code.
bool IsA4Locale();

const LocalePaper& PaperOfLocale();

// Width, length and margins of a paper, always in portrait: `orientation` plays no part. Below 288,
// an id without a row leaves `out` as it was. From 288 on, the user's size is looked up, provided
// that `privateDevmode` isn't null (it serves as yes or no only); 4960 x 7015 stands for one that
// isn't found. Result: 0 in every case.
int GetPaperExtent(const PrivateDevmode* privateDevmode, std::uint16_t paperId,
                   std::int16_t orientation, PaperExtent* out);

}  // namespace ostrel
