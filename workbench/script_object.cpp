#include "workbench/script_object.h"

#include "workbench/com_call.h"
#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

namespace {

// Clear of the numbers that an extended object gives its own members.
constexpr DISPID kFirstId = 0x7A000000;

void describe(EXCEPINFO* exception, const std::wstring& description, HRESULT code) {
    if (exception) {
        *exception = {};
        exception->scode = code;
        exception->bstrSource = SysAllocString(L"Workbench");
        exception->bstrDescription =
            SysAllocStringLen(description.data(), static_cast<UINT>(description.size()));
    }
}

} // namespace

Variant Arguments::value(size_t index) const {
    if (index >= count()) {
        throw Failure(L"An argument is missing", DISP_E_BADPARAMCOUNT);
    }
    Variant value;
    check(VariantCopyInd(value.receive(), &parameters_.rgvarg[count() - 1 - index]), L"Reading an argument");
    return value;
}

ScriptObject::~ScriptObject() {
    if (events_) {
        events_->ownerGone();
    }
}

void* ScriptObject::findInterface(REFIID iid) {
    return iid == IID_IConnectionPointContainer && !events_ ? nullptr : ComObject::findInterface(iid);
}

void ScriptObject::member(const wchar_t* name, Member read) {
    members_.push_back({name, std::move(read), nullptr});
}

void ScriptObject::constant(const wchar_t* name, Variant value) {
    member(name, [value = std::move(value)](const Arguments& arguments) {
        // `Methods("x")` is the item "x" of what `Methods` gives.
        return arguments.count() == 0 ? value : item(value.object().Get(), arguments.value(0));
    });
}

void ScriptObject::property(const wchar_t* name, Member read, Member write) {
    members_.push_back({name, std::move(read), std::move(write)});
}

void ScriptObject::offerEvents(REFIID events) { events_ = makeObject<ConnectionPoint>(this, events); }

void ScriptObject::raise(DISPID event, const std::vector<Variant>& arguments) {
    const ComPtr<ConnectionPoint> events = events_;
    if (events) {
        events->raise(event, arguments);
    }
}

const ScriptObject::NamedMember* ScriptObject::find(DISPID id) const {
    for (size_t i = 0; i < members_.size(); ++i) {
        const bool isDefault = id == DISPID_VALUE && sameName(members_[i].name, L"Item");
        if (isDefault || id == kFirstId + static_cast<DISPID>(i)) {
            return &members_[i];
        }
    }
    return nullptr;
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) {
    if (!count) {
        return E_POINTER;
    }
    *count = 0;
    return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) {
        *info = nullptr;
    }
    return E_NOTIMPL;
}

HRESULT ScriptObject::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
    if (!names || !ids || count == 0) {
        return E_INVALIDARG;
    }
    for (size_t i = 0; i < members_.size(); ++i) {
        if (sameName(members_[i].name, names[0])) {
            ids[0] = kFirstId + static_cast<DISPID>(i);
            for (UINT argument = 1; argument < count; ++argument) {
                ids[argument] = DISPID_UNKNOWN; // arguments have no names
            }
            return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
        }
    }
    if (inner_) {
        return inner_->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const NamedMember* found = find(id);
    if (!found) {
        return inner_
                   ? inner_->Invoke(id, reserved, locale, flags, parameters, result, exception, badArgument)
                   : DISP_E_MEMBERNOTFOUND;
    }
    const bool writes = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    const Member member = writes ? found->write : found->read; // a copy: the call may end this object
    if (!member || !parameters) {
        return member ? E_INVALIDARG : DISP_E_MEMBERNOTFOUND;
    }
    try {
        Variant value = member(Arguments(*parameters));
        if (result) {
            *result = value.detach();
        }
        return S_OK;
    } catch (const Failure& failure) {
        describe(exception, failure.message(), failure.code());
    } catch (const std::exception&) {
        describe(exception, L"Out of memory", E_OUTOFMEMORY);
    }
    return DISP_E_EXCEPTION;
}

HRESULT ScriptObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
    if (points) {
        *points = nullptr;
    }
    return E_NOTIMPL;
}

HRESULT ScriptObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (!point) {
        return E_POINTER;
    }
    *point = nullptr;
    // Who does not know the name of the event interface may ask for the plain one.
    if (!events_ || (iid != events_->events() && iid != IID_IDispatch)) {
        return CONNECT_E_NOCONNECTION;
    }
    return events_.CopyTo(point);
}

ComPtr<ScriptObject> makeCollection(size_t count, const std::function<ComPtr<IDispatch>(size_t)>& at,
                                    const std::function<size_t(const std::wstring&)>& indexOf) {
    auto collection = makeObject<ScriptObject>();
    collection->constant(L"Count", static_cast<long>(count));
    collection->member(L"Item", [=](const Arguments& arguments) -> Variant {
        const Variant key = arguments.value(0);
        if (key.raw().vt == VT_BSTR) {
            const size_t found = indexOf(key.text());
            return found ? Variant(at(found)) : Variant();
        }
        const long index = key.integer();
        if (index < 1 || static_cast<size_t>(index) > count) {
            throw Failure(L"There is no item " + std::to_wstring(index), DISP_E_BADINDEX);
        }
        return at(static_cast<size_t>(index));
    });
    return collection;
}

} // namespace workbench
