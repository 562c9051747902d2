// The model families. One driver serves many models; which options exist is decided by the family.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ostrel {

// `ModelFlags` has one bit for each family.
enum ModelFamily : std::uint64_t {
  Alder = 0x1,
  Birch = 0x2,
  Cedar = 0x4,
  Dogwood = 0x8,
  Elm = 0x10,
  Fir = 0x20,
  Ginkgo = 0x40,
  Hazel = 0x80,
  Ironwood = 0x100,
  Juniper = 0x200,
  Kauri = 0x400,
};

// Families that rules ask for together.
inline constexpr std::uint64_t kFamiliesWithJobPin = Cedar | Elm | Ginkgo | Hazel | Kauri;
inline constexpr std::uint64_t kFamiliesWithJobMode = Hazel | Ironwood | Juniper | Kauri;
inline constexpr std::uint64_t kFamiliesWithJobFlag = Hazel;
inline constexpr std::uint64_t kFamiliesFirToKauri =
    Fir | Ginkgo | Hazel | Ironwood | Juniper | Kauri;
inline constexpr std::uint64_t kFamiliesWithFixedTray =
    Alder | Birch | Cedar | Ironwood | Juniper | Kauri;
inline constexpr std::uint64_t kFamiliesWithOptionalTrays = Dogwood | Elm | Fir | Ginkgo | Hazel;
inline constexpr std::uint64_t kFamiliesDogwoodAndElm = Dogwood | Elm;
inline constexpr std::uint64_t kFamiliesWithoutBooklet = Alder | Birch;

static_assert(kFamiliesWithJobPin == 0x4D4);
static_assert(kFamiliesWithJobMode == 0x780);
static_assert(kFamiliesWithJobFlag == 0x80);
static_assert(kFamiliesFirToKauri == 0x7E0);
static_assert(kFamiliesWithFixedTray == 0x707);
static_assert(kFamiliesWithOptionalTrays == 0xF8);
static_assert(kFamiliesDogwoodAndElm == 0x18);
static_assert(kFamiliesWithoutBooklet == 0x3);

struct ModelRow {
  std::uint64_t flag;
  std::u16string_view name;
};

inline constexpr std::size_t kModelRows = 36;

// clang-format off
inline constexpr std::array<ModelRow, kModelRows> kModelTable = {{
    // Family,   Name
    {Alder,    u"Alder 1 Series"},
    {Alder,    u"Alder 2 Series"},
    {Alder,    u"Alder 3 Series"},
    {Alder,    u"Alder 4 Series"},
    {Alder,    u"Alder 5 Series"},
    {Birch,    u"Birch 1 Series"},
    {Birch,    u"Birch 2 Series"},
    {Birch,    u"Birch 3 Series"},
    {Birch,    u"Birch 4 Series"},
    {Birch,    u"Birch 5 Series"},
    {Cedar,    u"Cedar 1 Series"},
    {Cedar,    u"Cedar 2 Series"},
    {Dogwood,  u"Dogwood 1 Series"},
    {Dogwood,  u"Dogwood 2 Series"},
    {Dogwood,  u"Dogwood 3 Series"},
    {Dogwood,  u"Dogwood 4 Series"},
    {Elm,      u"Elm 1 Series"},
    {Elm,      u"Elm 2 Series"},
    {Elm,      u"Elm 3 Series"},
    {Elm,      u"Elm 4 Series"},
    {Fir,      u"Fir 1 Series"},
    {Fir,      u"Fir 2 Series"},
    {Ginkgo,   u"Ginkgo 1 Series"},
    {Ginkgo,   u"Ginkgo 2 Series"},
    {Hazel,    u"Hazel 1 Series"},
    {Hazel,    u"Hazel 2 Series"},
    {Hazel,    u"Hazel 3 Series"},
    {Hazel,    u"Hazel 4 Series"},
    {Ironwood, u"Ironwood 1 Series"},
    {Ironwood, u"Ironwood 2 Series"},
    {Ironwood, u"Ironwood 3 Series"},
    {Juniper,  u"Juniper 1 Series"},
    {Juniper,  u"Juniper 2 Series"},
    {Juniper,  u"Juniper 3 Series"},
    {Kauri,    u"Kauri 1 Series"},
    {Alder,    u""},  // no model chosen yet
}};
// clang-format on

// Sets `ModelFlags` by the per-user model of a printer. Names match without regard to the case of
// ASCII letters. One that no row bears leaves an earlier family in force; without one it is Alder.
void SelectModelFlags(const char16_t* printerName);

}  // namespace ostrel
