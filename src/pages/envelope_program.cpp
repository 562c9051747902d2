#include "pages/envelope_program.h"

#include "core/driver_directory.h"
#include "core/model_table.h"
#include "core/own_place.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"
#include "pages/page_record.h"
#include "pages/paper_rules.h"

namespace ostrel {
namespace {

constexpr std::u16string_view kProgramEnding = u"PCL6EnvDlg.exe";
constexpr char16_t kWindowTitle[] = u"ENV";

// Result: false when the system tells no folder, or the path doesn't fit: a part of a path names
// another program.
bool WriteProgramPath(std::span<char16_t, kMaxPathUnits> path) {
  char16_t directory[kMaxPathUnits] = {};
  ReadDriverDirectory(directory);
  const OwnPlace place;
  TextBuilder text(path);
  text.Add(FieldText(directory)).Add(kDriverVersionFolder).Add(u'\\');
  text.Add(place.modulePrefix()).Add(kProgramEnding);
  return directory[0] != u'\0' && !place.modulePrefix().empty() && text.fits();
}

}  // namespace

void StartEnvelopeProgram(UIContext& context) {
  if ((Process().ModelFlags & kFamiliesDogwoodAndElm) == 0 ||
      RepairedField(context, kDmMediaType) != kMediaEnvelope) {
    return;
  }
  char16_t program[kMaxPathUnits] = {};
  if (!WriteProgramPath(program)) {
    return;
  }
  char16_t printer[kMaxPathUnits] = {};
  ReadConfigValue(printer, u"Print", u"PrinterName");
  System& system = World().system;
  ProcessInformation started = {};
  if (system.CreateProcessW(program, printer, 0, kWindowTitle, &started)) {
    system.CloseHandle(started.hThread);
    system.CloseHandle(started.hProcess);
  }
}

}  // namespace ostrel
