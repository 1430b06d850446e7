#pragma once

#include "automation/error.h"
#include "com/variants.h"

#include <new>
#include <oleauto.h>

namespace cvlog::com {

/// Runs the body of a COM method; no exception crosses it. The error's source and description go into the thread's
/// error information, which never tells of an earlier failure.
template <class Body>
HRESULT firewall(Body&& body) noexcept {
    try {
        return body();
    } catch (const automation::AutomationError& error) {
        setErrorInfo(error);
        return failureOf(error);
    } catch (const std::bad_alloc&) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    } catch (...) {
        SetErrorInfo(0, nullptr);
        return E_FAIL;
    }
}

} // namespace cvlog::com
