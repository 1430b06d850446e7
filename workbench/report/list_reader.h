#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>

#include "workbench/report/report_page.h"

namespace workbench::report {

/// Told how many rows of all have been read; false breaks the reading off.
using Progress = std::function<bool(long done, long all)>;

/// Fills the table's columns and lines from a list, through its automation face alone. False when it was broken off.
/// Throws Failure when the list fails.
bool readList(IDispatch* list, Table& table, const Progress& progress);

} // namespace workbench::report
