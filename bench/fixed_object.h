#pragma once

#include "automation/object.h"

#include <utility>
#include <vector>

namespace cvlog::bench {

/// An object of a host that answers from memory: each member with a value, whatever the arguments.
class FixedObject : public automation::Object {
public:
    using Members = std::vector<std::pair<std::u16string_view, automation::Value>>;

    explicit FixedObject(Members members) : members_(std::move(members)) {}

    automation::Value call(std::u16string_view member, std::span<automation::Value>) override {
        return get(member);
    }
    automation::Value get(std::u16string_view member) override;
    void put(std::u16string_view, const automation::Value&) override {}

private:
    Members members_;
};

inline automation::ObjectRef fixedObject(FixedObject::Members members) {
    return std::make_shared<FixedObject>(std::move(members));
}

} // namespace cvlog::bench
