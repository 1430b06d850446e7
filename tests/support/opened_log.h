#pragma once

#include "tests/support/log_world.h"

#include <string>
#include <vector>

namespace cvlog::tests {

/// An open log with so many controls whose rows stay over the entries that follow.
std::unique_ptr<LogWorld> keepingWorld(std::size_t controls);

inline core::LogViews::ListRef firstOf(LogWorld& world) { return world.globals.LogViews.first(); }

/// An entry whose message is its name.
void addEntry(LogWorld& world, const std::string& name);
void addEntries(LogWorld& world, std::initializer_list<const char*> names);

/// Child rows "name.1", "name.2" ... below the entry at this place, in every list, as an expansion leaves them.
void openEntry(LogWorld& world, int entry, int children);

/// The names of the rows, those of child rows behind a '+'.
std::vector<std::string> namesOf(const widgets::ListView& list);
using Names = std::vector<std::string>;

/// The place of the row with this name, as namesOf gives it; 0 when it is not there.
int placeOf(const widgets::ListView& list, const std::string& name);

/// Selects rows by their names.
void selectRows(widgets::ListView& list, std::initializer_list<const char*> names);

/// What holds whenever no command runs: all lists have the same rows in the same order, every child row is below its
/// entry, and nothing is busy.
void expectSound(LogWorld& world);

} // namespace cvlog::tests
