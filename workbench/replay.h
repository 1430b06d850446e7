#pragma once

#include <vector>

#include "workbench/project_folder.h"
#include "workbench/variant.h"

namespace workbench {

/// Gives the log a recorded session, command by command. Throws Failure when the log refuses one.
void replay(IDispatch* log, const std::vector<Command>& session);

/// The highest record number in the log's open database, 0 for an empty one.
long highestRecord(IDispatch* log);

/// How many records have a number above that one.
long recordsAbove(IDispatch* log, long number);

} // namespace workbench
