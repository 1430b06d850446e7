#include "bench/errors_host.h"

#include "base/text.h"
#include "bench/errors_text.h"
#include "bench/fixed_object.h"

#include <unordered_map>

namespace cvlog::bench {

namespace {

using automation::Value;

/// Finds things by one of the arguments of any method.
class Finder final : public FixedObject {
public:
    using Things = std::unordered_map<std::u16string, Value>;

    Finder(Things things, std::size_t argument, Members members = {})
        : FixedObject(std::move(members)), things_(std::move(things)), argument_(argument) {}

    Value call(std::u16string_view, std::span<Value> arguments) override {
        const auto found = things_.find(arguments[argument_].as<std::u16string>());
        return found == things_.end() ? Value() : found->second;
    }

private:
    Things things_;
    std::size_t argument_;
};

automation::ObjectRef makeTypes() {
    Finder::Things types;
    for (const std::u16string_view name : {u"Header", u"Source"})
        types.emplace(name, fixedObject({{u"DisplayName", std::u16string(name)}, {u"KeyName", u"Program"}}));
    return std::make_shared<Finder>(std::move(types), 0);
}

automation::ObjectRef makeRepository() {
    Finder::Things objects;
    for (int number = 0; number < kErrorsObjects; ++number) {
        const std::u16string name = base::fromUtf8(errorsObject(number));
        objects.emplace(name, fixedObject({{u"DisplayName", name}, {u"ID", u"O" + base::decimal(number)}}));
    }
    const auto erd = fixedObject({{u"Entities", makeTypes()}});
    return std::make_shared<Finder>(std::move(objects), 1, FixedObject::Members{{u"ERD", erd}});
}

/// Has a text for every code.
class ErrorsHost final : public FixedObject {
public:
    ErrorsHost() : FixedObject({{u"Repository", makeRepository()}}) {}
    Value call(std::u16string_view member, std::span<Value> arguments) override {
        if (member == u"TranslateReturnCode") return u"Result " + arguments[0].as<std::u16string>();
        return 0; // the pointer that its window had
    }
};

} // namespace

automation::ObjectRef makeErrorsHost() { return std::make_shared<ErrorsHost>(); }

} // namespace cvlog::bench
