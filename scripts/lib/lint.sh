# Format, clang-tidy on what changed, and the floors.

lint_failures=0

# Source files, tracked or new.
our_sources() { git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp' | while read -r f; do [ ! -e "$f" ] || echo "$f"; done; }

# The commit that changes are counted from: where this branch left the main one, else the one before.
lint_base() {
    local base
    base=$(git merge-base HEAD origin/HEAD 2>/dev/null || git merge-base HEAD origin/main 2>/dev/null || true)
    if [ -z "$base" ] || [ "$base" = "$(git rev-parse -q --verify HEAD || true)" ]; then
        base=$(git rev-parse -q --verify HEAD~1 || true)
    fi
    printf '%s' "${base:-4b825dc642cb6eb9a060e54bf8d69288fbee4904}" # the empty tree: everything is a change
}

changed_sources() {
    { git diff --name-only --diff-filter=d "$(lint_base)" -- '*.cpp' 2>/dev/null
      git ls-files --others --exclude-standard -- '*.cpp'; } | sort -u
}

lint_floors() {
    step "Floors"
    scripts/check_floors_test.sh && scripts/check_floors.sh || lint_failures=$((lint_failures + 1))
}

lint_format() {
    local bad
    step "Format"
    bad=$(our_sources | xargs -r -d '\n' -n 40 clang-format --dry-run 2>&1 | sed -n 's/^\([^:]*\):[0-9].*/\1/p' | sort | uniq -c) || true
    [ -z "$bad" ] && return 0
    say "Not formatted (./dev format does it); places per file:"
    say "$bad"
    lint_failures=$((lint_failures + 1))
}

# Only what the native build compiles: clang knows its flags from there, each source by itself.
lint_tidy() {
    local files
    step "clang-tidy on what changed"
    if ! quietly build/log/lint-configure.log cmake --preset native -B build/lint -DCMAKE_UNITY_BUILD=OFF; then
        lint_failures=$((lint_failures + 1))
        return
    fi
    files=$(changed_sources | while read -r f; do
        grep -qF "\"file\": \"$root/$f\"" build/lint/compile_commands.json && echo "$f"; done) || true
    if [ -z "$files" ]; then say "No portable source changed: nothing to look at"; return; fi
    if ! xargs -d '\n' -n 1 -P 2 clang-tidy --extra-arg=-Wno-unknown-warning-option -p build/lint --quiet <<<"$files" \
        >build/log/tidy.log 2>&1; then
        # Each finding once, however many sources include its header; the log has the whole story.
        grep -E ': (warning|error): ' build/log/tidy.log | sed "s|^$root/||" | sort -u
        say "    (all of it: build/log/tidy.log)"
        lint_failures=$((lint_failures + 1))
    fi
}

dev_lint() {
    if [ "${1:-}" = floors ]; then
        lint_floors
    else
        need "${native_packages[@]}" "${lint_packages[@]}" || fail "Lint cannot run: $need_problem"
        lint_floors
        lint_format
        lint_tidy
    fi
    [ $lint_failures = 0 ] || fail "Lint: $lint_failures of its parts found something"
    say "Lint: nothing found"
}

dev_format() {
    need "${lint_packages[@]}" || fail "Format cannot run: $need_problem"
    our_sources | xargs -r -d '\n' clang-format -i
    say "Formatted $(our_sources | wc -l) files"
}
