#pragma once

#include "core/globals.h"

#include <cstdint>
#include <string>

namespace cvlog::store {

/// One entry as the database keeps it.
struct Record {
    std::u16string MethodName;
    std::int32_t ReturnCode = 0;
    hostapi::RepositoryObject Object; // none when the entry is about no object
    std::u16string Message;
    std::u16string ErrorsFileName;
};

/// The record's one-line description without its date, from "method applied to object (type) - result. message" down
/// to nothing, with the joins exactly as they are.
std::u16string ComposeMessage(const core::Globals& globals, const Record& record);

/// Appends the record, column by column, then raises LogChanged on `log`. A failure while the message is composed
/// reaches the caller; every failure of the database is ignored, also having none, and LogChanged is raised all the
/// same.
void WriteRecord(core::Globals& globals, core::CVLog& log, const Record& record);

} // namespace cvlog::store
