#include "store/dao_engine.h"

#include "automation/error.h"
#include "base/failure.h"
#include "store/dao_database.h"
#include "store/engine_error.h"

#include <array>
#include <optional>
#include <string>

namespace cvlog::store {

using automation::AutomationError;
using automation::ObjectRef;

namespace {

constexpr std::int32_t kImplicitCommitSync = 59;

struct DaoVersion {
    std::u16string_view className;
    ObjectRef engine; // made when first needed
};

class DaoEngine final : public Engine {
public:
    explicit DaoEngine(ports::ObjectFactory& objects) : objects_(objects) {}

    std::shared_ptr<Database> open(std::u16string_view path) override {
        if (path.empty() || path.find(u'\0') != std::u16string_view::npos)
            fail(EngineError::FileNotFound, u"The path of the database file cannot be used.");
        std::optional<AutomationError> refusal;
        for (DaoVersion& version : versions_) {
            if (!isThere(version)) continue;
            try {
                return std::make_shared<DaoDatabase>(objectOf(version.engine->invoke(u"OpenDatabase", path)));
            } catch (const AutomationError& error) {
                if (error.code() != errorCode(EngineError::UnknownFormat)) throw;
                refusal = error; // a newer version may know the format
            }
        }
        if (refusal) throw *refusal;
        fail(EngineError::UnknownFormat, u"No engine for databases of this format is installed.");
    }

private:
    bool isThere(DaoVersion& version) {
        if (!version.engine)
            version.engine = base::valueOr(ObjectRef(), [&] { return made(version.className); });
        return version.engine != nullptr;
    }

    // DAO writes what is changed outside of transactions after a while, which a killed program does not live to see.
    ObjectRef made(std::u16string_view className) {
        ObjectRef engine = objects_.create(className);
        engine->invoke(u"SetOption", kImplicitCommitSync, u"Yes");
        return engine;
    }

    ports::ObjectFactory& objects_;
    std::array<DaoVersion, 2> versions_ = {{{u"DAO.DBEngine.36", nullptr}, {u"DAO.DBEngine.120", nullptr}}};
};

} // namespace

std::unique_ptr<Engine> makeDaoEngine(ports::ObjectFactory& objects) {
    return std::make_unique<DaoEngine>(objects);
}

} // namespace cvlog::store
