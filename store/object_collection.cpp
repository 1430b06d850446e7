#include "store/object_collection.h"

#include "base/text.h"
#include "store/engine_error.h"

namespace cvlog::store {

using namespace automation;

const DispatchTable& NamedCollection::dispatchTable() const {
    static const DispatchTable table = {
        {u"Item",
         0,
         MemberKind::PropertyGet,
         Type::Object,
         {{u"Index", Type::Any}},
         on<NamedCollection>(
             [](NamedCollection& self, std::span<Value> values) { return self.item(values[0]); })},
        {u"Count",
         1,
         MemberKind::PropertyGet,
         Type::Int32,
         {},
         on<NamedCollection>([](NamedCollection& self, std::span<Value>) { return self.count(); })},
    };
    return table;
}

ObjectRef NamedCollection::item(const Value& index) const {
    const std::vector<std::u16string> names = names_();
    if (index.is<std::u16string>()) {
        for (const std::u16string& name : names)
            if (base::equalsIgnoringCase(name, index.as<std::u16string>())) return make_(name);
        fail(EngineError::ItemNotFound, u"Item not found in this collection: " + index.as<std::u16string>());
    }
    const std::int32_t position = toInt32(index);
    if (position < 0 || static_cast<std::size_t>(position) >= names.size())
        fail(EngineError::ItemNotFound, u"Item not found in this collection.");
    return make_(names[static_cast<std::size_t>(position)]);
}

Value itemOrCollection(const std::shared_ptr<NamedCollection>& collection, const Value& index) {
    if (index.isNothing()) return collection;
    return collection->item(index);
}

} // namespace cvlog::store
