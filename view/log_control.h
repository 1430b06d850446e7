#pragma once

#include "automation/dispatch_table.h"
#include "core/globals.h"

#include <functional>
#include <memory>

namespace cvlog::view {

/// The visible log: one list that fills the control. It owns no log data: its rows are those of all lists.
class LogControl : public automation::DispatchObject, private widgets::ListViewOwner {
public:
    /// Registers the list, sets its columns up and, when there are other lists, copies their rows.
    explicit LogControl(core::Globals& globals);
    ~LogControl() override;

    static const automation::DispatchTable& members();
    const automation::DispatchTable& dispatchTable() const override { return members(); }

    widgets::ListView& lvLog() noexcept { return *lvLog_; }

    /// What the control holds, by name.
    const automation::ObjectRef& controls() const noexcept { return controls_; }

    /// In design mode the container's user edits the form that holds the control; nothing runs.
    void setDesignMode(bool designing) noexcept { designMode_ = designing; }
    bool designMode() const noexcept { return designMode_; }

    /// Called with the dispatch id of a property that was put.
    std::function<void(std::int32_t)> propertyChanged;

    /// Called when the list got or lost the focus, before the log tells its host.
    std::function<void(bool)> focusChanged;

    void setBackColor(std::uint32_t colour);
    void setForeColor(std::uint32_t colour);
    void setEnabled(bool enabled);

private:
    void mouseReleased(widgets::MouseButton button) override;
    void gotFocus() override;
    void lostFocus() override;
    void fillList();
    void leaveViews() noexcept;
    void passFocus(bool got, std::u16string_view event) noexcept;
    void markChanged(std::int32_t property) const;

    core::Globals& globals_;
    core::LogViews::ListRef lvLog_;
    automation::ObjectRef controls_;
    std::u16string viewKey_;
    bool designMode_ = false;
};

} // namespace cvlog::view
