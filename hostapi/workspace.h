#pragma once

#include "hostapi/host_window.h"
#include "hostapi/repository.h"

#include <string>

namespace cvlog::hostapi {

/// A method that the host's tools apply to objects.
class Method : public LateBound {
public:
    using LateBound::LateBound;
    std::u16string displayName() const { return text(u"DisplayName"); }
    std::u16string aliasId() const { return text(u"AliasID"); } // "" when the method stands for itself
};

/// Pointers of the host's main window.
inline constexpr std::int32_t kUsualPointer = 0;
inline constexpr std::int32_t kHourglass = 11;

enum class HostName { ProjectDirectory = 4, ProjectName = 6, ProductDirectory = 16 };

/// The host's workspace: the one object through which the component reaches its host.
class Workspace : public LateBound {
public:
    using LateBound::LateBound;

    automation::ObjectRef userOptions() const { return objectOf(u"UserOptions"); }
    Repository repository() const { return Repository(objectOf(u"Repository")); }
    RepositoryObject projectObject() const { return RepositoryObject(objectOf(u"ProjectObject")); }
    /// Nothing for an unknown identifier.
    Method method(std::u16string_view id) const { return Method(Collection(objectOf(u"Methods")).item(id)); }
    Collection activeToolList() const { return Collection(objectOf(u"ActiveToolList")); }

    /// The host's main window.
    HostWindow mainWindow() const { return HostWindow(objectOf(u"CalvettaWindow")); }

    std::u16string name(HostName kind) const {
        return automation::toText(invoke(u"GetCalvettaName", static_cast<std::int32_t>(kind)));
    }
    std::u16string returnCodeText(std::int32_t code) const {
        return automation::toText(invoke(u"TranslateReturnCode", code));
    }
    /// The code of an error, which may be empty.
    std::u16string returnCodeText(std::u16string_view code) const {
        return automation::toText(invoke(u"TranslateReturnCode", code));
    }
    std::u16string productName() const { return productInfo(u"Product.Name"); }
    std::u16string workbenchName() const { return productInfo(u"Workbench.Name"); }
    std::u16string helpFile() const { return automation::toText(invoke(u"GetHelpFile", u"Calvetta.hlp")); }

    /// Sets the pointer that the host's main window shows. Answers the one before, which may be any number.
    std::int32_t setMainWindowCursor(std::int32_t pointer) const {
        return automation::toInt32(invoke(u"SetMainWindowCursor", pointer));
    }

private:
    std::u16string productInfo(std::u16string_view name) const {
        return automation::toText(invoke(u"GetProductInfo", name));
    }
};

} // namespace cvlog::hostapi
