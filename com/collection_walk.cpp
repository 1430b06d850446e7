#include "com/collection_walk.h"

#include "base/failure.h"
#include "com/enumeration.h"
#include "com/variants.h"

namespace cvlog::com {

namespace {

using automation::Value;

struct Elements {
    using Interface = IEnumVARIANT;
    using Element = VARIANT;
    using Item = Value;
    /// Empty for an element that cannot be handed out.
    static Element give(const Item& item) noexcept {
        VARIANT element;
        VariantInit(&element);
        base::ignoring([&] { toVariant(item, &element); });
        return element;
    }
};

std::vector<Value> elementsOf(automation::DispatchObject& collection, std::int32_t first) {
    std::vector<Value> elements;
    const std::int32_t count = automation::toInt32(collection.get(u"Count"));
    elements.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (std::int32_t i = 0; i < count; ++i) elements.push_back(collection.invoke(u"Item", first + i));
    return elements;
}

} // namespace

bool startWalk(automation::DispatchObject& object, VARIANT* result) {
    const std::optional<std::int32_t> first = object.firstElement();
    if (!first) return false;
    IEnumVARIANT* walk = nullptr;
    if (FAILED(Enumeration<Elements>::make(elementsOf(object, *first), &walk))) throw std::bad_alloc();
    result->vt = VT_UNKNOWN;
    result->punkVal = walk;
    return true;
}

} // namespace cvlog::com
