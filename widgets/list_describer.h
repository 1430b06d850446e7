#pragma once

#include <string>

namespace cvlog::widgets {

class ListView;

/// Says in words what a list shows, for users who hear it: its owner knows what its rows and icons mean. Rows count
/// from 1; a row out of range is a programming error.
class ListDescriber {
public:
    virtual ~ListDescriber() = default;
    virtual std::u16string listName() const = 0;
    /// What is to be said of the list as a whole; empty for nothing.
    virtual std::u16string listDescription(const ListView& list) const = 0;
    virtual std::u16string rowName(const ListView& list, int row) const = 0;
    /// What the row shows beside its name.
    virtual std::u16string rowDescription(const ListView& list, int row) const = 0;
    /// What the action is called that a row is activated by.
    virtual std::u16string rowAction() const = 0;
};

} // namespace cvlog::widgets
