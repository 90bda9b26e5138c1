#include "window/list_accessible.h"

#include "platform/win32/wide_text.h"

using zk::win32::W;

namespace zk::companion {
namespace {

// (IID_IAccessible of MinGW's import library names a thunk, not the identifier: __uuidof does.)
// The error a caller gets once the window is gone.
constexpr HRESULT kGone = RPC_E_DISCONNECTED;

HRESULT Reply(const Text& text, BSTR* out) {
    if (out == nullptr) return E_POINTER;
    *out = ::SysAllocString(W(text));
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

void Item(VARIANT* out, long item) {
    ::VariantInit(out);
    out->vt = VT_I4;
    out->lVal = item;
}

}  // namespace

void ListAccessible::Connect(HWND window, AccessibleListSource& source) {
    window_ = window;
    source_ = &source;
}

void ListAccessible::Disconnect() {
    window_ = nullptr;
    source_ = nullptr;
}

LRESULT ListAccessible::GetObject(WPARAM wParam, LPARAM lParam) {
    if (source_ == nullptr || static_cast<DWORD>(lParam) != static_cast<DWORD>(OBJID_CLIENT))
        return 0;
    return ::LresultFromObject(__uuidof(IAccessible), wParam, this);
}

void ListAccessible::Moved() {
    if (source_ == nullptr) return;
    const int chosen = source_->Chosen();
    const long child = chosen >= 0 ? chosen + 1 : CHILDID_SELF;
    ::NotifyWinEvent(EVENT_OBJECT_FOCUS, window_, OBJID_CLIENT, child);
    if (chosen >= 0) ::NotifyWinEvent(EVENT_OBJECT_SELECTION, window_, OBJID_CLIENT, child);
}

long ListAccessible::ItemOf(const VARIANT& child) {
    if (source_ == nullptr || child.vt != VT_I4) return -1;
    if (child.lVal == CHILDID_SELF) return 0;
    return child.lVal >= 1 && child.lVal <= source_->ItemCount() ? child.lVal : -1;
}

HRESULT ListAccessible::QueryInterface(REFIID riid, void** object) {
    if (object == nullptr) return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IDispatch || riid == __uuidof(IAccessible)) {
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG ListAccessible::AddRef() {
    return ++references_;
}

// Never below the process's own reference: the object is not freed while a caller may hold it.
ULONG ListAccessible::Release() {
    return references_ > 1 ? --references_ : 1;
}

HRESULT ListAccessible::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ListAccessible::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}

HRESULT ListAccessible::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}

HRESULT ListAccessible::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                               UINT*) {
    return E_NOTIMPL;
}

HRESULT ListAccessible::get_accParent(IDispatch** parent) {
    if (parent == nullptr) return E_POINTER;
    *parent = nullptr;
    if (window_ == nullptr) return kGone;
    return ::AccessibleObjectFromWindow(window_, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                        reinterpret_cast<void**>(parent));
}

HRESULT ListAccessible::get_accChildCount(long* count) {
    if (count == nullptr) return E_POINTER;
    if (source_ == nullptr) return kGone;
    *count = source_->ItemCount();
    return S_OK;
}

HRESULT ListAccessible::get_accChild(VARIANT child, IDispatch** dispatch) {
    if (dispatch == nullptr) return E_POINTER;
    *dispatch = nullptr;
    return ItemOf(child) > 0 ? S_FALSE : E_INVALIDARG;  // items are simple elements
}

HRESULT ListAccessible::get_accName(VARIANT child, BSTR* name) {
    const long item = ItemOf(child);
    if (item < 0) return E_INVALIDARG;
    return Reply(item == 0 ? source_->ListName() : source_->ItemName(item - 1), name);
}

