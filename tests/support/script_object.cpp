#include "tests/support/script_object.h"

#include "base/text.h"

#include <algorithm>

namespace cvlog::tests {

using automation::AutomationError;
using automation::Value;

namespace {

std::string entryOf(const std::string& object, std::u16string_view member, std::span<Value> arguments) {
    std::string entry = object + "." + base::toUtf8(member);
    if (arguments.empty()) return entry;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        entry += (i == 0 ? "(" : ", ") + describe(arguments[i]);
    return entry + ")";
}

} // namespace

class ScriptObject::SinkConnection : public automation::Connection {
public:
    SinkConnection(std::shared_ptr<ScriptObject> object, automation::EventSink* sink)
        : object_(std::move(object)), sink_(sink) {}
    ~SinkConnection() override {
        std::erase_if(object_->sinks_, [this](const auto& sink) { return sink.get() == sink_; });
    }

private:
    std::shared_ptr<ScriptObject> object_;
    automation::EventSink* sink_;
};

ScriptObject& ScriptObject::set(std::u16string_view name, Value value) {
    member(name).value = std::move(value);
    member(name).handler = nullptr;
    return *this;
}

ScriptObject& ScriptObject::on(std::u16string_view name, Handler handler) {
    member(name).handler = std::move(handler);
    return *this;
}

ScriptObject& ScriptObject::remove(std::u16string_view name) {
    members_.erase(base::folded(name));
    return *this;
}

ScriptObject& ScriptObject::raise(std::u16string_view name, AutomationError error) {
    member(name).error = std::move(error);
    return *this;
}

ScriptObject& ScriptObject::heal(std::u16string_view name) {
    member(name).error.reset();
    return *this;
}

ScriptObject& ScriptObject::before(std::u16string_view name, std::function<void()> action) {
    member(name).before = std::move(action);
    return *this;
}

ScriptObject::Member& ScriptObject::member(std::u16string_view name) { return members_[base::folded(name)]; }

ScriptObject::Member& ScriptObject::reach(std::u16string_view name, const std::string& entry) {
    calls_.call(entry);
    const auto found = members_.find(base::folded(name));
    if (found == members_.end()) throw AutomationError(automation::code::kUnknownName, u"Unknown name");
    if (const auto action = found->second.before) action();
    if (found->second.error) throw AutomationError(*found->second.error);
    return found->second;
}

Value ScriptObject::call(std::u16string_view name, std::span<Value> arguments) {
    const auto self = shared_from_this(); // the script may drop the last reference
    Member& reached = reach(name, entryOf(name_, name, arguments));
    if (!reached.handler) return reached.value;
    const Handler handler = reached.handler;
    return handler(arguments);
}

Value ScriptObject::get(std::u16string_view name) { return call(name, {}); }

void ScriptObject::put(std::u16string_view name, const Value& value) {
    reach(name, name_ + "." + base::toUtf8(name) + " = " + describe(value)).value = value;
}

std::unique_ptr<automation::Connection> ScriptObject::connect(std::shared_ptr<automation::EventSink> sink) {
    if (!raisesEvents_) return Object::connect(std::move(sink));
    calls_.call(name_ + ".connect");
    sinks_.push_back(sink);
    return std::make_unique<SinkConnection>(std::static_pointer_cast<ScriptObject>(shared_from_this()),
                                            sink.get());
}

void ScriptObject::fire(std::int32_t id, std::span<Value> arguments) {
    const auto connected = sinks_;
    for (const auto& sink : connected) sink->onEvent(id, arguments);
}

ScriptCollection::ScriptCollection(std::string name, CallCounter& calls)
    : ScriptObject(std::move(name), calls) {
    on(u"Count", [this](std::span<Value>) { return Value(static_cast<std::int32_t>(items_.size())); });
    on(u"Item", [this](std::span<Value> arguments) { return itemOf(arguments[0]); });
}

void ScriptCollection::add(std::u16string_view key, automation::ObjectRef item) {
    items_.emplace_back(key, std::move(item));
}

Value ScriptCollection::itemOf(const Value& key) const {
    if (!key.is<std::u16string>()) {
        const auto index = static_cast<std::size_t>(automation::toInt32(key));
        return index >= 1 && index <= items_.size() ? Value(items_[index - 1].second) : Value();
    }
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
        return base::equalsIgnoringCase(item.first, key.as<std::u16string>());
    });
    return found == items_.end() ? Value() : Value(found->second);
}

std::string describe(const Value& value) {
    if (value.is<automation::Empty>()) return "<empty>";
    if (value.is<automation::Null>()) return "<null>";
    if (value.is<automation::Missing>()) return "<missing>";
    if (value.is<automation::ObjectRef>()) return value.isNothing() ? "<nothing>" : "<object>";
    if (value.is<automation::ErrorCode>()) return "<error>";
    return base::toUtf8(automation::toText(value));
}

} // namespace cvlog::tests
