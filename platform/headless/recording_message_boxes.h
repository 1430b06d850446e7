#pragma once

#include "platform/headless/call_gate.h"
#include "ports/message_boxes.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace cvlog::platform::headless {

/// Message boxes that nobody sees: each is recorded and answered from a script.
class RecordingMessageBoxes : public ports::MessageBoxes {
public:
    struct Box {
        std::u16string title;
        std::u16string text;
        ports::BoxIcon icon;
        bool asks; // Yes and No instead of OK
        friend bool operator==(const Box&, const Box&) = default;
    };

    explicit RecordingMessageBoxes(const CallGate& gate) : gate_(gate) {}

    void inform(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) override {
        gate_.pass("MessageBoxes.inform");
        show({std::u16string(title), std::u16string(text), icon, false});
    }

    bool ask(std::u16string_view title, std::u16string_view text, ports::BoxIcon icon) override {
        gate_.pass("MessageBoxes.ask");
        show({std::u16string(title), std::u16string(text), icon, true});
        if (answers.empty()) return false;
        const bool yes = answers.front();
        answers.pop_front();
        return yes;
    }

    std::vector<Box> shown;
    /// One answer a question, true for Yes; No when there are none left.
    std::deque<bool> answers;
    /// Runs while a box is open, as other code of a program does.
    std::function<void()> whileOpen;

private:
    void show(Box box) {
        shown.push_back(std::move(box));
        if (whileOpen) whileOpen();
    }

    const CallGate& gate_;
};

} // namespace cvlog::platform::headless
