#include "workbench/project_folder.h"

#include <windows.h>

#include "workbench/failure.h"
#include "workbench/table.h"
#include "workbench/text.h"

namespace workbench {

namespace {

std::wstring existingDirectory(const std::wstring& path) {
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(needed, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), needed, full.data(), nullptr));
    while (full.ends_with(L'\\') || full.ends_with(L'/')) {
        full.pop_back();
    }
    const DWORD attributes = GetFileAttributesW((full + L"\\").c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        throw Failure(path + L": there is no such project folder");
    }
    return full;
}

void readHost(ProjectFolder& project) {
    project.projectName = project.directory.substr(project.directory.find_last_of(L"\\/") + 1);
    project.productName = L"Workbench";
    project.workbenchName = L"Workbench";

    const Table table(project.file(L"host.tsv"));
    table.requireColumns({L"Key", L"Value"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        const std::wstring& key = row.required(L"Key");
        if (key == L"ProjectName") {
            project.projectName = row.text(L"Value");
        } else if (key == L"ProductName") {
            project.productName = row.text(L"Value");
        } else if (key == L"WorkbenchName") {
            project.workbenchName = row.text(L"Value");
        } else if (key == L"CompositeMask") {
            project.compositeMask = row.number(L"Value");
        } else {
            row.fail(L"unknown key " + key);
        }
    }
}

void readEntityTypes(ProjectFolder& project) {
    const Table table(project.file(L"entities.tsv"));
    table.requireColumns({L"ID", L"KeyName", L"DisplayName", L"Flags"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        project.entityTypes.push_back({row.number(L"ID"), row.number(L"Flags"), row.required(L"KeyName"),
                                       row.text(L"DisplayName"), row.text(L"IconFile"),
                                       row.text(L"KeyProperty")});
    }
}

void readObjects(ProjectFolder& project) {
    const Table table(project.file(L"objects.tsv"));
    table.requireColumns({L"ID", L"EntityKey", L"Name"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        const EntityType* type = project.findEntityType(row.required(L"EntityKey"));
        if (!type) {
            row.fail(L"entities.tsv has no " + row.text(L"EntityKey"));
        }
        RepositoryEntry object{row.required(L"ID"),
                               row.text(L"Name"),
                               row.text(L"DisplayName"),
                               static_cast<size_t>(type - project.entityTypes.data()),
                               {}};
        for (const std::wstring& column : table.columns()) {
            object.properties[column] = row.text(column);
        }
        project.objects.push_back(std::move(object));
    }
}

void readMethods(ProjectFolder& project) {
    const Table table(project.file(L"methods.tsv"));
    table.requireColumns({L"ID", L"DisplayName"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        project.methods.push_back({row.required(L"ID"), row.text(L"DisplayName"), row.text(L"AliasID")});
    }
}

void readCodes(ProjectFolder& project) {
    const Table table(project.file(L"codes.tsv"));
    table.requireColumns({L"Code", L"Text"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        project.codes[row.required(L"Code")] = row.text(L"Text");
    }
}

void readSession(ProjectFolder& project) {
    const Table table(project.file(L"session.tsv"));
    table.requireColumns({L"Command", L"MethodID"});
    for (size_t i = 0; i < table.rowCount(); ++i) {
        const auto row = table.row(i);
        const std::wstring& command = row.required(L"Command");
        if (command == L"SeriesStart") {
            project.session.emplace_back(SeriesStart{row.text(L"MethodID")});
        } else if (command == L"Add") {
            project.session.emplace_back(AddReport{row.text(L"MethodID"), row.number(L"ReturnCode"),
                                                   row.text(L"ObjectID"), row.text(L"Message"),
                                                   row.text(L"ErrorsFileName")});
        } else if (command == L"SeriesFinish") {
            // A finish has one argument, its code, and like every command it starts in the second column.
            project.session.emplace_back(SeriesFinish{row.number(L"MethodID")});
        } else {
            row.fail(L"unknown command " + command);
        }
    }
}

} // namespace

const EntityType* ProjectFolder::findEntityType(std::wstring_view name) const {
    for (const EntityType& type : entityTypes) {
        if (sameName(type.keyName, name) || sameName(type.displayName, name)) {
            return &type;
        }
    }
    return nullptr;
}

const RepositoryEntry* ProjectFolder::findObject(std::wstring_view id) const {
    for (const RepositoryEntry& object : objects) {
        if (object.id == id) {
            return &object;
        }
    }
    return nullptr;
}

const RepositoryEntry* ProjectFolder::findObject(const EntityType& type, std::wstring_view name) const {
    for (const RepositoryEntry& object : objects) {
        if (&entityTypes[object.entityType] == &type && sameName(object.name, name)) {
            return &object;
        }
    }
    return nullptr;
}

const RepositoryEntry* ProjectFolder::projectObject() const {
    for (const RepositoryEntry& object : objects) {
        if (sameName(entityTypes[object.entityType].keyName, L"PROJECT")) {
            return &object;
        }
    }
    return nullptr;
}

ProjectFolder loadProjectFolder(const std::wstring& path) {
    ProjectFolder project;
    project.directory = existingDirectory(path);
    readHost(project);
    readEntityTypes(project);
    readObjects(project);
    readMethods(project);
    readCodes(project);
    readSession(project);
    return project;
}

} // namespace workbench
