# Measure, with peers in the same run; the programs write one JSON object a line.

dev_bench() {
    local filter=${1:-} bodies=()
    rm -f build/bench-*.jsonl
    need "${native_packages[@]}" || fail "Nothing can be measured: $need_problem"
    build native-bench || fail "The native benchmarks were not built"
    step "Measuring, native"
    quietly build/log/bench-native.log taskset -c 0 build/native-bench/bin/bench_native \
        --json build/bench-native.jsonl ${filter:+"$filter"} || fail "bench_native failed"
    bodies+=(native)
    if bench_windows "$filter"; then bodies+=(windows); fi
    merge_bench "${bodies[@]}"
}

# Client and wineserver share one processor: otherwise a call between them takes 3 to 10 ms at random.
bench_windows() {
    if ! need_windows; then say "Not measured under Wine: $need_problem"; return 1; fi
    build windows-x64-bench || fail "The Windows benchmarks were not built"
    if ! [ -e build/windows-x64-bench/bin/bench_windows.exe ]; then say "No benchmarks for Wine here"; return 1; fi
    display_start own || fail "No display for the Windows benchmarks"
    wine_stop
    wine_start taskset -c 0 || fail "Wine does not start (build/log/wineboot.log)"
    step "Measuring, under Wine"
    quietly build/log/bench-windows.log taskset -c 0 wine build/windows-x64-bench/bin/bench_windows.exe \
        --json "$(windows_path build/bench-windows.jsonl)" ${1:+"$1"} || fail "bench_windows failed"
    [ -s build/bench-windows.jsonl ] || [ -n "$1" ] || fail "bench_windows measured nothing"
}

# merge_bench BODY...: build/bench.json as one list, a table, and how many goals hold.
merge_bench() {
    local body
    for body in "$@"; do
        [ -e "build/bench-$body.jsonl" ] || continue
        tr -d '\r' <"build/bench-$body.jsonl" | sed -n "s/^[[:space:]]*{/{\"body\":\"$body\",/p"
    done >build/bench-all.jsonl
    [ -s build/bench-all.jsonl ] || fail "Nothing was measured"
    { echo '['; sed '$!s/$/,/' build/bench-all.jsonl; echo ']'; } >build/bench.json
    awk '
        function field(name,    at) {
            if (!match($0, "\"" name "\"[ ]*:[ ]*(\"[^\"]*\"|[^,}]*)")) return ""
            at = substr($0, RSTART, RLENGTH)
            sub(/^"[^"]*"[ ]*:[ ]*/, "", at)
            gsub(/"/, "", at)
            return at
        }
        BEGIN { printf "%-8s %-52s %12s %-8s %12s %8s %8s  %s\n",
                    "body", "name", "value", "unit", "peer", "ratio", "goal", "holds" }
        {
            printf "%-8s %-52s %12s %-8s %12s %8s %8s  %s\n", field("body"), field("name"), field("value"),
                field("unit"), field("peer"), field("ratio"), field("goal"), field("holds")
            ++count
            if (field("holds") == "false") ++missed
        }
        END { printf "%d measured, %d goals missed (build/bench.json)\n", count, missed; exit missed > 0 }
    ' build/bench-all.jsonl
}
