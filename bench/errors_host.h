#pragma once

#include "automation/object.h"

namespace cvlog::bench {

/// The workspace of a host that knows the types, objects and codes of `errorsText` and answers from memory.
automation::ObjectRef makeErrorsHost();

} // namespace cvlog::bench
