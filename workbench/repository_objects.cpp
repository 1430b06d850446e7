#include "workbench/repository_objects.h"

#include "workbench/failure.h"
#include "workbench/text.h"

namespace workbench {

namespace {

// {5F2B6B0E-6C3B-4B57-9E0D-3C1B8E9D7A41}
constexpr IID kRepositoryEvents{0x5f2b6b0e, 0x6c3b, 0x4b57, {0x9e, 0x0d, 0x3c, 0x1b, 0x8e, 0x9d, 0x7a, 0x41}};

constexpr DISPID kObjectModified = 1;

ComPtr<IDispatch> makeEntityType(const EntityType& type) {
    auto object = makeObject<ScriptObject>();
    object->constant(L"ID", type.id);
    object->constant(L"Flags", type.flags);
    object->constant(L"DisplayName", type.displayName);
    object->constant(L"KeyName", type.keyName);
    object->constant(L"IconFile", type.iconFile);
    object->constant(L"KeyProperty", type.keyProperty);
    return object;
}

ComPtr<IDispatch> makeEntities(const SharedProject& project) {
    return makeCollection(
        project->entityTypes.size(),
        [=](size_t index) { return makeEntityType(project->entityTypes[index - 1]); },
        [=](const std::wstring& name) -> size_t {
            const EntityType* type = project->findEntityType(name);
            return type ? type - project->entityTypes.data() + 1 : 0;
        });
}

ComPtr<IDispatch> makeEntityModel(const SharedProject& project) {
    auto model = makeObject<ScriptObject>();
    model->constant(L"Entities", makeEntities(project));
    model->member(L"EntityFlags", [=](const Arguments& arguments) {
        const std::wstring name = arguments.text(0);
        if (!sameName(name, L"COMPOSITE")) {
            throw Failure(L"There are no entity flags named " + name);
        }
        auto flags = makeObject<ScriptObject>();
        flags->constant(L"Value", project->compositeMask);
        return Variant(flags);
    });
    return model;
}

Variant findByName(const SharedProject& project, const Arguments& arguments) {
    const EntityType* type = project->findEntityType(arguments.text(0));
    return type ? makeRepositoryObject(project, project->findObject(*type, arguments.text(1))) : Variant();
}

} // namespace

ComPtr<IDispatch> makeRepository(const SharedProject& project) {
    auto repository = makeObject<ScriptObject>();
    repository->constant(L"ERD", makeEntityModel(project));
    repository->member(L"object", [=](const Arguments& arguments) -> Variant {
        const RepositoryEntry* entry = project->findObject(arguments.text(0));
        return entry ? Variant(makeRepositoryObject(project, entry)) : Variant();
    });
    repository->member(L"FindObject",
                       [=](const Arguments& arguments) { return findByName(project, arguments); });
    repository->offerEvents(kRepositoryEvents);
    // A project folder does not change by itself: the workbench says so. A plain pointer, as the object keeps this.
    repository->member(L"Changed", [self = repository.Get()](const Arguments& arguments) {
        self->raise(kObjectModified, {arguments.text(0)});
        return Variant();
    });
    return repository;
}

ComPtr<IDispatch> makeRepositoryObject(const SharedProject& project, const RepositoryEntry* entry) {
    if (!entry) {
        return nullptr;
    }
    auto object = makeObject<ScriptObject>();
    object->constant(L"ID", entry->id);
    object->constant(L"Name", entry->name);
    object->constant(L"DisplayName", entry->displayName);
    object->member(L"EntityType", [=](const Arguments&) -> Variant {
        return makeEntityType(project->entityTypes[entry->entityType]);
    });
    object->member(L"Property", [=](const Arguments& arguments) -> Variant {
        const std::wstring name = arguments.text(0);
        for (const auto& [column, value] : entry->properties) {
            if (sameName(column, name)) {
                return value;
            }
        }
        throw Failure(entry->id + L" has no property " + name);
    });
    return object;
}

ComPtr<IDispatch> makeMethods(const SharedProject& project) {
    return makeCollection(
        project->methods.size(),
        [=](size_t index) -> ComPtr<IDispatch> {
            auto method = makeObject<ScriptObject>();
            method->constant(L"DisplayName", project->methods[index - 1].displayName);
            method->constant(L"AliasID", project->methods[index - 1].aliasId);
            return method;
        },
        [=](const std::wstring& id) -> size_t {
            for (size_t i = 0; i < project->methods.size(); ++i) {
                if (sameName(project->methods[i].id, id)) {
                    return i + 1;
                }
            }
            return 0;
        });
}

} // namespace workbench
