#pragma once

#include "tests/support/fake_options.h"
#include "tests/support/script_object.h"

#include <map>

namespace cvlog::tests {

/// A host with a small project. Every object is scripted, so that a test can change, break or remove any member.
///
/// Entity types: PROG (one bit 1), GRP (2, composite), PROJ (4, composite). Objects: P1 "PAYROLL" of type PROG with
/// property Source = "payroll", G1 "BATCH" of type GRP with Source = "batch", PRJ the project. Methods: M1 "Compile",
/// M2 an alias of M1, M3 and M4 aliases of each other. Return code n reads "RC n". Two tools are active.
class FakeHost {
public:
    explicit FakeHost(CallCounter& calls);
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    std::shared_ptr<ScriptObject> workspace;
    std::shared_ptr<ScriptObject> repository;
    std::shared_ptr<ScriptObject> erd;
    std::shared_ptr<ScriptCollection> entities;
    std::shared_ptr<ScriptCollection> methods;
    std::shared_ptr<ScriptCollection> tools;
    FakeOptions options;

    std::map<std::u16string, std::shared_ptr<ScriptObject>> types;   // by key name
    std::map<std::u16string, std::shared_ptr<ScriptObject>> objects; // by identifier
    std::map<std::u16string, std::shared_ptr<ScriptObject>> objectsByName;
    std::map<std::int32_t, std::u16string> names; // what GetCalvettaName answers
    std::int32_t compositeMask = 6;
    std::int32_t cursor = 0; // of the main window

    std::shared_ptr<ScriptObject> addType(std::u16string key, std::u16string displayName, std::int32_t bit);
    std::shared_ptr<ScriptObject> addObject(std::u16string id, std::u16string name,
                                            std::u16string displayName, std::u16string type,
                                            std::u16string source);
    std::shared_ptr<ScriptObject> addMethod(std::u16string id, std::u16string displayName,
                                            std::u16string alias = {});

private:
    void fillWorkspace();
    void fillRepository();

    CallCounter& calls_;
};

} // namespace cvlog::tests
