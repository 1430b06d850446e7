#pragma once

#include "automation/object.h"
#include "com/com_ptr.h"

#include <windows.h>

#include <ole2.h>

#include <dispex.h>

namespace cvlog::com {

/// A host's object behind its IDispatch.
class ForeignObject : public automation::Object {
public:
    explicit ForeignObject(IDispatch* dispatch);

    automation::Value call(std::u16string_view member, std::span<automation::Value> arguments) override;
    automation::Value callByReference(std::u16string_view member,
                                      std::span<automation::Value> arguments) override;
    automation::Value get(std::u16string_view member) override;
    void put(std::u16string_view member, const automation::Value& value) override;
    std::unique_ptr<automation::Connection> connect(std::shared_ptr<automation::EventSink> sink) override;
    /// COM identity: the object's IUnknown.
    const void* identity() const noexcept override { return identity_.Get(); }

    IDispatch* dispatch() const noexcept { return dispatch_.Get(); }

private:
    DISPID idOf(std::u16string_view member) const;
    automation::Value invokeDispatch(DISPID id, WORD flags, DISPPARAMS parameters) const;

    ComPtr<IDispatch> dispatch_;
    ComPtr<IDispatchEx> extended_; // null for most objects
    ComPtr<IUnknown> identity_;
};

} // namespace cvlog::com
