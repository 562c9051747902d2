// The user's language: which resource library holds the texts, and how a text is loaded from it.
#pragma once

#include "core/string_ids.h"
#include "platform/print_types.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace ostrel {

inline constexpr std::size_t kLanguageSuffixUnits = 128;

// Loads a string. When the module is null or has no such string, "id:%d missing!" takes its place,
// provided that it fits; otherwise the buffer is empty. A text that is too long is cut.
// Result: units written, without the terminator.
int LoadUiString(ModuleHandle module, std::uint32_t id, std::span<char16_t> buffer);

// Loads a string that is really there: nothing stands in for a missing one. Result: whether it was.
bool LoadExistingString(ModuleHandle module, std::uint32_t id, std::span<char16_t> buffer);

// The language suffix of a printer's texts: the one stored for the user, or else the one of the
// system's language, which is then stored.
void GetLanguageSuffix(const char16_t* driverName, std::span<char16_t> suffix);

// The suffix of a language id of the platform. Languages without a library of their own take
// English.
const char16_t* LanguageSuffixOf(std::uint16_t languageId);

// The file name of the language library, stem, suffix and ".dll". Sets the two language flags.
void BuildLanguageLibraryName(const char16_t* driverName, std::span<char16_t> fileName);

// Loads the language library of a printer, with three tries. Null when all fail. The caller frees
// it.
ModuleHandle LoadLanguageModule(const char16_t* driverName);

// Loads the bitmap library, which has no language. Null when it can't be loaded.
ModuleHandle LoadBitmapModule();

// The owner of a loaded library for the length of a scope.
class ScopedModule {
 public:
  explicit ScopedModule(ModuleHandle module) : module_(module) {}
  ~ScopedModule();
  ScopedModule(const ScopedModule&) = delete;
  ScopedModule& operator=(const ScopedModule&) = delete;
  ModuleHandle get() const { return module_; }

 private:
  ModuleHandle module_;
};

}  // namespace ostrel
