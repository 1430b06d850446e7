#pragma once

#include "automation/error.h"
#include "automation/object.h"

namespace cvlog::hostapi {

/// The name of a member, as a literal: its length is known when the program is built, not counted at each call.
class MemberName {
public:
    consteval MemberName(const char16_t* literal) : name_(literal) {}
    operator std::u16string_view() const noexcept { return name_; }

private:
    std::u16string_view name_;
};

/// A host object known by what it offers. Calls fail with AutomationError, "Object required" when there is none.
class LateBound {
public:
    LateBound() = default;
    explicit LateBound(automation::ObjectRef object) : object_(std::move(object)) {}

    explicit operator bool() const noexcept { return object_ != nullptr; }
    const automation::ObjectRef& object() const noexcept { return object_; }

protected:
    /// A reference of the call's own: what the host runs may make the component let go of the object.
    automation::ObjectRef required() const {
        if (!object_)
            throw automation::AutomationError(automation::code::kObjectRequired, u"Object required");
        return object_;
    }
    std::u16string text(MemberName member) const { return automation::toText(required()->get(member)); }
    std::int32_t number(MemberName member) const { return automation::toInt32(required()->get(member)); }
    automation::ObjectRef objectOf(MemberName member) const {
        return automation::toObject(required()->get(member));
    }

    template <class... Arguments>
    automation::Value invoke(MemberName member, Arguments&&... arguments) const {
        return required()->invoke(member, std::forward<Arguments>(arguments)...);
    }

private:
    automation::ObjectRef object_;
};

/// An object with `Count` and `Item(key or 1-based index)`.
class Collection : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t count() const { return number(u"Count"); }
    /// Nothing when the collection answers with an empty result.
    automation::ObjectRef item(automation::Value key) const {
        return automation::toObject(invoke(u"Item", std::move(key)));
    }
};

} // namespace cvlog::hostapi
