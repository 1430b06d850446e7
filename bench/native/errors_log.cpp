#include "bench/native/errors_log.h"

#include "base/text.h"
#include "bench/errors_host.h"
#include "bench/errors_text.h"
#include "core/adding.h"
#include "core/series_report.h"
#include "details/expand_entry.h"
#include "details/expansion.h"
#include "store/engine_selection.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace cvlog::bench {

bool WatchedPump::inputWaiting() {
    if (!watched_) return false;
    const Time now = std::chrono::steady_clock::now();
    longest_ = std::max(longest_, std::chrono::duration<double>(now - last_).count());
    last_ = now;
    return false;
}

void WatchedPump::watch() {
    watched_ = true;
    longest_ = 0;
    last_ = std::chrono::steady_clock::now();
}

ErrorsLog::ErrorsLog(int lists, int entries, const std::string& errorsPath)
    : engine_(store::makeLogEngine(platform_.files, objects_)),
      globals_(core::Platform::of(platform_, *engine_)), log_(std::make_shared<core::CVLog>(globals_)),
      entries_(entries) {
    platform_.peers.mirrored = false;
    for (int i = 0; i < lists; ++i) controls_.push_back(std::make_shared<view::LogControl>(globals_));
    core::SeriesStart(globals_);
    for (int i = 0; i < entries; ++i) core::Add(globals_, *log_, {{}, 1, {}, u"0 errors, 316 warnings", {}});
    for (const auto& list : globals_.LogViews.all())
        list->setCellTag(entries / 2, u"Message", base::fromUtf8(errorsPath));
    globals_.store.Workspace = hostapi::Workspace(makeErrorsHost());
    globals_.options.ErrorsListFilter = {{u'E', false}, {u'W', false}, {kHiddenKind, true}};
}

ErrorsLog::~ErrorsLog() { controls_.clear(); }

void ErrorsLog::expand(int rows) {
    details::ExpandEntry(globals_, view(), entries_ / 2);
    for (const auto& list : globals_.LogViews.all())
        if (list->rowCount() != entries_ + rows) {
            std::fprintf(stderr, "%d rows instead of %d\n", list->rowCount() - entries_, rows);
            std::exit(2);
        }
}

void ErrorsLog::collapse() { details::CollapseEntry(globals_, view(), entries_ / 2); }

} // namespace cvlog::bench
