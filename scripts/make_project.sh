#!/usr/bin/env bash
# make_project.sh OUT NAME SOURCE_ROOT...: a workbench project made of what the compiler says about every C and C++
# file below the given folders: objects, codes, one errors file a source, and the session that replays the check.
# Each argument after the name is FOLDER or FOLDER=PREFIX, the prefix going before the file names of that folder.
# INCLUDE names a folder of headers that sources for Windows need.
set -euo pipefail
export LC_ALL=C # plain quotes in messages, so the files are valid in every ANSI code page

out=${1:?usage: make_project.sh OUT NAME SOURCE_ROOT...} name=${2:?} here=$(cd "$(dirname "$0")" && pwd)
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/diagnostics" "$out"
out=$(cd "$out" && pwd)

# Lines of "folder<TAB>file below it<TAB>name in the project".
list_sources() {
    local argument folder prefix
    for argument in "$@"; do
        folder=$(cd "${argument%%=*}" && pwd) prefix=
        [[ $argument == *=* ]] && prefix=${argument#*=}/
        find "$folder" -name build -prune -o -name tests -prune -o -name bench -prune -o -name '.?*' -prune \
            -o -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -printf '%P\n' | sort |
            awk -v folder="$folder" -v prefix="$prefix" '{ print folder "\t" $0 "\t" prefix $0 }'
    done
}

# check FOLDER FILE NAME: the diagnostics of one source, in a file named like its errors file.
check() {
    local folder=$1 file=$2 warnings language=() compiler=gcc
    warnings=(-Wall -Wextra -Wconversion -Wsign-conversion -Wcast-qual -Wswitch-default -Wuseless-cast -Wundef
              -Wold-style-cast -Wdouble-promotion)
    case $file in
        *.cpp)
            compiler=g++ language=(-std=c++20)
            case $file in
                platform/win32/* | com/* | workbench/*)
                    language+=(-DUNICODE -D_UNICODE ${INCLUDE:+-isystem "$INCLUDE"})
                    command -v x86_64-w64-mingw32-g++-posix >/dev/null && compiler=x86_64-w64-mingw32-g++-posix ;;
            esac ;;
        *) warnings=(-Wall -Wextra -Wconversion -Wsign-conversion -Wcast-qual -Wswitch-default -Wfloat-conversion) ;;
    esac
    (cd "$folder" && "$compiler" -fsyntax-only -fno-diagnostics-show-caret -fdiagnostics-color=never \
        "${language[@]}" "${warnings[@]}" -I. "$file") >"$work/diagnostics/${3//[\/.]/_}" 2>&1 || true
}
export -f check
export work

list_sources "$@" >"$work/sources"
grep -v '\.h$' "$work/sources" | tr '\t' '\n' | xargs -d '\n' -n 3 -P 2 bash -c 'check "$@"' check

rm -f "$out"/*.errors "$out"/*.tsv "$out"/PrjData.mdb*
awk -v out="$out" -v work="$work" -v project="$name" -f "$here/make_project.awk" "$work/sources"
cat >"$out/options.xml" <<'T'
<?xml version="1.0" encoding="UTF-8"?>
<OPTIONS>
  <GROUP NAME="Log">
    <BOOL ID="LogKeepInSession" NAME="KeepInSession" VALUE="true"/>
    <BOOL ID="LogDocked" NAME="Docked" VALUE="false"/>
  </GROUP>
  <GROUP ID="Editor" NAME="Editor">
    <GROUP NAME="ErrorsList">
      <BOOL NAME="Errors" VALUE="true"/>
      <BOOL NAME="Warnings" VALUE="true"/>
      <BOOL NAME="Information" VALUE="false"/>
    </GROUP>
  </GROUP>
</OPTIONS>
T
