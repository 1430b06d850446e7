#pragma once

#include <windows.h>

#include <ocidl.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/com_object.h"
#include "workbench/connection_point.h"
#include "workbench/variant.h"

namespace workbench {

/// The arguments of one call, in the caller's order.
class Arguments {
public:
    explicit Arguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

    size_t count() const { return parameters_.cArgs; }
    /// The readers throw Failure when the argument is missing or cannot be converted.
    Variant value(size_t index) const;
    std::wstring text(size_t index) const { return value(index).text(); }
    long integer(size_t index) const { return value(index).integer(); }
    double number(size_t index) const { return value(index).number(); }
    bool boolean(size_t index) const { return value(index).boolean(); }

private:
    const DISPPARAMS& parameters_;
};

using Member = std::function<Variant(const Arguments&)>;

/// A late-bound object made of functions:
///
///     auto counter = makeObject<ScriptObject>();
///     counter->member(L"Next", [n = 0](const Arguments&) mutable { return Variant(++n); });
///
/// Members are numbered in the order they are added; `Item` is the default member. What a function throws
/// reaches the caller as an automation error with its description.
class ScriptObject : public ComObject<IDispatch, IConnectionPointContainer> {
public:
    ScriptObject() = default;

    /// A method or a property to read, with or without arguments.
    void member(const wchar_t* name, Member read);
    /// A property that never changes; arguments go to the default member of an object.
    void constant(const wchar_t* name, Variant value);
    /// A property to read and write; the write's last argument is the new value.
    void property(const wchar_t* name, Member read, Member write);

    /// Members that this object does not have are looked for in `inner`.
    void extend(ComPtr<IDispatch> inner) { inner_ = std::move(inner); }

    /// Makes the object a source of events: `events` is the identity of the event interface.
    void offerEvents(REFIID events);
    void raise(DISPID event, const std::vector<Variant>& arguments = {});

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

protected:
    ~ScriptObject() override;
    void* findInterface(REFIID iid) override;

private:
    struct NamedMember {
        std::wstring name;
        Member read;
        Member write;
    };

    const NamedMember* find(DISPID id) const;

    std::vector<NamedMember> members_;
    ComPtr<IDispatch> inner_;
    ComPtr<ConnectionPoint> events_;
};

/// A collection over `count` things: `at(index)` makes the object of a 1-based index, `indexOf(key)` finds a
/// thing by name (0 = there is none, which gives an empty result). An index out of range fails.
ComPtr<ScriptObject> makeCollection(size_t count, const std::function<ComPtr<IDispatch>(size_t)>& at,
                                    const std::function<size_t(const std::wstring&)>& indexOf);

} // namespace workbench
