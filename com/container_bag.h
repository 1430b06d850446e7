#pragma once

#include "automation/error.h"
#include "com/com_ptr.h"
#include "view/property_bag.h"

#include <windows.h>

#include <ocidl.h>

#include <string>

namespace cvlog::com {

/// A container's property bag, with the log of errors that may come with it.
class ContainerBag : public view::PropertyBag {
public:
    explicit ContainerBag(IPropertyBag* bag, IErrorLog* log = nullptr) : bag_(bag), log_(log) {}

    std::optional<automation::Value> read(std::u16string_view name) override;
    void write(std::u16string_view name, const automation::Value& value) override;

    /// Runs a reading; its error also goes into the container's log, with the name of the value that was read last.
    template <class Reading>
    auto logging(Reading&& reading) {
        try {
            return reading();
        } catch (const automation::AutomationError& error) {
            addToLog(error);
            throw;
        }
    }

private:
    void addToLog(const automation::AutomationError& error) const noexcept;

    ComPtr<IPropertyBag> bag_;
    ComPtr<IErrorLog> log_;
    std::u16string lastName_;
};

} // namespace cvlog::com
