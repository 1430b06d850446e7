#include "tests/support/fake_host.h"

#include "base/text.h"

namespace cvlog::tests {

using automation::Value;

FakeHost::FakeHost(CallCounter& calls)
    : workspace(std::make_shared<ScriptObject>("Workspace", calls)),
      repository(std::make_shared<ScriptObject>("Repository", calls)),
      erd(std::make_shared<ScriptObject>("ERD", calls)),
      entities(std::make_shared<ScriptCollection>("Entities", calls)),
      methods(std::make_shared<ScriptCollection>("Methods", calls)),
      tools(std::make_shared<ScriptCollection>("Tools", calls)), options(calls),
      names({{4, u"C:\\Proj"}, {6, u"Demo"}, {16, u"C:\\Prod"}}), calls_(calls) {
    addType(u"PROG", u"Program", 1);
    addType(u"GRP", u"Group", 2);
    addType(u"PROJ", u"Project type", 4);
    addObject(u"P1", u"PAYROLL", u"Payroll program", u"PROG", u"payroll");
    addObject(u"G1", u"BATCH", u"Batch group", u"GRP", u"batch");
    addObject(u"PRJ", u"DEMO", u"Demo project", u"PROJ", u"demo");
    addMethod(u"M1", u"Compile");
    addMethod(u"M2", u"Recompile", u"M1");
    addMethod(u"M3", u"Ping", u"M4");
    addMethod(u"M4", u"Pong", u"M3");
    for (int i = 0; i < 2; ++i) tools->add(u"", std::make_shared<ScriptObject>("Tool", calls_));
    fillRepository();
    fillWorkspace();
}

void FakeHost::fillRepository() {
    erd->set(u"Entities", entities);
    erd->on(u"EntityFlags", [this](std::span<Value> arguments) {
        auto flags = std::make_shared<ScriptObject>("Flags", calls_);
        flags->set(u"Value", automation::toText(arguments[0]) == u"COMPOSITE" ? compositeMask : 0);
        return Value(flags);
    });
    repository->set(u"ERD", erd);
    repository->raiseEvents();
    repository->on(u"object", [this](std::span<Value> arguments) -> Value {
        const auto found = objects.find(automation::toText(arguments[0]));
        return found == objects.end() ? Value() : Value(found->second);
    });
    repository->on(u"FindObject", [this](std::span<Value> arguments) -> Value {
        const auto found = objectsByName.find(automation::toText(arguments[1]));
        return found == objectsByName.end() ? Value() : Value(found->second);
    });
}

void FakeHost::fillWorkspace() {
    workspace->set(u"UserOptions", options.document)
        .set(u"Repository", repository)
        .set(u"ProjectObject", objects[u"PRJ"])
        .set(u"Methods", methods)
        .set(u"ActiveToolList", tools);
    workspace->on(u"GetCalvettaName", [this](std::span<Value> arguments) {
        return Value(names[automation::toInt32(arguments[0])]);
    });
    workspace->on(u"TranslateReturnCode", [](std::span<Value> arguments) {
        return Value(u"RC " + automation::toText(arguments[0]));
    });
    workspace->on(u"GetProductInfo", [](std::span<Value> arguments) -> Value {
        return automation::toText(arguments[0]) == u"Product.Name" ? u"Calvetta" : u"Calvetta Workbench";
    });
    workspace->on(u"GetHelpFile", [](std::span<Value> arguments) {
        return Value(u"C:\\Prod\\" + automation::toText(arguments[0]));
    });
    workspace->on(u"SetMainWindowCursor", [this](std::span<Value> arguments) {
        return Value(std::exchange(cursor, automation::toInt32(arguments[0])));
    });
}

std::shared_ptr<ScriptObject> FakeHost::addType(std::u16string key, std::u16string displayName,
                                                std::int32_t bit) {
    auto type = std::make_shared<ScriptObject>("Type:" + base::toUtf8(key), calls_);
    type->set(u"ID", bit)
        .set(u"Flags", bit)
        .set(u"DisplayName", displayName)
        .set(u"KeyName", key)
        .set(u"IconFile", key + u".ico")
        .set(u"KeyProperty", u"Source");
    types[key] = type;
    entities->add(key, type);
    return type;
}

std::shared_ptr<ScriptObject> FakeHost::addObject(std::u16string id, std::u16string name,
                                                  std::u16string displayName, std::u16string type,
                                                  std::u16string source) {
    auto object = std::make_shared<ScriptObject>("Object:" + base::toUtf8(id), calls_);
    object->set(u"ID", id)
        .set(u"Name", name)
        .set(u"DisplayName", displayName)
        .set(u"EntityType", types.at(type));
    object->on(u"Property", [name, source](std::span<Value> arguments) -> Value {
        const std::u16string asked = automation::toText(arguments[0]);
        if (asked == u"Name") return name;
        return asked == u"Source" ? Value(source) : Value(u"");
    });
    objects[id] = object;
    objectsByName[name] = object;
    return object;
}

std::shared_ptr<ScriptObject> FakeHost::addMethod(std::u16string id, std::u16string displayName,
                                                  std::u16string alias) {
    auto method = std::make_shared<ScriptObject>("Method:" + base::toUtf8(id), calls_);
    method->set(u"DisplayName", displayName).set(u"AliasID", alias);
    methods->add(id, method);
    return method;
}

} // namespace cvlog::tests
