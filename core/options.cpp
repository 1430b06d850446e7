#include "core/options.h"

#include "base/failure.h"
#include "base/text.h"

namespace cvlog::core {

namespace {

using hostapi::OptionNode;

constexpr std::u16string_view kKeepInSessionQuery = u"//BOOL[@ID='LogKeepInSession']";
constexpr std::u16string_view kDockedQuery = u"//BOOL[@ID='LogDocked']";
constexpr std::u16string_view kErrorsListQuery = u"//*[@ID='Editor']/GROUP[@NAME='ErrorsList']/BOOL";

bool valueIs(const OptionNode& node, std::u16string_view word) {
    return base::equalsIgnoringCase(node.attribute(u"VALUE"), word);
}

// Siblings that are no elements, or have no name, are passed over; the first of several kinds with one letter counts.
void addFilterItem(OptionState& options, const OptionNode& node) {
    base::ignoring([&] {
        const std::u16string name = node.attribute(u"NAME");
        if (!name.empty())
            options.ErrorsListFilter.emplace(base::foldCase(name.front()), valueIs(node, u"false"));
    });
}

void loadErrorsListFilter(OptionState& options) {
    OptionNode node = options.UserOptions.selectSingleNode(kErrorsListQuery);
    if (!node) return;
    options.ErrorsListFilter.clear();
    for (; node; node = node.nextSibling()) addFilterItem(options, node);
}

} // namespace

void LoadOptions(Globals& globals) {
    OptionState& options = globals.options;
    base::ignoring([&] {
        if (const OptionNode node = options.UserOptions.selectSingleNode(kKeepInSessionQuery))
            options.KeepInSession = valueIs(node, u"true");
    });
    base::ignoring([&] { loadErrorsListFilter(options); });
    base::ignoring([&] {
        const OptionNode node = options.UserOptions.selectSingleNode(kDockedQuery);
        options.DockedOption = node && valueIs(node, u"true");
    });
}

} // namespace cvlog::core
