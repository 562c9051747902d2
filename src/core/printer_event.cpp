#include "core/printer_event.h"

#include "config/setting_stores.h"
#include "core/heap_block.h"
#include "core/language.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/ui_context.h"
#include "core/uninstall_shortcut.h"

namespace ostrel {
namespace {

// The spooler calls a driver at a cache refresh on behalf of a user; what is stored then needs the
// spooler's own rights. These two functions lead there and back.
class OwnRights {
 public:
  OwnRights() : spooler_(World().modules.LoadLibraryW(u"spoolss.dll")) {
    if (spooler_.get() == nullptr) {
      return;
    }
    revert_ = reinterpret_cast<Revert>(
        World().modules.GetProcAddress(spooler_.get(), "RevertToPrinterSelf"));
    impersonate_ = reinterpret_cast<Impersonate>(
        World().modules.GetProcAddress(spooler_.get(), "ImpersonatePrinterClient"));
    if (available()) {
      client_ = revert_();
    }
  }
  ~OwnRights() {
    if (available()) {
      impersonate_(client_);
    }
  }
  OwnRights(const OwnRights&) = delete;
  OwnRights& operator=(const OwnRights&) = delete;

  bool available() const { return revert_ != nullptr && impersonate_ != nullptr; }

 private:
  using Revert = TokenHandle (*)();
  using Impersonate = std::int32_t (*)(TokenHandle client);

  ScopedModule spooler_;
  Revert revert_ = nullptr;
  Impersonate impersonate_ = nullptr;
  TokenHandle client_ = nullptr;
};

// The printer's own record, with what it has besides. Null when it tells nothing.
HeapBlock<PrinterInfo8> GetPrinterInfo8(PrinterHandle printer) {
  return AskForBlock<PrinterInfo8>(
      [printer](PrinterInfo8* buffer, std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
        constexpr std::uint32_t kLevel = 8;
        return World().print.GetPrinterW(printer, kLevel, buffer, sizeBytes, neededBytes);
      });
}

void StoreDefaults(PrinterHandle printer) {
  UIContext* context = CreateUIContext(printer, nullptr);
  if (context == nullptr) {
    return;
  }
  WritePrinterBlock(printer, &context->devmode, sizeof(context->devmode),
                    PrinterBlock::kPrivateDevmode);
  if (HeapBlock<PrinterInfo8> info = GetPrinterInfo8(printer); info) {
    constexpr std::uint32_t kLevel = 8;
    info->pDevMode = context->publicPointer;
    World().print.SetPrinterW(printer, kLevel, info.get(), 0);
  }
  FreeUIContext(context);
}

bool StoreDefaultsOf(const char16_t* printerName, const PrinterDefaults* defaults) {
  PrinterHandle printer = nullptr;
  if (!World().print.OpenPrinterW(printerName, &printer, defaults)) {
    return false;
  }
  StoreDefaults(printer);
  // A universal printer's name is put together from what is known of its port; that comes with the
  // search for ports.
  World().print.ClosePrinter(printer);
  return true;
}

}  // namespace

bool DrvPrinterEvent(const char16_t* printerName, std::int32_t event) {
  RunUninstallShortcut(printerName);
  if (event == kPrinterEventInitialize) {
    const PrinterDefaults administer = {nullptr, nullptr, kPrinterAllAccess};
    return StoreDefaultsOf(printerName, &administer);
  }
  if (event == kPrinterEventCacheRefresh) {
    const OwnRights rights;
    return rights.available() && StoreDefaultsOf(printerName, nullptr);
  }
  return true;
}

std::int32_t DrvDriverEvent(std::uint32_t event) {
  if (event == kDriverEventDelete) {
    DeleteRememberedSettingsFile();
  }
  return 0;
}

}  // namespace ostrel
