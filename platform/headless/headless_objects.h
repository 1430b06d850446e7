#pragma once

#include "automation/error.h"
#include "platform/headless/call_gate.h"
#include "ports/object_factory.h"

#include <functional>
#include <map>
#include <string>

namespace cvlog::platform::headless {

/// Makes what a test has installed, and nothing else.
class HeadlessObjects final : public ports::ObjectFactory {
public:
    static constexpr std::int32_t kCannotCreate = automation::code::of(0x800A01AD); // run-time error 429

    explicit HeadlessObjects(const CallGate& gate) : gate_(gate) {}

    std::map<std::u16string, std::function<automation::ObjectRef()>> classes; // by name

    automation::ObjectRef create(std::u16string_view className) override {
        gate_.pass("Objects.create");
        const auto found = classes.find(std::u16string(className));
        if (found == classes.end())
            throw automation::AutomationError(kCannotCreate,
                                              u"The class is not installed: " + std::u16string(className));
        return found->second();
    }

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
