#pragma once

#include "automation/dispatch_table.h"
#include "automation/event_source.h"
#include "core/globals.h"

#include <memory>
#include <span>
#include <string_view>

namespace cvlog::core {

/// The log object of the host: entries go in here. All log objects of an apartment share one state.
class CVLog : public automation::DispatchObject {
public:
    explicit CVLog(Globals& globals) : globals_(globals) {}
    /// The end of any log also ends the help in menus.
    ~CVLog() override;

    static const automation::DispatchTable& members();
    const automation::DispatchTable& dispatchTable() const override { return members(); }

    Globals& globals() const noexcept { return globals_; }
    /// True from creation to the end.
    bool isCreated() const noexcept { return created_; }
    automation::EventSource& events() noexcept { return events_; }

    /// Raises an event by its name (case does not matter); an unknown name raises nothing, and so does any name while
    /// an expansion is busy. `arguments` are written back where the event passes them by reference. A "KeyDown" is then
    /// posted to the window of the host's container, with what the handlers made of the key code.
    void FireEvent(std::u16string_view name, std::span<automation::Value> arguments = {});

    /// A key that the host forwards: F1 asks for help, Shift+F10 for the popup menu. A handled key code becomes 0.
    void KeyDown(std::int16_t& keyCode, std::int16_t shift);

private:
    Globals& globals_;
    bool created_ = true;
    automation::EventSource events_;
};

} // namespace cvlog::core
