#include "bench/fixed_object.h"

#include "automation/error.h"

namespace cvlog::bench {

automation::Value FixedObject::get(std::u16string_view member) {
    for (const auto& [name, value] : members_)
        if (name == member) return value;
    throw automation::AutomationError(automation::code::kUnknownName, u"Unknown name");
}

} // namespace cvlog::bench
