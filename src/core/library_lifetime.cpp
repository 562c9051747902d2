#include "core/library_lifetime.h"

#include "core/page_state_table.h"
#include "core/process_state.h"
#include "core/ui_context.h"

#include <utility>

namespace ostrel {

void AttachThread() {
  Process().TemporaryFileSlot = {};
}

void DetachThread() {
  DeleteTemporaryFile();
}

void DetachProcess(bool unloading) {
  ProcessState& process = Process();
  if (process.PageActivationContext != ActivationContext::kNone) {
    World().system.ReleaseActCtx(
        std::exchange(process.PageActivationContext, ActivationContext::kNone));
  }
  if (process.CurrentLanguageModule != nullptr) {
    World().modules.FreeLibrary(std::exchange(process.CurrentLanguageModule, nullptr));
  }
  if (unloading) {
    ReleaseAllPageStates();
    FreeUIContext(std::exchange(process.DefaultContextCopy, nullptr));
  }
}

bool CanUnloadNow() {
  return Process().ObjectsInUse == 0 && Process().LocksInUse == 0;
}

void DeleteTemporaryFile() {
  TemporaryFile& file = Process().TemporaryFileSlot;
  if (file.set) {
    World().files.DeleteFileW(file.path);
    file.set = false;
  }
}

}  // namespace ostrel
