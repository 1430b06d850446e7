#include "com/dispatch_shell.h"

#include "com/collection_walk.h"
#include "com/firewall.h"
#include "com/foreign_object.h"
#include "com/invoke_arguments.h"
#include "com/object_bridge.h"
#include "com/type_library.h"
#include "com/variants.h"

#include <algorithm>

namespace cvlog::com {

namespace {

using automation::Member;
using automation::MemberKind;
using automation::Value;

// A property may be called like a method, as scripts do; a method is never run by a mere look at it.
const Member* findMember(const automation::DispatchTable& table, DISPID id, WORD flags) {
    const Member* member = nullptr;
    if (flags & DISPATCH_METHOD) member = table.find(id, MemberKind::Method);
    if (!member && (flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)))
        member = table.find(id, MemberKind::PropertyGet);
    if (!member && (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)))
        member = table.find(id, MemberKind::PropertyPut);
    return member;
}

// What is wrong with the arguments themselves is told by the result alone; all else is an exception of the member.
bool isArgumentProblem(HRESULT code) {
    return code == DISP_E_TYPEMISMATCH || code == DISP_E_OVERFLOW || code == DISP_E_BADPARAMCOUNT ||
           code == DISP_E_PARAMNOTFOUND || code == DISP_E_PARAMNOTOPTIONAL;
}

HRESULT raise(const automation::AutomationError& error, EXCEPINFO* exception) {
    setErrorInfo(error);
    if (!exception) return failureOf(error);
    fillExcepInfo(error, exception);
    return DISP_E_EXCEPTION;
}

// How a host's `For Each` begins.
HRESULT walk(automation::DispatchObject& collection, VARIANT* result, EXCEPINFO* exception) {
    VariantInit(result);
    try {
        return startWalk(collection, result) ? S_OK : DISP_E_MEMBERNOTFOUND;
    } catch (const automation::AutomationError& error) {
        return raise(error, exception);
    }
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

STDMETHODIMP DispatchShell::InterfaceSupportsErrorInfo(REFIID id) {
    const IID* own = dispatchInterface();
    return id == IID_IDispatch || (own && id == *own) ? S_OK : S_FALSE;
}

STDMETHODIMP DispatchShell::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return firewall([&]() -> HRESULT {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        if (!names || !ids || count == 0 || std::find(names, names + count, nullptr) != names + count)
            return E_INVALIDARG;
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

STDMETHODIMP DispatchShell::Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    return firewall([&]() -> HRESULT {
        if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
        const DISPPARAMS none = {};
        const DISPPARAMS& given = parameters ? *parameters : none;
        if (!isWellFormed(given)) return E_INVALIDARG;
        // What runs may let go of the last reference to this object: nothing of it is used after the call.
        const std::shared_ptr<Apartment> keepApartment = apartment_;
        const std::shared_ptr<automation::DispatchObject> keepTarget = target_;
        if (id == DISPID_NEWENUM && result && (flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)))
            return walk(*keepTarget, result, exception);
        const Member* member = findMember(keepTarget->dispatchTable(), id, flags);
        if (!member) return DISP_E_MEMBERNOTFOUND;
        return invokeMember(*keepTarget, *member, given, {result, exception, badArgument});
    });
}

HRESULT DispatchShell::invokeMember(automation::DispatchObject& target, const Member& member,
                                    const DISPPARAMS& parameters, const InvokeAnswer& answer) {
    try {
        InvokeArguments arguments(parameters, member);
        const Value result = automation::invokeMember(target, member, arguments.call());
        arguments.writeBackChanges();
        if (answer.result) toVariant(result, answer.result);
        return S_OK;
    } catch (const automation::ArgumentError& error) {
        if (!isArgumentProblem(error.code())) return raise(error, answer.exception);
        if (const auto bad = badArgumentOf(parameters, member, error); bad && answer.badArgument)
            *answer.badArgument = *bad;
        setErrorInfo(error);
        return error.code();
    } catch (const automation::AutomationError& error) {
        return raise(error, answer.exception);
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
