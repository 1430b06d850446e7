// Variants come last one first: named arguments, then the others. The value of a property put has a name of its own and
// is the member's last argument.

#include "com/invoke_arguments.h"

#include "automation/error.h"
#include "com/variants.h"

namespace cvlog::com {

namespace {

using automation::ArgumentError;
using automation::AutomationError;
using automation::Member;
using automation::MemberKind;

bool isPutValue(const DISPPARAMS& parameters, const Member& member, UINT index) noexcept {
    return index < parameters.cNamedArgs && parameters.rgdispidNamedArgs[index] == DISPID_PROPERTYPUT &&
           member.kind == MemberKind::PropertyPut;
}

/// The position of the parameter that a variant is for; not a parameter's when its name is unknown.
std::size_t parameterOf(const DISPPARAMS& parameters, const Member& member, UINT index) noexcept {
    if (index >= parameters.cNamedArgs) return parameters.cArgs - 1 - index;
    if (isPutValue(parameters, member, index)) return member.parameters.size() - 1;
    return static_cast<std::size_t>(parameters.rgdispidNamedArgs[index]);
}

automation::Value valueOf(const DISPPARAMS& parameters, const Member& member, UINT index) {
    try {
        return fromVariant(parameters.rgvarg[index]);
    } catch (const AutomationError& problem) {
        throw ArgumentError(problem, parameterOf(parameters, member, index));
    }
}

} // namespace

InvokeArguments::InvokeArguments(const DISPPARAMS& parameters, const Member& member)
    : parameters_(parameters), member_(member) {
    values_.reserve(parameters.cArgs);
    for (UINT i = 0; i < parameters.cArgs; ++i) values_.push_back(valueOf(parameters, member, i));
    given_ = values_;
    for (UINT i = parameters.cArgs; i > 0; --i) place(i - 1);
}

void InvokeArguments::place(UINT index) {
    automation::Value* value = &values_[index];
    if (index >= parameters_.cNamedArgs)
        call_.positional.push_back(value);
    else if (isPutValue(parameters_, member_, index))
        call_.assigned = value;
    else
        call_.named.push_back({parameters_.rgdispidNamedArgs[index], value});
}

void InvokeArguments::writeBackChanges() {
    for (UINT i = 0; i < parameters_.cArgs; ++i) {
        const std::size_t parameter = parameterOf(parameters_, member_, i);
        if (parameter >= member_.parameters.size())
            continue; // it went to the default member of a property's value
        if (member_.parameters[parameter].byReference && !(values_[i] == given_[i]))
            writeBack(parameters_.rgvarg[i], values_[i]);
    }
}

bool isWellFormed(const DISPPARAMS& parameters) noexcept {
    return parameters.cNamedArgs <= parameters.cArgs && (parameters.cArgs == 0 || parameters.rgvarg) &&
           (parameters.cNamedArgs == 0 || parameters.rgdispidNamedArgs);
}

std::optional<UINT> badArgumentOf(const DISPPARAMS& parameters, const Member& member,
                                  const ArgumentError& error) noexcept {
    const std::size_t known = member.parameters.size();
    const bool aboutName = error.code() == DISP_E_PARAMNOTFOUND;
    for (UINT i = 0; i < parameters.cArgs; ++i) {
        const std::size_t parameter = parameterOf(parameters, member, i);
        if (aboutName ? parameter >= known : parameter < known && parameter == error.parameter()) return i;
    }
    return std::nullopt;
}

} // namespace cvlog::com
