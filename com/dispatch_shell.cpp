#include "com/dispatch_shell.h"

#include "base/failure.h"
#include "com/firewall.h"
#include "com/foreign_object.h"
#include "com/object_bridge.h"
#include "com/type_library.h"
#include "com/variants.h"

#include <vector>

namespace cvlog::com {

namespace {

using automation::Member;
using automation::MemberKind;
using automation::Value;

/// The arguments of one Invoke: values, and the way back into by-reference variants.
class InvokeArguments {
public:
    explicit InvokeArguments(DISPPARAMS& parameters) : parameters_(parameters) {
        values_.reserve(parameters.cArgs);
        for (UINT i = 0; i < parameters.cArgs; ++i) values_.push_back(fromVariant(parameters.rgvarg[i]));
        given_ = values_;
        for (UINT i = 0; i < parameters.cNamedArgs; ++i) addNamed(parameters.rgdispidNamedArgs[i], i);
        for (UINT i = parameters.cArgs; i > parameters.cNamedArgs; --i)
            call_.positional.push_back(&values_[i - 1]);
        if (putValue_) call_.positional.push_back(putValue_);
    }

    const automation::CallArguments& call() const noexcept { return call_; }

    void writeBackChanges() {
        for (UINT i = 0; i < parameters_.cArgs; ++i)
            if (!(values_[i] == given_[i])) writeBack(parameters_.rgvarg[i], values_[i]);
    }

private:
    // The value of a property put is the last argument, whatever its name.
    void addNamed(DISPID id, UINT index) {
        if (id == DISPID_PROPERTYPUT)
            putValue_ = &values_[index];
        else
            call_.named.push_back({id, &values_[index]});
    }

    DISPPARAMS& parameters_;
    std::vector<Value> values_;
    std::vector<Value> given_;
    automation::CallArguments call_;
    Value* putValue_ = nullptr;
};

const Member* findMember(const automation::DispatchTable& table, DISPID id, WORD flags) {
    const Member* member = nullptr;
    if (flags & DISPATCH_METHOD) member = table.find(id, MemberKind::Method);
    if (!member && (flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)))
        member = table.find(id, MemberKind::PropertyGet);
    if (!member && (flags & DISPATCH_PROPERTYGET)) member = table.find(id, MemberKind::Method);
    if (!member && (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)))
        member = table.find(id, MemberKind::PropertyPut);
    return member;
}

} // namespace

DispatchShell::DispatchShell(IUnknown* outer, std::shared_ptr<Apartment> apartment,
                             std::shared_ptr<automation::DispatchObject> target)
    : ComObject(outer), apartment_(std::move(apartment)), target_(std::move(target)) {
    apartment_->shells[target_.get()] = this;
}

DispatchShell::~DispatchShell() {
    apartment_->shells.erase(target_.get());
    target_.reset(); // before the apartment, whose state it uses
}

void* DispatchShell::interfaceOf(REFIID id) noexcept {
    const IID* own = dispatchInterface();
    if (id == IID_IDispatch || (own && id == *own)) return static_cast<IDispatch*>(this);
    if (id == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    return nullptr;
}

STDMETHODIMP DispatchShell::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = dispatchInterface() ? 1 : 0;
    return S_OK;
}

STDMETHODIMP DispatchShell::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (!info) return E_POINTER;
    *info = nullptr;
    const IID* own = dispatchInterface();
    return index == 0 && own ? typeInfoOf(*own, info) : DISP_E_BADINDEX;
}

STDMETHODIMP DispatchShell::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return firewall([&]() -> HRESULT {
        if (!names || !ids || count == 0) return E_INVALIDARG;
        const automation::DispatchTable& table = target_->dispatchTable();
        const std::u16string_view member = view(names[0], wcslen(names[0]));
        const auto id = table.idOf(member);
        ids[0] = id.value_or(DISPID_UNKNOWN);
        bool known = id.has_value();
        for (UINT i = 1; i < count; ++i) {
            const auto parameter = table.parameterIdOf(member, view(names[i], wcslen(names[i])));
            ids[i] = parameter.value_or(DISPID_UNKNOWN);
            known = known && parameter.has_value();
        }
        return known ? S_OK : DISP_E_UNKNOWNNAME;
    });
}

STDMETHODIMP DispatchShell::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    return firewall([&] {
        // What runs may let go of the last reference to this object: nothing of it is used after the call.
        const std::shared_ptr<Apartment> keepApartment = apartment_;
        const std::shared_ptr<automation::DispatchObject> keepTarget = target_;
        DISPPARAMS none = {};
        return invokeTarget(id, flags, parameters ? *parameters : none, result, exception, badArgument);
    });
}

HRESULT DispatchShell::invokeTarget(DISPID id, WORD flags, DISPPARAMS& parameters, VARIANT* result,
                                    EXCEPINFO* exception, UINT* badArgument) {
    const Member* member = findMember(target_->dispatchTable(), id, flags);
    if (!member) return DISP_E_MEMBERNOTFOUND;
    try {
        InvokeArguments arguments(parameters);
        const Value answer = automation::invokeMember(*target_, *member, arguments.call());
        arguments.writeBackChanges();
        if (result) toVariant(answer, result);
        return S_OK;
    } catch (const automation::ArgumentError& error) {
        if (badArgument && error.parameter() < parameters.cArgs)
            *badArgument = parameters.cArgs - 1 - static_cast<UINT>(error.parameter());
        return error.code();
    } catch (const automation::AutomationError& error) {
        if (!exception) throw;
        fillExcepInfo(error, exception);
        return DISP_E_EXCEPTION;
    }
}

automation::ObjectRef toObject(IDispatch* dispatch) {
    if (!dispatch) return nullptr;
    if (Apartment* apartment = Apartment::current()) {
        for (const auto& [object, shell] : apartment->shells)
            if (static_cast<IDispatch*>(shell) == dispatch) return shell->target();
    }
    return std::make_shared<ForeignObject>(dispatch);
}

IDispatch* toDispatch(const automation::ObjectRef& object) {
    if (!object) return nullptr;
    if (const auto* foreign = dynamic_cast<const ForeignObject*>(object.get())) {
        foreign->dispatch()->AddRef();
        return foreign->dispatch();
    }
    const auto target = std::dynamic_pointer_cast<automation::DispatchObject>(object);
    if (!target)
        throw automation::AutomationError(automation::code::kTypeMismatch,
                                          u"The object cannot be handed out");
    const std::shared_ptr<Apartment> apartment = Apartment::enter();
    if (const auto known = apartment->shells.find(target.get()); known != apartment->shells.end()) {
        known->second->AddRef();
        return known->second;
    }
    return new DispatchShell(nullptr, apartment, target);
}

} // namespace cvlog::com
