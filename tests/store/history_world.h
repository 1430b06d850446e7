#pragma once

#include "store/frm_log_history.h"
#include "tests/support/log_world.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace cvlog::store::testbed {

/// Adds a record with this number to the log's file. Its text is "message <number>", its object PAYROLL.
inline tests::FakeRecord& addRecord(tests::LogWorld& world, std::int32_t number, std::int32_t code = 0) {
    world.engine.records().push_back({{u"RecordNum", number},
                                      {u"MethodName", u"Compile"},
                                      {u"ObjectType", u"PROG"},
                                      {u"ObjectName", u"PAYROLL"},
                                      {u"LogMessage", u"message " + base::decimal(number)},
                                      {u"ReturnMessage", code},
                                      {u"Errors", u"payroll.err"}});
    auto& last = world.engine.file(tests::kLogFile).at(u"LogInfo").lastNumber;
    last = std::max(last, number);
    return world.engine.records().back();
}

/// Rows as one text: record numbers by their keys, "S" for the separator.
inline std::string rowNames(const widgets::ListView& list) {
    std::string names;
    for (int position = 1; position <= list.rowCount(); ++position) {
        if (!names.empty()) names += ' ';
        const std::u16string key = list.rowKey(position);
        names += key.empty() ? "S" : base::toUtf8(key.substr(1));
    }
    return names;
}

} // namespace cvlog::store::testbed
