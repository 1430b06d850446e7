// What a host pays for a row when it walks a list through its objects.

#include "automation/object.h"
#include "bench/harness.h"
#include "platform/headless/headless_collator.h"
#include "platform/headless/headless_fonts.h"
#include "platform/headless/headless_text_measurer.h"
#include "view/list_object.h"

namespace cvlog::bench {
namespace {

constexpr int kFewRows = 1'000;
constexpr int kManyRows = 100'000;

double secondsPerRow(int rows) {
    platform::headless::HeadlessCollator collator;
    platform::headless::HeadlessTextMeasurer measurer;
    const auto list = std::make_shared<widgets::ListView>(collator, measurer);
    const widgets::RowPtr content = widgets::makeRow({u"text", u"tag", u"Ok", {}});
    for (int i = 0; i < rows; ++i) list->append(content);
    const platform::headless::CallGate gate;
    platform::headless::HeadlessFonts fonts(gate);
    const auto font = std::make_shared<view::ListFont>(fonts, list);
    const automation::ObjectRef items =
        automation::toObject(view::makeListObject(list, font)->get(u"ListItems"));
    return seconds([&] {
               for (int i = 1; i <= rows; ++i) {
                   const automation::ObjectRef row = automation::toObject(items->invoke(u"Item", i));
                   row->get(u"Text");
                   row->get(u"Tag");
               }
           }) /
           rows;
}

double secondsPerRowOfFew() {
    constexpr int kRepeats = 100;
    double sum = 0;
    for (int i = 0; i < kRepeats; ++i) sum += secondsPerRow(kFewRows);
    return sum / kRepeats;
}

std::vector<Figure> measureWalk() {
    const Pair pair = medians(
        5, [] { return secondsPerRow(kManyRows); }, secondsPerRowOfFew);
    return {{"list.walk_row_cost_at_100k_rows_against_1k", pair.value * 1e9, "ns", pair.peer * 1e9, 1.3}};
}

const Registration walk("list.walk", measureWalk);

} // namespace
} // namespace cvlog::bench
