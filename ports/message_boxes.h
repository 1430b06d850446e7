#pragma once

#include <string_view>

namespace cvlog::ports {

enum class BoxIcon { Information, Exclamation, Critical };

/// Modal message boxes. While one is open other code of the program runs.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    /// A box with an OK button.
    virtual void inform(std::u16string_view title, std::u16string_view text, BoxIcon icon) = 0;
    /// A box with Yes and No; true for Yes.
    virtual bool ask(std::u16string_view title, std::u16string_view text, BoxIcon icon) = 0;
};

} // namespace cvlog::ports
