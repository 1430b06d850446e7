#include "core/log_templates.h"

namespace cvlog::core {

namespace {

constexpr int kFirstColumnCaption = 100;
constexpr int kLastColumnCaption = 106;
constexpr int kFirstMenuCaption = 107;
constexpr std::u16string_view kMenuNames[] = {
    u"mnuPopUpLog", u"mnuLogShowErrors", u"mnuLogCollaps", u"mnuLogExpand",  u"mnuLogDelete",
    u"mnuLogClear", u"mnuLogCopy",       u"mnuLogSave",    u"mnuLogHistory", u"mnuCol",
    u"mnuColumn",   u"mnuLogDocked",     u"mnuLogHide",
};

} // namespace

LogTemplates LogTemplates::localised(resources::Language language) {
    LogTemplates made;
    for (int id = kFirstColumnCaption; id <= kLastColumnCaption; ++id)
        made.lvLog.emplace_back(resources::text(language, id));
    int id = kFirstMenuCaption;
    for (const std::u16string_view name : kMenuNames)
        made.mnuPopUpLog.push_back({name, std::u16string(resources::text(language, id++))});
    return made;
}

} // namespace cvlog::core
