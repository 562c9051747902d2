// The platform of the shipped library: each operation of the lists is the system's function of the
// same name, called with the same arguments, and its last error is left as the system set it.
#pragma once

#include "platform/platform.h"

namespace ostrel::win32 {

// The one set of lists; it lives as long as the module and may be used as soon as that is attached.
Platform& SystemPlatform();

}  // namespace ostrel::win32
