#include "pages/envelope_program.h"

#include "core/model_table.h"
#include "core/process_state.h"
#include "job/status_monitor.h"
#include "pages/page_record.h"
#include "pages/paper_rules.h"

#include <array>

namespace ostrel {

void StartEnvelopeProgram(UIContext& context) {
  if ((Process().ModelFlags & kFamiliesDogwoodAndElm) == 0 ||
      RepairedField(context, kDmMediaType) != kMediaEnvelope) {
    return;
  }
  std::array<char16_t, kMaxPathUnits> programName = {};
  if (WriteEnvelopeHelperName(programName)) {
    LaunchEnvelopeHelper(programName.data());
  }
}

}  // namespace ostrel
