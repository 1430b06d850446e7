#pragma once

#include "widgets/row_content.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace cvlog::widgets {

/// Notes models of rows, and which of their columns the rows cover with texts of their own. Keeps the models, as another
/// one could come to lie in the same place. Forgets the one or the other by itself.
class MetModels {
public:
    bool has(const RowContent* model, ColumnSet covered) const noexcept {
        const Met& met = met_[placeOf(model)];
        return met.model.get() == model && met.covered == covered;
    }
    void note(const RowContent* model, ColumnSet covered) noexcept {
        met_[placeOf(model)] = {RowPtr(model), covered};
    }
    void forget() noexcept { met_ = {}; }

private:
    struct Met {
        RowPtr model;
        ColumnSet covered;
    };

    static std::size_t placeOf(const RowContent* model) noexcept {
        const auto address = reinterpret_cast<std::uintptr_t>(model);
        return (address >> 4 ^ address >> 10) % kPlaces;
    }

    static constexpr std::size_t kPlaces = 256;
    std::array<Met, kPlaces> met_;
};

} // namespace cvlog::widgets
