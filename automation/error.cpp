#include "automation/error.h"

#include "base/text.h"

#include <cstdio>

namespace cvlog::automation {

AutomationError::AutomationError(std::int32_t code, std::u16string_view description,
                                 std::u16string_view source)
    : code_(code), source_(source), description_(description) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%08X", static_cast<unsigned>(code));
    what_ = "automation error 0x" + std::string(digits);
    if (!description.empty()) what_ += ": " + base::toUtf8(description);
}

} // namespace cvlog::automation
