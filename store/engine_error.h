#pragma once

#include "automation/error.h"

#include <cstdint>
#include <string_view>

namespace cvlog::store {

/// The errors of a desktop database, by the decimal numbers that its clients know. They travel as
/// AutomationErrors of facility 10.
enum class EngineError : std::uint16_t {
    UpdateWithoutAddNew = 3020,
    NoCurrentRecord = 3021,
    DuplicateValue = 3022,
    FileNotFound = 3024,
    ReadOnly = 3027,
    Failed = 3035,
    NotAvailable = 3251,
    CannotOpen = 3051,
    StatementGivesRows = 3065,
    StatementGivesNoRows = 3066,
    TableNotFound = 3078,
    Syntax = 3075,
    ValueTooLong = 3163,
    ColumnNotUpdatable = 3164,
    Locked = 3260,
    ItemNotFound = 3265,
    DiskFull = 3183,
    ZeroLength = 3315,
    UnknownFormat = 3343,
    Damaged = 3049,
    Conversion = 3421,
    Closed = 3420,
    CounterExhausted = 3039,
};

inline std::int32_t errorCode(EngineError error) {
    return automation::code::of(0x800A0000u | static_cast<std::uint16_t>(error));
}

[[noreturn]] inline void fail(EngineError error, std::u16string_view description) {
    throw automation::AutomationError(errorCode(error), description, u"Log database");
}

} // namespace cvlog::store
