#pragma once

#include <string>
#include <string_view>

namespace cvlog::ports {

/// The user's linguistic, case-blind order of texts: "1:00:05" < "10:00:05" < "2:00:05". For sorting only; keys are
/// never compared this way.
class Collator {
public:
    virtual ~Collator() = default;
    /// Appends bytes that compare (as unsigned, shorter first when one is a prefix) as the texts do.
    virtual void appendSortKey(std::u16string_view text, std::string& keys) = 0;

    std::string sortKey(std::u16string_view text) {
        std::string key;
        appendSortKey(text, key);
        return key;
    }
};

} // namespace cvlog::ports
