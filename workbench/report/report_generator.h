#pragma once

#include <windows.h>

#include <oaidl.h>

#include "workbench/com_object.h"

namespace workbench::report {

/// {4e0d7a52-8c1b-4f3a-9d6e-51c2b7f0a938}: "Tabulite.TLReport".
inline constexpr CLSID kReportClass = {
    0x4e0d7a52, 0x8c1b, 0x4f3a, {0x9d, 0x6e, 0x51, 0xc2, 0xb7, 0xf0, 0xa9, 0x38}};

/// Set in a program in which nobody is there to look: reports are written, not opened.
inline constexpr wchar_t kUnattended[] = L"TLREPORT_UNATTENDED";

/// The report generator: CreateReport(list, name), Interrupted, OutputDirectory, DisplayReport(owner). A report is
/// made in memory; DisplayReport writes it as <name>.html into the directory, which is made if need be, and opens it.
ComPtr<IDispatch> makeReportGenerator();

} // namespace workbench::report
