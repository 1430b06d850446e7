#include "widgets/row_memory.h"

#include "widgets/row_content.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace cvlog::widgets {
namespace {

bool isAligned(const RowMemory::Part& part) {
    return reinterpret_cast<std::uintptr_t>(part.begin) % RowMemory::kStep == 0;
}

TEST(RowMemory, GivesPartsThatLieApart) {
    RowMemory memory;
    std::vector<std::pair<RowMemory::Part, std::size_t>> parts;
    for (std::size_t size = 1; size <= 1500; size += 7) {
        parts.emplace_back(memory.take(size), size);
        EXPECT_TRUE(isAligned(parts.back().first)) << size;
        EXPECT_LE(parts.back().first.distance, RowMemory::kMostSteps) << size;
        std::memset(parts.back().first.begin, static_cast<int>(parts.size() % 251), size);
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto& [part, size] = parts[i];
        const auto* const bytes = static_cast<const unsigned char*>(part.begin);
        EXPECT_TRUE(std::all_of(bytes, bytes + size, [i](unsigned char byte) {
            return byte == (i + 1) % 251;
        })) << size;
        RowMemory::giveBack(part);
    }
}

TEST(RowMemory, GivesALargePartMemoryOfItsOwn) {
    RowMemory memory;
    const RowMemory::Part small = memory.take(100);
    const RowMemory::Part large = memory.take(100'000);
    EXPECT_NE(small.distance, 0U);
    EXPECT_EQ(large.distance, 0U);
    RowMemory::giveBack(large);
    RowMemory::giveBack(small);
}

RowPtr rowIn(RowMemory& memory, const RowPtr& model, const std::u16string& text) {
    const OwnText own[] = {{RowField::Text, text}};
    return makeRowLike(model, own, &memory);
}

TEST(RowsInAMemory, OutliveItAndGoInAnyOrder) {
    const RowPtr model = makeRow(u"", u"tag of all", u"Good");
    std::vector<RowPtr> rows;
    {
        RowMemory memory;
        for (std::size_t i = 0; i < 1000; ++i) rows.push_back(rowIn(memory, model, std::u16string(i, u'x')));
    }
    std::shuffle(rows.begin(), rows.end(), std::mt19937(1));
    while (!rows.empty()) {
        const RowPtr row = std::move(rows.back());
        rows.pop_back();
        EXPECT_EQ(row->tag(), u"tag of all");
        EXPECT_EQ(row->text(), std::u16string(row->text().size(), u'x'));
    }
}

TEST(RowsInAMemory, AreLikeAnyOtherRow) {
    RowMemory memory;
    const RowPtr model = makeRow({u"", u"tag", u"", {{u"A", u"cell", u"", u"", u""}}});
    const RowPtr row = rowIn(memory, model, u"text");
    const RowPtr alone = rowIn(memory, model, std::u16string(5000, u'y'));
    EXPECT_EQ(row->edit(), (Row{u"text", u"tag", u"", {{u"A", u"cell", u"", u"", u""}}}));
    EXPECT_EQ(alone->text().size(), 5000U);
    EXPECT_EQ(row->withCell(1, CellField::Text, u"other")->cellText(1), u"other");
    row->rememberWidth(1, 1, 77);
    EXPECT_EQ(row->rememberedWidth(1, 1), 77);
    EXPECT_EQ(rowIn(memory, row, u"third")->model(), row.get());
}

} // namespace
} // namespace cvlog::widgets
