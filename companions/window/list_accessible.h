#pragma once
// What a screen reader is told of a view drawn by hand: Active Accessibility's IAccessible for
// the window's client area (WM_GETOBJECT with OBJID_CLIENT), a list whose items are simple
// elements (child ids 1 to N) with their names, their places and which one is chosen. The view
// says when the choice moves (Moved), which raises the focus and selection events that make a
// screen reader read the item.
//
// The object lives as long as the process: a screen reader may hold it after the window is gone,
// and then it answers that the window is not there.

#include <windows.h>

#include <oleacc.h>

#include <atomic>

#include "support/text.h"

namespace zk::companion {

// The view's side: its items, as they are now.
class AccessibleListSource {
  public:
    virtual ~AccessibleListSource() = default;
    [[nodiscard]] virtual Text ListName() = 0;
    [[nodiscard]] virtual int ItemCount() = 0;
    [[nodiscard]] virtual Text ItemName(int index) = 0;
    // The chosen item, -1 when none.
    [[nodiscard]] virtual int Chosen() = 0;
    // The item's rectangle in the window's client coordinates; empty when it is not in view.
    [[nodiscard]] virtual RECT ItemRect(int index) = 0;
    // What Enter on the item does.
    virtual void Choose(int index) = 0;
};

class ListAccessible final : public IAccessible {
  public:
    ListAccessible() = default;
    ListAccessible(const ListAccessible&) = delete;
    ListAccessible& operator=(const ListAccessible&) = delete;

    void Connect(HWND window, AccessibleListSource& source);
    void Disconnect();
    // The window's answer to WM_GETOBJECT.
    LRESULT GetObject(WPARAM wParam, LPARAM lParam);
    // The choice moved: the chosen item has the focus and is selected.
    void Moved();

    // IUnknown and IDispatch
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override;
    // IAccessible
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** dispatch) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

  private:
    // The item a VARIANT names: 0 for the list itself, 1 to N for an item; -1 when it names none.
    [[nodiscard]] long ItemOf(const VARIANT& child);

    HWND window_ = nullptr;
    AccessibleListSource* source_ = nullptr;
    std::atomic<ULONG> references_{1};  // the process's own
};

}  // namespace zk::companion
