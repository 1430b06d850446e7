#pragma once

#include "automation/dispatch_table.h"
#include "core/globals.h"
#include "view/control_properties.h"
#include "view/list_font.h"
#include "view/log_commands.h"

#include <functional>
#include <memory>
#include <optional>

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

    const widgets::MenuItemRef& mnuPopUpLog() const noexcept { return mnuPopUpLog_; }

    /// What a double click does in `f`: this control, or what else holds a list "lvLog" and the items of its menu.
    void doubleClick(const automation::ObjectRef& f);

    /// In design mode the container's user edits the form that holds the control; nothing runs.
    void setDesignMode(bool designing) noexcept { designMode_ = designing; }
    bool designMode() const noexcept { return designMode_; }

    /// Asked with the dispatch id before a property is put; false refuses the put.
    std::function<bool(std::int32_t)> mayChange;

    /// Called with the dispatch id of a property that was put, and of a font that was changed.
    std::function<void(std::int32_t)> propertyChanged;

    /// Called when the list got or lost the focus, before the log tells its host.
    std::function<void(bool)> focusChanged;

    void setBackColor(std::uint32_t colour);
    void setForeColor(std::uint32_t colour);
    void setEnabled(bool enabled);

    /// The list's font object, made when it is first asked for. What is changed in it is seen in the list.
    automation::ObjectRef font();
    /// Replaces the list's font object. Nothing and what is no font are refused, and the font stays.
    void setFont(const automation::ObjectRef& font);
    /// The container's font: the list's as long as no other was put or restored. None: the container has none.
    void setAmbientFont(const std::optional<base::Font>& font);

    /// What a container has to store.
    ControlProperties properties();
    /// Takes over what a container has stored; nobody is told. A font that is none fails before anything is changed.
    void restore(const ControlProperties& stored);
    /// Something to store has changed since the control was made, restored or saved.
    bool unsaved() const noexcept { return unsaved_; }
    void markSaved() noexcept { unsaved_ = false; }

private:
    void columnClicked(int column) override;
    void doubleClicked() override;
    void keyPressed(widgets::KeyEvent& key) override;
    void keyReleased(widgets::KeyEvent& key) override;
    void mouseReleased(widgets::MouseButton button) override;
    void gotFocus() override;
    void lostFocus() override;
    void fillList();
    void leaveViews() noexcept;
    /// Runs what the user wants of a log: it and the apartment stay until that is done, and failures end there.
    void run(const std::function<void(const CommandTarget&)>& action) noexcept;
    void passFocus(bool got, std::u16string_view event) noexcept;
    void askToChange(std::int32_t property) const;
    void markChanged(std::int32_t property);

    core::Globals& globals_;
    core::LogViews::ListRef lvLog_;
    widgets::MenuItemRef mnuPopUpLog_;
    ListFontRef font_;
    automation::ObjectRef controls_;
    bool designMode_ = false;
    bool unsaved_ = false;
    bool focused_ = false; // as far as the log's host was told
};

} // namespace cvlog::view
