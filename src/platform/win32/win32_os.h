#pragma once
// The real backend: each method calls the system once and keeps its last error. Win32Os is the
// composition of one part per role of the seam.

#include "platform/os.h"
#include "platform/win32/win32_desktops.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_hotkeys.h"
#include "platform/win32/win32_kernel.h"
#include "platform/win32/win32_messages.h"
#include "platform/win32/win32_registry.h"
#include "platform/win32/win32_system.h"
#include "platform/win32/win32_text.h"
#include "platform/win32/win32_windows.h"

namespace zk {

class Win32Os final : public Os,
                      public win32::Win32System,
                      public win32::Win32Kernel,
                      public win32::Win32Files,
                      public win32::Win32Desktops,
                      public win32::Win32Windows,
                      public win32::Win32Messages,
                      public win32::Win32HotKeys,
                      public win32::Win32Registry,
                      public win32::Win32Text {};

}  // namespace zk
