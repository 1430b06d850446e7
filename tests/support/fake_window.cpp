#include "tests/support/fake_window.h"

namespace cvlog::tests {

using automation::Value;

FakeWindow::FakeWindow(CallCounter& calls)
    : tool(std::make_shared<ScriptObject>("Tool", calls)),
      window(std::make_shared<ScriptObject>("Window", calls)),
      controls(std::make_shared<ScriptCollection>("Controls", calls)), calls_(calls) {
    const auto nothing = [](std::span<Value>) { return Value(); };
    window->set(u"hwnd", kHandle).set(u"Controls", controls);
    window->on(u"DisplayLog", nothing).on(u"Move", nothing).on(u"SetFocus", nothing);
    controls->on(u"Add", [this](std::span<Value>) {
        addLogView();
        return Value(logView);
    });
    tool->set(u"CalvettaWindow", window);
}

void FakeWindow::addLogView() {
    logView = std::make_shared<ScriptObject>("LogView", calls_);
    const auto nothing = [](std::span<Value>) { return Value(); };
    logView->set(u"Visible", true).set(u"Font", Value());
    logView->on(u"ZOrder", nothing).on(u"SetFocus", nothing);
    controls->add(u"LogView", logView);
}

} // namespace cvlog::tests
