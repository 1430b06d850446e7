#include "details/error_row.h"

#include <charconv>
#include <iterator>
#include <limits>

namespace cvlog::details {

namespace {

using widgets::CellField;

constexpr int kHiddenRecords = 512;

} // namespace

ErrorRows::ErrorRows(core::Globals& globals, const ExpandedEntry& entry)
    : globals_(globals), host_(globals), models_(host_, entry) {}

bool ErrorRows::isHidden(std::string_view code) {
    if (code.empty()) return false;
    const core::ErrorsListFilter& filter = globals_.options.ErrorsListFilter;
    const auto hides = [&filter](const auto& text) {
        const auto kind = [&](std::size_t fromEnd) {
            return static_cast<char16_t>(text[text.size() - fromEnd]);
        };
        return filter.hides(kind(text.size())) || filter.hides(kind(1)) ||
               (text.size() > 1 && filter.hides(kind(2)));
    };
    if (IsAscii(code)) return hides(code);
    DecodeBytes(globals_, code, code_);
    return hides(code_);
}

widgets::RowPtr ErrorRows::FillErrorRow(std::span<char> line, int n) {
    const ErrorLine parts = ParseErrorLine(line);
    if (isHidden(parts.code)) return {};
    const widgets::RowPtr& model = models_.of(parts);
    char digits[std::numeric_limits<int>::digits10 + 1];
    const std::string_view number(digits, std::to_chars(digits, std::end(digits), n).ptr - digits);
    const widgets::OwnText own[] = {ownText(ChildCell::Num, CellField::Tag, number), messageOf(parts)};
    return widgets::makeRowLike(model, own);
}

widgets::OwnText ErrorRows::messageOf(const ErrorLine& line) {
    if (line.messageIsAscii) return ownText(ChildCell::Message, CellField::Text, line.message);
    DecodeBytes(globals_, line.message, message_);
    return ownText(ChildCell::Message, CellField::Text, std::u16string_view(message_));
}

widgets::RowPtr ErrorRows::hiddenRecordsRow() const {
    return EmptyChildRow()->withCell(static_cast<int>(ChildCell::Message), CellField::Text,
                                     resources::text(globals_.platform.language, kHiddenRecords));
}

} // namespace cvlog::details
