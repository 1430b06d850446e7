#include "core/options.h"

#include "base/failure.h"
#include "base/text.h"
#include "details/reexpansion.h"
#include "host/log_placement.h"

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
        if (!name.empty()) options.ErrorsListFilter.add(name.front(), valueIs(node, u"false"));
    });
}

void loadErrorsListFilter(OptionState& options) {
    OptionNode node = options.UserOptions.selectSingleNode(kErrorsListQuery);
    if (!node) return;
    options.ErrorsListFilter = {};
    for (; node; node = node.nextSibling()) addFilterItem(options, node);
}

constexpr std::int32_t kSavedEvent = 1;
constexpr int kApplyDelay = 1; // milliseconds

class SavedSink : public automation::EventSink {
public:
    explicit SavedSink(Globals& globals) : globals_(globals) {}
    void onEvent(std::int32_t id, std::span<automation::Value>) override {
        const auto keep = globals_.hold();
        if (id == kSavedEvent) base::ignoring([&] { UserOptions_Saved(globals_); });
    }

private:
    Globals& globals_;
};

void applyOptions(Globals& globals) {
    const auto keep = globals.hold();
    globals.options.applyTimer->disable();
    if (!globals.store.Workspace) return;
    if (globals.ExpansionBusy) return globals.options.applyTimer->enable();
    host::ShowLog(globals, widgets::Activation::Leave); // nobody asked for it just now
    if (std::exchange(globals.options.entriesOutdated, false)) details::ReexpandEntries(globals);
}

void applySoon(Globals& globals) {
    std::unique_ptr<widgets::Timer>& timer = globals.options.applyTimer;
    if (!timer)
        timer = std::make_unique<widgets::Timer>(globals.platform.peers, kApplyDelay,
                                                 [&globals] { applyOptions(globals); });
    timer->enable();
}

} // namespace

void HoldOptions(Globals& globals, hostapi::OptionsDocument document) {
    ReleaseOptions(globals);
    globals.options.UserOptions = std::move(document);
    LoadOptions(globals);
    base::ignoring([&] {
        const automation::ObjectRef& source = globals.options.UserOptions.object();
        if (source) globals.options.savedEvents = source->connect(std::make_shared<SavedSink>(globals));
    });
}

void ReleaseOptions(Globals& globals) {
    if (globals.options.applyTimer) globals.options.applyTimer->disable();
    globals.options.savedEvents.reset();
    globals.options.entriesOutdated = false;
    globals.options.UserOptions = {};
}

void UserOptions_Saved(Globals& globals) {
    OptionState& options = globals.options;
    const bool dockedBefore = options.DockedOption;
    const ErrorsListFilter before = options.ErrorsListFilter;
    LoadOptions(globals);
    options.FilterChanged = before.differsIn(options.ErrorsListFilter);
    if (options.FilterChanged) options.entriesOutdated = true;
    if (options.DockedOption != dockedBefore || options.FilterChanged) applySoon(globals);
}

void StoreDockedOption(Globals& globals, bool docked) noexcept {
    const hostapi::OptionsDocument document = globals.options.UserOptions;
    base::ignoring(
        [&] { document.selectSingleNode(kDockedQuery).setAttribute(u"VALUE", docked ? u"true" : u"false"); });
    base::ignoring([&] { document.save(); });
}

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
