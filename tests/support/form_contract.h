#pragma once

#include "widgets/form.h"
#include "widgets/list_view.h"
#include "widgets/peer_factory.h"
#include "widgets/timer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace cvlog::widgets::testbed {

/// A form as the component's own are: an object that owns it and hears of it.
struct RecordingForm : FormOwner {
    RecordingForm(PeerFactory& peers, Border border) : form(peers, border, u"Window") {}
    static std::shared_ptr<RecordingForm> make(PeerFactory& peers, Border border = Border::Sizable) {
        auto made = std::make_shared<RecordingForm>(peers, border);
        made->form.setOwner(made);
        return made;
    }
    void formResized() override {
        ++resized;
        if (atResize) atResize();
    }
    void formQueryUnload(UnloadMode mode) override {
        unloads.emplace_back(mode == UnloadMode::User ? "query: user" : "query: code");
    }
    void formUnload() override {
        unloads.emplace_back("unload");
        if (atUnload) atUnload();
    }

    Form form;
    int resized = 0;
    std::vector<std::string> unloads;
    std::function<void()> atResize;
    std::function<void()> atUnload;
};

/// A platform with its user and its time.
class Screen {
public:
    virtual ~Screen() = default;
    virtual PeerFactory& peers() = 0;
    virtual std::unique_ptr<ListView> makeList() = 0;
    /// What a caller may give for a window, and is none that owns others.
    virtual std::int32_t refusingWindow() = 0;
    virtual void userCloses(Form& form) = 0;
    virtual void userClicks(Form& form, std::size_t button) = 0;
    /// Somebody who has the window's handle hides it.
    virtual void hideByHandle(Form& form) = 0;
    virtual bool isOnScreen(Form& form) = 0;
    /// Lets time pass until something is so; false when it never is.
    virtual bool waitFor(const std::function<bool()>& something) = 0;
};

struct ScreenUnderTest {
    std::string name;
    std::function<std::unique_ptr<Screen>()> make;
};

inline void PrintTo(const ScreenUnderTest& screen, std::ostream* out) { *out << screen.name; }

/// What every platform's forms and timers keep to. A platform joins by one more INSTANTIATE_TEST_SUITE_P.
class FormContract : public ::testing::TestWithParam<ScreenUnderTest> {
protected:
    std::unique_ptr<Screen> screen_ = GetParam().make();
    std::shared_ptr<RecordingForm> window_ = RecordingForm::make(screen_->peers());
};

} // namespace cvlog::widgets::testbed
