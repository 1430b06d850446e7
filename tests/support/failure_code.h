#pragma once

#include "automation/error.h"

#include <cstdint>
#include <utility>

namespace cvlog::tests {

/// The code of the AutomationError that a statement ends with; 0 when it succeeds.
template <class Statement>
std::int32_t failureCode(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
    } catch (const automation::AutomationError& error) {
        return error.code();
    }
    return 0;
}

} // namespace cvlog::tests
