#pragma once

#include "base/compact_text_view.h"
#include "resources/string_table.h"
#include "widgets/list_describer.h"

#include <string_view>

namespace cvlog::view {

/// Says what a log's list shows. An entry is named by its date, a message of an errors file by its text; the columns
/// that are shown follow in their order on the screen, with the meaning of their icons.
class LogDescriber : public widgets::ListDescriber {
public:
    explicit LogDescriber(resources::Language language) noexcept : language_(language) {}

    std::u16string listName() const override;
    std::u16string listDescription(const widgets::ListView& list) const override;
    std::u16string rowName(const widgets::ListView& list, int row) const override;
    std::u16string rowDescription(const widgets::ListView& list, int row) const override;
    std::u16string rowAction() const override;

private:
    std::u16string_view iconWord(base::CompactTextView key) const;

    resources::Language language_;
};

} // namespace cvlog::view