HRESULT ListAccessible::get_accValue(VARIANT, BSTR* value) {
    if (value != nullptr) *value = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::get_accDescription(VARIANT, BSTR* description) {
    if (description != nullptr) *description = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::get_accRole(VARIANT child, VARIANT* role) {
    const long item = ItemOf(child);
    if (role == nullptr) return E_POINTER;
    if (item < 0) return E_INVALIDARG;
    Item(role, item == 0 ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_LISTITEM);
    return S_OK;
}

HRESULT ListAccessible::get_accState(VARIANT child, VARIANT* state) {
    const long item = ItemOf(child);
    if (state == nullptr) return E_POINTER;
    if (item < 0) return E_INVALIDARG;
    const bool focused = ::GetFocus() == window_;
    long flags = STATE_SYSTEM_FOCUSABLE;
    if (item == 0) {
        if (focused) flags |= STATE_SYSTEM_FOCUSED;
    } else {
        flags |= STATE_SYSTEM_SELECTABLE;
        if (item - 1 == source_->Chosen())
            flags |= STATE_SYSTEM_SELECTED | (focused ? STATE_SYSTEM_FOCUSED : 0);
        const RECT r = source_->ItemRect(static_cast<int>(item - 1));
        if (::IsRectEmpty(&r)) flags |= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
    }
    Item(state, flags);
    return S_OK;
}

HRESULT ListAccessible::get_accHelp(VARIANT, BSTR* help) {
    if (help != nullptr) *help = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::get_accHelpTopic(BSTR* file, VARIANT, long* topic) {
    if (file != nullptr) *file = nullptr;
    if (topic != nullptr) *topic = 0;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::get_accKeyboardShortcut(VARIANT, BSTR* shortcut) {
    if (shortcut != nullptr) *shortcut = nullptr;
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::get_accFocus(VARIANT* child) {
    if (child == nullptr) return E_POINTER;
    ::VariantInit(child);
    if (source_ == nullptr) return kGone;
    if (::GetFocus() != window_) return S_FALSE;
    const int chosen = source_->Chosen();
    Item(child, chosen >= 0 ? chosen + 1 : CHILDID_SELF);
    return S_OK;
}

HRESULT ListAccessible::get_accSelection(VARIANT* children) {
    if (children == nullptr) return E_POINTER;
    ::VariantInit(children);
    if (source_ == nullptr) return kGone;
    const int chosen = source_->Chosen();
    if (chosen < 0) return S_FALSE;
    Item(children, chosen + 1);
    return S_OK;
}

HRESULT ListAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    const long item = ItemOf(child);
    if (item < 0) return E_INVALIDARG;
    if (item == 0) {
        if (action != nullptr) *action = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    return Reply(u"Show", action);
}

HRESULT ListAccessible::accSelect(long, VARIANT) {
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ListAccessible::accLocation(long* left, long* top, long* width, long* height,
                                    VARIANT child) {
    const long item = ItemOf(child);
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr)
        return E_POINTER;
    if (item < 0) return E_INVALIDARG;
    RECT r{};
    if (item == 0) {
        ::GetClientRect(window_, &r);
    } else {
        r = source_->ItemRect(static_cast<int>(item - 1));
    }
    ::MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&r), 2);
    *left = r.left;
    *top = r.top;
    *width = r.right - r.left;
    *height = r.bottom - r.top;
    return S_OK;
}

HRESULT ListAccessible::accNavigate(long direction, VARIANT start, VARIANT* end) {
    const long item = ItemOf(start);
    if (end == nullptr) return E_POINTER;
    ::VariantInit(end);
    if (item < 0) return E_INVALIDARG;
    const long count = source_->ItemCount();
    long to = 0;
    switch (direction) {
        case NAVDIR_FIRSTCHILD:
            to = item == 0 && count > 0 ? 1 : 0;
            break;
        case NAVDIR_LASTCHILD:
            to = item == 0 ? count : 0;
            break;
        case NAVDIR_NEXT:
        case NAVDIR_DOWN:
        case NAVDIR_RIGHT:
            to = item > 0 && item < count ? item + 1 : 0;
            break;
        case NAVDIR_PREVIOUS:
        case NAVDIR_UP:
        case NAVDIR_LEFT:
            to = item > 1 ? item - 1 : 0;
            break;
        default:
            return E_INVALIDARG;
    }
    if (to == 0) return S_FALSE;
    Item(end, to);
    return S_OK;
}

HRESULT ListAccessible::accHitTest(long x, long y, VARIANT* child) {
    if (child == nullptr) return E_POINTER;
    ::VariantInit(child);
    if (source_ == nullptr) return kGone;
    POINT at{x, y};
    ::ScreenToClient(window_, &at);
    RECT client{};
    ::GetClientRect(window_, &client);
    if (!::PtInRect(&client, at)) return S_FALSE;
    for (int i = 0; i < source_->ItemCount(); ++i) {
        const RECT r = source_->ItemRect(i);
        if (::PtInRect(&r, at)) {
            Item(child, i + 1);
            return S_OK;
        }
    }
    Item(child, CHILDID_SELF);
    return S_OK;
}

HRESULT ListAccessible::accDoDefaultAction(VARIANT child) {
    const long item = ItemOf(child);
    if (item <= 0) return item == 0 ? DISP_E_MEMBERNOTFOUND : E_INVALIDARG;
    source_->Choose(static_cast<int>(item - 1));
    return S_OK;
}

HRESULT ListAccessible::put_accName(VARIANT, BSTR) {
    return E_NOTIMPL;
}

HRESULT ListAccessible::put_accValue(VARIANT, BSTR) {
    return E_NOTIMPL;
}

}  // namespace zk::companion
