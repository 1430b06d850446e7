# Progress lines, and an end that cleans up whatever was started.

say() { printf '%s\n' "$*"; }
step() { printf '==> %s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# at_end COMMAND...: run when the script ends, whichever way, last one first.
at_end_commands=()
at_end() { at_end_commands=("$(printf '%q ' "$@")" "${at_end_commands[@]}"); }
run_at_end() {
    local status=$? command
    for command in "${at_end_commands[@]}"; do eval "$command" >/dev/null 2>&1 || true; done
    exit "$status"
}
trap run_at_end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# quietly LOG COMMAND...: the output goes to the log; a failure shows the errors in it, or its end.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null && return 0
    say "Failed: $*"
    { grep -E '(error|Error|undefined reference).*[: ]' "$log" | grep -v '^g\?make' || tail -n 20 "$log"; } |
        cut -c1-300 | sed -n '1,25s/^/    /p'
    say "    (all of it: $log)"
    return 1
}
