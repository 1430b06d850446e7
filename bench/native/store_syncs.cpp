#include "bench/native/store_syncs.h"

#include <sqlite3.h>

#include <map>

namespace cvlog::bench {

namespace {

// A copy of the system's own functions for a kind of file, with one of them replaced.
struct Methods {
    sqlite3_io_methods counting;
    const sqlite3_io_methods* system;
};

sqlite3_vfs* under = nullptr;
sqlite3_vfs layer;
std::map<const sqlite3_io_methods*, Methods> methods;
std::int64_t syncs = 0;

int syncFile(sqlite3_file* file, int flags) {
    ++syncs;
    return reinterpret_cast<const Methods*>(file->pMethods)->system->xSync(file, flags);
}

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int result = under->xOpen(under, name, file, flags, outFlags);
    if (!file->pMethods) return result;
    const auto [found, isNew] = methods.try_emplace(file->pMethods, Methods{*file->pMethods, file->pMethods});
    if (isNew) found->second.counting.xSync = syncFile;
    file->pMethods = &found->second.counting;
    return result;
}

} // namespace

CountedSyncs::CountedSyncs() : system_(sqlite3_vfs_find(nullptr)) {
    under = system_;
    layer = *system_;
    layer.zName = "counted syncs";
    layer.pNext = nullptr;
    layer.xOpen = openFile;
    syncs = 0;
    sqlite3_vfs_register(&layer, 1);
}

CountedSyncs::~CountedSyncs() {
    sqlite3_vfs_unregister(&layer);
    sqlite3_vfs_register(system_, 1);
}

std::int64_t CountedSyncs::count() const noexcept { return syncs; }

} // namespace cvlog::bench
