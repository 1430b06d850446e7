#pragma once

#include "automation/error.h"
#include "automation/object.h"
#include "tests/support/call_counter.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cvlog::tests {

/// A late-bound object whose members are scripted one by one: a value, a function, an error, or nothing at all.
/// Every call goes through the counter as "Name.Member(arguments)".
class ScriptObject : public automation::Object {
public:
    using Handler = std::function<automation::Value(std::span<automation::Value>)>;

    ScriptObject(std::string name, CallCounter& calls) : name_(std::move(name)), calls_(calls) {}

    /// A property, readable and writable.
    ScriptObject& set(std::u16string_view member, automation::Value value);
    ScriptObject& on(std::u16string_view member, Handler handler);
    /// The member is unknown from now on.
    ScriptObject& remove(std::u16string_view member);
    ScriptObject& raise(std::u16string_view member, automation::AutomationError error);
    /// Takes a raised error back.
    ScriptObject& heal(std::u16string_view member);
    /// Runs other code each time before the member answers.
    ScriptObject& before(std::u16string_view member, std::function<void()> action);

    automation::Value call(std::u16string_view member, std::span<automation::Value> arguments) override;
    automation::Value get(std::u16string_view member) override;
    void put(std::u16string_view member, const automation::Value& value) override;

    /// Connects sinks, when the object was told to raise events.
    std::unique_ptr<automation::Connection> connect(std::shared_ptr<automation::EventSink> sink) override;
    void raiseEvents() { raisesEvents_ = true; }
    void fire(std::int32_t id, std::span<automation::Value> arguments = {});
    std::size_t sinkCount() const noexcept { return sinks_.size(); }

private:
    struct Member {
        automation::Value value;
        Handler handler;
        std::optional<automation::AutomationError> error;
        std::function<void()> before;
    };
    class SinkConnection;

    Member& member(std::u16string_view name);
    Member& reach(std::u16string_view name, const std::string& entry);

    std::string name_;
    CallCounter& calls_;
    std::map<std::u16string, Member> members_;
    bool raisesEvents_ = false;
    std::vector<std::shared_ptr<automation::EventSink>> sinks_;
};

/// A collection with `Count` and `Item(key or 1-based index)`; an unknown key gives an empty result.
class ScriptCollection : public ScriptObject {
public:
    ScriptCollection(std::string name, CallCounter& calls);

    void add(std::u16string_view key, automation::ObjectRef item);
    std::size_t size() const noexcept { return items_.size(); }

private:
    automation::Value itemOf(const automation::Value& key) const;

    std::vector<std::pair<std::u16string, automation::ObjectRef>> items_;
};

/// A value as journals show it.
std::string describe(const automation::Value& value);

} // namespace cvlog::tests
