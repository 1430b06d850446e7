#pragma once

#include "hostapi/late_bound.h"

#include <string_view>

namespace cvlog::hostapi {

/// Makes a document of a list that it is given.
class ReportGenerator : public LateBound {
public:
    using LateBound::LateBound;
    static constexpr std::u16string_view kClassName = u"Tabulite.TLReport";

    void createReport(const automation::ObjectRef& list, std::u16string_view name) const {
        automation::Value arguments[] = {list, name};
        required()->callByReference(u"CreateReport", arguments);
    }
    /// The user has broken the making off.
    bool interrupted() const { return automation::toBoolean(required()->get(u"Interrupted")); }
    void setOutputDirectory(std::u16string_view path) const { required()->put(u"OutputDirectory", path); }
    void displayReport(const automation::ObjectRef& owner) const { invoke(u"DisplayReport", owner); }
};

} // namespace cvlog::hostapi
