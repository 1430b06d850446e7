#pragma once

#include "automation/dispatch_table.h"
#include "automation/error.h"

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <vector>

namespace cvlog::com {

/// The arguments of one Invoke for one member: the caller's variants as values, and the way back into by-reference
/// ones.
class InvokeArguments {
public:
    /// Throws ArgumentError for a variant that no value can hold.
    InvokeArguments(const DISPPARAMS& parameters, const automation::Member& member);
    InvokeArguments(const InvokeArguments&) = delete;
    InvokeArguments& operator=(const InvokeArguments&) = delete;

    const automation::CallArguments& call() const noexcept { return call_; }

    /// Writes what the member has changed to where by-reference variants point.
    void writeBackChanges();

private:
    void place(UINT index);

    const DISPPARAMS& parameters_;
    const automation::Member& member_;
    std::vector<automation::Value> values_;
    std::vector<automation::Value> given_;
    automation::CallArguments call_;
};

/// Whether counts and pointers fit together.
bool isWellFormed(const DISPPARAMS& parameters) noexcept;

/// Which of the caller's variants an error is about; none when it is about an argument that was not given.
std::optional<UINT> badArgumentOf(const DISPPARAMS& parameters, const automation::Member& member,
                                  const automation::ArgumentError& error) noexcept;

} // namespace cvlog::com
