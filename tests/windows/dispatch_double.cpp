#include "tests/windows/dispatch_double.h"

#include "automation/error.h"
#include "tests/windows/class_factory.h"

#include <map>

namespace cvlog::tests {

using namespace automation;

namespace {

std::map<const Object*, DispatchDouble*>& known() {
    static std::map<const Object*, DispatchDouble*> doubles;
    return doubles;
}

std::u16string text(const wchar_t* start, std::size_t length) {
    return {reinterpret_cast<const char16_t*>(start), length};
}

BSTR bstr(const std::u16string& value) {
    return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(value.data()), static_cast<UINT>(value.size()));
}

Value valueOf(const VARIANT& variant) {
    switch (V_VT(&variant)) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return Null{};
    case VT_I2:
        return V_I2(&variant);
    case VT_I4:
        return std::int32_t(V_I4(&variant));
    case VT_R8:
        return V_R8(&variant);
    case VT_BOOL:
        return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_BSTR:
        return text(V_BSTR(&variant), SysStringLen(V_BSTR(&variant)));
    default:
        throw AutomationError(code::kTypeMismatch, u"No value that the double takes");
    }
}

struct VariantOf {
    VARIANT& to;

    void operator()(Empty) const { V_VT(&to) = VT_EMPTY; }
    void operator()(Null) const { V_VT(&to) = VT_NULL; }
    void operator()(std::int16_t value) const { V_VT(&to) = VT_I2, V_I2(&to) = value; }
    void operator()(std::int32_t value) const { V_VT(&to) = VT_I4, V_I4(&to) = value; }
    void operator()(double value) const { V_VT(&to) = VT_R8, V_R8(&to) = value; }
    void operator()(bool value) const {
        V_VT(&to) = VT_BOOL, V_BOOL(&to) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(const std::u16string& value) const { V_VT(&to) = VT_BSTR, V_BSTR(&to) = bstr(value); }
    void operator()(const ObjectRef& value) const {
        V_VT(&to) = VT_DISPATCH;
        V_DISPATCH(&to) = DispatchDouble::of(std::static_pointer_cast<DispatchObject>(value));
    }
    template <class Other>
    void operator()(const Other&) const {
        throw AutomationError(code::kTypeMismatch, u"No value that the double gives");
    }
};

} // namespace

DispatchDouble* DispatchDouble::of(const std::shared_ptr<DispatchObject>& object) {
    const auto found = known().find(object.get());
    if (found != known().end()) return found->second->AddRef(), found->second;
    return known()[object.get()] = new DispatchDouble(object);
}

DispatchDouble::~DispatchDouble() {
    known().erase(object_.get());
    --alive_;
}

STDMETHODIMP DispatchDouble::QueryInterface(REFIID id, void** result) {
    if (id != IID_IUnknown && id != IID_IDispatch) return *result = nullptr, E_NOINTERFACE;
    return AddRef(), *result = static_cast<IDispatch*>(this), S_OK;
}

STDMETHODIMP_(ULONG) DispatchDouble::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP DispatchDouble::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    const std::u16string name = text(names[0], wcslen(names[0]));
    if (count != 1 || !object_->dispatchTable().idOf(name))
        return ids[0] = DISPID_UNKNOWN, DISP_E_UNKNOWNNAME;
    ids[0] = static_cast<DISPID>(names_.size());
    names_.push_back(name);
    return S_OK;
}

Value DispatchDouble::run(const std::u16string& member, WORD flags, const DISPPARAMS& parameters) {
    std::vector<Value> values;
    for (UINT i = parameters.cArgs; i > 0; --i) values.push_back(valueOf(parameters.rgvarg[i - 1]));
    if (!(flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF))) return object_->call(member, values);
    if ((flags & DISPATCH_PROPERTYPUTREF) != 0 || values.size() != 1)
        throw AutomationError(code::kMemberNotFound, u"No such property to put");
    object_->put(member, values[0]);
    return {};
}

STDMETHODIMP DispatchDouble::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                    VARIANT* result, EXCEPINFO* info, UINT*) {
    const ComPtr<IDispatch> keep(this);
    try {
        const Value value = run(names_.at(static_cast<std::size_t>(id)), flags, *parameters);
        VARIANT answer;
        VariantInit(&answer);
        std::visit(VariantOf{answer}, value.storage());
        if (result)
            *result = answer;
        else
            VariantClear(&answer);
        return S_OK;
    } catch (const AutomationError& error) {
        if (info) {
            *info = {};
            info->scode = error.code();
            info->bstrSource = bstr(error.source());
            info->bstrDescription = bstr(error.description());
        }
        return DISP_E_EXCEPTION;
    } catch (...) {
        return E_FAIL;
    }
}

InstalledClass::InstalledClass(std::wstring progId, const CLSID& id, Make make)
    : key_(L"Software\\Classes\\" + std::move(progId)) {
    wchar_t text[64];
    StringFromGUID2(id, text, 64);
    EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, (key_ + L"\\CLSID").c_str(), nullptr, REG_SZ, text,
                              static_cast<DWORD>((wcslen(text) + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
    auto* factory = new ClassFactory([make = std::move(make)](REFIID iid, void** result) {
        const ComPtr<IDispatch> made = com::adopt<IDispatch>(DispatchDouble::of(make()));
        return made.Get()->QueryInterface(iid, result);
    });
    EXPECT_EQ(CoRegisterClassObject(id, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_), S_OK);
    factory->Release();
}

InstalledClass::~InstalledClass() {
    CoRevokeClassObject(cookie_);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, key_.c_str());
}

} // namespace cvlog::tests
