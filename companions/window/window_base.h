#pragma once
// One window class for the companions: WindowBase<T> binds the window to its T at
// WM_NCCREATE (a dialog at WM_INITDIALOG), owns the window (destroyed with the object), and runs
// T::Handle behind the same guard as the controller's window procedure, so that no exception
// reaches the system. A message that T leaves to Default goes to the system's own procedure (for
// a dialog, to the dialog manager).

#include <windows.h>

#include "winsupport/process_context.h"

namespace zk::companion {

template <class T>
class WindowBase {
  public:
    WindowBase() = default;
    WindowBase(const WindowBase&) = delete;
    WindowBase& operator=(const WindowBase&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }

    // Leaving the desktop with this window shown: it goes beyond every monitor but stays shown
    // and active. Hidden, it would hand the focus to another window of a desktop no longer shown,
    // and under Wine 10 the input follows the focus back there (late, on a busy machine).
    void PutAway() {
        if (!::IsWindowVisible(window_)) return;
        const int beyond =
            ::GetSystemMetrics(SM_XVIRTUALSCREEN) + ::GetSystemMetrics(SM_CXVIRTUALSCREEN);
        ::SetWindowPos(window_, nullptr, beyond, 0, 0, 0,
                       SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOSIZE);
        away_ = true;
    }
    // Put away, and neither hidden nor shown again since.
    [[nodiscard]] bool Away() const { return away_; }

  protected:
    // Shown or hidden again: no longer away.
    void Returned() { away_ = false; }

    ~WindowBase() {
        if (window_ != nullptr) ::DestroyWindow(window_);
    }

    // Registers the class (once per process) and creates the window; false when the system
    // refuses it.
    bool CreateWindowOf(const wchar_t* className, DWORD exStyle, const wchar_t* caption,
                        DWORD style, RECT where, HWND parent = nullptr,
                        HBRUSH background = nullptr) {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        wc.lpfnWndProc = &WindowBase::Procedure;
        wc.hInstance = ::GetModuleHandleW(nullptr);
        wc.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        wc.hIcon = ::LoadIconW(wc.hInstance, L"AAA");
        wc.hbrBackground = background;
        wc.lpszClassName = className;
        ::RegisterClassExW(&wc);  // fails harmlessly when the class is there already
        return ::CreateWindowExW(exStyle, className, caption, style, where.left, where.top,
                                 where.right - where.left, where.bottom - where.top, parent,
                                 nullptr, wc.hInstance, static_cast<T*>(this)) != nullptr;
    }

    // Creates a modeless dialog from the program's resources; false when the system refuses it.
    bool CreateDialogOf(int resourceId, HWND parent = nullptr) {
        return ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resourceId),
                                    parent, &WindowBase::DialogProcedure,
                                    reinterpret_cast<LPARAM>(static_cast<T*>(this))) != nullptr;
    }

    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) {
        if (dialog_) {
            unhandled_ = true;
            return 0;
        }
        return ::DefWindowProcW(window_, message, wParam, lParam);
    }

  private:
    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
        T* self = nullptr;
        if (message == WM_INITDIALOG) {
            self = reinterpret_cast<T*>(lParam);
            self->window_ = window;
            self->dialog_ = true;
            ::SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        } else {
            self = reinterpret_cast<T*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        }
        if (self == nullptr) return FALSE;
        self->unhandled_ = false;
        const LRESULT result =
            zk::GuardWindowProc([&]() -> LRESULT { return self->Handle(message, wParam, lParam); });
        const bool handled = !self->unhandled_;
        if (message == WM_NCDESTROY) {
            ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            self->window_ = nullptr;
        }
        if (!handled) return FALSE;
        if (message == WM_INITDIALOG) return result;  // TRUE: the system sets the focus
        ::SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return TRUE;
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        T* self = nullptr;
        if (message == WM_NCCREATE) {
            self = static_cast<T*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
            self->window_ = window;
            ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        } else {
            self = reinterpret_cast<T*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        }
        if (self == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
        const LRESULT result =
            zk::GuardWindowProc([&]() -> LRESULT { return self->Handle(message, wParam, lParam); });
        if (message == WM_NCDESTROY) {
            ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            self->window_ = nullptr;
        }
        return result;
    }

    HWND window_ = nullptr;
    bool dialog_ = false;
    bool unhandled_ = false;
    bool away_ = false;
};

}  // namespace zk::companion
