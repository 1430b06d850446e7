#include "view/controls_object.h"

#include "automation/error.h"
#include "automation/member_builders.h"
#include "base/text.h"

#include <algorithm>

namespace cvlog::view {

using namespace automation;

namespace {

class Controls final : public DispatchObject {
public:
    explicit Controls(std::vector<NamedControl> controls) : controls_(std::move(controls)) {}

    const DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 1; }

private:
    [[noreturn]] static void refuse(const Value& index) {
        throw AutomationError(code::kControlNotFound, u"Control not found: " + toText(index));
    }
    const ObjectRef& item(const Value& index) const;
    const ObjectRef& named(const Value& name) const;

    std::vector<NamedControl> controls_;
};

const ObjectRef& Controls::item(const Value& index) const {
    if (index.is<std::u16string>()) return named(index);
    const std::int32_t place = toInt32(index);
    if (place < 1 || static_cast<std::size_t>(place) > controls_.size()) refuse(index);
    return controls_[static_cast<std::size_t>(place - 1)].object;
}

const ObjectRef& Controls::named(const Value& name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(), [&name](const NamedControl& control) {
        return base::equalsIgnoringCase(control.name, name.as<std::u16string>());
    });
    if (found == controls_.end()) refuse(name);
    return found->object;
}

const DispatchTable& Controls::dispatchTable() const {
    using Self = Controls;
    static const DispatchTable table = {
        indexed<Self>(u"Item", 0, Type::Object, {{u"Index", Type::Any}},
                      [](Self& self, std::span<Value> values) { return self.item(values[0]); }),
        readable<Self>(u"Count", 1, Type::Int32,
                       [](Self& self) { return static_cast<std::int32_t>(self.controls_.size()); }),
    };
    return table;
}

} // namespace

ObjectRef makeControls(std::vector<NamedControl> controls) {
    return std::make_shared<Controls>(std::move(controls));
}

} // namespace cvlog::view
