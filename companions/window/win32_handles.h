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
using UniqueWinEventHook = UniqueHandle<HWINEVENTHOOK, Win32Closer<&::UnhookWinEvent>>;

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

// A window's paint drawn into a bitmap first and put on the screen in one go when it ends: no
// flicker. Draw on Dc(), which covers Client().
class BufferedPaint {
  public:
    explicit BufferedPaint(HWND window)
        : window_(window),
          screen_(::BeginPaint(window, &ps_)),
          client_(ClientOf(window)),
          dc_(::CreateCompatibleDC(screen_)),
          bitmap_(::CreateCompatibleBitmap(screen_, client_.right, client_.bottom)),
          canvas_(dc_.get(), bitmap_.get()) {}
    ~BufferedPaint() {
        ::BitBlt(screen_, 0, 0, client_.right, client_.bottom, dc_.get(), 0, 0, SRCCOPY);
        ::EndPaint(window_, &ps_);
    }
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;

    [[nodiscard]] HDC Dc() const { return dc_.get(); }
    [[nodiscard]] const RECT& Client() const { return client_; }

  private:
    static RECT ClientOf(HWND window) {
        RECT client{};
        ::GetClientRect(window, &client);
        return client;
    }

    HWND window_;
    PAINTSTRUCT ps_{};
    HDC screen_;
    RECT client_;
    UniqueMemoryDc dc_;
    UniqueBitmap bitmap_;
    Selection canvas_;
};

}  // namespace zk::companion
