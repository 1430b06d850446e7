#include "platform/win32/list_accessible.h"

#include "platform/win32/number_enumeration.h"
#include "platform/win32/wide_text.h"

#include <new>
#include <objbase.h>

namespace cvlog::platform::win32 {

namespace {

constexpr LONG kSelf = CHILDID_SELF;

BSTR makeBstr(std::u16string_view text) {
    BSTR made = SysAllocStringLen(wideView(text).data(), static_cast<UINT>(text.size()));
    if (!made) throw std::bad_alloc();
    return made;
}

void giveNumber(VARIANT* place, LONG number) noexcept {
    place->vt = VT_I4;
    place->lVal = number;
}

} // namespace

/// Runs a method's body while there is a list to ask; no exception leaves it.
template <class Body>
HRESULT ListAccessible::answer(Body&& body) const noexcept {
    if (!rows_ || !rows_->window()) return CO_E_OBJNOTCONNECTED;
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

/// The same for a child, which the body gets as a number.
template <class Body>
HRESULT ListAccessible::answerFor(const VARIANT& child, Body&& body) const noexcept {
    return answer([&]() -> HRESULT {
        const bool known = child.vt == VT_I4 && child.lVal >= kSelf && child.lVal <= rows_->count();
        return known ? body(static_cast<int>(child.lVal)) : E_INVALIDARG;
    });
}

template <class Body>
HRESULT ListAccessible::giveText(const VARIANT& child, BSTR* text, Body&& body) const noexcept {
    if (!text) return E_POINTER;
    *text = nullptr;
    return answerFor(child, [&](int which) -> HRESULT {
        const std::u16string made = body(which);
        if (made.empty()) return S_FALSE;
        *text = makeBstr(made);
        return S_OK;
    });
}

HRESULT ListAccessible::refuseText(const VARIANT& child, BSTR* text) const noexcept {
    if (!text) return E_POINTER;
    *text = nullptr;
    return answerFor(child, [](int) { return DISP_E_MEMBERNOTFOUND; });
}

LRESULT ListAccessible::give(WPARAM wParam) noexcept {
    const LRESULT given = LresultFromObject(__uuidof(IAccessible), wParam, static_cast<IAccessible*>(this));
    return given > 0 ? given : 0;
}

void ListAccessible::endConnection() noexcept {
    rows_ = nullptr;
    activate_ = nullptr;
    CoDisconnectObject(this, 0); // other programs' references go now
    Release();
}

STDMETHODIMP ListAccessible::QueryInterface(REFIID id, void** result) {
    if (!result) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(IAccessible);
    *result = known ? static_cast<IAccessible*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ListAccessible::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP ListAccessible::get_accParent(IDispatch** parent) {
    if (!parent) return E_POINTER;
    *parent = nullptr;
    return answer([&] {
        return AccessibleObjectFromWindow(rows_->window(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                          reinterpret_cast<void**>(parent));
    });
}

STDMETHODIMP ListAccessible::get_accChildCount(LONG* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return answer([&] {
        *count = rows_->count();
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accChild(VARIANT child, IDispatch** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    return answerFor(child, [&](int which) -> HRESULT {
        if (which != kSelf) return S_FALSE; // a row is a part of this object, not one of its own
        *object = this;
        AddRef();
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accName(VARIANT child, BSTR* name) {
    return giveText(child, name, [this](int which) { return rows_->name(which); });
}

STDMETHODIMP ListAccessible::get_accValue(VARIANT child, BSTR* value) { return refuseText(child, value); }

STDMETHODIMP ListAccessible::get_accDescription(VARIANT child, BSTR* description) {
    return giveText(child, description, [this](int which) { return rows_->description(which); });
}

STDMETHODIMP ListAccessible::get_accRole(VARIANT child, VARIANT* role) {
    if (!role) return E_POINTER;
    role->vt = VT_EMPTY;
    return answerFor(child, [role](int which) {
        giveNumber(role, which == kSelf ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_LISTITEM);
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accState(VARIANT child, VARIANT* state) {
    if (!state) return E_POINTER;
    state->vt = VT_EMPTY;
    return answerFor(child, [&](int which) {
        giveNumber(state, rows_->state(which));
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accHelp(VARIANT child, BSTR* help) { return refuseText(child, help); }

STDMETHODIMP ListAccessible::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
    if (!topic) return E_POINTER;
    *topic = 0;
    return refuseText(child, file);
}

STDMETHODIMP ListAccessible::get_accKeyboardShortcut(VARIANT child, BSTR* keys) {
    return refuseText(child, keys);
}

STDMETHODIMP ListAccessible::get_accFocus(VARIANT* child) {
    if (!child) return E_POINTER;
    child->vt = VT_EMPTY;
    return answer([&]() -> HRESULT {
        const std::optional<int> focused = rows_->focused();
        if (!focused) return S_FALSE;
        giveNumber(child, *focused);
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accSelection(VARIANT* children) {
    if (!children) return E_POINTER;
    children->vt = VT_EMPTY;
    return answer([&]() -> HRESULT {
        std::vector<LONG> rows = rows_->selected();
        if (rows.empty()) return S_FALSE;
        if (rows.size() == 1) {
            giveNumber(children, rows.front());
            return S_OK;
        }
        auto shared = std::make_shared<const std::vector<LONG>>(std::move(rows));
        children->punkVal = new NumberEnumeration(std::move(shared), codeLock_);
        children->vt = VT_UNKNOWN;
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    return giveText(child, action,
                    [this](int which) { return which == kSelf ? std::u16string() : rows_->action(); });
}

STDMETHODIMP ListAccessible::accSelect(LONG flags, VARIANT child) {
    return answerFor(child, [&](int which) -> HRESULT {
        switch (rows_->select(flags, which)) { // nothing of the list may be used afterwards
        case ListAccessibleRows::Done::Yes:
            return S_OK;
        case ListAccessibleRows::Done::No:
            return S_FALSE;
        case ListAccessibleRows::Done::Impossible:
            break;
        }
        return E_INVALIDARG;
    });
}

STDMETHODIMP ListAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    if (!left || !top || !width || !height) return E_POINTER;
    *left = *top = *width = *height = 0;
    return answerFor(child, [&](int which) {
        const RECT area = rows_->area(which);
        *left = area.left;
        *top = area.top;
        *width = area.right - area.left;
        *height = area.bottom - area.top;
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    if (!end) return E_POINTER;
    end->vt = VT_EMPTY;
    return answerFor(start, [&](int from) -> HRESULT {
        const bool toChildren = direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD;
        if (direction <= NAVDIR_MIN || direction >= NAVDIR_MAX || (toChildren && from != kSelf))
            return E_INVALIDARG;
        const std::optional<int> found = rows_->next(direction, from);
        if (!found) return S_FALSE;
        giveNumber(end, *found);
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
    if (!child) return E_POINTER;
    child->vt = VT_EMPTY;
    return answer([&]() -> HRESULT {
        const std::optional<int> found = rows_->childAt({left, top});
        if (!found) return S_FALSE;
        giveNumber(child, *found);
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::accDoDefaultAction(VARIANT child) {
    return answerFor(child, [&](int which) -> HRESULT {
        if (which == kSelf) return DISP_E_MEMBERNOTFOUND;
        if (rows_->choose(which) != ListAccessibleRows::Done::Yes) return S_FALSE;
        if (activate_) activate_();
        return S_OK;
    });
}

STDMETHODIMP ListAccessible::put_accName(VARIANT child, BSTR) {
    return answerFor(child, [](int) { return DISP_E_MEMBERNOTFOUND; });
}

STDMETHODIMP ListAccessible::put_accValue(VARIANT child, BSTR) {
    return answerFor(child, [](int) { return DISP_E_MEMBERNOTFOUND; });
}

} // namespace cvlog::platform::win32
