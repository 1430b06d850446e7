#pragma once

#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace workbench {

/// A kind of object: one bit (`id`) of the masks in which kinds are combined.
struct EntityType {
    long id = 0;
    long flags = 0;
    std::wstring keyName;
    std::wstring displayName;
    std::wstring iconFile;
    std::wstring keyProperty;
};

struct RepositoryEntry {
    std::wstring id;
    std::wstring name;
    std::wstring displayName;
    size_t entityType = 0;                                        // index into ProjectFolder::entityTypes
    std::map<std::wstring, std::wstring, std::less<>> properties; // by column name
};

struct Method {
    std::wstring id;
    std::wstring displayName;
    std::wstring aliasId;
};

// The commands of a recorded session, in the order of its lines.
struct SeriesStart {
    std::wstring methodId;
};
struct AddReport {
    std::wstring methodId;
    long returnCode = 0;
    std::wstring objectId;
    std::wstring message;
    std::wstring errorsFileName;
};
struct SeriesFinish {
    long returnCode = 0;
};
using Command = std::variant<SeriesStart, AddReport, SeriesFinish>;

/// Everything a project folder says (docs/project-format.md describes the files).
struct ProjectFolder {
    std::wstring directory; // full path, no backslash at the end
    std::wstring projectName;
    std::wstring productName;
    std::wstring workbenchName;
    long compositeMask = 0;
    std::vector<EntityType> entityTypes;
    std::vector<RepositoryEntry> objects;
    std::vector<Method> methods;
    std::map<std::wstring, std::wstring, std::less<>> codes; // code -> wording
    std::vector<Command> session;

    std::wstring file(const wchar_t* name) const { return directory + L"\\" + name; }

    /// Finds by key name or display name, in any case; null when there is none.
    const EntityType* findEntityType(std::wstring_view name) const;
    const RepositoryEntry* findObject(std::wstring_view id) const;
    const RepositoryEntry* findObject(const EntityType& type, std::wstring_view name) const;
    /// The object that stands for the whole project: the first of the kind PROJECT; null when there is none.
    const RepositoryEntry* projectObject() const;
};

/// Reads a folder; throws Failure with the file and line of the first problem.
ProjectFolder loadProjectFolder(const std::wstring& path);

} // namespace workbench
