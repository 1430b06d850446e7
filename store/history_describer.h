#pragma once

#include "view/log_describer.h"

namespace cvlog::store {

/// Says what the history's list shows: a record by its text, with the meaning of its icon, and the separator by what
/// begins there.
class HistoryDescriber : public view::LogDescriber {
public:
    explicit HistoryDescriber(resources::Language language) noexcept;

    std::u16string listName() const override;
    std::u16string rowName(const widgets::ListView& list, int row) const override;

private:
    resources::Language language_;
};

} // namespace cvlog::store
