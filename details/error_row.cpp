#include "details/error_row.h"

#include "base/text.h"

#include <charconv>
#include <iterator>

namespace cvlog::details {

namespace {

using widgets::CellField;

constexpr int kHiddenRecords = 512;

// A code shows its kind at either end, or next to its last character.
template <class Text>
bool hides(const core::ErrorsListFilter& filter, const Text& code) noexcept {
    const std::size_t size = code.size();
    const auto kindAt = [&code](std::size_t at) { return static_cast<char16_t>(code[at]); };
    if (size == 0) return false;
    return filter.hides(kindAt(0)) || filter.hides(kindAt(size - 1)) ||
           (size > 1 && filter.hides(kindAt(size - 2)));
}

} // namespace

std::string_view RowNumber::digitsOf(int number) noexcept {
    if (number_ <= 0 || number != number_ + 1 || !stepUp())
        count_ = static_cast<std::size_t>(std::to_chars(digits_, std::end(digits_), number).ptr - digits_);
    number_ = number;
    return {digits_, count_};
}

// False when that needs another digit, or there is no number yet.
bool RowNumber::stepUp() noexcept {
    for (std::size_t at = count_; at > 0; --at) {
        char& digit = digits_[at - 1];
        if (digit < '9') return ++digit, true;
        digit = '0';
    }
    return false;
}

ErrorRows::ErrorRows(core::Globals& globals, const ExpandedEntry& entry)
    : globals_(globals), host_(globals), models_(host_, entry) {}

bool ErrorRows::isHiddenBeyondAscii(std::string_view code) {
    DecodeBytes(globals_, code, code_);
    return hides(globals_.options.ErrorsListFilter, std::u16string_view(code_));
}

widgets::RowPtr ErrorRows::FillErrorRow(std::span<char> line, int n) {
    const ErrorLine parts = ParseErrorLine(line);
    const bool isHidden = base::isAscii(parts.code) ? hides(globals_.options.ErrorsListFilter, parts.code)
                                                    : isHiddenBeyondAscii(parts.code);
    if (isHidden) return {};
    const widgets::RowPtr& model = models_.of(parts);
    const widgets::OwnText own[] = {ownText(ChildCell::Num, CellField::Tag, number_.digitsOf(n)),
                                    messageOf(parts)};
    return widgets::makeRowLike(model, own, &memory_);
}

widgets::OwnText ErrorRows::messageOf(const ErrorLine& line) {
    if (line.messageIsAscii) return ownText(ChildCell::Message, CellField::Text, line.message);
    DecodeBytes(globals_, line.message, message_);
    return ownText(ChildCell::Message, CellField::Text, message_);
}

widgets::RowPtr ErrorRows::hiddenRecordsRow() const {
    return EmptyChildRow()->withCell(static_cast<int>(ChildCell::Message), CellField::Text,
                                     resources::text(globals_.platform.language, kHiddenRecords));
}

} // namespace cvlog::details
