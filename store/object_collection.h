#pragma once

#include "automation/dispatch_table.h"

#include <functional>
#include <string>
#include <vector>

namespace cvlog::store {

/// A live collection of named objects: Count, and Item by name or by position from 0.
class NamedCollection final : public automation::DispatchObject {
public:
    using Names = std::function<std::vector<std::u16string>()>;
    using Make = std::function<automation::ObjectRef(const std::u16string& name)>;

    NamedCollection(Names names, Make make) : names_(std::move(names)), make_(std::move(make)) {}

    const automation::DispatchTable& dispatchTable() const override;
    std::optional<std::int32_t> firstElement() const override { return 0; }

    std::int32_t count() const { return static_cast<std::int32_t>(names_().size()); }
    /// Throws when there is no such item.
    automation::ObjectRef item(const automation::Value& index) const;

private:
    Names names_;
    Make make_;
};

/// The collection, or its item when an index was given: `rows.Fields("x")` and `rows.Fields.Item("x")` are
/// one.
automation::Value itemOrCollection(const std::shared_ptr<NamedCollection>& collection,
                                   const automation::Value& index);

} // namespace cvlog::store
