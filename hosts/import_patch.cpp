#include "import_patch.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

namespace ostrel::print_system {
namespace {

template <typename Thing>
Thing* PartAt(std::uint8_t* image, DWORD offset) {
  return reinterpret_cast<Thing*>(image + offset);
}

// The place in a loaded library where it keeps the address of a function of another one.
FARPROC* FindImport(HMODULE user, const char* library, const char* function) {
  auto* image = reinterpret_cast<std::uint8_t*>(user);
  const auto* headers = PartAt<IMAGE_NT_HEADERS>(
      image, static_cast<DWORD>(PartAt<IMAGE_DOS_HEADER>(image, 0)->e_lfanew));
  const IMAGE_DATA_DIRECTORY& directory =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* row = PartAt<IMAGE_IMPORT_DESCRIPTOR>(image, directory.VirtualAddress); row->Name != 0;
       ++row) {
    if (lstrcmpiA(PartAt<const char>(image, row->Name), library) != 0) {
      continue;
    }
    auto* name = PartAt<IMAGE_THUNK_DATA>(image, row->OriginalFirstThunk);
    auto* place = PartAt<FARPROC>(image, row->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
        continue;
      }
      const auto offset = static_cast<DWORD>(name->u1.AddressOfData);
      if (std::strcmp(PartAt<IMAGE_IMPORT_BY_NAME>(image, offset)->Name, function) == 0) {
        return place;
      }
    }
  }
  return nullptr;
}

}  // namespace

ImportPatch::ImportPatch(const wchar_t* user, const char* library, const char* function,
                         FARPROC replacement)
    : place_(FindImport(GetModuleHandleW(user), library, function)) {
  if (place_ == nullptr) {
    throw std::runtime_error(std::string("nobody takes the function ") + function);
  }
  before_ = *place_;
  Put(replacement);
}

ImportPatch::~ImportPatch() {
  Put(before_);
}

void ImportPatch::Put(FARPROC function) {
  DWORD protection = 0;
  VirtualProtect(place_, sizeof(*place_), PAGE_READWRITE, &protection);
  *place_ = function;
  VirtualProtect(place_, sizeof(*place_), protection, &protection);
}

}  // namespace ostrel::print_system
