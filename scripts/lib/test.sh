# Build and run every test; the last line is the sum.

passed=0
failed=0
remarks=()

# report_numbers FILE: "run failed skipped silent" of ctest's report. Silent tests count as passed for ctest, but their
# output lacks GoogleTest's closing line: under Wine a program can end early with code 0.
report_numbers() {
    awk '
        function close_case() {
            if (name == "") return
            ++run
            if (status == "fail") ++failed
            else if (status != "run") ++skipped
            else if (!closed) { ++silent; print "    ended without a result: " name > "/dev/stderr" }
            name = ""
        }
        function attribute(key,    text) {
            if (!match($0, " " key "=\"[^\"]*\"")) return ""
            text = substr($0, RSTART, RLENGTH)
            sub(/^[^"]*"/, "", text); sub(/"$/, "", text)
            return text
        }
        /<testcase / { close_case(); name = attribute("name"); status = attribute("status"); closed = 0 }
        /\[  PASSED  \] 1 test\./ { closed = 1 }
        END { close_case(); print run + 0, failed + 0, skipped + 0, silent + 0 }' "$1"
}

# halves_numbers FILE...: the same of the reports that GoogleTest writes when a program comes to its end.
halves_numbers() {
    awk '
        /<testcase / {
            ++run
            if ($0 ~ /result="skipped"/ || $0 ~ /status="notrun"/) ++skipped
            counted = 0
        }
        /<failure / && !counted { ++failed; counted = 1 }
        END { print run + 0, failed + 0, skipped + 0, 0 }' "$@"
}

# count_results PRESET EXIT_CODE NUMBERS: add them up. No tests, or a failure that the numbers do not show, counts as
# one failure.
count_results() {
    local preset=$1 code=$2 run=0 bad=0 skipped=0 silent=0 good
    read -r run bad skipped silent <<<"$3"
    bad=$((bad + silent))
    good=$((run - bad - skipped))
    if [ "$run" = 0 ]; then say "    $preset: no test ran"; bad=1; fi
    if [ "$code" != 0 ] && [ "$bad" = 0 ]; then say "    $preset: the tests ended with code $code"; bad=1; fi
    passed=$((passed + good))
    failed=$((failed + bad))
    say "    $preset: $good passed, $bad failed$([ "$skipped" = 0 ] || echo ", $skipped skipped")"
}

# run_in_halves PRESET: the native tests, in two processes. One for each test, as ctest has them, takes most of its time
# to start when it is sanitized. A half that does not come to its end leaves no report, and its code tells.
run_in_halves() {
    local preset=$1 half code=0 halves=() numbers
    step "Testing $preset"
    rm -f "build/$preset"/half-*.xml
    export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
    export UBSAN_OPTIONS=print_stacktrace=1
    for half in 0 1; do
        GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=$half timeout 1800 "build/$preset/bin/tests_native" \
            --gtest_output=xml:"build/$preset/half-$half.xml" --gtest_brief=1 \
            >"build/log/$preset-test-$half.log" 2>&1 </dev/null &
        halves+=($!)
    done
    for half in 0 1; do
        if ! wait "${halves[half]}"; then
            code=1
            tail -n 150 "build/log/$preset-test-$half.log"
        fi
    done
    numbers=$(cat "build/$preset"/half-*.xml 2>/dev/null | halves_numbers)
    count_results "$preset" $code "$numbers"
}

# run_tests PRESET
run_tests() {
    local preset=$1 code=0 numbers=
    step "Testing $preset"
    rm -f "build/$preset/junit.xml"
    ctest --preset "$preset" --output-junit "$root/build/$preset/junit.xml" \
        --test-output-size-passed 1000000 >"build/log/$preset-test.log" 2>&1 </dev/null || code=$?
    if [ $code != 0 ]; then
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "build/log/$preset-test.log" | tail -n 150 || true
    fi
    [ -s "build/$preset/junit.xml" ] && numbers=$(report_numbers "build/$preset/junit.xml")
    count_results "$preset" $code "$numbers"
}

# build_and_test PRESET
build_and_test() {
    if build "$1" -DCVLOG_WERROR=ON; then
        case $1 in
            windows-*) desktop_keep "$1" && run_tests "$1" ;;
            *) run_in_halves "$1" ;;
        esac
    else
        failed=$((failed + 1))
    fi
}

not_run() {
    remarks+=("Not run: $1")
    if [ "${CI:-}" = true ]; then failed=$((failed + 1)); fi
}

test_windows() {
    if ! need_windows; then not_run "the Windows half ($need_problem)"; return; fi
    if ! display_start own || ! wine_start; then not_run "the Windows half (Wine does not start)"; return; fi
    build_and_test windows-x64
    if has_wine32; then
        build_and_test windows-x86
    elif build_products windows-x86 -DCVLOG_WERROR=ON; then
        remarks+=("windows-x86 was built without tests: this machine has no 32-bit Wine to run them")
    else
        failed=$((failed + 1))
    fi
}

dev_test() {
    local remark
    if need "${native_packages[@]}"; then
        build_and_test native
        build_and_test native-sanitized
    else
        remarks+=("Not run: the native half ($need_problem)")
        failed=$((failed + 1))
    fi
    test_windows
    for remark in "${remarks[@]}"; do say "$remark"; done
    say "$passed passed, $failed failed"
    [ $failed = 0 ]
}
