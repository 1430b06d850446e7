#!/usr/bin/env bash
# check_floors.sh finds each kind of breach, and passes a tree without any.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
checks=0 wrong=0

good_tree() {
    rm -rf "${tree:?}"/*
    put base/text.h '#include <string>'
    put automation/value.h '#include "base/text.h"'
    put ports/clock.h '#include "automation/value.h"'
    put widgets/list.h '#include "ports/clock.h"'
    put hostapi/workspace.h '#include "ports/clock.h"'
    put resources/strings.h '#include "base/text.h"'
    put core/log.h '#include "widgets/list.h"' '#include "hostapi/workspace.h"' '#include "resources/strings.h"'
    put store/log_db.cpp '#include "core/log.h"' '#include <sqlite3.h>'
    put platform/win32/clock.h '#include <windows.h>' '#include "ports/clock.h"' '#ifdef _WIN64' '#endif'
    put platform/headless/clock.h '#include "widgets/list.h"'
    put com/dll.cpp '#include "platform/win32/clock.h"' '#include "core/log.h"'
    put workbench/host.h '#include <windows.h>' '#include <sqlite3.h>'
    put tests/core/log_test.cpp '#include <gtest/gtest.h>' '#include "platform/headless/clock.h"'
    put tests/windows/dll_test.cpp '#include <windows.h>' '#include "platform/win32/clock.h"'
}
put() {
    mkdir -p "$tree/$(dirname "$1")"
    printf '%s\n' "${@:2}" >"$tree/$1"
}

# expect RULE FILE LINE...: the good tree with this file breaks that rule, there and nowhere else.
expect() {
    local rule=$1 file=$2 said
    good_tree
    put "${@:2}"
    checks=$((checks + 1))
    if said=$("$here/check_floors.sh" "$tree"); then
        echo "not found: $rule: $*"; wrong=$((wrong + 1))
    elif [ "$(grep -c ': ' <<<"$said")" != 1 ] || ! grep -q "^$file:.*$rule: " <<<"$said"; then
        echo "for $* this was said: $said"; wrong=$((wrong + 1))
    fi
}

# upward FOLDER HEADER...: the folder may include none of these.
upward() {
    local folder=$1 header
    shift
    for header in "$@"; do expect floor "$folder/probe.cpp" "#include \"$header\""; done
}

good_tree
checks=$((checks + 1))
"$here/check_floors.sh" "$tree" >/dev/null || { echo "a good tree does not pass:"; "$here/check_floors.sh" "$tree" || true; wrong=1; }

upward base automation/value.h ports/clock.h widgets/list.h hostapi/workspace.h core/log.h resources/strings.h
upward automation ports/clock.h widgets/list.h hostapi/workspace.h core/log.h platform/headless/clock.h
upward ports widgets/list.h hostapi/workspace.h core/log.h platform/win32/clock.h
upward widgets hostapi/workspace.h core/log.h resources/strings.h platform/headless/clock.h
upward hostapi widgets/list.h core/log.h platform/headless/clock.h
upward resources automation/value.h core/log.h
for room in core store view details host; do
    upward $room platform/win32/clock.h platform/headless/clock.h workbench/host.h
done
upward platform/win32 core/log.h hostapi/workspace.h platform/headless/clock.h
upward platform/headless core/log.h platform/win32/clock.h
upward com workbench/host.h
upward workbench base/text.h core/log.h platform/win32/clock.h
upward tests/core platform/win32/clock.h workbench/host.h
upward bench platform/win32/clock.h
expect floor attic/old.cpp 'int old;'

expect path core/probe.cpp '#include "log.h"'
expect path core/probe.cpp '#include "core/missing.h"'
expect path core/probe.cpp '  #  include "../base/text.h"'

expect cycle base/text.h '#include "base/text.h"'
expect cycle core/one.h '#include "core/one.h"'
good_tree
put core/a.h '#include "core/b.h"'
put core/b.h '#include "view/c.h"'
put view/c.h '#include "core/a.h"'
checks=$((checks + 1))
said=$("$here/check_floors.sh" "$tree") || true
grep -q 'cycle: core/a.h -> core/b.h -> view/c.h -> core/a.h$' <<<"$said" ||
    { echo "the ring of three is not found"; wrong=$((wrong + 1)); }

for folder in base automation ports widgets hostapi core view resources platform/headless tests/core bench; do
    expect os "$folder/probe.cpp" '#include <windows.h>'
    expect os "$folder/probe.cpp" '#include <unistd.h>'
done
expect os core/probe.cpp '#include <sqlite3.h>'
expect os core/probe.cpp '#include <gtest/gtest.h>'
expect os core/probe.cpp '#include <sys/stat.h>'
expect platform core/probe.cpp '#ifdef _WIN32' '#endif'
expect platform platform/headless/probe.cpp '#if defined(__linux__)' '#endif'

echo "check_floors: $((checks - wrong)) of $checks checks hold"
[ $wrong = 0 ]
