#pragma once

#include "base/area.h"

// Where things lie on the component's forms, in twips.

namespace cvlog::resources {

/// The alert: a picture at the left, the text beside it, the button below.
struct AlertLayout {
    static constexpr base::Area kClient = {0, 0, 7050, 1185};
    static constexpr base::Area kPicture = {120, 105, 480, 480};
    static constexpr base::Area kText = {690, 135, 6300, 480}; // the longest text in two lines
    static constexpr base::Area kOk = {2985, 675, 930, 360};
};

/// The strip over a list that is being filled. It is as wide as the list.
struct CancelLayout {
    static constexpr base::Twips kHeight = 300;
    static constexpr base::Twips kCancelWidth = 1'200;
};

/// The floating log, as long as its user has not moved it.
struct FloatingLogLayout {
    static constexpr base::Twips kWidth = 11'400;
    static constexpr base::Twips kHeight = 4'500;
    /// A window that was stored smaller could not be found again.
    static constexpr base::Twips kLeastWidth = 2'400;
    static constexpr base::Twips kLeastHeight = 1'200;
};

/// The history, as long as its user has not moved it. The list fills it.
struct HistoryLayout {
    static constexpr base::Twips kWidth = 11'400;
    static constexpr base::Twips kHeight = 6'000;
    static constexpr base::Twips kColumnWidth = 2'880; // until the first load
};

} // namespace cvlog::resources
