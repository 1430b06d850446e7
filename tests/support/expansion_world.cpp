#include "tests/support/expansion_world.h"

#include "base/text.h"
#include "core/log_row_kind.h"

namespace cvlog::tests {

ExpansionWorld::ExpansionWorld(std::size_t lists) {
    EXPECT_TRUE(open());
    hideBoxes();
    globals.options.KeepInSession = true;
    host.workspace->on(u"SetMainWindowCursor",
                       [](std::span<automation::Value>) { return automation::Value(0); });
    for (std::size_t i = 0; i < lists; ++i) addControl();
    writeErrors("");
    add({u"M1", 0, u"", u"before", u""});
    add({u"M1", 2, u"P1", u"opened", u"given.errors"});
    add({u"M1", 0, u"", u"after", u""});
    calls.restart();
}

ExpansionWorld::~ExpansionWorld() { platform.pump.atYield = nullptr; }

void ExpansionWorld::writeLines(int count) {
    std::string content;
    for (int i = 1; i <= count; ++i) content += "line " + std::to_string(i) + "\n";
    writeErrors(content);
}

void ExpansionWorld::expand(std::size_t list) {
    controls.at(list)->lvLog().selectAll(false);
    controls.at(list)->lvLog().select(kEntry, true);
    for (const auto& each : globals.LogViews.all())
        if (each.get() == &controls.at(list)->lvLog()) return details::ExpandSelectedEntry(globals, each);
}

std::vector<std::string> ExpansionWorld::messages(std::size_t index, int entry) {
    std::vector<std::string> texts;
    const widgets::ListView& from = list(index);
    for (int row = entry + 1; row <= from.rowCount() && core::IsChildRow(from.row(row)); ++row)
        texts.push_back(from.row(row).cellText(6).toUtf8());
    return texts;
}

void ExpansionWorld::atYield(int n, std::function<void()> action) {
    platform.pump.atYield = [n, action = std::move(action)](int yield) {
        if (yield == n) action();
    };
}

void ExpansionWorld::dock(FakeWindow& window) {
    const auto tools = std::make_shared<ScriptCollection>("Tools", calls);
    tools->add(u"", window.tool);
    host.workspace->set(u"ActiveToolList", tools);
    window.window->set(u"Enabled", true).set(u"MousePointer", std::int16_t{0});
    globals.placement.Parent = host.workspace; // any object will do
    globals.options.DockedOption = true;
}

void ExpansionWorld::pressCancel() {
    constexpr std::size_t kCancelButton = 1;
    if (globals.frmCancel) forms().live.back()->userClicks(kCancelButton);
}

namespace {

std::string rowTextWithoutPath(const widgets::RowContent& row) {
    return rowText(*row.withCell(row.cellOf(u"Message"), widgets::CellField::Tag, {}));
}

void expectSameRows(const std::vector<core::LogViews::ListRef>& lists) {
    for (const auto& list : lists) {
        ASSERT_EQ(list->rowCount(), lists.front()->rowCount());
        for (int row = 1; row <= list->rowCount(); ++row)
            ASSERT_EQ(rowTextWithoutPath(list->row(row)), rowTextWithoutPath(lists.front()->row(row)));
        if (list->rowCount() > 0) {
            EXPECT_FALSE(core::IsChildRow(list->row(1))) << "a child row without an entry";
        }
    }
}

void expectShown(const widgets::ListView& list) {
    if (!list.peer()) return;
    auto& peer = platform::headless::peerOf(list);
    EXPECT_EQ(peer.told("batchBegan"), peer.told("batchEnded")) << "the screen still waits";
    peer.verify(); // the world's end tells of differences
}

} // namespace

void expectMessagesBelowTheirEntry(LogWorld& world) {
    for (const auto& list : world.globals.LogViews.all()) {
        std::u16string object = u"no entry";
        for (int position = 1; position <= list->rowCount(); ++position) {
            const widgets::RowContent& row = list->row(position);
            const bool isChild = core::IsChildRow(row);
            if (!isChild) object = std::u16string(row.tag());
            if (isChild && !row.cellTag(row.cellOf(u"Num")).empty()) { // the row on hidden ones has no object
                ASSERT_EQ(row.cellTag(row.cellOf(u"ObjID")), object) << "row " << position;
            }
        }
    }
}

void expectNothingLeft(LogWorld& world) {
    EXPECT_FALSE(world.globals.ExpansionBusy);
    EXPECT_EQ(world.globals.frmCancel, nullptr);
    EXPECT_EQ(world.platform.files.openFiles(), 0);
    for (const auto* form : world.platform.peers.forms.live) EXPECT_NE(form->form().caption(), u"Cancel");
    expectSameRows(world.globals.LogViews.all());
    expectMessagesBelowTheirEntry(world);
    for (const auto& list : world.globals.LogViews.all()) expectShown(*list);
}

std::string errorLine(std::string_view type, std::string_view object, std::string_view severity,
                      std::string_view code, std::string_view message) {
    std::string line;
    for (const std::string_view field :
         {type, object, std::string_view("x"), std::string_view("y"), severity, code})
        line += "\"" + std::string(field) + "\" ";
    return line + std::string(message) + "\r\n";
}

} // namespace cvlog::tests
