#include "store/sqlite_engine.h"

#include "store/sqlite_database.h"
#include "store/sqlite_file.h"

namespace cvlog::store {

namespace {

class SqliteEngine final : public Engine {
public:
    explicit SqliteEngine(ports::FileSystem& files) : files_(files) {}

    std::shared_ptr<Database> open(std::u16string_view path) override {
        return std::make_shared<SqliteDatabase>(std::u16string(path),
                                                openSqliteFile(files_.nativePath(path)));
    }

private:
    ports::FileSystem& files_;
};

} // namespace

std::unique_ptr<Engine> makeSqliteEngine(ports::FileSystem& files) {
    return std::make_unique<SqliteEngine>(files);
}

} // namespace cvlog::store
