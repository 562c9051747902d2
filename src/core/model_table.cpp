#include "core/model_table.h"

#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>

namespace ostrel {
namespace {

constexpr bool NamesAreUnique() {
  for (std::size_t i = 0; i < kModelRows; ++i) {
    for (std::size_t j = i + 1; j < kModelRows; ++j) {
      if (kModelTable[i].name == kModelTable[j].name) {
        return false;
      }
    }
  }
  return true;
}
static_assert(NamesAreUnique());

}  // namespace

void SelectModelFlags(const char16_t* printerName) {
  const UserText field = ReadUserText(u"PrinterName", printerName);
  const std::u16string_view model = FieldText(field);
  const auto row = std::ranges::find_if(kModelTable, [model](const ModelRow& candidate) {
    return EqualIgnoringAsciiCase(candidate.name, model);
  });
  std::uint64_t& flags = Process().ModelFlags;
  if (row != kModelTable.end()) {
    flags = row->flag;
  } else if (flags == 0) {
    flags = Alder;
  }
}

}  // namespace ostrel
