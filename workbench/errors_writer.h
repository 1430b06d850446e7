#pragma once

#include <string>

#include "workbench/project_folder.h"

namespace workbench {

/// Writes an errors file of so many lines about the project's objects: of each four lines one error, two warnings and
/// one note. Throws Failure when it cannot be written; what there is of it goes then.
void writeErrorsFile(const std::wstring& path, const ProjectFolder& project, long lines);

} // namespace workbench
