// When the paper page starts the helper for envelopes. How it is found and started is told in
// job/status_monitor.h.
#pragma once

#include "core/ui_context.h"

namespace ostrel {

// Starts the program when the model's family needs it and the record prints on envelopes. A program
// that can't be found or started is passed over: the settings are taken over all the same.
void StartEnvelopeProgram(UIContext& context);

}  // namespace ostrel
