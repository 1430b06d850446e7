#pragma once

#include <memory>

#include "workbench/project_folder.h"
#include "workbench/script_object.h"

namespace workbench {

/// The project's repository as late-bound objects. Each object stands for an entry of the project folder,
/// which all of them keep alive; a look-up makes a fresh object.
using SharedProject = std::shared_ptr<const ProjectFolder>;

/// `ERD`, `object`, `FindObject`; source of `ObjectModified`, which `Changed(id)`, a member of the workbench's own, raises.
ComPtr<IDispatch> makeRepository(const SharedProject& project);

/// `ID`, `Name`, `DisplayName`, `EntityType`, `Property`; none for null.
ComPtr<IDispatch> makeRepositoryObject(const SharedProject& project, const RepositoryEntry* entry);

/// The collection of `DisplayName` and `AliasID` objects, by method identifier.
ComPtr<IDispatch> makeMethods(const SharedProject& project);

} // namespace workbench
