#pragma once

#include "platform/headless/headless_objects.h"
#include "tests/store/store_files.h"
#include "tests/support/dao_double.h"

#include <string>
#include <string_view>

namespace cvlog::store::testbed {

/// A machine on which the DAO double can be installed, in its old and its new version.
class DaoMachine {
public:
    explicit DaoMachine(tests::CallCounter& calls) : double_(calls, files_) {
        gate_.watcher = [&calls](std::string_view name) { calls.call(std::string(name)); };
    }

    void installOld() { install(u"DAO.DBEngine.36", tests::DaoDouble::Format::Jet); }
    void installNew() { install(u"DAO.DBEngine.120", tests::DaoDouble::Format::Ace); }
    /// An empty database.
    void makeFile(const TestFolder& folder, std::u16string_view name,
                  tests::DaoDouble::Format format = tests::DaoDouble::Format::Jet) {
        writeWhole(folder.native(name), double_.addDatabase(folder.path(name), format));
    }

    MachineFiles& files() { return files_; }
    platform::headless::HeadlessObjects& objects() { return objects_; }
    tests::DaoDouble& dao() { return double_; }
    int enginesMade() const { return enginesMade_; }

private:
    void install(const char16_t* className, tests::DaoDouble::Format newest) {
        objects_.classes[className] = [this, newest] {
            ++enginesMade_;
            return double_.makeEngine(newest);
        };
    }

    MachineFiles files_;
    platform::headless::CallGate gate_;
    platform::headless::HeadlessObjects objects_{gate_};
    tests::DaoDouble double_;
    int enginesMade_ = 0;
};

} // namespace cvlog::store::testbed
