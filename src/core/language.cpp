#include "core/language.h"

#include "core/own_place.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ostrel {
namespace {

struct LanguageRow {
  const char16_t* name;
  const char16_t* suffix;
  std::array<std::uint16_t, 30> ids;  // LANGIDs of winnt.h, decimal; 0 fills the rest
};

// Tried in this order. Languages with a row of their own and the suffix "enus" have a name, but no
// library; the second half of English's ids are languages whose users are given English.
// clang-format off
constexpr std::array<LanguageRow, 27> kLanguageTable = {{
    // Language name          Suffix   Language ids
    {u"Arabic",              u"ar",   {5121, 15361, 3073, 2049, 11265, 13313, 12289, 4097, 6145, 8193, 16385, 1025, 10241, 7169, 14337, 9217}},
    {u"Simplified_Chinese",  u"zhcn", {2052}},
    {u"Traditional_Chinese", u"zhtw", {1028, 3076, 5124, 4100}},
    {u"English",             u"enus", {3081, 10249, 4105, 9225, 16393, 6153, 8201, 17417, 5129, 13321, 18441, 7177, 11273, 2057, 1033, 12297,
                                       20, 6, 1030, 29, 11, 1035, 19, 2067, 1043, 1061, 1062, 1063, 1039, 15}},
    {u"French",              u"fr",   {2060, 3084, 1036, 5132, 6156, 4108}},
    {u"Italian",             u"it",   {1040, 2064}},
    {u"Japanese",            u"enus", {1041, 17}},
    {u"Russian",             u"ru",   {1049, 25}},
    {u"Spanish",             u"esmx", {11274, 16394, 13322, 9226, 5130, 7178, 12298, 17418, 4106, 18442, 2058, 19466, 6154, 15370, 10250, 20490, 3082, 14346, 8202}},
    {u"Norwegian",           u"enus", {1044, 2068}},
    {u"Swedish",             u"enus", {2077, 1053}},
    {u"Hebrew",              u"he",   {1037, 13}},
    {u"German",              u"de",   {3079, 1031, 5127, 4103, 2055}},
    {u"Turkish",             u"tr",   {1055, 31}},
    {u"Polish",              u"pl",   {1045, 21}},
    {u"Portuguese",          u"pt",   {2070, 1046, 22}},
    {u"Korean",              u"enus", {18, 1042}},
    {u"Romanian",            u"ro",   {24, 1048}},
    {u"Bulgarian",           u"bg",   {2, 1026}},
    {u"Czech",               u"cs",   {5, 1029}},
    {u"Greek",               u"el",   {8, 1032}},
    {u"Hungarian",           u"hu",   {14, 1038}},
    {u"Thai",                u"th",   {30, 1054}},
    {u"Vietnamese",          u"vi",   {1066, 42}},
    {u"Azerbaijan",          u"enus", {1068, 44, 2092}},
    {u"Kazakh",              u"kz",   {1087, 63}},
    {u"Ukrainian",           u"uk",   {1058, 34}},
}};

// Substrings of a suffix that tell how the language writes. "esmx" is found by "es"; Bulgarian,
// Ukrainian and Vietnamese go without the comma.
constexpr std::array<std::u16string_view, 18> kDecimalCommaMarks = {
    u"ru", u"fr", u"it", u"es", u"no", u"sv", u"de", u"tr", u"pl",
    u"pt", u"ro", u"cs", u"el", u"hu", u"th", u"bu", u"az", u"kz"};
constexpr std::array<std::u16string_view, 2> kRightToLeftMarks = {u"ar", u"he"};
// clang-format on

constexpr std::u16string_view kEnglishSuffix = u"enus";
constexpr std::u16string_view kLibraryExtension = u".dll";

// Characters that the second and the third try drop from the end of a library name: two letters and
// ".dll", four letters and ".dll".
constexpr std::size_t kSecondTryCut = 6;
constexpr std::size_t kThirdTryCut = 8;

// Loads a library that lies beside this one, its name put together from pieces. Null when the path
// is too long to be one, and when the directory isn't known: a bare name would be looked for along
// the search path of whatever process has loaded us.
template <typename... Pieces>
ModuleHandle LoadNeighbour(const OwnPlace& place, Pieces... pieces) {
  if (place.directory().empty()) {
    return nullptr;
  }
  std::array<char16_t, kMaxPathUnits> path = {};
  TextBuilder text(path);
  text.Add(place.directory());
  (text.Add(pieces), ...);
  return text.fits() ? World().modules.LoadLibraryW(path.data()) : nullptr;
}

bool HoldsOneOf(std::u16string_view text, std::span<const std::u16string_view> marks) {
  return std::ranges::any_of(marks, [text](std::u16string_view mark) {
    return text.find(mark) != std::u16string_view::npos;
  });
}

}  // namespace

