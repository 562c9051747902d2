// The process-wide words of the driver, in one structure, and the one ambient pointer to them.
//
// The library is loaded into foreign processes and called on their threads; these words are shared
// by all of them without a lock, and the last writer wins. The exported entry points set the
// pointer once, when the library is attached; a test sets its own for the length of a scope.
#pragma once

#include "core/factory_watermarks.h"
#include "platform/platform.h"

namespace ostrel {

struct UIContext;
struct PageStateTable;
struct HolderCounts;

inline constexpr std::size_t kDocumentPageRows = 6;
inline constexpr std::size_t kPrinterPageRows = 2;
inline constexpr std::size_t kPageTitleUnits = 256;

// A service for a page that hands over a temporary file: while the flag is set, the file at the
// path is deleted at a thread's end and at a sheet's.
struct TemporaryFile {
  bool set;
  char16_t path[kMaxPathUnits];
};

struct ProcessState {
  // The platform behind every operation. Not owned.
  Platform* platform = nullptr;

  // This library itself, remembered when it is attached.
  ModuleHandle LibraryModule = nullptr;

  // One bit for each model family; 0 until a model was selected.
  std::uint64_t ModelFlags = 0;

  // The settings file, at the path that was put together last; empty when none was.
  char16_t SettingsFilePath[kMaxPathUnits] = {};

  // The language library that a context loaded last; entry points without a context use it.
  ModuleHandle CurrentLanguageModule = nullptr;

  // The language in force writes numbers with a decimal comma, or from right to left. Set and never
  // cleared: two languages in one process add up.
  bool DecimalCommaLanguage = false;
  bool RightToLeftLanguage = false;

  // One block the size of a context, made once and kept to the end of the process: a copy of the
  // most recently made context with its defaults, before any record was merged into it.
  UIContext* DefaultContextCopy = nullptr;

  // The watermarks that come with the driver; the first is copied into every new settings record.
  // Their words are translated in place, the first time that a language library has them.
  FactoryWatermarks DefaultWatermarks = kFactoryWatermarkRecords;

  // The states of all threads' pages: one megabyte, all zero at load. Not owned.
  ostrel::PageStateTable* PageStates = nullptr;

  // The titles of the sheets' pages, as they were loaded last.
  char16_t DocumentPageTitles[kDocumentPageRows][kPageTitleUnits] = {};
  char16_t PrinterPageTitles[kPrinterPageRows][kPageTitleUnits] = {};

  // Where the page of the job's PIN stands in the document sheet's table; 0 when it isn't shown.
  std::int32_t JobPinPageIndex = 0;

  // What a job tells the status monitor: the record, and the printer's name that it points to. Two
  // jobs at the same moment can mix two names.
  CopyData MonitorCopyData = {};
  char16_t MonitorPrinterName[kMaxPathUnits] = {};

  // What the pages' dialogs are made in; kNone until one could be made.
  ActivationContext PageActivationContext = ActivationContext::kNone;

  // The icon beside an option that is locked, loaded once.
  ImageHandle MessageIcon = nullptr;

  // The paper that was chosen last and passed the paper page's rules; 0 when none was.
  std::int16_t LastPaperId = 0;

  // How many holders the shared text buffers and the shared objects have, by pointer. Made with the
  // first entry and freed with the last.
  HolderCounts* CountedTexts = nullptr;
  HolderCounts* CountedObjects = nullptr;

  TemporaryFile TemporaryFileSlot = {};

  // Users of the library. Nothing counts them.
  std::int32_t ObjectsInUse = 0;
  std::int32_t LocksInUse = 0;
};

// The state in force. One must have been set.
ProcessState& Process();

// Whether a state is in force.
bool IsProcessStateSet();

// The platform of the state in force.
Platform& World();

// Sets the state in force for the rest of the process. For the library's attach only.
void SetProcessState(ProcessState* state);

// Sets the state in force and restores the one before at the end of the scope.
class ScopedProcessState {
 public:
  explicit ScopedProcessState(ProcessState& state);
  ~ScopedProcessState();
  ScopedProcessState(const ScopedProcessState&) = delete;
  ScopedProcessState& operator=(const ScopedProcessState&) = delete;

 private:
  ProcessState* previous_;
};

}  // namespace ostrel
