// Whether the calling process runs for an administrator.
#pragma once

namespace ostrel {

// Whether the process's token holds the Administrators group. From a system of major version 6 on
// to the next, the group must be enabled too: there an administrator's ordinary processes carry it
// for refusals only. On all others its presence suffices. Result: false when the token tells
// nothing.
bool IsUserAdministrator();

}  // namespace ostrel
