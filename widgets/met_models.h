#pragma once

#include "widgets/row_content.h"

#include <array>
#include <cstdint>

namespace cvlog::widgets {

/// Notes models of rows, and which of their columns the rows cover with texts of their own. Keeps the models, as another
/// one could come to lie in the same place. Forgets the one or the other by itself.
class MetModels {
public:
    bool has(const RowContent* model, ColumnSet covered) noexcept {
        if (last_ && last_->is(model, covered)) return true; // mostly
        const Met& met = placeOf(model);
        if (!met.is(model, covered)) return false;
        last_ = &met;
        return true;
    }
    void note(const RowContent* model, ColumnSet covered) noexcept {
        placeOf(model) = {RowPtr(model), covered};
    }
    void forget() noexcept { met_ = {}; }

private:
    struct Met {
        bool is(const RowContent* other, ColumnSet columns) const noexcept {
            return model.get() == other && covered == columns;
        }
        RowPtr model;
        ColumnSet covered;
    };

    Met& placeOf(const RowContent* model) noexcept {
        const auto address = reinterpret_cast<std::uintptr_t>(model);
        return met_[(address >> 4 ^ address >> 10) % met_.size()];
    }

    std::array<Met, 64> met_;
    const Met* last_ = nullptr; // the place of the one that was met last
};

} // namespace cvlog::widgets
