#pragma once

#include "core/globals.h"

#include <cstdint>
#include <string>

namespace cvlog::core {

class CVLog;

/// One report of a host's tool.
struct Report {
    std::u16string MethodID;
    std::int32_t ReturnCode = 0;
    std::u16string ObjectID;
    std::u16string Message;
    std::u16string ErrorsFileName;
};

/// Stores a report as one record, raises LogChanged on `log`, shows it as one row in every list, and reports its
/// outcome when no series is running. A host call that fails before the record is written ends it with the host's
/// error and without a trace; one that fails later leaves the record, but no row: a row enters the lists complete or
/// not at all.
void Add(Globals& globals, CVLog& log, const Report& report);

} // namespace cvlog::core
