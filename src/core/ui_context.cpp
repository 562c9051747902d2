#include "core/ui_context.h"

#include "core/devmode_lifecycle.h"
#include "core/heap_block.h"
#include "core/language.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"

#include <cstring>
#include <iterator>
#include <type_traits>

namespace ostrel {
namespace {

static_assert(std::is_trivially_copyable_v<UIContext>);

void PointAtOwnRecord(UIContext& context) {
  context.privatePointer = &context.devmode.privateDevmode;
  context.publicPointer = &context.devmode.publicDevmode;
}

void ClearCustomPapers(UIContext& context) {
  std::memset(context.privatePointer->CustomPaperSize, 0,
              sizeof(context.privatePointer->CustomPaperSize));
}

bool TakeDriverName(UIContext& context, const PrinterInfo2& info) {
  const std::u16string_view name = CallerText(info.pDriverName);
  if (name.size() >= kDriverNameUnits) {
    return false;
  }
  CopyText(context.driverName, name);
  return true;
}

// Keeps a copy of the context with the factory defaults. Without memory for it there is no copy,
// and the working record keeps its default custom papers until the end of the creation.
void RememberDefaults(UIContext& context) {
  ProcessState& process = Process();
  if (process.DefaultContextCopy == nullptr) {
    process.DefaultContextCopy = HeapBlock<UIContext>(sizeof(UIContext)).release();
  }
  if (process.DefaultContextCopy == nullptr) {
    return;
  }
  *process.DefaultContextCopy = context;
  PointAtOwnRecord(*process.DefaultContextCopy);
  ClearCustomPapers(context);
}

bool LoadResources(UIContext& context) {
  context.languageModule = LoadLanguageModule(context.driverName);
  Process().CurrentLanguageModule = context.languageModule;
  context.bitmapModule = LoadBitmapModule();
  return context.bitmapModule != nullptr;
}

// A record without a favourite's name gets that of the default one, and nothing of an old name
// stays behind it.
void NameFavoriteInForce(UIContext& context) {
  auto& name = context.privatePointer->FavoriteName;
  if (name[0] == u'\0') {
    char16_t text[std::size(PrivateDevmode{}.FavoriteName)] = {};
    LoadUiString(context.languageModule, kStringDefaultFavorite, text);
    CopyText(name, FieldText(text));
  }
}

}  // namespace

UIContext* CreateUIContext(PrinterHandle printer, const PublicDevmode* callerDevmode) {
  HeapBlock<UIContext> context(sizeof(UIContext));
  if (!context) {
    return nullptr;
  }
  context->printerHandle = printer;
  PointAtOwnRecord(*context);

  const HeapBlock<PrinterInfo2> info = GetPrinterInfo2(printer);
  if (!info || !TakeDriverName(*context, *info)) {
    return nullptr;
  }
  BuildUIParamTable(context.get());
  context->activePage = 0;
  context->reserved = 0;
  if (!InitDriverDevmode(&context->devmode, context->driverName, context->driverName)) {
    return nullptr;
  }
  RememberDefaults(*context);
  if (!LoadResources(*context)) {
    return nullptr;
  }

  // The caller's record comes last, so that it wins. One that can't be merged changes nothing.
  MergeDevmode(&context->devmode, info->pDevMode);
  MergeDevmode(&context->devmode, callerDevmode);

  NameFavoriteInForce(*context);
  // Custom sizes live in the settings file; whatever the merged records held is gone.
  ClearCustomPapers(*context);
  return context.release();
}

void FreeUIContext(UIContext* context) {
  World().memory.HeapFree(context);
}

}  // namespace ostrel
