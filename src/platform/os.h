#pragma once
// The platform seam: every call the program makes to the operating system goes through it.
// One method per system call, named as the system names it, taking the arguments that vary.
// The seam has one interface per role, and a module takes the narrowest one it needs; Os is all
// of them, as a process of the program sees the system.

#include "platform/api/desktop_api.h"
#include "platform/api/file_api.h"
#include "platform/api/hotkey_api.h"
#include "platform/api/kernel_api.h"
#include "platform/api/message_api.h"
#include "platform/api/registry_api.h"
#include "platform/api/text_api.h"
#include "platform/api/window_api.h"

namespace zk {

class Os : public virtual KernelApi,
           public virtual FileApi,
           public virtual DesktopApi,
           public virtual WindowApi,
           public virtual MessageApi,
           public virtual HotKeyApi,
           public virtual RegistryApi,
           public virtual TextApi {};

}  // namespace zk
