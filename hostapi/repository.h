#pragma once

#include "hostapi/late_bound.h"

#include <string>

namespace cvlog::hostapi {

class EntityType : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t id() const { return number(u"ID"); } // one bit of the masks
    std::int32_t flags() const { return number(u"Flags"); }
    std::u16string displayName() const { return text(u"DisplayName"); }
    std::u16string keyName() const { return text(u"KeyName"); }         // the type's icon key
    std::u16string iconFile() const { return text(u"IconFile"); }       // a file name below the icons folder
    std::u16string keyProperty() const { return text(u"KeyProperty"); } // gives the errors file its name
};

class RepositoryObject : public LateBound {
public:
    using LateBound::LateBound;
    std::u16string id() const { return text(u"ID"); }
    std::u16string name() const { return text(u"Name"); }
    std::u16string displayName() const { return text(u"DisplayName"); }
    EntityType entityType() const { return EntityType(objectOf(u"EntityType")); }
    std::u16string property(std::u16string_view name) const {
        return automation::toText(invoke(u"Property", name));
    }
};

/// The model of the repository: its entity types and their masks.
class EntityModel : public LateBound {
public:
    using LateBound::LateBound;
    Collection entities() const { return Collection(objectOf(u"Entities")); }
    /// The entity types, as a bit mask, that a flag name stands for.
    std::int32_t entityFlags(std::u16string_view name) const {
        const auto flags = automation::toObject(invoke(u"EntityFlags", name));
        return Flags(flags).value();
    }

private:
    class Flags : public LateBound {
    public:
        using LateBound::LateBound;
        std::int32_t value() const { return number(u"Value"); }
    };
};

class Repository : public LateBound {
public:
    using LateBound::LateBound;
    EntityModel erd() const { return EntityModel(objectOf(u"ERD")); }
    /// By the type's key name or display name; nothing when there is none such.
    RepositoryObject findObject(std::u16string_view type, std::u16string_view name) const {
        return RepositoryObject(automation::toObject(invoke(u"FindObject", type, name)));
    }
    /// The same with the host's optional third argument.
    RepositoryObject findObject(std::u16string_view type, std::u16string_view name,
                                std::u16string_view text) const {
        return RepositoryObject(automation::toObject(invoke(u"FindObject", type, name, text)));
    }
    /// Nothing when the identifier is unknown.
    RepositoryObject object(std::u16string_view id) const {
        return RepositoryObject(automation::toObject(invoke(u"object", id)));
    }
};

} // namespace cvlog::hostapi
