#pragma once

#include "ports/object_factory.h"
#include "store/engine.h"

#include <memory>

namespace cvlog::store {

/// Drives the DAO that is installed, by late binding. It is made with the first opening and kept; of several versions
/// the oldest one that knows a file's format opens it. The database's automation object is DAO's own, which lives on
/// as long as its host holds it. `objects` must live as long as the engine.
std::unique_ptr<Engine> makeDaoEngine(ports::ObjectFactory& objects);

} // namespace cvlog::store
