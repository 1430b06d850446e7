#include "workbench/replay.h"

#include "workbench/com_call.h"

namespace workbench {

namespace {

struct Player {
    IDispatch* log;

    void operator()(const SeriesStart& start) const { call(log, L"SeriesStart", {start.methodId}); }
    void operator()(const AddReport& report) const {
        call(log, L"Add",
             {report.methodId, report.returnCode, report.objectId, report.message, report.errorsFileName});
    }
    void operator()(const SeriesFinish& finish) const { call(log, L"SeriesFinish", {finish.returnCode}); }
};

/// The field of a query's first row; `none` when the query has no rows.
long firstNumber(IDispatch* log, const std::wstring& query, const wchar_t* field, long none) {
    const ComPtr<IDispatch> database = get(log, L"LogDB").object();
    const ComPtr<IDispatch> records = call(database.Get(), L"OpenRecordset", {query}).object();
    long number = none;
    if (!get(records.Get(), L"EOF").boolean()) {
        const ComPtr<IDispatch> found = get(records.Get(), L"Fields", {field}).object();
        number = get(found.Get(), L"Value").integer();
    }
    call(records.Get(), L"Close");
    return number;
}

} // namespace

void replay(IDispatch* log, const std::vector<Command>& session) {
    for (const Command& command : session) {
        std::visit(Player{log}, command);
    }
}

long highestRecord(IDispatch* log) {
    return firstNumber(log, L"select RecordNum from LogInfo order by RecordNum desc", L"RecordNum", 0);
}

long recordsAbove(IDispatch* log, long number) {
    return firstNumber(log, L"select count(*) as N from LogInfo where RecordNum > " + std::to_wstring(number),
                       L"N", 0);
}

} // namespace workbench
