#pragma once

#include <windows.h>

#include <ocidl.h>

#include <functional>

#include "workbench/com_object.h"
#include "workbench/script_object.h"

namespace workbench {

/// Listens to one source of events from construction to destruction.
class EventConnection {
public:
    /// Called for each event with its dispatch id and arguments; a by-reference argument may be read only.
    using Handler = std::function<void(DISPID event, const Arguments& arguments)>;

    /// Throws Failure when `source` does not offer `events`.
    EventConnection(IUnknown* source, REFIID events, Handler handler);
    ~EventConnection();
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;

private:
    ComPtr<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};

} // namespace workbench
