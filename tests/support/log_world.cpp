#include "tests/support/log_world.h"

#include "base/text.h"
#include "core/log_row.h"
#include "core/series_report.h"
#include "store/log_database.h"

#include <gtest/gtest.h>

namespace cvlog::tests {

LogWorld::LogWorld() {
    platform.gate.watcher = [this](std::string_view name) { calls.call(std::string(name)); };
    engine.addLogFile(kLogFile);
    for (const auto& [key, type] : host.types)
        platform.files.addFile(u"C:\\Prod\\Repository\\Icons\\" + key + u".ico");
}

LogWorld::~LogWorld() {
    calls.disarm();
    calls.insideCall = nullptr;
    controls.clear();
    if (peersMustAgree) {
        EXPECT_EQ(platform.peers.book.faults, std::vector<std::string>());
    }
}

bool LogWorld::open() { return store::OpenDB(globals, log, host.workspace); }

void LogWorld::close() { store::CloseDB(globals); }

widgets::ListView& LogWorld::addControl() {
    controls.push_back(std::make_shared<view::LogControl>(globals));
    return controls.back()->lvLog();
}

void LogWorld::removeControl(std::size_t index) {
    controls.erase(controls.begin() + static_cast<std::ptrdiff_t>(index));
}

void LogWorld::startSeries() { core::SeriesStart(globals); }

void LogWorld::finishSeries() { core::SeriesFinish(globals); }

void LogWorld::hideBoxes() {
    globals.LogWindowVisible = true;
    host.workspace->set(u"ActiveToolList", host.tools);
    host.tools->on(u"Count", [this](std::span<automation::Value>) {
        return automation::Value(globals.LogViews.count());
    });
}

std::unique_ptr<LogWorld> openWorld(std::size_t controls, bool quiet) {
    auto world = std::make_unique<LogWorld>();
    EXPECT_TRUE(world->open());
    if (quiet) world->hideBoxes();
    for (std::size_t i = 0; i < controls; ++i) world->addControl();
    return world;
}

std::string rowText(const widgets::RowContent& row) {
    std::string text = row.text().toUtf8() + "|" + row.tag().toUtf8() + "|" + row.smallIcon().toUtf8();
    for (int cell = 1; cell <= row.cellCount(); ++cell) {
        text += "|" + base::toUtf8(row.cellKey(cell)) + "=" + row.cellText(cell).toUtf8();
        if (!row.cellTag(cell).empty()) text += "{" + row.cellTag(cell).toUtf8() + "}";
        if (!row.cellIcon(cell).empty()) text += "[" + row.cellIcon(cell).toUtf8() + "]";
    }
    return text;
}

std::vector<std::string> rowsOf(const widgets::ListView& list) {
    std::vector<std::string> rows;
    for (int position = 1; position <= list.rowCount(); ++position)
        rows.push_back(rowText(list.row(position)));
    return rows;
}

void expectListsInStep(LogWorld& world) {
    const auto lists = world.globals.LogViews.all();
    for (const auto& list : lists) {
        EXPECT_EQ(rowsOf(*list), rowsOf(*lists.front()));
        for (int position = 1; position <= list->rowCount(); ++position) {
            const widgets::RowContent& row = list->row(position);
            EXPECT_EQ(row.text().size(), std::u16string_view(u"yyyy-mm-dd hh:nn:ss").size());
            EXPECT_FALSE(row.smallIcon().empty());
            ASSERT_EQ(row.cellCount(), static_cast<int>(core::kLogCellKeys.size()));
            EXPECT_FALSE(row.cellText(row.cellOf(u"Result")).empty());
            EXPECT_EQ(row.cellIcon(row.cellOf(u"Result")), row.smallIcon());
        }
    }
}

} // namespace cvlog::tests
