#include "com/foreign_object.h"

#include "com/event_connection.h"
#include "com/variants.h"

#include <vector>

namespace cvlog::com {

namespace {

using automation::AutomationError;
using automation::Value;

/// Variants in the order of a call: last argument first.
class ReversedArguments {
public:
    explicit ReversedArguments(std::span<const Value> values) : variants_(values.size()) {
        for (std::size_t i = 0; i < values.size(); ++i)
            toVariant(values[i], &variants_[values.size() - 1 - i]);
    }
    ~ReversedArguments() {
        for (VARIANT& variant : variants_) VariantClear(&variant);
    }
    ReversedArguments(const ReversedArguments&) = delete;
    ReversedArguments& operator=(const ReversedArguments&) = delete;

    DISPPARAMS parameters() { return parametersOf(variants_); }

    /// The same by reference, each as a reference to a variable of its type.
    DISPPARAMS references() {
        references_.resize(variants_.size());
        for (std::size_t i = 0; i < variants_.size(); ++i) {
            VARIANT& reference = references_[i];
            VariantInit(&reference);
            const bool isTyped = V_VT(&variants_[i]) > VT_NULL && V_VT(&variants_[i]) != VT_ERROR;
            V_VT(&reference) =
                static_cast<VARTYPE>(VT_BYREF | (isTyped ? V_VT(&variants_[i]) : VARTYPE{VT_VARIANT}));
            V_BYREF(&reference) = isTyped ? static_cast<void*>(&V_I8(&variants_[i])) : &variants_[i];
        }
        return parametersOf(references_);
    }

    /// What is in the variables now.
    void readBack(std::span<Value> values) const {
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = fromVariant(variants_[values.size() - 1 - i]);
    }

private:
    static DISPPARAMS parametersOf(std::vector<VARIANT>& variants) {
        return {variants.data(), nullptr, static_cast<UINT>(variants.size()), 0};
    }

    std::vector<VARIANT> variants_;
    std::vector<VARIANT> references_; // own nothing
};

/// The answer of a call, freed on every path.
struct Answer {
    VARIANT result;
    EXCEPINFO info = {};
    Answer() { VariantInit(&result); }
    ~Answer() {
        VariantClear(&result);
        SysFreeString(info.bstrSource);
        SysFreeString(info.bstrDescription);
        SysFreeString(info.bstrHelpFile);
    }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;
};

// Hosts that number their errors by 16 bits mean the classic run-time errors.
std::int32_t codeOf(const EXCEPINFO& info) {
    if (info.scode != 0) return info.scode;
    return info.wCode != 0 ? static_cast<std::int32_t>(0x800A0000U | info.wCode)
                           : automation::code::kException;
}

void checkCall(HRESULT result, EXCEPINFO& info) {
    if (SUCCEEDED(result)) return;
    if (result != DISP_E_EXCEPTION) throw AutomationError(result);
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    throw AutomationError(codeOf(info), view(info.bstrDescription), view(info.bstrSource));
}

} // namespace

ForeignObject::ForeignObject(IDispatch* dispatch) : dispatch_(dispatch) {
    dispatch->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity_.ReleaseAndGetAddressOf()));
    dispatch->QueryInterface(__uuidof(IDispatchEx),
                             reinterpret_cast<void**>(extended_.ReleaseAndGetAddressOf()));
}

DISPID ForeignObject::idOf(std::u16string_view member) const {
    if (member.empty()) return DISPID_VALUE;
    const std::u16string name(member);
    auto* text = const_cast<OLECHAR*>(wide(name.c_str()));
    DISPID id = DISPID_UNKNOWN;
    HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
    if (result == E_NOTIMPL && extended_) {
        const ComPtr<IDispatchEx> keep(extended_);
        const BSTR bstr = makeBstr(name);
        result = keep->GetDispID(bstr, fdexNameCaseInsensitive, &id);
        SysFreeString(bstr);
    }
    if (FAILED(result))
        throw AutomationError(result, u"Object doesn't support this property or method: " + name);
    return id;
}

Value ForeignObject::invokeDispatch(DISPID id, WORD flags, DISPPARAMS parameters) const {
    Answer answer;
    // The object may let go of its last own reference while it runs.
    const ComPtr<IDispatch> keep(dispatch_);
    const ComPtr<IDispatchEx> keepExtended(extended_);
    HRESULT result = keep->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &answer.result,
                                  &answer.info, nullptr);
    // Script classes of some engines answer only through their extended interface.
    if (result == E_NOTIMPL && keepExtended)
        result = keepExtended->InvokeEx(id, LOCALE_USER_DEFAULT, flags, &parameters, &answer.result,
                                        &answer.info, nullptr);
    checkCall(result, answer.info);
    return fromVariant(answer.result);
}

Value ForeignObject::call(std::u16string_view member, std::span<Value> arguments) {
    ReversedArguments reversed(arguments);
    return invokeDispatch(idOf(member), DISPATCH_METHOD | DISPATCH_PROPERTYGET, reversed.parameters());
}

Value ForeignObject::callByReference(std::u16string_view member, std::span<Value> arguments) {
    ReversedArguments reversed(arguments);
    Value result =
        invokeDispatch(idOf(member), DISPATCH_METHOD | DISPATCH_PROPERTYGET, reversed.references());
    reversed.readBack(arguments);
    return result;
}

Value ForeignObject::get(std::u16string_view member) { return call(member, {}); }

void ForeignObject::put(std::u16string_view member, const Value& value) {
    ReversedArguments reversed({&value, 1});
    DISPPARAMS parameters = reversed.parameters();
    DISPID named = DISPID_PROPERTYPUT;
    parameters.rgdispidNamedArgs = &named;
    parameters.cNamedArgs = 1;
    const WORD flags = value.is<automation::ObjectRef>() ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
    invokeDispatch(idOf(member), flags, parameters);
}

std::unique_ptr<automation::Connection> ForeignObject::connect(std::shared_ptr<automation::EventSink> sink) {
    return connectEvents(dispatch_.Get(), std::move(sink));
}

} // namespace cvlog::com
