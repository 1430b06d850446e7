#include "tests/store/failing_disk.h"

#include <sqlite3.h>

#include <cstdlib>

namespace cvlog::store::testing {

namespace {

struct Disk {
    sqlite3_vfs* system = nullptr;
    sqlite3_vfs layer = {};
    FailingDisk::Step step;
    int changes = 0;
    int syncs = 0;
};

Disk disk;

// The system's own file lies behind ours in the memory that the library gives.
struct LayerFile {
    sqlite3_file base;
    sqlite3_file* system() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* systemFile(sqlite3_file* file) { return reinterpret_cast<LayerFile*>(file)->system(); }

template <auto Method, class... Arguments>
int forward(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* system = systemFile(file);
    return (system->pMethods->*Method)(system, arguments...);
}

int failsAt(DiskAction action) {
    ++disk.changes;
    disk.syncs += action == DiskAction::Sync ? 1 : 0;
    if (!disk.step || !disk.step(action, disk.changes)) return SQLITE_OK;
    return action == DiskAction::Write ? SQLITE_FULL : SQLITE_IOERR;
}

int closeFile(sqlite3_file* file) {
    return systemFile(file)->pMethods ? forward<&sqlite3_io_methods::xClose>(file) : SQLITE_OK;
}

int writeFile(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place) {
    const int result = failsAt(DiskAction::Write);
    return result != SQLITE_OK ? result : forward<&sqlite3_io_methods::xWrite>(file, bytes, count, place);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    const int result = failsAt(DiskAction::Truncate);
    return result != SQLITE_OK ? result : forward<&sqlite3_io_methods::xTruncate>(file, size);
}

int syncFile(sqlite3_file* file, int flags) {
    const int result = failsAt(DiskAction::Sync);
    return result != SQLITE_OK ? result : forward<&sqlite3_io_methods::xSync>(file, flags);
}

int keepUnmapped(sqlite3_file*, sqlite3_int64, int, void** page) {
    *page = nullptr; // reading and writing then always come by the functions above
    return SQLITE_OK;
}

const sqlite3_io_methods kMethods = {
    3,
    closeFile,
    forward<&sqlite3_io_methods::xRead, void*, int, sqlite3_int64>,
    writeFile,
    truncateFile,
    syncFile,
    forward<&sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    forward<&sqlite3_io_methods::xLock, int>,
    forward<&sqlite3_io_methods::xUnlock, int>,
    forward<&sqlite3_io_methods::xCheckReservedLock, int*>,
    forward<&sqlite3_io_methods::xFileControl, int, void*>,
    forward<&sqlite3_io_methods::xSectorSize>,
    forward<&sqlite3_io_methods::xDeviceCharacteristics>,
    forward<&sqlite3_io_methods::xShmMap, int, int, int, void volatile**>,
    forward<&sqlite3_io_methods::xShmLock, int, int, int>,
    [](sqlite3_file* file) { systemFile(file)->pMethods->xShmBarrier(systemFile(file)); },
    forward<&sqlite3_io_methods::xShmUnmap, int>,
    keepUnmapped,
    [](sqlite3_file*, sqlite3_int64, void*) { return SQLITE_OK; },
};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int result = disk.system->xOpen(disk.system, name, systemFile(file), flags, outFlags);
    file->pMethods = systemFile(file)->pMethods ? &kMethods : nullptr;
    return result;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    const int result = failsAt(DiskAction::Delete);
    return result != SQLITE_OK ? result : disk.system->xDelete(disk.system, name, syncFolder);
}

} // namespace

FailingDisk::FailingDisk() {
    disk.system = sqlite3_vfs_find(nullptr);
    disk.layer = *disk.system;
    disk.layer.zName = "failing disk";
    disk.layer.szOsFile = disk.system->szOsFile + static_cast<int>(sizeof(LayerFile));
    disk.layer.pNext = nullptr;
    disk.layer.xOpen = openFile;
    disk.layer.xDelete = deleteFile;
    watch(nullptr);
    sqlite3_vfs_register(&disk.layer, 1);
}

FailingDisk::~FailingDisk() {
    sqlite3_vfs_unregister(&disk.layer);
    sqlite3_vfs_register(disk.system, 1);
    disk.step = nullptr;
}

void FailingDisk::watch(Step step) {
    disk.step = std::move(step);
    disk.changes = 0;
    disk.syncs = 0;
}

int FailingDisk::changes() const noexcept { return disk.changes; }

int FailingDisk::syncs() const noexcept { return disk.syncs; }

} // namespace cvlog::store::testing
