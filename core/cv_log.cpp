#include "core/cv_log.h"

#include "base/failure.h"
#include "base/text.h"
#include "host/menu_help_hook.h"
#include "hostapi/host_window.h"

namespace cvlog::core {

namespace {

using automation::Value;

enum EventId : std::int32_t {
    kLogChanged = 1,
    kGotFocus = 2,
    kLostFocus = 3,
    kShowErrors = 4,
    kUnload = 5,
    kKeyDown = 6,
};

struct PlainEvent {
    std::u16string_view name;
    EventId id;
};

constexpr PlainEvent kPlainEvents[] = {
    {u"LogChanged", kLogChanged}, {u"GotFocus", kGotFocus}, {u"LostFocus", kLostFocus}, {u"Unload", kUnload}};

constexpr std::int16_t kKeyF1 = 112;
constexpr std::int16_t kKeyF10 = 121;
constexpr std::int16_t kShiftBit = 1;

// The host's window sees the key as if it had been pressed there.
void passKeyOn(Globals& globals, std::int16_t code) noexcept {
    base::ignoring([&] {
        const hostapi::HostWindow parent(globals.placement.Parent);
        globals.platform.windowMessages.postKeyDown(parent.hwnd(), code);
    });
}

} // namespace

CVLog::~CVLog() { host::RemoveMenuHelpHook(globals_); }

void CVLog::FireEvent(std::u16string_view name, std::span<Value> arguments) {
    if (globals_.ExpansionBusy) return;
    for (const PlainEvent& event : kPlainEvents)
        if (base::equalsIgnoringCase(event.name, name)) events_.raise(event.id, {});
    if (arguments.size() < 2) return;
    if (base::equalsIgnoringCase(name, u"ShowErrors")) {
        Value converted[] = {automation::toText(arguments[0]), automation::toInt32(arguments[1])};
        events_.raise(kShowErrors, converted);
    } else if (base::equalsIgnoringCase(name, u"KeyDown")) {
        Value converted[] = {automation::toInt16(arguments[0]), automation::toInt16(arguments[1])};
        events_.raise(kKeyDown, converted);
        arguments[0] = automation::toInt16(converted[0]);
        arguments[1] = automation::toInt16(converted[1]);
        passKeyOn(globals_, arguments[0].as<std::int16_t>());
    }
}

void CVLog::KeyDown(std::int16_t& keyCode, std::int16_t shift) {
    // Help and the popup menu belong to the lists; this object only takes the keys.
    const bool asksHelp = keyCode == kKeyF1;
    const bool asksMenu = keyCode == kKeyF10 && (shift & kShiftBit) != 0;
    if (asksHelp || asksMenu) keyCode = 0;
}

} // namespace cvlog::core
