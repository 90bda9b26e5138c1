#pragma once
// The companions' own handles of the system (GDI objects, icons, device contexts), made by the
// project's one handle template: each closes itself and keeps the caller's last error.

#include <windows.h>

#include "support/unique_handle.h"

namespace zk::companion {

template <auto Close>
struct Win32Closer {
    template <class H>
    void operator()(H handle) const {
        const DWORD saved = ::GetLastError();
        (void)Close(handle);
        ::SetLastError(saved);
    }
};

template <class H>
using UniqueGdiObject = UniqueHandle<H, Win32Closer<&::DeleteObject>>;
using UniqueFont = UniqueGdiObject<HFONT>;
using UniqueBrush = UniqueGdiObject<HBRUSH>;
using UniqueBitmap = UniqueGdiObject<HBITMAP>;
using UniqueIcon = UniqueHandle<HICON, Win32Closer<&::DestroyIcon>>;
using UniqueMemoryDc = UniqueHandle<HDC, Win32Closer<&::DeleteDC>>;
using UniqueMenu = UniqueHandle<HMENU, Win32Closer<&::DestroyMenu>>;
using UniqueHook = UniqueHandle<HHOOK, Win32Closer<&::UnhookWindowsHookEx>>;

// A GDI object selected into a device context for as long as it lives.
class Selection {
  public:
    Selection(HDC dc, HGDIOBJ object) : dc_(dc), previous_(::SelectObject(dc, object)) {}
    ~Selection() { ::SelectObject(dc_, previous_); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

  private:
    HDC dc_;
    HGDIOBJ previous_;
};

}  // namespace zk::companion
