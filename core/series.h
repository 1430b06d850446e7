#pragma once

#include <algorithm>
#include <cstdint>

namespace cvlog::core {

/// The combined return code of a run of entries. A failure, timeout or cancellation outranks errors, errors outrank
/// warnings, and only the last code can mark the series as canceled by the user.
struct Series {
    bool InSeries = false;
    std::int32_t SeriesReturnCode = 0;
    bool SeriesCanceled = false;

    void start() noexcept { *this = {true, 0, false}; }

    void merge(std::int32_t code) noexcept {
        SeriesCanceled = code == -3;
        if (code == -4 || code == -2)
            SeriesReturnCode = code;
        else if (code == -1)
            SeriesReturnCode = std::min(SeriesReturnCode, code);
        else if ((code == 1 || code == 2) && SeriesReturnCode >= 0)
            SeriesReturnCode = std::max(SeriesReturnCode, code);
    }

    /// Ends the series and gives the code to report.
    std::int32_t finish() noexcept {
        const std::int32_t code = SeriesCanceled ? -3 : SeriesReturnCode;
        *this = {};
        return code;
    }
};

} // namespace cvlog::core
