#include "bench/native/headless_log.h"

#include "core/adding.h"
#include "core/series_report.h"
#include "store/engine_selection.h"

namespace cvlog::bench {

HeadlessLog::HeadlessLog(int lists)
    : engine_(store::makeLogEngine(platform_.files, objects_)),
      globals_(core::Platform::of(platform_, *engine_)), log_(std::make_shared<core::CVLog>(globals_)) {
    platform_.peers.mirrored = false;
    for (int i = 0; i < lists; ++i) controls_.push_back(std::make_shared<view::LogControl>(globals_));
    core::SeriesStart(globals_);
}

void HeadlessLog::add(int count) {
    const core::Report report{{}, 1, {}, u"conversion to 'int' from 'long int' may change the value", {}};
    for (int i = 0; i < count; ++i) core::Add(globals_, *log_, report);
}

} // namespace cvlog::bench
