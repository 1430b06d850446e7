#include "com/container_bag.h"

#include "base/failure.h"
#include "com/variants.h"

namespace cvlog::com {

namespace {

struct OwnedVariant {
    VARIANT variant;
    OwnedVariant() { VariantInit(&variant); }
    ~OwnedVariant() { VariantClear(&variant); }
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;
};

} // namespace

std::optional<automation::Value> ContainerBag::read(std::u16string_view name) {
    lastName_ = name;
    OwnedVariant value; // empty: the bag gives what it has, and the conversion is ours
    const HRESULT result = bag_->Read(wide(lastName_.c_str()), &value.variant, log_.Get());
    if (result == E_INVALIDARG) return std::nullopt; // what bags answer when they have no such value
    if (FAILED(result)) throw automation::AutomationError(result, u"The property bag fails");
    return fromVariant(value.variant);
}

void ContainerBag::write(std::u16string_view name, const automation::Value& value) {
    const std::u16string terminated(name);
    OwnedVariant written;
    toVariant(value, &written.variant);
    const HRESULT result = bag_->Write(wide(terminated.c_str()), &written.variant);
    if (FAILED(result)) throw automation::AutomationError(result, u"The property bag fails");
}

void ContainerBag::addToLog(const automation::AutomationError& error) const noexcept {
    if (!log_) return;
    base::ignoring([&] {
        EXCEPINFO info = {};
        const base::ScopeExit clear([&info] {
            SysFreeString(info.bstrSource);
            SysFreeString(info.bstrDescription);
        });
        fillExcepInfo(error, &info);
        log_->AddError(wide(lastName_.c_str()), &info);
    });
}

} // namespace cvlog::com
