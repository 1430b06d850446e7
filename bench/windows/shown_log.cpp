#include "bench/windows/shown_log.h"

#include "core/adding.h"
#include "core/column_fit.h"
#include "core/log_resources.h"
#include "core/log_row.h"
#include "core/series_report.h"
#include "store/engine_selection.h"

#include <initializer_list>

namespace cvlog::bench {

namespace {

constexpr std::u16string_view kMethod = u"Verify";
constexpr std::u16string_view kMessage = u"conversion to 'int' from 'long int' may change the value";
constexpr std::int32_t kCode = 8;

/// A disc with soft edges, as icons are.
class Disc final : public ports::Picture {
public:
    ports::Pixels render(int side) const override {
        ports::Pixels pixels{side, {}};
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const int dx = 2 * x + 1 - side;
                const int dy = 2 * y + 1 - side;
                const int distance = dx * dx + dy * dy;
                const bool inside = distance < (side - 4) * (side - 4);
                pixels.argb.push_back(inside ? 0xFF00A000U : distance < side * side ? 0x80005000U : 0U);
            }
        return pixels;
    }
};

std::unique_ptr<core::LogResources> makeResources() {
    auto resources = std::make_unique<core::LogResources>();
    resources->ilLog = std::make_shared<widgets::ImageList>();
    resources->ilSort = std::make_shared<widgets::ImageList>();
    const auto disc = std::make_shared<Disc>();
    for (const std::u16string_view key :
         {u"Good", u"Suspect", u"Failure", u"Cancel", u"Bad", u"Session", u"Program"})
        resources->ilLog->add(key, disc);
    for (const std::u16string_view key : {u"SortEmpty", u"SortUp", u"SortDown"})
        resources->ilSort->add(key, disc);
    return resources;
}

core::Platform platformOf(platform::win32::Services& shown, ports::MessagePump& pump,
                          platform::headless::HeadlessPlatform& rest, store::Engine& engine) {
    return {
        .clipboard = rest.clipboard,
        .clock = shown.clock,
        .messages = rest.messages,
        .files = rest.files,
        .reader = rest.files,
        .codePage = shown.codePage,
        .pump = pump,
        .settings = rest.settings,
        .collator = shown.collator,
        .measurer = shown.measurer,
        .pictures = rest.pictures,
        .screens = shown.screens,
        .windowMessages = rest.windowMessages,
        .fonts = rest.fonts,
        .objects = rest.objects,
        .helpViewer = rest.helpViewer,
        .messageFilters = rest.messageFilters,
        .peers = shown.peers,
        .engine = engine,
        .language = resources::Language::English,
    };
}

} // namespace

ShownLog::ShownLog(int lists)
    : engine_(store::makeLogEngine(platform_.files, objects_)),
      globals_(platformOf(services_, pump_, platform_, *engine_)),
      log_(std::make_shared<core::CVLog>(globals_)) {
    globals_.frmLogResources = makeResources();
    globals_.store.CurrentLog = log_; // a log is open: what a new list takes its rows from
    for (int i = 0; i < lists; ++i) controls_.push_back(makeControl());
    core::SeriesStart(globals_);
}

ShownLog::~ShownLog() {
    controls_.clear();
    globals_.store.CurrentLog.reset();
}

void ShownLog::add() {
    core::Add(globals_, *log_, {std::u16string(kMethod), kCode, {}, std::u16string(kMessage), {}});
}

void ShownLog::fill(int rows) {
    add(); // attaches the pictures
    const widgets::RowPtr first = list().content(1);
    const auto text = [&](int column) { return std::u16string(first->columnText(column)); };
    core::LogEntry entry;
    entry.date = text(1);
    entry.elapsed = u"0:00:00";
    entry.method = text(3);
    entry.result = text(6);
    entry.resultIcon = std::u16string(first->cellIcon(5));
    entry.message = text(7);
    std::vector<widgets::RowPtr> made;
    for (int i = 1; i < rows; ++i) made.push_back(core::MakeLogRow(entry));
    for (const auto& control : controls_) {
        const widgets::ListView::Batch batch(control->lvLog());
        for (const widgets::RowPtr& row : made) control->lvLog().append(row);
        core::AutoSizeColumns(control->lvLog(), 0);
    }
}

} // namespace cvlog::bench
