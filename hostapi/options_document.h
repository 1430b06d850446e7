#pragma once

#include "hostapi/late_bound.h"

#include <string>

namespace cvlog::hostapi {

/// An element of the options document.
class OptionNode : public LateBound {
public:
    using LateBound::LateBound;
    /// "" when the attribute is missing.
    std::u16string attribute(std::u16string_view name) const {
        const automation::Value value = invoke(u"getAttribute", name);
        return value.isNothing() ? std::u16string() : automation::toText(value);
    }
    void setAttribute(std::u16string_view name, std::u16string_view value) const {
        invoke(u"setAttribute", name, value);
    }
    OptionNode nextSibling() const { return OptionNode(objectOf(u"nextSibling")); }
};

class OptionsDocument : public LateBound {
public:
    using LateBound::LateBound;
    /// Nothing when no node fits.
    OptionNode selectSingleNode(std::u16string_view xpath) const {
        return OptionNode(automation::toObject(invoke(u"selectSingleNode", xpath)));
    }
    /// Writes the document back; its listeners are told.
    void save() const { invoke(u"Save"); }
};

} // namespace cvlog::hostapi
