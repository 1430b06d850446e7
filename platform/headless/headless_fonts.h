#pragma once

#include "automation/dispatch_table.h"
#include "automation/event_source.h"
#include "platform/headless/call_gate.h"
#include "ports/fonts.h"

namespace cvlog::platform::headless {

/// A font object that raises an event, with the name of the member, after each change.
class HeadlessFont : public automation::DispatchObject {
public:
    static constexpr std::int32_t kChangedEvent = 9;

    explicit HeadlessFont(base::Font font) : font_(std::move(font)) {}

    static const automation::DispatchTable& members();
    const automation::DispatchTable& dispatchTable() const override { return members(); }
    std::unique_ptr<automation::Connection> connect(std::shared_ptr<automation::EventSink> sink) override;

    const base::Font& font() const noexcept { return font_; }
    std::size_t listeners() const { return events_.connections().size(); }
    /// Changes the font and tells of it.
    template <class Change>
    void change(std::u16string_view member, Change&& change) {
        change(font_);
        automation::Value name[] = {member};
        events_.raise(kChangedEvent, name);
    }

private:
    class SinkConnection;

    base::Font font_;
    automation::EventSource events_;
};

class HeadlessFonts : public ports::Fonts {
public:
    explicit HeadlessFonts(const CallGate& gate) : gate_(gate) {}

    automation::ObjectRef make(const base::Font& font) override;
    std::unique_ptr<automation::Connection> watch(const automation::ObjectRef& font,
                                                  std::function<void()> changed) override;

private:
    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
