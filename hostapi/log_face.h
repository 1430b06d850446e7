#pragma once

#include "base/failure.h"
#include "hostapi/late_bound.h"

#include <string>
#include <string_view>

// A list of the log with its menu, as anybody may have them: a control of ours, or a form of the host that holds a list
// "lvLog" and menu items by the names of the log's own.

namespace cvlog::hostapi {

class RowFace : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t index() const { return number(u"Index"); }
    std::u16string tag() const { return text(u"Tag"); }
    std::u16string cellTag(std::u16string_view key) const {
        return Cell(Collection(objectOf(u"ListSubItems")).item(key)).tag();
    }

private:
    class Cell : public LateBound {
    public:
        using LateBound::LateBound;
        std::u16string tag() const { return text(u"Tag"); }
    };
};

class ListFace : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t hwnd() const { return number(u"hWnd"); }
    /// Nothing when no row is selected.
    RowFace selectedRow() const { return RowFace(objectOf(u"SelectedItem")); }
    std::int32_t rowCount() const { return rows().count(); }
    RowFace row(std::int32_t index) const { return RowFace(rows().item(index)); }
    double columnWidth(std::u16string_view key) const {
        return Header(Collection(objectOf(u"ColumnHeaders")).item(key)).width();
    }

private:
    class Header : public LateBound {
    public:
        using LateBound::LateBound;
        double width() const { return automation::toDouble(required()->get(u"Width")); }
    };
    Collection rows() const { return Collection(objectOf(u"ListItems")); }
};

class MenuItemFace : public LateBound {
public:
    using LateBound::LateBound;
    std::u16string tag() const { return text(u"Tag"); }
    bool visible() const { return truth(u"Visible"); }
    bool enabled() const { return truth(u"Enabled"); }
    void setVisible(bool visible) const { required()->put(u"Visible", visible); }
    void setEnabled(bool enabled) const { required()->put(u"Enabled", enabled); }
    void setChecked(bool checked) const { required()->put(u"Checked", checked); }

private:
    bool truth(std::u16string_view member) const { return automation::toBoolean(required()->get(member)); }
};

/// Menu items that share a name, by their places.
class MenuArrayFace : public LateBound {
public:
    using LateBound::LateBound;
    std::int32_t first() const { return number(u"LBound"); }
    std::int32_t last() const { return number(u"UBound"); }
    MenuItemFace item(std::int32_t index) const {
        return MenuItemFace(automation::toObject(invoke(u"Item", index)));
    }
};

class LogFace : public LateBound {
public:
    using LateBound::LateBound;
    ListFace lvLog() const { return ListFace(control(u"lvLog")); }
    MenuItemFace menuItem(std::u16string_view name) const { return MenuItemFace(control(name)); }
    MenuArrayFace menuArray(std::u16string_view name) const { return MenuArrayFace(control(name)); }
    /// A form that holds other forms; only such a one says so.
    bool isMdiForm() const noexcept {
        return base::valueOr(false, [this] { return automation::toBoolean(required()->get(u"IsMDIForm")); });
    }

private:
    automation::ObjectRef control(std::u16string_view name) const {
        return Collection(objectOf(u"Controls")).item(name);
    }
};

} // namespace cvlog::hostapi
