#pragma once

#include "ports/file_system.h"
#include "ports/object_factory.h"
#include "store/engine.h"
#include "store/file_kind.h"

namespace cvlog::store {

/// The engines of the file kinds; one that is not there fails the opening of its files.
struct Engines {
    std::unique_ptr<Engine> sqlite;
    std::unique_ptr<Engine> jet;
};

/// An engine that leaves each file to the engine its first bytes ask for. `files` must live as long as the
/// engine.
std::unique_ptr<Engine> makeSelectingEngine(ports::FileSystem& files, Engines engines);

/// The log's engine: ours for the files of the embedded database, an installed one for those of the desktop database.
/// Both ports must live as long as the engine.
std::unique_ptr<Engine> makeLogEngine(ports::FileSystem& files, ports::ObjectFactory& objects);

} // namespace cvlog::store
