#include "store/engine_selection.h"

#include "store/dao_engine.h"
#include "store/engine_error.h"
#include "store/sqlite_engine.h"
#include "store/sqlite_file.h"

namespace cvlog::store {

namespace {

class SelectingEngine final : public Engine {
public:
    SelectingEngine(ports::FileSystem& files, Engines engines)
        : files_(files), engines_(std::move(engines)) {}

    std::shared_ptr<Database> open(std::u16string_view path) override {
        // Not by FileSystem::firstBytes: where locks belong to a process, closing a file that an embedded
        // database of this process has open would drop that database's locks.
        switch (fileKind(readFileStart(files_.nativePath(path), kFileKindBytes))) {
        case FileKind::Sqlite:
            return openBy(engines_.sqlite.get(), path);
        case FileKind::Jet:
            return openBy(engines_.jet.get(), path);
        default:
            fail(EngineError::UnknownFormat, u"Unrecognized database format.");
        }
    }

private:
    static std::shared_ptr<Database> openBy(Engine* engine, std::u16string_view path) {
        if (!engine) fail(EngineError::UnknownFormat, u"There is no engine for databases of this format.");
        return engine->open(path);
    }

    ports::FileSystem& files_;
    Engines engines_;
};

} // namespace

std::unique_ptr<Engine> makeSelectingEngine(ports::FileSystem& files, Engines engines) {
    return std::make_unique<SelectingEngine>(files, std::move(engines));
}

std::unique_ptr<Engine> makeLogEngine(ports::FileSystem& files, ports::ObjectFactory& objects) {
    return makeSelectingEngine(files, {makeSqliteEngine(files), makeDaoEngine(objects)});
}

} // namespace cvlog::store
