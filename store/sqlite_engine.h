#pragma once

#include "ports/file_system.h"
#include "store/engine.h"

namespace cvlog::store {

/// The embedded engine. `files` says how the host's paths read on this system and must live as long as the
/// engine.
std::unique_ptr<Engine> makeSqliteEngine(ports::FileSystem& files);

} // namespace cvlog::store
