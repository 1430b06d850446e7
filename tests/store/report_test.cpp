#include "store/report.h"

#include "store/history_commands.h"
#include "tests/store/history_window.h"
#include "tests/support/failure_code.h"
#include "tests/support/fake_window.h"

namespace cvlog::store {
namespace {

class Reports : public testbed::HistoryWindow {
protected:
    Reports() {
        letErrorsBeShown();
        world.platform.objects.classes[u"Tabulite.TLReport"] = [this] { return generator; };
        generator->on(u"CreateReport", [this](std::span<automation::Value> values) {
            const automation::ObjectRef list = automation::toObject(values[0]);
            name = automation::toText(values[1]);
            rows = automation::toInt32(automation::toObject(list->get(u"ListItems"))->get(u"Count"));
            return automation::Value();
        });
        generator->set(u"Interrupted", false);
        generator->set(u"OutputDirectory", u"");
        generator->on(u"DisplayReport", [this](std::span<automation::Value> values) {
            shownFor = automation::toObject(values[0]);
            return automation::Value();
        });
    }

    /// Pointer, creation and the generator's calls, in order, while the report is made of the history.
    std::vector<std::string> journal(FrmLogHistory& window) {
        std::vector<std::string> calls;
        world.calls.insideCall = [&](const std::string& call) {
            if (call == "Form.pointerChanged")
                calls.push_back(std::to_string(static_cast<int>(window.form().pointer())));
            if (call.starts_with("Objects.") || call.starts_with("Generator."))
                calls.push_back(
                    call.substr(call.find('.') + 1).substr(0, call.find('(') - call.find('.') - 1));
        };
        outcome = tests::failureCode([&] { ReportHistory(world.globals, window); });
        world.calls.insideCall = nullptr;
        EXPECT_EQ(window.form().pointer(), widgets::Pointer::Default);
        return calls;
    }

    std::shared_ptr<tests::ScriptObject> generator =
        std::make_shared<tests::ScriptObject>("Generator", world.calls);
    std::u16string name;
    int rows = 0;
    automation::ObjectRef shownFor;
    std::int32_t outcome = 0;
};

using Calls = std::vector<std::string>;

TEST_F(Reports, AreMadeOfTheListAndShownInFrontOfTheHost) {
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(journal(window), (Calls{"11", "create", "CreateReport", "0", "Interrupted",
                                          "OutputDirectory = C:\\Proj\\Output", "DisplayReport", "0"}));
    });
    EXPECT_EQ(outcome, 0);
    EXPECT_EQ(name, u"LogHistory");
    EXPECT_EQ(rows, 6);
    EXPECT_TRUE(automation::sameObject(shownFor, main));
    EXPECT_EQ(generator->get(u"OutputDirectory"), automation::Value(u"C:\\Proj\\Output"));
}

TEST_F(Reports, AreCreatedWithTheListAndTheNameByReference) {
    struct ByReference : tests::ScriptObject {
        using ScriptObject::ScriptObject;
        automation::Value callByReference(std::u16string_view member,
                                          std::span<automation::Value> arguments) override {
            members.emplace_back(member);
            return ScriptObject::callByReference(member, arguments);
        }
        std::vector<std::u16string> members;
    };
    const auto watched = std::make_shared<ByReference>("Generator", world.calls);
    watched->set(u"CreateReport", automation::Value());
    watched->set(u"Interrupted", true);
    world.platform.objects.classes[u"Tabulite.TLReport"] = [watched] { return watched; };
    inHistory([&](FrmLogHistory& window) { ReportHistory(world.globals, window); });
    EXPECT_EQ(watched->members, std::vector<std::u16string>{u"CreateReport"});
}

TEST_F(Reports, JoinTheFolderWithOneSeparator) {
    for (const auto& [directory, output] :
         std::vector<std::pair<std::u16string, std::u16string>>{{u"C:\\Proj\\", u"C:\\Proj\\Output"},
                                                                {u"C:/Proj/", u"C:/Proj/Output"},
                                                                {u"C:", u"C:Output"},
                                                                {u"", u"Output"}}) {
        world.host.names[4] = directory;
        inHistory([&](FrmLogHistory& window) { journal(window); });
        EXPECT_EQ(generator->get(u"OutputDirectory"), automation::Value(output));
    }
}

TEST_F(Reports, AreNotShownWhenTheUserBrokeThemOff) {
    generator->set(u"Interrupted", true);
    inHistory([&](FrmLogHistory& window) {
        EXPECT_EQ(journal(window), (Calls{"11", "create", "CreateReport", "0", "Interrupted", "0"}));
    });
    EXPECT_EQ(outcome, 0);
}

TEST_F(Reports, GiveThePointerBackWithoutAGenerator) {
    world.platform.objects.classes.clear();
    inHistory([&](FrmLogHistory& window) { EXPECT_EQ(journal(window), (Calls{"11", "create", "0"})); });
    EXPECT_EQ(outcome, platform::headless::HeadlessObjects::kCannotCreate);
}

TEST_F(Reports, GiveThePointerBackWhenTheGeneratorFails) {
    for (const char16_t* member : {u"CreateReport", u"Interrupted", u"OutputDirectory"}) {
        generator->raise(member, tests::CallCounter::injectedError());
        inHistory([&](FrmLogHistory& window) { EXPECT_EQ(journal(window).back(), "0"); });
        EXPECT_EQ(outcome, tests::CallCounter::injectedError().code());
        generator->heal(member);
    }
    generator->raise(u"DisplayReport", tests::CallCounter::injectedError());
    inHistory([&](FrmLogHistory& window) { EXPECT_EQ(journal(window).back(), "0"); });
    EXPECT_EQ(outcome, 0) << "the report is there, it is only not shown";
}

TEST_F(Reports, OfALogPutThePointerOfTheHostsWindow) {
    tests::FakeWindow window(world.calls);
    window.window->set(u"MousePointer", std::int16_t{0});
    auto tools = std::make_shared<tests::ScriptCollection>("Tools", world.calls);
    tools->add(u"", window.tool);
    world.host.workspace->set(u"ActiveToolList", tools);
    world.addControl();
    world.calls.restart();
    MakeLogReport(world.globals, world.globals.LogViews.first());
    EXPECT_EQ(name, u"Log");
    EXPECT_EQ(world.calls.journalOf({"Window.MousePointer"}),
              (Calls{"Window.MousePointer = 11", "Window.MousePointer = 0", "Window.MousePointer = 0"}));
    window.window->remove(u"MousePointer");
    name.clear();
    MakeLogReport(world.globals, world.globals.LogViews.first());
    EXPECT_EQ(name, u"Log") << "a host without a pointer gets its report";
}

TEST_F(Reports, MayCloseTheHistoryWhileTheyAreMade) {
    inHistory([&](FrmLogHistory& window) {
        generator->before(u"CreateReport", [&] { window.unload(); });
        ReportHistory(world.globals, window);
        generator->before(u"CreateReport", nullptr);
        EXPECT_FALSE(window.isLoaded());
    });
    EXPECT_EQ(name, u"LogHistory");
}

} // namespace
} // namespace cvlog::store
