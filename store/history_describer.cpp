#include "store/history_describer.h"

#include "base/text.h"
#include "store/history_loading.h"

namespace cvlog::store {

namespace {

constexpr int kHistoryName = 501;

} // namespace

HistoryDescriber::HistoryDescriber(resources::Language language) noexcept
    : LogDescriber(language), language_(language) {}

std::u16string HistoryDescriber::listName() const {
    return std::u16string(resources::text(language_, kHistoryName));
}

std::u16string HistoryDescriber::rowName(const widgets::ListView& list, int row) const {
    const bool isSeparator = list.row(row).smallIcon().equalsIgnoringCase(kSessionIcon);
    return isSeparator ? std::u16string(resources::text(language_, kCurrentSession))
                       : LogDescriber::rowName(list, row);
}

} // namespace cvlog::store
