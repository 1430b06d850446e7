#pragma once

#include "tests/windows/event_source_double.h"

#include <string>

namespace cvlog::tests {

/// A host's options document in COM's terms, with the event that tells of a save. One listener at a time.
class OptionsDouble final : public EventSourceDouble {
public:
    /// One reference.
    static OptionsDouble* make() { return new OptionsDouble; }

    /// Tells the listener that the options were saved.
    void fireSaved();

    std::wstring docked = L"false";
    std::wstring errors = L"true"; // whether such lines are shown
    int saves = 0;

private:
    OptionsDouble();
    IDispatch* nodeFor(const std::wstring& query);
};

} // namespace cvlog::tests
