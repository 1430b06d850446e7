#include "tests/store/failing_disk.h"

#include "tests/store/store_files.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace cvlog::store::testbed {

namespace {

constexpr std::int64_t kSector = 512;

// A write, or where there are no bytes, a new size.
struct Change {
    std::size_t place;
    std::string bytes;
};

struct FileState {
    std::string flushed;
    std::vector<Change> since;
};

struct Disk {
    sqlite3_vfs* system = nullptr;
    sqlite3_vfs layer = {};
    FailingDisk::Step step;
    int changes = 0;
    int syncs = 0;
    int endsAt = 0;
    Torn torn = Torn::Nothing;
    std::map<std::string, FileState> files;
};

Disk disk;

// The system's own file lies behind ours in the memory that the library gives.
struct LayerFile {
    sqlite3_file base;
    FileState* state;
    sqlite3_file* system() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* systemFile(sqlite3_file* file) { return reinterpret_cast<LayerFile*>(file)->system(); }

template <auto Method, class... Arguments>
int forward(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* system = systemFile(file);
    return (system->pMethods->*Method)(system, arguments...);
}

FileState* stateOf(sqlite3_file* file) { return reinterpret_cast<LayerFile*>(file)->state; }

void land(std::string& contents, const Change& change) {
    if (change.bytes.empty()) return contents.resize(change.place);
    contents.resize(std::max(contents.size(), change.place + change.bytes.size()));
    contents.replace(change.place, change.bytes.size(), change.bytes);
}

// How many of the bytes lie in sectors that end before the given share of them.
int bytesInSectors(std::int64_t place, std::int64_t bytes) {
    return static_cast<int>(std::max<std::int64_t>((place + bytes) / kSector * kSector - place, 0));
}

int landing(Torn torn, int count, std::int64_t place) {
    if (torn == Torn::Nothing) return 0;
    if (torn == Torn::FirstHalf) return bytesInSectors(place, count / 2);
    return bytesInSectors(place, count - 1);
}

void noteChange(sqlite3_file* file, std::int64_t place, std::string bytes) {
    if (FileState* state = stateOf(file))
        state->since.push_back({static_cast<std::size_t>(place), std::move(bytes)});
}

int failsAt(DiskAction action) {
    ++disk.changes;
    disk.syncs += action == DiskAction::Sync ? 1 : 0;
    const bool ended = disk.endsAt > 0 && disk.changes >= disk.endsAt;
    if (!ended && (!disk.step || !disk.step(action, disk.changes))) return SQLITE_OK;
    return action == DiskAction::Write ? SQLITE_FULL : SQLITE_IOERR;
}

int closeFile(sqlite3_file* file) {
    return systemFile(file)->pMethods ? forward<&sqlite3_io_methods::xClose>(file) : SQLITE_OK;
}

int writeFile(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place) {
    const int result = failsAt(DiskAction::Write);
    const bool ending = result != SQLITE_OK && disk.changes == disk.endsAt;
    const int landed = result == SQLITE_OK ? count : ending ? landing(disk.torn, count, place) : 0;
    if (landed == 0) return result;
    noteChange(file, place, std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(landed)));
    const int written = forward<&sqlite3_io_methods::xWrite>(file, bytes, landed, place);
    return result != SQLITE_OK ? result : written;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    const int result = failsAt(DiskAction::Truncate);
    if (result == SQLITE_OK) noteChange(file, size, {});
    return result != SQLITE_OK ? result : forward<&sqlite3_io_methods::xTruncate>(file, size);
}

int syncFile(sqlite3_file* file, int flags) {
    const int result = failsAt(DiskAction::Sync);
    if (result != SQLITE_OK) return result;
    if (FileState* state = stateOf(file)) {
        for (const Change& change : state->since) land(state->flushed, change);
        state->since.clear();
    }
    return forward<&sqlite3_io_methods::xSync>(file, flags);
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
    reinterpret_cast<LayerFile*>(file)->state = nullptr;
    if (name && disk.endsAt > 0) {
        const auto [found, isNew] = disk.files.try_emplace(name);
        if (isNew) found->second.flushed = readWhole(name);
        reinterpret_cast<LayerFile*>(file)->state = &found->second;
    }
    const int result = disk.system->xOpen(disk.system, name, systemFile(file), flags, outFlags);
    file->pMethods = systemFile(file)->pMethods ? &kMethods : nullptr;
    return result;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    const int result = failsAt(DiskAction::Delete);
    if (result == SQLITE_OK && disk.endsAt > 0) disk.files[name] = {};
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
    disk.endsAt = 0;
}

void FailingDisk::endAt(int number, Torn torn) {
    watch(nullptr);
    disk.files.clear(); // what the files hold now is on the disk
    disk.endsAt = number;
    disk.torn = torn;
}

void FailingDisk::losePower(unsigned seed) {
    std::mt19937 random(seed);
    for (auto& [name, state] : disk.files) {
        if (!exists(name)) continue;
        for (Change& change : state.since) {
            const auto fate = random() % 3;
            if (fate == 0) continue;
            if (fate == 1) {
                const auto landed = static_cast<std::int64_t>(random() % (change.bytes.size() + 1));
                const int bytes = bytesInSectors(static_cast<std::int64_t>(change.place), landed);
                if (bytes == 0) continue;
                change.bytes.resize(static_cast<std::size_t>(bytes));
            }
            land(state.flushed, change);
        }
        writeWhole(name, state.flushed);
        std::error_code ignored;
        std::filesystem::remove(name + "-shm", ignored); // it is memory
    }
    disk.files.clear();
}

int FailingDisk::changes() const noexcept { return disk.changes; }

int FailingDisk::syncs() const noexcept { return disk.syncs; }

} // namespace cvlog::store::testbed
