#pragma once
// The programs a made desktop (2 to 4) starts with, so that it is not an empty screen: the
// command lines under HKEY_CURRENT_USER "Software\Zelkova\Desktop<N>\Programs" (one string
// value each), or the Windows shell when that key does not exist. A DWORD "StartPrograms" = 0
// under "Software\Zelkova\Desktop<N>" turns them off.

#include <string>
#include <vector>

namespace zk::companion {

// The command lines to start on desktop N, in the order of the values; empty when turned off.
std::vector<std::wstring> StartupPrograms(int desktop);

// Starts them on the calling thread's desktop, unless it shows windows already (they were
// started before, by an earlier run).
void StartStartupPrograms(int desktop);

}  // namespace zk::companion
