#include "automation/object.h"

#include "automation/error.h"

namespace cvlog::automation {

std::unique_ptr<Connection> Object::connect(std::shared_ptr<EventSink>) {
    throw AutomationError(code::kNoConnection, u"The object raises no events");
}

bool sameObject(const ObjectRef& left, const ObjectRef& right) noexcept {
    if (!left || !right) return left == right;
    return left->identity() == right->identity();
}

} // namespace cvlog::automation
