// Whether the calling process runs for an administrator.
#pragma once

namespace ostrel {

// Whether the process's token holds the Administrators group. On systems of major version 6 the
// group must also be enabled, since there an administrator's ordinary processes carry it for
// refusals only; on others its presence suffices. Result: false when the token tells nothing.
bool IsUserAdministrator();

}  // namespace ostrel
