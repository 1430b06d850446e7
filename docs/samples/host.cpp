#include "docs/samples/late_call.h"

void logReports(IDispatch* workspace) { // the host's own object
    const IDispatchPtr log(L"CVLog3.CVLog");
    if (!static_cast<bool>(call(log, L"OpenDB", {workspace}))) return;
    call(log, L"Add", {L"verify", 0L, L"O1", L""}); // method, return code, object, message
    call(log, L"Add", {L"verify", 1L, L"O1", L"2 warnings", L"parser_c.errors"});
    call(log, L"CloseDB");
}
