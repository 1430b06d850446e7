#include "tests/support/opened_log.h"

#include "base/text.h"
#include "core/log_row_kind.h"

#include <gtest/gtest.h>

namespace cvlog::tests {

namespace {

std::string nameOf(const widgets::RowContent& row) { return row.cellText(row.cellOf(u"Message")).toUtf8(); }

widgets::RowPtr childOf(const widgets::RowContent& entry, int number) {
    widgets::Row row{{}, u"expansion", {}, {}};
    for (const char16_t* key : {u"ObjID", u"Num", u"Type", u"Name", u"Result", u"Message"})
        row.cells.push_back({key, {}, {}, {}, {}});
    row.cell(u"ObjID")->tag = std::u16string(entry.tag());
    row.cell(u"Num")->tag = base::decimal(number);
    row.cell(u"Message")->text = base::fromUtf8(nameOf(entry)) + u"." + base::decimal(number);
    return widgets::makeRow(row);
}

} // namespace

std::unique_ptr<LogWorld> keepingWorld(std::size_t controls) {
    auto world = openWorld(controls);
    world->globals.options.KeepInSession = true;
    return world;
}

void addEntry(LogWorld& world, const std::string& name) {
    world.add({u"M1", 0, u"P1", base::fromUtf8(name), u""});
}

void addEntries(LogWorld& world, std::initializer_list<const char*> names) {
    for (const char* name : names) addEntry(world, name);
}

void openEntry(LogWorld& world, int entry, int children) {
    const auto lists = world.globals.LogViews.all();
    for (const auto& list : lists) list->setSorted(false);
    const core::LogViews::ListRef& first = lists.front();
    for (int number = 1; number <= children; ++number) {
        first->insert(entry + number, childOf(first->row(entry), number));
        for (const auto& list : lists)
            if (list != first) list->insertCopy(entry + number, *first, entry + number);
    }
}

std::vector<std::string> namesOf(const widgets::ListView& list) {
    std::vector<std::string> names;
    for (int position = 1; position <= list.rowCount(); ++position) {
        const widgets::RowContent& row = list.row(position);
        names.push_back((core::IsChildRow(row) ? "+" : "") + nameOf(row));
    }
    return names;
}

int placeOf(const widgets::ListView& list, const std::string& name) {
    const Names names = namesOf(list);
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? 0 : static_cast<int>(found - names.begin()) + 1;
}

void selectRows(widgets::ListView& list, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        const int place = placeOf(list, name);
        ASSERT_GT(place, 0) << name;
        list.select(place, true);
    }
}

void expectSound(LogWorld& world) {
    EXPECT_FALSE(world.globals.ExpansionBusy);
    const auto lists = world.globals.LogViews.all();
    for (const auto& list : lists) {
        ASSERT_EQ(namesOf(*list), namesOf(*lists.front()));
        std::string entry;
        for (int position = 1; position <= list->rowCount(); ++position) {
            EXPECT_EQ(list->idAt(position), lists.front()->idAt(position)) << "row " << position;
            const std::string name = nameOf(list->row(position));
            if (!core::IsChildRow(list->row(position)))
                entry = name;
            else
                EXPECT_TRUE(!entry.empty() && name.starts_with(entry + ".")) << name << " below " << entry;
        }
    }
}

} // namespace cvlog::tests
