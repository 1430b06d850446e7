#pragma once

#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_peer_factory.h"
#include "platform/headless/headless_text_measurer.h"
#include "widgets/list_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cvlog::widgets {

using Texts = std::vector<std::u16string>;

/// A list of three columns, the last one hidden, whose peer must be told everything.
class ListViewTest : public testing::Test {
protected:
    ListViewTest() {
        list.setColumns({{u"First", u"F", 1000, 0, u"", Alignment::Left},
                         {u"Second", u"S", 1000, 0, u"", Alignment::Right},
                         {u"Third", u"T", 0, 0, u"", Alignment::Left}});
        list.attach(factory.makeListView(list));
    }
    ~ListViewTest() override {
        peer().verify();
        EXPECT_EQ(factory.book.faults, std::vector<std::string>());
    }
    platform::headless::HeadlessListViewPeer& peer() { return platform::headless::peerOf(list); }

    static RowPtr rowOf(std::u16string text, std::u16string second = {}, std::u16string third = {}) {
        return makeRow(
            {std::move(text),
             {},
             {},
             {{u"Second", std::move(second), {}, {}, {}}, {u"Third", std::move(third), {}, {}, {}}}});
    }
    void fill(const Texts& texts) {
        for (const auto& text : texts) list.append(rowOf(text));
    }
    Texts texts() const {
        Texts result;
        for (int i = 1; i <= list.rowCount(); ++i) result.emplace_back(list.row(i).text());
        return result;
    }
    std::vector<int> selection() const {
        std::vector<int> result;
        for (int i = 1; i <= list.rowCount(); ++i)
            if (list.isSelected(i)) result.push_back(i);
        return result;
    }

    platform::headless::CallGate gate;
    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    platform::headless::HeadlessPeerFactory factory{gate};
    ListView list{collator, measurer};
};

} // namespace cvlog::widgets
