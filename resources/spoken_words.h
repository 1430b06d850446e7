#pragma once

#include "resources/string_table.h"

#include <string_view>

namespace cvlog::resources {

// What the log shows by pictures and places alone, in words: for users who hear it.

enum class Spoken {
    Good,
    Suspect,
    Failure,
    Bad,
    Cancel,
    Session,
    ErrorMessage,     // a row below the entry whose errors file it comes from
    SortedAscending,  // "%1" is the column's caption
    SortedDescending, // the same
    DoubleClick,      // what a row does when it is activated
};

std::u16string_view spoken(Language language, Spoken word);

/// What a result's icon says; empty for any other icon. Keys ignore case.
std::u16string_view spokenIcon(Language language, std::u16string_view key);

} // namespace cvlog::resources