int LoadUiString(ModuleHandle module, std::uint32_t id, std::span<char16_t> buffer) {
  if (buffer.empty()) {
    return 0;
  }
  buffer.front() = u'\0';
  if (module != nullptr) {
    const int length =
        World().modules.LoadStringW(module, id, buffer.data(), static_cast<int>(buffer.size()));
    if (length > 0) {
      return length;
    }
  }
  TextBuilder fallback(buffer);
  fallback.Add(u"id:").AddNumber(id).Add(u" missing!");
  if (!fallback.fits()) {
    buffer.front() = u'\0';
    return 0;
  }
  return static_cast<int>(fallback.length());
}

const char16_t* LanguageSuffixOf(std::uint16_t languageId) {
  for (const LanguageRow& row : kLanguageTable) {
    if (languageId != 0 && std::ranges::find(row.ids, languageId) != row.ids.end()) {
      return row.suffix;
    }
  }
  return kEnglishSuffix.data();
}

bool LoadExistingString(ModuleHandle module, std::uint32_t id, std::span<char16_t> buffer) {
  // For no room at all the platform would write a pointer instead of a text.
  return module != nullptr && !buffer.empty() &&
         World().modules.LoadStringW(module, id, buffer.data(), static_cast<int>(buffer.size())) >
             0;
}

void GetLanguageSuffix(const char16_t* driverName, std::span<char16_t> suffix) {
  CopyText(suffix, {});
  if (ReadUserValue(u"Suffix", suffix, driverName) && suffix.front() != u'\0') {
    return;
  }
  CopyText(suffix, LanguageSuffixOf(World().locale.GetUserDefaultUILanguage()));
  WriteUserString(u"Suffix", suffix.data(), driverName);
}

void BuildLanguageLibraryName(const char16_t* driverName, std::span<char16_t> fileName) {
  char16_t suffixField[kLanguageSuffixUnits] = {};
  GetLanguageSuffix(driverName, suffixField);
  const std::u16string_view suffix = FieldText(suffixField);
  const OwnPlace place;
  TextBuilder(fileName).Add(place.stem()).Add(suffix).Add(kLibraryExtension);
  if (HoldsOneOf(suffix, kDecimalCommaMarks)) {
    Process().DecimalCommaLanguage = true;
  }
  if (HoldsOneOf(suffix, kRightToLeftMarks)) {
    Process().RightToLeftLanguage = true;
  }
}

ModuleHandle LoadLanguageModule(const char16_t* driverName) {
  char16_t nameField[kMaxPathUnits + kLanguageSuffixUnits] = {};
  BuildLanguageLibraryName(driverName, nameField);
  const std::u16string_view name = FieldText(nameField);
  const OwnPlace place;
  if (ModuleHandle module = LoadNeighbour(place, name)) {
    return module;
  }
  // For a two-letter suffix the second try names this library itself: a module without strings. The
  // third then cuts two characters of the stem and fails. Both are to stay so.
  if (name.size() >= kSecondTryCut) {
    if (ModuleHandle module =
            LoadNeighbour(place, name.substr(0, name.size() - kSecondTryCut), kLibraryExtension)) {
      return module;
    }
  }
  if (name.size() >= kThirdTryCut) {
    return LoadNeighbour(place, name.substr(0, name.size() - kThirdTryCut), kEnglishSuffix,
                         kLibraryExtension);
  }
  return nullptr;
}

ModuleHandle LoadBitmapModule() {
  const OwnPlace place;
  return LoadNeighbour(place, place.stem(), std::u16string_view(u"ResBmp"), kLibraryExtension);
}

ScopedModule::~ScopedModule() {
  if (module_ != nullptr) {
    World().modules.FreeLibrary(module_);
  }
}

}  // namespace ostrel
