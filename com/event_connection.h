#pragma once

#include "automation/object.h"

#include <windows.h>

#include <ole2.h>

#include <memory>

namespace cvlog::com {

/// Connects a sink to the default events of a foreign object. Throws AutomationError when the object has none or
/// refuses.
std::unique_ptr<automation::Connection> connectEvents(IDispatch* source,
                                                      std::shared_ptr<automation::EventSink> sink);

/// A host's sink as one of ours, for the connections that hosts make to our objects.
std::shared_ptr<automation::EventSink> makeHostSink(IDispatch* sink);

/// What makeHostSink made a sink of, without a new reference; null for any other sink.
IUnknown* hostSinkOf(const automation::EventSink& sink) noexcept;

} // namespace cvlog::com
