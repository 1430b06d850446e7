#pragma once

#include "platform/win32/list_accessible_rows.h"

#include <atomic>
#include <functional>
#include <memory>
#include <oleacc.h>

namespace cvlog::platform::win32 {

/// A list's window as assistive technology sees it: a list whose children are its rows. Others may hold it longer than
/// the window lives; it then answers CO_E_OBJNOTCONNECTED, and keeps nothing but the code loaded.
class ListAccessible final : public IAccessible {
public:
    struct Parts {
        ListAccessibleRows& rows;
        /// Called when a row that was chosen is to be activated, once the caller is answered.
        std::function<void()> activate;
        std::shared_ptr<void> codeLock;
    };
    /// The owner's way to hold it: the rows have to live until the connection ends.
    struct EndsConnection {
        void operator()(ListAccessible* object) const noexcept { object->endConnection(); }
    };
    using Connection = std::unique_ptr<ListAccessible, EndsConnection>;
    static Connection make(Parts parts) { return Connection(new ListAccessible(std::move(parts))); }

    /// The answer to WM_GETOBJECT for the client area; 0 when the system cannot pass the object on.
    LRESULT give(WPARAM wParam) noexcept;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* keys) override;
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accSelection(VARIANT* children) override;
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP put_accName(VARIANT child, BSTR name) override;
    STDMETHODIMP put_accValue(VARIANT child, BSTR value) override;

private:
    explicit ListAccessible(Parts parts) noexcept
        : rows_(&parts.rows), activate_(std::move(parts.activate)), codeLock_(std::move(parts.codeLock)) {}
    ~ListAccessible() = default;
    void endConnection() noexcept;

    template <class Body>
    HRESULT answer(Body&& body) const noexcept;
    template <class Body>
    HRESULT answerFor(const VARIANT& child, Body&& body) const noexcept;
    template <class Body>
    HRESULT giveText(const VARIANT& child, BSTR* text, Body&& body) const noexcept;
    HRESULT refuseText(const VARIANT& child, BSTR* text) const noexcept;

    std::atomic<ULONG> references_{1};
    ListAccessibleRows* rows_; // null when the connection ended
    std::function<void()> activate_;
    std::shared_ptr<void> codeLock_;
};

} // namespace cvlog::platform::win32
